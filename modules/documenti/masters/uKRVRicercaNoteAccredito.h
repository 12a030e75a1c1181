#pragma once

#include "uKRVRicercaDocumentiVendita.h"

// "Ricerca note di accredito": the credit notes of one year, found by
// customer code and customer name.
class TKRVRicercaNoteAccredito : public TKRVRicercaDocumentiVendita
{
    Q_OBJECT

public:
    explicit TKRVRicercaNoteAccredito(IKRVMain &main);
};
