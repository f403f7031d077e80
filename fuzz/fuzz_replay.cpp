// Feeds arbitrary bytes to the replay engine as a script file, against a
// small window of registered scriptable objects. Any crash, sanitizer report
// or hang (libFuzzer's -timeout) is a finding.
#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQScriptableLineEdit.h>
#include <Settings/AQSettings.h>

#include <QApplication>
#include <QDialog>
#include <QFile>
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
    return 0;
}
