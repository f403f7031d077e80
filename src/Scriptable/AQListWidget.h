#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QListWidget>

namespace QtUIBase {

/**
 * A scriptable QListWidget that names items by their texts, so a script
 * survives a reordering of the list.
 *
 * | Record                      | Arguments                          | When                                   |
 * |-----------------------------|------------------------------------|----------------------------------------|
 * | "itemClicked"               | the item's text                    | once AItemClicked is listened to       |
 * | "itemDoubleClicked"         | the item's text                    | once AItemDoubleClicked is listened to |
 * | "itemSelectionChanged"      | texts of selectedItems()           | the selection changed                  |
 * | "itemChanged"               | row, text                          | an item's text or check state changed  |
 * | "currentRowChanged"         | row                                | the current row changed                |
 * | "customContextMenuRequest"  | the item's text                    | a context-menu request over an item    |
 * | "contextMenuRequested"      | x, y                               | every context-menu request, after it   |
 *
 * Application signals follow with recording suppressed, except
 * ACustomContextMenuRequested(), whose reaction (a menu) is recorded.
 *
 * Replay finds items by text, the first of equal texts: clicks make the
 * item current and report it, "itemSelectionChanged" selects exactly the
 * items named, "itemChanged" sets the row's text and flips the check state
 * of an item that shows a check box, "currentRowChanged" makes the row
 * current. A text or row the list no longer has is reported in the
 * fixed-script report.
 */
class ORVEXQTUIBASE_EXPORT AQListWidget : public QListWidget, public IAQScriptable
{
    Q_OBJECT

public:
    AQListWidget(const QString& name, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable.
    explicit AQListWidget(QWidget* parent = nullptr);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void AItemClicked(QListWidgetItem* item);
    void AItemDoubleClicked(QListWidgetItem* item);
    void AItemSelectionChanged();
    void AItemChanged(QListWidgetItem* item);
    void ACurrentRowChanged(int row);
    void ACustomContextMenuRequested(QListWidgetItem* item);
    void AContextMenuRequested(const QPoint& pos);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void handleItemClickedSignal(QListWidgetItem* item);
    void handleItemDoubleClickedSignal(QListWidgetItem* item);
    void handleItemSelectionChangedSignal();
    void handleItemChangedSignal(QListWidgetItem* item);
    void handleCurrentRowChanged(int row);
    void handleCustomContextSignal(const QPoint& pos);
    void handleContextSignal(const QPoint& pos);

private:
    QListWidgetItem* findItemInList(const QString& text) const;

    bool m_scriptable = false;
    bool m_itemClickedListened = false;
    bool m_itemDoubleClickedListened = false;
};

} // namespace QtUIBase
