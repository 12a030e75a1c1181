#pragma once

#include "KRVRigheDocumento.h"
#include "Q3Records.h"

#include <QDate>
#include <QSqlDatabase>
#include <QString>

#include <optional>

class TQ3Dataset;

// The header every sales document has. The customer is a copy of its data
// (code to VAT number) taken when it was chosen.
struct TKRVTestataDocumento
{
    int Numero = 0;
    QDate Data;
    TCliente Cliente;
    int IdTipoPagamento = 0;
    QString TipoPagamento;
    std::optional<QDate> Scadenza;
    bool Pagato = false;
    bool Notificato = false;
    QString Note;
};

// The header's column that keeps a copy of that field of the customer.
QString KRVColonnaCliente(QString TCliente::*campo);

// Where a sales document lives: its header's key (its generator is "GN_" and
// the key), the parameter of the header's dataset, its lines' table and key.
struct TKRVTabelleDocumento
{
    QString Chiave;
    QString Parametro;
    QString Righe;
    QString ChiaveRiga;
};

// Reading and writing one kind of sales document, header and lines, through
// the header's dataset (which stays on the document last read or written) and
// the session it works on. The lines are laid out as the line model says:
// cost and discount are written only where the model has them.
class TKRVArchivioDocumentoVendita
{
public:
    virtual ~TKRVArchivioDocumentoVendita();

protected:
    TKRVArchivioDocumentoVendita(TQ3Dataset &testata, TKRVTabelleDocumento tabelle);

    // Reads the document; answers false, changing nothing, when there is none.
    bool LeggiDocumento(int id, TKRVTestataDocumento &testata, TKRVRigheDocumento &righe);

    // Writes the header (a new one under the key the database gives it, set
    // into id; the key it expects until then) and re-creates every line under
    // new keys, in one transaction; raises EQ3Exception, rolled back, on failure.
    // A document the header's dataset holds no row of (its first save failed)
    // is inserted whatever nuovo says.
    void ScriviDocumento(const TKRVTestataDocumento &testata, TKRVRigheDocumento &righe,
                         const TKRVTotaliDocumento &totali, bool nuovo, int &id);

    // The header columns of this kind of document only.
    virtual void LeggiColonneProprie(const TQ3Dataset &, TKRVTestataDocumento &) {}
    virtual void ScriviColonneProprie(TQ3Dataset &, const TKRVTestataDocumento &) {}
    // The rows of other tables that hang from the document: read once its
    // lines are, written after them in the save's transaction.
    virtual void LeggiCollegati(const QSqlDatabase &, int, TKRVTestataDocumento &) {}
    virtual void ScriviCollegati(const QSqlDatabase &, int, const TKRVTestataDocumento &) {}

private:
    void ScriviTestata(const TKRVTestataDocumento &testata, const TKRVTotaliDocumento &totali);
    void LeggiRighe(int id, TKRVRigheDocumento &righe) const;
    void ScriviRighe(TKRVRigheDocumento &righe, int id) const;

    TQ3Dataset &m_testata;
    TKRVTabelleDocumento m_tabelle;
};

// "True" / "False", as the flag columns hold them.
QString KRVTestoFlag(bool value);
// A date column's value: null for no date.
QVariant KRVDataOppureNull(const QDate &data);
