#pragma once

#include "OrvexQtUIBase_export.h"

#include <QString>

class QTableView;
class QVariant;

namespace QtUIBase {

/**
 * Static utility functions of the scripting layer; no state.
 */
class ORVEXQTUIBASE_EXPORT AQHelper
{
public:
    AQHelper() = delete;

    /**
     * Writes the model of @p view to @p fileName as text: one line of the
     * horizontal header texts, then one line per model row, cells joined
     * with @p separator. Columns follow the header's visual order and hidden
     * sections are left out. Answers false for a null view, an empty file
     * name or a file that cannot be written.
     */
    static bool exportTableToCSV(const QTableView* view, const QString& fileName, const QString& separator);

    /// The text of one cell's display value, by its variant type.
    static QString cellText(const QVariant& value);
};

} // namespace QtUIBase
