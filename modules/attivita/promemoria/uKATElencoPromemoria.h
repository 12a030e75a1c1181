#pragma once

#include "KATPromemoria.h"
#include "uKATImmagini.h"
#include "uKATServizi.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QStandardItemModel>
#include <QTableView>
#include <QToolBar>
#include <QWidget>

#include <functional>

// The window "Promemoria": the reminders of a period in a state, with the
// customer, number and date of their recurring invoice, the due ones
// standing out; a due reminder of an invoice turns into a new invoice
// ("Genera fattura"); reminders of other kinds are added, changed and
// deleted by hand; any can be marked done.
class TKATElencoPromemoria : public QWidget
{
    Q_OBJECT

public:
    explicit TKATElencoPromemoria(IKATMain &main, QWidget *parent = nullptr);

    // Reads the reminders again, keeping the selected one selected.
    void Aggiorna();
    // The reminder of the selected row; null Id when none is selected.
    TKATPromemoria Selezionato() const;
    // The reminders shown, in their order.
    const QList<TKATRigaPromemoria> &Righe() const { return m_righe; }

    // The columns of the grid.
    enum Colonna { Data, Stato, Tipo, Cliente, FattNumero, FattData, Titolo, FattGenerata, Colonne };

private:
    QAction *Azione(const char *nome, const QString &caption, TKATImmagine immagine,
                    void (TKATElencoPromemoria::*handler)());
    void Riempi();
    void AggiornaStatoAzioni();
    void actAggiornaExecute();
    void actGeneraFatturaExecute();
    void actNuovoExecute();
    void actModificaExecute();
    void actSegnaFattoExecute();
    void actEliminaExecute();
    // The selected reminder's change the user confirms in a box titled "Conferma", then the list read again.
    void ConfermaESalva(const QString &domanda, const std::function<void(int)> &scrittura);

    IKATMain &m_main;
    QToolBar *tBarPromemoria = nullptr;
    QAction *actAggiornaPromemoria = nullptr;
    QAction *actGeneraFattura = nullptr;
    QAction *actNuovoPromemoria = nullptr;
    QAction *actModificaPromemoria = nullptr;
    QAction *actSegnaFatto = nullptr;
    QAction *actEliminaPromemoria = nullptr;
    QDateEdit *txtDal = nullptr;
    QDateEdit *txtAl = nullptr;
    QComboBox *cmbStato = nullptr;
    QTableView *gridPromemoria = nullptr;
    QLabel *lblConteggio = nullptr;
    QStandardItemModel m_modello;
    QList<TKATRigaPromemoria> m_righe;
};
