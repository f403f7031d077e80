#pragma once

// Everything needed to record chart operations as Python statements.
#include "Script/OrvexQtUIBaseInterface.h"
#include "Script/QtUIBasePythonRecordManager.h"
#include "Script/QtUIPysUtils.h"
#include "Script/QtUIPythonEnumMap.h"
