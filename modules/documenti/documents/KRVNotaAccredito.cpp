#include "KRVNotaAccredito.h"

TKRVArchivioNoteAccredito::TKRVArchivioNoteAccredito(TQ3Dataset &adsNoteAccredito)
    : TKRVArchivioDocumentoVendita(adsNoteAccredito, {.Chiave = QStringLiteral("IDNOTA_ACCREDITO"),
                                                      .Parametro = QStringLiteral("iDNOTA_ACCREDITO"),
                                                      .Righe = QStringLiteral("NOTE_ACCREDITO_DETT"),
                                                      .ChiaveRiga = QStringLiteral("IDNOTA_ACCREDITO_DETT")})
{}

bool TKRVArchivioNoteAccredito::Leggi(int id, TKRVTestataDocumento &testata, TKRVRigheDocumento &righe)
{
    return LeggiDocumento(id, testata, righe);
}

void TKRVArchivioNoteAccredito::Scrivi(const TKRVTestataDocumento &testata, TKRVRigheDocumento &righe,
                                       const TKRVTotaliDocumento &totali, bool nuova, int &id)
{
    ScriviDocumento(testata, righe, totali, nuova, id);
}
