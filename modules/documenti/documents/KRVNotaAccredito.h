#pragma once

#include "KRVDocumentoVendita.h"
#include "KRVFatturaRiferimento.h"

// The header of a credit note: the common header and the invoice it corrects.
struct TKRVTestataNota : TKRVTestataDocumento
{
    TKRVFatturaRiferimento Fattura;
};

// Reading and writing credit notes (NOTE_ACCREDITO, NOTE_ACCREDITO_DETT):
// the common header and the invoice referred to, lines without cost or discount.
class TKRVArchivioNoteAccredito : public TKRVArchivioDocumentoVendita
{
public:
    explicit TKRVArchivioNoteAccredito(TQ3Dataset &adsNoteAccredito);

    bool Leggi(int id, TKRVTestataNota &testata, TKRVRigheDocumento &righe);
    void Scrivi(const TKRVTestataNota &testata, TKRVRigheDocumento &righe, const TKRVTotaliDocumento &totali,
                bool nuova, int &id);

protected:
    // The store reads and writes only the headers of its own Leggi and Scrivi.
    void LeggiColonneProprie(const TQ3Dataset &dataset, TKRVTestataDocumento &testata) override;
    void ScriviColonneProprie(TQ3Dataset &dataset, const TKRVTestataDocumento &testata) override;
};
