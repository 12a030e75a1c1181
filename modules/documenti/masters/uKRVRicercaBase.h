#pragma once

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
    QString EditorAction;           // the main object's action that shows the editor
    int ColonnaDescrizione = 1;     // the column that takes the width left over
    // Delete rule and delete service of a row known by its key.
    bool (*CanDelete)(const QSqlDatabase &db, int id) = nullptr;
    bool (*Delete)(const QSqlDatabase &db, int id, bool ask) = nullptr;
    // Rights asked before opening a row, creating one and deleting one (none when empty).
    QString PermessoApertura{};
    QString PermessoNuovo{};
    QString PermessoEliminazione{};
    QString DeleteRefused{};  // when not the plain "Impossibile eliminare" message
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
