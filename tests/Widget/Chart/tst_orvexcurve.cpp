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

std::vector<double> toStd(const Doubles& v)
{
    return std::vector<double>(v.begin(), v.end());
}

std::shared_ptr<OrvexCurveManager> makeManager()
{
    return std::make_shared<OrvexCurveManager>(nullptr);
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
    void extremes_data();
    void extremes();
    void cachedAnswersFollowChanges_data();
    void cachedAnswersFollowChanges();
    void groupSignalsAndFlags();
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
        QVERIFY2(same(actual[i].x(), points[i].x()) && same(actual[i].y(), points[i].y()),
                 qPrintable(QString::number(i)));
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
    QTest::newRow("removed from its group")
        << CurveAction([](OrvexCurve& c) { c.group().lock()->removeCurve(c.id()); });
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

void tst_OrvexCurve::groupSignalsAndFlags()
{
    auto manager = makeManager();
    QSignalSpy currentChanges(manager.get(), &OrvexCurveManager::currentGroupChanged);
    manager->createCurve("first"); // makes a current group
    QVERIFY(manager->getCurrentGroup());
    QCOMPARE(currentChanges.count(), 1);
    auto group = manager->createGroup("g");
    QVERIFY(manager->getCurrentGroup() != group);
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

QTEST_MAIN(tst_OrvexCurve)
#include "tst_orvexcurve.moc"
