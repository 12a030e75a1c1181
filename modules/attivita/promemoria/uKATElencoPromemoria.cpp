#include "uKATElencoPromemoria.h"

#include "KATDiritti.h"
#include "Q3Guards.h"
#include "Q3Messages.h"
#include "uKATInserimentoPromemoria.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLocale>
#include <QVBoxLayout>

namespace {

// The states the filter offers; "Tutti" lets every state through.
const QString StatoTutti = QStringLiteral("Tutti");

QString TestoData(const QDate &data)
{
    return data.isValid() ? QLocale().toString(data, QLocale::ShortFormat) : QString();
}

QString Numero(int numero)
{
    return numero == 0 ? QString() : QString::number(numero);
}

} // namespace

TKATElencoPromemoria::TKATElencoPromemoria(IKATMain &main, QWidget *parent) : QWidget(parent), m_main(main)
{
    setObjectName(QStringLiteral("KATElencoPromemoria"));
    setWindowTitle(QStringLiteral("Promemoria"));
    setAttribute(Qt::WA_DeleteOnClose);

    tBarPromemoria = new QToolBar(QStringLiteral("Promemoria"), this);
    tBarPromemoria->setObjectName(QStringLiteral("tBarPromemoria"));
    tBarPromemoria->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    actAggiornaPromemoria = Azione("actAggiornaPromemoria", QStringLiteral("Aggiorna"), TKATImmagine::Aggiorna,
                                   &TKATElencoPromemoria::actAggiornaExecute);
    actGeneraFattura = Azione("actGeneraFattura", QStringLiteral("Genera fattura"), TKATImmagine::GeneraFattura,
                              &TKATElencoPromemoria::actGeneraFatturaExecute);
    actNuovoPromemoria = Azione("actNuovoPromemoria", QStringLiteral("Nuovo"), TKATImmagine::Nuovo,
                                &TKATElencoPromemoria::actNuovoExecute);
    actModificaPromemoria = Azione("actModificaPromemoria", QStringLiteral("Modifica"), TKATImmagine::Modifica,
                                   &TKATElencoPromemoria::actModificaExecute);
    actSegnaFatto = Azione("actSegnaFatto", QStringLiteral("Segna come fatto"), TKATImmagine::Fatto,
                           &TKATElencoPromemoria::actSegnaFattoExecute);
    actEliminaPromemoria = Azione("actEliminaPromemoria", QStringLiteral("Elimina"), TKATImmagine::Elimina,
                                  &TKATElencoPromemoria::actEliminaExecute);

    const QDate oggi = QDate::currentDate();
    const QDate primo = KATPrimoDaFare(m_main.Sessione());
    auto data = [this](const char *nome, const QString &etichetta, const QDate &valore) {
        auto edit = new QDateEdit(valore, this);
        edit->setObjectName(QString::fromLatin1(nome));
        edit->setAccessibleName(etichetta);
        edit->setCalendarPopup(true);
        connect(edit, &QDateEdit::dateChanged, this, [this] { Q3Guarded([this] { Riempi(); }); });
        return edit;
    };
    // At first every reminder still to do shows, however old, with the next three months.
    txtDal = data("txtDal", QStringLiteral("Dal"), primo.isValid() && primo < oggi ? primo : oggi);
    txtAl = data("txtAl", QStringLiteral("Al"), oggi.addMonths(3));
    cmbStato = new QComboBox(this);
    cmbStato->setObjectName(QStringLiteral("cmbStato"));
    cmbStato->setAccessibleName(QStringLiteral("Stato"));
    cmbStato->addItems({QString::fromUtf8(KATStatoDaFare), QString::fromUtf8(KATStatoFatto), StatoTutti});
    connect(cmbStato, &QComboBox::currentIndexChanged, this, [this] { Q3Guarded([this] { Riempi(); }); });

    auto filtri = new QHBoxLayout;
    for (const auto &[etichetta, campo] : {std::pair<QString, QWidget *>{QStringLiteral("Dal"), txtDal},
                                           {QStringLiteral("Al"), txtAl},
                                           {QStringLiteral("Stato"), cmbStato}}) {
        auto label = new QLabel(etichetta, this);
        label->setBuddy(campo);
        filtri->addWidget(label);
        filtri->addWidget(campo);
    }
    filtri->addStretch();

    m_modello.setHorizontalHeaderLabels({QStringLiteral("Data"), QStringLiteral("Stato"), QStringLiteral("Tipo"),
                                         QStringLiteral("Cliente"), QStringLiteral("Fattura n."),
                                         QStringLiteral("Data fattura"), QStringLiteral("Titolo"),
                                         QStringLiteral("Fattura generata")});
    gridPromemoria = new QTableView(this);
    gridPromemoria->setObjectName(QStringLiteral("gridPromemoria"));
    gridPromemoria->setAccessibleName(QStringLiteral("Promemoria"));
    gridPromemoria->setModel(&m_modello);
    gridPromemoria->setSelectionBehavior(QAbstractItemView::SelectRows);
    gridPromemoria->setSelectionMode(QAbstractItemView::SingleSelection);
    gridPromemoria->setEditTriggers(QAbstractItemView::NoEditTriggers);
    gridPromemoria->verticalHeader()->hide();
    gridPromemoria->horizontalHeader()->setStretchLastSection(true);
    connect(gridPromemoria->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { AggiornaStatoAzioni(); });
    connect(gridPromemoria, &QTableView::doubleClicked, this, [this] {
        Q3Guarded([this] {
            if (actGeneraFattura->isEnabled())
                actGeneraFatturaExecute();
            else if (actModificaPromemoria->isEnabled())
                actModificaExecute();
        });
    });

    lblConteggio = new QLabel(this);
    lblConteggio->setObjectName(QStringLiteral("lblConteggio"));

    auto layout = new QVBoxLayout(this);
    layout->addWidget(tBarPromemoria);
    layout->addLayout(filtri);
    layout->addWidget(gridPromemoria);
    layout->addWidget(lblConteggio);
    resize(900, 450);
    Riempi();
}

QAction *TKATElencoPromemoria::Azione(const char *nome, const QString &caption, TKATImmagine immagine,
                                      void (TKATElencoPromemoria::*handler)())
{
    auto action = new QAction(KATImmagine(immagine), caption, this);
    action->setObjectName(QString::fromLatin1(nome));
    connect(action, &QAction::triggered, this, [this, handler] { Q3Guarded([this, handler] { (this->*handler)(); }); });
    tBarPromemoria->addAction(action);
    addAction(action);
    return action;
}

void TKATElencoPromemoria::Aggiorna()
{
    Riempi();
}

void TKATElencoPromemoria::Riempi()
{
    const int selezionato = Selezionato().Id;
    TKATFiltroPromemoria filtro;
    filtro.Dal = txtDal->date();
    filtro.Al = txtAl->date();
    filtro.Stato = cmbStato->currentText() == StatoTutti ? QString() : cmbStato->currentText();
    m_righe = KATElencoPromemoria(m_main.Sessione(), filtro);
    m_modello.removeRows(0, m_modello.rowCount());
    const QDate oggi = QDate::currentDate();
    int daSelezionare = -1;
    for (const TKATRigaPromemoria &riga : std::as_const(m_righe)) {
        const TKATPromemoria &p = riga.Promemoria;
        QList<QStandardItem *> celle;
        for (const QString &testo : {TestoData(p.Data), p.Stato, p.Tipo, riga.Cliente, Numero(riga.FattNumero),
                                     TestoData(riga.FattData), p.Titolo, Numero(p.FattNumeroGenerata)})
            celle << new QStandardItem(testo);
        // A reminder still to do on or before today stands out.
        if (p.Stato == QLatin1String(KATStatoDaFare) && p.Data <= oggi) {
            for (QStandardItem *cella : std::as_const(celle)) {
                QFont font = cella->font();
                font.setBold(true);
                cella->setFont(font);
                cella->setForeground(QColor(Qt::darkRed));
            }
        }
        if (p.Id == selezionato)
            daSelezionare = m_modello.rowCount();
        m_modello.appendRow(celle);
    }
    if (daSelezionare >= 0)
        gridPromemoria->selectRow(daSelezionare);
    else if (!m_righe.isEmpty())
        gridPromemoria->selectRow(0);
    gridPromemoria->resizeColumnsToContents();
    lblConteggio->setText(m_righe.size() == 1 ? QStringLiteral("1 promemoria")
                                              : QStringLiteral("%1 promemoria").arg(m_righe.size()));
    AggiornaStatoAzioni();
}

TKATPromemoria TKATElencoPromemoria::Selezionato() const
{
    const QModelIndex corrente = gridPromemoria ? gridPromemoria->currentIndex() : QModelIndex();
    if (!corrente.isValid() || corrente.row() >= m_righe.size())
        return {};
    return m_righe.at(corrente.row()).Promemoria;
}

void TKATElencoPromemoria::AggiornaStatoAzioni()
{
    const TKATPromemoria p = Selezionato();
    const bool daFare = p.Id != 0 && p.Stato == QLatin1String(KATStatoDaFare);
    const bool manuale = p.Id != 0 && p.Tipo == QLatin1String(KATTipoManuale);
    actGeneraFattura->setEnabled(daFare && p.Tipo == QLatin1String(KATTipoFatturaCiclica));
    actSegnaFatto->setEnabled(daFare);
    actModificaPromemoria->setEnabled(manuale);
    actEliminaPromemoria->setEnabled(manuale);
}

void TKATElencoPromemoria::actAggiornaExecute()
{
    Riempi();
}

void TKATElencoPromemoria::actGeneraFatturaExecute()
{
    const TKATPromemoria p = Selezionato();
    if (p.Id != 0)
        m_main.GeneraFattura(p.Id);
}

void TKATElencoPromemoria::actNuovoExecute()
{
    if (!m_main.VerificaDiritto(KATDirittoModifica))
        return;
    TKATInserimentoPromemoria dialogo(this);
    dialogo.Imposta(QString(), QDate::currentDate(), QString(), false);
    if (dialogo.exec() != QDialog::Accepted)
        return;
    KATAggiungiManuale(m_main.Sessione(), dialogo.Titolo(), dialogo.Data(), dialogo.Note());
    Riempi();
}

void TKATElencoPromemoria::actModificaExecute()
{
    const TKATPromemoria p = Selezionato();
    if (p.Id == 0 || !m_main.VerificaDiritto(KATDirittoModifica))
        return;
    TKATInserimentoPromemoria dialogo(this);
    dialogo.Imposta(p.Titolo, p.Data, p.Note, p.Stato == QLatin1String(KATStatoFatto));
    if (dialogo.exec() != QDialog::Accepted)
        return;
    KATModificaManuale(m_main.Sessione(), p.Id, dialogo.Titolo(), dialogo.Data(), dialogo.Note(), dialogo.Fatto());
    Riempi();
}

void TKATElencoPromemoria::actSegnaFattoExecute()
{
    ConfermaESalva(QStringLiteral("Segnare il promemoria come fatto?"),
                   [this](int id) { KATSegnaFatto(m_main.Sessione(), id, 0); });
}

void TKATElencoPromemoria::actEliminaExecute()
{
    ConfermaESalva(QStringLiteral("Eliminare il promemoria selezionato?"),
                   [this](int id) { KATEliminaManuale(m_main.Sessione(), id); });
}

void TKATElencoPromemoria::ConfermaESalva(const QString &domanda, const std::function<void(int)> &scrittura)
{
    const TKATPromemoria p = Selezionato();
    if (p.Id == 0 || !m_main.VerificaDiritto(KATDirittoModifica))
        return;
    if (Q3MessageBox(QStringLiteral("Conferma"), domanda, TQ3MsgIcon::Question, TQ3MsgButtons::YesNo)
        != TQ3MsgResult::Yes)
        return;
    scrittura(p.Id);
    Riempi();
}
