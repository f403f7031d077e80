#include "FilesPage.h"

#include "GalleryActivity.h"

#include <Script/AQObjects.h>
#include <Scriptable/AQItemViews.h>
#include <Scriptable/AQPushButton.h>

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace QtUIBase;

FilesPage::FilesPage(QWidget* parent)
    : QWidget(parent)
    , m_activity(new GalleryActivity(this))
    , m_chosen(new QLabel(tr("No log opened."), this))
{
    AQObjects::add(this, QStringLiteral("Files"));
    auto* open = new AQPushButton(QStringLiteral("openLogButton"), tr("Open solver log..."), this, true);
    connect(open, &AQPushButton::AClicked, this, &FilesPage::openLog);
    auto* create = new AQPushButton(QStringLiteral("newReportButton"), tr("New report file..."), this, true);
    connect(create, &AQPushButton::AClicked, this, &FilesPage::newReport);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(open);
    buttons->addWidget(create);
    buttons->addWidget(m_chosen);
    buttons->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(buttons, 3);
    layout->addWidget(m_activity, 2);
}

void FilesPage::openLog()
{
    const QString file = AQFileDialog::getOpenFileName(this, tr("Open solver log"), QDir::currentPath(),
                                                       tr("Logs (*.log *.txt);;All files (*)"));
    if (file.isEmpty()) {
        m_activity->add(tr("No log chosen"));
        return;
    }
    if (!m_viewer) {
        m_viewer = new AQDisplayFile(QStringLiteral("logViewer"), this);
        connect(m_viewer, &AQDisplayFile::AFound, this,
                [this](bool found) { m_activity->add(found ? tr("Found in log") : tr("Not in log")); });
    }
    m_chosen->setText(tr("Log: %1").arg(QFileInfo(file).fileName()));
    m_activity->add(tr("Opened %1").arg(QFileInfo(file).fileName()));
    m_viewer->openFile(file);
    m_viewer->show();
}

void FilesPage::newReport()
{
    AQFileNewDialog dialog(QStringLiteral("reportDialog"), this, tr("New report"), QDir::currentPath(),
                           tr("Reports (*.txt)"), QStringLiteral("txt"));
    if (dialog.exec() == QDialog::Accepted)
        m_activity->add(tr("Report will be written to %1").arg(QFileInfo(dialog.selectedFiles().value(0)).fileName()));
    else
        m_activity->add(tr("No report file chosen"));
}
