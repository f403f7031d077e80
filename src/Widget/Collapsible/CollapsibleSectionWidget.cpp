#include "Widget/Collapsible/CollapsibleSectionWidget.h"

#include "Script/AQScriptBackend.h"
#include "Scriptable/AQWrapperSupport_p.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QPropertyAnimation>
#include <QSettings>
#include <QToolButton>
#include <QVBoxLayout>

namespace Gui::Widget {

using namespace QtUIBase::Wrapper;
using QtUIBase::AQIsScriptReplayActive;
using QtUIBase::withRecordingSuppressed;

namespace {
const QString ExpandedKey = QStringLiteral("expanded");
}

CollapsibleSectionWidget::CollapsibleSectionWidget(const QString& name, const QString& title, QWidget* parent,
                                                   bool scriptable)
    : QWidget(parent)
    , WidgetStateSettings(name)
{
    m_header = new QToolButton(this);
    m_header->setText(title);
    m_header->setCheckable(true);
    m_header->setChecked(true);
    m_header->setArrowType(Qt::DownArrow);
    m_header->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_header->setAutoRaise(true);
    m_header->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QFont bold = m_header->font();
    bold.setBold(true);
    m_header->setFont(bold);

    auto* line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);

    m_contentArea = new QWidget(this);
    auto* contentLayout = new QVBoxLayout(m_contentArea);
    contentLayout->setContentsMargins(12, 4, 0, 4);

    auto* headerRow = new QHBoxLayout;
    headerRow->setContentsMargins(0, 0, 0, 0);
    headerRow->addWidget(m_header);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(headerRow);
    layout->addWidget(line);
    layout->addWidget(m_contentArea);

    m_animation = new QPropertyAnimation(m_contentArea, "maximumHeight", this);
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_animation, &QPropertyAnimation::finished, this, &CollapsibleSectionWidget::finishAnimation);

    // The header's clicked() comes from the user only (mouse or keyboard).
    connect(m_header, &QToolButton::clicked, this, &CollapsibleSectionWidget::handleToggledSignal);
    m_scriptable = registerIfScriptable(this, name, scriptable);
}

CollapsibleSectionWidget::~CollapsibleSectionWidget() = default;

QString CollapsibleSectionWidget::title() const
{
    return m_header->text();
}

void CollapsibleSectionWidget::setTitle(const QString& title)
{
    m_header->setText(title);
}

void CollapsibleSectionWidget::setContentWidget(QWidget* content)
{
    delete m_content;
    m_content = content;
    if (content)
        m_contentArea->layout()->addWidget(content);
}

void CollapsibleSectionWidget::setExpanded(bool expanded)
{
    if (expanded == m_expanded)
        return;
    m_expanded = expanded;
    m_header->setChecked(expanded);
    m_header->setArrowType(expanded ? Qt::DownArrow : Qt::RightArrow);
    animateContent();
    Q_EMIT expandedChanged(expanded);
}

void CollapsibleSectionWidget::animateContent()
{
    m_animation->stop();
    // A replay goes on at once: its next line may need the settled layout.
    if (!isVisible() || m_animationDuration <= 0 || AQIsScriptReplayActive()) {
        finishAnimation();
        return;
    }
    const int start = m_contentArea->isVisible() ? m_contentArea->height() : 0;
    m_contentArea->setMaximumHeight(start);
    m_contentArea->setVisible(true);
    m_animation->setDuration(m_animationDuration);
    m_animation->setStartValue(start);
    m_animation->setEndValue(m_expanded ? m_contentArea->sizeHint().height() : 0);
    m_animation->start();
}

void CollapsibleSectionWidget::finishAnimation()
{
    // Unfolded content may grow with its panel; folded content leaves the
    // focus chain.
    m_contentArea->setMaximumHeight(m_expanded ? QWIDGETSIZE_MAX : 0);
    m_contentArea->setVisible(m_expanded);
}

void CollapsibleSectionWidget::handleToggledSignal(bool expanded)
{
    setExpanded(expanded);
    saveWidgetState();
    if (m_scriptable)
        recordThenEmit(this, QStringLiteral("toggled"), {onOff(expanded)}, [&] { Q_EMIT AToggled(expanded); });
}

void CollapsibleSectionWidget::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("toggled") || args.size() != 1)
        return;
    const bool expanded = args.first() == QLatin1String("on");
    withRecordingSuppressed([&] {
        setExpanded(expanded);
        Q_EMIT AToggled(expanded);
    });
}

void CollapsibleSectionWidget::RestoreSettings(QSettings& settings)
{
    setExpanded(settings.value(ExpandedKey, m_expanded).toBool());
}

void CollapsibleSectionWidget::SaveSettings(QSettings& settings) const
{
    settings.setValue(ExpandedKey, m_expanded);
}

void CollapsibleSectionWidget::RestoreDefaultSettings()
{
    setExpanded(true);
}

void CollapsibleSectionWidget::showEvent(QShowEvent* event)
{
    restoreWidgetStateOnce();
    QWidget::showEvent(event);
}

void CollapsibleSectionWidget::hideEvent(QHideEvent* event)
{
    saveWidgetState();
    QWidget::hideEvent(event);
}

} // namespace Gui::Widget
