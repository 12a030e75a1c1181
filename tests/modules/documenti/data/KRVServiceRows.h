#pragma once

// Rows the service tests write straight into the module tables, through the
// test's own connection, each answering the key the table's trigger gave it.
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3Utils.h"

#include <QString>

inline int KRVInsertRow(const TQ3TestDatabase &db, const QString &insert, const QString &generator)
{
    db.Exec(insert);
    return GetLastGeneratorValue(generator, db.Db());
}

// A document header (FATT_VEND or NOTE_ACCREDITO) with its required columns.
inline QString KRVInsertDocumentoSQL(const QString &table, int numero, int anno,
                                     const QString &cliCodice = QStringLiteral("C001"), int idTipoPagamento = 1)
{
    const bool fattVend = table == QLatin1String("FATT_VEND");
    return QStringLiteral("INSERT INTO ") + table
           + QStringLiteral(
               " (NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, "
               "TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO")
           + (fattVend ? QStringLiteral(", FC_ABILITATO") : QString()) + QStringLiteral(") VALUES (")
           + QString::number(numero) + QStringLiteral(", ")
           + QuotedStr(QString::number(anno) + QStringLiteral("-01-15")) + QStringLiteral(", ") + QString::number(anno)
           + QStringLiteral(", ") + QuotedStr(cliCodice) + QStringLiteral(", 'Cliente di prova', ")
           + QString::number(idTipoPagamento) + QStringLiteral(", 'Rimessa diretta', 'False', 0, 0, 0")
           + (fattVend ? QStringLiteral(", 'False'") : QString()) + QStringLiteral(")");
}

inline int KRVInsertDocumento(const TQ3TestDatabase &db, const QString &table, int numero, int anno,
                              const QString &cliCodice = QStringLiteral("C001"), int idTipoPagamento = 1)
{
    return KRVInsertRow(db, KRVInsertDocumentoSQL(table, numero, anno, cliCodice, idTipoPagamento),
                        table == QLatin1String("FATT_VEND") ? QStringLiteral("GN_IDFATT_VEND")
                                                            : QStringLiteral("GN_IDNOTA_ACCREDITO"));
}

// A document line (FATT_VEND_DETT under IDFATT_VEND, NOTE_ACCREDITO_DETT under IDNOTA_ACCREDITO).
inline int KRVInsertRiga(const TQ3TestDatabase &db, const QString &table, int idDocumento, const QString &tipoRiga,
                         const QString &codice = QString(), int idCategoria = 0, int idAliquotaIva = 0, int idUm = 0)
{
    const bool fattVend = table == QLatin1String("FATT_VEND_DETT");
    return KRVInsertRow(db,
                        QStringLiteral("INSERT INTO ") + table
                            + (fattVend ? QStringLiteral(" (IDFATT_VEND") : QStringLiteral(" (IDNOTA_ACCREDITO"))
                            + QStringLiteral(", TIPO_RIGA, CODICE, IDCATEGORIA, IVA_IDALIQUOTA_IVA, IDUM) VALUES (")
                            + QString::number(idDocumento) + QStringLiteral(", ") + QuotedStr(tipoRiga)
                            + QStringLiteral(", ") + QuotedStr(codice) + QStringLiteral(", ")
                            + QString::number(idCategoria) + QStringLiteral(", ") + QString::number(idAliquotaIva)
                            + QStringLiteral(", ") + QString::number(idUm) + QStringLiteral(")"),
                        fattVend ? QStringLiteral("GN_IDFATT_VEND_DETT") : QStringLiteral("GN_IDNOTA_ACCREDITO_DETT"));
}

inline int KRVInsertCliente(const TQ3TestDatabase &db, const QString &codice, const QString &ragioneSociale,
                            int idTipoPagamento = 1)
{
    return KRVInsertRow(db,
                        QStringLiteral("INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE, IDTIPO_PAGAMENTO) VALUES (")
                            + QuotedStr(codice) + QStringLiteral(", ") + QuotedStr(ragioneSociale)
                            + QStringLiteral(", ") + QString::number(idTipoPagamento) + QStringLiteral(")"),
                        QStringLiteral("GN_IDCLIENTE"));
}

inline int KRVInsertArticolo(const TQ3TestDatabase &db, const QString &codice, int idCategoria = 1,
                             int idAliquotaIva = 1, int idUm = 1)
{
    return KRVInsertRow(db,
                        QStringLiteral(
                            "INSERT INTO ANA_MAGA (CODICE, DESCRIZIONE, SOTTOSCORTA, RIORDINO, IDCATEGORIA_ANA_MAGA, "
                            "PREZZO, COSTO, IDALIQUOTA_IVA, IDUM) VALUES (")
                            + QuotedStr(codice) + QStringLiteral(", 'Articolo di prova', 2.5, 10, ")
                            + QString::number(idCategoria) + QStringLiteral(", 12.34, 5.6, ")
                            + QString::number(idAliquotaIva) + QStringLiteral(", ") + QString::number(idUm)
                            + QStringLiteral(")"),
                        QStringLiteral("GN_IDANA_MAGA"));
}

inline int KRVInsertServizio(const TQ3TestDatabase &db, const QString &codice, int idCategoria = 1,
                             int idAliquotaIva = 1, int idUm = 2)
{
    return KRVInsertRow(db,
                        QStringLiteral("INSERT INTO SERVIZI (CODICE, DESCRIZIONE, IDCATEGORIA_SERVIZI, PREZZO, COSTO, "
                                       "IDALIQUOTA_IVA, IDUM) VALUES (")
                            + QuotedStr(codice) + QStringLiteral(", 'Servizio di prova', ")
                            + QString::number(idCategoria) + QStringLiteral(", 50, 20.5, ")
                            + QString::number(idAliquotaIva) + QStringLiteral(", ") + QString::number(idUm)
                            + QStringLiteral(")"),
                        QStringLiteral("GN_IDSERVIZIO"));
}

inline int KRVInsertNotaDocumenti(const TQ3TestDatabase &db, const QString &titolo, const QString &testo)
{
    return KRVInsertRow(db,
                        QStringLiteral("INSERT INTO NOTE_DOCUMENTI (TITOLO, TESTO) VALUES (") + QuotedStr(titolo)
                            + QStringLiteral(", ") + QuotedStr(testo) + QStringLiteral(")"),
                        QStringLiteral("GN_IDNOTA_DOCUMENTI"));
}

// The failure of a service handed no session (a database handle that names no
// connection), in the database layer's own words.
inline constexpr char KRVMsgSenzaSessione[] = "Driver not loaded";
