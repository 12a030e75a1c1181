#pragma once

#include "uKRVSalvaFile.h"

// The module's one save dialog for PDF files.
class TKRVSalvaPDF : public TKRVSalvaFile
{
    Q_OBJECT

public:
    explicit TKRVSalvaPDF(QWidget *parent = nullptr);
};

// The save-as-PDF action of an invoice: the module's save dialog, then the
// invoice written to the chosen file; cancelling the dialog ends it silently.
void SalvaFatturaVenditaPDF(TKRVSalvaPDF &dialog, int IdFattVend);
