#include "Widget/Chart/OrvexCurveConfigureDialog.h"

#include "Script/QtUIPysUtils.h"
#include "Script/QtUIPythonEnumMap.h"
#include "Scriptable/AQPushButton.h"
#include "Widget/Chart/ComponentInfo.h"
#include "Widget/Chart/LineMarker.h"
#include "Widget/Chart/Marker.h"
#include "Widget/Chart/MarkerInfo.h"
#include "Widget/Chart/OrvexChartMarkerManager.h"
#include "Widget/Chart/OrvexChartView.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveColorChooserButton.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"
#include "Widget/Chart/PointMarker.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleValidator>
#include <QFile>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextStream>
#include <QVBoxLayout>

#include <fmt/format.h>

#include <cmath>
#include <iostream>

namespace Gui::Widget {

namespace {

const char* const kComponents[] = {"Title", "Axes Labels", "Legend", "Axes Divisions", "Markers"};

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

std::string pyBool(bool on)
{
    return on ? "True" : "False";
}

std::string pyNumber(double value)
{
    if (std::isnan(value))
        return "float('nan')";
    if (std::isinf(value))
        return value > 0 ? "float('inf')" : "-float('inf')";
    return QString::number(value, 'g', 15).toStdString();
}

/// Numbers of marker rows are written with "%f".
std::string pyFixed(double value)
{
    if (!std::isfinite(value))
        return pyNumber(value);
    return QString::asprintf("%f", value).toStdString();
}

std::string pyColor(const QColor& c)
{
    return fmt::format("{{\"red\": {0}, \"green\" : {1}, \"blue\" : {2}, \"alpha\" : {3}}}", c.red(), c.green(),
                       c.blue(), c.alpha());
}

/// Text for a double-quoted Python literal: escapes what would end or
/// break it, keeps everything else (the statement is UTF-8 source).
std::string doubleQuotedBody(const QString& text)
{
    std::string out;
    for (const char ch : text.toStdString()) {
        const auto byte = static_cast<unsigned char>(ch);
        if (ch == '"' || ch == '\\') {
            out += '\\';
            out += ch;
        } else if (byte < 0x20 || byte == 0x7f) {
            out += fmt::format("\\x{:02x}", byte);
        } else {
            out += ch;
        }
    }
    return out;
}

std::string pyText(const QString& text)
{
    return Python::QtUIPysUtils::pyString(text.toStdString());
}

std::string joinList(const std::vector<std::string>& items)
{
    std::string out = "[";
    for (std::size_t i = 0; i < items.size(); ++i)
        out += (i ? ", " : "") + items[i];
    return out + "]";
}

std::string pyDict(const std::vector<std::pair<std::string, std::string>>& entries)
{
    std::string out = "{";
    for (std::size_t i = 0; i < entries.size(); ++i)
        out += fmt::format("{0}{1} : {2}", i ? ", " : "", entries[i].first, entries[i].second);
    return out + "}";
}

QTableWidget* makeTable(const QStringList& headers, const char* objectName)
{
    auto* table = new QTableWidget(0, headers.size());
    table->setObjectName(QString::fromLatin1(objectName));
    table->setHorizontalHeaderLabels(headers);
    table->verticalHeader()->setVisible(false);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    return table;
}

/// A check box centred in its cell; the box itself is returned.
QWidget* centred(QWidget* widget)
{
    auto* holder = new QWidget;
    auto* layout = new QHBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(widget, 0, Qt::AlignCenter);
    return holder;
}

} // namespace

OrvexCurveConfigureDialog::OrvexCurveConfigureDialog(OrvexChartView* view, QWidget* parent)
    : AQDialog(QStringLiteral("OrvexCurveConfigureDialog"), parent)
    , m_view(view)
{
    const QString title = QString::fromStdString(view->title());
    setWindowTitle(QStringLiteral("Configure ") + (title.isEmpty() ? QStringLiteral("Chart") : title));
    setMinimumSize(650, 500);

    m_validator = new QDoubleValidator(this);
    m_values = {view->getRangeX().first, view->getRangeX().second, view->getRangeY().first,
                view->getRangeY().second, view->getStepX(), view->getStepY(), view->getXLogBase(),
                view->getYLogBase(), view->getMagnitudeDivisions(), view->getAngularDivisions(),
                view->getRangeMagnitude().first, view->getRangeMagnitude().second};

    auto* layout = new QVBoxLayout(this);
    m_upperTabs = new QTabWidget;
    m_upperTabs->setObjectName(QStringLiteral("upperTabs"));
    buildPlotTab(m_upperTabs);
    buildAxesTab(m_upperTabs);
    // The tables below get the room the axes groups do not need.
    m_upperTabs->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    layout->addWidget(m_upperTabs);

    m_lowerTabs = new QTabWidget;
    m_lowerTabs->setObjectName(QStringLiteral("lowerTabs"));
    buildCurveTable();
    buildFontTable();
    buildMarkerTab();
    layout->addWidget(m_lowerTabs, 1);

    m_errorLabel = new QLabel;
    m_errorLabel->setObjectName(QStringLiteral("errorLabel"));
    m_errorLabel->setStyleSheet(QStringLiteral("color: red; font-size: 13px; font-family: Arial;"));
    layout->addWidget(m_errorLabel);

    auto* buttons = new QHBoxLayout;
    if (qgetenv("MCAD_POST_PROCESS_DEBUG") == "1") {
        auto* dump = new QPushButton(QStringLiteral("Dump Info"));
        dump->setObjectName(QStringLiteral("_Dump_Info"));
        dump->setAutoDefault(false);
        connect(dump, &QPushButton::clicked, this, qOverload<>(&OrvexCurveConfigureDialog::dumpDialogInfo));
        buttons->addWidget(dump);
    }
    buttons->addStretch();
    m_okButton = new QtUIBase::AQPushButton(QStringLiteral("okButton"), QStringLiteral("OK"), this, true);
    m_fitAllButton = new QtUIBase::AQPushButton(QStringLiteral("fitAllButton"), QStringLiteral("Fit All"), this, true);
    m_applyButton = new QtUIBase::AQPushButton(QStringLiteral("applyButton"), QStringLiteral("Apply"), this, true);
    for (auto* button : {m_okButton, m_fitAllButton, m_applyButton}) {
        button->setAutoDefault(false);
        button->setDefault(false);
        buttons->addWidget(button);
    }
    layout->addLayout(buttons);
    connect(m_okButton, &QtUIBase::AQPushButton::AClicked, this, &OrvexCurveConfigureDialog::slotOKButtonClicked);
    connect(m_fitAllButton, &QtUIBase::AQPushButton::AClicked, this, &OrvexCurveConfigureDialog::slotClickFitView);
    connect(m_applyButton, &QtUIBase::AQPushButton::AClicked, this,
            &OrvexCurveConfigureDialog::slotApplyButtonClicked);
    connect(this, &QDialog::finished, this, &OrvexCurveConfigureDialog::slotClose);

    slotPlotTypeCurrentIndexChanged(m_typeCombo->currentIndex());
}

OrvexCurveConfigureDialog::~OrvexCurveConfigureDialog() = default;

// ------------------------------------------------------------------ building

QLineEdit* OrvexCurveConfigureDialog::numericEdit(NumericField field, const char* objectName)
{
    auto* edit = new QLineEdit(number(m_values[field]));
    edit->setObjectName(QString::fromLatin1(objectName));
    edit->setValidator(m_validator);
    connect(edit, &QLineEdit::editingFinished, this, &OrvexCurveConfigureDialog::slotValidateInputNumber);
    m_edits[field] = edit;
    return edit;
}

void OrvexCurveConfigureDialog::buildPlotTab(QTabWidget* tabs)
{
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    m_titleEdit = new QLineEdit(QString::fromStdString(m_view->title()));
    m_titleEdit->setObjectName(QStringLiteral("titleEdit"));
    m_typeCombo = new QComboBox;
    m_typeCombo->setObjectName(QStringLiteral("typeCombo"));
    m_typeCombo->addItems({QStringLiteral("Line"), QStringLiteral("Bar"), QStringLiteral("Polar")});
    m_typeCombo->setCurrentIndex(int(m_view->getViewType()));
    if (!m_view->isPolarViewActionEnabled() && !m_view->isPolarChart())
        m_typeCombo->removeItem(OrvexChartView::Polar);
    form->addRow(QStringLiteral("Title"), m_titleEdit);
    form->addRow(QStringLiteral("Type"), m_typeCombo);
    connect(m_typeCombo, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &OrvexCurveConfigureDialog::slotPlotTypeCurrentIndexChanged);
    tabs->addTab(page, QStringLiteral("Plot"));
}

void OrvexCurveConfigureDialog::buildAxesTab(QTabWidget* tabs)
{
    m_axesStack = new QStackedWidget;

    // Line and bar charts: X and Y.
    auto* cartesian = new QWidget;
    auto* cartesianLayout = new QHBoxLayout(cartesian);
    struct Axis
    {
        const char* name;
        NumericField min, max, step, logBase;
        QLineEdit** label;
        QCheckBox **log, **autoLimits, **autoDivisions;
        QLabel **stepLabel, **logBaseLabel;
        std::string text;
        bool useLog, isAutoLimits, isAutoDivisions;
    };
    const Axis axes[] = {
        {"x", XMin, XMax, XStep, XLogBase, &m_xLabelEdit, &m_xLogBox, &m_xAutoLimitsBox, &m_xAutoDivisionsBox,
         &m_xStepLabel, &m_xLogBaseLabel, m_view->xLabel(), m_view->useXLog(), m_view->isAutoLimitsX(),
         m_view->isAutoDivisionsX()},
        {"y", YMin, YMax, YStep, YLogBase, &m_yLabelEdit, &m_yLogBox, &m_yAutoLimitsBox, &m_yAutoDivisionsBox,
         &m_yStepLabel, &m_yLogBaseLabel, m_view->yLabel(), m_view->useYLog(), m_view->isAutoLimitsY(),
         m_view->isAutoDivisionsY()},
    };
    for (const Axis& axis : axes) {
        const QString prefix = QString::fromLatin1(axis.name);
        auto* group = new QGroupBox(prefix.toUpper());
        auto* grid = new QGridLayout(group);
        *axis.label = new QLineEdit(QString::fromStdString(axis.text));
        (*axis.label)->setObjectName(prefix + QStringLiteral("LabelEdit"));
        auto* minLabel = new QLabel(QStringLiteral("Minimum"));
        auto* maxLabel = new QLabel(QStringLiteral("Maximum"));
        *axis.stepLabel = new QLabel(QStringLiteral("Step"));
        *axis.logBaseLabel = new QLabel(QStringLiteral("Divisions"));
        auto box = [&](QCheckBox** target, const QString& text, const QString& name, bool checked) {
            *target = new QCheckBox(text);
            (*target)->setObjectName(name);
            (*target)->setChecked(checked);
        };
        box(axis.log, QStringLiteral("Log Scale"), prefix + QStringLiteral("LogBox"), axis.useLog);
        box(axis.autoLimits, QStringLiteral("Auto Limits"), prefix + QStringLiteral("AutoLimitsBox"),
            axis.isAutoLimits);
        box(axis.autoDivisions, QStringLiteral("Auto Divisions"), prefix + QStringLiteral("AutoDivisionsBox"),
            axis.isAutoDivisions);
        const QByteArray p = axis.name;
        grid->addWidget(new QLabel(QStringLiteral("Label")), 0, 0);
        grid->addWidget(*axis.label, 0, 1);
        grid->addWidget(minLabel, 1, 0);
        grid->addWidget(numericEdit(axis.min, p + "MinEdit"), 1, 1);
        grid->addWidget(maxLabel, 2, 0);
        grid->addWidget(numericEdit(axis.max, p + "MaxEdit"), 2, 1);
        grid->addWidget(*axis.stepLabel, 3, 0);
        grid->addWidget(numericEdit(axis.step, p + "StepEdit"), 3, 1);
        grid->addWidget(*axis.logBaseLabel, 4, 0);
        grid->addWidget(numericEdit(axis.logBase, p + "LogBaseEdit"), 4, 1);
        grid->addWidget(*axis.log, 5, 0, 1, 2);
        grid->addWidget(*axis.autoLimits, 6, 0, 1, 2);
        grid->addWidget(*axis.autoDivisions, 7, 0, 1, 2);
        grid->setRowStretch(8, 1);
        if (axis.min == XMin)
            m_xRangeWidgets = {minLabel, maxLabel, m_edits[XMin], m_edits[XMax], *axis.autoLimits};
        connect(*axis.log, &QCheckBox::clicked, this, &OrvexCurveConfigureDialog::slotLogBoxClicked);
        connect(*axis.autoLimits, &QCheckBox::clicked, this, &OrvexCurveConfigureDialog::slotAutoLimitBoxClicked);
        connect(*axis.autoDivisions, &QCheckBox::clicked, this,
                &OrvexCurveConfigureDialog::slotAutoDivisionBoxClicked);
        cartesianLayout->addWidget(group);
    }
    m_axesStack->addWidget(cartesian);

    // Polar charts: magnitude and angular.
    auto* polar = new QWidget;
    auto* polarLayout = new QHBoxLayout(polar);
    auto* magnitude = new QGroupBox(QStringLiteral("Magnitude"));
    auto* grid = new QGridLayout(magnitude);
    m_magnitudeLabelEdit = new QLineEdit(QString::fromStdString(m_view->magnitudeLabel()));
    m_magnitudeLabelEdit->setObjectName(QStringLiteral("magnitudeLabelEdit"));
    m_magnitudeAutoLimitsBox = new QCheckBox(QStringLiteral("Auto limits"));
    m_magnitudeAutoLimitsBox->setObjectName(QStringLiteral("magnitudeAutoLimitsBox"));
    m_magnitudeAutoLimitsBox->setChecked(m_view->isMagnitudeAutoLimits());
    m_magnitudeNormalizedBox = new QCheckBox(QStringLiteral("Normalized"));
    m_magnitudeNormalizedBox->setObjectName(QStringLiteral("magnitudeNormalizedBox"));
    m_magnitudeNormalizedBox->setChecked(m_view->isMagnitudeNormalized());
    m_magnitudeAutoDivisionsBox = new QCheckBox(QStringLiteral("Auto Divisions"));
    m_magnitudeAutoDivisionsBox->setObjectName(QStringLiteral("magnitudeAutoDivisionsBox"));
    grid->addWidget(new QLabel(QStringLiteral("Label")), 0, 0);
    grid->addWidget(m_magnitudeLabelEdit, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Minimum")), 1, 0);
    grid->addWidget(numericEdit(MagnitudeMin, "magnitudeMinEdit"), 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("Maximum")), 2, 0);
    grid->addWidget(numericEdit(MagnitudeMax, "magnitudeMaxEdit"), 2, 1);
    grid->addWidget(m_magnitudeAutoLimitsBox, 3, 0, 1, 2);
    grid->addWidget(m_magnitudeNormalizedBox, 4, 0, 1, 2);
    grid->addWidget(new QLabel(QStringLiteral("# Divisions")), 5, 0);
    grid->addWidget(numericEdit(MagnitudeDivisions, "magnitudeDivisionsEdit"), 5, 1);
    grid->addWidget(m_magnitudeAutoDivisionsBox, 6, 0, 1, 2);
    grid->setRowStretch(7, 1);
    connect(m_magnitudeAutoLimitsBox, &QCheckBox::clicked, this, &OrvexCurveConfigureDialog::slotAutoLimitBoxClicked);
    connect(m_magnitudeNormalizedBox, &QCheckBox::clicked, this,
            &OrvexCurveConfigureDialog::slotNormalizedBoxClicked);
    connect(m_magnitudeAutoDivisionsBox, &QCheckBox::clicked, this,
            &OrvexCurveConfigureDialog::slotAutoDivisionBoxClicked);

    auto* angular = new QGroupBox(QStringLiteral("Angular"));
    auto* angularGrid = new QGridLayout(angular);
    m_angularLabelEdit = new QLineEdit(QString::fromStdString(m_view->angularLabel()));
    m_angularLabelEdit->setObjectName(QStringLiteral("angularLabelEdit"));
    angularGrid->addWidget(new QLabel(QStringLiteral("Label")), 0, 0);
    angularGrid->addWidget(m_angularLabelEdit, 0, 1);
    angularGrid->addWidget(new QLabel(QStringLiteral("# Divisions")), 1, 0);
    angularGrid->addWidget(numericEdit(AngularDivisions, "angularDivisionsEdit"), 1, 1);
    angularGrid->setRowStretch(2, 1);
    polarLayout->addWidget(magnitude);
    polarLayout->addWidget(angular);
    m_axesStack->addWidget(polar);

    // Put the enabled / shown states in line with the boxes.
    for (QCheckBox* box : {m_xAutoLimitsBox, m_yAutoLimitsBox, m_magnitudeAutoLimitsBox})
        box->clicked(box->isChecked());
    for (QCheckBox* box : {m_xAutoDivisionsBox, m_yAutoDivisionsBox, m_magnitudeAutoDivisionsBox})
        box->clicked(box->isChecked());
    for (QCheckBox* box : {m_xLogBox, m_yLogBox})
        box->clicked(box->isChecked());
    if (m_magnitudeNormalizedBox->isChecked()) {
        m_magnitudeAutoLimitsBox->setChecked(true);
        m_magnitudeAutoLimitsBox->setEnabled(false);
        m_magnitudeAutoLimitsBox->clicked(true);
    }
    tabs->addTab(m_axesStack, QStringLiteral("Axes"));
}

void OrvexCurveConfigureDialog::buildCurveTable()
{
    m_curveTable = makeTable({QStringLiteral("Visible"), QStringLiteral("Name"), QStringLiteral("Auto-suffix(read only)"),
                              QStringLiteral("Style"), QStringLiteral("Width"), QStringLiteral("Color")},
                             "m_curveTableWidget");
    for (const auto& group : m_view->getCurveManager()->getAllGroups()) {
        for (const auto& curve : group->getAllCurves()) {
            CurveRow row;
            row.curve = curve;
            row.visible = new QCheckBox;
            row.visible->setChecked(curve->visible());
            row.name = new QLineEdit(QString::fromStdString(curve->title()));
            row.suffix = new QLineEdit(QString::fromStdString(curve->suffix()));
            row.suffix->setReadOnly(true);
            row.style = new QComboBox;
            row.style->addItems(MarkerInfo::lineStyleNames());
            row.style->setCurrentText(MarkerInfo::lineStyleName(curve->lineStyle()));
            row.width = new QComboBox;
            row.color = new OrvexCurveColorChooserButton(curve->color(), false);
            row.lineWidth = curve->width();
            row.barWidth = curve->barWidth();
            const int r = m_curveTable->rowCount();
            m_curveTable->insertRow(r);
            m_curveTable->setCellWidget(r, 0, centred(row.visible));
            m_curveTable->setCellWidget(r, 1, row.name);
            m_curveTable->setCellWidget(r, 2, row.suffix);
            m_curveTable->setCellWidget(r, 3, row.style);
            m_curveTable->setCellWidget(r, 4, row.width);
            m_curveTable->setCellWidget(r, 5, row.color);
            const std::size_t index = m_curveRows.size();
            connect(row.width, qOverload<int>(&QComboBox::currentIndexChanged), this, [this, index] {
                CurveRow& edited = m_curveRows[index];
                const int value = edited.width->currentText().toInt();
                (isBar() ? edited.barWidth : edited.lineWidth) = value;
            });
            m_curveRows.push_back(row);
        }
    }
    m_curveTable->resizeColumnsToContents();
    m_lowerTabs->addTab(m_curveTable, QStringLiteral("Curves"));
}

void OrvexCurveConfigureDialog::fillWidthCombos()
{
    const bool bar = isBar();
    m_curveTable->horizontalHeaderItem(4)->setText(bar ? QStringLiteral("Bar Width") : QStringLiteral("Width"));
    for (CurveRow& row : m_curveRows) {
        const QSignalBlocker blocker(row.width);
        const int value = bar ? row.barWidth : row.lineWidth;
        row.width->clear();
        const int top = bar ? 20 : 10;
        for (int w = 1; w <= std::max(top, value); ++w)
            row.width->addItem(QString::number(w));
        row.width->setCurrentText(QString::number(value));
    }
}

void OrvexCurveConfigureDialog::buildFontTable()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    m_fontTable = makeTable({QStringLiteral("Component"), QStringLiteral("Font"), QStringLiteral("Color")},
                            "m_fontTableWidget");
    const auto& configuration = m_view->getConfiguration();
    for (const char* name : kComponents) {
        auto* info = new ComponentInfo(name, configuration.font(name), configuration.color(name), this);
        const int r = m_fontTable->rowCount();
        m_fontTable->insertRow(r);
        m_fontTable->setCellWidget(r, 0, info->componentLabel());
        m_fontTable->setCellWidget(r, 1, info->fontButton());
        m_fontTable->setCellWidget(r, 2, info->colorButton());
        connect(info, &ComponentInfo::fontModified, this, &OrvexCurveConfigureDialog::slotHandleFontModified);
        connect(info, &ComponentInfo::colorModified, this, &OrvexCurveConfigureDialog::slotHandleColorModified);
        m_componentInfos.push_back(info);
    }
    m_fontTable->resizeColumnsToContents();
    layout->addWidget(m_fontTable);
    auto* defaults = new QPushButton(QStringLiteral("Default"));
    defaults->setObjectName(QStringLiteral("defaultButton"));
    defaults->setAutoDefault(false);
    connect(defaults, &QPushButton::clicked, this, &OrvexCurveConfigureDialog::slotHandleDefaultClicked);
    layout->addWidget(defaults, 0, Qt::AlignRight);
    m_lowerTabs->addTab(page, QStringLiteral("Fonts"));
}

void OrvexCurveConfigureDialog::buildMarkerTab()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* options = new QHBoxLayout;
    auto box = [&](QCheckBox*& target, bool& state, const QString& text, const char* name, bool checked) {
        target = new QCheckBox(text);
        target->setObjectName(QString::fromLatin1(name));
        target->setChecked(checked);
        state = checked;
        connect(target, &QCheckBox::clicked, this, &OrvexCurveConfigureDialog::slotMarkerPropertyChanged);
        options->addWidget(target);
    };
    box(m_namesInLabelsBox, m_namesInLabels, QStringLiteral("Names in Labels"), "namesInLabelsBox",
        m_view->namesInLabels());
    box(m_matchTextColorBox, m_matchTextColor, QStringLiteral("Match Text Color to Line"), "matchTextColorBox",
        m_view->matchTextColorToLine());
    box(m_transparentBackgroundBox, m_transparentBackground, QStringLiteral("Transparent Background"),
        "transparentBackgroundBox", m_view->transparentBackground());
    box(m_connectorsBox, m_drawConnector, QStringLiteral("Connectors"), "connectorsBox", m_view->drawConnector());
    options->addStretch();
    layout->addLayout(options);

    m_markerTabs = new QTabWidget;
    m_markerTabs->setObjectName(QStringLiteral("markerTabs"));
    m_allMarkerTable = makeTable({QStringLiteral("Visible"), QStringLiteral("Name"), QStringLiteral("Type"),
                                  QStringLiteral("X Pos"), QStringLiteral("Y Pos")},
                                 "m_allMarkerTableWidget");
    m_allMarkerTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pointMarkerTable = makeTable({QStringLiteral("Visible"), QStringLiteral("Name"), QStringLiteral("Symbol"),
                                    QStringLiteral("Size"), QStringLiteral("Weight"), QStringLiteral("Type"),
                                    QStringLiteral("Color"), QStringLiteral("X Pos"), QStringLiteral("Y Pos")},
                                   "m_pointMarkerTableWidget");
    m_lineMarkerTable = makeTable({QStringLiteral("Visible"), QStringLiteral("Name"), QStringLiteral("Style"),
                                   QStringLiteral("Weight"), QStringLiteral("Type"), QStringLiteral("Color"),
                                   QStringLiteral("X Pos"), QStringLiteral("Y Pos")},
                                  "m_lineMarkerTableWidget");

    for (const auto& marker : m_view->getMarkerManager()->allMarkers()) {
        auto* info = new MarkerInfo(marker, this);
        QTableWidget* table = info->isPointMarker() ? m_pointMarkerTable : m_lineMarkerTable;
        const int r = table->rowCount();
        table->insertRow(r);
        QList<QWidget*> cells = {centred(info->visibleBox()), info->nameEdit()};
        if (info->isPointMarker())
            cells << info->symbolCombo() << info->sizeCombo();
        else
            cells << info->styleCombo();
        cells << info->weightCombo() << info->typeLabel() << info->colorButton() << info->xEdit() << info->yEdit();
        for (int c = 0; c < cells.size(); ++c)
            table->setCellWidget(r, c, cells[c]);
        connect(info, &MarkerInfo::visibilityModified, this, &OrvexCurveConfigureDialog::slotHandleVisibilityModified);
        connect(info, &MarkerInfo::symbolModified, this, &OrvexCurveConfigureDialog::slotHandleSymbolModified);
        connect(info, &MarkerInfo::sizeModified, this, &OrvexCurveConfigureDialog::slotHandleSizeModified);
        connect(info, &MarkerInfo::styleModified, this, &OrvexCurveConfigureDialog::slotHandleStyleModified);
        connect(info, &MarkerInfo::weightModified, this, &OrvexCurveConfigureDialog::slotHandleWeightModified);
        connect(info, &MarkerInfo::colorModified, this, &OrvexCurveConfigureDialog::slotHandleColorModified);
        for (QLineEdit* edit : {info->nameEdit(), info->xEdit(), info->yEdit()})
            connect(edit, &QLineEdit::editingFinished, this, &OrvexCurveConfigureDialog::refreshAllMarkersTable);
        m_markerInfos.push_back(info);
    }
    refreshAllMarkersTable();
    m_pointMarkerTable->resizeColumnsToContents();
    m_lineMarkerTable->resizeColumnsToContents();
    m_markerTabs->addTab(m_allMarkerTable, QStringLiteral("All Markers"));
    m_markerTabs->addTab(m_pointMarkerTable, QStringLiteral("Point Markers"));
    m_markerTabs->addTab(m_lineMarkerTable, QStringLiteral("Line Markers"));
    layout->addWidget(m_markerTabs);
    m_lowerTabs->addTab(page, QStringLiteral("Markers"));
}

void OrvexCurveConfigureDialog::refreshAllMarkersTable()
{
    m_allMarkerTable->setRowCount(0);
    for (const MarkerInfo* info : m_markerInfos) {
        const int r = m_allMarkerTable->rowCount();
        m_allMarkerTable->insertRow(r);
        auto* visible = new QTableWidgetItem;
        visible->setFlags(Qt::ItemIsEnabled);
        visible->setCheckState(info->visible() ? Qt::Checked : Qt::Unchecked);
        m_allMarkerTable->setItem(r, 0, visible);
        m_allMarkerTable->setItem(r, 1, new QTableWidgetItem(info->name()));
        m_allMarkerTable->setItem(r, 2, new QTableWidgetItem(MarkerInfo::typeText(info->type())));
        m_allMarkerTable->setItem(r, 3, new QTableWidgetItem(info->xEdit()->text()));
        m_allMarkerTable->setItem(r, 4, new QTableWidgetItem(info->yEdit()->text()));
    }
    m_allMarkerTable->resizeColumnsToContents();
}

// ------------------------------------------------------------------ helpers

bool OrvexCurveConfigureDialog::isBar() const
{
    return m_typeCombo->currentText() == QLatin1String("Bar");
}

bool OrvexCurveConfigureDialog::isPolar() const
{
    return m_typeCombo->currentText() == QLatin1String("Polar");
}

void OrvexCurveConfigureDialog::setNumber(NumericField field, double value)
{
    m_values[field] = value;
    const QSignalBlocker blocker(m_edits[field]);
    m_edits[field]->setText(number(value));
}

void OrvexCurveConfigureDialog::loadRanges()
{
    const auto x = m_view->getRangeX();
    const auto y = m_view->getRangeY();
    const auto magnitude = m_view->getRangeMagnitude();
    setNumber(XMin, x.first);
    setNumber(XMax, x.second);
    setNumber(YMin, y.first);
    setNumber(YMax, y.second);
    setNumber(MagnitudeMin, magnitude.first);
    setNumber(MagnitudeMax, magnitude.second);
}

// ------------------------------------------------------------------ public

void OrvexCurveConfigureDialog::setXRangeWidgetVis(bool visible)
{
    for (QWidget* widget : m_xRangeWidgets)
        widget->setVisible(visible);
}

void OrvexCurveConfigureDialog::switchToCurveTable()
{
    m_lowerTabs->setCurrentIndex(0);
}

void OrvexCurveConfigureDialog::switchToFontTable()
{
    m_lowerTabs->setCurrentIndex(1);
}

void OrvexCurveConfigureDialog::switchToMarkerTable(int table)
{
    m_lowerTabs->setCurrentIndex(2);
    if (table == 1 || table == 2)
        m_markerTabs->setCurrentIndex(table);
}

// ------------------------------------------------------------------ slots

void OrvexCurveConfigureDialog::slotValidateInputNumber()
{
    auto* edit = qobject_cast<QLineEdit*>(sender());
    const auto found = std::find(m_edits.begin(), m_edits.end(), edit);
    if (!edit || found == m_edits.end())
        return;
    const auto field = NumericField(found - m_edits.begin());

    std::vector<std::unique_ptr<QSignalBlocker>> blockers;
    for (QLineEdit* e : m_edits)
        blockers.push_back(std::make_unique<QSignalBlocker>(e));
    m_errorLabel->clear();

    const double entry = edit->text().toDouble();
    QString error;
    switch (field) {
    case XMin:
    case YMin:
    case MagnitudeMin: {
        const NumericField max = field == XMin ? XMax : field == YMin ? YMax : MagnitudeMax;
        if (entry > m_values[max])
            error = QStringLiteral("The Min cannot be greater than the Max");
        break;
    }
    case XMax:
    case YMax:
    case MagnitudeMax: {
        const NumericField min = field == XMax ? XMin : field == YMax ? YMin : MagnitudeMin;
        if (m_values[min] > entry)
            error = QStringLiteral("The Max cannot be smaller than the Min");
        break;
    }
    case XStep:
    case YStep: {
        // Both steps are measured against the X range, the Y step included.
        const double range = m_values[XMax] - m_values[XMin];
        if (entry <= 0 || range / entry > 100)
            error = QStringLiteral("The step is too small, resulting in ticks count being greater than 100.");
        break;
    }
    case XLogBase:
    case YLogBase:
        if (entry == 0 || entry == 1)
            error = QStringLiteral("the log divisions cannot be 0 or 1");
        break;
    case MagnitudeDivisions:
        if (entry <= 0 || entry > 100)
            error = QStringLiteral("the magnitude divisions must be between 0 and 100");
        break;
    case AngularDivisions:
        if (entry <= 0 || entry > 120)
            error = QStringLiteral("the angular divisions must be between 0 and 120");
        break;
    case NumericFieldCount:
        break;
    }
    if (error.isEmpty()) {
        m_values[field] = entry;
    } else {
        edit->setText(number(m_values[field]));
        m_errorLabel->setText(error);
    }
}

void OrvexCurveConfigureDialog::slotApplyButtonClicked()
{
    if (!m_view)
        return;
    OrvexChartView* view = m_view;
    const bool wasPaused = view->propertyRecordingPaused();
    view->setPropertyRecordingPaused(true);

    view->setTitle(m_titleEdit->text().toStdString());
    const QString type = m_typeCombo->currentText();
    view->changeViewTypeTo(type == QLatin1String("Polar") ? OrvexChartView::Polar
                           : type == QLatin1String("Bar") ? OrvexChartView::Bar
                                                          : OrvexChartView::Line);

    // Curves first: the axes below are laid out for the curves as they will be.
    for (const CurveRow& row : m_curveRows) {
        const auto curve = row.curve.lock();
        if (!curve)
            continue;
        curve->setVisible(row.visible->isChecked());
        curve->setTitle(row.name->text().toStdString());
        curve->setLineStyle(MarkerInfo::lineStyle(row.style->currentText()));
        curve->setWidth(row.lineWidth);
        curve->setBarWidth(row.barWidth);
        curve->setColor(row.color->chosenColor());
    }
    view->updateCurves();

    if (view->isPolarChart()) {
        view->setMagnitudeLabel(m_magnitudeLabelEdit->text().toStdString());
        view->setAngularLabel(m_angularLabelEdit->text().toStdString());
        view->setMagnitudeNormalized(m_magnitudeNormalizedBox->isChecked());
        view->setMagnitudeAutoLimits(m_magnitudeAutoLimitsBox->isChecked());
        if (!m_magnitudeAutoLimitsBox->isChecked())
            view->setRangeMagnitude(m_values[MagnitudeMin], m_values[MagnitudeMax]);
        if (!m_magnitudeAutoDivisionsBox->isChecked())
            view->setMagnitudeDivisions(m_values[MagnitudeDivisions]);
        view->setAngularDivisions(m_values[AngularDivisions]);
    } else {
        view->setXLabel(m_xLabelEdit->text().toStdString());
        view->setYLabel(m_yLabelEdit->text().toStdString());
        view->setXLogBase(m_values[XLogBase]);
        view->setYLogBase(m_values[YLogBase]);
        view->setUseXLog(m_xLogBox->isChecked());
        view->setUseYLog(m_yLogBox->isChecked());
        view->setStepX(m_values[XStep]);
        view->setStepY(m_values[YStep]);
        view->setAutoDivisionsX(m_xAutoDivisionsBox->isChecked());
        view->setAutoDivisionsY(m_yAutoDivisionsBox->isChecked());
        view->setAutoLimitsX(m_xAutoLimitsBox->isChecked());
        view->setAutoLimitsY(m_yAutoLimitsBox->isChecked());
        if (!m_xAutoLimitsBox->isChecked())
            view->setRangeX(m_values[XMin], m_values[XMax]);
        if (!m_yAutoLimitsBox->isChecked())
            view->setRangeY(m_values[YMin], m_values[YMax]);
    }

    for (ComponentInfo* info : m_componentInfos) {
        QColor color = info->color();
        QFont font = info->font();
        view->updateComponentsColor(info->component(), color);
        view->updateComponentsFont(info->component(), font);
    }

    view->setNamesInLabels(m_namesInLabels);
    view->setMatchTextColorToLine(m_matchTextColor);
    view->setTransparentBackground(m_transparentBackground);
    view->setDrawConnector(m_drawConnector);
    for (MarkerInfo* info : m_markerInfos)
        info->apply();
    view->refreshAllMarkersPosition();
    view->repaint();

    view->setPropertyRecordingPaused(wasPaused);
    Python::QtUIPysUtils::setProperties(view->variableName(), recordedProperties());

    // Names may have been made unique by the markers; show what they hold.
    for (MarkerInfo* info : m_markerInfos)
        if (const auto marker = info->marker())
            info->nameEdit()->setText(QString::fromStdString(marker->label()));
    refreshAllMarkersTable();
}

std::unordered_map<std::string, std::string> OrvexCurveConfigureDialog::recordedProperties() const
{
    std::unordered_map<std::string, std::string> props;
    const auto text = [](const QLineEdit* edit) { return pyText(edit->text()); };
    props["'title'"] = text(m_titleEdit);
    const auto viewType = isPolar() ? OrvexChartView::Polar : isBar() ? OrvexChartView::Bar : OrvexChartView::Line;
    props["'view_type'"] = Python::QtUIPythonEnumMap::Instance().pythonText(viewType);
    if (!isPolar()) {
        props["'use_x_log'"] = pyBool(m_xLogBox->isChecked());
        props["'use_y_log'"] = pyBool(m_yLogBox->isChecked());
    }
    props["'names_in_labels'"] = pyBool(m_namesInLabels);
    props["'transparent_background'"] = pyBool(m_transparentBackground);
    props["'match_text_color_to_line'"] = pyBool(m_matchTextColor);
    props["'draw_connector'"] = pyBool(m_drawConnector);
    props["'x_auto_divisions'"] = pyBool(m_xAutoDivisionsBox->isChecked());
    props["'x_auto_limits'"] = pyBool(m_xAutoLimitsBox->isChecked());
    props["'y_auto_divisions'"] = pyBool(m_yAutoDivisionsBox->isChecked());
    props["'y_auto_limits'"] = pyBool(m_yAutoLimitsBox->isChecked());
    props["'magnitude_auto_limits'"] = pyBool(m_magnitudeAutoLimitsBox->isChecked());
    props["'magnitude_normalized'"] = pyBool(m_magnitudeNormalizedBox->isChecked());
    props["'x_step'"] = pyNumber(m_values[XStep]);
    props["'y_step'"] = pyNumber(m_values[YStep]);
    props["'x_log_base'"] = pyNumber(m_values[XLogBase]);
    props["'y_log_base'"] = pyNumber(m_values[YLogBase]);
    props["'magnitude_divisions'"] = pyNumber(m_values[MagnitudeDivisions]);
    props["'angular_divisions'"] = pyNumber(m_values[AngularDivisions]);
    const auto range = [this](NumericField min, NumericField max) {
        return fmt::format("[{0}, {1}]", pyNumber(m_values[min]), pyNumber(m_values[max]));
    };
    props["'x_range'"] = range(XMin, XMax);
    props["'y_range'"] = range(YMin, YMax);
    props["'magnitude_range'"] = range(MagnitudeMin, MagnitudeMax);
    props["'x_label'"] = text(m_xLabelEdit);
    props["'y_label'"] = text(m_yLabelEdit);
    props["'magnitude_label'"] = text(m_magnitudeLabelEdit);
    props["'angular_label'"] = text(m_angularLabelEdit);

    std::vector<std::string> curves;
    for (const CurveRow& row : m_curveRows) {
        curves.push_back(pyDict({{"'visible'", pyBool(row.visible->isChecked())},
                                 {"'name'", text(row.name)},
                                 {"'style'", pyText(row.style->currentText())},
                                 {isBar() ? "'bar_width'" : "'width'", std::to_string(isBar() ? row.barWidth
                                                                                             : row.lineWidth)},
                                 {"'color'", pyColor(row.color->chosenColor())}}));
    }
    props["'curves'"] = joinList(curves);

    std::vector<std::pair<std::string, std::string>> colors;
    std::vector<std::pair<std::string, std::string>> fonts;
    for (const ComponentInfo* info : m_componentInfos) {
        const std::string key = fmt::format("\"{0}\"", doubleQuotedBody(QString::fromStdString(info->component())));
        colors.emplace_back(key, pyColor(info->color()));
        const QFont font = info->font();
        fonts.emplace_back(key, fmt::format("{{\"family\": \"{0}\", \"pointSize\" : {1}, \"weight\" : {2}, "
                                            "\"italic\" : {3}}}",
                                            doubleQuotedBody(font.family()), font.pointSize(), font.weight(),
                                            pyBool(font.italic())));
    }
    props["'components_color'"] = pyDict(colors);
    props["'components_font'"] = pyDict(fonts);

    std::vector<std::string> points;
    std::vector<std::string> lines;
    for (const MarkerInfo* info : m_markerInfos) {
        std::vector<std::pair<std::string, std::string>> entries = {{"'visible'", pyBool(info->visible())},
                                                                    {"'name'", pyText(info->name())}};
        if (info->isPointMarker()) {
            entries.emplace_back("'symbol'", Python::QtUIPythonEnumMap::Instance().pythonText(info->symbol()));
            entries.emplace_back("'size'", pyFixed(info->size()));
        } else {
            entries.emplace_back("'style'", pyText(info->styleCombo()->currentText()));
        }
        entries.emplace_back("'weight'", pyFixed(info->weight()));
        entries.emplace_back("'color'", pyColor(info->color()));
        (info->isPointMarker() ? points : lines).push_back(pyDict(entries));
    }
    props["'point_markers'"] = joinList(points);
    props["'line_markers'"] = joinList(lines);
    return props;
}

void OrvexCurveConfigureDialog::slotOKButtonClicked()
{
    slotApplyButtonClicked();
    accept();
}

void OrvexCurveConfigureDialog::slotClickFitView()
{
    if (!m_view)
        return;
    m_view->fitView();
    loadRanges();
}

void OrvexCurveConfigureDialog::slotClose()
{
    for (ComponentInfo* info : m_componentInfos)
        info->deleteLater();
    for (MarkerInfo* info : m_markerInfos)
        info->deleteLater();
    m_componentInfos.clear();
    m_markerInfos.clear();
}

void OrvexCurveConfigureDialog::slotAutoLimitBoxClicked(bool checked)
{
    const QObject* box = sender();
    if (box == m_xAutoLimitsBox) {
        m_edits[XMin]->setEnabled(!checked);
        m_edits[XMax]->setEnabled(!checked);
    } else if (box == m_yAutoLimitsBox) {
        m_edits[YMin]->setEnabled(!checked);
        m_edits[YMax]->setEnabled(!checked);
    } else if (box == m_magnitudeAutoLimitsBox) {
        m_edits[MagnitudeMin]->setEnabled(!checked);
        m_edits[MagnitudeMax]->setEnabled(!checked);
    }
}

void OrvexCurveConfigureDialog::slotAutoDivisionBoxClicked(bool checked)
{
    const QObject* box = sender();
    if (box == m_xAutoDivisionsBox) {
        m_edits[XStep]->setEnabled(!checked);
        m_edits[XLogBase]->setEnabled(!checked);
    } else if (box == m_yAutoDivisionsBox) {
        m_edits[YStep]->setEnabled(!checked);
        m_edits[YLogBase]->setEnabled(!checked);
    } else if (box == m_magnitudeAutoDivisionsBox) {
        m_edits[MagnitudeDivisions]->setEnabled(!checked);
    }
}

void OrvexCurveConfigureDialog::slotLogBoxClicked(bool checked)
{
    const bool x = sender() == m_xLogBox;
    if (!x && sender() != m_yLogBox)
        return;
    (x ? m_xLogBaseLabel : m_yLogBaseLabel)->setVisible(checked);
    m_edits[x ? XLogBase : YLogBase]->setVisible(checked);
    (x ? m_xStepLabel : m_yStepLabel)->setVisible(!checked);
    m_edits[x ? XStep : YStep]->setVisible(!checked);
}

void OrvexCurveConfigureDialog::slotNormalizedBoxClicked(bool checked)
{
    if (checked) {
        m_magnitudeAutoLimitsBox->setChecked(true);
        m_magnitudeAutoLimitsBox->setEnabled(false);
        m_edits[MagnitudeMin]->setEnabled(false);
        m_edits[MagnitudeMax]->setEnabled(false);
    } else {
        m_magnitudeAutoLimitsBox->setEnabled(true);
    }
    // A polar chart shows normalised magnitudes in dB.
    if (!m_view || !m_view->isPolarChart() || m_view->useDB())
        return;
    const auto type = checked ? OrvexCurveDataType::DbNormalizedData : OrvexCurveDataType::RawData;
    for (const auto& group : m_view->getCurveManager()->getAllGroups())
        for (const auto& curve : group->getAllCurves())
            curve->setDataType(type);
}

void OrvexCurveConfigureDialog::slotMarkerPropertyChanged(bool checked)
{
    const QObject* box = sender();
    if (box == m_namesInLabelsBox)
        m_namesInLabels = checked;
    else if (box == m_matchTextColorBox)
        m_matchTextColor = checked;
    else if (box == m_transparentBackgroundBox)
        m_transparentBackground = checked;
    else if (box == m_connectorsBox)
        m_drawConnector = checked;
}

void OrvexCurveConfigureDialog::slotPlotTypeCurrentIndexChanged(int)
{
    m_axesStack->setCurrentIndex(isPolar() ? 1 : 0);
    fillWidthCombos();
}

void OrvexCurveConfigureDialog::slotHandleColorModified()
{
    refreshAllMarkersTable();
}

void OrvexCurveConfigureDialog::slotHandleFontModified()
{
    m_fontTable->resizeColumnsToContents();
}

void OrvexCurveConfigureDialog::slotHandleSizeModified()
{
    refreshAllMarkersTable();
}

void OrvexCurveConfigureDialog::slotHandleStyleModified()
{
    refreshAllMarkersTable();
}

void OrvexCurveConfigureDialog::slotHandleSymbolModified()
{
    refreshAllMarkersTable();
}

void OrvexCurveConfigureDialog::slotHandleVisibilityModified()
{
    refreshAllMarkersTable();
}

void OrvexCurveConfigureDialog::slotHandleWeightModified()
{
    refreshAllMarkersTable();
}

void OrvexCurveConfigureDialog::slotHandleDefaultClicked()
{
    // Back to what the chart holds now: edits made since are dropped.
    if (!m_view)
        return;
    const auto& configuration = m_view->getConfiguration();
    for (ComponentInfo* info : m_componentInfos) {
        info->setFont(configuration.font(info->component()));
        info->colorButton()->setColor(configuration.color(info->component()));
    }
    m_fontTable->resizeColumnsToContents();
}

// ------------------------------------------------------------------ export

void OrvexCurveConfigureDialog::dumpDialogInfo()
{
    const QString file = QFileDialog::getSaveFileName(this, tr("Export file"), QDir::currentPath(),
                                                      QStringLiteral("txt (*.txt)"));
    if (file.isEmpty())
        return;
    dumpDialogInfo(file);
}

bool OrvexCurveConfigureDialog::dumpDialogInfo(const QString& path) const
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        std::cerr << "Cannot open file for writing:" << path.toStdString() << std::endl;
        return false;
    }
    QTextStream out(&file);
    out.setCodec("UTF-8");
    writeExport(out);
    return true;
}

void OrvexCurveConfigureDialog::writeExport(QTextStream& out) const
{
    const auto line = [&out](const QString& text) { out << text << "\n"; };
    const auto state = [](const QCheckBox* box) { return QString::number(int(box->checkState())); };
    const auto rgba = [](const QColor& c) { return QString::number(c.rgba()); };

    line(QStringLiteral("Title: ") + m_titleEdit->text());
    line(QStringLiteral("Type: ") + m_typeCombo->currentText());
    if (isPolar()) {
        line(QStringLiteral("Magnitude Axis: {"));
        line(QStringLiteral("Label: ") + m_magnitudeLabelEdit->text());
        line(QStringLiteral("Min: ") + m_edits[MagnitudeMin]->text());
        line(QStringLiteral("Max: ") + m_edits[MagnitudeMax]->text());
        line(QStringLiteral("Divisions: ") + m_edits[MagnitudeDivisions]->text());
        line(QStringLiteral("Auto Limits: ") + state(m_magnitudeAutoLimitsBox));
        line(QStringLiteral("Normalized: ") + state(m_magnitudeNormalizedBox));
        line(QStringLiteral("}"));
        line(QStringLiteral("Angular Axis: {"));
        line(QStringLiteral("Label: ") + m_angularLabelEdit->text());
        line(QStringLiteral("Divisions: ") + m_edits[AngularDivisions]->text());
        line(QStringLiteral("}"));
    } else {
        const auto axis = [&](const QString& name, QCheckBox* log, QLineEdit* label, NumericField min,
                              NumericField max, NumericField step, NumericField logBase, QCheckBox* autoLimits,
                              QCheckBox* autoDivisions) {
            line(name + QStringLiteral(" Axis: {"));
            line(QStringLiteral("Log Scale: ") + state(log));
            line(QStringLiteral("Label: ") + label->text());
            line(QStringLiteral("Min: ") + m_edits[min]->text());
            line(QStringLiteral("Max: ") + m_edits[max]->text());
            line(QStringLiteral("Step: ") + m_edits[step]->text());
            line(QStringLiteral("Divisions: ") + m_edits[logBase]->text());
            line(QStringLiteral("Auto Limits: ") + state(autoLimits));
            line(QStringLiteral("Auto Divisions: ") + state(autoDivisions));
            line(QStringLiteral("}"));
        };
        axis(QStringLiteral("X"), m_xLogBox, m_xLabelEdit, XMin, XMax, XStep, XLogBase, m_xAutoLimitsBox,
             m_xAutoDivisionsBox);
        axis(QStringLiteral("Y"), m_yLogBox, m_yLabelEdit, YMin, YMax, YStep, YLogBase, m_yAutoLimitsBox,
             m_yAutoDivisionsBox);
    }

    line(QStringLiteral("Curves: {"));
    for (const CurveRow& row : m_curveRows) {
        line(QStringLiteral("Visible: ") + state(row.visible));
        line(QStringLiteral("Name: ") + row.name->text());
        line(QStringLiteral("Suffix: ") + row.suffix->text());
        line(QStringLiteral("Style: ") + row.style->currentText());
        line(QStringLiteral("Width: ") + row.width->currentText());
        line(QStringLiteral("Color: ") + rgba(row.color->chosenColor()));
    }
    line(QStringLiteral("}"));

    line(QStringLiteral("Fonts: {"));
    for (const ComponentInfo* info : m_componentInfos) {
        line(QStringLiteral("Label: ") + info->componentLabel()->text());
        line(QStringLiteral("Font: ") + info->fontButton()->text());
        line(QStringLiteral("Color: ") + rgba(info->color()));
    }
    line(QStringLiteral("}"));

    line(QStringLiteral("Markers: {"));
    line(QStringLiteral("Names in Labels: ") + state(m_namesInLabelsBox));
    line(QStringLiteral("Match Text Color to Line: ") + state(m_matchTextColorBox));
    line(QStringLiteral("Transparent Background: ") + state(m_transparentBackgroundBox));
    line(QStringLiteral("Connectors: ") + state(m_connectorsBox));
    for (const MarkerInfo* info : m_markerInfos) {
        if (!info->isPointMarker())
            continue;
        line(QStringLiteral("Visible: ") + state(info->visibleBox()));
        line(QStringLiteral("Name: ") + info->name());
        line(QStringLiteral("Symbol: ") + info->symbolCombo()->currentText());
        line(QStringLiteral("Size: ") + info->sizeCombo()->currentText());
        line(QStringLiteral("Weight: ") + info->weightCombo()->currentText());
        line(QStringLiteral("Color: ") + rgba(info->color()));
        line(QStringLiteral("X Pos: ") + info->xEdit()->text());
        line(QStringLiteral("Y Pos: ") + info->yEdit()->text());
    }
    for (const MarkerInfo* info : m_markerInfos) {
        if (info->isPointMarker())
            continue;
        line(QStringLiteral("Visible: ") + state(info->visibleBox()));
        line(QStringLiteral("Name: ") + info->name());
        // No separator after "Style": the format has always been written so.
        line(QStringLiteral("Style") + info->styleCombo()->currentText());
        line(QStringLiteral("Weight: ") + info->weightCombo()->currentText());
        line(QStringLiteral("Type: ") + info->typeLabel()->text());
        line(QStringLiteral("Color: ") + rgba(info->color()));
        line(QStringLiteral("X Pos: ") + info->xEdit()->text());
        line(QStringLiteral("Y Pos: ") + info->yEdit()->text());
    }
    line(QStringLiteral("}"));
}

} // namespace Gui::Widget
