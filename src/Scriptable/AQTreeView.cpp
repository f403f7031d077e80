#include "Scriptable/AQTreeView.h"

#include "Script/AQScriptBackend.h"
#include "Scriptable/AQWrapperSupport_p.h"

#include <QItemSelectionModel>

namespace QtUIBase {

using namespace Wrapper;

AQTreeView::AQTreeView(const QString& name, QWidget* parent, bool scriptable)
    : QTreeView(parent)
    , m_scriptable(scriptable)
{
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QTreeView::expanded, this, &AQTreeView::handleExpandedSignal);
    connect(this, &QTreeView::collapsed, this, &AQTreeView::handleCollapsedSignal);
    connect(this, &QAbstractItemView::clicked, this, &AQTreeView::handleClickedSignal);
    connect(this, &QAbstractItemView::doubleClicked, this, &AQTreeView::handleDoubleClickedSignal);
}

void AQTreeView::connectNotify(const QMetaMethod& signal)
{
    QTreeView::connectNotify(signal);
    if (!m_scriptable)
        return;
    if (isSignal(signal, &AQTreeView::AClicked))
        m_clickedListened = true;
    else if (isSignal(signal, &AQTreeView::ADoubleClicked))
        m_doubleClickedListened = true;
}

void AQTreeView::setSelectionModel(QItemSelectionModel* selectionModel)
{
    QTreeView::setSelectionModel(selectionModel);
    watchSelectionModel(this, m_selectionConnections, selectionModel, m_scriptable,
                        &AQTreeView::handleCurrentChangedSignal, &AQTreeView::handleSelectionChangedSignal);
}

void AQTreeView::outPutAllChildren() const
{
    dumpItems(objectName(), model(), [this](const QModelIndex& index) { return isExpanded(index); });
}

void AQTreeView::record(const QString& signal, const QStringList& args, const std::function<void()>& emitSignal)
{
    const bool written = !AQScripts::isRecordingDisabled() && AQIsScriptRecordActive();
    recordThenEmit(this, signal, args, emitSignal);
    if (written)
        outPutAllChildren();
}

void AQTreeView::handleExpandedSignal(const QModelIndex& index)
{
    record(QStringLiteral("expanded"), {itemPath(index)}, [&] { Q_EMIT AExpanded(index); });
}

void AQTreeView::handleCollapsedSignal(const QModelIndex& index)
{
    record(QStringLiteral("collapsed"), {itemPath(index)}, [&] { Q_EMIT ACollapsed(index); });
}

void AQTreeView::handleClickedSignal(const QModelIndex& index)
{
    if (m_clickedListened)
        record(QStringLiteral("clicked"), {itemPath(index), decimal(index.column())}, [&] { Q_EMIT AClicked(index); });
}

void AQTreeView::handleDoubleClickedSignal(const QModelIndex& index)
{
    if (m_doubleClickedListened)
        record(QStringLiteral("doubleClicked"), {itemPath(index), decimal(index.column())},
               [&] { Q_EMIT ADoubleClicked(index); });
}

void AQTreeView::handleCurrentChangedSignal(const QModelIndex& current)
{
    const QStringList args = current.isValid() ? QStringList{itemPath(current), decimal(current.column())}
                                               : QStringList();
    record(QStringLiteral("currentChanged"), args, [&] { Q_EMIT ACurrentChanged(current); });
}

void AQTreeView::handleSelectionChangedSignal()
{
    const bool rows = selectionBehavior() == SelectRows;
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    QStringList args;
    for (const QModelIndex& index : selected) {
        if (rows && index.column() != 0)
            continue;
        args << itemPath(index) << decimal(index.column());
    }
    record(QStringLiteral("selectionChanged"), args, [this] { Q_EMIT ASelectionChanged(); });
}

bool AQTreeView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    // A click on a check box reaches the model through here; compare the
    // state before and after to record only what the user changed.
    const QPersistentModelIndex cell(index);
    const QVariant before = index.data(Qt::CheckStateRole);
    const bool handled = QTreeView::edit(index, trigger, event);
    if (m_scriptable && cell.isValid() && before.isValid() && cell.data(Qt::CheckStateRole) != before) {
        const QModelIndex changed = cell;
        record(QStringLiteral("checkStateChanged"),
               {itemPath(changed), decimal(changed.column()), decimal(changed.data(Qt::CheckStateRole).toInt())},
               [&] { Q_EMIT ACheckStateChanged(changed); });
    }
    return handled;
}

void AQTreeView::commitData(QWidget* editor)
{
    // Named as it was before the edit: the new text is not in the tree yet
    // when the line is replayed.
    const QPersistentModelIndex cell(currentIndex());
    const QString path = itemPath(cell);
    QTreeView::commitData(editor);
    if (m_scriptable && cell.isValid()) {
        const QModelIndex changed = cell;
        record(QStringLiteral("dataChanged"),
               {path, decimal(changed.column()), changed.data(Qt::DisplayRole).toString()},
               [&] { Q_EMIT ADataChanged(changed); });
    }
}

QModelIndex AQTreeView::findOrReport(const QString& path, const QString& column, const QString& signal,
                                     const QStringList& args)
{
    const QModelIndex row = findItemPath(model(), path);
    const QModelIndex index = row.isValid() ? row.sibling(row.row(), toInt(column)) : QModelIndex();
    if (!index.isValid())
        reportStaleLine(this, signal, args);
    return index;
}

void AQTreeView::scriptReplay(const QString& signal, const QStringList& args)
{
    if (!model() || !selectionModel())
        return;
    {
        AQRecordingGuard suppressed;
        const int count = args.size();
        if ((signal == QLatin1String("expanded") || signal == QLatin1String("collapsed")) && count == 1) {
            const QModelIndex index = findOrReport(args.first(), QStringLiteral("0"), signal, args);
            if (index.isValid())
                setExpanded(index, signal == QLatin1String("expanded"));
        } else if ((signal == QLatin1String("clicked") || signal == QLatin1String("doubleClicked")) && count == 2) {
            const QModelIndex index = findOrReport(args.at(0), args.at(1), signal, args);
            if (index.isValid() && signal == QLatin1String("clicked"))
                Q_EMIT AClicked(index);
            else if (index.isValid())
                Q_EMIT ADoubleClicked(index);
        } else if (signal == QLatin1String("currentChanged") && (count == 2 || count == 0)) {
            const QModelIndex index = count ? findOrReport(args.at(0), args.at(1), signal, args) : QModelIndex();
            if (index.isValid() || !count)
                selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        } else if (signal == QLatin1String("selectionChanged") && count % 2 == 0) {
            QItemSelection wanted;
            for (int i = 0; i < count; i += 2) {
                const QModelIndex index = findOrReport(args.at(i), args.at(i + 1), signal, args);
                if (index.isValid())
                    wanted.select(index, index);
            }
            QItemSelectionModel::SelectionFlags flags = QItemSelectionModel::ClearAndSelect;
            if (selectionBehavior() == SelectRows)
                flags |= QItemSelectionModel::Rows;
            selectionModel()->select(wanted, flags);
        } else if ((signal == QLatin1String("checkStateChanged") && count == 3)
                   || (signal == QLatin1String("dataChanged") && (count == 2 || count == 3))) {
            // An edit to an empty text is written without its text.
            const QModelIndex index = findOrReport(args.at(0), args.at(1), signal, args);
            const bool check = signal == QLatin1String("checkStateChanged");
            if (index.isValid()) {
                model()->setData(index, check ? QVariant(toInt(args.at(2))) : QVariant(args.value(2)),
                                 check ? Qt::CheckStateRole : Qt::EditRole);
                if (check)
                    Q_EMIT ACheckStateChanged(index);
                else
                    Q_EMIT ADataChanged(index);
            }
        } else {
            return;
        }
    }
    outPutAllChildren();
}

} // namespace QtUIBase
