#pragma once

// The scriptable page containers, menus, wizard, group box and dock.

#include "Scriptable/AQDockWidget.h"
#include "Scriptable/AQGroupBox.h"
#include "Scriptable/AQMenu.h"
#include "Scriptable/AQMenuBar.h"
#include "Scriptable/AQScrollArea.h"
#include "Scriptable/AQStackedWidget.h"
#include "Scriptable/AQTabBar.h"
#include "Scriptable/AQTabWidget.h"
#include "Scriptable/AQToolBox.h"
#include "Scriptable/AQWizard.h"
#include "Scriptable/AQWizardPage.h"
