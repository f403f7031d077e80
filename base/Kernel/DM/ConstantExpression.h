#pragma once

#include <Kernel/OrvexBase_export.h>

#include <string>

namespace Kernel {

class Quantity;

namespace DM {

/**
 * A named constant that expressions may use, such as a parameter "L" of a
 * model. Its value is the quantity it measures: "L" declared as a length
 * makes "2*L + 3 mm" a length; a name declared with
 * Quantity::NoneUnitQuantity() is a plain number.
 */
class ORVEXBASE_EXPORT ConstantExpression
{
public:
    ConstantExpression(std::string name, const Quantity& value);

    const std::string& name() const { return m_name; }
    const Quantity& value() const { return *m_value; }

private:
    std::string m_name;
    const Quantity* m_value;
};

} // namespace DM
} // namespace Kernel
