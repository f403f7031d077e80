#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QKeySequence>
#include <QMenu>

namespace QtUIBase {

class AQAction;

/**
 * A scriptable QMenu.
 *
 * Three ways of recording a choice:
 * - Once something connects to ATriggered(), a chosen action that is
 *   registered (with a registered owner) records "Triggered" with its
 *   position in actions() (-1 for an action of a submenu) and ATriggered()
 *   follows with recording suppressed. Replay emits ATriggered() with the
 *   action at that position, or with null when there is none.
 * - Actions made by the named addAction() forms are AQActions registered
 *   under their name with the menu as parent: choosing one records
 *   "triggered" for the action itself (the action replays it by emitting
 *   its ATriggered()).
 * - A menu run with exec() records the chosen action's text as a fill-in
 *   ("" when the menu was dismissed), whatever the recording permission of
 *   the code that opened it, since the answer is needed to replay what
 *   asked. While exec() runs the menu is in fill-in mode: its actions and
 *   "Triggered" write nothing else. During a replay exec() shows nothing
 *   and never waits: it reads the fill-in, looks for the action whose text
 *   equals the part before the first "|", in submenus too down to five
 *   nested menus counting this one, triggers it as a user's choice would
 *   (the action and the menus leading to it report it) and answers it. A
 *   text no action has is reported in the fixed-script report and answered
 *   by a new plain action with that text, child of the menu.
 *
 * popup() shows nothing during a replay. A menu built not scriptable is a
 * plain QMenu, except that during a replay exec() answers null at once
 * rather than wait for a person. The add functions make the menu the
 * registry parent of the actions and menus added.
 */
class ORVEXQTUIBASE_EXPORT AQMenu : public QMenu, public IAQScriptable
{
    Q_OBJECT

public:
    AQMenu(const QString& name, const QString& title, QWidget* parent, bool scriptable);
    AQMenu(const QString& name, QWidget* parent, bool scriptable);
    explicit AQMenu(QWidget* parent = nullptr, bool scriptable = true);

    /// Plain actions, as QMenu makes them (QMenu's other forms are
    /// reached as QMenu::addAction).
    QAction* addAction(const QString& text) { return QMenu::addAction(text); }
    QAction* addAction(const QIcon& icon, const QString& text) { return QMenu::addAction(icon, text); }
    AQAction* addAction(const QString& name, const QString& text);
    AQAction* addAction(const QString& name, const QIcon& icon, const QString& text);
    AQAction* addAction(const QString& name, const QString& text, const QObject* receiver, const char* member,
                        const QKeySequence& shortcut = QKeySequence());
    AQAction* addAction(const QString& name, const QIcon& icon, const QString& text, const QObject* receiver,
                        const char* member, const QKeySequence& shortcut = QKeySequence());
    void addAction(QAction* action);

    QAction* addMenu(QMenu* menu);
    /// A submenu, scriptable when this menu is, registered under @p title.
    AQMenu* addMenu(const QString& title);
    AQMenu* addMenu(const QIcon& icon, const QString& title);

    /// Runs the menu at the cursor position.
    QAction* exec();
    QAction* exec(const QPoint& pos, QAction* at = nullptr);
    void popup(const QPoint& pos, QAction* at = nullptr);

    /// In fill-in mode a chosen action records its text as a fill-in, once
    /// until the next exec(), instead of a "triggered" line.
    void setFillinMode(bool on) { m_fillinMode = on; }
    bool isFillinMode() const { return m_fillinMode; }
    bool isScriptable() const { return m_scriptable; }

    void scriptReplay(const QString& signal, const QStringList& args) override;

Q_SIGNALS:
    void ATriggered(QAction* action);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void handleTriggeredSignal(QAction* action);
    void onActionTriggered();

private:
    AQAction* makeAction(const QString& name, const QString& text, const QIcon& icon);
    AQAction* connectAction(AQAction* action, const QObject* receiver, const char* member,
                            const QKeySequence& shortcut);
    void adopt(QObject* item);
    void recordChoiceOnce(const QString& text);
    QAction* replayedChoice();

    bool m_fillinMode = false;
    bool m_scriptable = false;
    bool m_fillinRecorded = false;
};

} // namespace QtUIBase
