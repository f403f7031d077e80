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
    replaySpinValue(
        this, signal, args, [](const QString& text, bool* ok) { return text.toInt(ok, 10); },
        [this](double value) { Q_EMIT AvalueChanged(value); });
}

} // namespace QtUIBase
