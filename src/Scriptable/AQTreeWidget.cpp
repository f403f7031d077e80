#include "Scriptable/AQTreeWidget.h"

#include "Script/AQScriptBackend.h"
#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQTreeWidget::AQTreeWidget(const QString& name, QWidget* parent, bool scriptable)
    : QTreeWidget(parent)
    , m_scriptable(scriptable)
{
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QTreeWidget::itemExpanded, this, &AQTreeWidget::handleItemExpandedSignal);
    connect(this, &QTreeWidget::itemCollapsed, this, &AQTreeWidget::handleItemCollapsedSignal);
    connect(this, &QTreeWidget::itemClicked, this, &AQTreeWidget::handleItemClickedSignal);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &AQTreeWidget::handleItemDoubleClickedSignal);
    connect(this, &QTreeWidget::currentItemChanged, this, &AQTreeWidget::handleCurrentItemChangedSignal);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &AQTreeWidget::handleItemSelectionChangedSignal);
    connect(this, &QTreeWidget::itemChanged, this, &AQTreeWidget::handleItemChangedSignal);
}

void AQTreeWidget::connectNotify(const QMetaMethod& signal)
{
    QTreeWidget::connectNotify(signal);
    if (!m_scriptable)
        return;
    if (isSignal(signal, &AQTreeWidget::AItemClicked))
        m_itemClickedListened = true;
    else if (isSignal(signal, &AQTreeWidget::AItemDoubleClicked))
        m_itemDoubleClickedListened = true;
}

QString AQTreeWidget::itemPath(const QTreeWidgetItem* item) const
{
    return Wrapper::itemPath(indexFromItem(item));
}

QTreeWidgetItem* AQTreeWidget::findItem(const QString& path) const
{
    return itemFromIndex(findItemPath(model(), path));
}

void AQTreeWidget::outPutAllChildren() const
{
    dumpItems(objectName(), model(), [this](const QModelIndex& index) { return itemFromIndex(index)->isExpanded(); });
}

void AQTreeWidget::record(const QString& signal, const QStringList& args, const std::function<void()>& emitSignal)
{
    const bool written = !AQScripts::isRecordingDisabled() && AQIsScriptRecordActive();
    recordThenEmit(this, signal, args, emitSignal);
    if (written)
        outPutAllChildren();
}

void AQTreeWidget::handleItemExpandedSignal(QTreeWidgetItem* item)
{
    record(QStringLiteral("itemExpanded"), {itemPath(item)}, [&] { Q_EMIT AItemExpanded(item); });
}

void AQTreeWidget::handleItemCollapsedSignal(QTreeWidgetItem* item)
{
    record(QStringLiteral("itemCollapsed"), {itemPath(item)}, [&] { Q_EMIT AItemCollapsed(item); });
}

void AQTreeWidget::handleItemClickedSignal(QTreeWidgetItem* item, int column)
{
    if (m_itemClickedListened)
        record(QStringLiteral("itemClicked"), {itemPath(item), decimal(column)},
               [&] { Q_EMIT AItemClicked(item, column); });
}

void AQTreeWidget::handleItemDoubleClickedSignal(QTreeWidgetItem* item, int column)
{
    if (m_itemDoubleClickedListened)
        record(QStringLiteral("itemDoubleClicked"), {itemPath(item), decimal(column)},
               [&] { Q_EMIT AItemDoubleClicked(item, column); });
}

void AQTreeWidget::handleCurrentItemChangedSignal(QTreeWidgetItem* current)
{
    record(QStringLiteral("currentItemChanged"), current ? QStringList{itemPath(current)} : QStringList(),
           [&] { Q_EMIT ACurrentItemChanged(current); });
}

void AQTreeWidget::handleItemSelectionChangedSignal()
{
    QStringList paths;
    const QList<QTreeWidgetItem*> selection = selectedItems();
    for (const QTreeWidgetItem* item : selection)
        paths << itemPath(item);
    record(QStringLiteral("itemSelectionChanged"), paths, [this] { Q_EMIT AItemSelectionChanged(); });
}

void AQTreeWidget::handleItemChangedSignal(QTreeWidgetItem* item, int column)
{
    QStringList args{m_editPath.isEmpty() ? itemPath(item) : m_editPath, decimal(column)};
    if (showsUserCheckBox(item->flags(), item->data(column, Qt::CheckStateRole)))
        args << decimal(item->checkState(column));
    args << item->text(column);
    record(QStringLiteral("itemChanged"), args, [&] { Q_EMIT AItemChanged(item, column); });
}

void AQTreeWidget::commitData(QWidget* editor)
{
    // Named as it was before the edit: the new text is not in the tree yet
    // when the line is replayed.
    m_editPath = itemPath(currentItem());
    QTreeWidget::commitData(editor);
    m_editPath.clear();
}

QTreeWidgetItem* AQTreeWidget::findOrReport(const QString& path, const QString& signal, const QStringList& args)
{
    QTreeWidgetItem* found = findItem(path);
    if (!found)
        reportStaleLine(this, signal, args);
    return found;
}

void AQTreeWidget::scriptReplay(const QString& signal, const QStringList& args)
{
    {
        AQRecordingGuard suppressed;
        const int count = args.size();
        if ((signal == QLatin1String("itemExpanded") || signal == QLatin1String("itemCollapsed")) && count == 1) {
            if (QTreeWidgetItem* item = findOrReport(args.first(), signal, args))
                item->setExpanded(signal == QLatin1String("itemExpanded"));
        } else if ((signal == QLatin1String("itemClicked") || signal == QLatin1String("itemDoubleClicked"))
                   && count == 2) {
            if (QTreeWidgetItem* item = findOrReport(args.first(), signal, args)) {
                const int column = toInt(args.at(1));
                setCurrentItem(item, column);
                if (signal == QLatin1String("itemClicked"))
                    Q_EMIT AItemClicked(item, column);
                else
                    Q_EMIT AItemDoubleClicked(item, column);
            }
        } else if (signal == QLatin1String("currentItemChanged") && count <= 1) {
            QTreeWidgetItem* item = count ? findOrReport(args.first(), signal, args) : nullptr;
            if (item || !count)
                setCurrentItem(item);
        } else if (signal == QLatin1String("itemSelectionChanged")) {
            disconnect(this, &QTreeWidget::itemSelectionChanged, this,
                       &AQTreeWidget::handleItemSelectionChangedSignal);
            clearSelection();
            for (const QString& path : args) {
                if (QTreeWidgetItem* item = findOrReport(path, signal, args))
                    item->setSelected(true);
            }
            connect(this, &QTreeWidget::itemSelectionChanged, this, &AQTreeWidget::handleItemSelectionChangedSignal);
            Q_EMIT AItemSelectionChanged();
        } else if (signal == QLatin1String("itemChanged") && count >= 2) {
            QTreeWidgetItem* item = findOrReport(args.first(), signal, args);
            if (!item)
                return;
            const int column = toInt(args.at(1));
            // The state is there exactly when the item shows a check box; an
            // empty text is written without its text.
            int next = 2;
            if (showsUserCheckBox(item->flags(), item->data(column, Qt::CheckStateRole)) && count > next)
                item->setCheckState(column, Qt::CheckState(toInt(args.at(next++))));
            item->setText(column, args.value(next));
        } else {
            return;
        }
    }
    outPutAllChildren();
}

} // namespace QtUIBase
