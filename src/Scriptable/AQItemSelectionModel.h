#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QItemSelectionModel>

namespace QtUIBase {

/**
 * A scriptable QItemSelectionModel.
 *
 * Records every current-index change as "currentChanged",
 * "currentRowChanged" and "currentColumnChanged", each with the arguments
 * "current", row, column, "previous", row, column; and every selection
 * change as "selectionChanged" with "selected" and the row and column of
 * each newly selected index, then "deselected" and those of each deselected
 * index (a half without indexes is left out). The A signals follow with
 * recording suppressed.
 *
 * Replay sets the current index from the "current" half, and applies a
 * selection change index by index, deselections first. Indexes are rebuilt
 * under the model's root: items of nested tree levels are not addressed.
 */
class ORVEXQTUIBASE_EXPORT AQItemSelectionModel : public QItemSelectionModel, public IAQScriptable
{
    Q_OBJECT

public:
    /// With @p scriptable false nothing is registered or recorded.
    AQItemSelectionModel(const QString& name, QAbstractItemModel* model, QObject* parent, bool scriptable);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void ACurrentChanged(const QModelIndex& current, const QModelIndex& previous);
    void ACurrentRowChanged(const QModelIndex& current, const QModelIndex& previous);
    void ACurrentColumnChanged(const QModelIndex& current, const QModelIndex& previous);
    void ASelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);

private Q_SLOTS:
    void handleCurrentChanged(const QModelIndex& current, const QModelIndex& previous);
    void handleCurrentRowChanged(const QModelIndex& current, const QModelIndex& previous);
    void handleCurrentColumnChanged(const QModelIndex& current, const QModelIndex& previous);
    void handleSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);

private:
    /// Selects or deselects the (row, column) pairs of @p args in [begin, end).
    void applyPairs(const QStringList& args, int begin, int end, QItemSelectionModel::SelectionFlags command);

    bool m_scriptable = false;
};

} // namespace QtUIBase
