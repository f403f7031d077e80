#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QMetaObject>
#include <QTreeView>
#include <QVector>

namespace QtUIBase {

/**
 * A scriptable QTreeView that names rows by their item path: the column-0
 * display texts from the top level down, joined by "|" (a text holding "|"
 * cannot be found again). A script therefore survives a re-sort.
 *
 * | Record               | Arguments                                   | When                                |
 * |----------------------|---------------------------------------------|-------------------------------------|
 * | "expanded"           | path                                        | a row was expanded                  |
 * | "collapsed"          | path                                        | a row was collapsed                 |
 * | "clicked"            | path, column                                | once AClicked is listened to        |
 * | "doubleClicked"      | path, column                                | once ADoubleClicked is listened to  |
 * | "currentChanged"     | path, column (none when nothing is current) | the current cell changed            |
 * | "selectionChanged"   | path, column of each selected cell (of each row when rows are selected) | the selection changed |
 * | "checkStateChanged"  | path, column, state "0"/"1"/"2"             | the user clicked a check box        |
 * | "dataChanged"        | path before the edit, column, new text      | the user finished editing a cell    |
 *
 * Application signals follow with recording suppressed. Replay expands,
 * collapses, makes current, selects exactly the cells named, sets check
 * states and texts; a path the tree no longer has is reported in the
 * fixed-script report.
 *
 * While a script is recorded or replayed, every recorded and every
 * replayed operation of the tree also writes a text dump of its rows (one
 * indented line per row, "+"/"-" for collapsed/expanded branches, the
 * columns' texts, check boxes as "[x]", "[ ]", "[-]") into "DumpRecord" or
 * "DumpReplay" beside the script, named after the tree and numbered by the
 * record or replay count and the operation, so a replay can be compared
 * with its recording file by file.
 */
class ORVEXQTUIBASE_EXPORT AQTreeView : public QTreeView, public IAQScriptable
{
    Q_OBJECT

public:
    explicit AQTreeView(const QString& name, QWidget* parent = nullptr, bool scriptable = true);

    void setSelectionModel(QItemSelectionModel* selectionModel) override;
    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

    /// Writes the dump of the tree's rows now (while recording or replaying).
    void outPutAllChildren() const;

Q_SIGNALS:
    void AExpanded(const QModelIndex& index);
    void ACollapsed(const QModelIndex& index);
    void AClicked(const QModelIndex& index);
    void ADoubleClicked(const QModelIndex& index);
    void ACurrentChanged(const QModelIndex& current);
    void ASelectionChanged();
    void ACheckStateChanged(const QModelIndex& index);
    void ADataChanged(const QModelIndex& index);

protected:
    void connectNotify(const QMetaMethod& signal) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;

protected Q_SLOTS:
    void commitData(QWidget* editor) override;

private Q_SLOTS:
    void handleExpandedSignal(const QModelIndex& index);
    void handleCollapsedSignal(const QModelIndex& index);
    void handleClickedSignal(const QModelIndex& index);
    void handleDoubleClickedSignal(const QModelIndex& index);
    void handleCurrentChangedSignal(const QModelIndex& current);
    void handleSelectionChangedSignal();

private:
    /// Records one operation on @p index, dumps, then runs @p emitSignal
    /// with recording suppressed.
    void record(const QString& signal, const QStringList& args, const std::function<void()>& emitSignal);
    QModelIndex findOrReport(const QString& path, const QString& column, const QString& signal,
                             const QStringList& args);

    bool m_scriptable = false;
    bool m_clickedListened = false;
    bool m_doubleClickedListened = false;
    QVector<QMetaObject::Connection> m_selectionConnections;
};

} // namespace QtUIBase
