#pragma once

#include "KRVDocumentoVendita.h"

// Reading and writing credit notes (NOTE_ACCREDITO, NOTE_ACCREDITO_DETT):
// the common header only, lines without cost or discount.
class TKRVArchivioNoteAccredito : public TKRVArchivioDocumentoVendita
{
public:
    explicit TKRVArchivioNoteAccredito(TQ3Dataset &adsNoteAccredito);

    bool Leggi(int id, TKRVTestataDocumento &testata, TKRVRigheDocumento &righe);
    void Scrivi(const TKRVTestataDocumento &testata, TKRVRigheDocumento &righe, const TKRVTotaliDocumento &totali,
                bool nuova, int &id);
};
