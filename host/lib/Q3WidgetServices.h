#pragma once

#include "Q3Global.h"

// Gives the host's services their widgets: message boxes become dialogs,
// busy guards show the hourglass, icons come from the desktop's theme (Tango
// when there is none). The main window installs them; so does
// anything that shows boxes before it exists.
Q3_EXPORT void InstallQ3WidgetServices();
