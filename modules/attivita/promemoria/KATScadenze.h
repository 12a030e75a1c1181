#pragma once

#include <QDate>
#include <QList>
#include <QString>

// How often a recurring invoice is due ("Giorno", "Settimana", "Mese",
// "Anno") and on which day of the month its new invoices are dated: the
// texts the invoice stores, exactly as the invoice editor writes them.
inline constexpr char KATUnitaGiorno[] = "Giorno";
inline constexpr char KATUnitaSettimana[] = "Settimana";
inline constexpr char KATUnitaMese[] = "Mese";
inline constexpr char KATUnitaAnno[] = "Anno";
inline constexpr char KATRegolaPrimoGiorno[] = "Primo giorno del mese";
inline constexpr char KATRegolaGiorno15[] = "Il giorno 15 del mese";
inline constexpr char KATRegolaGiornoEsatto[] = "Il giorno esatto";
inline constexpr char KATRegolaUltimoGiorno[] = "Ultimo giorno del mese";

// The most due dates one recurrence gives: a daily one over decades stops
// here, and says so (Troncate).
inline constexpr int KATMaxScadenze = 1000;

// The due dates of a recurrence, in increasing order, and what the caller
// must report about the settings they came from.
struct TKATScadenze
{
    QList<QDate> Date;
    // The day rule matched none of the four texts: the dates keep their exact day.
    bool RegolaSconosciuta = false;
    // The unit matched none of the four texts: no dates.
    bool UnitaSconosciuta = false;
    // More dates were due than KATMaxScadenze: the list holds the first ones.
    bool Troncate = false;
};

// The due dates of "every `ogni` `unita` from `inizio` to `fine`", each
// dated by `regola`.
//
// The k-th period date (k = 0, 1, ...) is `inizio` plus k * `ogni` units,
// always counted from `inizio` (never from the previous date), taken while
// it is not after `fine`: a period ending on its start date, or today, still
// has that day. Months and years move as QDate does: a day the target month
// lacks becomes its last day (31 January + 1 month = 28 February, or 29 in a
// leap year; 29 February + 1 year = 28 February), and the next period
// counts from the start again (31 January + 2 months = 31 March).
//
// Each period date is then moved within its own month by the day rule: to
// the 1st, the 15th, its exact day or the month's last day. The end bounds
// the period dates, not the moved ones, so the last due date may fall after
// `fine` (to the end of its month) and the first before `inizio` (to the 1st).
// Periods that the rule moves to the same day (daily ones dated on the
// 1st) give that day once.
//
// None when a date is missing, `ogni` is below 1 or `inizio` is after `fine`.
TKATScadenze KATCalcolaScadenze(int ogni, const QString &unita, const QDate &inizio, const QDate &fine,
                                const QString &regola);
