#include "Scriptable/AQToolButton.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QMenu>

namespace QtUIBase {

using namespace Wrapper;

AQToolButton::AQToolButton(const QString& name, QWidget* parent, bool scriptable)
    : QToolButton(parent)
{
    init(name, scriptable);
}

AQToolButton::AQToolButton(QWidget* parent)
    : QToolButton(parent)
{
    init(QString(), true);
}

void AQToolButton::init(const QString& name, bool scriptable)
{
    if (registerIfScriptable(this, name, scriptable))
        connect(this, &QAbstractButton::clicked, this, &AQToolButton::handleClickedSignal);
}

void AQToolButton::setMenu(QMenu* menu)
{
    QToolButton::setMenu(menu);
    const int id = menu ? AQObjects::find(menu) : -1;
    if (id >= 0)
        AQObjects::setParentObject(id, this);
}

void AQToolButton::handleClickedSignal(bool checked)
{
    recordThenEmit(this, QStringLiteral("clicked"), onOrNothing(checked), [&] { Q_EMIT AClicked(checked); });
}

void AQToolButton::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("clicked"))
        return;
    AQRecordingGuard suppressed;
    bool wanted = false;
    if (isCheckable()) {
        wanted = args.value(0) == QLatin1String("on");
        const bool wasBlocked = blockSignals(true);
        setChecked(wanted);
        blockSignals(wasBlocked);
    }
    handleClickedSignal(wanted);
}

} // namespace QtUIBase
