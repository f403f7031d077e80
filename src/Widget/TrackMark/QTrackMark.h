#pragma once

#include "OrvexQtUIBase_export.h"

#include <QColor>
#include <QPointer>
#include <QSlider>
#include <QWidget>

namespace Gui::Widget {

/**
 * A mark on a slider's track at a given value, such as the value last
 * solved for or a recommended setting: a small triangle pointing at the
 * track with a tick across it, drawn where the centre of the slider's
 * handle stands at that value (whatever the style, orientation or
 * inverted appearance), in the palette's highlight colour unless set.
 *
 * The mark lies over its slider (it is the slider's child), follows its
 * size and range, is not drawn while its value is outside the range, and
 * lets every mouse event through to the slider. Several marks may share a
 * slider. Defaults: the value is the slider's minimum at construction.
 * Display only: nothing is recorded.
 */
class ORVEXQTUIBASE_EXPORT QTrackMark : public QWidget
{
    Q_OBJECT

public:
    explicit QTrackMark(QSlider* slider);

    QSlider* slider() const { return m_slider; }
    int value() const { return m_value; }
    void setValue(int value);
    QColor color() const;
    void setColor(const QColor& color);
    /// Where the mark stands, in the slider's coordinates: the handle's
    /// centre at value(). A null point while the value is out of range.
    QPoint markPosition() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QPointer<QSlider> m_slider;
    int m_value = 0;
    QColor m_color;
};

} // namespace Gui::Widget
