#include "Widget/Filter/NoCommaValidator.h"

namespace QtUIBase {

NoCommaValidator::NoCommaValidator(QObject* parent)
    : QDoubleValidator(parent)
{
}

NoCommaValidator::NoCommaValidator(double bottom, double top, int decimals, QObject* parent)
    : QDoubleValidator(bottom, top, decimals, parent)
{
}

QValidator::State NoCommaValidator::validate(QString& input, int& pos) const
{
    if (input.contains(QLatin1Char(',')))
        return Invalid;
    return QDoubleValidator::validate(input, pos);
}

void NoCommaValidator::fixup(QString& input) const
{
    QDoubleValidator::fixup(input);
    input.remove(QLatin1Char(','));
}

} // namespace QtUIBase
