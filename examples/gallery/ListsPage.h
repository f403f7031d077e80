#pragma once

#include <QWidget>

/**
 * The "Lists" page: a list view of materials (checkable: used in the
 * model) and a list widget of layers whose names can be edited.
 *
 * The page registers as "Lists"; its widgets are recorded under it.
 */
class ListsPage : public QWidget
{
    Q_OBJECT

public:
    explicit ListsPage(QWidget* parent = nullptr);
};
