#pragma once

#include "Q3Global.h"

// Gives the host's services their widgets: message boxes become dialogs and
// busy guards show the hourglass. The main window installs them; so does
// anything that shows boxes before it exists.
Q3_EXPORT void InstallQ3WidgetServices();
