#pragma once

#include "Q3Connection.h"

#include <QSqlDatabase>

// At the host's exit: when the options ask for it, the automatic backup of
// the database in use into their folder, keeping their number of copies,
// with a window showing its progress. A failure is shown in an "Errore" box;
// the exit goes on after it. The wait is bounded by the backup itself:
// Firebird's service ends, or fails when its server cannot be reached.
Q3_EXPORT void Q3BackupAutomaticoAllUscita(const TQ3DatabaseTarget &target, const QSqlDatabase &db);
