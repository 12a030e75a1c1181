#pragma once

#include "Q3SchemaUpgrade.h"

#include <QList>
#include <QSqlDatabase>

// The activities module's schema history, step by step, in the order it must
// run, under keys of its own in TABLE_VERSION.
QList<TQ3SchemaStep> KATSchemaSteps();

// Brings the module's tables to their current shape on the session, recording
// each step in TABLE_VERSION.
void KATAggiornaDatabase(const QSqlDatabase &db);
