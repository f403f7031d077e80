#pragma once

#include <QWidget>

/**
 * The "Tables" page: a table widget of ports (an "Active" check column,
 * editable impedances) and a table view of sweep results.
 *
 * The page registers as "Tables"; its widgets are recorded under it.
 */
class TablesPage : public QWidget
{
    Q_OBJECT

public:
    explicit TablesPage(QWidget* parent = nullptr);
};
