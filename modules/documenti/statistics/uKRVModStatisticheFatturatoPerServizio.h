#pragma once

#include "uKRVModStatisticheBase.h"

// "Fatturato per servizio": the service lines' turnover by code.
class TKRVModStatisticheFatturatoPerServizio : public TKRVModStatisticheBase
{
    Q_OBJECT

public:
    explicit TKRVModStatisticheFatturatoPerServizio(IKRVMain &main);

    void SetIdServizio(int id) { SetIdVoce(id); }
};
