#include "SettingsSandbox.h"

#include <Settings/AQSettings.h>

#include <QDialog>
#include <QDockWidget>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

namespace {
QRect available() { return QGuiApplication::primaryScreen()->availableGeometry(); }

// Runs @p f on the state INI file, which must be configured.
void onStateIni(const std::function<void(AQSettings&)>& f) { QVERIFY(AQSettings::withStateIni(f)); }
} // namespace

class tst_AQSettings : public QObject
{
    Q_OBJECT

    std::unique_ptr<SettingsSandbox> m_sandbox;

private Q_SLOTS:
    void initTestCase() { m_sandbox = std::make_unique<SettingsSandbox>(); }
    void init() { m_sandbox->clear(); }

    void defaultMainWindowRect_data()
    {
        QTest::addColumn<QRect>("available");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("full hd") << QRect(0, 0, 1920, 1080) << QRect(460, 140, 1000, 800);
        QTest::newRow("small both ways") << QRect(0, 0, 800, 600) << QRect(80, 60, 640, 480);
        QTest::newRow("odd width truncated") << QRect(0, 0, 999, 800) << QRect(100, 0, 799, 800);
    }

    void defaultMainWindowRect()
    {
        QFETCH(QRect, available);
        QFETCH(QRect, expected);
        QCOMPARE(AQSettings::defaultMainWindowRect(available), expected);
    }

    void placeDialog_data()
    {
        QTest::addColumn<QPoint>("position");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("screen");
        QTest::addColumn<QRect>("expected");
        const QRect hd(0, 0, 1920, 1080);
        QTest::newRow("fits") << QPoint(100, 50) << QSize(400, 300) << hd << QRect(100, 50, 400, 300);
        QTest::newRow("beyond right edge") << QPoint(1800, 50) << QSize(400, 300) << hd << QRect(0, 0, 400, 300);
        QTest::newRow("larger than screen") << QPoint(10, 10) << QSize(2500, 300) << hd << QRect(0, 0, 1920, 1080);
        QTest::newRow("second screen") << QPoint(100, 100) << QSize(400, 300) << QRect(1920, 0, 1280, 1024)
                                       << QRect(1920, 0, 400, 300);
    }

    void placeDialog()
    {
        QFETCH(QPoint, position);
        QFETCH(QSize, size);
        QFETCH(QRect, screen);
        QFETCH(QRect, expected);
        QCOMPARE(AQSettings::placeDialog(position, size, screen), expected);
    }

    void keepDockFrameOnScreen_data()
    {
        QTest::addColumn<QRect>("frame");
        QTest::addColumn<QRect>("desktop");
        QTest::addColumn<QRect>("expected");
        const QRect hd(0, 0, 1920, 1080);
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

    void keepDockFrameOnScreen()
    {
        QFETCH(QRect, frame);
        QFETCH(QRect, desktop);
        QFETCH(QRect, expected);
        QCOMPARE(AQSettings::keepDockFrameOnScreen(frame, QRect(0, 0, 1920, 1080), desktop), expected);
    }

    void storeStaysInSandbox()
    {
        AQSettings store("Main");
        store.setValue("probe", 1);
        store.sync();
        const QString user = QFileInfo(m_sandbox->path("user")).absoluteFilePath();
        QVERIFY2(store.fileName().startsWith(user), qPrintable(store.fileName()));
        QVERIFY(store.fileName().contains("Halvren\\1.0.0\\MCAD"));
        QCOMPARE(AQSettings::getStateIniPath(), m_sandbox->stateIniPath());
    }

    void dialogRoundTripKeepsItOnScreen()
    {
        const QPoint stored(QGuiApplication::primaryScreen()->geometry().right() + 500, 40);
        {
            QDialog dialog;
            dialog.resize(200, 150);
            dialog.move(stored);
            onStateIni([&](AQSettings& s) { s.saveState(dialog, "Options"); });
        }
        QSettings ini(m_sandbox->stateIniPath(), QSettings::IniFormat);
        QCOMPARE(ini.value("Options/Position").toPoint(), stored);
        QCOMPARE(ini.value("Options/Size").toSize(), QSize(200, 150));

        QDialog restored;
        onStateIni([&](AQSettings& s) { s.restoreState("Options", restored); });
        QCOMPARE(restored.size(), QSize(200, 150));
        const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
        QCOMPARE(restored.pos(), (screen ? screen : QGuiApplication::primaryScreen())->geometry().topLeft());
    }

    void dialogWithoutStoredPosition_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("filter dialog") << "FilterFeatureWidget"
                                       << QPoint(available().width() / 4, available().height() / 4);
        QTest::newRow("other dialog") << "Options" << QPoint(12, 34);
    }

    void dialogWithoutStoredPosition()
    {
        QFETCH(QString, name);
        QFETCH(QPoint, expected);
        QPoint anchor(12, 34);
        AQSettings::setWdwHoopsViewLeftRectPoint(anchor);
        QDialog dialog;
        onStateIni([&](AQSettings& s) { s.restoreState(name, dialog); });
        QCOMPARE(dialog.pos(), expected);
    }

    void widgetAndDockRoundTrip()
    {
        QPoint anchor(7, 9);
        AQSettings::setWdwViewLeftRectPoint(anchor);
        QWidget fresh;
        fresh.resize(120, 80);
        onStateIni([&](AQSettings& s) { s.restoreState("Panel", fresh); });
        QCOMPARE(fresh.geometry(), QRect(7, 9, 120, 80));

        QWidget panel;
        panel.setGeometry(50, 60, 321, 123);
        QDockWidget dock;
        dock.resize(222, 111);
        dock.move(70, 80);
        onStateIni([&](AQSettings& s) {
            s.saveState(panel, "Panel");
            s.saveState(dock, "Dock");
        });

        QWidget panelAgain;
        QDockWidget dockAgain;
        QDockWidget untouched;
        untouched.move(5, 6);
        onStateIni([&](AQSettings& s) {
            s.restoreState("Panel", panelAgain);
            s.restoreState("Dock", dockAgain);
            s.restoreState("Unknown", untouched);
        });
        QCOMPARE(panelAgain.geometry(), QRect(50, 60, 321, 123));
        QCOMPARE(dockAgain.size(), QSize(222, 111));
        QCOMPARE(dockAgain.pos(), QPoint(70, 80));
        QCOMPARE(untouched.pos(), QPoint(5, 6));
    }

    void mainWindowWithoutStoredGeometry()
    {
        QMainWindow window;
        onStateIni([&](AQSettings& s) { s.restoreState("Main Frame", window); });
        const QRect expected = AQSettings::defaultMainWindowRect(available());
        QCOMPARE(window.size(), expected.size());
        QCOMPARE(window.pos(), expected.topLeft());
        QCOMPARE(AQSettings::getMainWindow(), &window);
    }

    void sanityCheckDockBringsFloatingDockBack()
    {
        AQSettings::sanityCheckDock(nullptr); // nothing to check, nothing to crash
        QMainWindow window;
        auto* dock = new QDockWidget("Dock", &window);
        window.addDockWidget(Qt::LeftDockWidgetArea, dock);
        window.show();
        dock->setFloating(true);
        dock->resize(200, 150);
        const QRect area = available();
        dock->move(area.right() + 400, area.top() + 10);
        AQSettings::sanityCheckDock(dock);
        const QRect frame(dock->pos(), dock->frameSize());
        QVERIFY(area.contains(frame));
        QCOMPARE(frame.right(), area.right());
    }
};

QTEST_MAIN(tst_AQSettings)
#include "tst_aqsettings.moc"
