#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QDockWidget>

namespace QtUIBase {

/**
 * A scriptable QDockWidget.
 *
 * Records "clicked" (no arguments) whenever the dock becomes visible (hiding
 * records nothing) and "closeEvent" when it is closed. Every dock watches
 * its visibility, registered or not; only registered docks are written.
 *
 * Replay of "clicked" shows the dock, raises it and gives it the focus.
 * Replay of "closeEvent" runs the dock's close handling and then closes the
 * dock's parent widget, if it has one: the parent, not the dock (recorded
 * scripts close floating tool windows that way). Both with recording
 * suppressed.
 */
class ORVEXQTUIBASE_EXPORT AQDockWidget : public QDockWidget, public IAQScriptable
{
    Q_OBJECT

public:
    AQDockWidget(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable);
    /// Registers under the empty name (keeping the object name).
    explicit AQDockWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = {});

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

protected:
    void closeEvent(QCloseEvent* event) override;

private Q_SLOTS:
    void HandleDockWidgetVisiblity(bool visible);

private:
    bool m_scriptable = false;
};

} // namespace QtUIBase
