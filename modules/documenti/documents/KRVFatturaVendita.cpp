#include "KRVFatturaVendita.h"

#include "KRVOptions.h"
#include "Q3Dataset.h"

namespace {

QString Testo(const TQ3Dataset &dataset, const char *campo)
{
    return dataset.FieldValue(QLatin1String(campo)).toString();
}

QVariant Null(QMetaType::Type tipo)
{
    return QVariant(QMetaType(tipo));
}

} // namespace

TKRVArchivioFattureVendita::TKRVArchivioFattureVendita(TQ3Dataset &adsFattVend)
    : TKRVArchivioDocumentoVendita(adsFattVend, {.Chiave = QStringLiteral("IDFATT_VEND"),
                                                 .Parametro = QStringLiteral("IDFATT_VEND"),
                                                 .Righe = QStringLiteral("FATT_VEND_DETT"),
                                                 .ChiaveRiga = QStringLiteral("IDFATT_VEND_DETT")})
{}

bool TKRVArchivioFattureVendita::Leggi(int id, TKRVTestataFattura &testata, TKRVRigheDocumento &righe)
{
    return LeggiDocumento(id, testata, righe);
}

void TKRVArchivioFattureVendita::Scrivi(const TKRVTestataFattura &testata, TKRVRigheDocumento &righe,
                                        const TKRVTotaliDocumento &totali, bool nuova, int &id)
{
    ScriviDocumento(testata, righe, totali, nuova, id);
}

void TKRVArchivioFattureVendita::LeggiColonneProprie(const TQ3Dataset &dataset, TKRVTestataDocumento &documento)
{
    auto &testata = static_cast<TKRVTestataFattura &>(documento);
    TKRVRicorrenza &ricorrenza = testata.Ricorrenza;
    ricorrenza.Abilitato = KRVStrToBool(Testo(dataset, "FC_ABILITATO"));
    if (ricorrenza.Abilitato) {
        ricorrenza.GeneraOgni = dataset.FieldValue(QStringLiteral("FC_GENERA_OGNI")).toInt();
        ricorrenza.GeneraOgniUM = Testo(dataset, "FC_GENERA_OGNI_UM");
        ricorrenza.DataInizio = dataset.FieldValue(QStringLiteral("FC_DATA_INIZIO")).toDate();
        ricorrenza.DataFine = dataset.FieldValue(QStringLiteral("FC_DATA_FINE")).toDate();
        ricorrenza.DataNuovaFattura = Testo(dataset, "FC_DATA_NUOVA_FATTURA");
    }
    testata.IvaEsente = KRVStrToBool(Testo(dataset, "IVA_ESENTE"));
}

void TKRVArchivioFattureVendita::ScriviColonneProprie(TQ3Dataset &d, const TKRVTestataDocumento &documento)
{
    const auto &testata = static_cast<const TKRVTestataFattura &>(documento);
    const auto scrivi = [&d](const char *campo, const QVariant &valore) {
        d.SetFieldValue(QLatin1String(campo), valore);
    };
    const TKRVRicorrenza &ricorrenza = testata.Ricorrenza;
    scrivi("FC_ABILITATO", KRVTestoFlag(ricorrenza.Abilitato));
    if (ricorrenza.Abilitato) {
        scrivi("FC_GENERA_OGNI", ricorrenza.GeneraOgni);
        scrivi("FC_GENERA_OGNI_UM", ricorrenza.GeneraOgniUM);
        scrivi("FC_DATA_INIZIO", KRVDataOppureNull(ricorrenza.DataInizio));
        scrivi("FC_DATA_FINE", KRVDataOppureNull(ricorrenza.DataFine));
        scrivi("FC_DATA_NUOVA_FATTURA", ricorrenza.DataNuovaFattura.isEmpty() ? Null(QMetaType::QString)
                                                                              : QVariant(ricorrenza.DataNuovaFattura));
    } else {
        scrivi("FC_GENERA_OGNI", Null(QMetaType::Int));
        scrivi("FC_GENERA_OGNI_UM", Null(QMetaType::QString));
        scrivi("FC_DATA_INIZIO", Null(QMetaType::QDate));
        scrivi("FC_DATA_FINE", Null(QMetaType::QDate));
        scrivi("FC_DATA_NUOVA_FATTURA", Null(QMetaType::QString));
    }
    scrivi("IVA_ESENTE", KRVTestoFlag(testata.IvaEsente));
}

void TKRVArchivioFattureVendita::LeggiCollegati(const QSqlDatabase &db, int id, TKRVTestataDocumento &testata)
{
    static_cast<TKRVTestataFattura &>(testata).Ddt = KRVDdtDellaFattura(db, id);
}

void TKRVArchivioFattureVendita::ScriviCollegati(const QSqlDatabase &db, int id, const TKRVTestataDocumento &testata)
{
    KRVScriviDdtFattura(db, id, static_cast<const TKRVTestataFattura &>(testata).Ddt);
}
