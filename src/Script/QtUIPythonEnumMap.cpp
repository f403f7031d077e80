#include "Script/QtUIPythonEnumMap.h"

#include "Script/QtUIPysUtils.h"

#include <Kernel/ConsoleMessageFactory.h>

#include <fmt/format.h>

namespace Gui::Python {

namespace {

const char* const kAssertSource = "Script/OrvexQtUIBasePythonUtility";

} // namespace

QtUIPythonEnumMap& QtUIPythonEnumMap::Instance()
{
    static QtUIPythonEnumMap map;
    return map;
}

QtUIPythonEnumMap::QtUIPythonEnumMap()
{
    using Widget::MarkerType;
    using View = Widget::OrvexChartView;
    m_types["PlotType"] = {{View::Line, "RectangleBrokenLine"}, {View::Bar, "RectangleBar"}, {View::Polar, "Polar"}};
    m_types["MarkerType"] = {
        {static_cast<int>(MarkerType::PointMarker), "PointMarker"},
        {static_cast<int>(MarkerType::HorizontalLineMarker), "HorizontalLineMarker"},
        {static_cast<int>(MarkerType::VerticalLineMarker), "VerticalLineMarker"},
    };
    m_types["MarkerSymbol"] = {
        {Widget::BackwardSlash, "BackwardSlash"},
        {Widget::Circle, "Circle"},
        {Widget::Cross, "Cross"},
        {Widget::Diamond, "Diamond"},
        {Widget::ForwardSlash, "ForwardSlash"},
        {Widget::HorizontalLine, "HorizontalLine"},
        {Widget::InvertedTriangle, "InvertedTriangle"},
        {Widget::None, "None"},
        {Widget::Plus, "Plus"},
        {Widget::Rectangle, "Rectangle"},
        {Widget::Triangle, "Triangle"},
        {Widget::VerticalLine, "VerticalLine"},
    };
}

bool QtUIPythonEnumMap::contains(const std::string& typeName, int value) const
{
    const auto type = m_types.find(typeName);
    return type != m_types.end() && type->second.count(value) == 1;
}

std::string QtUIPythonEnumMap::pythonText(const std::string& typeName, int value) const
{
    auto& console = Kernel::ConsoleMessageFactory::get();
    const auto type = m_types.find(typeName);
    const bool knownType = type != m_types.end();
    console.Assert(knownType, "typeMap.count(etype) == 1", kAssertSource, __LINE__);
    if (!knownType)
        return "None";
    const auto& valueMap = type->second;
    const int evalue = value;
    const bool knownValue = valueMap.count(evalue) == 1;
    console.Assert(knownValue, "valueMap.count(evalue) == 1", kAssertSource, __LINE__);
    if (!knownValue)
        return "None";
    return fmt::format("{0}.{1}.{2}", QtUIPysUtils::moduleName(), typeName, valueMap.at(evalue));
}

std::string QtUIPythonEnumMap::pythonText(Widget::MarkerType type) const
{
    return pythonText("MarkerType", static_cast<int>(type));
}

std::string QtUIPythonEnumMap::pythonText(Widget::MarkerSymbol symbol) const
{
    return pythonText("MarkerSymbol", static_cast<int>(symbol));
}

std::string QtUIPythonEnumMap::pythonText(Widget::OrvexChartView::ViewType type) const
{
    return pythonText("PlotType", static_cast<int>(type));
}

} // namespace Gui::Python
