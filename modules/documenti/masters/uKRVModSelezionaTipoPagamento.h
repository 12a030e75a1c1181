#pragma once

#include "uKRVModSelezionaBase.h"

// Chooses a payment type: hands back its key and text.
class TKRVModSelezionaTipoPagamento : public TKRVModSelezionaBase
{
    Q_OBJECT

public:
    TKRVModSelezionaTipoPagamento();

    TKRVVoceSelezionata ApriSelezionato() const;
};
