#include "uKRVRicercaAliquoteIva.h"

#include "KRVQueryElenchi.h"
#include "KRVUtils.h"

TKRVRicercaAliquoteIva::TKRVRicercaAliquoteIva(IKRVMain &main)
    : TKRVRicercaBase(main, {.Elenco = {.Caption = QStringLiteral("Aliquote IVA"),
                                        .QueryHead = KRVQueryAliquoteIVATesta,
                                        .QueryTail = KRVQueryAliquoteIVACoda,
                                        .Columns = {{QStringLiteral("Codice"), 60, QStringLiteral("CODICE"),
                                                     TKRVTipoColonna::Testo},
                                                    {QStringLiteral("Descrizione"), 610, QStringLiteral("DESCRIZIONE"),
                                                     TKRVTipoColonna::Testo},
                                                    {QStringLiteral("Aliquota"), 100, QStringLiteral("ALIQUOTA"),
                                                     TKRVTipoColonna::Percentuale}},
                                        .Filters = {{QStringLiteral("txtDescrizione"), QStringLiteral("Descrizione"),
                                                     QStringLiteral("DESCRIZIONE CONTAINING ")}}},
                             .Entita = &KRVEntitaAliquoteIVA(),
                             .ColonnaDescrizione = 2})
{
    setObjectName(QStringLiteral("KRVRicercaAliquoteIva"));
    FormCreate();
}
