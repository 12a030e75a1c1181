#pragma once

#include <QDate>
#include <QSqlDatabase>
#include <QString>

// The sales invoice a credit note corrects. The note keeps a copy of its key,
// number and date, as it keeps its customer's data: the invoice may be
// deleted later, the reference stays.
struct TKRVFatturaRiferimento
{
    int IdFattura = 0;
    int Numero = 0;
    QDate Data;

    // Every invoice has a date: a reference without one is no reference.
    bool Vuota() const { return !Data.isValid(); }
};

// The invoice a credit note refers to, the note's key the one parameter: the
// invoice's key, number and date (no date: no invoice).
inline const QString KRVQueryFatturaDellaNota =
    QStringLiteral("SELECT FATT_IDFATT_VEND, FATT_NUMERO, FATT_DATA FROM NOTE_ACCREDITO WHERE IDNOTA_ACCREDITO = ?");

// The invoice the credit note refers to, empty when it refers to none (or
// there is no such note).
TKRVFatturaRiferimento KRVFatturaDellaNota(const QSqlDatabase &db, int idNota);

// The saved sales invoice with this key, empty when there is none.
TKRVFatturaRiferimento KRVFatturaVendita(const QSqlDatabase &db, int idFattura);

// "n. 12 del 05/03/2026"; empty for no reference.
QString KRVTestoFatturaRiferimento(const TKRVFatturaRiferimento &fattura);

// The saved invoices of one customer, newest first, as the selection dialog
// lists them: the head, the customer's condition and the tail.
inline const QString KRVQueryFattureClienteTesta =
    QStringLiteral("SELECT IDFATT_VEND, NUMERO, DATA, TOTALE_DOCUMENTO FROM FATT_VEND ");
inline const QString KRVQueryFattureClienteCoda = QStringLiteral(" ORDER BY DATA DESC, NUMERO DESC");
QString KRVCondizioneFattureCliente(const QString &codiceCliente);
