#include "Scriptable/AQDoubleSpinBox.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQDoubleSpinBox::AQDoubleSpinBox(const QString& name, const QString& text, QWidget* parent, bool scriptable)
    : QDoubleSpinBox(parent)
{
    Q_UNUSED(text)
    registerIfScriptable(this, name, scriptable);
    connect(this, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &AQDoubleSpinBox::onValueChanged);
}

void AQDoubleSpinBox::onValueChanged(double value)
{
    recordThenEmit(this, QStringLiteral("valueChanged"), {shortDouble(value)}, [&] { Q_EMIT AvalueChanged(value); });
}

void AQDoubleSpinBox::scriptReplay(const QString& signal, const QStringList& args)
{
    replaySpinValue(
        this, signal, args, [](const QString& text, bool* ok) { return text.toDouble(ok); },
        [this](double value) { Q_EMIT AvalueChanged(value); });
}

} // namespace QtUIBase
