#pragma once

#include <QSqlDatabase>
#include <QString>

// An invoice asked of the sales documents module for a due reminder and not
// saved yet: the reminder, the recurring invoice it copies (key, number,
// customer) and the last invoice key given out when it was asked for, since
// the copy is saved as a new invoice under a later key.
struct TKATGenerazione
{
    int IdPromemoria = 0;
    int IdFattura = 0;
    int FattNumero = 0;
    QString CliCodice;
    int UltimaChiave = 0;
};

// The generation of a new invoice from a reminder still 'Da fare' of a
// recurring invoice. Raises EQ3Exception when the reminder is gone, done
// already, added by hand, or its invoice no longer exists.
TKATGenerazione KATIniziaGenerazione(const QSqlDatabase &db, int idPromemoria);

// Whether the invoice just saved under `idFattura` is the one the generation
// asked for: a new invoice (a key given out after the request) for the same
// customer whose notes refer to the recurring invoice's number, as the copy's
// notes do ("Rif. Fattura n. <number>").
bool KATFatturaGenerata(const QSqlDatabase &db, const TKATGenerazione &generazione, int idFattura);

// The number of a sales invoice, 0 when it does not exist.
int KATNumeroFattura(const QSqlDatabase &db, int idFattura);
