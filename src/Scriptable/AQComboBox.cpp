#include "Scriptable/AQComboBox.h"

#include "Script/AQScriptBackend.h"
#include "Scriptable/AQWrapperSupport_p.h"

#include <QLineEdit>

namespace QtUIBase {

using namespace Wrapper;

QPointer<QComboBox> AQComboBox::m_combobox;
QString AQComboBox::m_typeName;

AQComboBox::AQComboBox(const QString& name, QWidget* parent, bool scriptable)
    : QComboBox(parent)
    , m_scriptable(scriptable)
{
    init(name);
}

AQComboBox::AQComboBox(QWidget* parent)
    : QComboBox(parent)
    , m_scriptable(true)
{
    init(QString());
}

void AQComboBox::init(const QString& name)
{
    if (!registerIfScriptable(this, name, m_scriptable))
        return;
    setComBox(this, QStringLiteral(" "));
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &AQComboBox::handleCurrentIndexChangedSignal);
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &AQComboBox::onActivated);
    connect(this, &QComboBox::editTextChanged, this, &AQComboBox::handleEditTextChangedSignal);
    m_recordIndexChanged = true;
    m_sendAllEvents = false;
}

void AQComboBox::setComBox(QComboBox* combo, QString typeName)
{
    m_combobox = combo;
    m_typeName = std::move(typeName);
}

void AQComboBox::setEditable(bool editable)
{
    QComboBox::setEditable(editable);
    if (m_scriptable && lineEdit())
        connect(lineEdit(), &QLineEdit::editingFinished, this, &AQComboBox::handleEditingFinishedSignal,
                Qt::UniqueConnection);
}

void AQComboBox::setCurrentTextInternal(const QString& text)
{
    setCurrentText(text);
    m_lastRecordedText = text;
}

void AQComboBox::recordSignal(const QString& signal, const QString& text)
{
    if (isRepeat(text))
        return;
    m_lastRecordedText = text;
    AQScripts::recordSignal(this, signal, text);
}

bool AQComboBox::isNetNameReplay() const
{
    return AQIsScriptReplayActive() && m_typeName == QLatin1String("NetName");
}

void AQComboBox::handleCurrentIndexChangedSignal(int index)
{
    const QString text = itemText(index);
    if (m_recordIndexChanged)
        recordSignal(QStringLiteral("CurrentIndexChanged"), text);
    withRecordingSuppressed([&] {
        Q_EMIT ACurrentIndexChanged(index);
        Q_EMIT ACurrentIndexChanged(text);
    });
}

void AQComboBox::onActivated(int index)
{
    if (index < 0)
        return;
    const QString text = itemText(index);
    if (isRepeat(text))
        return;
    recordSignal(QStringLiteral("activated"), text);
    withRecordingSuppressed([&] {
        Q_EMIT AIndexActivated(index);
        if (!isNetNameReplay())
            Q_EMIT AIndexActivated(text);
        else if (m_combobox)
            Q_EMIT AIndexActivated(m_combobox->itemText(index));
    });
}

void AQComboBox::handleEditTextChangedSignal(const QString& text)
{
    withRecordingSuppressed([&] { Q_EMIT AEditTextChanged(text); });
}

void AQComboBox::handleEditingFinishedSignal()
{
    recordSignal(QStringLiteral("EditingFinished"), currentText());
    withRecordingSuppressed([this] { Q_EMIT AEditingFinished(); });
}

void AQComboBox::scriptReplay(const QString& signal, const QStringList& args)
{
    if (args.size() != 1)
        return;
    const QString& text = args.first();
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("CurrentIndexChanged")) {
        int index = findText(text, Qt::MatchCaseSensitive);
        if (index < 0 && AQScripts::doCaseInsensitiveFind())
            index = findText(text, Qt::MatchFixedString);
        if (index >= 0)
            setCurrentIndex(index);
    } else if (signal == QLatin1String("EditingFinished")) {
        setEditText(text);
        handleEditingFinishedSignal();
    } else if (signal == QLatin1String("activated")) {
        int index = -1;
        if (m_typeName == QLatin1String("NetName"))
            index = m_combobox ? m_combobox->findText(text, Qt::MatchCaseSensitive) : 0;
        else
            index = findText(text, Qt::MatchCaseSensitive);
        onActivated(index);
    }
}

} // namespace QtUIBase
