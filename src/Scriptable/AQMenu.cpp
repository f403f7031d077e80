#include "Scriptable/AQMenu.h"

#include "Script/AQScriptBackend.h"
#include "Scriptable/AQAction.h"
#include "Scriptable/AQWrapperSupport_p.h"

#include <QCursor>
#include <QPointer>

namespace QtUIBase {

using namespace Wrapper;

namespace {

constexpr int MaxSearchDepth = 5;
// Shared by every menu: a search started in a submenu counts the levels
// already entered.
int s_searchDepth = 0;

/// The action with @p text in @p menu or its submenus; @p path receives the
/// menus from @p menu down to the one that holds it.
QAction* findAction(QMenu* menu, const QString& text, QList<QMenu*>& path)
{
    if (s_searchDepth >= MaxSearchDepth)
        return nullptr;
    ++s_searchDepth;
    path << menu;
    QAction* found = nullptr;
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        if (action->text() == text)
            found = action;
        else if (action->menu())
            found = findAction(action->menu(), text, path);
        if (found)
            break;
    }
    if (!found)
        path.removeLast();
    --s_searchDepth;
    return found;
}

} // namespace

AQMenu::AQMenu(const QString& name, const QString& title, QWidget* parent, bool scriptable)
    : QMenu(title, parent)
    , m_scriptable(scriptable)
{
    registerIfScriptable(this, name, scriptable);
}

AQMenu::AQMenu(const QString& name, QWidget* parent, bool scriptable)
    : AQMenu(name, QString(), parent, scriptable)
{
}

AQMenu::AQMenu(QWidget* parent, bool scriptable)
    : AQMenu(QString(), QString(), parent, scriptable)
{
}

void AQMenu::connectNotify(const QMetaMethod& signal)
{
    QMenu::connectNotify(signal);
    if (m_scriptable && isSignal(signal, &AQMenu::ATriggered))
        connect(this, &QMenu::triggered, this, &AQMenu::handleTriggeredSignal, Qt::UniqueConnection);
}

void AQMenu::adopt(QObject* item)
{
    const int id = item ? AQObjects::find(item) : -1;
    if (id >= 0)
        AQObjects::setParentObject(id, this);
}

AQAction* AQMenu::makeAction(const QString& name, const QString& text, const QIcon& icon)
{
    // Registered here rather than by the action: the action records through
    // the menu, not on its own.
    auto* action = new AQAction(name, icon, text, this, false);
    AQObjects::add(action, name);
    adopt(action);
    QMenu::addAction(action);
    connect(action, &QAction::triggered, this, &AQMenu::onActionTriggered);
    return action;
}

AQAction* AQMenu::connectAction(AQAction* action, const QObject* receiver, const char* member,
                                const QKeySequence& shortcut)
{
    action->setShortcut(shortcut);
    if (receiver && member) {
        connect(action, SIGNAL(triggered()), receiver, member);
        connect(action, SIGNAL(ATriggered()), receiver, member);
    }
    return action;
}

AQAction* AQMenu::addAction(const QString& name, const QString& text)
{
    return makeAction(name, text, QIcon());
}

AQAction* AQMenu::addAction(const QString& name, const QIcon& icon, const QString& text)
{
    return makeAction(name, text, icon);
}

AQAction* AQMenu::addAction(const QString& name, const QString& text, const QObject* receiver, const char* member,
                            const QKeySequence& shortcut)
{
    return connectAction(makeAction(name, text, QIcon()), receiver, member, shortcut);
}

AQAction* AQMenu::addAction(const QString& name, const QIcon& icon, const QString& text, const QObject* receiver,
                            const char* member, const QKeySequence& shortcut)
{
    return connectAction(makeAction(name, text, icon), receiver, member, shortcut);
}

void AQMenu::addAction(QAction* action)
{
    QMenu::addAction(action);
    adopt(action);
}

QAction* AQMenu::addMenu(QMenu* menu)
{
    QAction* action = QMenu::addMenu(menu);
    adopt(menu);
    return action;
}

AQMenu* AQMenu::addMenu(const QString& title)
{
    return addMenu(QIcon(), title);
}

AQMenu* AQMenu::addMenu(const QIcon& icon, const QString& title)
{
    auto* menu = new AQMenu(title, title, this, m_scriptable);
    menu->setIcon(icon);
    addMenu(static_cast<QMenu*>(menu));
    return menu;
}

void AQMenu::handleTriggeredSignal(QAction* action)
{
    const int id = AQObjects::find(action);
    const QObject* owner = id >= 0 ? AQObjects::getParentObjectPtr(id) : nullptr;
    if (!owner || AQObjects::find(owner) < 0)
        return;
    // Inside exec() the choice is the fill-in; a second record would replay
    // it twice.
    if (!m_fillinMode)
        AQScripts::recordSignal(this, QStringLiteral("Triggered"), decimal(actions().indexOf(action)));
    withRecordingSuppressed([&] { Q_EMIT ATriggered(action); });
}

void AQMenu::recordChoiceOnce(const QString& text)
{
    if (m_fillinRecorded)
        return;
    m_fillinRecorded = true;
    // The answer belongs in the script even when the code that opened the
    // menu runs with recording suppressed.
    AQRecordingGuard allowed(true);
    AQScripts::recordFillin(text);
}

void AQMenu::onActionTriggered()
{
    auto* action = qobject_cast<QAction*>(sender());
    if (!action)
        return;
    if (m_fillinMode)
        recordChoiceOnce(action->text());
    else
        AQScripts::recordSignal(action, QStringLiteral("triggered"));
}

QAction* AQMenu::exec()
{
    return exec(QCursor::pos());
}

QAction* AQMenu::exec(const QPoint& pos, QAction* at)
{
    if (AQIsScriptReplayActive())
        return m_scriptable ? replayedChoice() : nullptr;
    if (!m_scriptable)
        return QMenu::exec(pos, at);

    const bool wasFillinMode = m_fillinMode;
    m_fillinMode = true;
    m_fillinRecorded = false;
    const QPointer<AQMenu> self(this);
    QAction* chosen = QMenu::exec(pos, at);
    if (!self)
        return chosen;
    m_fillinMode = wasFillinMode;
    recordChoiceOnce(chosen ? chosen->text() : QString());
    return chosen;
}

QAction* AQMenu::replayedChoice()
{
    const QString fillin = AQScripts::getFillin();
    if (fillin.isEmpty())
        return nullptr;
    const QString text = fillin.section(QLatin1Char('|'), 0, 0);
    QList<QMenu*> path;
    QAction* found = findAction(this, text, path);
    if (!found) {
        reportStaleFillin(this, fillin);
        return new QAction(text, this);
    }
    const QPointer<QAction> guard(found);
    found->trigger();
    // A user's choice is reported by the menu holding the action and by
    // each menu above it.
    for (int i = path.size() - 1; i >= 0 && guard; --i)
        Q_EMIT path.at(i)->triggered(found);
    return guard.data();
}

void AQMenu::popup(const QPoint& pos, QAction* at)
{
    if (!AQIsScriptReplayActive())
        QMenu::popup(pos, at);
}

void AQMenu::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("Triggered"))
        return;
    const int position = args.isEmpty() ? -1 : toInt(args.first());
    const QList<QAction*> all = actions();
    QAction* action = position >= 0 && position < all.size() ? all.at(position) : nullptr;
    if (!action)
        reportStaleLine(this, signal, args);
    withRecordingSuppressed([&] { Q_EMIT ATriggered(action); });
}

} // namespace QtUIBase
