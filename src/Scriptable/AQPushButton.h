#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QPushButton>

namespace QtUIBase {

/**
 * A scriptable QPushButton.
 *
 * A click writes a "clicked" line, with "on" when the button is checked and
 * no argument otherwise, and emits AClicked() with recording suppressed.
 * "pressed", "released" and "toggled" ("on"/"off") are recorded only once
 * something listens to APressed(), AReleased() or AToggled(): the Qt
 * connection is made when the listener connects. Before any of its records
 * the button flushes the engine's pending line edit, so text typed and not
 * yet committed is recorded before the click that uses it.
 *
 * Replay runs the same handler slots (which emit the A signals); a "clicked"
 * line without argument reports AClicked(false). The checked state itself is
 * not changed by replay: applications react to the A signals.
 */
class ORVEXQTUIBASE_EXPORT AQPushButton : public QPushButton, public IAQScriptable
{
    Q_OBJECT

public:
    AQPushButton(const QString& name, const QString& text, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable.
    explicit AQPushButton(QWidget* parent = nullptr);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void AClicked(bool checked);
    void APressed();
    void AReleased();
    void AToggled(bool checked);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private Q_SLOTS:
    void handleClickedSignal(bool checked);
    void handlePressSignal();
    void handleReleasedSignal();
    void handleToggledSignal(bool checked);

private:
    void init(const QString& name);

    bool m_scriptable = false;
};

} // namespace QtUIBase
