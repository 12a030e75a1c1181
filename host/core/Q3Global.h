#pragma once

#include <QtCore/qglobal.h>

// The host libraries export their whole interface to the modules.
#define Q3_EXPORT Q_DECL_EXPORT
