#include "Widget/TrackMark/QTrackMark.h"

#include <QEvent>
#include <QPainter>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>

namespace Gui::Widget {

QTrackMark::QTrackMark(QSlider* slider)
    : QWidget(slider)
    , m_slider(slider)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    if (slider) {
        m_value = slider->minimum();
        slider->installEventFilter(this);
        connect(slider, &QSlider::rangeChanged, this, qOverload<>(&QWidget::update));
        resize(slider->size());
    }
}

void QTrackMark::setValue(int value)
{
    m_value = value;
    update();
}

QColor QTrackMark::color() const
{
    return m_color.isValid() ? m_color : palette().color(QPalette::Highlight);
}

void QTrackMark::setColor(const QColor& color)
{
    m_color = color;
    update();
}

QPoint QTrackMark::markPosition() const
{
    if (!m_slider || m_value < m_slider->minimum() || m_value > m_slider->maximum())
        return QPoint();
    // The style option QSlider builds for itself (initStyleOption is not
    // public), with the slider standing at the mark's value.
    QStyleOptionSlider option;
    option.initFrom(m_slider);
    option.subControls = QStyle::SC_None;
    option.activeSubControls = QStyle::SC_None;
    option.orientation = m_slider->orientation();
    option.minimum = m_slider->minimum();
    option.maximum = m_slider->maximum();
    option.tickPosition = m_slider->tickPosition();
    option.tickInterval = m_slider->tickInterval();
    option.upsideDown = m_slider->orientation() == Qt::Horizontal
        ? m_slider->invertedAppearance() != (m_slider->layoutDirection() == Qt::RightToLeft)
        : !m_slider->invertedAppearance();
    option.direction = Qt::LeftToRight;
    option.sliderPosition = m_value;
    option.sliderValue = m_value;
    option.singleStep = m_slider->singleStep();
    option.pageStep = m_slider->pageStep();
    if (m_slider->orientation() == Qt::Horizontal)
        option.state |= QStyle::State_Horizontal;
    const QRect handle
        = m_slider->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, m_slider);
    return handle.center();
}

bool QTrackMark::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_slider && event->type() == QEvent::Resize) {
        resize(m_slider->size());
        raise();
    }
    return QWidget::eventFilter(watched, event);
}

void QTrackMark::paintEvent(QPaintEvent*)
{
    const QPoint at = markPosition();
    if (at.isNull() || !m_slider)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color().darker(130), 1));
    painter.setBrush(color());
    constexpr qreal Half = 4.0;
    const bool horizontal = m_slider->orientation() == Qt::Horizontal;
    // The triangle sits at the slider's edge (below a horizontal track,
    // right of a vertical one) and points at the track; the tick crosses it.
    QPolygonF triangle;
    if (horizontal) {
        const qreal edge = height() - 1;
        triangle << QPointF(at.x(), edge - 2 * Half) << QPointF(at.x() - Half, edge) << QPointF(at.x() + Half, edge);
        painter.drawPolygon(triangle);
        painter.drawLine(QPointF(at.x(), 1), QPointF(at.x(), edge - 2 * Half));
    } else {
        const qreal edge = width() - 1;
        triangle << QPointF(edge - 2 * Half, at.y()) << QPointF(edge, at.y() - Half) << QPointF(edge, at.y() + Half);
        painter.drawPolygon(triangle);
        painter.drawLine(QPointF(1, at.y()), QPointF(edge - 2 * Half, at.y()));
    }
}

} // namespace Gui::Widget
