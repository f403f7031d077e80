#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QWizard>

namespace QtUIBase {

/**
 * A scriptable QWizard.
 *
 * | Record              | Arguments                 | When                                   |
 * |---------------------|---------------------------|----------------------------------------|
 * | "currentIdChanged"  | page id (-1: cancelled)   | the user moved to another page         |
 * | "clicked"           | "customBtn", button number| a custom button was clicked            |
 * | "clicked"           | "FinishButton"            | accept()                               |
 * | "closed"            | none                      | the window was closed                  |
 * | "pageAdd"           | page id                   | a page was added                       |
 * | "pageRemove"        | page id                   | a page was removed                     |
 * | "helpRequested"     | none                      | Help was clicked                       |
 *
 * The application signals follow with recording suppressed; their names keep
 * the lower-case letter of the Qt signals (AcurrentIdChanged, ...). The move
 * to the start page that showing the wizard makes is reported but not
 * recorded: it is not a user's step, and replay steps from the start page.
 *
 * Replay walks the wizard as a user did: a page id at least the last
 * replayed one emits nextTriger() (if the current page validates), a smaller
 * one backTriger(); a page the wizard does not reach is reported in the
 * fixed-script report. A negative id, "FinishButton" or "closed" end the
 * wizard (cancelled, accepted, closed), emit ACloseWizard() for the first,
 * and delete it later: build replayed wizards on the heap. A replayed custom
 * button always reports number 0 (the number argument is not read, as
 * recorded scripts were always replayed).
 *
 * exec() during a replay shows the wizard and replays the following lines
 * itself until it finishes, like AQDialog::exec(); outside a replay it
 * allows recording, so the user's steps are recorded even when the code
 * that opened the wizard runs with recording suppressed.
 */
class ORVEXQTUIBASE_EXPORT AQWizard : public QWizard, public IAQScriptable
{
    Q_OBJECT

public:
    explicit AQWizard(const QString& name, QWidget* parent = nullptr, Qt::WindowFlags flags = {},
                      bool scriptable = true);

    /// Connects the wizard's signals to the recording slots and the command
    /// signals to next() and back(); the scriptable constructor does it.
    void initConnect();

    int exec() override;
    void scriptReplay(const QString& signal, const QStringList& args) override;

public Q_SLOTS:
    void accept() override;

Q_SIGNALS:
    void AcurrentIdChanged(int id);
    void AcustomButtonClicked(int which);
    void ApageAdded(int id);
    void ApageRemoved(int id);
    void AhelpRequested();
    void ACloseWizard();
    /// The page a replayed step arrived at.
    void APageChanged(int id);
    /// Commands: step forward / back.
    void nextTriger();
    void backTriger();

protected:
    void closeEvent(QCloseEvent* event) override;

private Q_SLOTS:
    void handleClickedSignal(int id);
    void customButtonClickedSlot(int which);
    void pageAddedSlot(int id);
    void pageRemovedSlot(int id);
    void handleHelpRequestedSignal();
    void NextButtonTriger();
    void BackButtonTriger();

private:
    void endReplayedRun();

    int m_lastReplayedId = 0;
    bool m_finished = false;
    int m_result = 1;
};

} // namespace QtUIBase
