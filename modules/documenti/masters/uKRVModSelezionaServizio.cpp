#include "uKRVModSelezionaServizio.h"

TKRVModSelezionaServizio::TKRVModSelezionaServizio()
    : TKRVModSelezionaCatalogo(KRVCatalogoServizi(), QStringLiteral("Seleziona un servizio"),
                               QStringLiteral("SELECT SERVIZI.*, CATEGORIE_SERVIZI.CATEGORIA FROM SERVIZI LEFT JOIN "
                                              "CATEGORIE_SERVIZI ON CATEGORIE_SERVIZI.IDCATEGORIA_SERVIZI="
                                              "SERVIZI.IDCATEGORIA_SERVIZI "))
{
    setObjectName(QStringLiteral("KRVModSelezionaServizio"));
}
