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

enum CheckKind { CheckBoxKind, ToggleKind };

QCheckBox* makeCheck(int kind, QWidget* parent, bool scriptable = true)
{
    if (kind == ToggleKind)
        return new AQToggleButton(QStringLiteral("box"), QStringLiteral("Toggle"), parent, scriptable);
    return new AQCheckBox(QStringLiteral("box"), QStringLiteral("Check"), parent, scriptable);
}

enum Listener { NoListener = 0, PressedListener = 1, ReleasedListener = 2, ToggledListener = 4 };

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

class tst_Buttons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void checkBoxClickRecords_data();
    void checkBoxClickRecords();
    void checkBoxReplay_data();
    void checkBoxReplay();
    void unscriptableRecordsNothingAndIsNotFound_data();
    void unscriptableRecordsNothingAndIsNotFound();

    void pushButtonClickRecords_data();
    void pushButtonClickRecords();
    void pushButtonLazyConnections_data();
    void pushButtonLazyConnections();
    void pushButtonFlushesPendingLineEdit_data();
    void pushButtonFlushesPendingLineEdit();
    void buttonReplay_data();
    void buttonReplay();
    void replayedEditIsNotFlushedAgain();

    void colorButtonPaint_data();
    void colorButtonPaint();

    void radioButtonsRecordBothButtons();

    void toolButtonAdoptsRegisteredMenu();

    void actionRecordsAndReplays_data();
    void actionRecordsAndReplays();

    void colorDialogRecords_data();
    void colorDialogRecords();
    void colorDialogReplay_data();
    void colorDialogReplay();
    void colorDialogExecPullsLines_data();
    void colorDialogExecPullsLines();

private:
    std::unique_ptr<WrapperFixture> m_fx;
    std::unique_ptr<ASignalLog> m_log;
};

void tst_Buttons::init()
{
    m_fx = std::make_unique<WrapperFixture>();
    m_log = std::make_unique<ASignalLog>();
}

void tst_Buttons::cleanup()
{
    m_log.reset();
    m_fx.reset();
    QCOMPARE(AQScripts::isRecordingDisabled(), false);
}

// --- check boxes -------------------------------------------------------------

void tst_Buttons::checkBoxClickRecords_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("initiallyChecked");
    QTest::addColumn<QStringList>("records");
    QTest::addColumn<QStringList>("signalLog");

    for (int kind : {CheckBoxKind, ToggleKind}) {
        const char* prefix = kind == CheckBoxKind ? "check box" : "toggle";
        QTest::addRow("%s checks", prefix) << kind << false << QStringList{"box clicked true"}
                                           << QStringList{"box:AStateChanged(2)", "box:AClicked(true)"};
        QTest::addRow("%s unchecks", prefix) << kind << true << QStringList{"box clicked false"}
                                             << QStringList{"box:AStateChanged(0)", "box:AClicked(false)"};
    }
}

void tst_Buttons::checkBoxClickRecords()
{
    QFETCH(int, kind);
    QFETCH(bool, initiallyChecked);
    QFETCH(QStringList, records);
    QFETCH(QStringList, signalLog);

    QCheckBox* box = makeCheck(kind, m_fx->root());
    box->setChecked(initiallyChecked);
    m_log->watch(box);
    m_fx->startRecording();
    QTest::mouseClick(box, Qt::LeftButton);
    QCOMPARE(m_fx->stopRecording(), records);
    QCOMPARE(m_log->entries(), signalLog);
}

void tst_Buttons::checkBoxReplay_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("initialState");
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("finalState");
    QTest::addColumn<QStringList>("signalLog");

    const int un = Qt::Unchecked, part = Qt::PartiallyChecked, on = Qt::Checked;
    QTest::newRow("clicked true") << int(CheckBoxKind) << un << "clicked true" << on
                                  << QStringList{"box:AStateChanged(2)", "box:AClicked(true)"};
    QTest::newRow("clicked True is not true") << int(CheckBoxKind) << on << "clicked True" << un
                                              << QStringList{"box:AStateChanged(0)", "box:AClicked(false)"};
    QTest::newRow("clicked false when unchecked") << int(CheckBoxKind) << un << "clicked false" << un
                                                  << QStringList{"box:AClicked(false)"};
    QTest::newRow("stateChanged Checked") << int(CheckBoxKind) << un << "stateChanged Checked" << on
                                          << QStringList{"box:AStateChanged(2)"};
    QTest::newRow("stateChanged PartiallyChecked") << int(CheckBoxKind) << un << "stateChanged PartiallyChecked"
                                                   << part << QStringList{"box:AStateChanged(1)"};
    QTest::newRow("stateChanged Unchecked") << int(CheckBoxKind) << on << "stateChanged Unchecked" << un
                                            << QStringList{"box:AStateChanged(0)"};
    QTest::newRow("stateChanged unknown word checks") << int(CheckBoxKind) << un << "stateChanged maybe" << on
                                                      << QStringList{"box:AStateChanged(2)"};
    QTest::newRow("stateChanged two args ignored") << int(CheckBoxKind) << un << "stateChanged Checked Checked"
                                                   << un << QStringList();
    QTest::newRow("clicked without arg ignored") << int(CheckBoxKind) << on << "clicked" << on << QStringList();
    QTest::newRow("unknown signal ignored") << int(CheckBoxKind) << un << "toggled true" << un << QStringList();
    QTest::newRow("toggle clicked true") << int(ToggleKind) << un << "clicked true" << on
                                         << QStringList{"box:AStateChanged(2)", "box:AClicked(true)"};
    QTest::newRow("toggle stateChanged Unchecked") << int(ToggleKind) << on << "stateChanged Unchecked" << un
                                                   << QStringList{"box:AStateChanged(0)"};
    QTest::newRow("toggle two args ignored") << int(ToggleKind) << un << "clicked true true" << un << QStringList();
}

void tst_Buttons::checkBoxReplay()
{
    QFETCH(int, kind);
    QFETCH(int, initialState);
    QFETCH(QString, line);
    QFETCH(int, finalState);
    QFETCH(QStringList, signalLog);

    QCheckBox* box = makeCheck(kind, m_fx->root());
    box->setCheckState(Qt::CheckState(initialState));
    m_log->watch(box);
    QVERIFY(m_fx->replay({QStringLiteral("box ") + line}));
    QCOMPARE(int(box->checkState()), finalState);
    QCOMPARE(m_log->entries(), signalLog);
    QVERIFY(m_fx->fixedScriptReport().isEmpty());
}

void tst_Buttons::unscriptableRecordsNothingAndIsNotFound_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("check box") << "check";
    QTest::newRow("push button") << "push";
    QTest::newRow("radio button") << "radio";
    QTest::newRow("tool button") << "tool";
}

void tst_Buttons::unscriptableRecordsNothingAndIsNotFound()
{
    QFETCH(QString, kind);
    QAbstractButton* button = nullptr;
    const QString name = QStringLiteral("plain");
    if (kind == QLatin1String("check"))
        button = new AQCheckBox(name, QStringLiteral("x"), m_fx->root(), false);
    else if (kind == QLatin1String("push"))
        button = new AQPushButton(name, QStringLiteral("x"), m_fx->root(), false);
    else if (kind == QLatin1String("radio"))
        button = new AQRadioButton(name, QStringLiteral("x"), m_fx->root(), false);
    else
        button = new AQToolButton(name, m_fx->root(), false);
    button->resize(60, 24);
    m_log->watch(button);

    m_fx->startRecording();
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(m_fx->stopRecording(), QStringList());
    QCOMPARE(m_log->entries(), QStringList());
    QCOMPARE(AQObjects::find(button), -1);

    QVERIFY(m_fx->replay({QStringLiteral("plain clicked on")}));
    QVERIFY(m_fx->fixedScriptReport().contains(QLatin1String("Please only check plain")));
    QCOMPARE(m_log->entries(), QStringList());
}

// --- push buttons ------------------------------------------------------------

void tst_Buttons::pushButtonClickRecords_data()
{
    QTest::addColumn<bool>("tool");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("initiallyChecked");
    QTest::addColumn<QString>("record");
    QTest::addColumn<bool>("clickedArgument");

    for (bool tool : {false, true}) {
        const char* kind = tool ? "tool" : "push";
        const QString name = QLatin1String(kind);
        QTest::addRow("%s plain", kind) << tool << false << false << name + " clicked" << false;
        QTest::addRow("%s becomes checked", kind) << tool << true << false << name + " clicked on" << true;
        QTest::addRow("%s becomes unchecked", kind) << tool << true << true << name + " clicked" << false;
    }
}

void tst_Buttons::pushButtonClickRecords()
{
    QFETCH(bool, tool);
    QFETCH(bool, checkable);
    QFETCH(bool, initiallyChecked);
    QFETCH(QString, record);
    QFETCH(bool, clickedArgument);

    QAbstractButton* button = nullptr;
    std::unique_ptr<QSignalSpy> clicked;
    if (tool) {
        auto* t = new AQToolButton(QStringLiteral("tool"), m_fx->root(), true);
        t->resize(30, 30);
        clicked = std::make_unique<QSignalSpy>(t, &AQToolButton::AClicked);
        button = t;
    } else {
        auto* p = new AQPushButton(QStringLiteral("push"), QStringLiteral("Push"), m_fx->root(), true);
        // Only AClicked is listened to: listening to the others adds records.
        clicked = std::make_unique<QSignalSpy>(p, &AQPushButton::AClicked);
        button = p;
    }
    button->setCheckable(checkable);
    button->setChecked(initiallyChecked);
    m_fx->startRecording();
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(m_fx->stopRecording(), QStringList{record});
    QCOMPARE(clicked->count(), 1);
    QCOMPARE(clicked->first().first().toBool(), clickedArgument);
}

void tst_Buttons::pushButtonLazyConnections_data()
{
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<int>("listeners");
    QTest::addColumn<QStringList>("records");

    QTest::newRow("pressed listened") << false << int(PressedListener)
                                      << QStringList{"push pressed", "push clicked"};
    QTest::newRow("released listened") << false << int(ReleasedListener)
                                       << QStringList{"push released", "push clicked"};
    QTest::newRow("pressed and released listened")
        << false << int(PressedListener | ReleasedListener)
        << QStringList{"push pressed", "push released", "push clicked"};
    QTest::newRow("toggled listened on a checkable button") << true << int(ToggledListener)
                                                            << QStringList{"push toggled on", "push clicked on"};
}

void tst_Buttons::pushButtonLazyConnections()
{
    QFETCH(bool, checkable);
    QFETCH(int, listeners);
    QFETCH(QStringList, records);

    auto* push = new AQPushButton(QStringLiteral("push"), QStringLiteral("Push"), m_fx->root(), true);
    push->setCheckable(checkable);
    // Two listeners of the same signal still make one record per operation.
    listen(push, listeners, m_log.get());
    listen(push, listeners, m_log.get());
    m_fx->startRecording();
    QTest::mouseClick(push, Qt::LeftButton);
    QCOMPARE(m_fx->stopRecording(), records);
}

void tst_Buttons::pushButtonFlushesPendingLineEdit_data()
{
    QTest::addColumn<int>("buttonFocus");
    QTest::addColumn<int>("listeners");
    QTest::addColumn<QStringList>("records");

    // A button that takes no focus leaves the edit unfinished: only the
    // button's flush can record the text.
    QTest::newRow("button without focus") << int(Qt::NoFocus) << int(NoListener)
                                          << QStringList{"edit editingFinished abc", "push clicked"};
    QTest::newRow("button without focus, pressed listened")
        << int(Qt::NoFocus) << int(PressedListener)
        << QStringList{"edit editingFinished abc", "push pressed", "push clicked"};
    QTest::newRow("button taking focus: recorded once")
        << int(Qt::StrongFocus) << int(NoListener) << QStringList{"edit editingFinished abc", "push clicked"};
}

void tst_Buttons::pushButtonFlushesPendingLineEdit()
{
    QFETCH(int, buttonFocus);
    QFETCH(int, listeners);
    QFETCH(QStringList, records);

    auto* edit = new AQScriptableLineEdit(QStringLiteral("edit"), m_fx->root(), true);
    auto* push = new AQPushButton(QStringLiteral("push"), QStringLiteral("Use"), m_fx->root(), true);
    push->move(0, 40);
    push->setFocusPolicy(Qt::FocusPolicy(buttonFocus));
    listen(push, listeners, m_log.get());
    m_fx->showActive();
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());

    m_fx->startRecording();
    QTest::keyClicks(edit, QStringLiteral("abc"));
    QCOMPARE(AQScripts::getLineEditToRecord(), edit);
    QTest::mouseClick(push, Qt::LeftButton);
    QCOMPARE(m_fx->stopRecording(), records);
    QCOMPARE(AQScripts::getLineEditToRecord(), nullptr);
}

void tst_Buttons::buttonReplay_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("initiallyChecked");
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("finalChecked");
    QTest::addColumn<QStringList>("signalLog");

    // A push button's replay reports the operation; the application decides what it changes.
    const auto push = [](const char* row, const char* line, const QStringList& log) {
        QTest::newRow(row) << "push" << true << false << line << false << log;
    };
    push("push clicked without args", "clicked", {"push:AClicked(false)"});
    push("push clicked on", "clicked on", {"push:AClicked(true)"});
    push("push clicked other word", "clicked On", {"push:AClicked(false)"});
    push("push toggled on", "toggled on", {"push:AToggled(true)"});
    push("push toggled off, extra args", "toggled off x", {"push:AToggled(false)"});
    push("push toggled without args ignored", "toggled", {});
    push("push pressed", "pressed", {"push:APressed()"});
    push("push pressed with an arg ignored", "pressed on", {});
    push("push released", "released", {"push:AReleased()"});
    push("push released with an arg ignored", "released on", {});
    push("push unknown signal ignored", "activated x", {});

    QTest::newRow("radio toggled on") << "radio" << true << false << "toggled on" << true
                                      << QStringList{"radio:AToggled(true)"};
    QTest::newRow("radio toggled off") << "radio" << true << true << "toggled off" << false
                                       << QStringList{"radio:AToggled(false)"};
    QTest::newRow("radio toggled any other word checks") << "radio" << true << false << "toggled Off" << true
                                                         << QStringList{"radio:AToggled(true)"};
    QTest::newRow("radio toggled without args ignored") << "radio" << true << false << "toggled" << false
                                                        << QStringList();
    QTest::newRow("radio clicked on keeps the state") << "radio" << true << false << "clicked on" << false
                                                      << QStringList{"radio:AClicked(true)"};
    QTest::newRow("radio clicked without args") << "radio" << true << true << "clicked" << true
                                                << QStringList{"radio:AClicked(false)"};
    QTest::newRow("radio unknown signal ignored") << "radio" << true << false << "pressed" << false << QStringList();

    QTest::newRow("tool checkable, on") << "tool" << true << false << "clicked on" << true
                                        << QStringList{"tool:AClicked(true)"};
    QTest::newRow("tool checkable, no args unchecks") << "tool" << true << true << "clicked" << false
                                                      << QStringList{"tool:AClicked(false)"};
    QTest::newRow("tool checkable, other word unchecks") << "tool" << true << true << "clicked ON" << false
                                                         << QStringList{"tool:AClicked(false)"};
    QTest::newRow("tool not checkable, on reports false") << "tool" << false << false << "clicked on" << false
                                                          << QStringList{"tool:AClicked(false)"};
    QTest::newRow("tool unknown signal ignored") << "tool" << true << false << "toggled on" << false << QStringList();
}

void tst_Buttons::buttonReplay()
{
    QFETCH(QString, kind);
    QFETCH(bool, checkable);
    QFETCH(bool, initiallyChecked);
    QFETCH(QString, line);
    QFETCH(bool, finalChecked);
    QFETCH(QStringList, signalLog);

    QAbstractButton* button = nullptr;
    if (kind == QLatin1String("push")) {
        button = new AQPushButton(kind, QStringLiteral("Push"), m_fx->root(), true);
    } else if (kind == QLatin1String("radio")) {
        auto* radio = new AQRadioButton(kind, QStringLiteral("Radio"), m_fx->root(), true);
        radio->setAutoExclusive(false);
        button = radio;
    } else {
        button = new AQToolButton(kind, m_fx->root(), true);
    }
    button->setCheckable(checkable);
    button->setChecked(initiallyChecked);
    m_log->watch(button);
    QSignalSpy toggled(button, &QAbstractButton::toggled);
    QVERIFY(m_fx->replay({kind + QLatin1Char(' ') + line}));
    QCOMPARE(button->isChecked(), finalChecked);
    QCOMPARE(m_log->entries(), signalLog);
    if (kind == QLatin1String("tool")) {
        QCOMPARE(toggled.count(), 0);
        QCOMPARE(button->signalsBlocked(), false);
    }
}

void tst_Buttons::replayedEditIsNotFlushedAgain()
{
    auto* edit = new AQScriptableLineEdit(QStringLiteral("edit"), m_fx->root(), true);
    auto* push = new AQPushButton(QStringLiteral("push"), QStringLiteral("Use"), m_fx->root(), true);
    m_log->watch(edit, {QStringLiteral("ATextChanged")});
    m_log->watch(push);
    QVERIFY(m_fx->replay({"edit editingFinished abc", "push pressed", "push clicked"}));
    QCOMPARE(m_log->entries(), (QStringList{"edit:AEditingFinished()", "push:APressed()", "push:AClicked(false)"}));

    // Nor after the replay, when the user clicks the button.
    m_fx->startRecording();
    QTest::mouseClick(push, Qt::LeftButton);
    QCOMPARE(m_fx->stopRecording(), (QStringList{"push pressed", "push released", "push clicked"}));
}

// --- colour button -----------------------------------------------------------

void tst_Buttons::colorButtonPaint_data()
{
    QTest::addColumn<bool>("outlined");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("hovered");
    QTest::addColumn<QString>("fillRole"); // colour between outline and swatch

    QTest::newRow("outlined") << true << false << false << "background";
    QTest::newRow("outlined, selected") << true << true << false << "selected";
    QTest::newRow("outlined, hovered") << true << false << true << "highlight";
    QTest::newRow("outlined, selected and hovered") << true << true << true << "highlight";
    QTest::newRow("not outlined: swatch everywhere") << false << true << true << "swatch";
}

void tst_Buttons::colorButtonPaint()
{
    QFETCH(bool, outlined);
    QFETCH(bool, selected);
    QFETCH(bool, hovered);
    QFETCH(QString, fillRole);

    const QColor swatch(200, 30, 40);
    auto* button = new AQColorButton(QStringLiteral("colour"), swatch, m_fx->root(), true);
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
    const QImage image = button->grab().toImage();
    QCOMPARE(image.pixelColor(20, 12), swatch);
    QCOMPARE(button->property("colorSpace").toInt(), 2);
    QCOMPARE(button->property("outlineColor").value<QColor>(), pal.color(QPalette::Shadow));

    m_fx->startRecording();
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(m_fx->stopRecording(), QStringList{"colour clicked"});
}

// --- radio buttons -----------------------------------------------------------

void tst_Buttons::radioButtonsRecordBothButtons()
{
    auto* first = new AQRadioButton(QStringLiteral("first"), QStringLiteral("First"), m_fx->root(), true);
    auto* second = new AQRadioButton(QStringLiteral("second"), QStringLiteral("Second"), m_fx->root(), true);
    first->setGeometry(0, 0, 100, 24);
    second->setGeometry(0, 30, 100, 24);
    m_log->watchTree(m_fx->root());

    m_fx->startRecording();
    QTest::mouseClick(first, Qt::LeftButton);
    QTest::mouseClick(second, Qt::LeftButton);
    QTest::mouseClick(second, Qt::LeftButton); // already checked: a click, no toggle
    const QStringList expected{"first toggled on",  "first clicked on",  "first toggled off",
                               "second toggled on", "second clicked on", "second clicked on"};
    QCOMPARE(m_fx->stopRecording(), expected);
    QCOMPARE(m_log->entries(),
             (QStringList{"first:AToggled(true)", "first:AClicked(true)", "first:AToggled(false)",
                          "second:AToggled(true)", "second:AClicked(true)", "second:AClicked(true)"}));
}

// --- tool buttons --------------------------------------------------------------

void tst_Buttons::toolButtonAdoptsRegisteredMenu()
{
    auto* tool = new AQToolButton(QStringLiteral("tool"), m_fx->root(), true);
    QMenu loose;
    AQObjects::add(&loose, QStringLiteral("menu"));
    QMenu owned(m_fx->root());
    AQObjects::add(&owned, QStringLiteral("ownedMenu"));

    tool->setMenu(&loose);
    QCOMPARE(tool->menu(), &loose);
    QCOMPARE(AQObjects::find(QStringLiteral("tool"), QStringLiteral("menu")), AQObjects::find(&loose));

    // A menu whose registry parent is registered keeps it.
    tool->setMenu(&owned);
    QCOMPARE(AQObjects::find(QStringLiteral("tool"), QStringLiteral("ownedMenu")), -1);
    QCOMPARE(AQObjects::find(QStringLiteral("Root"), QStringLiteral("ownedMenu")), AQObjects::find(&owned));
    tool->setMenu(nullptr);
}

// --- actions -----------------------------------------------------------------

void tst_Buttons::actionRecordsAndReplays_data()
{
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<QString>("record");
    QTest::addColumn<QString>("replayLine");
    QTest::addColumn<bool>("checkedAfterReplay");

    QTest::newRow("plain") << false << "action triggered" << "action triggered 1 2" << false;
    QTest::newRow("checkable") << true << "action triggered 1" << "action triggered 0" << false;
    QTest::newRow("checkable, replay without arg toggles") << true << "action triggered 1" << "action triggered"
                                                           << false;
}

void tst_Buttons::actionRecordsAndReplays()
{
    QFETCH(bool, checkable);
    QFETCH(QString, record);
    QFETCH(QString, replayLine);
    QFETCH(bool, checkedAfterReplay);

    auto* action = new AQAction(QStringLiteral("action"), QStringLiteral("Act"), m_fx->root(), true);
    action->setCheckable(checkable);
    auto* tool = new AQToolButton(QStringLiteral("tool"), m_fx->root(), false);
    tool->setDefaultAction(action);
    tool->resize(30, 30);
    m_log->watch(action);

    m_fx->startRecording();
    QTest::mouseClick(tool, Qt::LeftButton);
    QCOMPARE(m_fx->stopRecording(), QStringList{record});
    QCOMPARE(m_log->entries(), QStringList{"action:ATriggered()"});
    // The action's own trigger leaves one extra permission on the stack.
    AQScripts::forceRecordingAllowed(true);

    QVERIFY(m_fx->replay({replayLine}));
    QCOMPARE(action->isChecked(), checkedAfterReplay);
    QCOMPARE(m_log->entries(), (QStringList{"action:ATriggered()", "action:ATriggered()"}));
}

// --- colour dialog -----------------------------------------------------------

void tst_Buttons::colorDialogRecords_data()
{
    QTest::addColumn<bool>("accept");
    QTest::addColumn<bool>("openedSuppressed");
    QTest::addColumn<QStringList>("records");

    const QString change = QStringLiteral("dialog currentColorChanged 12 34 56");
    QTest::newRow("accepted") << true << false << QStringList{change, "dialog accepted"};
    QTest::newRow("rejected") << false << false << QStringList{change, "dialog rejected"};
    QTest::newRow("opened from suppressed code") << true << true << QStringList{change, "dialog accepted"};
}

void tst_Buttons::colorDialogRecords()
{
    QFETCH(bool, accept);
    QFETCH(bool, openedSuppressed);
    QFETCH(QStringList, records);

    QPointer<AQColorDialog> dialog = new AQColorDialog(QStringLiteral("dialog"), Qt::white, m_fx->root(), true);
    m_log->watch(dialog);
    m_fx->startRecording();
    ModalCatcher catcher([accept](QWidget* modal) {
        auto* colorDialog = qobject_cast<QColorDialog*>(modal);
        colorDialog->setCurrentColor(QColor(12, 34, 56));
        if (accept)
            colorDialog->accept();
        else
            colorDialog->reject();
    });
    int result = -1;
    if (openedSuppressed)
        withRecordingSuppressed([&] { result = dialog->exec(); });
    else
        result = dialog->exec();
    QVERIFY(catcher.caught());
    QCOMPARE(result, accept ? int(QDialog::Accepted) : int(QDialog::Rejected));
    QCOMPARE(m_fx->stopRecording(), records);
    QCOMPARE(m_log->entries(),
             (QStringList{"dialog:ACurrentColorChanged(#0c2238)",
                          accept ? QStringLiteral("dialog:AAccepted()") : QStringLiteral("dialog:ARejected()")}));
    delete dialog;
}

void tst_Buttons::colorDialogReplay_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QStringList>("signalLog");

    QTest::newRow("three numbers") << "dialog currentColorChanged 12 34 56" << QColor(12, 34, 56, 255)
                                   << QStringList{"dialog:ACurrentColorChanged(#0c2238)"};
    QTest::newRow("two numbers ignored") << "dialog currentColorChanged 12 34" << QColor(Qt::white) << QStringList();
    QTest::newRow("four numbers ignored") << "dialog currentColorChanged 1 2 3 4" << QColor(Qt::white)
                                          << QStringList();
    QTest::newRow("unknown signal ignored") << "dialog finished 1" << QColor(Qt::white) << QStringList();
}

void tst_Buttons::colorDialogReplay()
{
    QFETCH(QString, line);
    QFETCH(QColor, color);
    QFETCH(QStringList, signalLog);

    auto* dialog = new AQColorDialog(QStringLiteral("dialog"), Qt::white, m_fx->root(), true);
    m_log->watch(dialog);
    QVERIFY(m_fx->replay({line}));
    QCOMPARE(dialog->currentColor(), color);
    QCOMPARE(m_log->entries(), signalLog);
}

void tst_Buttons::colorDialogExecPullsLines_data()
{
    QTest::addColumn<QStringList>("script");
    QTest::addColumn<bool>("replayResult");
    QTest::addColumn<bool>("checkedWhenExecReturned");
    QTest::addColumn<bool>("checkedAtEnd");
    QTest::addColumn<bool>("dialogDeleted");
    QTest::addColumn<QStringList>("signalLog");

    const QString open = QStringLiteral("open clicked");
    const QString change = QStringLiteral("dialog currentColorChanged 12 34 56");
    const QString check = QStringLiteral("box clicked true");
    const QString opened = QStringLiteral("open:AClicked(false)");
    const QString changed = QStringLiteral("dialog:ACurrentColorChanged(#0c2238)");
    const QStringList boxChecked{"box:AStateChanged(2)", "box:AClicked(true)"};

    QTest::newRow("accepted leaves the loop")
        << QStringList{open, change, "dialog accepted", check} << true << false << true << false
        << QStringList{opened, changed, "dialog:AAccepted()"} + boxChecked;
    QTest::newRow("rejected does not leave it")
        << QStringList{open, change, "dialog rejected", check} << true << true << true << true
        << QStringList{opened, changed, "dialog:ARejected()"} + boxChecked;
    QTest::newRow("rejected, then accepted later")
        << QStringList{open, "dialog rejected", check, "dialog accepted", "box clicked false"} << true << true
        << false << false
        << QStringList{opened, "dialog:ARejected()"} + boxChecked
               + QStringList{"dialog:AAccepted()", "box:AStateChanged(0)", "box:AClicked(false)"};
    QTest::newRow("script runs out") << QStringList{open, change} << true << false << false << true
                                     << QStringList{opened, changed};
    QTest::newRow("replay stopped") << QStringList{open, change, "stop clicked", check} << false << false << false
                                    << false << QStringList{opened, changed, "stop:AClicked(false)"};
}

void tst_Buttons::colorDialogExecPullsLines()
{
    QFETCH(QStringList, script);
    QFETCH(bool, replayResult);
    QFETCH(bool, checkedWhenExecReturned);
    QFETCH(bool, checkedAtEnd);
    QFETCH(bool, dialogDeleted);
    QFETCH(QStringList, signalLog);

    auto* open = new AQPushButton(QStringLiteral("open"), QStringLiteral("Colour..."), m_fx->root(), true);
    auto* stop = new AQPushButton(QStringLiteral("stop"), QStringLiteral("Stop"), m_fx->root(), true);
    auto* box = new AQCheckBox(QStringLiteral("box"), QStringLiteral("Box"), m_fx->root(), true);
    m_log->watch(open);
    m_log->watch(stop);
    m_log->watch(box);
    connect(stop, &AQPushButton::AClicked, this, [] { AQStopScriptReplay(); });
    QPointer<AQColorDialog> dialog;
    int execResult = -1;
    bool checkedOnReturn = false;
    connect(open, &AQPushButton::AClicked, this, [&] {
        dialog = new AQColorDialog(QStringLiteral("dialog"), Qt::white, m_fx->root(), true);
        m_log->watch(dialog);
        execResult = dialog->exec();
        checkedOnReturn = box->isChecked();
    });

    QCOMPARE(m_fx->replay(script), replayResult);
    QCOMPARE(execResult, 1);
    QCOMPARE(checkedOnReturn, checkedWhenExecReturned);
    QCOMPARE(box->isChecked(), checkedAtEnd);
    QCOMPARE(m_log->entries(), signalLog);
    QVERIFY(!dialog.isNull());
    QVERIFY(!dialog->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(dialog.isNull(), dialogDeleted);
    delete dialog;
    QVERIFY(m_fx->fixedScriptReport().isEmpty());
}

QTEST_MAIN(tst_Buttons)
#include "tst_buttons.moc"
