#include "ModalCatcher.h"
#include "SettingsSandbox.h"
#include "WrapperFixture.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQDialog.h>
#include <Scriptable/AQDialogButtonBox.h>
#include <Scriptable/AQScriptableLineEdit.h>

#include <QElapsedTimer>
#include <QMetaEnum>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

namespace {
bool g_fakeReplay = false;
bool fakeReplayActive() { return g_fakeReplay; }

/// Notes every A signal of @p box, with whether recording was suppressed
/// when it arrived; clicks name the button by its object name.
void noteReactions(AQDialogButtonBox* box, QStringList& log)
{
    const auto note = [&log](const QString& what) {
        log << what + (AQScripts::isRecordingDisabled() ? " off" : " on");
    };
    QObject::connect(box, &AQDialogButtonBox::AClicked, box,
                     [note](QAbstractButton* b) { note("clicked " + (b ? b->objectName() : QString("none"))); });
    QObject::connect(box, &AQDialogButtonBox::AAccepted, box, [note] { note("accepted"); });
    QObject::connect(box, &AQDialogButtonBox::ARejected, box, [note] { note("rejected"); });
    QObject::connect(box, &AQDialogButtonBox::AHelpRequested, box, [note] { note("helpRequested"); });
}

} // namespace

/**
 * A host window with two actions: "Open Dialog" runs a modal name dialog
 * and logs its result and text, "Done Action" logs that it ran. Both the
 * recording and the replay of a session go through it.
 */
class Session : public QObject
{
    Q_OBJECT

public:
    Session()
    {
        AQObjects::add(&host, "Host");
        open = new AQAction("Open Dialog", "Open", &host, true);
        done = new AQAction("Done Action", "Done", &host, true);
        connect(open, &AQAction::ATriggered, this, &Session::runDialog);
        connect(done, &AQAction::ATriggered, this, [this] { log << "done"; });
    }

    void runDialog()
    {
        AQDialog dialog("Name Dialog", &host);
        auto* layout = new QVBoxLayout(&dialog);
        auto* edit = new AQScriptableLineEdit("Name Edit", &dialog, true);
        auto* buttons = new AQDialogButtonBox("Buttons", QDialogButtonBox::Ok | QDialogButtonBox::Cancel,
                                              Qt::Horizontal, &dialog, true);
        layout->addWidget(edit);
        layout->addWidget(buttons);
        connect(buttons, &AQDialogButtonBox::AAccepted, &dialog, &QDialog::accept);
        connect(buttons, &AQDialogButtonBox::ARejected, &dialog, &QDialog::reject);
        const int result = dialog.exec();
        log << QString("result %1").arg(result) << "text " + edit->text();
    }

    QWidget host;
    AQAction* open = nullptr;
    AQAction* done = nullptr;
    QStringList log;
};

/// Scriptable dialogs and dialog button boxes.
class tst_AQDialog : public QObject
{
    Q_OBJECT

    std::unique_ptr<SettingsSandbox> m_settings;
    std::unique_ptr<WrapperFixture> m_fx;

    AQDialogButtonBox* makeBox(QDialogButtonBox::StandardButtons buttons)
    {
        auto* box = new AQDialogButtonBox("Box", buttons, Qt::Horizontal, m_fx->root(), true);
        for (QAbstractButton* button : box->buttons())
            button->setObjectName(QMetaEnum::fromType<QDialogButtonBox::StandardButtons>().valueToKey(
                box->standardButton(button)));
        return box;
    }

    QString writeScript(const QString& name, const QStringList& body)
    {
        const QString script = m_fx->sandbox().path(name);
        m_fx->sandbox().writeScript(script, body);
        return script;
    }

private Q_SLOTS:
    void initTestCase() { m_settings = std::make_unique<SettingsSandbox>(); }

    void init()
    {
        m_settings->clear();
        m_fx = std::make_unique<WrapperFixture>(true);
    }

    void cleanup()
    {
        AQSetScriptBackendHooks(AQBuiltinScriptBackendHooks());
        g_fakeReplay = false;
        m_fx.reset();
    }

    // --- AQDialog --------------------------------------------------------------

    void modalDialogReplaysItsOwnLines_data()
    {
        QTest::addColumn<bool>("confirm");
        QTest::addColumn<QStringList>("log");
        QTest::newRow("typed and confirmed") << true << QStringList{"result 1", "text hello", "done"};
        QTest::newRow("cancelled") << false << QStringList{"result 0", "text ", "done"};
    }

    void modalDialogReplaysItsOwnLines()
    {
        QFETCH(bool, confirm);
        QFETCH(QStringList, log);
        {
            Session session;
            m_fx->startRecording();
            ModalCatcher user([confirm](QWidget* modal) {
                if (confirm) {
                    auto* edit = modal->findChild<AQScriptableLineEdit*>();
                    QTest::keyClicks(edit, "hello");
                    QTest::keyClick(edit, Qt::Key_Return); // also presses the default button, Ok
                } else {
                    auto* box = modal->findChild<AQDialogButtonBox*>();
                    QTest::mouseClick(box->button(QDialogButtonBox::Cancel), Qt::LeftButton);
                }
            });
            QToolButton button;
            for (AQAction* action : {session.open, session.done}) {
                button.setDefaultAction(action);
                QTest::mouseClick(&button, Qt::LeftButton);
            }
            QVERIFY(user.caught());
            const QStringList records = m_fx->stopRecording();
            QCOMPARE(session.log, log);
            QCOMPARE(records.first(), QStringLiteral("QtSignal Host Open_Dialog triggered"));
            QCOMPARE(records.last(), QStringLiteral("QtSignal Host Done_Action triggered"));
            const QString end = QString("QtSignal Name_Dialog Buttons clicked %1\nQtSignal Name_Dialog Buttons %2")
                                    .arg(confirm ? "Ok" : "Cancel", confirm ? "accepted" : "rejected");
            QVERIFY2(records.join('\n').contains(end), qPrintable(records.join('\n')));
        }
        // The replay opens the dialog again; it pulls its own lines, returns the
        // recorded result, and the outer replay goes on after it.
        Session replayed;
        QVERIFY(AQOpenScriptFileForReplay(m_fx->sandbox().path("record.scr"), 0, 2));
        QCOMPARE(replayed.log, log);
    }

    void replayRunsOutInsideDialog()
    {
        Session session;
        QElapsedTimer clock;
        clock.start();
        QVERIFY(AQOpenScriptFileForReplay(writeScript("short.scr", {"QtSignal Host Open_Dialog triggered"}), 0, 2));
        QVERIFY(clock.elapsed() < 5000);
        QCOMPARE(session.log, (QStringList{"result 1", "text "}));
        const QStringList journal = ScriptSandbox::readLines(m_fx->sandbox().journalPath());
        QVERIFY2(journal.contains("<font color=red>erro info:Name_Dialog dialog can not execute success and force "
                                  "to close just for next line script"),
                 qPrintable(journal.join('\n')));
    }

    void stoppedReplayLeavesDialog()
    {
        QStringList body{"QtSignal Host Open_Dialog triggered"};
        for (int i = 0; i < 400; ++i)
            body << QString("# waiting line %1").arg(i);
        body << "QtSignal Host Done_Action triggered";
        const QString script = writeScript("long.scr", body);
        Session session;
        QTimer::singleShot(100, [] { AQStopScriptReplay(); });
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!AQOpenScriptFileForReplay(script, 5, 2));
        QVERIFY2(clock.elapsed() < 1500, "the stop ended the dialog's loop early");
        QCOMPARE(session.log, (QStringList{"result 1", "text "}));
        QVERIFY(!AQIsScriptReplayActive());
    }

    void closeRecordsAndUnregisters_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("alwaysOn");
        QTest::addColumn<QStringList>("records");
        QTest::newRow("ordinary") << "Options Dialog" << false << QStringList{"Options_Dialog closed"};
        QTest::newRow("always on") << "Options Dialog" << true << QStringList{"Options_Dialog closed"};
        QTest::newRow("text. dialog") << "text.Find" << false << QStringList();
    }

    void closeRecordsAndUnregisters()
    {
        QFETCH(QString, name);
        QFETCH(bool, alwaysOn);
        QFETCH(QStringList, records);
        AQDialog dialog(name, m_fx->root());
        dialog.setAlwaysOnDialog(alwaysOn);
        m_fx->startRecording();
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        dialog.close(); // as the title bar's close button does
        QCOMPARE(m_fx->stopRecording(), records);
        QCOMPARE(AQObjects::find(&dialog) >= 0, alwaysOn);
    }

    void childAddedLaterIsParentedInRegistry()
    {
        AQDialog dialog("Late Dialog");
        auto* edit = new AQScriptableLineEdit("Late Edit", nullptr, true);
        QCOMPARE(AQObjects::getParentObjectPtr(AQObjects::find(edit)), nullptr);
        (new QVBoxLayout(&dialog))->addWidget(edit);
        QCOMPARE(AQObjects::getParentObjectPtr(AQObjects::find(edit)), &dialog);
    }

    void modelessDialogGoesAwayDuringReplay_data()
    {
        QTest::addColumn<bool>("replay");
        QTest::addColumn<bool>("modal");
        QTest::addColumn<bool>("accept");
        QTest::addColumn<bool>("deleted");
        QTest::newRow("accepted during replay") << true << false << true << true;
        QTest::newRow("rejected during replay") << true << false << false << true;
        QTest::newRow("modal, during replay") << true << true << true << false;
        QTest::newRow("accepted, no replay") << false << false << true << false;
    }

    void modelessDialogGoesAwayDuringReplay()
    {
        QFETCH(bool, replay);
        QFETCH(bool, modal);
        QFETCH(bool, accept);
        QFETCH(bool, deleted);
        QPointer<AQDialog> dialog = new AQDialog("Modeless Dialog");
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
        connect(buttons, &QDialogButtonBox::accepted, dialog, &AQDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, dialog, &AQDialog::reject);
        dialog->setModal(modal);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
        AQScriptBackendHooks hooks = AQBuiltinScriptBackendHooks();
        hooks.isScriptReplayActive = fakeReplayActive;
        AQSetScriptBackendHooks(hooks);
        g_fakeReplay = replay;
        QTest::mouseClick(buttons->button(accept ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel), Qt::LeftButton);
        g_fakeReplay = false;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(dialog.isNull(), deleted);
        delete dialog;
    }

    void placeKeptInStateIni_data()
    {
        QTest::addColumn<bool>("saveOnDestroy");
        QTest::newRow("saved on destroy") << true;
        QTest::newRow("not saved") << false;
    }

    void placeKeptInStateIni()
    {
        QFETCH(bool, saveOnDestroy);
        {
            AQDialog dialog("Placed Dialog");
            dialog.setSaveOnDestroy(saveOnDestroy);
            dialog.resize(260, 170);
            dialog.move(30, 40);
        }
        AQDialog again("Placed Dialog");
        QCOMPARE(again.pos() == QPoint(30, 40) && again.size() == QSize(260, 170), saveOnDestroy);
    }

    // --- AQDialogButtonBox -----------------------------------------------------

    void buttonBoxClickRecords_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QString>("reaction"); // besides the click
        QTest::newRow("Ok") << "Ok" << QStringList{"Box clicked Ok", "Box accepted"} << "accepted";
        QTest::newRow("Cancel") << "Cancel" << QStringList{"Box clicked Cancel", "Box rejected"} << "rejected";
        QTest::newRow("Help") << "Help" << QStringList{"Box clicked Help", "Box helpRequested"} << "helpRequested";
        QTest::newRow("RestoreDefaults") << "RestoreDefaults" << QStringList{"Box clicked RestoreDefaults"} << "";
        QTest::newRow("own button") << "Own" << QStringList{"Box clicked NoButton"} << "";
    }

    void buttonBoxClickRecords()
    {
        QFETCH(QString, button);
        QFETCH(QStringList, records);
        QFETCH(QString, reaction);
        AQDialogButtonBox* box = makeBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Help
                                         | QDialogButtonBox::RestoreDefaults);
        box->addButton("Own", QDialogButtonBox::ActionRole)->setObjectName("Own");
        QStringList reactions;
        noteReactions(box, reactions);
        m_fx->root()->show();
        m_fx->startRecording();
        QTest::mouseClick(box->findChild<QAbstractButton*>(button), Qt::LeftButton);
        QCOMPARE(m_fx->stopRecording(), records);
        // The application's reactions run with recording suppressed.
        QCOMPARE(reactions, QStringList{"clicked " + button + " off"} + (reaction.isEmpty() ? QStringList()
                                                                           : QStringList{reaction + " off"}));
    }

    void buttonBoxReplay_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("reactions");
        QTest::newRow("clicked Ok") << "Box clicked Ok" << QStringList{"clicked Ok off"};
        QTest::newRow("message box spelling") << "Box clicked OK" << QStringList{"clicked none off"};
        QTest::newRow("NoButton") << "Box clicked NoButton" << QStringList{"clicked none off"};
        QTest::newRow("button not in the box") << "Box clicked Save" << QStringList{"clicked none off"};
        QTest::newRow("clicked without args ignored") << "Box clicked" << QStringList();
        QTest::newRow("accepted") << "Box accepted" << QStringList{"accepted off"};
        QTest::newRow("rejected") << "Box rejected" << QStringList{"rejected off"};
        QTest::newRow("helpRequested") << "Box helpRequested" << QStringList{"helpRequested off"};
        QTest::newRow("unknown signal ignored") << "Box pressed" << QStringList();
    }

    void buttonBoxReplay()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, reactions);
        AQDialogButtonBox* box = makeBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        QStringList log;
        noteReactions(box, log);
        // Replay passes the click on without pressing the button.
        connect(box, &QDialogButtonBox::accepted, this, [&log] { log << "button pressed"; });
        QVERIFY(m_fx->replay({line}));
        QCOMPARE(log, reactions);
        QCOMPARE(AQScripts::recordingAllowedStackDepth(), 0);
    }
};

QTEST_MAIN(tst_AQDialog)
#include "tst_aqdialog.moc"
