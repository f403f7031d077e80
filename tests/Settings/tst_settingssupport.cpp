#include "SettingsSandbox.h"

#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Scriptable/AQDialogWSettings.h>
#include <Scriptable/AQWidgetWSettings.h>
#include <Scriptable/MainWindow.h>
#include <Settings/AQSettings.h>

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

namespace {
// A replay as the windows see it, switched without any script file.
bool g_replay = false;
bool replayActive() { return g_replay; }

void setReplay(bool replay)
{
    g_replay = replay;
    AQScriptBackendHooks hooks = AQBuiltinScriptBackendHooks();
    hooks.isScriptReplayActive = replayActive;
    AQSetScriptBackendHooks(hooks);
}

const QString noteKey = QStringLiteral("note");

QVariant stored(const QString& group, const QString& key)
{
    return AQSettings(QStringLiteral("Main")).value(group + '/' + key);
}

} // namespace

// A window that keeps the text of its one line edit as its own value.
template <typename Window>
class Noted : public Window
{
public:
    using Window::Window;
    QLineEdit* edit = nullptr;

private:
    void RestoreSettings(QSettings& settings) override { edit->setText(settings.value(noteKey).toString()); }
    void SaveSettings(QSettings& settings) const override { settings.setValue(noteKey, edit->text()); }
};

class NoteDialog : public Noted<AQDialogWSettings>
{
    Q_OBJECT

public:
    NoteDialog() : Noted("Note Dialog")
    {
        auto* layout = new QVBoxLayout(this);
        edit = new QLineEdit(this);
        buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        layout->addWidget(edit);
        layout->addWidget(buttons);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    }
    QDialogButtonBox* buttons = nullptr;
};

class NotePanel : public Noted<AQWidgetWSettings>
{
    Q_OBJECT

public:
    NotePanel() : Noted("Note Panel") { edit = new QLineEdit(this); }
};

class NoteWindow : public Noted<MainWindow>
{
    Q_OBJECT

public:
    NoteWindow() : Noted("Note Window")
    {
        tools = new QToolBar("Tools", this);
        tools->setObjectName("tools");
        addToolBar(Qt::TopToolBarArea, tools);
        edit = new QLineEdit(this);
        setCentralWidget(edit);
    }
    QToolBar* tools = nullptr;
};

class tst_SettingsSupport : public QObject
{
    Q_OBJECT

    std::unique_ptr<SettingsSandbox> m_sandbox;

private Q_SLOTS:
    void initTestCase() { m_sandbox = std::make_unique<SettingsSandbox>(); }

    void init()
    {
        m_sandbox->clear();
        setReplay(false);
    }

    void cleanup()
    {
        AQSetScriptBackendHooks(AQBuiltinScriptBackendHooks());
        g_replay = false;
    }

    void dialogRoundTrip_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::addColumn<bool>("replayWhenSaving");
        QTest::addColumn<bool>("replayWhenRestoring");
        QTest::addColumn<QString>("note"); // restored into the second dialog
        QTest::newRow("accepted") << true << false << false << "typed";
        QTest::newRow("rejected") << false << false << false << "";
        QTest::newRow("saved during replay") << true << true << false << "";
        QTest::newRow("restored during replay") << true << false << true << "";
    }

    void dialogRoundTrip()
    {
        QFETCH(bool, accept);
        QFETCH(bool, replayWhenSaving);
        QFETCH(bool, replayWhenRestoring);
        QFETCH(QString, note);
        {
            NoteDialog dialog;
            dialog.show();
            QVERIFY(QTest::qWaitForWindowExposed(&dialog));
            dialog.resize(333, 222);
            QTest::keyClicks(dialog.edit, "typed");
            setReplay(replayWhenSaving);
            QTest::mouseClick(dialog.buttons->button(accept ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel),
                              Qt::LeftButton);
            QVERIFY(!dialog.isVisible());
            // Geometry is kept however the dialog ends.
            QCOMPARE(stored("NoteDialog", "SizeAndPos").toByteArray(), dialog.saveGeometry());
        }
        setReplay(replayWhenRestoring);
        NoteDialog dialog;
        dialog.resize(300, 200);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(dialog.edit->text(), note);
        QCOMPARE(dialog.size(), QSize(333, 222));
        dialog.RestoreDefaultSettings();
        QCOMPARE(dialog.size(), QSize(300, 200));
    }

    void widgetKeepsOwnValuesOnly_data()
    {
        QTest::addColumn<bool>("replay");
        QTest::newRow("no script") << false;
        QTest::newRow("replay") << true;
    }

    void widgetKeepsOwnValuesOnly()
    {
        QFETCH(bool, replay);
        setReplay(replay);
        {
            NotePanel panel;
            panel.show();
            QVERIFY(QTest::qWaitForWindowExposed(&panel));
            QTest::keyClicks(panel.edit, "panel text");
            panel.hide();
        }
        QCOMPARE(stored("NotePanel", noteKey).isValid(), !replay);
        QVERIFY(!stored("NotePanel", "SizeAndPos").isValid());
        NotePanel again;
        again.show();
        QCOMPARE(again.edit->text(), replay ? QString() : QStringLiteral("panel text"));
    }

    void mainWindowRoundTrip_data()
    {
        QTest::addColumn<bool>("replayWhenClosing");
        QTest::addColumn<bool>("replayWhenShowing");
        QTest::addColumn<QString>("note");
        QTest::newRow("no script") << false << false << "closing";
        QTest::newRow("closed during replay") << true << false << "";
        QTest::newRow("shown during replay") << false << true << "";
    }

    void mainWindowRoundTrip()
    {
        QFETCH(bool, replayWhenClosing);
        QFETCH(bool, replayWhenShowing);
        QFETCH(QString, note);
        QPointer<NoteWindow> first = new NoteWindow;
        first->show();
        QVERIFY(QTest::qWaitForWindowExposed(first));
        first->addToolBar(Qt::RightToolBarArea, first->tools);
        first->resize(480, 360);
        QTest::keyClicks(first->edit, "closing");
        const QByteArray geometry = first->saveGeometry();
        const QByteArray state = first->saveState(0);
        setReplay(replayWhenClosing);
        first->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY2(first.isNull(), "a main window is deleted when closed");
        // Kept twice: by the settings support and in the state INI file.
        QCOMPARE(stored("NoteWindow", "SizeAndPos").toByteArray(), geometry);
        QCOMPARE(stored("NoteWindow", "state").toByteArray(), state);
        QSettings ini(m_sandbox->stateIniPath(), QSettings::IniFormat);
        QCOMPARE(ini.value("Note_Window/geometry").toByteArray(), geometry);
        QCOMPARE(ini.value("Note_Window/Layout").toByteArray(), state);

        setReplay(replayWhenShowing);
        NoteWindow window;
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.size(), QSize(480, 360));
        QCOMPARE(window.toolBarArea(window.tools), Qt::RightToolBarArea);
        QCOMPARE(window.edit->text(), note);
        // Only the first show restores.
        window.resize(500, 350);
        window.hide();
        window.show();
        QCOMPARE(window.size(), QSize(500, 350));
        window.RestoreDefaultSettings();
        QCOMPARE(window.toolBarArea(window.tools), Qt::TopToolBarArea);
    }
};

QTEST_MAIN(tst_SettingsSupport)
#include "tst_settingssupport.moc"
