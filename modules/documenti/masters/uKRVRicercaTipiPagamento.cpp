#include "uKRVRicercaTipiPagamento.h"

#include "KRVQueryElenchi.h"
#include "KRVUtils.h"

TKRVRicercaTipiPagamento::TKRVRicercaTipiPagamento(IKRVMain &main)
    : TKRVRicercaBase(main, {.Elenco = {.Caption = QStringLiteral("Tipi di pagamento"),
                                        .QueryHead = KRVQueryTipiPagamentoTesta,
                                        .QueryTail = KRVQueryTipiPagamentoCoda,
                                        .KeyField = QStringLiteral("IDTIPO_PAGAMENTO"),
                                        .Columns = {{QStringLiteral("Tipo di pagamento"), 770,
                                                     QStringLiteral("TIPO_PAGAMENTO"), TKRVTipoColonna::Testo}},
                                        .Filters = {}},
                             .EditorAction = QStringLiteral("actInserimentoTipiPagamento"),
                             .ColonnaDescrizione = 1,
                             .CanDelete = &CanDeleteTipoPagamento,
                             .Delete = &DeleteTipiPagamento})
{
    setObjectName(QStringLiteral("KRVRicercaTipiPagamento"));
    FormCreate();
}
