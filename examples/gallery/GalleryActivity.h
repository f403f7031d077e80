#pragma once

#include <QGroupBox>

class QListWidget;

/**
 * The "Activity" box of a gallery page: one line per reaction of the page
 * to its widgets' A signals, so a replayed session shows the same activity
 * as the recorded one. Not scriptable itself.
 */
class GalleryActivity : public QGroupBox
{
    Q_OBJECT

public:
    explicit GalleryActivity(QWidget* parent = nullptr);

    void add(const QString& text);

private:
    QListWidget* m_lines = nullptr;
};
