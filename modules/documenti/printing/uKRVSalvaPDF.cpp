#include "uKRVSalvaPDF.h"

#include "KRVStampe.h"

TKRVSalvaPDF::TKRVSalvaPDF(QWidget *parent)
    : TKRVSalvaFile(QStringLiteral("SaveDialogPDF"), QStringLiteral("Salva come PDF"),
                    QStringLiteral("File PDF (*.pdf)"), QStringLiteral("pdf"), parent)
{}

void SalvaFatturaVenditaPDF(TKRVSalvaPDF &dialog, int IdFattVend)
{
    QString fileName;
    if (dialog.Execute(fileName))
        StampaFatturaVendita(IdFattVend, fileName, int(TQ3ReportDestination::File));
}
