#pragma once

#include "KRVEsportazioneFatturePA.h"

#include <QDialog>

// What an export of electronic invoices came to: the counts, where the files
// went, each refused document with what to correct and the files written.
class TKRVRiepilogoFatturePA : public QDialog
{
    Q_OBJECT

public:
    TKRVRiepilogoFatturePA(const TKRVEsportazioneFatturePA &esito, const TKRVDestinazioneFatturePA &destinazione,
                           QWidget *parent = nullptr);
};
