#pragma once

// Invoices and lines of both invoice kinds, dated and priced for the
// profitability tests.
#include "../data/KRVServiceRows.h"

#include <QDate>

namespace KRVTest {

// A sales invoice dated `data`, filed under `anno` (the year of the date when 0).
inline int InsertFattVend(const TQ3TestDatabase &db, int numero, const QDate &data, int anno = 0)
{
    return KRVInsertRow(db,
                        QStringLiteral("INSERT INTO FATT_VEND (NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, "
                                       "IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, "
                                       "TOTALE_DOCUMENTO, FC_ABILITATO) VALUES (")
                            + QString::number(numero) + QStringLiteral(", ") + QuotedStr(data.toString(Qt::ISODate))
                            + QStringLiteral(", ") + QString::number(anno ? anno : data.year())
                            + QStringLiteral(
                                ", 'C001', 'Cliente di prova', 1, 'Rimessa diretta', 'False', 0, 0, 0, 'False')"),
                        QStringLiteral("GN_IDFATT_VEND"));
}

// An invoice of the warehouse module (its tables come from the magazzino fixture).
inline int InsertFattAcc(const TQ3TestDatabase &db, int numero, const QDate &data)
{
    return KRVInsertRow(db,
                        QStringLiteral("INSERT INTO FATT_ACC (NUMERO, DATA, ANNO) VALUES (") + QString::number(numero)
                            + QStringLiteral(", ") + QuotedStr(data.toString(Qt::ISODate)) + QStringLiteral(", ")
                            + QString::number(data.year()) + QStringLiteral(")"),
                        QStringLiteral("GN_IDFATT_ACC"));
}

// A line of either kind ("FATT_VEND" or "FATT_ACC"); a negative cost is left NULL.
inline void InsertRigaMargine(const TQ3TestDatabase &db, const QString &testata, int id, const QString &tipoRiga,
                              double importo, double costo, double quantita)
{
    db.Exec(QStringLiteral("INSERT INTO ") + testata + QStringLiteral("_DETT (ID") + testata
            + QStringLiteral(", TIPO_RIGA, IMPORTO, COSTO, QUANTITA) VALUES (") + QString::number(id)
            + QStringLiteral(", ") + QuotedStr(tipoRiga) + QStringLiteral(", ") + QString::number(importo)
            + QStringLiteral(", ") + (costo < 0 ? QStringLiteral("NULL") : QString::number(costo))
            + QStringLiteral(", ") + QString::number(quantita) + QStringLiteral(")"));
}

} // namespace KRVTest
