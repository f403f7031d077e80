#pragma once

// The scriptable buttons, check boxes, actions and the colour dialog.

#include "Scriptable/AQAction.h"
#include "Scriptable/AQCheckBox.h"
#include "Scriptable/AQColorButton.h"
#include "Scriptable/AQColorDialog.h"
#include "Scriptable/AQPushButton.h"
#include "Scriptable/AQRadioButton.h"
#include "Scriptable/AQToggleButton.h"
#include "Scriptable/AQToolButton.h"
