#include "Scriptable/AQTabBar.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQTabBar::AQTabBar(const QString& name, QWidget* parent, bool scriptable)
    : QTabBar(parent)
    , m_scriptable(scriptable)
{
    registerIfScriptable(this, name, scriptable);
    Initialize();
}

AQTabBar::AQTabBar(QWidget* parent, bool scriptable)
    : AQTabBar(QString(), parent, scriptable)
{
}

void AQTabBar::Initialize()
{
    if (!m_scriptable)
        return;
    connect(this, &QTabBar::tabBarClicked, this, &AQTabBar::handleClickedSignal, Qt::UniqueConnection);
    connect(this, &QTabBar::currentChanged, this, &AQTabBar::handleDataChangedSignal, Qt::UniqueConnection);
    connect(this, &QTabBar::tabBarDoubleClicked, this, &AQTabBar::handleDoubleClickedSignal, Qt::UniqueConnection);
}

void AQTabBar::handleClickedSignal(int index)
{
    recordThenEmit(this, QStringLiteral("tabBarClicked"), {decimal(index)}, [&] { Q_EMIT AtabBarClicked(index); });
}

void AQTabBar::handleDataChangedSignal(int index)
{
    recordThenEmit(this, QStringLiteral("currentTabChanged"), {decimal(index)},
                   [&] { Q_EMIT ACurrentChanged(index); });
}

void AQTabBar::handleDoubleClickedSignal(int index)
{
    recordThenEmit(this, QStringLiteral("tabBarDoubleClicked"), {decimal(index)},
                   [&] { Q_EMIT AtabBarDoubleClicked(index); });
}

void AQTabBar::scriptReplay(const QString& signal, const QStringList& args)
{
    static const QStringList names = {QStringLiteral("tabBarClicked"), QStringLiteral("currentTabChanged"),
                                      QStringLiteral("tabBarDoubleClicked")};
    if (args.size() != 1 || !names.contains(signal))
        return;
    AQRecordingGuard suppressed;
    bool ok = false;
    const int index = toInt(args.first(), &ok);
    if (ok && (index < -1 || index >= count()))
        reportStaleLine(this, signal, args);
    if (signal == QLatin1String("tabBarClicked")) {
        if (ok)
            Q_EMIT AtabBarClicked(index);
    } else if (signal == QLatin1String("tabBarDoubleClicked")) {
        if (ok)
            Q_EMIT AtabBarDoubleClicked(index);
    } else {
        if (ok)
            Q_EMIT ACurrentChanged(index);
        setCurrentIndex(index);
    }
}

} // namespace QtUIBase
