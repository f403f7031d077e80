#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QTabBar>

namespace QtUIBase {

/**
 * A scriptable QTabBar that names tabs by index.
 *
 * Records, each with the tab index in decimal: "tabBarClicked",
 * "currentTabChanged" and "tabBarDoubleClicked"; then emits
 * AtabBarClicked(), ACurrentChanged() or AtabBarDoubleClicked() with
 * recording suppressed (the lower-case "t" is part of those names).
 *
 * Replay needs exactly one argument. "tabBarClicked" and
 * "tabBarDoubleClicked" only emit their signal; "currentTabChanged" emits
 * ACurrentChanged() and then makes the tab current, which reports the
 * change a second time when the tab was not current already (recorded
 * scripts were replayed that way). An index that is not a number selects
 * tab 0; an index past the last tab changes nothing and is reported in the
 * fixed-script report.
 *
 * Not scriptable: an ordinary tab bar.
 */
class ORVEXQTUIBASE_EXPORT AQTabBar : public QTabBar, public IAQScriptable
{
    Q_OBJECT

public:
    AQTabBar(const QString& name, QWidget* parent, bool scriptable);
    explicit AQTabBar(QWidget* parent = nullptr, bool scriptable = true);

    /// Connects the tab signals to the recording slots (scriptable only).
    void Initialize();
    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void AtabBarClicked(int index);
    void ACurrentChanged(int index);
    void AtabBarDoubleClicked(int index);

private Q_SLOTS:
    void handleClickedSignal(int index);
    void handleDataChangedSignal(int index);
    void handleDoubleClickedSignal(int index);

private:
    bool m_scriptable = false;
};

} // namespace QtUIBase
