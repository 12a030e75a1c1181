#pragma once

#include "uKRVInserimentoCampoSingolo.h"

// Editor of the units of measure.
class TKRVInserimentoUM : public TKRVInserimentoCampoSingolo
{
    Q_OBJECT

public:
    explicit TKRVInserimentoUM(IKRVMain &main);
};
