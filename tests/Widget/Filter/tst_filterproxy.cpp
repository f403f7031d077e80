#include "FilterOracle.h"

#include <Widget/Filter/AQSortMultiFilterProxyModel.h>
#include <Widget/Filter/FilterKind.h>
#include <Widget/Filter/OrvexSortFilterProxyModel.h>

#include <QCollator>
#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

#include <limits>

using namespace QtUIBase;
using Gui::Widget::OrvexSortFilterProxyModel;

namespace {

const double NaN = std::numeric_limits<double>::quiet_NaN();

// The source rows the proxy shows, in its order or, @p ascending, in theirs.
QStringList sourceRows(const QSortFilterProxyModel& proxy, bool ascending = false)
{
    QList<int> rows;
    for (int r = 0; r < proxy.rowCount(); ++r)
        rows << proxy.mapToSource(proxy.index(r, 0)).row();
    if (ascending)
        std::sort(rows.begin(), rows.end());
    QStringList texts;
    for (int row : rows)
        texts << QString::number(row);
    return texts;
}

QVariant randomCell(int kind, QRandomGenerator& rng)
{
    static const QString alphabet = QStringLiteral("aAbBkK01289 .-_\u00e9\u0130\u212a");
    QString text;
    for (int i = rng.bounded(7); i > 0; --i)
        text += alphabet.at(rng.bounded(alphabet.size()));
    const QVariant cells[] = {text, rng.bounded(10) == 0 ? NaN : rng.bounded(200) / 10.0 - 5,
                              int(rng.bounded(40)) - 20, QPointF(rng.bounded(12) - 1, rng.bounded(12) - 1),
                              bool(rng.bounded(2)), bool(rng.bounded(2))};
    return cells[kind > OnOff ? Text : kind];
}

QString randomFilter(int kind, QRandomGenerator& rng)
{
    static const QStringList pools[] = {
        {"", "^$|^.*$", "^$|^a.*$", "^$|^k.{1,1}.*$", "^$|^ab$", "^$|^1.2$", "^$|^[ab$", "^$|^(a$", "a|b", "^.*b",
         "^$|^\u0130.*$", "\\d+", "^$|^$", "^k\\.*", "r ^a", "*b?", "ab"},
        {"", ">0", "<3,>-2", "=1", "=x", ">1,<1", "<-3.5", "=nan", "x,>2"},
        {"", "(0,0):(5,5)", "(2,8):(3,9)", "(5,5):(0,0)", "(1,1)", "-1 -1 10 10"},
        {"", "PASS", "FAIL", "ON", "OFF", "pass"}};
    const QStringList& pool = pools[kind == Text ? 0 : kind <= Integer ? 1 : kind == Region ? 2 : 3];
    return pool.at(rng.bounded(pool.size()));
}

} // namespace

/// The sorting multi-filter proxy and the single-filter proxy.
class tst_FilterProxy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filterKeepsRows_data()
    {
        QTest::addColumn<QString>("proxy"); // "multi", or "orvex" with "cs", "ci" or "collator"
        QTest::addColumn<int>("kind");
        QTest::addColumn<QVariantList>("cells");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("kept");
        const auto row = [](const char* name, const char* proxy, int kind, const QVariantList& cells,
                            const QString& filter, const QStringList& kept) {
            QTest::newRow(name) << proxy << kind << cells << filter << kept;
        };
        row("real =3", "multi", Real, {3.0, 3.0000001, NaN}, "=3", {"3"});
        row("real <3 strict", "multi", Real, {2.5, 3.0}, "<3", {"2.5"});
        row("real range, NaN passes < and >", "multi", Real, {1.0, 2.0, 5.0, NaN}, ">1,<5", {"2", "nan"});
        row("real unreadable number is 0", "multi", Real, {0.0, 1.0}, "=abc", {"0"});
        row("real parts without operator ignored", "multi", Real, {1.0, 4.0}, "x,,>2", {"4"});
        row("integer", "multi", Integer, {2, 3, 4}, ">2,<4", {"3"});
        row("text as a header builds it", "multi", Text, {"abc", "", "  abc  ", "xabc", "   "}, "^$|^ab.*$",
            {"abc", "", "  abc  ", "   "});
        row("text match starts at 0, any case", "multi", Text, {"xab", "abx", "ABX"}, "ab", {"abx", "ABX"});
        row("text point matches any character", "multi", Text, {"1.5", "125", "15"}, "^$|^1.5$", {"1.5", "125"});
        row("filter list, no filterDone", "multi list", Text, {"a", "b"}, "a", {"a"});
        // An unfinished pattern matches no text: only empty cells pass.
        row("invalid [", "multi", Text, {"[ab", "", " "}, "^$|^[ab$", {""});
        row("invalid (", "multi", Text, {"(a", "a"}, "^$|^(a$", {});
        row("region inclusive", "multi", Region, {QPointF(10, 5), QPointF(10.1, 5), QPointF(0, 0)}, "(0,0):(10,5)",
            {"10;5", "0;0"});
        row("region corners not reordered", "multi", Region, {QPointF(1, 1)}, "(10,5):(0,0)", {});
        row("region with three numbers keeps all", "multi", Region, {QPointF(99, 1)}, "(0,0):(10", {"99;1"});
        row("pass", "multi", PassFail, {true, false}, "PASS", {"true"});
        row("fail", "multi", PassFail, {true, false}, "FAIL", {"false"});
        row("pass in lower case keeps all", "multi", PassFail, {true, false}, "pass", {"true", "false"});
        row("on", "multi", OnOff, {true, false}, "ON", {"true"});
        row("disabled kind keeps all", "multi", Disabled, {1, 2}, "=1", {"1", "2"});
        const QVariantList words{"abc", "xab", "ABD", "3", "4", ""};
        row("orvex r regular expression", "orvex cs", Text, words, "r ^ab", {"abc", ""});
        row("orvex wildcard is a prefix test", "orvex cs", Text, words, "ab*", {"abc", ""});
        row("orvex wildcard ?", "orvex cs", Text, words, "?b", {"abc", ""});
        row("orvex wildcard *", "orvex cs", Text, words, "*b", {"abc", "xab", ""});
        row("orvex case-insensitive", "orvex ci", Text, words, "AB", {"abc", "ABD", ""});
        row("orvex numeric range", "orvex cs", Text, words, ">2,<4", {"3"});
        row("orvex a=b is numeric, b reads 0", "orvex cs", Text, words, "a=b", {"abc", "xab", "ABD", ""});
        row("orvex invalid regular expression", "orvex cs", Text, words, "r [a", {""});
        // Sorts ("sort" for a filter).
        row("sort points by x, then y", "multi", Region, {QPointF(2, 0), QPointF(1, 5), QPointF(1, 3)}, "sort",
            {"1;3", "1;5", "2;0"});
        row("sort numeric collator, negatives first", "orvex collator", Text, {"3", "-5", "0", "-10"}, "sort",
            {"-10", "-5", "0", "3"});
        row("sort strings", "orvex cs", Text, {"b", "B", "a"}, "sort", {"B", "a", "b"});
        row("sort doubles", "orvex cs", Real, {10.5, 9.0, -1.0}, "sort", {"-1", "9", "10.5"});
        row("sort ints keeps source order", "orvex cs", Integer, {3, 1, 2}, "sort", {"3", "1", "2"});
    }

    void filterKeepsRows()
    {
        QFETCH(QString, proxy);
        QFETCH(int, kind);
        QFETCH(QVariantList, cells);
        QFETCH(QString, filter);
        QFETCH(QStringList, kept);
        QList<QVariantList> rows;
        for (const QVariant& cell : cells)
            rows << QVariantList{cell};
        QStandardItemModel* model = FilterOracle::table({kind}, rows, this);
        AQSortMultiFilterProxyModel multi;
        OrvexSortFilterProxyModel orvex;
        QSortFilterProxyModel* used = proxy.startsWith("multi") ? static_cast<QSortFilterProxyModel*>(&multi) : &orvex;
        used->setSourceModel(model);
        orvex.setCaseSensitive(!proxy.endsWith("ci"));
        orvex.setCollator(proxy.endsWith("collator") ? std::make_shared<QCollator>(QLocale(QLocale::English)) : nullptr);
        if (orvex.collator())
            orvex.collator()->setNumericMode(true);
        QSignalSpy done(used, SIGNAL(filterDone()));
        if (filter == "sort")
            used->sort(0);
        else if (proxy == "multi list")
            multi.setFilter(QStringList{filter});
        else
            QMetaObject::invokeMethod(used, "setFilter", Q_ARG(int, 0), Q_ARG(QString, filter));
        QCOMPARE(done.count(), filter == "sort" || proxy == "multi list" ? 0 : 1);
        QCOMPARE(FilterOracle::firstColumn(used), kept);
        multi.resetFilter(0);
        orvex.resetFilter();
        QCOMPARE(used->rowCount(), cells.size());
    }

    void naturalOrder_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<bool>("less");
        QTest::newRow("a2 < a10") << "a2" << "a10" << true;
        QTest::newRow("2 < 10") << "2" << "10" << true;
        QTest::newRow("b1 > a9") << "b1" << "a9" << false;
        QTest::newRow("equal numbers, leading zeros") << "x007" << "x7" << false;
        QTest::newRow("text compares by code units") << "B1" << "a1" << true;
        QTest::newRow("numbers from 2^31 read negative") << "a2147483648" << "a1" << true;
        QTest::newRow("past 2^32-1 reads 0") << "a4294967296" << "a1" << true;
        QTest::newRow("empty before text") << "" << "a" << true;
        QTest::newRow("0 equals empty") << "0" << "" << false;
        QTest::newRow("trailing zero piece equals none") << "a0" << "a" << false;
        QTest::newRow("prefix text is less") << "ab1" << "abc1" << true;
    }

    void naturalOrder()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(bool, less);
        QCOMPARE(AQSortMultiFilterProxyModel::naturalLessThan(a, b), less);
        QCOMPARE(FilterOracle::naturalLessThan(a, b), less);
    }

    // Filters of every kind, typed and cleared, while the model changes
    // under them: the proxy keeps exactly the rows a straightforward
    // evaluation keeps, in natural order when sorted.
    void matchesStraightforwardEvaluation_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<bool>("sorted");
        QTest::newRow("small, row by row") << 60 << false;
        QTest::newRow("large, rebuilt, ranked") << 3000 << true;
    }

    void matchesStraightforwardEvaluation()
    {
        QFETCH(int, rows);
        QFETCH(bool, sorted);
        QRandomGenerator rng(20240611u + uint(rows));
        const QList<int> kinds{Text, Real, Integer, Region, PassFail, OnOff, Text};
        QList<QVariantList> cells;
        for (int r = 0; r < rows; ++r) {
            cells << QVariantList();
            for (int kind : kinds)
                cells.last() << randomCell(kind, rng);
        }
        QStandardItemModel* model = FilterOracle::table(kinds, cells, this);
        model->setHeaderData(6, Qt::Horizontal, "not a number", FilterKindRole);
        const auto name = [&](const QString& row) { return model->index(row.toInt(), 0).data().toString(); };
        AQSortMultiFilterProxyModel proxy;
        proxy.setSourceModel(model);
        if (sorted) {
            // A fresh sort is exactly the stable sort of the source order.
            proxy.sort(0);
            QStringList expected = sourceRows(proxy, true);
            std::stable_sort(expected.begin(), expected.end(), [&](const QString& a, const QString& b) {
                return FilterOracle::naturalLessThan(name(a), name(b));
            });
            QCOMPARE(sourceRows(proxy), expected);
        }
        QMap<int, QString> filters;
        for (int step = 0; step < 40; ++step) {
            const int c = rng.bounded(kinds.size());
            const int change = rng.bounded(6);
            if (change == 0 && model->rowCount() > 1) {
                model->removeRows(rng.bounded(model->rowCount() - 1), 1);
            } else if (change == 1) {
                QList<QStandardItem*> items;
                for (int kind : kinds)
                    items << new QStandardItem(randomCell(kind, rng).toString());
                model->insertRow(rng.bounded(model->rowCount() + 1), items);
                items.at(c)->setData(randomCell(kinds.at(c), rng), Qt::DisplayRole);
            } else if (change == 2) {
                model->setData(model->index(rng.bounded(model->rowCount()), c), randomCell(kinds.at(c), rng));
            } else if (step % 9 == 0) {
                // Hidden filters come back as they were; a filter set meanwhile is lost.
                proxy.hideFilters();
                QCOMPARE(proxy.rowCount(), model->rowCount());
                proxy.setFilter(c, "=1");
                proxy.restoreFilters();
            } else {
                filters[c] = randomFilter(kinds.at(c), rng);
                proxy.setFilter(c, filters[c]);
            }
            QStringList expected;
            for (int r = 0; r < model->rowCount(); ++r) {
                if (FilterOracle::multiAccepts(model, r, filters, Qt::DisplayRole))
                    expected << QString::number(r);
            }
            // Qt re-inserts changed rows among equal ones where it likes:
            // the order is checked pairwise, not against one stable sort.
            const QStringList shown = sourceRows(proxy);
            for (int i = 1; sorted && i < shown.size(); ++i)
                QVERIFY(!FilterOracle::naturalLessThan(name(shown.at(i)), name(shown.at(i - 1))));
            QCOMPARE(sourceRows(proxy, true), expected);
        }
    }

    // Rows that stay visible stay selected and keep their persistent
    // indexes, whether the filter change is applied row by row or by
    // rebuilding the mapping in one pass.
    void selectionAndPersistentIndexesSurvive_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<bool>("rebuilt");
        QTest::addColumn<QStringList>("selected");
        QTest::newRow("few rows change") << 0 << "<4000" << false << QStringList{"3", "4"};
        QTest::newRow("every other row changes") << 1 << "PASS" << true << QStringList{"3", "4001"};
    }

    void selectionAndPersistentIndexesSurvive()
    {
        QFETCH(int, column);
        QFETCH(QString, filter);
        QFETCH(bool, rebuilt);
        QFETCH(QStringList, selected);
        QList<QVariantList> cells;
        for (int r = 0; r < 5000; ++r)
            cells << QVariantList{r, r % 2 == 1};
        AQSortMultiFilterProxyModel proxy;
        proxy.setSourceModel(FilterOracle::table({Integer, PassFail}, cells, this));
        QTableView view;
        view.setModel(&proxy);
        view.setSelectionMode(QAbstractItemView::MultiSelection);
        view.setSelectionBehavior(QAbstractItemView::SelectRows);
        for (int r : {3, 4, 4001})
            view.selectRow(r);
        const QPersistentModelIndex kept = proxy.index(3, 0);
        const QPersistentModelIndex dropped = proxy.index(rebuilt ? 4 : 4001, 0);
        int layouts = 0;
        connect(&proxy, &QAbstractItemModel::layoutChanged, this, [&] { ++layouts; });
        proxy.setFilter(column, filter);
        QCOMPARE(layouts > 0, rebuilt);
        QVERIFY(!dropped.isValid());
        QCOMPARE(proxy.mapToSource(kept).row(), 3);
        QStringList stillSelected;
        for (const QModelIndex& index : view.selectionModel()->selectedRows())
            stillSelected << index.data().toString();
        stillSelected.sort();
        QCOMPARE(stillSelected, selected);
    }
};

QTEST_MAIN(tst_FilterProxy)
#include "tst_filterproxy.moc"
