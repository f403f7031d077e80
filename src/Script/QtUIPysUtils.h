#pragma once

#include "OrvexQtUIBase_export.h"
#include "Widget/Chart/ChartMarkerTypes.h"

#include <QPointF>

#include <string>
#include <unordered_map>
#include <vector>

namespace Gui::Python {

/**
 * Builds the Python statements recorded for chart operations.
 *
 * Every recording function formats its statement(s), appends them to the
 * record manager and submits at once, so statements reach the host in the
 * order of the operations (or wait there while the host refuses recording).
 *
 * Arguments are Python expressions already: variable names as they are,
 * texts that come from users through `pyString`, lists through `pyList`.
 */
class ORVEXQTUIBASE_EXPORT QtUIPysUtils
{
public:
    QtUIPysUtils() = delete;

    /// "pelo3dqtui"
    static std::string moduleName();

    /// A single-quoted Python string literal denoting @p text (UTF-8). The
    /// result is plain ASCII: quotes, backslashes and control characters are
    /// escaped, other characters beyond ASCII written as \x, \u or \U escapes;
    /// bytes that are not valid UTF-8 come out as \x escapes of the byte.
    static std::string pyString(const std::string& text);
    /// "[a, b, ...]" from Python expressions.
    static std::string pyList(const std::vector<std::string>& items);

    static void addCmdContent(const std::string& statement);
    static void addCmdContent(const std::vector<std::string>& statements);

    /// var=owner.get_chart_view()
    static void getChartView(const std::string& var, const std::string& owner);
    /// var=chart.get_curve(curve)
    static void getCurve(const std::string& var, const std::string& chart, const std::string& curve);
    /// var=chart.get_marker(marker)
    static void getMarker(const std::string& var, const std::string& chart, const std::string& marker);
    /**
     * chart.add_marker(marker, [x,y], type, symbol), coordinates written with
     * six decimals. When @p owner is not empty, "chart=owner.get_chart_view()"
     * goes first, so the chart variable is bound before use.
     */
    static void addMarker(const std::string& owner, const std::string& chart, const std::string& marker,
                          const QPointF& pos, Widget::MarkerType type, Widget::MarkerSymbol symbol);
    /// obj.export_to(file)
    static void exportToFile(const std::string& obj, const std::string& file);
    /// obj.import_from([file, ...])
    static void importFromFiles(const std::string& obj, const std::vector<std::string>& files);
    /// obj.reset()
    static void reset(const std::string& obj);

    /// obj.set_properties({key : value})
    static void setProperty(const std::string& obj, const std::string& key, const std::string& value);
    /// obj.set_properties({k1 : v1, k2 : v2, ...}) in the map's iteration order.
    static void setProperties(const std::string& obj, const std::unordered_map<std::string, std::string>& props);
    /// chart.get_curve(curve).set_properties({...})
    static void setCurveProperties(const std::string& chart, const std::string& curve,
                                   const std::unordered_map<std::string, std::string>& props);
    /// chart.get_marker(marker).set_properties({...})
    static void setMarkerProperties(const std::string& chart, const std::string& marker,
                                    const std::unordered_map<std::string, std::string>& props);
    /// chart.get_marker(marker).set_properties({key : value})
    static void setMarkerProperty(const std::string& chart, const std::string& marker, const std::string& key,
                                  const std::string& value);
};

} // namespace Gui::Python
