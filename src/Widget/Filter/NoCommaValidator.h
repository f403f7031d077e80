#pragma once

#include "OrvexQtUIBase_export.h"

#include <QDoubleValidator>

namespace QtUIBase {

/**
 * A QDoubleValidator that refuses any ",": filter texts use it to separate
 * conditions, so a number may not carry a group separator or a decimal comma.
 */
class ORVEXQTUIBASE_EXPORT NoCommaValidator : public QDoubleValidator
{
    Q_OBJECT

public:
    explicit NoCommaValidator(QObject* parent = nullptr);
    NoCommaValidator(double bottom, double top, int decimals, QObject* parent = nullptr);

    State validate(QString& input, int& pos) const override;
    /// The base fix-up, then every "," removed.
    void fixup(QString& input) const override;
};

} // namespace QtUIBase
