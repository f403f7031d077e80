#include "GalleryWindow.h"

#include "ButtonsValuesPage.h"
#include "ChartPage.h"
#include "ContainersPage.h"
#include "FilesPage.h"
#include "FilterTablePage.h"
#include "ListsPage.h"
#include "MenusWizardPage.h"
#include "TablesPage.h"
#include "TreesPage.h"
#include "PreferencesDialog.h"
#include "UnitsPage.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScriptingDialog.h>
#include <Scriptable/AQTabWidget.h>
#include <Settings/AQSettings.h>

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QSettings>
#include <QCloseEvent>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextStream>

using namespace QtUIBase;

namespace {

const QString ReportName = QStringLiteral("fixedScriptOperation.txt");

int countReportBlocks(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    int blocks = 0;
    QTextStream in(&file);
    while (!in.atEnd()) {
        if (in.readLine().startsWith(QLatin1String("exception/warning info")))
            ++blocks;
    }
    return blocks;
}

} // namespace

GalleryWindow::GalleryWindow(QWidget* parent)
    : MainWindow(QStringLiteral("Gallery"), parent)
{
    setWindowTitle(tr("Orvex widget gallery"));
    // Scriptable: switching pages is recorded ("pages currentChanged <tab>").
    m_tabs = new AQTabWidget(QStringLiteral("pages"), this, true);
    m_tabs->addTab(new ButtonsValuesPage(m_tabs), tr("Buttons and values"));
    m_tabs->addTab(new ChartPage(m_tabs), tr("Chart"));
    m_tabs->addTab(new ContainersPage(m_tabs), tr("Containers"));
    m_tabs->addTab(new MenusWizardPage(m_tabs), tr("Menus and wizard"));
    m_tabs->addTab(new ListsPage(m_tabs), tr("Lists"));
    m_tabs->addTab(new TablesPage(m_tabs), tr("Tables"));
    m_tabs->addTab(new TreesPage(m_tabs), tr("Trees"));
    m_tabs->addTab(new FilesPage(m_tabs), tr("Files"));
    m_tabs->addTab(new UnitsPage(m_tabs), tr("Units and panels"));
    m_tabs->addTab(new FilterTablePage(m_tabs), tr("Filter table"));
    setCentralWidget(m_tabs);
    buildMenus();
    statusBar()->showMessage(tr("Ready"));
}

void GalleryWindow::buildMenus()
{
    // Plain actions: opening these windows is not part of a recorded session.
    QMenu* tools = menuBar()->addMenu(tr("&Tools"));
    QAction* scripting = tools->addAction(tr("&Scripting..."));
    connect(scripting, &QAction::triggered, this, [this] {
        auto* dialog = new AQScriptingDialog(this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setExeName(QApplication::applicationName());
        dialog->setWorkingPath(QDir::currentPath());
        dialog->show();
    });
    QAction* preferences = tools->addAction(tr("&Preferences..."));
    connect(preferences, &QAction::triggered, this, [this] {
        // A dialog without a stored position opens at the host's anchor
        // point: here, over the page area.
        QPoint anchor = m_tabs->mapToGlobal(QPoint(m_tabs->width() / 4, m_tabs->height() / 4));
        AQSettings::setWdwHoopsViewLeftRectPoint(anchor);
        PreferencesDialog dialog(this);
        dialog.exec();
    });
    tools->addSeparator();
    QAction* quit = tools->addAction(tr("&Quit"));
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);
}

void GalleryWindow::RestoreSettings(QSettings& settings)
{
    m_tabs->setCurrentIndex(settings.value(QStringLiteral("page"), 0).toInt());
}

void GalleryWindow::SaveSettings(QSettings& settings) const
{
    settings.setValue(QStringLiteral("page"), m_tabs->currentIndex());
}

GalleryWindow::~GalleryWindow()
{
    AQSetReplayProgressFunc({});
}

bool GalleryWindow::startRecording(const QString& file)
{
    if (!AQOpenScriptFileForRecord(file, QStringLiteral("2")))
        return false;
    statusBar()->showMessage(tr("Recording to %1").arg(AQGetScriptFileName()));
    return true;
}

GalleryWindow::ReplayReport GalleryWindow::replay(const QString& file, int intervalMs)
{
    ReplayReport report;
    // The engine reports lines whose object it cannot find beside the
    // script; start this run's report afresh.
    QString scriptPath = QFileInfo(file).absoluteFilePath();
    AQSettings::setUIAScriptPath(scriptPath);
    report.reportFile = QFileInfo(scriptPath).absolutePath() + QLatin1Char('/') + ReportName;
    QFile::remove(report.reportFile);

    AQSetReplayProgressFunc([this, &report](int line, int total) {
        report.linesReplayed = line;
        report.linesTotal = total;
        statusBar()->showMessage(tr("Replaying line %1 of %2").arg(line).arg(total));
    });
    QElapsedTimer clock;
    clock.start();
    report.finished = AQOpenScriptFileForReplay(file, intervalMs, 2);
    report.milliseconds = clock.elapsed();
    AQSetReplayProgressFunc({});
    report.objectsNotFound = countReportBlocks(report.reportFile);

    statusBar()->showMessage(report.finished
                                 ? tr("Replay finished: %1 lines, %2 not found")
                                       .arg(report.linesReplayed)
                                       .arg(report.objectsNotFound)
                                 : tr("Replay stopped at line %1 of %2").arg(report.linesReplayed).arg(report.linesTotal));
    return report;
}

void GalleryWindow::closeEvent(QCloseEvent* event)
{
    // Ends a recording and writes the journal's last line.
    AQCloseScript();
    MainWindow::closeEvent(event);
}
