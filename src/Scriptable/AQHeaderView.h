#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QHeaderView>

namespace QtUIBase {

/**
 * A scriptable QHeaderView.
 *
 * Records clicks, double clicks and presses on sections ("sectionClicked",
 * "sectionDoubleClicked", "sectionPressed" with the section), section moves
 * ("sectionMoved" with the logical index and the old and new visual
 * positions), context-menu requests ("customContextMenuRequested" with x and
 * y) and sort-indicator changes ("sortIndicatorChanged" with the section and
 * the order, 0 ascending or 1 descending).
 *
 * Once something connects to ASortIndicatorChanged() (on a scriptable
 * header) the header counts as sort-listened for good: a section click then
 * writes a "sortIndicatorChanged" line with the click's section and the
 * current order before its "sectionClicked" line and emits both signals.
 *
 * Unlike most wrappers the header emits its A signals with recording
 * allowed, not suppressed: what the application does in reaction (a sort, a
 * filter chosen in a dialog) is recorded as well.
 *
 * Replay emits the A signals with the recorded values (a replayed click
 * neither clicks the section nor touches the sort indicator); a replayed
 * "sectionMoved" moves the section from the second to the third visual
 * position and needs exactly three numbers.
 */
class ORVEXQTUIBASE_EXPORT AQHeaderView : public QHeaderView, public IAQScriptable
{
    Q_OBJECT

public:
    /// With @p scriptable false the header is an ordinary QHeaderView.
    AQHeaderView(const QString& name, Qt::Orientation orientation, QWidget* parent, bool scriptable);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }
    bool isSortListened() const { return m_sortListened; }

Q_SIGNALS:
    void ASectionClicked(int logicalIndex);
    void ASectionDoubleClicked(int logicalIndex);
    void ASectionPressed(int logicalIndex);
    void ASectionMoved(int logicalIndex, int oldVisualIndex, int newVisualIndex);
    void ACustomContextMenuRequested(const QPoint& pos);
    void ASortIndicatorChanged(int logicalIndex, Qt::SortOrder order);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void handleSectionClickedSignal(int logicalIndex);
    void handleSectionDoubleClickedSignal(int logicalIndex);
    void handleSectionPressedSignal(int logicalIndex);
    void handleSectionMovedSignal(int logicalIndex, int oldVisualIndex, int newVisualIndex);
    void handleContextMenuHeader(const QPoint& pos);
    void handleSortIndicatorChangedSignal(int logicalIndex, Qt::SortOrder order);

private:
    bool m_scriptable = false;
    bool m_sortListened = false;
};

} // namespace QtUIBase
