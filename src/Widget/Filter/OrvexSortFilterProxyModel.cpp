#include "Widget/Filter/OrvexSortFilterProxyModel.h"

#include "Widget/Filter/RowFilterCache_p.h"

#include <QCollator>
#include <QRegExp>

#include <cstdlib>

namespace Gui::Widget {

using QtUIBase::FilterSupport::ColumnFilter;
using QtUIBase::FilterSupport::RowFilterCache;

OrvexSortFilterProxyModel::OrvexSortFilterProxyModel(QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_patternSyntax(QRegExp::Wildcard)
{
    m_rows = std::make_unique<RowFilterCache>([this](int, const QString& text) {
        if (!m_textMode)
            return ColumnFilter::conditions(text, false);
        return ColumnFilter::text(text, QRegExp::PatternSyntax(m_patternSyntax),
                                  m_caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive);
    });
}

OrvexSortFilterProxyModel::~OrvexSortFilterProxyModel() = default;

void OrvexSortFilterProxyModel::setSourceModel(QAbstractItemModel* model)
{
    m_rows->watch(model); // before the base's handlers, as in AQSortMultiFilterProxyModel
    QSortFilterProxyModel::setSourceModel(model);
}

void OrvexSortFilterProxyModel::setFilter(int column, const QString& filter)
{
    m_filterColumn = column;
    m_filterText = filter;
    m_textMode = !filter.contains(QRegExp(QStringLiteral("([<>=])(.*)")));
    if (m_textMode) {
        if (filter.startsWith(QLatin1String("r "))) {
            m_patternSyntax = QRegExp::RegExp;
            m_filterText = filter.mid(2).trimmed();
        } else {
            m_patternSyntax = QRegExp::Wildcard;
        }
    }
    applyFilter();
    Q_EMIT filterDone();
}

void OrvexSortFilterProxyModel::resetFilter()
{
    m_filterColumn = -1;
    m_filterText.clear();
    applyFilter();
}

void OrvexSortFilterProxyModel::applyFilter()
{
    QMap<int, QString> filters;
    if (m_filterColumn >= 0)
        filters.insert(m_filterColumn, m_filterText);
    m_rows->setFilters(filters);
    // The compiled filter depends on the mode and options too.
    m_rows->recompile();
    const QAbstractItemModel* source = sourceModel();
    if (source && RowFilterCache::rowByRow(m_rows->refresh(Qt::DisplayRole), source->rowCount()))
        invalidateFilter();
    else
        invalidate();
}

bool OrvexSortFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (m_filterColumn < 0)
        return true;
    if (!sourceParent.isValid() && m_rows->model() == sourceModel())
        return m_rows->accepts(sourceRow, Qt::DisplayRole);
    return m_rows->acceptsRow(sourceRow, sourceParent, Qt::DisplayRole);
}

bool OrvexSortFilterProxyModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const QVariant l = left.data(Qt::DisplayRole);
    const QVariant r = right.data(Qt::DisplayRole);
    if (m_collator) {
        const QString a = l.toString();
        const QString b = r.toString();
        const bool numeric = m_collator->numericMode();
        const bool aNegative = numeric && a.startsWith(QLatin1Char('-'));
        const bool bNegative = numeric && b.startsWith(QLatin1Char('-'));
        if (aNegative && bNegative)
            return m_collator->compare(a, b) > 0; // larger magnitudes first
        if (aNegative != bNegative)
            return aNegative;
        return m_collator->compare(a, b) < 0;
    }
    switch (l.type()) {
    case QVariant::String:
        return QString::compare(l.toString(), r.toString(), m_caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive)
            < 0;
    case QVariant::Double:
        return std::atof(l.toString().toLocal8Bit().constData()) < std::atof(r.toString().toLocal8Bit().constData());
    case QVariant::Int:
        // Read as ints, but ordered as the indexes themselves: int columns
        // keep the source order. Hosts rely on it.
        return left < right;
    default:
        return false;
    }
}

} // namespace Gui::Widget
