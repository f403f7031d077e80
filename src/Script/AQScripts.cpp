#include "Script/AQScripts.h"

#include "Script/AQObjects.h"
#include "Script/AQScriptBackend.h"
#include "Script/AQScriptEngine_p.h"
#include "Script/IAQScriptable.h"
#include "Scriptable/AQAction.h"
#include "Scriptable/AQScriptableLineEdit.h"
#include "Settings/AQSettings.h"

#include <QFileInfo>
#include <QMessageBox>

namespace QtUIBase {

bool AQScripts::m_disableRecording = false;
QStack<bool> AQScripts::m_disableRecordingValues;
bool AQScripts::m_includeScriptCommandsInJournal = false;
bool AQScripts::m_enableScriptInterval = true;
int AQScripts::m_scriptReplayInterval = 0;
bool AQScripts::m_enableSimulation = false;
bool AQScripts::m_bCaseInsensitiveFind = false;
QPointer<AQScriptableLineEdit> AQScripts::m_lineEditToRecord;

namespace {

constexpr int MaxLineLength = 80;

const QString& signalWord()
{
    static const QString word = QStringLiteral("QtSignal");
    return word;
}

const QString& fillinWord()
{
    static const QString word = QStringLiteral("QtFillin");
    return word;
}

const QString& quoteMark()
{
    static const QString mark = QStringLiteral("@#@");
    return mark;
}

bool isQuotedText(const QString& text)
{
    return text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"'));
}

QString quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString quotedIfBlank(const QString& value)
{
    return value.contains(QLatin1Char(' ')) ? quoted(value) : value;
}

// "QtFillin <value>", the value quoted when it holds a blank: recorded
// answers and their echo during replay alike.
QString fillinLine(const QString& value)
{
    return fillinWord() + QLatin1Char(' ') + quotedIfBlank(value);
}

// Replayed commands are echoed with a simpler rule than recording uses:
// only texts with blanks are quoted.
QString encodeEcho(const QString& arg)
{
    if (isQuotedText(arg))
        return quoteMark() + arg + quoteMark();
    return quotedIfBlank(arg);
}

bool isMainWindowBound(const QString& name)
{
    static const QStringList names = {
        QStringLiteral("UndoCommand_Toolbutton"),
        QStringLiteral("RedoCommand_Toolbutton"),
        QStringLiteral("IntegratedCreateRectangleCommand"),
        QStringLiteral("IntegratedCreateOblongCommand"),
        QStringLiteral("IntegratedCreateBoxCommand"),
    };
    return names.contains(name);
}

bool standsAsOwnParent(const QString& signal)
{
    static const QStringList signalNames = {
        QStringLiteral("accepted"),  QStringLiteral("rejected"),         QStringLiteral("clicked"),
        QStringLiteral("helpRequested"), QStringLiteral("currentIdChanged"), QStringLiteral("closed"),
    };
    return signalNames.contains(signal);
}

QString signalHead(const QString& parentName, const QString& name, const QString& signal)
{
    return QStringLiteral("QtSignal %1 %2 %3").arg(parentName, name, signal);
}

void writeLines(const QStringList& lines)
{
    for (const QString& line : lines)
        AQWriteToScript(line);
}

} // namespace

// --- recording ---------------------------------------------------------------

QString AQScripts::encodeArgument(const QString& arg)
{
    if (isQuotedText(arg))
        return quoteMark() + arg + quoteMark();
    if (!arg.isEmpty() && arg.at(0).isLetterOrNumber() && !arg.contains(QLatin1Char(' ')))
        return arg;
    return quoted(arg);
}

QStringList AQScripts::buildLines(const QString& head, const QStringList& args, QString (*encode)(const QString&))
{
    QStringList lines;
    QString line = head;
    for (const QString& arg : args) {
        if (arg.isEmpty())
            continue;
        // Tested before each argument: a line may pass 80 characters by its
        // last argument, and the head is never split.
        if (line.size() > MaxLineLength) {
            lines << line + QLatin1String(" +");
            line = signalWord();
        }
        line += QLatin1Char(' ') + encode(arg);
    }
    lines << line;
    return lines;
}

QStringList AQScripts::splitLine(const QString& line)
{
    QStringList tokens;
    QString current;
    bool inQuote = false;
    for (const QChar c : line) {
        if (c == QLatin1Char('"')) {
            if (!current.isEmpty()) {
                tokens << current;
                current.clear();
            }
            inQuote = !inQuote;
        } else if (c == QLatin1Char(' ') && !inQuote) {
            if (!current.isEmpty()) {
                tokens << current;
                current.clear();
            }
        } else {
            current += c;
        }
    }
    if (!current.isEmpty())
        tokens << current;
    return tokens;
}

void AQScripts::recordSignal(const QObject* obj, QString signal, QStringList args)
{
    if (m_disableRecording || AQIsScriptReplayActive())
        return;
    const int id = AQObjects::find(obj);
    if (id < 0)
        return;
    const QString name = AQObjects::getObjectInstanceName(id);
    const bool bound = isMainWindowBound(name);
    const QObject* parent = AQObjects::getParentObjectPtr(id);
    if (!parent && !bound)
        return;

    const int parentId = parent ? AQObjects::find(parent) : -1;
    QString head;
    if (parentId >= 0)
        head = signalHead(AQObjects::getObjectInstanceName(parentId), name, signal);
    else if (bound)
        head = signalHead(QStringLiteral("OrvexMainWindow"), name, signal);
    else if (standsAsOwnParent(signal))
        head = signalHead(name, name, signal);
    else
        return;
    writeLines(buildLines(head, args, &AQScripts::encodeArgument));
}

void AQScripts::recordSignal(const QObject* obj, QString signal, QString arg)
{
    recordSignal(obj, std::move(signal), QStringList{std::move(arg)});
}

void AQScripts::recordSignal(const QObject* obj, QString signal)
{
    recordSignal(obj, std::move(signal), QStringList{QString()});
}

void AQScripts::recordFillin(const QString& value)
{
    if (m_disableRecording || AQIsScriptReplayActive())
        return;
    AQWriteToScript(fillinLine(value));
}

void AQScripts::recordParamFillIn(const QString& param, const QString& value)
{
    if (AQIsScriptReplayActive())
        return;
    AQWriteToScript(QStringLiteral("%1 %2 ").arg(fillinWord(), param) + quotedIfBlank(value));
}

void AQScripts::recordingAllowed(bool allowed)
{
    m_disableRecordingValues.push(m_disableRecording);
    m_disableRecording = !allowed;
}

void AQScripts::restoreRecordingAllowed()
{
    m_disableRecording = m_disableRecordingValues.isEmpty() ? false : m_disableRecordingValues.pop();
}

void AQScripts::forceRecordingAllowed(bool allowed)
{
    m_disableRecordingValues.clear();
    m_disableRecording = !allowed;
}

void AQScripts::includeScriptCommandsInJournal(bool include)
{
    m_includeScriptCommandsInJournal = include;
}

void AQScripts::addLineEditToRecord(AQScriptableLineEdit* edit)
{
    m_lineEditToRecord = edit;
}

AQScriptableLineEdit* AQScripts::getLineEditToRecord()
{
    return m_lineEditToRecord.data();
}

void AQScripts::removeLineEditToRecord(AQScriptableLineEdit*)
{
    m_lineEditToRecord.clear();
}

// --- replay --------------------------------------------------------------------

void AQScripts::processNextModelessScriptCommand(QStringList& tokens)
{
    if (tokens.isEmpty())
        return;
    if (tokens.first() == signalWord()) {
        tokens.removeFirst();
        if (tokens.isEmpty())
            return;
    }
    QStringList& pending = Pvt::engineState().pendingCommand;
    if (tokens.last() == QLatin1String("+")) {
        pending << tokens.mid(0, tokens.size() - 1);
        return;
    }
    pending << tokens;
    if (pending.size() >= 3 && pending.at(1).contains(QLatin1String("SimulationCommand_button")))
        m_enableSimulation = false;
    // Taken out first: the replayed operation may open a modal dialog that
    // reads further lines through the modal path.
    QStringList command;
    command.swap(pending);
    replaySignal(command);
}

bool AQScripts::processNextModalScriptCommand()
{
    QStringList command;
    for (;;) {
        QStringList line = AQGetNextLineFromScript();
        if (line.isEmpty())
            break;
        const bool continued = line.last() == QLatin1String("+");
        if (continued)
            line.removeLast();
        for (const QString& token : qAsConst(line)) {
            if (token != signalWord())
                command << token;
        }
        if (!continued)
            break;
    }
    replaySignal(command);
    return !command.isEmpty();
}

void AQScripts::replaySignal(QStringList& tokens)
{
    if (tokens.size() < 3 || tokens.first().startsWith(QLatin1Char('#')))
        return;
    const QString parentName = tokens.at(0);
    const QString name = tokens.at(1);
    const QString signal = tokens.at(2);
    QStringList args = tokens.mid(3);

    if (m_includeScriptCommandsInJournal)
        writeLines(buildLines(signalHead(parentName, name, signal), args, &encodeEcho));

    for (QString& arg : args) {
        if (arg.startsWith(quoteMark()) && arg.endsWith(quoteMark()))
            arg.replace(quoteMark(), QStringLiteral("\""));
    }

    const int id = parentName == name ? AQObjects::find(name) : AQObjects::find(parentName, name);
    if (id < 0) {
        addNeedFixedScriptOperation(parentName, name, QString());
        return;
    }
    // These toolbar buttons move between parents; they are known by name.
    QString hint;
    if (name == QLatin1String("UndoCommand_Toolbutton") || name == QLatin1String("RedoCommand_Toolbutton")
        || name == QLatin1String("ToolBar_DropButton"))
        hint = name;
    QObject* object = AQObjects::getObjectPtr(id, hint);
    if (!object)
        return;

    if (auto* scriptable = dynamic_cast<IAQScriptable*>(object)) {
        recordingAllowed(false);
        scriptable->scriptReplay(signal, args);
        restoreRecordingAllowed();
    } else if (object->inherits("QtUIBase::AQScriptableLineEdit")) {
        static_cast<AQScriptableLineEdit*>(object)->scriptReplay(signal, args);
    } else if (object->inherits("QtUIBase::AQAction")) {
        static_cast<AQAction*>(object)->scriptReplay(args);
    }
}

QString AQScripts::getFillin()
{
    const QStringList line = AQGetNextLineFromScript();
    if (line.size() != 2 || line.first() != fillinWord())
        return QString();
    const QString value = line.at(1);
    if (m_includeScriptCommandsInJournal)
        AQWriteToScript(fillinLine(value));
    return value;
}

QString AQScripts::getParamFillin(const QString& param)
{
    const QStringList line = AQGetNextLineFromScript();
    if (line.size() != 3 || line.first() != fillinWord() || line.at(1) != param)
        return QString();
    const QString value = line.at(2);
    if (m_includeScriptCommandsInJournal)
        AQWriteToScript(fillinLine(value));
    return value;
}

void AQScripts::addIgnoreScriptIntervalCommand(const QString& name, const QString& signal)
{
    Pvt::engineState().ignoreInterval.append(qMakePair(name, signal));
}

bool AQScripts::isIgnoreScriptIntervalCommand(const QString& name, const QString& signal)
{
    return Pvt::engineState().ignoreInterval.contains(qMakePair(name, signal));
}

QString AQScripts::fixedScriptFilePath()
{
    // The scripting dialog stores the script's path before each run; a host
    // that replays on its own gets the report beside the replayed script.
    QString script = AQSettings::getUIAScriptPath();
    if (script.isEmpty())
        script = AQGetScriptFileName();
    return QFileInfo(script).absolutePath() + QLatin1String("/fixedScriptOperation.txt");
}

QFile& AQScripts::getFixedScriptFile()
{
    return Pvt::engineState().fixedScriptFile;
}

void AQScripts::addNeedFixedScriptOperation(const QString& parentName, const QString& name, const QString& operation)
{
    Q_UNUSED(parentName) // the report names the object only
    Pvt::ScriptEngineState& s = Pvt::engineState();
    const QString path = fixedScriptFilePath();
    s.fixedScriptFile.close();
    s.fixedScriptFile.setFileName(path);
    if (!s.fixedScriptFile.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        QMessageBox::critical(nullptr, QObject::tr("Error"),
                              QObject::tr("Unable to create fixed script file \"%1\"").arg(path), QMessageBox::Ok);
        return;
    }
    if (!s.fixedScriptStream)
        s.fixedScriptStream = std::make_unique<QTextStream>(&s.fixedScriptFile);
    QTextStream& out = *s.fixedScriptStream;
    out << "exception/warning info " << s.reportCounter++ << '\n'
        << "Tips:if regressions cases test successs and ignore belows notes\n"
        << "Note1:if regressions case test failed, you can only re-record failed operations in GUI separatly;\n"
        << "Note2: " << "Please only check " << name << '\n'
        << "Note3: " << "belows failed operation need re-record:\n"
        << operation << '\n'
        << "Note4: "
        << "after re-record and please only replace old corresponding operation with new recorded operion in current * .txt\n"
        << '\n';
    out.flush();
}

} // namespace QtUIBase
