#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QLabel>

namespace QtUIBase {

/**
 * A scriptable QLabel: records link activations and context-menu requests.
 *
 * Nothing is connected until something connects to ALinkActivated() or
 * ACustomContextMenuRequested() (and the label is scriptable): then
 * "linkActivated" (the link) or "customContextMenuRequested" (x and y in
 * decimal) is recorded. ALinkActivated() runs with recording suppressed;
 * ACustomContextMenuRequested() does not, so the menu it opens records its
 * own choice. Replay emits the A signal with the recorded values, recording
 * suppressed.
 */
class ORVEXQTUIBASE_EXPORT AQLabel : public QLabel, public IAQScriptable
{
    Q_OBJECT

public:
    AQLabel(const QString& name, const QString& text, QWidget* parent, Qt::WindowFlags flags, bool scriptable);
    AQLabel(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable);
    /// Registers under a null name (keeping the object name) when @p scriptable.
    AQLabel(QWidget* parent, Qt::WindowFlags flags, bool scriptable);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void ALinkActivated(const QString& link);
    void ACustomContextMenuRequested(const QPoint& pos);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void handleLinkActivated(const QString& link);
    void handleCustomContextMenuRequested(const QPoint& pos);

private:
    bool m_scriptable = false;
};

} // namespace QtUIBase
