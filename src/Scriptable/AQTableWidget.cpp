#include "Scriptable/AQTableWidget.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QKeyEvent>

namespace QtUIBase {

using namespace Wrapper;

namespace {
const QString EmptyHeaderName = QStringLiteral("TempName");

bool isUserCheckable(const QTableWidgetItem* item)
{
    return showsUserCheckBox(item->flags(), item->data(Qt::CheckStateRole));
}
} // namespace

AQTableWidget::AQTableWidget(const QString& name, int rows, int columns, QWidget* parent, bool scriptable)
    : QTableWidget(rows, columns, parent)
{
    Init(name, scriptable);
}

AQTableWidget::AQTableWidget(const QString& name, QWidget* parent, bool scriptable)
    : QTableWidget(parent)
{
    Init(name, scriptable);
    if (scriptable) {
        connect(this, &QWidget::customContextMenuRequested, this, &AQTableWidget::handleCustomContextSignal);
        connect(this, &QWidget::customContextMenuRequested, this, &AQTableWidget::handleContextMenuRequested);
    }
}

AQTableWidget::AQTableWidget(QWidget* parent, bool scriptable)
    : QTableWidget(parent)
{
    Init(QString(), scriptable);
}

void AQTableWidget::Init(const QString& name, bool scriptable)
{
    m_itemClickedListened = m_itemDoubleClickedListened = false;
    m_cellClickedListened = m_cellDoubleClickedListened = false;
    m_scriptable = scriptable;
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QTableWidget::itemClicked, this, &AQTableWidget::handleItemClickedSignal);
    connect(this, &QTableWidget::itemDoubleClicked, this, &AQTableWidget::handleItemDoubleClickedSignal);
    connect(this, &QTableWidget::itemSelectionChanged, this, &AQTableWidget::handleItemSelectionChangedSignal);
    connect(this, &QTableWidget::itemChanged, this, &AQTableWidget::handleItemChangedSignal);
    connect(this, &QTableWidget::cellClicked, this, &AQTableWidget::handleCellClickedSignal);
    connect(this, &QTableWidget::cellDoubleClicked, this, &AQTableWidget::handleCellDoubleClickedSignal);
    connect(this, &QTableWidget::cellChanged, this, &AQTableWidget::handleCellChangedSignal);
}

void AQTableWidget::connectNotify(const QMetaMethod& signal)
{
    QTableWidget::connectNotify(signal);
    if (!m_scriptable)
        return;
    if (isSignal(signal, &AQTableWidget::AItemClicked))
        m_itemClickedListened = true;
    else if (isSignal(signal, &AQTableWidget::AItemDoubleClicked))
        m_itemDoubleClickedListened = true;
    else if (isSignal(signal, &AQTableWidget::ACellDoubleClicked))
        m_cellDoubleClickedListened = true;
    else if (isSignal(signal, &AQTableWidget::ACellClicked))
        // Tables listened to by cell also had their item double clicks
        // recorded; recorded scripts contain those lines.
        m_cellClickedListened = m_itemDoubleClickedListened = true;
}

void AQTableWidget::setCellWidget(int row, int column, QWidget* widget)
{
    QTableWidget::setCellWidget(row, column, widget);
}

QStringList AQTableWidget::getItemTextID(QTableWidgetItem* item) const
{
    const int row = item->row();
    const int column = item->column();
    const QTableWidgetItem* rowHeader = verticalHeaderItem(row);
    const QTableWidgetItem* columnHeader = horizontalHeaderItem(column);
    QString columnText = QStringLiteral("%1").arg(column);
    if (columnHeader)
        columnText = columnHeader->text().isEmpty() ? EmptyHeaderName : columnHeader->text();
    return {rowHeader ? rowHeader->text() : QStringLiteral("%1").arg(row), columnText};
}

QTableWidgetItem* AQTableWidget::findItemInTable(const QStringList& id) const
{
    if (id.size() != 2)
        return nullptr;
    bool ok = false;
    const int row = toInt(id.at(0), &ok);
    if (!ok || row == -1)
        return nullptr;
    const int column = findSection(
        columnCount(),
        [this](int c) {
            const QTableWidgetItem* header = horizontalHeaderItem(c);
            if (!header)
                return QString();
            return header->text().isEmpty() ? EmptyHeaderName : header->text();
        },
        id.at(1));
    return column == -1 ? nullptr : item(row, column);
}

QStringList AQTableWidget::cellArguments(QTableWidgetItem* cell, int row, int column) const
{
    QStringList args = getItemTextID(cell) << decimal(row) << decimal(column);
    if (isUserCheckable(cell))
        args << QStringLiteral("%1").arg(int(cell->checkState()));
    return args;
}

void AQTableWidget::handleItemClickedSignal(QTableWidgetItem* cell)
{
    if (m_itemClickedListened)
        recordThenEmit(this, QStringLiteral("itemClicked"), getItemTextID(cell), [&] { Q_EMIT AItemClicked(cell); });
}

void AQTableWidget::handleItemDoubleClickedSignal(QTableWidgetItem* cell)
{
    if (m_itemDoubleClickedListened)
        recordThenEmit(this, QStringLiteral("itemDoubleClicked"), getItemTextID(cell),
                       [&] { Q_EMIT AItemDoubleClicked(cell); });
}

void AQTableWidget::handleCellClickedSignal(int row, int column)
{
    QTableWidgetItem* cell = item(row, column);
    if (!m_cellClickedListened)
        return;
    if (!cell) {
        // Nothing to name in a record; the application still hears the click.
        Q_EMIT ACellClicked(row, column, Qt::Unchecked);
        return;
    }
    const int state = cell->checkState();
    recordThenEmit(this, QStringLiteral("cellClicked"), cellArguments(cell, row, column),
                   [&] { Q_EMIT ACellClicked(row, column, state); });
}

void AQTableWidget::handleCellDoubleClickedSignal(int row, int column)
{
    QTableWidgetItem* cell = item(row, column);
    if (!cell) {
        Q_EMIT ACellDoubleClicked(row, column);
        return;
    }
    if (m_cellDoubleClickedListened)
        recordThenEmit(this, QStringLiteral("cellDoubleClicked"), getItemTextID(cell) << decimal(row) << decimal(column),
                       [&] { Q_EMIT ACellDoubleClicked(row, column); });
}

void AQTableWidget::handleCellChangedSignal(int row, int column)
{
    if (QTableWidgetItem* cell = item(row, column))
        recordThenEmit(this, QStringLiteral("cellChanged"), cellArguments(cell, row, column),
                       [&] { Q_EMIT ACellChanged(row, column); });
}

void AQTableWidget::handleItemChangedSignal(QTableWidgetItem* cell)
{
    recordThenEmit(this, QStringLiteral("itemChanged"), getItemTextID(cell) << cell->text(),
                   [&] { Q_EMIT AItemChanged(cell); });
}

void AQTableWidget::handleItemSelectionChangedSignal()
{
    const bool everyRow = selectionBehavior() == QAbstractItemView::SelectRows
        && selectionModel()->selectedRows().size() == rowCount();
    QStringList ids;
    if (!everyRow) {
        const QList<QTableWidgetItem*> items = selectedItems();
        for (QTableWidgetItem* cell : items)
            ids << getItemTextID(cell);
    }
    recordThenEmit(this, everyRow ? QStringLiteral("selectAll") : QStringLiteral("itemSelectionChanged"), ids,
                   [this] { Q_EMIT AItemSelectionChanged(); });
}

void AQTableWidget::handleCustomContextSignal(const QPoint& pos)
{
    if (QTableWidgetItem* cell = itemAt(pos)) {
        AQScripts::recordSignal(this, QStringLiteral("customContextMenuRequest"), getItemTextID(cell));
        // Not suppressed: the menu that opens records its choice.
        Q_EMIT ACustomContextMenuRequested(cell);
    }
}

void AQTableWidget::handleContextMenuRequested(const QPoint& pos)
{
    AQScripts::recordSignal(this, QStringLiteral("contextMenuRequested"), {decimal(pos.x()), decimal(pos.y())});
    Q_EMIT AContextMenuRequested(pos);
}

void AQTableWidget::keyPressEvent(QKeyEvent* event)
{
    const QList<QTableWidgetItem*> selection = selectedItems();
    if (event->matches(QKeySequence::Copy) && !selection.isEmpty())
        Q_EMIT AItemsCopied(selection);
    else if (event->matches(QKeySequence::Paste) && !selection.isEmpty())
        Q_EMIT AItemsPasted(selection);
    else if (event->matches(QKeySequence::Refresh))
        Q_EMIT ARefreshRequested();
    QTableWidget::keyPressEvent(event);
}

void AQTableWidget::changeSelectionQuietly(const std::function<void()>& change)
{
    disconnect(this, &QTableWidget::itemSelectionChanged, this, &AQTableWidget::handleItemSelectionChangedSignal);
    change();
    if (m_scriptable)
        connect(this, &QTableWidget::itemSelectionChanged, this, &AQTableWidget::handleItemSelectionChangedSignal);
    Q_EMIT AItemSelectionChanged();
}

QTableWidgetItem* AQTableWidget::findOrReport(const QStringList& id, const QString& signal, const QStringList& args)
{
    QTableWidgetItem* found = findItemInTable(id);
    if (!found)
        reportStaleLine(this, signal, args);
    return found;
}

void AQTableWidget::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    const int count = args.size();
    if (signal == QLatin1String("itemClicked") && count == 2) {
        if (QTableWidgetItem* cell = findOrReport(args, signal, args))
            Q_EMIT AItemClicked(cell);
    } else if (signal == QLatin1String("itemDoubleClicked") && count == 2) {
        if (QTableWidgetItem* cell = findOrReport(args, signal, args)) {
            setCurrentItem(cell);
            Q_EMIT AItemDoubleClicked(cell);
        }
    } else if (signal == QLatin1String("itemSelectionChanged")) {
        changeSelectionQuietly([&] {
            clearSelection();
            for (int i = 0; i + 1 < count; i += 2) {
                if (QTableWidgetItem* cell = findOrReport(args.mid(i, 2), signal, args))
                    cell->setSelected(true);
            }
        });
    } else if (signal == QLatin1String("selectAll") && count == 0) {
        changeSelectionQuietly([this] { selectAll(); });
    } else if (signal == QLatin1String("itemChanged") && count >= 2) {
        if (QTableWidgetItem* cell = findOrReport(args.mid(0, 2), signal, args))
            cell->setData(Qt::DisplayRole, args.value(2));
    } else if (signal == QLatin1String("customContextMenuRequest") && count == 2) {
        if (QTableWidgetItem* cell = findOrReport(args, signal, args)) {
            setCurrentItem(cell);
            Q_EMIT ACustomContextMenuRequested(cell);
        }
    } else if (signal == QLatin1String("contextMenuRequested") && count >= 2) {
        Q_EMIT AContextMenuRequested(QPoint(toInt(args.at(0)), toInt(args.at(1))));
    } else if ((signal == QLatin1String("cellClicked") || signal == QLatin1String("cellDoubleClicked")) && count >= 4) {
        if (QTableWidgetItem* cell = findOrReport(args.mid(0, 2), signal, args))
            setCurrentItem(cell);
        const int row = toInt(args.at(2));
        const int column = toInt(args.at(3));
        if (signal == QLatin1String("cellClicked"))
            Q_EMIT ACellClicked(row, column, toInt(args.value(4)));
        else
            Q_EMIT ACellDoubleClicked(row, column);
    } else if (signal == QLatin1String("cellChanged") && count >= 2) {
        // The recorder writes the id's texts first; reading them as numbers
        // is how recorded scripts were always replayed.
        Q_EMIT ACellChanged(toInt(args.at(0)), toInt(args.at(1)));
    }
}

} // namespace QtUIBase
