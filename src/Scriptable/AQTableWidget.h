#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QList>
#include <QPoint>
#include <QTableWidget>

#include <functional>

namespace QtUIBase {

/**
 * A scriptable QTableWidget.
 *
 * A cell is named in script lines by its text id: the row's vertical header
 * text (the row number when the row has no header item) and the column's
 * horizontal header text ("TempName" for an empty one, the column number
 * when the column has no header item). Replay reads the row back as a
 * number and finds the column by its header text first, so a script
 * survives moved columns; a row whose header text is not a number is not
 * found again.
 *
 * | Record                       | Arguments                              | When                                   |
 * |------------------------------|----------------------------------------|----------------------------------------|
 * | "itemClicked"                | id                                     | AItemClicked is listened to            |
 * | "itemDoubleClicked"          | id                                     | AItemDoubleClicked or ACellClicked is  |
 * | "cellClicked"                | id, row, column [, check state]        | ACellClicked is listened to            |
 * | "cellDoubleClicked"          | id, row, column                        | ACellDoubleClicked is listened to      |
 * | "cellChanged"                | id, row, column [, check state]        | a cell with an item changed            |
 * | "itemChanged"                | id, text                               | an item changed                        |
 * | "itemSelectionChanged"       | the ids of all selected items          | the selection changed                  |
 * | "selectAll"                  | none                                   | every row of a row-selecting table     |
 * | "customContextMenuRequest"   | id                                     | context menu over an item (*)          |
 * | "contextMenuRequested"       | x, y                                   | any context menu request (*)           |
 *
 * (*) only tables built with the (name, parent, scriptable) constructor.
 * The check state ("0", "1", "2") is written for items that show a check
 * box the user can click. The
 * listener flags are set once something connects to the A signal and never
 * cleared; a listener of ACellClicked also makes item double clicks
 * recorded. Application signals follow with recording suppressed, except
 * those for context menus, whose menus record their own choice.
 *
 * Replay of "cellChanged" reads the id's two texts as the row and column
 * numbers (so it matches only tables without header texts), unlike
 * "cellClicked", which finds the item by the id and takes the numbers that
 * follow. A line whose id names no item does nothing and is reported in
 * the fixed-script report.
 *
 * The Copy and Paste keys emit AItemsCopied / AItemsPasted with the selected
 * items when there are any, the Refresh key ARefreshRequested; none of this
 * is recorded and the keys still reach the table.
 */
class ORVEXQTUIBASE_EXPORT AQTableWidget : public QTableWidget, public IAQScriptable
{
    Q_OBJECT

public:
    AQTableWidget(const QString& name, int rows, int columns, QWidget* parent, bool scriptable);
    /// The only form that records context-menu requests.
    AQTableWidget(const QString& name, QWidget* parent, bool scriptable);
    explicit AQTableWidget(QWidget* parent = nullptr, bool scriptable = true);

    /// Clears the listener flags, keeps @p scriptable and, when it is true,
    /// registers under @p name and connects the item and cell signals.
    void Init(const QString& name, bool scriptable);

    void setCellWidget(int row, int column, QWidget* widget);

    /// The two texts that name @p item in a record.
    QStringList getItemTextID(QTableWidgetItem* item) const;
    /// The item named by a text id, or null.
    QTableWidgetItem* findItemInTable(const QStringList& id) const;

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void AItemClicked(QTableWidgetItem* item);
    void AItemDoubleClicked(QTableWidgetItem* item);
    void AItemSelectionChanged();
    void AItemChanged(QTableWidgetItem* item);
    void ACellClicked(int row, int column, int checkState);
    void ACellDoubleClicked(int row, int column);
    void ACellChanged(int row, int column);
    void ACustomContextMenuRequested(QTableWidgetItem* item);
    void AContextMenuRequested(const QPoint& pos);
    void AItemsCopied(QList<QTableWidgetItem*> items);
    void AItemsPasted(QList<QTableWidgetItem*> items);
    void ARefreshRequested();

protected:
    void connectNotify(const QMetaMethod& signal) override;
    void keyPressEvent(QKeyEvent* event) override;

private Q_SLOTS:
    void handleItemClickedSignal(QTableWidgetItem* item);
    void handleItemDoubleClickedSignal(QTableWidgetItem* item);
    void handleItemSelectionChangedSignal();
    void handleItemChangedSignal(QTableWidgetItem* item);
    void handleCellClickedSignal(int row, int column);
    void handleCellDoubleClickedSignal(int row, int column);
    void handleCellChangedSignal(int row, int column);
    void handleCustomContextSignal(const QPoint& pos);
    void handleContextMenuRequested(const QPoint& pos);

private:
    /// id, row, column and, for a user-checkable item, its check state.
    QStringList cellArguments(QTableWidgetItem* item, int row, int column) const;
    /// Runs @p change with the own selection handler disconnected.
    void changeSelectionQuietly(const std::function<void()>& change);
    QTableWidgetItem* findOrReport(const QStringList& id, const QString& signal, const QStringList& args);

    bool m_itemClickedListened = false;
    bool m_itemDoubleClickedListened = false;
    bool m_cellClickedListened = false;
    bool m_cellDoubleClickedListened = false;
    bool m_scriptable = false;
};

} // namespace QtUIBase
