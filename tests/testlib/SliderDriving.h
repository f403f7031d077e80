#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

class QSlider;
class QWidget;

/// The slider's handle as its style places it now.
QRect sliderHandle(const QSlider* slider);

/// Drags a horizontal slider's handle by @p distance pixels as a mouse
/// would: a press on the handle, moves in steps of 10 pixels with the button
/// held, and a release at the end.
void dragSlider(QSlider* slider, int distance);
/// Drags the handle through the horizontal @p offsets from where it was
/// pressed, releasing at the last one.
void dragSlider(QSlider* slider, const QList<int>& offsets);

/// Drags with the left button as a mouse would: a press on @p widget at
/// @p start, moves with the button held through @p offsets (from the start,
/// in screen terms, so a widget that moves under the mouse does not skew
/// the drag) and a release at the last one.
void dragWidget(QWidget* widget, const QPoint& start, const QList<QPoint>& offsets);
