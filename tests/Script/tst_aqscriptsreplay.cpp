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
    Probe(const QString& name, QObject* parent)
        : QObject(parent)
    {
        AQObjects::add(this, name);
    }
    void scriptReplay(const QString& signal, const QStringList& args) override
    {
        // Replay runs with recording suppressed.
        QVERIFY(AQScripts::isRecordingDisabled());
        g_log << objectName() + QLatin1Char(':') + signal + QLatin1Char('(') + args.join(QLatin1Char('|'))
                + QLatin1Char(')');
        if (onReplay)
            onReplay(signal, args);
    }
    std::function<void(const QString&, const QStringList&)> onReplay;
};
} // namespace

class tst_AQScriptsReplay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void splitLine_data();
    void splitLine();
    void versionCheck_data();
    void versionCheck();
    void commandsReplayInOrder();
    void continuationReplayedOnce();
    void strayFillins();
    void fixedScriptReport();
    void unreadableAndEmptyFile();
    void objectKinds();
    void modalDialogPullsItsLines();
    void modalPathDropsQtSignalAnywhere();
    void fillinsDuringReplay_data();
    void fillinsDuringReplay();
    void echoToJournalThenClose();
    void pausesProcessEvents_data();
    void pausesProcessEvents();
    void stopFromReplayedCommand();
    void simulationWait();
    void resetReplayState();
    void progressReported();

private:
    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<QObject> m_window;
    Probe* m_apply = nullptr;
    Probe* m_other = nullptr;
    QString m_script;

    bool replay(const QStringList& body, int interval = 0, int version = 2)
    {
        m_sandbox->writeScript(m_script, body, version);
        return AQOpenScriptFileForReplay(m_script, interval, 2);
    }
};

void tst_AQScriptsReplay::init()
{
    m_sandbox = std::make_unique<ScriptSandbox>();
    m_script = m_sandbox->path(QStringLiteral("run.scr"));
    AQSettings::setUIAScriptPath(m_script);
    m_window = std::make_unique<QObject>();
    AQObjects::add(m_window.get(), QStringLiteral("Window"));
    m_apply = new Probe(QStringLiteral("Apply"), m_window.get());
    m_other = new Probe(QStringLiteral("Other"), m_window.get());
    g_log.clear();
    AQScripts::setScriptEnableInterval(true);
    AQScripts::setSimualationStatus(true);
}

void tst_AQScriptsReplay::cleanup()
{
    m_window.reset();
    m_sandbox.reset();
    AQSetReplayProgressFunc(nullptr);
}

void tst_AQScriptsReplay::splitLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("tokens");

    QTest::newRow("plain") << "QtSignal a b c" << QStringList{"QtSignal", "a", "b", "c"};
    QTest::newRow("runs of blanks") << "  a   b  " << QStringList{"a", "b"};
    QTest::newRow("quoted blank kept") << "x \"two words\" y" << QStringList{"x", "two words", "y"};
    QTest::newRow("empty quotes vanish") << "a \"\" b" << QStringList{"a", "b"};
    QTest::newRow("quote splits a word") << "ab\"cd\"ef" << QStringList{"ab", "cd", "ef"};
    QTest::newRow("tab stays in token") << "#\tversion: 2" << QStringList{"#\tversion:", "2"};
    QTest::newRow("unclosed quote") << "a \"b c" << QStringList{"a", "b c"};
    QTest::newRow("marks split") << "x @#@\"abc\"@#@" << QStringList{"x", "@#@", "abc", "@#@"};
    QTest::newRow("empty") << "" << QStringList();
    QTest::newRow("only quotes") << "\"\"\"" << QStringList();
}

void tst_AQScriptsReplay::splitLine()
{
    QFETCH(QString, line);
    QFETCH(QStringList, tokens);
    QCOMPARE(AQScripts::splitLine(line), tokens);
}

void tst_AQScriptsReplay::versionCheck_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<bool>("accepted");

    const QString cmd = QStringLiteral("QtSignal Window Apply clicked");
    QTest::newRow("version 2") << QStringList{"#\tfile: x", "#\tstart time: t", "#\tversion: 2", cmd} << true;
    QTest::newRow("version 3 in capitals") << QStringList{"#", "#", "#\tVERSION: 3", cmd} << true;
    QTest::newRow("version 1") << QStringList{"#", "#", "#\tversion: 1", cmd} << false;
    QTest::newRow("no number") << QStringList{"#", "#", "#\tversion:", cmd} << false;
    QTest::newRow("not a number") << QStringList{"#", "#", "#\tversion: two", cmd} << false;
    QTest::newRow("third line is a command") << QStringList{"#", "#", cmd, cmd} << false;
    QTest::newRow("two lines only") << QStringList{"#\tfile: x", cmd} << true;
}

void tst_AQScriptsReplay::versionCheck()
{
    QFETCH(QStringList, lines);
    QFETCH(bool, accepted);

    ScriptSandbox::writeLines(m_script, lines);
    ModalCatcher catcher;
    QCOMPARE(AQOpenScriptFileForReplay(m_script, 0, 2), accepted);
    QVERIFY(!AQIsScriptReplayActive());
    QCOMPARE(catcher.caught(), !accepted);
    if (!accepted) {
        QCOMPARE(catcher.title(), QStringLiteral("Error"));
        QCOMPARE(catcher.text(), QStringLiteral("Cannot load the script because you are using an older version of "
                                                "the script file. Migrate the file to a later version that supports "
                                                "the script file."));
        QVERIFY(!g_log.contains(QStringLiteral("Apply:clicked()")));
    } else {
        QVERIFY(g_log.contains(QStringLiteral("Apply:clicked()")));
    }
}

void tst_AQScriptsReplay::commandsReplayInOrder()
{
    QVERIFY(replay({"QtSignal Window Apply clicked on", "# a comment", "", "QtSignal Window Other toggled off",
                    "QtSignal   Window  Apply   valueChanged \"-1\"", "QtSignal Window Apply",
                    "QtSignal Window Apply textChanged @#@\"abc\"@#@", "QtSignal Window Apply textChanged @#@\"@#@"}));
    QCOMPARE(g_log, (QStringList{"Apply:clicked(on)", "Other:toggled(off)", "Apply:valueChanged(-1)",
                                 "Apply:textChanged(\"|abc|\")", "Apply:textChanged(\"|\")"}));
}

void tst_AQScriptsReplay::continuationReplayedOnce()
{
    QVERIFY(replay({"QtSignal Window Apply many a b +", "QtSignal c d +", "QtSignal e", "QtSignal Window Other x"}));
    QCOMPARE(g_log, (QStringList{"Apply:many(a|b|c|d|e)", "Other:x()"}));
}

void tst_AQScriptsReplay::strayFillins()
{
    QVERIFY(replay({"QtFillin Yes", "QtFillin Param Value", "QtSignal Window Apply clicked"}));
    QCOMPARE(g_log, QStringList{"Apply:clicked()"});
    // The three-token fill-in reads as a lookup of "Value" under "QtFillin".
    const QStringList report = ScriptSandbox::readLines(m_sandbox->path("fixedScriptOperation.txt"));
    QCOMPARE(report.value(3), QStringLiteral("Note2: Please only check Param"));
}

void tst_AQScriptsReplay::fixedScriptReport()
{
    QVERIFY(replay({"QtSignal Window Missing clicked", "QtSignal Nowhere Apply clicked", "QtSignal Window Apply clicked",
                    "QtSignal Lonely Lonely accepted"}));
    QCOMPARE(g_log, QStringList{"Apply:clicked()"});

    const QStringList report = ScriptSandbox::readLines(m_sandbox->path("fixedScriptOperation.txt"));
    const QStringList block = {
        "exception/warning info %1",
        "Tips:if regressions cases test successs and ignore belows notes",
        "Note1:if regressions case test failed, you can only re-record failed operations in GUI separatly;",
        "Note2: Please only check %2",
        "Note3: belows failed operation need re-record:",
        "",
        "Note4: after re-record and please only replace old corresponding operation with new recorded operion in "
        "current * .txt",
        "",
    };
    const QStringList names{"Missing", "Apply", "Lonely"};
    QCOMPARE(report.size(), 8 * names.size());
    // The counter runs for the whole process.
    const int first = report.first().section(' ', -1).toInt();
    QVERIFY(first >= 1);
    for (int b = 0; b < names.size(); ++b) {
        for (int i = 0; i < 8; ++i) {
            QString expected = block.at(i);
            if (i == 0)
                expected = expected.arg(first + b);
            if (i == 3)
                expected = expected.arg(names.at(b));
            QCOMPARE(report.at(8 * b + i), expected);
        }
    }
}

void tst_AQScriptsReplay::unreadableAndEmptyFile()
{
    ScriptSandbox::writeLines(m_script, {});
    QVERIFY(AQOpenScriptFileForReplay(m_script, 0, 2));

    const QString missing = m_sandbox->path(QStringLiteral("absent.scr"));
    ModalCatcher catcher;
    QVERIFY(!AQOpenScriptFileForReplay(missing, 0, 2));
    QCOMPARE(catcher.title(), QStringLiteral("Error"));
    QCOMPARE(catcher.text(), QStringLiteral("Unable to read file \"%1\"").arg(missing));
    QVERIFY(!AQIsScriptReplayActive());
}

void tst_AQScriptsReplay::objectKinds()
{
    auto* plain = new QObject(m_window.get());
    AQObjects::add(plain, QStringLiteral("Plain"));
    auto* action = new AQAction(QStringLiteral("Grid"), QStringLiteral("Grid"), m_window.get(), true);
    action->setCheckable(true);
    int triggered = 0;
    connect(action, &AQAction::ATriggered, this, [&] { ++triggered; });

    QVERIFY(replay({"QtSignal Window Plain clicked", "QtSignal Window Grid triggered 1", "QtSignal Window Grid triggered",
                    "QtSignal Window Apply clicked"}));
    QCOMPARE(triggered, 2);
    QVERIFY(!action->isChecked()); // set, then toggled back
    QCOMPARE(g_log, QStringList{"Apply:clicked()"});
}

void tst_AQScriptsReplay::modalDialogPullsItsLines()
{
    m_apply->onReplay = [](const QString& signal, const QStringList&) {
        if (signal != QLatin1String("open"))
            return;
        g_log << QStringLiteral("dialog opened");
        while (AQScripts::processNextModalScriptCommand()) {
            if (g_log.last() == QLatin1String("Other:close()"))
                break;
        }
        g_log << QStringLiteral("dialog closed");
    };
    QVERIFY(replay({"QtSignal Window Apply open", "QtSignal Window Other set a +", "QtSignal b", "",
                    "QtSignal Window Other close", "QtSignal Window Other after"}));
    QCOMPARE(g_log, (QStringList{"Apply:open()", "dialog opened", "Other:set(a|b)", "Other:close()", "dialog closed",
                                 "Other:after()"}));
}

void tst_AQScriptsReplay::modalPathDropsQtSignalAnywhere()
{
    m_apply->onReplay = [](const QString& signal, const QStringList&) {
        if (signal == QLatin1String("open"))
            QVERIFY(AQScripts::processNextModalScriptCommand());
    };
    // The modeless path keeps a "QtSignal" that is not the first word.
    QVERIFY(replay({"QtSignal Window Apply open", "QtSignal Window Other set x QtSignal y",
                    "QtSignal Window Other set x QtSignal y"}));
    QCOMPARE(g_log, (QStringList{"Apply:open()", "Other:set(x|y)", "Other:set(x|QtSignal|y)"}));
}

void tst_AQScriptsReplay::fillinsDuringReplay_data()
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
    QTest::newRow("param missing") << "QtFillin a.txt" << "FileName" << "";
}

void tst_AQScriptsReplay::fillinsDuringReplay()
{
    QFETCH(QString, fillinLine);
    QFETCH(QString, param);
    QFETCH(QString, answer);

    QString got = QStringLiteral("<not asked>");
    m_apply->onReplay = [&](const QString& signal, const QStringList&) {
        if (signal == QLatin1String("ask"))
            got = param.isEmpty() ? AQScripts::getFillin() : AQScripts::getParamFillin(param);
    };
    QVERIFY(replay({"QtSignal Window Apply ask", fillinLine, "QtSignal Window Apply done"}));
    QCOMPARE(got, answer);
    // The line is used up whether it answered or not.
    QCOMPARE(g_log.size(), 2);
    const QStringList journal = ScriptSandbox::recordLines(m_sandbox->journalPath());
    if (!answer.isEmpty()) {
        const QString echoed = answer.contains(' ') ? '"' + answer + '"' : answer;
        QCOMPARE(journal.value(1), QStringLiteral("QtFillin ") + echoed);
    }
}

void tst_AQScriptsReplay::echoToJournalThenClose()
{
    QVERIFY(replay({"QtSignal Window Apply set \"two words\" plain", "QtSignal Window Missing clicked -1"}));
    const QStringList journal = ScriptSandbox::readLines(m_sandbox->journalPath());
    QCOMPARE(journal.mid(1), (QStringList{"QtSignal Window Apply set \"two words\" plain",
                                          "QtSignal Window Missing clicked -1"}));
    // A replay is the last thing journalled.
    AQWriteToScript(QStringLiteral("after replay"));
    QCOMPARE(ScriptSandbox::readLines(m_sandbox->journalPath()).size(), journal.size());
}

void tst_AQScriptsReplay::pausesProcessEvents_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<bool>("ignoreFirst");
    QTest::addColumn<bool>("intervalEnabled");
    QTest::addColumn<int>("timerSeenAtLine"); // 0: not during the replay

    QTest::newRow("interval 0: no event processing") << 0 << false << true << 0;
    QTest::newRow("interval 1: events after line 1") << 1 << false << true << 1;
    QTest::newRow("ignored command: after line 2") << 1 << true << true << 2;
    QTest::newRow("pause switched off") << 1 << false << false << 0;
}

void tst_AQScriptsReplay::pausesProcessEvents()
{
    QFETCH(int, interval);
    QFETCH(bool, ignoreFirst);
    QFETCH(bool, intervalEnabled);
    QFETCH(int, timerSeenAtLine);

    if (ignoreFirst)
        AQScripts::addIgnoreScriptIntervalCommand(QStringLiteral("Apply"), QStringLiteral("first"));
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
    const QStringList expected = timerSeenAtLine == 0 ? QStringList{"no", "no", "no"}
        : timerSeenAtLine == 1                        ? QStringList{"no", "yes", "yes"}
                                                      : QStringList{"no", "no", "yes"};
    QCOMPARE(seen, expected);
    // The switch is restored after an ignored command.
    QCOMPARE(AQScripts::getScriptEnableInterval(), intervalEnabled);
    QCOMPARE(AQScripts::getScriptReplayInterval(), interval);
}

void tst_AQScriptsReplay::stopFromReplayedCommand()
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

void tst_AQScriptsReplay::simulationWait()
{
    auto* sim = new Probe(QStringLiteral("SimulationCommand_button"), m_window.get());
    sim->onReplay = [](const QString&, const QStringList&) {
        // The engine cleared the status before replaying the command.
        QVERIFY(!AQScripts::getSimualationStatus());
        QTimer::singleShot(20, [] {
            g_log << QStringLiteral("simulation finished");
            AQScripts::setSimualationStatus(true);
        });
    };
    QVERIFY(replay({"QtSignal Window SimulationCommand_button clicked", "QtSignal Window Apply after"}));
    QCOMPARE(g_log, (QStringList{"SimulationCommand_button:clicked()", "simulation finished", "Apply:after()"}));

    // A stop also ends the wait.
    g_log.clear();
    sim->onReplay = [](const QString&, const QStringList&) { QTimer::singleShot(20, [] { AQStopScriptReplay(); }); };
    QVERIFY(!replay({"QtSignal Window SimulationCommand_button run", "QtSignal Window Apply never"}));
    QCOMPARE(g_log, QStringList{"SimulationCommand_button:run()"});
    AQScripts::setSimualationStatus(true);
}

void tst_AQScriptsReplay::resetReplayState()
{
    bool activeInside = false;
    bool activeAfterReset = true;
    m_apply->onReplay = [&](const QString&, const QStringList&) {
        activeInside = AQIsScriptReplayActive();
        AQResetReplayState();
        activeAfterReset = AQIsScriptReplayActive();
    };
    QVERIFY(replay({"QtSignal Window Apply clicked"}));
    QVERIFY(activeInside);
    QVERIFY(!activeAfterReset);
}

void tst_AQScriptsReplay::progressReported()
{
    QList<QPair<int, int>> progress;
    AQSetReplayProgressFunc([&](int line, int total) { progress << qMakePair(line, total); });
    // Lines a dialog reads for itself count as well.
    m_apply->onReplay = [](const QString& signal, const QStringList&) {
        if (signal == QLatin1String("open"))
            AQScripts::processNextModalScriptCommand();
    };
    QVERIFY(replay({"QtSignal Window Apply a", "QtSignal Window Apply open", "QtSignal Window Other inside",
                    "QtSignal Window Apply b"}));
    QCOMPARE(progress.size(), 7);
    for (int i = 0; i < progress.size(); ++i)
        QCOMPARE(progress.at(i), qMakePair(i + 1, 7));
}

QTEST_MAIN(tst_AQScriptsReplay)
#include "tst_aqscriptsreplay.moc"
