#pragma once

#include "KRVAzioni.h"
#include "KRVStatisticheFatturatoRighe.h"

#include <QDialog>
#include <QSqlDatabase>

class QAction;
class QDateEdit;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QRadioButton;
class QVBoxLayout;
class TKRVCategoriaBox;
class IKRVMain;

// The article or service of a key, as the dialog's group shows it.
struct TKRVVoceTrovata
{
    bool Trovata = false;
    QString Codice;
    QString Descrizione;
};

// The article or service a statistics dialog may restrict its lines to.
struct TKRVVoceStatistica
{
    QString Nome;               // "Articolo": the line kind, the group's caption and names
    TKRVAzione AzioneSelezione; // the main object's action of the selection dialog
    TKRVVoceTrovata (*Cerca)(const QSqlDatabase &db, int id);
};

const TKRVVoceStatistica &KRVVoceArticolo();
const TKRVVoceStatistica &KRVVoceServizio();

// What sets one statistics dialog apart from the others.
struct TKRVStatistica
{
    QString Nome; // the object name
    QString Caption;
    const TKRVVoceStatistica *Voce = nullptr;
    TKRVScritturaSQL Scrittura = TKRVScritturaSQL::Compatta;
    QString CategoryTable;
    QString CategoryKey;
    QString Dataset;
    QString Report;
    QString Titolo; // the title's text before the dates
};

// The print dialogs of turnover by article or service code: a category
// subtree, one article or service, the invoicing period, "Stampa" and
// "Annulla". Kept above the other windows, centred, of a fixed size; printing
// leaves the dialog open.
class TKRVModStatisticheBase : public QDialog
{
    Q_OBJECT

public:
    // Every category, no article or service, from the first of January to today.
    void Ripristina();
    void actStampaExecute();

    // The key of the article or service the lines are restricted to: 0 or
    // less for none (-1 when the key set was not found).
    int IdVoce() const { return m_idVoce; }
    TKRVCategoriaBox *Categorie() const { return txtCategoria; }
    QDate Dal() const;
    QDate Al() const;
    // The report the print runs.
    virtual QString Report() const;

protected:
    TKRVModStatisticheBase(IKRVMain &main, TKRVStatistica statistica);

    // Shows "Tutti", or the record of the key when it exists.
    void SetIdVoce(int id);
    const TKRVStatistica &Statistica() const { return m_statistica; }
    // The module database session, which the dialog hands to the services it calls.
    QSqlDatabase Sessione() const;
    // Where a dialog puts a group of its own, below the period.
    QVBoxLayout *Opzioni() const { return m_opzioni; }
    // The bottom row of buttons; a dialog's own go at its left.
    QHBoxLayout *Pulsanti() const { return m_pulsanti; }
    // A button that runs the action.
    static QPushButton *Pulsante(QAction *azione, const QString &nome);
    // Fixes the size once the dialog's own groups are in, and centres it.
    void FormCreate();

    // The statement over the lines that pass the filter.
    virtual QString Istruzione(const TKRVFiltroRighe &filtro) const;

private:
    void SelezionaVoce();

    IKRVMain &m_main;
    TKRVStatistica m_statistica;
    QRadioButton *optCategoriaTutte;
    QRadioButton *optCategoriaSeleziona;
    TKRVCategoriaBox *txtCategoria;
    QLabel *lblVoce;
    QDateEdit *txtFatturazioneDataDal;
    QDateEdit *txtFatturazioneDataAl;
    QVBoxLayout *m_opzioni;
    QHBoxLayout *m_pulsanti;
    int m_idVoce = 0;
    QString m_codiceVoce;
};
