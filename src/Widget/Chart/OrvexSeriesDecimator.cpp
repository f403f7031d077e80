#include "Widget/Chart/OrvexSeriesDecimator.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <vector>

#if defined(__GNUC__)
#define ORVEX_ALWAYS_INLINE __attribute__((always_inline))
#else
#define ORVEX_ALWAYS_INLINE
#endif

namespace Gui::Widget {

namespace {

// The arithmetic below mirrors, operation for operation, how Qt Charts'
// domains place a value and how Qt's cosmetic stroker (QPainter::drawLine
// with a one-pixel pen, no antialiasing) turns a line into pixels. Rounding
// matters: a different association of the same formula can move a
// coordinate across a 1/64 pixel step and with it a pixel.

struct Axis
{
    explicit Axis(const OrvexSeriesDecimator::AxisMap& map)
        : min(map.min)
        , length(map.length)
        , origin(map.origin)
        , log(map.log)
        , vertical(map.vertical)
        , base(map.base)
        , scale(map.scale)
    {
        if (log) {
            logBase = std::log10(map.base);
            const double a = std::log10(map.min) / logBase;
            const double b = std::log10(map.max) / logBase;
            logLeft = a < b ? a : b;
            delta = length / std::abs((a > b ? a : b) - logLeft);
        } else {
            delta = length / (map.max - map.min);
        }
    }

    double device(double value) const { return log ? device<true>(value) : device<false>(value); }

    template <bool Log>
    double device(double value) const
    {
        double g;
        if constexpr (Log)
            g = ((std::log10(value) / logBase) - logLeft) * delta;
        else
            g = (value - min) * delta;
        if (vertical)
            g = length - g;
        // As QTransform maps: m11 * x + dx (exactly x + dx when m11 is 1).
        return scale * g + origin;
    }

    double value(double device) const
    {
        double g = (device - origin) / scale;
        if (vertical)
            g = length - g;
        return log ? std::pow(base, g / delta + logLeft) : min + g / delta;
    }

    double min;
    double length;
    double origin;
    bool log;
    bool vertical;
    double base;
    double scale;
    double delta = 1;
    double logBase = 1;
    double logLeft = 0;
};

inline int toF26Dot6(double v)
{
    return int(v * 64.);
}

inline int fixedDiv(int x, int y)
{
    if (std::abs(x) > 0x7fff)
        return int(qint64(x) * (1 << 16) / y);
    return x * (1 << 16) / y;
}

// Appends the points [begin, end) that have no NaN coordinate.
void appendValid(const double* x, const double* y, std::size_t begin, std::size_t end, QVector<QPointF>& out)
{
    for (std::size_t i = begin; i < end; ++i) {
        if (!std::isnan(x[i]) && !std::isnan(y[i]))
            out.append(QPointF(x[i], y[i]));
    }
}

// A line stepped along its major axis A (the other one is B), as Qt's
// cosmetic stroker steps it with square caps: pixels A in [first, end), B in
// 16.16 fixed point at `first` and `inc` more at each step. Coordinates are
// 26.6 fixed point.
struct Walk
{
    int first;
    int end;
    int b;
    int inc;
};

Walk walkAlongMajor(int a1, int b1, int a2, int b2)
{
    if (a1 > a2) {
        std::swap(a1, a2);
        std::swap(b1, b2);
    }
    const int inc = fixedDiv(b2 - b1, a2 - a1);
    int b = b1 * (1 << 10) - (inc >> 1);
    a1 -= 32;
    a2 += 32;
    const int first = (a1 + 32) >> 6;
    const int end = (a2 + 32) >> 6;
    if (first != end)
        b += ((first * (1 << 6)) + (inc > 0 ? 32 : 0) - a1) * inc >> 6;
    return {first, end, b, inc};
}

// Pixels of one drawLine, as runs (column, first row, last row) handed to
// @p sink.
template <typename Sink>
void rasterizeLine(int x1, int y1, int x2, int y2, Sink&& sink)
{
    const int dx = std::abs(x2 - x1);
    const int dy = std::abs(y2 - y1);
    if (dx < dy) {
        const Walk w = walkAlongMajor(y1, x1, y2, x2);
        if (w.first == w.end)
            return;
        if ((w.b >> 16) == ((w.b + (w.end - 1 - w.first) * w.inc) >> 16)) {
            sink(w.b >> 16, w.first, w.end - 1);
            return;
        }
        int x = w.b;
        for (int y = w.first; y < w.end; ++y, x += w.inc)
            sink(x >> 16, y, y);
        return;
    }
    if (!dx)
        return;
    const Walk w = walkAlongMajor(x1, y1, x2, y2);
    int y = w.b;
    for (int x = w.first; x < w.end; ++x, y += w.inc)
        sink(x, y >> 16, y >> 16);
}

// The rows that can show (the plot's, one more on each side for the clip's
// rounding) and the band inside which Qt draws a line without clipping its
// geometry first.
struct Frame
{
    int rowLo = 0;
    int rowHi = 0;
    double safeTop = 0;
    double safeBottom = 0;
    double safeLeft = 0;
    double safeRight = 0;
};

struct DevicePoint
{
    double x = 0;
    double y = 0;
    int fx = 0;
    int fy = 0;
    bool finite = false;
    bool safe = false; // inside the band: fx and fy are valid
};

struct Run
{
    int column;
    int lo;
    int hi;
    bool operator==(const Run& o) const { return column == o.column && lo == o.lo && hi == o.hi; }
    bool operator<(const Run& o) const { return column != o.column ? column < o.column : lo < o.lo; }
};

void normalize(std::vector<Run>& runs)
{
    std::sort(runs.begin(), runs.end());
    std::size_t kept = 0;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (kept > 0 && runs[kept - 1].column == runs[i].column && runs[i].lo <= runs[kept - 1].hi + 1)
            runs[kept - 1].hi = std::max(runs[kept - 1].hi, runs[i].hi);
        else
            runs[kept++] = runs[i];
    }
    runs.resize(kept);
}

// The visible pixels that the lines inside one column light: runs that are
// certain, and runs that may or may not be lit (where Qt's floating-point
// clipping of a line leaving the plot decides a pixel we cannot predict).
class Coverage
{
public:
    void reset(int column, const Frame& frame)
    {
        m_column = column;
        m_frame = &frame;
        m_lo = 1;
        m_hi = 0;
        m_extra.clear();
        m_maybe.clear();
        m_spills.clear();
        m_overflow = false;
    }

    int column() const { return m_column; }
    bool overflow() const { return m_overflow; }

    /// Names the line (by the index of its end point) whose pixels follow.
    void setLine(std::size_t end) { m_line = end; }
    /// The lines that lit pixels in another column, at most 16 of them.
    const std::vector<std::size_t>& spills() const { return m_spills; }
    bool manySpills() const { return m_spills.size() > 16; }

    void add(int column, int lo, int hi)
    {
        if (!clamp(lo, hi))
            return;
        if (column != m_column && (m_spills.empty() || m_spills.back() != m_line) && m_spills.size() <= 16)
            m_spills.push_back(m_line);
        if (column == m_column) {
            if (m_lo > m_hi) {
                m_lo = lo;
                m_hi = hi;
                return;
            }
            if (lo <= m_hi + 1 && hi >= m_lo - 1) {
                m_lo = std::min(m_lo, lo);
                m_hi = std::max(m_hi, hi);
                return;
            }
        }
        push(m_extra, {column, lo, hi});
    }

    void addMaybe(int column, int lo, int hi)
    {
        if (clamp(lo, hi))
            push(m_maybe, {column, lo, hi});
    }

    /// Certain runs, sorted and merged.
    void certain(std::vector<Run>& runs) const
    {
        runs.assign(m_extra.begin(), m_extra.end());
        if (m_lo <= m_hi)
            runs.push_back({m_column, m_lo, m_hi});
        normalize(runs);
    }

    const std::vector<Run>& maybe() const { return m_maybe; }

private:
    bool clamp(int& lo, int& hi) const
    {
        lo = std::max(lo, m_frame->rowLo);
        hi = std::min(hi, m_frame->rowHi);
        return lo <= hi;
    }

    // Pixels off the column's run are rare; many of them mean the column is
    // not worth reducing.
    void push(std::vector<Run>& runs, const Run& run)
    {
        if (runs.size() >= 64)
            m_overflow = true;
        else
            runs.push_back(run);
    }

    int m_column = 0;
    const Frame* m_frame = nullptr;
    int m_lo = 1;
    int m_hi = 0;
    std::vector<Run> m_extra;
    std::vector<Run> m_maybe;
    std::vector<std::size_t> m_spills;
    std::size_t m_line = 0;
    bool m_overflow = false;
};

DevicePoint devicePoint(double dx, double dy, const Frame& frame)
{
    DevicePoint p;
    p.x = dx;
    p.y = dy;
    p.finite = std::isfinite(dx) && std::isfinite(dy);
    p.safe = p.finite && dy >= frame.safeTop && dy <= frame.safeBottom && dx >= frame.safeLeft
             && dx <= frame.safeRight;
    if (p.safe) {
        p.fx = toF26Dot6(dx);
        p.fy = toF26Dot6(dy);
    }
    return p;
}

// Adds what drawLine(a, b) lights to @p cov; both ends lie in cov's column.
void addSegment(Coverage& cov, const DevicePoint& a, const DevicePoint& b, const Frame& frame)
{
    if (!a.finite || !b.finite)
        return; // Qt drops such a line
    // Ends more than a 64th of a pixel apart are never (fuzzily) equal.
    const bool near = !(a.safe && b.safe) || (std::abs(a.fx - b.fx) <= 1 && std::abs(a.fy - b.fy) <= 1);
    if (near && QPointF(a.x, a.y) == QPointF(b.x, b.y)) {
        // Qt draws a (fuzzily) zero-length line as a point at the rounded position.
        if (a.safe)
            cov.add(qRound(a.x), qRound(a.y), qRound(a.y));
        return;
    }
    if (a.safe && b.safe) {
        // A steep line clear of the column's edges lights the rows between
        // its ends' rows: each row's pixel lies within one row's worth of X
        // change of the ends.
        const int dx = std::abs(b.fx - a.fx);
        const int dy = std::abs(b.fy - a.fy);
        const int left = cov.column() * 64;
        const qint64 reach = qint64(dx) * 64;
        if (dx < dy && qint64(std::min(a.fx, b.fx) - left - 2) * dy >= reach
            && qint64(left + 63 - std::max(a.fx, b.fx) - 2) * dy >= reach) {
            cov.add(cov.column(), std::min(a.fy, b.fy) >> 6, std::max(a.fy, b.fy) >> 6);
            return;
        }
        rasterizeLine(a.fx, a.fy, b.fx, b.fy, [&cov](int column, int lo, int hi) { cov.add(column, lo, hi); });
        return;
    }
    // An end beyond the band: Qt clips the line in floating point first.
    if (!a.safe && !b.safe && ((a.y < frame.safeTop) == (b.y < frame.safeTop)))
        return; // both above or both below the plot
    auto row = [&frame](const DevicePoint& p) {
        return p.safe ? (p.fy >> 6) : (p.y < frame.safeTop ? frame.rowLo - 1 : frame.rowHi + 1);
    };
    const int lo = std::min(row(a), row(b));
    const int hi = std::max(row(a), row(b));
    const double dx = std::abs(b.x - a.x);
    const double dy = std::abs(b.y - a.y);
    const int column = cov.column();
    if (dy >= 2 * dx) {
        // A steep line clear of the column's edges runs down the column to
        // the plot's edge; nearer an edge some rows may land next door (a
        // square cap reaches up to a row's worth of X beyond an end, and
        // clipping moves an end by up to a 64th of a pixel).
        const double margin = 2.0 / 64 + dx / dy;
        const bool leftClear = std::min(a.x, b.x) >= column + margin;
        const bool rightClear = std::max(a.x, b.x) <= column + 1 - margin;
        if (leftClear && rightClear) {
            cov.add(column, lo, hi);
            return;
        }
        cov.addMaybe(column, lo, hi);
        if (!leftClear)
            cov.addMaybe(column - 1, lo, hi);
        if (!rightClear)
            cov.addMaybe(column + 1, lo, hi);
        return;
    }
    for (int c = column - 1; c <= column + 1; ++c)
        cov.addMaybe(c, lo - 1, hi + 1);
}

// The points of one device-pixel column and what drawing them lights.
struct Column
{
    int column = 0;
    bool wild = false;
    std::size_t count = 0;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t first = 0;
    std::size_t last = 0;
    std::size_t top = 0;
    std::size_t bottom = 0;
    double topY = 0;
    double bottomY = 0;
    Coverage full;
    std::vector<Run> fullRuns; // certain, normalized
    Run main{0, 1, 0}; // the certain run in the column itself (empty if lo > hi)
    bool reducible = false;
};

class M4Reducer
{
public:
    M4Reducer(const double* x, const double* y, const OrvexSeriesDecimator::AxisMap& xMap,
              const OrvexSeriesDecimator::AxisMap& yMap, OrvexSeriesDecimator::LineKind kind, QVector<QPointF>& out)
        : m_x(x)
        , m_y(y)
        , m_xAxis(xMap)
        , m_yAxis(yMap)
        , m_exact(kind == OrvexSeriesDecimator::OnePixelLine)
        , m_out(out)
    {
        const double top = yMap.origin;
        const double bottom = yMap.origin + yMap.scale * yMap.length;
        m_frame.rowLo = int(std::floor(top));
        m_frame.rowHi = int(std::floor(bottom)) + 1;
        m_frame.safeTop = top - 3;
        m_frame.safeBottom = bottom + 3;
        m_frame.safeLeft = xMap.origin - 3;
        m_frame.safeRight = xMap.origin + xMap.scale * xMap.length + 3;
    }

    void run(std::size_t first, std::size_t last)
    {
        if (!m_exact)
            runColumns(first, last);
        else if (m_xAxis.log)
            m_yAxis.log ? runExact<true, true>(first, last) : runExact<true, false>(first, last);
        else
            m_yAxis.log ? runExact<false, true>(first, last) : runExact<false, false>(first, last);
    }

private:
    // One pass over every point, predicting the column's pixels as it goes.
    // X is sorted, so dense points share their 26.6 fixed-point X in
    // stretches (up to 64 a column); inside a stretch every line is vertical
    // and only Y needs mapping, so long stretches are found by search.
    template <bool LogX, bool LogY>
    void runExact(std::size_t first, std::size_t last)
    {
        const Frame frame = m_frame;
        Column* c = m_current;
        std::size_t previous = last; // index of the previous valid point
        DevicePoint prev;
        auto pointAt = [&](std::size_t k) {
            return devicePoint(m_xAxis.device<LogX>(m_x[k]), m_yAxis.device<LogY>(m_y[k]), frame);
        };
        // Adds point @p k with its device point @p p, the general way.
        auto general = [&](std::size_t k, const DevicePoint& p) {
            const bool wild = !(p.x >= frame.safeLeft && p.x <= frame.safeRight);
            const int column = wild ? std::numeric_limits<int>::min() : (toF26Dot6(p.x) >> 6);
            if (c->count == 0 || wild || c->wild || column != c->column) {
                gathered(k);
                c = m_current;
                start(*c, k, column, wild, p);
            } else {
                c->full.setLine(k);
                addSegment(c->full, prev, p, frame);
                grow(*c, k, p.y);
            }
            previous = k;
            prev = p;
        };
        // The vertical line from the previous point to point @p k (same
        // fixed-point X, both in the band) lights the rows between their
        // rows, unless Qt takes its (fuzzily) equal ends for a point. Rows go
        // to [runLo, runHi]: consecutive vertical lines form one run.
        int runLo = std::numeric_limits<int>::max();
        int runHi = std::numeric_limits<int>::min();
        auto flush = [&] {
            if (runLo <= runHi)
                c->full.add(c->column, runLo, runHi);
            runLo = std::numeric_limits<int>::max();
            runHi = std::numeric_limits<int>::min();
        };
        auto vertical = [&](std::size_t k, double py, int fy) ORVEX_ALWAYS_INLINE {
            const int dy = fy - prev.fy;
            const int r0 = prev.fy >> 6;
            const int r1 = fy >> 6;
            const int lo = r0 < r1 ? r0 : r1;
            const int hi = r0 < r1 ? r1 : r0;
            if (static_cast<unsigned>(dy + 1) > 2u) {
                runLo = runLo < lo ? runLo : lo;
                runHi = runHi > hi ? runHi : hi;
            } else {
                const double kx = m_xAxis.device<LogX>(m_x[k]);
                const double previousX = m_xAxis.device<LogX>(m_x[previous]);
                if (QPointF(kx, py) == QPointF(previousX, prev.y)) {
                    c->full.setLine(k);
                    c->full.add(qRound(kx), qRound(py), qRound(py));
                } else if (dy != 0) {
                    runLo = runLo < lo ? runLo : lo;
                    runHi = runHi > hi ? runHi : hi;
                }
            }
            grow(*c, k, py);
            previous = k;
            prev.y = py;
            prev.fy = fy;
        };
        std::size_t i = first;
        int sameX = 0; // points in a row sharing the fixed-point X
        while (i < last) {
            const double yi = m_y[i];
            if (std::isnan(yi)) {
                ++i;
                continue;
            }
            const double px = m_xAxis.device<LogX>(m_x[i]);
            const double py = m_yAxis.device<LogY>(yi);
            if (prev.safe && c->count > 0 && px <= frame.safeRight && py >= frame.safeTop
                && py <= frame.safeBottom) {
                const int fx = toF26Dot6(px);
                if ((fx >> 6) == c->column) {
                    const int fy = toF26Dot6(py);
                    if (fx == prev.fx) {
                        vertical(i, py, fy);
                        ++i;
                        if (++sameX >= 4) {
                            // A stretch: find its end, then map Y only.
                            const std::size_t end = stretchEnd<LogX>(i - 1, last, fx);
                            if (cleanStretch<LogY>(*c, i, end, prev, previous, runLo, runHi))
                                i = end;
                            for (; i < end; ++i) {
                                const double yk = m_y[i];
                                if (std::isnan(yk))
                                    continue;
                                const double qy = m_yAxis.device<LogY>(yk);
                                if (prev.safe && qy >= frame.safeTop && qy <= frame.safeBottom) {
                                    vertical(i, qy, toF26Dot6(qy));
                                } else {
                                    flush();
                                    general(i, pointAt(i));
                                }
                            }
                            flush();
                            // The stretch's last point opens the next line with its exact X.
                            prev = pointAt(previous);
                            sameX = 0;
                        }
                        continue;
                    }
                    flush();
                    DevicePoint p;
                    p.x = px;
                    p.y = py;
                    p.fx = fx;
                    p.fy = fy;
                    p.finite = p.safe = true;
                    c->full.setLine(i);
                    addSegment(c->full, prev, p, frame);
                    grow(*c, i, py);
                    previous = i;
                    prev = p;
                    sameX = 1;
                    ++i;
                    continue;
                }
            }
            flush();
            general(i, devicePoint(px, py, frame));
            sameX = 1;
            ++i;
        }
        flush();
        gathered(last);
        gathered(last); // the held column decides with no neighbour after it
    }

    // The end of the run of points from @p i whose fixed-point X is @p fx:
    // a guess from the inverse mapping, settled point by point.
    template <bool LogX>
    std::size_t stretchEnd(std::size_t i, std::size_t last, int fx)
    {
        auto fxOf = [this](std::size_t k) {
            const double px = m_xAxis.device<LogX>(m_x[k]);
            return px <= m_frame.safeRight ? toF26Dot6(px) : std::numeric_limits<int>::max();
        };
        const double threshold = m_xAxis.value((fx + 1) / 64.0);
        // Stretches of uniform data are alike: search outwards from where
        // the last one ended, touching few cache lines of X.
        const std::size_t guess = std::min(last, i + std::max<std::size_t>(1, m_stretch));
        std::size_t lo = i + 1;
        std::size_t hi = guess;
        std::size_t step = 1;
        if (m_x[guess - 1] < threshold) {
            lo = guess;
            while (hi < last && m_x[hi] < threshold) {
                lo = hi + 1;
                hi = std::min(last, hi + step);
                step *= 2;
            }
        } else {
            hi = guess - 1;
            while (true) {
                if (hi <= i + 1 + step) {
                    lo = i + 1;
                    break;
                }
                const std::size_t probe = hi - step;
                if (m_x[probe] < threshold) {
                    lo = probe + 1;
                    break;
                }
                hi = probe;
                step *= 2;
            }
        }
        std::size_t j = static_cast<std::size_t>(std::lower_bound(m_x + lo, m_x + hi, threshold) - m_x);
        while (j > i + 1 && fxOf(j - 1) != fx)
            --j;
        while (j < last && fxOf(j) == fx)
            ++j;
        m_stretch = j - i;
        return j;
    }

    // The points [from, end) share the previous point's fixed-point X. When
    // all lie in the band and no two in a row are (fuzzily) equal, their
    // vertical lines light the rows between the lowest and highest of them
    // (none if all sit on one 64th of a pixel): one tight pass, no lines.
    template <bool LogY>
    bool cleanStretch(Column& c, std::size_t from, std::size_t end, DevicePoint& prev, std::size_t& previous,
                      int& runLo, int& runHi)
    {
        if (!prev.safe || from >= end)
            return false;
        double lo = std::numeric_limits<double>::infinity();
        double hi = -lo;
        std::size_t iLo = from;
        std::size_t iHi = from;
        double before = prev.y;
        const double top = m_frame.safeTop;
        const double bottom = m_frame.safeBottom;
        for (std::size_t k = from; k < end; ++k) {
            const double py = m_yAxis.device<LogY>(m_y[k]);
            if (!(py >= top && py <= bottom) || std::abs(py - before) * 1e12 <= std::min(std::abs(py), std::abs(before)))
                return false;
            if (py < lo) {
                lo = py;
                iLo = k;
            }
            if (py > hi) {
                hi = py;
                iHi = k;
            }
            before = py;
        }
        const int fLo = std::min(prev.fy, toF26Dot6(lo));
        const int fHi = std::max(prev.fy, toF26Dot6(hi));
        if (fLo != fHi) {
            runLo = std::min(runLo, fLo >> 6);
            runHi = std::max(runHi, fHi >> 6);
        }
        c.count += end - from;
        c.last = end - 1;
        if (lo < c.topY) {
            c.topY = lo;
            c.top = iLo;
        }
        if (hi > c.bottomY) {
            c.bottomY = hi;
            c.bottom = iHi;
        }
        previous = end - 1;
        prev.y = before;
        prev.fy = toF26Dot6(before);
        return true;
    }

    void grow(Column& c, std::size_t i, double py)
    {
        ++c.count;
        c.last = i;
        if (py < c.topY) {
            c.topY = py;
            c.top = i;
        }
        if (py > c.bottomY) {
            c.bottomY = py;
            c.bottom = i;
        }
    }

    // Without the pixel check only the column boundaries matter: found by
    // binary search, then the column's extremes in one tight loop.
    void runColumns(std::size_t first, std::size_t last)
    {
        auto columnOf = [this](std::size_t i) {
            const double px = m_xAxis.device(m_x[i]);
            if (!(px >= m_frame.safeLeft && px <= m_frame.safeRight))
                return px < m_frame.safeLeft ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
            return toF26Dot6(px) >> 6;
        };
        // Device y falls as the value rises (on either scale).
        const bool upwards = m_yAxis.vertical;
        std::size_t i = first;
        while (i < last) {
            const int column = columnOf(i);
            std::size_t lo = i + 1;
            std::size_t hi = last;
            while (lo < hi) {
                const std::size_t mid = lo + (hi - lo) / 2;
                if (columnOf(mid) == column)
                    lo = mid + 1;
                else
                    hi = mid;
            }
            const std::size_t end = lo;
            std::size_t firstValid = end;
            std::size_t lastValid = end;
            std::size_t iMin = end;
            std::size_t iMax = end;
            for (std::size_t k = i; k < end; ++k) {
                const double v = m_y[k];
                if (std::isnan(v) || std::isnan(m_x[k]))
                    continue;
                if (firstValid == end) {
                    firstValid = iMin = iMax = k;
                } else {
                    if (v < m_y[iMin])
                        iMin = k;
                    if (v > m_y[iMax])
                        iMax = k;
                }
                lastValid = k;
            }
            if (firstValid != end) {
                std::size_t idx[4] = {firstValid, upwards ? iMax : iMin, upwards ? iMin : iMax, lastValid};
                std::sort(idx, idx + 4);
                for (int k = 0; k < 4; ++k) {
                    if (k == 0 || idx[k] != idx[k - 1])
                        m_out.append(QPointF(m_x[idx[k]], m_y[idx[k]]));
                }
            }
            i = end;
        }
    }

private:
    void start(Column& c, std::size_t i, int column, bool wild, const DevicePoint& p)
    {
        c.begin = i;
        c.first = c.last = c.top = c.bottom = i;
        c.topY = c.bottomY = p.y;
        c.count = 1;
        c.column = column;
        c.wild = wild;
        if (m_exact && !wild)
            c.full.reset(column, m_frame);
    }

    // The current column is complete up to @p end: settle what it lights,
    // decide the column held before it (which needed this one as its right
    // neighbour), and hold this one.
    void gathered(std::size_t end)
    {
        Column& c = *m_current;
        if (c.count > 0) {
            c.end = end;
            c.reducible = !c.wild && c.count > 5;
            c.main = Run{c.column, 1, 0};
            c.fullRuns.clear();
            if (m_exact && !c.wild) {
                c.full.certain(c.fullRuns);
                int inColumn = 0;
                for (const Run& r : c.fullRuns) {
                    if (r.column == c.column) {
                        c.main = r;
                        ++inColumn;
                    }
                }
                if (inColumn > 1 || c.full.overflow())
                    c.reducible = false;
            }
        }
        if (m_held->count > 0)
            decide(*m_held, m_previous, c.count > 0 ? &c : nullptr);
        // The held column becomes the left neighbour; this one is held.
        m_previous = m_held->count > 0 ? Run{m_held->column, m_held->main.lo, m_held->main.hi} : Run{0, 1, 0};
        m_held->count = 0;
        std::swap(m_held, m_current);
        m_current->count = 0;
    }

    void emitOriginals(const Column& c) { appendValid(m_x, m_y, c.begin, c.end, m_out); }

    void decide(const Column& c, const Run& left, const Column* right)
    {
        if (!c.reducible) {
            emitOriginals(c);
            return;
        }
        // Pixels beyond the column's own run do not tell the two drawings
        // apart when both surely light them anyway: the neighbouring
        // columns' runs are in both drawings whatever is decided for those
        // columns, and the column's own run is checked to be in both.
        const Run rightRun = right ? right->main : Run{0, 1, 0};
        auto covered = [&](const Run& r, bool ownRun) {
            for (const Run& by : {left, rightRun, ownRun ? c.main : Run{0, 1, 0}}) {
                if (by.column == r.column && by.lo <= r.lo && r.hi <= by.hi)
                    return true;
            }
            return false;
        };
        // Each part of @p a's runs next door that @p b lacks must be covered.
        auto differenceCovered = [&](const std::vector<Run>& a, const std::vector<Run>& b) {
            for (const Run& r : a) {
                if (r.column == c.column)
                    continue;
                int lo = r.lo;
                for (const Run& other : b) {
                    if (other.column != r.column || other.hi < lo || other.lo > r.hi)
                        continue;
                    if (other.lo > lo && !covered(Run{r.column, lo, other.lo - 1}, false))
                        return false;
                    lo = std::max(lo, other.hi + 1);
                }
                if (lo <= r.hi && !covered(Run{r.column, lo, r.hi}, false))
                    return false;
            }
            return true;
        };
        auto maybeCovered = [&](const std::vector<Run>& maybe) {
            return std::all_of(maybe.begin(), maybe.end(), [&](const Run& r) { return covered(r, true); });
        };
        if (maybeCovered(c.full.maybe())) {
            // Strokes from shortest to longest: from the column's extreme
            // straight to its last point; across at the last point's
            // height; then keeping 1, 2, 4 or 8 original lines at each edge,
            // where steep lines reach next door with their square caps.
            static constexpr struct
            {
                std::size_t edge;
                bool direct;
            } strokes[] = {{0, true}, {0, false}, {1, false}, {2, false}, {4, false}, {8, false}};
            // Last, the stroke that keeps just the lines that reach next door.
            const std::size_t spillStroke = std::size(strokes);
            for (std::size_t variant = 0; variant <= spillStroke; ++variant) {
                const bool built = variant < spillStroke
                    ? c.count > 2 * strokes[variant].edge + 3 && buildStroke(c, strokes[variant].edge, strokes[variant].direct)
                    : !c.full.spills().empty() && !c.full.manySpills() && buildSpillStroke(c);
                if (!built)
                    continue;
                simulateStroke(c);
                Run reducedMain{c.column, 1, 0};
                int inColumn = 0;
                for (const Run& r : m_reducedRuns) {
                    if (r.column == c.column) {
                        reducedMain = r;
                        ++inColumn;
                    }
                }
                const bool sameRun = c.main.lo > c.main.hi ? inColumn == 0 : inColumn == 1 && reducedMain == c.main;
                if (!m_reduced.overflow() && sameRun && differenceCovered(c.fullRuns, m_reducedRuns)
                    && differenceCovered(m_reducedRuns, c.fullRuns) && maybeCovered(m_reduced.maybe())) {
                    for (const QPointF& p : m_stroke)
                        m_out.append(p);
                    return;
                }
            }
        }
        emitOriginals(c);
    }

    // The index of the valid point @p steps after (before, if negative) @p i.
    std::size_t step(const Column& c, std::size_t i, int steps) const
    {
        while (steps != 0) {
            i = steps > 0 ? i + 1 : i - 1;
            if (i < c.begin || i >= c.end)
                return i;
            if (!std::isnan(m_x[i]) && !std::isnan(m_y[i]))
                steps += steps > 0 ? -1 : 1;
        }
        return i;
    }

    // A data value whose device row is @p row: the vertex's own value when it
    // lies on that row, else one at the row's middle.
    bool valueForRow(int row, std::size_t vertex, double& value) const
    {
        auto rowOf = [this](double v, int& r) {
            const double d = m_yAxis.device(v);
            if (!(d >= m_frame.safeTop && d <= m_frame.safeBottom))
                return false;
            r = toF26Dot6(d) >> 6;
            return true;
        };
        int r = 0;
        if (rowOf(m_y[vertex], r) && r == row) {
            value = m_y[vertex];
            return true;
        }
        value = m_yAxis.value(row + 0.5);
        return rowOf(value, r) && r == row;
    }

    // The reduced column: the first @p edge original lines, then straight
    // down (or up) the column through its top and bottom rows to the height
    // of the point @p edge before the last, across to that point (or, if
    // @p direct, to that point at once), and the last @p edge original lines.
    bool buildStroke(const Column& c, std::size_t edge, bool direct)
    {
        m_stroke.clear();
        std::size_t from = c.first;
        m_stroke.append(QPointF(m_x[from], m_y[from]));
        for (std::size_t k = 0; k < edge; ++k) {
            from = step(c, from, 1);
            m_stroke.append(QPointF(m_x[from], m_y[from]));
        }
        std::size_t to = c.last;
        for (std::size_t k = 0; k < edge; ++k)
            to = step(c, to, -1);
        if (from >= to)
            return false;
        const double xFrom = m_x[from];
        if (!appendRun(c, xFrom))
            return false;
        if (!direct)
            appendDistinct(QPointF(xFrom, m_y[to]));
        appendDistinct(QPointF(m_x[to], m_y[to]));
        while (to != c.last) {
            to = step(c, to, 1);
            appendDistinct(QPointF(m_x[to], m_y[to]));
        }
        return true;
    }

    // The vertical stroke through the column's top and bottom rows at the
    // first point's X, then each line that lit pixels next door, reached and
    // left by a vertical and a horizontal line inside the column, then the
    // last point the same way.
    bool buildSpillStroke(const Column& c)
    {
        m_stroke.clear();
        m_stroke.append(QPointF(m_x[c.first], m_y[c.first]));
        if (!appendRun(c, m_x[c.first]))
            return false;
        auto reach = [this](std::size_t k) {
            appendDistinct(QPointF(m_stroke.constLast().x(), m_y[k]));
            appendDistinct(QPointF(m_x[k], m_y[k]));
        };
        for (const std::size_t end : c.full.spills()) {
            const std::size_t start = step(c, end, -1);
            if (start < c.begin || end >= c.end)
                return false;
            reach(start);
            appendDistinct(QPointF(m_x[end], m_y[end]));
        }
        reach(c.last);
        return true;
    }

    // The vertical stroke at @p x through the column's top and bottom rows,
    // in the order its data visits them; nothing for a column with no run.
    bool appendRun(const Column& c, double x)
    {
        if (c.main.lo > c.main.hi)
            return true;
        // A run reaching the plot's edge may go on beyond it.
        const int topRow = c.main.lo == m_frame.rowLo ? c.main.lo - 1 : c.main.lo;
        const int bottomRow = c.main.hi == m_frame.rowHi ? c.main.hi + 1 : c.main.hi;
        double topValue = 0;
        double bottomValue = 0;
        if (!valueForRow(topRow, c.top, topValue) || !valueForRow(bottomRow, c.bottom, bottomValue))
            return false;
        const bool topFirst = c.top < c.bottom;
        appendDistinct(QPointF(x, topFirst ? topValue : bottomValue));
        appendDistinct(QPointF(x, topFirst ? bottomValue : topValue));
        return true;
    }

    void appendDistinct(const QPointF& p)
    {
        const QPointF& back = m_stroke.constLast();
        if (back.x() != p.x() || back.y() != p.y())
            m_stroke.append(p);
    }

    void simulateStroke(const Column& c)
    {
        m_reduced.reset(c.column, m_frame);
        DevicePoint previous;
        for (int k = 0; k < m_stroke.size(); ++k) {
            const DevicePoint p = devicePoint(m_xAxis.device(m_stroke[k].x()), m_yAxis.device(m_stroke[k].y()), m_frame);
            if (k > 0)
                addSegment(m_reduced, previous, p, m_frame);
            previous = p;
        }
        m_reduced.certain(m_reducedRuns);
    }

    const double* m_x;
    const double* m_y;
    Axis m_xAxis;
    Axis m_yAxis;
    bool m_exact;
    QVector<QPointF>& m_out;
    Frame m_frame;

    // The column being gathered, and the one before it, held until its
    // right neighbour is known.
    Column m_columns[2];
    Column* m_current = &m_columns[0];
    Column* m_held = &m_columns[1];
    Run m_previous{0, 1, 0};
    std::size_t m_stretch = 1; // length of the last stretch of one fixed-point X

    Coverage m_reduced;
    QVector<QPointF> m_stroke;
    std::vector<Run> m_reducedRuns;
};

} // namespace

double OrvexSeriesDecimator::AxisMap::toDevice(double value) const
{
    return Axis(*this).device(value);
}

double OrvexSeriesDecimator::AxisMap::fromDevice(double device) const
{
    return Axis(*this).value(device);
}

std::pair<std::size_t, std::size_t> OrvexSeriesDecimator::visibleSlice(const double* x, std::size_t count,
                                                                       double min, double max)
{
    const double* end = x + count;
    std::size_t first = static_cast<std::size_t>(std::lower_bound(x, end, min) - x);
    std::size_t last = static_cast<std::size_t>(std::upper_bound(x, end, max) - x);
    if (first > 0)
        --first;
    if (last < count)
        ++last;
    return {first, last};
}

void OrvexSeriesDecimator::m4(const double* x, const double* y, std::size_t count, const AxisMap& xMap,
                              const AxisMap& yMap, LineKind kind, QVector<QPointF>& out)
{
    out.clear();
    if (count == 0 || !(xMap.length > 0) || !(yMap.length > 0) || !(xMap.max > xMap.min) || !(yMap.max > yMap.min))
        return;
    auto [first, last] = visibleSlice(x, count, xMap.min, xMap.max);
    if (xMap.log) // no logarithm for these
        first = std::max(first, static_cast<std::size_t>(std::upper_bound(x, x + count, 0.0) - x));
    if (first >= last)
        return;
    M4Reducer(x, y, xMap, yMap, kind, out).run(first, last);
}

void OrvexSeriesDecimator::reduceInPixelSpace(const double* x, const double* y, std::size_t count,
                                              const PixelMap& toPixel, QVector<QPointF>& out)
{
    out.clear();
    bool havePrevious = false;
    double px = 0;
    double py = 0;
    // The last point of a run on one pixel is kept as well, so the line
    // leaves that pixel towards the same next point.
    bool pending = false;
    std::size_t pendingIndex = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (std::isnan(x[i]) || std::isnan(y[i]))
            continue;
        const QPointF p = toPixel(x[i], y[i]);
        const double cx = std::floor(p.x());
        const double cy = std::floor(p.y());
        if (havePrevious && cx == px && cy == py) {
            pending = true;
            pendingIndex = i;
            continue;
        }
        if (pending)
            out.append(QPointF(x[pendingIndex], y[pendingIndex]));
        pending = false;
        out.append(QPointF(x[i], y[i]));
        havePrevious = true;
        px = cx;
        py = cy;
    }
    if (pending)
        out.append(QPointF(x[pendingIndex], y[pendingIndex]));
}

void OrvexSeriesDecimator::copyAll(const double* x, const double* y, std::size_t count, QVector<QPointF>& out)
{
    out.clear();
    out.reserve(static_cast<int>(count));
    appendValid(x, y, 0, count, out);
}

} // namespace Gui::Widget
