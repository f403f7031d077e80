#include "Scriptable/AQRadioButton.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQRadioButton::AQRadioButton(const QString& name, const QString& text, QWidget* parent, bool scriptable)
    : QRadioButton(text, parent)
{
    init(name, scriptable);
}

AQRadioButton::AQRadioButton(QWidget* parent)
    : QRadioButton(parent)
{
    init(QString(), true);
}

void AQRadioButton::init(const QString& name, bool scriptable)
{
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QAbstractButton::toggled, this, &AQRadioButton::handleToggledSignal);
    connect(this, &QAbstractButton::clicked, this, &AQRadioButton::handleClickedSignal);
}

void AQRadioButton::handleClickedSignal(bool checked)
{
    recordThenEmit(this, QStringLiteral("clicked"), {onOff(checked)}, [&] { Q_EMIT AClicked(checked); });
}

void AQRadioButton::handleToggledSignal(bool checked)
{
    recordThenEmit(this, QStringLiteral("toggled"), {onOff(checked)}, [&] { Q_EMIT AToggled(checked); });
}

void AQRadioButton::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("clicked"))
        handleClickedSignal(args.value(0) == QLatin1String("on"));
    else if (signal == QLatin1String("toggled") && !args.isEmpty())
        setChecked(args.first() != QLatin1String("off"));
}

} // namespace QtUIBase
