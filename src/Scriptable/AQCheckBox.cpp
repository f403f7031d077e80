#include "Scriptable/AQCheckBox.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

AQCheckBox::AQCheckBox(const QString& name, const QString& text, QWidget* parent, bool scriptable)
    : QCheckBox(text, parent)
{
    init(name, scriptable);
}

AQCheckBox::AQCheckBox(QWidget* parent)
    : QCheckBox(parent)
{
    init(QString(), true);
}

void AQCheckBox::init(const QString& name, bool scriptable)
{
    if (!Wrapper::registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QAbstractButton::clicked, this, &AQCheckBox::handleClickedSignal);
    connect(this, &QCheckBox::stateChanged, this, &AQCheckBox::AStateChanged);
}

void AQCheckBox::handleClickedSignal(bool checked)
{
    Wrapper::recordThenEmit(this, QStringLiteral("clicked"), {Wrapper::trueFalse(checked)},
                            [&] { Q_EMIT AClicked(checked); });
}

void AQCheckBox::scriptReplay(const QString& signal, const QStringList& args)
{
    Wrapper::replayCheckBox(this, signal, args, [this](bool checked) { Q_EMIT AClicked(checked); });
}

} // namespace QtUIBase
