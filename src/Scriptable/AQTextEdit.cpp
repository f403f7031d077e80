#include "Scriptable/AQTextEdit.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQTextEdit::AQTextEdit(const QString& name, const QString& text, QWidget* parent, bool scriptable)
    : QTextEdit(text, parent)
    , m_scriptable(scriptable)
{
    registerIfScriptable(this, name, scriptable);
}

void AQTextEdit::focusOutEvent(QFocusEvent*)
{
    handleTextChangedSignal();
}

void AQTextEdit::handleTextChangedSignal()
{
    const QString text = toPlainText();
    recordThenEmit(this, QStringLiteral("textChanged"), text.split(QLatin1Char('\n')),
                   [&] { Q_EMIT ATextChanged(text); });
}

void AQTextEdit::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("textChanged") || args.isEmpty())
        return;
    AQRecordingGuard suppressed;
    // A line equal in value to the last one gets no break after it. Existing
    // scripts and the results checked against them depend on this rule.
    QString text;
    for (const QString& line : args) {
        text += line;
        if (line != args.last())
            text += QLatin1Char('\n');
    }
    setPlainText(text);
    Q_EMIT ATextChanged(toPlainText());
}

} // namespace QtUIBase
