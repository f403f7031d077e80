#pragma once

// The scriptable list, table and tree views and widgets, the file dialogs
// and the file viewer.

#include "Scriptable/AQDisplayFile.h"
#include "Scriptable/AQFileDialog.h"
#include "Scriptable/AQFileNewDialog.h"
#include "Scriptable/AQListView.h"
#include "Scriptable/AQListWidget.h"
#include "Scriptable/AQTableView.h"
#include "Scriptable/AQTableWidget.h"
#include "Scriptable/AQTreeView.h"
#include "Scriptable/AQTreeWidget.h"
