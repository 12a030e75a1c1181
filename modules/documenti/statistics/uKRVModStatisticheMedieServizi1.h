#pragma once

#include "uKRVModStatisticheBase.h"

// "Medie di produttività per servizio": the service lines by code, printed
// with the article layout and title. Its category key column is not the
// service categories' own, so their tree cannot be read.
class TKRVModStatisticheMedieServizi1 : public TKRVModStatisticheBase
{
    Q_OBJECT

public:
    explicit TKRVModStatisticheMedieServizi1(IKRVMain &main);

    void SetIdServizio(int id) { SetIdVoce(id); }
};
