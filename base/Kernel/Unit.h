#pragma once

#include <Kernel/OrvexBase_export.h>

#include <string>
#include <string_view>

union ut_unit;

namespace Kernel {

class Quantity;

/**
 * A unit of the catalogue (see Quantity): a name people type and read,
 * such as "mm", "GHz", "degC" or "km/h", the quantity it measures, and the
 * UDUNITS-2 unit behind it. Units are never copied: code holds pointers to
 * the catalogue's instances, which live for the process.
 */
class ORVEXBASE_EXPORT Unit
{
public:
    /// The unit of the catalogue named @p symbol, or null.
    static const Unit* fromSymbol(std::string_view symbol);
    /// The SI unit of @p quantity ("m" for a length, the empty-named unit
    /// for plain numbers).
    static const Unit* predefinedUnit(const Quantity& quantity);

    const std::string& symbol() const { return m_symbol; }
    const Quantity& quantity() const { return *m_quantity; }
    /// The UDUNITS-2 unit; null when the unit database is unavailable.
    const ut_unit* handle() const { return m_handle; }

    Unit(const Unit&) = delete;
    Unit& operator=(const Unit&) = delete;

private:
    friend struct UnitCatalogue;
    Unit(std::string symbol, const Quantity* quantity, const ut_unit* handle);

    std::string m_symbol;
    const Quantity* m_quantity;
    const ut_unit* m_handle;
};

} // namespace Kernel
