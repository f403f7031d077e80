#pragma once

#include <Kernel/OrvexBase_export.h>
#include <Kernel/Quantity.h>

#include <map>

namespace Kernel {

class Unit;

/**
 * The units a document shows its values in, one per quantity. Defaults
 * suit an electromagnetic, thermal and fluid-flow model: mm, GHz, ns, deg,
 * V, A, W, degC, kg, Pa and m/s; plain numbers have no unit.
 */
class ORVEXBASE_EXPORT UnitSettings
{
public:
    UnitSettings();

    /// The unit to show values in for the quantity that @p predefinedUnit
    /// measures (null for null).
    const Unit* getDefaultUnit(const Unit* predefinedUnit) const;
    const Unit* defaultUnit(const Quantity& quantity) const;
    /// Makes @p unit the default of the quantity it measures; false (and
    /// nothing changes) for null.
    bool setDefaultUnit(const Unit* unit);

private:
    std::map<Quantity::Kind, const Unit*> m_defaults;
};

} // namespace Kernel
