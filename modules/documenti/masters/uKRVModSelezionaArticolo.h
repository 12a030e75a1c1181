#pragma once

#include "uKRVModSelezionaCatalogo.h"

// Chooses an article: hands back its key.
class TKRVModSelezionaArticolo : public TKRVModSelezionaCatalogo
{
    Q_OBJECT

public:
    TKRVModSelezionaArticolo();
};
