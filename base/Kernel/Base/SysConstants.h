#pragma once

#include <Kernel/OrvexBase_export.h>

namespace Kernel::Base {

/**
 * Number limits the platform's formatters agree on, so that a value looks
 * the same in every field of the product.
 */
class ORVEXBASE_EXPORT SysConstants
{
public:
    /// Most decimals a double is written with (12); trailing zeros are
    /// dropped afterwards.
    static constexpr int doubleMaxDecimals() { return 12; }
    /// Significant digits a double holds reliably (15): fixed-point text
    /// never shows more, whatever the decimals allow.
    static constexpr int doubleSignificantDigits() { return 15; }
    /// Magnitudes from here up (1e15) are written in exponent form.
    static constexpr double bigNumberThreshold() { return 1e15; }
    /// Non-zero magnitudes below this (1e-6) are written in exponent form.
    static constexpr double smallNumberThreshold() { return 1e-6; }
};

} // namespace Kernel::Base
