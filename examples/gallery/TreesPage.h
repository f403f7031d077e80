#pragma once

#include <QWidget>

/**
 * The "Trees" page: a tree widget of the project (components, ports with
 * check boxes) and a tree view of results.
 *
 * The page registers as "Trees"; its widgets are recorded under it.
 */
class TreesPage : public QWidget
{
    Q_OBJECT

public:
    explicit TreesPage(QWidget* parent = nullptr);
};
