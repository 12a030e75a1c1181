#include "uKRVRicercaServizi.h"

TKRVRicercaServizi::TKRVRicercaServizi(IKRVMain &main)
    : TKRVRicercaCatalogo(main, KRVCatalogoServizi(), QStringLiteral("Ricerca servizi"),
                          QStringLiteral("SELECT SERVIZI.*, CATEGORIE_SERVIZI.CATEGORIA FROM SERVIZI LEFT JOIN "
                                         "CATEGORIE_SERVIZI ON SERVIZI.IDCATEGORIA_SERVIZI="
                                         "CATEGORIE_SERVIZI.IDCATEGORIA_SERVIZI "),
                          QStringLiteral(" ORDER BY UPPER(CODICE)"))
{
    setObjectName(QStringLiteral("KRVRicercaServizi"));
    FormCreate();
}
