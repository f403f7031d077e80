#include "Widget/Chart/OrvexCurveColorChooserButton.h"

#include <QColorDialog>
#include <QPainter>
#include <QPixmap>

namespace Gui::Widget {

OrvexCurveColorChooserButton::OrvexCurveColorChooserButton(const QColor& color, bool showAlpha, QWidget* parent)
    : QPushButton(parent)
    , m_color(color)
    , m_showAlpha(showAlpha)
{
    setAutoDefault(false);
    setIconSize(QSize(40, 14));
    updateSwatch();
    connect(this, &QPushButton::clicked, this, &OrvexCurveColorChooserButton::chooseColor);
}

void OrvexCurveColorChooserButton::setColor(const QColor& color)
{
    m_color = color;
    updateSwatch();
}

void OrvexCurveColorChooserButton::chooseColor()
{
    QColorDialog::ColorDialogOptions options;
    if (m_showAlpha)
        options |= QColorDialog::ShowAlphaChannel;
    const QColor chosen = QColorDialog::getColor(m_color, this, QStringLiteral("Select Color"), options);
    if (!chosen.isValid() || chosen == m_color)
        return;
    setColor(chosen);
    emit colorChanged(m_color);
}

void OrvexCurveColorChooserButton::updateSwatch()
{
    QPixmap swatch(iconSize());
    swatch.fill(Qt::transparent);
    QPainter painter(&swatch);
    // A checkerboard under the colour makes translucent colours visible.
    if (m_color.alpha() < 255) {
        for (int x = 0; x < swatch.width(); x += 4)
            for (int y = 0; y < swatch.height(); y += 4)
                painter.fillRect(x, y, 4, 4, ((x + y) / 4) % 2 ? Qt::lightGray : Qt::white);
    }
    painter.fillRect(swatch.rect(), m_color);
    painter.setPen(Qt::darkGray);
    painter.drawRect(swatch.rect().adjusted(0, 0, -1, -1));
    painter.end();
    setIcon(QIcon(swatch));
    setToolTip(m_color.name(QColor::HexArgb));
}

} // namespace Gui::Widget
