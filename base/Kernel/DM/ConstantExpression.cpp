#include "Kernel/DM/ConstantExpression.h"

namespace Kernel::DM {

ConstantExpression::ConstantExpression(std::string name, const Quantity& value)
    : m_name(std::move(name))
    , m_value(&value)
{
}

} // namespace Kernel::DM
