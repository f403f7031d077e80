#pragma once

#include <Kernel/OrvexBase_export.h>

#include <cstddef>
#include <functional>
#include <string>

namespace Kernel {

/**
 * The platform's console message sink. Library code reports failed
 * assertions and diagnostics here instead of aborting: the host decides
 * where messages go by installing a handler. Without a handler, messages are
 * written to the standard error stream, one per line.
 */
class ORVEXBASE_EXPORT ConsoleMessageFactory
{
public:
    enum class Severity { Info, Warning, Error, Assert };
    using Handler = std::function<void(Severity, const std::string&)>;

    static ConsoleMessageFactory& get();

    /// Reports "Assertion failed: <expression> (<source>:<line>)" when
    /// @p condition is false; does nothing otherwise.
    void Assert(bool condition, const std::string& expression, const std::string& source, int line = 0);

    void message(Severity severity, const std::string& text);

    /// Installs @p handler (an empty one restores the standard error
    /// stream) and answers the previous one.
    Handler setHandler(Handler handler);

    /// Number of failed assertions reported in this process.
    std::size_t assertCount() const { return m_assertCount; }

private:
    ConsoleMessageFactory() = default;
    Handler m_handler;
    std::size_t m_assertCount = 0;
};

} // namespace Kernel
