#include "KRVStampe.h"

#include "KRVErrors.h"
#include "KRVOptions.h"
#include "KRVRiepilogoIva.h"
#include "KRVSession.h"
#include "Q3Dataset.h"
#include "Q3Guards.h"
#include "Q3Packages.h"

namespace {

// Opens a document's datasets again with the document's key.
void RiapriDataset(TQ3Dataset *dataset, const QString &parameter, int id)
{
    dataset->Close();
    dataset->SetParamValue(parameter, id);
    dataset->Open();
}

// Under the wait cursor: the firm's data, then a document's header, lines and
// VAT summary (adsFattVend, adsFattVendDett, adsFattVendIva for documento
// "FattVend") read again with its key, and the summary as the document prints it.
void ApriDocumento(IKRVStampeHost *host, const QString &documento, const QString &parametro, int id)
{
    TQ3BusyCursor busy;
    KRVAggiornaAzienda(host);
    for (const QString &parte : {QString(), QStringLiteral("Dett"), QStringLiteral("Iva")})
        RiapriDataset(host->StampeDataset(QStringLiteral("ads") + documento + parte), parametro, id);
    const TQ3ReportProject *project = host->rProject();
    const double totaleImposta =
        host->StampeDataset(QStringLiteral("ads") + documento)->FieldValue(QStringLiteral("TOTALE_IMPOSTA")).toDouble();
    KRVRiepilogoIvaStampa(*project->Connection(QStringLiteral("ds") + documento + QStringLiteral("Iva")),
                          *project->Connection(QStringLiteral("ds") + documento + QStringLiteral("Dett")),
                          totaleImposta,
                          *host->StampeDatiCalcolati(QStringLiteral("ds") + documento
                                                     + QStringLiteral("RiepilogoIva")));
}

} // namespace

void KRVAggiornaAzienda(IKRVStampeHost *host)
{
    TQ3Dataset *azienda = host->StampeDataset(QStringLiteral("adsAzienda"));
    azienda->Close();
    azienda->Open();
}

TQ3Dataset *KRVApriDatiStampa(IKRVStampeHost *host, const QString &dataset, const QString &sql)
{
    TQ3BusyCursor busy;
    KRVAggiornaAzienda(host);
    TQ3Dataset *dati = host->StampeDataset(dataset);
    dati->Close();
    dati->SetSQL(sql);
    dati->Open();
    return dati;
}

IKRVStampeHost *KRVStampeHost()
{
    const int index = GetPackageIndex(KRVModuleFileName());
    auto host = index < 0 ? nullptr : dynamic_cast<IKRVStampeHost *>(PackageList().at(index).MainObject);
    if (!host)
        throw EQ3Exception(QStringLiteral("Il modulo documenti non è caricato."));
    return host;
}

void StampaFatturaVendita(int IdFattVend, const QString &NomeFilePDF, int Destinazione)
{
    KRVWrapped("StampaFatturaVendita", [&] {
        IKRVStampeHost *host = KRVStampeHost();
        TQ3Dataset *fattVend = host->StampeDataset(QStringLiteral("adsFattVend"));
        ApriDocumento(host, QStringLiteral("FattVend"), QStringLiteral("IDFATT_VEND"), IdFattVend);
        QString report = QStringLiteral("FattVend");
        if (KRVStrToBool(fattVend->FieldValue(QStringLiteral("IVA_ESENTE")).toString())) {
            report = QStringLiteral("FattVendIVAEsente");
            QVariant nota;
            host->rProject()->SetParam(QStringLiteral("Param1"),
                                       GetOptionValue(fattVend->Connection()->Database(),
                                                      QString::fromLatin1(KRVOpzioneNotaIvaEsente), nota)
                                           ? nota.toString()
                                           : QString());
        }
        TQ3ReportSystem *system = host->rSystem();
        if (Destinazione == int(TQ3ReportDestination::File)) {
            system->RenderObject = host->rRenderPDF();
            system->DefaultDest = TQ3ReportDestination::File;
            system->DoNativeOutput = false;
            system->AllowSetup = false;
            system->OutputFileName = NomeFilePDF;
        }
        host->rProject()->ExecuteReport(report);
        system->DefaultDest = TQ3ReportDestination::Preview;
        system->DoNativeOutput = true;
        system->AllowSetup = true;
    });
}

void StampaNotaAccredito(int IdNotaAccredito)
{
    IKRVStampeHost *host = KRVStampeHost();
    ApriDocumento(host, QStringLiteral("NoteAccredito"), QStringLiteral("IDNOTA_ACCREDITO"), IdNotaAccredito);
    host->rProject()->ExecuteReport(QStringLiteral("NotaAccredito"));
}

void StampaListinoIVATO()
{
    IKRVStampeHost *host = KRVStampeHost();
    KRVApriDatiStampa(
        host, QStringLiteral("adsListinoArticoli01"),
        QStringLiteral(
            "SELECT ANA_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA, (PREZZO + ((PREZZO * ALIQUOTE_IVA.ALIQUOTA) / 100)) AS IMPORTO "
            "FROM ANA_MAGA LEFT JOIN CATEGORIE_ANA_MAGA ON CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA = ANA_MAGA.IDCATEGORIA_ANA_MAGA "
            "LEFT JOIN ALIQUOTE_IVA ON ALIQUOTE_IVA.IDALIQUOTA_IVA = ANA_MAGA.IDALIQUOTA_IVA ORDER BY UPPER(ANA_MAGA.CODICE)"));
    host->rProject()->SetParam(QStringLiteral("ReportTitle"), QStringLiteral("Listino articoli"));
    host->rProject()->SetParam(QStringLiteral("Param1"), QStringLiteral("Tutti i prezzi si intendono IVA inclusa"));
    host->rProject()->ExecuteReport(QStringLiteral("ElencoArticoli01"));
}
