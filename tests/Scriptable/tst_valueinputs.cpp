#include "ASignalLog.h"
#include "ModalCatcher.h"
#include "SliderDriving.h"
#include "WrapperFixture.h"

#include <Script/AQScriptBackend.h>
#include <Script/AQRecordingGuard.h>
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

const QStringList Items{"Alpha", "Beta", "Gamma"};

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

} // namespace

class tst_ValueInputs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void comboRecords_data();
    void comboRecords();
    void comboProgramChoiceIsNotRecordedWhenConfirmed();
    void comboEditedTextRecordsOnce();
    void comboReplay_data();
    void comboReplay();
    void comboNetNameActivation_data();
    void comboNetNameActivation();

    void lineEditRecords_data();
    void lineEditRecords();
    void lineEditReplay_data();
    void lineEditReplay();

    void spinBoxRecords_data();
    void spinBoxRecords();
    void spinBoxReplay_data();
    void spinBoxReplay();
    void unscriptableSpinBoxStillReports();
    void spinBoxAutoRepeat_data();
    void spinBoxAutoRepeat();

    void sliderClickToPosition_data();
    void sliderClickToPosition();
    void sliderRecordsOncePerDrag_data();
    void sliderRecordsOncePerDrag();

    void textEditRecordsOnFocusOut_data();
    void textEditRecordsOnFocusOut();

    void labelRecords_data();
    void labelRecords();
    void widgetReplay_data();
    void widgetReplay();

    void inputDialogRecordsFillins_data();
    void inputDialogRecordsFillins();
    void inputDialogAnswersFromFillins_data();
    void inputDialogAnswersFromFillins();

private:
    AQComboBox* makeCombo();

    std::unique_ptr<WrapperFixture> m_fx;
    std::unique_ptr<ASignalLog> m_log;
};

void tst_ValueInputs::init()
{
    m_fx = std::make_unique<WrapperFixture>();
    m_log = std::make_unique<ASignalLog>();
    AQScripts::setCaseInsensitiveFind(false);
}

void tst_ValueInputs::cleanup()
{
    m_log.reset();
    m_fx.reset();
    AQScripts::setCaseInsensitiveFind(false);
    QCOMPARE(AQScripts::isRecordingDisabled(), false);
}

AQComboBox* tst_ValueInputs::makeCombo()
{
    auto* combo = new AQComboBox(QStringLiteral("combo"), m_fx->root(), true);
    combo->addItems(Items);
    return combo;
}

// --- combo box ---------------------------------------------------------------

void tst_ValueInputs::comboRecords_data()
{
    QTest::addColumn<bool>("sendAll");
    QTest::addColumn<bool>("recordIndexChanged");
    QTest::addColumn<QStringList>("operations");
    QTest::addColumn<QStringList>("records");

    QTest::newRow("step down") << false << true << QStringList{"down"} << QStringList{"combo CurrentIndexChanged Beta"};
    QTest::newRow("same item twice: one record")
        << false << true << QStringList{"next", "repick"} << QStringList{"combo CurrentIndexChanged Beta"};
    QTest::newRow("same item twice, send all events")
        << true << true << QStringList{"next", "repick"}
        << QStringList{"combo CurrentIndexChanged Beta", "combo activated Beta", "combo activated Beta"};
    QTest::newRow("back and forth")
        << false << true << QStringList{"down", "up", "down"}
        << QStringList{"combo CurrentIndexChanged Beta", "combo CurrentIndexChanged Alpha",
                       "combo CurrentIndexChanged Beta"};
    QTest::newRow("index changes not recorded: activations are")
        << false << false << QStringList{"down", "repick", "down"}
        << QStringList{"combo activated Beta", "combo activated Gamma"};
}

void tst_ValueInputs::comboRecords()
{
    QFETCH(bool, sendAll);
    QFETCH(bool, recordIndexChanged);
    QFETCH(QStringList, operations);
    QFETCH(QStringList, records);

    auto* combo = new AQComboBox(QStringLiteral("combo"), m_fx->root(), true);
    combo->setSendAllEvents(sendAll);
    combo->setRecordIndexChanged(recordIndexChanged);
    combo->addItems(Items);
    m_fx->showActive();
    m_fx->startRecording();
    for (const QString& op : qAsConst(operations))
        operateCombo(combo, op);
    QCOMPARE(m_fx->stopRecording(), records);
}

void tst_ValueInputs::comboProgramChoiceIsNotRecordedWhenConfirmed()
{
    AQComboBox* combo = makeCombo();
    m_fx->showActive();
    combo->setCurrentTextInternal(QStringLiteral("Gamma"));
    QCOMPARE(combo->currentIndex(), 2);
    m_fx->startRecording();
    operateCombo(combo, QStringLiteral("repick"));
    operateCombo(combo, QStringLiteral("up"));
    QCOMPARE(m_fx->stopRecording(), QStringList{"combo CurrentIndexChanged Beta"});
}

void tst_ValueInputs::comboEditedTextRecordsOnce()
{
    AQComboBox* combo = makeCombo();
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    auto* other = new QLineEdit(m_fx->root());
    other->move(0, 60);
    m_log->watch(combo);
    m_fx->showActive();
    combo->setFocus();
    QTRY_VERIFY(combo->hasFocus());

    m_fx->startRecording();
    combo->lineEdit()->selectAll();
    QTest::keyClicks(combo, QStringLiteral("Omega"));
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

void tst_ValueInputs::comboReplay_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("caseInsensitive");
    QTest::addColumn<QString>("currentText");
    QTest::addColumn<bool>("editable");
    QTest::addColumn<QStringList>("signalLog");

    const QStringList toGamma{"combo:ACurrentIndexChanged(2)", "combo:ACurrentIndexChanged(Gamma)"};
    QTest::newRow("index changed") << "CurrentIndexChanged Gamma" << false << "Gamma" << false << toGamma;
    QTest::newRow("other case, exact find") << "CurrentIndexChanged gAMMA" << false << "Alpha" << false << QStringList();
    QTest::newRow("other case, case-insensitive find") << "CurrentIndexChanged gAMMA" << true << "Gamma" << false << toGamma;
    QTest::newRow("not an item") << "CurrentIndexChanged Delta" << true << "Alpha" << false << QStringList();
    QTest::newRow("no argument") << "CurrentIndexChanged" << false << "Alpha" << false << QStringList();
    QTest::newRow("two arguments") << "CurrentIndexChanged Beta Gamma" << false << "Alpha" << false << QStringList();
    QTest::newRow("signal name is case-sensitive") << "currentIndexChanged Gamma" << false << "Alpha" << false << QStringList();
    QTest::newRow("activated reports without selecting")
        << "activated Beta" << false << "Alpha" << false << QStringList{"combo:AIndexActivated(1)", "combo:AIndexActivated(Beta)"};
    QTest::newRow("activated of the last recorded text") << "activated Alpha" << false << "Alpha" << false << QStringList();
    QTest::newRow("activated, not an item") << "activated Delta" << false << "Alpha" << false << QStringList();
    QTest::newRow("edited text") << "EditingFinished Omega" << false << "Omega" << true
                                 << QStringList{"combo:AEditTextChanged(Omega)", "combo:AEditingFinished()"};
}

void tst_ValueInputs::comboReplay()
{
    QFETCH(QString, line);
    QFETCH(bool, caseInsensitive);
    QFETCH(QString, currentText);
    QFETCH(bool, editable);
    QFETCH(QStringList, signalLog);

    AQComboBox* combo = makeCombo();
    combo->setEditable(editable);
    m_log->watch(combo);
    AQScripts::setCaseInsensitiveFind(caseInsensitive);
    QVERIFY(m_fx->replay({QStringLiteral("combo ") + line}));
    QCOMPARE(combo->currentText(), currentText);
    QCOMPARE(m_log->entries(), signalLog);
}

void tst_ValueInputs::comboNetNameActivation_data()
{
    QTest::addColumn<bool>("withNetBox");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("signalLog");

    QTest::newRow("index and text from the net box")
        << true << "activated net1" << QStringList{"combo:AIndexActivated(1)", "combo:AIndexActivated(net1)"};
    QTest::newRow("net box gone: index 0, no text") << false << "activated net1"
                                                    << QStringList{"combo:AIndexActivated(0)"};
}

void tst_ValueInputs::comboNetNameActivation()
{
    QFETCH(bool, withNetBox);
    QFETCH(QString, line);
    QFETCH(QStringList, signalLog);

    AQComboBox* combo = makeCombo();
    // Index 0 would repeat the last recorded text "Alpha" and do nothing.
    combo->setSendAllEvents(true);
    auto netBox = std::make_unique<QComboBox>();
    netBox->addItems({"net0", "net1"});
    AQComboBox::setComBox(netBox.get(), QStringLiteral("NetName"));
    if (!withNetBox)
        netBox.reset();
    m_log->watch(combo);
    QVERIFY(m_fx->replay({QStringLiteral("combo ") + line}));
    QCOMPARE(m_log->entries(), signalLog);
    AQComboBox::setComBox(nullptr, QString());
}

// --- line edit ---------------------------------------------------------------

void tst_ValueInputs::lineEditRecords_data()
{
    QTest::addColumn<QString>("initialText");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("finishKey");
    QTest::addColumn<bool>("keptOutOfPending");
    QTest::addColumn<bool>("pendingAfter");
    QTest::addColumn<QStringList>("records");

    QTest::newRow("finished by leaving") << "" << "abc" << int(Qt::Key_Tab) << false << false
                                         << QStringList{"edit editingFinished abc"};
    QTest::newRow("finished by return")
        << "" << "abc" << int(Qt::Key_Return) << false << false
        << QStringList{"edit returnPressed", "edit editingFinished abc"};
    QTest::newRow("text with a blank") << "" << "two words" << int(Qt::Key_Tab) << false << false
                                       << QStringList{"edit editingFinished \"two words\""};
    // Nothing recorded, so the edit stays pending; a later flush finds the
    // same text and records nothing either.
    QTest::newRow("same as the last recorded text")
        << "abc" << "abc" << int(Qt::Key_Tab) << false << true << QStringList();
    QTest::newRow("kept out of pending") << "" << "abc" << int(Qt::Key_Tab) << true << false
                                         << QStringList{"edit editingFinished abc"};
}

void tst_ValueInputs::lineEditRecords()
{
    QFETCH(QString, initialText);
    QFETCH(QString, typed);
    QFETCH(int, finishKey);
    QFETCH(bool, keptOutOfPending);
    QFETCH(bool, pendingAfter);
    QFETCH(QStringList, records);

    auto* edit = new AQScriptableLineEdit(QStringLiteral("edit"), initialText, m_fx->root(), true);
    if (keptOutOfPending)
        edit->setOptions(AQLineEditNotPending);
    auto* other = new QLineEdit(m_fx->root());
    other->move(0, 40);
    m_fx->showActive();
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());

    m_fx->startRecording();
    edit->selectAll();
    QTest::keyClicks(edit, typed);
    QCOMPARE(AQScripts::getLineEditToRecord(), keptOutOfPending ? nullptr : edit);
    QTest::keyClick(edit, Qt::Key(finishKey));
    QCOMPARE(m_fx->stopRecording(), records);
    QCOMPARE(AQScripts::getLineEditToRecord(), pendingAfter ? edit : nullptr);
}

void tst_ValueInputs::lineEditReplay_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("mouseMove");
    QTest::addColumn<bool>("pending");
    QTest::addColumn<QStringList>("signalLog");

    // A text set by replay makes the edit pending like typing does.
    QTest::newRow("textChanged") << "textChanged hello" << "hello" << false << true
                                 << QStringList{"edit:ATextChanged(hello)"};
    QTest::newRow("textChanged without args clears") << "textChanged" << "" << false << true
                                                     << QStringList{"edit:ATextChanged()"};
    QTest::newRow("editingFinished") << "editingFinished abc" << "abc" << false << true
                                     << QStringList{"edit:ATextChanged(abc)", "edit:AEditingFinished()"};
    QTest::newRow("editingFinished by a mouse move reports the text only")
        << "editingFinished abc 1" << "start" << true << false << QStringList{"edit:ATextChanged(abc)"};
    QTest::newRow("editingFinished without args clears")
        << "editingFinished" << "" << false << true << QStringList{"edit:ATextChanged()"};
    QTest::newRow("returnPressed") << "returnPressed" << "start" << false << false
                                   << QStringList{"edit:AReturnPressed()"};
    QTest::newRow("unknown signal") << "cleared" << "start" << false << false << QStringList();
}

void tst_ValueInputs::lineEditReplay()
{
    QFETCH(QString, line);
    QFETCH(QString, text);
    QFETCH(bool, mouseMove);
    QFETCH(bool, pending);
    QFETCH(QStringList, signalLog);

    auto* edit = new AQScriptableLineEdit(QStringLiteral("edit"), QStringLiteral("start"), m_fx->root(), true);
    m_log->watch(edit);
    QVERIFY(m_fx->replay({QStringLiteral("edit ") + line}));
    QCOMPARE(edit->text(), text);
    QCOMPARE(edit->isMouseMove(), mouseMove);
    QCOMPARE(AQScripts::getLineEditToRecord() == edit, pending);
    QCOMPARE(m_log->entries(), signalLog);
}

// --- spin boxes --------------------------------------------------------------

void tst_ValueInputs::spinBoxRecords_data()
{
    QTest::addColumn<bool>("isDouble");
    QTest::addColumn<QString>("keys"); // typed text, or "up"
    QTest::addColumn<QStringList>("records");
    QTest::addColumn<QStringList>("signalLog");

    QTest::newRow("integer steps") << false << "up up" << QStringList{"spin valueChanged 6", "spin valueChanged 7"}
                                   << QStringList{"spin:AvalueChanged(6)", "spin:AvalueChanged(7)"};
    QTest::newRow("integer typed") << false << "42" << QStringList{"spin valueChanged 42"}
                                   << QStringList{"spin:AvalueChanged(42)"};
    QTest::newRow("double step") << true << "up" << QStringList{"spin valueChanged 1.125"}
                                 << QStringList{"spin:AvalueChanged(1.125)"};
    QTest::newRow("double, six significant digits")
        << true << "1234567.5" << QStringList{"spin valueChanged 1.23457e+06"}
        << QStringList{"spin:AvalueChanged(1234567.5)"};
    QTest::newRow("double, negative is quoted") << true << "-2.5" << QStringList{"spin valueChanged \"-2.5\""}
                                                << QStringList{"spin:AvalueChanged(-2.5)"};
}

void tst_ValueInputs::spinBoxRecords()
{
    QFETCH(bool, isDouble);
    QFETCH(QString, keys);
    QFETCH(QStringList, records);
    QFETCH(QStringList, signalLog);

    QAbstractSpinBox* box = nullptr;
    if (isDouble) {
        auto* spin = new AQDoubleSpinBox(QStringLiteral("spin"), QString(), m_fx->root(), true);
        spin->setRange(-1e7, 1e7);
        spin->setDecimals(3);
        spin->setSingleStep(0.125);
        spin->setValue(1);
        box = spin;
    } else {
        auto* spin = new AQSpinBox(m_fx->root(), QStringLiteral("spin"), true);
        spin->setRange(0, 100);
        spin->setValue(5);
        box = spin;
    }
    // Typed values count once the edit is finished, not per keystroke.
    box->setKeyboardTracking(false);
    m_log->watch(box);
    m_fx->showActive();
    box->setFocus();
    QTRY_VERIFY(box->hasFocus());

    m_fx->startRecording();
    if (keys.startsWith(QLatin1String("up"))) {
        for (int i = 0; i < keys.count(QLatin1String("up")); ++i)
            QTest::keyClick(box, Qt::Key_Up);
    } else {
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box, keys);
        QTest::keyClick(box, Qt::Key_Return);
    }
    QCOMPARE(m_fx->stopRecording(), records);
    QCOMPARE(m_log->entries(), signalLog);
}

void tst_ValueInputs::spinBoxReplay_data()
{
    QTest::addColumn<bool>("isDouble");
    QTest::addColumn<QString>("line");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("reports");

    QTest::newRow("integer") << false << "valueChanged 42" << 42.0 << 1;
    QTest::newRow("integer, extra args") << false << "valueChanged 7 8" << 7.0 << 1;
    QTest::newRow("integer, not a number") << false << "valueChanged 4x" << 5.0 << 0;
    QTest::newRow("integer, a fraction") << false << "valueChanged 4.5" << 5.0 << 0;
    QTest::newRow("integer, no args") << false << "valueChanged" << 5.0 << 0;
    QTest::newRow("integer, unknown signal") << false << "valueEdited 9" << 5.0 << 0;
    QTest::newRow("integer, same value") << false << "valueChanged 5" << 5.0 << 1;
    QTest::newRow("double, same value") << true << "valueChanged 1" << 1.0 << 1;
    QTest::newRow("double") << true << "valueChanged 2.5" << 2.5 << 1;
    QTest::newRow("double, quoted negative") << true << "valueChanged \"-0.75\"" << -0.75 << 1;
    QTest::newRow("double, not a number") << true << "valueChanged abc" << 1.0 << 0;
}

void tst_ValueInputs::spinBoxReplay()
{
    QFETCH(bool, isDouble);
    QFETCH(QString, line);
    QFETCH(double, value);
    QFETCH(int, reports);

    QSignalSpy* spy = nullptr;
    std::function<double()> current;
    if (isDouble) {
        auto* spin = new AQDoubleSpinBox(QStringLiteral("spin"), QString(), m_fx->root(), true);
        spin->setRange(-10, 10);
        spin->setValue(1);
        current = [spin] { return spin->value(); };
        spy = new QSignalSpy(spin, &AQDoubleSpinBox::AvalueChanged);
    } else {
        auto* spin = new AQSpinBox(m_fx->root(), QStringLiteral("spin"), true);
        spin->setRange(0, 100);
        spin->setValue(5);
        current = [spin] { return double(spin->value()); };
        spy = new QSignalSpy(spin, &AQSpinBox::AvalueChanged);
    }
    std::unique_ptr<QSignalSpy> owned(spy);
    QVERIFY(m_fx->replay({QStringLiteral("spin ") + line}));
    QCOMPARE(current(), value);
    QCOMPARE(spy->count(), reports);
}

void tst_ValueInputs::unscriptableSpinBoxStillReports()
{
    auto* spin = new AQSpinBox(m_fx->root(), QStringLiteral("spin"), false);
    QSignalSpy reported(spin, &AQSpinBox::AvalueChanged);
    m_fx->showActive();
    spin->setFocus();
    QTRY_VERIFY(spin->hasFocus());
    m_fx->startRecording();
    QTest::keyClick(spin, Qt::Key_Up);
    QCOMPARE(m_fx->stopRecording(), QStringList());
    QCOMPARE(reported.count(), 1);
    QCOMPARE(reported.first().first().toDouble(), 1.0);
}

void tst_ValueInputs::spinBoxAutoRepeat_data()
{
    QTest::addColumn<bool>("disabled");
    QTest::newRow("repeats") << false;
    QTest::newRow("repeat disabled") << true;
}

void tst_ValueInputs::spinBoxAutoRepeat()
{
    QFETCH(bool, disabled);
    auto* spin = new AQSpinBox(m_fx->root(), QStringLiteral("spin"), true);
    spin->setRange(0, 1000);
    spin->resize(80, 26);
    QCOMPARE(spin->disableAutoRepeat(disabled), false);
    QCOMPARE(spin->disableAutoRepeat(disabled), disabled);
    m_fx->showActive();

    QStyleOptionSpinBox option;
    option.initFrom(spin);
    option.subControls = QStyle::SC_SpinBoxUp | QStyle::SC_SpinBoxDown | QStyle::SC_SpinBoxFrame;
    option.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
    const QPoint up = spin->style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, spin).center();
    QTest::mousePress(spin, Qt::LeftButton, {}, up);
    QTest::qWait(1200); // well past the repeat threshold
    QTest::mouseRelease(spin, Qt::LeftButton, {}, up);
    if (disabled)
        QCOMPARE(spin->value(), 1);
    else
        QVERIFY2(spin->value() > 2, qPrintable(QString::number(spin->value())));
}

// --- slider --------------------------------------------------------------------

void tst_ValueInputs::sliderClickToPosition_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<int>("snapStep"); // 0: no snapping
    QTest::addColumn<int>("initialValue");
    QTest::addColumn<int>("raw"); // value under the click; -1: middle of the slider
    QTest::addColumn<int>("expected");

    const int h = Qt::Horizontal, v = Qt::Vertical;
    QTest::newRow("middle of 0..100") << h << false << 0 << 0 << -1 << 50;
    QTest::newRow("at 49") << h << false << 0 << 0 << 49 << 49;
    QTest::newRow("snap 49 down to 40") << h << false << 20 << 0 << 49 << 40;
    QTest::newRow("snap 51 up to 60") << h << false << 20 << 0 << 51 << 60;
    QTest::newRow("snap 50 up to 60") << h << false << 20 << 0 << 50 << 60;
    QTest::newRow("inverted, snapped") << h << true << 20 << 100 << 49 << 60;
    QTest::newRow("vertical, from the bottom") << v << false << 0 << 0 << 30 << 30;
    QTest::newRow("before the groove: minimum") << h << false << 0 << 100 << -2 << 0;
    QTest::newRow("past the groove: maximum") << h << false << 0 << 0 << 120 << 100;
}

void tst_ValueInputs::sliderClickToPosition()
{
    QFETCH(int, orientation);
    QFETCH(bool, inverted);
    QFETCH(int, snapStep);
    QFETCH(int, initialValue);
    QFETCH(int, raw);
    QFETCH(int, expected);

    auto* slider = new AQSlider(QStringLiteral("slider"), Qt::Orientation(orientation), m_fx->root(), true);
    slider->setRange(0, 100);
    slider->setInvertedAppearance(inverted);
    slider->setSnapClickToPageStep(snapStep > 0);
    if (snapStep > 0)
        slider->setPageStep(snapStep);
    slider->setValue(initialValue);
    const bool horizontal = orientation == Qt::Horizontal;
    const QRect handle = sliderHandle(slider);
    const int extent = horizontal ? handle.width() : handle.height();
    const double half = extent / 2.0 + 0.5;
    // With the length 100 + twice the half handle, a pixel is one unit.
    const int length = raw == -1 ? 200 : 101 + extent;
    slider->resize(horizontal ? QSize(length, 24) : QSize(24, length));
    int p = raw == -1 ? length / 2 : int(std::ceil(half + raw));
    p = qBound(0, p, length - 1);
    const QPoint click = horizontal ? QPoint(p, 12) : QPoint(12, length - p);
    QVERIFY(!sliderHandle(slider).contains(click));
    QObject::connect(slider, &AQSlider::AValueChanged, m_log.get(), [] {});

    m_fx->startRecording();
    QTest::mouseClick(slider, Qt::LeftButton, {}, click);
    QCOMPARE(slider->value(), expected);
    QCOMPARE(m_fx->stopRecording(), QStringList{QStringLiteral("slider valueChanged %1").arg(expected)});
}

void tst_ValueInputs::sliderRecordsOncePerDrag_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<bool>("listened");
    QTest::addColumn<QStringList>("records");

    QTest::newRow("drag: one record with the final value") << "drag" << true << QStringList{"final"};
    QTest::newRow("drag back to the start: nothing") << "drag back" << true << QStringList();
    QTest::newRow("keys: every value") << "keys" << true
                                       << QStringList{"slider valueChanged 11", "slider valueChanged 12",
                                                      "slider valueChanged 13"};
    QTest::newRow("nobody listens: nothing") << "drag" << false << QStringList();
    QTest::newRow("keys, nobody listens: nothing") << "keys" << false << QStringList();
}

void tst_ValueInputs::sliderRecordsOncePerDrag()
{
    QFETCH(QString, operation);
    QFETCH(bool, listened);
    QFETCH(QStringList, records);

    auto* slider = new AQSlider(QStringLiteral("slider"), Qt::Horizontal, m_fx->root(), true);
    slider->setRange(0, 100);
    slider->setValue(10);
    slider->resize(300, 24);
    QList<int> reported;
    if (listened)
        QObject::connect(slider, &AQSlider::AValueChanged, m_log.get(), [&](int v) { reported << v; });
    m_fx->showActive();
    slider->setFocus();

    m_fx->startRecording();
    if (operation == QLatin1String("keys")) {
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(slider, Qt::Key_Right);
    } else if (operation == QLatin1String("drag")) {
        dragSlider(slider, 30);
    } else {
        dragSlider(slider, QList<int>{15, 0}); // out and back to the start
    }
    const QStringList written = m_fx->stopRecording();
    if (records == QStringList{"final"}) {
        QVERIFY(slider->value() > 13);
        records = QStringList{QStringLiteral("slider valueChanged %1").arg(slider->value())};
        // Every step is reported, and the final value once more at the release.
        QVERIFY(reported.size() >= 4);
        QCOMPARE(reported.last(), slider->value());
        QCOMPARE(reported.at(reported.size() - 2), slider->value());
    }
    QCOMPARE(written, records);
}

// --- text edit ---------------------------------------------------------------

void tst_ValueInputs::textEditRecordsOnFocusOut_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<int>("focusChanges");
    QTest::addColumn<QStringList>("records");

    QTest::newRow("a b a") << QStringList{"a", "b", "a"} << 1 << QStringList{"edit textChanged a b a"};
    QTest::newRow("blanks quoted") << QStringList{"two words", "x"} << 1
                                   << QStringList{"edit textChanged \"two words\" x"};
    QTest::newRow("each focus loss records, changed or not")
        << QStringList{"same"} << 2 << QStringList{"edit textChanged same", "edit textChanged same"};
}

void tst_ValueInputs::textEditRecordsOnFocusOut()
{
    QFETCH(QStringList, lines);
    QFETCH(int, focusChanges);
    QFETCH(QStringList, records);

    auto* edit = new AQTextEdit(QStringLiteral("edit"), QString(), m_fx->root(), true);
    edit->resize(200, 100);
    auto* other = new QLineEdit(m_fx->root());
    other->move(0, 120);
    m_log->watch(edit);
    m_fx->showActive();

    m_fx->startRecording();
    QTest::mouseClick(edit->viewport(), Qt::LeftButton);
    QTRY_VERIFY(edit->hasFocus());
    for (int i = 0; i < lines.size(); ++i) {
        if (i > 0)
            QTest::keyClick(edit, Qt::Key_Return);
        QTest::keyClicks(edit, lines.at(i));
    }
    for (int i = 0; i < focusChanges; ++i) {
        QTest::mouseClick(other, Qt::LeftButton);
        QTRY_VERIFY(other->hasFocus());
        if (i + 1 < focusChanges) {
            QTest::mouseClick(edit->viewport(), Qt::LeftButton);
            QTRY_VERIFY(edit->hasFocus());
        }
    }
    QCOMPARE(m_fx->stopRecording(), records);
    QCOMPARE(m_log->entries().size(), focusChanges);
    QCOMPARE(m_log->entries().first(), QStringLiteral("edit:ATextChanged(%1)").arg(lines.join('\n')));
}

// --- label -------------------------------------------------------------------

void tst_ValueInputs::labelRecords_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<bool>("listened");
    QTest::addColumn<QStringList>("records");

    // The reaction changes a spin box: recorded only where the label does
    // not suppress recording around its A signal.
    QTest::newRow("link") << "link" << true << QStringList{"label linkActivated page:2"};
    QTest::newRow("context menu")
        << "menu" << true << QStringList{"label customContextMenuRequested 5 6", "spin valueChanged 3"};
    QTest::newRow("link, nobody listens") << "link" << false << QStringList();
    QTest::newRow("context menu, nobody listens") << "menu" << false << QStringList();
}

void tst_ValueInputs::labelRecords()
{
    QFETCH(QString, operation);
    QFETCH(bool, listened);
    QFETCH(QStringList, records);

    auto* label = new AQLabel(QStringLiteral("label"), QStringLiteral("<a href=\"page:2\">Next page</a>"),
                              m_fx->root(), Qt::WindowFlags(), true);
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse);
    label->setContextMenuPolicy(Qt::CustomContextMenu);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setMargin(0);
    label->resize(200, 30);
    auto* spin = new AQSpinBox(m_fx->root(), QStringLiteral("spin"), true);
    spin->move(0, 40);
    auto react = [spin] { spin->setValue(3); };
    if (listened) {
        connect(label, &AQLabel::ALinkActivated, this, react);
        connect(label, &AQLabel::ACustomContextMenuRequested, this, react);
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

void tst_ValueInputs::widgetReplay_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("state"); // slider value or text edit text after the replay
    QTest::addColumn<QStringList>("signalLog");

    QTest::newRow("slider value") << "slider valueChanged 42" << "42" << QStringList{"slider:AValueChanged(42)"};
    QTest::newRow("slider, not a number: 0") << "slider valueChanged x" << "0" << QStringList{"slider:AValueChanged(0)"};
    QTest::newRow("slider, two args ignored") << "slider valueChanged 1 2" << "10" << QStringList();
    QTest::newRow("slider, no args ignored") << "slider valueChanged" << "10" << QStringList();
    QTest::newRow("slider, unknown signal ignored") << "slider sliderMoved 3" << "10" << QStringList();

    QTest::newRow("text a b a: no break after a line equal to the last")
        << "text textChanged a b a" << "ab\na" << QStringList{"text:ATextChanged(ab\na)"};
    QTest::newRow("text, distinct lines") << "text textChanged a b c" << "a\nb\nc"
                                          << QStringList{"text:ATextChanged(a\nb\nc)"};
    QTest::newRow("text, one line") << "text textChanged \"one line\"" << "one line"
                                    << QStringList{"text:ATextChanged(one line)"};
    QTest::newRow("text, no args ignored") << "text textChanged" << "start" << QStringList();
    QTest::newRow("text, unknown signal ignored") << "text textEdited x" << "start" << QStringList();

    QTest::newRow("label context menu") << "label customContextMenuRequested 3 4" << ""
                                        << QStringList{"label:ACustomContextMenuRequested(3;4)"};
    QTest::newRow("label context menu, negative") << "label customContextMenuRequested \"-3\" 4 extra" << ""
                                                  << QStringList{"label:ACustomContextMenuRequested(-3;4)"};
    QTest::newRow("label context menu, one arg ignored") << "label customContextMenuRequested 3" << "" << QStringList();
    QTest::newRow("label link") << "label linkActivated page:7" << "" << QStringList{"label:ALinkActivated(page:7)"};
    QTest::newRow("label link without args ignored") << "label linkActivated" << "" << QStringList();
    QTest::newRow("label unknown signal ignored") << "label linkHovered x" << "" << QStringList();
}

void tst_ValueInputs::widgetReplay()
{
    QFETCH(QString, line);
    QFETCH(QString, state);
    QFETCH(QStringList, signalLog);

    auto* slider = new AQSlider(QStringLiteral("slider"), m_fx->root(), true);
    slider->setRange(0, 100);
    slider->setValue(10);
    auto* text = new AQTextEdit(QStringLiteral("text"), QStringLiteral("start"), m_fx->root(), true);
    auto* label = new AQLabel(QStringLiteral("label"), m_fx->root(), Qt::WindowFlags(), true);
    m_log->watch(slider);
    m_log->watch(text);
    m_log->watch(label);
    QVERIFY(m_fx->replay({line}));
    QCOMPARE(m_log->entries(), signalLog);
    if (line.startsWith(QLatin1String("slider")))
        QCOMPARE(QString::number(slider->value()), state);
    else if (line.startsWith(QLatin1String("text")))
        QCOMPARE(text->toPlainText(), state);
}

// --- input dialog ------------------------------------------------------------

namespace {

/// Asks one AQInputDialog question of @p kind and answers the value as text.
QString ask(const QString& kind, bool* ok, bool record)
{
    QWidget* parent = nullptr;
    if (kind == QLatin1String("int"))
        return QString::number(AQInputDialog::getInt(parent, "Count", "How many?", 1, 0, 1000, 1, ok, {}, record));
    if (kind == QLatin1String("double"))
        return QString::number(
            AQInputDialog::getDouble(parent, "Size", "How large?", 1, -1e9, 1e9, 4, ok, {}, record), 'g', 12);
    if (kind == QLatin1String("item"))
        return AQInputDialog::getItem(parent, "Pick", "Which?", {"Alpha", "Beta", "two words"}, 0, false, ok, {},
                                      record);
    return AQInputDialog::getText(parent, "Name", "Name?", QLineEdit::Normal, QString(), ok, {}, Qt::ImhNone,
                                  record);
}

} // namespace

void tst_ValueInputs::inputDialogRecordsFillins_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("answer"); // empty: cancel
    QTest::addColumn<bool>("record");
    QTest::addColumn<QStringList>("records");

    QTest::newRow("int") << "int" << "42" << true << QStringList{"QtFillin 42"};
    QTest::newRow("double") << "double" << "1234567.25" << true << QStringList{"QtFillin 1.23457e+06"};
    QTest::newRow("item") << "item" << "two words" << true << QStringList{"QtFillin \"two words\""};
    QTest::newRow("text") << "text" << "Ann" << true << QStringList{"QtFillin Ann"};
    QTest::newRow("int cancelled") << "int" << "" << true << QStringList{"QtFillin "};
    QTest::newRow("text cancelled") << "text" << "" << true << QStringList{"QtFillin "};
    QTest::newRow("not recorded") << "int" << "42" << false << QStringList();
    QTest::newRow("asked from suppressed code") << "suppressed int" << "42" << true << QStringList{"QtFillin 42"};
}

void tst_ValueInputs::inputDialogRecordsFillins()
{
    QFETCH(QString, kind);
    QFETCH(QString, answer);
    QFETCH(bool, record);
    QFETCH(QStringList, records);
    const bool suppressed = kind.startsWith(QLatin1String("suppressed "));
    kind.remove(QLatin1String("suppressed "));

    ModalCatcher catcher([answer, kind](QWidget* modal) {
        auto* dialog = qobject_cast<QInputDialog*>(modal);
        if (answer.isEmpty()) {
            dialog->reject();
            return;
        }
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
    QVERIFY(catcher.caught());
    const QMap<QString, QString> titles{{"int", "Count"}, {"double", "Size"}, {"item", "Pick"}, {"text", "Name"}};
    QCOMPARE(catcher.title(), titles.value(kind));
    QCOMPARE(m_fx->stopRecording(), records);
    QCOMPARE(ok, !answer.isEmpty());
    if (!answer.isEmpty())
        QCOMPARE(value, answer);
}

void tst_ValueInputs::inputDialogAnswersFromFillins_data()
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
    QTest::newRow("double, empty fill-in") << "double" << "QtFillin " << true << "0" << false;
    QTest::newRow("item") << "item" << "QtFillin Beta" << false << "Beta" << true;
    QTest::newRow("item, empty fill-in") << "item" << "QtFillin " << true << "" << false;
    QTest::newRow("text with a blank, ok untouched") << "text" << "QtFillin \"two words\"" << false << "two words"
                                                     << false;
    QTest::newRow("text, empty fill-in, ok untouched") << "text" << "QtFillin " << true << "" << true;
    QTest::newRow("parameter fill-in is no answer") << "text" << "QtFillin name Ann" << false << "" << false;
}

void tst_ValueInputs::inputDialogAnswersFromFillins()
{
    QFETCH(QString, kind);
    QFETCH(QString, fillin);
    QFETCH(bool, okBefore);
    QFETCH(QString, value);
    QFETCH(bool, okAfter);

    auto* button = new AQPushButton(QStringLiteral("ask"), QStringLiteral("Ask"), m_fx->root(), true);
    auto* after = new AQCheckBox(QStringLiteral("after"), QStringLiteral("After"), m_fx->root(), true);
    QString answer = QStringLiteral("unanswered");
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

QTEST_MAIN(tst_ValueInputs)
#include "tst_valueinputs.moc"
