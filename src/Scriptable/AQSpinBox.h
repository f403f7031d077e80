#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QSpinBox>

namespace QtUIBase {

/**
 * A scriptable QSpinBox.
 *
 * Every value change, typed, stepped or set by the program, is handed to
 * the engine as "valueChanged" with the decimal value (the engine's own
 * state decides what is written) and reported as AvalueChanged() with the
 * value as a double, recording suppressed. The value-changed connection is
 * made even when the box is not scriptable: such a box is not registered,
 * so the engine drops its records, but it still reports AvalueChanged.
 *
 * Replay of "valueChanged" sets a value that reads as a decimal integer and
 * ignores anything else; a value equal to the current one is reported again,
 * as Return in the box reports it. disableAutoRepeat(true) stops an arrow held down
 * from repeating (default: repeating).
 */
class ORVEXQTUIBASE_EXPORT AQSpinBox : public QSpinBox, public IAQScriptable
{
    Q_OBJECT

public:
    AQSpinBox(QWidget* parent, const QString& name, bool scriptable);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    /// Answers the previous setting.
    bool disableAutoRepeat(bool disable);

Q_SIGNALS:
    void AvalueChanged(double value);

protected:
    void timerEvent(QTimerEvent* event) override;

private Q_SLOTS:
    void onValueChanged(int value);

private:
    bool m_autoRepeatDisabled = false;
};

} // namespace QtUIBase
