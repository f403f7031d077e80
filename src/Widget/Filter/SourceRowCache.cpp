#include "Widget/Filter/SourceRowCache_p.h"

#include <QAbstractItemModel>

namespace QtUIBase {
namespace FilterSupport {

SourceRowCache::~SourceRowCache()
{
    for (const auto& connection : m_connections)
        QObject::disconnect(connection);
}

void SourceRowCache::watch(QAbstractItemModel* model)
{
    for (const auto& connection : m_connections)
        QObject::disconnect(connection);
    m_connections.clear();
    m_model = model;
    dropAll();
    if (!model)
        return;
    using M = QAbstractItemModel;
    const auto drop = [this] { dropAll(); };
    m_connections = {
        QObject::connect(model, &M::rowsInserted, [this](const QModelIndex& parent, int first, int last) {
            if (!parent.isValid())
                insertRows(first, last - first + 1);
        }),
        QObject::connect(model, &M::rowsRemoved, [this](const QModelIndex& parent, int first, int last) {
            if (!parent.isValid())
                removeRows(first, last - first + 1);
        }),
        QObject::connect(model, &M::dataChanged, [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
            if (topLeft.isValid() && !topLeft.parent().isValid())
                changeRows(topLeft.row(), bottomRight.row(), topLeft.column(), bottomRight.column());
        }),
        QObject::connect(model, &M::headerDataChanged, drop),
        QObject::connect(model, &M::modelReset, drop),
        QObject::connect(model, &M::layoutChanged, drop),
        QObject::connect(model, &M::rowsMoved, drop),
        QObject::connect(model, &M::columnsInserted, drop),
        QObject::connect(model, &M::columnsRemoved, drop),
        QObject::connect(model, &M::columnsMoved, drop),
        QObject::connect(model, &QObject::destroyed, [this] {
            m_model = nullptr;
            dropAll();
        }),
    };
}

} // namespace FilterSupport
} // namespace QtUIBase
