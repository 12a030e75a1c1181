#pragma once

#include "KRVDdtFattura.h"
#include "KRVDocumentoVendita.h"

#include <QDate>
#include <QString>
#include <QStringList>

// The captions of the recurrence settings: the activities module reads them
// as stored, so they are kept exactly.
inline const QStringList KRVUnitaRicorrenza{QStringLiteral("Giorno"), QStringLiteral("Settimana"),
                                            QStringLiteral("Mese"), QStringLiteral("Anno")};
inline const QStringList KRVDateNuoveFatture{QStringLiteral("Primo giorno del mese"),
                                             QStringLiteral("Il giorno 15 del mese"),
                                             QStringLiteral("Il giorno esatto"),
                                             QStringLiteral("Ultimo giorno del mese")};

// How often a recurring invoice is due again.
struct TKRVRicorrenza
{
    bool Abilitato = false;
    int GeneraOgni = 1;
    QString GeneraOgniUM;
    QDate DataInizio;
    QDate DataFine;
    QString DataNuovaFattura; // the caption of the chosen option, or empty
};

// The header of a sales invoice: the common header, its VAT exemption, its
// recurrence and the delivery notes it was loaded from.
struct TKRVTestataFattura : TKRVTestataDocumento
{
    bool IvaEsente = false;
    TKRVRicorrenza Ricorrenza;
    QList<TKRVDdtFattura> Ddt;
};

// Reading and writing sales invoices (FATT_VEND, FATT_VEND_DETT, FATT_VEND_DDT).
class TKRVArchivioFattureVendita : public TKRVArchivioDocumentoVendita
{
public:
    explicit TKRVArchivioFattureVendita(TQ3Dataset &adsFattVend);

    bool Leggi(int id, TKRVTestataFattura &testata, TKRVRigheDocumento &righe);
    void Scrivi(const TKRVTestataFattura &testata, TKRVRigheDocumento &righe, const TKRVTotaliDocumento &totali,
                bool nuova, int &id);

protected:
    // The store reads and writes only the headers of its own Leggi and Scrivi.
    void LeggiColonneProprie(const TQ3Dataset &dataset, TKRVTestataDocumento &testata) override;
    void ScriviColonneProprie(TQ3Dataset &dataset, const TKRVTestataDocumento &testata) override;
    void LeggiCollegati(const QSqlDatabase &db, int id, TKRVTestataDocumento &testata) override;
    void ScriviCollegati(const QSqlDatabase &db, int id, const TKRVTestataDocumento &testata) override;
};
