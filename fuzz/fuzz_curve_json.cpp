// Feeds arbitrary bytes to the JSON curve file import. The model must end up
// either untouched (the bytes do not parse) or holding what the file says.

#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <cstdlib>
#include <map>

using namespace Gui::Widget;

namespace {

void check(bool condition, const char* what)
{
    if (!condition) {
        std::fprintf(stderr, "model mismatch: %s\n", what);
        std::abort();
    }
}

std::string text(const QJsonObject& o, const char* key)
{
    return o.value(QLatin1String(key)).toString().toStdString();
}

std::vector<double> numbers(const QJsonObject& o, const char* key)
{
    std::vector<double> values;
    for (const QJsonValue& v : o.value(QLatin1String(key)).toArray())
        values.push_back(v.toDouble());
    return values;
}

void checkCurve(const OrvexCurve& curve, const QJsonObject& o)
{
    check(curve.title() == text(o, "title"), "title");
    check(curve.suffix() == text(o, "suffix"), "suffix");
    check(curve.width() == o.value(QLatin1String("width")).toInt(), "width");
    check(curve.barWidth() == o.value(QLatin1String("barWidth")).toInt(), "barWidth");
    check(curve.visible() == o.value(QLatin1String("visible")).toBool(), "visible");
    check(curve.xUnit() == text(o, "xUnit") && curve.yUnit() == text(o, "yUnit"), "units");
    check(curve.xLabel() == text(o, "xLabel") && curve.yLabel() == text(o, "yLabel"), "labels");
    check(curve.curveType() == OrvexCurveType::Line, "curve type");
    auto x = numbers(o, "X");
    auto y = numbers(o, "Y");
    const std::size_t n = std::min(x.size(), y.size());
    x.resize(n);
    y.resize(n);
    check(curve.xData(OrvexCurveDataType::RawData) == x, "X");
    check(curve.yData(OrvexCurveDataType::RawData) == y, "Y");
}

// Reads every derived answer once, for the sanitizers to look at.
void touch(OrvexCurve& curve)
{
    for (auto type : {OrvexCurveDataType::RawData, OrvexCurveDataType::DbNormalizedData,
                      OrvexCurveDataType::LinearNormalizedData}) {
        curve.setDataType(type);
        check(curve.yData().size() == curve.dataSize(), "normalised size");
        (void)curve.xMin();
        (void)curve.yMax();
        (void)curve.minimumYPoint();
        (void)curve.maximumXPoint();
        (void)curve.contain(QPointF(0, 0));
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
    auto manager = std::make_shared<OrvexCurveManager>(nullptr);
    manager->createGroup("seed");
    manager->setCurrentGroup("seed");
    manager->createCurve(std::vector<double>{1, 2}, std::vector<double>{3, 4}, "s");
    const QByteArray before = manager->exportToBytes();

    const bool imported = manager->importFromBytes(bytes);
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!imported) {
        check(document.isNull(), "valid document refused");
        check(manager->exportToBytes() == before, "model touched by a failed import");
        return 0;
    }
    check(!document.isNull(), "null document accepted");

    // The last group object with a given id decides its flags; within a group
    // the last curve object with a given id is the curve.
    const QJsonObject root = document.object();
    std::map<std::string, QJsonObject> groups;
    std::map<std::string, std::map<std::string, QJsonObject>> curves;
    std::size_t anonymousGroups = 0;
    for (const QJsonValue& g : root.value(QLatin1String("groups")).toArray()) {
        const QJsonObject go = g.toObject();
        const std::string id = text(go, "id");
        if (id.empty()) {
            ++anonymousGroups;
            continue;
        }
        groups[id] = go;
        for (const QJsonValue& c : go.value(QLatin1String("curves")).toArray()) {
            const QJsonObject co = c.toObject();
            if (!text(co, "id").empty())
                curves[id][text(co, "id")] = co;
        }
    }
    check(manager->getAllGroups(false).size() == groups.size() + anonymousGroups, "group count");
    for (const auto& [id, go] : groups) {
        const auto group = manager->findGroup(id);
        check(group != nullptr, "group missing");
        check(group->visible() == go.value(QLatin1String("visible")).toBool(), "group visible");
        check(group->customSymbol() == text(go, "customSymbol"), "custom symbol");
        for (const auto& [curveId, co] : curves[id]) {
            const auto curve = group->getCurve(curveId);
            check(curve != nullptr, "curve missing");
            checkCurve(*curve, co);
        }
    }
    check(manager->currentGroupId() == text(root, "currentGroupId"), "current group");
    for (const auto& group : manager->getAllGroups(false)) {
        for (const auto& curve : group->getAllCurves(false))
            touch(*curve);
    }

    // What was imported writes back to the same model.
    const QByteArray written = manager->exportToBytes();
    auto again = std::make_shared<OrvexCurveManager>(nullptr);
    check(again->importFromBytes(written), "re-import");
    check(again->exportToBytes() == written, "round trip");
    return 0;
}
