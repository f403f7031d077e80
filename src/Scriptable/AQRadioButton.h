#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QRadioButton>

namespace QtUIBase {

/**
 * A scriptable QRadioButton.
 *
 * Records every "toggled" ("on"/"off"; the button that an exclusive group
 * unchecks records its own "toggled off") and every "clicked" ("on"/"off"),
 * each followed by AToggled() or AClicked() with recording suppressed.
 *
 * Replay: "toggled" sets the checked state (anything but "off" checks; the
 * Qt toggled signal then reports AToggled); "clicked" reports AClicked with
 * ("on" == the argument), or false without one, without changing the state.
 */
class ORVEXQTUIBASE_EXPORT AQRadioButton : public QRadioButton, public IAQScriptable
{
    Q_OBJECT

public:
    AQRadioButton(const QString& name, const QString& text, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable.
    explicit AQRadioButton(QWidget* parent = nullptr);

    void scriptReplay(const QString& signal, const QStringList& args) override;

Q_SIGNALS:
    void AClicked(bool checked);
    void AToggled(bool checked);

private Q_SLOTS:
    void handleClickedSignal(bool checked);
    void handleToggledSignal(bool checked);

private:
    void init(const QString& name, bool scriptable);
};

} // namespace QtUIBase
