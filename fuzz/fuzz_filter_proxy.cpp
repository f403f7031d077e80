// Filter texts of every kind and the natural comparison, from arbitrary
// bytes. The input is a list of texts (UTF-8, or UTF-16 when the first
// byte is odd) separated by newlines; the first text is the filter, the
// rest are cells. Findings:
// - a proxy keeping other rows than a straightforward evaluation keeps
//   (typed header text, raw regular expressions, numeric conditions,
//   regions, pass/fail, on/off, and the single-filter proxy's patterns),
//   or judging the same cells otherwise as rows under a parent (which are
//   read afresh, not cached);
// - a natural comparison that differs from the straightforward one, or is
//   not a strict weak ordering on the triples of cells (irreflexive,
//   asymmetric, transitive, with transitive equivalence);
// - a natural sort whose result is not ordered, or a crash or hang in any
//   of it (mixed and NaN values included, which are not totally ordered).

#include "FilterOracle.h"

#include "Widget/Filter/AQFilterHeaderView.h"
#include "Widget/Filter/AQSortMultiFilterProxyModel.h"
#include "Widget/Filter/FilterKind.h"
#include "Widget/Filter/OrvexSortFilterProxyModel.h"

#include <QCoreApplication>
#include <QPointF>
#include <QStandardItemModel>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace QtUIBase;

namespace {

QStringList texts(const uint8_t* data, size_t size)
{
    if (size == 0)
        return {};
    QString all;
    if (data[0] % 2)
        all = QString::fromUtf16(reinterpret_cast<const char16_t*>(data + 1), int((size - 1) / 2));
    else
        all = QString::fromUtf8(reinterpret_cast<const char*>(data + 1), int(size - 1));
    // Short texts and few rows: the point is the variety, not the size.
    QStringList list = all.split(QLatin1Char('\n')).mid(0, 9);
    for (QString& text : list)
        text.truncate(48);
    return list;
}

[[noreturn]] void finding(const char* what, const QString& a, const QString& b = QString())
{
    std::fprintf(stderr, "%s: [%s] [%s]\n", what, qUtf8Printable(a), qUtf8Printable(b));
    std::abort();
}

// One column per kind, each cell read from the same text.
QStandardItemModel* makeModel(const QStringList& cells, QObject* parent)
{
    auto* model = new QStandardItemModel(cells.size(), 7, parent);
    for (int c = 0; c < 6; ++c)
        model->setHeaderData(c, Qt::Horizontal, c, FilterKindRole);
    for (int r = 0; r < cells.size(); ++r) {
        const QString& text = cells.at(r);
        const QStringList parts = text.split(QLatin1Char(' '));
        const QVariant values[] = {text, text.toDouble(), text.toInt(),
                                   QPointF(parts.value(0).toDouble(), parts.value(1).toDouble()), text.size() % 2 == 1,
                                   text.startsWith(QLatin1Char('1'))};
        for (int c = 0; c < 6; ++c)
            model->setData(model->index(r, c), values[c]);
        // A column of mixed types for the sort's general comparison.
        const QVariant mixed[] = {text, text.size(), text.toDouble(), QPointF(text.toDouble(), text.size())};
        model->setData(model->index(r, 6), mixed[r % 4]);
    }
    return model;
}

// Opens the row test to compare cached top-level rows with nested ones.
struct MultiProxy : AQSortMultiFilterProxyModel
{
    using AQSortMultiFilterProxyModel::filterAcceptsRow;
};

// The same cells again, as the children of one top-level row.
QStandardItemModel* nest(const QStandardItemModel* flat, QObject* parent)
{
    auto* tree = new QStandardItemModel(1, flat->columnCount(), parent);
    tree->setItem(0, 0, new QStandardItem);
    for (int c = 0; c < flat->columnCount(); ++c)
        tree->setHeaderData(c, Qt::Horizontal, flat->headerData(c, Qt::Horizontal, FilterKindRole), FilterKindRole);
    for (int r = 0; r < flat->rowCount(); ++r) {
        QList<QStandardItem*> items;
        for (int c = 0; c < flat->columnCount(); ++c)
            items << flat->item(r, c)->clone();
        tree->item(0)->appendRow(items);
    }
    return tree;
}

void checkFilters(QStandardItemModel* model, const QString& filter)
{
    MultiProxy proxy;
    proxy.setSourceModel(model);
    MultiProxy nested;
    QStandardItemModel* tree = nest(model, model);
    nested.setSourceModel(tree);
    Gui::Widget::OrvexSortFilterProxyModel single;
    single.setSourceModel(model);
    const QString typed = AQFilterHeaderView::textPattern(filter);
    for (int c = 0; c < 6; ++c) {
        // Typed header text only where the header builds patterns.
        for (const QString& text : c == 0 ? QStringList{filter, typed} : QStringList{filter}) {
            const QMap<int, QString> filters{{c, text}};
            proxy.setFilter(c, text);
            nested.setFilter(c, text);
            int kept = 0;
            for (int r = 0; r < model->rowCount(); ++r) {
                const bool accepted = FilterOracle::multiAccepts(model, r, filters, Qt::DisplayRole);
                kept += accepted;
                if (nested.filterAcceptsRow(r, tree->index(0, 0)) != accepted)
                    finding("nested rows filtered otherwise", text, QString::number(c));
            }
            if (proxy.rowCount() != kept)
                finding("multi-filter proxy", text, QString::number(c));
            proxy.resetFilter(c);
            nested.resetFilter(c);
        }
        single.setCaseSensitive(c % 2 == 0);
        single.setFilter(c, filter);
        int kept = 0;
        for (int r = 0; r < model->rowCount(); ++r)
            kept += FilterOracle::orvexAccepts(model, r, c, filter, c % 2 == 0);
        if (single.rowCount() != kept)
            finding("single-filter proxy", filter, QString::number(c));
    }
}

void checkNaturalOrder(const QStringList& cells)
{
    const auto less = &AQSortMultiFilterProxyModel::naturalLessThan;
    for (const QString& a : cells) {
        if (less(a, a))
            finding("not irreflexive", a);
        for (const QString& b : cells) {
            const bool ab = less(a, b);
            if (ab != FilterOracle::naturalLessThan(a, b))
                finding("differs from the straightforward comparison", a, b);
            if (ab && less(b, a))
                finding("not asymmetric", a, b);
            for (const QString& c : cells) {
                if (ab && less(b, c) && !less(a, c))
                    finding("not transitive", a, c);
                const bool abEqual = !ab && !less(b, a);
                if (abEqual && !less(b, c) && !less(c, b) && (less(a, c) || less(c, a)))
                    finding("equivalence not transitive", a, c);
            }
        }
    }
}

void checkSorts(QStandardItemModel* model)
{
    AQSortMultiFilterProxyModel proxy;
    proxy.setSourceModel(model);
    for (int c : {0, 3, 6}) {
        proxy.sort(c);
        if (proxy.rowCount() != model->rowCount())
            finding("sort lost rows", QString::number(c));
    }
    proxy.sort(0);
    for (int r = 1; r < proxy.rowCount(); ++r) {
        const QString a = proxy.index(r - 1, 0).data().toString();
        const QString b = proxy.index(r, 0).data().toString();
        if (FilterOracle::naturalLessThan(b, a))
            finding("natural sort out of order", a, b);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QStringList list = texts(data, size);
    if (list.isEmpty())
        return 0;
    QObject owner;
    QStandardItemModel* model = makeModel(list.mid(1), &owner);
    checkFilters(model, list.first());
    checkNaturalOrder(list);
    checkSorts(model);
    return 0;
}
