#pragma once

#include "OrvexQtUIBase_export.h"
#include "Widget/Chart/ChartMarkerTypes.h"
#include "Widget/Chart/OrvexCurveColorChooserButton.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <memory>

namespace Gui::Widget {

class Marker;

/**
 * One row of a marker table of the configuration dialog: the editable look
 * of one point or line marker.
 *
 * Reads the marker's state when built; creates its widgets without parent
 * for the table to take over: "Visible" box, "Name" edit, for point markers
 * "Symbol", "Size", "Weight" drop-downs, for line markers "Style" and
 * "Weight" drop-downs, a "Type" label ("Point Marker", "Vertical Line
 * Marker", "Horizontal Line Marker"), a colour button and X / Y position
 * edits. A value not among the drop-down entries is added to them. Edits
 * emit `modified`; `apply()` pushes the row into the marker.
 */
class ORVEXQTUIBASE_EXPORT MarkerInfo : public QObject
{
    Q_OBJECT

public:
    explicit MarkerInfo(const std::shared_ptr<Marker>& marker, QObject* parent = nullptr);
    ~MarkerInfo() override;

    std::shared_ptr<Marker> marker() const { return m_marker.lock(); }
    MarkerType type() const { return m_type; }
    bool isPointMarker() const { return m_type == MarkerType::PointMarker; }

    QCheckBox* visibleBox() const { return m_visible; }
    QLineEdit* nameEdit() const { return m_name; }
    QComboBox* symbolCombo() const { return m_symbol; }
    QComboBox* sizeCombo() const { return m_size; }
    QComboBox* styleCombo() const { return m_style; }
    QComboBox* weightCombo() const { return m_weight; }
    QLabel* typeLabel() const { return m_typeLabel; }
    OrvexCurveColorChooserButton* colorButton() const { return m_color; }
    QLineEdit* xEdit() const { return m_x; }
    QLineEdit* yEdit() const { return m_y; }

    bool visible() const;
    QString name() const;
    MarkerSymbol symbol() const;
    double size() const;
    double weight() const;
    Qt::PenStyle style() const;
    QColor color() const;
    /// The position edits read as numbers; false when one does not.
    bool position(QPointF& point) const;

    /// Writes the row into the marker; the position only when it changed.
    void apply() const;

    /// "Point Marker", "Vertical Line Marker" or "Horizontal Line Marker".
    static QString typeText(MarkerType type);
    /// The four line styles offered: "Solid", "Dash", "DashDot", "DashDotDot".
    static QStringList lineStyleNames();
    static Qt::PenStyle lineStyle(const QString& name);
    static QString lineStyleName(Qt::PenStyle style);
    static QString symbolName(MarkerSymbol symbol);

signals:
    void visibilityModified();
    void symbolModified();
    void sizeModified();
    void styleModified();
    void weightModified();
    void colorModified();

private:
    std::weak_ptr<Marker> m_marker;
    MarkerType m_type = MarkerType::PointMarker;
    QPointer<QCheckBox> m_visible;
    QPointer<QLineEdit> m_name;
    QPointer<QComboBox> m_symbol;
    QPointer<QComboBox> m_size;
    QPointer<QComboBox> m_style;
    QPointer<QComboBox> m_weight;
    QPointer<QLabel> m_typeLabel;
    QPointer<OrvexCurveColorChooserButton> m_color;
    QPointer<QLineEdit> m_x;
    QPointer<QLineEdit> m_y;
};

} // namespace Gui::Widget
