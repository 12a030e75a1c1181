#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// The gross margin of a year by month and line kind: the statements that read
// it and the table that shows it.

// Margin of the sales invoice lines of one kind in a month.
QString GetFattVendSQL(int mese, int anno, const QString &tipoRiga);
// The same over the warehouse module's invoices.
QString GetFattAccSQL(int mese, int anno, const QString &tipoRiga);
// The margin of one month and kind, 0 when there are no lines; the warehouse
// invoices are added when their table exists.
QString InternalGetSQL01(int mese, int anno, const QString &tipoRiga, bool conFattAcc);

// The statement of six months from primoMese (1 or 7): one row per month of
// three sub-selects (InternalGetSQL01 for each kind). Kept as the reference of
// the rows: each of its sub-selects reads every invoice line of every year,
// as its month and year come out of the header's date.
QString KRVRedditivitaSemestreSQLRiferimento(int primoMese, int anno, bool conFattAcc);
// The statement the window runs: the same rows and values, each sub-select
// over the sales invoices reading only the headers dated in its month (on the
// date's index) and their lines; those over the warehouse's invoices are the
// reference's.
QString KRVRedditivitaSemestreSQL(int primoMese, int anno, bool conFattAcc);

// Whether the database holds the warehouse module's invoices.
bool KRVEsisteFattAcc(const QSqlDatabase &db);

// One row of the statement: the month and the margins of its three kinds.
struct TKRVRedditivitaMese
{
    int Mese = 0;
    double Articoli = 0;
    double Servizi = 0;
    double NonImponibile = 0;
};

// Runs a semester statement and answers its rows.
QList<TKRVRedditivitaMese> KRVLeggiRedditivita(const QSqlDatabase &db, const QString &sql);

// The texts of the 16 rows by 7 columns of the table.
using TKRVTabellaRedditivita = QList<QStringList>;

inline constexpr int KRVRedditivitaRighe = 16;
inline constexpr int KRVRedditivitaColonne = 7;
inline constexpr int KRVRigaTotale = 14;
inline constexpr int KRVRigaMedia = 15;
inline constexpr int KRVColonnaTotale = 5;
inline constexpr int KRVColonnaMedia = 6;

// The empty table with its headings and month names.
TKRVTabellaRedditivita KRVTabellaVuota(int anno);
// Puts the months read into their rows and adds them to the yearly totals.
void KRVApplicaMesi(TKRVTabellaRedditivita &tabella, const QList<TKRVRedditivitaMese> &mesi);
// The grand total, the per-month averages and the yearly averages.
void KRVCompletaTotali(TKRVTabellaRedditivita &tabella);

// A number as the table keeps it ("%.2f"), and back (0 for any other text).
QString KRVTestoImporto(double valore);
double KRVValoreImporto(const QString &testo);
