#include "ScriptSandbox.h"
#include "SettingsSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQMainWindow.h>
#include <Scriptable/MainWindow.h>
#include <Settings/AQSettings.h>

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

class tst_AQMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void scriptNames_data();
    void scriptNames();
    void closeRecordsClosed();
    void replayedCloseDeletesWindow_data();
    void replayedCloseDeletesWindow();
    void namedWindowRecordingPermission_data();
    void namedWindowRecordingPermission();
    void stateIniSlots();

private:
    std::unique_ptr<SettingsSandbox> m_settings;
    std::unique_ptr<ScriptSandbox> m_sandbox;
};

void tst_AQMainWindow::initTestCase()
{
    m_settings = std::make_unique<SettingsSandbox>();
}

void tst_AQMainWindow::init()
{
    m_settings->clear();
    m_sandbox = std::make_unique<ScriptSandbox>();
}

void tst_AQMainWindow::cleanup()
{
    m_sandbox.reset();
}

void tst_AQMainWindow::scriptNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("objectName");
    QTest::newRow("blanks") << QStringLiteral("Gallery Main Window") << QStringLiteral("Gallery_Main_Window");
    QTest::newRow("plain") << QStringLiteral("Workbench") << QStringLiteral("Workbench");
}

void tst_AQMainWindow::scriptNames()
{
    QFETCH(QString, name);
    QFETCH(QString, objectName);
    AQMainWindow first;
    QCOMPARE(first.objectName(), QStringLiteral("MainWindow"));
    QCOMPARE(AQMainWindow::_getMainWindow(), &first);

    MainWindow window(name);
    QCOMPARE(AQMainWindow::_getMainWindow(), &window);
    QCOMPARE(window.objectName(), objectName);
    QCOMPARE(window.windowName(), objectName);
    const int id = AQObjects::find(&window);
    QVERIFY(id >= 0);
    QCOMPARE(AQObjects::getParentObjectPtr(id), &window);
}

void tst_AQMainWindow::closeRecordsClosed()
{
    const QString script = m_sandbox->path(QStringLiteral("close.scr"));
    QPointer<MainWindow> window = new MainWindow(QStringLiteral("Gallery Window"));
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QVERIFY(AQOpenScriptFileForRecord(script, QStringLiteral("2")));
    AQScripts::recordingAllowed(false); // the window records its close even then
    window->QWidget::close(); // as the title bar's close button does

    AQScripts::restoreRecordingAllowed();
    AQStopScriptRecording();
    QCOMPARE(ScriptSandbox::recordLines(script),
             QStringList{QStringLiteral("QtSignal Gallery_Window Gallery_Window closed")});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(window.isNull());
}

void tst_AQMainWindow::replayedCloseDeletesWindow_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<bool>("deleted");
    QTest::newRow("closed") << QStringLiteral("closed") << true;
    QTest::newRow("other signal") << QStringLiteral("hidden") << false;
}

void tst_AQMainWindow::replayedCloseDeletesWindow()
{
    QFETCH(QString, signal);
    QFETCH(bool, deleted);
    QPointer<MainWindow> window = new MainWindow(QStringLiteral("Gallery Window"));
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    const QString script = m_sandbox->path(QStringLiteral("replay.scr"));
    m_sandbox->writeScript(script, {QStringLiteral("QtSignal Gallery_Window Gallery_Window ") + signal});
    QVERIFY(AQOpenScriptFileForReplay(script, 0, 2));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(window.isNull(), deleted);
    delete window;
}

void tst_AQMainWindow::namedWindowRecordingPermission_data()
{
    QTest::addColumn<bool>("recording");
    QTest::newRow("recording") << true;
    QTest::newRow("not recording") << false;
}

void tst_AQMainWindow::namedWindowRecordingPermission()
{
    QFETCH(bool, recording);
    if (recording)
        QVERIFY(AQOpenScriptFileForRecord(m_sandbox->path(QStringLiteral("perm.scr")), QStringLiteral("2")));
    AQMainWindow window("Viewer", nullptr, {}, true);
    QCOMPARE(AQScripts::isRecordingDisabled(), !recording);
}

void tst_AQMainWindow::stateIniSlots()
{
    AQMainWindow window("Viewer", nullptr, {}, true);
    window.restoreMainWindowState();
    const QRect expected = AQSettings::defaultMainWindowRect(QGuiApplication::primaryScreen()->availableGeometry());
    QCOMPARE(window.size(), expected.size());
    QCOMPARE(AQSettings::getMainWindow(), &window);

    window.resize(420, 330);
    window.saveMainWindowState(true);
    QSettings ini(m_settings->stateIniPath(), QSettings::IniFormat);
    QCOMPARE(ini.value(QStringLiteral("Viewer/geometry")).toByteArray(), window.saveGeometry());
    QVERIFY(ini.contains(QStringLiteral("Viewer/Layout")));

    window.show();
    QVERIFY(AQObjects::find(&window) >= 0);
    window.close(); // the program's close: unregistered first, so not recorded
    QCOMPARE(AQObjects::find(&window), -1);
    QVERIFY(!window.isVisible());
}

QTEST_MAIN(tst_AQMainWindow)
#include "tst_aqmainwindow.moc"
