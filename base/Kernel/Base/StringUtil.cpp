#include "Kernel/Base/StringUtil.h"

#include "Kernel/Base/SysConstants.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Kernel::Base {

std::string_view StringUtil::trim(std::string_view text)
{
    while (!text.empty() && isWhitespace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isWhitespace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string StringUtil::quote(std::string_view text)
{
    std::string quoted;
    quoted.reserve(text.size() + 2);
    quoted += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    quoted += '"';
    return quoted;
}

std::string StringUtil::removeTrailingZeros(std::string_view number)
{
    const std::size_t point = number.find('.');
    if (point == std::string_view::npos)
        return std::string(number);
    std::size_t exponent = number.find_first_of("eE", point);
    if (exponent == std::string_view::npos)
        exponent = number.size();
    std::size_t end = exponent;
    while (end > point + 1 && number[end - 1] == '0')
        --end;
    if (end == point + 1)
        end = point;
    std::string result(number.substr(0, end));
    result += number.substr(exponent);
    return result;
}

std::string StringUtil::formatDouble(double value)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    char buffer[64];
    const double magnitude = std::fabs(value);
    std::to_chars_result written;
    if (magnitude != 0.0
        && (magnitude >= SysConstants::bigNumberThreshold() || magnitude < SysConstants::smallNumberThreshold())) {
        written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific,
                                SysConstants::doubleSignificantDigits() - 1);
    } else {
        // Digits before the point use up significant digits too.
        const int integerDigits = magnitude >= 1.0 ? static_cast<int>(std::floor(std::log10(magnitude))) + 1 : 0;
        const int decimals = std::clamp(SysConstants::doubleSignificantDigits() - integerDigits, 0,
                                        SysConstants::doubleMaxDecimals());
        written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    }
    std::string text = removeTrailingZeros(std::string_view(buffer, static_cast<std::size_t>(written.ptr - buffer)));
    // Rounding can leave a negative zero ("-0" for -1e-13 is not helpful).
    if (text == "-0")
        text = "0";
    return text;
}

} // namespace Kernel::Base
