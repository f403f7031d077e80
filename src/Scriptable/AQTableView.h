#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QMetaObject>
#include <QTableView>
#include <QVector>

namespace QtUIBase {

/**
 * A scriptable QTableView.
 *
 * A cell is named in script lines by its text id, as AQTableWidget names
 * it: the model's vertical header text of the row (the row number when the
 * model gives none) and the horizontal header text of the column
 * ("TempName" when it is empty). Replay finds the row and the column by
 * header text first and by number second, so a script survives moved
 * columns and, on a sorting proxy whose row headers follow their rows, a
 * re-sort.
 *
 * | Record             | Arguments                                     | When                          |
 * |--------------------|-----------------------------------------------|-------------------------------|
 * | "clicked"          | id                                            | AClicked is listened to       |
 * | "doubleClicked"    | id                                            | ADoubleClicked is listened to |
 * | "currentChanged"   | id (none when no cell is current)             | the current cell changed      |
 * | "selectionChanged" | per selected range: top-left id, bottom-right id | the selection changed      |
 * | "selectAll"        | none                                          | every cell became selected    |
 *
 * Selections are written as ranges, so selecting a million rows is one
 * short line. Clicks are recorded only once something connects to
 * AClicked or ADoubleClicked (flags set then, never cleared): a click is
 * already recorded through the current cell and the selection it changes.
 * The application signals follow with recording suppressed.
 *
 * Replay makes the named cell current (without touching the selection),
 * rebuilds the selection from the ranges, or reports a click; a line whose
 * id names no cell does nothing and is reported in the fixed-script report.
 * The view's selection and current-cell records come from whatever
 * selection model it has (setModel() or setSelectionModel()).
 */
class ORVEXQTUIBASE_EXPORT AQTableView : public QTableView, public IAQScriptable
{
    Q_OBJECT

public:
    explicit AQTableView(const QString& name, QWidget* parent = nullptr, bool scriptable = true);

    void setSelectionModel(QItemSelectionModel* selectionModel) override;

    /// The two texts that name @p index in a record.
    QStringList indexTextID(const QModelIndex& index) const;
    /// The cell named by a text id, or an invalid index.
    QModelIndex findIndexInTable(const QStringList& id) const;

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void AClicked(const QModelIndex& index);
    void ADoubleClicked(const QModelIndex& index);
    void ACurrentChanged(const QModelIndex& current);
    void ASelectionChanged();

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void handleClickedSignal(const QModelIndex& index);
    void handleDoubleClickedSignal(const QModelIndex& index);
    void handleCurrentChangedSignal(const QModelIndex& current);
    void handleSelectionChangedSignal();

private:
    QString headerText(Qt::Orientation orientation, int section) const;
    QModelIndex findOrReport(const QStringList& id, const QString& signal, const QStringList& args);

    bool m_scriptable = false;
    bool m_clickedListened = false;
    bool m_doubleClickedListened = false;
    QVector<QMetaObject::Connection> m_selectionConnections;
};

} // namespace QtUIBase
