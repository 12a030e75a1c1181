#pragma once

#include "uKRVGestioneCategorieBase.h"

// The tree of article categories (CATEGORIE_ANA_MAGA).
class TKRVGestioneCategorieAnaMaga : public TKRVGestioneCategorieBase
{
    Q_OBJECT

public:
    explicit TKRVGestioneCategorieAnaMaga(IKRVMain &main, QWidget *parent = nullptr);
};
