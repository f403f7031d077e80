#pragma once

#include <Kernel/OrvexBase_export.h>

#include <string>
#include <string_view>

namespace Kernel::Base {

/**
 * Small text helpers shared by the platform's parsers and formatters. They
 * work on bytes: blanks are the ASCII ones, and UTF-8 text passes through
 * unchanged.
 */
class ORVEXBASE_EXPORT StringUtil
{
public:
    /// Blank, tab, line feed, carriage return, vertical tab and form feed.
    static constexpr bool isWhitespace(char c)
    {
        return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
    }
    /// @p text without leading and trailing whitespace.
    static std::string_view trim(std::string_view text);
    /// @p text in double quotes, with embedded quotes and backslashes
    /// escaped by a backslash: for messages that name what the user typed.
    static std::string quote(std::string_view text);
    /// Drops the zeros that end the fraction of a decimal number, and the
    /// point when nothing is left after it: "2.500" gives "2.5", "3.000"
    /// gives "3", "1.50e+07" gives "1.5e+07". Text without a decimal point
    /// (such as "100") is returned unchanged.
    static std::string removeTrailingZeros(std::string_view number);
    /// @p value as the product shows numbers, whatever the C locale: fixed
    /// point with at most SysConstants::doubleMaxDecimals() decimals and
    /// never more than SysConstants::doubleSignificantDigits() significant
    /// digits, trailing zeros dropped ("2.5", "1250", "0.001"); exponent form
    /// outside the thresholds of SysConstants ("1e-09", "2.5e+20"); "nan",
    /// "inf" and "-inf" for the values that are not finite.
    static std::string formatDouble(double value);
};

} // namespace Kernel::Base
