#include "SettingsSandbox.h"

#include <Settings/AQSettings.h>

#include <QDialog>
#include <QDockWidget>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QToolBar>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

class tst_AQSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void defaultMainWindowRect_data();
    void defaultMainWindowRect();
    void placeDialog_data();
    void placeDialog();
    void quarterPoint();
    void keepDockFrameOnScreen_data();
    void keepDockFrameOnScreen();

    void storeStaysInSandbox();
    void dialogRoundTrip_data();
    void dialogRoundTrip();
    void dialogWithoutStoredPosition_data();
    void dialogWithoutStoredPosition();
    void widgetAndDockRoundTrip();
    void mainWindowDefaultAndStored();
    void fixedSizeFlagAndRestoreFixedState();
    void sanityCheckDockBringsFloatingDockBack();

private:
    static QRect available() { return QGuiApplication::primaryScreen()->availableGeometry(); }
    std::unique_ptr<SettingsSandbox> m_sandbox;
};

void tst_AQSettings::initTestCase()
{
    m_sandbox = std::make_unique<SettingsSandbox>();
}

void tst_AQSettings::init()
{
    m_sandbox->clear();
}

void tst_AQSettings::defaultMainWindowRect_data()
{
    QTest::addColumn<QRect>("available");
    QTest::addColumn<QRect>("expected");
    QTest::newRow("full hd") << QRect(0, 0, 1920, 1080) << QRect(460, 140, 1000, 800);
    QTest::newRow("narrow") << QRect(0, 0, 900, 1080) << QRect(90, 140, 720, 800);
    QTest::newRow("low") << QRect(0, 0, 1920, 700) << QRect(460, 70, 1000, 560);
    QTest::newRow("small both ways") << QRect(0, 0, 800, 600) << QRect(80, 60, 640, 480);
    QTest::newRow("exact minimum") << QRect(0, 0, 1000, 800) << QRect(0, 0, 1000, 800);
    QTest::newRow("odd width truncated") << QRect(0, 0, 999, 800) << QRect(100, 0, 799, 800);
}

void tst_AQSettings::defaultMainWindowRect()
{
    QFETCH(QRect, available);
    QFETCH(QRect, expected);
    QCOMPARE(AQSettings::defaultMainWindowRect(available), expected);
}

void tst_AQSettings::placeDialog_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QRect>("expected");
    const QRect hd(0, 0, 1920, 1080);
    QTest::newRow("fits") << QPoint(100, 50) << QSize(400, 300) << hd << QRect(100, 50, 400, 300);
    QTest::newRow("beyond right edge") << QPoint(1800, 50) << QSize(400, 300) << hd << QRect(0, 0, 400, 300);
    QTest::newRow("beyond bottom") << QPoint(10, 1000) << QSize(400, 300) << hd << QRect(0, 0, 400, 300);
    QTest::newRow("larger than screen") << QPoint(10, 10) << QSize(2500, 300) << hd << QRect(0, 0, 1920, 1080);
    QTest::newRow("second screen") << QPoint(100, 100) << QSize(400, 300) << QRect(1920, 0, 1280, 1024)
                                   << QRect(1920, 0, 400, 300);
    QTest::newRow("inside second screen") << QPoint(2000, 100) << QSize(400, 300) << QRect(1920, 0, 1280, 1024)
                                          << QRect(2000, 100, 400, 300);
}

void tst_AQSettings::placeDialog()
{
    QFETCH(QPoint, position);
    QFETCH(QSize, size);
    QFETCH(QRect, screen);
    QFETCH(QRect, expected);
    QCOMPARE(AQSettings::placeDialog(position, size, screen), expected);
}

void tst_AQSettings::quarterPoint()
{
    QCOMPARE(AQSettings::quarterPoint(QRect(0, 0, 1920, 1080)), QPoint(480, 270));
    QCOMPARE(AQSettings::quarterPoint(QRect(0, 40, 1001, 803)), QPoint(250, 200));
}

void tst_AQSettings::keepDockFrameOnScreen_data()
{
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<QRect>("desktop");
    QTest::addColumn<QRect>("expected");
    const QRect hd(0, 0, 1920, 1080);
    QTest::newRow("inside") << QRect(100, 100, 300, 200) << hd << QRect(100, 100, 300, 200);
    QTest::newRow("above") << QRect(100, -50, 300, 200) << hd << QRect(100, 0, 300, 200);
    QTest::newRow("below, then pulled up") << QRect(100, 2000, 300, 200) << hd << QRect(100, 880, 300, 200);
    QTest::newRow("below, other screen beneath") << QRect(100, 2000, 300, 200) << QRect(0, 0, 1920, 2160)
                                                 << QRect(100, 1060, 300, 200);
    QTest::newRow("left") << QRect(-500, 100, 300, 200) << hd << QRect(0, 100, 300, 200);
    QTest::newRow("right") << QRect(2500, 100, 300, 200) << hd << QRect(1620, 100, 300, 200);
    QTest::newRow("sticks out right") << QRect(1800, 100, 300, 200) << hd << QRect(1620, 100, 300, 200);
    QTest::newRow("too wide") << QRect(100, 100, 2500, 200) << hd << QRect(0, 100, 1920, 200);
    QTest::newRow("too tall") << QRect(100, 100, 300, 1500) << hd << QRect(100, 0, 300, 1080);
    QTest::newRow("on second screen") << QRect(1800, 100, 300, 200) << QRect(0, 0, 3840, 1080)
                                      << QRect(1800, 100, 300, 200);
}

void tst_AQSettings::keepDockFrameOnScreen()
{
    QFETCH(QRect, frame);
    QFETCH(QRect, desktop);
    QFETCH(QRect, expected);
    QCOMPARE(AQSettings::keepDockFrameOnScreen(frame, QRect(0, 0, 1920, 1080), desktop), expected);
}

void tst_AQSettings::storeStaysInSandbox()
{
    QCOMPARE(AQSettings::organisationPath(), QStringLiteral("Halvren\\1.0.0\\MCAD"));
    AQSettings store(QStringLiteral("Main"));
    store.setValue(QStringLiteral("probe"), 1);
    store.sync();
    QVERIFY2(store.fileName().startsWith(QFileInfo(m_sandbox->path(QStringLiteral("user"))).absoluteFilePath()),
             qPrintable(store.fileName()));
    QVERIFY(store.fileName().contains(QStringLiteral("Halvren\\1.0.0\\MCAD")));
    QCOMPARE(AQSettings::getStateIniPath(), m_sandbox->stateIniPath());
}

void tst_AQSettings::dialogRoundTrip_data()
{
    QTest::addColumn<QPoint>("stored");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("keepsPlace");
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QTest::newRow("on screen") << QPoint(30, 40) << QSize(200, 150) << true;
    QTest::newRow("off screen") << QPoint(screen.right() + 500, 40) << QSize(200, 150) << false;
}

void tst_AQSettings::dialogRoundTrip()
{
    QFETCH(QPoint, stored);
    QFETCH(QSize, size);
    QFETCH(bool, keepsPlace);
    {
        QDialog dialog;
        dialog.resize(size);
        dialog.move(stored);
        AQSettings::withStateIni([&](AQSettings& s) { s.saveState(dialog, QStringLiteral("Options")); });
    }
    QSettings ini(m_sandbox->stateIniPath(), QSettings::IniFormat);
    QCOMPARE(ini.value(QStringLiteral("Options/Position")).toPoint(), stored);
    QCOMPARE(ini.value(QStringLiteral("Options/Size")).toSize(), size);

    QDialog restored;
    QVERIFY(AQSettings::withStateIni([&](AQSettings& s) { s.restoreState(QStringLiteral("Options"), restored); }));
    QCOMPARE(restored.size(), size);
    const QRect screen = QGuiApplication::screenAt(QCursor::pos()) ? QGuiApplication::screenAt(QCursor::pos())->geometry()
                                                                     : QGuiApplication::primaryScreen()->geometry();
    QCOMPARE(restored.pos(), keepsPlace ? stored : screen.topLeft());
}

void tst_AQSettings::dialogWithoutStoredPosition_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QPoint>("expected");
    QPoint anchor(12, 34);
    AQSettings::setWdwHoopsViewLeftRectPoint(anchor);
    QTest::newRow("filter dialog") << QStringLiteral("FilterFeatureWidget") << AQSettings::quarterPoint(available());
    QTest::newRow("other dialog") << QStringLiteral("Options") << anchor;
}

void tst_AQSettings::dialogWithoutStoredPosition()
{
    QFETCH(QString, name);
    QFETCH(QPoint, expected);
    QDialog dialog;
    AQSettings::withStateIni([&](AQSettings& s) { s.restoreState(name, dialog); });
    QCOMPARE(dialog.pos(), expected);
}

void tst_AQSettings::widgetAndDockRoundTrip()
{
    QPoint anchor(7, 9);
    AQSettings::setWdwViewLeftRectPoint(anchor);
    QWidget fresh;
    fresh.resize(120, 80);
    AQSettings::withStateIni([&](AQSettings& s) { s.restoreState(QStringLiteral("Panel"), fresh); });
    QCOMPARE(fresh.pos(), anchor);
    QCOMPARE(fresh.size(), QSize(120, 80));

    QWidget panel;
    panel.resize(321, 123);
    panel.move(50, 60);
    QDockWidget dock;
    dock.resize(222, 111);
    dock.move(70, 80);
    AQSettings::withStateIni([&](AQSettings& s) {
        s.saveState(panel, QStringLiteral("Panel"));
        s.saveState(dock, QStringLiteral("Dock"));
    });

    QWidget panelAgain;
    QDockWidget dockAgain;
    dockAgain.move(1, 2);
    AQSettings::withStateIni([&](AQSettings& s) {
        s.restoreState(QStringLiteral("Panel"), panelAgain);
        s.restoreState(QStringLiteral("Dock"), dockAgain);
    });
    QCOMPARE(panelAgain.geometry(), QRect(50, 60, 321, 123));
    QCOMPARE(dockAgain.size(), QSize(222, 111));
    QCOMPARE(dockAgain.pos(), QPoint(70, 80));

    QDockWidget untouched;
    untouched.move(5, 6);
    AQSettings::withStateIni([&](AQSettings& s) { s.restoreState(QStringLiteral("Unknown"), untouched); });
    QCOMPARE(untouched.pos(), QPoint(5, 6));
}

void tst_AQSettings::mainWindowDefaultAndStored()
{
    QMainWindow window;
    AQSettings::withStateIni([&](AQSettings& s) { s.restoreState(QStringLiteral("Main Frame"), window); });
    const QRect expected = AQSettings::defaultMainWindowRect(available());
    QCOMPARE(window.size(), expected.size());
    QCOMPARE(window.pos(), expected.topLeft());
    QCOMPARE(AQSettings::getMainWindow(), &window);

    auto* bar = new QToolBar(QStringLiteral("Tools"), &window);
    bar->setObjectName(QStringLiteral("tools"));
    window.addToolBar(Qt::LeftToolBarArea, bar);
    window.setGeometry(40, 50, 500, 400);
    AQSettings::withStateIni([&](AQSettings& s) { s.saveState(window, QStringLiteral("Main Frame")); });

    QMainWindow again;
    auto* againBar = new QToolBar(QStringLiteral("Tools"), &again);
    againBar->setObjectName(QStringLiteral("tools"));
    again.addToolBar(Qt::TopToolBarArea, againBar);
    AQSettings::withStateIni([&](AQSettings& s) { s.restoreState(QStringLiteral("Main Frame"), again); });
    QCOMPARE(again.geometry().size(), QSize(500, 400));
    QCOMPARE(again.toolBarArea(againBar), Qt::LeftToolBarArea);
    QCOMPARE(AQSettings::getMainWindow(), &again);
}

void tst_AQSettings::fixedSizeFlagAndRestoreFixedState()
{
    const QString ini = m_sandbox->path(QStringLiteral("recordWindow.ini"));
    {
        AQSettings settings(ini, QSettings::IniFormat);
        settings.saveFixedSizeDpiFlag(QStringLiteral("ScriptDialog"));
    }
    QSettings check(ini, QSettings::IniFormat);
    QCOMPARE(check.value(QStringLiteral("ScriptDialog/Position")).toPoint(), QPoint(440, 220));
    QCOMPARE(check.value(QStringLiteral("ScriptDialog/Size")).toSize(), QSize(1680, 1050));

    QMainWindow window;
    window.setGeometry(10, 10, 300, 200);
    AQSettings settings(ini, QSettings::IniFormat);
    settings.restoreFixedState(QStringLiteral("ScriptDialog"), window);
    QCOMPARE(window.pos(), QPoint(440, 220));
    QCOMPARE(window.size(), QSize(1680, 1050));
}

void tst_AQSettings::sanityCheckDockBringsFloatingDockBack()
{
    AQSettings::sanityCheckDock(nullptr); // nothing to check, nothing to crash

    QMainWindow window;
    auto* dock = new QDockWidget(QStringLiteral("Dock"), &window);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    window.show();
    dock->setFloating(true);
    dock->resize(200, 150);
    const QRect area = available();
    dock->move(area.right() + 400, area.top() + 10);
    AQSettings::sanityCheckDock(dock);
    const QRect frame(dock->pos(), dock->frameSize());
    QVERIFY2(area.contains(frame), qPrintable(QStringLiteral("%1,%2 %3x%4")
                                                  .arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height())));
    QCOMPARE(frame.right(), area.right());
}

QTEST_MAIN(tst_AQSettings)
#include "tst_aqsettings.moc"
