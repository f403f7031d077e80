#include "Kernel/ConsoleMessageFactory.h"

#include <iostream>
#include <utility>

namespace Kernel {

ConsoleMessageFactory& ConsoleMessageFactory::get()
{
    static ConsoleMessageFactory instance;
    return instance;
}

void ConsoleMessageFactory::Assert(bool condition, const std::string& expression, const std::string& source, int line)
{
    if (condition)
        return;
    ++m_assertCount;
    std::string text = "Assertion failed: " + expression + " (" + source;
    if (line > 0)
        text += ":" + std::to_string(line);
    text += ")";
    message(Severity::Assert, text);
}

void ConsoleMessageFactory::message(Severity severity, const std::string& text)
{
    if (m_handler) {
        m_handler(severity, text);
        return;
    }
    std::cerr << text << std::endl;
}

ConsoleMessageFactory::Handler ConsoleMessageFactory::setHandler(Handler handler)
{
    return std::exchange(m_handler, std::move(handler));
}

} // namespace Kernel
