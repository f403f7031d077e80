#include "Scriptable/AQTableView.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QItemSelectionModel>

namespace QtUIBase {

using namespace Wrapper;

AQTableView::AQTableView(const QString& name, QWidget* parent, bool scriptable)
    : QTableView(parent)
    , m_scriptable(scriptable)
{
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QAbstractItemView::clicked, this, &AQTableView::handleClickedSignal);
    connect(this, &QAbstractItemView::doubleClicked, this, &AQTableView::handleDoubleClickedSignal);
}

void AQTableView::connectNotify(const QMetaMethod& signal)
{
    QTableView::connectNotify(signal);
    if (!m_scriptable)
        return;
    if (isSignal(signal, &AQTableView::AClicked))
        m_clickedListened = true;
    else if (isSignal(signal, &AQTableView::ADoubleClicked))
        m_doubleClickedListened = true;
}

void AQTableView::setSelectionModel(QItemSelectionModel* selectionModel)
{
    QTableView::setSelectionModel(selectionModel);
    watchSelectionModel(this, m_selectionConnections, selectionModel, m_scriptable,
                        &AQTableView::handleCurrentChangedSignal, &AQTableView::handleSelectionChangedSignal);
}

QString AQTableView::headerText(Qt::Orientation orientation, int section) const
{
    return model() ? model()->headerData(section, orientation, Qt::DisplayRole).toString() : QString();
}

QStringList AQTableView::indexTextID(const QModelIndex& index) const
{
    const QString rowText = headerText(Qt::Vertical, index.row());
    const QString columnText = headerText(Qt::Horizontal, index.column());
    return {rowText.isEmpty() ? QStringLiteral("%1").arg(index.row()) : rowText,
            columnText.isEmpty() ? QStringLiteral("TempName") : columnText};
}

QModelIndex AQTableView::findIndexInTable(const QStringList& id) const
{
    if (id.size() != 2 || !model())
        return QModelIndex();
    const QAbstractItemModel* m = model();
    // Default row headers are the row numbers from 1: look there first, so
    // that long tables are not searched header by header.
    bool ok = false;
    const int number = toInt(id.at(0), &ok);
    int row = -1;
    for (const int candidate : {number - 1, number}) {
        if (ok && candidate >= 0 && candidate < m->rowCount() && headerText(Qt::Vertical, candidate) == id.at(0))
            row = candidate;
    }
    if (row < 0)
        row = findSection(
            m->rowCount(), [this](int r) { return headerText(Qt::Vertical, r); }, id.at(0));
    const int column = findSection(
        m->columnCount(),
        [this](int c) {
            const QString text = headerText(Qt::Horizontal, c);
            return text.isEmpty() ? QStringLiteral("TempName") : text;
        },
        id.at(1));
    return m->index(row, column);
}

void AQTableView::handleClickedSignal(const QModelIndex& index)
{
    if (m_clickedListened)
        recordThenEmit(this, QStringLiteral("clicked"), indexTextID(index), [&] { Q_EMIT AClicked(index); });
}

void AQTableView::handleDoubleClickedSignal(const QModelIndex& index)
{
    if (m_doubleClickedListened)
        recordThenEmit(this, QStringLiteral("doubleClicked"), indexTextID(index),
                       [&] { Q_EMIT ADoubleClicked(index); });
}

void AQTableView::handleCurrentChangedSignal(const QModelIndex& current)
{
    const QStringList id = current.isValid() ? indexTextID(current) : QStringList();
    recordThenEmit(this, QStringLiteral("currentChanged"), id, [&] { Q_EMIT ACurrentChanged(current); });
}

void AQTableView::handleSelectionChangedSignal()
{
    const QItemSelection selection = selectionModel()->selection();
    const QAbstractItemModel* m = model();
    const bool everything = selection.size() == 1 && m->rowCount() > 0 && m->columnCount() > 0
        && selection.first().top() == 0 && selection.first().left() == 0
        && selection.first().bottom() == m->rowCount() - 1 && selection.first().right() == m->columnCount() - 1;
    QStringList ranges;
    if (!everything) {
        for (const QItemSelectionRange& range : selection)
            ranges << indexTextID(range.topLeft()) << indexTextID(range.bottomRight());
    }
    recordThenEmit(this, everything ? QStringLiteral("selectAll") : QStringLiteral("selectionChanged"), ranges,
                   [this] { Q_EMIT ASelectionChanged(); });
}

QModelIndex AQTableView::findOrReport(const QStringList& id, const QString& signal, const QStringList& args)
{
    const QModelIndex index = findIndexInTable(id);
    if (!index.isValid())
        reportStaleLine(this, signal, args);
    return index;
}

void AQTableView::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    QItemSelectionModel* selection = selectionModel();
    if (!selection)
        return;
    const int count = args.size();
    if (signal == QLatin1String("clicked") && count == 2) {
        const QModelIndex index = findOrReport(args, signal, args);
        if (index.isValid())
            Q_EMIT AClicked(index);
    } else if (signal == QLatin1String("doubleClicked") && count == 2) {
        const QModelIndex index = findOrReport(args, signal, args);
        if (index.isValid())
            Q_EMIT ADoubleClicked(index);
    } else if (signal == QLatin1String("currentChanged") && (count == 2 || count == 0)) {
        const QModelIndex index = count == 0 ? QModelIndex() : findOrReport(args, signal, args);
        if (index.isValid() || count == 0)
            selection->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    } else if (signal == QLatin1String("selectionChanged") && count % 4 == 0) {
        QItemSelection wanted;
        for (int i = 0; i < count; i += 4) {
            const QModelIndex topLeft = findOrReport(args.mid(i, 2), signal, args);
            const QModelIndex bottomRight = findOrReport(args.mid(i + 2, 2), signal, args);
            if (topLeft.isValid() && bottomRight.isValid())
                wanted.select(topLeft, bottomRight);
        }
        selection->select(wanted, QItemSelectionModel::ClearAndSelect);
    } else if (signal == QLatin1String("selectAll") && count == 0) {
        selectAll();
    }
}

} // namespace QtUIBase
