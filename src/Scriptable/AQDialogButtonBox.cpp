#include "Scriptable/AQDialogButtonBox.h"

#include "Script/AQObjects.h"
#include "Script/AQRecordingGuard.h"
#include "Scriptable/AQStandardButtonNames.h"

namespace QtUIBase {

namespace {
constexpr auto Spelling = AQStandardButtonNames::OkSpelling::ButtonBox;
}

AQDialogButtonBox::AQDialogButtonBox(const QString& name, QDialogButtonBox::StandardButtons buttons,
                                     Qt::Orientation orientation, QWidget* parent, bool scriptable)
    : QDialogButtonBox(buttons, orientation, parent)
    , m_scriptable(scriptable)
{
    Q_UNUSED(m_flag)
    if (!scriptable) {
        setObjectName(name);
        return;
    }
    AQObjects::add(this, name);
    connect(this, &QDialogButtonBox::accepted, this, &AQDialogButtonBox::handleAcceptedSignal);
    connect(this, &QDialogButtonBox::helpRequested, this, &AQDialogButtonBox::handleHelpRequestedSignal);
    connect(this, &QDialogButtonBox::clicked, this, &AQDialogButtonBox::handleClickedSignal);
    connect(this, &QDialogButtonBox::rejected, this, &AQDialogButtonBox::handleRejectedSignal);
}

AQDialogButtonBox::AQDialogButtonBox(const QString& name, QDialogButtonBox::StandardButtons buttons, QWidget* parent)
    : AQDialogButtonBox(name, buttons, Qt::Horizontal, parent, true)
{
}

void AQDialogButtonBox::handleAcceptedSignal()
{
    // Pushed without a matching pop: acceptance is recorded even from code
    // that suppressed recording, and what follows the dialog's acceptance is
    // a user operation again.
    AQScripts::recordingAllowed(true);
    AQScripts::recordSignal(this, QStringLiteral("accepted"));
    withRecordingSuppressed([this] { Q_EMIT AAccepted(); });
}

void AQDialogButtonBox::handleRejectedSignal()
{
    AQScripts::recordSignal(this, QStringLiteral("rejected"));
    withRecordingSuppressed([this] { Q_EMIT ARejected(); });
}

void AQDialogButtonBox::handleHelpRequestedSignal()
{
    AQScripts::recordSignal(this, QStringLiteral("helpRequested"));
    withRecordingSuppressed([this] { Q_EMIT AHelpRequested(); });
}

void AQDialogButtonBox::handleClickedSignal(QAbstractButton* button)
{
    const QString name = AQStandardButtonNames::name(standardButton(button), Spelling);
    if (!name.isEmpty())
        AQScripts::recordSignal(this, QStringLiteral("clicked"), name);
    withRecordingSuppressed([this, button] { Q_EMIT AClicked(button); });
}

void AQDialogButtonBox::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppress(false);
    if (signal == QLatin1String("accepted")) {
        {
            AQRecordingGuard allow(true);
            AQScripts::recordSignal(this, QStringLiteral("accepted"));
        }
        Q_EMIT AAccepted();
    } else if (signal == QLatin1String("clicked") && !args.isEmpty()) {
        const int value = AQStandardButtonNames::value(args.first(), Spelling);
        QAbstractButton* target = value > 0 ? button(QDialogButtonBox::StandardButton(value)) : nullptr;
        Q_EMIT AClicked(target);
    } else if (signal == QLatin1String("helpRequested")) {
        handleHelpRequestedSignal();
    } else if (signal == QLatin1String("rejected")) {
        handleRejectedSignal();
    }
}

} // namespace QtUIBase
