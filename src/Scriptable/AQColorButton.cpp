#include "Scriptable/AQColorButton.h"

#include <QPainter>

namespace QtUIBase {

AQColorButton::AQColorButton(const QString& name, const QColor& color, QWidget* parent, bool scriptable)
    : AQPushButton(name, QString(), parent, scriptable)
    , m_color(color)
{
    initColors();
}

AQColorButton::AQColorButton(QWidget* parent)
    : AQPushButton(parent)
{
    initColors();
}

void AQColorButton::initColors()
{
    const QPalette& pal = palette();
    m_outlineColor = pal.color(QPalette::Shadow);
    m_highlight = pal.color(QPalette::Highlight);
    m_selectedColor = pal.color(QPalette::Highlight).darker(200);
    m_background = pal.color(QPalette::Window);
    // Hover changes the fill, so the button must hear about it.
    setAttribute(Qt::WA_Hover);
}

void AQColorButton::setColor(const QColor& color)
{
    m_color = color;
    update();
}

void AQColorButton::changeColor(const QColor& color)
{
    setColor(color);
}

void AQColorButton::setOutlined(bool outlined)
{
    m_outlined = outlined;
    update();
}

void AQColorButton::setSelected(bool selected)
{
    m_selected = selected;
    update();
}

void AQColorButton::setColorSpace(int space)
{
    m_colorSpace = space;
    update();
}

void AQColorButton::setOutlineColor(const QColor& color)
{
    m_outlineColor = color;
    update();
}

void AQColorButton::setHighlight(const QColor& color)
{
    m_highlight = color;
    update();
}

void AQColorButton::setSelectedColor(const QColor& color)
{
    m_selectedColor = color;
    update();
}

QSize AQColorButton::sizeHint() const
{
    return QSize(40, 22);
}

QColor AQColorButton::fillColor() const
{
    if (!m_outlined)
        return m_background;
    if (m_hovered)
        return m_highlight;
    return m_selected ? m_selectedColor : m_background;
}

void AQColorButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(m_outlineColor);
    painter.setBrush(fillColor());
    painter.drawRect(0, 0, width() - 1, height() - 1);

    painter.setPen(m_color);
    painter.setBrush(m_color);
    if (m_outlined) {
        const int s = m_colorSpace;
        painter.drawRect(s, s, width() - 2 * s - 1, height() - 2 * s - 1);
    } else {
        painter.drawRect(0, 0, width() - 1, height() - 1);
    }
}

void AQColorButton::enterEvent(QEvent* event)
{
    m_hovered = true;
    AQPushButton::enterEvent(event);
}

void AQColorButton::leaveEvent(QEvent* event)
{
    m_hovered = false;
    AQPushButton::leaveEvent(event);
}

} // namespace QtUIBase
