#include "ChartTestHelpers.h"
#include "CerrCapture.h"
#include "FileDialogProbe.h"

#include "Scriptable/AQPushButton.h"
#include "Widget/Chart/ComponentInfo.h"
#include "Widget/Chart/LineMarker.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/OrvexCurveColorChooserButton.h" // ComponentInfo.h needs the complete type
#include "Widget/Chart/OrvexCurveConfigureDialog.h"
#include "Widget/Chart/PointMarker.h"

#include <QCheckBox>
#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>

using namespace ChartTest;
using Gui::Widget::LineMarker;
using Gui::Widget::Marker;
using Gui::Widget::MarkerType;
using Gui::Widget::OrvexCurveConfigureDialog;
using Gui::Widget::PointMarker;

namespace {

const QString kStepError = QStringLiteral("The step is too small, resulting in ticks count being greater than 100.");
const QString kMinError = QStringLiteral("The Min cannot be greater than the Max");
const QString kMaxError = QStringLiteral("The Max cannot be smaller than the Min");
const QString kLogError = QStringLiteral("the log divisions cannot be 0 or 1");
const QString kMagnitudeError = QStringLiteral("the magnitude divisions must be between 0 and 100");
const QString kAngularError = QStringLiteral("the angular divisions must be between 0 and 120");

template <typename T>
T* child(QWidget* parent, const QString& name)
{
    return parent->findChild<T*>(name);
}

/// Replaces the text as a user would and confirms it with Return.
void enter(QLineEdit* edit, const QString& text)
{
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

void clickBox(QCheckBox* box)
{
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
}

void clickButton(QAbstractButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton, {}, button->rect().center());
}

QStringList readLines(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)
                                          : QStringList();
}

QString rgba(const QColor& color)
{
    return QString::number(color.rgba());
}

} // namespace

class TestOrvexCurveConfigureDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void validation_data();
    void validation();
    void polarNormalisedAndExported();
    void applyPushesAndRecordsOnce_data();
    void applyPushesAndRecordsOnce();
    void exportLineChart();
    void dumpButtonOnlyInDebugMode_data();
    void dumpButtonOnlyInDebugMode();

private:
    std::unique_ptr<OrvexChartView> m_view;
    std::shared_ptr<OrvexCurve> m_first;
    std::shared_ptr<OrvexCurve> m_second;
    std::shared_ptr<Marker> m_point;
    std::shared_ptr<Marker> m_line;

    std::unique_ptr<OrvexCurveConfigureDialog> makeDialog()
    {
        auto dialog = std::make_unique<OrvexCurveConfigureDialog>(m_view.get());
        dialog->show();
        if (!QTest::qWaitForWindowExposed(dialog.get()))
            qWarning("dialog not exposed");
        // Most fields live on the "Axes" tab: open it as a user would.
        QTabBar* bar = dialog->findChild<QTabWidget*>("upperTabs")->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
        return dialog;
    }
};

void TestOrvexCurveConfigureDialog::init()
{
    qunsetenv("MCAD_POST_PROCESS_DEBUG");
    m_view = makeView();
    m_first = addCurve(m_view.get(), {0, 1, 2, 3}, {1, 4, 9, 16}, "first");
    m_second = addCurve(m_view.get(), {0, 1, 2, 3}, {2, 3, 5, 7}, "second");
    m_second->setSuffix("(2)");
    m_second->setColor(QColor(10, 20, 30, 200));
    auto markers = m_view->getMarkerManager();
    m_point = markers->createMarker(QPointF(1, 4), MarkerType::PointMarker, std::string());
    m_point->setLabel("P1", false);
    m_line = markers->createMarker(QPointF(2, 5), MarkerType::VerticalLineMarker, std::string());
    m_line->setLabel("L1", false);
    std::static_pointer_cast<LineMarker>(m_line)->setStyle(Qt::DashLine);
    settle(m_view.get());
}

void TestOrvexCurveConfigureDialog::validation_data()
{
    QTest::addColumn<bool>("polar");
    QTest::addColumn<QStringList>("before"); // "edit=text" entered, or a box clicked, in order
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, bool polar, const QStringList& before, const char* edit, const char* entry,
                        const char* shown, const QString& error = QString()) {
        QTest::newRow(name) << polar << before << QString(edit) << QString(entry) << QString(shown) << error;
    };
    const QStringList x10 = {"xMaxEdit=10", "xMinEdit=0"};
    const QStringList x5 = {"xMaxEdit=5", "xMinEdit=5"};
    row("x step 0.1 gives 100 ticks", false, x10, "xStepEdit", "0.1", "0.1");
    row("x step 0.09", false, x10, "xStepEdit", "0.09", "10", kStepError);
    row("x step negative", false, x10, "xStepEdit", "-1", "10", kStepError);
    row("y step measured against the x range", false, x10, "yStepEdit", "0.1", "0.1");
    row("y step with empty x range", false, x5, "yStepEdit", "0.0001", "0.0001");
    row("y step 0 with empty x range", false, x5, "yStepEdit", "0", "10", kStepError);
    row("x min above x max", false, {"xMaxEdit=3"}, "xMinEdit", "5", "0", kMinError);
    row("x min equal to x max", false, {"xMaxEdit=3"}, "xMinEdit", "3", "3");
    row("x max below x min", false, x10 + QStringList{"xMinEdit=4"}, "xMaxEdit", "2", "10", kMaxError);
    row("y min above y max", false, {"yMaxEdit=3"}, "yMinEdit", "7", "0", kMinError);
    row("reverted text has 6 digits", false, {"yMinEdit=0.123456789"}, "yMinEdit", "500", "0.123457", kMinError);
    row("x log base 1", false, {"xLogBox"}, "xLogBaseEdit", "1", "10", kLogError);
    row("x log base 0", false, {"xLogBox"}, "xLogBaseEdit", "0", "10", kLogError);
    row("x log base 0.5", false, {"xLogBox"}, "xLogBaseEdit", "0.5", "0.5");
    row("y log base 1", false, {"yLogBox"}, "yLogBaseEdit", "1", "10", kLogError);
    row("magnitude divisions 100", true, {}, "magnitudeDivisionsEdit", "100", "100");
    row("magnitude divisions 100.5", true, {}, "magnitudeDivisionsEdit", "100.5", "5", kMagnitudeError);
    row("magnitude divisions 0", true, {}, "magnitudeDivisionsEdit", "0", "5", kMagnitudeError);
    row("angular divisions 120", true, {}, "angularDivisionsEdit", "120", "120");
    row("angular divisions 121", true, {}, "angularDivisionsEdit", "121", "8", kAngularError);
    row("magnitude min above max", true, {"magnitudeAutoLimitsBox", "magnitudeMaxEdit=20"}, "magnitudeMinEdit", "30",
        "0", kMinError);
}

void TestOrvexCurveConfigureDialog::validation()
{
    QFETCH(bool, polar);
    QFETCH(QStringList, before);
    QFETCH(QString, edit);
    QFETCH(QString, entry);
    QFETCH(QString, shown);
    QFETCH(QString, error);

    // Known starting values: empty chart, range 0..100, steps 10, bases 10.
    m_view->getCurveManager()->removeAll();
    m_view->setStepX(10);
    m_view->setStepY(10);
    m_view->setRangeMagnitude(0, 100);
    if (polar)
        m_view->changeViewTypeTo(OrvexChartView::Polar);
    m_view->setRangeX(0, 100);
    m_view->setRangeY(0, 100);
    settle(m_view.get());
    auto dialog = makeDialog();
    if (!polar) {
        // Checked auto boxes keep the limits and steps read-only.
        QVERIFY(!child<QLineEdit>(dialog.get(), "xMinEdit")->isEnabled());
        QVERIFY(!child<QLineEdit>(dialog.get(), "yStepEdit")->isEnabled());
        for (const char* name : {"xAutoLimitsBox", "yAutoLimitsBox", "xAutoDivisionsBox", "yAutoDivisionsBox"})
            clickBox(child<QCheckBox>(dialog.get(), name));
    }
    for (const QString& step : before) {
        const QStringList parts = step.split(QLatin1Char('='));
        if (parts.size() == 1) {
            clickBox(child<QCheckBox>(dialog.get(), parts[0]));
            continue;
        }
        enter(child<QLineEdit>(dialog.get(), parts[0]), parts[1]);
        QCOMPARE(child<QLabel>(dialog.get(), "errorLabel")->text(), QString());
    }
    auto* target = child<QLineEdit>(dialog.get(), edit);
    QVERIFY(target->isEnabled() && target->isVisible());
    enter(target, entry);
    QCOMPARE(target->text(), shown);
    QCOMPARE(child<QLabel>(dialog.get(), "errorLabel")->text(), error);

    // The next accepted entry clears the message; a rejected one stored nothing.
    enter(target, shown);
    QCOMPARE(child<QLabel>(dialog.get(), "errorLabel")->text(), QString());
    QCOMPARE(target->text(), shown);
}

void TestOrvexCurveConfigureDialog::polarNormalisedAndExported()
{
    m_view->changeViewTypeTo(OrvexChartView::Polar);
    m_view->setMagnitudeAutoLimits(false);
    m_view->setMagnitudeLabel("Gain");
    m_view->setAngularLabel("Phi");
    m_view->setAngularDivisions(12);
    settle(m_view.get());
    auto dialog = makeDialog();
    auto* autoLimits = child<QCheckBox>(dialog.get(), "magnitudeAutoLimitsBox");
    auto* normalized = child<QCheckBox>(dialog.get(), "magnitudeNormalizedBox");
    auto* min = child<QLineEdit>(dialog.get(), "magnitudeMinEdit");
    QVERIFY(!autoLimits->isChecked() && min->isEnabled());
    // Normalised ticks force automatic limits and show the curves in dB.
    clickBox(normalized);
    QVERIFY(autoLimits->isChecked() && !autoLimits->isEnabled() && !min->isEnabled());
    for (const auto& curve : {m_first, m_second})
        QCOMPARE(curve->dataType(), Gui::Widget::OrvexCurveDataType::DbNormalizedData);

    QTemporaryDir dir;
    QVERIFY(dialog->dumpDialogInfo(dir.filePath("polar.txt")));
    const auto magnitude = m_view->getRangeMagnitude();
    const QStringList expected = {"Title: ", "Type: Polar", "Magnitude Axis: {", "Label: Gain",
                                  "Min: " + QString::number(magnitude.first, 'g', 6),
                                  "Max: " + QString::number(magnitude.second, 'g', 6), "Divisions: 5",
                                  "Auto Limits: 2", "Normalized: 2", "}", "Angular Axis: {", "Label: Phi",
                                  "Divisions: 12", "}", "Curves: {"};
    const QStringList written = readLines(dir.filePath("polar.txt"));
    QCOMPARE(written.mid(0, expected.size()), expected);
    QVERIFY(!written.contains("X Axis: {"));
    QVERIFY(written.contains("StyleDash"));
    CerrCapture capture;
    QVERIFY(!dialog->dumpDialogInfo("/nonexistent-folder/x/dump.txt"));
    QCOMPARE(capture.text().trimmed(), QByteArray("Cannot open file for writing:/nonexistent-folder/x/dump.txt"));

    clickBox(normalized);
    QVERIFY(autoLimits->isEnabled() && autoLimits->isChecked());
    for (const auto& curve : {m_first, m_second})
        QCOMPARE(curve->dataType(), Gui::Widget::OrvexCurveDataType::RawData);
}

void TestOrvexCurveConfigureDialog::applyPushesAndRecordsOnce_data()
{
    QTest::addColumn<bool>("bar");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("title");
    QTest::newRow("line chart, Apply") << false << "applyButton" << QStringLiteral("Return loss");
    QTest::newRow("bar chart, OK, quotes and non-ASCII title") << true << "okButton"
                                                               << QStringLiteral("It's \"S11\" \u00b5m \\ ok");
}

void TestOrvexCurveConfigureDialog::applyPushesAndRecordsOnce()
{
    QFETCH(bool, bar);
    QFETCH(QString, button);
    QFETCH(QString, title);
    if (bar)
        m_view->changeViewTypeTo(OrvexChartView::Bar);
    auto dialog = makeDialog();
    RecordingHost host;
    enter(child<QLineEdit>(dialog.get(), "titleEdit"), title);
    clickBox(child<QCheckBox>(dialog.get(), "xAutoLimitsBox"));
    enter(child<QLineEdit>(dialog.get(), "xMaxEdit"), "2.5");
    enter(child<QLineEdit>(dialog.get(), "xMinEdit"), "0.5");
    clickBox(child<QCheckBox>(dialog.get(), "yAutoDivisionsBox"));
    enter(child<QLineEdit>(dialog.get(), "yStepEdit"), "0.5");
    auto* curves = child<QTableWidget>(dialog.get(), "m_curveTableWidget");
    QCOMPARE(curves->horizontalHeaderItem(4)->text(), bar ? QStringLiteral("Bar Width") : QStringLiteral("Width"));
    clickBox(curves->cellWidget(0, 0)->findChild<QCheckBox*>());
    enter(qobject_cast<QLineEdit*>(curves->cellWidget(1, 1)), "renamed");
    qobject_cast<QComboBox*>(curves->cellWidget(1, 3))->setCurrentText("DashDot");
    qobject_cast<QComboBox*>(curves->cellWidget(1, 4))->setCurrentText("3");
    auto* points = child<QTableWidget>(dialog.get(), "m_pointMarkerTableWidget");
    enter(qobject_cast<QLineEdit*>(points->cellWidget(0, 1)), "Peak");
    qobject_cast<QComboBox*>(points->cellWidget(0, 2))->setCurrentText("Diamond");
    auto* lines = child<QTableWidget>(dialog.get(), "m_lineMarkerTableWidget");
    clickBox(lines->cellWidget(0, 0)->findChild<QCheckBox*>());
    qobject_cast<QComboBox*>(lines->cellWidget(0, 2))->setCurrentText("Solid");
    QVERIFY(host.statements.isEmpty()); // nothing reaches the chart before the button
    QCOMPARE(m_view->title(), std::string());

    clickButton(child<QtUIBase::AQPushButton>(dialog.get(), button));
    settle(m_view.get());
    QCOMPARE(dialog->isVisible(), button != "okButton");
    QCOMPARE(QString::fromStdString(m_view->title()), title);
    const auto rangeX = m_view->getRangeX(); // widened to whole ticks
    QVERIFY(!m_view->isAutoLimitsX() && rangeX.first <= 0.5 && rangeX.second >= 2.5 && rangeX.second < 3.5);
    QVERIFY(!m_view->isAutoDivisionsY());
    QCOMPARE(m_view->getStepY(), 0.5);
    QCOMPARE(m_view->getViewType(), bar ? OrvexChartView::Bar : OrvexChartView::Line);
    QVERIFY(!m_first->visible());
    QCOMPARE(m_second->title(), std::string("renamed"));
    QCOMPARE(m_second->lineStyle(), Qt::DashDotLine);
    QCOMPARE(bar ? m_second->barWidth() : m_second->width(), 3);
    QCOMPARE(bar ? m_second->width() : m_second->barWidth(), 1);
    // Labels are unique in the process: an earlier "Peak" gets a suffix.
    QVERIFY(QString::fromStdString(m_point->label()).startsWith("Peak"));
    QCOMPARE(std::static_pointer_cast<PointMarker>(m_point)->symbol(), Gui::Widget::Diamond);
    QVERIFY(!m_line->visible());
    QCOMPARE(std::static_pointer_cast<LineMarker>(m_line)->style(), Qt::SolidLine);

    // One statement; python parses it and hands it back as JSON, enum names as strings.
    QCOMPARE(host.statements.size(), 1);
    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    if (python.isEmpty())
        QSKIP("python3 not found: the recorded statement is not checked");
    QProcess process;
    process.start(python, {"-c", "import ast, json, sys\n"
                                 "call = ast.parse(sys.stdin.buffer.read().decode('utf-8')).body[0].value\n"
                                 "class Names(ast.NodeTransformer):\n"
                                 "    def visit_Attribute(self, node): return ast.Constant(ast.unparse(node))\n"
                                 "args = ast.literal_eval(Names().visit(call.args[0]))\n"
                                 "print(json.dumps({'call': ast.unparse(call.func), 'args': args}))\n"});
    QVERIFY(process.waitForStarted());
    process.write(host.statements.first().toUtf8());
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(20000));
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
    const QJsonObject out = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    QCOMPARE(out["call"].toString(), QString::fromStdString(m_view->variableName()) + ".set_properties");
    const QJsonObject args = out["args"].toObject();
    QStringList keys = {"title", "view_type", "use_x_log", "use_y_log", "names_in_labels", "transparent_background",
                        "match_text_color_to_line", "draw_connector", "x_auto_divisions", "x_auto_limits",
                        "y_auto_divisions", "y_auto_limits", "magnitude_auto_limits", "magnitude_normalized", "x_step",
                        "y_step", "x_log_base", "y_log_base", "magnitude_divisions", "angular_divisions", "x_range",
                        "y_range", "magnitude_range", "x_label", "y_label", "magnitude_label", "angular_label",
                        "curves", "components_color", "components_font", "point_markers", "line_markers"};
    keys.sort();
    QCOMPARE(args.keys(), keys);
    QCOMPARE(args["title"].toString(), title);
    QCOMPARE(args["view_type"].toString(),
             bar ? "pelo3dqtui.PlotType.RectangleBar" : "pelo3dqtui.PlotType.RectangleBrokenLine");
    QCOMPARE(args["x_range"].toArray(), QJsonArray({0.5, 2.5}));
    QCOMPARE(args["x_auto_limits"], QJsonValue(false));
    QCOMPARE(args["y_step"], QJsonValue(0.5));
    const QJsonObject colour{{"red", 10}, {"green", 20}, {"blue", 30}, {"alpha", 200}};
    QCOMPARE(args["curves"].toArray().at(1).toObject(),
             QJsonObject({{"visible", true}, {"name", "renamed"}, {"style", "DashDot"},
                          {bar ? "bar_width" : "width", 3}, {"color", colour}}));
    const QJsonObject point = args["point_markers"].toArray().at(0).toObject();
    QCOMPARE(point["symbol"].toString(), "pelo3dqtui.MarkerSymbol.Diamond");
    QCOMPARE(point["size"], QJsonValue(6));
    QCOMPARE(args["line_markers"].toArray().at(0)["style"].toString(), "Solid");
    QVERIFY(!args["components_font"]["Title"]["family"].toString().isEmpty());
}

void TestOrvexCurveConfigureDialog::exportLineChart()
{
    m_view->setTitle("Line export");
    m_view->setXLabel("X name");
    m_view->setAutoLimitsX(false);
    m_view->setRangeX(0, 10);
    std::static_pointer_cast<PointMarker>(m_point)->setSymbolSize(8);
    m_line->setColor(QColor(0, 0, 255));
    settle(m_view.get());
    auto dialog = makeDialog();
    clickBox(child<QCheckBox>(dialog.get(), "yLogBox"));
    clickBox(child<QCheckBox>(dialog.get(), "connectorsBox"));

    QTemporaryDir dir;
    const QString path = dir.filePath("dump.txt");
    QVERIFY(dialog->dumpDialogInfo(path));
    const auto x = m_view->getRangeX();
    const auto y = m_view->getRangeY();
    const auto conf = m_view->getConfiguration();
    QStringList expected = {"Title: Line export", "Type: Line", "X Axis: {", "Log Scale: 0", "Label: X name",
                            "Min: " + QString::number(x.first, 'g', 6), "Max: " + QString::number(x.second, 'g', 6),
                            "Step: 10", "Divisions: 10", "Auto Limits: 0", "Auto Divisions: 2", "}", "Y Axis: {",
                            "Log Scale: 2", "Label: ", "Min: " + QString::number(y.first, 'g', 6),
                            "Max: " + QString::number(y.second, 'g', 6), "Step: 10", "Divisions: 10",
                            "Auto Limits: 2", "Auto Divisions: 2", "}", "Curves: {"};
    for (const auto& curve : {m_first, m_second})
        expected << "Visible: 2" << "Name: " + QString::fromStdString(curve->title())
                 << "Suffix: " + QString::fromStdString(curve->suffix()) << "Style: Solid" << "Width: 1"
                 << "Color: " + rgba(curve->color());
    expected << "}" << "Fonts: {";
    for (const char* name : {"Title", "Axes Labels", "Legend", "Axes Divisions", "Markers"})
        expected << QStringLiteral("Label: ") + name
                 << "Font: " + Gui::Widget::ComponentInfo::fontText(conf.font(name))
                 << "Color: " + rgba(conf.color(name));
    expected << "}" << "Markers: {" << "Names in Labels: 0" << "Match Text Color to Line: 0"
             << "Transparent Background: 0" << QString("Connectors: %1").arg(m_view->drawConnector() ? 0 : 2)
             << "Visible: 2" << "Name: P1" << "Symbol: Circle" << "Size: 8" << "Weight: 1"
             << "Color: " + rgba(m_point->color()) << "X Pos: 1" << "Y Pos: 4"
             << "Visible: 2" << "Name: L1" << "StyleDash" << "Weight: 1" << "Type: Vertical Line Marker"
             << "Color: " + rgba(QColor(0, 0, 255)) << "X Pos: 2" << "Y Pos: 5" << "}";
    const QStringList written = readLines(path);
    for (int i = 0; i < std::max(written.size(), expected.size()); ++i)
        QCOMPARE(written.value(i), expected.value(i));
}

void TestOrvexCurveConfigureDialog::dumpButtonOnlyInDebugMode_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("present");
    QTest::newRow("unset") << QByteArray() << false;
    QTest::newRow("yes") << QByteArray("yes") << false;
    QTest::newRow("1") << QByteArray("1") << true;
}

void TestOrvexCurveConfigureDialog::dumpButtonOnlyInDebugMode()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, present);
    if (!value.isNull())
        qputenv("MCAD_POST_PROCESS_DEBUG", value);
    auto dialog = makeDialog();
    auto* button = dialog->findChild<QPushButton*>("_Dump_Info");
    QCOMPARE(button != nullptr, present);
    if (!button)
        return;
    // Without a path the export asks for one; a cancelled dialog writes nothing.
    const auto probe = FileDialogProbe::run([&] { clickButton(button); });
    QVERIFY(probe.caught);
    QCOMPARE(probe.title, QStringLiteral("Export file"));
    QCOMPARE(probe.filters, QStringList{"txt (*.txt)"});
    QCOMPARE(probe.folder, probe.startFolder);
    QVERIFY(probe.files.isEmpty());
}

QTEST_MAIN(TestOrvexCurveConfigureDialog)
#include "tst_orvexcurveconfiguredialog.moc"
