#pragma once

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>

// An outgoing delivery note an invoice was loaded from, as the invoice keeps
// it (FATT_VEND_DDT): the note's key, number and date, copied when loaded.
struct TKRVDdtFattura
{
    int IdDdt = 0; // 0: the note's key is not known
    QString Numero;
    QDate Data;
};

// The delivery notes of one invoice, its key the one parameter: the note's
// key, number and date, in the order they were loaded. "+ 0": the invoice's
// few rows are sorted, rather than found by walking the whole primary key's
// index in its order.
inline const QString KRVQueryDdtFattura = QStringLiteral(
    "SELECT IDDDT_SCARICO, NUMERO, DATA FROM FATT_VEND_DDT WHERE IDFATT_VEND = ? ORDER BY IDFATT_VEND_DDT + 0");

// The delivery notes of the invoice, in the order they were loaded.
QList<TKRVDdtFattura> KRVDdtDellaFattura(const QSqlDatabase &db, int idFattura);

// Replaces the delivery notes of the invoice with these; runs in the caller's
// transaction and raises EQ3Exception on failure.
void KRVScriviDdtFattura(const QSqlDatabase &db, int idFattura, const QList<TKRVDdtFattura> &ddt);
