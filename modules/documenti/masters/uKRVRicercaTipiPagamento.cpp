#include "uKRVRicercaTipiPagamento.h"

#include "KRVUtils.h"

TKRVRicercaTipiPagamento::TKRVRicercaTipiPagamento(IKRVMain &main)
    : TKRVRicercaBase(main, {.Elenco = {.Caption = QStringLiteral("Tipi di pagamento"),
                                        .QueryHead = QStringLiteral("SELECT * FROM TIPI_PAGAMENTO "),
                                        .QueryTail = QStringLiteral(" ORDER BY UPPER(TIPO_PAGAMENTO)"),
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
