#include "Scriptable/AQMessageBox.h"

#include "Script/AQRecordingGuard.h"
#include "Script/AQScriptBackend.h"
#include "Scriptable/AQStandardButtonNames.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace QtUIBase {

namespace {
constexpr auto Spelling = AQStandardButtonNames::OkSpelling::MessageBox;
}

AQMessageBox::AQMessageBox() = default;

AQMessageBox::AQMessageBox(QMessageBox::Icon icon, const QString& title, const QString& text,
                           QMessageBox::StandardButtons buttons, QWidget* parent, Qt::WindowFlags flags, bool record)
    : QMessageBox(icon, title, text, buttons, parent, flags)
    , m_record(record)
{
}

QString AQMessageBox::_encodeStandardButton(QMessageBox::StandardButton button)
{
    const QString name = AQStandardButtonNames::name(button, Spelling);
    return name.isEmpty() ? QStringLiteral("NoButton") : name;
}

QMessageBox::StandardButton AQMessageBox::_decodeStandardButton(const QString& name)
{
    const int value = AQStandardButtonNames::value(name, Spelling);
    return value < 0 ? NoButton : StandardButton(value);
}

QMessageBox::StandardButton AQMessageBox::replayedAnswer()
{
    return _decodeStandardButton(AQScripts::getFillin());
}

void AQMessageBox::recordAnswer(int answer)
{
    // The answer belongs in the script even when the code that asked runs
    // with recording suppressed.
    AQRecordingGuard allow(true);
    AQScripts::recordFillin(_encodeStandardButton(StandardButton(answer)));
}

QMessageBox::StandardButton AQMessageBox::ask(StaticFunction function, QWidget* parent, const QString& title,
                                              const QString& text, StandardButtons buttons,
                                              StandardButton defaultButton, bool record)
{
    if (AQIsScriptReplayActive())
        return replayedAnswer();
    const StandardButton answer = function(parent, title, text, buttons, defaultButton);
    if (record)
        recordAnswer(answer);
    return answer;
}

int AQMessageBox::askOldForm(StaticFunction function, QWidget* parent, const QString& title, const QString& text,
                             const int (&buttons)[3], bool record)
{
    StandardButtons standard;
    StandardButton defaultButton = NoButton;
    for (const int button : buttons) {
        const auto value = StandardButton(button & ButtonMask);
        standard |= value;
        if (button & Default)
            defaultButton = value;
    }
    return ask(function, parent, title, text, standard, defaultButton, record);
}

int AQMessageBox::Execute()
{
    if (AQIsScriptReplayActive())
        return replayedAnswer();
    const int answer = exec();
    if (m_record)
        recordAnswer(answer);
    return answer;
}

QMessageBox::StandardButton AQMessageBox::critical(QWidget* parent, const QString& title, const QString& text,
                                                   StandardButtons buttons, StandardButton defaultButton, bool record)
{
    return ask(&QMessageBox::critical, parent, title, text, buttons, defaultButton, record);
}

QMessageBox::StandardButton AQMessageBox::information(QWidget* parent, const QString& title, const QString& text,
                                                      StandardButtons buttons, StandardButton defaultButton,
                                                      bool record)
{
    return ask(&QMessageBox::information, parent, title, text, buttons, defaultButton, record);
}

QMessageBox::StandardButton AQMessageBox::question(QWidget* parent, const QString& title, const QString& text,
                                                   StandardButtons buttons, StandardButton defaultButton, bool record)
{
    return ask(&QMessageBox::question, parent, title, text, buttons, defaultButton, record);
}

QMessageBox::StandardButton AQMessageBox::warning(QWidget* parent, const QString& title, const QString& text,
                                                  StandardButtons buttons, StandardButton defaultButton, bool record)
{
    return ask(&QMessageBox::warning, parent, title, text, buttons, defaultButton, record);
}

int AQMessageBox::question(QWidget* parent, const QString& title, const QString& text, int button0, int button1,
                           int button2, bool record)
{
    return askOldForm(&QMessageBox::question, parent, title, text, {button0, button1, button2}, record);
}

int AQMessageBox::warning(QWidget* parent, const QString& title, const QString& text, int button0, int button1,
                          int button2, bool record)
{
    return askOldForm(&QMessageBox::warning, parent, title, text, {button0, button1, button2}, record);
}

void AQMessageBox::keyPressEvent(QKeyEvent* event)
{
    if (m_handleYNKeys && (event->key() == Qt::Key_Y || event->key() == Qt::Key_N)) {
        const bool yes = event->key() == Qt::Key_Y;
        if (QAbstractButton* answer = button(yes ? Yes : No))
            answer->click();
        else if (yes)
            accept();
        else
            reject();
        return;
    }
    QMessageBox::keyPressEvent(event);
}

} // namespace QtUIBase
