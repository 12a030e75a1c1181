#pragma once

// The module's shared services: schema upgrade, options and permissions,
// lookups, existence tests, delete rules and document numbering. Each works on
// the database session its caller gives it, the module's as a rule.
#include "KRVAggiornaDatabase.h"
#include "KRVDeleteRules.h"
#include "KRVLookups.h"
#include "KRVNumbering.h"
#include "KRVOptions.h"
#include "KRVPermissions.h"
