#include "Widget/ComboBox/OrvexComboBox.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>

namespace Gui::Widget {

OrvexComboBox::OrvexComboBox(const QString& name, QWidget* parent, bool scriptable)
    : AQComboBox(name, parent, scriptable)
{
}

int OrvexComboBox::popupWidthHint() const
{
    QAbstractItemView* list = view();
    int width = list->sizeHintForColumn(modelColumn()) + 2 * list->frameWidth();
    // A scroll bar takes its share when not every item fits.
    if (count() > maxVisibleItems())
        width += style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list->verticalScrollBar());
    return width;
}

void OrvexComboBox::showPopup()
{
    AQComboBox::showPopup();
    // Some styles fit the popup to its items already, others keep it as
    // wide as the box: widen it only where it falls short.
    QWidget* popup = view()->window();
    if (popup == window())
        return;
    int width = popupWidthHint() + popup->width() - view()->width();
    if (width <= popup->width())
        return;
    QRect area = popup->screen() ? popup->screen()->availableGeometry() : QRect();
    QRect geometry = popup->geometry();
    if (area.isValid()) {
        width = qMin(width, area.width());
        geometry.setWidth(width);
        if (geometry.right() > area.right())
            geometry.moveRight(area.right());
    } else {
        geometry.setWidth(width);
    }
    popup->setGeometry(geometry);
}

} // namespace Gui::Widget
