#include "Scriptable/AQMainWindow.h"

#include "Script/AQObjects.h"
#include "Script/AQScriptBackend.h"
#include "Script/AQScripts.h"
#include "Settings/AQSettings.h"

#include <QCloseEvent>

namespace QtUIBase {

AQMainWindow* AQMainWindow::_mainWindow = nullptr;

AQMainWindow::AQMainWindow(QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : QMainWindow(parent, flags)
{
    _mainWindow = this;
    if (scriptable)
        AQObjects::add(this, QStringLiteral("MainWindow"));
    // Pushed without a matching pop: building the window is not a user
    // operation; dialogs and buttons allow recording again.
    AQScripts::recordingAllowed(false);
}

AQMainWindow::AQMainWindow(const char* name, QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : QMainWindow(parent, flags)
    , m_name(QString::fromLatin1(name))
{
    _mainWindow = this;
    if (scriptable)
        AQObjects::add(this, m_name);
    // A window opened while a script is recorded is part of the recording.
    if (AQIsScriptRecordActive())
        AQScripts::forceRecordingAllowed(true);
    else
        AQScripts::recordingAllowed(false); // unbalanced, as in the other constructor
}

AQMainWindow::~AQMainWindow()
{
    if (_mainWindow == this)
        _mainWindow = nullptr;
}

QString AQMainWindow::windowName() const
{
    return m_name.isEmpty() ? objectName() : m_name;
}

bool AQMainWindow::close()
{
    AQObjects::remove(this);
    return QMainWindow::close();
}

void AQMainWindow::restoreMainWindowState()
{
    AQSettings::withStateIni([this](AQSettings& settings) { settings.restoreState(windowName(), *this); });
}

void AQMainWindow::saveMainWindowState(bool sync)
{
    AQSettings::withStateIni([this, sync](AQSettings& settings) {
        settings.saveState(*this, windowName());
        if (sync)
            settings.sync();
    });
}

void AQMainWindow::closeEvent(QCloseEvent* event)
{
    saveMainWindowState(false);
    QMainWindow::closeEvent(event);
}

} // namespace QtUIBase
