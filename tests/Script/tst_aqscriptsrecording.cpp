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
const QString Head = QStringLiteral("QtSignal Main_Window Apply clicked");
} // namespace

class tst_AQScriptsRecording : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<QObject> m_window;
    QObject* m_button = nullptr;
    QString m_script;
    QString m_previousDir;

    void startRecording()
    {
        m_script = m_sandbox->path("session.scr");
        QVERIFY(AQOpenScriptFileForRecord(m_script, "2"));
    }
    QStringList scriptRecords() const { return ScriptSandbox::recordLines(m_script); }
    QStringList journalRecords() const { return ScriptSandbox::recordLines(m_sandbox->journalPath()); }
    void click(const QString& arg = QString()) const { AQScripts::recordSignal(m_button, "clicked", arg); }

private Q_SLOTS:
    void init()
    {
        m_sandbox = std::make_unique<ScriptSandbox>();
        m_window = std::make_unique<QObject>();
        AQObjects::add(m_window.get(), "Main Window");
        m_button = new QObject(m_window.get());
        AQObjects::add(m_button, "Apply");
        m_previousDir = QDir::currentPath();
        g_hostLines.clear();
    }

    void cleanup()
    {
        QDir::setCurrent(m_previousDir);
        m_window.reset();
        AQSetJournalRecordFunc(nullptr);
        AQSetScriptCommandResult(true, "");
        m_sandbox.reset();
    }

    void recordedLines_data()
    {
        QTest::addColumn<QString>("call"); // a signal of Apply, "fillin" or "param"
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QStringList>("lines");
        const auto row = [](const char* tag, const char* call, const QStringList& args, const QString& line) {
            QTest::newRow(tag) << call << args << QStringList{line};
        };
        row("bare word", "clicked", {"x1"}, Head + " x1");
        row("non-ASCII letter first", "clicked", {"\u00e9t\u00e9"}, Head + " \u00e9t\u00e9");
        row("two words quoted", "clicked", {"two words"}, Head + " \"two words\"");
        row("minus sign quoted", "clicked", {"-1"}, Head + " \"-1\"");
        row("inner quote not escaped", "clicked", {"a\"b"}, Head + " a\"b");
        row("quoted text", "clicked", {"\"abc\""}, Head + " @#@\"abc\"@#@");
        row("single double quote", "clicked", {"\""}, Head + " @#@\"@#@");
        row("empty left out", "clicked", {"", "a", "", "b"}, Head + " a b");
        row("fill-in", "fillin", {"Yes"}, "QtFillin Yes");
        row("fill-in, blank quoted", "fillin", {"C:/My Files/a.3dem"}, "QtFillin \"C:/My Files/a.3dem\"");
        row("fill-in, minus not quoted", "fillin", {"-1"}, "QtFillin -1");
        row("param fill-in, blank quoted", "param", {"FileName", "a b"}, "QtFillin FileName \"a b\"");
        row("param name never quoted", "param", {"File Name", "x"}, "QtFillin File Name x");
        // Head 30 characters, each argument 11: a line breaks once past 80
        // (30 + 5*11 = 85; continuation 8 + 7*11 = 85).
        QStringList args;
        for (int i = 0; i < 15; ++i)
            args << QString("arg%1_abcd").arg(i, 2, 10, QLatin1Char('0')); // 10 characters each
        QTest::newRow("continued past 80 characters")
            << "sig" << args
            << QStringList{"QtSignal Main_Window Apply sig " + args.mid(0, 5).join(' ') + " +",
                           "QtSignal " + args.mid(5, 7).join(' ') + " +", "QtSignal " + args.mid(12).join(' ')};
    }

    void recordedLines()
    {
        QFETCH(QString, call);
        QFETCH(QStringList, args);
        QFETCH(QStringList, lines);
        startRecording();
        if (call == QLatin1String("fillin"))
            AQScripts::recordFillin(args.value(0));
        else if (call == QLatin1String("param"))
            AQScripts::recordParamFillIn(args.value(0), args.value(1));
        else
            AQScripts::recordSignal(m_button, call, args);
        QCOMPARE(scriptRecords(), lines);
    }

    void parentRules_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("parentKind"); // 0 registered, 1 unregistered, 2 none
        QTest::addColumn<QString>("signal");
        QTest::addColumn<QString>("line"); // empty: nothing recorded
        QTest::newRow("registered parent") << "Child" << 0 << "toggled" << "QtSignal Main_Window Child toggled";
        for (const char* signal : {"clicked", "accepted", "rejected", "helpRequested", "currentIdChanged", "closed"})
            QTest::addRow("own parent for %s", signal)
                << "Lonely" << 1 << signal << QString("QtSignal Lonely Lonely %1").arg(signal);
        QTest::newRow("unregistered parent, toggled") << "Lonely" << 1 << "toggled" << "";
        QTest::newRow("no parent") << "Free" << 2 << "clicked" << "";
        QTest::newRow("undo without parent") << "UndoCommand_Toolbutton" << 2 << "clicked"
                                             << "QtSignal OrvexMainWindow UndoCommand_Toolbutton clicked";
        QTest::newRow("box command, unregistered parent")
            << "IntegratedCreateBoxCommand" << 1 << "triggered"
            << "QtSignal OrvexMainWindow IntegratedCreateBoxCommand triggered";
        QTest::newRow("redo under registered parent") << "RedoCommand_Toolbutton" << 0 << "clicked"
                                                      << "QtSignal Main_Window RedoCommand_Toolbutton clicked";
    }

    void parentRules()
    {
        QFETCH(QString, name);
        QFETCH(int, parentKind);
        QFETCH(QString, signal);
        QFETCH(QString, line);
        QObject unregistered;
        QObject free;
        QObject* obj = parentKind == 2 ? &free : new QObject(parentKind == 0 ? m_window.get() : &unregistered);
        AQObjects::add(obj, name);
        startRecording();
        AQScripts::recordSignal(obj, signal);
        // An object that never registered records nothing at all.
        QObject stranger(m_window.get());
        AQScripts::recordSignal(&stranger, "clicked");
        QCOMPARE(scriptRecords(), line.isEmpty() ? QStringList() : QStringList{line});
    }

    void headerAndLinesReachDiskAtOnce()
    {
        startRecording();
        click("on");
        // Read back while the engine still holds both files open.
        const QStringList lines = ScriptSandbox::readLines(m_script);
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines.at(0), "#\tfile: " + m_script);
        QVERIFY2(QRegularExpression("^#\tstart time: [A-Z][a-z]{2} [A-Z][a-z]{2} \\d{1,2} \\d{4} \\d\\d:\\d\\d:\\d\\d$")
                     .match(lines.at(1)).hasMatch(), qPrintable(lines.at(1)));
        QCOMPARE(lines.at(2), QStringLiteral("#\tversion: 2"));
        QCOMPARE(lines.at(3), Head + " on");
        QCOMPARE(journalRecords(), QStringList{lines.at(3)});
    }

    void journalFrame()
    {
        startRecording();
        click("recorded");
        AQStopScriptRecording();
        click("journalled"); // without a script, lines still reach the journal
        AQCloseScript();
        click("lost"); // a closed journal takes nothing more
        QCOMPARE(ScriptSandbox::readLines(m_script).size(), 4); // the header and one line, no footer
        const QStringList lines = ScriptSandbox::readLines(m_sandbox->journalPath());
        QCOMPARE(lines.size(), 4);
        QVERIFY(lines.first().startsWith("Journal start - "));
        QCOMPARE(lines.mid(1, 2), (QStringList{Head + " recorded", Head + " journalled"}));
        QVERIFY(lines.last().startsWith("Journal end - "));
    }

    void hostJournalFunction()
    {
        AQCloseScript();
        AQSetJournalRecordFunc(hostJournal);
        AQInitializeNonVelmoraScripting("unused", true, true);
        QVERIFY(!QFile::exists("unused.jrl"));
        startRecording();
        click("\u00fcber");
        QCOMPARE(g_hostLines, QStringList{Head + " \u00fcber"});
        QCOMPARE(g_hostCode, 5);
        QCOMPARE(scriptRecords(), g_hostLines);
    }

    void commandResultsInJournal()
    {
        startRecording();
        AQSetScriptCommandResult(true, "mesh done");
        AQSetCommandtoScript("Host command line");
        click("before");
        AQSetScriptCommandResult(false, "mesh failed");
        click("after");
        click("later");
        // A failure ends the journal with its message; the script takes every line.
        QCOMPARE(journalRecords(), (QStringList{"mesh done", "Host command line", Head + " before",
                                                "error info:mesh failed"}));
        QCOMPARE(scriptRecords(), (QStringList{"mesh done", "Host command line", Head + " before", "mesh failed",
                                               Head + " after", Head + " later"}));
    }

    void permissionStack()
    {
        startRecording();
        AQScripts::recordingAllowed(false);
        click("suppressed");
        AQScripts::recordFillin("Yes");
        AQScripts::recordParamFillIn("File", "a.txt"); // recorded even when suppressed
        AQScripts::recordingAllowed(true);
        click("nested");
        AQScripts::restoreRecordingAllowed();
        click("suppressed");
        AQScripts::restoreRecordingAllowed();
        click("allowed");
        QCOMPARE(scriptRecords(), (QStringList{"QtFillin File a.txt", Head + " nested", Head + " allowed"}));

        // An empty stack restores to allowed; force clears the stack.
        AQScripts::forceRecordingAllowed(false);
        AQScripts::restoreRecordingAllowed();
        QVERIFY(!AQScripts::isRecordingDisabled());
        AQScripts::recordingAllowed(false);
        AQScripts::recordingAllowed(false);
        AQScripts::forceRecordingAllowed(true);
        QCOMPARE(AQScripts::recordingAllowedStackDepth(), 0);
        QVERIFY(!AQScripts::isRecordingDisabled());
    }

    void nothingRecordedDuringReplay()
    {
        startRecording();
        AQScriptBackendHooks hooks = AQScriptBackend();
        hooks.isScriptReplayActive = alwaysTrue;
        AQSetScriptBackendHooks(hooks);
        click();
        AQScripts::recordFillin("Yes");
        AQScripts::recordParamFillIn("P", "v");
        AQSetScriptBackendHooks(AQBuiltinScriptBackendHooks());
        QCOMPARE(scriptRecords(), QStringList());
    }

    void fileNaming_data()
    {
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("created");
        QTest::newRow("no suffix") << "run" << "run.scr";
        QTest::newRow("other suffix kept") << "run.SCR" << "run.SCR";
        QTest::newRow("dot in a folder name") << "v1.2/run" << "v1.2/run";
    }

    void fileNaming()
    {
        QFETCH(QString, given);
        QFETCH(QString, created);
        QDir::setCurrent(m_sandbox->path(QString()));
        QDir().mkpath("v1.2");
        QVERIFY(AQOpenScriptFileForRecord(given, "2"));
        QCOMPARE(AQGetScriptFileName(), created);
        AQStopScriptRecording();
        QCOMPARE(ScriptSandbox::readLines(created).value(0), "#\tfile: " + created);
    }

    void secondScriptRefused()
    {
        startRecording();
        click("kept");
        for (const bool forReplay : {false, true}) {
            ModalCatcher catcher;
            QVERIFY(forReplay ? !AQOpenScriptFileForReplay(m_script, 0, 2)
                              : !AQOpenScriptFileForRecord(m_sandbox->path("second.scr"), "2"));
            QCOMPARE(catcher.title(), QStringLiteral("Error"));
            QCOMPARE(catcher.text(), QStringLiteral("A script file is already active."));
        }
        QVERIFY(!QFile::exists(m_sandbox->path("second.scr")));
        click("still"); // the first recording goes on
        QCOMPARE(scriptRecords(), (QStringList{Head + " kept", Head + " still"}));
    }

    void unwritableScript()
    {
        const QString path = m_sandbox->path("missing/folder/run.scr");
        ModalCatcher catcher;
        QVERIFY(!AQOpenScriptFileForRecord(path, "2"));
        QCOMPARE(catcher.title(), QStringLiteral("Error"));
        QCOMPARE(catcher.text(), QString("Unable to create file \"%1\"").arg(path));
        QVERIFY(!AQIsScriptRecordActive());
        startRecording(); // recording is possible afterwards
    }

    void unwritableJournal()
    {
        AQCloseScript();
        const QString base = m_sandbox->path("missing/journal");
        {
            ModalCatcher catcher;
            AQInitializeNonVelmoraScripting(QFile::encodeName(base).constData(), false, true);
            QCOMPARE(catcher.title(), QStringLiteral("Error"));
            QCOMPARE(catcher.text(), QString("Unable to create journal file \"%1.jrl\"").arg(base));
        }
        // Scripting works without a journal.
        startRecording();
        click();
        QCOMPARE(scriptRecords(), QStringList{Head});
    }
};

QTEST_MAIN(tst_AQScriptsRecording)
#include "tst_aqscriptsrecording.moc"
