#pragma once

#include <Kernel/OrvexBase_export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace Kernel {

class Unit;

namespace DM {

class ParserContext;

/// Deepest nesting of parentheses, signs and powers an expression may have.
constexpr int MaxExpressionNesting = 64;

/// What checking an expression found.
struct ExpressionCheck
{
    bool valid = false;
    /// The result's base units without scale, as UDUNITS writes them: "m",
    /// "m.s-1", "1" for a plain number. Empty when invalid.
    std::string dimension;
    /// Why the expression is invalid; empty when valid.
    std::string message;
    /// Byte offset in the text where the problem was found.
    std::size_t position = 0;
};

/**
 * Checks @p text (UTF-8) as an expression of numbers, the names of
 * @p context and units, and finds the dimension of its result. The rules,
 * as GNU units has them for sums and products:
 *
 * - Operators, from loosest to tightest: + and -; * and /; juxtaposition
 *   (a blank or nothing between two factors); unary - and +; ^ (right
 *   associative, with an optionally signed exponent). So "3 mm / 2 s" is
 *   (3 mm)/(2 s), "1/2 m" is 1/(2 m) and "-2^2" is -4.
 * - A name is a declared constant if @p context has it (a declared name
 *   wins over a unit of the same name), else a unit of the UDUNITS-2
 *   database with its prefixes and an optional integer power ("mm",
 *   "GHz", "m2", "µm", "degC"), plus "deg" for degrees.
 * - Sums and differences need operands of one dimension: "1 m + 3 mm" is a
 *   length, "2 mm + 3 s" is invalid. Plane angles are dimensionless, as in
 *   SI.
 * - A power of something with a dimension needs a number as exponent whose
 *   result has whole powers of the base units: "m^2", "(m^2)^0.5".
 * - Temperatures on a scale with an origin (degC, degF) are points, not
 *   amounts: they may be scaled by plain numbers ("20 degC"), a
 *   difference may be added to or subtracted from them ("20 degC + 5 K"),
 *   and two of them give a difference ("30 degC - 20 degC"); adding two of
 *   them, or multiplying, dividing or raising them otherwise, is invalid.
 * - Numbers that do not fit a double and division by a zero literal are
 *   invalid, and so is nesting deeper than MaxExpressionNesting.
 *
 * The empty text is invalid. Reads UDUNITS' database on first use; meant
 * for one thread (the user interface's).
 */
ORVEXBASE_EXPORT ExpressionCheck checkExpression(const ParserContext& context, std::string_view text);

/// Whether @p text is valid (see checkExpression()) and its result
/// measures what @p unit measures; a null @p unit, like the unit of plain
/// numbers, asks for a plain number.
ORVEXBASE_EXPORT bool isExpressionValid(const ParserContext& context, const std::string& text, const Unit* unit);

} // namespace DM
} // namespace Kernel
