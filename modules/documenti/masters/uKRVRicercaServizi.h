#pragma once

#include "uKRVRicercaCatalogo.h"

// Search list of the services.
class TKRVRicercaServizi : public TKRVRicercaCatalogo
{
    Q_OBJECT

public:
    explicit TKRVRicercaServizi(IKRVMain &main);
};
