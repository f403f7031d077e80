#include "Script/QtUIPysUtils.h"

#include "Script/QtUIBasePythonRecordManager.h"
#include "Script/QtUIPythonEnumMap.h"

#include <fmt/format.h>

namespace Gui::Python {

namespace {

void record(std::vector<std::string> statements)
{
    auto* manager = QtUIBasePythonRecordManager::instance();
    manager->addContent(statements);
    manager->submitContent();
}

template<typename Entries>
std::string propertyStatement(const std::string& target, const Entries& entries)
{
    // Head, brace, entries, closing: fmt would read a literal brace next to
    // a placeholder as an escape, so the pieces are joined by hand.
    std::string statement = fmt::format("{0}.set_properties(", target);
    statement += "{";
    bool first = true;
    for (const auto& [key, value] : entries) {
        if (!first)
            statement += ", ";
        statement += fmt::format("{0} : {1}", key, value);
        first = false;
    }
    statement += "})";
    return statement;
}

// Decodes one UTF-8 sequence at @p i; answers the code point and advances @p i,
// or answers -1 (leaving @p i) when the bytes there are not valid UTF-8.
long decodeUtf8(const std::string& s, std::size_t& i)
{
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
    const unsigned char lead = byte(i);
    int length = 0;
    long cp = 0;
    long minimum = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2; cp = lead & 0x1F; minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3; cp = lead & 0x0F; minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4; cp = lead & 0x07; minimum = 0x10000;
    } else {
        return -1;
    }
    if (i + static_cast<std::size_t>(length) > s.size())
        return -1;
    for (int k = 1; k < length; ++k) {
        const unsigned char c = byte(i + static_cast<std::size_t>(k));
        if ((c & 0xC0) != 0x80)
            return -1;
        cp = (cp << 6) | (c & 0x3F);
    }
    if (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        return -1;
    i += static_cast<std::size_t>(length);
    return cp;
}

} // namespace

std::string QtUIPysUtils::moduleName()
{
    return "pelo3dqtui";
}

std::string QtUIPysUtils::pyString(const std::string& text)
{
    std::string out = "'";
    out.reserve(text.size() + 2);
    std::size_t i = 0;
    while (i < text.size()) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c < 0x80) {
            ++i;
            switch (c) {
            case '\'': out += "\\'"; break;
            case '\\': out += "\\\\"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            default:
                if (c < 0x20 || c == 0x7F)
                    out += fmt::format("\\x{:02x}", c);
                else
                    out += static_cast<char>(c);
            }
            continue;
        }
        const long cp = decodeUtf8(text, i);
        if (cp < 0) {
            out += fmt::format("\\x{:02x}", c);
            ++i;
        } else if (cp <= 0xFF) {
            out += fmt::format("\\x{:02x}", cp);
        } else if (cp <= 0xFFFF) {
            out += fmt::format("\\u{:04x}", cp);
        } else {
            out += fmt::format("\\U{:08x}", cp);
        }
    }
    out += "'";
    return out;
}

std::string QtUIPysUtils::pyList(const std::vector<std::string>& items)
{
    return fmt::format("[{0}]", fmt::join(items, ", "));
}

void QtUIPysUtils::addCmdContent(const std::string& statement)
{
    record({statement});
}

void QtUIPysUtils::addCmdContent(const std::vector<std::string>& statements)
{
    record(statements);
}

void QtUIPysUtils::getChartView(const std::string& var, const std::string& owner)
{
    record({fmt::format("{0}={1}.get_chart_view()", var, owner)});
}

void QtUIPysUtils::getCurve(const std::string& var, const std::string& chart, const std::string& curve)
{
    record({fmt::format("{0}={1}.get_curve({2})", var, chart, curve)});
}

void QtUIPysUtils::getMarker(const std::string& var, const std::string& chart, const std::string& marker)
{
    record({fmt::format("{0}={1}.get_marker({2})", var, chart, marker)});
}

void QtUIPysUtils::addMarker(const std::string& owner, const std::string& chart, const std::string& marker,
                             const QPointF& pos, Widget::MarkerType type, Widget::MarkerSymbol symbol)
{
    const auto& enums = QtUIPythonEnumMap::Instance();
    std::vector<std::string> statements;
    if (!owner.empty())
        statements.push_back(fmt::format("{0}={1}.get_chart_view()", chart, owner));
    statements.push_back(fmt::format("{0}.add_marker({1}, [{2:f},{3:f}], {4}, {5})", chart, marker, pos.x(), pos.y(),
                                     enums.pythonText(type), enums.pythonText(symbol)));
    record(std::move(statements));
}

void QtUIPysUtils::exportToFile(const std::string& obj, const std::string& file)
{
    record({fmt::format("{0}.export_to({1})", obj, file)});
}

void QtUIPysUtils::importFromFiles(const std::string& obj, const std::vector<std::string>& files)
{
    record({fmt::format("{0}.import_from({1})", obj, pyList(files))});
}

void QtUIPysUtils::reset(const std::string& obj)
{
    record({fmt::format("{0}.reset()", obj)});
}

void QtUIPysUtils::setProperty(const std::string& obj, const std::string& key, const std::string& value)
{
    record({propertyStatement(obj, std::vector<std::pair<std::string, std::string>>{{key, value}})});
}

void QtUIPysUtils::setProperties(const std::string& obj, const std::unordered_map<std::string, std::string>& props)
{
    record({propertyStatement(obj, props)});
}

void QtUIPysUtils::setCurveProperties(const std::string& chart, const std::string& curve,
                                      const std::unordered_map<std::string, std::string>& props)
{
    record({propertyStatement(fmt::format("{0}.get_curve({1})", chart, curve), props)});
}

void QtUIPysUtils::setMarkerProperties(const std::string& chart, const std::string& marker,
                                       const std::unordered_map<std::string, std::string>& props)
{
    record({propertyStatement(fmt::format("{0}.get_marker({1})", chart, marker), props)});
}

void QtUIPysUtils::setMarkerProperty(const std::string& chart, const std::string& marker, const std::string& key,
                                     const std::string& value)
{
    const auto target = fmt::format("{0}.get_marker({1})", chart, marker);
    record({propertyStatement(target, std::vector<std::pair<std::string, std::string>>{{key, value}})});
}

} // namespace Gui::Python
