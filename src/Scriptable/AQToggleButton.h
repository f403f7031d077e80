#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QCheckBox>

namespace QtUIBase {

/**
 * A check box shown as an on/off toggle. It records and replays exactly as
 * AQCheckBox does ("clicked" with "true"/"false"; "stateChanged" on replay)
 * and passes every state change on as AStateChanged(). It is a class of its
 * own so that hosts and scripts can tell toggles from check boxes.
 */
class ORVEXQTUIBASE_EXPORT AQToggleButton : public QCheckBox, public IAQScriptable
{
    Q_OBJECT

public:
    AQToggleButton(const QString& name, const QString& text, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable.
    explicit AQToggleButton(QWidget* parent = nullptr);

    void scriptReplay(const QString& signal, const QStringList& args) override;

Q_SIGNALS:
    void AClicked(bool checked);
    void AStateChanged(int state);

private Q_SLOTS:
    void handleClickedSignal(bool checked);

private:
    void init(const QString& name, bool scriptable);
};

} // namespace QtUIBase
