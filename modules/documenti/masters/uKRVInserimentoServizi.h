#pragma once

#include "uKRVInserimentoCatalogo.h"

// Editor of the services: the shared fields on one panel.
class TKRVInserimentoServizi : public TKRVInserimentoCatalogo
{
    Q_OBJECT

public:
    explicit TKRVInserimentoServizi(IKRVMain &main);
};
