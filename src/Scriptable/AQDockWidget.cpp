#include "Scriptable/AQDockWidget.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QCloseEvent>

namespace QtUIBase {

using namespace Wrapper;

AQDockWidget::AQDockWidget(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : QDockWidget(parent, flags)
    , m_scriptable(scriptable)
{
    registerIfScriptable(this, name, scriptable);
    connect(this, &QDockWidget::visibilityChanged, this, &AQDockWidget::HandleDockWidgetVisiblity);
}

AQDockWidget::AQDockWidget(QWidget* parent, Qt::WindowFlags flags)
    : AQDockWidget(QString(), parent, flags, true)
{
}

void AQDockWidget::HandleDockWidgetVisiblity(bool visible)
{
    if (visible)
        AQScripts::recordSignal(this, QStringLiteral("clicked"));
}

void AQDockWidget::closeEvent(QCloseEvent* event)
{
    AQScripts::recordSignal(this, QStringLiteral("closeEvent"));
    QDockWidget::closeEvent(event);
}

void AQDockWidget::scriptReplay(const QString& signal, const QStringList&)
{
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("clicked")) {
        setVisible(true);
        raise();
        setFocus();
    } else if (signal == QLatin1String("closeEvent")) {
        QCloseEvent event;
        closeEvent(&event);
        // The parent is closed, not the dock.
        if (QWidget* parent = parentWidget())
            parent->close();
    }
}

} // namespace QtUIBase
