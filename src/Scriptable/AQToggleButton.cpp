#include "Scriptable/AQToggleButton.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

AQToggleButton::AQToggleButton(const QString& name, const QString& text, QWidget* parent, bool scriptable)
    : QCheckBox(text, parent)
{
    init(name, scriptable);
}

AQToggleButton::AQToggleButton(QWidget* parent)
    : QCheckBox(parent)
{
    init(QString(), true);
}

void AQToggleButton::init(const QString& name, bool scriptable)
{
    if (!Wrapper::registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QAbstractButton::clicked, this, &AQToggleButton::handleClickedSignal);
    connect(this, &QCheckBox::stateChanged, this, &AQToggleButton::AStateChanged);
}

void AQToggleButton::handleClickedSignal(bool checked)
{
    Wrapper::recordThenEmit(this, QStringLiteral("clicked"), {Wrapper::trueFalse(checked)},
                            [&] { Q_EMIT AClicked(checked); });
}

void AQToggleButton::scriptReplay(const QString& signal, const QStringList& args)
{
    Wrapper::replayCheckBox(this, signal, args, [this](bool checked) { Q_EMIT AClicked(checked); });
}

} // namespace QtUIBase
