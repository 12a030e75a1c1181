#include "Q3UtentiRuoli.h"

#include "Q3AdminKit.h"
#include "Q3CambiaPassword.h"
#include "Q3Guards.h"
#include "Q3Messages.h"
#include "Q3ModuloCampi.h"
#include "Q3Ruoli.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum ColonnaUtenti { ColNome, ColNomeCompleto, ColStato, ColRuoli };

QPushButton *Pulsante(const QString &name, const QString &caption)
{
    auto button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

// A caption shows an ampersand of a name as it is, not as an accelerator.
QString Letterale(const QString &text)
{
    QString escaped = text;
    return escaped.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

TQ3UtentiRuoli::TQ3UtentiRuoli(const QSqlDatabase &db, QWidget *parent) : QDialog(parent), m_db(db)
{
    setObjectName(QStringLiteral("Q3UtentiRuoli"));
    setWindowTitle(QStringLiteral("Utenti e ruoli"));
    auto pagine = new QTabWidget;
    pagine->setObjectName(QStringLiteral("tabPagine"));
    pagine->addTab(PaginaUtenti(), QStringLiteral("Utenti"));
    pagine->addTab(PaginaRuoli(), QStringLiteral("Ruoli"));
    auto pulsanti = new QDialogButtonBox;
    pulsanti->setObjectName(QStringLiteral("btnPulsanti"));
    QPushButton *chiudi = pulsanti->addButton(QStringLiteral("Chiudi"), QDialogButtonBox::RejectRole);
    chiudi->setObjectName(QStringLiteral("btnChiudi"));
    connect(pulsanti, &QDialogButtonBox::rejected, this, &TQ3UtentiRuoli::reject);
    auto layout = new QVBoxLayout(this);
    layout->addWidget(pagine);
    layout->addWidget(pulsanti);
    resize(860, 540);
    CaricaUtenti(QString());
    CaricaRuoli(0);
}

QWidget *TQ3UtentiRuoli::PaginaUtenti()
{
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("pagUtenti"));
    m_utenti = new QTreeWidget;
    m_utenti->setObjectName(QStringLiteral("lstUtenti"));
    m_utenti->setRootIsDecorated(false);
    m_utenti->setHeaderLabels({QStringLiteral("Nome utente"), QStringLiteral("Nome completo"), QStringLiteral("Stato"),
                               QStringLiteral("Ruoli")});
    connect(m_utenti, &QTreeWidget::currentItemChanged, this, [this] { MostraUtente(); });
    auto nuovo = Pulsante(QStringLiteral("btnNuovoUtente"), QStringLiteral("&Nuovo utente..."));
    connect(nuovo, &QPushButton::clicked, this, [this] { NuovoUtente(); });
    m_attiva = Pulsante(QStringLiteral("btnAttivaUtente"), QStringLiteral("&Disattiva"));
    connect(m_attiva, &QPushButton::clicked, this, [this] { CambiaAttivo(); });
    m_password = Pulsante(QStringLiteral("btnPasswordUtente"), QStringLiteral("Imposta &password..."));
    connect(m_password, &QPushButton::clicked, this, [this] { ImpostaPassword(); });
    m_ruoliUtente = new QGroupBox(QStringLiteral("Ruoli dell'utente"));
    m_ruoliUtente->setObjectName(QStringLiteral("grpRuoliUtente"));
    new QVBoxLayout(m_ruoliUtente);

    auto comandi = new QVBoxLayout;
    comandi->addWidget(nuovo);
    comandi->addWidget(m_attiva);
    comandi->addWidget(m_password);
    comandi->addWidget(m_ruoliUtente);
    comandi->addStretch();
    auto elenco = new QVBoxLayout;
    elenco->addWidget(Q3Etichetta(QStringLiteral("&Utenti:"), m_utenti));
    elenco->addWidget(m_utenti);
    auto layout = new QHBoxLayout(pagina);
    layout->addLayout(elenco, 1);
    layout->addLayout(comandi);
    return pagina;
}

QWidget *TQ3UtentiRuoli::PaginaRuoli()
{
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("pagRuoli"));
    m_ruoli = new QListWidget;
    m_ruoli->setObjectName(QStringLiteral("lstRuoli"));
    connect(m_ruoli, &QListWidget::currentItemChanged, this, &TQ3UtentiRuoli::RuoloCambiato);
    auto nuovo = Pulsante(QStringLiteral("btnNuovoRuolo"), QStringLiteral("Nuovo &ruolo..."));
    connect(nuovo, &QPushButton::clicked, this, [this] { NuovoRuolo(); });
    m_rinomina = Pulsante(QStringLiteral("btnRinominaRuolo"), QStringLiteral("Rino&mina..."));
    connect(m_rinomina, &QPushButton::clicked, this, [this] { RinominaRuolo(); });
    m_elimina = Pulsante(QStringLiteral("btnEliminaRuolo"), QStringLiteral("&Elimina"));
    connect(m_elimina, &QPushButton::clicked, this, [this] { EliminaRuolo(); });
    m_diritti = new QTreeWidget;
    m_diritti->setObjectName(QStringLiteral("treeDiritti"));
    m_diritti->setHeaderHidden(true);
    connect(m_diritti, &QTreeWidget::itemChanged, this, [this] {
        if (!m_caricamento)
            m_dirittiModificati = true;
    });
    m_salvaDiritti = Pulsante(QStringLiteral("btnSalvaDiritti"), QStringLiteral("&Salva diritti"));
    connect(m_salvaDiritti, &QPushButton::clicked, this, [this] { SalvaDiritti(); });

    auto comandiRuoli = new QHBoxLayout;
    comandiRuoli->addWidget(nuovo);
    comandiRuoli->addWidget(m_rinomina);
    comandiRuoli->addWidget(m_elimina);
    auto ruoli = new QVBoxLayout;
    ruoli->addWidget(Q3Etichetta(QStringLiteral("R&uoli:"), m_ruoli));
    ruoli->addWidget(m_ruoli);
    ruoli->addLayout(comandiRuoli);
    auto diritti = new QVBoxLayout;
    diritti->addWidget(Q3Etichetta(QStringLiteral("Dirit&ti del ruolo:"), m_diritti));
    diritti->addWidget(m_diritti);
    diritti->addWidget(m_salvaDiritti, 0, Qt::AlignRight);
    auto layout = new QHBoxLayout(pagina);
    layout->addLayout(ruoli, 1);
    layout->addLayout(diritti, 1);
    return pagina;
}

QString TQ3UtentiRuoli::UtenteSelezionato() const
{
    QTreeWidgetItem *item = m_utenti->currentItem();
    return item ? item->data(ColNome, Qt::UserRole).toString() : QString();
}

void TQ3UtentiRuoli::CaricaUtenti(const QString &selezionato)
{
    Q3EseguiComando([&] {
        TQ3BusyCursor busy;
        const QList<TQ3Utente> utenti = TQ3Ruoli(m_db).Utenti();
        const QSignalBlocker blocker(m_utenti);
        m_utenti->clear();
        for (const TQ3Utente &utente : utenti) {
            auto item =
                new QTreeWidgetItem(m_utenti, {utente.Nome, utente.NomeCompleto,
                                               utente.Attivo ? QStringLiteral("Attivo") : QStringLiteral("Disattivato"),
                                               utente.Ruoli.join(QStringLiteral(", "))});
            item->setData(ColNome, Qt::UserRole, utente.Nome);
            item->setData(ColStato, Qt::UserRole, utente.Attivo);
            item->setData(ColRuoli, Qt::UserRole, utente.Ruoli);
            if (utente.Nome == selezionato || m_utenti->topLevelItemCount() == 1)
                m_utenti->setCurrentItem(item);
        }
        m_utenti->resizeColumnToContents(ColNome);
    });
    MostraUtente();
}

void TQ3UtentiRuoli::MostraUtente()
{
    QTreeWidgetItem *item = m_utenti->currentItem();
    const bool attivo = item && item->data(ColStato, Qt::UserRole).toBool();
    m_attiva->setEnabled(item);
    m_attiva->setText(!item || attivo ? QStringLiteral("&Disattiva") : QStringLiteral("&Riattiva"));
    m_password->setEnabled(item);
    // A box may be the one whose click is being handled: it goes once the click is done.
    for (QCheckBox *box : m_ruoliUtente->findChildren<QCheckBox *>()) {
        box->hide();
        box->setParent(nullptr);
        box->deleteLater();
    }
    const QStringList assegnati = item ? item->data(ColRuoli, Qt::UserRole).toStringList() : QStringList();
    Q3EseguiComando([&] {
        for (const TQ3Ruolo &ruolo : TQ3Ruoli(m_db).Ruoli()) {
            auto box = new QCheckBox(Letterale(ruolo.Nome));
            box->setObjectName(QStringLiteral("chkRuolo%1").arg(ruolo.Id));
            box->setChecked(assegnati.contains(ruolo.Nome));
            box->setEnabled(item);
            const int id = ruolo.Id;
            connect(box, &QCheckBox::clicked, this, [this, id](bool checked) { RuoloUtenteCliccato(id, checked); });
            m_ruoliUtente->layout()->addWidget(box);
            box->show();
        }
    });
}

void TQ3UtentiRuoli::NuovoUtente()
{
    TQ3ModuloCampi form(QStringLiteral("Q3NuovoUtente"), QStringLiteral("Nuovo utente"), this);
    form.AggiungiCampo(QStringLiteral("txtNomeUtente"), QStringLiteral("&Nome utente:"));
    form.AggiungiCampo(QStringLiteral("txtNomeCompleto"), QStringLiteral("Nome &completo:"));
    form.SetConferma([&] {
        TQ3Ruoli(m_db).NuovoUtente(form.Testo(QStringLiteral("txtNomeUtente")),
                                   form.Testo(QStringLiteral("txtNomeCompleto")));
    });
    if (form.exec() == QDialog::Accepted)
        CaricaUtenti(form.Testo(QStringLiteral("txtNomeUtente")));
}

void TQ3UtentiRuoli::CambiaAttivo()
{
    const QString nome = UtenteSelezionato();
    const bool attivo = m_utenti->currentItem()->data(ColStato, Qt::UserRole).toBool();
    Q3EseguiComando([&] { TQ3Ruoli(m_db).ImpostaAttivo(nome, !attivo); });
    CaricaUtenti(nome);
}

void TQ3UtentiRuoli::ImpostaPassword()
{
    TQ3CambiaPassword dialog(m_db, UtenteSelezionato(), TQ3CambiaPassword::Modo::Reimpostazione, this);
    dialog.exec();
}

void TQ3UtentiRuoli::RuoloUtenteCliccato(int idRuolo, bool assegnato)
{
    const QString nome = UtenteSelezionato();
    Q3EseguiComando([&] {
        TQ3Ruoli ruoli(m_db);
        if (assegnato)
            ruoli.AssegnaRuolo(nome, idRuolo);
        else
            ruoli.RimuoviRuolo(nome, idRuolo);
    });
    CaricaUtenti(nome);
}

int TQ3UtentiRuoli::RuoloSelezionato() const
{
    QListWidgetItem *item = m_ruoli->currentItem();
    return item ? item->data(Qt::UserRole).toInt() : 0;
}

void TQ3UtentiRuoli::CaricaRuoli(int selezionato)
{
    Q3EseguiComando([&] {
        const QList<TQ3Ruolo> ruoli = TQ3Ruoli(m_db).Ruoli();
        const QSignalBlocker blocker(m_ruoli);
        m_ruoli->clear();
        for (const TQ3Ruolo &ruolo : ruoli) {
            auto item = new QListWidgetItem(ruolo.Nome, m_ruoli);
            item->setData(Qt::UserRole, ruolo.Id);
            if (ruolo.Id == selezionato || m_ruoli->count() == 1)
                m_ruoli->setCurrentItem(item);
        }
    });
    MostraDiritti();
}

void TQ3UtentiRuoli::RuoloCambiato(QListWidgetItem *corrente, QListWidgetItem *precedente)
{
    if (corrente && corrente->data(Qt::UserRole).toInt() == m_ruoloDiritti)
        return;
    if (!LasciaDiritti()) {
        const QSignalBlocker blocker(m_ruoli);
        m_ruoli->setCurrentItem(precedente);
        return;
    }
    MostraDiritti();
}

void TQ3UtentiRuoli::MostraDiritti()
{
    QListWidgetItem *ruolo = m_ruoli->currentItem();
    m_ruoloDiritti = RuoloSelezionato();
    m_nomeRuoloDiritti = ruolo ? ruolo->text() : QString();
    m_caricamento = true;
    m_diritti->clear();
    Q3EseguiComando([&] {
        if (!ruolo)
            return;
        TQ3BusyCursor busy;
        TQ3Ruoli ruoli(m_db);
        const QList<int> concessi = ruoli.DirittiRuolo(m_ruoloDiritti);
        for (const TQ3GruppoDiritti &gruppo : ruoli.Catalogo()) {
            auto nodo = new QTreeWidgetItem(m_diritti, {gruppo.Gruppo.isEmpty() ? QStringLiteral("Altri diritti")
                                                                                : gruppo.Gruppo});
            nodo->setFlags(nodo->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate);
            for (const TQ3Diritto &diritto : gruppo.Diritti) {
                auto foglia = new QTreeWidgetItem(nodo, {diritto.Nome});
                foglia->setFlags(foglia->flags() | Qt::ItemIsUserCheckable);
                foglia->setData(0, Qt::UserRole, diritto.Id);
                foglia->setCheckState(0, concessi.contains(diritto.Id) ? Qt::Checked : Qt::Unchecked);
            }
        }
        m_diritti->expandAll();
    });
    m_caricamento = false;
    m_dirittiModificati = false;
    m_diritti->setEnabled(ruolo);
    m_rinomina->setEnabled(ruolo);
    m_elimina->setEnabled(ruolo);
    m_salvaDiritti->setEnabled(ruolo);
}

bool TQ3UtentiRuoli::LasciaDiritti()
{
    if (!m_dirittiModificati)
        return true;
    return Q3SalvaPrimaDiProseguire(
        QStringLiteral("I diritti del ruolo \"%1\" sono stati modificati e non salvati.\n\r"
                       "Salvarli?")
            .arg(m_nomeRuoloDiritti),
        [this] { return SalvaDiritti(); }, [this] { m_dirittiModificati = false; });
}

bool TQ3UtentiRuoli::SalvaDiritti()
{
    QList<int> scelti;
    for (int g = 0; g < m_diritti->topLevelItemCount(); ++g) {
        QTreeWidgetItem *gruppo = m_diritti->topLevelItem(g);
        for (int d = 0; d < gruppo->childCount(); ++d) {
            if (gruppo->child(d)->checkState(0) == Qt::Checked)
                scelti << gruppo->child(d)->data(0, Qt::UserRole).toInt();
        }
    }
    const bool salvati = Q3EseguiComando([&] {
        TQ3BusyCursor busy;
        TQ3Ruoli(m_db).ImpostaDirittiRuolo(m_ruoloDiritti, scelti);
    });
    if (salvati)
        m_dirittiModificati = false;
    return salvati;
}

void TQ3UtentiRuoli::NuovoRuolo()
{
    if (!LasciaDiritti())
        return;
    TQ3ModuloCampi form(QStringLiteral("Q3NuovoRuolo"), QStringLiteral("Nuovo ruolo"), this);
    form.AggiungiCampo(QStringLiteral("txtNomeRuolo"), QStringLiteral("&Nome del ruolo:"));
    int nuovo = RuoloSelezionato();
    form.SetConferma([&] { nuovo = TQ3Ruoli(m_db).NuovoRuolo(form.Testo(QStringLiteral("txtNomeRuolo"))); });
    form.exec();
    CaricaRuoli(nuovo);
    CaricaUtenti(UtenteSelezionato());
}

void TQ3UtentiRuoli::RinominaRuolo()
{
    const int id = RuoloSelezionato();
    TQ3ModuloCampi form(QStringLiteral("Q3RinominaRuolo"), QStringLiteral("Rinomina ruolo"), this);
    form.AggiungiCampo(QStringLiteral("txtNomeRuolo"), QStringLiteral("&Nome del ruolo:"))
        ->setText(m_ruoli->currentItem()->text());
    form.SetConferma([&] { TQ3Ruoli(m_db).RinominaRuolo(id, form.Testo(QStringLiteral("txtNomeRuolo"))); });
    if (form.exec() != QDialog::Accepted)
        return;
    // The rights shown stay as they are, saved or not.
    m_nomeRuoloDiritti = form.Testo(QStringLiteral("txtNomeRuolo"));
    m_ruoli->currentItem()->setText(m_nomeRuoloDiritti);
    CaricaUtenti(UtenteSelezionato());
}

void TQ3UtentiRuoli::EliminaRuolo()
{
    const int id = RuoloSelezionato();
    if (!Q3AskYesNo(QStringLiteral("Eliminare il ruolo \"%1\"?").arg(m_ruoli->currentItem()->text())))
        return;
    if (!Q3EseguiComando([&] { TQ3Ruoli(m_db).EliminaRuolo(id); }))
        return;
    m_dirittiModificati = false;
    CaricaRuoli(0);
    CaricaUtenti(UtenteSelezionato());
}

void TQ3UtentiRuoli::reject()
{
    if (LasciaDiritti())
        QDialog::reject();
}

void Q3ApriUtentiRuoli(const QSqlDatabase &db, QWidget *parent)
{
    TQ3UtentiRuoli window(db, parent);
    window.exec();
}
