#include "Widget/Chart/MarkerInfo.h"

#include "Widget/Chart/LineMarker.h"
#include "Widget/Chart/Marker.h"
#include "Widget/Chart/OrvexCurveColorChooserButton.h"
#include "Widget/Chart/PointMarker.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleValidator>
#include <QLabel>
#include <QLineEdit>

namespace Gui::Widget {

namespace {

const std::pair<MarkerSymbol, const char*> kSymbols[] = {
    {Diamond, "Diamond"},
    {Triangle, "Triangle"},
    {InvertedTriangle, "InvertedTriangle"},
    {Rectangle, "Rectangle"},
    {Circle, "Circle"},
    {HorizontalLine, "HorizontalLine"},
    {VerticalLine, "VerticalLine"},
    {Cross, "Cross"},
    {Plus, "Plus"},
    {BackwardSlash, "BackwardSlash"},
    {ForwardSlash, "ForwardSlash"},
    {None, "None"},
};

const std::pair<Qt::PenStyle, const char*> kStyles[] = {
    {Qt::SolidLine, "Solid"},
    {Qt::DashLine, "Dash"},
    {Qt::DashDotLine, "DashDot"},
    {Qt::DashDotDotLine, "DashDotDot"},
};

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

/// Selects @p value in a numeric drop-down, adding it (in order) when missing.
void selectNumber(QComboBox* combo, const QStringList& entries, double value)
{
    combo->addItems(entries);
    const QString text = number(value);
    int index = combo->findText(text);
    if (index < 0) {
        index = 0;
        while (index < combo->count() && combo->itemText(index).toDouble() < value)
            ++index;
        combo->insertItem(index, text);
    }
    combo->setCurrentIndex(index);
}

} // namespace

MarkerInfo::MarkerInfo(const std::shared_ptr<Marker>& marker, QObject* parent)
    : QObject(parent)
    , m_marker(marker)
    , m_type(marker->type())
    , m_visible(new QCheckBox)
    , m_name(new QLineEdit(QString::fromStdString(marker->label())))
    , m_weight(new QComboBox)
    , m_typeLabel(new QLabel(typeText(marker->type())))
    , m_color(new OrvexCurveColorChooserButton(marker->color(), false))
    , m_x(new QLineEdit(number(marker->data().x())))
    , m_y(new QLineEdit(number(marker->data().y())))
{
    m_visible->setChecked(marker->visible());
    selectNumber(m_weight, {"1", "2", "3", "4", "5"}, marker->weight());
    for (QLineEdit* edit : {m_x.data(), m_y.data()})
        edit->setValidator(new QDoubleValidator(edit));

    if (auto point = std::dynamic_pointer_cast<PointMarker>(marker)) {
        m_symbol = new QComboBox;
        for (const auto& [symbol, name] : kSymbols)
            m_symbol->addItem(QString::fromLatin1(name), int(symbol));
        m_symbol->setCurrentIndex(std::max(0, m_symbol->findData(int(point->symbol()))));
        m_size = new QComboBox;
        selectNumber(m_size, {"4", "6", "8", "10", "12", "14", "16", "20"}, point->symbolSize());
        connect(m_symbol, qOverload<int>(&QComboBox::currentIndexChanged), this, &MarkerInfo::symbolModified);
        connect(m_size, qOverload<int>(&QComboBox::currentIndexChanged), this, &MarkerInfo::sizeModified);
    } else if (auto line = std::dynamic_pointer_cast<LineMarker>(marker)) {
        m_style = new QComboBox;
        m_style->addItems(lineStyleNames());
        m_style->setCurrentText(lineStyleName(line->style()));
        connect(m_style, qOverload<int>(&QComboBox::currentIndexChanged), this, &MarkerInfo::styleModified);
    }
    connect(m_visible, &QCheckBox::toggled, this, &MarkerInfo::visibilityModified);
    connect(m_weight, qOverload<int>(&QComboBox::currentIndexChanged), this, &MarkerInfo::weightModified);
    connect(m_color, &OrvexCurveColorChooserButton::colorChanged, this, &MarkerInfo::colorModified);
}

MarkerInfo::~MarkerInfo()
{
    // Widgets never handed to a table are still ours.
    const QList<QWidget*> widgets = {m_visible, m_name, m_symbol, m_size, m_style,
                                     m_weight, m_typeLabel, m_color, m_x, m_y};
    for (QWidget* widget : widgets)
        if (widget && !widget->parent())
            delete widget;
}

bool MarkerInfo::visible() const
{
    return m_visible && m_visible->isChecked();
}

QString MarkerInfo::name() const
{
    return m_name ? m_name->text() : QString();
}

MarkerSymbol MarkerInfo::symbol() const
{
    return m_symbol ? MarkerSymbol(m_symbol->currentData().toInt()) : None;
}

double MarkerInfo::size() const
{
    return m_size ? m_size->currentText().toDouble() : 0;
}

double MarkerInfo::weight() const
{
    return m_weight ? m_weight->currentText().toDouble() : 0;
}

Qt::PenStyle MarkerInfo::style() const
{
    return m_style ? lineStyle(m_style->currentText()) : Qt::SolidLine;
}

QColor MarkerInfo::color() const
{
    return m_color ? m_color->chosenColor() : QColor();
}

bool MarkerInfo::position(QPointF& point) const
{
    bool okX = false;
    bool okY = false;
    const double x = m_x ? m_x->text().toDouble(&okX) : 0;
    const double y = m_y ? m_y->text().toDouble(&okY) : 0;
    if (!okX || !okY)
        return false;
    point = QPointF(x, y);
    return true;
}

void MarkerInfo::apply() const
{
    const auto target = marker();
    if (!target)
        return;
    target->setVisible(visible());
    target->setLabel(name().toStdString(), true);
    target->setColor(color());
    target->setWeight(weight());
    if (auto point = std::dynamic_pointer_cast<PointMarker>(target)) {
        point->setSymbol(symbol());
        point->setSymbolSize(size());
    } else if (auto line = std::dynamic_pointer_cast<LineMarker>(target)) {
        line->setStyle(style());
    }
    // The edits show 6 significant digits: only a real edit moves the marker.
    QPointF position;
    if (this->position(position) && (number(position.x()) != number(target->data().x())
                                     || number(position.y()) != number(target->data().y())))
        target->setData(position);
}

QString MarkerInfo::typeText(MarkerType type)
{
    switch (type) {
    case MarkerType::VerticalLineMarker: return QStringLiteral("Vertical Line Marker");
    case MarkerType::HorizontalLineMarker: return QStringLiteral("Horizontal Line Marker");
    default: return QStringLiteral("Point Marker");
    }
}

QStringList MarkerInfo::lineStyleNames()
{
    QStringList names;
    for (const auto& [style, name] : kStyles)
        names << QString::fromLatin1(name);
    return names;
}

Qt::PenStyle MarkerInfo::lineStyle(const QString& name)
{
    for (const auto& [style, text] : kStyles)
        if (name == QLatin1String(text))
            return style;
    return Qt::SolidLine;
}

QString MarkerInfo::lineStyleName(Qt::PenStyle style)
{
    for (const auto& [value, text] : kStyles)
        if (value == style)
            return QString::fromLatin1(text);
    return QStringLiteral("Solid");
}

QString MarkerInfo::symbolName(MarkerSymbol symbol)
{
    for (const auto& [value, text] : kSymbols)
        if (value == symbol)
            return QString::fromLatin1(text);
    return QStringLiteral("None");
}

} // namespace Gui::Widget
