#include "SliderDriving.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QtTest>

QRect sliderHandle(const QSlider* slider)
{
    // QSlider::initStyleOption() is protected: fill the option the same way.
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = slider->orientation();
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    option.sliderPosition = slider->sliderPosition();
    option.sliderValue = slider->value();
    option.upsideDown = (slider->orientation() == Qt::Horizontal)
        ? (slider->invertedAppearance() != (option.direction == Qt::RightToLeft))
        : (!slider->invertedAppearance());
    return slider->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider);
}

void dragSlider(QSlider* slider, int distance)
{
    QList<int> offsets;
    const int step = distance < 0 ? -10 : 10;
    for (int dx = step; qAbs(dx) < qAbs(distance); dx += step)
        offsets << dx;
    dragSlider(slider, offsets << distance);
}

void dragSlider(QSlider* slider, const QList<int>& offsets)
{
    QList<QPoint> points;
    for (const int dx : offsets)
        points << QPoint(dx, 0);
    dragWidget(slider, sliderHandle(slider).center(), points);
}

void dragWidget(QWidget* widget, const QPoint& start, const QList<QPoint>& offsets)
{
    const QPoint globalStart = widget->mapToGlobal(start);
    QTest::mousePress(widget, Qt::LeftButton, {}, start);
    for (const QPoint& offset : offsets) {
        const QPoint global = globalStart + offset;
        // QTest's moves carry no pressed button; a drag needs it.
        QMouseEvent move(QEvent::MouseMove, widget->mapFromGlobal(global), global, Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
    }
    const QPoint end = globalStart + (offsets.isEmpty() ? QPoint() : offsets.last());
    QTest::mouseRelease(widget, Qt::LeftButton, {}, widget->mapFromGlobal(end));
}