#pragma once

#include "uKRVModStatisticheBase.h"

// "Fatturato per articolo": the article lines' turnover by code.
class TKRVModStatisticheFatturatoPerArticolo : public TKRVModStatisticheBase
{
    Q_OBJECT

public:
    explicit TKRVModStatisticheFatturatoPerArticolo(IKRVMain &main);

    void SetIdArticolo(int id) { SetIdVoce(id); }
};
