#include "Scriptable/AQWidgetWSettings.h"

namespace QtUIBase {

AQWidgetWSettings::AQWidgetWSettings(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : AQWidget(name, parent, flags, scriptable)
{
}

void AQWidgetWSettings::restoreGeoms(QSettings&, const QVariant&) {}

QByteArray AQWidgetWSettings::saveGeoms(QSettings&) const
{
    return QByteArray();
}

void AQWidgetWSettings::showEvent(QShowEvent* event)
{
    restoreGeometryAndSettings();
    AQWidget::showEvent(event);
}

void AQWidgetWSettings::hideEvent(QHideEvent* event)
{
    saveGeometryAndSettings(false);
    AQWidget::hideEvent(event);
}

} // namespace QtUIBase
