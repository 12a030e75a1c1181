#include "uKRVRicercaServizi.h"

#include "KRVQueryElenchi.h"

TKRVRicercaServizi::TKRVRicercaServizi(IKRVMain &main)
    : TKRVRicercaCatalogo(main, KRVCatalogoServizi(), QStringLiteral("Ricerca servizi"), KRVQueryRicercaServiziTesta,
                          KRVQueryCatalogoCoda)
{
    setObjectName(QStringLiteral("KRVRicercaServizi"));
    FormCreate();
}
