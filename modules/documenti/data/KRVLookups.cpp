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
QString LookupText(const QString &sql, const char *column)
{
    QString text;
    KRVReadFirstRow(sql, [&](const QSqlRecord &row) { text = Text(row, column); });
    return text;
}

TCliente LookupCliente(const QString &sql)
{
    TCliente cliente;
    KRVReadFirstRow(sql, [&](const QSqlRecord &row) {
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
        cliente.TIPO_PAGAMENTO = GetTipoPagamento(cliente.IDTIPO_PAGAMENTO);
        cliente.TELEFONO1 = Text(row, "TELEFONO1");
        cliente.TELEFONO2 = Text(row, "TELEFONO2");
        cliente.TELEFONO3 = Text(row, "TELEFONO3");
        cliente.FAX = Text(row, "FAX");
        cliente.EMAIL = Text(row, "EMAIL");
        cliente.WEB = Text(row, "WEB");
    });
    return cliente;
}

// The value as it is compared: upper-cased, as an SQL literal.
QString UpperQuoted(const QString &value)
{
    return QuotedStr(KRVMaiuscole(value));
}

} // namespace

TAliquotaIVA GetAliquotaIVA(int id)
{
    TAliquotaIVA aliquota;
    KRVReadFirstRow(QStringLiteral("SELECT * FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA=") + Id(id), [&](const QSqlRecord &row) {
        aliquota.IDALIQUOTA_IVA = Int(row, "IDALIQUOTA_IVA");
        aliquota.CODICE = Text(row, "CODICE");
        aliquota.DESCRIZIONE = Text(row, "DESCRIZIONE");
        aliquota.ALIQUOTA = Number(row, "ALIQUOTA");
    });
    return aliquota;
}

QString GetUM(int id)
{
    return LookupText(QStringLiteral("SELECT * FROM UM WHERE IDUM=") + Id(id), "UM");
}

QString GetTipoPagamento(int id)
{
    return LookupText(QStringLiteral("SELECT * FROM TIPI_PAGAMENTO WHERE IDTIPO_PAGAMENTO=") + Id(id), "TIPO_PAGAMENTO");
}

TCliente GetCliente(int id)
{
    return LookupCliente(QStringLiteral("SELECT * FROM CLIENTI WHERE IDCLIENTE =") + Id(id));
}

TCliente GetCliente(const QString &codice)
{
    return KRVWrapped("GetCliente", [&] {
        return LookupCliente(QStringLiteral("SELECT * FROM CLIENTI WHERE UPPER(CODICE) =") + UpperQuoted(codice));
    });
}

TServizio GetServizio(int id)
{
    TServizio servizio;
    KRVReadFirstRow(QStringLiteral("SELECT * FROM SERVIZI WHERE IDSERVIZIO=") + Id(id), [&](const QSqlRecord &row) {
        servizio.IDSERVIZIO = Int(row, "IDSERVIZIO");
        servizio.CODICE = Text(row, "CODICE");
        servizio.DESCRIZIONE = Text(row, "DESCRIZIONE");
        servizio.IDCATEGORIA_SERVIZI = Int(row, "IDCATEGORIA_SERVIZI");
        servizio.CATEGORIA_SERVIZI = GetCategoriaServizio(servizio.IDCATEGORIA_SERVIZI);
        servizio.PREZZO = Number(row, "PREZZO");
        servizio.COSTO = Number(row, "COSTO");
        servizio.IDALIQUOTA_IVA = Int(row, "IDALIQUOTA_IVA");
        servizio.IDUM = Int(row, "IDUM");
    });
    return servizio;
}

TArticolo GetArticolo(int id)
{
    return KRVWrapped("GetArticolo", [&] {
        TArticolo articolo;
        KRVReadFirstRow(QStringLiteral("SELECT * FROM ANA_MAGA WHERE IDANA_MAGA =") + Id(id), [&](const QSqlRecord &row) {
            articolo.IDANA_MAGA = Int(row, "IDANA_MAGA");
            articolo.CODICE = Text(row, "CODICE");
            articolo.DESCRIZIONE = Text(row, "DESCRIZIONE");
            articolo.SOTTOSCORTA = Number(row, "SOTTOSCORTA");
            articolo.RIORDINO = Number(row, "RIORDINO");
            articolo.IDCATEGORIA_ANA_MAGA = Int(row, "IDCATEGORIA_ANA_MAGA");
            articolo.CATEGORIA_ANA_MAGA = GetCategoriaAnaMaga(articolo.IDCATEGORIA_ANA_MAGA);
            articolo.PREZZO = Number(row, "PREZZO");
            articolo.COSTO = Number(row, "COSTO");
            articolo.IDALIQUOTA_IVA = Int(row, "IDALIQUOTA_IVA");
            articolo.IDUM = Int(row, "IDUM");
        });
        return articolo;
    });
}

QString GetCategoriaAnaMaga(int id)
{
    return KRVWrapped("GetCategoriaAnaMaga", [&] {
        return LookupText(QStringLiteral("SELECT * FROM CATEGORIE_ANA_MAGA WHERE IDCATEGORIA_ANA_MAGA =") + Id(id), "CATEGORIA");
    });
}

QString GetCategoriaServizio(int id)
{
    return KRVWrapped("GetCategoriaServizio", [&] {
        return LookupText(QStringLiteral("SELECT * FROM CATEGORIE_SERVIZI WHERE IDCATEGORIA_SERVIZI =") + Id(id), "CATEGORIA");
    });
}

QString GetNotaDocumento(int id)
{
    return KRVWrapped("GetNotaDocumento", [&] {
        return LookupText(QStringLiteral("SELECT * FROM NOTE_DOCUMENTI WHERE IDNOTA_DOCUMENTI =") + Id(id), "TESTO");
    });
}

bool CodiceAliquotaIvaExists(const QString &codice, int id)
{
    return KRVCountAboveZero(QStringLiteral("SELECT COUNT(*) AS NUMERO FROM ALIQUOTE_IVA WHERE UPPER(CODICE) = ")
                             + UpperQuoted(codice) + QStringLiteral(" AND NOT IDALIQUOTA_IVA = ") + Id(id));
}

bool CodiceUMExists(const QString &um, int id)
{
    return KRVCountAboveZero(QStringLiteral("SELECT COUNT(*) AS NUMERO FROM UM WHERE UPPER(UM) = ") + UpperQuoted(um)
                             + QStringLiteral(" AND NOT IDUM = ") + Id(id));
}

bool CodiceTipoPagamentoExists(const QString &tipoPagamento, int id)
{
    return KRVCountAboveZero(QStringLiteral("SELECT COUNT(*) AS NUMERO FROM TIPI_PAGAMENTO WHERE UPPER(TIPO_PAGAMENTO) = ")
                             + UpperQuoted(tipoPagamento) + QStringLiteral(" AND NOT IDTIPO_PAGAMENTO = ") + Id(id));
}

bool CodiceAnaMagaExists(const QString &codice, int id)
{
    return KRVCountAboveZero(QStringLiteral("SELECT COUNT(*) AS NUMERO FROM ANA_MAGA WHERE UPPER(CODICE) = ")
                             + UpperQuoted(codice) + QStringLiteral(" AND NOT IDANA_MAGA=") + Id(id));
}

bool CodiceServizioExists(const QString &codice, int id)
{
    return KRVCountAboveZero(QStringLiteral("SELECT COUNT(*) AS NUMERO FROM SERVIZI WHERE UPPER(CODICE) = ")
                             + UpperQuoted(codice) + QStringLiteral(" AND NOT IDSERVIZIO=") + Id(id));
}

bool CodiceClienteExists(const QString &codice, int id)
{
    return KRVCountAboveZero(QStringLiteral("SELECT COUNT(*) AS NUMERO FROM CLIENTI WHERE UPPER(CODICE) = ")
                             + UpperQuoted(codice) + QStringLiteral(" AND NOT IDCLIENTE=") + Id(id));
}

bool TitoloNotaDocumentiExists(const QString &titolo, int id)
{
    return KRVCountAboveZero(QStringLiteral("SELECT COUNT(*) AS NUM FROM NOTE_DOCUMENTI WHERE UPPER(TITOLO) = ")
                             + UpperQuoted(titolo) + QStringLiteral(" AND NOT IDNOTA_DOCUMENTI=") + Id(id));
}
