#include "Scriptable/AQColorDialog.h"

#include "Script/AQScriptBackend.h"
#include "Script/AQScriptEngine_p.h"
#include "Scriptable/AQWrapperSupport_p.h"


namespace QtUIBase {

using namespace Wrapper;

AQColorDialog::AQColorDialog(const QString& name, const QColor& initial, QWidget* parent, bool scriptable)
    : QColorDialog(initial, parent)
{
    init(name, scriptable);
}

AQColorDialog::AQColorDialog(const QString& name, QWidget* parent, bool scriptable)
    : QColorDialog(parent)
{
    init(name, scriptable);
}

void AQColorDialog::init(const QString& name, bool scriptable)
{
    setOption(QColorDialog::DontUseNativeDialog);
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QDialog::accepted, this, &AQColorDialog::handleAcceptedSignal);
    connect(this, &QColorDialog::currentColorChanged, this, &AQColorDialog::handleCurrentColorChangedSignal);
    connect(this, &QDialog::rejected, this, &AQColorDialog::handleRejectedSignal);
}

void AQColorDialog::handleAcceptedSignal()
{
    AQRecordingGuard allowed(true);
    ++m_handled;
    recordThenEmit(this, QStringLiteral("accepted"), {}, [this] { Q_EMIT AAccepted(); });
    m_finished = true;
}

void AQColorDialog::handleCurrentColorChangedSignal(const QColor& color)
{
    AQRecordingGuard allowed(true);
    ++m_handled;
    const QStringList rgb{decimal(color.red()), decimal(color.green()), decimal(color.blue())};
    recordThenEmit(this, QStringLiteral("currentColorChanged"), rgb, [&] { Q_EMIT ACurrentColorChanged(color); });
}

void AQColorDialog::handleRejectedSignal()
{
    // Unlike acceptance, a rejection does not end a replay's pulling loop.
    AQRecordingGuard allowed(true);
    ++m_handled;
    recordThenEmit(this, QStringLiteral("rejected"), {}, [this] { Q_EMIT ARejected(); });
}

void AQColorDialog::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    // accept(), close() and setCurrentColor() normally reach the handlers,
    // which emit the A signal; emit it here only when they did not.
    const int handledBefore = m_handled;
    if (signal == QLatin1String("accepted")) {
        accept();
        if (m_handled == handledBefore)
            Q_EMIT AAccepted();
    } else if (signal == QLatin1String("currentColorChanged") && args.size() == 3) {
        const QColor color(args.at(0).toInt(nullptr, 10), args.at(1).toInt(nullptr, 10),
                           args.at(2).toInt(nullptr, 10), 255);
        setCurrentColor(color);
        if (m_handled == handledBefore)
            Q_EMIT ACurrentColorChanged(color);
    } else if (signal == QLatin1String("rejected")) {
        close();
        if (m_handled == handledBefore)
            Q_EMIT ARejected();
    }
}

bool AQColorDialog::processNextScriptCommand()
{
    return AQScripts::processNextModalScriptCommand();
}

int AQColorDialog::exec()
{
    // Deliberately unbalanced: the dialog's operations are recorded however
    // deep in suppressed application code it was opened, and the saved
    // permissions of the code around it are dropped.
    AQScripts::forceRecordingAllowed(true);
    m_result = 1;
    if (!AQIsScriptReplayActive()) {
        m_result = QColorDialog::exec();
        return m_result;
    }
    return runReplayLoop();
}

int AQColorDialog::runReplayLoop()
{
    setWindowModality(Qt::ApplicationModal);
    show();
    m_finished = false;
    const int result = m_result;
    // A stopped replay closes the script, so the next pull finds nothing;
    // the replay state is checked as well for a stop during the pause.
    while (AQIsScriptReplayActive() && processNextScriptCommand()) {
        if (m_finished)
            return result;
        Pvt::pauseAfterCommand();
    }
    // Left open, an application-modal dialog without its own event loop
    // would block the whole interface.
    hide();
    if (AQIsScriptReplayActive())
        deleteLater();
    return result;
}

} // namespace QtUIBase
