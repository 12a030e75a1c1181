#pragma once

#include "KRVNotaAccredito.h"
#include "uKRVInserimentoDocumentoBase.h"

#include <QLabel>

#include <memory>

// "Inserimento / Modifica note di accredito": one credit note, its header and
// the invoice it corrects on "Generale", its lines on "Righe documento ", the
// totals above the pages.
class TKRVInserimentoNoteAccredito : public TKRVInserimentoDocumentoBase
{
    Q_OBJECT

public:
    explicit TKRVInserimentoNoteAccredito(IKRVMain &main);
    ~TKRVInserimentoNoteAccredito() override;

    TKRVGrigliaRighe *gridRigheDocumento() const { return Griglia(); }

    // The header as the controls hold it.
    TKRVTestataNota Testata() const;

protected:
    void Stampa() override;
    EKRVDocumentoFatturaPA TipoFatturaPA() const override { return EKRVDocumentoFatturaPA::NotaAccredito; }
    int NumeroSuccessivo(int anno) override;
    bool NumeroEsistente(int numero, int anno, int id) override;
    void PulisciCampiPropri() override;
    void ClienteCambiato() override;
    bool LeggiRecord(int id) override;
    void ScriviRecord() override;

private:
    QWidget *CreaFatturaRiferimento();
    void MostraFatturaRiferimento(const TKRVFatturaRiferimento &fattura);
    void actSelezionaFatturaExecute();
    void actRimuoviFatturaExecute();

    std::unique_ptr<TKRVArchivioNoteAccredito> m_archivio;
    QLabel *lblFattRiferimento = nullptr;
    TKRVFatturaRiferimento m_fattura; // what the label shows
};
