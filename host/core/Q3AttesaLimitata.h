#pragma once

#include "Q3Global.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

// The longest a statement of a guarded write transaction (TQ3Transaction)
// runs: a write that meets a row or key another workstation has changed and
// not yet committed waits for it, and without a limit the window hangs as long
// as that workstation keeps its transaction open. Past the limit the statement
// is cancelled and fails; the transaction then rolls back as on any failure.
inline constexpr int Q3AttesaMassimaMs = 5000;

// What the user reads first when a statement was cancelled at the limit.
inline constexpr char Q3MsgAttesaScaduta[] =
    "I dati sono in modifica su un'altra postazione: dopo %1 secondi di attesa l'operazione è stata annullata. "
    "Riprovare quando l'altra postazione avrà terminato.";

// While alive, the statement run on the connection of `db` is cancelled once
// it has run for Q3AttesaMassimaMs, if a guarded transaction with the limit is
// open on that connection; otherwise it does nothing. The cancel is
// Firebird's fb_cancel_operation(fb_cancel_raise) on the attachment, sent by
// a watching thread while the statement is still running, never after.
class Q3_EXPORT TQ3AttesaLimitata
{
public:
    explicit TQ3AttesaLimitata(const QSqlDatabase &db);
    ~TQ3AttesaLimitata();
    TQ3AttesaLimitata(const TQ3AttesaLimitata &) = delete;
    TQ3AttesaLimitata &operator=(const TQ3AttesaLimitata &) = delete;

    // The text of the statement's failure: the database's own (SqlErrorText),
    // after Q3MsgAttesaScaduta when the limit cancelled it.
    QString TestoErrore(const QSqlError &error) const;

private:
    quint64 m_ticket = 0;
};

// How long a guarded transaction's statements may wait for another workstation.
enum class TQ3Attesa { Limitata, Illimitata };

// Marks the connection of `db` as inside a guarded transaction of that kind,
// until the matching Q3FineTransazioneGuardata.
Q3_EXPORT void Q3InizioTransazioneGuardata(const QSqlDatabase &db, TQ3Attesa attesa);
Q3_EXPORT void Q3FineTransazioneGuardata(const QSqlDatabase &db, TQ3Attesa attesa);
