#pragma once

#include <Kernel/OrvexBase_export.h>

#include <cstddef>
#include <string_view>

namespace Kernel::DM {

/**
 * Number literals of expressions: digits with an optional fraction and
 * exponent ("12", "0.5", ".5", "5.", "1.5e-3"), read the same whatever the
 * C locale. Signs are operators of the expression, not part of a literal.
 */
class ORVEXBASE_EXPORT NumberExpression
{
public:
    struct Literal
    {
        std::size_t length = 0; ///< bytes the literal takes; 0: none here
        double value = 0.0;
        bool inRange = true; ///< false when the value does not fit a double
    };

    /// The literal at the start of @p text.
    static Literal scan(std::string_view text);
    /// Whether @p text, blanks around it ignored, is one plain number with
    /// an optional sign ("5", " -2.5e3 "); its value goes to @p value.
    static bool read(std::string_view text, double* value);
};

} // namespace Kernel::DM
