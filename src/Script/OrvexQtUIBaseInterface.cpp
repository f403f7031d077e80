#include "Script/OrvexQtUIBaseInterface.h"

// Out of line so the vtable has one home in the library.
OrvexQtUIBaseInterface::~OrvexQtUIBaseInterface() = default;
