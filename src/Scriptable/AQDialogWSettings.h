#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQDialog.h"
#include "Settings/SettingsSupport.h"

namespace QtUIBase {

/**
 * A scriptable dialog that keeps its geometry and values of its own in the
 * user's settings store, under its class name.
 *
 * Showing the dialog restores both; finishing it saves the geometry always
 * and the own values only when it is accepted (a result other than 0), so
 * a cancelled dialog does not keep what the user tried. While a script is
 * recorded or replayed the own values are neither read nor written.
 * Subclasses keep their values by overriding SaveSettings() and
 * RestoreSettings().
 *
 * Closing it records "closed" and passes the event to QDialog directly.
 */
class ORVEXQTUIBASE_EXPORT AQDialogWSettings : public AQDialog, public SettingsSupport<AQDialogWSettings>
{
    Q_OBJECT

public:
    explicit AQDialogWSettings(const QString& name, QWidget* parent = nullptr, Qt::WindowFlags flags = {},
                               bool scriptable = true, PositionMode mode = DefaultPosition);

public Q_SLOTS:
    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void RestoreSettings(QSettings& settings) override;
    void SaveSettings(QSettings& settings) const override;
};

} // namespace QtUIBase
