#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"
#include "Scriptable/AQMainWindow.h"
#include "Settings/SettingsSupport.h"

namespace QtUIBase {

/**
 * The application's main window with settings persistence.
 *
 * Its object name is @p name with blanks turned into "_", and it is the
 * parent of its own registry entry, so it records and replays under its own
 * name. It is deleted when closed.
 *
 * On the first show it restores geometry, dock and toolbar state
 * ("SizeAndPos", "state") and its own values from the user's settings
 * store, under its class name; closing saves them (own values not while a
 * script is recorded or replayed), records "closed" and writes "geometry"
 * and "Layout" to the state INI file. Replaying "closed" closes and
 * deletes the window. close() unregisters the window before closing it, so
 * only a close by the user (the title bar) is recorded. Subclasses keep values of their own by overriding
 * SaveSettings() and RestoreSettings().
 */
class ORVEXQTUIBASE_EXPORT MainWindow : public AQMainWindow, public SettingsSupport<MainWindow>, public IAQScriptable
{
    Q_OBJECT

public:
    explicit MainWindow(const QString& name, QWidget* parent = nullptr, Qt::WindowFlags flags = {},
                        bool scriptable = true);

    bool close();
    void scriptReplay(const QString& signal, const QStringList& args) override;

    void restoreGeoms(QSettings& settings, const QVariant& value) override;
    QByteArray saveGeoms(QSettings& settings) const override;
    void RestoreDefaultSettings() override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void RestoreSettings(QSettings& settings) override;
    void SaveSettings(QSettings& settings) const override;

    bool m_restoreOnFirstShow = true;
};

} // namespace QtUIBase
