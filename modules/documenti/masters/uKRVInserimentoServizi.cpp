#include "uKRVInserimentoServizi.h"

TKRVInserimentoServizi::TKRVInserimentoServizi(IKRVMain &main)
    : TKRVInserimentoCatalogo(main, KRVCatalogoServizi(), QStringLiteral("Inserimento / Modifica servizi"),
                              QSize(800, 600), 150)
{
    setObjectName(QStringLiteral("KRVInserimentoServizi"));
    FormCreate();
}
