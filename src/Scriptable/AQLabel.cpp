#include "Scriptable/AQLabel.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQLabel::AQLabel(const QString& name, const QString& text, QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : QLabel(text, parent, flags)
    , m_scriptable(scriptable)
{
    registerIfScriptable(this, name, scriptable);
}

AQLabel::AQLabel(const QString& name, QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : QLabel(parent, flags)
    , m_scriptable(scriptable)
{
    registerIfScriptable(this, name, scriptable);
}

AQLabel::AQLabel(QWidget* parent, Qt::WindowFlags flags, bool scriptable)
    : QLabel(parent, flags)
    , m_scriptable(scriptable)
{
    registerIfScriptable(this, QString(), scriptable);
}

void AQLabel::connectNotify(const QMetaMethod& signal)
{
    QLabel::connectNotify(signal);
    if (!m_scriptable)
        return;
    if (isSignal(signal, &AQLabel::ACustomContextMenuRequested))
        connect(this, &QWidget::customContextMenuRequested, this, &AQLabel::handleCustomContextMenuRequested,
                Qt::UniqueConnection);
    else if (isSignal(signal, &AQLabel::ALinkActivated))
        connect(this, &QLabel::linkActivated, this, &AQLabel::handleLinkActivated, Qt::UniqueConnection);
}

void AQLabel::handleLinkActivated(const QString& link)
{
    recordThenEmit(this, QStringLiteral("linkActivated"), {link}, [&] { Q_EMIT ALinkActivated(link); });
}

void AQLabel::handleCustomContextMenuRequested(const QPoint& pos)
{
    AQScripts::recordSignal(this, QStringLiteral("customContextMenuRequested"), {decimal(pos.x()), decimal(pos.y())});
    Q_EMIT ACustomContextMenuRequested(pos);
}

void AQLabel::scriptReplay(const QString& signal, const QStringList& args)
{
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("customContextMenuRequested") && args.size() >= 2)
        Q_EMIT ACustomContextMenuRequested(QPoint(args.at(0).toInt(), args.at(1).toInt()));
    else if (signal == QLatin1String("linkActivated") && !args.isEmpty())
        Q_EMIT ALinkActivated(args.first());
}

} // namespace QtUIBase
