#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

class QSlider;

/// The slider's handle as its style places it now.
QRect sliderHandle(const QSlider* slider);

/// Drags a horizontal slider's handle by @p distance pixels as a mouse
/// would: a press on the handle, moves in steps of 10 pixels with the button
/// held, and a release at the end.
void dragSlider(QSlider* slider, int distance);
/// Drags the handle through the horizontal @p offsets from where it was
/// pressed, releasing at the last one.
void dragSlider(QSlider* slider, const QList<int>& offsets);
