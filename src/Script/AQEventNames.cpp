#include "Script/AQEventNames.h"

namespace QtUIBase {

namespace {
const AQEventNames::Row g_rows[AQEventNames::RowCount] = {
    {1, "OrvexMouseEvent 1 ", "OrvexMouseEvent LButtonDown "},
    {2, "OrvexMouseEvent 2 ", "OrvexMouseEvent LButtonUp "},
    {3, "OrvexMouseEvent 3 ", "OrvexMouseEvent LButtonDblClk "},
    {4, "OrvexMouseEvent 4 ", "OrvexMouseEvent MButtonDown "},
    {5, "OrvexMouseEvent 5 ", "OrvexMouseEvent MButtonUp "},
    {6, "OrvexMouseEvent 6 ", "OrvexMouseEvent MButtonDblClk "},
    {7, "OrvexMouseEvent 7 ", "OrvexMouseEvent RButtonDown "},
    {8, "OrvexMouseEvent 8 ", "OrvexMouseEvent RButtonUp "},
    {9, "OrvexMouseEvent 9 ", "OrvexMouseEvent RButtonDblClk "},
    {10, "OrvexMouseEvent 10", "OrvexMouseEvent MouseMove"},
    {11, "OrvexMouseEvent 11", "OrvexMouseEvent MouseWheel"},
    {12, "OrvexMouseEvent 12", "OrvexMouseEvent MouseWheelUp"},
    {13, "OrvexMouseEvent 13", "OrvexMouseEvent MouseWheelDown"},
    {14, "OrvexMouseEvent 14", "OrvexMouseEvent Timer"},
    {15, "OrvexKeyEvent 15", "OrvexKeyEvent KeyDown"},
    {16, "OrvexKeyEvent 16", "OrvexKeyEvent KeyUp"},
    {17, "OrvexMouseEvent 17", "OrvexMouseEvent Selection"},
    {18, "OrvexMouseEvent 18", "OrvexMouseEvent JoyStickTranslate"},
    {19, "OrvexMouseEvent 19", "OrvexMouseEvent JoyStickRotate"},
    {20, "OrvexMouseEvent 20", "OrvexMouseEvent JoyStickButton"},
    {21, "OrvexMouseEvent 21", "OrvexMouseEvent TouchesDown"},
    {22, "OrvexMouseEvent 22", "OrvexMouseEvent TouchesUp"},
    {23, "OrvexMouseEvent 23", "OrvexMouseEvent TouchesMove"},
};
} // namespace

const AQEventNames::Row* AQEventNames::rows()
{
    return g_rows;
}

QMap<QByteArray, QByteArray> AQEventNames::numberedToNamed()
{
    QMap<QByteArray, QByteArray> map;
    for (const Row& row : g_rows)
        map.insert(QByteArray(row.numbered), QByteArray(row.named));
    return map;
}

QByteArray AQEventNames::migrateLine(const QByteArray& line)
{
    QByteArray result = line;
    // The trailing blanks of rows 1 to 9 keep them off rows 10 to 23, so
    // the order of replacement does not matter.
    for (const Row& row : g_rows)
        result.replace(row.numbered, row.named);
    return result;
}

} // namespace QtUIBase
