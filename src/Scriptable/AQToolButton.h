#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QToolButton>

namespace QtUIBase {

/**
 * A scriptable QToolButton.
 *
 * A click writes "clicked", with "on" when the button is checked and no
 * argument otherwise, and emits AClicked() with recording suppressed.
 * Replay of "clicked" first puts a checkable button into the recorded state
 * with its signals blocked (so no second click or toggle is reported), then
 * reports AClicked with that state; a button that is not checkable reports
 * AClicked(false).
 *
 * setMenu() also makes the button the registry parent of a registered menu,
 * so the menu's lines name it under the button.
 */
class ORVEXQTUIBASE_EXPORT AQToolButton : public QToolButton, public IAQScriptable
{
    Q_OBJECT

public:
    AQToolButton(const QString& name, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable.
    explicit AQToolButton(QWidget* parent = nullptr);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    /// Sets the menu (hides QToolButton::setMenu, which is not virtual).
    void setMenu(QMenu* menu);

Q_SIGNALS:
    void AClicked(bool checked);

private Q_SLOTS:
    void handleClickedSignal(bool checked);

private:
    void init(const QString& name, bool scriptable);
};

} // namespace QtUIBase
