#pragma once

#include "uKRVModSelezionaBase.h"

// Chooses a unit of measure: hands back its key and text.
class TKRVModSelezionaUM : public TKRVModSelezionaBase
{
    Q_OBJECT

public:
    TKRVModSelezionaUM();

    TKRVVoceSelezionata ApriSelezionato() const;
};
