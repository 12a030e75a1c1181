#pragma once

#include "Q3SchemaUpgrade.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>

#include <functional>

// The module's schema history, step by step, in the order it must run: the
// thirty recorded steps, then the indexes under the key KRV_INDICI, then the
// steps added after them.
QList<TQ3SchemaStep> KRVSchemaSteps();

// Brings the module's tables to their current shape on the session (the
// module's, or a tool's that prepares a database without loading the module),
// recording each step in TABLE_VERSION.
void AggiornaDatabase(const QSqlDatabase &db);

// Sees every statement AggiornaDatabase sends to the database, the version
// queries included; the tests use it to check what a run executes. An empty
// function removes it.
void SetAggiornaDatabaseObserver(std::function<void(const QString &)> observer);
