#include "ModalCatcher.h"
#include "ScriptSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQMessageBox.h>

#include <QPushButton>
#include <QtTest>

#include <functional>
#include <memory>

using namespace QtUIBase;

namespace {

using Ask = std::function<int()>;

// Each form of asking, with the same title and text.
Ask askBy(const QString& form, bool record)
{
    const QString title = QStringLiteral("Question");
    const QString text = QStringLiteral("Overwrite the mesh?");
    if (form == QLatin1String("critical"))
        return [=] { return int(AQMessageBox::critical(nullptr, title, text, QMessageBox::Ok | QMessageBox::Cancel,
                                                       QMessageBox::NoButton, record)); };
    if (form == QLatin1String("information"))
        return [=] { return int(AQMessageBox::information(nullptr, title, text, QMessageBox::Ok,
                                                          QMessageBox::NoButton, record)); };
    if (form == QLatin1String("question"))
        return [=] { return int(AQMessageBox::question(nullptr, title, text, QMessageBox::Yes | QMessageBox::No,
                                                       QMessageBox::NoButton, record)); };
    if (form == QLatin1String("warning"))
        return [=] { return int(AQMessageBox::warning(nullptr, title, text, QMessageBox::Save | QMessageBox::Discard,
                                                      QMessageBox::NoButton, record)); };
    if (form == QLatin1String("old question"))
        return [=] { return AQMessageBox::question(nullptr, title, text, QMessageBox::Yes | QMessageBox::Default,
                                                   QMessageBox::No, 0, record); };
    if (form == QLatin1String("old warning"))
        return [=] { return AQMessageBox::warning(nullptr, title, text, QMessageBox::Retry, QMessageBox::Abort, 0,
                                                  record); };
    return [=] {
        AQMessageBox box(QMessageBox::Question, title, text, QMessageBox::YesToAll | QMessageBox::NoToAll, nullptr,
                         Qt::Dialog, record);
        return box.Execute();
    };
}

} // namespace

class tst_AQMessageBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void buttonNames_data();
    void buttonNames();
    void answerRecordedAsFillin_data();
    void answerRecordedAsFillin();
    void answerReplayedWithoutBox_data();
    void answerReplayedWithoutBox();
    void suppressedCallerStillRecordsAnswer();
    void yesNoKeys_data();
    void yesNoKeys();

private:
    std::unique_ptr<ScriptSandbox> m_sandbox;
    QString m_script;
};

void tst_AQMessageBox::init()
{
    m_sandbox = std::make_unique<ScriptSandbox>();
    m_script = m_sandbox->path(QStringLiteral("box.scr"));
}

void tst_AQMessageBox::cleanup()
{
    m_sandbox.reset();
}

void tst_AQMessageBox::buttonNames_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("name");
    const char* names[] = {"OK", "Save", "SaveAll", "Open", "Yes", "YesToAll", "No", "NoToAll", "Abort",
                           "Retry", "Ignore", "Close", "Cancel", "Discard", "Help", "Apply", "Reset", "RestoreDefaults"};
    int value = 0x400;
    for (const char* name : names) {
        QTest::newRow(name) << value << name;
        value <<= 1;
    }
    QTest::newRow("NoButton") << 0 << "NoButton";
}

void tst_AQMessageBox::buttonNames()
{
    QFETCH(int, value);
    QFETCH(QString, name);
    QCOMPARE(AQMessageBox::_encodeStandardButton(QMessageBox::StandardButton(value)), name);
    QCOMPARE(int(AQMessageBox::_decodeStandardButton(name)), value);
    // Outside the table, both ways.
    QCOMPARE(AQMessageBox::_encodeStandardButton(QMessageBox::StandardButton(0x1)), QStringLiteral("NoButton"));
    QCOMPARE(int(AQMessageBox::_decodeStandardButton(QStringLiteral("Ok"))), 0); // the button box's spelling
    QCOMPARE(int(AQMessageBox::_decodeStandardButton(QStringLiteral("yes"))), 0);
}

void tst_AQMessageBox::answerRecordedAsFillin_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<int>("click");
    QTest::addColumn<bool>("record");
    QTest::addColumn<QStringList>("records");
    QTest::newRow("critical OK") << "critical" << int(QMessageBox::Ok) << true << QStringList{"QtFillin OK"};
    QTest::newRow("critical Cancel") << "critical" << int(QMessageBox::Cancel) << true << QStringList{"QtFillin Cancel"};
    QTest::newRow("information") << "information" << int(QMessageBox::Ok) << true << QStringList{"QtFillin OK"};
    QTest::newRow("question No") << "question" << int(QMessageBox::No) << true << QStringList{"QtFillin No"};
    QTest::newRow("warning Discard") << "warning" << int(QMessageBox::Discard) << true
                                     << QStringList{"QtFillin Discard"};
    QTest::newRow("old question") << "old question" << int(QMessageBox::Yes) << true << QStringList{"QtFillin Yes"};
    QTest::newRow("old warning") << "old warning" << int(QMessageBox::Abort) << true << QStringList{"QtFillin Abort"};
    QTest::newRow("Execute") << "execute" << int(QMessageBox::NoToAll) << true << QStringList{"QtFillin NoToAll"};
    QTest::newRow("question not recorded") << "question" << int(QMessageBox::Yes) << false << QStringList();
    QTest::newRow("Execute not recorded") << "execute" << int(QMessageBox::YesToAll) << false << QStringList();
}

void tst_AQMessageBox::answerRecordedAsFillin()
{
    QFETCH(QString, form);
    QFETCH(int, click);
    QFETCH(bool, record);
    QFETCH(QStringList, records);
    QVERIFY(AQOpenScriptFileForRecord(m_script, QStringLiteral("2")));
    ModalCatcher user([click](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        QTest::mouseClick(box->button(QMessageBox::StandardButton(click)), Qt::LeftButton);
    });
    const int answer = askBy(form, record)();
    AQStopScriptRecording();
    QVERIFY(user.caught());
    QCOMPARE(user.title(), QStringLiteral("Question"));
    QCOMPARE(user.text(), QStringLiteral("Overwrite the mesh?"));
    QCOMPARE(answer, click);
    QCOMPARE(ScriptSandbox::recordLines(m_script), records);
}

void tst_AQMessageBox::answerReplayedWithoutBox_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<bool>("record");
    QTest::addColumn<QString>("fillin");
    QTest::addColumn<int>("answer");
    QTest::newRow("question Yes") << "question" << true << "Yes" << int(QMessageBox::Yes);
    QTest::newRow("critical OK") << "critical" << true << "OK" << int(QMessageBox::Ok);
    QTest::newRow("not recorded, still read") << "question" << false << "No" << int(QMessageBox::No);
    QTest::newRow("old warning") << "old warning" << true << "Retry" << int(QMessageBox::Retry);
    QTest::newRow("Execute") << "execute" << true << "YesToAll" << int(QMessageBox::YesToAll);
    QTest::newRow("unknown answer") << "question" << true << "Perhaps" << 0;
}

void tst_AQMessageBox::answerReplayedWithoutBox()
{
    QFETCH(QString, form);
    QFETCH(bool, record);
    QFETCH(QString, fillin);
    QFETCH(int, answer);
    QWidget window;
    AQObjects::add(&window, QStringLiteral("Window"));
    auto* action = new AQAction(QStringLiteral("Ask"), QStringLiteral("Ask"), &window, true);
    const Ask ask = askBy(form, record);
    QList<int> answers;
    connect(action, &AQAction::ATriggered, this, [&] { answers << ask(); });
    auto* after = new AQAction(QStringLiteral("After"), QStringLiteral("After"), &window, true);
    connect(after, &AQAction::ATriggered, this, [&] { answers << -1; });

    m_sandbox->writeScript(m_script, {QStringLiteral("QtSignal Window Ask triggered"), QStringLiteral("QtFillin ") + fillin,
                                      QStringLiteral("QtSignal Window After triggered")});
    ModalCatcher noBox;
    QVERIFY(AQOpenScriptFileForReplay(m_script, 0, 2));
    QCoreApplication::processEvents();
    QVERIFY2(!noBox.caught(), "no box is shown during replay");
    QCOMPARE(answers, (QList<int>{answer, -1}));
}

void tst_AQMessageBox::suppressedCallerStillRecordsAnswer()
{
    QVERIFY(AQOpenScriptFileForRecord(m_script, QStringLiteral("2")));
    ModalCatcher user([](QWidget* modal) {
        QTest::mouseClick(qobject_cast<QMessageBox*>(modal)->button(QMessageBox::Yes), Qt::LeftButton);
    });
    AQScripts::recordingAllowed(false);
    AQMessageBox::question(nullptr, QStringLiteral("Question"), QStringLiteral("Keep?"));
    QVERIFY(AQScripts::isRecordingDisabled()); // the caller's permission comes back
    AQScripts::restoreRecordingAllowed();
    AQStopScriptRecording();
    QCOMPARE(ScriptSandbox::recordLines(m_script), QStringList{QStringLiteral("QtFillin Yes")});
}

void tst_AQMessageBox::yesNoKeys_data()
{
    QTest::addColumn<bool>("handle");
    QTest::addColumn<int>("buttons");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("answer"); // -1: the key leaves the box open
    const int yesNo = QMessageBox::Yes | QMessageBox::No;
    const int okCancel = QMessageBox::Ok | QMessageBox::Cancel;
    QTest::newRow("Y answers Yes") << true << yesNo << int(Qt::Key_Y) << int(QMessageBox::Yes);
    QTest::newRow("N answers No") << true << yesNo << int(Qt::Key_N) << int(QMessageBox::No);
    QTest::newRow("Y accepts a box without Yes") << true << okCancel << int(Qt::Key_Y) << int(QDialog::Accepted);
    QTest::newRow("other key") << true << okCancel << int(Qt::Key_X) << -1;
    QTest::newRow("keys not handled") << false << okCancel << int(Qt::Key_Y) << -1;
}

void tst_AQMessageBox::yesNoKeys()
{
    QFETCH(bool, handle);
    QFETCH(int, buttons);
    QFETCH(int, key);
    QFETCH(int, answer);
    AQMessageBox box(QMessageBox::Question, QStringLiteral("Keys"), QStringLiteral("Answer with a key"),
                     QMessageBox::StandardButtons(buttons), nullptr, Qt::Dialog, false);
    box.setHandleYNKeys(handle);
    bool stayedOpen = false;
    ModalCatcher user([&](QWidget* modal) {
        QTest::keyClick(modal, Qt::Key(key));
        stayedOpen = modal->isVisible();
        if (stayedOpen)
            QTest::mouseClick(box.button(QMessageBox::Cancel), Qt::LeftButton);
    });
    const int result = box.Execute();
    QVERIFY(user.caught());
    QCOMPARE(user.title(), QStringLiteral("Keys"));
    QCOMPARE(stayedOpen, answer < 0);
    QCOMPARE(result, answer < 0 ? int(QMessageBox::Cancel) : answer);
}

QTEST_MAIN(tst_AQMessageBox)
#include "tst_aqmessagebox.moc"
