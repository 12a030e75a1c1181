#pragma once

#include "KRVRigheDocumento.h"
#include "Q3Records.h"

#include <QDate>
#include <QString>

#include <optional>

class TQ3Dataset;

// The captions of the recurrence settings: the activities module reads them
// as stored, so they are kept exactly.
inline const QStringList KRVUnitaRicorrenza{QStringLiteral("Giorno"), QStringLiteral("Settimana"),
                                            QStringLiteral("Mese"), QStringLiteral("Anno")};
inline const QStringList KRVDateNuoveFatture{QStringLiteral("Primo giorno del mese"),
                                             QStringLiteral("Il giorno 15 del mese"), QStringLiteral("Il giorno esatto"),
                                             QStringLiteral("Ultimo giorno del mese")};

// How often a recurring invoice is due again.
struct TKRVRicorrenza
{
    bool Abilitato = false;
    int GeneraOgni = 1;
    QString GeneraOgniUM;
    QDate DataInizio;
    QDate DataFine;
    QString DataNuovaFattura;  // the caption of the chosen option, or empty
};

// The header of a sales invoice as the editor holds it. The customer is a
// copy of its data (code to VAT number) taken when it was chosen.
struct TKRVTestataFattura
{
    int Numero = 0;
    QDate Data;
    TCliente Cliente;
    int IdTipoPagamento = 0;
    QString TipoPagamento;
    std::optional<QDate> Scadenza;
    bool Pagato = false;
    bool Notificato = false;
    bool IvaEsente = false;
    QString Note;
    TKRVRicorrenza Ricorrenza;
};

// Reading and writing sales invoices, header and lines, through the header's
// dataset (which stays on the invoice last read or written) and the session
// it works on.
class TKRVArchivioFattureVendita
{
public:
    explicit TKRVArchivioFattureVendita(TQ3Dataset &adsFattVend);

    // Reads the invoice; answers false, changing nothing, when there is none.
    bool Leggi(int id, TKRVTestataFattura &testata, TKRVRigheDocumento &righe);

    // Writes the header (a new one under a fresh key, set into id as soon as
    // it is drawn) and re-creates every line under new keys, in one
    // transaction; raises EQ3Exception, rolled back, on failure.
    void Scrivi(const TKRVTestataFattura &testata, TKRVRigheDocumento &righe, const TKRVTotaliDocumento &totali,
                bool nuova, int &id);

private:
    void ScriviTestata(const TKRVTestataFattura &testata, const TKRVTotaliDocumento &totali, int id);
    void ScriviRighe(TKRVRigheDocumento &righe, int id);

    TQ3Dataset &m_testata;
};

// "True" / "False", as the flag columns hold them.
QString KRVTestoFlag(bool value);
