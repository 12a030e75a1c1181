#pragma once

#include <QDate>
#include <QList>
#include <QString>

// Turnover of the invoice lines by article or service code over an invoicing
// period, for the statistics print dialogs: the statements and the print.

// How a dialog writes its comparisons: "TIPO_RIGA='Articolo'", or with blanks
// around the sign ("TIPO_RIGA = 'Servizio'") as the service dialogs do.
enum class TKRVScritturaSQL { Compatta, Spaziata };

// What the lines are restricted to.
struct TKRVFiltroRighe
{
    QString TipoRiga;     // "Articolo" or "Servizio"
    QList<int> Categorie; // a category and every category below it; empty: all
    QString Codice;       // one article or service code; empty: all
};

// The line kind, then the category and code conditions: "WHERE TIPO_RIGA=...".
QString KRVWhereRighe(const TKRVFiltroRighe &filtro, TKRVScritturaSQL scrittura);

// Per code, category and kind, with the code's first description: the line
// amounts of the sales invoices and of the warehouse's invoices dated from dal
// to al. The sales invoices are read from the period's headers, and each code
// and category gives one row per invoice kind.
QString KRVSQLFatturatoRighe(const QString &where, const QDate &dal, const QDate &al, TKRVScritturaSQL scrittura);

// The same per customer as well, ordered by code; the warehouse's invoices only
// when their table exists.
QString KRVSQLFatturatoClientiServizi(const QString &where, const QDate &dal, const QDate &al, bool conFattAcc);

// The first statements of the two above, kept as the reference they are
// compared with: they read every year's lines and look the description up for
// each line, then group by it. The database groups those descriptions, text
// objects made per line, not always by their text, so a code and category can
// come out in two rows.
QString KRVSQLFatturatoRigheRiferimento(const QString &where, const QDate &dal, const QDate &al,
                                        TKRVScritturaSQL scrittura);
QString KRVSQLFatturatoClientiServiziRiferimento(const QString &where, const QDate &dal, const QDate &al,
                                                 bool conFattAcc);

// The printed title: the text, the first day, " al ", the last day (dd/mm/yyyy).
QString KRVTitoloStatistica(const QString &testo, const QDate &dal, const QDate &al);

// Reads the statement into the print dataset and, when it found rows, prints
// the report with the title as "Param1". Answers whether it printed.
bool KRVStampaStatistica(const QString &dataset, const QString &sql, const QString &report, const QString &titolo);
