#include "KRVDatasets.h"

#include "Q3Sql.h"

namespace {

QString SqlAzienda()
{
    QString azienda = QStringLiteral("SELECT\r\nAZIENDA.*");
    const struct
    {
        const char *column;
        const char *prefix;
    } descs[] = {{"PARTITAIVA", "P.I.: "}, {"CODICEFISCALE", "C.F.: "}, {"TELEFONO", "Tel. "},
                 {"FAX", "Fax. "},         {"EMAIL", "e-mail: "},       {"WEB", "web: "}};
    for (const auto &desc : descs) {
        const QString column = QString::fromLatin1(desc.column);
        azienda += QStringLiteral(",\r\nCASE WHEN NOT %1 = '' THEN %2 || %1 || ' ' ELSE '' END AS %1_DESC")
                       .arg(column, QuotedStr(QString::fromLatin1(desc.prefix)));
    }
    return azienda + QStringLiteral("\r\nFROM AZIENDA");
}

} // namespace

QHash<QString, TQ3Dataset *> KRVCreaDatasetModulo(QObject *owner, TQ3Connection *connection)
{
    const struct
    {
        const char *name;
        QString sql;
        const char *table;
        const char *key;
    } datasets[] = {
        {"adsAliquoteIVA", "SELECT\r\n*\r\nFROM ALIQUOTE_IVA\r\nWHERE IDALIQUOTA_IVA=:IDALIQUOTA_IVA", "ALIQUOTE_IVA",
         "IDALIQUOTA_IVA"},
        {"adsUM", "SELECT\r\n*\r\nFROM UM\r\nWHERE IDUM=:IDUM", "UM", "IDUM"},
        {"adsTipiPagamento", "SELECT\r\n*\r\nFROM TIPI_PAGAMENTO\r\nWHERE IDTIPO_PAGAMENTO=:IDTIPO_PAGAMENTO",
         "TIPI_PAGAMENTO", "IDTIPO_PAGAMENTO"},
        {"adsCategorieAnaMaga", "SELECT\r\n*\r\nFROM CATEGORIE_ANA_MAGA\r\nORDER BY UPPER(CATEGORIA)",
         "CATEGORIE_ANA_MAGA", "IDCATEGORIA_ANA_MAGA"},
        {"adsCategorieServizi", "SELECT\r\n*\r\nFROM CATEGORIE_SERVIZI\r\nORDER BY UPPER(CATEGORIA)",
         "CATEGORIE_SERVIZI", "IDCATEGORIA_SERVIZI"},
        {"adsAnaMaga", "SELECT\r\n*\r\nFROM ANA_MAGA\r\nWHERE IDANA_MAGA=:IDANA_MAGA", "ANA_MAGA", "IDANA_MAGA"},
        {"adsServizi", "SELECT\r\n*\r\nFROM SERVIZI\r\nWHERE IDSERVIZIO=:IDSERVIZIO", "SERVIZI", "IDSERVIZIO"},
        {"adsClienti", "SELECT\r\n*\r\nFROM CLIENTI\r\nWHERE IDCLIENTE=:IDCLIENTE", "CLIENTI", "IDCLIENTE"},
        {"adsFattVend", "SELECT\r\n*\r\nFROM FATT_VEND\r\nWHERE IDFATT_VEND=:IDFATT_VEND", "FATT_VEND", "IDFATT_VEND"},
        {"adsFattVendDett", "SELECT\r\n*\r\nFROM FATT_VEND_DETT\r\nWHERE IDFATT_VEND=:IDFATT_VEND", "FATT_VEND_DETT",
         "IDFATT_VEND_DETT"},
        {"adsAzienda", SqlAzienda(), "AZIENDA", "IDAZIENDA"},
        {"adsNoteAccredito", "SELECT\r\n*\r\nFROM NOTE_ACCREDITO\r\nWHERE IDNOTA_ACCREDITO=:iDNOTA_ACCREDITO",
         "NOTE_ACCREDITO", "IDNOTA_ACCREDITO"},
        {"adsNoteAccreditoDett", "SELECT\r\n*\r\nFROM NOTE_ACCREDITO_DETT\r\nWHERE IDNOTA_ACCREDITO=:iDNOTA_ACCREDITO",
         "NOTE_ACCREDITO_DETT", "IDNOTA_ACCREDITO_DETT"},
        {"adsNotaDocumenti", "SELECT\r\n*\r\nFROM NOTE_DOCUMENTI\r\nWHERE IDNOTA_DOCUMENTI=:IDNOTA_DOCUMENTI",
         "NOTE_DOCUMENTI", "IDNOTA_DOCUMENTI"},
    };
    QHash<QString, TQ3Dataset *> created;
    for (const auto &definition : datasets) {
        auto dataset = new TQ3Dataset(owner);
        dataset->setObjectName(QString::fromLatin1(definition.name));
        dataset->SetConnection(connection);
        dataset->SetSQL(definition.sql);
        dataset->SetUpdateTable(QString::fromLatin1(definition.table), QString::fromLatin1(definition.key));
        created.insert(dataset->objectName(), dataset);
    }
    return created;
}
