#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QSignalSpy>
#include <QtTest>

#include <functional>

using namespace Gui::Widget;

using CurveAction = std::function<void(OrvexCurve&)>;
using Doubles = QVector<double>;
using Points = QVector<QPointF>;
using Recolouring = QMap<int, int>;
Q_DECLARE_METATYPE(CurveAction)
Q_DECLARE_METATYPE(OrvexCurveDataType)

namespace {

class NameProbe : public OrvexCurve
{
public:
    using OrvexCurve::g_existingVariableNames;
    using OrvexCurve::generateVariableName;
};

std::vector<double> toStd(const Doubles& v)
{
    return std::vector<double>(v.begin(), v.end());
}

std::shared_ptr<OrvexCurveManager> makeManager()
{
    return std::make_shared<OrvexCurveManager>(nullptr);
}

std::string curveName(int k)
{
    return "Curve_" + std::to_string(k);
}

// The normalised Y of @p curve worked out afresh from the raw data of its group.
std::vector<double> referenceY(const OrvexCurve& curve, OrvexCurveDataType type)
{
    const auto raw = curve.yData(OrvexCurveDataType::RawData);
    if (type == OrvexCurveDataType::RawData || raw.empty())
        return raw;
    std::vector<double> all = raw;
    if (const auto group = curve.group().lock()) {
        all.clear();
        for (const auto& c : group->getAllCurves(false)) {
            const auto& y = c->yData(OrvexCurveDataType::RawData);
            all.insert(all.end(), y.begin(), y.end());
        }
    }
    const auto [lo, hi] = std::minmax_element(all.begin(), all.end());
    std::vector<double> out;
    for (double y : raw)
        out.push_back(type == OrvexCurveDataType::DbNormalizedData ? y - *hi
                      : *hi == *lo                                 ? 0.0
                                                                   : (y - *lo) / (*hi - *lo));
    return out;
}

void compareDoubles(const std::vector<double>& actual, const std::vector<double>& expected)
{
    QCOMPARE(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i)
        if (!qFuzzyCompare(1.0 + actual[i], 1.0 + expected[i]))
            QFAIL(qPrintable(QStringLiteral("index %1: %2 != %3").arg(i).arg(actual[i]).arg(expected[i])));
}

} // namespace

class tst_OrvexCurve : public QObject
{
    Q_OBJECT

private slots:
    void palette_data();
    void palette();
    void variableNames();
    void extremes_data();
    void extremes();
    void cachedAnswersFollowChanges_data();
    void cachedAnswersFollowChanges();
    void setDataForms();
    void groupSignalsAndFlags();
    void managerStructure();
    void groupRange();
};

void tst_OrvexCurve::palette_data()
{
    QTest::addColumn<int>("existing");
    QTest::addColumn<Recolouring>("recolour"); // existing curve index -> palette entry
    QTest::addColumn<int>("expectedEntry");
    QTest::newRow("entry 1 taken by the first") << 1 << Recolouring{{0, 1}} << 0;
    QTest::newRow("gap left by a recoloured curve") << 3 << Recolouring{{1, 7}} << 1;
    QTest::newRow("29 existing") << 29 << Recolouring() << 29;
    QTest::newRow("30 existing wraps to 0 though taken") << 30 << Recolouring() << 0;
}

void tst_OrvexCurve::palette()
{
    QFETCH(int, existing);
    QFETCH(Recolouring, recolour);
    auto group = makeManager()->createGroup("g");
    std::vector<std::shared_ptr<OrvexCurve>> curves;
    for (int i = 0; i < existing; ++i)
        curves.push_back(group->createCurve(std::string()));
    for (auto it = recolour.begin(); it != recolour.end(); ++it)
        curves[std::size_t(it.key())]->setColor(OrvexCurve::paletteColor(it.value()));
    QFETCH(int, expectedEntry);
    QCOMPARE(group->createCurve(std::string())->color(), OrvexCurve::paletteColor(expectedEntry));
}

void tst_OrvexCurve::variableNames()
{
    // Names are process-wide, made on first use in asking order, skip taken ones and are never freed.
    int k = 1;
    while (NameProbe::g_existingVariableNames.count(curveName(k)))
        ++k;
    NameProbe::g_existingVariableNames.insert(curveName(k + 1));
    auto first = makeManager();
    auto second = makeManager();
    auto a = first->createCurve("a");
    auto b = second->createCurve("b");
    auto c = first->createCurve("c");
    QCOMPARE(b->variableName(), curveName(k));
    QCOMPARE(a->variableName(), curveName(k + 2));
    QCOMPARE(c->variableName(), curveName(k + 3));
    QCOMPARE(b->variableName(), curveName(k));
    first->removeCurve("c");
    c.reset();
    QCOMPARE(second->createCurve("d")->variableName(), curveName(k + 4));
    QCOMPARE(NameProbe::generateVariableName(), curveName(k + 5));
}

void tst_OrvexCurve::extremes_data()
{
    QTest::addColumn<Doubles>("x");
    QTest::addColumn<Doubles>("y");
    QTest::addColumn<OrvexCurveDataType>("type");
    QTest::addColumn<Doubles>("expected"); // xMin, xMax, yMin, yMax
    QTest::addColumn<Points>("points");    // at minimum X, maximum X, minimum Y, maximum Y
    QTest::newRow("raw, unsorted") << Doubles{3, 1, 2} << Doubles{5, -1, 7} << OrvexCurveDataType::RawData
                                   << Doubles{1, 3, -1, 7} << Points{{1, -1}, {3, 5}, {1, -1}, {2, 7}};
    QTest::newRow("ties keep the first point") << Doubles{0, 1, 2, 3} << Doubles{4, 9, 4, 9}
                                               << OrvexCurveDataType::RawData << Doubles{0, 3, 4, 9}
                                               << Points{{0, 4}, {3, 9}, {0, 4}, {1, 9}};
    QTest::newRow("dB") << Doubles{0, 1, 2} << Doubles{-10, -3, -5} << OrvexCurveDataType::DbNormalizedData
                        << Doubles{0, 2, -7, 0} << Points{{0, -7}, {2, -2}, {0, -7}, {1, 0}};
    QTest::newRow("NaN skipped") << Doubles{qQNaN(), 1, 2} << Doubles{0, qQNaN(), 3} << OrvexCurveDataType::RawData
                                 << Doubles{1, 2, 0, 3} << Points{{1, qQNaN()}, {2, 3}, {qQNaN(), 0}, {2, 3}};
    QTest::newRow("empty") << Doubles{} << Doubles{} << OrvexCurveDataType::DbNormalizedData << Doubles{0, 0, 0, 0}
                           << Points(4);
}

void tst_OrvexCurve::extremes()
{
    QFETCH(Doubles, x);
    QFETCH(Doubles, y);
    QFETCH(OrvexCurveDataType, type);
    QFETCH(Points, points);
    auto curve = makeManager()->createCurve(toStd(x), toStd(y), "c");
    curve->setDataType(type);
    QTEST(Doubles({curve->xMin(), curve->xMax(), curve->yMin(), curve->yMax()}), "expected");
    const Points actual{curve->minimumXPoint(), curve->maximumXPoint(), curve->minimumYPoint(),
                        curve->maximumYPoint()};
    const auto same = [](double u, double v) { return (qIsNaN(u) && qIsNaN(v)) || qFuzzyCompare(1 + u, 1 + v); };
    for (int i = 0; i < 4; ++i)
        QVERIFY2(same(actual[i].x(), points[i].x()) && same(actual[i].y(), points[i].y()), qPrintable(QString::number(i)));
    if (!x.isEmpty() && type != OrvexCurveDataType::RawData) { // raw extremes ignore the data type
        QCOMPARE(curve->rawYMax(), *std::max_element(y.begin(), y.end()));
        QCOMPARE(curve->rawYMin(), *std::min_element(y.begin(), y.end()));
    }
}

void tst_OrvexCurve::cachedAnswersFollowChanges_data()
{
    QTest::addColumn<CurveAction>("change");
    // Each change touches the group's range, the curve's data, or both.
    QTest::newRow("own data replaced") << CurveAction([](OrvexCurve& c) {
        c.setData(std::vector<double>{0, 1, 2}, std::vector<double>{-1, -40, 12});
    });
    QTest::newRow("neighbour raises the peak") << CurveAction([](OrvexCurve& c) {
        c.group().lock()->getCurve("other")->setData(std::vector<double>{0}, std::vector<double>{100});
    });
    QTest::newRow("neighbour removed") << CurveAction([](OrvexCurve& c) { c.group().lock()->removeCurve("other"); });
    QTest::newRow("new neighbour below") << CurveAction([](OrvexCurve& c) {
        c.group().lock()->createCurve("low")->setData(std::vector<double>{0}, std::vector<double>{-500});
    });
    QTest::newRow("moved to another group") << CurveAction([](OrvexCurve& c) {
        auto self = c.shared_from_this();
        auto old = c.group().lock();
        auto target = old->manager().lock()->createGroup("elsewhere");
        target->createCurve("peer")->setData(std::vector<double>{0}, std::vector<double>{-1000});
        old->removeCurve(c.id());
        target->addCurve(self);
    });
    QTest::newRow("group made flat") << CurveAction([](OrvexCurve& c) {
        c.setData(std::vector<double>{0, 1}, std::vector<double>{-3, -3});
        c.group().lock()->getCurve("other")->setData(std::vector<double>{0}, std::vector<double>{-3});
    });
    QTest::newRow("neighbour emptied") << CurveAction([](OrvexCurve& c) {
        c.group().lock()->getCurve("other")->setData(std::vector<double>{}, std::vector<double>{});
    });
    QTest::newRow("removed from its group") << CurveAction([](OrvexCurve& c) { c.group().lock()->removeCurve(c.id()); });
}

void tst_OrvexCurve::cachedAnswersFollowChanges()
{
    QFETCH(CurveAction, change);
    auto manager = makeManager();
    manager->createGroup("g");
    manager->setCurrentGroup("g");
    auto curve = manager->createCurve(std::vector<double>{0, 1, 2, 3}, std::vector<double>{-6, -3, -9, -4}, "c");
    manager->createCurve(std::vector<double>{0, 1}, std::vector<double>{-20, -1}, "other");
    for (int pass = 0; pass < 2; ++pass) { // the first pass fills every cache
        if (pass == 1)
            change(*curve);
        for (auto type : {OrvexCurveDataType::RawData, OrvexCurveDataType::DbNormalizedData,
                          OrvexCurveDataType::LinearNormalizedData}) {
            const auto expected = referenceY(*curve, type);
            compareDoubles(curve->yData(type), expected);
            curve->setDataType(type); // the data type selects the default form
            compareDoubles(curve->yData(), expected);
            if (QTest::currentTestFailed())
                return;
            QCOMPARE(curve->yMax(), *std::max_element(expected.begin(), expected.end()));
            QCOMPARE(curve->yMin(), *std::min_element(expected.begin(), expected.end()));
        }
    }
}

void tst_OrvexCurve::setDataForms()
{
    OrvexCurve curve(nullptr, "c");
    curve.setData({{3.0, 30.0}, {-1.0, -10.0}, {2.0, 20.0}});
    QCOMPARE(curve.xData(), std::vector<double>({-1, 2, 3}));
    QCOMPARE(curve.yData(), std::vector<double>({-10, 20, 30}));
    // Vectors of different lengths are cut to the shorter one.
    curve.setData(std::vector<double>{1, 2, 3}, std::vector<double>{4, 5});
    QCOMPARE(curve.xData(), std::vector<double>({1, 2}));
    curve.setData(std::vector<double>{1}, std::vector<double>{4, 5, 6});
    QCOMPARE(curve.yData(), std::vector<double>{4});
    QCOMPARE(curve.rawYMax(), 4.0);
}

void tst_OrvexCurve::groupSignalsAndFlags()
{
    auto manager = makeManager();
    auto group = manager->createGroup("g");
    QStringList events;
    const auto id = [](OrvexCurve* c) { return QString::fromStdString(c->id()); };
    connect(group.get(), &OrvexCurveGroup::curveAdded, this, [&](OrvexCurve* c) { events << "added " + id(c); });
    connect(group.get(), &OrvexCurveGroup::curveRemoving, this, [&](OrvexCurve* c) { events << "removing " + id(c); });
    connect(group.get(), &OrvexCurveGroup::beforeGroupDeleted, this, [&] { events << "group deleted"; });
    auto a = group->createCurve("a");
    auto b = group->createCurve("b");
    connect(a.get(), &OrvexCurve::beforeCurveDeleted, this, [&] { events << "a deleted"; });
    connect(b.get(), &OrvexCurve::beforeCurveDeleted, this, [&] { events << "b deleted"; });
    QCOMPARE(events, QStringList({"added a", "added b"}));

    // Data changes are announced by the caller, not by setData.
    a->setData(std::vector<double>{1}, std::vector<double>{1});
    QVERIFY(!group->curvesChanged());
    emit a->dataChanged();
    QVERIFY(group->curvesChanged());
    group->clearCurvesChanged();
    b->setVisible(false);
    QVERIFY(group->curvesChanged());
    group->clearCurvesChanged();
    b->setVisible(false); // the same value again changes nothing
    QVERIFY(!group->curvesChanged());

    events.clear();
    QVERIFY(group->removeCurve("a"));
    QVERIFY(!group->removeCurve("a"));
    QCOMPARE(events, QStringList({"a deleted", "removing a"}));
    events.clear();
    QVERIFY(manager->removeGroup("g"));
    QVERIFY(!manager->removeGroup("g"));
    QCOMPARE(events, QStringList({"group deleted", "b deleted", "removing b"}));
}

void tst_OrvexCurve::managerStructure()
{
    auto manager = makeManager();
    QSignalSpy currentChanges(manager.get(), &OrvexCurveManager::currentGroupChanged);
    auto first = manager->createCurve("first"); // makes a current group
    const auto current = manager->getCurrentGroup();
    QVERIFY(current);
    QCOMPARE(currentChanges.count(), 1);
    QCOMPARE(first->group().lock(), current);

    auto hidden = manager->createGroup("hidden");
    QCOMPARE(manager->getCurrentGroup(), current);
    hidden->setVisible(false);
    hidden->createCurve("second")->setTitle("Second");
    QCOMPARE(manager->groupIds(), (std::vector<std::string>{current->id(), "hidden"}));
    QCOMPARE(manager->getAllGroups(true).size(), std::size_t(1));
    QCOMPARE(manager->getCurveByTitle("Second")->id(), std::string("second"));

    // Highlighting is exclusive across groups.
    first->setHighlight(true);
    manager->getCurve("second")->setHighlight(true);
    QVERIFY(!first->isHighlighted() && manager->getCurve("second")->isHighlighted());

    manager->setCurrentGroup("hidden");
    QCOMPARE(currentChanges.count(), 2);
    QCOMPARE(manager->createCurve("third")->group().lock(), hidden);
    QVERIFY(manager->removeCurve("second"));
    QCOMPARE(hidden->getAllCurves(false).size(), std::size_t(1));
    manager->removeAll();
    QVERIFY(manager->groupIds().empty());
    QVERIFY(!manager->getCurrentGroup());
}

void tst_OrvexCurve::groupRange()
{
    auto manager = makeManager();
    auto group = manager->createGroup("g");
    manager->setCurrentGroup("g");
    const auto empty = group->groupRange(false);
    QVERIFY(empty.first > empty.second);
    manager->createCurve(std::vector<double>{0, 5}, std::vector<double>{-2, 4}, "a");
    manager->createCurve(std::vector<double>{-50, 50}, std::vector<double>{-90, 90}, "b")->setVisible(false);
    QCOMPARE(group->groupRange(true), std::make_pair(0.0, 5.0));
    QCOMPARE(group->groupRange(false), std::make_pair(-2.0, 4.0));
    // The raw Y range counts hidden curves as well.
    QCOMPARE(group->groupYRawDataRange(), std::make_pair(-90.0, 90.0));
    manager->getCurve("a")->setDataType(OrvexCurveDataType::DbNormalizedData);
    QCOMPARE(group->groupRange(false), std::make_pair(-92.0, -86.0));
}

QTEST_MAIN(tst_OrvexCurve)
#include "tst_orvexcurve.moc"
