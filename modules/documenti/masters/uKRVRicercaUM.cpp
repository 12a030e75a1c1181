#include "uKRVRicercaUM.h"

#include "KRVQueryElenchi.h"
#include "KRVUtils.h"

TKRVRicercaUM::TKRVRicercaUM(IKRVMain &main)
    : TKRVRicercaBase(main,
                      {.Elenco = {.Caption = QStringLiteral("Unità di misura"),
                                  .QueryHead = KRVQueryUMTesta,
                                  .QueryTail = KRVQueryUMCoda,
                                  .Columns = {{QStringLiteral("Unità di misura"), 770, QStringLiteral("UM"),
                                               TKRVTipoColonna::Testo}},
                                  .Filters = {{QStringLiteral("txtUnitaMisura"), QStringLiteral("Unità di misura"),
                                               QStringLiteral("UM CONTAINING ")}}},
                       .Entita = &KRVEntitaUM(),
                       .ColonnaDescrizione = 1})
{
    setObjectName(QStringLiteral("KRVRicercaUM"));
    FormCreate();
}
