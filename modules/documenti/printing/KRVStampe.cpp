#include "KRVStampe.h"

#include "KRVErrors.h"
#include "KRVOptions.h"
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
        {
            TQ3BusyCursor busy;
            KRVAggiornaAzienda(host);
            for (const QString &name : {QStringLiteral("adsFattVend"), QStringLiteral("adsFattVendDett"),
                                        QStringLiteral("adsFattVendIva")})
                RiapriDataset(host->StampeDataset(name), QStringLiteral("IDFATT_VEND"), IdFattVend);
        }
        QString report = QStringLiteral("FattVend");
        if (KRVStrToBool(fattVend->FieldValue(QStringLiteral("IVA_ESENTE")).toString())) {
            report = QStringLiteral("FattVendIVAEsente");
            QVariant nota;
            host->rProject()->SetParam(QStringLiteral("Param1"),
                                       GetOptionValue(QStringLiteral("FATT_IVA_ESENTE_NOTE"), nota) ? nota.toString()
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
    KRVWrapped("StampaNotaAccredito", [&] {
        IKRVStampeHost *host = KRVStampeHost();
        {
            TQ3BusyCursor busy;
            KRVAggiornaAzienda(host);
            for (const QString &name : {QStringLiteral("adsNoteAccredito"), QStringLiteral("adsNoteAccreditoDett"),
                                        QStringLiteral("adsNoteAccreditoIva")})
                RiapriDataset(host->StampeDataset(name), QStringLiteral("IDNOTA_ACCREDITO"), IdNotaAccredito);
        }
        host->rProject()->ExecuteReport(QStringLiteral("NotaAccredito"));
    });
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
