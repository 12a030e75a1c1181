#include "uKRVRicercaNoteAccredito.h"

#include "KRVDeleteRules.h"
#include "KRVQueryElenchi.h"
#include "uKRVImages.h"

TKRVRicercaNoteAccredito::TKRVRicercaNoteAccredito(IKRVMain &main)
    : TKRVRicercaDocumentiVendita(
          main,
          {.Elenco = {.Caption = QStringLiteral("Ricerca note di accredito"),
                      .QueryHead = KRVQueryNoteAccreditoTesta,
                      .QueryTail = KRVQueryDocumentiCoda,
                      .KeyField = QStringLiteral("IDNOTA_ACCREDITO"),
                      .Columns = ColonneDocumento(),
                      .Filters = {{.Name = QStringLiteral("txtCodice"), .Label = QStringLiteral("Codice"),
                                   .Condition = QStringLiteral("CLI_CODICE CONTAINING ")},
                                  {.Name = QStringLiteral("txtRagioneSociale"), .Label = QStringLiteral("Ragione sociale"),
                                   .Condition = QStringLiteral("CLI_RAGIONESOCIALE CONTAINING ")}}},
           .EditorAction = QStringLiteral("actInserimentoNoteAccredito"),
           .ColonnaDescrizione = 4,
           .CanDelete = &CanDeleteNotaAccredito,
           .Delete = &DeleteNotaAccredito,
           .PermessoApertura = QStringLiteral("Note di accredito (visualizzazione)"),
           .PermessoNuovo = QStringLiteral("Note di accredito (modifica)"),
           .PermessoEliminazione = QStringLiteral("Note di accredito (eliminazione)"),
           .DeleteRefused =
               QStringLiteral("Non è possibile eliminare questa nota di accredito,\n\resistono dei dati correlati!")},
          KRVCondizioneAnnoNoteAccredito)
{
    setObjectName(QStringLiteral("KRVRicercaNoteAccredito"));
    setWindowIcon(KRVImage(KRVImgFatture));
    FormCreate();
}
