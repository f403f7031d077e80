#pragma once

#include <QPointer>
#include <QWidget>

class GalleryActivity;
class QLabel;

namespace QtUIBase {
class AQDisplayFile;
}

/**
 * The "Files" page: opens a solver log through the scripted file dialog
 * into a file viewer (find, print), and names a new report file through
 * the new-file dialog.
 *
 * The page registers as "Files"; its widgets are recorded under it.
 */
class FilesPage : public QWidget
{
    Q_OBJECT

public:
    explicit FilesPage(QWidget* parent = nullptr);

private:
    void openLog();
    void newReport();

    GalleryActivity* m_activity = nullptr;
    QLabel* m_chosen = nullptr;
    // A replayed close deletes the viewer; it is made again when needed.
    QPointer<QtUIBase::AQDisplayFile> m_viewer;
};
