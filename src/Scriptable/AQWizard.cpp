#include "Scriptable/AQWizard.h"

#include "Script/AQScriptBackend.h"
#include "Scriptable/AQWrapperSupport_p.h"

#include <QCloseEvent>

namespace QtUIBase {

using namespace Wrapper;

AQWizard::AQWizard(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : QWizard(parent, flags)
{
    if (scriptable)
        AQObjects::add(this, name);
    else
        setObjectName(name);
    connect(this, &QDialog::finished, this, [this](int result) {
        m_finished = true;
        m_result = result;
    });
    if (scriptable)
        initConnect();
}

void AQWizard::initConnect()
{
    const auto unique = Qt::UniqueConnection;
    connect(this, &QWizard::currentIdChanged, this, &AQWizard::handleClickedSignal, unique);
    connect(this, &QWizard::customButtonClicked, this, &AQWizard::customButtonClickedSlot, unique);
    connect(this, &QWizard::pageAdded, this, &AQWizard::pageAddedSlot, unique);
    connect(this, &QWizard::pageRemoved, this, &AQWizard::pageRemovedSlot, unique);
    connect(this, &QWizard::helpRequested, this, &AQWizard::handleHelpRequestedSignal, unique);
    connect(this, &AQWizard::nextTriger, this, &AQWizard::NextButtonTriger, unique);
    connect(this, &AQWizard::backTriger, this, &AQWizard::BackButtonTriger, unique);
}

void AQWizard::handleClickedSignal(int id)
{
    // Showing the wizard moves it to its start page before it is visible:
    // that is no step of the user's.
    if (isVisible())
        AQScripts::recordSignal(this, QStringLiteral("currentIdChanged"), decimal(id));
    withRecordingSuppressed([&] { Q_EMIT AcurrentIdChanged(id); });
}

void AQWizard::customButtonClickedSlot(int which)
{
    recordThenEmit(this, QStringLiteral("clicked"), {QStringLiteral("customBtn"), decimal(which)},
                   [&] { Q_EMIT AcustomButtonClicked(which); });
}

void AQWizard::pageAddedSlot(int id)
{
    // Name the page's widgets under the wizard.
    const int pageId = AQObjects::find(page(id));
    if (pageId >= 0)
        AQObjects::setParentObject(pageId, this);
    recordThenEmit(this, QStringLiteral("pageAdd"), {decimal(id)}, [&] { Q_EMIT ApageAdded(id); });
}

void AQWizard::pageRemovedSlot(int id)
{
    recordThenEmit(this, QStringLiteral("pageRemove"), {decimal(id)}, [&] { Q_EMIT ApageRemoved(id); });
}

void AQWizard::handleHelpRequestedSignal()
{
    recordThenEmit(this, QStringLiteral("helpRequested"), {}, [this] { Q_EMIT AhelpRequested(); });
}

void AQWizard::NextButtonTriger()
{
    next();
}

void AQWizard::BackButtonTriger()
{
    back();
}

void AQWizard::accept()
{
    QDialog::accept();
    AQScripts::recordSignal(this, QStringLiteral("clicked"), QStringLiteral("FinishButton"));
}

void AQWizard::closeEvent(QCloseEvent* event)
{
    // Closing is recorded even from code that suppresses recording.
    AQScripts::recordingAllowed(true);
    AQScripts::recordSignal(this, QStringLiteral("closed"));
    AQScripts::restoreRecordingAllowed();
    QWizard::closeEvent(event);
}

int AQWizard::exec()
{
    AQScripts::forceRecordingAllowed(true);
    m_result = 1;
    if (!AQIsScriptReplayActive())
        return QWizard::exec();
    m_finished = false;
    return execDuringReplay(
        this, m_finished, m_result, [] { return AQScripts::processNextModalScriptCommand(); },
        [this] { return QWizard::exec(); });
}

void AQWizard::endReplayedRun()
{
    m_lastReplayedId = 0;
    // Later, not now: the wizard's own exec() may be running below this
    // replayed line.
    deleteLater();
}

void AQWizard::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("currentIdChanged") && args.size() == 1) {
        const int id = toInt(args.first());
        if (id < 0) {
            Q_EMIT ACloseWizard();
            if (isVisible())
                reject();
            endReplayedRun();
            return;
        }
        if (id >= m_lastReplayedId) {
            if (validateCurrentPage())
                Q_EMIT nextTriger();
        } else {
            Q_EMIT backTriger();
        }
        m_lastReplayedId = id;
        if (currentId() != id)
            reportStaleLine(this, signal, args);
        Q_EMIT APageChanged(currentId());
    } else if (signal == QLatin1String("clicked") && !args.isEmpty()) {
        if (args.first() == QLatin1String("customBtn") && args.size() >= 2) {
            // Always 0: the first argument is the word, and recorded scripts
            // were replayed that way.
            Q_EMIT AcustomButtonClicked(toInt(args.first()));
        } else if (args.first() == QLatin1String("FinishButton")) {
            accept();
            endReplayedRun();
        }
    } else if (signal == QLatin1String("closed")) {
        close();
        endReplayedRun();
    } else if (signal == QLatin1String("pageAdd")) {
        Q_EMIT ApageAdded(toInt(args.value(0)));
    } else if (signal == QLatin1String("pageRemove")) {
        Q_EMIT ApageRemoved(toInt(args.value(0)));
    } else if (signal == QLatin1String("helpRequested")) {
        Q_EMIT AhelpRequested();
    }
}

} // namespace QtUIBase
