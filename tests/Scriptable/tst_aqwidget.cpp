#include "WrapperFixture.h"

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
    explicit EventProbe(QWidget* parent) : AQWidget("Probe Area", parent)
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
        seen << QString("wheel %1 %2").arg(e->angleDelta().y()).arg(int(e->modifiers()));
        AQWidget::wheelEvent(e);
    }
    void keyPressEvent(QKeyEvent* e) override
    {
        seen << QString("key %1 %2 [%3]").arg(e->key()).arg(int(e->modifiers())).arg(e->text());
        AQWidget::keyPressEvent(e);
    }
    void dropEvent(QDropEvent* e) override
    {
        seen << QString("drop %1,%2 %3").arg(e->pos().x()).arg(e->pos().y())
                    .arg(QString::fromLatin1(e->mimeData()->data(dragDataType())));
        AQWidget::dropEvent(e);
    }

private:
    void noteMouse(const char* what, const QMouseEvent* e)
    {
        seen << QString("%1 %2,%3 %4").arg(what).arg(e->x()).arg(e->y()).arg(int(e->button()));
    }
};

class tst_AQWidget : public QObject
{
    Q_OBJECT

    std::unique_ptr<WrapperFixture> m_fx;

private Q_SLOTS:
    void init() { m_fx = std::make_unique<WrapperFixture>(); }
    void cleanup() { m_fx.reset(); }

    void userOperationsRecordedAndReplayed()
    {
        auto* probe = new EventProbe(m_fx->root());
        m_fx->showActive();
        m_fx->startRecording();
        QTest::mouseClick(probe, Qt::LeftButton, Qt::ShiftModifier, QPoint(10, 20));
        QTest::mouseDClick(probe, Qt::RightButton, Qt::NoModifier, QPoint(30, 40));
        QTest::keyClick(probe, Qt::Key_A);
        QTest::keyClick(probe, Qt::Key_Space);
        QWheelEvent wheel(QPointF(5, 6), probe->mapToGlobal(QPoint(5, 6)), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(probe, &wheel);
        QMimeData mime;
        mime.setData(AQWidget::dragDataType(), "item 7");
        QDropEvent drop(QPointF(50, 60), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        static_cast<QObject*>(probe)->event(&drop); // delivered as a finished drag delivers it
        const QStringList records = m_fx->stopRecording();

        const int shift = Qt::ShiftModifier;
        QCOMPARE(records.mid(0, 2), (QStringList{QString("Probe_Area MousePress 10 20 1 %1").arg(shift),
                                                 QString("Probe_Area MouseRelease 10 20 1 %1").arg(shift)}));
        for (const QString& record : {QString("MouseDblClick 30 40 2 0"),
                                      QString("keyPressEvent %1 0 97").arg(Qt::Key_A),
                                      QString("MouseWheel 5 6 \"-120\" %1").arg(Qt::ControlModifier),
                                      "dropEvent 50 60 " + QString::fromLatin1(QByteArray("item 7").toBase64())})
            QVERIFY2(records.contains("Probe_Area " + record), qPrintable(records.join('\n')));

        const QStringList userSaw = probe->seen;
        probe->seen.clear();
        QVERIFY(AQOpenScriptFileForReplay(m_fx->sandbox().path("record.scr"), 0, 2));
        QCOMPARE(probe->seen, userSaw);
    }

    void windowStateAndCloseReplayed()
    {
        AQWidget widget("Floating Panel", m_fx->root(), Qt::Window);
        widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&widget));
        m_fx->startRecording();
        widget.setWindowState(Qt::WindowMaximized);
        widget.close();
        QCOMPARE(m_fx->stopRecording(),
                 (QStringList{QString("Floating_Panel changeEvent %1").arg(Qt::WindowMaximized),
                              "Floating_Panel closeEvent"}));
        widget.setWindowState(Qt::WindowNoState);
        widget.show();
        QVERIFY(AQOpenScriptFileForReplay(m_fx->sandbox().path("record.scr"), 0, 2));
        QVERIFY(widget.windowState() & Qt::WindowMaximized);
        QVERIFY(!widget.isVisible());
    }

    void badReplayLinesIgnored_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("too few mouse arguments") << "MousePress 1 2 1";
        QTest::newRow("unknown name") << "MouseHover 1 2 1 0";
        QTest::newRow("close with an argument") << "closeEvent now";
    }

    void badReplayLinesIgnored()
    {
        QFETCH(QString, line);
        auto* probe = new EventProbe(m_fx->root());
        m_fx->root()->show();
        QVERIFY(m_fx->replay({"Probe_Area " + line}));
        QVERIFY(probe->seen.isEmpty());
        QVERIFY(probe->isVisible());
    }
};

QTEST_MAIN(tst_AQWidget)
#include "tst_aqwidget.moc"
