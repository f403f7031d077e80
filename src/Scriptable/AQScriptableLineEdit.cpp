#include "Scriptable/AQScriptableLineEdit.h"

#include "Script/AQObjects.h"
#include "Script/AQRecordingGuard.h"
#include "Script/AQScripts.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMetaMethod>

namespace QtUIBase {

AQScriptableLineEdit::AQScriptableLineEdit(const QString& name, const QString& text, QWidget* parent, bool scriptable)
    : QLineEdit(text, parent)
    , m_scriptable(scriptable)
    , m_lastRecordedText(text)
{
    init(name);
}

AQScriptableLineEdit::AQScriptableLineEdit(const QString& name, QWidget* parent, bool scriptable)
    : QLineEdit(parent)
    , m_scriptable(scriptable)
{
    init(name);
}

AQScriptableLineEdit::AQScriptableLineEdit(QWidget* parent)
    : QLineEdit(parent)
    , m_scriptable(true)
{
    init(QString());
}

AQScriptableLineEdit::~AQScriptableLineEdit()
{
    if (AQScripts::getLineEditToRecord() == this)
        AQScripts::removeLineEditToRecord(this);
}

void AQScriptableLineEdit::init(const QString& name)
{
    if (m_scriptable)
        AQObjects::add(this, name);
    trapSignals();
}

void AQScriptableLineEdit::trapSignals()
{
    if (!m_scriptable)
        return;
    connect(this, &QLineEdit::textChanged, this, &AQScriptableLineEdit::handleTextChangedSignal, Qt::UniqueConnection);
    connect(this, &QLineEdit::editingFinished, this, &AQScriptableLineEdit::handleEditingFinishedSignal,
            Qt::UniqueConnection);
    connect(this, &QLineEdit::returnPressed, this, &AQScriptableLineEdit::handleReturnPressedSignal,
            Qt::UniqueConnection);
}

void AQScriptableLineEdit::untrapSignals()
{
    disconnect(this, &QLineEdit::textChanged, this, &AQScriptableLineEdit::handleTextChangedSignal);
    disconnect(this, &QLineEdit::editingFinished, this, &AQScriptableLineEdit::handleEditingFinishedSignal);
    disconnect(this, &QLineEdit::returnPressed, this, &AQScriptableLineEdit::handleReturnPressedSignal);
}

void AQScriptableLineEdit::connectNotify(const QMetaMethod& signal)
{
    QLineEdit::connectNotify(signal);
    if (m_scriptable && signal == QMetaMethod::fromSignal(&AQScriptableLineEdit::ATextChanged))
        m_textChangedListened = true;
}

void AQScriptableLineEdit::handleTextChangedSignal(const QString& text)
{
    if (!keepsOutOfPending())
        AQScripts::addLineEditToRecord(this);
    if (m_textChangedListened)
        Q_EMIT ATextChanged(text);
}

void AQScriptableLineEdit::emitEditingFinished(bool mouseMove)
{
    m_mouseMove = mouseMove;
    handleEditingFinishedSignal();
}

void AQScriptableLineEdit::handleEditingFinishedSignal()
{
    if (text() == m_lastRecordedText)
        return;
    m_lastRecordedText = text();
    QStringList args{text()};
    if (m_mouseMove)
        args << QStringLiteral("1");
    AQScripts::recordSignal(this, QStringLiteral("editingFinished"), args);
    if (!keepsOutOfPending())
        AQScripts::removeLineEditToRecord(this);
    withRecordingSuppressed([this] { Q_EMIT AEditingFinished(); });
}

void AQScriptableLineEdit::handleReturnPressedSignal()
{
    AQScripts::recordSignal(this, QStringLiteral("returnPressed"));
    withRecordingSuppressed([this] { Q_EMIT AReturnPressed(); });
}

void AQScriptableLineEdit::setTextInternal(const QString& text)
{
    setText(text);
    m_lastRecordedText = this->text();
}

void AQScriptableLineEdit::setOptions(AQScriptableLineEditOptions options)
{
    m_options = options;
    if (keepsOutOfPending() && AQScripts::getLineEditToRecord() == this)
        AQScripts::removeLineEditToRecord(this);
}

void AQScriptableLineEdit::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = createStandardContextMenu();
    const auto actions = menu->actions();
    for (QAction* action : actions) {
        if (action->text().contains(QLatin1String("&Copy")))
            action->setText(QStringLiteral("&Copy\tCtrl+C"));
    }
    menu->addActions(actions);
    menu->exec(event->globalPos());
    delete menu;
}

void AQScriptableLineEdit::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal == QLatin1String("textChanged")) {
        withRecordingSuppressed([&] { setText(args.value(0)); });
    } else if (signal == QLatin1String("editingFinished")) {
        if (args.isEmpty()) {
            setText(QString());
        } else if (args.size() > 1 && args.at(1) == QLatin1String("1")) {
            m_mouseMove = true;
            withRecordingSuppressed([&] { Q_EMIT ATextChanged(args.at(0)); });
        } else {
            m_mouseMove = false;
            setText(args.at(0));
            // The replayed text counts as recorded: a push button flushing
            // the pending edit later must not report it a second time.
            m_lastRecordedText = text();
            withRecordingSuppressed([this] { Q_EMIT AEditingFinished(); });
        }
    } else if (signal == QLatin1String("returnPressed")) {
        withRecordingSuppressed([this] { Q_EMIT AReturnPressed(); });
    }
}

} // namespace QtUIBase
