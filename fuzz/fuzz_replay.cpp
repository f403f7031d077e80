// Feeds arbitrary bytes to the replay engine as a script file, against a
// small window of registered scriptable objects. Any crash, sanitizer report
// or hang (libFuzzer's -timeout) is a finding.
#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQButtons.h>
#include <Scriptable/AQColorDialog.h>
#include <Scriptable/AQDialog.h>
#include <Scriptable/AQDialogButtonBox.h>
#include <Scriptable/AQMessageBox.h>
#include <Scriptable/AQScriptableLineEdit.h>
#include <Scriptable/AQValueInputs.h>
#include <Settings/AQSettings.h>

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <cstddef>
#include <cstdint>

using namespace QtUIBase;

namespace {

struct Harness
{
    Harness()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // Thousands of error boxes a minute: keep the fuzzer's output readable.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        static int argc = 1;
        static char name[] = "fuzz_replay";
        static char* argv[] = {name, nullptr};
        app = new QApplication(argc, argv);
        AQInitializeNonVelmoraScripting("fuzz", true, false);
        scriptPath = dir.filePath(QStringLiteral("input.scr"));
        AQSettings::setUIAScriptPath(scriptPath);

        window = new QWidget;
        AQObjects::add(window, QStringLiteral("Window"));
        auto* action = new AQAction(QStringLiteral("Action"), QStringLiteral("Action"), window, true);
        action->setCheckable(true);
        QObject::connect(action, &AQAction::ATriggered, [] {});
        auto* plain = new AQAction(QStringLiteral("Plain"), QStringLiteral("Plain"), window, true);
        QObject::connect(plain, &AQAction::ATriggered, [] {});
        auto* edit = new AQScriptableLineEdit(QStringLiteral("Edit"), window, true);
        QObject::connect(edit, &AQScriptableLineEdit::ATextChanged, [](const QString&) {});
        new AQScriptableLineEdit(QStringLiteral("SimulationCommand_button"), window, true);
        auto* dialog = new QDialog(window);
        AQObjects::add(dialog, QStringLiteral("Dialog"));
        new AQScriptableLineEdit(QStringLiteral("Field"), dialog, true);

        // One of each value input and button, listened to as an application
        // would, so the lazily connected paths run too.
        auto* push = new AQPushButton(QStringLiteral("Push"), QStringLiteral("Push"), window, true);
        push->setCheckable(true);
        QObject::connect(push, &AQPushButton::AToggled, [](bool) {});
        QObject::connect(push, &AQPushButton::APressed, [] {});
        QObject::connect(push, &AQPushButton::AReleased, [] {});
        new AQCheckBox(QStringLiteral("Check"), QStringLiteral("Check"), window, true);
        new AQRadioButton(QStringLiteral("Radio"), QStringLiteral("Radio"), window, true);
        auto* tool = new AQToolButton(QStringLiteral("Tool"), window, true);
        tool->setCheckable(true);
        auto* combo = new AQComboBox(QStringLiteral("Combo"), window, true);
        combo->addItems({QStringLiteral("Copper"), QStringLiteral("FR-4"), QStringLiteral("Air gap")});
        combo->setEditable(true);
        new AQSpinBox(window, QStringLiteral("Spin"), true);
        new AQDoubleSpinBox(QStringLiteral("Double"), QString(), window, true);
        auto* slider = new AQSlider(QStringLiteral("Slider"), Qt::Horizontal, window, true);
        QObject::connect(slider, &AQSlider::AValueChanged, [](int) {});
        new AQTextEdit(QStringLiteral("Text"), QString(), window, true);
        auto* label = new AQLabel(QStringLiteral("Label"), QStringLiteral("<a href=x>x</a>"), window, {}, true);
        QObject::connect(label, &AQLabel::ALinkActivated, [](const QString&) {});
        QObject::connect(label, &AQLabel::ACustomContextMenuRequested, [](const QPoint&) {});

        // Buttons whose reactions open modal dialogs that pull their own
        // lines, or ask a question answered by a fill-in.
        auto* openDialog = new AQPushButton(QStringLiteral("OpenDialog"), QStringLiteral("Open"), window, true);
        QObject::connect(openDialog, &AQPushButton::AClicked, window, [this] {
            auto* modal = new AQDialog(QStringLiteral("Modal"), window, {}, true);
            new AQScriptableLineEdit(QStringLiteral("Name"), modal, true);
            auto* box = new AQDialogButtonBox(QStringLiteral("Buttons"), QDialogButtonBox::Ok | QDialogButtonBox::Cancel,
                                              Qt::Horizontal, modal, true);
            QObject::connect(box, &AQDialogButtonBox::AAccepted, modal, &QDialog::accept);
            QObject::connect(box, &AQDialogButtonBox::ARejected, modal, &QDialog::reject);
            modal->exec();
            delete modal;
        });
        auto* pickColour = new AQPushButton(QStringLiteral("PickColour"), QStringLiteral("Colour"), window, true);
        QObject::connect(pickColour, &AQPushButton::AClicked, window, [this] {
            auto* colours = new AQColorDialog(QStringLiteral("Colours"), window, true);
            QPointer<AQColorDialog> guard(colours);
            colours->exec();
            delete guard.data();
        });
        auto* ask = new AQPushButton(QStringLiteral("Ask"), QStringLiteral("Ask"), window, true);
        QObject::connect(ask, &AQPushButton::AClicked, window, [this] {
            AQMessageBox::question(window, QStringLiteral("Question"), QStringLiteral("Overwrite?"),
                                   QMessageBox::Yes | QMessageBox::No, QMessageBox::No, true);
            AQInputDialog::getText(window, QStringLiteral("Name"), QStringLiteral("Name:"), QLineEdit::Normal,
                                   QString(), nullptr, {}, {}, true);
        });

        // Error boxes are modal: close each one as soon as it shows, and
        // finish any simulation the script starts.
        closer = new QTimer;
        closer->setInterval(0);
        QObject::connect(closer, &QTimer::timeout, [] {
            if (QWidget* modal = QApplication::activeModalWidget())
                modal->close();
            AQScripts::setSimualationStatus(true);
        });
        closer->start();
    }

    QApplication* app = nullptr;
    QTemporaryDir dir;
    QString scriptPath;
    QWidget* window = nullptr;
    QTimer* closer = nullptr;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Harness harness;
    {
        QFile file(harness.scriptPath);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }
    AQOpenScriptFileForReplay(harness.scriptPath, 0, 2);
    // The report file grows with every unknown object; keep it small.
    QFile::remove(AQScripts::fixedScriptFilePath());
    AQScripts::getFixedScriptFile().close();
    AQResetReplayState();
    AQScripts::forceRecordingAllowed(true);
    // Dialogs abandoned by a script that ran out delete themselves later.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
