#include "ASignalLog.h"
#include "ModalCatcher.h"
#include "SliderDriving.h"
#include "WrapperFixture.h"

#include <Script/AQRecordingGuard.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQCheckBox.h>
#include <Scriptable/AQPushButton.h>
#include <Scriptable/AQValueInputs.h>

#include <QAbstractItemView>
#include <QtTest>

#include <cmath>
#include <memory>

using namespace QtUIBase;

namespace {
/// Keyboard operations on a combo box: "down" and "up" step through the
/// items; "next" and "repick" open the popup and choose the next or the
/// current item with Return.
void operateCombo(QComboBox* combo, const QString& op)
{
    if (op == QLatin1String("down") || op == QLatin1String("up")) {
        QTest::keyClick(combo, op == QLatin1String("down") ? Qt::Key_Down : Qt::Key_Up);
        return;
    }
    combo->showPopup();
    QAbstractItemView* view = combo->view();
    QTRY_VERIFY(view->isVisible());
    if (op == QLatin1String("next"))
        QTest::keyClick(view, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_Return);
    QTRY_VERIFY(!view->isVisible());
}

/// Asks one AQInputDialog question of @p kind and answers the value as text.
QString ask(const QString& kind, bool* ok, bool record)
{
    if (kind == QLatin1String("int"))
        return QString::number(AQInputDialog::getInt(nullptr, "Count", "How many?", 1, 0, 1000, 1, ok, {}, record));
    if (kind == QLatin1String("double"))
        return QString::number(
            AQInputDialog::getDouble(nullptr, "Size", "How large?", 1, -1e9, 1e9, 4, ok, {}, record), 'g', 12);
    if (kind == QLatin1String("item"))
        return AQInputDialog::getItem(nullptr, "Pick", "Which?", {"Alpha", "Beta", "two words"}, 0, false, ok, {},
                                      record);
    return AQInputDialog::getText(nullptr, "Name", "Name?", QLineEdit::Normal, QString(), ok, {}, Qt::ImhNone, record);
}

} // namespace

/// Combo boxes, line and text edits, spin boxes, sliders, labels and the input dialog.
class tst_ValueInputs : public QObject
{
    Q_OBJECT

    std::unique_ptr<WrapperFixture> m_fx;
    std::unique_ptr<ASignalLog> m_log;

    AQComboBox* makeCombo()
    {
        auto* combo = new AQComboBox("combo", m_fx->root(), true);
        combo->addItems({"Alpha", "Beta", "Gamma"});
        return combo;
    }

    // A spin box at 5 that takes -1e7 to 1e7.
    QAbstractSpinBox* makeSpin(bool isDouble, const QString& name = "spin", bool scriptable = true)
    {
        QAbstractSpinBox* box = nullptr;
        if (isDouble)
            box = new AQDoubleSpinBox(name, QString(), m_fx->root(), scriptable);
        else
            box = new AQSpinBox(m_fx->root(), name, scriptable);
        box->setProperty("minimum", -1e7);
        box->setProperty("maximum", 1e7);
        box->setProperty("value", 5);
        return box;
    }

    // Shows the root and gives @p widget the focus, as a click would.
    void focus(QWidget* widget)
    {
        m_fx->showActive();
        widget->setFocus();
        QTRY_VERIFY(widget->hasFocus());
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
        AQScripts::setCaseInsensitiveFind(false);
        QCOMPARE(AQScripts::isRecordingDisabled(), false);
    }

    void comboRecords_data()
    {
        QTest::addColumn<bool>("sendAll");
        QTest::addColumn<bool>("recordIndexChanged");
        QTest::addColumn<QStringList>("operations");
        QTest::addColumn<QStringList>("records");
        QTest::newRow("same item twice: one record") << false << true << QStringList{"next", "repick"}
                                                     << QStringList{"combo CurrentIndexChanged Beta"};
        QTest::newRow("same item twice, send all events")
            << true << true << QStringList{"next", "repick"}
            << QStringList{"combo CurrentIndexChanged Beta", "combo activated Beta", "combo activated Beta"};
        QTest::newRow("back and forth") << false << true << QStringList{"down", "up", "down"}
                                        << QStringList{"combo CurrentIndexChanged Beta",
                                                       "combo CurrentIndexChanged Alpha",
                                                       "combo CurrentIndexChanged Beta"};
        QTest::newRow("index changes not recorded: activations are")
            << false << false << QStringList{"down", "repick", "down"}
            << QStringList{"combo activated Beta", "combo activated Gamma"};
    }

    void comboRecords()
    {
        QFETCH(bool, sendAll);
        QFETCH(bool, recordIndexChanged);
        QFETCH(QStringList, operations);
        QFETCH(QStringList, records);
        AQComboBox* combo = makeCombo();
        combo->setSendAllEvents(sendAll);
        combo->setRecordIndexChanged(recordIndexChanged);
        m_fx->showActive();
        m_fx->startRecording();
        for (const QString& op : qAsConst(operations))
            operateCombo(combo, op);
        QCOMPARE(m_fx->stopRecording(), records);
    }

    void comboProgramChoiceIsNotRecordedWhenConfirmed()
    {
        AQComboBox* combo = makeCombo();
        m_fx->showActive();
        combo->setCurrentTextInternal("Gamma");
        m_fx->startRecording();
        operateCombo(combo, "repick");
        operateCombo(combo, "up");
        QCOMPARE(m_fx->stopRecording(), QStringList{"combo CurrentIndexChanged Beta"});
    }

    void comboEditedTextRecordsOnce()
    {
        AQComboBox* combo = makeCombo();
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        auto* other = new QLineEdit(m_fx->root());
        other->move(0, 60);
        m_log->watch(combo);
        focus(combo);
        m_fx->startRecording();
        combo->lineEdit()->selectAll();
        QTest::keyClicks(combo, "Omega");
        QTest::keyClick(combo, Qt::Key_Tab);
        QTRY_VERIFY(other->hasFocus());
        combo->setFocus();
        QTRY_VERIFY(combo->hasFocus());
        QTest::keyClick(combo, Qt::Key_Tab); // unchanged: not recorded again
        QTRY_VERIFY(other->hasFocus());
        QCOMPARE(m_fx->stopRecording(), QStringList{"combo EditingFinished Omega"});
        QVERIFY(m_log->entries().contains("combo:AEditTextChanged(Omega)"));
        QVERIFY(m_log->entries().contains("combo:AEditingFinished()"));
    }

    void comboNetNameActivation_data()
    {
        QTest::addColumn<bool>("withNetBox");
        QTest::addColumn<QStringList>("signalLog");
        QTest::newRow("index and text from the net box")
            << true << QStringList{"combo:AIndexActivated(1)", "combo:AIndexActivated(net1)"};
        QTest::newRow("net box gone: index 0, no text") << false << QStringList{"combo:AIndexActivated(0)"};
    }

    void comboNetNameActivation()
    {
        QFETCH(bool, withNetBox);
        QFETCH(QStringList, signalLog);
        AQComboBox* combo = makeCombo();
        combo->setSendAllEvents(true); // index 0 would repeat the last recorded text and do nothing
        auto netBox = std::make_unique<QComboBox>();
        netBox->addItems({"net0", "net1"});
        AQComboBox::setComBox(netBox.get(), "NetName");
        if (!withNetBox)
            netBox.reset();
        m_log->watch(combo);
        QVERIFY(m_fx->replay({"combo activated net1"}));
        QCOMPARE(m_log->entries(), signalLog);
        AQComboBox::setComBox(nullptr, QString());
    }

    void lineEditRecords_data()
    {
        QTest::addColumn<QString>("initialText");
        QTest::addColumn<int>("finishKey");
        QTest::addColumn<bool>("keptOutOfPending");
        QTest::addColumn<bool>("pendingAfter");
        QTest::addColumn<QStringList>("records");
        QTest::newRow("finished by leaving") << "" << int(Qt::Key_Tab) << false << false
                                             << QStringList{"edit editingFinished abc"};
        QTest::newRow("finished by return") << "" << int(Qt::Key_Return) << false << false
                                            << QStringList{"edit returnPressed", "edit editingFinished abc"};
        // Nothing recorded, so the edit stays pending; a later flush finds the
        // same text and records nothing either.
        QTest::newRow("same as the last recorded text") << "abc" << int(Qt::Key_Tab) << false << true << QStringList();
        QTest::newRow("kept out of pending") << "" << int(Qt::Key_Tab) << true << false
                                             << QStringList{"edit editingFinished abc"};
    }

    void lineEditRecords()
    {
        QFETCH(QString, initialText);
        QFETCH(int, finishKey);
        QFETCH(bool, keptOutOfPending);
        QFETCH(bool, pendingAfter);
        QFETCH(QStringList, records);
        auto* edit = new AQScriptableLineEdit("edit", initialText, m_fx->root(), true);
        if (keptOutOfPending)
            edit->setOptions(AQLineEditNotPending);
        new QLineEdit(m_fx->root()); // takes the focus on Tab
        focus(edit);
        m_fx->startRecording();
        edit->selectAll();
        QTest::keyClicks(edit, "abc");
        QCOMPARE(AQScripts::getLineEditToRecord(), keptOutOfPending ? nullptr : edit);
        QTest::keyClick(edit, Qt::Key(finishKey));
        QCOMPARE(m_fx->stopRecording(), records);
        QCOMPARE(AQScripts::getLineEditToRecord(), pendingAfter ? edit : nullptr);
    }

    void spinBoxRecords_data()
    {
        QTest::addColumn<bool>("isDouble");
        QTest::addColumn<bool>("scriptable");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QStringList>("signalLog");
        QTest::newRow("integer") << false << true << "42"
                                 << QStringList{"spin valueChanged 42", "spin valueChanged 43"}
                                 << QStringList{"spin:AvalueChanged(42)", "spin:AvalueChanged(43)"};
        QTest::newRow("double, six significant digits")
            << true << true << "1234567.5"
            << QStringList{"spin valueChanged 1.23457e+06", "spin valueChanged 1.23457e+06"}
            << QStringList{"spin:AvalueChanged(1234567.5)", "spin:AvalueChanged(1234568.5)"};
        // Unregistered, so unnamed: reported all the same.
        QTest::newRow("not scriptable") << false << false << "42" << QStringList()
                                        << QStringList{":AvalueChanged(42)", ":AvalueChanged(43)"};
    }

    void spinBoxRecords()
    {
        QFETCH(bool, isDouble);
        QFETCH(bool, scriptable);
        QFETCH(QString, typed);
        QFETCH(QStringList, records);
        QFETCH(QStringList, signalLog);
        QAbstractSpinBox* box = makeSpin(isDouble, "spin", scriptable);
        // Typed values count once the edit is finished, not per keystroke.
        box->setKeyboardTracking(false);
        m_log->watch(box);
        focus(box);
        m_fx->startRecording();
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box, typed);
        QTest::keyClick(box, Qt::Key_Return);
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(m_fx->stopRecording(), records);
        QCOMPARE(m_log->entries(), signalLog);
    }

    void spinBoxAutoRepeat_data()
    {
        QTest::addColumn<bool>("disabled");
        QTest::newRow("repeats") << false;
        QTest::newRow("repeat disabled") << true;
    }

    void spinBoxAutoRepeat()
    {
        QFETCH(bool, disabled);
        auto* spin = new AQSpinBox(m_fx->root(), "spin", true);
        spin->setRange(0, 1000);
        spin->resize(80, 26);
        QCOMPARE(spin->disableAutoRepeat(disabled), false);
        QCOMPARE(spin->disableAutoRepeat(disabled), disabled);
        m_fx->showActive();
        QStyleOptionSpinBox option;
        option.initFrom(spin);
        option.subControls = QStyle::SC_SpinBoxUp | QStyle::SC_SpinBoxDown | QStyle::SC_SpinBoxFrame;
        option.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
        const QPoint up =
            spin->style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, spin).center();
        QTest::mousePress(spin, Qt::LeftButton, {}, up);
        QTest::qWait(1200); // well past the repeat threshold
        QTest::mouseRelease(spin, Qt::LeftButton, {}, up);
        if (disabled)
            QCOMPARE(spin->value(), 1);
        else
            QVERIFY2(spin->value() > 2, qPrintable(QString::number(spin->value())));
    }

    void sliderClickToPosition_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<bool>("inverted");
        QTest::addColumn<int>("snapStep"); // 0: no snapping
        QTest::addColumn<int>("initialValue");
        QTest::addColumn<int>("raw"); // value under the click
        QTest::addColumn<int>("expected");
        const int h = Qt::Horizontal, v = Qt::Vertical;
        QTest::newRow("at 49") << h << false << 0 << 0 << 49 << 49;
        QTest::newRow("snap 49 down to 40") << h << false << 20 << 0 << 49 << 40;
        QTest::newRow("snap 50 up to 60") << h << false << 20 << 0 << 50 << 60;
        QTest::newRow("inverted, snapped") << h << true << 20 << 100 << 49 << 60;
        QTest::newRow("vertical, from the bottom") << v << false << 0 << 0 << 30 << 30;
        QTest::newRow("before the groove: minimum") << h << false << 0 << 100 << -2 << 0;
        QTest::newRow("past the groove: maximum") << h << false << 0 << 0 << 120 << 100;
    }

    void sliderClickToPosition()
    {
        QFETCH(int, orientation);
        QFETCH(bool, inverted);
        QFETCH(int, snapStep);
        QFETCH(int, initialValue);
        QFETCH(int, raw);
        QFETCH(int, expected);
        auto* slider = new AQSlider("slider", Qt::Orientation(orientation), m_fx->root(), true);
        slider->setRange(0, 100);
        slider->setInvertedAppearance(inverted);
        slider->setSnapClickToPageStep(snapStep > 0);
        if (snapStep > 0)
            slider->setPageStep(snapStep);
        slider->setValue(initialValue);
        const bool horizontal = orientation == Qt::Horizontal;
        const QRect handle = sliderHandle(slider);
        const int extent = horizontal ? handle.width() : handle.height();
        // With the length 100 + twice the half handle, a pixel is one unit.
        const int length = 101 + extent;
        slider->resize(horizontal ? QSize(length, 24) : QSize(24, length));
        const int p = qBound(0, int(std::ceil(extent / 2.0 + 0.5 + raw)), length - 1);
        const QPoint click = horizontal ? QPoint(p, 12) : QPoint(12, length - p);
        QVERIFY(!sliderHandle(slider).contains(click));
        QObject::connect(slider, &AQSlider::AValueChanged, m_log.get(), [] {});
        m_fx->startRecording();
        QTest::mouseClick(slider, Qt::LeftButton, {}, click);
        QCOMPARE(slider->value(), expected);
        QCOMPARE(m_fx->stopRecording(), QStringList{QString("slider valueChanged %1").arg(expected)});
    }

    void sliderRecordsOncePerDrag_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<bool>("listened");
        QTest::addColumn<QStringList>("records");
        QTest::newRow("drag: one record with the final value") << "drag" << true << QStringList{"final"};
        QTest::newRow("drag back to the start: nothing") << "drag back" << true << QStringList();
        QTest::newRow("keys: every value") << "keys" << true
                                           << QStringList{"slider valueChanged 11", "slider valueChanged 12"};
        QTest::newRow("nobody listens: nothing") << "drag" << false << QStringList();
    }

    void sliderRecordsOncePerDrag()
    {
        QFETCH(QString, operation);
        QFETCH(bool, listened);
        QFETCH(QStringList, records);
        auto* slider = new AQSlider("slider", Qt::Horizontal, m_fx->root(), true);
        slider->setRange(0, 100);
        slider->setValue(10);
        slider->resize(300, 24);
        QList<int> reported;
        if (listened)
            QObject::connect(slider, &AQSlider::AValueChanged, m_log.get(), [&](int v) { reported << v; });
        focus(slider);
        m_fx->startRecording();
        if (operation == QLatin1String("keys")) {
            QTest::keyClick(slider, Qt::Key_Right);
            QTest::keyClick(slider, Qt::Key_Right);
        } else if (operation == QLatin1String("drag")) {
            dragSlider(slider, 30);
        } else {
            dragSlider(slider, QList<int>{15, 0}); // out and back to the start
        }
        const QStringList written = m_fx->stopRecording();
        if (records == QStringList{"final"}) {
            QVERIFY(slider->value() > 13);
            records = QStringList{QString("slider valueChanged %1").arg(slider->value())};
            // Every step is reported, and the final value once more at the release.
            QVERIFY(reported.size() >= 4);
            QCOMPARE(reported.mid(reported.size() - 2), (QList<int>{slider->value(), slider->value()}));
        }
        QCOMPARE(written, records);
    }

    void textEditRecordsOnFocusOut_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("focusChanges");
        QTest::addColumn<QStringList>("records");
        QTest::newRow("a b a") << QStringList{"a", "b", "a"} << 1 << QStringList{"edit textChanged a b a"};
        QTest::newRow("each focus loss records, changed or not")
            << QStringList{"same"} << 2 << QStringList{"edit textChanged same", "edit textChanged same"};
    }

    void textEditRecordsOnFocusOut()
    {
        QFETCH(QStringList, lines);
        QFETCH(int, focusChanges);
        QFETCH(QStringList, records);
        auto* edit = new AQTextEdit("edit", QString(), m_fx->root(), true);
        edit->resize(200, 100);
        auto* other = new QLineEdit(m_fx->root());
        other->move(0, 120);
        m_log->watch(edit);
        m_fx->showActive();
        m_fx->startRecording();
        for (int i = 0; i < focusChanges; ++i) {
            QTest::mouseClick(edit->viewport(), Qt::LeftButton);
            QTRY_VERIFY(edit->hasFocus());
            if (i == 0)
                QTest::keyClicks(edit, lines.join('\r'));
            QTest::mouseClick(other, Qt::LeftButton);
            QTRY_VERIFY(other->hasFocus());
        }
        QCOMPARE(m_fx->stopRecording(), records);
        QCOMPARE(m_log->entries().size(), focusChanges);
        QCOMPARE(m_log->entries().first(), QString("edit:ATextChanged(%1)").arg(lines.join('\n')));
    }

    void labelRecords_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<bool>("listened");
        QTest::addColumn<QStringList>("records");
        // The reaction changes a spin box: recorded only where the label does
        // not suppress recording around its A signal.
        QTest::newRow("link") << "link" << true << QStringList{"label linkActivated page:2"};
        QTest::newRow("context menu") << "menu" << true
                                      << QStringList{"label customContextMenuRequested 5 6", "spin valueChanged 3"};
        QTest::newRow("link, nobody listens") << "link" << false << QStringList();
    }

    void labelRecords()
    {
        QFETCH(QString, operation);
        QFETCH(bool, listened);
        QFETCH(QStringList, records);
        auto* label = new AQLabel("label", "<a href=\"page:2\">Next page</a>", m_fx->root(), Qt::WindowFlags(), true);
        label->setTextInteractionFlags(Qt::LinksAccessibleByMouse);
        label->setContextMenuPolicy(Qt::CustomContextMenu);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        label->setMargin(0);
        label->resize(200, 30);
        auto* spin = new AQSpinBox(m_fx->root(), "spin", true);
        spin->move(0, 40);
        if (listened) {
            connect(label, &AQLabel::ALinkActivated, spin, [spin] { spin->setValue(3); });
            connect(label, &AQLabel::ACustomContextMenuRequested, spin, [spin] { spin->setValue(3); });
        }
        m_fx->showActive();
        m_fx->startRecording();
        if (operation == QLatin1String("link")) {
            QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(10, label->fontMetrics().height() / 2));
        } else {
            QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 6), label->mapToGlobal(QPoint(5, 6)));
            QApplication::sendEvent(label, &event);
        }
        QCOMPARE(m_fx->stopRecording(), records);
        QCOMPARE(spin->value(), listened ? 3 : 0);
    }

    void replay_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("ignoreCase");
        QTest::addColumn<QString>("state"); // of the replayed object afterwards
        QTest::addColumn<QStringList>("signalLog");
        const auto row = [](const char* tag, const char* line, const char* state, const QStringList& log,
                            bool ignoreCase = false) { QTest::newRow(tag) << line << ignoreCase << state << log; };
        const QStringList toGamma{"combo:ACurrentIndexChanged(2)", "combo:ACurrentIndexChanged(Gamma)"};
        row("combo index changed", "combo CurrentIndexChanged Gamma", "Gamma", toGamma);
        row("combo, other case, exact find", "combo CurrentIndexChanged gAMMA", "Alpha", {});
        row("combo, other case, case-insensitive find", "combo CurrentIndexChanged gAMMA", "Gamma", toGamma, true);
        row("combo, not an item", "combo CurrentIndexChanged Delta", "Alpha", {}, true);
        row("combo, two arguments", "combo CurrentIndexChanged Beta Gamma", "Alpha", {});
        row("combo, signal name is case-sensitive", "combo currentIndexChanged Gamma", "Alpha", {});
        row("combo activated reports without selecting", "combo activated Beta", "Alpha",
            {"combo:AIndexActivated(1)", "combo:AIndexActivated(Beta)"});
        row("combo activated of the last recorded text", "combo activated Alpha", "Alpha", {});
        row("combo activated, not an item", "combo activated Delta", "Alpha", {});
        row("combo edited text", "combo EditingFinished Omega", "Omega",
            {"combo:AEditTextChanged(Omega)", "combo:AEditingFinished()"});
        // A text set by replay makes the line edit pending like typing does.
        row("edit textChanged", "edit textChanged hello", "hello pending", {"edit:ATextChanged(hello)"});
        row("edit editingFinished", "edit editingFinished abc", "abc pending",
            {"edit:ATextChanged(abc)", "edit:AEditingFinished()"});
        row("edit editingFinished by a mouse move reports the text only", "edit editingFinished abc 1",
            "start mouse", {"edit:ATextChanged(abc)"});
        row("edit editingFinished without args clears", "edit editingFinished", " pending", {"edit:ATextChanged()"});
        row("edit returnPressed", "edit returnPressed", "start", {"edit:AReturnPressed()"});
        row("edit unknown signal", "edit cleared", "start", {});
        row("spin", "spin valueChanged 42", "42", {"spin:AvalueChanged(42)"});
        row("spin, a fraction", "spin valueChanged 4.5", "5", {});
        row("spin, no args", "spin valueChanged", "5", {});
        row("spin, unknown signal", "spin valueEdited 9", "5", {});
        row("spin, same value is reported", "spin valueChanged 5", "5", {"spin:AvalueChanged(5)"});
        row("double spin, quoted negative", "dspin valueChanged \"-0.75\"", "-0.75", {"dspin:AvalueChanged(-0.75)"});
        row("double spin, not a number", "dspin valueChanged abc", "5", {});
        row("slider", "slider valueChanged 42", "42", {"slider:AValueChanged(42)"});
        row("slider, not a number: 0", "slider valueChanged x", "0", {"slider:AValueChanged(0)"});
        row("slider, two args ignored", "slider valueChanged 1 2", "10", {});
        row("slider, unknown signal ignored", "slider sliderMoved 3", "10", {});
        row("text a b a: no break after a line equal to the last", "text textChanged a b a", "ab\na",
            {"text:ATextChanged(ab\na)"});
        row("text, no args ignored", "text textChanged", "start", {});
        row("label context menu, negative, extra arg", "label customContextMenuRequested \"-3\" 4 x", "",
            {"label:ACustomContextMenuRequested(-3;4)"});
        row("label context menu, one arg ignored", "label customContextMenuRequested 3", "", {});
        row("label link", "label linkActivated page:7", "", {"label:ALinkActivated(page:7)"});
        row("label link without args ignored", "label linkActivated", "", {});
    }

    void replay()
    {
        QFETCH(QString, line);
        QFETCH(bool, ignoreCase);
        QFETCH(QString, state);
        QFETCH(QStringList, signalLog);
        AQComboBox* combo = makeCombo();
        combo->setEditable(line.contains("EditingFinished"));
        auto* edit = new AQScriptableLineEdit("edit", "start", m_fx->root(), true);
        QAbstractSpinBox* spin = makeSpin(false);
        QAbstractSpinBox* dspin = makeSpin(true, "dspin");
        auto* slider = new AQSlider("slider", m_fx->root(), true);
        slider->setRange(0, 100);
        slider->setValue(10);
        auto* text = new AQTextEdit("text", "start", m_fx->root(), true);
        new AQLabel("label", m_fx->root(), Qt::WindowFlags(), true);
        m_log->watchTree(m_fx->root());
        AQScripts::setCaseInsensitiveFind(ignoreCase);
        QVERIFY(m_fx->replay({line}));
        QCOMPARE(m_log->entries(), signalLog);
        const QMap<QString, QString> states{
            {"combo", combo->currentText()},
            {"edit", edit->text() + (edit->isMouseMove() ? " mouse" : "")
                         + (AQScripts::getLineEditToRecord() == edit ? " pending" : "")},
            {"spin", spin->text()},
            {"dspin", QString::number(dspin->property("value").toDouble())},
            {"slider", QString::number(slider->value())},
            {"text", text->toPlainText()}};
        QCOMPARE(states.value(line.section(' ', 0, 0)), state);
    }

    void inputDialogRecordsFillins_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("answer"); // empty: cancel
        QTest::addColumn<bool>("record");
        QTest::addColumn<bool>("suppressed");
        QTest::addColumn<QString>("records");
        QTest::newRow("int") << "int" << "42" << true << false << "QtFillin 42";
        QTest::newRow("double") << "double" << "1234567.25" << true << false << "QtFillin 1.23457e+06";
        QTest::newRow("item") << "item" << "two words" << true << false << "QtFillin \"two words\"";
        QTest::newRow("text") << "text" << "Ann" << true << false << "QtFillin Ann";
        QTest::newRow("int cancelled") << "int" << "" << true << false << "QtFillin ";
        QTest::newRow("not recorded") << "int" << "42" << false << false << "";
        QTest::newRow("asked from suppressed code") << "int" << "42" << true << true << "QtFillin 42";
    }

    void inputDialogRecordsFillins()
    {
        QFETCH(QString, kind);
        QFETCH(QString, answer);
        QFETCH(bool, record);
        QFETCH(bool, suppressed);
        QFETCH(QString, records);
        ModalCatcher catcher([answer, kind](QWidget* modal) {
            auto* dialog = qobject_cast<QInputDialog*>(modal);
            if (answer.isEmpty())
                return dialog->reject();
            if (kind == QLatin1String("int"))
                dialog->setIntValue(answer.toInt());
            else if (kind == QLatin1String("double"))
                dialog->setDoubleValue(answer.toDouble());
            else
                dialog->setTextValue(answer);
            dialog->accept();
        });
        m_fx->startRecording();
        bool ok = false;
        QString value;
        if (suppressed)
            withRecordingSuppressed([&] { value = ask(kind, &ok, record); });
        else
            value = ask(kind, &ok, record);
        const QMap<QString, QString> titles{{"int", "Count"}, {"double", "Size"}, {"item", "Pick"}, {"text", "Name"}};
        QCOMPARE(catcher.title(), titles.value(kind));
        QCOMPARE(m_fx->stopRecording(), records.isEmpty() ? QStringList() : QStringList{records});
        QCOMPARE(ok, !answer.isEmpty());
        if (ok)
            QCOMPARE(value, answer);
    }

    void inputDialogAnswersFromFillins_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("fillin");
        QTest::addColumn<bool>("okBefore");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("okAfter");
        QTest::newRow("int") << "int" << "QtFillin 42" << false << "42" << true;
        QTest::newRow("int, empty fill-in") << "int" << "QtFillin " << true << "0" << false;
        QTest::newRow("int, not a number") << "int" << "QtFillin many" << false << "0" << true;
        QTest::newRow("double") << "double" << "QtFillin 2.5" << false << "2.5" << true;
        QTest::newRow("item") << "item" << "QtFillin Beta" << false << "Beta" << true;
        QTest::newRow("item, empty fill-in") << "item" << "QtFillin " << true << "" << false;
        QTest::newRow("text with a blank, ok untouched") << "text" << "QtFillin \"two words\"" << false << "two words"
                                                         << false;
        QTest::newRow("parameter fill-in is no answer") << "text" << "QtFillin name Ann" << false << "" << false;
    }

    void inputDialogAnswersFromFillins()
    {
        QFETCH(QString, kind);
        QFETCH(QString, fillin);
        QFETCH(bool, okBefore);
        QFETCH(QString, value);
        QFETCH(bool, okAfter);
        auto* button = new AQPushButton("ask", "Ask", m_fx->root(), true);
        auto* after = new AQCheckBox("after", "After", m_fx->root(), true);
        QString answer = "unanswered";
        bool ok = okBefore;
        connect(button, &AQPushButton::AClicked, this, [&] { answer = ask(kind, &ok, true); });
        ModalCatcher catcher({}, 500);
        QVERIFY(m_fx->replay({"ask clicked", fillin, "after clicked true"}));
        QCOMPARE(answer, value);
        QCOMPARE(ok, okAfter);
        // The fill-in line was used up by the question, the next line replayed.
        QVERIFY(after->isChecked());
        QVERIFY(m_fx->fixedScriptReport().isEmpty());
        QTest::qWait(50);
        QVERIFY(!catcher.caught());
    }
};

QTEST_MAIN(tst_ValueInputs)
#include "tst_valueinputs.moc"
