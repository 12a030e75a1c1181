#pragma once

#include "Q3Utils.h"
#include "uKRVModStampaAnno.h"

#include <QRadioButton>

// "Stampa riepilogo fatture": the year, and which invoices by paid and by due state.
class TKRVModStampaRiepilogoFatture : public TKRVModStampaAnno
{
    Q_OBJECT

public:
    TKRVModStampaRiepilogoFatture();

    // The paid choice: cbTrue paid, cbFalse to be paid, cbNull all.
    TCustomBoolean Pagato() const;
    // The due choice: cbTrue overdue, cbFalse falling due, cbNull all.
    TCustomBoolean Scadenza() const;

private:
    QRadioButton *opzFatturePagate;
    QRadioButton *opzFattureDaPagare;
    QRadioButton *opzFatturePagatoTutte;
    QRadioButton *opzFattureScadenzaInScadenza;
    QRadioButton *opzFattureScadenzaScadute;
    QRadioButton *opzFattureScadenzaTutte;
};
