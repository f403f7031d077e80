// orvex-gallery: the library's widgets in one window, with the script
// engine's record and replay runs available from the command line.
//
//   orvex-gallery [--record FILE] [--replay FILE] [--interval MS]
//                 [--screenshot PNG] [--journal DIR] [--quit]
#include "GalleryWindow.h"
#include "PreferencesDialog.h"

#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Settings/AQSettings.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QStandardPaths>
#include <QTimer>

#include <cstdio>

using namespace QtUIBase;

namespace {

void printSummary(const QString& script, const GalleryWindow::ReplayReport& report, const QString& journal,
                  const QString& screenshot)
{
    std::printf("Replay of %s %s\n", qPrintable(script), report.finished ? "finished" : "did not finish");
    std::printf("  lines replayed:         %d of %d\n", report.linesReplayed, report.linesTotal);
    std::printf("  objects not found:      %d%s%s\n", report.objectsNotFound,
                report.objectsNotFound ? " (see " : "",
                report.objectsNotFound ? qPrintable(report.reportFile + QLatin1Char(')')) : "");
    std::printf("  time taken:             %lld ms\n", static_cast<long long>(report.milliseconds));
    std::printf("  journal:                %s\n", qPrintable(journal));
    if (!screenshot.isEmpty())
        std::printf("  screenshot:             %s\n", qPrintable(screenshot));
    std::fflush(stdout);
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("orvex-gallery"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The Orvex widget gallery."));
    parser.addHelpOption();
    const QCommandLineOption record(QStringLiteral("record"), QStringLiteral("Record the session into <file>."),
                                    QStringLiteral("file"));
    const QCommandLineOption replay(QStringLiteral("replay"), QStringLiteral("Replay the script <file>."),
                                    QStringLiteral("file"));
    const QCommandLineOption interval(QStringLiteral("interval"),
                                      QStringLiteral("Pause <ms> after each replayed line (default: the "
                                                     "preferences' pause, 200 ms unless changed)."),
                                      QStringLiteral("ms"), QStringLiteral("200"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a picture of the window to <png> after the replay."),
                                        QStringLiteral("png"));
    const QCommandLineOption journalDir(QStringLiteral("journal"),
                                        QStringLiteral("Write the journal into <dir> (default: a temporary folder)."),
                                        QStringLiteral("dir"));
    const QCommandLineOption quit(QStringLiteral("quit"), QStringLiteral("Exit after the replay and screenshot."));
    parser.addOptions({record, replay, interval, screenshot, journalDir, quit});
    parser.process(app);

    bool intervalOk = false;
    const int intervalMs = parser.value(interval).toInt(&intervalOk);
    if (!intervalOk || intervalMs < 0) {
        std::fprintf(stderr, "orvex-gallery: --interval wants a number of milliseconds\n");
        return 2;
    }
    if (parser.isSet(record) && parser.isSet(replay)) {
        std::fprintf(stderr, "orvex-gallery: --record and --replay exclude each other\n");
        return 2;
    }

    const QString folder = parser.isSet(journalDir) ? parser.value(journalDir)
                                                    : QDir::temp().filePath(QStringLiteral("orvex-gallery"));
    QDir().mkpath(folder);
    const QString journalBase = QDir(folder).filePath(QStringLiteral("gallery"));
    AQInitializeNonVelmoraScripting(QFile::encodeName(journalBase).constData(), false, true);

    // Window and dialog positions ("Position", "Size", "geometry", "Layout").
    const QString config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(config);
    AQSettings(QDir(config).filePath(QStringLiteral("state.ini")), QDir(config).filePath(QStringLiteral("layout.ini")));

    // Deleted by itself when closed; its first show restores the geometry
    // of the last run (980 x 560 the first time).
    QPointer<GalleryWindow> window = new GalleryWindow;
    window->resize(980, 560);
    window->show();

    if (parser.isSet(record) && !window->startRecording(parser.value(record)))
        return 1;

    int exitCode = 0;
    if (parser.isSet(replay)) {
        QTimer::singleShot(0, window.data(), [&] {
            const QString script = parser.value(replay);
            const int pause = parser.isSet(interval) ? intervalMs : PreferencesDialog::storedReplayPause();
            const GalleryWindow::ReplayReport report = window->replay(script, pause);
            exitCode = report.finished ? 0 : 1;
            QString picture;
            if (parser.isSet(screenshot)) {
                picture = parser.value(screenshot);
                if (!window->grab().save(picture)) {
                    std::fprintf(stderr, "orvex-gallery: cannot write %s\n", qPrintable(picture));
                    exitCode = 1;
                }
            }
            printSummary(script, report, journalBase + QStringLiteral(".jrl"), picture);
            // Closing (not just exiting) keeps the window's geometry.
            if (parser.isSet(quit))
                window->close();
        });
    } else if (parser.isSet(quit)) {
        QTimer::singleShot(0, &app, [&] {
            if (parser.isSet(screenshot))
                window->grab().save(parser.value(screenshot));
            window->close();
        });
    }

    const int result = QApplication::exec();
    delete window.data();
    AQCloseScript();
    return result != 0 ? result : exitCode;
}
