#include "Widget/Filter/AQFilterLineEdit.h"

#include "Script/AQRecordingGuard.h"
#include "Script/AQScripts.h"
#include "Widget/Filter/AQFilterDialog.h"
#include "Widget/Filter/FilterKind.h"

#include <QMouseEvent>

namespace QtUIBase {

AQFilterLineEdit::AQFilterLineEdit(int kind, const QString& name, QWidget* parent)
    : AQScriptableLineEdit(name, parent, true)
    , m_kind(kind)
{
}

void AQFilterLineEdit::filterChanged(const QString& text)
{
    AQScripts::recordSignal(this, QStringLiteral("filterChanged"), text);
    // A text that came through the dialog is recorded already: it must not
    // be recorded again as an edit when the line edit loses focus.
    setTextInternal(text);
    if (!text.isEmpty())
        Q_EMIT saveFilter(text);
}

void AQFilterLineEdit::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_kind >= Real && m_kind <= OnOff) {
        auto* dialog = new AQFilterDialog(m_kind, QStringLiteral("filter_dialog"), this);
        connect(dialog, &AQFilterDialog::filterChanged, this, &AQFilterLineEdit::filterChanged);
        dialog->show();
        dialog->placeAt(event->globalPos());
        dialog->raise();
        dialog->activateWindow();
    }
    AQScriptableLineEdit::mousePressEvent(event);
}

void AQFilterLineEdit::scriptReplay(const QString& signal, const QStringList& args)
{
    {
        AQRecordingGuard suppressed;
        // An empty filter text is recorded without argument: it stands for "".
        if (signal == QLatin1String("filterChanged")) {
            const QString text = args.value(0);
            setTextInternal(text);
            if (!text.isEmpty())
                Q_EMIT saveFilter(text);
        }
    }
    AQScriptableLineEdit::scriptReplay(signal, args);
}

} // namespace QtUIBase
