#include "Scriptable/AQDialog.h"

#include "Script/AQObjects.h"
#include "Script/AQScriptBackend.h"
#include "Script/AQScriptEngine_p.h"
#include "Script/AQScripts.h"
#include "Settings/AQSettings.h"

#include <QChildEvent>
#include <QCloseEvent>
#include <QPointer>

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

    setWindowModality(Qt::ApplicationModal);
    AQScripts::forceRecordingAllowed(true);
    show();
    connect(this, &QDialog::finished, this, &AQDialog::processDialogFinished, Qt::UniqueConnection);
    m_finished = false;

    // A replayed line may delete the dialog; the guard notices.
    const QPointer<AQDialog> self(this);
    while (self && !m_finished) {
        // A stopped replay closes the script, so the next read comes back
        // empty; testing the state as well keeps a host engine from spinning.
        if (!AQIsScriptReplayActive() || !processNextScriptCommand())
            break;
        Pvt::pauseAfterCommand();
    }
    if (!self)
        return 1;
    if (m_finished)
        return m_result;
    if (AQIsScriptRecordActive())
        return QDialog::exec();

    m_result = 1;
    const QString note = QStringLiteral("erro info:") + objectName()
        + QStringLiteral(" dialog can not execute success and force to close just for next line script");
    AQCloseJrlScriptFile(QStringLiteral("<font color=red>%1").arg(note));
    hide();
    return m_result;
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
