#pragma once

#include "OrvexQtUIBase_export.h"

#include <QAction>
#include <QIcon>
#include <QStringList>

namespace QtUIBase {

/**
 * A scriptable QAction.
 *
 * The application connects to ATriggered() instead of triggered(). The
 * action starts recording only when something connects to ATriggered() (and
 * it was built scriptable): each trigger then writes a "triggered" line,
 * with "1" or "0" for a checkable action, and ATriggered() runs with
 * recording suppressed so that its consequences are not recorded twice.
 *
 * Replay sets the checked state (or toggles it without an argument) and
 * emits ATriggered(). The action is replayed by class name, not through
 * IAQScriptable.
 */
class ORVEXQTUIBASE_EXPORT AQAction : public QAction
{
    Q_OBJECT

public:
    AQAction(const QString& name, const QString& text, QObject* parent, bool scriptable);
    AQAction(const QString& name, const QIcon& icon, const QString& text, QObject* parent, bool scriptable);
    /// The action's text is @p name.
    AQAction(const QString& name, QObject* parent, bool scriptable);

    /// Sets the trigger-connect flag (true by default); kept for hosts that
    /// switch it, not read by the action itself.
    void isActionTrigerConnect(bool connect) { m_triggerConnect = connect; }
    bool triggerConnect() const { return m_triggerConnect; }
    bool isScriptable() const { return m_scriptable; }

    /// Replays a trigger; always answers 0.
    long scriptReplay(const QStringList& args);
    virtual long scriptReplay();

Q_SIGNALS:
    void ATriggered();

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void handleTriggeredSignal();

private:
    void registerAs(const QString& name);

    bool m_scriptable = false;
    bool m_triggerConnect = true;
};

} // namespace QtUIBase
