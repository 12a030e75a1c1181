#pragma once

#include "KRVEsportazioneFatturePA.h"

#include <QDialog>

class QLineEdit;
class QRadioButton;
class TKRVCartellaFatturaPA;
class TKRVZipFatturePA;

// The module's dialogs that choose where electronic invoices go.
struct TKRVDialoghiFatturePA
{
    TKRVCartellaFatturaPA *Cartella;
    TKRVZipFatturePA *Zip;
};

// "Esportazione fatture elettroniche": which documents of a search list (the
// selected ones or all those found) and where (one file each in a folder, or
// one ZIP file).
class TKRVEsportaFatturePA : public QDialog
{
    Q_OBJECT

public:
    TKRVEsportaFatturePA(int selezionati, int trovati, TKRVDialoghiFatturePA dialoghi, QWidget *parent = nullptr);

    bool SoloSelezionati() const;
    TKRVDestinazioneFatturePA Destinazione() const;

    void accept() override;

private:
    void Sfoglia();

    QRadioButton *rbSelezionati;
    QRadioButton *rbTrovati;
    QRadioButton *rbCartella;
    QRadioButton *rbZip;
    QLineEdit *txtDestinazione;
    TKRVDialoghiFatturePA m_dialoghi;
};

// The command of the sales documents' search lists: asks which documents and
// where, exports them with a progress bar the user may stop, then shows the
// summary. Answers whether any file was written.
bool KRVEsportaFattureElettroniche(QWidget *lista, TKRVDialoghiFatturePA dialoghi, const QSqlDatabase &db,
                                   EKRVDocumentoFatturaPA tipo, const QList<int> &selezionati,
                                   const QList<int> &trovati);
