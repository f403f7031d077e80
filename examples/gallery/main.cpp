// Demo: a window with scriptable actions records a short session into a
// script and a journal in a temporary folder, then prints both files.
#include <Script/AQObjects.h>
#include <Script/AQScriptEngine.h>
#include <Scriptable/AQAction.h>

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTextStream>
#include <QToolBar>

#include <cstdio>

using namespace QtUIBase;

namespace {
void printFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    std::printf("==== %s\n%s\n", qPrintable(path), file.readAll().constData());
}
} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    QTemporaryDir dir;
    dir.setAutoRemove(false);
    const QString base = dir.path() + QStringLiteral("/gallery");
    AQInitializeNonVelmoraScripting(QFile::encodeName(base).constData(), false, true);

    QMainWindow window;
    AQObjects::add(&window, QStringLiteral("Gallery Window"));
    auto* status = new QLabel(&window);
    window.setCentralWidget(status);

    auto* save = new AQAction(QStringLiteral("Save Action"), QStringLiteral("&Save"), &window, true);
    auto* grid = new AQAction(QStringLiteral("Show Grid"), QStringLiteral("Show &grid"), &window, true);
    grid->setCheckable(true);
    auto* note = new AQAction(QStringLiteral("Note Action"), QStringLiteral("&Note"), &window, true);
    QObject::connect(save, &AQAction::ATriggered, status, [status] { status->setText(QStringLiteral("saved")); });
    QObject::connect(grid, &AQAction::ATriggered, status, [status, grid] {
        status->setText(grid->isChecked() ? QStringLiteral("grid on") : QStringLiteral("grid off"));
    });
    QObject::connect(note, &AQAction::ATriggered, [] {});
    QMenu* menu = window.menuBar()->addMenu(QStringLiteral("&File"));
    menu->addActions({save, grid, note});
    window.addToolBar(QStringLiteral("Main"))->addActions({save, grid});
    window.show();

    const QString script = dir.path() + QStringLiteral("/session");
    if (!AQOpenScriptFileForRecord(script, QStringLiteral("2")))
        return 1;
    save->trigger();
    grid->trigger();
    grid->trigger();
    note->trigger();
    AQCloseScript();

    printFile(script + QStringLiteral(".scr"));
    printFile(base + QStringLiteral(".jrl"));
    return 0;
}
