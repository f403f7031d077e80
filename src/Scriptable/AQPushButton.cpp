#include "Scriptable/AQPushButton.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQPushButton::AQPushButton(const QString& name, const QString& text, QWidget* parent, bool scriptable)
    : QPushButton(text, parent)
    , m_scriptable(scriptable)
{
    init(name);
}

AQPushButton::AQPushButton(QWidget* parent)
    : QPushButton(parent)
    , m_scriptable(true)
{
    init(QString());
}

void AQPushButton::init(const QString& name)
{
    if (registerIfScriptable(this, name, m_scriptable))
        connect(this, &QAbstractButton::clicked, this, &AQPushButton::handleClickedSignal);
}

void AQPushButton::connectNotify(const QMetaMethod& signal)
{
    QPushButton::connectNotify(signal);
    if (!m_scriptable)
        return;
    // One Qt connection however many listeners: each operation is one record.
    if (isSignal(signal, &AQPushButton::AToggled))
        connect(this, &QAbstractButton::toggled, this, &AQPushButton::handleToggledSignal, Qt::UniqueConnection);
    else if (isSignal(signal, &AQPushButton::AReleased))
        connect(this, &QAbstractButton::released, this, &AQPushButton::handleReleasedSignal, Qt::UniqueConnection);
    else if (isSignal(signal, &AQPushButton::APressed))
        connect(this, &QAbstractButton::pressed, this, &AQPushButton::handlePressSignal, Qt::UniqueConnection);
}

void AQPushButton::handleClickedSignal(bool checked)
{
    flushPendingLineEdit();
    recordThenEmit(this, QStringLiteral("clicked"), onOrNothing(checked), [&] { Q_EMIT AClicked(checked); });
}

void AQPushButton::handlePressSignal()
{
    flushPendingLineEdit();
    recordThenEmit(this, QStringLiteral("pressed"), {}, [this] { Q_EMIT APressed(); });
}

void AQPushButton::handleReleasedSignal()
{
    flushPendingLineEdit();
    recordThenEmit(this, QStringLiteral("released"), {}, [this] { Q_EMIT AReleased(); });
}

void AQPushButton::handleToggledSignal(bool checked)
{
    flushPendingLineEdit();
    recordThenEmit(this, QStringLiteral("toggled"), {onOff(checked)}, [&] { Q_EMIT AToggled(checked); });
}

void AQPushButton::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("clicked")) {
        if (args.isEmpty())
            recordThenEmit(this, signal, {}, [this] { Q_EMIT AClicked(false); });
        else
            handleClickedSignal(args.first() == QLatin1String("on"));
    } else if (signal == QLatin1String("toggled")) {
        if (!args.isEmpty())
            handleToggledSignal(args.first() == QLatin1String("on"));
    } else if (signal == QLatin1String("released")) {
        if (args.isEmpty())
            handleReleasedSignal();
    } else if (signal == QLatin1String("pressed")) {
        if (args.isEmpty())
            handlePressSignal();
    }
}

} // namespace QtUIBase
