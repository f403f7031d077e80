#pragma once

#include <Kernel/DM/ConstantExpression.h>
#include <Kernel/OrvexBase_export.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace Kernel::DM {

/**
 * The names an expression may use. A context may extend a parent (a
 * document's context): its own names come first, then the parent's, looked
 * up live, so names the parent gains later are seen too. The parent must
 * outlive the context.
 *
 * A declared name always wins over a unit of the same name: with a
 * parameter "m" declared, "3 m" is three times that parameter, not three
 * metres (hidesUnit() tells a host which names do that, so it can warn
 * when the name is chosen).
 */
class ORVEXBASE_EXPORT ParserContext
{
public:
    explicit ParserContext(const ParserContext* parent = nullptr);

    /// Declares @p constant, replacing a constant of the same name.
    void declare(const ConstantExpression& constant);
    /// The constant named @p name, here or in the parents; null if none.
    const ConstantExpression* find(std::string_view name) const;
    const ParserContext* parent() const { return m_parent; }

    /// Whether @p name is also the name of a unit, which it then hides.
    static bool hidesUnit(std::string_view name);

private:
    const ParserContext* m_parent;
    std::map<std::string, ConstantExpression, std::less<>> m_constants;
};

} // namespace Kernel::DM
