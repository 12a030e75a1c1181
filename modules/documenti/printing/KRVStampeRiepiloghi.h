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

// The invoice summary's filters as its heading shows them, for example
// "Fatture: da pagare - Scadenza: scadute prima del 15/06/2026".
QString KRVFiltriRiepilogoFatture(TCustomBoolean pagato, TCustomBoolean scadenza, const QDate &oggi);

// Prints "RiepilogoFatture": every invoice of the year that passes the filters;
// the year and the filters go to the heading as the parameters "Anno" and "Filtri".
void StampaRiepilogoFatture(int anno, TCustomBoolean pagato, TCustomBoolean scadenza);
// Prints "TotaleFatturatoPerCliente": each customer's invoices and turnover in
// the year, which goes to the heading as the parameter "Anno".
void StampaFatturatoPerCliente(int anno);
