#pragma once

// The filters of a sorting proxy compiled once per filter text, the cells
// they read and each top-level source row's acceptance, kept per row.

#include "Widget/Filter/ColumnFilter_p.h"
#include "Widget/Filter/SourceRowCache_p.h"

#include <QMap>
#include <QModelIndex>

#include <functional>
#include <map>

namespace QtUIBase {
namespace FilterSupport {

/**
 * Acceptance of every top-level source row under a set of column filters.
 *
 * Filters are compiled through the proxy's compile function (which knows
 * the column's kind and the proxy's options) only when a column's text
 * changes or the model's header, layout or contents are replaced; a
 * column's cells are read once per role and kept until the model changes
 * them. Changing one column's text re-tests that column only.
 */
class RowFilterCache : public SourceRowCache
{
public:
    using Compile = std::function<ColumnFilter(int column, const QString& text)>;
    explicit RowFilterCache(Compile compile);

    /// The filter texts by source column; empty texts filter nothing.
    void setFilters(const QMap<int, QString>& filters);
    /// Brings every row's acceptance up to date for @p role and answers in
    /// how many runs of consecutive rows it changed, or -1 when there was
    /// no earlier acceptance to compare with.
    int refresh(int role);
    /// How many top-level rows the last refresh() accepted.
    int acceptedCount() const { return m_acceptedCount; }
    /// Acceptance of top-level @p row (refreshed first when out of date).
    bool accepts(int row, int role);
    /// Tests any row, e.g. under a nested parent, reading its cells afresh.
    bool acceptsRow(int row, const QModelIndex& parent, int role);

    /// Compiles every filter again on the next refresh (the compile
    /// function's options changed); cells already read are kept.
    void recompile();

    /// Whether a proxy should re-apply its filtering row by row
    /// (QSortFilterProxyModel::invalidateFilter) after refresh() answered
    /// @p changedRuns, rather than rebuild its mapping in one pass
    /// (invalidate): Qt updates the mapping once per changed run, which is
    /// quadratic when many scattered rows change.
    static bool rowByRow(int changedRuns, int sourceRows);

protected:
    void insertRows(int first, int count) override;
    void removeRows(int first, int count) override;
    void changeRows(int first, int last, int firstColumn, int lastColumn) override;
    void dropAll() override;

private:
    struct Column
    {
        QString text;
        bool compiled = false;
        ColumnFilter filter;
        ColumnValues values;
        std::vector<std::uint8_t> pass;
        bool passValid = false;
    };

    void testColumn(int column, Column& state);
    void combine(int first, int last);
    bool upToDate(int role) const;

    Compile m_compile;
    std::map<int, Column> m_columns;
    std::vector<std::uint8_t> m_accepted;
    bool m_valid = false;
    int m_role = -1;
    int m_rows = 0;
    int m_acceptedCount = 0;
};

} // namespace FilterSupport
} // namespace QtUIBase
