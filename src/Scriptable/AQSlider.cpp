#include "Scriptable/AQSlider.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionSlider>

namespace QtUIBase {

using namespace Wrapper;

AQSlider::AQSlider(const QString& name, QWidget* parent, bool scriptable)
    : QSlider(parent)
    , m_scriptable(scriptable)
{
    init(name);
}

AQSlider::AQSlider(const QString& name, Qt::Orientation orientation, QWidget* parent, bool scriptable)
    : QSlider(orientation, parent)
    , m_scriptable(scriptable)
{
    init(name);
}

AQSlider::AQSlider(QWidget* parent)
    : QSlider(parent)
    , m_scriptable(true)
{
    init(QString());
}

void AQSlider::init(const QString& name)
{
    m_valueAtPress = NoDrag;
    if (!registerIfScriptable(this, name, m_scriptable))
        return;
    connect(this, &QAbstractSlider::sliderPressed, this, &AQSlider::handleSliderPressedSignal);
    connect(this, &QAbstractSlider::sliderReleased, this, &AQSlider::handleSliderReleasedSignal);
    connect(this, &QAbstractSlider::valueChanged, this, &AQSlider::handleValueChangedSignal);
}

void AQSlider::connectNotify(const QMetaMethod& signal)
{
    QSlider::connectNotify(signal);
    if (m_scriptable && isSignal(signal, &AQSlider::AValueChanged))
        m_valueChangedListened = true;
}

void AQSlider::handleSliderPressedSignal()
{
    m_valueAtPress = value();
}

void AQSlider::handleValueChangedSignal(int value)
{
    withRecordingSuppressed([&] { Q_EMIT AValueChanged(value); });
    if (!dragInProgress() && m_valueChangedListened)
        AQScripts::recordSignal(this, QStringLiteral("valueChanged"), decimal(value));
}

void AQSlider::handleSliderReleasedSignal()
{
    const bool dragged = dragInProgress() && value() != m_valueAtPress;
    m_valueAtPress = NoDrag;
    if (dragged && m_valueChangedListened) {
        const int v = value();
        recordThenEmit(this, QStringLiteral("valueChanged"), {decimal(v)}, [&] { Q_EMIT AValueChanged(v); });
    }
}

int AQSlider::valueAt(const QPoint& pos, const QRect& handle) const
{
    const bool horizontal = orientation() == Qt::Horizontal;
    const double h = (horizontal ? handle.width() : handle.height()) / 2.0 + 0.5;
    const int length = horizontal ? width() : height();
    int p = horizontal ? pos.x() : height() - pos.y();
    p = qBound(static_cast<int>(h), p, static_cast<int>(length - h));
    const double span = length - 2 * h;
    if (span <= 0) // a slider no longer than its handle
        return minimum();
    const double ratio = (p - h) / span;
    return static_cast<int>(minimum() + (maximum() - minimum()) * ratio);
}

void AQSlider::mousePressEvent(QMouseEvent* event)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect handle = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    if (event->button() != Qt::LeftButton || handle.contains(event->pos())) {
        QSlider::mousePressEvent(event);
        return;
    }
    int v = valueAt(event->pos(), handle);
    if (m_snapClickToPageStep && pageStep() > 0)
        v = pageStep() * ((v + pageStep() / 2) / pageStep());
    setValue(invertedAppearance() ? maximum() - v : v);
    event->accept();
}

void AQSlider::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal == QLatin1String("valueChanged") && args.size() == 1)
        withRecordingSuppressed([&] { setValue(args.first().toInt()); });
}

} // namespace QtUIBase
