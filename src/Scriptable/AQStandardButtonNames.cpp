#include "Scriptable/AQStandardButtonNames.h"

namespace QtUIBase {

namespace {

struct Row
{
    int value;
    const char* name;
};

constexpr int OkValue = 0x400;

// "Ok"/"OK" is left out: its spelling depends on the caller.
constexpr Row g_rows[] = {
    {0x800, "Save"},        {0x1000, "SaveAll"},     {0x2000, "Open"},      {0x4000, "Yes"},
    {0x8000, "YesToAll"},   {0x10000, "No"},         {0x20000, "NoToAll"},  {0x40000, "Abort"},
    {0x80000, "Retry"},     {0x100000, "Ignore"},    {0x200000, "Close"},   {0x400000, "Cancel"},
    {0x800000, "Discard"},  {0x1000000, "Help"},     {0x2000000, "Apply"},  {0x4000000, "Reset"},
    {0x8000000, "RestoreDefaults"}, {0, "NoButton"},
};

QString okName(AQStandardButtonNames::OkSpelling spelling)
{
    return spelling == AQStandardButtonNames::OkSpelling::ButtonBox ? QStringLiteral("Ok") : QStringLiteral("OK");
}

} // namespace

QString AQStandardButtonNames::name(int value, OkSpelling spelling)
{
    if (value == OkValue)
        return okName(spelling);
    for (const Row& row : g_rows) {
        if (row.value == value)
            return QString::fromLatin1(row.name);
    }
    return QString();
}

int AQStandardButtonNames::value(const QString& name, OkSpelling spelling)
{
    if (name == okName(spelling))
        return OkValue;
    for (const Row& row : g_rows) {
        if (name == QLatin1String(row.name))
            return row.value;
    }
    return -1;
}

} // namespace QtUIBase
