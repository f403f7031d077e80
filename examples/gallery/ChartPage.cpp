#include "ChartPage.h"

#include <Widget/Chart/Marker.h>
#include <Widget/Chart/OrvexChartMarkerManager.h>
#include <Widget/Chart/OrvexChartView.h>
#include <Widget/Chart/OrvexCurve.h>
#include <Widget/Chart/OrvexCurveManager.h>
#include <Widget/Chart/OrvexProbeItem.h>
#include <Widget/Chart/PointMarker.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>
#include <random>

using Gui::Widget::MarkerType;
using Gui::Widget::OrvexChartView;

ChartPage::ChartPage(QWidget* parent) : QWidget(parent)
{
    m_view = OrvexChartView::createChartView(this);
    m_view->setObjectName(QStringLiteral("chart"));
    m_view->setTitle("Chart gallery");
    m_view->setXLabel("Angle (deg)");
    m_view->setYLabel("Amplitude");
    m_view->setAngularLabel("Angle");

    auto* buttons = new QHBoxLayout;
    const std::pair<QString, OrvexChartView::ViewType> types[] = {
        {tr("Line"), OrvexChartView::Line}, {tr("Bar"), OrvexChartView::Bar}, {tr("Polar"), OrvexChartView::Polar}};
    for (const auto& [text, type] : types) {
        auto* button = new QPushButton(text, this);
        const OrvexChartView::ViewType chosen = type;
        connect(button, &QPushButton::clicked, this, [this, chosen] { m_view->changeViewTypeTo(chosen); });
        buttons->addWidget(button);
    }
    auto* fit = new QPushButton(tr("Fit"), this);
    connect(fit, &QPushButton::clicked, m_view, &OrvexChartView::fitView);
    buttons->addWidget(fit);
    auto* point = new QPushButton(tr("Place point marker"), this);
    connect(point, &QPushButton::clicked, this,
            [this] { m_view->getMarkerManager()->beginAddingMarker(MarkerType::PointMarker); });
    buttons->addWidget(point);
    auto* debug = new QCheckBox(tr("Debug menu entries"), this);
    debug->setChecked(qEnvironmentVariableIsSet("MCAD_POST_PROCESS_DEBUG"));
    connect(debug, &QCheckBox::toggled, this, [](bool on) {
        if (on)
            qputenv("MCAD_POST_PROCESS_DEBUG", "1");
        else
            qunsetenv("MCAD_POST_PROCESS_DEBUG");
    });
    buttons->addWidget(debug);
    buttons->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(m_view, 1);

    fillCurves();
    placeMarkers();
}

void ChartPage::fillCurves()
{
    auto manager = m_view->getCurveManager();
    std::vector<double> x;
    std::vector<double> sine;
    std::vector<double> cosine;
    for (int i = 0; i <= 360; ++i) {
        x.push_back(i);
        sine.push_back(2 + std::sin(i * M_PI / 180));
        cosine.push_back(2 + std::cos(i * M_PI / 180));
    }
    auto s = manager->createCurve(x, sine, "sine");
    s->setTitle("sine");
    s->setYUnit("V");
    s->setWidth(2);
    auto c = manager->createCurve(x, cosine, "cosine");
    c->setTitle("cosine");
    c->setYUnit("V");
    c->setWidth(2);

    // A million points: the view draws what each pixel column needs.
    constexpr std::size_t n = 1000000;
    std::vector<double> bx(n);
    std::vector<double> by(n);
    std::mt19937 random(3);
    std::normal_distribution<double> noise(0, 0.08);
    for (std::size_t i = 0; i < n; ++i) {
        bx[i] = 360.0 * double(i) / double(n - 1);
        by[i] = 1 + 0.3 * std::sin(bx[i] * M_PI / 30) + noise(random);
    }
    auto big = manager->createCurve(std::move(bx), std::move(by), "noise");
    big->setTitle("noise");
    big->setSuffix("(1M points)");
    for (const auto& curve : {s, c, big})
        emit curve->dataChanged();
    m_view->updateCurves();
    m_view->fitView();
}

void ChartPage::placeMarkers()
{
    auto markers = m_view->getMarkerManager();
    auto peak = markers->createMarker(QPointF(90, 3), MarkerType::PointMarker, "peak");
    peak->attach("sine");
    auto level = markers->createMarker(QPointF(200, 2.5), MarkerType::HorizontalLineMarker, "level");
    level->setColor(QColor(0, 120, 200));
    level->attach("cosine");
    auto angle = markers->createMarker(QPointF(270, 1), MarkerType::VerticalLineMarker, "angle");
    angle->setColor(QColor(200, 60, 0));
    markers->refreshAllMarkersPosition();
    m_view->probeItem()->setProbe(QPointF(300, 2 + std::cos(300 * M_PI / 180)), "cosine");
}
