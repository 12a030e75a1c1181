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
                                              .Filters = {{.Name = QStringLiteral("txtCodice"),
                                                           .Label = QStringLiteral("Codice"),
                                                           .Condition = QStringLiteral("CLI_CODICE CONTAINING ")},
                                                          {.Name = QStringLiteral("txtRagioneSociale"),
                                                           .Label = QStringLiteral("Ragione sociale"),
                                                           .Condition =
                                                               QStringLiteral("CLI_RAGIONESOCIALE CONTAINING ")}}},
                                   .Entita = &KRVEntitaNoteAccredito(),
                                   .ColonnaDescrizione = 4,
                                   .RifiutoDellaTabella = true},
                                  KRVCondizioneAnnoNoteAccredito)
{
    setObjectName(QStringLiteral("KRVRicercaNoteAccredito"));
    setWindowIcon(KRVImage(KRVImgFatture));
    FormCreate();
}
