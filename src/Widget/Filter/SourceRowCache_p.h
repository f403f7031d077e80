#pragma once

// Base of the per-source-row caches of the sorting proxies: keeps them in
// step with the source model's change signals.

#include <QMetaObject>

#include <vector>

class QAbstractItemModel;

namespace QtUIBase {
namespace FilterSupport {

/**
 * A cache of something per top-level source row. watch() connects to the
 * model's signals; a proxy calls it before QSortFilterProxyModel's own
 * setSourceModel, so the cache is up to date by the time the proxy's own
 * handlers ask about the changed rows. Rows of nested levels are not
 * cached; their changes are ignored.
 */
class SourceRowCache
{
public:
    SourceRowCache() = default;
    virtual ~SourceRowCache();
    SourceRowCache(const SourceRowCache&) = delete;
    SourceRowCache& operator=(const SourceRowCache&) = delete;

    /// Drops everything and follows @p model (which may be null).
    void watch(QAbstractItemModel* model);
    const QAbstractItemModel* model() const { return m_model; }

protected:
    /// Rows [first, first + count) were inserted; the model holds them already.
    virtual void insertRows(int first, int count) = 0;
    virtual void removeRows(int first, int count) = 0;
    /// Cells of rows [first, last] and columns [firstColumn, lastColumn] changed.
    virtual void changeRows(int first, int last, int firstColumn, int lastColumn) = 0;
    /// Anything else changed (reset, layout, columns, header data): forget all.
    virtual void dropAll() = 0;

private:
    QAbstractItemModel* m_model = nullptr;
    std::vector<QMetaObject::Connection> m_connections;
};

} // namespace FilterSupport
} // namespace QtUIBase
