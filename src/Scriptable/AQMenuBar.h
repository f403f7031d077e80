#pragma once

#include "OrvexQtUIBase_export.h"

#include <QMenuBar>

namespace QtUIBase {

class AQAction;
class AQMenu;

/**
 * A QMenuBar whose scriptable menus and actions are named under the
 * window that holds the bar rather than under the bar: addAQAction() and
 * addAQMenu() make the bar's parent widget the registry parent of the
 * item (unless the item already has a registered parent). The bar records
 * nothing itself; its menus and actions do.
 */
class ORVEXQTUIBASE_EXPORT AQMenuBar : public QMenuBar
{
    Q_OBJECT

public:
    explicit AQMenuBar(const QString& name, QWidget* parent = nullptr, bool scriptable = true);

    void addAQAction(AQAction* action);
    void addAQMenu(AQMenu* menu);

private:
    void nameUnderWindow(QObject* item);
};

} // namespace QtUIBase
