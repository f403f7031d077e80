#include "Widget/Filter/AQSortMultiFilterProxyModel.h"

#include "Widget/Filter/FilterKind.h"
#include "Widget/Filter/NaturalOrder_p.h"
#include "Widget/Filter/RowFilterCache_p.h"

#include <QRegExp>

namespace QtUIBase {

using namespace FilterSupport;

AQSortMultiFilterProxyModel::AQSortMultiFilterProxyModel(QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_patternSyntax(QRegExp::RegExp)
    , m_sortKeys(std::make_unique<SortKeyCache>())
{
    m_rows = std::make_unique<RowFilterCache>([this](int column, const QString& text) {
        bool ok = false;
        const QAbstractItemModel* source = sourceModel();
        int kind = source ? source->headerData(column, Qt::Horizontal, FilterKindRole).toInt(&ok) : 0;
        if (!ok)
            kind = Text;
        switch (kind) {
        case Text:
            return ColumnFilter::text(text, QRegExp::PatternSyntax(m_patternSyntax), Qt::CaseInsensitive);
        case Real:
        case Integer:
            return ColumnFilter::conditions(text, kind == Integer);
        case Region:
            return ColumnFilter::region(text);
        case PassFail:
            return ColumnFilter::truth(text, QStringLiteral("PASS"), QStringLiteral("FAIL"));
        case OnOff:
            return ColumnFilter::truth(text, QStringLiteral("ON"), QStringLiteral("OFF"));
        default:
            return ColumnFilter();
        }
    });
}

AQSortMultiFilterProxyModel::~AQSortMultiFilterProxyModel() = default;

void AQSortMultiFilterProxyModel::setSourceModel(QAbstractItemModel* model)
{
    // Before the base connects its own handlers: the caches must have
    // followed a change when the base asks about the changed rows.
    m_rows->watch(model);
    m_sortKeys->watch(model);
    QSortFilterProxyModel::setSourceModel(model);
}

void AQSortMultiFilterProxyModel::sort(int column, Qt::SortOrder order)
{
    const QAbstractItemModel* source = sourceModel();
    if (column >= 0 && source && worthRanking(rowCount(), source->rowCount()))
        m_sortKeys->rankAll(column, sortRole());
    QSortFilterProxyModel::sort(column, order);
}

bool AQSortMultiFilterProxyModel::worthRanking(int sortedRows, int sourceRows)
{
    // Ranking reads and sorts every source row; a sort of a few shown rows
    // is cheaper with the keys of those rows alone.
    return sortedRows >= 1024 && sortedRows * 4 >= sourceRows;
}

double AQSortMultiFilterProxyModel::trunc(double value, int precision, char format)
{
    bool ok = false;
    const double result = QString::number(value, format, precision).toDouble(&ok);
    return ok ? result : 0.0;
}

bool AQSortMultiFilterProxyModel::naturalLessThan(const QString& left, const QString& right)
{
    return NaturalKey::lessThan(left, right);
}

void AQSortMultiFilterProxyModel::setFilter(int column, const QString& filter)
{
    setColumnFilter(column, filter);
}

void AQSortMultiFilterProxyModel::setColumnFilter(int column, const QString& filter)
{
    m_filters.insert(column, filter);
    applyFilters();
    Q_EMIT filterDone();
}

void AQSortMultiFilterProxyModel::setFilter(const QStringList& filters)
{
    for (int i = 0; i < filters.size(); ++i)
        m_filters.insert(i, filters.at(i));
    applyFilters();
}

void AQSortMultiFilterProxyModel::resetFilter(int column)
{
    if (column == -1)
        m_filters.clear();
    else
        m_filters.remove(column);
    applyFilters();
}

void AQSortMultiFilterProxyModel::hideFilters()
{
    m_savedFilters = m_filters;
    m_filters.clear();
    applyFilters();
}

void AQSortMultiFilterProxyModel::restoreFilters()
{
    m_filters = m_savedFilters;
    applyFilters();
}

void AQSortMultiFilterProxyModel::applyFilters()
{
    m_rows->setFilters(m_filters);
    const QAbstractItemModel* source = sourceModel();
    if (!source) {
        invalidateFilter();
        return;
    }
    if (RowFilterCache::rowByRow(m_rows->refresh(filterRole()), source->rowCount())) {
        invalidateFilter();
        return;
    }
    // The rebuilt mapping is sorted afresh.
    if (sortColumn() >= 0 && worthRanking(m_rows->acceptedCount(), source->rowCount()))
        m_sortKeys->rankAll(sortColumn(), sortRole());
    invalidate();
}

bool AQSortMultiFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (!sourceParent.isValid() && m_rows->model() == sourceModel())
        return m_rows->accepts(sourceRow, filterRole());
    return m_rows->acceptsRow(sourceRow, sourceParent, filterRole());
}

bool AQSortMultiFilterProxyModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const QAbstractItemModel* source = sourceModel();
    if (left.model() == source && right.model() == source && source == m_sortKeys->model()
        && left.column() == right.column() && !left.parent().isValid() && !right.parent().isValid()) {
        const SortKeyCache::Order order = m_sortKeys->compare(left.row(), right.row(), left.column(), sortRole());
        if (order != SortKeyCache::Order::Other)
            return order == SortKeyCache::Order::Less;
    }
    const QVariant l = left.data(sortRole());
    const QVariant r = right.data(sortRole());
    if (l.type() == QVariant::String && r.type() == QVariant::String)
        return naturalLessThan(l.toString(), r.toString());
    if (l.type() == QVariant::PointF && r.type() == QVariant::PointF) {
        const QPointF a = l.toPointF();
        const QPointF b = r.toPointF();
        return a.x() == b.x() ? a.y() < b.y() : a.x() < b.x();
    }
    return QSortFilterProxyModel::lessThan(left, right);
}

} // namespace QtUIBase
