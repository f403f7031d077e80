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
    if (signal != QLatin1String("valueChanged") || args.isEmpty())
        return;
    bool ok = false;
    const double value = args.first().toDouble(&ok);
    if (!ok)
        return;
    withRecordingSuppressed([&] {
        const auto before = this->value();
        setValue(value);
        // Return in a spin box reports its value even when unchanged, and
        // that report was recorded: replay reports it as well.
        if (this->value() == before)
            Q_EMIT AvalueChanged(before);
    });
}

} // namespace QtUIBase
