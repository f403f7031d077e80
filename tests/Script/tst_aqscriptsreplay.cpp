#include "ModalCatcher.h"
#include "ScriptSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScripts.h>
#include <Script/IAQScriptable.h>
#include <Scriptable/AQAction.h>
#include <Settings/AQSettings.h>

#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

using namespace QtUIBase;

namespace {
// Every replayed operation lands in one shared log, in order.
QStringList g_log;

class Probe : public QObject, public IAQScriptable
{
public:
    Probe(const QString& name, QObject* parent) : QObject(parent) { AQObjects::add(this, name); }
    void scriptReplay(const QString& signal, const QStringList& args) override
    {
        QVERIFY(AQScripts::isRecordingDisabled()); // replay runs with recording suppressed
        g_log << objectName() + ':' + signal + '(' + args.join('|') + ')';
        if (onReplay)
            onReplay(signal, args);
    }
    std::function<void(const QString&, const QStringList&)> onReplay;
};

// A replayed command that runs a dialog pulling its own lines.
void pullOneLine(const QString& signal, const QStringList&)
{
    if (signal == QLatin1String("open"))
        QVERIFY(AQScripts::processNextModalScriptCommand());
}
} // namespace

class tst_AQScriptsReplay : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<QObject> m_window;
    Probe* m_apply = nullptr;
    Probe* m_other = nullptr;
    QString m_script;

    bool replay(const QStringList& body, int interval = 0)
    {
        m_sandbox->writeScript(m_script, body);
        return AQOpenScriptFileForReplay(m_script, interval, 2);
    }
    QStringList report() const { return ScriptSandbox::readLines(m_sandbox->path("fixedScriptOperation.txt")); }

private Q_SLOTS:
    void init()
    {
        m_sandbox = std::make_unique<ScriptSandbox>();
        m_script = m_sandbox->path("run.scr");
        AQSettings::setUIAScriptPath(m_script);
        m_window = std::make_unique<QObject>();
        AQObjects::add(m_window.get(), "Window");
        m_apply = new Probe("Apply", m_window.get());
        m_other = new Probe("Other", m_window.get());
        g_log.clear();
        AQScripts::setScriptEnableInterval(true);
        AQScripts::setSimualationStatus(true);
    }

    void cleanup()
    {
        m_window.reset();
        m_sandbox.reset();
        AQSetReplayProgressFunc(nullptr);
    }

    void splitLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("tokens");
        QTest::newRow("runs of blanks") << "  a   b  " << QStringList{"a", "b"};
        QTest::newRow("quoted blank kept") << "x \"two words\" y" << QStringList{"x", "two words", "y"};
        QTest::newRow("empty quotes vanish") << "a \"\" b" << QStringList{"a", "b"};
        QTest::newRow("quote splits a word") << "ab\"cd\"ef" << QStringList{"ab", "cd", "ef"};
        QTest::newRow("tab stays in token") << "#\tversion: 2" << QStringList{"#\tversion:", "2"};
        QTest::newRow("unclosed quote") << "a \"b c" << QStringList{"a", "b c"};
        QTest::newRow("marks split") << "x @#@\"abc\"@#@" << QStringList{"x", "@#@", "abc", "@#@"};
    }

    void splitLine()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, tokens);
        QCOMPARE(AQScripts::splitLine(line), tokens);
    }

    void openForReplay_data()
    {
        QTest::addColumn<QStringList>("lines"); // "absent": no file
        QTest::addColumn<QString>("error");     // the box's text, empty: none
        const QString cmd = "QtSignal Window Apply clicked";
        const QString old = "Cannot load the script because you are using an older version of the script file. "
                            "Migrate the file to a later version that supports the script file.";
        QTest::newRow("version 2") << QStringList{"#\tfile: x", "#\tstart time: t", "#\tversion: 2", cmd} << "";
        QTest::newRow("version 3 in capitals") << QStringList{"#", "#", "#\tVERSION: 3", cmd} << "";
        QTest::newRow("version 1") << QStringList{"#", "#", "#\tversion: 1", cmd} << old;
        QTest::newRow("no number") << QStringList{"#", "#", "#\tversion:", cmd} << old;
        QTest::newRow("not a number") << QStringList{"#", "#", "#\tversion: two", cmd} << old;
        QTest::newRow("third line is a command") << QStringList{"#", "#", cmd, cmd} << old;
        QTest::newRow("two lines only") << QStringList{"#\tfile: x", cmd} << "";
        QTest::newRow("empty file") << QStringList() << "";
        QTest::newRow("no file") << QStringList{"absent"} << "Unable to read file \"%1\"";
    }

    void openForReplay()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, error);
        if (lines != QStringList{"absent"})
            ScriptSandbox::writeLines(m_script, lines);
        else
            m_script = m_sandbox->path("absent.scr");
        ModalCatcher catcher;
        QCOMPARE(AQOpenScriptFileForReplay(m_script, 0, 2), error.isEmpty());
        QVERIFY(!AQIsScriptReplayActive());
        QCOMPARE(g_log.contains("Apply:clicked()"), error.isEmpty() && lines.contains("QtSignal Window Apply clicked"));
        QCOMPARE(catcher.title(), error.isEmpty() ? QString() : QStringLiteral("Error"));
        QCOMPARE(catcher.text(), QString(error).replace("%1", m_script));
    }

    void commandsReplayInOrder()
    {
        AQObjects::add(new QObject(m_window.get()), "Plain"); // registered, but nothing to replay
        QVERIFY(replay({"QtSignal Window Apply clicked \"two words\"", "# a comment", "",
                        "QtSignal Window Other toggled off", "QtSignal   Window  Apply   valueChanged \"-1\"",
                        "QtSignal Window Apply", "QtSignal Window Plain clicked",
                        "QtSignal Window Apply textChanged @#@\"abc\"@#@", "QtSignal Window Apply textChanged @#@\"@#@",
                        "QtSignal Window Apply many a b +", "QtSignal c d +", "QtSignal e"}));
        QCOMPARE(g_log, (QStringList{"Apply:clicked(two words)", "Other:toggled(off)", "Apply:valueChanged(-1)",
                                     "Apply:textChanged(\"|abc|\")", "Apply:textChanged(\"|\")",
                                     "Apply:many(a|b|c|d|e)"}));
        // Each command is echoed to the journal, quoting only texts with blanks.
        QCOMPARE(ScriptSandbox::recordLines(m_sandbox->journalPath()).mid(0, 3),
                 (QStringList{"QtSignal Window Apply clicked \"two words\"", "QtSignal Window Other toggled off",
                              "QtSignal Window Apply valueChanged -1"}));
        // A replay is the last thing journalled.
        const int journalled = ScriptSandbox::readLines(m_sandbox->journalPath()).size();
        AQWriteToScript("after replay");
        QCOMPARE(ScriptSandbox::readLines(m_sandbox->journalPath()).size(), journalled);
    }

    void fixedScriptReport()
    {
        // A stray fill-in is skipped; one of three tokens reads as a lookup
        // of "Value" under "QtFillin".
        QVERIFY(replay({"QtSignal Window Missing clicked", "QtSignal Nowhere Apply clicked", "QtFillin Yes",
                        "QtFillin Param Value", "QtSignal Window Apply clicked", "QtSignal Lonely Lonely accepted"}));
        QCOMPARE(g_log, QStringList{"Apply:clicked()"});

        const QStringList lines = report();
        const QStringList names{"Missing", "Apply", "Param", "Lonely"};
        QCOMPARE(lines.size(), 8 * names.size());
        const int first = lines.first().section(' ', -1).toInt(); // the counter runs for the whole process
        QVERIFY(first >= 1);
        for (int b = 0; b < names.size(); ++b) {
            QCOMPARE(lines.mid(8 * b, 8),
                     (QStringList{QString("exception/warning info %1").arg(first + b),
                                  "Tips:if regressions cases test successs and ignore belows notes",
                                  "Note1:if regressions case test failed, you can only re-record failed operations in "
                                  "GUI separatly;",
                                  "Note2: Please only check " + names.at(b),
                                  "Note3: belows failed operation need re-record:", "",
                                  "Note4: after re-record and please only replace old corresponding operation with "
                                  "new recorded operion in current * .txt",
                                  ""}));
        }
    }

    void modalDialogPullsItsLines()
    {
        m_apply->onReplay = [](const QString& signal, const QStringList&) {
            if (signal != QLatin1String("open"))
                return;
            g_log << "dialog opened";
            while (AQScripts::processNextModalScriptCommand() && g_log.last() != QLatin1String("Other:close()")) {
            }
            g_log << "dialog closed";
        };
        // The modal path drops "QtSignal" anywhere in a line, the modeless
        // path only as the first word.
        QVERIFY(replay({"QtSignal Window Apply open", "QtSignal Window Other set a +", "QtSignal b", "",
                        "QtSignal Window Other set x QtSignal y", "QtSignal Window Other close",
                        "QtSignal Window Other set x QtSignal y"}));
        QCOMPARE(g_log, (QStringList{"Apply:open()", "dialog opened", "Other:set(a|b)", "Other:set(x|y)",
                                     "Other:close()", "dialog closed", "Other:set(x|QtSignal|y)"}));
    }

    void fillinsDuringReplay_data()
    {
        QTest::addColumn<QString>("fillinLine");
        QTest::addColumn<QString>("param");
        QTest::addColumn<QString>("answer");
        QTest::newRow("value") << "QtFillin Yes" << "" << "Yes";
        QTest::newRow("quoted value") << "QtFillin \"C:/a b.3dem\"" << "" << "C:/a b.3dem";
        QTest::newRow("not a fill-in") << "QtSignal Window Other x" << "" << "";
        QTest::newRow("three tokens for a plain fill-in") << "QtFillin P v" << "" << "";
        QTest::newRow("param") << "QtFillin FileName a.txt" << "FileName" << "a.txt";
        QTest::newRow("other param") << "QtFillin Other a.txt" << "FileName" << "";
    }

    void fillinsDuringReplay()
    {
        QFETCH(QString, fillinLine);
        QFETCH(QString, param);
        QFETCH(QString, answer);
        QString got = "<not asked>";
        m_apply->onReplay = [&](const QString& signal, const QStringList&) {
            if (signal == QLatin1String("ask"))
                got = param.isEmpty() ? AQScripts::getFillin() : AQScripts::getParamFillin(param);
        };
        QVERIFY(replay({"QtSignal Window Apply ask", fillinLine, "QtSignal Window Apply done"}));
        QCOMPARE(got, answer);
        QCOMPARE(g_log.size(), 2); // the line is used up whether it answered or not
        if (!answer.isEmpty()) {
            const QString echoed = answer.contains(' ') ? '"' + answer + '"' : answer;
            QCOMPARE(ScriptSandbox::recordLines(m_sandbox->journalPath()).value(1), "QtFillin " + echoed);
        }
    }

    void pausesProcessEvents_data()
    {
        QTest::addColumn<int>("interval");
        QTest::addColumn<bool>("ignoreFirst");
        QTest::addColumn<bool>("intervalEnabled");
        QTest::addColumn<QString>("timerSeen"); // at each of the three replayed lines
        QTest::newRow("interval 0: no event processing") << 0 << false << true << "no no no";
        QTest::newRow("interval 1: events after line 1") << 1 << false << true << "no yes yes";
        QTest::newRow("ignored command: after line 2") << 1 << true << true << "no no yes";
        QTest::newRow("pause switched off") << 1 << false << false << "no no no";
    }

    void pausesProcessEvents()
    {
        QFETCH(int, interval);
        QFETCH(bool, ignoreFirst);
        QFETCH(bool, intervalEnabled);
        QFETCH(QString, timerSeen);
        if (ignoreFirst)
            AQScripts::addIgnoreScriptIntervalCommand("Apply", "first");
        AQScripts::setScriptEnableInterval(intervalEnabled);
        bool fired = false;
        QStringList seen;
        QObject context; // drops a timer left pending when no events ran
        m_apply->onReplay = [&](const QString&, const QStringList&) {
            seen << (fired ? "yes" : "no");
            QTimer::singleShot(0, &context, [&] { fired = true; });
        };
        m_other->onReplay = [&](const QString&, const QStringList&) { seen << (fired ? "yes" : "no"); };
        QVERIFY(replay({"QtSignal Window Apply first", "QtSignal Window Other second", "QtSignal Window Other third"},
                       interval));
        QCOMPARE(seen.join(' '), timerSeen);
        // The switch is restored after an ignored command.
        QCOMPARE(AQScripts::getScriptEnableInterval(), intervalEnabled);
        QCOMPARE(AQScripts::getScriptReplayInterval(), interval);
    }

    void stopFromReplayedCommand()
    {
        m_apply->onReplay = [](const QString& signal, const QStringList&) {
            if (signal == QLatin1String("stop"))
                AQStopScriptReplay();
        };
        QVERIFY(!replay({"QtSignal Window Apply first", "QtSignal Window Apply stop", "QtSignal Window Apply never"}));
        QCOMPARE(g_log, (QStringList{"Apply:first()", "Apply:stop()"}));
        QVERIFY(!AQIsScriptReplayActive());
        // The next replay starts afresh.
        QVERIFY(replay({"QtSignal Window Other again"}));
        QCOMPARE(g_log.last(), QStringLiteral("Other:again()"));
    }

    void simulationWait()
    {
        auto* sim = new Probe("SimulationCommand_button", m_window.get());
        sim->onReplay = [](const QString&, const QStringList&) {
            QVERIFY(!AQScripts::getSimualationStatus()); // cleared before the command was replayed
            QTimer::singleShot(20, [] {
                g_log << "simulation finished";
                AQScripts::setSimualationStatus(true);
            });
        };
        QVERIFY(replay({"QtSignal Window SimulationCommand_button clicked", "QtSignal Window Apply after"}));
        QCOMPARE(g_log, (QStringList{"SimulationCommand_button:clicked()", "simulation finished", "Apply:after()"}));

        // A stop also ends the wait.
        g_log.clear();
        sim->onReplay = [](const QString&, const QStringList&) { QTimer::singleShot(20, &AQStopScriptReplay); };
        QVERIFY(!replay({"QtSignal Window SimulationCommand_button run", "QtSignal Window Apply never"}));
        QCOMPARE(g_log, QStringList{"SimulationCommand_button:run()"});
        AQScripts::setSimualationStatus(true);
    }

    void progressReported()
    {
        QList<QPair<int, int>> progress;
        AQSetReplayProgressFunc([&](int line, int total) { progress << qMakePair(line, total); });
        m_apply->onReplay = pullOneLine; // lines a dialog reads for itself count as well
        QVERIFY(replay({"QtSignal Window Apply a", "QtSignal Window Apply open", "QtSignal Window Other inside",
                        "QtSignal Window Apply b"}));
        QCOMPARE(progress.size(), 7);
        for (int i = 0; i < progress.size(); ++i)
            QCOMPARE(progress.at(i), qMakePair(i + 1, 7));
    }
};

QTEST_MAIN(tst_AQScriptsReplay)
#include "tst_aqscriptsreplay.moc"
