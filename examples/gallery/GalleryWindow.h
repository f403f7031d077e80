#pragma once

#include <Scriptable/MainWindow.h>

#include <QString>

namespace QtUIBase {
class AQTabWidget;
}

/**
 * The gallery's main window: one tab per family of the library's widgets,
 * a status bar that shows what the script engine is doing, and the record
 * and replay runs started from the command line or the "Scripting..."
 * dialog. It keeps its geometry and the page last shown from one run to
 * the next, and is deleted when closed.
 */
class GalleryWindow : public QtUIBase::MainWindow
{
    Q_OBJECT

public:
    /// What a replay did, for the summary printed afterwards.
    struct ReplayReport
    {
        bool finished = false;
        int linesReplayed = 0;
        int linesTotal = 0;
        int objectsNotFound = 0;
        qint64 milliseconds = 0;
        QString reportFile;
    };

    explicit GalleryWindow(QWidget* parent = nullptr);
    ~GalleryWindow() override;

    /// Starts recording the session into @p file; false when the engine
    /// refuses (it has shown why).
    bool startRecording(const QString& file);
    /// Replays @p file, pausing @p intervalMs after each line, and shows the
    /// progress in the status bar.
    ReplayReport replay(const QString& file, int intervalMs);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void RestoreSettings(QSettings& settings) override;
    void SaveSettings(QSettings& settings) const override;

    QtUIBase::AQTabWidget* m_tabs = nullptr;
};
