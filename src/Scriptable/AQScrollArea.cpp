#include "Scriptable/AQScrollArea.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QScrollBar>

namespace QtUIBase {

using namespace Wrapper;

AQScrollArea::AQScrollArea(const QString& name, QWidget* parent, bool scriptable)
    : QScrollArea(parent)
{
    if (!registerIfScriptable(this, name, scriptable))
        return;
    for (QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()}) {
        connect(bar, &QAbstractSlider::valueChanged, this, [this] {
            if (!dragging() && !m_replaying)
                handleValueChangedSignal();
        });
        connect(bar, &QAbstractSlider::sliderReleased, this, &AQScrollArea::handleValueChangedSignal);
    }
}

AQScrollArea::AQScrollArea(QWidget* parent, bool scriptable)
    : AQScrollArea(QString(), parent, scriptable)
{
}

bool AQScrollArea::dragging() const
{
    return horizontalScrollBar()->isSliderDown() || verticalScrollBar()->isSliderDown();
}

void AQScrollArea::handleValueChangedSignal()
{
    const int horizontal = horizontalScrollBar()->value();
    const int vertical = verticalScrollBar()->value();
    recordThenEmit(this, QStringLiteral("valueChanged"), {decimal(horizontal), decimal(vertical)},
                   [&] { Q_EMIT AValueChanged(horizontal, vertical); });
}

void AQScrollArea::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("valueChanged") || args.size() != 2)
        return;
    bool horizontalOk = false;
    bool verticalOk = false;
    const int horizontal = toInt(args.at(0), &horizontalOk);
    const int vertical = toInt(args.at(1), &verticalOk);
    if (!horizontalOk || !verticalOk)
        return;
    if (horizontal > horizontalScrollBar()->maximum() || vertical > verticalScrollBar()->maximum())
        reportStaleLine(this, signal, args);
    AQRecordingGuard suppressed;
    // One report for both bars: the bars' own reports are held back.
    m_replaying = true;
    horizontalScrollBar()->setValue(horizontal);
    verticalScrollBar()->setValue(vertical);
    m_replaying = false;
    Q_EMIT AValueChanged(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

} // namespace QtUIBase
