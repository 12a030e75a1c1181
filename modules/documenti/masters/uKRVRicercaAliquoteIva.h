#pragma once

#include "uKRVRicercaBase.h"

// Search list of the VAT rates, filtered by description.
class TKRVRicercaAliquoteIva : public TKRVRicercaBase
{
    Q_OBJECT

public:
    explicit TKRVRicercaAliquoteIva(IKRVMain &main);
};
