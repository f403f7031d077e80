#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QDialog>

namespace QtUIBase {

/**
 * A scriptable QDialog that takes part in replay.
 *
 * QDialog::exec() runs an event loop of its own, which would hold the
 * replay loop at every modal dialog. During a replay exec() therefore shows
 * the dialog application-modal and pulls the following script lines itself
 * (processNextScriptCommand()) until the dialog finishes, then returns the
 * result the script produced. When the script runs out first, the dialog
 * runs interactively if a recording is active; otherwise exec() answers 1,
 * journals an "erro info:" note and hides the dialog so nothing waits on it.
 *
 * The constructor suppresses recording (the code that builds the dialog is
 * not a user operation); exec() and show() allow it again. Closing the
 * dialog records "closed" (not for the first registered object nor for
 * names beginning with "text.") and unregisters it unless it is an
 * always-on dialog. During replay a modeless dialog deletes itself when it
 * is accepted or closed, so a replayed script leaves none behind.
 *
 * Place and size are kept in the state INI file under the dialog's name:
 * restored by the constructor, saved by the destructor (save-on-destroy,
 * on by default) and on close.
 *
 * Defaults: result 1, not always-on, save-position from
 * AQIsSaveDialogPosition().
 */
class ORVEXQTUIBASE_EXPORT AQDialog : public QDialog, public IAQScriptable
{
    Q_OBJECT

public:
    /// How the dialog is framed; WithSizeGrip adds a size grip.
    enum PositionMode { DefaultPosition = 0, CenteredPosition = 1, WithSizeGrip = 2 };
    Q_ENUM(PositionMode)

    explicit AQDialog(const QString& name, QWidget* parent = nullptr, Qt::WindowFlags flags = {},
                      bool scriptable = true, PositionMode mode = DefaultPosition);
    ~AQDialog() override;

    int exec() override;
    /// Allows recording again, then shows the dialog.
    void show();

    void restoreDialogState();
    virtual void saveDialogState();

    void scriptReplay(const QString& signal, const QStringList& args) override;

    bool isAlwaysOnDialog() const { return m_alwaysOn; }
    /// An always-on dialog stays registered when it is closed.
    void setAlwaysOnDialog(bool alwaysOn) { m_alwaysOn = alwaysOn; }
    bool isSavePosition() const { return m_savePosition; }
    void setSavePosition(bool save) { m_savePosition = save; }
    bool isSaveOnDestroy() const { return m_saveOnDestroy; }
    void setSaveOnDestroy(bool save) { m_saveOnDestroy = save; }
    PositionMode positionMode() const { return m_positionMode; }
    /// Group of the dialog's entry in the state INI file.
    QString dialogName() const { return m_name; }

public Q_SLOTS:
    void accept() override;
    void reject() override;

protected:
    /// Replays the next script command; false when the script is used up.
    virtual bool processNextScriptCommand();

    void closeEvent(QCloseEvent* event) override;
    void childEvent(QChildEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private Q_SLOTS:
    void processDialogFinished(int result);

private:
    bool m_saveOnDestroy = true;
    bool m_finished = false;
    int m_result = 1;
    bool m_alwaysOn = false;
    bool m_savePosition = false;
    bool m_flag = true; // kept for hosts; not read by the dialog
    QString m_name;
    PositionMode m_positionMode = DefaultPosition;
};

} // namespace QtUIBase
