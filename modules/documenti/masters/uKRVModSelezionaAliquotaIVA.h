#pragma once

#include "Q3Records.h"
#include "uKRVModSelezionaBase.h"

// Chooses a VAT rate: hands back its key, code, description and percentage.
class TKRVModSelezionaAliquotaIVA : public TKRVModSelezionaBase
{
    Q_OBJECT

public:
    TKRVModSelezionaAliquotaIVA();

    // Key -1 and empty fields when no row is selected.
    TAliquotaIVA ApriSelezionato() const;
};
