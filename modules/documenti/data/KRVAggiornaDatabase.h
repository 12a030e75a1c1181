#pragma once

#include "Q3SchemaUpgrade.h"

#include <QList>

// The module's schema history, step by step, in the order it must run.
QList<TQ3SchemaStep> KRVSchemaSteps();

// Brings the module's tables to their current shape on the module database
// session, recording each step in TABLE_VERSION.
void AggiornaDatabase();
