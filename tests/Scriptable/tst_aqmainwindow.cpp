#include "ScriptSandbox.h"
#include "SettingsSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQMainWindow.h>
#include <Scriptable/MainWindow.h>
#include <Settings/AQSettings.h>

#include <QPointer>
#include <QToolBar>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

class tst_AQMainWindow : public QObject
{
    Q_OBJECT

    std::unique_ptr<SettingsSandbox> m_settings;
    std::unique_ptr<ScriptSandbox> m_sandbox;

private Q_SLOTS:
    void initTestCase() { m_settings = std::make_unique<SettingsSandbox>(); }

    void init()
    {
        m_settings->clear();
        m_sandbox = std::make_unique<ScriptSandbox>();
    }

    void cleanup() { m_sandbox.reset(); }

    void closeRecordsClosed_data()
    {
        QTest::addColumn<bool>("byProgram");
        QTest::addColumn<QStringList>("records");
        // The window stands as its own parent.
        QTest::newRow("title bar") << false << QStringList{"QtSignal Gallery_Window Gallery_Window closed"};
        QTest::newRow("program: unregistered first") << true << QStringList();
    }

    void closeRecordsClosed()
    {
        QFETCH(bool, byProgram);
        QFETCH(QStringList, records);
        const QString script = m_sandbox->path("close.scr");
        QPointer<MainWindow> window = new MainWindow("Gallery Window");
        QCOMPARE(AQMainWindow::_getMainWindow(), window.data());
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QVERIFY(AQOpenScriptFileForRecord(script, "2"));
        AQScripts::recordingAllowed(false); // the window records its close even then
        if (byProgram)
            window->close();
        else
            window->QWidget::close(); // as the title bar's close button does
        AQScripts::restoreRecordingAllowed();
        AQStopScriptRecording();
        QCOMPARE(ScriptSandbox::recordLines(script), records);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(window.isNull());
        QCOMPARE(AQMainWindow::_getMainWindow(), nullptr);
    }

    void replayedCloseDeletesWindow_data()
    {
        QTest::addColumn<QString>("signal");
        QTest::addColumn<bool>("deleted");
        QTest::newRow("closed") << "closed" << true;
        QTest::newRow("other signal") << "hidden" << false;
    }

    void replayedCloseDeletesWindow()
    {
        QFETCH(QString, signal);
        QFETCH(bool, deleted);
        QPointer<MainWindow> window = new MainWindow("Gallery Window");
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        const QString script = m_sandbox->path("replay.scr");
        m_sandbox->writeScript(script, {"QtSignal Gallery_Window Gallery_Window " + signal});
        QVERIFY(AQOpenScriptFileForReplay(script, 0, 2));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(window.isNull(), deleted);
        delete window;
    }

    void namedWindowRecordingPermission_data()
    {
        QTest::addColumn<bool>("recording");
        QTest::newRow("recording") << true;
        QTest::newRow("not recording") << false;
    }

    void namedWindowRecordingPermission()
    {
        QFETCH(bool, recording);
        if (recording)
            QVERIFY(AQOpenScriptFileForRecord(m_sandbox->path("perm.scr"), "2"));
        AQMainWindow window("Viewer", nullptr, {}, true);
        QCOMPARE(AQScripts::isRecordingDisabled(), !recording);
    }

    void stateIniSlots()
    {
        AQMainWindow window("Viewer", nullptr, {}, true);
        auto* tools = new QToolBar("Tools", &window);
        tools->setObjectName("tools");
        window.addToolBar(Qt::LeftToolBarArea, tools);
        window.resize(420, 330);
        window.saveMainWindowState(true);
        window.resize(100, 100);
        window.addToolBar(Qt::TopToolBarArea, tools);
        window.restoreMainWindowState();
        QCOMPARE(window.size(), QSize(420, 330));
        QCOMPARE(window.toolBarArea(tools), Qt::LeftToolBarArea);
        QCOMPARE(AQSettings::getMainWindow(), &window);
    }
};

QTEST_MAIN(tst_AQMainWindow)
#include "tst_aqmainwindow.moc"
