#include "uKRVInserimentoTipiPagamento.h"

#include "KRVUtils.h"

TKRVInserimentoTipiPagamento::TKRVInserimentoTipiPagamento(IKRVMain &main)
    : TKRVInserimentoCampoSingolo(main,
                                  {.Caption = QStringLiteral("Inserimento / Modifica tipi di pagamento"),
                                   .MinimumSize = QSize(800, 600),
                                   .Entita = &KRVEntitaTipiPagamento(),
                                   .RefreshAfterSave = false,
                                   .RefreshAfterDelete = true,
                                   .CheckIcon = TQ3MsgIcon::Warning,
                                   .SaveFailureIcon = TQ3MsgIcon::None},
                                  {.Name = QStringLiteral("txtTipoPagamento"),
                                   .Label = QStringLiteral("Tipo di pagamento"),
                                   .MaxLength = 50,
                                   .UpperCase = false,
                                   .MsgVuoto = QStringLiteral("Non è stato indicato il tipo di pagamento!"),
                                   .MsgEsistente = QStringLiteral("Tipo di pagamento già presente!")})
{
    setObjectName(QStringLiteral("KRVInserimentoTipiPagamento"));
}
