#include "Scriptable/AQSpinBox.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQSpinBox::AQSpinBox(QWidget* parent, const QString& name, bool scriptable)
    : QSpinBox(parent)
{
    registerIfScriptable(this, name, scriptable);
    connect(this, QOverload<int>::of(&QSpinBox::valueChanged), this, &AQSpinBox::onValueChanged);
}

bool AQSpinBox::disableAutoRepeat(bool disable)
{
    const bool previous = m_autoRepeatDisabled;
    m_autoRepeatDisabled = disable;
    return previous;
}

void AQSpinBox::timerEvent(QTimerEvent* event)
{
    // The spin box's timers only drive the repeat of a held arrow.
    if (m_autoRepeatDisabled)
        return;
    QSpinBox::timerEvent(event);
}

void AQSpinBox::onValueChanged(int value)
{
    recordThenEmit(this, QStringLiteral("valueChanged"), {decimal(value)}, [&] { Q_EMIT AvalueChanged(value); });
}

void AQSpinBox::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("valueChanged") || args.isEmpty())
        return;
    bool ok = false;
    const int value = args.first().toInt(&ok, 10);
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
