#pragma once

// Shared by the chart view tests: a recording host, a laid-out view, curve
// set-up, image inspection and a context-menu inspector.

#include "Script/OrvexQtUIBasePythonUtility.h"
#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ChartTest {

using Gui::Widget::OrvexChartView;
using Gui::Widget::OrvexCurve;

/// Takes every statement; the import line goes once, as a host would.
class RecordingHost : public OrvexQtUIBaseInterface
{
public:
    RecordingHost()
    {
        // Statements left waiting by earlier tests are not ours.
        Gui::Python::QtUIBasePythonRecordManager::instance()->clear();
        Gui::Python::QtUIBasePythonRecordManager::instance()->setInterface(this);
    }
    ~RecordingHost() override
    {
        Gui::Python::QtUIBasePythonRecordManager::instance()->setInterface(nullptr);
        Gui::Python::QtUIBasePythonRecordManager::instance()->clear();
    }
    bool canRecord() override { return true; }
    void addRecordScript(const std::vector<std::string>& statements) override
    {
        for (const auto& s : statements) {
            if (s == "import pelo3dqtui")
                setImported(true);
            else
                this->statements << QString::fromStdString(s);
        }
    }
    QStringList statements;
};

inline void settle(OrvexChartView* view)
{
    QCoreApplication::processEvents();
    view->flushSeries();
}

/// A shown view of the given size, laid out and with its series built.
inline std::unique_ptr<OrvexChartView> makeView(int width = 800, int height = 600)
{
    std::unique_ptr<OrvexChartView> view(OrvexChartView::createChartView(nullptr));
    view->resize(width, height);
    view->show();
    if (!QTest::qWaitForWindowExposed(view.get()))
        qWarning("chart view not exposed");
    settle(view.get());
    return view;
}

inline std::shared_ptr<OrvexCurve> addCurve(OrvexChartView* view, std::vector<double> x, std::vector<double> y,
                                            const std::string& title = "curve")
{
    auto curve = view->getCurveManager()->createCurve(std::move(x), std::move(y), std::string());
    curve->setTitle(title);
    emit curve->dataChanged();
    view->updateCurves();
    view->fitView();
    settle(view);
    return curve;
}

inline QImage grabView(OrvexChartView* view)
{
    settle(view);
    const QSize size = view->chart()->size().toSize();
    return view->captureImage(size.width(), size.height());
}

/// Pixels of @p rect for which @p match holds.
template <typename Match>
int countPixels(const QImage& image, const QRect& rect, Match match)
{
    int count = 0;
    const QRect r = rect.intersected(image.rect());
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            count += match(image.pixel(x, y)) ? 1 : 0;
    return count;
}

/// Pixels of @p rect close to @p colour.
inline int countColour(const QImage& image, const QRect& rect, const QColor& colour, int tolerance = 40)
{
    return countPixels(image, rect, [&](QRgb p) {
        return std::abs(qRed(p) - colour.red()) <= tolerance && std::abs(qGreen(p) - colour.green()) <= tolerance
            && std::abs(qBlue(p) - colour.blue()) <= tolerance;
    });
}

/// Pixels of @p rect that are clearly not white.
inline int countInk(const QImage& image, const QRect& rect)
{
    return countPixels(image, rect, [](QRgb p) { return qGray(p) < 160; });
}

/**
 * Watches for the next popup menu: records its entries (submenu entries as
 * "Submenu/Entry"), optionally triggers one by text, and closes the menu, so
 * a test that opens a context menu never hangs.
 */
class MenuInspector : public QObject
{
public:
    explicit MenuInspector(QString trigger = QString()) : m_trigger(std::move(trigger))
    {
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
        m_timer.start();
    }
    QStringList entries;
    bool seen = false;

private:
    void poll()
    {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu) {
            if (++m_polls > 500)
                m_timer.stop();
            return;
        }
        m_timer.stop();
        seen = true;
        QAction* chosen = nullptr;
        const auto note = [&](QAction* action, const QString& text) {
            entries << text;
            if (text == m_trigger)
                chosen = action;
        };
        for (QAction* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            note(action, action->text());
            if (action->menu())
                for (QAction* sub : action->menu()->actions())
                    note(sub, action->text() + QLatin1Char('/') + sub->text());
        }
        menu->close();
        if (chosen)
            chosen->trigger();
    }

    QString m_trigger;
    QTimer m_timer;
    int m_polls = 0;
};

/// Viewport position of a scene point.
inline QPoint viewPos(OrvexChartView* view, const QPointF& scenePos) { return view->mapFromScene(scenePos); }

/// A mouse move over the viewport (QTest's move only warps the cursor, which
/// sends nothing on the offscreen platform).
inline void moveMouse(OrvexChartView* view, const QPoint& pos, Qt::MouseButtons buttons = Qt::LeftButton)
{
    QMouseEvent event(QEvent::MouseMove, QPointF(pos), QPointF(view->viewport()->mapToGlobal(pos)), Qt::NoButton,
                      buttons, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &event);
}

inline void rightClick(OrvexChartView* view, const QPointF& scenePos)
{
    QTest::mouseClick(view->viewport(), Qt::RightButton, Qt::NoModifier, viewPos(view, scenePos));
}

} // namespace ChartTest
