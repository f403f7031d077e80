#include "Scriptable/AQInputDialog.h"

#include "Script/AQScriptBackend.h"
#include "Script/AQScripts.h"
#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

namespace {

void setOk(bool* ok, bool value)
{
    if (ok)
        *ok = value;
}

/// Replays a numeric question: the fill-in read by @p convert, or 0 and
/// not-ok for an empty fill-in.
template <typename Number, typename Convert>
Number numberFromFillin(bool* ok, Convert convert)
{
    const QString fillin = AQScripts::getFillin();
    setOk(ok, !fillin.isEmpty());
    return fillin.isEmpty() ? Number(0) : convert(fillin);
}

/// Runs the Qt dialog through @p ask and, with @p record, writes its answer
/// (@p toText of it when accepted, "" when cancelled) as a fill-in.
template <typename Answer, typename Ask, typename ToText>
Answer askAndRecord(bool* ok, bool record, Ask ask, ToText toText)
{
    bool accepted = false;
    const Answer answer = ask(&accepted);
    setOk(ok, accepted);
    if (record) {
        // Questions are mostly asked from reactions to A signals, which run
        // with recording suppressed; the caller's request to record wins, as
        // the answer is needed to replay the operation that asked.
        AQRecordingGuard allowed(true);
        AQScripts::recordFillin(accepted ? toText(answer) : QString());
    }
    return answer;
}

} // namespace

double AQInputDialog::getDouble(QWidget* parent, const QString& title, const QString& label, double value,
                                double min, double max, int decimals, bool* ok, Qt::WindowFlags flags, bool record)
{
    if (AQIsScriptReplayActive())
        return numberFromFillin<double>(ok, [](const QString& s) { return s.toDouble(); });
    return askAndRecord<double>(
        ok, record,
        [&](bool* accepted) {
            return QInputDialog::getDouble(parent, title, label, value, min, max, decimals, accepted, flags);
        },
        shortDouble);
}

int AQInputDialog::getInt(QWidget* parent, const QString& title, const QString& label, int value, int min, int max,
                          int step, bool* ok, Qt::WindowFlags flags, bool record)
{
    if (AQIsScriptReplayActive())
        return numberFromFillin<int>(ok, [](const QString& s) { return s.toInt(); });
    return askAndRecord<int>(
        ok, record,
        [&](bool* accepted) {
            return QInputDialog::getInt(parent, title, label, value, min, max, step, accepted, flags);
        },
        decimal);
}

QString AQInputDialog::getItem(QWidget* parent, const QString& title, const QString& label, const QStringList& items,
                               int current, bool editable, bool* ok, Qt::WindowFlags flags, bool record)
{
    if (AQIsScriptReplayActive()) {
        const QString fillin = AQScripts::getFillin();
        setOk(ok, !fillin.isEmpty());
        return fillin;
    }
    return askAndRecord<QString>(
        ok, record,
        [&](bool* accepted) {
            return QInputDialog::getItem(parent, title, label, items, current, editable, accepted, flags);
        },
        [](const QString& s) { return s; });
}

QString AQInputDialog::getText(QWidget* parent, const QString& title, const QString& label, QLineEdit::EchoMode echo,
                               const QString& text, bool* ok, Qt::WindowFlags flags,
                               Qt::InputMethodHints inputMethodHints, bool record)
{
    if (AQIsScriptReplayActive())
        return AQScripts::getFillin();
    return askAndRecord<QString>(
        ok, record,
        [&](bool* accepted) {
            return QInputDialog::getText(parent, title, label, echo, text, accepted, flags, inputMethodHints);
        },
        [](const QString& s) { return s; });
}

} // namespace QtUIBase
