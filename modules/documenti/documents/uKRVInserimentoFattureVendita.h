#pragma once

#include "KRVFatturaVendita.h"
#include "uKRVInserimentoBase.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QList>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>

#include <memory>

class TKRVGrigliaRighe;

// "Inserimento / Modifica fatture di vendita": one sales invoice, its header
// on "Generale", its lines on "Righe fattura", its recurrence on "Fatture
// cicliche", the totals above the pages.
class TKRVInserimentoFattureVendita : public TKRVInserimentoBase
{
    Q_OBJECT

public:
    explicit TKRVInserimentoFattureVendita(TKRVMain &main);
    ~TKRVInserimentoFattureVendita() override;

    TKRVRigheDocumento *Righe() const { return m_righe; }
    TKRVGrigliaRighe *gridRigheFattura() const { return m_griglia; }

    // Recomputes the amounts and the totals, shows them and answers them.
    TKRVTotaliDocumento AggiornaTotaliDocumento();
    void AggiornaStatoControlliFattureCicliche();
    // Turns the invoice just opened into a new one, dated today, to be saved.
    void ImpostaFatturaCiclica();

    // The header as the controls hold it.
    TKRVTestataFattura Testata() const;

protected:
    void ClearFields() override;
    QString ValidationError() override;
    bool ConfermaSalvataggio() override;
    bool LeggiRecord(int id) override;
    void ScriviRecord() override;
    bool ConsentiChiusura() override;

private:
    QWidget *CreaPaginaGenerale();
    QWidget *CreaPaginaRighe();
    QWidget *CreaPaginaFattureCicliche();
    QWidget *CreaTotali();
    void CreaComandi();
    void MostraTestata(const TKRVTestataFattura &testata);
    void MostraCliente(const TCliente &cliente);
    void ImpostaTipoPagamento(int id, const QString &testo);

    void actSelezionaClienteExecute();
    void actSelezionaTipoPagamentoExecute();
    void actInformazioniClienteExecute();
    void chkGeneraFattureCicliche_Click();
    void actInserisciNotaDocumentoExecute();
    void actCaricaDaDdtExecute();
    bool StampaConsentita() const;
    void actStampaExecute();
    void actSalvaPDFExecute();

    std::unique_ptr<TKRVArchivioFattureVendita> m_archivio;
    TKRVRigheDocumento *m_righe;
    TKRVGrigliaRighe *m_griglia;
    QTabWidget *pgcPagine = nullptr;
    QWidget *tsFattureCicliche = nullptr;
    QSpinBox *txtNumero = nullptr;
    QDateEdit *dtpData = nullptr;
    QList<QLabel *> m_cliente;  // code to VAT number
    QLabel *lblTipoPagamento = nullptr;
    int m_idTipoPagamento = 0;
    QCheckBox *chkScadenzaPagamento = nullptr;
    QDateEdit *dtpScadenzaPagamento = nullptr;
    QCheckBox *chkPagato = nullptr;
    QCheckBox *chkNotificata = nullptr;
    QCheckBox *chkIvaEsente = nullptr;
    QPlainTextEdit *txtNote = nullptr;
    QCheckBox *chkGeneraFattureCicliche = nullptr;
    QSpinBox *speGeneraOgni = nullptr;
    QComboBox *cmbGeneraOgniUM = nullptr;
    QDateEdit *dtpDataInizio = nullptr;
    QDateEdit *dtpDataFine = nullptr;
    QGroupBox *grpDataNuoveFatture = nullptr;
    QList<QRadioButton *> m_dataNuoveFatture;
    QLabel *lblTotaleImponibile = nullptr;
    QLabel *lblTotaleImposta = nullptr;
    QLabel *lblTotaleDocumento = nullptr;
};
