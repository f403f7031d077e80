#include "Scriptable/AQWizardPage.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQWizardPage::AQWizardPage(const QString& name, QWidget* parent, bool scriptable)
    : QWizardPage(parent)
{
    if (registerIfScriptable(this, name, scriptable))
        initPage();
}

void AQWizardPage::initPage()
{
    connect(this, &QWizardPage::completeChanged, this, &AQWizardPage::handleCompletedChangedSignal,
            Qt::UniqueConnection);
}

void AQWizardPage::handleCompletedChangedSignal()
{
    recordThenEmit(this, QStringLiteral("completedChanged"), {}, [this] { Q_EMIT ACompleteChanged(); });
}

void AQWizardPage::scriptReplay(const QString& signal, const QStringList&)
{
    if (signal == QLatin1String("completedChanged"))
        handleCompletedChangedSignal();
}

} // namespace QtUIBase
