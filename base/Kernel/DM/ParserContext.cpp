#include "Kernel/DM/ParserContext.h"

#include "Kernel/UnitEngine_p.h"

namespace Kernel::DM {

ParserContext::ParserContext(const ParserContext* parent)
    : m_parent(parent)
{
}

void ParserContext::declare(const ConstantExpression& constant)
{
    m_constants.insert_or_assign(constant.name(), constant);
}

const ConstantExpression* ParserContext::find(std::string_view name) const
{
    for (const ParserContext* context = this; context; context = context->m_parent) {
        const auto found = context->m_constants.find(name);
        if (found != context->m_constants.end())
            return &found->second;
    }
    return nullptr;
}

bool ParserContext::hidesUnit(std::string_view name)
{
    return static_cast<bool>(Pvt::UnitEngine::instance().lookup(name).unit);
}

} // namespace Kernel::DM
