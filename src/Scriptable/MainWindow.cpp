#include "Scriptable/MainWindow.h"

#include "Script/AQObjects.h"
#include "Script/AQRecordingGuard.h"

namespace QtUIBase {

namespace {
const QString& stateKey()
{
    static const QString key = QStringLiteral("state");
    return key;
}
} // namespace

MainWindow::MainWindow(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : AQMainWindow(parent, flags, scriptable)
{
    setObjectName(QString(name).replace(QLatin1Char(' '), QLatin1Char('_')));
    setAttribute(Qt::WA_DeleteOnClose);
    const int id = AQObjects::find(this);
    if (id >= 0)
        AQObjects::setParentObject(id, this);
}

bool MainWindow::close()
{
    return AQMainWindow::close();
}

void MainWindow::scriptReplay(const QString& signal, const QStringList&)
{
    if (signal != QLatin1String("closed"))
        return;
    close();
    deleteLater();
}

void MainWindow::restoreGeoms(QSettings& settings, const QVariant& value)
{
    SettingsSupport<MainWindow>::restoreGeoms(settings, value);
    if (m_defaultState.isEmpty())
        m_defaultState = saveState(0);
    const QVariant state = settings.value(stateKey());
    if (state.isValid())
        restoreState(state.toByteArray(), 0);
}

QByteArray MainWindow::saveGeoms(QSettings& settings) const
{
    settings.setValue(stateKey(), saveState(0));
    return saveGeometry();
}

void MainWindow::RestoreDefaultSettings()
{
    restoreState(m_defaultState, 0);
    SettingsSupport<MainWindow>::RestoreDefaultSettings();
}

void MainWindow::showEvent(QShowEvent* event)
{
    if (m_restoreOnFirstShow) {
        m_restoreOnFirstShow = false;
        restoreGeometryAndSettings();
    }
    AQMainWindow::showEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    saveGeometryAndSettings(false);
    {
        AQRecordingGuard allow(true);
        AQScripts::recordSignal(this, QStringLiteral("closed"));
    }
    AQMainWindow::closeEvent(event);
}

void MainWindow::RestoreSettings(QSettings& settings)
{
    SettingsSupport<MainWindow>::RestoreSettings(settings);
}

void MainWindow::SaveSettings(QSettings& settings) const
{
    SettingsSupport<MainWindow>::SaveSettings(settings);
}

} // namespace QtUIBase
