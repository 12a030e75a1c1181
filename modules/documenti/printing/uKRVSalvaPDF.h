#pragma once

#include <QFileDialog>

// The module's one save dialog for PDF files: it asks before replacing a file
// and starts from the name chosen in it last while the module is loaded.
class TKRVSalvaPDF : public QFileDialog
{
    Q_OBJECT

public:
    explicit TKRVSalvaPDF(QWidget *parent = nullptr);

    // Shows the dialog; answers whether a file was chosen, and which.
    bool Execute(QString &fileName);
    QString LastFileName() const { return m_lastFileName; }

private:
    QString m_lastFileName;
};

// The save-as-PDF action of an invoice: the save dialog, then the invoice
// written to the chosen file; cancelling the dialog ends it silently.
void SalvaFatturaVenditaPDF(int IdFattVend);
