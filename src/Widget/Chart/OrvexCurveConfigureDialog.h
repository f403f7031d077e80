#pragma once

#include "OrvexQtUIBase_export.h"
#include "Scriptable/AQDialog.h"

#include <QPointer>

#include <array>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class QCheckBox;
class QComboBox;
class QDoubleValidator;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTabWidget;
class QTableWidget;
class QTextStream;

namespace QtUIBase {
class AQPushButton;
}

namespace Gui::Widget {

class ComponentInfo;
class MarkerInfo;
class OrvexChartView;
class OrvexCurve;
class OrvexCurveColorChooserButton;

/**
 * The dialog in which the user edits one chart: title and type, the axes
 * (X and Y, or magnitude and angular for polar charts), each curve's look,
 * the fonts and colours of the chart components, and the markers.
 *
 * Built from the view's current state; nothing reaches the view before
 * "Apply" or "OK". The twelve numeric fields share one `QDoubleValidator`
 * and are checked when their editing finishes: a rejected entry is replaced
 * by the field's last accepted value and explained in the red error label.
 * Applying pushes every setting into the view, its curves and markers and
 * records a single "set_properties" statement for the chart (the view's
 * own per-setter recording is paused meanwhile). "Fit All" fits the view
 * and reloads the range fields. With MCAD_POST_PROCESS_DEBUG=1 a
 * "_Dump_Info" button writes every field to a text file.
 *
 * Minimum size 650x500; title "Configure <chart title or 'Chart'>".
 */
class ORVEXQTUIBASE_EXPORT OrvexCurveConfigureDialog : public QtUIBase::AQDialog
{
    Q_OBJECT

public:
    explicit OrvexCurveConfigureDialog(OrvexChartView* view, QWidget* parent = nullptr);
    ~OrvexCurveConfigureDialog() override;

    /// Shows or hides the X minimum / maximum fields, labels and auto box.
    void setXRangeWidgetVis(bool visible);
    void switchToCurveTable();
    void switchToFontTable();
    /// Selects the markers tab; 1 and 2 also select the point / line sub-tab.
    void switchToMarkerTable(int table = 0);

    /// Writes the text export to @p path; false (and a note on std::cerr)
    /// when the file cannot be opened.
    bool dumpDialogInfo(const QString& path) const;

public slots:
    void slotValidateInputNumber();
    void slotApplyButtonClicked();
    void slotOKButtonClicked();
    void slotClickFitView();
    void slotClose();
    void slotAutoLimitBoxClicked(bool checked);
    void slotAutoDivisionBoxClicked(bool checked);
    void slotLogBoxClicked(bool checked);
    void slotNormalizedBoxClicked(bool checked);
    void slotMarkerPropertyChanged(bool checked);
    void slotPlotTypeCurrentIndexChanged(int index);
    void slotHandleColorModified();
    void slotHandleFontModified();
    void slotHandleSizeModified();
    void slotHandleStyleModified();
    void slotHandleSymbolModified();
    void slotHandleVisibilityModified();
    void slotHandleWeightModified();
    void slotHandleDefaultClicked();

protected:
    /// Asks for a file ("Export file", "txt (*.txt)") and writes the export.
    void dumpDialogInfo();

private:
    enum NumericField {
        XMin, XMax, YMin, YMax, XStep, YStep, XLogBase, YLogBase,
        MagnitudeDivisions, AngularDivisions, MagnitudeMin, MagnitudeMax,
        NumericFieldCount
    };

    struct CurveRow
    {
        std::weak_ptr<OrvexCurve> curve;
        QPointer<QCheckBox> visible;
        QPointer<QLineEdit> name;
        QPointer<QLineEdit> suffix;
        QPointer<QComboBox> style;
        QPointer<QComboBox> width;
        QPointer<OrvexCurveColorChooserButton> color;
        int lineWidth = 1;
        int barWidth = 1;
    };

    void buildPlotTab(QTabWidget* tabs);
    void buildAxesTab(QTabWidget* tabs);
    void buildCurveTable();
    void buildFontTable();
    void buildMarkerTab();
    void loadRanges();
    void fillWidthCombos();
    void refreshAllMarkersTable();
    QLineEdit* numericEdit(NumericField field, const char* objectName);
    bool isBar() const;
    bool isPolar() const;
    void setNumber(NumericField field, double value);
    std::unordered_map<std::string, std::string> recordedProperties() const;
    void writeExport(QTextStream& out) const;

    QPointer<OrvexChartView> m_view;
    QDoubleValidator* m_validator = nullptr;
    std::array<QLineEdit*, NumericFieldCount> m_edits{};
    std::array<double, NumericFieldCount> m_values{};

    QTabWidget* m_upperTabs = nullptr;
    QTabWidget* m_lowerTabs = nullptr;
    QTabWidget* m_markerTabs = nullptr;
    QLineEdit* m_titleEdit = nullptr;
    QComboBox* m_typeCombo = nullptr;
    QStackedWidget* m_axesStack = nullptr;

    QLineEdit* m_xLabelEdit = nullptr;
    QLineEdit* m_yLabelEdit = nullptr;
    QCheckBox* m_xLogBox = nullptr;
    QCheckBox* m_yLogBox = nullptr;
    QCheckBox* m_xAutoLimitsBox = nullptr;
    QCheckBox* m_yAutoLimitsBox = nullptr;
    QCheckBox* m_xAutoDivisionsBox = nullptr;
    QCheckBox* m_yAutoDivisionsBox = nullptr;
    QLabel* m_xStepLabel = nullptr;
    QLabel* m_yStepLabel = nullptr;
    QLabel* m_xLogBaseLabel = nullptr;
    QLabel* m_yLogBaseLabel = nullptr;
    QList<QWidget*> m_xRangeWidgets;

    QLineEdit* m_magnitudeLabelEdit = nullptr;
    QLineEdit* m_angularLabelEdit = nullptr;
    QCheckBox* m_magnitudeAutoLimitsBox = nullptr;
    QCheckBox* m_magnitudeNormalizedBox = nullptr;
    QCheckBox* m_magnitudeAutoDivisionsBox = nullptr;

    QTableWidget* m_curveTable = nullptr;
    QTableWidget* m_fontTable = nullptr;
    QTableWidget* m_allMarkerTable = nullptr;
    QTableWidget* m_pointMarkerTable = nullptr;
    QTableWidget* m_lineMarkerTable = nullptr;
    QCheckBox* m_namesInLabelsBox = nullptr;
    QCheckBox* m_matchTextColorBox = nullptr;
    QCheckBox* m_transparentBackgroundBox = nullptr;
    QCheckBox* m_connectorsBox = nullptr;
    bool m_namesInLabels = false;
    bool m_matchTextColor = false;
    bool m_transparentBackground = false;
    bool m_drawConnector = false;

    QLabel* m_errorLabel = nullptr;
    QtUIBase::AQPushButton* m_okButton = nullptr;
    QtUIBase::AQPushButton* m_fitAllButton = nullptr;
    QtUIBase::AQPushButton* m_applyButton = nullptr;

    std::vector<CurveRow> m_curveRows;
    std::vector<ComponentInfo*> m_componentInfos;
    std::vector<MarkerInfo*> m_markerInfos;
};

} // namespace Gui::Widget
