#include "uKRVModSelezionaTipoPagamento.h"

#include "KRVEntita.h"
#include "KRVQueryElenchi.h"

TKRVModSelezionaTipoPagamento::TKRVModSelezionaTipoPagamento()
    : TKRVModSelezionaBase({.Caption = QStringLiteral("Seleziona un tipo di pagamento"),
                            .QueryHead = KRVQueryTipiPagamentoTesta,
                            .QueryTail = KRVQueryTipiPagamentoCoda,
                            .KeyField = KRVEntitaTipiPagamento().Chiave,
                            .Columns = {{QStringLiteral("Tipo di pagamento"), 420, QStringLiteral("TIPO_PAGAMENTO"),
                                         TKRVTipoColonna::Testo}},
                            .Filters = {}},
                           QSize(480, 420))
{
    setObjectName(QStringLiteral("KRVModSelezionaTipoPagamento"));
    FormCreate();
}

TKRVVoceSelezionata TKRVModSelezionaTipoPagamento::ApriSelezionato() const
{
    return VoceSelezionata(1);
}
