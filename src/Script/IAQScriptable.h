#pragma once

#include "OrvexQtUIBase_export.h"

#include <QString>
#include <QStringList>

namespace QtUIBase {

/**
 * The one-operation replay interface of a scriptable widget.
 *
 * A scriptable class derives from the Qt class it wraps first and from this
 * interface second; the replay engine reaches it with dynamic_cast from the
 * QObject it looked up by name. The interface has no data and, on purpose,
 * no virtual destructor: objects are never deleted through it.
 */
class ORVEXQTUIBASE_EXPORT IAQScriptable
{
public:
    /// Redoes the operation recorded under @p signal with the recorded
    /// arguments (numbers and booleans as decimal text).
    virtual void scriptReplay(const QString& signal, const QStringList& args) = 0;

protected:
    ~IAQScriptable() = default;
};

} // namespace QtUIBase
