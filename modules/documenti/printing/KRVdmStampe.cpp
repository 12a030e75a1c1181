#include "KRVdmStampe.h"

#include "KRVFatturatoPerCliente.h"

namespace {

QString RiepilogoIva(const QString &table, const QString &key)
{
    return QStringLiteral(
               "SELECT SUM(IMPORTO) AS IMPONIBILE, SUM((IMPORTO * IVA_ALIQUOTA) / 100) AS IMPOSTA, IVA_CODICE, "
               "IVA_DESCRIZIONE, IVA_ALIQUOTA FROM %1 WHERE %2 = :%2 AND IVA_IDALIQUOTA_IVA IS NOT NULL "
               "GROUP BY IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA ORDER BY IVA_CODICE")
        .arg(table, key);
}

} // namespace

TKRVdmStampe::TKRVdmStampe(QObject *owner, TQ3Connection *connection, TQ3ReportProject *project) : QObject(owner)
{
    setObjectName(QStringLiteral("KRVdmStampe"));
    // Statements left empty are given by the print that runs them.
    const struct
    {
        const char *name;
        QString sql;
    } datasets[] = {
        {"FattVend", QStringLiteral("SELECT * FROM FATT_VEND WHERE IDFATT_VEND=:IDFATT_VEND")},
        {"FattVendDett", QStringLiteral("SELECT * FROM FATT_VEND_DETT WHERE IDFATT_VEND=:IDFATT_VEND")},
        {"FattVendIva", RiepilogoIva(QStringLiteral("FATT_VEND_DETT"), QStringLiteral("IDFATT_VEND"))},
        {"NoteAccredito", QStringLiteral("SELECT * FROM NOTE_ACCREDITO WHERE IDNOTA_ACCREDITO=:IDNOTA_ACCREDITO")},
        {"NoteAccreditoDett",
         QStringLiteral("SELECT * FROM NOTE_ACCREDITO_DETT WHERE IDNOTA_ACCREDITO=:IDNOTA_ACCREDITO")},
        {"NoteAccreditoIva", RiepilogoIva(QStringLiteral("NOTE_ACCREDITO_DETT"), QStringLiteral("IDNOTA_ACCREDITO"))},
        {"RiepilogoFatture", QString()},
        {"FatturatoPerCliente", KRVSQLFatturatoPerCliente()},
        {"FatturatoPerServizio", QString()},
        {"FatturatoPerArticolo", QString()},
        {"FatturatoClientiServizi", QString()},
        {"ListinoArticoli01",
         QStringLiteral(
             "SELECT ANA_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA, CAST(0 AS DECIMAL(13,2)) AS IMPORTO FROM ANA_MAGA "
             "LEFT JOIN CATEGORIE_ANA_MAGA ON "
             "CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA=ANA_MAGA.IDCATEGORIA_ANA_MAGA")},
    };
    for (const auto &definition : datasets) {
        const QString name = QString::fromLatin1(definition.name);
        auto dataset = new TQ3Dataset(this);
        dataset->setObjectName(QStringLiteral("ads") + name);
        dataset->SetConnection(connection);
        dataset->SetSQL(definition.sql);
        m_datasets.insert(dataset->objectName(), dataset);
        m_names << dataset->objectName();
        m_connections.push_back(std::make_unique<TQ3DatasetConnection>(dataset));
        project->RegisterConnection(QStringLiteral("ds") + name, m_connections.back().get());
    }
    m_calcolati.insert(QStringLiteral("dsFattVendRiepilogoIva"), &m_riepilogoFattVend);
    m_calcolati.insert(QStringLiteral("dsNoteAccreditoRiepilogoIva"), &m_riepilogoNoteAccredito);
    for (auto it = m_calcolati.cbegin(); it != m_calcolati.cend(); ++it)
        project->RegisterConnection(it.key(), it.value());
}
