#pragma once

#include "uKRVRicercaDocumentiVendita.h"

// "Gestione fatture di vendita": the sales invoices of one year, found by
// customer code, customer name and the text of any of their lines.
class TKRVRicercaFattureVendita : public TKRVRicercaDocumentiVendita
{
    Q_OBJECT

public:
    explicit TKRVRicercaFattureVendita(IKRVMain &main);

private:
    void AggiungiStampe();
    // The selected invoice's key, or -1 after saying that none is selected.
    int FatturaSelezionata() const;
};
