#include "Script/AQScriptEngine.h"

#include "Script/AQScriptEngine_p.h"
#include "Script/AQScripts.h"

#include <QCoreApplication>
#include <QDate>
#include <QLocale>
#include <QMessageBox>
#include <QThread>
#include <QTime>

namespace QtUIBase {

namespace Pvt {

ScriptEngineState& engineState()
{
    static ScriptEngineState state;
    return state;
}

QString timestampText()
{
    // Scripts and journals are compared across machines: day and month
    // names are always English.
    const QLocale c = QLocale::c();
    return c.toString(QDate::currentDate(), QStringLiteral("ddd MMM d yyyy")) + QLatin1Char(' ')
        + c.toString(QTime::currentTime(), QStringLiteral("hh:mm:ss"));
}

void builtinWriteToScript(const QString& line)
{
    ScriptEngineState& s = engineState();
    if (s.journalOpen && s.journalStream) {
        if (!s.commandResult) {
            *s.journalStream << QStringLiteral("error info:") << s.errorText << '\n';
            s.journalOpen = false;
        } else {
            *s.journalStream << line << '\n';
        }
        s.journalStream->flush();
    }
    if (s.hostJournal && s.hostJournalFunc)
        s.hostJournalFunc(nullptr, 5, 0, line.toLocal8Bit().constData());
    if (s.recordActive && s.scriptStream) {
        *s.scriptStream << line << '\n';
        s.scriptStream->flush();
    }
}

void closeScriptAndJournal()
{
    ScriptEngineState& s = engineState();
    s.scriptFile.close();
    if (s.journalStream)
        s.journalStream->flush();
    s.journalFile.close();
    s.journalOpen = false;
}

void pauseAfterCommand()
{
    const int interval = AQScripts::getScriptReplayInterval();
    if (!AQScripts::getScriptEnableInterval() || interval < 1)
        return;
    QCoreApplication::processEvents();
    QThread::msleep(static_cast<unsigned long>(interval));
}

} // namespace Pvt

using Pvt::engineState;
using Pvt::ScriptEngineState;

namespace {

void showError(const QString& text)
{
    QMessageBox::critical(nullptr, QObject::tr("Error"), text, QMessageBox::Ok);
}

bool builtinIsRecordActive() { return engineState().recordActive; }
bool builtinIsReplayActive() { return engineState().replayActive; }
bool builtinIsSaveDialogPosition() { return engineState().saveDialogPosition; }

void builtinCloseJrlScriptFile(const QString& text)
{
    ScriptEngineState& s = engineState();
    if (!s.journalStream || !s.journalFile.isOpen())
        return;
    *s.journalStream << text << '\n';
    s.journalStream->flush();
}

// Lines read by the replay loop and by dialogs pulling their own lines
// alike count towards the progress a host shows.
void reportLineRead()
{
    ScriptEngineState& s = engineState();
    ++s.linesRead;
    if (s.replayActive && s.progress)
        s.progress(s.linesRead, s.progressTotal);
}

QStringList builtinGetNextLineFromScript()
{
    ScriptEngineState& s = engineState();
    if (!s.scriptStream || !s.scriptFile.isOpen())
        return {};
    // Blank lines carry nothing; skipping them keeps a stray empty line from
    // reading as the end of the script to a dialog pulling its commands.
    while (!s.scriptStream->atEnd()) {
        const QStringList tokens = AQScripts::splitLine(s.scriptStream->readLine());
        reportLineRead();
        if (!tokens.isEmpty())
            return tokens;
    }
    return {};
}

bool builtinOpenScriptFileForRecord(const QString& file, const QString& version)
{
    ScriptEngineState& s = engineState();
    if (s.replayActive) {
        s.scriptFile.close();
        s.replayActive = false;
    }
    if (s.recordActive) {
        showError(QObject::tr("A script file is already active."));
        return false;
    }
    QString name = file;
    if (!name.endsWith(QLatin1String(".scr")) && !name.contains(QLatin1Char('.')))
        name += QLatin1String(".scr");

    s.scriptFile.close();
    s.scriptFile.setFileName(name);
    if (!s.scriptFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        showError(QObject::tr("Unable to create file \"%1\"").arg(name));
        return false;
    }
    s.scriptStream = std::make_unique<QTextStream>(&s.scriptFile);
    const QString stamp = Pvt::timestampText();
    *s.scriptStream << QStringLiteral("#\tfile: ") << name << '\n'
                    << QStringLiteral("#\tstart time: ") << stamp << '\n'
                    << QStringLiteral("#\tversion: ") << version << '\n';
    s.scriptStream->flush();
    s.recordActive = true;
    return true;
}

void builtinStopScriptRecording()
{
    ScriptEngineState& s = engineState();
    if (!s.recordActive)
        return;
    s.scriptFile.close();
    s.recordActive = false;
}

void builtinStopScriptReplay()
{
    ScriptEngineState& s = engineState();
    if (!s.replayActive)
        return;
    s.scriptFile.close();
    s.abort = true;
    s.replayActive = false;
}

bool isVersionLine(const QStringList& tokens, int version)
{
    if (tokens.size() < 2 || !tokens.at(0).contains(QLatin1String("version:"), Qt::CaseInsensitive))
        return false;
    bool ok = false;
    const int found = tokens.at(1).toInt(&ok, 10);
    return ok && found >= version;
}

// Holds the replay while the host runs a simulation; a stopped replay ends
// the wait as well.
void waitForSimulation()
{
    const ScriptEngineState& s = engineState();
    while (!AQScripts::getSimualationStatus() && !s.abort)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

int countLines(const QString& file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    QTextStream in(&f);
    int lines = 0;
    while (!in.atEnd()) {
        in.readLine();
        ++lines;
    }
    return lines;
}

bool builtinOpenScriptFileForReplay(const QString& file, int interval, int version)
{
    ScriptEngineState& s = engineState();
    s.abort = false;
    if (s.replayActive) {
        s.scriptFile.close();
        s.replayActive = false;
    }
    if (s.recordActive) {
        showError(QObject::tr("A script file is already active."));
        return false;
    }
    s.scriptFile.close();
    s.scriptFile.setFileName(file);
    if (!s.scriptFile.open(QIODevice::ReadOnly)) {
        showError(QObject::tr("Unable to read file \"%1\"").arg(file));
        return false;
    }
    AQScripts::setScriptReplayInterval(interval);
    s.scriptStream = std::make_unique<QTextStream>(&s.scriptFile);
    s.replayActive = true;
    s.commandResult = true;
    s.pendingCommand.clear();

    if (s.scriptStream->atEnd()) {
        Pvt::closeScriptAndJournal();
        s.replayActive = false;
        return true;
    }

    s.progressTotal = s.progress ? countLines(file) : 0;
    s.linesRead = 0;
    for (int n = 0;; ++n) {
        if (s.abort) {
            Pvt::closeScriptAndJournal();
            s.replayActive = false;
            return false;
        }
        QStringList tokens = AQScripts::splitLine(s.scriptStream->readLine());
        if (n == 2 && !isVersionLine(tokens, version)) {
            showError(QObject::tr("Cannot load the script because you are using an older version of the script file. "
                                  "Migrate the file to a later version that supports the script file."));
            s.scriptFile.close();
            s.replayActive = false;
            return false;
        }

        reportLineRead();
        AQScripts::processNextModelessScriptCommand(tokens);

        const bool ignorePause = tokens.size() >= 3 && AQScripts::isIgnoreScriptIntervalCommand(tokens.at(1), tokens.at(2));
        const bool enabledBefore = AQScripts::getScriptEnableInterval();
        if (ignorePause)
            AQScripts::setScriptEnableInterval(false);
        Pvt::pauseAfterCommand();
        if (ignorePause)
            AQScripts::setScriptEnableInterval(enabledBefore);

        if (tokens.size() >= 3
            && (tokens.at(1).contains(QLatin1String("SimulationCommand_button"))
                || tokens.at(1).contains(QLatin1String("EditPreCalculateDialogCommand_button")))) {
            waitForSimulation();
        }

        // A replayed operation may have stopped the replay and closed the file.
        if (!s.scriptFile.isOpen() || s.scriptStream->atEnd()) {
            Pvt::closeScriptAndJournal();
            s.replayActive = false;
            return !s.abort;
        }
    }
}

QString builtinGetScriptFileName()
{
    return engineState().scriptFile.fileName();
}

} // namespace

AQScriptBackendHooks AQBuiltinScriptBackendHooks()
{
    AQScriptBackendHooks hooks;
    hooks.isScriptRecordActive = builtinIsRecordActive;
    hooks.isScriptReplayActive = builtinIsReplayActive;
    hooks.isSaveDialogPosition = builtinIsSaveDialogPosition;
    hooks.writeToScript = Pvt::builtinWriteToScript;
    hooks.closeJrlScriptFile = builtinCloseJrlScriptFile;
    hooks.getNextLineFromScript = builtinGetNextLineFromScript;
    hooks.openScriptFileForRecord = builtinOpenScriptFileForRecord;
    hooks.stopScriptRecording = builtinStopScriptRecording;
    hooks.stopScriptReplay = builtinStopScriptReplay;
    hooks.openScriptFileForReplay = builtinOpenScriptFileForReplay;
    hooks.getScriptFileName = builtinGetScriptFileName;
    return hooks;
}

void AQInitializeNonVelmoraScripting(const char* baseName, bool useHostJournal, bool openJournal)
{
    AQSetScriptBackendHooks(AQBuiltinScriptBackendHooks());
    ScriptEngineState& s = engineState();
    if (!useHostJournal) {
        s.hostJournal = false;
        const QString fileName = QString::fromLocal8Bit(baseName) + QLatin1String(".jrl");
        if (openJournal) {
            // A second initialisation (each replay from the scripting dialog
            // journals beside its script) moves the journal.
            if (s.journalStream)
                s.journalStream->flush();
            s.journalFile.close();
            s.journalOpen = false;
            s.journalFile.setFileName(fileName);
            if (s.journalFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
                s.journalStream = std::make_unique<QTextStream>(&s.journalFile);
                *s.journalStream << QStringLiteral("Journal start - ") << Pvt::timestampText() << '\n';
                s.journalStream->flush();
                s.journalOpen = true;
            } else {
                showError(QObject::tr("Unable to create journal file ") + QLatin1Char('"') + fileName + QLatin1Char('"'));
            }
        }
    } else {
        s.hostJournal = true;
    }
    AQScripts::includeScriptCommandsInJournal(true);
}

void AQSetReplayProgressFunc(std::function<void(int line, int total)> func)
{
    engineState().progress = std::move(func);
}

void AQSetJournalRecordFunc(void (*func)(void*, int, int, const char*))
{
    engineState().hostJournalFunc = func;
}

void AQCloseScript()
{
    ScriptEngineState& s = engineState();
    if (s.recordActive) {
        s.scriptFile.close();
        s.recordActive = false;
    }
    if (s.journalOpen) {
        if (!s.hostJournal && s.journalStream) {
            *s.journalStream << QStringLiteral("Journal end - ") << Pvt::timestampText() << '\n';
            s.journalStream->flush();
        }
        s.journalFile.close();
        s.journalOpen = false;
    }
}

void AQResetReplayState()
{
    engineState().replayActive = false;
}

void AQSetCommandtoScript(const std::string& line)
{
    Pvt::builtinWriteToScript(QString::fromStdString(line));
}

void AQSetScriptCommandResult(bool ok, const std::string& message)
{
    ScriptEngineState& s = engineState();
    s.commandResult = ok;
    s.errorText = QString::fromStdString(message);
    Pvt::builtinWriteToScript(s.errorText);
}

} // namespace QtUIBase
