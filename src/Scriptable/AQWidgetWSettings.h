#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQWidget.h"
#include "Settings/SettingsSupport.h"

namespace QtUIBase {

/**
 * A scriptable widget that keeps values of its own in the user's settings
 * store, under its class name: they are restored when the widget is shown
 * and saved when it is hidden (never while a script is recorded or
 * replayed). Its geometry is not stored: such widgets are placed by their
 * parents. Subclasses override SaveSettings()/RestoreSettings().
 */
class ORVEXQTUIBASE_EXPORT AQWidgetWSettings : public AQWidget, public SettingsSupport<AQWidgetWSettings>
{
    Q_OBJECT

public:
    explicit AQWidgetWSettings(const QString& name, QWidget* parent = nullptr, Qt::WindowFlags flags = {},
                               bool scriptable = true);

    void restoreGeoms(QSettings& settings, const QVariant& value) override;
    QByteArray saveGeoms(QSettings& settings) const override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
};

} // namespace QtUIBase
