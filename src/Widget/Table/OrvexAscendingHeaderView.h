#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQHeaderView.h"

namespace Gui::Widget {

/**
 * A header that shows the sort direction and toggles it by clicks: a view
 * that sorts starts unsorted with the indicator pointing ascending (a
 * plain QHeaderView would have the view sort its first column descending
 * at once), a click on a section sorts it ascending (unless the model's
 * InitialSortOrderRole says otherwise) and the next click on it toggles.
 *
 * Sort changes are recorded as AQHeaderView records them, and a replayed
 * "sortIndicatorChanged" sets the indicator, so the view sorts again.
 */
class ORVEXQTUIBASE_EXPORT OrvexAscendingHeaderView : public QtUIBase::AQHeaderView
{
    Q_OBJECT

public:
    OrvexAscendingHeaderView(const QString& name, Qt::Orientation orientation, QWidget* parent, bool scriptable);

    bool isAscending() const { return sortIndicatorOrder() == Qt::AscendingOrder; }
};

} // namespace Gui::Widget
