#pragma once

#include "OrvexQtUIBase_export.h"

#include <QMap>
#include <QSortFilterProxyModel>
#include <QStringList>

#include <memory>

namespace QtUIBase {

namespace FilterSupport {
class RowFilterCache;
class SortKeyCache;
} // namespace FilterSupport

/**
 * A sorting proxy that filters by every column at once and sorts strings
 * in natural order.
 *
 * Each column has at most one filter text, read by the column's FilterKind
 * (the source model's horizontal header data in FilterKindRole, 266;
 * Text when it does not convert, no filtering above OnOff). A row passes
 * when every filter passes its cell, read in filterRole():
 * - Text: a case-insensitive regular expression (as a filter header builds
 *   from typed wildcard text); an empty cell passes, any other passes when
 *   the first match in its trimmed text starts at 0. A text that is not a
 *   valid regular expression (an unbalanced "[" or "(" while the user is
 *   still typing) matches nothing: only empty cells pass until it is valid.
 * - Real and Integer: comma-separated conditions "=v", "<v", ">v" on the
 *   double or int value, all strict; unreadable numbers read as 0, parts
 *   without an operator are ignored; a NaN never passes "=".
 * - Region: "(x1,y1):(x2,y2)" keeps points with x1 <= x <= x2 and
 *   y1 <= y <= y2 (corners as given); fewer than four numbers keep all.
 * - PassFail and OnOff: "PASS"/"ON" keep true values, "FAIL"/"OFF" false
 *   ones, any other text keeps all.
 *
 * Sorting (in sortRole()): two strings compare in natural order (see
 * naturalLessThan), two points by x and then y, anything else as
 * QSortFilterProxyModel compares it.
 *
 * Large tables: each filter is compiled once per text, a column's cells are
 * read once and kept per source row (as are sort keys) until the model
 * changes them, and a filter change that alters many scattered rows rebuilds
 * the mapping in one pass (a layout change, which keeps persistent indexes,
 * views and selections right) instead of Qt's row-by-row update, which is
 * quadratic then. The caches cover top-level rows; rows under a parent are
 * filtered and compared afresh each time.
 */
class ORVEXQTUIBASE_EXPORT AQSortMultiFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit AQSortMultiFilterProxyModel(QObject* parent = nullptr);
    ~AQSortMultiFilterProxyModel() override;

    void setSourceModel(QAbstractItemModel* model) override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// Pattern syntax of text filters: QRegExp::RegExp, never changed.
    int patternSyntax() const { return m_patternSyntax; }
    /// The active filter texts by source column.
    QMap<int, QString> filters() const { return m_filters; }

    /// Formats @p value with QString::number(value, format, precision) and
    /// reads it back; 0.0 when that text does not read as a double.
    static double trunc(double value, int precision, char format);

    /// Natural order: digit runs compare as numbers (as unsigned 32-bit
    /// values compared signed, so runs from 2147483648 up sort before 0 and
    /// runs past 4294967295 count as 0), the texts between them by UTF-16
    /// code units: "a2" < "a10", "2" < "10", "a9" < "b1".
    static bool naturalLessThan(const QString& left, const QString& right);

public Q_SLOTS:
    /// Sets (or replaces) @p column's filter, re-filters, emits filterDone().
    void setFilter(int column, const QString& filter);
    /// Sets column i's filter to filters[i] (empty texts too) and re-filters;
    /// does not emit filterDone().
    virtual void setFilter(const QStringList& filters);
    /// -1 removes every filter, another column its own; then re-filters.
    virtual void resetFilter(int column);
    /// Keeps the active filters aside and filters nothing until restoreFilters().
    virtual void hideFilters();
    /// Brings back the filters kept by hideFilters() (dropping any set since).
    virtual void restoreFilters();

Q_SIGNALS:
    void filterDone();

protected:
    void setColumnFilter(int column, const QString& filter);
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

    /// Re-filters after the filter texts changed: row by row when few rows
    /// change, otherwise in one pass.
    void applyFilters();

private:
    static bool worthRanking(int sortedRows, int sourceRows);

    int m_patternSyntax;
    QMap<int, QString> m_filters;
    QMap<int, QString> m_savedFilters;
    // Caches behind the const overrides.
    std::unique_ptr<FilterSupport::RowFilterCache> m_rows;
    std::unique_ptr<FilterSupport::SortKeyCache> m_sortKeys;
};

} // namespace QtUIBase
