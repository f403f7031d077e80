#include "Widget/Filter/RowFilterCache_p.h"

#include <QAbstractItemModel>

#include <algorithm>

namespace QtUIBase {
namespace FilterSupport {

namespace {
// Qt's row-by-row update costs about one pass over the mapping per changed
// run; past this many run-rows a single rebuild is cheaper.
constexpr long long RowByRowLimit = 1 << 20;
} // namespace

RowFilterCache::RowFilterCache(Compile compile)
    : m_compile(std::move(compile))
{
}

void RowFilterCache::setFilters(const QMap<int, QString>& filters)
{
    for (auto it = m_columns.begin(); it != m_columns.end();) {
        if (filters.value(it->first).isEmpty())
            it = m_columns.erase(it);
        else
            ++it;
    }
    for (auto it = filters.cbegin(); it != filters.cend(); ++it) {
        if (it.value().isEmpty())
            continue;
        Column& state = m_columns[it.key()];
        if (state.text != it.value()) {
            state.text = it.value();
            state.compiled = false;
        }
    }
}

void RowFilterCache::recompile()
{
    for (auto& entry : m_columns)
        entry.second.compiled = false;
}

bool RowFilterCache::upToDate(int role) const
{
    if (!m_valid || role != m_role)
        return false;
    for (const auto& entry : m_columns) {
        if (!entry.second.compiled || !entry.second.passValid)
            return false;
    }
    return true;
}

void RowFilterCache::testColumn(int column, Column& state)
{
    const QAbstractItemModel* source = model();
    if (!state.compiled) {
        ColumnFilter filter = m_compile(column, state.text);
        if (filter != state.filter) {
            state.filter = std::move(filter);
            state.passValid = false;
        }
        state.compiled = true;
    }
    if (state.passValid)
        return;
    const ValueKind kind = state.filter.valueKind();
    // Cells outside the model's columns are invalid indexes: they pass.
    if (kind == ValueKind::None || column < 0 || column >= source->columnCount()) {
        state.values.clear();
        state.pass.assign(std::size_t(m_rows), 1);
    } else {
        if (!state.values.loaded(kind, m_rows))
            state.values.load(kind, source, column, m_role, m_rows);
        state.pass.resize(std::size_t(m_rows));
        for (int row = 0; row < m_rows; ++row)
            state.pass[std::size_t(row)] = state.filter.accepts(state.values, row);
    }
    state.passValid = true;
}

void RowFilterCache::combine(int first, int last)
{
    for (int row = first; row <= last; ++row)
        m_accepted[std::size_t(row)] = 1;
    for (const auto& entry : m_columns) {
        // A column still to be tested is combined by the next refresh.
        if (!entry.second.passValid)
            continue;
        const auto& pass = entry.second.pass;
        for (int row = first; row <= last; ++row)
            m_accepted[std::size_t(row)] &= pass[std::size_t(row)];
    }
}

int RowFilterCache::refresh(int role)
{
    if (!model())
        return -1;
    if (role != m_role || !m_valid) {
        // Cells are read in one role; another role means reading them again.
        for (auto& entry : m_columns) {
            entry.second.values.clear();
            entry.second.passValid = false;
        }
        m_role = role;
        m_rows = model()->rowCount();
    }
    for (auto& entry : m_columns)
        testColumn(entry.first, entry.second);

    std::vector<std::uint8_t> before;
    before.swap(m_accepted);
    const bool comparable = m_valid && before.size() == std::size_t(m_rows);
    m_accepted.resize(std::size_t(m_rows));
    combine(0, m_rows - 1);
    m_valid = true;
    m_acceptedCount = int(std::count(m_accepted.begin(), m_accepted.end(), std::uint8_t(1)));
    if (!comparable)
        return -1;
    int runs = 0;
    bool inRun = false;
    for (std::size_t row = 0; row < m_accepted.size(); ++row) {
        const bool changed = m_accepted[row] != before[row];
        runs += changed && !inRun;
        inRun = changed;
    }
    return runs;
}

bool RowFilterCache::accepts(int row, int role)
{
    if (!upToDate(role))
        refresh(role);
    if (row < 0 || row >= m_rows)
        return acceptsRow(row, QModelIndex(), role);
    return m_accepted[std::size_t(row)] != 0;
}

bool RowFilterCache::acceptsRow(int row, const QModelIndex& parent, int role)
{
    const QAbstractItemModel* source = model();
    if (!source)
        return true;
    for (auto& entry : m_columns) {
        Column& state = entry.second;
        if (!state.compiled) {
            state.filter = m_compile(entry.first, state.text);
            state.compiled = true;
            state.passValid = false;
        }
        const QModelIndex index = source->index(row, entry.first, parent);
        if (index.isValid() && !state.filter.accepts(source->data(index, role)))
            return false;
    }
    return true;
}

void RowFilterCache::insertRows(int first, int count)
{
    if (!m_valid)
        return;
    const QAbstractItemModel* source = model();
    m_rows += count;
    m_accepted.insert(m_accepted.begin() + first, std::size_t(count), 1);
    for (auto& entry : m_columns) {
        Column& state = entry.second;
        if (!state.passValid)
            continue;
        state.pass.insert(state.pass.begin() + first, std::size_t(count), 1);
        if (state.values.kind() == ValueKind::None)
            continue;
        state.values.insert(source, entry.first, m_role, first, count);
        for (int row = first; row < first + count; ++row)
            state.pass[std::size_t(row)] = state.filter.accepts(state.values, row);
    }
    combine(first, first + count - 1);
}

void RowFilterCache::removeRows(int first, int count)
{
    if (!m_valid)
        return;
    m_rows -= count;
    m_accepted.erase(m_accepted.begin() + first, m_accepted.begin() + first + count);
    for (auto& entry : m_columns) {
        Column& state = entry.second;
        if (!state.passValid)
            continue;
        state.pass.erase(state.pass.begin() + first, state.pass.begin() + first + count);
        if (state.values.kind() != ValueKind::None)
            state.values.remove(first, count);
    }
}

void RowFilterCache::changeRows(int first, int last, int firstColumn, int lastColumn)
{
    if (!m_valid)
        return;
    last = std::min(last, m_rows - 1);
    for (auto& entry : m_columns) {
        Column& state = entry.second;
        if (entry.first < firstColumn || entry.first > lastColumn || !state.passValid
            || state.values.kind() == ValueKind::None)
            continue;
        state.values.reload(model(), entry.first, m_role, first, last);
        for (int row = first; row <= last; ++row)
            state.pass[std::size_t(row)] = state.filter.accepts(state.values, row);
    }
    combine(first, last);
}

void RowFilterCache::dropAll()
{
    m_valid = false;
    m_accepted.clear();
    m_rows = 0;
    for (auto& entry : m_columns) {
        entry.second.compiled = false;
        entry.second.passValid = false;
        entry.second.values.clear();
        entry.second.pass.clear();
    }
}

bool RowFilterCache::rowByRow(int changedRuns, int sourceRows)
{
    return changedRuns >= 0 && static_cast<long long>(changedRuns) * sourceRows <= RowByRowLimit;
}

} // namespace FilterSupport
} // namespace QtUIBase
