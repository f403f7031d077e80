#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QTreeWidget>

#include <functional>

namespace QtUIBase {

/**
 * A scriptable QTreeWidget that names items by their item path: the
 * column-0 texts from the top level down, joined by "|" (a text holding
 * "|" cannot be found again). A script therefore survives a re-sort.
 *
 * | Record                 | Arguments                                        | When                                    |
 * |------------------------|--------------------------------------------------|-----------------------------------------|
 * | "itemExpanded"         | path                                             | an item was expanded                    |
 * | "itemCollapsed"        | path                                             | an item was collapsed                   |
 * | "itemClicked"          | path, column                                     | once AItemClicked is listened to        |
 * | "itemDoubleClicked"    | path, column                                     | once AItemDoubleClicked is listened to  |
 * | "currentItemChanged"   | path (none when no item is current)              | the current item changed                |
 * | "itemSelectionChanged" | paths of selectedItems()                         | the selection changed                   |
 * | "itemChanged"          | path, column, [check state,] text                | an item's text or check state changed   |
 *
 * The check state ("0", "1", "2") is written for items that show a check
 * box; an edited item is named by its path before the edit. Application
 * signals follow with recording suppressed.
 *
 * Replay expands, collapses, makes current (clicks make the item current
 * and report it), selects exactly the items named and sets texts and check
 * states; a path the tree no longer has is reported in the fixed-script
 * report. Like AQTreeView, each recorded and each replayed operation also
 * writes a text dump of the items into "DumpRecord" / "DumpReplay" beside
 * the script.
 */
class ORVEXQTUIBASE_EXPORT AQTreeWidget : public QTreeWidget, public IAQScriptable
{
    Q_OBJECT

public:
    explicit AQTreeWidget(const QString& name, QWidget* parent = nullptr, bool scriptable = true);

    /// The path that names @p item in a record.
    QString itemPath(const QTreeWidgetItem* item) const;
    /// The item named by @p path, or null.
    QTreeWidgetItem* findItem(const QString& path) const;

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

    /// Writes the dump of the tree's items now (while recording or replaying).
    void outPutAllChildren() const;

Q_SIGNALS:
    void AItemExpanded(QTreeWidgetItem* item);
    void AItemCollapsed(QTreeWidgetItem* item);
    void AItemClicked(QTreeWidgetItem* item, int column);
    void AItemDoubleClicked(QTreeWidgetItem* item, int column);
    void ACurrentItemChanged(QTreeWidgetItem* current);
    void AItemSelectionChanged();
    void AItemChanged(QTreeWidgetItem* item, int column);

protected:
    void connectNotify(const QMetaMethod& signal) override;

protected Q_SLOTS:
    void commitData(QWidget* editor) override;

private Q_SLOTS:
    void handleItemExpandedSignal(QTreeWidgetItem* item);
    void handleItemCollapsedSignal(QTreeWidgetItem* item);
    void handleItemClickedSignal(QTreeWidgetItem* item, int column);
    void handleItemDoubleClickedSignal(QTreeWidgetItem* item, int column);
    void handleCurrentItemChangedSignal(QTreeWidgetItem* current);
    void handleItemSelectionChangedSignal();
    void handleItemChangedSignal(QTreeWidgetItem* item, int column);

private:
    void record(const QString& signal, const QStringList& args, const std::function<void()>& emitSignal);
    QTreeWidgetItem* findOrReport(const QString& path, const QString& signal, const QStringList& args);

    bool m_scriptable = false;
    bool m_itemClickedListened = false;
    bool m_itemDoubleClickedListened = false;
    /// Path of the item being edited, as it was before the edit.
    QString m_editPath;
};

} // namespace QtUIBase
