#include "Scriptable/AQGroupBox.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQGroupBox::AQGroupBox(const QString& name, const QString& title, QWidget* parent, bool scriptable)
    : QGroupBox(title, parent)
{
    init(name, scriptable);
}

AQGroupBox::AQGroupBox(const QString& name, QWidget* parent, bool scriptable)
    : QGroupBox(parent)
{
    init(name, scriptable);
}

AQGroupBox::AQGroupBox(QWidget* parent, bool scriptable)
    : QGroupBox(parent)
{
    init(QString(), scriptable);
}

void AQGroupBox::init(const QString& name, bool scriptable)
{
    if (registerIfScriptable(this, name, scriptable))
        connect(this, &QGroupBox::clicked, this, &AQGroupBox::handleClickedSignal);
}

void AQGroupBox::handleClickedSignal(bool checked)
{
    recordThenEmit(this, QStringLiteral("clicked"), {checked ? QStringLiteral("yes") : QStringLiteral("no")},
                   [&] { Q_EMIT AClicked(checked); });
}

void AQGroupBox::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("clicked") || args.size() != 1)
        return;
    const bool checked = args.first() == QLatin1String("yes");
    withRecordingSuppressed([&] {
        setChecked(checked);
        Q_EMIT AClicked(checked);
    });
}

} // namespace QtUIBase
