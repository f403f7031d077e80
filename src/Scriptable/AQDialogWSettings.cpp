#include "Scriptable/AQDialogWSettings.h"

#include "Script/AQScripts.h"

namespace QtUIBase {

AQDialogWSettings::AQDialogWSettings(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable,
                                     PositionMode mode)
    : AQDialog(name, parent, flags, scriptable, mode)
{
}

void AQDialogWSettings::done(int result)
{
    saveGeometryAndSettings(result == 0);
    QDialog::done(result);
}

void AQDialogWSettings::showEvent(QShowEvent* event)
{
    restoreGeometryAndSettings();
    QDialog::showEvent(event);
}

void AQDialogWSettings::closeEvent(QCloseEvent* event)
{
    AQScripts::recordSignal(this, QStringLiteral("closed"));
    QDialog::closeEvent(event);
}

void AQDialogWSettings::RestoreSettings(QSettings& settings)
{
    SettingsSupport<AQDialogWSettings>::RestoreSettings(settings);
}

void AQDialogWSettings::SaveSettings(QSettings& settings) const
{
    SettingsSupport<AQDialogWSettings>::SaveSettings(settings);
}

} // namespace QtUIBase
