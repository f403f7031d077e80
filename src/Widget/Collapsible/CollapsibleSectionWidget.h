#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"
#include "Settings/WidgetStateSettings.h"

#include <QPointer>
#include <QWidget>

class QPropertyAnimation;
class QToolButton;

namespace Gui::Widget {

/**
 * A titled section of a panel whose content folds away under its header.
 *
 * Clicking the header (or Space on it) folds or unfolds the content with a
 * short animation (150 ms by default; 0 switches it off; replayed folds
 * are immediate). Sections start
 * unfolded and remember their state in the user's settings store under
 * "Gui::Widget::CollapsibleSectionWidget/<name>", key "expanded" (see
 * QtUIBase::WidgetStateSettings: restored when first shown, saved when the
 * user folds or unfolds and when hidden, untouched while a script records
 * or replays).
 *
 * Scriptable (when built with scriptable true, under its name): a fold by
 * the user records "toggled" with "on" (unfolded) or "off" (folded), then
 * emits AToggled() with recording suppressed. Replay of "toggled" with one
 * argument unfolds for "on" and folds for anything else. setExpanded() is
 * the program's own change: it emits expandedChanged() but records nothing.
 */
class ORVEXQTUIBASE_EXPORT CollapsibleSectionWidget : public QWidget,
                                                      public QtUIBase::IAQScriptable,
                                                      public QtUIBase::WidgetStateSettings
{
    Q_OBJECT
    Q_PROPERTY(bool expanded READ isExpanded WRITE setExpanded NOTIFY expandedChanged)

public:
    CollapsibleSectionWidget(const QString& name, const QString& title, QWidget* parent, bool scriptable);
    ~CollapsibleSectionWidget() override;

    QString title() const;
    void setTitle(const QString& title);
    /// Puts @p content below the header, taking ownership; a previous
    /// content widget is deleted.
    void setContentWidget(QWidget* content);
    QWidget* contentWidget() const { return m_content; }

    bool isExpanded() const { return m_expanded; }
    void setExpanded(bool expanded);
    int animationDuration() const { return m_animationDuration; }
    void setAnimationDuration(int milliseconds) { m_animationDuration = milliseconds; }
    /// The header button a user clicks.
    QToolButton* headerButton() const { return m_header; }

    void scriptReplay(const QString& signal, const QStringList& args) override;

    void RestoreSettings(QSettings& settings) override;
    void SaveSettings(QSettings& settings) const override;
    /// Unfolds.
    void RestoreDefaultSettings() override;

Q_SIGNALS:
    void expandedChanged(bool expanded);
    void AToggled(bool expanded);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private Q_SLOTS:
    void handleToggledSignal(bool expanded);

private:
    void animateContent();
    void finishAnimation();

    QToolButton* m_header = nullptr;
    QWidget* m_contentArea = nullptr;
    QPointer<QWidget> m_content;
    QPropertyAnimation* m_animation = nullptr;
    bool m_expanded = true;
    int m_animationDuration = 150;
    bool m_scriptable = false;
};

} // namespace Gui::Widget
