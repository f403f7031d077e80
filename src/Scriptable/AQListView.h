#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QList>
#include <QListView>
#include <QPair>

namespace QtUIBase {

/**
 * A scriptable QListView that names items by their display texts, so a
 * script survives a reordering of the list.
 *
 * | Record                      | Arguments                         | When                                  |
 * |-----------------------------|-----------------------------------|---------------------------------------|
 * | "selectionChanged"          | texts of the selected rows        | a click, or the mouse entering an item|
 * | "clicked"                   | the item's text                   | a click, once AClicked is listened to |
 * | "doubleClicked"             | the item's text                   | once ADoubleClicked is listened to    |
 * | "dataChanged"               | row, new text                     | the model's data changed              |
 * | "contextMenuRequested"      | x, y                              | a context-menu request                |
 * | "customContextMenuRequest"  | the item's text                   | after it, when over an item           |
 *
 * The view keeps the texts of the rows around the last one it recorded and
 * leaves out a data change that writes a text one of them already has.
 * Application signals follow with recording suppressed, except those of
 * context-menu requests, whose reactions (a menu) are recorded.
 *
 * Replay finds items by text, the first of equal texts; "selectionChanged"
 * selects exactly the items named, "doubleClicked" selects the item,
 * "clicked" only reports it. "dataChanged" sets the row's text and, for an
 * item with a check box, toggles the box: a release at the centre of the
 * check indicator that the style places for the row goes to the row's
 * delegate, as a click on the box would. A text or
 * row the list no longer has is reported in the fixed-script report.
 */
class ORVEXQTUIBASE_EXPORT AQListView : public QListView, public IAQScriptable
{
    Q_OBJECT

public:
    AQListView(const QString& name, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable.
    explicit AQListView(QWidget* parent = nullptr);

    /// Resets scriptable, the listener flags and the row cache.
    void Init(bool scriptable);
    void setModel(QAbstractItemModel* model) override;
    /// Column-0 indexes of the selected rows, in row order.
    QList<QModelIndex> getSelectedItemsIndexes() const;

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void AClicked(const QModelIndex& index);
    void ADoubleClicked(const QModelIndex& index);
    void ASelectionChanged();
    void ADataChanged(const QModelIndex& index);
    void ACustomContextMenuRequested(const QModelIndex& index);
    void AContextMenuRequested(const QPoint& pos);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void handleClickedSignal(const QModelIndex& index);
    void handleDoubleClickedSignal(const QModelIndex& index);
    void handleEnteredSignal(const QModelIndex& index);
    void handleDataChangedSignal(const QModelIndex& topLeft, const QModelIndex& bottomRight);
    void handleCustomContextSignal(const QPoint& pos);

private:
    QModelIndex findItemInList(const QString& text) const;
    QStringList selectedTexts() const;
    /// Remembers the texts of rows @p row - 1 to @p row + 1.
    void saveLocalDataValues(int row);
    void toggleCheckBox(const QModelIndex& index);

    bool m_scriptable = false;
    bool m_clickedListened = false;
    bool m_doubleClickedListened = false;
    QAbstractItemModel* m_model = nullptr;
    QPair<int, QString> m_cache[3];
};

} // namespace QtUIBase
