#include "uKRVRicercaFattureVendita.h"

#include "KRVDeleteRules.h"
#include "KRVQueryElenchi.h"
#include "KRVStampe.h"
#include "Q3Messages.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVSalvaPDF.h"
#include "uKRVServiziFinestre.h"

#include <QToolBar>

TKRVRicercaFattureVendita::TKRVRicercaFattureVendita(IKRVMain &main)
    : TKRVRicercaDocumentiVendita(main,
                                  {.Elenco = {.Caption = QStringLiteral("Gestione fatture di vendita"),
                                              .QueryHead = KRVQueryFattVendTesta,
                                              .QueryTail = KRVQueryDocumentiCoda,
                                              .Columns = ColonneDocumento(),
                                              .Filters = FiltriCliente()
                                                         << TKRVFiltro{.Name = QStringLiteral("txtRigaDescrizione"),
                                                                       .Label = QStringLiteral("Riga"),
                                                                       .Condition = KRVCondizioneRigaFattVend,
                                                                       .Closing = KRVCondizioneRigaFattVendChiusura}},
                                   .Entita = &KRVEntitaFattureVendita(),
                                   .ColonnaDescrizione = 4,
                                   .RifiutoDellaTabella = true},
                                  KRVCondizioneAnnoFattVend, EKRVDocumentoFatturaPA::Fattura)
{
    setObjectName(QStringLiteral("KRVRicercaFattureVendita"));
    setWindowIcon(KRVImage(KRVImgFatture));
    AggiungiStampe();
    FormCreate();
}

void TKRVRicercaFattureVendita::AggiungiStampe()
{
    QToolBar *barra = findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    barra->addAction(KRVCreaAzione(this, QStringLiteral("actStampa"), QStringLiteral("Stampa"), KRVImgStampa, [this] {
        if (const int id = FatturaSelezionata(); id >= 0)
            StampaFatturaVendita(id, QString(), 0);
    }));
    barra->addAction(
        KRVCreaAzione(this, QStringLiteral("actSalvaPDF"), QStringLiteral("Salva in PDF"), KRVImgStampa, [this] {
            if (const int id = FatturaSelezionata(); id >= 0)
                SalvaFatturaVenditaPDF(*Main().SaveDialogPDF(), id);
        }));
}

int TKRVRicercaFattureVendita::FatturaSelezionata() const
{
    const int id = GridRisultati()->ChiaveSelezionata();
    if (id < 0)
        Q3ShowWarning(QStringLiteral("Nessuna fattura selezionata!"));
    return id;
}
