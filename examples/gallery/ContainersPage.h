#pragma once

#include <QWidget>

class GalleryActivity;

/**
 * The "Containers" page: a tool box of set-up sections, a checkable group
 * box, a tab bar choosing the solver whose settings a stacked widget shows,
 * a button that turns the stack's preview pages (a recorded request) and a
 * scroll area over a long list of ports.
 *
 * The page registers as "Containers"; its widgets are recorded under it.
 */
class ContainersPage : public QWidget
{
    Q_OBJECT

public:
    explicit ContainersPage(QWidget* parent = nullptr);

private:
    GalleryActivity* m_activity = nullptr;
};
