#pragma once

#include "KATScadenze.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QSqlDatabase>
#include <QString>

// A reminder's kind and state, as PROMEMORIA stores them.
inline constexpr char KATTipoFatturaCiclica[] = "Fattura ciclica";
inline constexpr char KATTipoManuale[] = "Manuale";
inline constexpr char KATStatoDaFare[] = "Da fare";
inline constexpr char KATStatoFatto[] = "Fatto";

// One row of PROMEMORIA; IdFattura and FattNumeroGenerata are 0 where the row has none.
struct TKATPromemoria
{
    int Id = 0;
    QString Tipo;
    int IdFattura = 0;
    QString Titolo;
    QDate Data;
    QString Note;
    QString Stato;
    QDateTime FattoIl;
    int FattNumeroGenerata = 0;
};

// A reminder as the list of reminders shows it: with the customer, number
// and date of its invoice (empty and 0 for one added by hand).
struct TKATRigaPromemoria
{
    TKATPromemoria Promemoria;
    QString Cliente;
    int FattNumero = 0;
    QDate FattData;
};

// What the list of reminders shows: those dated from `Dal` to `Al` (both
// included), in one state or in any (empty `Stato`).
struct TKATFiltroPromemoria
{
    QDate Dal;
    QDate Al;
    QString Stato;
};

// Brings the reminders of a sales invoice in line with its recurrence, as the
// invoice is saved now: every reminder of it still 'Da fare' is replaced by
// one for each due date of the recurrence (KATCalcolaScadenze) that has no
// reminder of it acted on ('Fatto'), in one transaction. Reminders acted on
// stay as they are. A missing invoice, or one whose recurrence is off, keeps
// none 'Da fare'. Answers the due dates computed, with what the caller must
// report (an unknown day rule, an unknown unit, too many dates).
TKATScadenze KATAggiornaPromemoriaFattura(const QSqlDatabase &db, int idFattura);

// The reminders still 'Da fare' dated on or before `oggi`, oldest first.
QList<TKATPromemoria> KATPromemoriaScaduti(const QSqlDatabase &db, const QDate &oggi);

// Every reminder of an invoice, by date (0: the ones added by hand).
QList<TKATPromemoria> KATPromemoriaFattura(const QSqlDatabase &db, int idFattura);

// Marks a reminder acted on now, with the number of the invoice it produced
// (0: none). Raises EQ3Exception when there is no such reminder.
void KATSegnaFatto(const QSqlDatabase &db, int id, int numeroFattura);

// Adds a reminder by hand, 'Da fare', and answers its key.
int KATAggiungiManuale(const QSqlDatabase &db, const QString &titolo, const QDate &data, const QString &note);

// Changes a reminder added by hand: title, date, note and whether it is done
// (done now when it was not, 'Da fare' again when cleared). Raises
// EQ3Exception when there is no such reminder added by hand.
void KATModificaManuale(const QSqlDatabase &db, int id, const QString &titolo, const QDate &data, const QString &note,
                        bool fatto);

// Deletes a reminder added by hand; those of an invoice go with their invoice.
// Raises EQ3Exception when there is no such reminder added by hand.
void KATEliminaManuale(const QSqlDatabase &db, int id);

// The reminders the filter lets through, by date, with their invoices.
QList<TKATRigaPromemoria> KATElencoPromemoria(const QSqlDatabase &db, const TKATFiltroPromemoria &filtro);

// How many reminders are still 'Da fare' on or before `oggi`.
int KATContaScaduti(const QSqlDatabase &db, const QDate &oggi);

// The date of the oldest reminder still 'Da fare'; null when there is none.
QDate KATPrimoDaFare(const QSqlDatabase &db);

// The longest title PROMEMORIA holds.
inline constexpr int KATLunghezzaTitolo = 100;
