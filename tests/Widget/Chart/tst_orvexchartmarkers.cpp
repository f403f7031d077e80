#include "ChartTestHelpers.h"

#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/PointMarker.h"

using namespace Gui::Widget;
using namespace ChartTest;

Q_DECLARE_METATYPE(MarkerType)

namespace {

// Opens the process-wide name sets to the tests.
class NameProbe : public PointMarker
{
public:
    using Marker::g_existingLabels;
    using Marker::g_existingVariableNames;
};

std::string smallestFree(const std::unordered_set<std::string>& taken)
{
    int k = 1;
    while (taken.count("Marker_" + std::to_string(k)))
        ++k;
    return "Marker_" + std::to_string(k);
}

// A shown view with y = x (or y = 10 - x) on 0..10 in s and V, fitted.
std::shared_ptr<OrvexCurve> line(OrvexChartView* view, bool falling = false)
{
    std::vector<double> x;
    std::vector<double> y;
    for (int i = 0; i <= 100; ++i) {
        x.push_back(i / 10.0);
        y.push_back(falling ? 10 - i / 10.0 : i / 10.0);
    }
    auto curve = addCurve(view, x, y, "line");
    curve->setXUnit("s");
    curve->setYUnit("V");
    return curve;
}

} // namespace

class TestOrvexChartMarkers : public QObject
{
    Q_OBJECT

private slots:
    void labels();
    void hintTexts_data();
    void hintTexts();
    void hitTest();
    void addAndDragByMouse_data();
    void addAndDragByMouse();
    void markerFollowsCurve();
    void markerMenu_data();
    void markerMenu();
};

void TestOrvexChartMarkers::labels()
{
    // Labels are unique across charts; variable names come from their own set, made on first use.
    auto a = makeView(300, 300);
    auto b = makeView(300, 300);
    const std::string first = smallestFree(NameProbe::g_existingLabels);
    auto m1 = a->getMarkerManager()->createMarker(QPointF(1, 1), MarkerType::PointMarker, "");
    QCOMPARE(m1->label(), first);
    const std::string second = smallestFree(NameProbe::g_existingLabels);
    auto m2 = b->getMarkerManager()->createMarker(QPointF(1, 1), MarkerType::VerticalLineMarker, "");
    QCOMPARE(m2->label(), second);
    const std::string var = smallestFree(NameProbe::g_existingVariableNames);
    QCOMPARE(m2->variableName(), var);
    QVERIFY(m1->variableName() != var);
    // A label in use gets a suffix; a marker's own label is no change.
    QVERIFY(m1->setLabel("peak", true) && m2->setLabel("peak", true));
    QCOMPARE(m2->label(), std::string("peak_1"));
    QVERIFY(!m2->setLabel("peak_1", true));
    QCOMPARE(b->getMarkerManager()->getMarkerByTitle("peak_1"), m2);
}

void TestOrvexChartMarkers::hintTexts_data()
{
    QTest::addColumn<MarkerType>("type");
    QTest::addColumn<bool>("polar");
    QTest::addColumn<bool>("attached");
    QTest::addColumn<QStringList>("texts");
    const auto point = MarkerType::PointMarker;
    const auto horizontal = MarkerType::HorizontalLineMarker;
    const auto vertical = MarkerType::VerticalLineMarker;
    QTest::newRow("point") << point << false << false << QStringList{" X = 1.5 ", " Y = 2.5 "};
    QTest::newRow("point polar") << point << true << false << QStringList{" Mag = 2.5 ", " Ang = 1.5 (Deg)"};
    QTest::newRow("horizontal attached") << horizontal << false << true << QStringList{"g Y = 2.5 V"};
    QTest::newRow("horizontal polar") << horizontal << true << false << QStringList{"g Mag = 2.5 "};
    QTest::newRow("vertical") << vertical << false << false << QStringList{"g X = 1.5 "};
    QTest::newRow("vertical attached") << vertical << false << true << QStringList{"g X = 1.5 s"};
    QTest::newRow("vertical polar") << vertical << true << false << QStringList{"g Ang = 1.5 (Deg)"};
}

void TestOrvexChartMarkers::hintTexts()
{
    QFETCH(MarkerType, type);
    QFETCH(bool, polar);
    QFETCH(bool, attached);
    auto view = makeView(500, 400);
    auto curve = line(view.get());
    if (polar)
        view->changeViewTypeTo(OrvexChartView::Polar);
    auto marker = view->getMarkerManager()->createMarker(QPointF(1.5, 2.5), type, "");
    if (attached)
        marker->setCurveId(curve->id());
    QTEST(marker->hintTexts(), "texts");
    QCOMPARE(marker->hintLines().first(), QString::fromStdString(marker->label()));
    QVERIFY(!marker->getHintRect().isEmpty());
}

void TestOrvexChartMarkers::hitTest()
{
    auto view = makeView(600, 400);
    line(view.get());
    auto manager = view->getMarkerManager();
    auto a = manager->createMarker(QPointF(2, 2), MarkerType::PointMarker, "a");
    auto b = manager->createMarker(QPointF(7, 7), MarkerType::PointMarker, "b");
    // Deliberately highlighted until the first hit test.
    QVERIFY(a->highlight() && b->highlight());
    QCOMPARE(manager->findClosestMarker(b->getHintRect().center()), b);
    QVERIFY(!a->highlight() && b->highlight());
    QCOMPARE(manager->getHoveredMarker(), b);
    QVERIFY(!manager->findClosestMarker(QPointF(-50, -50)));
    QVERIFY(!a->highlight() && !b->highlight());
    QVERIFY(!manager->getHoveredMarker());
    QVERIFY(!manager->deleteHoveredMarker());
    // Of two boxes under the point, the marker nearest to it wins; hidden markers are not hit.
    auto c = manager->createMarker(QPointF(2, 2), MarkerType::PointMarker, "c");
    const QRectF overlap = a->getHintRect().intersected(c->getHintRect());
    QVERIFY(!overlap.isEmpty());
    const auto winner = manager->findClosestMarker(overlap.center());
    QVERIFY(winner == a || winner == c);
    QCOMPARE(int(a->highlight()) + int(c->highlight()), 1);
    winner->setVisible(false);
    QCOMPARE(manager->findClosestMarker(overlap.center()), winner == a ? c : a);
    QVERIFY(manager->deleteHoveredMarker());
    QCOMPARE(manager->allMarkers().size(), std::size_t(2));
    manager->clear();
    QVERIFY(manager->allMarkers().empty());
}

void TestOrvexChartMarkers::addAndDragByMouse_data()
{
    QTest::addColumn<MarkerType>("type");
    QTest::addColumn<QString>("typeText");
    QTest::addColumn<QString>("symbolText");
    QTest::addColumn<bool>("detach"); // before the drag
    QTest::newRow("point") << MarkerType::PointMarker << "PointMarker" << "Circle" << false;
    QTest::newRow("horizontal") << MarkerType::HorizontalLineMarker << "HorizontalLineMarker" << "None" << false;
    QTest::newRow("vertical") << MarkerType::VerticalLineMarker << "VerticalLineMarker" << "None" << false;
    QTest::newRow("detached vertical") << MarkerType::VerticalLineMarker << "VerticalLineMarker" << "None" << true;
}

void TestOrvexChartMarkers::addAndDragByMouse()
{
    QFETCH(MarkerType, type);
    QFETCH(QString, typeText);
    QFETCH(QString, symbolText);
    QFETCH(bool, detach);
    RecordingHost host;
    auto view = makeView(600, 400);
    auto curve = line(view.get());
    auto manager = view->getMarkerManager();
    const QString chart = QString::fromStdString(view->variableName());
    manager->beginAddingMarker(type);
    QCOMPARE(manager->state(), MarkerState::Adding);
    // A press 3 px beside the curve point (4, 4) adds a marker bound to the curve.
    const QPoint at = viewPos(view.get(), view->valueToScene(QPointF(4, 4)) + QPointF(3, 0));
    const QPointF pressed = view->sceneToValue(view->mapToScene(at));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QCOMPARE(manager->state(), MarkerState::Idle);
    QCOMPARE(manager->allMarkers().size(), std::size_t(1));
    const auto marker = manager->allMarkers().front();
    QCOMPARE(marker->type(), type);
    QCOMPARE(marker->curveId(), curve->id());
    if (type == MarkerType::PointMarker)
        QCOMPARE(marker->data(), QPointF(4, 4));
    const QString label = QString::fromStdString(marker->label());
    QCOMPARE(host.statements,
             QStringList({QString("%1.add_marker('%2', [%3,%4], pelo3dqtui.MarkerType.%5, pelo3dqtui.MarkerSymbol.%6)")
                              .arg(chart, label, QString::number(pressed.x(), 'f', 6),
                                   QString::number(pressed.y(), 'f', 6), typeText, symbolText),
                          QString("%1=%2.get_marker('%3')")
                              .arg(QString::fromStdString(marker->variableName()), chart, label)}));

    // Dragged towards the curve point (6, 6), a little off the line, it stays on the curve unless detached.
    host.statements.clear();
    if (detach)
        marker->detach();
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      viewPos(view.get(), marker->getHintRect().center()));
    QCOMPARE(manager->state(), MarkerState::Dragging);
    QCOMPARE(manager->getDraggedMarker(), marker);
    const QPoint target = viewPos(view.get(), view->valueToScene(QPointF(6, 6)) + QPointF(0, 4));
    moveMouse(view.get(), target);
    const QPointF mouse = view->sceneToValue(view->mapToScene(target));
    const QPointF expected = detach                                   ? mouse
                             : type == MarkerType::PointMarker        ? QPointF(6, 6)
                             : type == MarkerType::VerticalLineMarker ? QPointF(mouse.x(), mouse.x())
                                                                      : QPointF(mouse.y(), mouse.y());
    QVERIFY2(QLineF(marker->data(), expected).length() < 1e-9,
             qPrintable(QString("%1 %2").arg(marker->data().x()).arg(marker->data().y())));
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, target);
    QCOMPARE(manager->state(), MarkerState::Idle);
    QVERIFY(!manager->getDraggedMarker());
    QCOMPARE(host.statements, QStringList(QString("%1.get_marker('%2').set_properties({'position' : [%3,%4]})")
                                              .arg(chart, label, QString::number(expected.x(), 'f', 6),
                                                   QString::number(expected.y(), 'f', 6))));
    // The next press is an ordinary one again.
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, at + QPoint(40, 40));
    QCOMPARE(manager->allMarkers().size(), std::size_t(1));
}

void TestOrvexChartMarkers::markerFollowsCurve()
{
    auto view = makeView(600, 400);
    auto curve = line(view.get());
    auto manager = view->getMarkerManager();
    auto vertical = manager->createMarker(QPointF(4, 0), MarkerType::VerticalLineMarker, "");
    vertical->attach(curve->id());
    auto horizontal = manager->createMarker(QPointF(0, 3), MarkerType::HorizontalLineMarker, "");
    horizontal->attach(curve->id());
    view->refreshAllMarkersPosition();
    QCOMPARE(vertical->data(), QPointF(4, 4));
    QCOMPARE(horizontal->data(), QPointF(3, 3));
    // New data: y = 2x.
    std::vector<double> y;
    for (double v : curve->xData())
        y.push_back(2 * v);
    curve->setData(curve->xData(), y);
    emit curve->dataChanged();
    QCOMPARE(vertical->data(), QPointF(4, 8));
    QCOMPARE(horizontal->data(), QPointF(1.5, 3));
    // A removed curve leaves its markers detached where they are.
    view->getCurveManager()->removeCurve(curve->id());
    view->refreshAllMarkersPosition();
    QVERIFY(!vertical->attached());
    QCOMPARE(vertical->data(), QPointF(4, 8));
}

void TestOrvexChartMarkers::markerMenu_data()
{
    QTest::addColumn<MarkerType>("type");
    QTest::addColumn<bool>("attached");
    QTest::addColumn<bool>("polar");
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("entry"); // triggered
    QTest::addColumn<QPointF>("data");  // afterwards
    QTest::addColumn<bool>("attachedAfter");
    QTest::addColumn<int>("count");
    const auto point = MarkerType::PointMarker;
    const QStringList tail = {"Configure", "Detach", "Delete"};
    const QStringList x = {"Move to X Min", "Move to X Max"};
    const QStringList y = {"Move to Y Min", "Move to Y Max"};
    const QStringList polar = {"Move to Angular Min", "Move to Angular Max", "Move to Magnitude Min",
                               "Move to Magnitude Max"};
    const auto row = [&](const char* name, MarkerType type, bool attached, bool polar, const QStringList& entries,
                         const char* entry = "", QPointF data = QPointF(5, 5), bool after = true, int count = 1) {
        QTest::newRow(name) << type << attached << polar << entries << QString(entry) << data << after << count;
    };
    // On y = 10 - x every extreme is a different point.
    row("x min", point, true, false, x + y + tail, "Move to X Min", QPointF(0, 10));
    row("x max", point, true, false, x + y + tail, "Move to X Max", QPointF(10, 0));
    row("y min", point, true, false, x + y + tail, "Move to Y Min", QPointF(10, 0));
    row("y max", point, true, false, x + y + tail, "Move to Y Max", QPointF(0, 10));
    row("detach", point, true, false, x + y + tail, "Detach", QPointF(5, 5), false);
    row("delete", point, true, false, x + y + tail, "Delete", QPointF(5, 5), true, 0);
    row("polar point", point, true, true, polar + tail);
    row("vertical", MarkerType::VerticalLineMarker, true, false, x + tail);
    row("horizontal", MarkerType::HorizontalLineMarker, true, false, y + tail);
    row("detached point", point, false, false, {"Configure", "Attach", "Delete"}, "", QPointF(5, 5), false);
}

void TestOrvexChartMarkers::markerMenu()
{
    QFETCH(MarkerType, type);
    QFETCH(bool, attached);
    QFETCH(bool, polar);
    QFETCH(QString, entry);
    auto view = makeView(600, 400);
    auto curve = line(view.get(), true);
    if (polar)
        view->changeViewTypeTo(OrvexChartView::Polar);
    auto marker = view->getMarkerManager()->createMarker(QPointF(5, 5), type, "");
    if (attached)
        marker->attach(curve->id());
    settle(view.get());
    MenuInspector inspector(entry);
    rightClick(view.get(), marker->getHintRect().center());
    QVERIFY(inspector.seen);
    QTEST(inspector.entries, "entries");
    QTEST(int(view->getMarkerManager()->allMarkers().size()), "count");
    QTEST(marker->data(), "data");
    QTEST(marker->attached(), "attachedAfter");
}

QTEST_MAIN(TestOrvexChartMarkers)
#include "tst_orvexchartmarkers.moc"
