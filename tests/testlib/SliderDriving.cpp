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
    const QPoint start = sliderHandle(slider).center();
    QTest::mousePress(slider, Qt::LeftButton, {}, start);
    for (const int dx : offsets) {
        const QPoint at = start + QPoint(dx, 0);
        // QTest's moves carry no pressed button; a drag needs it.
        QMouseEvent move(QEvent::MouseMove, at, slider->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(slider, &move);
    }
    QTest::mouseRelease(slider, Qt::LeftButton, {}, start + QPoint(offsets.isEmpty() ? 0 : offsets.last(), 0));
}
