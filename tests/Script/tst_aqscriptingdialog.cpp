#include "ModalCatcher.h"
#include "ScriptSandbox.h"
#include "SettingsSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptingDialog.h>
#include <Script/AQScripts.h>
#include <Script/IAQScriptable.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQMessageBox.h>
#include <Settings/AQSettings.h>

#include <QDir>
#include <QLineEdit>
#include <QMainWindow>
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

/// A scriptable widget that only notes what it is asked to replay.
class CanvasProbe : public QWidget, public IAQScriptable
{
public:
    explicit CanvasProbe(QWidget* parent)
        : QWidget(parent)
    {
        AQObjects::add(this, QStringLiteral("Canvas"));
    }
    void scriptReplay(const QString& signal, const QStringList& args) override
    {
        log << (QStringList{signal} + args).join(QLatin1Char(' '));
    }
    QStringList log;
};

class tst_AQScriptingDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void speedScale_data();
    void speedScale();
    void speedSliderSetsReplayInterval();
    void migrateRowOnlyWithSwitch_data();
    void migrateRowOnlyWithSwitch();
    void missingFileName_data();
    void missingFileName();
    void suffixWarnedButRecorded();
    void existingFileAsksFirst_data();
    void existingFileAsksFirst();
    void recordStopAndReplay();
    void replayFailures_data();
    void replayFailures();
    void migrateLines_data();
    void migrateLines();
    void migrateFolderThenReplay();

private:
    QPushButton* button(const QString& name) const { return m_dialog->findChild<QPushButton*>(name); }
    void click(const QString& name) const { QTest::mouseClick(button(name), Qt::LeftButton); }

    std::unique_ptr<SettingsSandbox> m_settings;
    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<AnsweredScriptingDialog> m_dialog;
};

void tst_AQScriptingDialog::initTestCase()
{
    m_settings = std::make_unique<SettingsSandbox>();
}

void tst_AQScriptingDialog::init()
{
    m_settings->clear();
    m_sandbox = std::make_unique<ScriptSandbox>();
    qunsetenv("_QUORVEL_SHOW_MIGRATE_FILE");
    m_dialog = std::make_unique<AnsweredScriptingDialog>();
    m_dialog->setExeName(QStringLiteral("gallery"));
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
}

void tst_AQScriptingDialog::cleanup()
{
    m_dialog.reset();
    m_sandbox.reset();
    qunsetenv("_QUORVEL_SHOW_MIGRATE_FILE");
}

void tst_AQScriptingDialog::speedScale_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("interval");
    QTest::newRow("default 1200") << 1200 << 800;
    QTest::newRow("slowest") << 0 << 2000;
    QTest::newRow("1800") << 1800 << 200;
    QTest::newRow("fastest still pauses") << 2000 << 400;
}

void tst_AQScriptingDialog::speedScale()
{
    QFETCH(int, speed);
    QFETCH(int, interval);
    QCOMPARE(AQScriptingDialog::replayIntervalForSpeed(speed), interval);
}

void tst_AQScriptingDialog::speedSliderSetsReplayInterval()
{
    // The scale itself is covered above; this checks the slider drives it.
    auto* slider = m_dialog->findChild<QSlider*>(QStringLiteral("speedSlider"));
    QCOMPARE(slider->value(), 1200);
    QTest::keyClick(slider, Qt::Key_End);
    QTest::keyClick(slider, Qt::Key_Left);

    // An empty script replays at once but still takes the interval.
    const QString script = m_sandbox->path(QStringLiteral("empty.scr"));
    ScriptSandbox::writeLines(script, {});
    m_dialog->answers << script;
    ModalCatcher result;
    click(QStringLiteral("replayButton"));
    QCOMPARE(result.title(), QStringLiteral("info"));
    QCOMPARE(result.text(), QStringLiteral("replay finish"));
    QCOMPARE(AQScripts::getScriptReplayInterval(), 200);
}

void tst_AQScriptingDialog::migrateRowOnlyWithSwitch_data()
{
    QTest::addColumn<QByteArray>("value"); // empty: not set
    QTest::addColumn<bool>("present");
    QTest::newRow("not set") << QByteArray() << false;
    QTest::newRow("0") << QByteArray("0") << false;
    QTest::newRow("2") << QByteArray("2") << false;
    QTest::newRow("word") << QByteArray("yes") << false;
    QTest::newRow("1") << QByteArray("1") << true;
}

void tst_AQScriptingDialog::migrateRowOnlyWithSwitch()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, present);
    if (!value.isEmpty())
        qputenv("_QUORVEL_SHOW_MIGRATE_FILE", value);
    AQScriptingDialog dialog;
    QCOMPARE(dialog.findChild<QPushButton*>(QStringLiteral("transferButton")) != nullptr, present);
    QCOMPARE(dialog.findChild<QLineEdit*>(QStringLiteral("migratePathEdit")) != nullptr, present);
}

void tst_AQScriptingDialog::missingFileName_data()
{
    QTest::addColumn<QString>("buttonName");
    QTest::newRow("Record") << QStringLiteral("recordButton");
    QTest::newRow("Replay") << QStringLiteral("replayButton");
}

void tst_AQScriptingDialog::missingFileName()
{
    QFETCH(QString, buttonName);
    ModalCatcher message;
    click(buttonName); // the file question is cancelled
    QVERIFY(message.caught());
    QCOMPARE(message.count(), 1);
    QCOMPARE(message.title(), QStringLiteral("Error"));
    QCOMPARE(message.text(), QStringLiteral("Missing script file name."));
    QVERIFY(!AQIsScriptRecordActive());
}

void tst_AQScriptingDialog::suffixWarnedButRecorded()
{
    const QString script = m_sandbox->path(QStringLiteral("run.txt"));
    m_dialog->answers << script;
    ModalCatcher message;
    click(QStringLiteral("recordButton"));
    QCOMPARE(message.title(), QStringLiteral("Error"));
    QCOMPARE(message.text(), QStringLiteral("script file is not a scr file,please check."));
    QVERIFY(AQIsScriptRecordActive());
    QCOMPARE(AQGetScriptFileName(), script);
    QVERIFY(button(QStringLiteral("stopRecordButton"))->isEnabled());
    QVERIFY(!button(QStringLiteral("recordButton"))->isEnabled());
    QVERIFY(!button(QStringLiteral("replayButton"))->isEnabled());
    QCOMPARE(m_dialog->getScriptFileName(), script);

    click(QStringLiteral("stopRecordButton"));
    QVERIFY(!AQIsScriptRecordActive());
    QVERIFY(button(QStringLiteral("recordButton"))->isEnabled());
    QVERIFY(!button(QStringLiteral("stopRecordButton"))->isEnabled());
    QCOMPARE(ScriptSandbox::readLines(script).value(2), QStringLiteral("#\tversion: 2"));
}

void tst_AQScriptingDialog::existingFileAsksFirst_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("recording");
    QTest::newRow("overwrite") << int(QMessageBox::Yes) << true;
    QTest::newRow("keep") << int(QMessageBox::No) << false;
}

void tst_AQScriptingDialog::existingFileAsksFirst()
{
    QFETCH(int, answer);
    QFETCH(bool, recording);
    const QString script = m_sandbox->path(QStringLiteral("exists.scr"));
    ScriptSandbox::writeLines(script, {QStringLiteral("old content")});
    m_dialog->answers << script;
    ModalCatcher question([answer](QWidget* modal) {
        QTest::mouseClick(qobject_cast<QMessageBox*>(modal)->button(QMessageBox::StandardButton(answer)),
                          Qt::LeftButton);
    });
    click(QStringLiteral("recordButton"));
    QCOMPARE(question.title(), QStringLiteral("File Exists"));
    QCOMPARE(question.text(), QStringLiteral("File %1 already exists. Do you wish to overwrite this file?").arg(script));
    QCOMPARE(AQIsScriptRecordActive(), recording);
    QCOMPARE(ScriptSandbox::readLines(script).first() == QStringLiteral("old content"), !recording);
}

void tst_AQScriptingDialog::recordStopAndReplay()
{
    QWidget window;
    AQObjects::add(&window, QStringLiteral("Window"));
    auto* action = new AQAction(QStringLiteral("Mesh Action"), QStringLiteral("Mesh"), &window, true);
    int meshed = 0;
    connect(action, &AQAction::ATriggered, this, [&] { ++meshed; });
    QMainWindow kept;
    AQSettings::withStateIni([&](AQSettings& s) { s.restoreState(QStringLiteral("Kept"), kept); });
    QCOMPARE(AQSettings::getMainWindow(), &kept);

    const QString folder = m_sandbox->path(QStringLiteral("session"));
    QDir().mkpath(folder + QStringLiteral("/DumpRecord"));
    ScriptSandbox::writeLines(folder + QStringLiteral("/DumpRecord/old.txt"), {QStringLiteral("stale")});
    const QString script = folder + QStringLiteral("/session.scr");

    m_dialog->answers << script;
    click(QStringLiteral("recordButton"));
    QVERIFY(AQIsScriptRecordActive());
    QCOMPARE(AQSettings::getUIAScriptPath(), script);
    QVERIFY(!QFile::exists(folder + QStringLiteral("/DumpRecord/old.txt")));
    action->trigger();
    click(QStringLiteral("stopRecordButton"));
    QCOMPARE(ScriptSandbox::recordLines(script), QStringList{QStringLiteral("QtSignal Window Mesh_Action triggered")});

    QSettings recordWindow(folder + QStringLiteral("/recordWindow.ini"), QSettings::IniFormat);
    QCOMPARE(recordWindow.value(QStringLiteral("ScriptDialog/Position")).toPoint(), QPoint(440, 220));
    QCOMPARE(recordWindow.value(QStringLiteral("ScriptDialog/Size")).toSize(), QSize(1680, 1050));

    m_dialog->answers << script;
    ModalCatcher result;
    click(QStringLiteral("replayButton"));
    QCOMPARE(result.title(), QStringLiteral("info"));
    QCOMPARE(result.text(), QStringLiteral("replay finish"));
    QCOMPARE(meshed, 2);
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Scripting _") + script);
    QVERIFY(QDir(folder + QStringLiteral("/DumpReplay")).exists());
    QCOMPARE(AQSettings::getUIAReplayCount().value(script), QVector<int>{1});
    QVERIFY(!button(QStringLiteral("stopReplayButton"))->isEnabled());
    // The window is put at the size the script was recorded at.
    QCOMPARE(kept.pos(), QPoint(440, 220));
    QCOMPARE(kept.size(), QSize(1680, 1050));
    // The replay is journalled beside the script, named after the executable.
    const QStringList journal = ScriptSandbox::readLines(folder + QStringLiteral("/gallery.jrl"));
    QVERIFY2(journal.contains(QStringLiteral("QtSignal Window Mesh_Action triggered")),
             qPrintable(journal.join(QLatin1Char('\n'))));
}

void tst_AQScriptingDialog::replayFailures_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QStringList>("content"); // empty: no file
    QTest::addColumn<QString>("engineMessage");
    QTest::newRow("missing file") << QStringLiteral("gone.scr") << QStringList() << QStringLiteral("Unable to read file");
    QTest::newRow("old version") << QStringLiteral("old.scr")
                                 << QStringList{QStringLiteral("#\tfile: old.scr"), QStringLiteral("#\tstart time: x"),
                                                QStringLiteral("#\tversion: 1"),
                                                QStringLiteral("QtSignal Window Mesh_Action triggered")}
                                 << QStringLiteral("Cannot load the script");
}

void tst_AQScriptingDialog::replayFailures()
{
    QFETCH(QString, fileName);
    QFETCH(QStringList, content);
    QFETCH(QString, engineMessage);
    const QString script = m_sandbox->path(fileName);
    if (!content.isEmpty())
        ScriptSandbox::writeLines(script, content);
    m_dialog->answers << script;
    QStringList seen;
    ModalCatcher boxes([&seen](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        seen << modal->windowTitle() + QLatin1Char('|') + box->text();
        box->close();
    });
    boxes.setRepeat(true);
    click(QStringLiteral("replayButton"));
    QCOMPARE(seen.size(), 2);
    QVERIFY2(seen.first().startsWith(QStringLiteral("Error|") + engineMessage), qPrintable(seen.first()));
    QCOMPARE(seen.last(), QStringLiteral("error|replay failed"));
    QVERIFY(!AQIsScriptReplayActive());
}

void tst_AQScriptingDialog::migrateLines_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("migrated");
    const QString file = QStringLiteral("#\tfile: a.scr");
    const QString start = QStringLiteral("#\tstart time: x");
    const QString version = QStringLiteral("#\tversion: 2");
    QTest::newRow("current file unchanged")
        << QStringList{file, start, version, QStringLiteral("QtSignal W B clicked")}
        << QStringList{file, start, version, QStringLiteral("QtSignal W B clicked")};
    QTest::newRow("old version number")
        << QStringList{file, start, QStringLiteral("#\tversion: 1")} << QStringList{file, start, version};
    QTest::newRow("row 1 is not row 10")
        << QStringList{file, start, version, QStringLiteral("QtSignal W C OrvexMouseEvent 1 3 4"),
                       QStringLiteral("QtSignal W C OrvexMouseEvent 10 3 4"),
                       QStringLiteral("QtSignal W C OrvexMouseEvent 13")}
        << QStringList{file, start, version, QStringLiteral("QtSignal W C OrvexMouseEvent LButtonDown 3 4"),
                       QStringLiteral("QtSignal W C OrvexMouseEvent MouseMove 3 4"),
                       QStringLiteral("QtSignal W C OrvexMouseEvent MouseWheelDown")};
    QTest::newRow("answered project stays")
        << QStringList{file, start, version, QStringLiteral("QtFillin c:/p/model.3dem"), QStringLiteral("QtFillin No")}
        << QStringList{file, start, version, QStringLiteral("QtFillin c:/p/model.3dem"), QStringLiteral("QtFillin No")};
    QTest::newRow("project fill-in last")
        << QStringList{file, start, version, QStringLiteral("QtFillin model.3dem")}
        << QStringList{file, start, version, QStringLiteral("QtFillin model.3dem"), QStringLiteral("QtFillin Yes")};
    QTest::newRow("other fill-in") << QStringList{file, start, version, QStringLiteral("QtFillin model.step")}
                                   << QStringList{file, start, version, QStringLiteral("QtFillin model.step")};
}

void tst_AQScriptingDialog::migrateLines()
{
    QFETCH(QStringList, lines);
    QFETCH(QStringList, migrated);
    QCOMPARE(AQScriptingDialog::migrateScriptLines(lines), migrated);
}

void tst_AQScriptingDialog::migrateFolderThenReplay()
{
    qputenv("_QUORVEL_SHOW_MIGRATE_FILE", "1");
    AnsweredScriptingDialog dialog;
    dialog.setExeName(QStringLiteral("gallery"));
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));

    const QString folder = m_sandbox->path(QStringLiteral("old"));
    QDir().mkpath(folder);
    const QString script = folder + QStringLiteral("/old.scr");
    ScriptSandbox::writeLines(script, {
        QStringLiteral("#\tfile: old.scr"),
        QStringLiteral("#\tstart time: Mon Jan 5 2015 10:00:00"),
        QStringLiteral("QtSignal Window Canvas OrvexMouseEvent 1 10 20"),
        QStringLiteral("QtSignal Window Canvas OrvexMouseEvent 10"),
        QStringLiteral("QtSignal Window Canvas OrvexKeyEvent 15 65"),
        QStringLiteral("QtSignal Window Open_Project triggered"),
        QStringLiteral("QtFillin /data/model.3dem"),
        QStringLiteral("QtSignal Window Canvas OrvexMouseEvent 2 10 20"),
    });
    const QStringList notes{QStringLiteral("OrvexMouseEvent 1 stays")};
    ScriptSandbox::writeLines(folder + QStringLiteral("/notes.txt"), notes);

    dialog.folder = folder;
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("migrateBrowseButton")), Qt::LeftButton);
    QCOMPARE(dialog.findChild<QLineEdit*>(QStringLiteral("migratePathEdit"))->text(), folder);
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("transferButton")), Qt::LeftButton);

    QCOMPARE(ScriptSandbox::readLines(script), (QStringList{
        QStringLiteral("#\tfile: old.scr"),
        QStringLiteral("#\tstart time: Mon Jan 5 2015 10:00:00"),
        QStringLiteral("#\tversion: 2"),
        QStringLiteral("QtSignal Window Canvas OrvexMouseEvent LButtonDown 10 20"),
        QStringLiteral("QtSignal Window Canvas OrvexMouseEvent MouseMove"),
        QStringLiteral("QtSignal Window Canvas OrvexKeyEvent KeyDown 65"),
        QStringLiteral("QtSignal Window Open_Project triggered"),
        QStringLiteral("QtFillin /data/model.3dem"),
        QStringLiteral("QtFillin Yes"),
        QStringLiteral("QtSignal Window Canvas OrvexMouseEvent LButtonUp 10 20"),
    }));
    QCOMPARE(ScriptSandbox::readLines(folder + QStringLiteral("/notes.txt")), notes);

    // The migrated script replays: the project question is answered from
    // the added fill-in without a box.
    QWidget window;
    AQObjects::add(&window, QStringLiteral("Window"));
    auto* canvas = new CanvasProbe(&window);
    auto* open = new AQAction(QStringLiteral("Open Project"), QStringLiteral("Open"), &window, true);
    QStringList opened;
    connect(open, &AQAction::ATriggered, this, [&] {
        opened << AQScripts::getFillin();
        const auto keep = AQMessageBox::question(nullptr, QStringLiteral("Open"), QStringLiteral("Close the project?"));
        opened << AQMessageBox::_encodeStandardButton(keep);
    });
    dialog.answers << script;
    QStringList boxes;
    ModalCatcher result([&boxes](QWidget* modal) {
        boxes << modal->windowTitle();
        modal->close();
    });
    result.setRepeat(true);
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("replayButton")), Qt::LeftButton);
    QCOMPARE(boxes, QStringList{QStringLiteral("info")});
    QCOMPARE(result.text(), QStringLiteral("replay finish"));
    QCOMPARE(opened, (QStringList{QStringLiteral("/data/model.3dem"), QStringLiteral("Yes")}));
    QCOMPARE(canvas->log, (QStringList{QStringLiteral("OrvexMouseEvent LButtonDown 10 20"),
                                       QStringLiteral("OrvexMouseEvent MouseMove"),
                                       QStringLiteral("OrvexKeyEvent KeyDown 65"),
                                       QStringLiteral("OrvexMouseEvent LButtonUp 10 20")}));
}

QTEST_MAIN(tst_AQScriptingDialog)
#include "tst_aqscriptingdialog.moc"
