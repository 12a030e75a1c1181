#include "uKRVModSelezionaArticolo.h"

TKRVModSelezionaArticolo::TKRVModSelezionaArticolo()
    : TKRVModSelezionaCatalogo(KRVCatalogoArticoli(), QStringLiteral("Seleziona un articolo"),
                               QStringLiteral("SELECT ANA_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA FROM ANA_MAGA LEFT JOIN "
                                              "CATEGORIE_ANA_MAGA ON CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA="
                                              "ANA_MAGA.IDCATEGORIA_ANA_MAGA "))
{
    setObjectName(QStringLiteral("KRVModSelezionaArticolo"));
}
