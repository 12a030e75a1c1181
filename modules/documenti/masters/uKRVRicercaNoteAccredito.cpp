#include "uKRVRicercaNoteAccredito.h"

#include "KRVDeleteRules.h"
#include "KRVQueryElenchi.h"
#include "uKRVImages.h"

TKRVRicercaNoteAccredito::TKRVRicercaNoteAccredito(IKRVMain &main)
    : TKRVRicercaDocumentiVendita(main,
                                  {.Elenco = {.Caption = QStringLiteral("Ricerca note di accredito"),
                                              .QueryHead = KRVQueryNoteAccreditoTesta,
                                              .QueryTail = KRVQueryDocumentiCoda,
                                              .Columns = ColonneDocumento(),
                                              .Filters = FiltriCliente()},
                                   .Entita = &KRVEntitaNoteAccredito(),
                                   .ColonnaDescrizione = 4,
                                   .RifiutoDellaTabella = true},
                                  KRVCondizioneAnnoNoteAccredito, EKRVDocumentoFatturaPA::NotaAccredito)
{
    setObjectName(QStringLiteral("KRVRicercaNoteAccredito"));
    setWindowIcon(KRVImage(KRVImgFatture));
    FormCreate();
}
