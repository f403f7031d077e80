#include "Kernel/UnitEngine_p.h"

#include "Kernel/ConsoleMessageFactory.h"

#include <cctype>

namespace Kernel::Pvt {

namespace {

// Distinct names kept; a person typing uses a few dozen, a fuzzer millions.
constexpr std::size_t MaxCachedNames = 8192;

std::string definition(const ut_unit* unit)
{
    char buffer[512];
    const int length = ut_format(unit, buffer, sizeof buffer, UT_ASCII | UT_DEFINITION);
    if (length < 0 || static_cast<std::size_t>(length) >= sizeof buffer)
        return std::string();
    return std::string(buffer, static_cast<std::size_t>(length));
}

} // namespace

UnitEngine& UnitEngine::instance()
{
    static UnitEngine engine;
    return engine;
}

UnitEngine::UnitEngine()
{
    // UDUNITS reports every failed lookup on the standard error stream;
    // an unknown name is an ordinary answer here.
    ut_set_error_message_handler(ut_ignore);
    m_system = ut_read_xml(nullptr);
    if (!m_system) {
        ConsoleMessageFactory::get().message(ConsoleMessageFactory::Severity::Error,
                                             "The UDUNITS-2 unit database could not be read (status "
                                                 + std::to_string(static_cast<int>(ut_get_status()))
                                                 + "); expressions with units are invalid");
        return;
    }
    m_one = ut_get_dimensionless_unit_one(m_system);
    // "deg" is what people type for degrees; UDUNITS knows the unit as
    // "arc_degree" and "°" only.
    if (ut_unit* degree = ut_get_unit_by_name(m_system, "arc_degree")) {
        ut_map_symbol_to_unit("deg", UT_ASCII, degree);
        ut_free(degree);
    }
}

UnitEngine::~UnitEngine()
{
    m_cache.clear();
    m_pinned.clear();
    if (m_system)
        ut_free_system(m_system);
}

bool UnitEngine::hasOffset(const ut_unit* unit) const
{
    return definition(unit).find(" @ ") != std::string::npos;
}

UnitLookup UnitEngine::lookup(std::string_view name)
{
    UnitLookup result;
    if (!m_system || name.empty())
        return result;
    std::string key(name);
    const auto cached = m_cache.find(key);
    if (cached != m_cache.end()) {
        result.unit = UnitRef::borrowed(cached->second.unit.get());
        result.offset = cached->second.offset;
        return result;
    }
    Entry entry;
    entry.unit.reset(ut_parse(m_system, key.c_str(), UT_UTF8));
    entry.offset = entry.unit && hasOffset(entry.unit.get());
    result.offset = entry.offset;
    if (m_cache.size() >= MaxCachedNames) {
        result.unit = UnitRef::owned(entry.unit.release());
        return result;
    }
    result.unit = UnitRef::borrowed(entry.unit.get());
    m_cache.emplace(std::move(key), std::move(entry));
    return result;
}

const ut_unit* UnitEngine::pinned(const std::string& text)
{
    if (!m_system)
        return nullptr;
    if (text.empty())
        return m_one;
    ut_unit* unit = ut_parse(m_system, text.c_str(), UT_UTF8);
    if (unit)
        m_pinned.emplace_back(unit);
    return unit;
}

bool UnitEngine::convertible(const ut_unit* a, const ut_unit* b) const
{
    if (!a && !b)
        return true;
    a = a ? a : m_one;
    b = b ? b : m_one;
    return a && b && ut_are_convertible(a, b) != 0;
}

std::string UnitEngine::dimensionText(const ut_unit* unit) const
{
    if (!unit)
        return "1";
    std::string text = definition(unit);
    // "0.001 m" -> "m"; "K @ 273.15" -> "K".
    const std::size_t origin = text.find(" @ ");
    if (origin != std::string::npos)
        text.erase(origin);
    if (!text.empty() && (std::isdigit(static_cast<unsigned char>(text.front())) || text.front() == '.')) {
        const std::size_t blank = text.find(' ');
        text = blank == std::string::npos ? std::string("1") : text.substr(blank + 1);
    }
    return text;
}

} // namespace Kernel::Pvt
