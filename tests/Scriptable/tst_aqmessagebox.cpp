#include "ModalCatcher.h"
#include "WrapperFixture.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQMessageBox.h>

#include <QPushButton>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

namespace {
// Asks "Question" / "Overwrite the mesh?" in one of the ways the class offers.
int askBy(const QString& form, bool record)
{
    const QString title = "Question";
    const QString text = "Overwrite the mesh?";
    if (form == QLatin1String("critical"))
        return AQMessageBox::critical(nullptr, title, text, QMessageBox::Ok | QMessageBox::Cancel,
                                      QMessageBox::NoButton, record);
    if (form == QLatin1String("question"))
        return AQMessageBox::question(nullptr, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::NoButton,
                                      record);
    if (form == QLatin1String("old warning"))
        return AQMessageBox::warning(nullptr, title, text, QMessageBox::Retry,
                                     QMessageBox::Abort | QMessageBox::Default, 0, record);
    AQMessageBox box(QMessageBox::Question, title, text, QMessageBox::YesToAll | QMessageBox::NoToAll, nullptr,
                     Qt::Dialog, record);
    return box.Execute();
}

} // namespace

class tst_AQMessageBox : public QObject
{
    Q_OBJECT

    std::unique_ptr<WrapperFixture> m_fx;

private Q_SLOTS:
    void init() { m_fx = std::make_unique<WrapperFixture>(); }
    void cleanup() { m_fx.reset(); }

    void buttonNames_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("name");
        const char* names[] = {"OK",    "Save",  "SaveAll", "Open",    "Yes",  "YesToAll", "No",    "NoToAll", "Abort",
                               "Retry", "Ignore", "Close",  "Cancel", "Discard", "Help", "Apply", "Reset",
                               "RestoreDefaults"};
        int value = 0x400;
        for (const char* name : names) {
            QTest::newRow(name) << value << name;
            value <<= 1;
        }
        QTest::newRow("NoButton") << 0 << "NoButton";
    }

    void buttonNames()
    {
        QFETCH(int, value);
        QFETCH(QString, name);
        QCOMPARE(AQMessageBox::_encodeStandardButton(QMessageBox::StandardButton(value)), name);
        QCOMPARE(int(AQMessageBox::_decodeStandardButton(name)), value);
    }

    void unknownButtonNames()
    {
        QCOMPARE(AQMessageBox::_encodeStandardButton(QMessageBox::StandardButton(0x1)), QStringLiteral("NoButton"));
        QCOMPARE(int(AQMessageBox::_decodeStandardButton("Ok")), 0); // the button box's spelling
        QCOMPARE(int(AQMessageBox::_decodeStandardButton("yes")), 0);
    }

    void answerRecordedAsFillin_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<int>("click");
        QTest::addColumn<bool>("record");
        QTest::addColumn<bool>("suppressed");
        QTest::addColumn<QStringList>("records");
        QTest::newRow("critical OK") << "critical" << int(QMessageBox::Ok) << true << false
                                     << QStringList{"QtFillin OK"};
        QTest::newRow("question No") << "question" << int(QMessageBox::No) << true << false
                                     << QStringList{"QtFillin No"};
        QTest::newRow("old warning") << "old warning" << int(QMessageBox::Retry) << true << false
                                     << QStringList{"QtFillin Retry"};
        QTest::newRow("Execute") << "execute" << int(QMessageBox::NoToAll) << true << false
                                 << QStringList{"QtFillin NoToAll"};
        QTest::newRow("asked from suppressed code") << "question" << int(QMessageBox::Yes) << true << true
                                                    << QStringList{"QtFillin Yes"};
        QTest::newRow("question not recorded") << "question" << int(QMessageBox::Yes) << false << false
                                               << QStringList();
        QTest::newRow("Execute not recorded") << "execute" << int(QMessageBox::YesToAll) << false << false
                                              << QStringList();
    }

    void answerRecordedAsFillin()
    {
        QFETCH(QString, form);
        QFETCH(int, click);
        QFETCH(bool, record);
        QFETCH(bool, suppressed);
        QFETCH(QStringList, records);
        m_fx->startRecording();
        ModalCatcher user([click](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QTest::mouseClick(box->button(QMessageBox::StandardButton(click)), Qt::LeftButton);
        });
        AQScripts::recordingAllowed(!suppressed);
        const int answer = askBy(form, record);
        QCOMPARE(AQScripts::isRecordingDisabled(), suppressed); // the caller's permission comes back
        AQScripts::restoreRecordingAllowed();
        QCOMPARE(m_fx->stopRecording(), records);
        QCOMPARE(user.title(), QStringLiteral("Question"));
        QCOMPARE(user.text(), QStringLiteral("Overwrite the mesh?"));
        QCOMPARE(answer, click);
    }

    void answerReplayedWithoutBox_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<bool>("record");
        QTest::addColumn<QString>("fillin");
        QTest::addColumn<int>("answer");
        QTest::newRow("question Yes") << "question" << true << "Yes" << int(QMessageBox::Yes);
        QTest::newRow("critical OK") << "critical" << true << "OK" << int(QMessageBox::Ok);
        QTest::newRow("not recorded, still read") << "question" << false << "No" << int(QMessageBox::No);
        QTest::newRow("Execute") << "execute" << true << "YesToAll" << int(QMessageBox::YesToAll);
        QTest::newRow("unknown answer") << "question" << true << "Perhaps" << 0;
    }

    void answerReplayedWithoutBox()
    {
        QFETCH(QString, form);
        QFETCH(bool, record);
        QFETCH(QString, fillin);
        QFETCH(int, answer);
        QList<int> answers;
        auto* ask = new AQAction("Ask", "Ask", m_fx->root(), true);
        connect(ask, &AQAction::ATriggered, this, [&] { answers << askBy(form, record); });
        auto* after = new AQAction("After", "After", m_fx->root(), true);
        connect(after, &AQAction::ATriggered, this, [&] { answers << -1; });
        ModalCatcher noBox;
        QVERIFY(m_fx->replay({"Ask triggered", "QtFillin " + fillin, "After triggered"}));
        QCoreApplication::processEvents();
        QVERIFY2(!noBox.caught(), "no box is shown during replay");
        QCOMPARE(answers, (QList<int>{answer, -1}));
    }

    void yesNoKeys_data()
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

    void yesNoKeys()
    {
        QFETCH(bool, handle);
        QFETCH(int, buttons);
        QFETCH(int, key);
        QFETCH(int, answer);
        AQMessageBox box(QMessageBox::Question, "Keys", "Answer with a key", QMessageBox::StandardButtons(buttons),
                         nullptr, Qt::Dialog, false);
        box.setHandleYNKeys(handle);
        bool stayedOpen = false;
        ModalCatcher user([&](QWidget* modal) {
            QTest::keyClick(modal, Qt::Key(key));
            stayedOpen = modal->isVisible();
            if (stayedOpen)
                QTest::mouseClick(box.button(QMessageBox::Cancel), Qt::LeftButton);
        });
        const int result = box.Execute();
        QCOMPARE(user.title(), QStringLiteral("Keys"));
        QCOMPARE(stayedOpen, answer < 0);
        QCOMPARE(result, answer < 0 ? int(QMessageBox::Cancel) : answer);
    }
};

QTEST_MAIN(tst_AQMessageBox)
#include "tst_aqmessagebox.moc"
