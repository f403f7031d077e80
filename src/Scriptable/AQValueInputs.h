#pragma once

// The scriptable value-entry widgets and the scripted input dialog.

#include "Scriptable/AQComboBox.h"
#include "Scriptable/AQDoubleSpinBox.h"
#include "Scriptable/AQInputDialog.h"
#include "Scriptable/AQLabel.h"
#include "Scriptable/AQScriptableLineEdit.h"
#include "Scriptable/AQSlider.h"
#include "Scriptable/AQSpinBox.h"
#include "Scriptable/AQTextEdit.h"
