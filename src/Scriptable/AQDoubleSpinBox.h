#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QDoubleSpinBox>

namespace QtUIBase {

/**
 * A scriptable QDoubleSpinBox.
 *
 * Every value change is handed to the engine as "valueChanged" with the
 * value written with six significant digits ('g') and reported as
 * AvalueChanged(), recording suppressed; like AQSpinBox it connects even
 * when not scriptable. Replay of "valueChanged" sets a value that reads as a
 * number and ignores anything else; a value equal to the current one is
 * reported again, as Return in the box reports it.
 */
class ORVEXQTUIBASE_EXPORT AQDoubleSpinBox : public QDoubleSpinBox, public IAQScriptable
{
    Q_OBJECT

public:
    /// @p text is accepted for the family's constructor shape and not used.
    AQDoubleSpinBox(const QString& name, const QString& text, QWidget* parent, bool scriptable);

    void scriptReplay(const QString& signal, const QStringList& args) override;

Q_SIGNALS:
    void AvalueChanged(double value);

private Q_SLOTS:
    void onValueChanged(double value);
};

} // namespace QtUIBase
