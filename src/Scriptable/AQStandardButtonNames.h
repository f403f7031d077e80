#pragma once

#include "OrvexQtUIBase_export.h"

#include <QString>

namespace QtUIBase {

/**
 * The names under which standard buttons appear in scripts, shared by the
 * button box and the message box (QDialogButtonBox::StandardButton and
 * QMessageBox::StandardButton have the same values). The Ok button is
 * spelled "Ok" by the button box and "OK" by the message box; recorded
 * scripts contain both, so the spelling is chosen per caller.
 */
class ORVEXQTUIBASE_EXPORT AQStandardButtonNames
{
public:
    enum class OkSpelling { ButtonBox, MessageBox };

    AQStandardButtonNames() = delete;

    /// The name of @p value (0 is "NoButton"); empty when no row has it.
    static QString name(int value, OkSpelling spelling);
    /// The value named @p name, or -1 when no row has it.
    static int value(const QString& name, OkSpelling spelling);
};

} // namespace QtUIBase
