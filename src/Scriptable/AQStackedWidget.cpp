#include "Scriptable/AQStackedWidget.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQStackedWidget::AQStackedWidget(const QString& name, QWidget* parent, bool scriptable)
    : QStackedWidget(parent)
{
    registerIfScriptable(this, name, scriptable);
    // The request is recorded and carried out here; the slot does not emit
    // it again, so the connection cannot run into itself.
    connect(this, &AQStackedWidget::ASetCurrentIndex, this, &AQStackedWidget::handleSetCurrentIndexSignal);
}

AQStackedWidget::AQStackedWidget(QWidget* parent, bool scriptable)
    : AQStackedWidget(QString(), parent, scriptable)
{
}

void AQStackedWidget::handleSetCurrentIndexSignal(int index)
{
    AQScripts::recordSignal(this, QStringLiteral("setCurrentIndex"), decimal(index));
    withRecordingSuppressed([&] { setCurrentIndex(index); });
}

void AQStackedWidget::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("setCurrentIndex") || args.isEmpty())
        return;
    bool ok = false;
    const int index = toInt(args.first(), &ok);
    if (!ok || index < 0 || index >= count()) {
        reportStaleLine(this, signal, args);
        return;
    }
    withRecordingSuppressed([&] { Q_EMIT ASetCurrentIndex(index); });
}

} // namespace QtUIBase
