#include "ASignalLog.h"
#include "ModalCatcher.h"
#include "ScriptSandbox.h"
#include "SliderDriving.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQButtons.h>
#include <Scriptable/AQValueInputs.h>
#include <Settings/AQSettings.h>

#include <QGridLayout>
#include <QPointer>
#include <QtTest>

#include <functional>
#include <memory>

using namespace QtUIBase;

namespace {

/**
 * One scriptable widget of each kind on a registered window, with the
 * application's reactions wired to the A signals: the push button counts
 * its clicks, the colour button asks for a colour, "Rename" asks for a name
 * and the link shows where it pointed.
 */
class RoundTripWindow : public QWidget
{
public:
    explicit RoundTripWindow(std::function<void(QObject*)> watchDialog)
    {
        AQObjects::add(this, QStringLiteral("RoundTrip"));
        auto* grid = new QGridLayout(this);
        check = new AQCheckBox(QStringLiteral("check"), QStringLiteral("Check"), this, true);
        toggle = new AQToggleButton(QStringLiteral("toggle"), QStringLiteral("Toggle"), this, true);
        edit = new AQScriptableLineEdit(QStringLiteral("edit"), this, true);
        push = new AQPushButton(QStringLiteral("push"), QStringLiteral("Count"), this, true);
        count = new QLabel(QStringLiteral("0"), this);
        radio1 = new AQRadioButton(QStringLiteral("radio1"), QStringLiteral("One"), this, true);
        radio2 = new AQRadioButton(QStringLiteral("radio2"), QStringLiteral("Two"), this, true);
        radio1->setChecked(true);
        tool = new AQToolButton(QStringLiteral("tool"), this, true);
        tool->setCheckable(true);
        action = new AQAction(QStringLiteral("action"), QStringLiteral("Act"), this, true);
        action->setCheckable(true);
        actionButton = new QToolButton(this);
        actionButton->setDefaultAction(action);
        colour = new AQColorButton(QStringLiteral("colour"), Qt::gray, this, true);
        combo = new AQComboBox(QStringLiteral("combo"), this, true);
        combo->addItems({"Alpha", "Beta", "Gamma", "Delta"});
        spin = new AQSpinBox(this, QStringLiteral("spin"), true);
        spin->setRange(0, 50);
        dspin = new AQDoubleSpinBox(QStringLiteral("dspin"), QString(), this, true);
        dspin->setRange(-100, 100);
        slider = new AQSlider(QStringLiteral("slider"), Qt::Horizontal, this, true);
        slider->setRange(0, 100);
        slider->setMinimumWidth(200);
        // A tracking slider reports every intermediate value of a drag to
        // the application, which the one recorded value cannot repeat.
        slider->setTracking(false);
        text = new AQTextEdit(QStringLiteral("text"), QString(), this, true);
        rename = new AQPushButton(QStringLiteral("rename"), QStringLiteral("Rename"), this, true);
        name = new QLabel(this);
        link = new AQLabel(QStringLiteral("link"), QStringLiteral("<a href=\"page:2\">Next page</a>"), this,
                           Qt::WindowFlags(), true);
        link->setTextInteractionFlags(Qt::LinksAccessibleByMouse);
        linked = new QLabel(this);

        const QList<QWidget*> widgets{check, toggle, edit,  push,  count, radio1, radio2, tool,   actionButton, colour,
                                      combo, spin,   dspin, slider, text, rename, name,   link,  linked};
        for (int i = 0; i < widgets.size(); ++i)
            grid->addWidget(widgets.at(i), i / 4, i % 4);

        QObject::connect(push, &AQPushButton::AClicked, count,
                         [this] { count->setNum(count->text().toInt() + 1); });
        QObject::connect(colour, &AQPushButton::AClicked, this, [this, watchDialog] {
            QPointer<AQColorDialog> dialog = new AQColorDialog(QStringLiteral("colourDialog"), colour->color(), this, true);
            watchDialog(dialog);
            if (dialog->exec() == QDialog::Accepted && dialog)
                colour->setColor(dialog->currentColor());
            delete dialog;
        });
        QObject::connect(rename, &AQPushButton::AClicked, this, [this] {
            // Replayed, getText() leaves ok as it was: start from true.
            bool ok = true;
            const QString answer =
                AQInputDialog::getText(this, "Rename", "Name:", QLineEdit::Normal, name->text(), &ok, {}, {}, true);
            if (ok)
                name->setText(answer);
        });
        QObject::connect(link, &AQLabel::ALinkActivated, linked, &QLabel::setText);
    }

    QStringList state() const
    {
        return {QStringLiteral("check=%1").arg(check->isChecked()),
                QStringLiteral("toggle=%1").arg(toggle->isChecked()),
                QStringLiteral("edit=%1").arg(edit->text()),
                QStringLiteral("count=%1").arg(count->text()),
                QStringLiteral("radio=%1,%2").arg(radio1->isChecked()).arg(radio2->isChecked()),
                QStringLiteral("tool=%1").arg(tool->isChecked()),
                QStringLiteral("action=%1").arg(action->isChecked()),
                QStringLiteral("colour=%1").arg(colour->color().name()),
                QStringLiteral("combo=%1").arg(combo->currentText()),
                QStringLiteral("spin=%1").arg(spin->value()),
                QStringLiteral("dspin=%1").arg(dspin->value()),
                QStringLiteral("slider=%1").arg(slider->value()),
                QStringLiteral("text=%1").arg(text->toPlainText()),
                QStringLiteral("name=%1").arg(name->text()),
                QStringLiteral("linked=%1").arg(linked->text())};
    }

    AQCheckBox* check;
    AQToggleButton* toggle;
    AQScriptableLineEdit* edit;
    AQPushButton* push;
    QLabel* count;
    AQRadioButton* radio1;
    AQRadioButton* radio2;
    AQToolButton* tool;
    AQAction* action;
    QToolButton* actionButton;
    AQColorButton* colour;
    AQComboBox* combo;
    AQSpinBox* spin;
    AQDoubleSpinBox* dspin;
    AQSlider* slider;
    AQTextEdit* text;
    AQPushButton* rename;
    QLabel* name;
    AQLabel* link;
    QLabel* linked;
};

// Near the left edge: check boxes and radio buttons take clicks only on
// their indicator and text, not across the whole cell of the layout.
void click(QWidget* widget)
{
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(qMin(8, widget->width() / 2), widget->height() / 2));
}

} // namespace

class tst_RoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void recordedSessionReplaysInAFreshWindow();
    void badLinesAreReportedAndReplayGoesOn();

private:
    std::unique_ptr<RoundTripWindow> makeWindow();

    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<ASignalLog> m_log;
};

void tst_RoundTrip::init()
{
    m_sandbox = std::make_unique<ScriptSandbox>();
    m_log = std::make_unique<ASignalLog>();
}

void tst_RoundTrip::cleanup()
{
    m_log.reset();
    m_sandbox.reset();
}

std::unique_ptr<RoundTripWindow> tst_RoundTrip::makeWindow()
{
    auto window = std::make_unique<RoundTripWindow>([this](QObject* dialog) { m_log->watch(dialog); });
    // A line edit reports every keystroke as ATextChanged, while only the
    // finished edit is a recorded operation: those reports are not compared.
    const QStringList keystrokes{QStringLiteral("ATextChanged")};
    const auto children = window->findChildren<QObject*>();
    m_log->watch(window.get());
    for (QObject* child : children)
        m_log->watch(child, qobject_cast<AQScriptableLineEdit*>(child) ? keystrokes : QStringList());
    window->show();
    QApplication::setActiveWindow(window.get());
    if (!QTest::qWaitForWindowActive(window.get()))
        qWarning("round-trip window not active");
    return window;
}

void tst_RoundTrip::recordedSessionReplaysInAFreshWindow()
{
    const QString script = m_sandbox->path(QStringLiteral("session.scr"));
    QStringList recordedLog;
    QStringList recordedState;
    {
        std::unique_ptr<RoundTripWindow> w = makeWindow();
        QVERIFY(AQOpenScriptFileForRecord(script, QStringLiteral("2")));

        click(w->check);
        click(w->toggle);
        click(w->toggle);
        click(w->edit);
        QTest::keyClicks(w->edit, QStringLiteral("hello world"));
        click(w->push);
        click(w->push);
        click(w->radio2);
        click(w->tool);
        click(w->actionButton);
        w->combo->setFocus();
        QTest::keyClick(w->combo, Qt::Key_Down);
        QTest::keyClick(w->combo, Qt::Key_Down);
        click(w->spin);
        QTest::keyClick(w->spin, Qt::Key_Up);
        QTest::keyClick(w->spin, Qt::Key_Up);
        click(w->dspin);
        QTest::keyClick(w->dspin, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(w->dspin, QStringLiteral("12.5"));
        QTest::keyClick(w->dspin, Qt::Key_Return);
        dragSlider(w->slider, 60);
        QTest::mouseClick(w->text->viewport(), Qt::LeftButton);
        QTest::keyClicks(w->text, QStringLiteral("first line"));
        QTest::keyClick(w->text, Qt::Key_Return);
        QTest::keyClicks(w->text, QStringLiteral("second"));
        {
            ModalCatcher picker([](QWidget* modal) {
                auto* dialog = qobject_cast<QColorDialog*>(modal);
                dialog->setCurrentColor(QColor(12, 134, 56));
                dialog->accept();
            });
            click(w->colour); // also takes the focus from the text edit
            QVERIFY(picker.caught());
            QCOMPARE(picker.title(), QStringLiteral("Select Color"));
        }
        {
            ModalCatcher namer([](QWidget* modal) {
                auto* dialog = qobject_cast<QInputDialog*>(modal);
                dialog->setTextValue(QStringLiteral("New name"));
                dialog->accept();
            });
            click(w->rename);
            QVERIFY(namer.caught());
            QCOMPARE(namer.title(), QStringLiteral("Rename"));
        }
        QTest::mouseClick(w->link, Qt::LeftButton, {}, QPoint(10, w->link->height() / 2));

        AQStopScriptRecording();
        recordedLog = m_log->entries();
        recordedState = w->state();
    }
    // The session changed every widget from its initial state.
    QCOMPARE(recordedState,
             (QStringList{"check=1", "toggle=0", "edit=hello world", "count=2", "radio=0,1", "tool=1", "action=1",
                          "colour=#0c8638", "combo=Gamma", "spin=2", "dspin=12.5", "slider=" + recordedState.at(11).mid(7),
                          "text=first line\nsecond", "name=New name", "linked=page:2"}));
    QVERIFY(recordedState.at(11) != QLatin1String("slider=0"));
    const QString recorded = ScriptSandbox::readAll(script);
    QVERIFY2(recorded.contains("QtSignal RoundTrip colourDialog currentColorChanged 12 134 56\n"
                               "QtSignal RoundTrip colourDialog accepted\n"),
             qPrintable(recorded));
    QVERIFY(recorded.contains("QtFillin \"New name\""));
    QCOMPARE(recorded.count("slider valueChanged"), 1);

    m_log->clear();
    std::unique_ptr<RoundTripWindow> fresh = makeWindow();
    QString scriptPath = script;
    AQSettings::setUIAScriptPath(scriptPath);
    QVERIFY(AQOpenScriptFileForReplay(script, 0, 2));
    QCOMPARE(m_log->entries(), recordedLog);
    QCOMPARE(fresh->state(), recordedState);
    QVERIFY(!QFile::exists(m_sandbox->path(QStringLiteral("fixedScriptOperation.txt"))));
}

void tst_RoundTrip::badLinesAreReportedAndReplayGoesOn()
{
    std::unique_ptr<RoundTripWindow> w = makeWindow();
    QString script = m_sandbox->path(QStringLiteral("bad.scr"));
    AQSettings::setUIAScriptPath(script);
    m_sandbox->writeScript(script, {
                                       "QtSignal RoundTrip ghost clicked",           // unknown object
                                       "QtSignal Nowhere check clicked true",        // unknown parent
                                       "QtSignal RoundTrip check vanished true",     // unknown signal
                                       "QtSignal RoundTrip toggle clicked true true", // wrong argument count
                                       "QtSignal RoundTrip combo CurrentIndexChanged",
                                       "QtFillin stray",                              // unread answer
                                       "QtFillin stray answer",                       // read as a command
                                       "QtSignal RoundTrip spin valueChanged 7",
                                       "QtSignal RoundTrip combo CurrentIndexChanged Delta",
                                       "QtSignal RoundTrip check clicked true",
                                   });
    QVERIFY(AQOpenScriptFileForReplay(script, 0, 2));

    // The good lines after the bad ones took effect.
    QCOMPARE(w->spin->value(), 7);
    QCOMPARE(w->combo->currentText(), QStringLiteral("Delta"));
    QVERIFY(w->check->isChecked());
    QVERIFY(!w->toggle->isChecked());

    const QStringList report = ScriptSandbox::readLines(m_sandbox->path(QStringLiteral("fixedScriptOperation.txt")));
    QCOMPARE(report.size(), 3 * 8);
    const QStringList checked{"ghost", "check", "stray"};
    for (int block = 0; block < 3; ++block) {
        const QStringList lines = report.mid(block * 8, 8);
        QVERIFY2(lines.at(0).startsWith("exception/warning info "), qPrintable(lines.at(0)));
        QCOMPARE(lines.at(1), QStringLiteral("Tips:if regressions cases test successs and ignore belows notes"));
        QCOMPARE(lines.at(3), "Note2: Please only check " + checked.at(block));
        QCOMPARE(lines.at(4), QStringLiteral("Note3: belows failed operation need re-record:"));
        QCOMPARE(lines.at(5), QString());
        QCOMPARE(lines.at(7), QString());
    }
    // Report numbers count on from block to block.
    QCOMPARE(report.at(8).mid(23).toInt(), report.at(0).mid(23).toInt() + 1);
    QCOMPARE(report.at(16).mid(23).toInt(), report.at(0).mid(23).toInt() + 2);
}

QTEST_MAIN(tst_RoundTrip)
#include "tst_roundtrip.moc"
