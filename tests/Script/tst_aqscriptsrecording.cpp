#include "ModalCatcher.h"
#include "ScriptSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScripts.h>

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

namespace {
QStringList g_hostLines;
int g_hostCode = -1;
void hostJournal(void* context, int code, int, const char* line)
{
    QVERIFY(context == nullptr);
    g_hostCode = code;
    g_hostLines << QString::fromLocal8Bit(line);
}
bool alwaysTrue() { return true; }
} // namespace

class tst_AQScriptsRecording : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void argumentEncoding_data();
    void argumentEncoding();
    void continuationPast80Characters();
    void parentRules_data();
    void parentRules();
    void headerAndLinesReachDiskAtOnce();
    void journalFrame();
    void hostJournalFunction();
    void failedCommandEndsJournal();
    void successfulCommandIsJournalled();
    void permissionStack();
    void fillins_data();
    void fillins();
    void nothingRecordedDuringReplay();
    void hooksUnsetAnswerEmpty();
    void fileNaming_data();
    void fileNaming();
    void secondRecordingRefused();
    void unwritableScript();
    void unwritableJournal();
    void stopRecordingKeepsJournal();

private:
    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<QObject> m_window;
    QObject* m_button = nullptr;
    QString m_script;
    QString m_previousDir;

    void startRecording()
    {
        m_script = m_sandbox->path(QStringLiteral("session.scr"));
        QVERIFY(AQOpenScriptFileForRecord(m_script, QStringLiteral("2")));
    }
    QStringList scriptRecords() const { return ScriptSandbox::recordLines(m_script); }
};

void tst_AQScriptsRecording::init()
{
    m_sandbox = std::make_unique<ScriptSandbox>();
    m_window = std::make_unique<QObject>();
    AQObjects::add(m_window.get(), QStringLiteral("Main Window"));
    m_button = new QObject(m_window.get());
    AQObjects::add(m_button, QStringLiteral("Apply"));
    m_previousDir = QDir::currentPath();
    g_hostLines.clear();
}

void tst_AQScriptsRecording::cleanup()
{
    QDir::setCurrent(m_previousDir);
    m_window.reset();
    AQSetJournalRecordFunc(nullptr);
    m_sandbox.reset();
}

void tst_AQScriptsRecording::argumentEncoding_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("line");

    const QString head = QStringLiteral("QtSignal Main_Window Apply clicked");
    QTest::newRow("bare word") << QStringList{"x1"} << head + " x1";
    QTest::newRow("digit first") << QStringList{"12"} << head + " 12";
    QTest::newRow("non-ASCII letter first") << QStringList{QStringLiteral("\u00e9t\u00e9")}
                                            << head + QStringLiteral(" \u00e9t\u00e9");
    QTest::newRow("two words quoted") << QStringList{"two words"} << head + " \"two words\"";
    QTest::newRow("minus sign quoted") << QStringList{"-1"} << head + " \"-1\"";
    QTest::newRow("dot first quoted") << QStringList{".5"} << head + " \".5\"";
    QTest::newRow("inner quote not escaped") << QStringList{"a\"b"} << head + " a\"b";
    QTest::newRow("inner quote with blank") << QStringList{"say \"hi\" now"} << head + " \"say \"hi\" now\"";
    QTest::newRow("single double quote") << QStringList{"\""} << head + " @#@\"@#@";
    QTest::newRow("quoted text") << QStringList{"\"abc\""} << head + " @#@\"abc\"@#@";
    QTest::newRow("empty left out") << QStringList{"", "a", "", "b"} << head + " a b";
    QTest::newRow("only empty") << QStringList{""} << head;
    QTest::newRow("several") << QStringList{"on", "3", "x y"} << head + " on 3 \"x y\"";
}

void tst_AQScriptsRecording::argumentEncoding()
{
    QFETCH(QStringList, args);
    QFETCH(QString, line);

    startRecording();
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), args);
    QCOMPARE(scriptRecords(), QStringList{line});
}

void tst_AQScriptsRecording::continuationPast80Characters()
{
    startRecording();
    auto* obj = new QObject(m_window.get());
    AQObjects::add(obj, QStringLiteral("Obj"));
    QStringList args;
    for (int i = 0; i < 15; ++i)
        args << QStringLiteral("arg%1_abcd").arg(i, 2, 10, QLatin1Char('0')); // 10 characters each
    AQScripts::recordSignal(obj, QStringLiteral("sig"), args);

    // Head 28 characters, each argument 11: a line breaks once past 80
    // (28 + 5*11 = 83; continuation 8 + 7*11 = 85).
    const QStringList lines = scriptRecords();
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0), "QtSignal Main_Window Obj sig " + args.mid(0, 5).join(' ') + " +");
    QCOMPARE(lines.at(1), "QtSignal " + args.mid(5, 7).join(' ') + " +");
    QCOMPARE(lines.at(2), "QtSignal " + args.mid(12).join(' '));
    QVERIFY(lines.at(0).size() - 2 > 80);
}

void tst_AQScriptsRecording::parentRules_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("parentKind"); // 0 registered, 1 unregistered, 2 none
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("line"); // empty: nothing recorded

    QTest::newRow("registered parent") << "Child" << 0 << "toggled" << "QtSignal Main_Window Child toggled";
    QTest::newRow("unregistered parent, clicked") << "Lonely" << 1 << "clicked" << "QtSignal Lonely Lonely clicked";
    for (const char* signal : {"accepted", "rejected", "helpRequested", "currentIdChanged", "closed"})
        QTest::newRow(qPrintable(QStringLiteral("own parent for %1").arg(signal)))
            << "Lonely" << 1 << signal << QStringLiteral("QtSignal Lonely Lonely %1").arg(signal);
    QTest::newRow("unregistered parent, toggled") << "Lonely" << 1 << "toggled" << "";
    QTest::newRow("no parent") << "Free" << 2 << "clicked" << "";
    QTest::newRow("undo without parent") << "UndoCommand_Toolbutton" << 2 << "clicked"
                                         << "QtSignal OrvexMainWindow UndoCommand_Toolbutton clicked";
    QTest::newRow("box command, unregistered parent") << "IntegratedCreateBoxCommand" << 1 << "triggered"
                                                      << "QtSignal OrvexMainWindow IntegratedCreateBoxCommand triggered";
    QTest::newRow("redo under registered parent") << "RedoCommand_Toolbutton" << 0 << "clicked"
                                                  << "QtSignal Main_Window RedoCommand_Toolbutton clicked";
}

void tst_AQScriptsRecording::parentRules()
{
    QFETCH(QString, name);
    QFETCH(int, parentKind);
    QFETCH(QString, signal);
    QFETCH(QString, line);

    QObject unregistered;
    std::unique_ptr<QObject> free;
    QObject* obj = nullptr;
    if (parentKind == 0) {
        obj = new QObject(m_window.get());
    } else if (parentKind == 1) {
        obj = new QObject(&unregistered);
    } else {
        free = std::make_unique<QObject>();
        obj = free.get();
    }
    AQObjects::add(obj, name);
    startRecording();
    AQScripts::recordSignal(obj, signal);
    QCOMPARE(scriptRecords(), line.isEmpty() ? QStringList() : QStringList{line});

    // An object that never registered records nothing at all.
    QObject stranger(m_window.get());
    AQScripts::recordSignal(&stranger, QStringLiteral("clicked"));
    QCOMPARE(scriptRecords().size(), line.isEmpty() ? 0 : 1);
}

void tst_AQScriptsRecording::headerAndLinesReachDiskAtOnce()
{
    startRecording();
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("on"));
    // Read back while the engine still holds both files open.
    const QStringList lines = ScriptSandbox::readLines(m_script);
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.at(3), QStringLiteral("QtSignal Main_Window Apply clicked on"));
    QCOMPARE(ScriptSandbox::recordLines(m_sandbox->journalPath()), QStringList{lines.at(3)});
    QCOMPARE(lines.at(0), QStringLiteral("#\tfile: ") + m_script);
    QVERIFY2(QRegularExpression(QStringLiteral("^#\tstart time: [A-Z][a-z]{2} [A-Z][a-z]{2} \\d{1,2} \\d{4} "
                                               "\\d\\d:\\d\\d:\\d\\d$"))
                 .match(lines.at(1))
                 .hasMatch(),
             qPrintable(lines.at(1)));
    QCOMPARE(lines.at(2), QStringLiteral("#\tversion: 2"));
}

void tst_AQScriptsRecording::journalFrame()
{
    // Without a script, lines still reach the journal.
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"));
    AQCloseScript();
    const QStringList lines = ScriptSandbox::readLines(m_sandbox->journalPath());
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.first().startsWith(QLatin1String("Journal start - ")));
    QCOMPARE(lines.at(1), QStringLiteral("QtSignal Main_Window Apply clicked"));
    QVERIFY(lines.last().startsWith(QLatin1String("Journal end - ")));
    // A closed journal takes nothing more.
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"));
    QCOMPARE(ScriptSandbox::readLines(m_sandbox->journalPath()).size(), 3);
}

void tst_AQScriptsRecording::hostJournalFunction()
{
    AQCloseScript();
    AQSetJournalRecordFunc(hostJournal);
    AQInitializeNonVelmoraScripting("unused", true, true);
    QVERIFY(!QFile::exists(QStringLiteral("unused.jrl")));
    startRecording();
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("\u00fcber"));
    QCOMPARE(g_hostLines, QStringList{QStringLiteral("QtSignal Main_Window Apply clicked \u00fcber")});
    QCOMPARE(g_hostCode, 5);
    QCOMPARE(scriptRecords(), g_hostLines);
}

void tst_AQScriptsRecording::failedCommandEndsJournal()
{
    startRecording();
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("before"));
    AQSetScriptCommandResult(false, "mesh failed");
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("after"));
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("later"));

    const QStringList journal = ScriptSandbox::readLines(m_sandbox->journalPath());
    QCOMPARE(journal.last(), QStringLiteral("error info:mesh failed"));
    QVERIFY(!journal.join('\n').contains(QLatin1String("after")));
    // The script file still takes every line.
    QCOMPARE(scriptRecords(), (QStringList{"QtSignal Main_Window Apply clicked before", "mesh failed",
                                           "QtSignal Main_Window Apply clicked after",
                                           "QtSignal Main_Window Apply clicked later"}));
    AQSetScriptCommandResult(true, "");
}

void tst_AQScriptsRecording::successfulCommandIsJournalled()
{
    AQSetScriptCommandResult(true, "mesh done");
    AQSetCommandtoScript("Host command line");
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"));
    QCOMPARE(ScriptSandbox::recordLines(m_sandbox->journalPath()),
             (QStringList{"mesh done", "Host command line", "QtSignal Main_Window Apply clicked"}));
}

void tst_AQScriptsRecording::permissionStack()
{
    startRecording();
    AQScripts::recordingAllowed(false);
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"));
    AQScripts::recordFillin(QStringLiteral("Yes"));
    AQScripts::recordParamFillIn(QStringLiteral("File"), QStringLiteral("a.txt"));
    AQScripts::recordingAllowed(true); // nested permission
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("nested"));
    AQScripts::restoreRecordingAllowed();
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("suppressed"));
    AQScripts::restoreRecordingAllowed();
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("allowed"));
    QCOMPARE(scriptRecords(), (QStringList{"QtFillin File a.txt", "QtSignal Main_Window Apply clicked nested",
                                           "QtSignal Main_Window Apply clicked allowed"}));

    // An empty stack restores to allowed; force clears the stack.
    QCOMPARE(AQScripts::recordingAllowedStackDepth(), 0);
    AQScripts::forceRecordingAllowed(false);
    AQScripts::restoreRecordingAllowed();
    QVERIFY(!AQScripts::isRecordingDisabled());
    AQScripts::recordingAllowed(false);
    AQScripts::recordingAllowed(false);
    AQScripts::forceRecordingAllowed(true);
    QCOMPARE(AQScripts::recordingAllowedStackDepth(), 0);
    QVERIFY(!AQScripts::isRecordingDisabled());
}

void tst_AQScriptsRecording::fillins_data()
{
    QTest::addColumn<QString>("param");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("line");

    QTest::newRow("plain") << "" << "Yes" << "QtFillin Yes";
    QTest::newRow("blank quoted") << "" << "C:/My Files/a.3dem" << "QtFillin \"C:/My Files/a.3dem\"";
    QTest::newRow("minus not quoted") << "" << "-1" << "QtFillin -1";
    QTest::newRow("empty") << "" << "" << "QtFillin ";
    QTest::newRow("param") << "FileName" << "a.txt" << "QtFillin FileName a.txt";
    QTest::newRow("param with blank value") << "FileName" << "a b" << "QtFillin FileName \"a b\"";
    QTest::newRow("param name never quoted") << "File Name" << "x" << "QtFillin File Name x";
}

void tst_AQScriptsRecording::fillins()
{
    QFETCH(QString, param);
    QFETCH(QString, value);
    QFETCH(QString, line);

    startRecording();
    if (param.isEmpty())
        AQScripts::recordFillin(value);
    else
        AQScripts::recordParamFillIn(param, value);
    QCOMPARE(scriptRecords(), QStringList{line});
}

void tst_AQScriptsRecording::nothingRecordedDuringReplay()
{
    startRecording();
    AQScriptBackendHooks hooks = AQScriptBackend();
    hooks.isScriptReplayActive = alwaysTrue;
    AQSetScriptBackendHooks(hooks);
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"));
    AQScripts::recordFillin(QStringLiteral("Yes"));
    AQScripts::recordParamFillIn(QStringLiteral("P"), QStringLiteral("v"));
    AQSetScriptBackendHooks(AQBuiltinScriptBackendHooks());
    QCOMPARE(scriptRecords(), QStringList());
}

void tst_AQScriptsRecording::hooksUnsetAnswerEmpty()
{
    startRecording();
    const AQScriptBackendHooks saved = AQScriptBackend();
    AQSetScriptBackendHooks(AQScriptBackendHooks());
    QVERIFY(!AQIsScriptRecordActive());
    QVERIFY(!AQIsScriptReplayActive());
    QVERIFY(!AQIsSaveDialogPosition());
    QCOMPARE(AQGetScriptFileName(), QString());
    QCOMPARE(AQGetNextLineFromScript(), QStringList());
    QVERIFY(!AQOpenScriptFileForRecord(m_sandbox->path("other.scr"), "2"));
    QVERIFY(!AQOpenScriptFileForReplay(m_script, 0, 2));
    AQWriteToScript(QStringLiteral("lost"));
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"));
    AQSetScriptBackendHooks(saved);
    QVERIFY(AQIsScriptRecordActive());
    QCOMPARE(AQGetScriptFileName(), m_script);
    QCOMPARE(scriptRecords(), QStringList());
    QVERIFY(!QFile::exists(m_sandbox->path("other.scr")));
}

void tst_AQScriptsRecording::fileNaming_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("created");

    QTest::newRow("no suffix") << "run" << "run.scr";
    QTest::newRow("scr kept") << "run.scr" << "run.scr";
    QTest::newRow("other suffix kept") << "run.old" << "run.old";
    QTest::newRow("txt kept") << "run.txt" << "run.txt";
    QTest::newRow("upper-case SCR is a dot name") << "run.SCR" << "run.SCR";
    QTest::newRow("dot in a folder name") << "v1.2/run" << "v1.2/run";
}

void tst_AQScriptsRecording::fileNaming()
{
    QFETCH(QString, given);
    QFETCH(QString, created);

    QDir::setCurrent(m_sandbox->path(QString()));
    QDir().mkpath(QStringLiteral("v1.2"));
    QVERIFY(AQOpenScriptFileForRecord(given, QStringLiteral("2")));
    QCOMPARE(AQGetScriptFileName(), created);
    AQStopScriptRecording();
    QVERIFY(QFile::exists(created));
    QCOMPARE(ScriptSandbox::readLines(created).first(), QStringLiteral("#\tfile: ") + created);
}

void tst_AQScriptsRecording::secondRecordingRefused()
{
    startRecording();
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("kept"));
    {
        ModalCatcher catcher;
        QVERIFY(!AQOpenScriptFileForRecord(m_sandbox->path("second.scr"), QStringLiteral("2")));
        QVERIFY(catcher.caught());
        QCOMPARE(catcher.title(), QStringLiteral("Error"));
        QCOMPARE(catcher.text(), QStringLiteral("A script file is already active."));
    }
    {
        ModalCatcher catcher;
        QVERIFY(!AQOpenScriptFileForReplay(m_script, 0, 2));
        QCOMPARE(catcher.text(), QStringLiteral("A script file is already active."));
    }
    QVERIFY(!QFile::exists(m_sandbox->path("second.scr")));
    // The first recording goes on untouched.
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("still"));
    QCOMPARE(scriptRecords(), (QStringList{"QtSignal Main_Window Apply clicked kept",
                                           "QtSignal Main_Window Apply clicked still"}));
}

void tst_AQScriptsRecording::unwritableScript()
{
    const QString path = m_sandbox->path(QStringLiteral("missing/folder/run.scr"));
    ModalCatcher catcher;
    QVERIFY(!AQOpenScriptFileForRecord(path, QStringLiteral("2")));
    QCOMPARE(catcher.title(), QStringLiteral("Error"));
    QCOMPARE(catcher.text(), QStringLiteral("Unable to create file \"%1\"").arg(path));
    QVERIFY(!AQIsScriptRecordActive());
    // Recording is possible afterwards.
    startRecording();
}

void tst_AQScriptsRecording::unwritableJournal()
{
    AQCloseScript();
    const QString base = m_sandbox->path(QStringLiteral("missing/journal"));
    {
        ModalCatcher catcher;
        AQInitializeNonVelmoraScripting(QFile::encodeName(base).constData(), false, true);
        QCOMPARE(catcher.title(), QStringLiteral("Error"));
        QCOMPARE(catcher.text(), QStringLiteral("Unable to create journal file \"%1.jrl\"").arg(base));
    }
    // Scripting works without a journal.
    startRecording();
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"));
    QCOMPARE(scriptRecords(), QStringList{"QtSignal Main_Window Apply clicked"});
}

void tst_AQScriptsRecording::stopRecordingKeepsJournal()
{
    startRecording();
    AQStopScriptRecording();
    QVERIFY(!AQIsScriptRecordActive());
    AQScripts::recordSignal(m_button, QStringLiteral("clicked"), QStringLiteral("after"));
    QCOMPARE(scriptRecords(), QStringList());
    QCOMPARE(ScriptSandbox::recordLines(m_sandbox->journalPath()),
             QStringList{"QtSignal Main_Window Apply clicked after"});
    // No footer is written when recording stops.
    QCOMPARE(ScriptSandbox::readLines(m_script).size(), 3);
}

QTEST_MAIN(tst_AQScriptsRecording)
#include "tst_aqscriptsrecording.moc"
