#include "Widget/Chart/ComponentInfo.h"

#include "Widget/Chart/OrvexCurveColorChooserButton.h"

#include <QFontDialog>
#include <QLabel>
#include <QPushButton>

namespace Gui::Widget {

ComponentInfo::ComponentInfo(const std::string& component, const QFont& font, const QColor& color, QObject* parent)
    : QObject(parent)
    , m_component(component)
    , m_font(font)
    , m_label(new QLabel(QString::fromStdString(component)))
    , m_fontButton(new QPushButton(fontText(font)))
    , m_colorButton(new OrvexCurveColorChooserButton(color, false))
{
    m_fontButton->setAutoDefault(false);
    connect(m_fontButton, &QPushButton::clicked, this, &ComponentInfo::chooseFont);
    connect(m_colorButton, &OrvexCurveColorChooserButton::colorChanged, this, &ComponentInfo::colorModified);
}

ComponentInfo::~ComponentInfo()
{
    // Widgets never handed to a table are still ours.
    for (QWidget* widget : {static_cast<QWidget*>(m_label), static_cast<QWidget*>(m_fontButton),
                            static_cast<QWidget*>(m_colorButton)})
        if (widget && !widget->parent())
            delete widget;
}

void ComponentInfo::setFont(const QFont& font)
{
    m_font = font;
    if (m_fontButton)
        m_fontButton->setText(fontText(font));
}

QColor ComponentInfo::color() const
{
    return m_colorButton ? m_colorButton->chosenColor() : QColor();
}

QString ComponentInfo::fontText(const QFont& font)
{
    return QStringLiteral("%1, %2").arg(font.family()).arg(font.pointSize());
}

void ComponentInfo::chooseFont()
{
    bool ok = false;
    const QFont chosen = QFontDialog::getFont(&ok, m_font, m_fontButton, QStringLiteral("Select Font"));
    if (!ok || chosen == m_font)
        return;
    setFont(chosen);
    emit fontModified();
}

} // namespace Gui::Widget
