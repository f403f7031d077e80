#include "Scriptable/AQListView.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QAbstractItemDelegate>
#include <QMouseEvent>

namespace QtUIBase {

using namespace Wrapper;

namespace {
QString textOf(const QModelIndex& index)
{
    return index.data(Qt::DisplayRole).toString();
}
} // namespace

AQListView::AQListView(const QString& name, QWidget* parent, bool scriptable)
    : QListView(parent)
{
    Init(scriptable);
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QAbstractItemView::clicked, this, &AQListView::handleClickedSignal);
    connect(this, &QAbstractItemView::doubleClicked, this, &AQListView::handleDoubleClickedSignal);
    connect(this, &QAbstractItemView::entered, this, &AQListView::handleEnteredSignal);
    connect(this, &QWidget::customContextMenuRequested, this, &AQListView::handleCustomContextSignal);
}

AQListView::AQListView(QWidget* parent)
    : AQListView(QString(), parent, true)
{
}

void AQListView::Init(bool scriptable)
{
    m_scriptable = scriptable;
    m_clickedListened = m_doubleClickedListened = false;
    for (auto& entry : m_cache)
        entry = qMakePair(-1, QString());
}

void AQListView::connectNotify(const QMetaMethod& signal)
{
    QListView::connectNotify(signal);
    if (!m_scriptable)
        return;
    if (isSignal(signal, &AQListView::AClicked))
        m_clickedListened = true;
    else if (isSignal(signal, &AQListView::ADoubleClicked))
        m_doubleClickedListened = true;
}

void AQListView::setModel(QAbstractItemModel* model)
{
    if (m_model && m_scriptable)
        disconnect(m_model, &QAbstractItemModel::dataChanged, this, &AQListView::handleDataChangedSignal);
    m_model = model;
    QListView::setModel(model);
    if (model && m_scriptable)
        connect(model, &QAbstractItemModel::dataChanged, this, &AQListView::handleDataChangedSignal);
}

QList<QModelIndex> AQListView::getSelectedItemsIndexes() const
{
    QList<QModelIndex> selected;
    if (!model() || !selectionModel())
        return selected;
    const int rows = model()->rowCount();
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model()->index(row, 0);
        if (selectionModel()->isSelected(index))
            selected << index;
    }
    return selected;
}

QStringList AQListView::selectedTexts() const
{
    QStringList texts;
    const QList<QModelIndex> selected = getSelectedItemsIndexes();
    for (const QModelIndex& index : selected)
        texts << textOf(index);
    return texts;
}

QModelIndex AQListView::findItemInList(const QString& text) const
{
    if (!model())
        return QModelIndex();
    const int rows = model()->rowCount();
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model()->index(row, 0);
        if (textOf(index) == text)
            return index;
    }
    return QModelIndex();
}

void AQListView::saveLocalDataValues(int row)
{
    for (int i = 0; i < 3; ++i) {
        const int r = row - 1 + i;
        const QModelIndex index = model() ? model()->index(r, 0) : QModelIndex();
        m_cache[i] = index.isValid() ? qMakePair(r, textOf(index)) : qMakePair(-1, QString());
    }
}

void AQListView::handleClickedSignal(const QModelIndex& index)
{
    AQScripts::recordSignal(this, QStringLiteral("selectionChanged"), selectedTexts());
    if (m_clickedListened)
        AQScripts::recordSignal(this, QStringLiteral("clicked"), textOf(index));
    saveLocalDataValues(index.row());
    withRecordingSuppressed([&] {
        Q_EMIT ASelectionChanged();
        if (m_clickedListened)
            Q_EMIT AClicked(index);
    });
}

void AQListView::handleDoubleClickedSignal(const QModelIndex& index)
{
    if (!m_doubleClickedListened)
        return;
    AQScripts::recordSignal(this, QStringLiteral("doubleClicked"), textOf(index));
    saveLocalDataValues(index.row());
    withRecordingSuppressed([&] { Q_EMIT ADoubleClicked(index); });
}

void AQListView::handleEnteredSignal(const QModelIndex& index)
{
    AQScripts::recordSignal(this, QStringLiteral("selectionChanged"), selectedTexts());
    saveLocalDataValues(index.row());
    withRecordingSuppressed([this] { Q_EMIT ASelectionChanged(); });
}

void AQListView::handleDataChangedSignal(const QModelIndex& topLeft, const QModelIndex&)
{
    const auto change = qMakePair(topLeft.row(), textOf(topLeft));
    const bool known = std::find(std::begin(m_cache), std::end(m_cache), change) != std::end(m_cache);
    if (!known)
        AQScripts::recordSignal(this, QStringLiteral("dataChanged"), {decimal(change.first), change.second});
    saveLocalDataValues(topLeft.row());
    withRecordingSuppressed([&] { Q_EMIT ADataChanged(topLeft); });
}

void AQListView::handleCustomContextSignal(const QPoint& pos)
{
    AQScripts::recordSignal(this, QStringLiteral("contextMenuRequested"), {decimal(pos.x()), decimal(pos.y())});
    const QModelIndex index = indexAt(pos);
    if (index.isValid())
        AQScripts::recordSignal(this, QStringLiteral("customContextMenuRequest"), textOf(index));
    // Not suppressed: the menu that opens records its choice.
    Q_EMIT AContextMenuRequested(pos);
    if (index.isValid())
        Q_EMIT ACustomContextMenuRequested(index);
}

void AQListView::toggleCheckBox(const QModelIndex& index)
{
    // A release on the box, where the style draws it, handed to the item's
    // delegate as the view hands it a click on the box: the delegate decides
    // and the view reports no click of its own.
    QStyleOptionViewItem option = viewOptions();
    option.rect = visualRect(index);
    option.features |= QStyleOptionViewItem::HasCheckIndicator;
    const QPoint centre = style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).center();
    QMouseEvent release(QEvent::MouseButtonRelease, centre, viewport()->mapToGlobal(centre), Qt::LeftButton,
                        Qt::NoButton, Qt::NoModifier);
    itemDelegate(index)->editorEvent(&release, model(), option, index);
}

void AQListView::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    const auto find = [&](const QString& text) {
        const QModelIndex index = findItemInList(text);
        if (!index.isValid())
            reportStaleLine(this, signal, args);
        return index;
    };
    if (signal == QLatin1String("clicked") && args.size() == 1) {
        const QModelIndex index = find(args.first());
        if (index.isValid())
            Q_EMIT AClicked(index);
    } else if (signal == QLatin1String("doubleClicked") && args.size() == 1) {
        const QModelIndex index = find(args.first());
        if (index.isValid() && selectionModel()) {
            selectionModel()->select(index, QItemSelectionModel::ClearAndSelect);
            Q_EMIT ADoubleClicked(index);
        }
    } else if (signal == QLatin1String("selectionChanged")) {
        if (!selectionModel())
            return;
        selectionModel()->clearSelection();
        for (const QString& text : args) {
            const QModelIndex index = find(text);
            if (index.isValid())
                selectionModel()->select(index, QItemSelectionModel::Toggle);
        }
        Q_EMIT ASelectionChanged();
    } else if (signal == QLatin1String("dataChanged") && !args.isEmpty()) {
        const QModelIndex index = model() ? model()->index(toInt(args.first()), 0) : QModelIndex();
        if (!index.isValid()) {
            reportStaleLine(this, signal, args);
            return;
        }
        model()->setData(index, args.value(1), Qt::EditRole);
        if (showsUserCheckBox(index.flags(), index.data(Qt::CheckStateRole)))
            toggleCheckBox(index);
    } else if (signal == QLatin1String("customContextMenuRequest") && args.size() == 1) {
        const QModelIndex index = find(args.first());
        if (index.isValid())
            Q_EMIT ACustomContextMenuRequested(index);
    } else if (signal == QLatin1String("contextMenuRequested") && args.size() >= 2) {
        Q_EMIT AContextMenuRequested(QPoint(toInt(args.at(0)), toInt(args.at(1))));
    }
}

} // namespace QtUIBase
