#pragma once

#include "uKRVRicercaBase.h"

// Search list of the payment types: every row, no filter.
class TKRVRicercaTipiPagamento : public TKRVRicercaBase
{
    Q_OBJECT

public:
    explicit TKRVRicercaTipiPagamento(IKRVMain &main);
};
