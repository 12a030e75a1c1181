#pragma once

#include "KRVDocumentoVendita.h"
#include "KRVEmissioneFatturaPA.h"
#include "uKRVInserimentoBase.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QList>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QToolButton>

#include <functional>
#include <memory>

class TKRVGrigliaRighe;
class TKRVSolaLettura;

// The hints of a sales document's own commands.
struct TKRVSuggerimentiDocumento
{
    QString NuovoTitolo;
    QString NuovoNota;
    QString EliminaTitolo;
    QString EliminaNota;
    QString StampaNota;
};

// The editor of one sales document: the totals above the pages, the page
// "Generale" with number, date, the customer's copy, the payment type, its
// due date and flags and the note, and the page of the lines. The concrete
// editor adds its own fields, pages and commands, and reads and writes its
// document through its store.
class TKRVInserimentoDocumentoBase : public TKRVInserimentoBase
{
    Q_OBJECT

public:
    ~TKRVInserimentoDocumentoBase() override;

    TKRVRigheDocumento *Righe() const { return m_righe; }

    // Recomputes the amounts and the totals, shows them and answers them.
    TKRVTotaliDocumento AggiornaTotaliDocumento();

protected:
    TKRVInserimentoDocumentoBase(IKRVMain &main, TKRVInserimentoInfo info, const TKRVLayoutRighe &layout,
                                 const QString &nomeGriglia, const TKRVSuggerimentiDocumento &suggerimenti);

    TKRVGrigliaRighe *Griglia() const { return m_griglia; }

    // The page "Generale": the customer group gets the extra buttons, the
    // extra group stands above the note.
    QWidget *CreaPaginaGenerale(const QList<QWidget *> &pulsantiCliente, QWidget *altro);
    // The totals, then the pages: "Generale" and the lines' page.
    void CreaContenuto(QWidget *generale, const QString &titoloRighe, const QString &nomeRighe);

    // The document's own side of the shared steps.
    virtual int NumeroSuccessivo(int anno) = 0;
    virtual bool NumeroEsistente(int numero, int anno, int id) = 0;
    virtual bool IvaEsente() const { return false; }
    virtual void PulisciCampiPropri() {}
    // The user chose a customer other than the one the document had.
    virtual void ClienteCambiato() {}
    // Prints the saved document.
    virtual void Stampa() = 0;
    // The kind of document its electronic invoice is produced from.
    virtual EKRVDocumentoFatturaPA TipoFatturaPA() const = 0;
    // Only a stored, unchanged document prints; otherwise says so.
    bool StampaConsentita() const;

    void MostraTestata(const TKRVTestataDocumento &testata);
    void LeggiTestata(TKRVTestataDocumento &testata) const;
    // Once the document is read: row heights and totals.
    void DopoLettura();
    // Writes through the store with the totals recomputed; the key drawn for
    // a new document stays, saved or not.
    void ScriviDocumento(const std::function<void(const TKRVTotaliDocumento &, int &)> &scrivi);
    // The customer's code and business name ("" for none).
    QString CodiceCliente() const;
    QString RagioneSocialeCliente() const;

    void ClearFields() override;
    QString ValidationError() override;
    bool ConfermaSalvataggio() override;
    bool ConsentiChiusura() override;
    // The electronic invoice is produced only from a stored, unchanged document.
    void StatoRecordCambiato() override;
    // An issued document opens read-only, saying so.
    void DopoApertura() override;

    QTabWidget *pgcPagine = nullptr;
    QSpinBox *txtNumero = nullptr;
    QDateEdit *dtpData = nullptr;
    QCheckBox *chkScadenzaPagamento = nullptr;
    QDateEdit *dtpScadenzaPagamento = nullptr;
    QCheckBox *chkPagato = nullptr;
    QCheckBox *chkNotificata = nullptr;
    QPlainTextEdit *txtNote = nullptr;

private:
    QWidget *CreaTotali();
    // Read-only while the document's electronic invoice stands; with avvisa,
    // the user is told why.
    void AggiornaBlocco(bool avvisa);
    void ImpostaBlocco(bool bloccato);
    void actSbloccaDocumentoExecute();
    void MostraCliente(const TCliente &cliente);
    void ImpostaTipoPagamento(int id, const QString &testo);
    void actSelezionaClienteExecute();
    void actSelezionaTipoPagamentoExecute();
    // The refusal of a copied text longer than the document's column, or empty.
    QString CopiaTroppoLunga() const;

    TKRVRigheDocumento *m_righe;
    TKRVGrigliaRighe *m_griglia;
    QList<QLabel *> m_cliente; // code to VAT number
    TCliente m_datiCliente;    // what they show
    QLabel *lblTipoPagamento = nullptr;
    QString m_tipoPagamento;
    int m_idTipoPagamento = 0;
    QLabel *lblTotaleImponibile = nullptr;
    QLabel *lblTotaleImposta = nullptr;
    QLabel *lblTotaleDocumento = nullptr;
    QAction *m_actFatturaElettronica = nullptr;
    QAction *m_actSbloccaDocumento = nullptr;
    std::unique_ptr<TKRVSolaLettura> m_solaLettura;
};

// The inputs of a document editor.
QDateEdit *KRVCampoData(const QString &nome);
QCheckBox *KRVCasella(const QString &nome, const QString &caption);
// A tool button showing the action, named "cmd" and the action's name.
QToolButton *KRVPulsante(QAction *action);
// A read-only value of the document, shown as written: "..." when empty.
QLabel *KRVValore(const QString &nome);
// Shows the value, "..." when empty, and tells it to screen readers.
void KRVMostraValore(QLabel *etichetta, const QString &testo);
