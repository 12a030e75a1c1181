#pragma once

#include <QSqlDatabase>

// Next free number of the year: the highest one plus 1 (with the shared
// sequence, the highest of sales and accompanying invoices).
int GetNextNumeroFattVend(const QSqlDatabase &db, int anno);
int GetNextNumeroNotaAccredito(const QSqlDatabase &db, int anno);

// Whether the number is taken in that year by another document.
bool FattVendExists(const QSqlDatabase &db, int numero, int anno, int id);
bool NotaAccreditoExists(const QSqlDatabase &db, int numero, int anno, int id);
