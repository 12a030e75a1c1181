#pragma once

#include "uKRVRicercaBase.h"

#include <QSpinBox>

// "Gestione fatture di vendita": the sales invoices of one year, found by
// customer code, customer name and the text of any of their lines.
class TKRVRicercaFattureVendita : public TKRVRicercaBase
{
    Q_OBJECT

public:
    explicit TKRVRicercaFattureVendita(TKRVMain &main);

    // The clause of the filters as they read now: the year always first.
    QString ClausolaFiltri() const;

protected:
    void RicercaIniziale() override;
    void actCercaExecute() override;
    void actRipristinaExecute() override;
    void actNuovoExecute() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void AggiungiFiltroAnno();
    void AggiungiStampe();
    // The selected invoice's key, or -1 after saying that none is selected.
    int FatturaSelezionata() const;

    QSpinBox *txtAnno;
};
