#pragma once

#include "KRVRisultati.h"

#include <QSqlDatabase>
#include <QString>

// The reads of the search lists and selection dialogs, on the session they
// are handed. A list's statement is its head, the clause of its filters
// (empty, or beginning with "WHERE ") and its tail.

// Appends to the results every row of the statement, in its order.
void KRVCercaElenco(const QSqlDatabase &db, const QString &head, const QString &where, const QString &tail,
                    TKRVRisultati &risultati);

// How many articles the clause finds.
int KRVContaArticoli(const QSqlDatabase &db, const QString &where);

// Appends to the results the page (from 1) of the articles the clause finds,
// pageSize rows a page, each with its category, by code without regard to case.
void KRVCaricaPaginaArticoli(const QSqlDatabase &db, const QString &where, int page, int pageSize,
                             TKRVRisultati &risultati);
