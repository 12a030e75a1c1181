#pragma once

#include "uKRVModStampaAnno.h"

// "Stampa fatturato per cliente": the year whose turnover by customer prints.
class TKRVModStampaFatturatoPerCliente : public TKRVModStampaAnno
{
    Q_OBJECT

public:
    TKRVModStampaFatturatoPerCliente();
};
