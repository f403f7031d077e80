// Feeds arbitrary bytes to the CSV curve table reader in both flavours. The
// group must end up either untouched (nothing to read) or holding one new
// curve per column, and what was read must write back and read again.

#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveCsvFile.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <set>

using namespace Gui::Widget;
using Flavour = OrvexCurveCsvFile::Flavour;

namespace {

void check(bool condition, const char* what)
{
    if (!condition) {
        std::fprintf(stderr, "table mismatch: %s\n", what);
        std::abort();
    }
}

std::size_t distinctX(const OrvexCurve& curve)
{
    std::set<double> xs;
    for (std::size_t i = 0; i < curve.dataSize(); ++i) {
        if (!std::isnan(curve.xData()[i]) && !std::isnan(curve.yData()[i]))
            xs.insert(curve.xData()[i]);
    }
    return xs.size();
}

void run(const QByteArray& bytes, Flavour flavour)
{
    auto manager = std::make_shared<OrvexCurveManager>(nullptr);
    auto group = manager->createGroup("seed");
    manager->setCurrentGroup("seed");
    group->createCurve("s")->setData(std::vector<double>{1, 2}, std::vector<double>{3, 4});
    const QByteArray before = OrvexCurveCsvFile::format(group->getAllCurves(false), Flavour::Comma);

    auto columns = OrvexCurveCsvFile::parse(bytes, flavour);
    for (const auto& column : columns) {
        check(column.x.size() == column.y.size(), "column lengths");
        check(std::none_of(column.x.begin(), column.x.end(), [](double v) { return std::isnan(v); }), "NaN X kept");
        check(std::none_of(column.y.begin(), column.y.end(), [](double v) { return std::isnan(v); }), "NaN Y kept");
    }
    const std::size_t count = columns.size();
    const int made = OrvexCurveCsvFile::addCurves(*group, std::move(columns));
    check(made == static_cast<int>(count), "curves made");
    check(group->size() == count + 1, "group size");
    if (made == 0) {
        check(OrvexCurveCsvFile::format(group->getAllCurves(false), Flavour::Comma) == before,
              "group touched by a file without data");
        return;
    }

    // Every curve writes one row per distinct X and reads back with as many
    // points, in ascending X.
    const auto curves = group->getAllCurves(true);
    const QByteArray written = OrvexCurveCsvFile::format(curves, flavour);
    const auto again = OrvexCurveCsvFile::parse(written, flavour);
    check(again.size() == curves.size(), "columns written back");
    for (std::size_t i = 0; i < curves.size(); ++i) {
        check(again[i].x.size() == distinctX(*curves[i]), "points written back");
        check(std::is_sorted(again[i].x.begin(), again[i].x.end()), "rows out of order");
    }
    for (auto type : {OrvexCurveDataType::DbNormalizedData, OrvexCurveDataType::LinearNormalizedData}) {
        for (const auto& curve : curves)
            curve->setDataType(type);
        (void)OrvexCurveCsvFile::format(curves, flavour);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    run(bytes, Flavour::Comma);
    run(bytes, Flavour::Blank);
    return 0;
}
