#include "KRVLookups.h"

#include "KRVDataset.h"
#include "KRVErrors.h"
#include "KRVTesti.h"

#include <QSqlRecord>

namespace {

QString Id(int id)
{
    return QString::number(id);
}

QString Text(const QSqlRecord &row, const char *column)
{
    return row.value(QLatin1String(column)).toString();
}

int Int(const QSqlRecord &row, const char *column)
{
    return row.value(QLatin1String(column)).toInt();
}

double Number(const QSqlRecord &row, const char *column)
{
    return row.value(QLatin1String(column)).toDouble();
}

// One text column of the first row, or empty text when there is none.
QString LookupText(const QSqlDatabase &db, const QString &sql, const char *column)
{
    QString text;
    KRVReadFirstRow(db, sql, [&](const QSqlRecord &row) { text = Text(row, column); });
    return text;
}

TCliente LookupCliente(const QSqlDatabase &db, const QString &sql)
{
    TCliente cliente;
    KRVReadFirstRow(db, sql, [&](const QSqlRecord &row) {
        cliente.IDCLIENTE = Int(row, "IDCLIENTE");
        cliente.CODICE = Text(row, "CODICE");
        cliente.RAGIONESOCIALE = Text(row, "RAGIONESOCIALE");
        cliente.INDIRIZZO = Text(row, "INDIRIZZO");
        cliente.CITTA = Text(row, "CITTA");
        cliente.CAP = Text(row, "CAP");
        cliente.PROVINCIA = Text(row, "PROVINCIA");
        cliente.NAZIONE = Text(row, "NAZIONE");
        cliente.CODICEFISCALE = Text(row, "CODICEFISCALE");
        cliente.PARTITAIVA = Text(row, "PARTITAIVA");
        cliente.IDTIPO_PAGAMENTO = Int(row, "IDTIPO_PAGAMENTO");
        cliente.TIPO_PAGAMENTO = GetTipoPagamento(db, cliente.IDTIPO_PAGAMENTO);
        cliente.TELEFONO1 = Text(row, "TELEFONO1");
        cliente.TELEFONO2 = Text(row, "TELEFONO2");
        cliente.TELEFONO3 = Text(row, "TELEFONO3");
        cliente.FAX = Text(row, "FAX");
        cliente.EMAIL = Text(row, "EMAIL");
        cliente.WEB = Text(row, "WEB");
        cliente.TIPO_SOGGETTO = Text(row, "TIPO_SOGGETTO");
        cliente.NOME = Text(row, "NOME");
        cliente.COGNOME = Text(row, "COGNOME");
        cliente.CODICE_DESTINATARIO = Text(row, "CODICE_DESTINATARIO");
        cliente.PEC = Text(row, "PEC");
    });
    return cliente;
}

// The value as it is compared: upper-cased, as an SQL literal.
QString UpperQuoted(const QString &value)
{
    return QuotedStr(KRVMaiuscole(value));
}

} // namespace

TAliquotaIVA GetAliquotaIVA(const QSqlDatabase &db, int id)
{
    TAliquotaIVA aliquota;
    KRVReadFirstRow(db, QStringLiteral("SELECT * FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA=") + Id(id),
                    [&](const QSqlRecord &row) {
                        aliquota.IDALIQUOTA_IVA = Int(row, "IDALIQUOTA_IVA");
                        aliquota.CODICE = Text(row, "CODICE");
                        aliquota.DESCRIZIONE = Text(row, "DESCRIZIONE");
                        aliquota.ALIQUOTA = Number(row, "ALIQUOTA");
                        aliquota.NATURA = Text(row, "NATURA");
                        aliquota.RIFERIMENTO_NORMATIVO = Text(row, "RIFERIMENTO_NORMATIVO");
                    });
    return aliquota;
}

QString GetUM(const QSqlDatabase &db, int id)
{
    return LookupText(db, QStringLiteral("SELECT * FROM UM WHERE IDUM=") + Id(id), "UM");
}

QString GetTipoPagamento(const QSqlDatabase &db, int id)
{
    return LookupText(db, QStringLiteral("SELECT * FROM TIPI_PAGAMENTO WHERE IDTIPO_PAGAMENTO=") + Id(id),
                      "TIPO_PAGAMENTO");
}

TCliente GetCliente(const QSqlDatabase &db, int id)
{
    return LookupCliente(db, QStringLiteral("SELECT * FROM CLIENTI WHERE IDCLIENTE =") + Id(id));
}

TCliente GetCliente(const QSqlDatabase &db, const QString &codice)
{
    return KRVWrapped("GetCliente", [&] {
        return LookupCliente(db, QStringLiteral("SELECT * FROM CLIENTI WHERE UPPER(CODICE) =") + UpperQuoted(codice));
    });
}

TServizio GetServizio(const QSqlDatabase &db, int id)
{
    TServizio servizio;
    KRVReadFirstRow(db, QStringLiteral("SELECT * FROM SERVIZI WHERE IDSERVIZIO=") + Id(id), [&](const QSqlRecord &row) {
        servizio.IDSERVIZIO = Int(row, "IDSERVIZIO");
        servizio.CODICE = Text(row, "CODICE");
        servizio.DESCRIZIONE = Text(row, "DESCRIZIONE");
        servizio.IDCATEGORIA_SERVIZI = Int(row, "IDCATEGORIA_SERVIZI");
        servizio.CATEGORIA_SERVIZI = GetCategoriaServizio(db, servizio.IDCATEGORIA_SERVIZI);
        servizio.PREZZO = Number(row, "PREZZO");
        servizio.COSTO = Number(row, "COSTO");
        servizio.IDALIQUOTA_IVA = Int(row, "IDALIQUOTA_IVA");
        servizio.IDUM = Int(row, "IDUM");
    });
    return servizio;
}

TArticolo GetArticolo(const QSqlDatabase &db, int id)
{
    return KRVWrapped("GetArticolo", [&] {
        TArticolo articolo;
        KRVReadFirstRow(db, QStringLiteral("SELECT * FROM ANA_MAGA WHERE IDANA_MAGA =") + Id(id),
                        [&](const QSqlRecord &row) {
                            articolo.IDANA_MAGA = Int(row, "IDANA_MAGA");
                            articolo.CODICE = Text(row, "CODICE");
                            articolo.DESCRIZIONE = Text(row, "DESCRIZIONE");
                            articolo.SOTTOSCORTA = Number(row, "SOTTOSCORTA");
                            articolo.RIORDINO = Number(row, "RIORDINO");
                            articolo.IDCATEGORIA_ANA_MAGA = Int(row, "IDCATEGORIA_ANA_MAGA");
                            articolo.CATEGORIA_ANA_MAGA = GetCategoriaAnaMaga(db, articolo.IDCATEGORIA_ANA_MAGA);
                            articolo.PREZZO = Number(row, "PREZZO");
                            articolo.COSTO = Number(row, "COSTO");
                            articolo.IDALIQUOTA_IVA = Int(row, "IDALIQUOTA_IVA");
                            articolo.IDUM = Int(row, "IDUM");
                        });
        return articolo;
    });
}

QString GetCategoriaAnaMaga(const QSqlDatabase &db, int id)
{
    return KRVWrapped("GetCategoriaAnaMaga", [&] {
        return LookupText(db, QStringLiteral("SELECT * FROM CATEGORIE_ANA_MAGA WHERE IDCATEGORIA_ANA_MAGA =") + Id(id),
                          "CATEGORIA");
    });
}

QString GetCategoriaServizio(const QSqlDatabase &db, int id)
{
    return KRVWrapped("GetCategoriaServizio", [&] {
        return LookupText(db, QStringLiteral("SELECT * FROM CATEGORIE_SERVIZI WHERE IDCATEGORIA_SERVIZI =") + Id(id),
                          "CATEGORIA");
    });
}

QString GetNotaDocumento(const QSqlDatabase &db, int id)
{
    return KRVWrapped("GetNotaDocumento", [&] {
        return LookupText(db, QStringLiteral("SELECT * FROM NOTE_DOCUMENTI WHERE IDNOTA_DOCUMENTI =") + Id(id),
                          "TESTO");
    });
}

bool CodiceAliquotaIvaExists(const QSqlDatabase &db, const QString &codice, int id)
{
    return KRVCountAboveZero(db, QStringLiteral("SELECT COUNT(*) AS NUMERO FROM ALIQUOTE_IVA WHERE UPPER(CODICE) = ")
                                     + UpperQuoted(codice) + QStringLiteral(" AND NOT IDALIQUOTA_IVA = ") + Id(id));
}

bool CodiceUMExists(const QSqlDatabase &db, const QString &um, int id)
{
    return KRVCountAboveZero(db, QStringLiteral("SELECT COUNT(*) AS NUMERO FROM UM WHERE UPPER(UM) = ")
                                     + UpperQuoted(um) + QStringLiteral(" AND NOT IDUM = ") + Id(id));
}

bool CodiceTipoPagamentoExists(const QSqlDatabase &db, const QString &tipoPagamento, int id)
{
    return KRVCountAboveZero(db, QStringLiteral(
                                     "SELECT COUNT(*) AS NUMERO FROM TIPI_PAGAMENTO WHERE UPPER(TIPO_PAGAMENTO) = ")
                                     + UpperQuoted(tipoPagamento) + QStringLiteral(" AND NOT IDTIPO_PAGAMENTO = ")
                                     + Id(id));
}

bool CodiceAnaMagaExists(const QSqlDatabase &db, const QString &codice, int id)
{
    return KRVCountAboveZero(db, QStringLiteral("SELECT COUNT(*) AS NUMERO FROM ANA_MAGA WHERE UPPER(CODICE) = ")
                                     + UpperQuoted(codice) + QStringLiteral(" AND NOT IDANA_MAGA=") + Id(id));
}

bool CodiceServizioExists(const QSqlDatabase &db, const QString &codice, int id)
{
    return KRVCountAboveZero(db, QStringLiteral("SELECT COUNT(*) AS NUMERO FROM SERVIZI WHERE UPPER(CODICE) = ")
                                     + UpperQuoted(codice) + QStringLiteral(" AND NOT IDSERVIZIO=") + Id(id));
}

bool CodiceClienteExists(const QSqlDatabase &db, const QString &codice, int id)
{
    return KRVCountAboveZero(db, QStringLiteral("SELECT COUNT(*) AS NUMERO FROM CLIENTI WHERE UPPER(CODICE) = ")
                                     + UpperQuoted(codice) + QStringLiteral(" AND NOT IDCLIENTE=") + Id(id));
}

bool TitoloNotaDocumentiExists(const QSqlDatabase &db, const QString &titolo, int id)
{
    return KRVCountAboveZero(db, QStringLiteral("SELECT COUNT(*) AS NUM FROM NOTE_DOCUMENTI WHERE UPPER(TITOLO) = ")
                                     + UpperQuoted(titolo) + QStringLiteral(" AND NOT IDNOTA_DOCUMENTI=") + Id(id));
}
