#include "Scriptable/AQDialog.h"

#include "Script/AQObjects.h"
#include "Script/AQScriptBackend.h"
#include "Script/AQScripts.h"
#include "Scriptable/AQWrapperSupport_p.h"
#include "Settings/AQSettings.h"

#include <QChildEvent>
#include <QCloseEvent>

namespace QtUIBase {

AQDialog::AQDialog(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable, PositionMode mode)
    : QDialog(parent, flags)
    , m_name(name)
    , m_positionMode(mode)
{
    Q_UNUSED(m_flag)
    if (scriptable)
        AQObjects::add(this, name);
    else
        setObjectName(name);
    if (mode == WithSizeGrip)
        setSizeGripEnabled(true);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);

    // Pushed without a matching pop: building the dialog's contents is not a
    // user operation, and exec()/show() allow recording again by clearing
    // the permission stack.
    AQScripts::recordingAllowed(false);
    m_alwaysOn = false;
    m_savePosition = AQIsSaveDialogPosition();
    restoreDialogState();
}

AQDialog::~AQDialog()
{
    if (m_saveOnDestroy)
        saveDialogState();
}

void AQDialog::restoreDialogState()
{
    if (m_name.isEmpty())
        return;
    AQSettings::withStateIni([this](AQSettings& settings) { settings.restoreState(m_name, *this); });
}

void AQDialog::saveDialogState()
{
    if (m_name.isEmpty())
        return;
    AQSettings::withStateIni([this](AQSettings& settings) { settings.saveState(*this, m_name); });
}

void AQDialog::show()
{
    AQScripts::forceRecordingAllowed(true);
    QWidget::show();
}

bool AQDialog::processNextScriptCommand()
{
    return AQScripts::processNextModalScriptCommand();
}

void AQDialog::processDialogFinished(int result)
{
    m_finished = true;
    m_result = result;
}

int AQDialog::exec()
{
    AQScripts::forceRecordingAllowed(true);
    m_result = 1;
    if (!AQIsScriptReplayActive())
        return QDialog::exec();

    connect(this, &QDialog::finished, this, &AQDialog::processDialogFinished, Qt::UniqueConnection);
    m_finished = false;
    return Wrapper::execDuringReplay(
        this, m_finished, m_result, [this] { return processNextScriptCommand(); }, [this] { return QDialog::exec(); });
}

void AQDialog::accept()
{
    QDialog::accept();
    if (AQIsScriptReplayActive() && !isModal())
        deleteLater();
}

void AQDialog::reject()
{
    QDialog::reject();
    if (AQIsScriptReplayActive() && !isModal())
        close();
}

void AQDialog::closeEvent(QCloseEvent* event)
{
    saveDialogState();
    // Index 0 is left out on purpose: it is the application's first object.
    const int id = AQObjects::find(this);
    if (id > 0 && !AQObjects::getObjectInstanceName(id).startsWith(QLatin1String("text.")))
        AQScripts::recordSignal(this, QStringLiteral("closed"));
    if (!m_alwaysOn)
        AQObjects::remove(this);
    if (AQIsScriptReplayActive() && !isModal())
        deleteLater();
    QDialog::closeEvent(event);
}

void AQDialog::childEvent(QChildEvent* event)
{
    if (event->added()) {
        const int id = AQObjects::find(event->child());
        if (id >= 0)
            AQObjects::setParentObject(id, this);
        event->accept();
    }
    QDialog::childEvent(event);
}

void AQDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
}

void AQDialog::hideEvent(QHideEvent* event)
{
    QDialog::hideEvent(event);
}

void AQDialog::scriptReplay(const QString& signal, const QStringList&)
{
    if (signal == QLatin1String("closed"))
        close();
}

} // namespace QtUIBase
