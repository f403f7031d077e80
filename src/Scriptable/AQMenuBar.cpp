#include "Scriptable/AQMenuBar.h"

#include "Scriptable/AQAction.h"
#include "Scriptable/AQMenu.h"
#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

AQMenuBar::AQMenuBar(const QString& name, QWidget* parent, bool scriptable)
    : QMenuBar(parent)
{
    if (!registerIfScriptable(this, name, scriptable))
        setObjectName(name);
}

void AQMenuBar::nameUnderWindow(QObject* item)
{
    const int id = AQObjects::find(item);
    if (id >= 0)
        AQObjects::setParentObject(id, parentWidget());
}

void AQMenuBar::addAQAction(AQAction* action)
{
    addAction(action);
    nameUnderWindow(action);
}

void AQMenuBar::addAQMenu(AQMenu* menu)
{
    addMenu(menu);
    nameUnderWindow(menu);
}

} // namespace QtUIBase
