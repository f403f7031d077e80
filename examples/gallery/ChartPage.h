#pragma once

#include <QWidget>

namespace Gui::Widget {
class OrvexChartView;
}

/**
 * Gallery page of the chart view: a sine and a cosine, a noisy curve of a
 * million points, one marker of each kind and the probe. Buttons switch the
 * view type, arm the marker tool and fit; a check box turns on the debug
 * entries of the context menu, which reaches every other operation.
 */
class ChartPage : public QWidget
{
    Q_OBJECT

public:
    explicit ChartPage(QWidget* parent = nullptr);

    Gui::Widget::OrvexChartView* chartView() const { return m_view; }

private:
    void fillCurves();
    void placeMarkers();

    Gui::Widget::OrvexChartView* m_view = nullptr;
};
