#include "Scriptable/AQListWidget.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQListWidget::AQListWidget(const QString& name, QWidget* parent, bool scriptable)
    : QListWidget(parent)
    , m_scriptable(scriptable)
{
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QListWidget::itemClicked, this, &AQListWidget::handleItemClickedSignal);
    connect(this, &QListWidget::itemDoubleClicked, this, &AQListWidget::handleItemDoubleClickedSignal);
    connect(this, &QListWidget::itemSelectionChanged, this, &AQListWidget::handleItemSelectionChangedSignal);
    connect(this, &QListWidget::itemChanged, this, &AQListWidget::handleItemChangedSignal);
    connect(this, &QListWidget::currentRowChanged, this, &AQListWidget::handleCurrentRowChanged);
    connect(this, &QWidget::customContextMenuRequested, this, &AQListWidget::handleCustomContextSignal);
    connect(this, &QWidget::customContextMenuRequested, this, &AQListWidget::handleContextSignal);
}

AQListWidget::AQListWidget(QWidget* parent)
    : AQListWidget(QString(), parent, true)
{
}

void AQListWidget::connectNotify(const QMetaMethod& signal)
{
    QListWidget::connectNotify(signal);
    if (!m_scriptable)
        return;
    if (isSignal(signal, &AQListWidget::AItemClicked))
        m_itemClickedListened = true;
    else if (isSignal(signal, &AQListWidget::AItemDoubleClicked))
        m_itemDoubleClickedListened = true;
}

QListWidgetItem* AQListWidget::findItemInList(const QString& text) const
{
    for (int row = 0; row < count(); ++row) {
        if (item(row)->data(Qt::DisplayRole).toString() == text)
            return item(row);
    }
    return nullptr;
}

void AQListWidget::handleItemClickedSignal(QListWidgetItem* clicked)
{
    if (m_itemClickedListened)
        recordThenEmit(this, QStringLiteral("itemClicked"), {clicked->text()}, [&] { Q_EMIT AItemClicked(clicked); });
}

void AQListWidget::handleItemDoubleClickedSignal(QListWidgetItem* clicked)
{
    if (m_itemDoubleClickedListened)
        recordThenEmit(this, QStringLiteral("itemDoubleClicked"), {clicked->text()},
                       [&] { Q_EMIT AItemDoubleClicked(clicked); });
}

void AQListWidget::handleItemSelectionChangedSignal()
{
    QStringList texts;
    const QList<QListWidgetItem*> selection = selectedItems();
    for (const QListWidgetItem* selected : selection)
        texts << selected->text();
    recordThenEmit(this, QStringLiteral("itemSelectionChanged"), texts, [this] { Q_EMIT AItemSelectionChanged(); });
}

void AQListWidget::handleItemChangedSignal(QListWidgetItem* changed)
{
    recordThenEmit(this, QStringLiteral("itemChanged"), {decimal(row(changed)), changed->text()},
                   [&] { Q_EMIT AItemChanged(changed); });
}

void AQListWidget::handleCurrentRowChanged(int current)
{
    recordThenEmit(this, QStringLiteral("currentRowChanged"), {decimal(current)},
                   [&] { Q_EMIT ACurrentRowChanged(current); });
}

void AQListWidget::handleCustomContextSignal(const QPoint& pos)
{
    if (QListWidgetItem* under = itemAt(pos)) {
        AQScripts::recordSignal(this, QStringLiteral("customContextMenuRequest"), under->text());
        // Not suppressed: the menu that opens records its choice.
        Q_EMIT ACustomContextMenuRequested(under);
    }
}

void AQListWidget::handleContextSignal(const QPoint& pos)
{
    recordThenEmit(this, QStringLiteral("contextMenuRequested"), {decimal(pos.x()), decimal(pos.y())},
                   [&] { Q_EMIT AContextMenuRequested(pos); });
}

void AQListWidget::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    const auto find = [&](const QString& text) {
        QListWidgetItem* found = findItemInList(text);
        if (!found)
            reportStaleLine(this, signal, args);
        return found;
    };
    const auto rowItem = [&] {
        QListWidgetItem* found = item(toInt(args.first()));
        if (!found)
            reportStaleLine(this, signal, args);
        return found;
    };
    if (signal == QLatin1String("itemClicked") && args.size() == 1) {
        if (QListWidgetItem* found = find(args.first())) {
            setCurrentItem(found);
            Q_EMIT AItemClicked(found);
        }
    } else if (signal == QLatin1String("itemDoubleClicked") && args.size() == 1) {
        if (QListWidgetItem* found = find(args.first())) {
            setCurrentItem(found);
            Q_EMIT AItemDoubleClicked(found);
        }
    } else if (signal == QLatin1String("itemSelectionChanged")) {
        disconnect(this, &QListWidget::itemSelectionChanged, this, &AQListWidget::handleItemSelectionChangedSignal);
        clearSelection();
        for (const QString& text : args) {
            if (QListWidgetItem* found = find(text))
                found->setSelected(true);
        }
        connect(this, &QListWidget::itemSelectionChanged, this, &AQListWidget::handleItemSelectionChangedSignal);
        Q_EMIT AItemSelectionChanged();
    } else if (signal == QLatin1String("itemChanged") && !args.isEmpty()) {
        if (QListWidgetItem* found = rowItem()) {
            found->setData(Qt::DisplayRole, args.value(1));
            if (showsUserCheckBox(found->flags(), found->data(Qt::CheckStateRole)))
                found->setCheckState(found->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
        }
    } else if (signal == QLatin1String("currentRowChanged") && !args.isEmpty()) {
        // -1 is no current row, as the list reports it.
        if (toInt(args.first()) == -1 || rowItem())
            setCurrentRow(toInt(args.first()));
    } else if (signal == QLatin1String("customContextMenuRequest") && args.size() == 1) {
        if (QListWidgetItem* found = find(args.first()))
            Q_EMIT ACustomContextMenuRequested(found);
    } else if (signal == QLatin1String("contextMenuRequested") && args.size() >= 2) {
        Q_EMIT AContextMenuRequested(QPoint(toInt(args.at(0)), toInt(args.at(1))));
    }
}

} // namespace QtUIBase
