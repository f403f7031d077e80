#include "ScriptSandbox.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>

#include <QMenu>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

class tst_AQAction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void constructors_data();
    void constructors();
    void recordsOnlyWhenListened_data();
    void recordsOnlyWhenListened();
    void triggeredFromMenuByUser();
    void reactionIsNotRecorded();
    void permissionStackKeepsOneEntryPerTrigger();
    void replay_data();
    void replay();

private:
    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<QWidget> m_window;
    QString m_script;

    QStringList records() const { return ScriptSandbox::recordLines(m_script); }
};

void tst_AQAction::init()
{
    m_sandbox = std::make_unique<ScriptSandbox>();
    m_window = std::make_unique<QWidget>();
    AQObjects::add(m_window.get(), QStringLiteral("Window"));
    m_script = m_sandbox->path(QStringLiteral("action.scr"));
    QVERIFY(AQOpenScriptFileForRecord(m_script, QStringLiteral("2")));
}

void tst_AQAction::cleanup()
{
    m_window.reset();
    m_sandbox.reset();
}

void tst_AQAction::constructors_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<bool>("scriptable");
    QTest::addColumn<QString>("text");

    QTest::newRow("text") << 0 << true << "&Save";
    QTest::newRow("icon and text") << 1 << true << "&Save";
    QTest::newRow("name is the text") << 2 << true << "Save As";
    QTest::newRow("not scriptable") << 0 << false << "&Save";
}

void tst_AQAction::constructors()
{
    QFETCH(int, form);
    QFETCH(bool, scriptable);
    QFETCH(QString, text);

    AQAction* action = nullptr;
    if (form == 0)
        action = new AQAction(QStringLiteral("Save As"), QStringLiteral("&Save"), m_window.get(), scriptable);
    else if (form == 1)
        action = new AQAction(QStringLiteral("Save As"), QIcon(), QStringLiteral("&Save"), m_window.get(), scriptable);
    else
        action = new AQAction(QStringLiteral("Save As"), m_window.get(), scriptable);
    QCOMPARE(action->text(), text);
    QCOMPARE(AQObjects::find(QStringLiteral("Window"), QStringLiteral("Save_As")) >= 0, scriptable);
    QCOMPARE(AQObjects::find(action) >= 0, scriptable);
    QVERIFY(action->triggerConnect());
}

void tst_AQAction::recordsOnlyWhenListened_data()
{
    QTest::addColumn<bool>("scriptable");
    QTest::addColumn<bool>("listened");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("plain") << true << true << false << QStringList{"QtSignal Window Act triggered"};
    QTest::newRow("checkable") << true << true << true
                               << QStringList{"QtSignal Window Act triggered 1", "QtSignal Window Act triggered 0"};
    QTest::newRow("nobody listens") << true << false << false << QStringList();
    QTest::newRow("not scriptable") << false << true << false << QStringList();
}

void tst_AQAction::recordsOnlyWhenListened()
{
    QFETCH(bool, scriptable);
    QFETCH(bool, listened);
    QFETCH(bool, checkable);
    QFETCH(QStringList, expected);

    auto* action = new AQAction(QStringLiteral("Act"), QStringLiteral("Act"), m_window.get(), scriptable);
    action->setCheckable(checkable);
    QSignalSpy spy(listened ? action : nullptr, &AQAction::ATriggered);
    if (!listened)
        QVERIFY(!spy.isValid());
    action->trigger();
    if (checkable)
        action->trigger();
    QCOMPARE(records(), expected);
    if (listened && scriptable)
        QCOMPARE(spy.count(), checkable ? 2 : 1);
}

void tst_AQAction::triggeredFromMenuByUser()
{
    auto* action = new AQAction(QStringLiteral("Open File"), QStringLiteral("&Open"), m_window.get(), true);
    QSignalSpy spy(action, &AQAction::ATriggered);
    QMenu menu;
    menu.addAction(action);
    menu.show();
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier, menu.actionGeometry(action).center());
    QCOMPARE(spy.count(), 1);
    QCOMPARE(records(), QStringList{"QtSignal Window Open_File triggered"});
}

void tst_AQAction::reactionIsNotRecorded()
{
    auto* outer = new AQAction(QStringLiteral("Outer"), QStringLiteral("Outer"), m_window.get(), true);
    auto* field = new QObject(m_window.get());
    AQObjects::add(field, QStringLiteral("Field"));
    connect(outer, &AQAction::ATriggered, field,
            [field] { AQScripts::recordSignal(field, QStringLiteral("valueChanged"), QStringLiteral("3")); });
    outer->trigger();
    QCOMPARE(records(), QStringList{"QtSignal Window Outer triggered"});

    // An action triggered by the reaction allows recording for itself. Each
    // receiver of ATriggered adds one more recording connection, so the
    // second receiver makes every trigger run (and record) twice.
    auto* inner = new AQAction(QStringLiteral("Inner"), QStringLiteral("Inner"), m_window.get(), true);
    QSignalSpy innerSpy(inner, &AQAction::ATriggered);
    connect(outer, &AQAction::ATriggered, inner, &QAction::trigger);
    outer->trigger();
    QCOMPARE(innerSpy.count(), 2);
    QCOMPARE(records().mid(1), (QStringList{"QtSignal Window Outer triggered", "QtSignal Window Inner triggered",
                                           "QtSignal Window Outer triggered", "QtSignal Window Inner triggered"}));
}

void tst_AQAction::permissionStackKeepsOneEntryPerTrigger()
{
    auto* action = new AQAction(QStringLiteral("Act"), QStringLiteral("Act"), m_window.get(), true);
    connect(action, &AQAction::ATriggered, this, [] { QVERIFY(AQScripts::isRecordingDisabled()); });
    const int depth = AQScripts::recordingAllowedStackDepth();
    action->trigger();
    action->trigger();
    QCOMPARE(AQScripts::recordingAllowedStackDepth(), depth + 2);
    // The entry left on top allows recording, so the next trigger records.
    QVERIFY(!AQScripts::isRecordingDisabled());
    QCOMPARE(records().size(), 2);
}

void tst_AQAction::replay_data()
{
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("checkedBefore");
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<bool>("checkedAfter");

    QTest::newRow("no args toggles on") << true << false << QStringList() << true;
    QTest::newRow("no args toggles off") << true << true << QStringList() << false;
    QTest::newRow("1 checks") << true << false << QStringList{"1"} << true;
    QTest::newRow("0 unchecks") << true << true << QStringList{"0"} << false;
    QTest::newRow("any non-zero checks") << true << false << QStringList{"7"} << true;
    QTest::newRow("not a number unchecks") << true << true << QStringList{"yes"} << false;
    QTest::newRow("plain action ignores args") << false << false << QStringList{"1", "2"} << false;
}

void tst_AQAction::replay()
{
    QFETCH(bool, checkable);
    QFETCH(bool, checkedBefore);
    QFETCH(QStringList, args);
    QFETCH(bool, checkedAfter);

    auto* action = new AQAction(QStringLiteral("Act"), QStringLiteral("Act"), m_window.get(), true);
    action->setCheckable(checkable);
    action->setChecked(checkedBefore);
    QSignalSpy spy(action, &AQAction::ATriggered);
    bool suppressedInside = false;
    connect(action, &AQAction::ATriggered, this, [&] { suppressedInside = AQScripts::isRecordingDisabled(); });
    const int depth = AQScripts::recordingAllowedStackDepth();
    QCOMPARE(action->scriptReplay(args), 0L);
    QCOMPARE(action->isChecked(), checkedAfter);
    QCOMPARE(spy.count(), 1);
    QVERIFY(suppressedInside);
    QCOMPARE(AQScripts::recordingAllowedStackDepth(), depth);
    QCOMPARE(records(), QStringList());
}

QTEST_MAIN(tst_AQAction)
#include "tst_aqaction.moc"
