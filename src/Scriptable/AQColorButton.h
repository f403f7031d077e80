#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQPushButton.h"

#include <QColor>

namespace QtUIBase {

/**
 * A push button that shows a colour swatch; scripted as AQPushButton.
 *
 * Painting: the whole button is filled with the background colour (the
 * palette's Window role), or, while outlined, with the highlight colour when
 * hovered and the selected colour when selected; the swatch in color() is
 * drawn inset by colorSpace() pixels when outlined, over the whole button
 * otherwise. The pen is outlineColor().
 *
 * Defaults: outlined, not selected, colorSpace 2, outline colour the
 * palette's Shadow role, highlight the Highlight role, selected colour the
 * Highlight role made darker by a factor of 200.
 */
class ORVEXQTUIBASE_EXPORT AQColorButton : public AQPushButton
{
    Q_OBJECT
    Q_PROPERTY(QColor color READ color WRITE setColor)
    Q_PROPERTY(int colorSpace READ colorSpace WRITE setColorSpace)
    Q_PROPERTY(QColor outlineColor READ outlineColor WRITE setOutlineColor)
    Q_PROPERTY(QColor highlight READ highlight WRITE setHighlight)
    Q_PROPERTY(QColor selectedColor READ selectedColor WRITE setSelectedColor)

public:
    AQColorButton(const QString& name, const QColor& color, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable;
    /// the colour starts invalid.
    explicit AQColorButton(QWidget* parent = nullptr);

    QColor color() const { return m_color; }
    /// Stores the colour and repaints.
    void setColor(const QColor& color);

    bool outlined() const { return m_outlined; }
    void setOutlined(bool outlined);
    bool selected() const { return m_selected; }
    void setSelected(bool selected);

    QSize sizeHint() const override;

public Q_SLOTS:
    /// Slot form of setColor().
    void changeColor(const QColor& color);

protected:
    int colorSpace() const { return m_colorSpace; }
    void setColorSpace(int space);
    QColor outlineColor() const { return m_outlineColor; }
    void setOutlineColor(const QColor& color);
    QColor highlight() const { return m_highlight; }
    void setHighlight(const QColor& color);
    QColor selectedColor() const { return m_selectedColor; }
    void setSelectedColor(const QColor& color);

    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void initColors();
    QColor fillColor() const;

    QColor m_color;
    bool m_hovered = false;
    bool m_outlined = true;
    bool m_selected = false;
    int m_colorSpace = 2;
    QColor m_outlineColor;
    QColor m_highlight;
    QColor m_selectedColor;
    QColor m_background;
};

} // namespace QtUIBase
