#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

#include <functional>

using namespace Gui::Widget;

using CurveAction = std::function<void(OrvexCurve&)>;
using Doubles = QVector<double>;
Q_DECLARE_METATYPE(CurveAction)
Q_DECLARE_METATYPE(OrvexCurveDataType)
using Recolouring = QMap<int, int>;
using Points = QVector<QPointF>;

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

int nameNumber(const std::string& name)
{
    const auto match = QRegularExpression(QStringLiteral("^Curve_([1-9][0-9]*)$")).match(QString::fromStdString(name));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

int smallestFreeNumber()
{
    int k = 1;
    while (NameProbe::g_existingVariableNames.count("Curve_" + std::to_string(k)))
        ++k;
    return k;
}

// The normalised Y of @p curve worked out from the raw data of its whole group.
std::vector<double> referenceY(const OrvexCurve& curve, OrvexCurveDataType type)
{
    const auto raw = curve.yData(OrvexCurveDataType::RawData);
    if (type == OrvexCurveDataType::RawData || raw.empty())
        return raw;
    std::vector<double> all;
    if (const auto group = curve.group().lock()) {
        for (const auto& c : group->getAllCurves(false)) {
            const auto& y = c->yData(OrvexCurveDataType::RawData);
            all.insert(all.end(), y.begin(), y.end());
        }
    } else {
        all = raw;
    }
    const double lo = *std::min_element(all.begin(), all.end());
    const double hi = *std::max_element(all.begin(), all.end());
    std::vector<double> out;
    for (double y : raw) {
        if (type == OrvexCurveDataType::DbNormalizedData)
            out.push_back(y - hi);
        else
            out.push_back(hi == lo ? 0.0 : (y - lo) / (hi - lo));
    }
    return out;
}

void compareDoubles(const std::vector<double>& actual, const std::vector<double>& expected)
{
    QCOMPARE(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (!qFuzzyCompare(1.0 + actual[i], 1.0 + expected[i]))
            QFAIL(qPrintable(QStringLiteral("index %1: %2 != %3").arg(i).arg(actual[i]).arg(expected[i])));
    }
}

} // namespace

class tst_OrvexCurve : public QObject
{
    Q_OBJECT

private slots:
    void defaults();
    void palette_data();
    void palette();
    void variableNamesAcrossManagers();
    void variableNameSkipsTakenNames();
    void normalisation_data();
    void normalisation();
    void normalisationWithoutGroup();
    void extremes_data();
    void extremes();
    void cachedAnswersFollowChanges_data();
    void cachedAnswersFollowChanges();
    void setDataForms();
    void curveSignals_data();
    void curveSignals();
    void groupSignalsAndFlags();
    void managerStructure();
    void highlightIsExclusive();
    void groupRange();
    void contain_data();
    void contain();
};

void tst_OrvexCurve::defaults()
{
    auto curve = makeManager()->createCurve(std::string());
    QVERIFY(QRegularExpression(QStringLiteral("^\\{[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}\\}$"))
                .match(QString::fromStdString(curve->id()))
                .hasMatch());
    QCOMPARE(curve->label(), std::string("curve"));
    curve->setSuffix("[dB]");
    QCOMPARE(curve->label(), std::string("curve [dB]"));
    QCOMPARE(OrvexCurve(nullptr, "orphan").color(), QColor("red"));
}

void tst_OrvexCurve::palette_data()
{
    QTest::addColumn<int>("existing");
    QTest::addColumn<Recolouring>("recolour"); // existing curve index -> palette entry
    QTest::addColumn<int>("expectedEntry");

    QTest::newRow("first curve") << 0 << QMap<int, int>() << 0;
    QTest::newRow("entry 1 taken by the first") << 1 << QMap<int, int>{{0, 1}} << 0;
    QTest::newRow("gap left by a recoloured curve") << 3 << QMap<int, int>{{1, 7}} << 1;
    QTest::newRow("29 existing") << 29 << QMap<int, int>() << 29;
    QTest::newRow("30 existing wraps to 0 though taken") << 30 << QMap<int, int>() << 0;
    QTest::newRow("60 existing") << 60 << QMap<int, int>() << 0;
}

void tst_OrvexCurve::palette()
{
    QFETCH(int, existing);
    QFETCH(Recolouring, recolour);
    QFETCH(int, expectedEntry);

    auto manager = makeManager();
    auto group = manager->createGroup("g");
    std::vector<std::shared_ptr<OrvexCurve>> curves;
    for (int i = 0; i < existing; ++i)
        curves.push_back(group->createCurve(std::string()));
    for (auto it = recolour.begin(); it != recolour.end(); ++it)
        curves[static_cast<std::size_t>(it.key())]->setColor(OrvexCurve::paletteColor(it.value()));

    auto curve = group->createCurve(std::string());
    QCOMPARE(curve->color(), OrvexCurve::paletteColor(expectedEntry));
}

void tst_OrvexCurve::variableNamesAcrossManagers()
{
    auto first = makeManager();
    auto second = makeManager();
    auto a = first->createCurve("a");
    auto b = second->createCurve("b");
    auto c = first->createCurve("c");

    // Names are made on first use, in asking order, shared by all managers.
    const int expected = smallestFreeNumber();
    QCOMPARE(nameNumber(b->variableName()), expected);
    QCOMPARE(nameNumber(a->variableName()), expected + 1);
    QCOMPARE(nameNumber(c->variableName()), expected + 2);
    QCOMPARE(nameNumber(b->variableName()), expected);

    // Dropping a curve does not free its name.
    const std::string dropped = c->variableName();
    first->removeCurve("c");
    c.reset();
    auto d = second->createCurve("d");
    QVERIFY(d->variableName() != dropped);
    QCOMPARE(nameNumber(d->variableName()), expected + 3);
}

void tst_OrvexCurve::variableNameSkipsTakenNames()
{
    const int k = smallestFreeNumber();
    NameProbe::g_existingVariableNames.insert("Curve_" + std::to_string(k));
    NameProbe::g_existingVariableNames.insert("Curve_" + std::to_string(k + 2));
    QCOMPARE(NameProbe::generateVariableName(), "Curve_" + std::to_string(k + 1));
    QCOMPARE(NameProbe::generateVariableName(), "Curve_" + std::to_string(k + 3));
}

void tst_OrvexCurve::normalisation_data()
{
    QTest::addColumn<Doubles>("y1");
    QTest::addColumn<Doubles>("y2");
    QTest::addColumn<Doubles>("db1");
    QTest::addColumn<Doubles>("db2");
    QTest::addColumn<Doubles>("lin1");
    QTest::addColumn<Doubles>("lin2");

    QTest::newRow("maximum -3") << Doubles{-10, -5, -3} << Doubles{-8, -4} << Doubles{-7, -2, 0} << Doubles{-5, -1}
                                << Doubles{0, 5.0 / 7, 1} << Doubles{2.0 / 7, 6.0 / 7};
    QTest::newRow("peak in the other curve") << Doubles{-20} << Doubles{-40, 0} << Doubles{-20} << Doubles{-40, 0}
                                             << Doubles{0.5} << Doubles{0, 1};
    QTest::newRow("flat group") << Doubles{2, 2} << Doubles{2} << Doubles{0, 0} << Doubles{0} << Doubles{0, 0}
                                << Doubles{0};
    QTest::newRow("one curve empty") << Doubles{4, -6} << Doubles{} << Doubles{0, -10} << Doubles{} << Doubles{1, 0}
                                     << Doubles{};
}

void tst_OrvexCurve::normalisation()
{
    QFETCH(Doubles, y1);
    QFETCH(Doubles, y2);
    QFETCH(Doubles, db1);
    QFETCH(Doubles, db2);
    QFETCH(Doubles, lin1);
    QFETCH(Doubles, lin2);

    auto manager = makeManager();
    const auto xs = [](int n) {
        std::vector<double> x;
        for (int i = 0; i < n; ++i)
            x.push_back(i * 0.5);
        return x;
    };
    auto c1 = manager->createCurve(xs(y1.size()), toStd(y1), "c1");
    auto c2 = manager->createCurve(xs(y2.size()), toStd(y2), "c2");
    compareDoubles(c1->yData(OrvexCurveDataType::DbNormalizedData), toStd(db1));
    compareDoubles(c2->yData(OrvexCurveDataType::DbNormalizedData), toStd(db2));
    compareDoubles(c1->yData(OrvexCurveDataType::LinearNormalizedData), toStd(lin1));
    compareDoubles(c2->yData(OrvexCurveDataType::LinearNormalizedData), toStd(lin2));
    QCOMPARE(c1->xData(OrvexCurveDataType::LinearNormalizedData), xs(y1.size()));
    c1->setDataType(OrvexCurveDataType::DbNormalizedData); // the data type selects the form
    compareDoubles(c1->yData(), toStd(db1));
}

void tst_OrvexCurve::normalisationWithoutGroup()
{
    OrvexCurve curve(nullptr, "alone");
    curve.setData(std::vector<double>{0, 1, 2}, std::vector<double>{-9, -3, -6});
    compareDoubles(curve.yData(OrvexCurveDataType::DbNormalizedData), {-6, 0, -3});
    compareDoubles(curve.yData(OrvexCurveDataType::LinearNormalizedData), {0, 1, 0.5});
}

void tst_OrvexCurve::extremes_data()
{
    QTest::addColumn<Doubles>("x");
    QTest::addColumn<Doubles>("y");
    QTest::addColumn<OrvexCurveDataType>("type");
    QTest::addColumn<Doubles>("expected"); // xMin, xMax, yMin, yMax
    QTest::addColumn<Points>("points");    // at minimum X, maximum X, minimum Y, maximum Y

    QTest::newRow("raw") << Doubles{3, 1, 2} << Doubles{5, -1, 7} << OrvexCurveDataType::RawData
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
    QFETCH(Doubles, expected);
    QFETCH(Points, points);

    auto curve = makeManager()->createCurve(toStd(x), toStd(y), "c");
    curve->setDataType(type);
    QCOMPARE(Doubles({curve->xMin(), curve->xMax(), curve->yMin(), curve->yMax()}), expected);
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
        auto n = c.group().lock()->createCurve("low");
        n->setData(std::vector<double>{0}, std::vector<double>{-500});
    });
    QTest::newRow("moved to another group") << CurveAction([](OrvexCurve& c) {
        auto self = c.shared_from_this();
        auto old = c.group().lock();
        auto target = old->manager().lock()->createGroup("elsewhere");
        target->createCurve("peer")->setData(std::vector<double>{0}, std::vector<double>{-1000});
        old->removeCurve(c.id());
        target->addCurve(self);
    });
    QTest::newRow("removed from its group") << CurveAction([](OrvexCurve& c) { c.group().lock()->removeCurve(c.id()); });
}

void tst_OrvexCurve::cachedAnswersFollowChanges()
{
    QFETCH(CurveAction, change);

    auto manager = makeManager();
    auto group = manager->createGroup("g");
    manager->setCurrentGroup("g");
    auto curve = manager->createCurve(std::vector<double>{0, 1, 2, 3}, std::vector<double>{-6, -3, -9, -4}, "c");
    manager->createCurve(std::vector<double>{0, 1}, std::vector<double>{-20, -1}, "other");

    const auto check = [&] {
        for (auto type : {OrvexCurveDataType::RawData, OrvexCurveDataType::DbNormalizedData,
                          OrvexCurveDataType::LinearNormalizedData}) {
            const auto expected = referenceY(*curve, type);
            compareDoubles(curve->yData(type), expected);
            if (QTest::currentTestFailed())
                return;
            curve->setDataType(type);
            QCOMPARE(curve->yMax(), *std::max_element(expected.begin(), expected.end()));
            QCOMPARE(curve->yMin(), *std::min_element(expected.begin(), expected.end()));
        }
    };
    check(); // fills every cache
    if (QTest::currentTestFailed())
        return;
    change(*curve);
    check();
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

void tst_OrvexCurve::curveSignals_data()
{
    QTest::addColumn<CurveAction>("action");
    QTest::addColumn<QString>("signal");

    QTest::newRow("title") << CurveAction([](OrvexCurve& c) { c.setTitle("T"); }) << "titleChanged";
    QTest::newRow("suffix") << CurveAction([](OrvexCurve& c) { c.setSuffix("S"); }) << "suffixChanged";
    QTest::newRow("visible") << CurveAction([](OrvexCurve& c) { c.setVisible(false); }) << "visibilityChanged";
    QTest::newRow("highlight") << CurveAction([](OrvexCurve& c) { c.setHighlight(true); }) << "highlightChanged";
    QTest::newRow("color") << CurveAction([](OrvexCurve& c) { c.setColor(Qt::darkCyan); }) << "colorChanged";
}

void tst_OrvexCurve::curveSignals()
{
    QFETCH(CurveAction, action);
    QFETCH(QString, signal);

    OrvexCurve curve(nullptr, "c");
    QMap<QString, int> counts;
    connect(&curve, &OrvexCurve::titleChanged, this, [&](std::string) { ++counts["titleChanged"]; });
    connect(&curve, &OrvexCurve::suffixChanged, this, [&](std::string) { ++counts["suffixChanged"]; });
    connect(&curve, &OrvexCurve::visibilityChanged, this, [&](bool) { ++counts["visibilityChanged"]; });
    connect(&curve, &OrvexCurve::highlightChanged, this, [&](bool) { ++counts["highlightChanged"]; });
    connect(&curve, &OrvexCurve::colorChanged, this, [&](QColor) { ++counts["colorChanged"]; });
    connect(&curve, &OrvexCurve::dataChanged, this, [&] { ++counts["dataChanged"]; });

    action(curve);
    action(curve); // the same value again changes nothing
    QCOMPARE(counts, (QMap<QString, int>{{signal, 1}}));

    // Data changes are announced by the caller, not by setData.
    curve.setData(std::vector<double>{1}, std::vector<double>{1});
    QCOMPARE(counts.value("dataChanged"), 0);
}

void tst_OrvexCurve::groupSignalsAndFlags()
{
    auto manager = makeManager();
    auto group = manager->createGroup("g");
    QStringList events;
    connect(group.get(), &OrvexCurveGroup::curveAdded, this,
            [&](OrvexCurve* c) { events << "added " + QString::fromStdString(c->id()); });
    connect(group.get(), &OrvexCurveGroup::curveRemoving, this,
            [&](OrvexCurve* c) { events << "removing " + QString::fromStdString(c->id()); });
    connect(group.get(), &OrvexCurveGroup::beforeGroupDeleted, this, [&] { events << "group deleted"; });

    auto a = group->createCurve("a");
    auto b = group->createCurve("b");
    connect(a.get(), &OrvexCurve::beforeCurveDeleted, this, [&] { events << "a deleted"; });
    connect(b.get(), &OrvexCurve::beforeCurveDeleted, this, [&] { events << "b deleted"; });
    QCOMPARE(events, QStringList({"added a", "added b"}));

    QVERIFY(!group->curvesChanged());
    emit a->dataChanged();
    QVERIFY(group->curvesChanged());
    group->clearCurvesChanged();
    b->setVisible(false);
    QVERIFY(group->curvesChanged());

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
    QVERIFY(!manager->getCurrentGroup());
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

    manager->setCurrentGroup("hidden");
    QCOMPARE(currentChanges.count(), 2);
    QCOMPARE(manager->createCurve("third")->group().lock(), hidden);
    QVERIFY(manager->removeCurve("second"));
    QCOMPARE(hidden->getAllCurves(false).size(), std::size_t(1));
    manager->removeAll();
    QVERIFY(manager->groupIds().empty());
    QVERIFY(!manager->getCurrentGroup());
}

void tst_OrvexCurve::highlightIsExclusive()
{
    auto manager = makeManager();
    auto a = manager->createCurve("a");
    auto b = manager->createGroup("other")->createCurve("b");
    a->setHighlight(true);
    b->setHighlight(true);
    QVERIFY(!a->isHighlighted());
    QVERIFY(b->isHighlighted());
    b->setHighlight(false);
    QVERIFY(!a->isHighlighted());
}

void tst_OrvexCurve::groupRange()
{
    auto manager = makeManager();
    auto group = manager->createGroup("g");
    manager->setCurrentGroup("g");
    const auto empty = group->groupRange(false);
    QVERIFY(empty.first > empty.second);

    manager->createCurve(std::vector<double>{0, 5}, std::vector<double>{-2, 4}, "a");
    auto hidden = manager->createCurve(std::vector<double>{-50, 50}, std::vector<double>{-90, 90}, "b");
    hidden->setVisible(false);
    QCOMPARE(group->groupRange(true), std::make_pair(0.0, 5.0));
    QCOMPARE(group->groupRange(false), std::make_pair(-2.0, 4.0));
    // The raw Y range counts hidden curves as well.
    QCOMPARE(group->groupYRawDataRange(), std::make_pair(-90.0, 90.0));
    manager->getCurve("a")->setDataType(OrvexCurveDataType::DbNormalizedData);
    QCOMPARE(group->groupRange(false), std::make_pair(-92.0, -86.0));
}

void tst_OrvexCurve::contain_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("contained");

    QTest::newRow("data point") << QPointF(1, 10) << true;
    QTest::newRow("rounding noise") << QPointF(0.1 + 0.2, 30) << true;
    QTest::newRow("between points") << QPointF(0.5, 5) << false;
    QTest::newRow("x of one, y of another") << QPointF(1, 0) << false;
}

void tst_OrvexCurve::contain()
{
    QFETCH(QPointF, point);
    QFETCH(bool, contained);
    OrvexCurve curve(nullptr, "c");
    curve.setData(std::vector<double>{0, 1, 0.3}, std::vector<double>{0, 10, 30});
    QCOMPARE(curve.contain(point), contained);
}

QTEST_MAIN(tst_OrvexCurve)
#include "tst_orvexcurve.moc"
