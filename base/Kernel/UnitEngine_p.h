#pragma once

// The process's one UDUNITS-2 unit system and the cache of unit lookups that
// the expression checker and the unit catalogue share. Not installed: only
// the platform library's own sources include UDUNITS.

#include <udunits2.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Kernel::Pvt {

struct UnitFree
{
    void operator()(ut_unit* unit) const { ut_free(unit); }
};
using UnitPtr = std::unique_ptr<ut_unit, UnitFree>;

/// A unit that is either borrowed (from the cache, alive for the process)
/// or owned; empty stands for a plain number.
class UnitRef
{
public:
    UnitRef() = default;
    static UnitRef borrowed(const ut_unit* unit)
    {
        UnitRef ref;
        ref.m_unit = unit;
        return ref;
    }
    static UnitRef owned(ut_unit* unit)
    {
        UnitRef ref;
        ref.m_owned.reset(unit);
        ref.m_unit = unit;
        return ref;
    }

    const ut_unit* get() const { return m_unit; }
    explicit operator bool() const { return m_unit != nullptr; }

private:
    const ut_unit* m_unit = nullptr;
    UnitPtr m_owned;
};

/// What a unit name stands for.
struct UnitLookup
{
    UnitRef unit; ///< empty: not a unit
    bool offset = false; ///< a scale with an origin, such as degC
};

class UnitEngine
{
public:
    /// The engine, reading UDUNITS' XML database on the first call (a few
    /// milliseconds); a database that cannot be read is reported once
    /// through the console message factory and leaves isLoaded() false.
    static UnitEngine& instance();

    ~UnitEngine();
    UnitEngine(const UnitEngine&) = delete;
    UnitEngine& operator=(const UnitEngine&) = delete;

    bool isLoaded() const { return m_system != nullptr; }
    /// The dimensionless unit one (null when not loaded).
    const ut_unit* one() const { return m_one; }

    /// The unit that a single symbol or name stands for, prefixes and a
    /// trailing integer power included ("mm", "GHz", "kilogram", "m2").
    /// Answers are cached, up to a bound that keeps hostile input from
    /// growing the cache without end; past it, lookups are parsed afresh.
    UnitLookup lookup(std::string_view name);
    /// A unit written in UDUNITS' own syntax ("km/h"), kept for the
    /// process: for the unit catalogue. Null when UDUNITS does not know it.
    const ut_unit* pinned(const std::string& text);

    /// Whether @p a and @p b measure the same thing (null means one).
    bool convertible(const ut_unit* a, const ut_unit* b) const;
    /// The base units of @p unit without scale and origin: "m", "m.s-1",
    /// "1" for a plain number (null).
    std::string dimensionText(const ut_unit* unit) const;

private:
    UnitEngine();
    bool hasOffset(const ut_unit* unit) const;

    struct Entry
    {
        UnitPtr unit;
        bool offset = false;
    };

    ut_system* m_system = nullptr;
    const ut_unit* m_one = nullptr;
    std::unordered_map<std::string, Entry> m_cache;
    std::vector<UnitPtr> m_pinned;
};

} // namespace Kernel::Pvt
