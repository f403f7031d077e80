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

// The script state as the windows see it, switched without any script file.
enum class Script { None, Record, Replay };
Script g_script = Script::None;
bool recordActive() { return g_script == Script::Record; }
bool replayActive() { return g_script == Script::Replay; }

void setScriptState(Script state)
{
    g_script = state;
    AQScriptBackendHooks hooks = AQBuiltinScriptBackendHooks();
    hooks.isScriptRecordActive = recordActive;
    hooks.isScriptReplayActive = replayActive;
    AQSetScriptBackendHooks(hooks);
}

const QString noteKey = QStringLiteral("note");

} // namespace

Q_DECLARE_METATYPE(Script)

/// A settings dialog that keeps the text of its one field.
class NoteDialog : public AQDialogWSettings
{
    Q_OBJECT

public:
    NoteDialog()
        : AQDialogWSettings(QStringLiteral("Note Dialog"))
    {
        auto* layout = new QVBoxLayout(this);
        edit = new QLineEdit(this);
        buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        layout->addWidget(edit);
        layout->addWidget(buttons);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    }

    QLineEdit* edit = nullptr;
    QDialogButtonBox* buttons = nullptr;

private:
    void RestoreSettings(QSettings& settings) override { edit->setText(settings.value(noteKey).toString()); }
    void SaveSettings(QSettings& settings) const override { settings.setValue(noteKey, edit->text()); }
};

class NotePanel : public AQWidgetWSettings
{
    Q_OBJECT

public:
    NotePanel()
        : AQWidgetWSettings(QStringLiteral("Note Panel"))
    {
        edit = new QLineEdit(this);
    }
    QLineEdit* edit = nullptr;

private:
    void RestoreSettings(QSettings& settings) override { edit->setText(settings.value(noteKey).toString()); }
    void SaveSettings(QSettings& settings) const override { settings.setValue(noteKey, edit->text()); }
};

class NoteWindow : public MainWindow
{
    Q_OBJECT

public:
    NoteWindow()
        : MainWindow(QStringLiteral("Note Window"))
    {
        tools = new QToolBar(QStringLiteral("Tools"), this);
        tools->setObjectName(QStringLiteral("tools"));
        addToolBar(Qt::TopToolBarArea, tools);
        edit = new QLineEdit(this);
        setCentralWidget(edit);
    }
    QToolBar* tools = nullptr;
    QLineEdit* edit = nullptr;

private:
    void RestoreSettings(QSettings& settings) override { edit->setText(settings.value(noteKey).toString()); }
    void SaveSettings(QSettings& settings) const override { settings.setValue(noteKey, edit->text()); }
};

class tst_SettingsSupport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void dialogSavesOnFinish_data();
    void dialogSavesOnFinish();
    void dialogRestoresOnShow_data();
    void dialogRestoresOnShow();
    void widgetKeepsOwnValuesOnly_data();
    void widgetKeepsOwnValuesOnly();
    void mainWindowRestoresOnFirstShowOnly();
    void mainWindowSavesOnClose_data();
    void mainWindowSavesOnClose();

private:
    static QVariant stored(const QString& group, const QString& key)
    {
        return AQSettings(QStringLiteral("Main")).value(group + QLatin1Char('/') + key);
    }
    static void store(const QString& group, const QString& key, const QVariant& value)
    {
        AQSettings(QStringLiteral("Main")).setValue(group + QLatin1Char('/') + key, value);
    }

    std::unique_ptr<SettingsSandbox> m_sandbox;
};

void tst_SettingsSupport::initTestCase()
{
    m_sandbox = std::make_unique<SettingsSandbox>();
}

void tst_SettingsSupport::init()
{
    m_sandbox->clear();
    setScriptState(Script::None);
}

void tst_SettingsSupport::cleanup()
{
    AQSetScriptBackendHooks(AQBuiltinScriptBackendHooks());
    g_script = Script::None;
}

void tst_SettingsSupport::dialogSavesOnFinish_data()
{
    QTest::addColumn<QString>("ending");
    QTest::addColumn<Script>("script");
    QTest::addColumn<bool>("ownSaved");
    QTest::newRow("accepted") << "ok" << Script::None << true;
    QTest::newRow("rejected") << "cancel" << Script::None << false;
    QTest::newRow("closed") << "close" << Script::None << false;
    QTest::newRow("accepted while recording") << "ok" << Script::Record << false;
    QTest::newRow("accepted during replay") << "ok" << Script::Replay << false;
}

void tst_SettingsSupport::dialogSavesOnFinish()
{
    QFETCH(QString, ending);
    QFETCH(Script, script);
    QFETCH(bool, ownSaved);

    NoteDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    dialog.resize(333, 222);
    QTest::keyClicks(dialog.edit, QStringLiteral("typed"));
    setScriptState(script);
    if (ending == QLatin1String("ok"))
        QTest::mouseClick(dialog.buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    else if (ending == QLatin1String("cancel"))
        QTest::mouseClick(dialog.buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    else
        dialog.close();
    QVERIFY(!dialog.isVisible());

    const QString group = QStringLiteral("NoteDialog");
    QCOMPARE(stored(group, noteKey).isValid(), ownSaved);
    if (ownSaved)
        QCOMPARE(stored(group, noteKey).toString(), QStringLiteral("typed"));
    // Geometry is kept however the dialog ends.
    QCOMPARE(stored(group, QStringLiteral("SizeAndPos")).toByteArray(), dialog.saveGeometry());
}

void tst_SettingsSupport::dialogRestoresOnShow_data()
{
    QTest::addColumn<Script>("script");
    QTest::addColumn<QString>("note");
    QTest::newRow("no script") << Script::None << QStringLiteral("kept");
    QTest::newRow("recording") << Script::Record << QString();
    QTest::newRow("replay") << Script::Replay << QString();
}

void tst_SettingsSupport::dialogRestoresOnShow()
{
    QFETCH(Script, script);
    QFETCH(QString, note);
    QByteArray geometry;
    {
        NoteDialog model;
        model.resize(345, 234);
        geometry = model.saveGeometry();
    }
    m_sandbox->clear(); // the model dialog's own state is not part of the test
    store(QStringLiteral("NoteDialog"), noteKey, QStringLiteral("kept"));
    store(QStringLiteral("NoteDialog"), QStringLiteral("SizeAndPos"), geometry);

    setScriptState(script);
    NoteDialog dialog;
    dialog.resize(300, 200);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialog.edit->text(), note);
    QCOMPARE(dialog.size(), QSize(345, 234));

    dialog.RestoreDefaultSettings();
    QCOMPARE(dialog.size(), QSize(300, 200));
}

void tst_SettingsSupport::widgetKeepsOwnValuesOnly_data()
{
    QTest::addColumn<Script>("script");
    QTest::addColumn<bool>("ownKept");
    QTest::newRow("no script") << Script::None << true;
    QTest::newRow("replay") << Script::Replay << false;
}

void tst_SettingsSupport::widgetKeepsOwnValuesOnly()
{
    QFETCH(Script, script);
    QFETCH(bool, ownKept);
    setScriptState(script);
    {
        NotePanel panel;
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        QTest::keyClicks(panel.edit, QStringLiteral("panel text"));
        panel.hide();
    }
    QCOMPARE(stored(QStringLiteral("NotePanel"), noteKey).isValid(), ownKept);
    QVERIFY(!stored(QStringLiteral("NotePanel"), QStringLiteral("SizeAndPos")).isValid());

    NotePanel again;
    again.show();
    QCOMPARE(again.edit->text(), ownKept ? QStringLiteral("panel text") : QString());
}

void tst_SettingsSupport::mainWindowRestoresOnFirstShowOnly()
{
    QByteArray geometry;
    QByteArray state;
    {
        NoteWindow model;
        model.setAttribute(Qt::WA_DeleteOnClose, false);
        model.resize(420, 310);
        model.addToolBar(Qt::LeftToolBarArea, model.tools);
        geometry = model.saveGeometry();
        state = model.saveState(0);
    }
    m_sandbox->clear();
    store(QStringLiteral("NoteWindow"), QStringLiteral("SizeAndPos"), geometry);
    store(QStringLiteral("NoteWindow"), QStringLiteral("state"), state);
    store(QStringLiteral("NoteWindow"), noteKey, QStringLiteral("window note"));

    NoteWindow window;
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.size(), QSize(420, 310));
    QCOMPARE(window.toolBarArea(window.tools), Qt::LeftToolBarArea);
    QCOMPARE(window.edit->text(), QStringLiteral("window note"));

    window.resize(500, 350);
    window.hide();
    window.show();
    QCOMPARE(window.size(), QSize(500, 350));

    window.RestoreDefaultSettings();
    QCOMPARE(window.toolBarArea(window.tools), Qt::TopToolBarArea);
}

void tst_SettingsSupport::mainWindowSavesOnClose_data()
{
    QTest::addColumn<Script>("script");
    QTest::addColumn<bool>("ownSaved");
    QTest::newRow("no script") << Script::None << true;
    QTest::newRow("replay") << Script::Replay << false;
}

void tst_SettingsSupport::mainWindowSavesOnClose()
{
    QFETCH(Script, script);
    QFETCH(bool, ownSaved);
    QPointer<NoteWindow> window = new NoteWindow;
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    window->addToolBar(Qt::RightToolBarArea, window->tools);
    window->resize(480, 360);
    QTest::keyClicks(window->edit, QStringLiteral("closing"));
    const QByteArray geometry = window->saveGeometry();
    const QByteArray state = window->saveState(0);

    setScriptState(script);
    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY2(window.isNull(), "a main window is deleted when closed");

    QCOMPARE(stored(QStringLiteral("NoteWindow"), QStringLiteral("SizeAndPos")).toByteArray(), geometry);
    QCOMPARE(stored(QStringLiteral("NoteWindow"), QStringLiteral("state")).toByteArray(), state);
    QCOMPARE(stored(QStringLiteral("NoteWindow"), noteKey).isValid(), ownSaved);

    QSettings ini(m_sandbox->stateIniPath(), QSettings::IniFormat);
    QCOMPARE(ini.value(QStringLiteral("Note_Window/geometry")).toByteArray(), geometry);
    QCOMPARE(ini.value(QStringLiteral("Note_Window/Layout")).toByteArray(), state);
}

QTEST_MAIN(tst_SettingsSupport)
#include "tst_settingssupport.moc"
