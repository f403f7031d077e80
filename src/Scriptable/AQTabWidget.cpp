#include "Scriptable/AQTabWidget.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QTabBar>

namespace QtUIBase {

using namespace Wrapper;

AQTabWidget::AQTabWidget(const QString& name, QWidget* parent, bool scriptable)
    : QTabWidget(parent)
{
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QTabWidget::currentChanged, this, &AQTabWidget::handleCurrentChangedSignal);
    connect(this, &QWidget::customContextMenuRequested, this, &AQTabWidget::handleCustomContextSignal);
}

AQTabWidget::AQTabWidget(QWidget* parent, bool scriptable)
    : AQTabWidget(QString(), parent, scriptable)
{
}

void AQTabWidget::adoptPage(QWidget* page)
{
    const int id = AQObjects::find(page);
    if (id >= 0)
        AQObjects::setParentObject(id, this);
}

int AQTabWidget::addTab(QWidget* page, const QString& label)
{
    const int index = QTabWidget::addTab(page, label);
    adoptPage(page);
    return index;
}

int AQTabWidget::addTab(QWidget* page, const QIcon& icon, const QString& label)
{
    const int index = QTabWidget::addTab(page, icon, label);
    adoptPage(page);
    return index;
}

void AQTabWidget::handleCurrentChangedSignal(int index)
{
    recordThenEmit(this, QStringLiteral("currentChanged"), {tabText(index)}, [&] { Q_EMIT ACurrentChanged(index); });
}

void AQTabWidget::handleCustomContextSignal(const QPoint& pos)
{
    if (pos.isNull())
        return;
    AQScripts::recordSignal(this, QStringLiteral("customContextMenuRequested"), decimal(tabBar()->tabAt(pos)));
    // Allowed, not suppressed: the context menu records its own choice.
    AQRecordingGuard allowed(true);
    Q_EMIT ACustomContextMenuRequested(pos);
}

void AQTabWidget::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("currentChanged") && args.size() == 1) {
        for (int index = 0; index < count(); ++index) {
            if (tabText(index) == args.first()) {
                setCurrentIndex(index);
                Q_EMIT ACurrentChanged(index);
                return;
            }
        }
        reportStaleLine(this, signal, args);
    } else if (signal == QLatin1String("customContextMenuRequested")) {
        if (args.size() == 2) {
            Q_EMIT ACustomContextMenuRequested(QPoint(toInt(args.at(0)), toInt(args.at(1))));
            return;
        }
        const int index = toInt(args.value(0));
        if (index < 0 || index >= count())
            reportStaleLine(this, signal, args);
        setCurrentIndex(index);
        Q_EMIT ACustomContextMenuRequested(noPosition());
    }
}

} // namespace QtUIBase
