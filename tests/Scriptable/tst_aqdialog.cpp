#include "ModalCatcher.h"
#include "ScriptSandbox.h"
#include "SettingsSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQDialog.h>
#include <Scriptable/AQDialogButtonBox.h>
#include <Scriptable/AQScriptableLineEdit.h>

#include <QElapsedTimer>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

namespace {

bool g_fakeReplay = false;
bool fakeReplayActive() { return g_fakeReplay; }

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
        AQObjects::add(&host, QStringLiteral("Host"));
        open = new AQAction(QStringLiteral("Open Dialog"), QStringLiteral("Open"), &host, true);
        done = new AQAction(QStringLiteral("Done Action"), QStringLiteral("Done"), &host, true);
        connect(open, &AQAction::ATriggered, this, &Session::runDialog);
        connect(done, &AQAction::ATriggered, this, [this] { log << QStringLiteral("done"); });
    }

    void runDialog()
    {
        AQDialog dialog(QStringLiteral("Name Dialog"), &host);
        auto* layout = new QVBoxLayout(&dialog);
        auto* edit = new AQScriptableLineEdit(QStringLiteral("Name Edit"), &dialog, true);
        auto* buttons = new AQDialogButtonBox(QStringLiteral("Buttons"), QDialogButtonBox::Ok | QDialogButtonBox::Cancel,
                                              Qt::Horizontal, &dialog, true);
        layout->addWidget(edit);
        layout->addWidget(buttons);
        connect(buttons, &AQDialogButtonBox::AAccepted, &dialog, &QDialog::accept);
        connect(buttons, &AQDialogButtonBox::ARejected, &dialog, &QDialog::reject);
        const int result = dialog.exec();
        log << QStringLiteral("result %1").arg(result) << QStringLiteral("text ") + edit->text();
    }

    QWidget host;
    AQAction* open = nullptr;
    AQAction* done = nullptr;
    QStringList log;
};

class tst_AQDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void constructorFlags();
    void modalDialogReplaysItsOwnLines_data();
    void modalDialogReplaysItsOwnLines();
    void replayRunsOutInsideDialog();
    void stoppedReplayLeavesDialog();
    void closeRecordsAndUnregisters_data();
    void closeRecordsAndUnregisters();
    void childAddedLaterIsParentedInRegistry();
    void modelessDialogGoesAwayDuringReplay_data();
    void modelessDialogGoesAwayDuringReplay();
    void placeKeptInStateIni_data();
    void placeKeptInStateIni();

private:
    std::unique_ptr<SettingsSandbox> m_settings;
    std::unique_ptr<ScriptSandbox> m_sandbox;
};

void tst_AQDialog::initTestCase()
{
    m_settings = std::make_unique<SettingsSandbox>();
}

void tst_AQDialog::init()
{
    m_settings->clear();
    m_sandbox = std::make_unique<ScriptSandbox>();
}

void tst_AQDialog::cleanup()
{
    g_fakeReplay = false;
    m_sandbox.reset();
}

void tst_AQDialog::constructorFlags()
{
    AQDialog plain(QStringLiteral("Plain Dialog"), nullptr, Qt::WindowContextHelpButtonHint, false);
    QCOMPARE(plain.objectName(), QStringLiteral("Plain Dialog")); // not registered: the name is kept as given
    QCOMPARE(AQObjects::find(&plain), -1);
    QVERIFY(!(plain.windowFlags() & Qt::WindowContextHelpButtonHint));
    QVERIFY(!plain.isSizeGripEnabled());
    QVERIFY(AQScripts::isRecordingDisabled());

    AQDialog gripped(QStringLiteral("Grip Dialog"), nullptr, {}, true, AQDialog::WithSizeGrip);
    QCOMPARE(gripped.objectName(), QStringLiteral("Grip_Dialog"));
    QVERIFY(AQObjects::find(&gripped) >= 0);
    QVERIFY(gripped.isSizeGripEnabled());
}

void tst_AQDialog::modalDialogReplaysItsOwnLines_data()
{
    QTest::addColumn<bool>("confirm");
    QTest::addColumn<QStringList>("log");
    QTest::newRow("typed and confirmed") << true << QStringList{"result 1", "text hello", "done"};
    QTest::newRow("cancelled") << false << QStringList{"result 0", "text ", "done"};
}

void tst_AQDialog::modalDialogReplaysItsOwnLines()
{
    QFETCH(bool, confirm);
    QFETCH(QStringList, log);
    const QString script = m_sandbox->path(QStringLiteral("dialog.scr"));
    {
        Session session;
        QVERIFY(AQOpenScriptFileForRecord(script, QStringLiteral("2")));
        ModalCatcher user([confirm](QWidget* modal) {
            if (confirm) {
                auto* edit = modal->findChild<AQScriptableLineEdit*>();
                QTest::keyClicks(edit, QStringLiteral("hello"));
                QTest::keyClick(edit, Qt::Key_Return); // also presses the default button, Ok
            } else {
                auto* box = modal->findChild<AQDialogButtonBox*>();
                QTest::mouseClick(box->button(QDialogButtonBox::Cancel), Qt::LeftButton);
            }
        });
        session.open->trigger();
        QVERIFY(user.caught());
        session.done->trigger();
        AQStopScriptRecording();
        QCOMPARE(session.log, log);
    }
    const QStringList records = ScriptSandbox::recordLines(script);
    QCOMPARE(records.first(), QStringLiteral("QtSignal Host Open_Dialog triggered"));
    QCOMPARE(records.last(), QStringLiteral("QtSignal Host Done_Action triggered"));
    QVERIFY2(records.contains(confirm ? QStringLiteral("QtSignal Name_Dialog Buttons accepted")
                                      : QStringLiteral("QtSignal Name_Dialog Buttons rejected")),
             qPrintable(records.join(QLatin1Char('\n'))));
    QVERIFY(records.contains(confirm ? QStringLiteral("QtSignal Name_Dialog Buttons clicked Ok")
                                     : QStringLiteral("QtSignal Name_Dialog Buttons clicked Cancel")));

    // The replay opens the dialog again; it pulls its own lines, returns the
    // recorded result, and the outer replay goes on after it.
    Session replayed;
    QVERIFY(AQOpenScriptFileForReplay(script, 0, 2));
    QCOMPARE(replayed.log, log);
}

void tst_AQDialog::replayRunsOutInsideDialog()
{
    const QString script = m_sandbox->path(QStringLiteral("short.scr"));
    m_sandbox->writeScript(script, {QStringLiteral("QtSignal Host Open_Dialog triggered")});
    Session session;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(AQOpenScriptFileForReplay(script, 0, 2));
    QVERIFY(clock.elapsed() < 5000);
    QCOMPARE(session.log, (QStringList{QStringLiteral("result 1"), QStringLiteral("text ")}));
    const QStringList journal = ScriptSandbox::readLines(m_sandbox->journalPath());
    QVERIFY2(journal.contains(QStringLiteral("<font color=red>erro info:Name_Dialog dialog can not execute success "
                                             "and force to close just for next line script")),
             qPrintable(journal.join(QLatin1Char('\n'))));
}

void tst_AQDialog::stoppedReplayLeavesDialog()
{
    const QString script = m_sandbox->path(QStringLiteral("long.scr"));
    QStringList body{QStringLiteral("QtSignal Host Open_Dialog triggered")};
    for (int i = 0; i < 400; ++i)
        body << QStringLiteral("# waiting line %1").arg(i);
    body << QStringLiteral("QtSignal Host Done_Action triggered");
    m_sandbox->writeScript(script, body);

    Session session;
    QTimer::singleShot(100, [] { AQStopScriptReplay(); });
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!AQOpenScriptFileForReplay(script, 5, 2));
    QVERIFY2(clock.elapsed() < 1500, "the stop ended the dialog's loop early");
    QCOMPARE(session.log, (QStringList{QStringLiteral("result 1"), QStringLiteral("text ")}));
    QVERIFY(!AQIsScriptReplayActive());
}

void tst_AQDialog::closeRecordsAndUnregisters_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("alwaysOn");
    QTest::addColumn<QStringList>("records");
    QTest::addColumn<bool>("registeredAfter");
    const QStringList closed{"QtSignal Host Options_Dialog closed"};
    QTest::newRow("ordinary") << "Options Dialog" << false << closed << false;
    QTest::newRow("always on") << "Options Dialog" << true << closed << true;
    QTest::newRow("text. dialog") << "text.Find" << false << QStringList() << false;
}

void tst_AQDialog::closeRecordsAndUnregisters()
{
    QFETCH(QString, name);
    QFETCH(bool, alwaysOn);
    QFETCH(QStringList, records);
    QFETCH(bool, registeredAfter);
    const QString script = m_sandbox->path(QStringLiteral("close.scr"));
    QWidget host;
    AQObjects::add(&host, QStringLiteral("Host"));
    AQDialog dialog(name, &host);
    dialog.setAlwaysOnDialog(alwaysOn);
    QVERIFY(AQOpenScriptFileForRecord(script, QStringLiteral("2")));
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    dialog.close();
    AQStopScriptRecording();
    QCOMPARE(ScriptSandbox::recordLines(script), records);
    QCOMPARE(AQObjects::find(&dialog) >= 0, registeredAfter);
}

void tst_AQDialog::childAddedLaterIsParentedInRegistry()
{
    AQDialog dialog(QStringLiteral("Late Dialog"));
    auto* edit = new AQScriptableLineEdit(QStringLiteral("Late Edit"), nullptr, true);
    QCOMPARE(AQObjects::getParentObjectPtr(AQObjects::find(edit)), nullptr);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(edit);
    QCOMPARE(AQObjects::getParentObjectPtr(AQObjects::find(edit)), &dialog);
}

void tst_AQDialog::modelessDialogGoesAwayDuringReplay_data()
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

void tst_AQDialog::modelessDialogGoesAwayDuringReplay()
{
    QFETCH(bool, replay);
    QFETCH(bool, modal);
    QFETCH(bool, accept);
    QFETCH(bool, deleted);
    QPointer<AQDialog> dialog = new AQDialog(QStringLiteral("Modeless Dialog"));
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
    AQSetScriptBackendHooks(AQBuiltinScriptBackendHooks());

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(dialog.isNull(), deleted);
    delete dialog;
}

void tst_AQDialog::placeKeptInStateIni_data()
{
    QTest::addColumn<bool>("saveOnDestroy");
    QTest::newRow("saved on destroy") << true;
    QTest::newRow("not saved") << false;
}

void tst_AQDialog::placeKeptInStateIni()
{
    QFETCH(bool, saveOnDestroy);
    {
        AQDialog dialog(QStringLiteral("Placed Dialog"));
        dialog.setSaveOnDestroy(saveOnDestroy);
        dialog.resize(260, 170);
        dialog.move(30, 40);
    }
    QSettings ini(m_settings->stateIniPath(), QSettings::IniFormat);
    QCOMPARE(ini.contains(QStringLiteral("Placed Dialog/Size")), saveOnDestroy);

    AQDialog again(QStringLiteral("Placed Dialog"));
    if (saveOnDestroy) {
        QCOMPARE(again.size(), QSize(260, 170));
        QCOMPARE(again.pos(), QPoint(30, 40));
    } else {
        QVERIFY(again.size() != QSize(260, 170));
    }
}

QTEST_MAIN(tst_AQDialog)
#include "tst_aqdialog.moc"
