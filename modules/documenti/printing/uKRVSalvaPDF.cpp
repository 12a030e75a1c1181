#include "uKRVSalvaPDF.h"

#include "KRVStampe.h"
#include "uKRVMain.h"

TKRVSalvaPDF::TKRVSalvaPDF(QWidget *parent) : QFileDialog(parent)
{
    setObjectName(QStringLiteral("SaveDialogPDF"));
    setWindowTitle(QStringLiteral("Salva come PDF"));
    setNameFilter(QStringLiteral("File PDF (*.pdf)"));
    setDefaultSuffix(QStringLiteral("pdf"));
    setAcceptMode(QFileDialog::AcceptSave);
    // Only a file in an existing folder can be chosen.
    setFileMode(QFileDialog::AnyFile);
    setOption(QFileDialog::DontUseNativeDialog);
    setSizeGripEnabled(true);
}

bool TKRVSalvaPDF::Execute(QString &fileName)
{
    if (!m_lastFileName.isEmpty())
        selectFile(m_lastFileName);
    if (exec() != QDialog::Accepted || selectedFiles().isEmpty())
        return false;
    m_lastFileName = selectedFiles().constFirst();
    fileName = m_lastFileName;
    return true;
}

void SalvaFatturaVenditaPDF(int IdFattVend)
{
    QString fileName;
    if (KRVMain()->SaveDialogPDF()->Execute(fileName))
        StampaFatturaVendita(IdFattVend, fileName, int(TQ3ReportDestination::File));
}
