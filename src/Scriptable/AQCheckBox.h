#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QCheckBox>

namespace QtUIBase {

/**
 * A scriptable QCheckBox.
 *
 * A click by the user writes a "clicked" line with "true" or "false" and
 * emits AClicked() with recording suppressed; every state change, recorded
 * or not, is passed on as AStateChanged(). Replay of "clicked" sets the box
 * checked only for the word "true"; "stateChanged" (never recorded by the box
 * itself, but accepted from hand-written scripts) takes "Unchecked",
 * "PartiallyChecked" and reads any other word as checked.
 *
 * Built with @c scriptable false it is a plain check box: not registered,
 * nothing connected, no A signals from user operations.
 */
class ORVEXQTUIBASE_EXPORT AQCheckBox : public QCheckBox, public IAQScriptable
{
    Q_OBJECT

public:
    AQCheckBox(const QString& name, const QString& text, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable.
    explicit AQCheckBox(QWidget* parent = nullptr);

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
