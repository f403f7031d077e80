#include "ChartTestHelpers.h"

#include "Widget/Chart/ChartMarkerGroup.h"
#include "Widget/Chart/HorizontalLineMarker.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/PointMarker.h"
#include "Widget/Chart/VerticalLineMarker.h"

#include <QRegularExpression>

using namespace Gui::Widget;
using namespace ChartTest;

Q_DECLARE_METATYPE(MarkerType)

namespace {

// Opens the class-wide name sets to the tests.
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

// y = x on 0..10 with units, fitted in a shown view.
std::shared_ptr<OrvexCurve> diagonal(OrvexChartView* view)
{
    std::vector<double> x;
    for (int i = 0; i <= 100; ++i)
        x.push_back(i / 10.0);
    auto curve = addCurve(view, x, x, "diagonal");
    curve->setXUnit("s");
    curve->setYUnit("V");
    return curve;
}

} // namespace

class TestOrvexChartMarkers : public QObject
{
    Q_OBJECT

private slots:
    void labelsAcrossCharts();
    void relabel();
    void symbols_data();
    void symbols();
    void hintTexts_data();
    void hintTexts();
    void hitTestHighlightRule();
    void addByMouse_data();
    void addByMouse();
    void dragAttachedMarker();
    void dragDetachedLineMarker();
    void markerFollowsCurve();
    void markerMenu_data();
    void markerMenu();
    void markerMenuActs_data();
    void markerMenuActs();
    void deleteAndClear();
    void labelDrawn();
};

void TestOrvexChartMarkers::labelsAcrossCharts()
{
    auto a = makeView(300, 300);
    auto b = makeView(300, 300);
    const std::string first = smallestFree(NameProbe::g_existingLabels);
    auto m1 = a->getMarkerManager()->createMarker(QPointF(1, 1), MarkerType::PointMarker, "");
    QCOMPARE(m1->label(), first);
    const std::string second = smallestFree(NameProbe::g_existingLabels);
    auto m2 = b->getMarkerManager()->createMarker(QPointF(1, 1), MarkerType::VerticalLineMarker, "");
    QCOMPARE(m2->label(), second);
    QVERIFY(first != second);
    // Variable names come from their own set, made on first use.
    const std::string var = smallestFree(NameProbe::g_existingVariableNames);
    QCOMPARE(m2->variableName(), var);
    QCOMPARE(m2->variableName(), var);
    QVERIFY(m1->variableName() != var);
}

void TestOrvexChartMarkers::relabel()
{
    auto view = makeView(300, 300);
    auto a = view->getMarkerManager()->createMarker(QPointF(), MarkerType::PointMarker, "");
    auto b = view->getMarkerManager()->createMarker(QPointF(), MarkerType::PointMarker, "");
    QVERIFY(a->setLabel("peak", true));
    QVERIFY(b->setLabel("peak", true));
    QCOMPARE(a->label(), std::string("peak"));
    QCOMPARE(b->label(), std::string("peak_1"));
    QVERIFY(!b->setLabel("peak_1", true));
    QCOMPARE(view->getMarkerManager()->getMarkerByTitle("peak_1"), b);
}

void TestOrvexChartMarkers::symbols_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    const QStringList texts = {QChar(0x25C7), QChar(0x25B3), QChar(0x25BD), QChar(0x25A1), QChar(0x25EF), QChar(0x2500),
                               QChar(0x2502), QChar(0x2573), QChar(0x253C), "\\", "/", "None"};
    for (int i = 0; i < texts.size(); ++i)
        QTest::addRow("symbol %d", i) << i << texts[i];
}

void TestOrvexChartMarkers::symbols()
{
    QFETCH(int, symbol);
    auto view = makeView(300, 300);
    auto marker = std::dynamic_pointer_cast<PointMarker>(
        view->getMarkerManager()->createMarker(QPointF(), MarkerType::PointMarker, ""));
    marker->setSymbol(MarkerSymbol(symbol));
    QTEST(marker->symbolString(), "text");
}

void TestOrvexChartMarkers::hintTexts_data()
{
    QTest::addColumn<MarkerType>("type");
    QTest::addColumn<bool>("polar");
    QTest::addColumn<bool>("attached");
    QTest::addColumn<QStringList>("texts");
    const auto row = [](const char* name, MarkerType type, bool polar, bool attached, const QStringList& texts) {
        QTest::newRow(name) << type << polar << attached << texts;
    };
    const auto point = MarkerType::PointMarker;
    const auto horizontal = MarkerType::HorizontalLineMarker;
    const auto vertical = MarkerType::VerticalLineMarker;
    row("point", point, false, false, {" X = 1.5 ", " Y = 2.5 "});
    row("point polar", point, true, false, {" Mag = 2.5 ", " Ang = 1.5 (Deg)"});
    row("horizontal", horizontal, false, false, {"g Y = 2.5 "});
    row("horizontal attached", horizontal, false, true, {"g Y = 2.5 V"});
    row("horizontal polar", horizontal, true, false, {"g Mag = 2.5 "});
    row("vertical", vertical, false, false, {"g X = 1.5 "});
    row("vertical attached", vertical, false, true, {"g X = 1.5 s"});
    row("vertical polar", vertical, true, false, {"g Ang = 1.5 (Deg)"});
}

void TestOrvexChartMarkers::hintTexts()
{
    QFETCH(MarkerType, type);
    QFETCH(bool, polar);
    QFETCH(bool, attached);
    auto view = makeView(500, 400);
    auto curve = diagonal(view.get());
    if (polar)
        view->changeViewTypeTo(OrvexChartView::Polar);
    auto marker = view->getMarkerManager()->createMarker(QPointF(1.5, 2.5), type, "");
    if (attached)
        marker->setCurveId(curve->id());
    QTEST(marker->hintTexts(), "texts");
    QCOMPARE(marker->hintLines().first(), QString::fromStdString(marker->label()));
    QVERIFY(!marker->getHintRect().isEmpty());
}

void TestOrvexChartMarkers::hitTestHighlightRule()
{
    auto view = makeView(600, 400);
    diagonal(view.get());
    auto manager = view->getMarkerManager();
    auto a = manager->createMarker(QPointF(2, 2), MarkerType::PointMarker, "a");
    auto b = manager->createMarker(QPointF(7, 7), MarkerType::PointMarker, "b");
    // Deliberately highlighted until the first hit test.
    QVERIFY(a->highlight() && b->highlight());
    QCOMPARE(manager->findClosestMarker(b->getHintRect().center()), b);
    QVERIFY(!a->highlight());
    QVERIFY(b->highlight());
    QCOMPARE(manager->getHoveredMarker(), b);
    QVERIFY(!manager->findClosestMarker(QPointF(-50, -50)));
    QVERIFY(!a->highlight() && !b->highlight());
    QVERIFY(!manager->getHoveredMarker());
    // Of two boxes under the point, the marker nearest to it wins.
    auto c = manager->createMarker(QPointF(2, 2), MarkerType::PointMarker, "c");
    const QRectF overlap = a->getHintRect().intersected(c->getHintRect());
    QVERIFY(!overlap.isEmpty());
    const auto winner = manager->findClosestMarker(overlap.center());
    QVERIFY(winner == a || winner == c);
    QCOMPARE(int(a->highlight()) + int(c->highlight()), 1);
}

void TestOrvexChartMarkers::addByMouse_data()
{
    QTest::addColumn<MarkerType>("type");
    QTest::addColumn<QString>("typeText");
    QTest::addColumn<QString>("symbolText");
    QTest::newRow("point") << MarkerType::PointMarker << "PointMarker" << "Circle";
    QTest::newRow("horizontal") << MarkerType::HorizontalLineMarker << "HorizontalLineMarker" << "None";
    QTest::newRow("vertical") << MarkerType::VerticalLineMarker << "VerticalLineMarker" << "None";
}

void TestOrvexChartMarkers::addByMouse()
{
    QFETCH(MarkerType, type);
    QFETCH(QString, typeText);
    QFETCH(QString, symbolText);
    RecordingHost host;
    auto view = makeView(600, 400);
    auto curve = diagonal(view.get());
    auto manager = view->getMarkerManager();
    manager->beginAddingMarker(type);
    QCOMPARE(manager->state(), MarkerState::Adding);
    // A press 3 px beside the curve point (4, 4).
    const QPoint at = viewPos(view.get(), view->valueToScene(QPointF(4, 4)) + QPointF(3, 0));
    const QPointF pressed = view->sceneToValue(view->mapToScene(at));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QCOMPARE(manager->state(), MarkerState::Idle);
    const auto markers = manager->allMarkers();
    QCOMPARE(markers.size(), std::size_t(1));
    const auto marker = markers.front();
    QCOMPARE(marker->type(), type);
    QCOMPARE(marker->curveId(), curve->id());
    if (type == MarkerType::PointMarker)
        QCOMPARE(marker->data(), QPointF(4, 4));
    const QString chart = QString::fromStdString(view->variableName());
    const QString label = QString::fromStdString(marker->label());
    QCOMPARE(host.statements.size(), 2);
    QCOMPARE(host.statements[0], QString("%1.add_marker('%2', [%3,%4], pelo3dqtui.MarkerType.%5, "
                                         "pelo3dqtui.MarkerSymbol.%6)")
                                     .arg(chart, label, QString::number(pressed.x(), 'f', 6),
                                          QString::number(pressed.y(), 'f', 6), typeText, symbolText));
    QCOMPARE(host.statements[1], QString("%1=%2.get_marker('%3')")
                                     .arg(QString::fromStdString(marker->variableName()), chart, label));
    // The next press is an ordinary one again.
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, at + QPoint(40, 40));
    QCOMPARE(manager->allMarkers().size(), std::size_t(1));
}

void TestOrvexChartMarkers::dragAttachedMarker()
{
    RecordingHost host;
    auto view = makeView(600, 400);
    auto curve = diagonal(view.get());
    auto manager = view->getMarkerManager();
    auto marker = manager->createMarker(QPointF(3, 3), MarkerType::PointMarker, "");
    marker->attach(curve->id());
    const QPoint grab = viewPos(view.get(), marker->getHintRect().center());
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, grab);
    QCOMPARE(manager->state(), MarkerState::Dragging);
    QCOMPARE(manager->getDraggedMarker(), marker);
    // Move towards the curve point (6, 6), a little off the line.
    const QPoint target = viewPos(view.get(), view->valueToScene(QPointF(6, 6)) + QPointF(0, 4));
    moveMouse(view.get(), target);
    QCOMPARE(marker->data(), QPointF(6, 6));
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, target);
    QCOMPARE(manager->state(), MarkerState::Idle);
    QVERIFY(!manager->getDraggedMarker());
    QCOMPARE(host.statements.last(),
             QString("%1.get_marker('%2').set_properties({'position' : [6.000000,6.000000]})")
                 .arg(QString::fromStdString(view->variableName()), QString::fromStdString(marker->label())));
}

void TestOrvexChartMarkers::dragDetachedLineMarker()
{
    auto view = makeView(600, 400);
    diagonal(view.get());
    auto manager = view->getMarkerManager();
    auto marker = manager->createMarker(QPointF(5, 5), MarkerType::VerticalLineMarker, "");
    const QPoint grab = viewPos(view.get(), marker->getHintRect().center());
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, grab);
    const QPoint target = grab + QPoint(60, 0);
    moveMouse(view.get(), target);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, target);
    const double expected = view->sceneToValue(view->mapToScene(target)).x();
    QVERIFY(std::fabs(marker->data().x() - expected) < 1e-9);
    QVERIFY(!marker->attached());
}

void TestOrvexChartMarkers::markerFollowsCurve()
{
    auto view = makeView(600, 400);
    auto curve = diagonal(view.get());
    auto manager = view->getMarkerManager();
    auto vertical = manager->createMarker(QPointF(4, 0), MarkerType::VerticalLineMarker, "");
    vertical->attach(curve->id());
    auto horizontal = manager->createMarker(QPointF(0, 3), MarkerType::HorizontalLineMarker, "");
    horizontal->attach(curve->id());
    view->refreshAllMarkersPosition();
    QCOMPARE(vertical->data(), QPointF(4, 4));
    QCOMPARE(horizontal->data(), QPointF(3, 3));
    // New data: y = 2x.
    std::vector<double> x(curve->xData());
    std::vector<double> y;
    for (double v : x)
        y.push_back(2 * v);
    curve->setData(x, y);
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
    const QStringList tail = {"Configure", "Detach", "Delete"};
    const QStringList x = {"Move to X Min", "Move to X Max"};
    const QStringList y = {"Move to Y Min", "Move to Y Max"};
    QTest::newRow("attached point") << MarkerType::PointMarker << true << false << x + y + tail;
    QTest::newRow("attached point polar")
        << MarkerType::PointMarker << true << true
        << QStringList{"Move to Angular Min", "Move to Angular Max", "Move to Magnitude Min", "Move to Magnitude Max"}
            + tail;
    QTest::newRow("attached vertical") << MarkerType::VerticalLineMarker << true << false << x + tail;
    QTest::newRow("attached horizontal") << MarkerType::HorizontalLineMarker << true << false << y + tail;
    QTest::newRow("detached point") << MarkerType::PointMarker << false << false
                                    << QStringList{"Configure", "Attach", "Delete"};
}

void TestOrvexChartMarkers::markerMenu()
{
    QFETCH(MarkerType, type);
    QFETCH(bool, attached);
    QFETCH(bool, polar);
    QFETCH(QStringList, entries);
    auto view = makeView(600, 400);
    auto curve = diagonal(view.get());
    if (polar)
        view->changeViewTypeTo(OrvexChartView::Polar);
    auto marker = view->getMarkerManager()->createMarker(QPointF(5, 5), type, "");
    if (attached)
        marker->attach(curve->id());
    settle(view.get());
    MenuInspector inspector;
    rightClick(view.get(), marker->getHintRect().center());
    QVERIFY(inspector.seen);
    QCOMPARE(inspector.entries, entries);
}

void TestOrvexChartMarkers::markerMenuActs_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QPointF>("data");
    QTest::addColumn<bool>("attached");
    QTest::addColumn<int>("count");
    QTest::newRow("x min") << "Move to X Min" << QPointF(0, 0) << true << 1;
    QTest::newRow("x max") << "Move to X Max" << QPointF(10, 10) << true << 1;
    QTest::newRow("y min") << "Move to Y Min" << QPointF(0, 0) << true << 1;
    QTest::newRow("y max") << "Move to Y Max" << QPointF(10, 10) << true << 1;
    QTest::newRow("detach") << "Detach" << QPointF(5, 5) << false << 1;
    QTest::newRow("delete") << "Delete" << QPointF(5, 5) << true << 0;
}

void TestOrvexChartMarkers::markerMenuActs()
{
    QFETCH(QString, entry);
    auto view = makeView(600, 400);
    auto curve = diagonal(view.get());
    auto marker = view->getMarkerManager()->createMarker(QPointF(5, 5), MarkerType::PointMarker, "");
    marker->attach(curve->id());
    MenuInspector inspector(entry);
    rightClick(view.get(), marker->getHintRect().center());
    QVERIFY(inspector.entries.contains(entry));
    QTEST(int(view->getMarkerManager()->allMarkers().size()), "count");
    QTEST(marker->data(), "data");
    QTEST(marker->attached(), "attached");
}

void TestOrvexChartMarkers::deleteAndClear()
{
    auto view = makeView(600, 400);
    diagonal(view.get());
    auto manager = view->getMarkerManager();
    auto a = manager->createMarker(QPointF(2, 2), MarkerType::PointMarker, "a");
    manager->createMarker(QPointF(8, 8), MarkerType::HorizontalLineMarker, "b");
    QCOMPARE(manager->getCurrentGroup()->size(), std::size_t(2));
    manager->findClosestMarker(a->getHintRect().center());
    QVERIFY(manager->deleteHoveredMarker());
    QVERIFY(!manager->getMarker("a"));
    QVERIFY(!manager->deleteHoveredMarker());
    manager->clear();
    QVERIFY(manager->allMarkers().empty());
}

void TestOrvexChartMarkers::labelDrawn()
{
    auto view = makeView(600, 400);
    diagonal(view.get());
    auto marker = view->getMarkerManager()->createMarker(QPointF(2, 6), MarkerType::PointMarker, "");
    marker->setColor(QColor(0, 0, 255));
    settle(view.get());
    const QRect box = marker->getHintRect().toAlignedRect().adjusted(2, 2, -2, -2);
    const QImage shown = grabView(view.get());
    marker->setVisible(false);
    const QImage hidden = grabView(view.get());
    // Text ink inside the label box only while the marker is visible.
    QVERIFY2(countInk(shown, box) > 30, qPrintable(QString::number(countInk(shown, box))));
    QCOMPARE(countInk(hidden, box), 0);
    // The symbol in the marker's colour at its position.
    const QPoint p = marker->position().toPoint();
    QVERIFY(countColour(shown, QRect(p - QPoint(8, 8), QSize(17, 17)), QColor(0, 0, 255), 60) > 5);
}

QTEST_MAIN(TestOrvexChartMarkers)
#include "tst_orvexchartmarkers.moc"
