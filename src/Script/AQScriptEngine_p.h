#pragma once

// State of the built-in script engine, shared by the recording and replay
// halves. Not installed: hosts reach the engine through the backend hooks.

#include <QFile>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <QVector>

#include <functional>
#include <memory>

namespace QtUIBase {
namespace Pvt {

struct ScriptEngineState
{
    // One file serves recording and replay alike.
    QFile scriptFile;
    std::unique_ptr<QTextStream> scriptStream;
    QFile journalFile;
    std::unique_ptr<QTextStream> journalStream;

    bool recordActive = false;
    bool replayActive = false;
    bool journalOpen = false;
    bool hostJournal = false;
    bool saveDialogPosition = false;
    bool commandResult = true;
    QString errorText;
    void (*hostJournalFunc)(void*, int, int, const char*) = nullptr;

    // Replay.
    QStringList pendingCommand;
    bool abort = false;
    QVector<QPair<QString, QString>> ignoreInterval;
    QFile fixedScriptFile;
    std::unique_ptr<QTextStream> fixedScriptStream;
    int reportCounter = 1;
    std::function<void(int, int)> progress;
    int progressTotal = 0;
    int linesRead = 0;
};

ScriptEngineState& engineState();

/// The writer behind AQWriteToScript: journal, host journal, script file.
void builtinWriteToScript(const QString& line);
/// "ddd MMM d yyyy hh:mm:ss" of now, in English whatever the locale.
QString timestampText();
/// Closes the replay's script file and the journal file.
void closeScriptAndJournal();
/// The pause after a replayed command, for the replay loop and for modal
/// dialogs pulling their own lines: when pausing is on and the interval is
/// at least 1 ms, process pending events once, then sleep the interval.
void pauseAfterCommand();

} // namespace Pvt
} // namespace QtUIBase
