#include "ScriptSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Scriptable/AQWidget.h>

#include <QMimeData>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

/// Notes every event that reaches it, in one comparable line each.
class EventProbe : public AQWidget
{
public:
    explicit EventProbe(QWidget* parent)
        : AQWidget(QStringLiteral("Probe Area"), parent)
    {
        setAcceptDrops(true);
        resize(200, 150);
    }
    QStringList seen;

protected:
    void mousePressEvent(QMouseEvent* e) override { noteMouse("press", e); AQWidget::mousePressEvent(e); }
    void mouseReleaseEvent(QMouseEvent* e) override { noteMouse("release", e); AQWidget::mouseReleaseEvent(e); }
    void mouseDoubleClickEvent(QMouseEvent* e) override { noteMouse("double", e); AQWidget::mouseDoubleClickEvent(e); }
    void wheelEvent(QWheelEvent* e) override
    {
        seen << QStringLiteral("wheel %1 %2").arg(e->angleDelta().y()).arg(int(e->modifiers()));
        AQWidget::wheelEvent(e);
    }
    void keyPressEvent(QKeyEvent* e) override
    {
        seen << QStringLiteral("key %1 %2 [%3]").arg(e->key()).arg(int(e->modifiers())).arg(e->text());
        AQWidget::keyPressEvent(e);
    }
    void dropEvent(QDropEvent* e) override
    {
        seen << QStringLiteral("drop %1,%2 %3")
                    .arg(e->pos().x())
                    .arg(e->pos().y())
                    .arg(QString::fromLatin1(e->mimeData()->data(QLatin1String(dragDataType()))));
        AQWidget::dropEvent(e);
    }

private:
    void noteMouse(const char* what, const QMouseEvent* e)
    {
        seen << QStringLiteral("%1 %2,%3 %4").arg(QLatin1String(what)).arg(e->x()).arg(e->y()).arg(int(e->button()));
    }
};

class tst_AQWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void userOperationsRecordedAndReplayed();
    void windowStateAndCloseReplayed();
    void badReplayLinesIgnored_data();
    void badReplayLinesIgnored();
    void notScriptableRecordsNothing();

private:
    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<QWidget> m_window;
    QString m_script;
};

void tst_AQWidget::init()
{
    m_sandbox = std::make_unique<ScriptSandbox>();
    m_window = std::make_unique<QWidget>();
    AQObjects::add(m_window.get(), QStringLiteral("Window"));
    m_window->resize(300, 200);
    m_script = m_sandbox->path(QStringLiteral("widget.scr"));
}

void tst_AQWidget::cleanup()
{
    m_window.reset();
    m_sandbox.reset();
}

void tst_AQWidget::userOperationsRecordedAndReplayed()
{
    auto* probe = new EventProbe(m_window.get());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QVERIFY(AQOpenScriptFileForRecord(m_script, QStringLiteral("2")));

    QTest::mouseClick(probe, Qt::LeftButton, Qt::ShiftModifier, QPoint(10, 20));
    QTest::mouseDClick(probe, Qt::RightButton, Qt::NoModifier, QPoint(30, 40));
    QTest::keyClick(probe, Qt::Key_A);
    QTest::keyClick(probe, Qt::Key_Space);
    QWheelEvent wheel(QPointF(5, 6), probe->mapToGlobal(QPoint(5, 6)), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(probe, &wheel);
    QMimeData mime;
    mime.setData(QLatin1String(AQWidget::dragDataType()), QByteArray("item 7"));
    QDropEvent drop(QPointF(50, 60), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
    static_cast<QObject*>(probe)->event(&drop); // delivered as a finished drag delivers it
    AQStopScriptRecording();

    const QStringList records = ScriptSandbox::recordLines(m_script);
    const QString head = QStringLiteral("QtSignal Window Probe_Area ");
    QCOMPARE(records.value(0), head + QStringLiteral("MousePress 10 20 1 %1").arg(int(Qt::ShiftModifier)));
    QCOMPARE(records.value(1), head + QStringLiteral("MouseRelease 10 20 1 %1").arg(int(Qt::ShiftModifier)));
    QVERIFY(records.contains(head + QStringLiteral("MouseDblClick 30 40 2 0")));
    QVERIFY(records.contains(head + QStringLiteral("keyPressEvent %1 0 97").arg(int(Qt::Key_A))));
    QVERIFY(records.contains(head + QStringLiteral("MouseWheel 5 6 \"-120\" %1").arg(int(Qt::ControlModifier))));
    QVERIFY2(records.contains(head + QStringLiteral("dropEvent 50 60 ") + QString::fromLatin1(QByteArray("item 7").toBase64())), qPrintable(records.join(QLatin1Char('\n'))));

    const QStringList userSaw = probe->seen;
    probe->seen.clear();
    QVERIFY(AQOpenScriptFileForReplay(m_script, 0, 2));
    QCOMPARE(probe->seen, userSaw);
}

void tst_AQWidget::windowStateAndCloseReplayed()
{
    AQWidget widget(QStringLiteral("Floating Panel"), m_window.get(), Qt::Window);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QVERIFY(AQOpenScriptFileForRecord(m_script, QStringLiteral("2")));
    widget.setWindowState(Qt::WindowMaximized);
    widget.close();
    AQStopScriptRecording();
    QCOMPARE(ScriptSandbox::recordLines(m_script),
             (QStringList{QStringLiteral("QtSignal Window Floating_Panel changeEvent %1").arg(int(Qt::WindowMaximized)),
                          QStringLiteral("QtSignal Window Floating_Panel closeEvent")}));

    widget.setWindowState(Qt::WindowNoState);
    widget.show();
    QVERIFY(AQOpenScriptFileForReplay(m_script, 0, 2));
    QVERIFY(widget.windowState() & Qt::WindowMaximized);
    QVERIFY(!widget.isVisible());
}

void tst_AQWidget::badReplayLinesIgnored_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("too few mouse arguments") << QStringLiteral("MousePress 1 2 1");
    QTest::newRow("unknown name") << QStringLiteral("MouseHover 1 2 1 0");
    QTest::newRow("close with an argument") << QStringLiteral("closeEvent now");
}

void tst_AQWidget::badReplayLinesIgnored()
{
    QFETCH(QString, line);
    auto* probe = new EventProbe(m_window.get());
    m_window->show();
    m_sandbox->writeScript(m_script, {QStringLiteral("QtSignal Window Probe_Area ") + line});
    QVERIFY(AQOpenScriptFileForReplay(m_script, 0, 2));
    QVERIFY(probe->seen.isEmpty());
    QVERIFY(probe->isVisible());
}

void tst_AQWidget::notScriptableRecordsNothing()
{
    AQWidget quiet(QStringLiteral("Quiet Area"), m_window.get(), {}, false);
    QCOMPARE(quiet.objectName(), QStringLiteral("Quiet Area"));
    QCOMPARE(AQObjects::find(&quiet), -1);
    m_window->show();
    QVERIFY(AQOpenScriptFileForRecord(m_script, QStringLiteral("2")));
    QTest::mouseClick(&quiet, Qt::LeftButton);
    AQStopScriptRecording();
    QVERIFY(ScriptSandbox::recordLines(m_script).isEmpty());
}

QTEST_MAIN(tst_AQWidget)
#include "tst_aqwidget.moc"
