// Filtering and sorting a 1,000,000-row table: AQSortMultiFilterProxyModel
// against Qt's own QSortFilterProxyModel on the same model, in the same run.
//
// Each benchmark times one operation on both and reports milliseconds of
// the thread's CPU time (on a machine shared with other work, wall time
// mostly measures the others) and ratios (ours / plain): "cold" is the
// first time on a fresh proxy (cells and sort keys not read yet), "steady"
// the median of three repeats once they are. Qt's proxy keeps nothing
// between operations, so it is timed once per operation (it takes seconds
// to minutes). The typing benchmark also reports wall time.
#include <Widget/Filter/AQSortMultiFilterProxyModel.h>
#include <Widget/Filter/FilterKind.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QPointF>
#include <QRandomGenerator>
#include <QSortFilterProxyModel>
#include <QTableView>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <memory>
#include <vector>

using QtUIBase::AQSortMultiFilterProxyModel;

namespace {

// ORVEX_FILTER_BENCH_ROWS overrides the size for a quick look.
const int Rows = qEnvironmentVariableIsSet("ORVEX_FILTER_BENCH_ROWS")
    ? qEnvironmentVariableIntValue("ORVEX_FILTER_BENCH_ROWS")
    : 1000000;
const QString FirstKey = QStringLiteral("^$|^k.*$");  // typed "k*"
const QString SecondKey = QStringLiteral("^$|^ke.*$"); // typed "ke*"

// Names such as "kestrel12", numbers, points and flags, one column per
// filter kind, generated once and held like any stored table.
class Table : public QAbstractTableModel
{
public:
    Table()
    {
        QRandomGenerator rng(42);
        static const char* const syllables[] = {"ke", "st", "ra", "lo", "mi", "an", "to", "be", "ur", "ix", "po", "ne"};
        for (int r = 0; r < Rows; ++r) {
            QString name;
            for (int s = 0, n = 1 + int(rng.bounded(3)); s < n; ++s)
                name += QLatin1String(syllables[rng.bounded(12)]);
            name[0] = QChar(u'a' + rng.bounded(26));
            m_names.push_back(name + QString::number(rng.bounded(1000)));
            m_values.push_back(rng.generateDouble());
            m_counts.push_back(int(rng.bounded(1000)));
            m_points.emplace_back(rng.bounded(100), rng.bounded(100));
            m_flags.push_back(std::uint8_t(rng.bounded(4)));
        }
    }
    int rowCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : Rows; }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : 6; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return QVariant();
        const auto r = std::size_t(index.row());
        switch (index.column()) {
        case 0:
            return m_names[r];
        case 1:
            return m_values[r];
        case 2:
            return m_counts[r];
        case 3:
            return m_points[r];
        case 4:
            return bool(m_flags[r] & 1);
        default:
            return bool(m_flags[r] & 2);
        }
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && (role == QtUIBase::FilterKindRole || role == Qt::DisplayRole))
            return section; // column i holds FilterKind i
        return QAbstractTableModel::headerData(section, orientation, role);
    }

private:
    std::vector<QString> m_names;
    std::vector<double> m_values;
    std::vector<int> m_counts;
    std::vector<QPointF> m_points;
    std::vector<std::uint8_t> m_flags;
};

Table& table()
{
    static Table model;
    return model;
}

double cpuNow()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

double lastWallMs = 0;

// CPU milliseconds of @p f; its wall time is left in lastWallMs.
template <typename F>
double milliseconds(F&& f)
{
    const auto wall = std::chrono::steady_clock::now();
    const double start = cpuNow();
    f();
    const double cpu = cpuNow() - start;
    lastWallMs = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - wall).count();
    return cpu;
}

double median3(double a, double b, double c)
{
    return std::max(std::min(a, b), std::min(std::max(a, b), c));
}

void report(benchmark::State& state, double cold, double steady, double plain)
{
    state.SetIterationTime(steady / 1000.0);
    state.counters["ours_cold_cpu_ms"] = cold;
    state.counters["ours_steady_cpu_ms"] = steady;
    state.counters["plain_cpu_ms"] = plain;
    state.counters["ratio_cold"] = cold / plain;
    state.counters["ratio_steady"] = steady / plain;
}

std::unique_ptr<QSortFilterProxyModel> plainProxy()
{
    auto proxy = std::make_unique<QSortFilterProxyModel>();
    proxy->setSourceModel(&table());
    proxy->setFilterKeyColumn(0);
    proxy->rowCount(); // builds the mapping a view would ask for
    return proxy;
}

std::unique_ptr<AQSortMultiFilterProxyModel> ourProxy()
{
    auto proxy = std::make_unique<AQSortMultiFilterProxyModel>();
    proxy->setSourceModel(&table());
    proxy->rowCount();
    return proxy;
}

void setFourFilters(AQSortMultiFilterProxyModel& proxy)
{
    proxy.setFilter(0, FirstKey);
    proxy.setFilter(1, QStringLiteral(">0.2,<0.8"));
    proxy.setFilter(2, QStringLiteral("<500"));
    proxy.setFilter(4, QStringLiteral("PASS"));
}

// The plain proxy filtered by FirstKey, kept for the clearing benchmark.
std::unique_ptr<QSortFilterProxyModel>& filteredPlain()
{
    static std::unique_ptr<QSortFilterProxyModel> proxy;
    return proxy;
}

void BM_FourFilters(benchmark::State& state)
{
    for (auto _ : state) {
        auto plain = plainProxy();
        const double plainMs = milliseconds([&] { plain->setFilterRegExp(QRegExp(FirstKey, Qt::CaseInsensitive)); });
        auto ours = ourProxy();
        // Fair check: the same single filter keeps the same rows in both.
        ours->setFilter(0, FirstKey);
        if (ours->rowCount() != plain->rowCount())
            state.SkipWithError("the proxies disagree on the text filter");
        ours = ourProxy();
        const double cold = milliseconds([&] { setFourFilters(*ours); });
        double steady[3];
        for (double& t : steady) {
            ours->resetFilter(-1);
            t = milliseconds([&] { setFourFilters(*ours); });
        }
        state.counters["rows_kept"] = ours->rowCount();
        state.counters["plain_rows_kept"] = plain->rowCount();
        report(state, cold, median3(steady[0], steady[1], steady[2]), plainMs);
        filteredPlain() = std::move(plain);
    }
}

void BM_ClearFilters(benchmark::State& state)
{
    for (auto _ : state) {
        auto plain = std::move(filteredPlain());
        if (!plain) {
            plain = plainProxy();
            plain->setFilterRegExp(QRegExp(FirstKey, Qt::CaseInsensitive));
        }
        const double plainMs = milliseconds([&] { plain->setFilterRegExp(QRegExp()); });
        auto ours = ourProxy();
        setFourFilters(*ours);
        const double cold = milliseconds([&] { ours->resetFilter(-1); });
        double steady[3];
        for (double& t : steady) {
            setFourFilters(*ours);
            t = milliseconds([&] { ours->resetFilter(-1); });
        }
        if (ours->rowCount() != Rows || plain->rowCount() != Rows)
            state.SkipWithError("a proxy did not clear");
        report(state, cold, median3(steady[0], steady[1], steady[2]), plainMs);
    }
}

void BM_SortNames(benchmark::State& state)
{
    for (auto _ : state) {
        auto plain = plainProxy();
        const double plainMs = milliseconds([&] { plain->sort(0); });
        auto ours = ourProxy();
        const double cold = milliseconds([&] { ours->sort(0); });
        double steady[3];
        for (double& t : steady) {
            ours->sort(0, Qt::DescendingOrder);
            t = milliseconds([&] { ours->sort(0); });
        }
        // Each in its own order: natural for ours, by code units for Qt's.
        for (int r = 1; r < 2000; ++r) {
            const QString a = ours->index(r - 1, 0).data().toString();
            const QString b = ours->index(r, 0).data().toString();
            if (AQSortMultiFilterProxyModel::naturalLessThan(b, a) || plain->index(r, 0).data().toString() < plain->index(r - 1, 0).data().toString())
                state.SkipWithError("a proxy did not sort");
        }
        report(state, cold, median3(steady[0], steady[1], steady[2]), plainMs);
    }
}

// One more character typed into a text filter, until a shown view has
// laid out and painted the new rows.
template <typename Proxy, typename SetFilter>
double typeOneMore(Proxy& proxy, QTableView& view, SetFilter&& setFilter, const QString& pattern)
{
    return milliseconds([&] {
        setFilter(proxy, pattern);
        QCoreApplication::processEvents();
        view.viewport()->repaint();
    });
}

void BM_TypeOneMoreCharacter(benchmark::State& state)
{
    const auto setPlain = [](QSortFilterProxyModel& p, const QString& f) { p.setFilterRegExp(QRegExp(f, Qt::CaseInsensitive)); };
    const auto setOurs = [](AQSortMultiFilterProxyModel& p, const QString& f) { p.setFilter(0, f); };
    for (auto _ : state) {
        QSortFilterProxyModel plain;
        plain.setSourceModel(&table());
        plain.setFilterKeyColumn(0);
        setPlain(plain, FirstKey); // before the view: its mapping is built in one go
        QTableView plainView;
        plainView.setModel(&plain);
        plainView.resize(800, 600);
        plainView.show();
        QCoreApplication::processEvents();
        const double plainMs = typeOneMore(plain, plainView, setPlain, SecondKey);
        state.counters["plain_wall_ms"] = lastWallMs;

        AQSortMultiFilterProxyModel ours;
        ours.setSourceModel(&table());
        QTableView view;
        view.setModel(&ours);
        view.resize(800, 600);
        view.show();
        QCoreApplication::processEvents();
        state.counters["ours_first_key_cpu_ms"] = typeOneMore(ours, view, setOurs, FirstKey);
        const double cold = typeOneMore(ours, view, setOurs, SecondKey);
        double steady[3];
        double wall[3];
        for (int i = 0; i < 3; ++i) {
            typeOneMore(ours, view, setOurs, FirstKey);
            steady[i] = typeOneMore(ours, view, setOurs, SecondKey);
            wall[i] = lastWallMs;
        }
        state.counters["ours_steady_wall_ms"] = median3(wall[0], wall[1], wall[2]);
        if (ours.rowCount() != plain.rowCount())
            state.SkipWithError("the proxies disagree on the typed filter");
        state.counters["rows_shown"] = ours.rowCount();
        report(state, cold, median3(steady[0], steady[1], steady[2]), plainMs);
    }
}

void once(benchmark::internal::Benchmark* b)
{
    b->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(BM_FourFilters)->Apply(once);
BENCHMARK(BM_ClearFilters)->Apply(once);
BENCHMARK(BM_SortNames)->Apply(once);
BENCHMARK(BM_TypeOneMoreCharacter)->Apply(once);

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    table(); // built before timing starts
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
