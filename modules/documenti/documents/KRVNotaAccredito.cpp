#include "KRVNotaAccredito.h"

#include "Q3Dataset.h"

TKRVArchivioNoteAccredito::TKRVArchivioNoteAccredito(TQ3Dataset &adsNoteAccredito)
    : TKRVArchivioDocumentoVendita(adsNoteAccredito, {.Chiave = QStringLiteral("IDNOTA_ACCREDITO"),
                                                      .Parametro = QStringLiteral("iDNOTA_ACCREDITO"),
                                                      .Righe = QStringLiteral("NOTE_ACCREDITO_DETT"),
                                                      .ChiaveRiga = QStringLiteral("IDNOTA_ACCREDITO_DETT")})
{}

bool TKRVArchivioNoteAccredito::Leggi(int id, TKRVTestataNota &testata, TKRVRigheDocumento &righe)
{
    return LeggiDocumento(id, testata, righe);
}

void TKRVArchivioNoteAccredito::Scrivi(const TKRVTestataNota &testata, TKRVRigheDocumento &righe,
                                       const TKRVTotaliDocumento &totali, bool nuova, int &id)
{
    ScriviDocumento(testata, righe, totali, nuova, id);
}

void TKRVArchivioNoteAccredito::LeggiColonneProprie(const TQ3Dataset &dataset, TKRVTestataDocumento &documento)
{
    TKRVFatturaRiferimento &fattura = static_cast<TKRVTestataNota &>(documento).Fattura;
    fattura = {};
    if (dataset.FieldIsNull(QStringLiteral("FATT_DATA")))
        return;
    fattura.IdFattura = dataset.FieldValue(QStringLiteral("FATT_IDFATT_VEND")).toInt();
    fattura.Numero = dataset.FieldValue(QStringLiteral("FATT_NUMERO")).toInt();
    fattura.Data = dataset.FieldValue(QStringLiteral("FATT_DATA")).toDate();
}

void TKRVArchivioNoteAccredito::ScriviColonneProprie(TQ3Dataset &d, const TKRVTestataDocumento &documento)
{
    const TKRVFatturaRiferimento &fattura = static_cast<const TKRVTestataNota &>(documento).Fattura;
    const QVariant interoNullo{QMetaType(QMetaType::Int)};
    d.SetFieldValue(QStringLiteral("FATT_IDFATT_VEND"), fattura.Vuota() ? interoNullo : QVariant(fattura.IdFattura));
    d.SetFieldValue(QStringLiteral("FATT_NUMERO"), fattura.Vuota() ? interoNullo : QVariant(fattura.Numero));
    d.SetFieldValue(QStringLiteral("FATT_DATA"), KRVDataOppureNull(fattura.Data));
}
