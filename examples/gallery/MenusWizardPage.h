#pragma once

#include <QPointer>
#include <QWidget>

class GalleryActivity;

namespace QtUIBase {
class AQListWidget;
class AQMenu;
} // namespace QtUIBase

/**
 * The "Menus and wizard" page: a menu bar whose "Model" menu adds and
 * removes ports and picks units from a submenu, a port list whose context
 * menu (run with exec(), so its choice is a fill-in) sets a port's kind, a
 * "New project" wizard of three pages and a properties dock.
 *
 * The page registers as "MenusWizard"; its widgets are recorded under it.
 */
class MenusWizardPage : public QWidget
{
    Q_OBJECT

public:
    explicit MenusWizardPage(QWidget* parent = nullptr);

private:
    void buildMenuBar();
    void runWizard();

    GalleryActivity* m_activity = nullptr;
    QtUIBase::AQListWidget* m_ports = nullptr;
    QtUIBase::AQMenu* m_portMenu = nullptr;
};
