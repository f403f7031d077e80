#include "Kernel/DM/NumberExpression.h"

#include "Kernel/Base/StringUtil.h"

#include <charconv>

namespace Kernel::DM {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::size_t digitsAt(std::string_view text, std::size_t pos)
{
    std::size_t end = pos;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    return end - pos;
}

} // namespace

NumberExpression::Literal NumberExpression::scan(std::string_view text)
{
    Literal literal;
    std::size_t pos = digitsAt(text, 0);
    const std::size_t whole = pos;
    std::size_t fraction = 0;
    if (pos < text.size() && text[pos] == '.') {
        fraction = digitsAt(text, pos + 1);
        if (whole == 0 && fraction == 0)
            return literal;
        pos += 1 + fraction;
    }
    if (whole == 0 && fraction == 0)
        return literal;
    // An exponent only when digits follow: "2em" is 2 times a unit "em".
    if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
        std::size_t sign = pos + 1;
        if (sign < text.size() && (text[sign] == '+' || text[sign] == '-'))
            ++sign;
        const std::size_t exponent = digitsAt(text, sign);
        if (exponent > 0)
            pos = sign + exponent;
    }
    literal.length = pos;
    const auto [end, error] = std::from_chars(text.data(), text.data() + pos, literal.value);
    literal.inRange = error == std::errc() && end == text.data() + pos;
    return literal;
}

bool NumberExpression::read(std::string_view text, double* value)
{
    text = Base::StringUtil::trim(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const Literal literal = scan(text);
    if (literal.length == 0 || literal.length != text.size() || !literal.inRange)
        return false;
    if (value)
        *value = negative ? -literal.value : literal.value;
    return true;
}

} // namespace Kernel::DM
