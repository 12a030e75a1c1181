#include "uKRVSalvaPDF.h"

#include "KRVStampe.h"
#include "uKRVMain.h"

TKRVSalvaPDF::TKRVSalvaPDF(QWidget *parent)
    : TKRVSalvaFile(QStringLiteral("SaveDialogPDF"), QStringLiteral("Salva come PDF"), QStringLiteral("File PDF (*.pdf)"),
                    QStringLiteral("pdf"), parent)
{
}

void SalvaFatturaVenditaPDF(int IdFattVend)
{
    QString fileName;
    if (KRVMain()->SaveDialogPDF()->Execute(fileName))
        StampaFatturaVendita(IdFattVend, fileName, int(TQ3ReportDestination::File));
}
