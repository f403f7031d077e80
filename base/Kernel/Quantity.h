#pragma once

#include <Kernel/OrvexBase_export.h>

#include <string>
#include <vector>

namespace Kernel {

class Unit;

/**
 * A kind of physical quantity the product shows (length, frequency, ...),
 * with the units offered for it. The quantities and their units form a
 * fixed catalogue that lives for the whole process; the units' meaning
 * (dimension and scale) comes from the UDUNITS-2 database, read once, on
 * first use.
 *
 * Angles are plane angles as in SI: their units ("rad", "deg") are
 * dimensionless, so an angle box accepts a plain number (in radians) and
 * a dimensionless box accepts "30 deg".
 */
class ORVEXBASE_EXPORT Quantity
{
public:
    enum class Kind {
        None,
        Length,
        Frequency,
        Time,
        Angle,
        Voltage,
        Current,
        Power,
        Temperature,
        Mass,
        Pressure,
        Velocity,
    };

    /// The quantity of plain numbers: its one unit has the empty name.
    static const Quantity& NoneUnitQuantity();
    static const Quantity& get(Kind kind);
    /// Every quantity of the catalogue, in the order of Kind.
    static const std::vector<const Quantity*>& all();
    /// The name a field shows for @p unit ("mm", "GHz"): empty for a null
    /// unit and for the unit of plain numbers.
    static std::string predefinedUnitName(const Unit* unit);

    Kind kind() const { return m_kind; }
    /// English name, such as "Length".
    const std::string& name() const { return m_name; }
    /// The units offered for this quantity; the first is its SI unit.
    const std::vector<const Unit*>& units() const { return m_units; }

    Quantity(const Quantity&) = delete;
    Quantity& operator=(const Quantity&) = delete;

private:
    friend struct UnitCatalogue;
    Quantity(Kind kind, std::string name);

    Kind m_kind;
    std::string m_name;
    std::vector<const Unit*> m_units;
};

} // namespace Kernel
