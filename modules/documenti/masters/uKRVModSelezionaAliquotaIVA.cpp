#include "uKRVModSelezionaAliquotaIVA.h"

#include "KRVEntita.h"
#include "KRVQueryElenchi.h"

TKRVModSelezionaAliquotaIVA::TKRVModSelezionaAliquotaIVA()
    : TKRVModSelezionaBase(
        {.Caption = QStringLiteral("Seleziona un'aliquota IVA"),
         .QueryHead = KRVQueryAliquoteIVATesta,
         .QueryTail = KRVQuerySelezioneAliquotaIVACoda,
         .KeyField = KRVEntitaAliquoteIVA().Chiave,
         .Columns = {{QStringLiteral("Codice"), 60, QStringLiteral("CODICE"), TKRVTipoColonna::Testo},
                     {QStringLiteral("Descrizione"), 300, QStringLiteral("DESCRIZIONE"), TKRVTipoColonna::Testo},
                     {QStringLiteral("Aliquota"), 90, QStringLiteral("ALIQUOTA"), TKRVTipoColonna::Percentuale}},
         .Filters = {}},
        QSize(500, 420))
{
    setObjectName(QStringLiteral("KRVModSelezionaAliquotaIVA"));
    FormCreate();
}

TAliquotaIVA TKRVModSelezionaAliquotaIVA::ApriSelezionato() const
{
    const TKRVGrigliaRisultati *grid = gridRisultati();
    TAliquotaIVA aliquota;
    aliquota.IDALIQUOTA_IVA = grid->ChiaveSelezionata();
    aliquota.CODICE = grid->ValoreSelezionato(1);
    aliquota.DESCRIZIONE = grid->ValoreSelezionato(2);
    aliquota.ALIQUOTA = grid->ValoreSelezionato(3).toDouble();
    return aliquota;
}
