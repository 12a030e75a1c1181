#include "uKRVGestioneCategorieAnaMaga.h"

#include "KRVDeleteRules.h"

TKRVGestioneCategorieAnaMaga::TKRVGestioneCategorieAnaMaga(IKRVMain &main, QWidget *parent)
    : TKRVGestioneCategorieBase(main,
                                {QStringLiteral("Gestione categorie articoli"), QStringLiteral("CATEGORIE_ANA_MAGA"),
                                 QStringLiteral("IDCATEGORIA_ANA_MAGA"), QStringLiteral("adsCategorieAnaMaga"),
                                 &CanDeleteCategoriaAnaMaga},
                                parent)
{
    setObjectName(QStringLiteral("KRVGestioneCategorieAnaMaga"));
}
