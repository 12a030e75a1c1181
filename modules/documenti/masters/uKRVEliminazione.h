#pragma once

#include "KRVEntita.h"

#include <QSqlDatabase>
#include <QString>

// Customers, articles and services: the rule on the code, then the table's
// refusal ("Attenzione") or the question "Confermare l'eliminazione?":
// whether the delete may go on.
bool KRVConfermaEliminazione(const QSqlDatabase &db, const TKRVEntita &entita, const QString &codice);

// The row's delete in a transaction; a failure is rolled back and reported
// ("Errore"). Answers whether the row went.
bool KRVEliminaRecord(const QSqlDatabase &db, const TKRVEntita &entita, int id);
