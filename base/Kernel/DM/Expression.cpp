#include "Kernel/DM/Expression.h"

#include "Kernel/Base/StringUtil.h"
#include "Kernel/DM/NumberExpression.h"
#include "Kernel/DM/ParserContext.h"
#include "Kernel/Quantity.h"
#include "Kernel/Unit.h"
#include "Kernel/UnitEngine_p.h"

#include <cmath>

namespace Kernel::DM {

namespace {

using Base::StringUtil;
using Pvt::UnitEngine;
using Pvt::UnitRef;

/// A checked subexpression.
struct Value
{
    UnitRef unit; ///< empty: a plain number
    bool offset = false; ///< a temperature on a scale with an origin
    bool known = false; ///< made of number literals only, so its value is known
    double number = 0.0;
};

enum class Token { End, Number, Name, Plus, Minus, Star, Slash, Caret, Open, Close, Bad };

bool startsName(unsigned char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 0x80;
}

bool continuesName(unsigned char c)
{
    return startsName(c) || (c >= '0' && c <= '9');
}

/// Length of the well-formed UTF-8 sequence at @p pos, 0 when malformed.
std::size_t utf8Length(std::string_view text, std::size_t pos)
{
    const auto lead = static_cast<unsigned char>(text[pos]);
    std::size_t length = 0;
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        length = 2;
    else if (lead >= 0xE0 && lead <= 0xEF)
        length = 3;
    else if (lead >= 0xF0 && lead <= 0xF4)
        length = 4;
    else
        return 0;
    if (pos + length > text.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[pos + i]) & 0xC0) != 0x80)
            return 0;
    }
    return length;
}

/// Recursive descent over the grammar of checkExpression():
///   sum     := term (('+' | '-') term)*
///   term    := product (('*' | '/') product)*
///   product := unary power*            (juxtaposition)
///   unary   := ('-' | '+') unary | power
///   power   := primary ('^' exponent)?
///   exponent:= ('-' | '+') exponent | power
///   primary := number | name | '(' sum ')'
class Parser
{
public:
    Parser(const ParserContext& context, std::string_view text)
        : m_context(context)
        , m_engine(UnitEngine::instance())
        , m_text(text)
    {
        next();
    }

    bool parse(Value& result)
    {
        if (m_token == Token::End)
            return fail("empty expression");
        if (!sum(result))
            return false;
        if (m_token != Token::End)
            return fail("unexpected " + StringUtil::quote(m_tokenText));
        return true;
    }

    const std::string& message() const { return m_message; }
    std::size_t position() const { return m_errorPosition; }
    UnitEngine& engine() const { return m_engine; }

private:
    /// Counts one level of nesting for its scope.
    class Nesting
    {
    public:
        explicit Nesting(Parser& parser)
            : m_parser(parser)
        {
            ++m_parser.m_depth;
        }
        ~Nesting() { --m_parser.m_depth; }
        /// True, and the expression failed, past the deepest nesting allowed.
        bool tooDeep() const
        {
            if (m_parser.m_depth <= MaxExpressionNesting)
                return false;
            m_parser.fail("expression nested too deeply");
            return true;
        }

    private:
        Parser& m_parser;
    };

    bool fail(std::string message)
    {
        if (m_message.empty()) {
            m_message = std::move(message);
            m_errorPosition = m_tokenStart;
        }
        return false;
    }

    void next()
    {
        while (m_pos < m_text.size() && StringUtil::isWhitespace(m_text[m_pos]))
            ++m_pos;
        m_tokenStart = m_pos;
        if (m_pos == m_text.size()) {
            m_token = Token::End;
            m_tokenText = std::string_view();
            return;
        }
        const std::string_view rest = m_text.substr(m_pos);
        const auto c = static_cast<unsigned char>(rest.front());
        std::size_t length = 1;
        if (const NumberExpression::Literal literal = NumberExpression::scan(rest); literal.length > 0) {
            m_token = Token::Number;
            m_literal = literal;
            length = literal.length;
        } else if (startsName(c)) {
            m_token = Token::Name;
            length = 0;
            while (length < rest.size() && continuesName(static_cast<unsigned char>(rest[length]))) {
                const std::size_t sequence = utf8Length(rest, length);
                if (sequence == 0) {
                    m_token = Token::Bad;
                    length = std::max<std::size_t>(length, 1);
                    break;
                }
                length += sequence;
            }
        } else {
            switch (c) {
            case '+': m_token = Token::Plus; break;
            case '-': m_token = Token::Minus; break;
            case '*': m_token = Token::Star; break;
            case '/': m_token = Token::Slash; break;
            case '^': m_token = Token::Caret; break;
            case '(': m_token = Token::Open; break;
            case ')': m_token = Token::Close; break;
            default: m_token = Token::Bad; break;
            }
        }
        m_tokenText = rest.substr(0, length);
        m_pos += length;
    }

    bool sum(Value& value)
    {
        if (!term(value))
            return false;
        while (m_token == Token::Plus || m_token == Token::Minus) {
            const bool minus = m_token == Token::Minus;
            next();
            Value right;
            if (!term(right) || !add(value, right, minus))
                return false;
        }
        return true;
    }

    bool term(Value& value)
    {
        if (!product(value))
            return false;
        while (m_token == Token::Star || m_token == Token::Slash) {
            const bool divide = m_token == Token::Slash;
            next();
            Value right;
            if (!product(right))
                return false;
            if (!(divide ? this->divide(value, right) : multiply(value, right)))
                return false;
        }
        return true;
    }

    bool product(Value& value)
    {
        if (!unary(value))
            return false;
        while (m_token == Token::Number || m_token == Token::Name || m_token == Token::Open) {
            Value right;
            if (!power(right) || !multiply(value, right))
                return false;
        }
        return true;
    }

    bool isSign() const { return m_token == Token::Minus || m_token == Token::Plus; }

    /// A sign before what @p operand reads; each sign nests one level.
    bool signedOperand(Value& value, bool (Parser::*operand)(Value&))
    {
        const bool minus = m_token == Token::Minus;
        const Nesting nesting(*this);
        if (nesting.tooDeep())
            return false;
        next();
        if (!(this->*operand)(value))
            return false;
        if (minus)
            value.number = -value.number;
        return true;
    }

    bool unary(Value& value) { return isSign() ? signedOperand(value, &Parser::unary) : power(value); }

    bool power(Value& value)
    {
        if (!primary(value))
            return false;
        if (m_token != Token::Caret)
            return true;
        next();
        Value exponent;
        return this->exponent(exponent) && raise(value, exponent);
    }

    bool exponent(Value& value)
    {
        const Nesting nesting(*this); // "2^2^2..." nests as deeply as parentheses
        if (nesting.tooDeep())
            return false;
        return isSign() ? signedOperand(value, &Parser::exponent) : power(value);
    }

    bool primary(Value& value)
    {
        switch (m_token) {
        case Token::Number:
            if (!m_literal.inRange)
                return fail("number out of range: " + std::string(m_tokenText));
            value.known = true;
            value.number = m_literal.value;
            next();
            return true;
        case Token::Name:
            if (!name(value))
                return false;
            next();
            return true;
        case Token::Open: {
            const Nesting nesting(*this);
            if (nesting.tooDeep())
                return false;
            next();
            if (!sum(value))
                return false;
            if (m_token != Token::Close)
                return fail("missing \")\"");
            next();
            return true;
        }
        case Token::End:
            return fail("number, name or \"(\" expected at the end");
        default:
            return fail("number, name or \"(\" expected instead of " + StringUtil::quote(m_tokenText));
        }
    }

    bool name(Value& value)
    {
        if (const ConstantExpression* constant = m_context.find(m_tokenText)) {
            const Quantity& quantity = constant->value();
            if (quantity.kind() != Quantity::Kind::None) {
                const ut_unit* unit = Unit::predefinedUnit(quantity)->handle();
                if (!unit)
                    return fail("no unit database for " + StringUtil::quote(m_tokenText));
                value.unit = UnitRef::borrowed(unit);
            }
            return true;
        }
        Pvt::UnitLookup unit = m_engine.lookup(m_tokenText);
        if (!unit.unit)
            return fail("unknown name " + StringUtil::quote(m_tokenText));
        value.unit = std::move(unit.unit);
        value.offset = unit.offset;
        return true;
    }

    bool isPlainNumber(const Value& value) const { return !value.unit && value.known; }

    bool checkNumber(Value& value)
    {
        if (value.known && !std::isfinite(value.number))
            return fail("number out of range");
        return true;
    }

    static UnitRef combine(UnitRef a, UnitRef b, ut_unit* (*operation)(const ut_unit*, const ut_unit*))
    {
        if (!b)
            return a;
        if (!a)
            return b;
        return UnitRef::owned(operation(a.get(), b.get()));
    }

    bool multiply(Value& left, Value& right)
    {
        if (left.offset || right.offset) {
            // Scaling a temperature point by a plain number is still a point.
            if (!isPlainNumber(left.offset ? right : left))
                return fail("a temperature on a scale with an origin can only be scaled by a number");
            if (right.offset) {
                left.unit = std::move(right.unit);
                left.offset = true;
            }
            left.known = false;
            return true;
        }
        const bool bothUnits = left.unit && right.unit;
        left.unit = combine(std::move(left.unit), std::move(right.unit), &ut_multiply);
        if (bothUnits && !left.unit)
            return fail("units cannot be multiplied");
        left.known = left.known && right.known;
        left.number *= right.number;
        return checkNumber(left);
    }

    bool divide(Value& left, Value& right)
    {
        if (left.offset || right.offset)
            return fail("a temperature on a scale with an origin cannot be divided");
        if (right.known && right.number == 0.0)
            return fail("division by zero");
        if (right.unit) {
            if (left.unit)
                left.unit = UnitRef::owned(ut_divide(left.unit.get(), right.unit.get()));
            else
                left.unit = UnitRef::owned(ut_raise(right.unit.get(), -1));
            if (!left.unit)
                return fail("units cannot be divided");
        }
        left.known = left.known && right.known;
        left.number = right.known ? left.number / right.number : 0.0;
        return checkNumber(left);
    }

    bool add(Value& left, Value& right, bool minus)
    {
        if (!m_engine.convertible(left.unit.get(), right.unit.get())) {
            return fail("cannot " + std::string(minus ? "subtract " : "add ")
                        + StringUtil::quote(m_engine.dimensionText(right.unit.get()))
                        + (minus ? " from " : " to ") + StringUtil::quote(m_engine.dimensionText(left.unit.get())));
        }
        if (left.offset && right.offset) {
            if (!minus)
                return fail("two temperatures on a scale with an origin cannot be added");
            left.offset = false; // a difference of two points
        } else if (right.offset) {
            if (minus)
                return fail("a temperature on a scale with an origin cannot be subtracted from a difference");
            left.unit = std::move(right.unit);
            left.offset = true;
        }
        left.known = left.known && right.known;
        left.number = minus ? left.number - right.number : left.number + right.number;
        return checkNumber(left);
    }

    bool raise(Value& base, Value& exponent)
    {
        if (base.offset || exponent.offset)
            return fail("a temperature on a scale with an origin cannot be raised to a power");
        if (!m_engine.convertible(exponent.unit.get(), nullptr))
            return fail("an exponent must be a number");
        const bool known = base.known && exponent.known;
        if (base.unit && m_engine.convertible(base.unit.get(), nullptr)) {
            base.unit = UnitRef(); // a power of a dimensionless unit is a number
        } else if (base.unit) {
            if (!exponent.known)
                return fail("the power of a unit must be a number");
            if (!raiseUnit(base, exponent.number))
                return false;
        }
        base.known = known;
        base.number = known ? std::pow(base.number, exponent.number) : 0.0;
        return checkNumber(base);
    }

    /// Raises the unit of @p base to @p power = p/q, q small, as a p-th
    /// power and a q-th root: the root must come out whole.
    bool raiseUnit(Value& base, double power)
    {
        constexpr int MaxRoot = 12;
        constexpr int MaxPower = 255; // UDUNITS' own limit
        for (int root = 1; root <= MaxRoot; ++root) {
            const double scaled = power * root;
            const double whole = std::round(scaled);
            if (std::fabs(scaled - whole) > 1e-9 * std::max(1.0, std::fabs(scaled)))
                continue;
            if (std::fabs(whole) > MaxPower)
                return fail("power out of range");
            UnitRef raised = UnitRef::owned(ut_raise(base.unit.get(), static_cast<int>(whole)));
            if (raised && root > 1)
                raised = UnitRef::owned(ut_root(raised.get(), root));
            if (!raised)
                return fail("not a whole power of its units");
            base.unit = std::move(raised);
            return true;
        }
        return fail("the power of a unit must be a fraction with a small denominator");
    }

    const ParserContext& m_context;
    UnitEngine& m_engine;
    std::string_view m_text;
    std::size_t m_pos = 0;
    Token m_token = Token::End;
    std::string_view m_tokenText;
    std::size_t m_tokenStart = 0;
    NumberExpression::Literal m_literal;
    int m_depth = 0;
    std::string m_message;
    std::size_t m_errorPosition = 0;
};

} // namespace

ExpressionCheck checkExpression(const ParserContext& context, std::string_view text)
{
    ExpressionCheck check;
    Parser parser(context, text);
    Value value;
    check.valid = parser.parse(value);
    if (check.valid) {
        check.dimension = parser.engine().dimensionText(value.unit.get());
    } else {
        check.message = parser.message();
        check.position = parser.position();
    }
    return check;
}

bool isExpressionValid(const ParserContext& context, const std::string& text, const Unit* unit)
{
    Parser parser(context, text);
    Value value;
    if (!parser.parse(value))
        return false;
    if (!unit || unit->quantity().kind() == Quantity::Kind::None)
        return parser.engine().convertible(value.unit.get(), nullptr);
    // Without a unit database only plain numbers can be checked.
    return unit->handle() && parser.engine().convertible(value.unit.get(), unit->handle());
}

} // namespace Kernel::DM
