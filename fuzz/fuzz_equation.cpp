// Checks arbitrary bytes as an expression with units, against a context
// with names of each kind and against unit constraints. The checker must
// never crash or hang, however deep the nesting, and its answers must agree:
// a valid expression has a dimension and no message, an invalid one a
// message pointing into the text, and a constraint is only ever met by a
// valid expression. Any disagreement aborts.

#include <Kernel/DM/Expression.h>
#include <Kernel/DM/ParserContext.h>
#include <Kernel/Quantity.h>
#include <Kernel/Unit.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace Kernel;
using namespace Kernel::DM;

namespace {

const ParserContext& context()
{
    static const ParserContext parameters = [] {
        ParserContext c;
        c.declare({"L", Quantity::get(Quantity::Kind::Length)});
        c.declare({"f0", Quantity::get(Quantity::Kind::Frequency)});
        c.declare({"T", Quantity::get(Quantity::Kind::Temperature)});
        c.declare({"n", Quantity::NoneUnitQuantity()});
        c.declare({"m", Quantity::NoneUnitQuantity()}); // hides the metre
        return c;
    }();
    return parameters;
}

void fail(const char* what, const std::string& text)
{
    std::fprintf(stderr, "%s: [%s]\n", what, text.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const ExpressionCheck check = checkExpression(context(), text);
    if (check.valid && (check.dimension.empty() || !check.message.empty()))
        fail("valid without a dimension, or with a message", text);
    if (!check.valid && (check.message.empty() || !check.dimension.empty() || check.position > text.size()))
        fail("invalid without a message, or pointing past the text", text);
    for (const char* unit : {"mm", "GHz", "degC", "", "km/h"}) {
        if (isExpressionValid(context(), text, Unit::fromSymbol(unit)) && !check.valid)
            fail("an invalid expression meets a constraint", text);
    }
    const bool plain = isExpressionValid(context(), text, nullptr);
    if ((plain && !check.valid) || (check.dimension == "1" && !plain))
        fail("plain-number answer disagrees with the dimension", text);
    return 0;
}
