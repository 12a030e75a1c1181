#include "uKRVGestioneCategorieServizi.h"

#include "KRVDeleteRules.h"

TKRVGestioneCategorieServizi::TKRVGestioneCategorieServizi(IKRVMain &main, QWidget *parent)
    : TKRVGestioneCategorieBase(main,
                                {QStringLiteral("Gestione categorie servizi"), QStringLiteral("CATEGORIE_SERVIZI"),
                                 QStringLiteral("IDCATEGORIA_SERVIZI"), QStringLiteral("adsCategorieServizi"),
                                 &CanDeleteCategoriaServizi},
                                parent)
{
    setObjectName(QStringLiteral("KRVGestioneCategorieServizi"));
}
