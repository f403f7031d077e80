#include "Scriptable/AQToolBox.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQToolBox::AQToolBox(QWidget* parent, Qt::WindowFlags flags)
    : QToolBox(parent, flags)
{
    AQObjects::add(this, QString());
    connect(this, &QToolBox::currentChanged, this, &AQToolBox::onCurrentChanged);
}

void AQToolBox::onCurrentChanged(int index)
{
    AQScripts::recordSignal(this, QStringLiteral("currentChanged"), itemText(index));
}

void AQToolBox::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("currentChanged") || args.isEmpty())
        return;
    AQRecordingGuard suppressed;
    for (int index = count() - 1; index >= 0; --index) {
        if (itemText(index) == args.first()) {
            setCurrentIndex(index);
            return;
        }
    }
    reportStaleLine(this, signal, args);
}

} // namespace QtUIBase
