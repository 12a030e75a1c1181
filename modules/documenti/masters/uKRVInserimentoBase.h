#pragma once

#include "KRVEntita.h"
#include "Q3Messages.h"

#include <QAction>
#include <QFormLayout>
#include <QSize>
#include <QSqlDatabase>
#include <QString>
#include <QTabWidget>
#include <QToolBar>
#include <QWidget>

class IKRVMain;
class TQ3Dataset;

// What an editor of one table row states about itself.
struct TKRVInserimentoInfo
{
    QString Caption;
    QSize MinimumSize;
    // The table: its dataset, key, generator, search list, delete rules and rights.
    const TKRVEntita *Entita = nullptr;
    bool RefreshAfterSave = false;
    bool RefreshAfterDelete = true;
    TQ3MsgIcon CheckIcon = TQ3MsgIcon::Warning; // boxes of the save checks
    TQ3MsgIcon SaveFailureIcon = TQ3MsgIcon::Error;
    int IdNuovoRecord = -1; // the key a new record shows until saved
    // A new record whose save failed counts as saved but is in no row: these
    // editors still ask before they drop it; the simple tables ask nothing.
    bool ChiediSeNonMemorizzato = false;
};

// The editor window of a master table: toolbar "Nuovo", "Elimina", "Salva",
// "Chiudi" over the input fields of one row, with the record's key and its
// new and modified flags.
//
// A concrete editor lays out its fields with AggiungiCampo (or wires them with
// CollegaCampo) and provides ClearFields, FillFields, WriteFields and
// ValidationError; a record not deleted by key through the info's services
// overrides CanDeleteRecord and DeleteRecord.
class TKRVInserimentoBase : public QWidget
{
    Q_OBJECT

public:
    ~TKRVInserimentoBase() override;

    int IdRecord() const { return m_idRecord; }
    bool NewRecord() const { return m_newRecord; }
    bool Modified() const { return m_modified; }

    void SetIdRecord(int value);
    void SetNewRecord(bool value);
    void SetModified(bool value);
    void DataChanged();
    // Changes the database does not hold: unsaved edits, or a new record
    // whose save failed, which shows saved but has no row yet.
    bool ModificheDaSalvare() const { return m_modified || (m_senzaRiga && m_info.ChiediSeNonMemorizzato); }
    // Whether what the window holds may be dropped: asks the unsaved-changes
    // question when there is something to lose.
    bool AbbandonaModifiche();

    // A blank new record.
    void NuovoRecord();
    // Shows the row with that key: 0 when shown, -1 when not (the user kept
    // the unsaved changes, or no row has the key).
    int ApriRecord(int id);
    // Checks and writes the record.
    void SalvaRecord();

    QAction *actNuovo() const { return m_actNuovo; }
    QAction *actSalva() const { return m_actSalva; }

    static QString MsgModificheNonSalvate();
    static QString MsgSalvareModifiche();

protected:
    TKRVInserimentoBase(IKRVMain &main, TKRVInserimentoInfo info);

    IKRVMain &Main() const { return m_main; }
    // The module database session, which the editor hands to the services it calls.
    QSqlDatabase Sessione() const;
    // The key a new record of the editor's table is expected to take.
    int ProssimaChiave() const;
    const TKRVInserimentoInfo &Info() const { return m_info; }
    const TKRVEntita &Entita() const { return *m_info.Entita; }
    TQ3Dataset *Dataset() const;

    // Sizes the window and shows a new record; the constructor of the
    // concrete editor calls it once its fields exist.
    void FormCreate();
    // A labelled input in the editor's panel, its changes marking the record modified.
    void AggiungiCampo(const QString &label, QWidget *field);
    // Marks the record modified whenever the input changes.
    void CollegaCampo(QWidget *field);
    // The editor's own layout (pages, groups) in place of the single field
    // panel, taking the window's free height.
    void ImpostaContenuto(QWidget *content);
    // Puts the fields' panel on the first page, of that caption, of pages that
    // then fill the window; the editor adds its other pages.
    QTabWidget *ImpaginaCampi(const QString &firstPage);
    // The input is enabled only while the record is new.
    void BloccaSeSalvato(QWidget *field);
    // Makes the search list search again, when it is open.
    void AggiornaRicerca();

    virtual void ClearFields() = 0;
    // The row's columns into the fields and back, for the plain reading and writing.
    virtual void FillFields(const TQ3Dataset &) {}
    virtual void WriteFields(TQ3Dataset &) {}
    // The message of the first failed save check, or an empty text.
    virtual QString ValidationError() = 0;
    // The last word before writing, once every check passed.
    virtual bool ConfermaSalvataggio() { return true; }
    // Reads the record into the fields; answers false, changing nothing, when it is gone.
    virtual bool LeggiRecord(int id);
    // Writes the record in one transaction; raises on failure, rolled back.
    virtual void ScriviRecord();

    // Whether the record has a row of its own: not new, and not a new one whose
    // save failed, which goes by the key it expected (maybe another
    // workstation's row by then). Only such a record is deleted by its key.
    bool HaRigaPropria() const { return !m_newRecord && !m_senzaRiga; }

    virtual bool CanDeleteRecord();
    // Deletes the record; answers false when it stays. A record without a row
    // of its own deletes nothing.
    virtual bool DeleteRecord();
    // Whether the window may close now.
    virtual bool ConsentiChiusura();
    // The closing question of the editors that offer to save first: Yes
    // saves and closes, No closes, Cancel keeps the window open.
    bool ChiediSalvataggioPrimaDiChiudere();
    // Runs after every save, whatever its outcome: by default the search list
    // searches again when the editor says so.
    virtual void DopoSalvataggio();
    virtual void RidimensionaForm() {}
    // Runs whenever the record's new or modified flag is set.
    virtual void StatoRecordCambiato() {}
    // Runs once a stored record was opened and shown.
    virtual void DopoApertura() {}

    void actNuovoExecute();
    void actEliminaExecute();
    void actSalvaExecute();
    void actChiudiExecute();

    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    IKRVMain &m_main;
    TKRVInserimentoInfo m_info;
    QFormLayout *m_campi;
    QList<QWidget *> m_bloccati;
    QAction *m_actNuovo;
    QAction *m_actSalva;
    int m_idRecord = -1;
    bool m_newRecord = true;
    bool m_modified = false;
    // A new record whose save failed: it shows saved, but no row is its own.
    bool m_senzaRiga = false;
};
