#pragma once

#include "uKRVGestioneCategorieBase.h"

// The tree of service categories (CATEGORIE_SERVIZI).
class TKRVGestioneCategorieServizi : public TKRVGestioneCategorieBase
{
    Q_OBJECT

public:
    explicit TKRVGestioneCategorieServizi(IKRVMain &main, QWidget *parent = nullptr);
};
