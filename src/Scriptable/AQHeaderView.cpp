#include "Scriptable/AQHeaderView.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

namespace {

QString orderWord(Qt::SortOrder order)
{
    return decimal(order == Qt::DescendingOrder ? 1 : 0);
}

// Records, then emits with recording allowed: a header's consequences (a
// sort, a filter picked in a dialog) belong in the script too.
template <typename Emit>
void recordThenEmitRecorded(const QObject* header, const QString& signal, const QStringList& args, Emit&& emitSignal)
{
    AQScripts::recordSignal(header, signal, args);
    AQRecordingGuard allowed(true);
    emitSignal();
}

} // namespace

AQHeaderView::AQHeaderView(const QString& name, Qt::Orientation orientation, QWidget* parent, bool scriptable)
    : QHeaderView(orientation, parent)
    , m_scriptable(scriptable)
{
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QHeaderView::sectionClicked, this, &AQHeaderView::handleSectionClickedSignal);
    connect(this, &QHeaderView::sectionDoubleClicked, this, &AQHeaderView::handleSectionDoubleClickedSignal);
    connect(this, &QHeaderView::sectionPressed, this, &AQHeaderView::handleSectionPressedSignal);
    connect(this, &QWidget::customContextMenuRequested, this, &AQHeaderView::handleContextMenuHeader);
    connect(this, &QHeaderView::sortIndicatorChanged, this, &AQHeaderView::handleSortIndicatorChangedSignal);
    connect(this, &QHeaderView::sectionMoved, this, &AQHeaderView::handleSectionMovedSignal);
}

void AQHeaderView::connectNotify(const QMetaMethod& signal)
{
    QHeaderView::connectNotify(signal);
    if (m_scriptable && isSignal(signal, &AQHeaderView::ASortIndicatorChanged))
        m_sortListened = true;
}

void AQHeaderView::handleSectionClickedSignal(int logicalIndex)
{
    const Qt::SortOrder order = sortIndicatorOrder();
    if (m_sortListened)
        AQScripts::recordSignal(this, QStringLiteral("sortIndicatorChanged"), {decimal(logicalIndex), orderWord(order)});
    recordThenEmitRecorded(this, QStringLiteral("sectionClicked"), {decimal(logicalIndex)}, [&] {
        Q_EMIT ASectionClicked(logicalIndex);
        if (m_sortListened)
            Q_EMIT ASortIndicatorChanged(logicalIndex, order);
    });
}

void AQHeaderView::handleSectionDoubleClickedSignal(int logicalIndex)
{
    recordThenEmitRecorded(this, QStringLiteral("sectionDoubleClicked"), {decimal(logicalIndex)},
                           [&] { Q_EMIT ASectionDoubleClicked(logicalIndex); });
}

void AQHeaderView::handleSectionPressedSignal(int logicalIndex)
{
    recordThenEmitRecorded(this, QStringLiteral("sectionPressed"), {decimal(logicalIndex)},
                           [&] { Q_EMIT ASectionPressed(logicalIndex); });
}

void AQHeaderView::handleSectionMovedSignal(int logicalIndex, int oldVisualIndex, int newVisualIndex)
{
    recordThenEmitRecorded(this, QStringLiteral("sectionMoved"),
                           {decimal(logicalIndex), decimal(oldVisualIndex), decimal(newVisualIndex)},
                           [&] { Q_EMIT ASectionMoved(logicalIndex, oldVisualIndex, newVisualIndex); });
}

void AQHeaderView::handleContextMenuHeader(const QPoint& pos)
{
    recordThenEmitRecorded(this, QStringLiteral("customContextMenuRequested"), {decimal(pos.x()), decimal(pos.y())},
                           [&] { Q_EMIT ACustomContextMenuRequested(pos); });
}

void AQHeaderView::handleSortIndicatorChangedSignal(int logicalIndex, Qt::SortOrder order)
{
    recordThenEmitRecorded(this, QStringLiteral("sortIndicatorChanged"), {decimal(logicalIndex), orderWord(order)},
                           [&] { Q_EMIT ASortIndicatorChanged(logicalIndex, order); });
}

void AQHeaderView::scriptReplay(const QString& signal, const QStringList& args)
{
    const auto number = [&](int i) { return args.at(i).toInt(); };
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("sectionClicked") && !args.isEmpty()) {
        Q_EMIT ASectionClicked(number(0));
    } else if (signal == QLatin1String("sectionDoubleClicked") && !args.isEmpty()) {
        Q_EMIT ASectionDoubleClicked(number(0));
    } else if (signal == QLatin1String("sectionPressed") && !args.isEmpty()) {
        Q_EMIT ASectionPressed(number(0));
    } else if (signal == QLatin1String("sectionMoved") && args.size() == 3) {
        // The logical index is not needed: the visual positions say it all,
        // and the header's own sectionMoved reports the move (unrecorded).
        moveSection(number(1), number(2));
    } else if (signal == QLatin1String("customContextMenuRequested") && args.size() >= 2) {
        Q_EMIT ACustomContextMenuRequested(QPoint(number(0), number(1)));
    } else if (signal == QLatin1String("sortIndicatorChanged") && args.size() >= 2) {
        Q_EMIT ASortIndicatorChanged(number(0), Qt::SortOrder(number(1)));
    }
}

} // namespace QtUIBase
