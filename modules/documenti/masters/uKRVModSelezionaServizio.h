#pragma once

#include "uKRVModSelezionaCatalogo.h"

// Chooses a service: hands back its key.
class TKRVModSelezionaServizio : public TKRVModSelezionaCatalogo
{
    Q_OBJECT

public:
    TKRVModSelezionaServizio();
};
