#include "GalleryWindow.h"

#include "ButtonsValuesPage.h"

#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Settings/AQSettings.h>

#include <QCloseEvent>
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
    : QMainWindow(parent)
{
    setWindowTitle(tr("Orvex widget gallery"));
    AQObjects::add(this, QStringLiteral("Gallery"));
    m_tabs = new QTabWidget(this);
    m_tabs->addTab(new ButtonsValuesPage(m_tabs), tr("Buttons and values"));
    setCentralWidget(m_tabs);
    statusBar()->showMessage(tr("Ready"));
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
    // Lines that dialogs read for themselves (their commands, fill-ins) do
    // not pass the progress report; a finished replay has read them all.
    if (report.finished)
        report.linesReplayed = report.linesTotal;

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
    QMainWindow::closeEvent(event);
}
