#pragma once

#include "OrvexQtUIBase_export.h"

#include "Widget/Filter/AQFilterHeaderView.h"

namespace Gui::Widget {

/**
 * A filter header for an OrvexSortFilterProxyModel, which filters one
 * column at a time: connect filterChanged() to the proxy's setFilter().
 *
 * Works as AQFilterHeaderView (drop-downs under the sections, the filter
 * dialog for numeric columns, recording and replay), but announces each
 * drop-down's text as it stands: the proxy reads wildcard text, "r "
 * followed by a regular expression, or conditions such as ">2,<4" itself.
 * Giving one column a filter puts every other drop-down back to "*"
 * silently, so the drop-downs always show the one filter in force.
 */
class ORVEXQTUIBASE_EXPORT OrvexFilterHeaderView : public QtUIBase::AQFilterHeaderView
{
    Q_OBJECT

public:
    OrvexFilterHeaderView(const QString& name, QWidget* parent, bool scriptable);

protected:
    QString patternFor(const QString& text, int kind) const override;

private:
    void showOnly(int column, const QString& text);
};

} // namespace Gui::Widget
