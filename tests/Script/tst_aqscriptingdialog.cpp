#include "ModalCatcher.h"
#include "ScriptSandbox.h"
#include "SettingsSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptingDialog.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>
#include <Settings/AQSettings.h>

#include <QDir>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

/// The dialog with its file questions answered by the test.
class AnsweredScriptingDialog : public AQScriptingDialog
{
public:
    QStringList answers;
    QString folder;

protected:
    QString askScriptFile(FilePurpose) override { return answers.isEmpty() ? QString() : answers.takeFirst(); }
    QString askMigrationFolder() override { return folder; }
};

class tst_AQScriptingDialog : public QObject
{
    Q_OBJECT

    QPushButton* button(const QString& name) const { return m_dialog->findChild<QPushButton*>(name); }
    void click(const QString& name) const { QTest::mouseClick(button(name), Qt::LeftButton); }

    // The fastest replay speed, as a user sets it: 200 ms between lines.
    static void setFastestSpeed(const QDialog& dialog)
    {
        auto* slider = dialog.findChild<QSlider*>("speedSlider");
        QTest::keyClick(slider, Qt::Key_End);
        QTest::keyClick(slider, Qt::Key_Left);
    }

    std::unique_ptr<SettingsSandbox> m_settings;
    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<AnsweredScriptingDialog> m_dialog;

private Q_SLOTS:
    void initTestCase() { m_settings = std::make_unique<SettingsSandbox>(); }

    void init()
    {
        m_settings->clear();
        m_sandbox = std::make_unique<ScriptSandbox>();
        qunsetenv("_QUORVEL_SHOW_MIGRATE_FILE");
        m_dialog = std::make_unique<AnsweredScriptingDialog>();
        m_dialog->setExeName("gallery");
        m_dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
    }

    void cleanup()
    {
        m_dialog.reset();
        m_sandbox.reset();
        qunsetenv("_QUORVEL_SHOW_MIGRATE_FILE");
    }

    void speedSliderSetsReplayInterval_data()
    {
        QTest::addColumn<QList<int>>("keys");
        QTest::addColumn<int>("interval");
        QTest::newRow("default 1200") << QList<int>() << 800;
        QTest::newRow("1800") << QList<int>{Qt::Key_End, Qt::Key_Left} << 200;
        QTest::newRow("fastest still pauses") << QList<int>{Qt::Key_End} << 400;
    }

    void speedSliderSetsReplayInterval()
    {
        QFETCH(QList<int>, keys);
        QFETCH(int, interval);
        auto* slider = m_dialog->findChild<QSlider*>("speedSlider");
        for (const int key : keys)
            QTest::keyClick(slider, Qt::Key(key));
        // An empty script replays at once but still takes the interval.
        const QString script = m_sandbox->path("empty.scr");
        ScriptSandbox::writeLines(script, {});
        m_dialog->answers << script;
        ModalCatcher result;
        click("replayButton");
        QCOMPARE(result.title(), QStringLiteral("info"));
        QCOMPARE(result.text(), QStringLiteral("replay finish"));
        QCOMPARE(AQScripts::getScriptReplayInterval(), interval);
    }

    void fileChoiceBoxes_data()
    {
        QTest::addColumn<QString>("buttonName");
        QTest::addColumn<QString>("file"); // empty: the file question is cancelled
        QTest::addColumn<int>("answer");   // to the box, when it asks
        QTest::addColumn<QString>("box");  // title|text, %1 the file
        QTest::addColumn<bool>("recording");
        const QString missing = "Error|Missing script file name.";
        QTest::newRow("Record, no file") << "recordButton" << "" << 0 << missing << false;
        QTest::newRow("Replay, no file") << "replayButton" << "" << 0 << missing << false;
        QTest::newRow("not a scr file: warned, recorded")
            << "recordButton" << "run.txt" << 0 << "Error|script file is not a scr file,please check." << true;
        const QString exists = "File Exists|File %1 already exists. Do you wish to overwrite this file?";
        QTest::newRow("existing file overwritten") << "recordButton" << "exists.scr" << int(QMessageBox::Yes)
                                                   << exists << true;
        QTest::newRow("existing file kept") << "recordButton" << "exists.scr" << int(QMessageBox::No) << exists
                                            << false;
    }

    void fileChoiceBoxes()
    {
        QFETCH(QString, buttonName);
        QFETCH(QString, file);
        QFETCH(int, answer);
        QFETCH(QString, box);
        QFETCH(bool, recording);
        const QString script = m_sandbox->path(file);
        if (file.startsWith("exists"))
            ScriptSandbox::writeLines(script, {"old content"});
        if (!file.isEmpty())
            m_dialog->answers << script;
        ModalCatcher catcher([answer](QWidget* modal) {
            auto* message = qobject_cast<QMessageBox*>(modal);
            QTest::mouseClick(message->button(answer ? QMessageBox::StandardButton(answer) : QMessageBox::Ok),
                              Qt::LeftButton);
        });
        click(buttonName);
        QCOMPARE(catcher.count(), 1);
        QCOMPARE(catcher.title() + '|' + catcher.text(), box.arg(script));
        QCOMPARE(AQIsScriptRecordActive(), recording);
        // While recording only Stop Record can be pressed.
        QCOMPARE(button("stopRecordButton")->isEnabled(), recording);
        QCOMPARE(button("recordButton")->isEnabled(), !recording);
        QCOMPARE(button("replayButton")->isEnabled(), !recording);
        if (file.startsWith("exists"))
            QCOMPARE(ScriptSandbox::readLines(script).value(0) == "old content", !recording);
        if (!recording)
            return;
        QCOMPARE(m_dialog->getScriptFileName(), script);
        click("stopRecordButton");
        QVERIFY(!AQIsScriptRecordActive());
        QVERIFY(button("recordButton")->isEnabled());
        QCOMPARE(ScriptSandbox::readLines(script).value(2), QStringLiteral("#\tversion: 2"));
        // Migration is offered only when the environment asks for it.
        QCOMPARE(m_dialog->findChild<QPushButton*>("transferButton"), nullptr);
    }

    void recordStopAndReplay()
    {
        QWidget window;
        AQObjects::add(&window, "Window");
        auto* action = new AQAction("Mesh Action", "Mesh", &window, true);
        int meshed = 0;
        connect(action, &AQAction::ATriggered, this, [&] { ++meshed; });
        QMainWindow kept;
        AQSettings::withStateIni([&](AQSettings& s) { s.restoreState("Kept", kept); });
        QCOMPARE(AQSettings::getMainWindow(), &kept);

        const QString folder = m_sandbox->path("session");
        QDir().mkpath(folder + "/DumpRecord");
        ScriptSandbox::writeLines(folder + "/DumpRecord/old.txt", {"stale"});
        const QString script = folder + "/session.scr";

        m_dialog->answers << script;
        click("recordButton");
        QVERIFY(AQIsScriptRecordActive());
        QCOMPARE(AQSettings::getUIAScriptPath(), script);
        QVERIFY(!QFile::exists(folder + "/DumpRecord/old.txt"));
        action->trigger();
        click("stopRecordButton");
        QCOMPARE(ScriptSandbox::recordLines(script), QStringList{"QtSignal Window Mesh_Action triggered"});

        // Scripts are recorded and replayed with the main window at a fixed place and size.
        QSettings recordWindow(folder + "/recordWindow.ini", QSettings::IniFormat);
        QCOMPARE(recordWindow.value("ScriptDialog/Position").toPoint(), QPoint(440, 220));
        QCOMPARE(recordWindow.value("ScriptDialog/Size").toSize(), QSize(1680, 1050));

        m_dialog->answers << script;
        setFastestSpeed(*m_dialog);
        ModalCatcher result;
        click("replayButton");
        QCOMPARE(result.title(), QStringLiteral("info"));
        QCOMPARE(result.text(), QStringLiteral("replay finish"));
        QCOMPARE(meshed, 2);
        QCOMPARE(m_dialog->windowTitle(), "Scripting _" + script);
        QVERIFY(QDir(folder + "/DumpReplay").exists());
        QCOMPARE(AQSettings::getUIAReplayCount().value(script), QVector<int>{1});
        QVERIFY(!button("stopReplayButton")->isEnabled());
        QCOMPARE(kept.pos(), QPoint(440, 220));
        QCOMPARE(kept.size(), QSize(1680, 1050));
        // The replay is journalled beside the script, named after the executable.
        const QStringList journal = ScriptSandbox::readLines(folder + "/gallery.jrl");
        QVERIFY2(journal.contains("QtSignal Window Mesh_Action triggered"), qPrintable(journal.join('\n')));
    }

    void replayFailureReported()
    {
        const QString script = m_sandbox->path("old.scr");
        m_sandbox->writeScript(script, {"QtSignal Window Mesh_Action triggered"}, 1);
        m_dialog->answers << script;
        QStringList seen;
        ModalCatcher boxes([&seen](QWidget* modal) {
            seen << modal->windowTitle() + '|' + qobject_cast<QMessageBox*>(modal)->text();
            modal->close();
        });
        boxes.setRepeat(true);
        click("replayButton");
        QCOMPARE(seen.size(), 2);
        QVERIFY2(seen.first().startsWith("Error|Cannot load the script"), qPrintable(seen.first()));
        QCOMPARE(seen.last(), QStringLiteral("error|replay failed"));
        QVERIFY(!AQIsScriptReplayActive());
    }

    void migrateLines_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("migrated");
        const QStringList head{"#\tfile: a.scr", "#\tstart time: x"};
        const QString version = "#\tversion: 2";
        const QStringList current = head + QStringList{version, "QtFillin c:/p/model.3dem", "QtFillin No",
                                                       "QtFillin model.step", "QtSignal W B clicked"};
        QTest::newRow("current file unchanged") << current << current;
        QTest::newRow("old version, project fill-in last")
            << head + QStringList{"#\tversion: 1", "QtFillin model.3dem"}
            << head + QStringList{version, "QtFillin model.3dem", "QtFillin Yes"};
    }

    void migrateLines()
    {
        QFETCH(QStringList, lines);
        QFETCH(QStringList, migrated);
        QCOMPARE(AQScriptingDialog::migrateScriptLines(lines), migrated);
    }

    void migrateFolder()
    {
        qputenv("_QUORVEL_SHOW_MIGRATE_FILE", "1");
        AnsweredScriptingDialog dialog;
        const QString folder = m_sandbox->path("old");
        QDir().mkpath(folder);
        const QString script = folder + "/old.scr";
        const QString start = "#\tstart time: Mon Jan 5 2015 10:00:00";
        ScriptSandbox::writeLines(script, {"#\tfile: old.scr", start, "QtSignal Window Canvas OrvexMouseEvent 1 10 20",
                                           "QtSignal Window Canvas OrvexMouseEvent 10",
                                           "QtSignal Window Canvas OrvexKeyEvent 15 65",
                                           "QtSignal Window Open_Project triggered", "QtFillin /data/model.3dem",
                                           "QtSignal Window Canvas OrvexMouseEvent 2 10 20"});
        const QStringList notes{"OrvexMouseEvent 1 stays"};
        ScriptSandbox::writeLines(folder + "/notes.txt", notes);

        dialog.folder = folder;
        QTest::mouseClick(dialog.findChild<QPushButton*>("migrateBrowseButton"), Qt::LeftButton);
        QCOMPARE(dialog.findChild<QLineEdit*>("migratePathEdit")->text(), folder);
        QTest::mouseClick(dialog.findChild<QPushButton*>("transferButton"), Qt::LeftButton);

        QCOMPARE(ScriptSandbox::readLines(script),
                 (QStringList{"#\tfile: old.scr", start, "#\tversion: 2",
                              "QtSignal Window Canvas OrvexMouseEvent LButtonDown 10 20",
                              "QtSignal Window Canvas OrvexMouseEvent MouseMove",
                              "QtSignal Window Canvas OrvexKeyEvent KeyDown 65",
                              "QtSignal Window Open_Project triggered",
                              "QtFillin /data/model.3dem", "QtFillin Yes",
                              "QtSignal Window Canvas OrvexMouseEvent LButtonUp 10 20"}));
        QCOMPARE(ScriptSandbox::readLines(folder + "/notes.txt"), notes);
    }
};

QTEST_MAIN(tst_AQScriptingDialog)
#include "tst_aqscriptingdialog.moc"
