#pragma once

#include "uKRVRicercaBase.h"

// Search list of the units of measure, filtered by the unit's text.
class TKRVRicercaUM : public TKRVRicercaBase
{
    Q_OBJECT

public:
    explicit TKRVRicercaUM(IKRVMain &main);
};
