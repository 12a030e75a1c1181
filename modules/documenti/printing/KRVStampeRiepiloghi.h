#pragma once

#include "Q3Utils.h"

#include <QDate>
#include <QString>

// The yearly summaries of the sales invoices. Filters are three-state: cbTrue
// (0) yes, cbFalse (1) no, cbNull (2) no filter.

// The invoice summary's statement: paid and due filters against today's date,
// the warehouse's accompanying invoices joined in when that module is loaded.
QString KRVSQLRiepilogoFatture(int anno, TCustomBoolean pagato, TCustomBoolean scadenza, bool magazzino,
                               const QDate &oggi);

// Prints "RiepilogoFatture": every invoice of the year that passes the filters.
void StampaRiepilogoFatture(int anno, TCustomBoolean pagato, TCustomBoolean scadenza);
// Prints "TotaleFatturatoPerCliente": each customer's invoices and turnover in the year.
void StampaFatturatoPerCliente(int anno);
