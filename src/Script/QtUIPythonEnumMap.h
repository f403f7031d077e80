#pragma once

#include "OrvexQtUIBase_export.h"
#include "Widget/Chart/ChartMarkerTypes.h"
#include "Widget/Chart/OrvexChartView.h"

#include <map>
#include <string>

namespace Gui::Python {

/**
 * Python names of the chart enumerations, for recorded statements.
 *
 * Holds, per Python type ("PlotType", "MarkerType", "MarkerSymbol"), the map
 * from integer value to value name. `pythonText` answers
 * "<module>.<type>.<value name>", e.g. "pelo3dqtui.MarkerType.PointMarker".
 * A type or value missing from the maps is reported as a failed assertion to
 * the console message factory and answers "None", so the statement stays
 * valid Python. Enumerations of classes not known here are looked up by
 * their Python type name and integer value.
 */
class ORVEXQTUIBASE_EXPORT QtUIPythonEnumMap
{
public:
    static QtUIPythonEnumMap& Instance();

    QtUIPythonEnumMap(const QtUIPythonEnumMap&) = delete;
    QtUIPythonEnumMap& operator=(const QtUIPythonEnumMap&) = delete;

    std::string pythonText(const std::string& typeName, int value) const;
    std::string pythonText(Widget::MarkerType type) const;
    std::string pythonText(Widget::MarkerSymbol symbol) const;
    std::string pythonText(Widget::OrvexChartView::ViewType type) const;

    /// Whether @p typeName has a name for @p value.
    bool contains(const std::string& typeName, int value) const;

private:
    QtUIPythonEnumMap();

    std::map<std::string, std::map<int, std::string>> m_types;
};

} // namespace Gui::Python
