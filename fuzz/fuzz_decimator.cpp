// Builds a curve and a plot mapping from arbitrary bytes, reduces the curve
// for a one-pixel line and draws both the reduced and the full curve the way
// Qt Charts draws a solid line series (one drawLine per segment, clipped to
// the plot). Any pixel that differs is a finding.

#include "Widget/Chart/OrvexSeriesDecimator.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace Gui::Widget;
using AxisMap = OrvexSeriesDecimator::AxisMap;

namespace {

class Bytes
{
public:
    Bytes(const uint8_t* data, size_t size)
        : m_data(data)
        , m_size(size)
    {
    }
    bool empty() const { return m_pos >= m_size; }
    unsigned byte() { return m_pos < m_size ? m_data[m_pos++] : 0; }
    unsigned word() { return byte() | (byte() << 8); }

private:
    const uint8_t* m_data;
    size_t m_size;
    size_t m_pos = 0;
};

QImage draw(const QVector<QPointF>& points, const AxisMap& xMap, const AxisMap& yMap)
{
    QImage image(int(xMap.origin + xMap.scale * xMap.length) + 8, int(yMap.origin + yMap.scale * yMap.length) + 8,
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QPen pen(Qt::black, 1);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setClipRect(QRectF(xMap.origin, yMap.origin, xMap.scale * xMap.length, yMap.scale * yMap.length));
    for (int i = 1; i < points.size(); ++i)
        painter.drawLine(QPointF(xMap.toDevice(points[i - 1].x()), yMap.toDevice(points[i - 1].y())),
                         QPointF(xMap.toDevice(points[i].x()), yMap.toDevice(points[i].y())));
    return image;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz_decimator";
    static char* argv[] = {name, nullptr};
    static QGuiApplication* app = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return new QGuiApplication(argc, argv);
    }();
    (void)app;
    Bytes bytes(data, size);
    // The mapping: a small plot (so images stay cheap), fractional origins,
    // and now and then a log axis or a device scale.
    const unsigned flags = bytes.byte();
    AxisMap xMap;
    xMap.length = 20 + bytes.byte() % 120;
    xMap.origin = 5 + bytes.byte() / 16.0;
    xMap.log = flags & 1;
    AxisMap yMap;
    yMap.length = 20 + bytes.byte() % 120;
    yMap.origin = 5 + bytes.byte() / 16.0;
    yMap.log = flags & 2;
    yMap.vertical = true;
    if (flags & 4)
        xMap.scale = yMap.scale = 1.5;
    // Points: ascending X in small steps (many to a column), Y as a walk
    // that may leave the plot; a few repeats and NaN Y.
    std::vector<double> x;
    std::vector<double> y;
    double px = xMap.log ? 1 : 0;
    double py = yMap.log ? 10 : 0;
    while (!bytes.empty() && x.size() < 20000) {
        const unsigned step = bytes.byte();
        const unsigned rise = bytes.word();
        if (step != 0)
            px += xMap.log ? px * step / 8192.0 : step / 64.0;
        const double delta = (double(rise) - 32768.0) / 4096.0;
        py = yMap.log ? std::max(1e-3, py * std::exp(delta / 8)) : py + delta;
        x.push_back(px);
        y.push_back((rise & 0xff) == 0x7f ? std::nan("") : py);
    }
    if (x.size() < 2)
        return 0;
    xMap.min = x.front();
    xMap.max = x.back() > x.front() ? x.back() : x.front() + 1;
    double lo = 1e300;
    double hi = -1e300;
    for (double v : y) {
        if (!std::isnan(v)) {
            lo = std::min(lo, v);
            hi = std::max(hi, v);
        }
    }
    if (!(hi > lo))
        return 0;
    // Zoom Y in now and then, so that lines leave the plot.
    const double zoom = (flags & 8) ? 0.5 : 1.0;
    yMap.min = yMap.log ? lo : lo + (hi - lo) * (1 - zoom) / 2;
    yMap.max = yMap.log ? hi : hi - (hi - lo) * (1 - zoom) / 2;

    QVector<QPointF> reduced;
    OrvexSeriesDecimator::m4(x.data(), y.data(), x.size(), xMap, yMap, OrvexSeriesDecimator::OnePixelLine, reduced);
    QVector<QPointF> full;
    OrvexSeriesDecimator::copyAll(x.data(), y.data(), x.size(), full);
    // The full drawing covers the slice m4 keeps: everything here is visible.
    if (draw(reduced, xMap, yMap) != draw(full, xMap, yMap)) {
        std::fprintf(stderr, "reduced drawing differs (%d of %d points kept)\n", reduced.size(), full.size());
        std::abort();
    }
    return 0;
}
