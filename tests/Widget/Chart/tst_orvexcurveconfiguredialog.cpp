#include "ChartTestHelpers.h"
#include "CerrCapture.h"
#include "FileDialogProbe.h"
#include "ModalCatcher.h"

#include "Scriptable/AQPushButton.h"
#include "Widget/Chart/ComponentInfo.h"
#include "Widget/Chart/LineMarker.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/OrvexCurveColorChooserButton.h"
#include "Widget/Chart/OrvexCurveConfigureDialog.h"
#include "Widget/Chart/PointMarker.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
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
using Gui::Widget::OrvexCurveColorChooserButton;
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
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
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
    void tabSwitching_data();
    void tabSwitching();
    void validation_data();
    void validation();
    void boxesEnableAndShow_data();
    void boxesEnableAndShow();
    void normalizedTicksAutoLimits();
    void applyPushesAndRecordsOnce_data();
    void applyPushesAndRecordsOnce();
    void okAppliesAndCloses();
    void fitAllReloadsRanges();
    void colorButtonPicksColor();
    void exportLineChart();
    void exportPolarChart();
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

void TestOrvexCurveConfigureDialog::tabSwitching_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<int>("argument");
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("marker");
    QTest::newRow("curves") << 0 << 0 << 0 << 0;
    QTest::newRow("fonts") << 1 << 0 << 1 << 0;
    QTest::newRow("markers keep sub-tab") << 2 << 0 << 2 << 0;
    QTest::newRow("point markers") << 2 << 1 << 2 << 1;
    QTest::newRow("line markers") << 2 << 2 << 2 << 2;
    QTest::newRow("markers, other argument") << 2 << 7 << 2 << 0;
}

void TestOrvexCurveConfigureDialog::tabSwitching()
{
    QFETCH(int, call);
    QFETCH(int, argument);
    QFETCH(int, lower);
    QFETCH(int, marker);
    auto dialog = makeDialog();
    auto* lowerTabs = child<QTabWidget>(dialog.get(), "lowerTabs");
    lowerTabs->setCurrentIndex(lower == 2 ? 0 : 2);
    if (call == 0)
        dialog->switchToCurveTable();
    else if (call == 1)
        dialog->switchToFontTable();
    else
        dialog->switchToMarkerTable(argument);
    QCOMPARE(lowerTabs->currentIndex(), lower);
    QCOMPARE(child<QTabWidget>(dialog.get(), "markerTabs")->currentIndex(), marker);
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
    row("x step 0", false, x10, "xStepEdit", "0", "10", kStepError);
    row("x step negative", false, x10, "xStepEdit", "-1", "10", kStepError);
    row("y step 0.09, small y range", false, x10 + QStringList{"yMaxEdit=1"}, "yStepEdit", "0.09", "10", kStepError);
    row("y step 0.09, large y range", false, x10 + QStringList{"yMaxEdit=100000"}, "yStepEdit", "0.09", "10",
        kStepError);
    row("y step 0.1 against x range", false, x10, "yStepEdit", "0.1", "0.1");
    row("y step with empty x range", false, x5, "yStepEdit", "0.0001", "0.0001");
    row("y step 0 with empty x range", false, x5, "yStepEdit", "0", "10", kStepError);
    row("x min above x max", false, {"xMaxEdit=3"}, "xMinEdit", "5", "0", kMinError);
    row("x min equal to x max", false, {"xMaxEdit=3"}, "xMinEdit", "3", "3");
    row("x max below x min", false, x10 + QStringList{"xMinEdit=4"}, "xMaxEdit", "2", "10", kMaxError);
    row("y min above y max", false, {"yMaxEdit=3"}, "yMinEdit", "7", "0", kMinError);
    row("y max below y min", false, {"yMinEdit=50"}, "yMaxEdit", "-1", "100", kMaxError);
    row("reverted text has 6 digits", false, {"yMinEdit=0.123456789"}, "yMinEdit", "500", "0.123457", kMinError);
    row("x log base 1", false, {"xLogBox"}, "xLogBaseEdit", "1", "10", kLogError);
    row("x log base 0", false, {"xLogBox"}, "xLogBaseEdit", "0", "10", kLogError);
    row("x log base 0.5", false, {"xLogBox"}, "xLogBaseEdit", "0.5", "0.5");
    row("y log base 2", false, {"yLogBox"}, "yLogBaseEdit", "2", "2");
    row("y log base 1", false, {"yLogBox"}, "yLogBaseEdit", "1", "10", kLogError);
    row("magnitude divisions 100", true, {}, "magnitudeDivisionsEdit", "100", "100");
    row("magnitude divisions 100.5", true, {}, "magnitudeDivisionsEdit", "100.5", "5", kMagnitudeError);
    row("magnitude divisions 0", true, {}, "magnitudeDivisionsEdit", "0", "5", kMagnitudeError);
    row("angular divisions 120", true, {}, "angularDivisionsEdit", "120", "120");
    row("angular divisions 121", true, {}, "angularDivisionsEdit", "121", "8", kAngularError);
    row("angular divisions 0", true, {}, "angularDivisionsEdit", "0", "8", kAngularError);
    row("magnitude min above max", true, {"magnitudeAutoLimitsBox", "magnitudeMaxEdit=20"}, "magnitudeMinEdit", "30",
        "0", kMinError);
    row("magnitude max below min", true, {"magnitudeAutoLimitsBox", "magnitudeMinEdit=20"}, "magnitudeMaxEdit", "10",
        "100", kMaxError);
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
    QVERIFY(target->isEnabled());
    enter(target, entry);
    QCOMPARE(target->text(), shown);
    QCOMPARE(child<QLabel>(dialog.get(), "errorLabel")->text(), error);

    // The next accepted entry clears the message; a rejected one stored nothing.
    enter(target, shown);
    QCOMPARE(child<QLabel>(dialog.get(), "errorLabel")->text(), QString());
    QCOMPARE(target->text(), shown);
}

void TestOrvexCurveConfigureDialog::boxesEnableAndShow_data()
{
    QTest::addColumn<bool>("polar");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QStringList>("disabledWhenChecked");
    QTest::addColumn<QStringList>("shownWhenChecked");
    QTest::addColumn<QStringList>("hiddenWhenChecked");
    const auto row = [](const char* box, bool polar, const QStringList& disabled, const QStringList& shown = {},
                        const QStringList& hidden = {}) {
        QTest::newRow(box) << polar << QString(box) << disabled << shown << hidden;
    };
    row("xAutoLimitsBox", false, {"xMinEdit", "xMaxEdit"});
    row("yAutoLimitsBox", false, {"yMinEdit", "yMaxEdit"});
    row("xAutoDivisionsBox", false, {"xStepEdit", "xLogBaseEdit"});
    row("yAutoDivisionsBox", false, {"yStepEdit", "yLogBaseEdit"});
    row("xLogBox", false, {}, {"xLogBaseEdit"}, {"xStepEdit"});
    row("yLogBox", false, {}, {"yLogBaseEdit"}, {"yStepEdit"});
    row("magnitudeAutoLimitsBox", true, {"magnitudeMinEdit", "magnitudeMaxEdit"});
}

void TestOrvexCurveConfigureDialog::boxesEnableAndShow()
{
    QFETCH(bool, polar);
    QFETCH(QString, box);
    QFETCH(QStringList, disabledWhenChecked);
    QFETCH(QStringList, shownWhenChecked);
    QFETCH(QStringList, hiddenWhenChecked);
    if (polar)
        m_view->changeViewTypeTo(OrvexChartView::Polar);
    auto dialog = makeDialog();
    auto* check = child<QCheckBox>(dialog.get(), box);
    QVERIFY(check->isVisible());
    for (int round = 0; round < 2; ++round) {
        const bool checked = check->isChecked();
        for (const QString& name : disabledWhenChecked)
            QVERIFY2(child<QLineEdit>(dialog.get(), name)->isEnabled() != checked, qPrintable(name));
        for (const QString& name : shownWhenChecked)
            QVERIFY2(child<QLineEdit>(dialog.get(), name)->isVisible() == checked, qPrintable(name));
        for (const QString& name : hiddenWhenChecked)
            QVERIFY2(child<QLineEdit>(dialog.get(), name)->isVisible() != checked, qPrintable(name));
        clickBox(check);
        QCOMPARE(check->isChecked(), !checked);
    }
}

void TestOrvexCurveConfigureDialog::normalizedTicksAutoLimits()
{
    m_view->changeViewTypeTo(OrvexChartView::Polar);
    m_view->setMagnitudeAutoLimits(false);
    auto dialog = makeDialog();
    auto* autoLimits = child<QCheckBox>(dialog.get(), "magnitudeAutoLimitsBox");
    auto* normalized = child<QCheckBox>(dialog.get(), "magnitudeNormalizedBox");
    QVERIFY(!autoLimits->isChecked());
    QVERIFY(child<QLineEdit>(dialog.get(), "magnitudeMinEdit")->isEnabled());

    clickBox(normalized);
    QVERIFY(autoLimits->isChecked());
    QVERIFY(!autoLimits->isEnabled());
    QVERIFY(!child<QLineEdit>(dialog.get(), "magnitudeMinEdit")->isEnabled());
    for (const auto& curve : {m_first, m_second})
        QCOMPARE(curve->dataType(), Gui::Widget::OrvexCurveDataType::DbNormalizedData);

    clickBox(normalized);
    QVERIFY(autoLimits->isEnabled());
    QVERIFY(autoLimits->isChecked());
    for (const auto& curve : {m_first, m_second})
        QCOMPARE(curve->dataType(), Gui::Widget::OrvexCurveDataType::RawData);
}

void TestOrvexCurveConfigureDialog::applyPushesAndRecordsOnce_data()
{
    QTest::addColumn<bool>("bar");
    QTest::addColumn<QString>("title");
    QTest::newRow("line chart") << false << QStringLiteral("Return loss");
    QTest::newRow("bar chart, quotes and non-ASCII title") << true << QStringLiteral("It's \"S11\" \u00b5m \\ ok");
}

void TestOrvexCurveConfigureDialog::applyPushesAndRecordsOnce()
{
    QFETCH(bool, bar);
    QFETCH(QString, title);
    if (bar)
        m_view->changeViewTypeTo(OrvexChartView::Bar);
    auto dialog = makeDialog();
    RecordingHost host;

    enter(child<QLineEdit>(dialog.get(), "titleEdit"), title);
    enter(child<QLineEdit>(dialog.get(), "xLabelEdit"), "Frequency");
    clickBox(child<QCheckBox>(dialog.get(), "xAutoLimitsBox"));
    enter(child<QLineEdit>(dialog.get(), "xMaxEdit"), "2.5");
    enter(child<QLineEdit>(dialog.get(), "xMinEdit"), "0.5");
    clickBox(child<QCheckBox>(dialog.get(), "yAutoDivisionsBox"));
    enter(child<QLineEdit>(dialog.get(), "yStepEdit"), "0.5");
    clickBox(child<QCheckBox>(dialog.get(), "namesInLabelsBox"));
    clickBox(child<QCheckBox>(dialog.get(), "transparentBackgroundBox"));

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

    QVERIFY(host.statements.isEmpty()); // nothing reaches the chart before Apply
    QCOMPARE(m_view->title(), std::string());
    clickButton(child<QtUIBase::AQPushButton>(dialog.get(), "applyButton"));
    settle(m_view.get());

    QCOMPARE(QString::fromStdString(m_view->title()), title);
    QCOMPARE(m_view->xLabel(), std::string("Frequency"));
    QVERIFY(!m_view->isAutoLimitsX());
    QVERIFY(m_view->getRangeX().first <= 0.5 && m_view->getRangeX().second >= 2.5);
    QVERIFY(m_view->getRangeX().second < 3.5);
    QVERIFY(!m_view->isAutoDivisionsY());
    QCOMPARE(m_view->getStepY(), 0.5);
    QVERIFY(m_view->namesInLabels());
    QVERIFY(m_view->transparentBackground());
    QCOMPARE(m_view->getViewType(), bar ? OrvexChartView::Bar : OrvexChartView::Line);
    QVERIFY(!m_first->visible());
    QVERIFY(m_second->visible());
    QCOMPARE(m_second->title(), std::string("renamed"));
    QCOMPARE(m_second->lineStyle(), Qt::DashDotLine);
    QCOMPARE(bar ? m_second->barWidth() : m_second->width(), 3);
    QCOMPARE(bar ? m_second->width() : m_second->barWidth(), 1);
    // Labels are unique in the process: an earlier "Peak" gets a suffix.
    QVERIFY(QString::fromStdString(m_point->label()).startsWith("Peak"));
    QCOMPARE(std::static_pointer_cast<PointMarker>(m_point)->symbol(), Gui::Widget::Diamond);
    QVERIFY(!m_line->visible());
    QCOMPARE(std::static_pointer_cast<LineMarker>(m_line)->style(), Qt::SolidLine);

    QCOMPARE(host.statements.size(), 1);
    const QString statement = host.statements.first();
    QVERIFY2(statement.startsWith(QString::fromStdString(m_view->variableName()) + ".set_properties({"),
             qPrintable(statement));
    QVERIFY(statement.endsWith("})"));
    const QStringList keys = {"title", "view_type", "use_x_log", "use_y_log", "names_in_labels",
                              "transparent_background", "match_text_color_to_line", "draw_connector",
                              "x_auto_divisions", "x_auto_limits", "y_auto_divisions", "y_auto_limits",
                              "magnitude_auto_limits", "magnitude_normalized", "x_step", "y_step", "x_log_base",
                              "y_log_base", "magnitude_divisions", "angular_divisions", "x_range", "y_range",
                              "magnitude_range", "x_label", "y_label", "magnitude_label", "angular_label",
                              "components_color", "components_font", "visible", "name", "style", "color",
                              bar ? "bar_width" : "width", "symbol", "size", "weight"};
    for (const QString& key : keys)
        QVERIFY2(statement.contains("'" + key + "' : "), qPrintable(key));
    QVERIFY(statement.contains("'x_range' : [0.5, 2.5]"));
    QVERIFY(statement.contains("'x_auto_limits' : False"));
    QVERIFY(statement.contains("'names_in_labels' : True"));
    QVERIFY(statement.contains("'y_step' : 0.5"));
    QVERIFY(statement.contains(bar ? "'view_type' : pelo3dqtui.PlotType.RectangleBar"
                                   : "'view_type' : pelo3dqtui.PlotType.RectangleBrokenLine"));
    QVERIFY(statement.contains("'symbol' : pelo3dqtui.MarkerSymbol.Diamond"));
    QVERIFY(statement.contains("'size' : 6.000000"));
    QVERIFY(statement.contains("\"red\": 10, \"green\" : 20, \"blue\" : 30, \"alpha\" : 200"));
    QVERIFY(statement.contains("\"Title\" : {\"family\": \""));
    QCOMPARE(statement.contains("'bar_width'"), bar);

    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    if (python.isEmpty())
        QSKIP("python3 not found: the statement's syntax is not checked");
    QProcess process;
    process.start(python, {"-c", "import ast, sys\n"
                                 "tree = ast.parse(sys.stdin.buffer.read().decode('utf-8'))\n"
                                 "call = tree.body[0].value\n"
                                 "print(call.func.attr)\n"
                                 "d = call.args[0]\n"
                                 "for k, v in zip(d.keys, d.values):\n"
                                 "    if ast.literal_eval(k) == 'title': print(ast.literal_eval(v))\n"});
    QVERIFY(process.waitForStarted());
    process.write(statement.toUtf8());
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(20000));
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
    const QStringList out = QString::fromUtf8(process.readAllStandardOutput()).split('\n');
    QCOMPARE(out.value(0), QStringLiteral("set_properties"));
    QCOMPARE(out.value(1), title);
}

void TestOrvexCurveConfigureDialog::okAppliesAndCloses()
{
    auto dialog = makeDialog();
    RecordingHost host;
    enter(child<QLineEdit>(dialog.get(), "titleEdit"), "Closed by OK");
    clickButton(child<QtUIBase::AQPushButton>(dialog.get(), "okButton"));
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
    QCOMPARE(m_view->title(), std::string("Closed by OK"));
    QCOMPARE(host.statements.size(), 1);
}

void TestOrvexCurveConfigureDialog::fitAllReloadsRanges()
{
    m_view->setAutoLimitsX(false);
    m_view->setRangeX(-50, 50);
    settle(m_view.get());
    auto dialog = makeDialog();
    auto* min = child<QLineEdit>(dialog.get(), "xMinEdit");
    QCOMPARE(min->text().toDouble(), m_view->getRangeX().first);
    QVERIFY(min->text().toDouble() <= -50);
    clickButton(child<QtUIBase::AQPushButton>(dialog.get(), "fitAllButton"));
    settle(m_view.get());
    // The data span 0..3: the fitted axis starts near it, and the field follows.
    QVERIFY(m_view->getRangeX().first > -5);
    QCOMPARE(min->text(), QString::number(m_view->getRangeX().first, 'g', 6));
    QCOMPARE(child<QLineEdit>(dialog.get(), "xMaxEdit")->text(), QString::number(m_view->getRangeX().second, 'g', 6));
}

void TestOrvexCurveConfigureDialog::colorButtonPicksColor()
{
    OrvexCurveColorChooserButton button(QColor(1, 2, 3), true);
    QVERIFY(button.showAlphaChannel());
    QSignalSpy spy(&button, &OrvexCurveColorChooserButton::colorChanged);
    bool alphaOffered = false;
    ModalCatcher accept([&](QWidget* widget) {
        if (auto* dialog = qobject_cast<QColorDialog*>(widget)) {
            alphaOffered = dialog->testOption(QColorDialog::ShowAlphaChannel);
            dialog->setCurrentColor(QColor(200, 100, 50, 128));
            dialog->accept();
        }
    });
    button.show();
    clickButton(&button);
    QVERIFY(accept.caught());
    QVERIFY(alphaOffered);
    QCOMPARE(button.chosenColor(), QColor(200, 100, 50, 128));
    QCOMPARE(spy.count(), 1);

    ModalCatcher cancel([](QWidget* widget) { widget->close(); });
    clickButton(&button);
    QVERIFY(cancel.caught());
    QCOMPARE(button.chosenColor(), QColor(200, 100, 50, 128));
    QCOMPARE(spy.count(), 1);
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

void TestOrvexCurveConfigureDialog::exportPolarChart()
{
    m_view->changeViewTypeTo(OrvexChartView::Polar);
    m_view->setMagnitudeLabel("Gain");
    m_view->setAngularLabel("Phi");
    m_view->setAngularDivisions(12);
    settle(m_view.get());
    auto dialog = makeDialog();
    clickBox(child<QCheckBox>(dialog.get(), "magnitudeNormalizedBox"));
    QTemporaryDir dir;
    const QString path = dir.filePath("polar.txt");
    QVERIFY(dialog->dumpDialogInfo(path));
    const auto magnitude = m_view->getRangeMagnitude();
    const QStringList expected = {"Title: ", "Type: Polar", "Magnitude Axis: {", "Label: Gain",
                                  "Min: " + QString::number(magnitude.first, 'g', 6),
                                  "Max: " + QString::number(magnitude.second, 'g', 6), "Divisions: 5",
                                  "Auto Limits: 2", "Normalized: 2", "}", "Angular Axis: {", "Label: Phi",
                                  "Divisions: 12", "}", "Curves: {"};
    const QStringList written = readLines(path);
    QCOMPARE(written.mid(0, expected.size()), expected);
    QVERIFY(!written.contains("X Axis: {"));
    QVERIFY(written.contains("StyleDash"));
    CerrCapture capture;
    QVERIFY(!dialog->dumpDialogInfo("/nonexistent-folder/x/dump.txt"));
    QCOMPARE(capture.text().trimmed(), QByteArray("Cannot open file for writing:/nonexistent-folder/x/dump.txt"));
}

void TestOrvexCurveConfigureDialog::dumpButtonOnlyInDebugMode_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("present");
    QTest::newRow("unset") << QByteArray() << false;
    QTest::newRow("0") << QByteArray("0") << false;
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
