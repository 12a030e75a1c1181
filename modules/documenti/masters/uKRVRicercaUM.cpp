#include "uKRVRicercaUM.h"

#include "KRVQueryElenchi.h"
#include "KRVUtils.h"

TKRVRicercaUM::TKRVRicercaUM(IKRVMain &main)
    : TKRVRicercaBase(main, {.Elenco = {.Caption = QStringLiteral("Unità di misura"),
                                        .QueryHead = KRVQueryUMTesta,
                                        .QueryTail = KRVQueryUMCoda,
                                        .KeyField = QStringLiteral("IDUM"),
                                        .Columns = {{QStringLiteral("Unità di misura"), 770, QStringLiteral("UM"),
                                                     TKRVTipoColonna::Testo}},
                                        .Filters = {{QStringLiteral("txtUnitaMisura"), QStringLiteral("Unità di misura"),
                                                     QStringLiteral("UM CONTAINING ")}}},
                             .EditorAction = QStringLiteral("actInserimentoUM"),
                             .ColonnaDescrizione = 1,
                             .CanDelete = &CanDeleteUM,
                             .Delete = &DeleteUM})
{
    setObjectName(QStringLiteral("KRVRicercaUM"));
    FormCreate();
}
