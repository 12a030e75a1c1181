#pragma once

#include "Q3Global.h"

#include <QList>
#include <QPair>
#include <QSqlDatabase>
#include <QString>

// The host's option store OPZIONI, as the options window reads and writes it.

// The option's stored value; found tells whether the store has a row for it.
Q3_EXPORT QString Q3LeggiOpzione(const QSqlDatabase &db, const QString &opzione, bool *found = nullptr);
// A Sì/No option's stored text read as the program reads it: the words
// "True"/"False" (any case) and numbers (0 false, any other true); any other
// text is false.
Q3_EXPORT bool Q3OpzioneVera(const QString &valore);

// Stores the values (option, value), adding an option's row when the store has
// none, all or none of them; raises EQ3Exception when the database refuses.
Q3_EXPORT void Q3ScriviOpzioni(const QSqlDatabase &db, const QList<QPair<QString, QString>> &valori);
