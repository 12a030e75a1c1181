#pragma once

#include "KRVFatturaVendita.h"
#include "uKRVInserimentoDocumentoBase.h"

#include <QComboBox>
#include <QGroupBox>
#include <QRadioButton>

#include <memory>

// "Inserimento / Modifica fatture di vendita": one sales invoice, its header
// on "Generale" with its VAT exemption, its lines on "Righe fattura", its
// recurrence on "Fatture cicliche", the totals above the pages.
class TKRVInserimentoFattureVendita : public TKRVInserimentoDocumentoBase
{
    Q_OBJECT

public:
    explicit TKRVInserimentoFattureVendita(IKRVMain &main);
    ~TKRVInserimentoFattureVendita() override;

    TKRVGrigliaRighe *gridRigheFattura() const { return Griglia(); }

    void AggiornaStatoControlliFattureCicliche();
    // Turns the invoice just opened into a new one, dated today, to be saved.
    void ImpostaFatturaCiclica();

    // The header as the controls hold it.
    TKRVTestataFattura Testata() const;

protected:
    void Stampa() override;
    EKRVDocumentoFatturaPA TipoFatturaPA() const override { return EKRVDocumentoFatturaPA::Fattura; }
    int NumeroSuccessivo(int anno) override;
    bool NumeroEsistente(int numero, int anno, int id) override;
    bool IvaEsente() const override;
    void PulisciCampiPropri() override;
    bool LeggiRecord(int id) override;
    void ScriviRecord() override;

private:
    QWidget *CreaPaginaFattureCicliche();
    void CreaComandi();
    void MostraFattura(const TKRVTestataFattura &testata);

    void actInformazioniClienteExecute();
    void chkGeneraFattureCicliche_Click();
    void actInserisciNotaDocumentoExecute();
    void actCaricaDaDdtExecute();

    std::unique_ptr<TKRVArchivioFattureVendita> m_archivio;
    QWidget *tsFattureCicliche = nullptr;
    QCheckBox *chkIvaEsente = nullptr;
    QCheckBox *chkGeneraFattureCicliche = nullptr;
    QSpinBox *speGeneraOgni = nullptr;
    QComboBox *cmbGeneraOgniUM = nullptr;
    QDateEdit *dtpDataInizio = nullptr;
    QDateEdit *dtpDataFine = nullptr;
    QGroupBox *grpDataNuoveFatture = nullptr;
    QList<QRadioButton *> m_dataNuoveFatture;
    QString m_dataNuovaFatturaLetta; // the rule as stored, kept while no option is chosen
    QList<TKRVDdtFattura> m_ddt;     // the delivery notes the invoice was loaded from
};
