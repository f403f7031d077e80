#pragma once

#include "OrvexQtUIBase_export.h"

#include <QFile>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QStack>
#include <QString>
#include <QStringList>
#include <QVector>

namespace QtUIBase {

class AQScriptableLineEdit;

/**
 * The static face of the script engine, used by every scriptable widget.
 *
 * Recording: a widget reports an operation with recordSignal(); the engine
 * writes one "QtSignal" line naming the object's parent, the object, the
 * signal and the encoded arguments (continued with " +" past 80
 * characters) to the journal, the host's journal function and, while one is
 * recorded, the script file. Nothing is recorded while recording is
 * suppressed (recordingAllowed(false)) or a replay runs.
 *
 * Replay: the built-in engine feeds the lines it reads to
 * processNextModelessScriptCommand(); modal dialogs pull their own lines with
 * processNextModalScriptCommand(), and question boxes read their answers
 * with getFillin() and getParamFillin().
 *
 * The class is never instantiated; all state is process-wide.
 */
class ORVEXQTUIBASE_EXPORT AQScripts
{
public:
    AQScripts() = delete;

    // --- recording -------------------------------------------------------
    static void recordSignal(const QObject* obj, QString signal, QStringList args);
    static void recordSignal(const QObject* obj, QString signal, QString arg);
    /// Records @p signal without arguments.
    static void recordSignal(const QObject* obj, QString signal);
    /// Writes "QtFillin <value>" unless recording is suppressed or a replay
    /// runs; a value with a blank is quoted.
    static void recordFillin(const QString& value);
    /// Writes "QtFillin <param> <value>" unless a replay runs. Unlike
    /// recordFillin() it ignores suppression, so a parameter fill-in asked
    /// for inside suppressed application code is still recorded.
    static void recordParamFillIn(const QString& param, const QString& value);

    /// Saves the current permission on a stack, then allows or suppresses.
    static void recordingAllowed(bool allowed);
    /// Restores the last saved permission (allowed when nothing is saved).
    static void restoreRecordingAllowed();
    /// Empties the stack and sets the permission.
    static void forceRecordingAllowed(bool allowed);
    static bool isRecordingDisabled() { return m_disableRecording; }
    static int recordingAllowedStackDepth() { return m_disableRecordingValues.size(); }

    static void includeScriptCommandsInJournal(bool include);
    static bool isIncludeScriptCommandsInJournal() { return m_includeScriptCommandsInJournal; }

    /// The line edit whose typed text is still to be recorded; push buttons
    /// flush it before recording their own operation.
    static void addLineEditToRecord(AQScriptableLineEdit* edit);
    static AQScriptableLineEdit* getLineEditToRecord();
    /// Clears the pending line edit, whatever @p edit is.
    static void removeLineEditToRecord(AQScriptableLineEdit* edit);

    static void setCaseInsensitiveFind(bool on) { m_bCaseInsensitiveFind = on; }
    static bool doCaseInsensitiveFind() { return m_bCaseInsensitiveFind; }

    /// Encodes one argument of a recorded line: "@#@"-wrapped when it starts
    /// and ends with a double quote, bare when it starts with a letter or
    /// digit and holds no blank, double-quoted otherwise.
    static QString encodeArgument(const QString& arg);
    /// Builds the line(s) of one command: @p head followed by the arguments,
    /// each encoded by @p encode; empty arguments are left out and a line
    /// longer than 80 characters is continued with " +" and "QtSignal".
    static QStringList buildLines(const QString& head, const QStringList& args, QString (*encode)(const QString&));
    /// Cuts a script line into tokens: blanks separate, double quotes group
    /// and are dropped, everything else (tabs included) belongs to a token.
    static QStringList splitLine(const QString& line);

    // --- replay ------------------------------------------------------------
    static void processNextModelessScriptCommand(QStringList& tokens);
    static bool processNextModalScriptCommand();
    static void replaySignal(QStringList& tokens);
    static QString getFillin();
    static QString getParamFillin(const QString& param);

    static void addIgnoreScriptIntervalCommand(const QString& name, const QString& signal);
    static bool isIgnoreScriptIntervalCommand(const QString& name, const QString& signal);
    static void setScriptEnableInterval(bool enable) { m_enableScriptInterval = enable; }
    static bool getScriptEnableInterval() { return m_enableScriptInterval; }
    static void setScriptReplayInterval(int ms) { m_scriptReplayInterval = ms; }
    static int getScriptReplayInterval() { return m_scriptReplayInterval; }
    static void setSimualationStatus(bool finished) { m_enableSimulation = finished; }
    static bool getSimualationStatus() { return m_enableSimulation; }

    /// Appends a report block for an operation whose object was not found.
    static void addNeedFixedScriptOperation(const QString& parentName, const QString& name, const QString& operation);
    static QFile& getFixedScriptFile();
    /// Path of the fixed-script report: beside the current script path.
    static QString fixedScriptFilePath();

private:
    static bool m_disableRecording;
    static QStack<bool> m_disableRecordingValues;
    static bool m_includeScriptCommandsInJournal;
    static bool m_enableScriptInterval;
    static int m_scriptReplayInterval;
    static bool m_enableSimulation;
    static bool m_bCaseInsensitiveFind;
    static QPointer<AQScriptableLineEdit> m_lineEditToRecord;
};

} // namespace QtUIBase
