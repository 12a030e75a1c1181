#include "uKRVRicercaTipiPagamento.h"

#include "KRVQueryElenchi.h"
#include "KRVUtils.h"

TKRVRicercaTipiPagamento::TKRVRicercaTipiPagamento(IKRVMain &main)
    : TKRVRicercaBase(main, {.Elenco = {.Caption = QStringLiteral("Tipi di pagamento"),
                                        .QueryHead = KRVQueryTipiPagamentoTesta,
                                        .QueryTail = KRVQueryTipiPagamentoCoda,
                                        .Columns = {{QStringLiteral("Tipo di pagamento"), 770,
                                                     QStringLiteral("TIPO_PAGAMENTO"), TKRVTipoColonna::Testo}},
                                        .Filters = {}},
                             .Entita = &KRVEntitaTipiPagamento(),
                             .ColonnaDescrizione = 1})
{
    setObjectName(QStringLiteral("KRVRicercaTipiPagamento"));
    FormCreate();
}
