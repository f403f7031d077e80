#pragma once

#include <Qt>

namespace QtUIBase {

/**
 * The kind of a column filter, stored as a plain int. A host model publishes
 * it as horizontal header data: in the display role for the filter header
 * (which picks the drop-down's editor from it) and in FilterKindRole for
 * the sorting proxy (which picks how a filter text is read).
 */
enum FilterKind {
    Text = 0,     ///< wildcard text typed by the user
    Real = 1,     ///< numeric conditions on doubles, e.g. ">1.5,<3"
    Integer = 2,  ///< numeric conditions on ints
    Region = 3,   ///< a rectangle "(x1,y1):(x2,y2)" holding the point value
    PassFail = 4, ///< "PASS" or "FAIL"; a true value passes
    OnOff = 5,    ///< "ON" or "OFF"; a true value is on
    Disabled = 6, ///< no filter; the drop-down is disabled
};

/// The condition picked in the filter dialog; 0 to 4 are the numeric list's items in order.
enum FilterCondition {
    ConditionUnlimited = 0,
    ConditionEqualTo = 1,
    ConditionLessThan = 2,
    ConditionGreaterThan = 3,
    ConditionInRange = 4,
    ConditionPass = 5,
    ConditionFail = 6,
    ConditionOn = 7,
    ConditionOff = 8,
};

/// Header-data role in which the sorting proxy reads a column's FilterKind.
constexpr int FilterKindRole = Qt::UserRole + 10;

} // namespace QtUIBase
