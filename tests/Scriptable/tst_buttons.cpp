#include "ASignalLog.h"
#include "ModalCatcher.h"
#include "WrapperFixture.h"

#include <Script/AQObjects.h>
#include <Script/AQRecordingGuard.h>
#include <Script/AQScriptBackend.h>
#include <Scriptable/AQButtons.h>
#include <Scriptable/AQScriptableLineEdit.h>

#include <QMenu>
#include <QPointer>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

namespace {
enum Listener { NoListener = 0, PressedListener = 1, ReleasedListener = 2, ToggledListener = 4 };

// Triggers @p action as a user does, through a button showing it.
void clickAction(QAction* action)
{
    QToolButton button;
    button.setDefaultAction(action);
    QTest::mouseClick(&button, Qt::LeftButton);
}

void listen(AQPushButton* button, int listeners, QObject* context)
{
    if (listeners & PressedListener)
        QObject::connect(button, &AQPushButton::APressed, context, [] {});
    if (listeners & ReleasedListener)
        QObject::connect(button, &AQPushButton::AReleased, context, [] {});
    if (listeners & ToggledListener)
        QObject::connect(button, &AQPushButton::AToggled, context, [](bool) {});
}

} // namespace

/// Check boxes, push, radio and tool buttons, actions and the colour dialog.
class tst_Buttons : public QObject
{
    Q_OBJECT

    std::unique_ptr<WrapperFixture> m_fx;
    std::unique_ptr<ASignalLog> m_log;

    AQAction* makeAction(bool checkable, bool scriptable = true)
    {
        auto* action = new AQAction("Act", "Act", m_fx->root(), scriptable);
        action->setCheckable(checkable);
        return action;
    }

private Q_SLOTS:
    void init()
    {
        m_fx = std::make_unique<WrapperFixture>();
        m_log = std::make_unique<ASignalLog>();
    }

    void cleanup()
    {
        m_log.reset();
        m_fx.reset();
        QCOMPARE(AQScripts::isRecordingDisabled(), false);
    }

    void checkBoxClickRecords_data()
    {
        QTest::addColumn<bool>("toggle");
        QTest::addColumn<bool>("initiallyChecked");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QStringList>("signalLog");
        QTest::newRow("check box checks") << false << false << QStringList{"box clicked true"}
                                          << QStringList{"box:AStateChanged(2)", "box:AClicked(true)"};
        QTest::newRow("toggle unchecks") << true << true << QStringList{"box clicked false"}
                                         << QStringList{"box:AStateChanged(0)", "box:AClicked(false)"};
    }

    void checkBoxClickRecords()
    {
        QFETCH(bool, toggle);
        QFETCH(bool, initiallyChecked);
        QFETCH(QStringList, records);
        QFETCH(QStringList, signalLog);
        QCheckBox* box = toggle ? static_cast<QCheckBox*>(new AQToggleButton("box", "Toggle", m_fx->root(), true))
                                : new AQCheckBox("box", "Check", m_fx->root(), true);
        box->setChecked(initiallyChecked);
        m_log->watch(box);
        m_fx->startRecording();
        QTest::mouseClick(box, Qt::LeftButton);
        QCOMPARE(m_fx->stopRecording(), records);
        QCOMPARE(m_log->entries(), signalLog);
    }

    void unscriptableRecordsNothingAndIsNotFound()
    {
        auto* button = new AQPushButton("plain", "x", m_fx->root(), false);
        m_log->watch(button); // listening does not make it record either
        m_fx->startRecording();
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(m_fx->stopRecording(), QStringList());
        QCOMPARE(AQObjects::find(button), -1);
        QVERIFY(m_fx->replay({"plain clicked on"}));
        QVERIFY(m_fx->fixedScriptReport().contains("Please only check plain"));
        QCOMPARE(m_log->entries(), QStringList());
    }

    void pushButtonClickRecords_data()
    {
        QTest::addColumn<bool>("tool");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<int>("listeners");
        QTest::addColumn<QStringList>("records");
        QTest::newRow("push plain") << false << false << int(NoListener) << QStringList{"button clicked"};
        QTest::newRow("push becomes checked") << false << true << int(NoListener) << QStringList{"button clicked on"};
        QTest::newRow("tool becomes checked") << true << true << int(NoListener) << QStringList{"button clicked on"};
        // Pressing, releasing and toggling are recorded once something listens.
        QTest::newRow("pressed and released listened")
            << false << false << int(PressedListener | ReleasedListener)
            << QStringList{"button pressed", "button released", "button clicked"};
        QTest::newRow("toggled listened") << false << true << int(ToggledListener)
                                          << QStringList{"button toggled on", "button clicked on"};
    }

    void pushButtonClickRecords()
    {
        QFETCH(bool, tool);
        QFETCH(bool, checkable);
        QFETCH(int, listeners);
        QFETCH(QStringList, records);
        QAbstractButton* button = nullptr;
        if (tool) {
            button = new AQToolButton("button", m_fx->root(), true);
        } else {
            auto* push = new AQPushButton("button", "Push", m_fx->root(), true);
            // Two listeners of the same signal still make one record per operation.
            listen(push, listeners, m_log.get());
            listen(push, listeners, m_log.get());
            button = push;
        }
        button->resize(30, 30);
        button->setCheckable(checkable);
        m_log->watch(button, {"APressed", "AReleased", "AToggled"});
        m_fx->startRecording();
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(m_fx->stopRecording(), records);
        QCOMPARE(m_log->entries(), QStringList{QString("button:AClicked(%1)").arg(checkable ? "true" : "false")});
    }

    void pushButtonFlushesPendingLineEdit_data()
    {
        QTest::addColumn<int>("buttonFocus");
        // A button that takes no focus leaves the edit unfinished: only the
        // button's flush can record the text.
        QTest::newRow("button without focus") << int(Qt::NoFocus);
        QTest::newRow("button taking focus: recorded once") << int(Qt::StrongFocus);
    }

    void pushButtonFlushesPendingLineEdit()
    {
        QFETCH(int, buttonFocus);
        auto* edit = new AQScriptableLineEdit("edit", m_fx->root(), true);
        auto* push = new AQPushButton("push", "Use", m_fx->root(), true);
        push->move(0, 40);
        push->setFocusPolicy(Qt::FocusPolicy(buttonFocus));
        m_fx->showActive();
        edit->setFocus();
        QTRY_VERIFY(edit->hasFocus());
        m_fx->startRecording();
        QTest::keyClicks(edit, "abc");
        QCOMPARE(AQScripts::getLineEditToRecord(), edit);
        QTest::mouseClick(push, Qt::LeftButton);
        QCOMPARE(m_fx->stopRecording(), (QStringList{"edit editingFinished abc", "push clicked"}));
        QCOMPARE(AQScripts::getLineEditToRecord(), nullptr);
    }

    void replay_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("before"); // "on" or "off" checked, "plain" not checkable
        QTest::addColumn<QString>("after");  // checked state or, for the colour dialog, the colour
        QTest::addColumn<QStringList>("signalLog");
        const auto row = [](const char* line, const char* before, const char* after, const QStringList& log) {
            QTest::newRow(line) << line << before << after << log;
        };
        row("box clicked true", "off", "on", {"box:AStateChanged(2)", "box:AClicked(true)"});
        row("box clicked True", "on", "off", {"box:AStateChanged(0)", "box:AClicked(false)"});
        row("box stateChanged PartiallyChecked", "off", "partial", {"box:AStateChanged(1)"});
        row("box stateChanged Unchecked", "on", "off", {"box:AStateChanged(0)"});
        row("box stateChanged maybe", "off", "on", {"box:AStateChanged(2)"});
        row("box clicked true true", "off", "off", {});
        row("box toggled true", "off", "off", {});
        // A push button's replay reports the operation; the application decides what it changes.
        row("push clicked", "off", "off", {"push:AClicked(false)"});
        row("push clicked on", "off", "off", {"push:AClicked(true)"});
        row("push toggled off x", "off", "off", {"push:AToggled(false)"});
        row("push toggled", "off", "off", {});
        row("push pressed", "off", "off", {"push:APressed()"});
        row("push released", "off", "off", {"push:AReleased()"});
        row("push released on", "off", "off", {});
        row("push activated x", "off", "off", {});
        row("radio toggled off", "on", "off", {"radio:AToggled(false)"});
        row("radio toggled Off", "off", "on", {"radio:AToggled(true)"});
        row("radio toggled", "off", "off", {});
        row("radio clicked on", "off", "off", {"radio:AClicked(true)"});
        row("radio clicked", "on", "on", {"radio:AClicked(false)"});
        row("tool clicked on", "off", "on", {"tool:AClicked(true)"});
        row("tool clicked ON", "on", "off", {"tool:AClicked(false)"});
        QTest::newRow("tool clicked on, not checkable") << "tool clicked on" << "plain" << "off"
                                                        << QStringList{"tool:AClicked(false)"};
        row("tool toggled on", "off", "off", {});
        row("Act triggered", "on", "off", {"Act:ATriggered()"});
        row("Act triggered 7", "off", "on", {"Act:ATriggered()"});
        row("Act triggered yes", "on", "off", {"Act:ATriggered()"});
        row("Act triggered 1 2", "plain", "off", {"Act:ATriggered()"});
        row("dialog currentColorChanged 12 34 56", "", "#0c2238", {"dialog:ACurrentColorChanged(#0c2238)"});
        row("dialog currentColorChanged 12 34", "", "#ffffff", {});
        row("dialog finished 1", "", "#ffffff", {});
    }

    void replay()
    {
        QFETCH(QString, line);
        QFETCH(QString, before);
        QFETCH(QString, after);
        QFETCH(QStringList, signalLog);
        auto* box = new AQCheckBox("box", "Check", m_fx->root(), true);
        auto* push = new AQPushButton("push", "Push", m_fx->root(), true);
        auto* radio = new AQRadioButton("radio", "Radio", m_fx->root(), true);
        radio->setAutoExclusive(false);
        auto* tool = new AQToolButton("tool", m_fx->root(), true);
        AQAction* action = makeAction(true);
        auto* dialog = new AQColorDialog("dialog", Qt::white, m_fx->root(), true);
        const QString target = line.section(' ', 0, 0);
        if (auto* button = m_fx->root()->findChild<QAbstractButton*>(target)) {
            button->setCheckable(before != "plain");
            button->setChecked(before == "on");
        }
        action->setCheckable(target != "Act" || before != "plain");
        action->setChecked(target == "Act" && before == "on");
        QSignalSpy toolToggled(tool, &QAbstractButton::toggled);
        bool suppressedInside = false;
        connect(action, &AQAction::ATriggered, this, [&] { suppressedInside = AQScripts::isRecordingDisabled(); });
        m_log->watchTree(m_fx->root());
        const int depth = AQScripts::recordingAllowedStackDepth();

        QVERIFY(m_fx->replay({line}));
        QCOMPARE(m_log->entries(), signalLog);
        const auto checked = [](bool on) { return QString(on ? "on" : "off"); };
        const QMap<QString, QString> state{{"box", QStringList{"off", "partial", "on"}.at(box->checkState())},
                                           {"push", checked(push->isChecked())},
                                           {"radio", checked(radio->isChecked())},
                                           {"tool", checked(tool->isChecked())},
                                           {"Act", checked(action->isChecked())},
                                           {"dialog", dialog->currentColor().name()}};
        QCOMPARE(state.value(target), after);
        QCOMPARE(AQScripts::recordingAllowedStackDepth(), depth);
        QCOMPARE(suppressedInside, target == "Act"); // the application reacts with recording suppressed
        QCOMPARE(toolToggled.count(), 0); // a replayed tool button is set quietly
        QVERIFY(!tool->signalsBlocked());
        QVERIFY(m_fx->fixedScriptReport().isEmpty());
    }

    void replayedEditIsNotFlushedAgain()
    {
        auto* edit = new AQScriptableLineEdit("edit", m_fx->root(), true);
        auto* push = new AQPushButton("push", "Use", m_fx->root(), true);
        m_log->watch(edit, {"ATextChanged"});
        m_log->watch(push);
        QVERIFY(m_fx->replay({"edit editingFinished abc", "push pressed", "push clicked"}));
        QCOMPARE(m_log->entries(), (QStringList{"edit:AEditingFinished()", "push:APressed()", "push:AClicked(false)"}));
        // Nor after the replay, when the user clicks the button.
        m_fx->startRecording();
        QTest::mouseClick(push, Qt::LeftButton);
        QCOMPARE(m_fx->stopRecording(), (QStringList{"push pressed", "push released", "push clicked"}));
    }

    void radioButtonsRecordBothButtons()
    {
        auto* first = new AQRadioButton("first", "First", m_fx->root(), true);
        auto* second = new AQRadioButton("second", "Second", m_fx->root(), true);
        first->setGeometry(0, 0, 100, 24);
        second->setGeometry(0, 30, 100, 24);
        m_log->watchTree(m_fx->root());
        m_fx->startRecording();
        QTest::mouseClick(first, Qt::LeftButton);
        QTest::mouseClick(second, Qt::LeftButton);
        QTest::mouseClick(second, Qt::LeftButton); // already checked: a click, no toggle
        QCOMPARE(m_fx->stopRecording(), (QStringList{"first toggled on", "first clicked on", "first toggled off",
                                                     "second toggled on", "second clicked on", "second clicked on"}));
        QCOMPARE(m_log->entries(),
                 (QStringList{"first:AToggled(true)", "first:AClicked(true)", "first:AToggled(false)",
                              "second:AToggled(true)", "second:AClicked(true)", "second:AClicked(true)"}));
    }

    void toolButtonAdoptsRegisteredMenu()
    {
        auto* tool = new AQToolButton("tool", m_fx->root(), true);
        QMenu loose;
        AQObjects::add(&loose, "menu");
        QMenu owned(m_fx->root());
        AQObjects::add(&owned, "ownedMenu");
        tool->setMenu(&loose);
        QCOMPARE(AQObjects::find(QString("tool"), "menu"), AQObjects::find(&loose));
        // A menu whose registry parent is registered keeps it.
        tool->setMenu(&owned);
        QCOMPARE(AQObjects::find(QString("tool"), "ownedMenu"), -1);
        QCOMPARE(AQObjects::find(QString("Root"), "ownedMenu"), AQObjects::find(&owned));
        tool->setMenu(nullptr);
    }

    void colorButtonPaint_data()
    {
        QTest::addColumn<bool>("outlined");
        QTest::addColumn<bool>("selected");
        QTest::addColumn<bool>("hovered");
        QTest::addColumn<QString>("fillRole"); // colour between outline and swatch
        QTest::newRow("outlined") << true << false << false << "background";
        QTest::newRow("outlined, selected") << true << true << false << "selected";
        QTest::newRow("outlined, selected and hovered") << true << true << true << "highlight";
        QTest::newRow("not outlined: swatch everywhere") << false << true << true << "swatch";
    }

    void colorButtonPaint()
    {
        QFETCH(bool, outlined);
        QFETCH(bool, selected);
        QFETCH(bool, hovered);
        QFETCH(QString, fillRole);
        const QColor swatch(200, 30, 40);
        auto* button = new AQColorButton("colour", swatch, m_fx->root(), true);
        button->resize(40, 24);
        button->setOutlined(outlined);
        button->setSelected(selected);
        m_fx->showActive();
        if (hovered) {
            // The offscreen platform has no pointer to move: deliver the entry.
            QEnterEvent enter(QPointF(20, 12), QPointF(20, 12), QPointF(button->mapToGlobal(QPoint(20, 12))));
            QApplication::sendEvent(button, &enter);
        }
        const QPalette& pal = button->palette();
        const QMap<QString, QColor> roles{{"background", pal.color(QPalette::Window)},
                                          {"selected", pal.color(QPalette::Highlight).darker(200)},
                                          {"highlight", pal.color(QPalette::Highlight)},
                                          {"swatch", swatch}};
        QTRY_COMPARE(button->grab().toImage().pixelColor(1, 1), roles.value(fillRole));
        QCOMPARE(button->grab().toImage().pixelColor(20, 12), swatch);
    }

    void actionRecordsOnlyWhenListened_data()
    {
        QTest::addColumn<bool>("scriptable");
        QTest::addColumn<bool>("listened");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("plain") << true << true << false << QStringList{"Act triggered", "Act triggered"};
        QTest::newRow("checkable") << true << true << true << QStringList{"Act triggered 1", "Act triggered 0"};
        QTest::newRow("nobody listens") << true << false << false << QStringList();
        QTest::newRow("not scriptable") << false << true << false << QStringList();
    }

    void actionRecordsOnlyWhenListened()
    {
        QFETCH(bool, scriptable);
        QFETCH(bool, listened);
        QFETCH(bool, checkable);
        QFETCH(QStringList, expected);
        AQAction* action = makeAction(checkable, scriptable);
        if (listened)
            m_log->watch(action);
        m_fx->startRecording();
        clickAction(action);
        clickAction(action);
        QCOMPARE(m_fx->stopRecording(), expected);
        QCOMPARE(m_log->entries().size(), listened && scriptable ? 2 : 0);
        QCOMPARE(AQObjects::find(action) >= 0, scriptable);
    }

    void actionReactionIsNotRecorded()
    {
        AQAction* outer = makeAction(false);
        auto* field = new QObject(m_fx->root());
        AQObjects::add(field, "Field");
        connect(outer, &AQAction::ATriggered, field, [field] { AQScripts::recordSignal(field, "valueChanged", "3"); });
        m_fx->startRecording();
        clickAction(outer);
        QCOMPARE(m_fx->stopRecording(), QStringList{"Act triggered"});

        // An action triggered by the reaction allows recording for itself. Each
        // receiver of ATriggered adds one more recording connection, so the
        // second receiver makes every trigger run (and record) twice.
        auto* inner = new AQAction("Inner", "Inner", m_fx->root(), true);
        m_log->watch(inner);
        connect(outer, &AQAction::ATriggered, inner, &QAction::trigger);
        m_fx->startRecording();
        clickAction(outer);
        QCOMPARE(m_log->entries(), (QStringList{"Inner:ATriggered()", "Inner:ATriggered()"}));
        QCOMPARE(m_fx->stopRecording(),
                 (QStringList{"Act triggered", "Inner triggered", "Act triggered", "Inner triggered"}));
    }

    void actionPermissionStackKeepsOneEntryPerTrigger()
    {
        AQAction* action = makeAction(false);
        connect(action, &AQAction::ATriggered, this, [] { QVERIFY(AQScripts::isRecordingDisabled()); });
        const int depth = AQScripts::recordingAllowedStackDepth();
        clickAction(action);
        clickAction(action);
        QCOMPARE(AQScripts::recordingAllowedStackDepth(), depth + 2);
        // The entry left on top allows recording.
        QVERIFY(!AQScripts::isRecordingDisabled());
    }

    void colorDialogRecords_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::addColumn<bool>("openedSuppressed");
        QTest::newRow("accepted") << true << false;
        QTest::newRow("rejected, opened from suppressed code") << false << true;
    }

    void colorDialogRecords()
    {
        QFETCH(bool, accept);
        QFETCH(bool, openedSuppressed);
        QPointer<AQColorDialog> dialog = new AQColorDialog("dialog", Qt::white, m_fx->root(), true);
        m_log->watch(dialog);
        m_fx->startRecording();
        ModalCatcher catcher([accept](QWidget* modal) {
            auto* colorDialog = qobject_cast<QColorDialog*>(modal);
            colorDialog->setCurrentColor(QColor(12, 34, 56));
            accept ? colorDialog->accept() : colorDialog->reject();
        });
        int result = -1;
        if (openedSuppressed)
            withRecordingSuppressed([&] { result = dialog->exec(); });
        else
            result = dialog->exec();
        QVERIFY(catcher.caught());
        QCOMPARE(result, accept ? int(QDialog::Accepted) : int(QDialog::Rejected));
        const QString end = accept ? "accepted" : "rejected";
        QCOMPARE(m_fx->stopRecording(), (QStringList{"dialog currentColorChanged 12 34 56", "dialog " + end}));
        QCOMPARE(m_log->entries(), (QStringList{"dialog:ACurrentColorChanged(#0c2238)",
                                                accept ? "dialog:AAccepted()" : "dialog:ARejected()"}));
        delete dialog;
    }

    void colorDialogExecPullsLines_data()
    {
        QTest::addColumn<QStringList>("script");
        QTest::addColumn<bool>("replayResult");
        QTest::addColumn<bool>("checkedWhenExecReturned");
        QTest::addColumn<bool>("dialogDeleted");
        QTest::addColumn<QStringList>("signalLog");
        const QString open = "open clicked", change = "dialog currentColorChanged 12 34 56", check = "box clicked true";
        const QString opened = "open:AClicked(false)", changed = "dialog:ACurrentColorChanged(#0c2238)";
        const QStringList boxChecked{"box:AStateChanged(2)", "box:AClicked(true)"};
        QTest::newRow("accepted leaves the loop") << QStringList{open, change, "dialog accepted", check} << true
                                                  << false << false
                                                  << QStringList{opened, changed, "dialog:AAccepted()"} + boxChecked;
        QTest::newRow("rejected does not leave it") << QStringList{open, change, "dialog rejected", check} << true
                                                    << true << true
                                                    << QStringList{opened, changed, "dialog:ARejected()"} + boxChecked;
        QTest::newRow("script runs out") << QStringList{open, change} << true << false << true
                                         << QStringList{opened, changed};
        QTest::newRow("replay stopped") << QStringList{open, change, "stop clicked", check} << false << false << false
                                        << QStringList{opened, changed, "stop:AClicked(false)"};
    }

    void colorDialogExecPullsLines()
    {
        QFETCH(QStringList, script);
        QFETCH(bool, replayResult);
        QFETCH(bool, checkedWhenExecReturned);
        QFETCH(bool, dialogDeleted);
        QFETCH(QStringList, signalLog);
        auto* open = new AQPushButton("open", "Colour...", m_fx->root(), true);
        auto* stop = new AQPushButton("stop", "Stop", m_fx->root(), true);
        auto* box = new AQCheckBox("box", "Box", m_fx->root(), true);
        m_log->watchTree(m_fx->root());
        connect(stop, &AQPushButton::AClicked, this, [] { AQStopScriptReplay(); });
        QPointer<AQColorDialog> dialog;
        int execResult = -1;
        bool checkedOnReturn = false;
        connect(open, &AQPushButton::AClicked, this, [&] {
            dialog = new AQColorDialog("dialog", Qt::white, m_fx->root(), true);
            m_log->watch(dialog);
            execResult = dialog->exec();
            checkedOnReturn = box->isChecked();
        });
        QCOMPARE(m_fx->replay(script), replayResult);
        QCOMPARE(execResult, 1);
        QCOMPARE(checkedOnReturn, checkedWhenExecReturned);
        QCOMPARE(m_log->entries(), signalLog);
        QVERIFY(!dialog.isNull());
        QVERIFY(!dialog->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(dialog.isNull(), dialogDeleted);
        delete dialog;
        QVERIFY(m_fx->fixedScriptReport().isEmpty());
    }
};

QTEST_MAIN(tst_Buttons)
#include "tst_buttons.moc"
