#include "ChartTestHelpers.h"
#include "CerrCapture.h"
#include "FileDialogProbe.h"
#include "ModalCatcher.h"

#include "Scriptable/AQPushButton.h"
#include "Widget/Chart/ComponentInfo.h"
#include "Widget/Chart/LineMarker.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveColorChooserButton.h"
#include "Widget/Chart/OrvexCurveConfigureDialog.h"
#include "Widget/Chart/PointMarker.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleValidator>
#include <QFileDialog>
#include <QFileInfo>
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
    T* widget = parent->findChild<T*>(name);
    if (!widget)
        qWarning("no child %s", qPrintable(name));
    return widget;
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
    void layoutAndButtons();
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
    void configureEntryOpensDialog();
    void csvMenuEntriesOnRealFiles();
    void colorButtonPicksColor();
    void exportLineChart();
    void exportPolarChart();
    void exportFailures();
    void dumpButtonOnlyInDebugMode_data();
    void dumpButtonOnlyInDebugMode();
    void screenshots();

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

void TestOrvexCurveConfigureDialog::layoutAndButtons()
{
    m_view->setTitle("Loss");
    auto dialog = makeDialog();
    QVERIFY(dialog->windowTitle().startsWith(QStringLiteral("Configure ")));
    QCOMPARE(dialog->minimumSize(), QSize(650, 500));

    const QList<std::pair<QString, QString>> buttons = {
        {"okButton", "OK"}, {"fitAllButton", "Fit All"}, {"applyButton", "Apply"}};
    for (const auto& [name, text] : buttons) {
        auto* button = child<QtUIBase::AQPushButton>(dialog.get(), name);
        QVERIFY2(button, qPrintable(name));
        QCOMPARE(button->text(), text);
        QVERIFY(!button->autoDefault());
        QVERIFY(!button->isDefault());
    }

    // All twelve numeric fields share one validator, which refuses letters.
    const QStringList numeric = {"xMinEdit", "xMaxEdit", "yMinEdit", "yMaxEdit", "xStepEdit", "yStepEdit",
                                 "xLogBaseEdit", "yLogBaseEdit", "magnitudeDivisionsEdit", "angularDivisionsEdit",
                                 "magnitudeMinEdit", "magnitudeMaxEdit"};
    const QValidator* shared = nullptr;
    for (const QString& name : numeric) {
        auto* edit = child<QLineEdit>(dialog.get(), name);
        QVERIFY2(edit, qPrintable(name));
        QVERIFY(qobject_cast<const QDoubleValidator*>(edit->validator()));
        if (shared)
            QCOMPARE(edit->validator(), shared);
        shared = edit->validator();
    }
    auto* error = child<QLabel>(dialog.get(), "errorLabel");
    QCOMPARE(error->styleSheet(), QStringLiteral("color: red; font-size: 13px; font-family: Arial;"));

    auto* lower = child<QTabWidget>(dialog.get(), "lowerTabs");
    QCOMPARE(lower->count(), 3);
    QCOMPARE(lower->tabText(0), QStringLiteral("Curves"));
    QCOMPARE(lower->tabText(1), QStringLiteral("Fonts"));
    QCOMPARE(lower->tabText(2), QStringLiteral("Markers"));
    auto* points = child<QTableWidget>(dialog.get(), "m_pointMarkerTableWidget");
    auto* lines = child<QTableWidget>(dialog.get(), "m_lineMarkerTableWidget");
    QCOMPARE(points->rowCount(), 1);
    QCOMPARE(lines->rowCount(), 1);
    auto* curves = child<QTableWidget>(dialog.get(), "m_curveTableWidget");
    QCOMPARE(curves->rowCount(), 2);
    QCOMPARE(curves->horizontalHeaderItem(2)->text(), QStringLiteral("Auto-suffix(read only)"));
    QCOMPARE(child<QTableWidget>(dialog.get(), "m_fontTableWidget")->rowCount(), 5);

    // The X range widgets hide and show together.
    dialog->setXRangeWidgetVis(false);
    QVERIFY(!child<QLineEdit>(dialog.get(), "xMinEdit")->isVisible());
    QVERIFY(!child<QLineEdit>(dialog.get(), "xMaxEdit")->isVisible());
    QVERIFY(child<QLineEdit>(dialog.get(), "yMinEdit")->isVisible());
    dialog->setXRangeWidgetVis(true);
    QVERIFY(child<QLineEdit>(dialog.get(), "xMinEdit")->isVisible());
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
    QTest::addColumn<QStringList>("before"); // "edit=text", entered in order
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("error");

    const QStringList xRange = {"xMaxEdit=10", "xMinEdit=0"};
    QTest::newRow("x step 0.1 gives 100 ticks") << false << xRange << "xStepEdit" << "0.1" << "0.1" << "";
    QTest::newRow("x step 0.09") << false << xRange << "xStepEdit" << "0.09" << "10" << kStepError;
    QTest::newRow("x step 0") << false << xRange << "xStepEdit" << "0" << "10" << kStepError;
    QTest::newRow("x step negative") << false << xRange << "xStepEdit" << "-1" << "10" << kStepError;
    QTest::newRow("y step 0.09, small y range")
        << false << (xRange + QStringList{"yMaxEdit=1"}) << "yStepEdit" << "0.09" << "10" << kStepError;
    QTest::newRow("y step 0.09, large y range")
        << false << (xRange + QStringList{"yMaxEdit=100000"}) << "yStepEdit" << "0.09" << "10" << kStepError;
    QTest::newRow("y step 0.1 against x range") << false << xRange << "yStepEdit" << "0.1" << "0.1" << "";
    QTest::newRow("y step with empty x range")
        << false << QStringList{"xMaxEdit=5", "xMinEdit=5"} << "yStepEdit" << "0.0001" << "0.0001" << "";
    QTest::newRow("y step 0 with empty x range")
        << false << QStringList{"xMaxEdit=5", "xMinEdit=5"} << "yStepEdit" << "0" << "10" << kStepError;
    QTest::newRow("x min above x max") << false << QStringList{"xMaxEdit=3"} << "xMinEdit" << "5" << "0" << kMinError;
    QTest::newRow("x min equal to x max") << false << QStringList{"xMaxEdit=3"} << "xMinEdit" << "3" << "3" << "";
    QTest::newRow("x max below x min") << false << xRange + QStringList{"xMinEdit=4"} << "xMaxEdit" << "2" << "10"
                                       << kMaxError;
    QTest::newRow("y min above y max") << false << QStringList{"yMaxEdit=3"} << "yMinEdit" << "7" << "0" << kMinError;
    QTest::newRow("y max below y min") << false << QStringList{"yMinEdit=50"} << "yMaxEdit" << "-1" << "100"
                                       << kMaxError;
    QTest::newRow("reverted text has 6 digits")
        << false << QStringList{"yMinEdit=0.123456789"} << "yMinEdit" << "500" << "0.123457" << kMinError;
    QTest::newRow("x log base 1") << false << QStringList{"xLogBox"} << "xLogBaseEdit" << "1" << "10" << kLogError;
    QTest::newRow("x log base 0") << false << QStringList{"xLogBox"} << "xLogBaseEdit" << "0" << "10" << kLogError;
    QTest::newRow("x log base 0.5") << false << QStringList{"xLogBox"} << "xLogBaseEdit" << "0.5" << "0.5" << "";
    QTest::newRow("y log base 2") << false << QStringList{"yLogBox"} << "yLogBaseEdit" << "2" << "2" << "";
    QTest::newRow("y log base 1") << false << QStringList{"yLogBox"} << "yLogBaseEdit" << "1" << "10" << kLogError;
    QTest::newRow("magnitude divisions 100") << true << QStringList() << "magnitudeDivisionsEdit" << "100" << "100"
                                             << "";
    QTest::newRow("magnitude divisions 100.5")
        << true << QStringList() << "magnitudeDivisionsEdit" << "100.5" << "5" << kMagnitudeError;
    QTest::newRow("magnitude divisions 0")
        << true << QStringList() << "magnitudeDivisionsEdit" << "0" << "5" << kMagnitudeError;
    QTest::newRow("angular divisions 120") << true << QStringList() << "angularDivisionsEdit" << "120" << "120"
                                           << "";
    QTest::newRow("angular divisions 121")
        << true << QStringList() << "angularDivisionsEdit" << "121" << "8" << kAngularError;
    QTest::newRow("angular divisions 0") << true << QStringList() << "angularDivisionsEdit" << "0" << "8"
                                         << kAngularError;
    QTest::newRow("magnitude min above max")
        << true << QStringList{"magnitudeAutoLimitsBox", "magnitudeMaxEdit=20"} << "magnitudeMinEdit" << "30" << "0"
        << kMinError;
    QTest::newRow("magnitude max below min")
        << true << QStringList{"magnitudeAutoLimitsBox", "magnitudeMinEdit=20"} << "magnitudeMaxEdit" << "10"
        << "100" << kMaxError;
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
    QTest::newRow("x auto limits") << false << "xAutoLimitsBox" << QStringList{"xMinEdit", "xMaxEdit"}
                                   << QStringList() << QStringList();
    QTest::newRow("y auto limits") << false << "yAutoLimitsBox" << QStringList{"yMinEdit", "yMaxEdit"}
                                   << QStringList() << QStringList();
    QTest::newRow("x auto divisions") << false << "xAutoDivisionsBox" << QStringList{"xStepEdit", "xLogBaseEdit"}
                                      << QStringList() << QStringList();
    QTest::newRow("y auto divisions") << false << "yAutoDivisionsBox" << QStringList{"yStepEdit", "yLogBaseEdit"}
                                      << QStringList() << QStringList();
    QTest::newRow("x log") << false << "xLogBox" << QStringList() << QStringList{"xLogBaseEdit"}
                           << QStringList{"xStepEdit"};
    QTest::newRow("y log") << false << "yLogBox" << QStringList() << QStringList{"yLogBaseEdit"}
                           << QStringList{"yStepEdit"};
    QTest::newRow("magnitude auto limits") << true << "magnitudeAutoLimitsBox"
                                           << QStringList{"magnitudeMinEdit", "magnitudeMaxEdit"} << QStringList()
                                           << QStringList();
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

void TestOrvexCurveConfigureDialog::configureEntryOpensDialog()
{
    QString title;
    int curveRows = -1;
    bool modal = false;
    QPointer<QWidget> opened;
    ModalCatcher catcher([&](QWidget* widget) {
        if (auto* dialog = qobject_cast<OrvexCurveConfigureDialog*>(widget)) {
            title = dialog->windowTitle();
            modal = dialog->isModal();
            curveRows = dialog->findChild<QTableWidget*>("m_curveTableWidget")->rowCount();
            opened = dialog;
        }
        widget->close();
    });
    // Through the chart's context menu, as a user reaches it.
    MenuInspector inspector(QStringLiteral("Configure"));
    rightClick(m_view.get(), m_view->plotArea().center());
    QVERIFY(inspector.seen);
    QTRY_VERIFY(catcher.caught());
    QVERIFY(modal);
    QVERIFY(title.startsWith("Configure "));
    QCOMPARE(curveRows, 2);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(opened.isNull()); // deleted on close
}

void TestOrvexCurveConfigureDialog::csvMenuEntriesOnRealFiles()
{
    // The chart menu's CSV entries next to "Configure": export through the
    // save dialog to a real file, import it into another chart.
    QTemporaryDir dir;
    const QString path = dir.filePath("curves.csv");
    const auto answer = [](const QString& file) {
        return [file](QWidget* widget) {
            auto* dialog = qobject_cast<QFileDialog*>(widget);
            if (!dialog) {
                widget->close();
                return;
            }
            // Typed into the name field, as a user would.
            auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
            if (name)
                name->setText(file);
            static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
            // Never left open, whatever the dialog made of the answer.
            QTimer::singleShot(2000, dialog, [dialog] { dialog->close(); });
        };
    };
    {
        ModalCatcher save(answer(path));
        MenuInspector inspector(QStringLiteral("Export Data to CSV"));
        rightClick(m_view.get(), m_view->plotArea().center());
        QTRY_VERIFY(save.caught());
    }
    QVERIFY(QFileInfo::exists(path));

    auto other = makeView();
    {
        ModalCatcher open(answer(path));
        MenuInspector inspector(QStringLiteral("Import Data from CSV"));
        rightClick(other.get(), other->plotArea().center());
        QTRY_VERIFY(open.caught());
    }
    settle(other.get());
    QStringList titles;
    for (const auto& group : other->getCurveManager()->getAllGroups())
        for (const auto& curve : group->getAllCurves())
            titles << QString::fromStdString(curve->title());
    QCOMPARE(titles.size(), 2);
    QVERIFY(titles.first().startsWith("first"));
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
}

void TestOrvexCurveConfigureDialog::exportFailures()
{
    auto dialog = makeDialog();
    {
        CerrCapture capture;
        QVERIFY(!dialog->dumpDialogInfo("/nonexistent-folder/x/dump.txt"));
        QCOMPARE(capture.text().trimmed(), QByteArray("Cannot open file for writing:/nonexistent-folder/x/dump.txt"));
    }
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

void TestOrvexCurveConfigureDialog::screenshots()
{
    const QString folder = qEnvironmentVariable("ORVEX_SCREENSHOT_DIR");
    if (folder.isEmpty())
        QSKIP("set ORVEX_SCREENSHOT_DIR to write the tab screenshots");
    for (const bool polar : {false, true}) {
        if (polar)
            m_view->changeViewTypeTo(OrvexChartView::Polar);
        auto dialog = makeDialog();
        dialog->resize(800, 600);
        auto* upper = child<QTabWidget>(dialog.get(), "upperTabs");
        auto* lower = child<QTabWidget>(dialog.get(), "lowerTabs");
        auto* markers = child<QTabWidget>(dialog.get(), "markerTabs");
        const QString prefix = polar ? "polar" : "line";
        for (int u = 0; u < upper->count(); ++u) {
            upper->setCurrentIndex(u);
            for (int l = 0; l < lower->count(); ++l) {
                lower->setCurrentIndex(l);
                const int subTabs = l == 2 ? markers->count() : 1;
                for (int m = 0; m < subTabs; ++m) {
                    markers->setCurrentIndex(m);
                    QCoreApplication::processEvents();
                    const QImage image = dialog->grab().toImage();
                    QVERIFY(!image.isNull());
                    QVERIFY(image.save(QStringLiteral("%1/%2-%3-%4-%5.png").arg(folder, prefix).arg(u).arg(l).arg(m)));
                }
            }
        }
    }
}

QTEST_MAIN(TestOrvexCurveConfigureDialog)
#include "tst_orvexcurveconfiguredialog.moc"
