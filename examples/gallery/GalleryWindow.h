#pragma once

#include <QMainWindow>
#include <QString>

class QTabWidget;

/**
 * The gallery's main window: one tab per family of the library's widgets
 * (this far "Buttons and values"), a status bar that shows what the script
 * engine is doing, and the record and replay runs started from the command
 * line.
 */
class GalleryWindow : public QMainWindow
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
    QTabWidget* m_tabs = nullptr;
};
