#pragma once

#include "OrvexQtUIBase_export.h"
#include "Widget/Chart/OrvexCurveColorChooserButton.h"

#include <QColor>
#include <QFont>
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QPushButton>

#include <string>

namespace Gui::Widget {

/**
 * One row of the configuration dialog's fonts table: a chart component
 * ("Title", "Axes Labels", ...) with its font and colour.
 *
 * Creates its three widgets without parent; the table that shows them takes
 * them over (`setCellWidget`). The "Font" button shows the font as
 * "<family>, <point size>" and opens a modal font dialog; a choice updates
 * the button and emits `fontModified`. The colour button emits
 * `colorModified`. Nothing is pushed to the chart until the dialog applies.
 */
class ORVEXQTUIBASE_EXPORT ComponentInfo : public QObject
{
    Q_OBJECT

public:
    ComponentInfo(const std::string& component, const QFont& font, const QColor& color, QObject* parent = nullptr);
    ~ComponentInfo() override;

    const std::string& component() const { return m_component; }
    QFont font() const { return m_font; }
    void setFont(const QFont& font);
    QColor color() const;

    QLabel* componentLabel() const { return m_label; }
    QPushButton* fontButton() const { return m_fontButton; }
    OrvexCurveColorChooserButton* colorButton() const { return m_colorButton; }

    /// "<family>, <point size>", the text of the font button.
    static QString fontText(const QFont& font);

signals:
    void fontModified();
    void colorModified();

private:
    void chooseFont();

    std::string m_component;
    QFont m_font;
    QPointer<QLabel> m_label;
    QPointer<QPushButton> m_fontButton;
    QPointer<OrvexCurveColorChooserButton> m_colorButton;
};

} // namespace Gui::Widget
