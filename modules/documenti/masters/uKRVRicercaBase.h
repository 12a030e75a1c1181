#pragma once

#include "KRVEntita.h"
#include "uKRVElencoRicerca.h"

#include <QAction>
#include <QSqlDatabase>
#include <QToolBar>
#include <QWidget>

class IKRVMain;

// What a search list states about itself.
struct TKRVRicercaInfo
{
    TKRVElencoInfo Elenco;
    // The table: its editor, delete rules and rights.
    const TKRVEntita *Entita = nullptr;
    int ColonnaDescrizione = 1; // the column that takes the width left over
    // A refused delete shows the table's own refusal, not the plain "Impossibile eliminare".
    bool RifiutoDellaTabella = false;
};

// A search list of a master table: filters, the read-only results grid, and
// "Chiudi", "Modifica", "Nuovo", "Elimina". Closing frees the window.
//
// A concrete list gives its description; a list whose search, reset, first
// load or delete differ from the plain ones overrides actCercaExecute,
// actRipristinaExecute, RicercaIniziale or actEliminaExecute.
class TKRVRicercaBase : public QWidget
{
    Q_OBJECT

public:
    ~TKRVRicercaBase() override;

    TKRVGrigliaRisultati *GridRisultati() const { return m_elenco->Griglia(); }

    void CreaGrigliaVuota();
    void AggiornaGriglia(const QString &where);
    // Shows the selected row in the editor.
    void ApriSelezionato();
    void RidimensionaGriglia();

    static QString MsgDatiCorrelati();

protected:
    TKRVRicercaBase(IKRVMain &main, TKRVRicercaInfo info);

    TKRVElencoRicerca *Elenco() const { return m_elenco; }
    IKRVMain &Main() const { return m_main; }
    // The module database session, which the list hands to the services it calls.
    QSqlDatabase Sessione() const;
    const TKRVRicercaInfo &Info() const { return m_info; }
    const TKRVEntita &Entita() const { return *m_info.Entita; }

    // Sizes the window, builds the empty grid and loads it the member's way;
    // the constructor of the concrete list calls it.
    void FormCreate();
    // The first load: every row, unless the member says otherwise.
    virtual void RicercaIniziale();

    virtual void actCercaExecute();
    virtual void actRipristinaExecute();
    virtual void actEliminaExecute();
    void actModificaExecute();
    virtual void actNuovoExecute();
    void actChiudiExecute();
    void GridRisultatiDblClickCell();

private:
    IKRVMain &m_main;
    TKRVRicercaInfo m_info;
    TKRVElencoRicerca *m_elenco;
    QToolBar *m_barraStandard;
};
