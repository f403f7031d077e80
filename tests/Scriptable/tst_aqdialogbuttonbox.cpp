#include "ScriptSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQDialogButtonBox.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

class tst_AQDialogButtonBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void clickRecords_data();
    void clickRecords();
    void reactionsRunWithRecordingSuppressed();
    void notScriptable();
    void replayClicked_data();
    void replayClicked();
    void replayOtherSignals();

private:
    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<QWidget> m_window;
    QString m_script;
};

void tst_AQDialogButtonBox::init()
{
    m_sandbox = std::make_unique<ScriptSandbox>();
    m_window = std::make_unique<QWidget>();
    AQObjects::add(m_window.get(), QStringLiteral("Window"));
    m_script = m_sandbox->path(QStringLiteral("box.scr"));
    QVERIFY(AQOpenScriptFileForRecord(m_script, QStringLiteral("2")));
}

void tst_AQDialogButtonBox::cleanup()
{
    m_window.reset();
    m_sandbox.reset();
}

void tst_AQDialogButtonBox::clickRecords_data()
{
    QTest::addColumn<int>("button"); // 0: a button of the application's own
    QTest::addColumn<QStringList>("records");
    const QString head = QStringLiteral("QtSignal Window Box ");
    QTest::newRow("Ok") << int(QDialogButtonBox::Ok) << QStringList{head + "clicked Ok", head + "accepted"};
    QTest::newRow("Cancel") << int(QDialogButtonBox::Cancel) << QStringList{head + "clicked Cancel", head + "rejected"};
    QTest::newRow("Help") << int(QDialogButtonBox::Help) << QStringList{head + "clicked Help", head + "helpRequested"};
    QTest::newRow("RestoreDefaults") << int(QDialogButtonBox::RestoreDefaults)
                                     << QStringList{head + "clicked RestoreDefaults"};
    QTest::newRow("own button") << 0 << QStringList{head + "clicked NoButton"};
}

void tst_AQDialogButtonBox::clickRecords()
{
    QFETCH(int, button);
    QFETCH(QStringList, records);
    auto* box = new AQDialogButtonBox(QStringLiteral("Box"),
                                      QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Help
                                          | QDialogButtonBox::RestoreDefaults,
                                      Qt::Horizontal, m_window.get(), true);
    QPushButton* own = box->addButton(QStringLiteral("Own"), QDialogButtonBox::ActionRole);
    QSignalSpy clicked(box, &AQDialogButtonBox::AClicked);
    m_window->show();
    QAbstractButton* target = button ? box->button(QDialogButtonBox::StandardButton(button)) : own;
    QTest::mouseClick(target, Qt::LeftButton);
    AQStopScriptRecording();
    QCOMPARE(ScriptSandbox::recordLines(m_script), records);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.first().first().value<QAbstractButton*>(), target);
}

void tst_AQDialogButtonBox::reactionsRunWithRecordingSuppressed()
{
    auto* box = new AQDialogButtonBox(QStringLiteral("Box"), QDialogButtonBox::Ok | QDialogButtonBox::Cancel,
                                      Qt::Horizontal, m_window.get(), true);
    QStringList seen;
    const auto note = [&seen](const char* what) {
        seen << QString::fromLatin1(what) + (AQScripts::isRecordingDisabled() ? QStringLiteral(" off") : QStringLiteral(" on"));
    };
    connect(box, &AQDialogButtonBox::AClicked, this, [&] { note("clicked"); });
    connect(box, &AQDialogButtonBox::AAccepted, this, [&] { note("accepted"); });
    connect(box, &AQDialogButtonBox::ARejected, this, [&] { note("rejected"); });
    m_window->show();
    QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
    QTest::mouseClick(box->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    QCOMPARE(seen, (QStringList{QStringLiteral("clicked off"), QStringLiteral("accepted off"),
                                QStringLiteral("clicked off"), QStringLiteral("rejected off")}));
}

void tst_AQDialogButtonBox::notScriptable()
{
    auto* box = new AQDialogButtonBox(QStringLiteral("Quiet Box"), QDialogButtonBox::Ok, Qt::Horizontal,
                                      m_window.get(), false);
    QSignalSpy accepted(box, &AQDialogButtonBox::AAccepted);
    m_window->show();
    QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
    AQStopScriptRecording();
    QVERIFY(ScriptSandbox::recordLines(m_script).isEmpty());
    QCOMPARE(accepted.count(), 0);
    QCOMPARE(AQObjects::find(box), -1);
}

void tst_AQDialogButtonBox::replayClicked_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("button"); // -1: no button expected
    QTest::newRow("Ok") << QStringLiteral("Ok") << int(QDialogButtonBox::Ok);
    QTest::newRow("Cancel") << QStringLiteral("Cancel") << int(QDialogButtonBox::Cancel);
    QTest::newRow("message box spelling") << QStringLiteral("OK") << -1;
    QTest::newRow("unknown") << QStringLiteral("Bogus") << -1;
    QTest::newRow("NoButton") << QStringLiteral("NoButton") << -1;
    QTest::newRow("button not in the box") << QStringLiteral("Save") << -1;
}

void tst_AQDialogButtonBox::replayClicked()
{
    QFETCH(QString, name);
    QFETCH(int, button);
    AQStopScriptRecording();
    auto* box = new AQDialogButtonBox(QStringLiteral("Box"), QDialogButtonBox::Ok | QDialogButtonBox::Cancel,
                                      Qt::Horizontal, m_window.get(), true);
    QSignalSpy clicked(box, &AQDialogButtonBox::AClicked);
    QSignalSpy accepted(box, &AQDialogButtonBox::AAccepted);
    const QString script = m_sandbox->path(QStringLiteral("replay.scr"));
    m_sandbox->writeScript(script, {QStringLiteral("QtSignal Window Box clicked ") + name});
    QVERIFY(AQOpenScriptFileForReplay(script, 0, 2));
    QCOMPARE(clicked.count(), 1);
    QAbstractButton* expected = button < 0 ? nullptr : box->button(QDialogButtonBox::StandardButton(button));
    QCOMPARE(clicked.first().first().value<QAbstractButton*>(), expected);
    QCOMPARE(accepted.count(), 0); // replay passes the click on without pressing the button
}

void tst_AQDialogButtonBox::replayOtherSignals()
{
    AQStopScriptRecording();
    auto* box = new AQDialogButtonBox(QStringLiteral("Box"), QDialogButtonBox::Ok, Qt::Horizontal, m_window.get(), true);
    QSignalSpy accepted(box, &AQDialogButtonBox::AAccepted);
    QSignalSpy rejected(box, &AQDialogButtonBox::ARejected);
    QSignalSpy help(box, &AQDialogButtonBox::AHelpRequested);
    const QString script = m_sandbox->path(QStringLiteral("signals.scr"));
    m_sandbox->writeScript(script, {QStringLiteral("QtSignal Window Box accepted"),
                                    QStringLiteral("QtSignal Window Box rejected"),
                                    QStringLiteral("QtSignal Window Box helpRequested"),
                                    QStringLiteral("QtSignal Window Box pressed")});
    QVERIFY(AQOpenScriptFileForReplay(script, 0, 2));
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(rejected.count(), 1);
    QCOMPARE(help.count(), 1);
    QCOMPARE(AQScripts::recordingAllowedStackDepth(), 0);
}

QTEST_MAIN(tst_AQDialogButtonBox)
#include "tst_aqdialogbuttonbox.moc"
