#pragma once

#include "uKRVElencoRicerca.h"

#include <QDialog>
#include <QSize>

// The choice handed back by the dialogs whose rows are a key and a text.
struct TKRVVoceSelezionata
{
    int Id = -1;
    QString Text;
};

// A modal selection dialog of a master table: filters, the read-only results
// grid, "OK" and "Annulla". Made once, it is hidden between uses and keeps its
// filters and rows.
//
// A concrete dialog gives its description and its ApriSelezionato; one whose
// search, reset, reload on showing or double click differ overrides
// actCercaExecute, actRipristinaExecute, FormShow or gridRisultatiDblClickCell.
class TKRVModSelezionaBase : public QDialog
{
    Q_OBJECT

public:
    ~TKRVModSelezionaBase() override;

    TKRVGrigliaRisultati *gridRisultati() const { return m_elenco->Griglia(); }

    void CreaGrigliaVuota();
    void AggiornaGriglia(const QString &where);

    // OK only with a chosen row.
    void accept() override;

protected:
    TKRVModSelezionaBase(TKRVElencoInfo info, QSize minimumSize);

    TKRVElencoRicerca *Elenco() const { return m_elenco; }
    QAction *actOK() const { return m_actOK; }
    TKRVVoceSelezionata VoceSelezionata(int textColumn) const;

    // Builds the empty grid; the constructor of the concrete dialog calls it.
    void FormCreate();
    // Every showing: all rows again, unless the member says otherwise.
    virtual void FormShow();

    virtual void actCercaExecute();
    virtual void actRipristinaExecute();
    // Chooses the row, unless the member says otherwise.
    virtual void gridRisultatiDblClickCell();

    void showEvent(QShowEvent *event) override;

private:
    TKRVElencoRicerca *m_elenco;
    QAction *m_actOK;
};
