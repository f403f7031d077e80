#include "Widget/Table/OrvexAscendingHeaderView.h"

namespace Gui::Widget {

OrvexAscendingHeaderView::OrvexAscendingHeaderView(const QString& name, Qt::Orientation orientation, QWidget* parent,
                                                   bool scriptable)
    : AQHeaderView(name, orientation, parent, scriptable)
{
    setSectionsClickable(true);
    setSortIndicatorShown(true);
    setSortIndicator(-1, Qt::AscendingOrder);
    connect(this, &AQHeaderView::ASortIndicatorChanged, this, &QHeaderView::setSortIndicator);
}

} // namespace Gui::Widget
