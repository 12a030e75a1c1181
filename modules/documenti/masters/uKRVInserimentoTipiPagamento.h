#pragma once

#include "uKRVInserimentoCampoSingolo.h"

// Editor of the payment types.
class TKRVInserimentoTipiPagamento : public TKRVInserimentoCampoSingolo
{
    Q_OBJECT

public:
    explicit TKRVInserimentoTipiPagamento(IKRVMain &main);
};
