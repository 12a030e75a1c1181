#include "uKRVCatalogo.h"

const TKRVCatalogo &KRVCatalogoArticoli()
{
    static const TKRVCatalogo articoli{
        .Entita = KRVEntitaArticoli(),
        .CodePrefix = QStringLiteral("ART"),
        .CategoryTable = QStringLiteral("CATEGORIE_ANA_MAGA"),
        .CategoryKey = QStringLiteral("IDCATEGORIA_ANA_MAGA"),
    };
    return articoli;
}

const TKRVCatalogo &KRVCatalogoServizi()
{
    static const TKRVCatalogo servizi{
        .Entita = KRVEntitaServizi(),
        .CodePrefix = QStringLiteral("SRV"),
        .CategoryTable = QStringLiteral("CATEGORIE_SERVIZI"),
        .CategoryKey = QStringLiteral("IDCATEGORIA_SERVIZI"),
    };
    return servizi;
}
