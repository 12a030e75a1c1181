#include "uKRVModStatisticheBase.h"

#include "KRVLookups.h"
#include "Q3Guards.h"
#include "Q3Messages.h"
#include "uKRVCategoriaBox.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVModSelezionaCatalogo.h"
#include "uKRVServiziFinestre.h"

#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

namespace {

QRadioButton *Opzione(const QString &nome, const QString &caption)
{
    auto opzione = new QRadioButton(caption);
    opzione->setObjectName(nome);
    return opzione;
}

QDateEdit *Data(const QString &nome)
{
    auto data = new QDateEdit;
    data->setObjectName(nome);
    data->setCalendarPopup(true);
    data->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    return data;
}

QGroupBox *Gruppo(const QString &nome, const QString &caption, QLayout *layout)
{
    auto gruppo = new QGroupBox(caption);
    gruppo->setObjectName(nome);
    gruppo->setLayout(layout);
    return gruppo;
}

// A button of a group, its click under the failure guard.
template <typename Handler>
QPushButton *Comando(const QString &nome, const QString &caption, QWidget *owner, Handler handler)
{
    auto comando = new QPushButton(caption);
    comando->setObjectName(nome);
    comando->setAutoDefault(false);
    QObject::connect(comando, &QPushButton::clicked, owner, [handler] { Q3Guarded(handler); });
    return comando;
}

} // namespace

const TKRVVoceStatistica &KRVVoceArticolo()
{
    static const TKRVVoceStatistica articolo{QStringLiteral("Articolo"), TKRVAzione::ModSelezionaArticolo,
                                             [](const QSqlDatabase &db, int id) -> TKRVVoceTrovata {
                                                 const TArticolo trovato = GetArticolo(db, id);
                                                 return {trovato.IDANA_MAGA > 0, trovato.CODICE, trovato.DESCRIZIONE};
                                             }};
    return articolo;
}

const TKRVVoceStatistica &KRVVoceServizio()
{
    static const TKRVVoceStatistica servizio{QStringLiteral("Servizio"), TKRVAzione::ModSelezionaServizio,
                                             [](const QSqlDatabase &db, int id) -> TKRVVoceTrovata {
                                                 const TServizio trovato = GetServizio(db, id);
                                                 return {trovato.IDSERVIZIO > 0, trovato.CODICE, trovato.DESCRIZIONE};
                                             }};
    return servizio;
}

QSqlDatabase TKRVModStatisticheBase::Sessione() const
{
    return m_main.Sessione();
}

TKRVModStatisticheBase::TKRVModStatisticheBase(IKRVMain &main, TKRVStatistica statistica)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint | Qt::MSWindowsFixedSizeDialogHint), m_main(main),
      m_statistica(std::move(statistica)),
      optCategoriaTutte(Opzione(QStringLiteral("optCategoriaTutte"), QStringLiteral("Tutte"))),
      optCategoriaSeleziona(Opzione(QStringLiteral("optCategoriaSeleziona"), QStringLiteral("Seleziona"))),
      txtCategoria(
          new TKRVCategoriaBox(QStringLiteral("txtCategoria"), {.Table = m_statistica.CategoryTable,
                                                                .KeyColumn = m_statistica.CategoryKey,
                                                                .OrderBy = QStringLiteral("ORDER BY UPPER(CATEGORIA)"),
                                                                .FirstEntry = QStringLiteral("Tutte le categorie"),
                                                                .UnderFirstEntry = true})),
      lblVoce(new QLabel(QStringLiteral("..."))),
      txtFatturazioneDataDal(Data(QStringLiteral("txtFatturazioneDataDal"))),
      txtFatturazioneDataAl(Data(QStringLiteral("txtFatturazioneDataAl"))), m_opzioni(new QVBoxLayout),
      m_pulsanti(new QHBoxLayout)
{
    setObjectName(m_statistica.Nome);
    setWindowTitle(m_statistica.Caption);
    setModal(true);

    auto categoria = new QGridLayout;
    categoria->addWidget(optCategoriaTutte, 0, 0);
    categoria->addWidget(optCategoriaSeleziona, 0, 1);
    categoria->addWidget(KRVEtichetta(QStringLiteral("Categoria"), txtCategoria), 1, 0);
    categoria->addWidget(txtCategoria, 1, 1, 1, 2);
    categoria->setColumnStretch(2, 1);
    connect(optCategoriaSeleziona, &QRadioButton::toggled, txtCategoria, &QWidget::setEnabled);

    const QString voce = m_statistica.Voce->Nome;
    lblVoce->setObjectName(QStringLiteral("lbl") + voce);
    auto scelta = new QHBoxLayout;
    scelta->addWidget(lblVoce, 1);
    scelta->addWidget(Comando(QStringLiteral("cmdSeleziona") + voce, QStringLiteral("Seleziona..."), this,
                              [this] { SelezionaVoce(); }));
    scelta->addWidget(
        Comando(QStringLiteral("cmdAnnulla") + voce, QStringLiteral("Annulla"), this, [this] { SetIdVoce(0); }));

    auto date = new QHBoxLayout;
    date->addWidget(KRVEtichetta(QStringLiteral("Dal"), txtFatturazioneDataDal));
    date->addWidget(txtFatturazioneDataDal);
    date->addSpacing(12);
    date->addWidget(KRVEtichetta(QStringLiteral("Al"), txtFatturazioneDataAl));
    date->addWidget(txtFatturazioneDataAl);
    date->addStretch(1);

    QAction *actStampa = KRVCreaAzione(this, QStringLiteral("actStampa"), QStringLiteral("Stampa"), KRVImgStampa,
                                       [this] { actStampaExecute(); });
    QPushButton *cmdStampa = Pulsante(actStampa, QStringLiteral("cmdStampa"));
    cmdStampa->setDefault(true);
    auto cmdAnnulla = new QPushButton(QStringLiteral("Annulla"));
    cmdAnnulla->setObjectName(QStringLiteral("cmdAnnulla"));
    cmdAnnulla->setAutoDefault(false);
    connect(cmdAnnulla, &QPushButton::clicked, this, &QDialog::reject);
    m_pulsanti->addStretch(1);
    m_pulsanti->addWidget(cmdStampa);
    m_pulsanti->addWidget(cmdAnnulla);

    auto layout = new QVBoxLayout(this);
    layout->addWidget(Gruppo(QStringLiteral("grpCategoria"), QStringLiteral(" Categoria "), categoria));
    layout->addWidget(Gruppo(QStringLiteral("grp") + voce, QLatin1Char(' ') + voce + QLatin1Char(' '), scelta));
    layout->addWidget(Gruppo(QStringLiteral("grpData"), QStringLiteral(" Intervallo di fatturazione  "), date));
    layout->addLayout(m_opzioni);
    layout->addStretch(1);
    layout->addLayout(m_pulsanti);
}

QPushButton *TKRVModStatisticheBase::Pulsante(QAction *azione, const QString &nome)
{
    auto pulsante = new QPushButton(azione->icon(), azione->text());
    pulsante->setObjectName(nome);
    pulsante->setAutoDefault(false);
    connect(pulsante, &QPushButton::clicked, azione, &QAction::trigger);
    return pulsante;
}

void TKRVModStatisticheBase::FormCreate()
{
    setFixedSize(sizeHint().expandedTo(QSize(460, 0)));
    if (QScreen *screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
}

QDate TKRVModStatisticheBase::Dal() const
{
    return txtFatturazioneDataDal->date();
}

QDate TKRVModStatisticheBase::Al() const
{
    return txtFatturazioneDataAl->date();
}

void TKRVModStatisticheBase::Ripristina()
{
    optCategoriaTutte->setChecked(true);
    // A tree that cannot be read is said, and the rest of the reset goes on:
    // the dialog still serves for every category.
    Q3Guarded([this] { txtCategoria->CaricaCategorie(); });
    txtCategoria->setEnabled(false);
    SetIdVoce(0);
    const QDate oggi = QDate::currentDate();
    txtFatturazioneDataDal->setDate(QDate(oggi.year(), 1, 1));
    txtFatturazioneDataAl->setDate(oggi);
}

void TKRVModStatisticheBase::SetIdVoce(int id)
{
    m_idVoce = id;
    m_codiceVoce.clear();
    lblVoce->setText(QStringLiteral("Tutti"));
    if (id <= 0)
        return;
    const TKRVVoceTrovata trovata = m_statistica.Voce->Cerca(Sessione(), id);
    if (!trovata.Trovata) {
        m_idVoce = -1;
        return;
    }
    m_codiceVoce = trovata.Codice;
    lblVoce->setText(QLatin1Char('[') + trovata.Codice + QStringLiteral("] ") + trovata.Descrizione);
}

void TKRVModStatisticheBase::SelezionaVoce()
{
    if (auto dialog = m_main.Selezione<TKRVModSelezionaCatalogo>(m_statistica.Voce->AzioneSelezione))
        SetIdVoce(dialog->ApriSelezionato());
}

void TKRVModStatisticheBase::actStampaExecute()
{
    TKRVFiltroRighe filtro;
    filtro.TipoRiga = m_statistica.Voce->Nome;
    if (optCategoriaSeleziona->isChecked()) {
        if (txtCategoria->currentIndex() < 0) {
            Q3MessageBox(QStringLiteral("Attenzione"), QStringLiteral("Non è stata selezionata alcuna categoria!"),
                         TQ3MsgIcon::Warning);
            return;
        }
        filtro.Categorie = txtCategoria->CategorieSelezionate();
    }
    if (m_idVoce > 0)
        filtro.Codice = m_codiceVoce;
    if (!KRVStampaStatistica(m_statistica.Dataset, Istruzione(filtro), Report(),
                             KRVTitoloStatistica(m_statistica.Titolo, Dal(), Al())))
        Q3MessageBox(QStringLiteral("Informazioni"), QStringLiteral("Nessun dato da stampare."),
                     TQ3MsgIcon::Information);
}

QString TKRVModStatisticheBase::Istruzione(const TKRVFiltroRighe &filtro) const
{
    return KRVSQLFatturatoRighe(KRVWhereRighe(filtro, m_statistica.Scrittura), Dal(), Al(), m_statistica.Scrittura);
}

QString TKRVModStatisticheBase::Report() const
{
    return m_statistica.Report;
}
