#pragma once

#include "OrvexQtUIBase_export.h"

#include <QByteArray>
#include <QMap>

namespace QtUIBase {

/**
 * The mouse and key event names of mouse-recording widgets.
 *
 * Every event kind has a numbered form, found in older scripts, and a named
 * form, written today. Rows 1 to 9 keep a trailing blank in both forms so
 * that "OrvexMouseEvent 1 " never matches the start of "OrvexMouseEvent 10";
 * rows 10 to 23 have none.
 */
class ORVEXQTUIBASE_EXPORT AQEventNames
{
public:
    struct Row
    {
        int number;
        const char* numbered;
        const char* named;
    };

    static constexpr int RowCount = 23;

    /// The 23 rows, in order of their numbers.
    static const Row* rows();
    /// Numbered form to named form, as 8-bit strings.
    static QMap<QByteArray, QByteArray> numberedToNamed();
    /// Rewrites every numbered form in @p line into its named form.
    static QByteArray migrateLine(const QByteArray& line);
};

} // namespace QtUIBase
