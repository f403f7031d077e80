// The quantity and unit catalogue, and the unit settings built on it.
#include "Kernel/DM/IDocument.h"
#include "Kernel/Quantity.h"
#include "Kernel/Unit.h"
#include "Kernel/UnitEngine_p.h"
#include "Kernel/UnitSettings.h"
#include "Kernel/VSUtil.h"

#include <memory>

namespace Kernel {

namespace {

struct QuantityRow
{
    Quantity::Kind kind;
    const char* name;
    std::vector<const char*> units; // in UDUNITS' syntax; the SI unit first
    const char* defaultUnit;
};

// Only the names offered to people: what each one means is UDUNITS'.
const std::vector<QuantityRow>& rows()
{
    using K = Quantity::Kind;
    static const std::vector<QuantityRow> table{
        {K::None, "None", {""}, ""},
        {K::Length, "Length", {"m", "mm", "um", "nm", "cm", "km", "mil", "in", "ft"}, "mm"},
        {K::Frequency, "Frequency", {"Hz", "kHz", "MHz", "GHz", "THz"}, "GHz"},
        {K::Time, "Time", {"s", "ms", "us", "ns", "ps", "fs", "min", "h"}, "ns"},
        {K::Angle, "Angle", {"rad", "deg", "mrad"}, "deg"},
        {K::Voltage, "Voltage", {"V", "mV", "uV", "kV"}, "V"},
        {K::Current, "Current", {"A", "mA", "uA", "kA"}, "A"},
        {K::Power, "Power", {"W", "mW", "uW", "kW", "MW"}, "W"},
        {K::Temperature, "Temperature", {"K", "degC", "degF"}, "degC"},
        {K::Mass, "Mass", {"kg", "g", "mg", "t", "lb"}, "kg"},
        {K::Pressure, "Pressure", {"Pa", "kPa", "MPa", "bar", "psi", "atm"}, "Pa"},
        {K::Velocity, "Velocity", {"m/s", "km/h", "mm/s", "ft/s"}, "m/s"},
    };
    return table;
}

} // namespace

struct UnitCatalogue
{
    std::vector<std::unique_ptr<Quantity>> quantities;
    std::vector<std::unique_ptr<Unit>> units;
    std::vector<const Quantity*> all;

    static const UnitCatalogue& instance()
    {
        static const UnitCatalogue catalogue;
        return catalogue;
    }

    UnitCatalogue()
    {
        Pvt::UnitEngine& engine = Pvt::UnitEngine::instance();
        for (const QuantityRow& row : rows()) {
            Quantity& quantity = *quantities.emplace_back(new Quantity(row.kind, row.name));
            for (const char* symbol : row.units) {
                units.emplace_back(new Unit(symbol, &quantity, engine.pinned(symbol)));
                quantity.m_units.push_back(units.back().get());
            }
            all.push_back(&quantity);
        }
    }
};

Quantity::Quantity(Kind kind, std::string name)
    : m_kind(kind)
    , m_name(std::move(name))
{
}

const Quantity& Quantity::NoneUnitQuantity()
{
    return get(Kind::None);
}

const Quantity& Quantity::get(Kind kind)
{
    return *UnitCatalogue::instance().all.at(static_cast<std::size_t>(kind));
}

const std::vector<const Quantity*>& Quantity::all()
{
    return UnitCatalogue::instance().all;
}

std::string Quantity::predefinedUnitName(const Unit* unit)
{
    return unit ? unit->symbol() : std::string();
}

Unit::Unit(std::string symbol, const Quantity* quantity, const ut_unit* handle)
    : m_symbol(std::move(symbol))
    , m_quantity(quantity)
    , m_handle(handle)
{
}

const Unit* Unit::fromSymbol(std::string_view symbol)
{
    for (const auto& unit : UnitCatalogue::instance().units) {
        if (unit->symbol() == symbol)
            return unit.get();
    }
    return nullptr;
}

const Unit* Unit::predefinedUnit(const Quantity& quantity)
{
    return quantity.units().front();
}

UnitSettings::UnitSettings()
{
    for (const QuantityRow& row : rows())
        m_defaults[row.kind] = Unit::fromSymbol(row.defaultUnit);
}

const Unit* UnitSettings::getDefaultUnit(const Unit* predefinedUnit) const
{
    return predefinedUnit ? defaultUnit(predefinedUnit->quantity()) : nullptr;
}

const Unit* UnitSettings::defaultUnit(const Quantity& quantity) const
{
    return m_defaults.at(quantity.kind());
}

bool UnitSettings::setDefaultUnit(const Unit* unit)
{
    if (!unit)
        return false;
    m_defaults[unit->quantity().kind()] = unit;
    return true;
}

const UnitSettings& VSUtil::unitSettings(const DM::IDocument* document)
{
    static const UnitSettings defaults;
    return document ? document->unitSettings() : defaults;
}

} // namespace Kernel
