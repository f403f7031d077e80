#pragma once

#include "OrvexQtUIBase_export.h"

#include <QColor>
#include <QPushButton>

namespace Gui::Widget {

/**
 * A push button that shows a colour as a swatch and lets the user pick
 * another one with the colour dialog.
 *
 * Defaults: black, alpha not offered. Clicking opens a modal colour dialog;
 * a valid choice replaces the colour and emits `colorChanged`, a cancelled
 * dialog changes nothing. `setColor` does not emit.
 */
class ORVEXQTUIBASE_EXPORT OrvexCurveColorChooserButton : public QPushButton
{
    Q_OBJECT

public:
    explicit OrvexCurveColorChooserButton(const QColor& color = Qt::black, bool showAlpha = false,
                                          QWidget* parent = nullptr);

    QColor chosenColor() const { return m_color; }
    void setColor(const QColor& color);
    /// Whether the colour dialog offers the alpha channel.
    bool showAlphaChannel() const { return m_showAlpha; }
    void setShowAlphaChannel(bool show) { m_showAlpha = show; }

signals:
    void colorChanged(const QColor& color);

private:
    void chooseColor();
    void updateSwatch();

    QColor m_color;
    bool m_showAlpha = false;
};

} // namespace Gui::Widget
