#pragma once

#include "KATGenerazione.h"
#include "KATScadenze.h"
#include "Q3Connection.h"
#include "Q3Module.h"
#include "uKATElencoPromemoria.h"
#include "uKATServizi.h"

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QToolBar>

#include <memory>
#include <optional>

// The activities module's main object: its connection, the menu "Attività"
// and its toolbar, the window "Promemoria", the reminders kept in step with
// the recurring invoices the sales documents module saves, and the invoice
// generated from a reminder until it is saved.
class TKATMain : public QObject, public IQ3Module, public IKATMain
{
    Q_OBJECT

public:
    explicit TKATMain(QObject *owner);
    ~TKATMain() override;

    // IQ3Module
    QObject *AsObject() override { return this; }
    void Initialize() override;
    int ExecutePkgAction(const QString &actionName, const QVariantList &parameters, int lastIndex) override;
    QList<TQ3AvvisoAccesso> AvvisiAccesso() override;
    void ModuloFinalize() override {}
    void Finalize() override {}

    // IKATMain
    QSqlDatabase Sessione() const override { return m_connessione->Database(); }
    bool VerificaDiritto(const char *diritto) const override;
    void GeneraFattura(int idPromemoria) override;

    QAction *actPromemoria() const { return m_actPromemoria; }
    QMenu *mnAttivita() const { return m_mnAttivita; }
    QToolBar *tBarKATAttivita() const { return m_tBarAttivita; }
    // The window "Promemoria", shown (made on first use) when the user may see it.
    void ApriPromemoria();
    // The window "Promemoria" when it is open, or null.
    TKATElencoPromemoria *ElencoPromemoria() const { return m_elenco; }

private:
    // The sales documents module saved (or deleted) the invoice.
    void FatturaSalvata(int idFattura);
    void Segnala(int idFattura, const TKATScadenze &scadenze);

    std::unique_ptr<QWidget> m_contenitore;
    TQ3Connection *m_connessione = nullptr;
    QAction *m_actPromemoria = nullptr;
    QMenu *m_mnAttivita = nullptr;
    QToolBar *m_tBarAttivita = nullptr;
    QPointer<TKATElencoPromemoria> m_elenco;
    std::optional<TKATGenerazione> m_generazione;
    // The invoices whose settings were reported in this session.
    QSet<int> m_segnalate;
};

// The module's main object, found through the host's registry (null when the
// module is not loaded).
TKATMain *KATMain();
