#include "uKRVInserimentoTipiPagamento.h"

#include "KRVUtils.h"

TKRVInserimentoTipiPagamento::TKRVInserimentoTipiPagamento(IKRVMain &main)
    : TKRVInserimentoCampoSingolo(
          main,
          {.Caption = QStringLiteral("Inserimento / Modifica tipi di pagamento"),
           .MinimumSize = QSize(800, 600),
           .Dataset = QStringLiteral("adsTipiPagamento"),
           .KeyField = QStringLiteral("IDTIPO_PAGAMENTO"),
           .Generator = QStringLiteral("GN_IDTIPO_PAGAMENTO"),
           .SearchAction = QStringLiteral("actRicercaTipiPagamento"),
           .RefreshAfterSave = false,
           .RefreshAfterDelete = true,
           .CheckIcon = TQ3MsgIcon::Warning,
           .SaveFailureIcon = TQ3MsgIcon::None,
           .CanDelete = &CanDeleteTipoPagamento,
           .Delete = &DeleteTipiPagamento,
           .DeleteRefused = QStringLiteral(
               "Non è possibile eliminare questo tipo di pagamento,\n\resistono dei dati correlati!")},
          {.Name = QStringLiteral("txtTipoPagamento"),
           .Label = QStringLiteral("Tipo di pagamento"),
           .MaxLength = 50,
           .UpperCase = false,
           .Column = QStringLiteral("TIPO_PAGAMENTO"),
           .MsgVuoto = QStringLiteral("Non è stato indicato il tipo di pagamento!"),
           .Exists = &CodiceTipoPagamentoExists,
           .MsgEsistente = QStringLiteral("Tipo di pagamento già presente!")})
{
    setObjectName(QStringLiteral("KRVInserimentoTipiPagamento"));
}
