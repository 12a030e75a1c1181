#include "uKRVInserimentoDocumentoBase.h"

#include "KRVLookups.h"
#include "KRVTesti.h"
#include "Q3Dataset.h"
#include "Q3Guards.h"
#include "Q3Messages.h"
#include "Q3Registry.h"
#include "Q3Ruoli.h"
#include "Q3Users.h"
#include "Q3Utils.h"
#include "uKRVFatturaElettronica.h"
#include "uKRVFormKit.h"
#include "uKRVGrigliaRighe.h"
#include "uKRVImages.h"
#include "uKRVModSelezionaCliente.h"
#include "uKRVModSelezionaTipoPagamento.h"
#include "uKRVServiziFinestre.h"
#include "uKRVSolaLettura.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const QString Vuoto = QStringLiteral("...");

// The customer's data as the nine labels show it, code to VAT number.
const struct
{
    const char *Caption;
    const char *Nome;
    QString TCliente::*Campo;
} CampiCliente[] = {
    {"Codice:", "lblCliCodice", &TCliente::CODICE},
    {"Ragione sociale:", "lblCliRagioneSociale", &TCliente::RAGIONESOCIALE},
    {"Indirizzo:", "lblCliIndirizzo", &TCliente::INDIRIZZO},
    {"Città:", "lblCliCitta", &TCliente::CITTA},
    {"CAP:", "lblCliCAP", &TCliente::CAP},
    {"Prov.:", "lblCliProvincia", &TCliente::PROVINCIA},
    {"Nazione:", "lblCliNazione", &TCliente::NAZIONE},
    {"Codice fiscale:", "lblCliCodiceFiscale", &TCliente::CODICEFISCALE},
    {"Partita IVA:", "lblCliPartitaIVA", &TCliente::PARTITAIVA},
};

} // namespace

void KRVMostraValore(QLabel *etichetta, const QString &testo)
{
    etichetta->setText(testo.isEmpty() ? Vuoto : testo);
    etichetta->setAccessibleDescription(etichetta->text());
}

QLabel *KRVValore(const QString &nome)
{
    auto etichetta = new QLabel(Vuoto);
    etichetta->setObjectName(nome);
    // A customer's data is shown as written, never read as markup.
    etichetta->setTextFormat(Qt::PlainText);
    etichetta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return etichetta;
}

QDateEdit *KRVCampoData(const QString &nome)
{
    auto data = new QDateEdit;
    data->setObjectName(nome);
    data->setCalendarPopup(true);
    data->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    return data;
}

QCheckBox *KRVCasella(const QString &nome, const QString &caption)
{
    auto casella = new QCheckBox(caption);
    casella->setObjectName(nome);
    return casella;
}

QToolButton *KRVPulsante(QAction *action)
{
    auto pulsante = new QToolButton;
    pulsante->setObjectName(QStringLiteral("cmd") + action->objectName().mid(3));
    pulsante->setDefaultAction(action);
    pulsante->setAccessibleName(action->text());
    return pulsante;
}

TKRVInserimentoDocumentoBase::TKRVInserimentoDocumentoBase(IKRVMain &main, TKRVInserimentoInfo info,
                                                           const TKRVLayoutRighe &layout, const QString &nomeGriglia,
                                                           const TKRVSuggerimentiDocumento &suggerimenti)
    : TKRVInserimentoBase(main, std::move(info)), m_righe(new TKRVRigheDocumento(layout, this)),
      m_griglia(new TKRVGrigliaRighe(main, m_righe, nomeGriglia))
{
    QToolBar *barra = findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    const struct
    {
        const char *Azione;
        QString Titolo;
        QString Nota;
    } hint[] = {
        {"actNuovo", suggerimenti.NuovoTitolo, suggerimenti.NuovoNota},
        {"actElimina", suggerimenti.EliminaTitolo, suggerimenti.EliminaNota},
        {"actSalva", QStringLiteral("Salva"), QStringLiteral("Salva le modifiche\napportate.")},
        {"actChiudi", QStringLiteral("Chiudi"), QStringLiteral("Chiude la maschera.")},
    };
    for (const auto &h : hint)
        SetRichHint(barra->widgetForAction(findChild<QAction *>(QString::fromLatin1(h.Azione))), h.Titolo, h.Nota);
    QAction *stampa = KRVCreaAzione(this, QStringLiteral("actStampa"), QStringLiteral("Stampa"), KRVImgStampa, [this] {
        if (StampaConsentita())
            Stampa();
    });
    barra->insertAction(findChild<QAction *>(QStringLiteral("actChiudi")), stampa);
    SetRichHint(barra->widgetForAction(stampa), QStringLiteral("Stampa"), suggerimenti.StampaNota);
    m_actFatturaElettronica = KRVCreaAzione(this, QStringLiteral("actFatturaElettronica"),
                                            QStringLiteral("Fattura elettronica"), KRVImgFatture, [this] {
                                                if (KRVCreaFatturaElettronica(*Main().FolderDialogFatturaPA(),
                                                                              Sessione(), TipoFatturaPA(), IdRecord()))
                                                    AggiornaBlocco(false);
                                            });
    m_actSbloccaDocumento = KRVCreaAzione(this, QStringLiteral("actSbloccaDocumento"), QStringLiteral("Sblocca"),
                                          KRVImgModifica, [this] { actSbloccaDocumentoExecute(); });
    m_actSbloccaDocumento->setEnabled(false);
    QAction *chiudi = findChild<QAction *>(QStringLiteral("actChiudi"));
    barra->insertAction(chiudi, m_actFatturaElettronica);
    barra->insertAction(chiudi, m_actSbloccaDocumento);
    SetRichHint(barra->widgetForAction(m_actFatturaElettronica), QStringLiteral("Fattura elettronica"),
                QStringLiteral("Crea il file XML della\nfattura elettronica."));
    SetRichHint(barra->widgetForAction(m_actSbloccaDocumento), QStringLiteral("Sblocca documento"),
                QStringLiteral("Consente di modificare un documento\ngià emesso (solo amministratori)."));

    KRVCreaAzione(this, QStringLiteral("actSelezionaCliente"), QStringLiteral("..."), KRVImgClienti,
                  [this] { actSelezionaClienteExecute(); });
    KRVCreaAzione(this, QStringLiteral("actSelezionaTipoPagamento"), QStringLiteral("..."), KRVImgCerca,
                  [this] { actSelezionaTipoPagamentoExecute(); });
    connect(m_griglia, &TKRVGrigliaRighe::Modificata, this, [this](bool ricalcola) {
        SetModified(true);
        if (ricalcola)
            AggiornaTotaliDocumento();
    });
}

TKRVInserimentoDocumentoBase::~TKRVInserimentoDocumentoBase() = default;

void TKRVInserimentoDocumentoBase::CreaContenuto(QWidget *generale, const QString &titoloRighe,
                                                 const QString &nomeRighe)
{
    auto contenuto = new QWidget;
    auto layout = new QVBoxLayout(contenuto);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(CreaTotali());
    pgcPagine = new QTabWidget;
    pgcPagine->setObjectName(QStringLiteral("pgcPagine"));
    // What an issued document still allows: reading, printing, producing its file again, leaving.
    m_solaLettura =
        std::make_unique<TKRVSolaLettura>(this, pgcPagine,
                                          QStringList{QStringLiteral("actNuovo"), QStringLiteral("actChiudi"),
                                                      QStringLiteral("actStampa"), QStringLiteral("actSalvaPDF"),
                                                      QStringLiteral("actFatturaElettronica"),
                                                      QStringLiteral("actSbloccaDocumento"),
                                                      QStringLiteral("actInformazioniCliente")});
    pgcPagine->addTab(generale, QStringLiteral("Generale"));
    auto righe = new QWidget;
    righe->setObjectName(nomeRighe);
    auto layoutRighe = new QVBoxLayout(righe);
    layoutRighe->addWidget(m_griglia->BarraComandi());
    layoutRighe->addWidget(m_griglia, 1);
    pgcPagine->addTab(righe, titoloRighe);
    layout->addWidget(pgcPagine, 1);
    ImpostaContenuto(contenuto);
}

QWidget *TKRVInserimentoDocumentoBase::CreaTotali()
{
    auto banda = new QWidget;
    banda->setObjectName(QStringLiteral("pnlTotali"));
    auto layout = new QHBoxLayout(banda);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch(1);
    const auto totale = [&](const QString &nome, const QString &caption) {
        auto valore = new QLabel(FormatCurrency(0));
        valore->setObjectName(nome);
        valore->setFrameShape(QFrame::StyledPanel);
        valore->setMinimumWidth(120);
        valore->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        auto etichetta = new QLabel(caption);
        etichetta->setObjectName(nome + QStringLiteral("Caption"));
        layout->addWidget(etichetta);
        layout->addWidget(valore);
        return valore;
    };
    lblTotaleImponibile = totale(QStringLiteral("lblTotaleImponibile"), QStringLiteral("Totale imponibile"));
    lblTotaleImposta = totale(QStringLiteral("lblTotaleImposta"), QStringLiteral("Totale imposta"));
    lblTotaleDocumento = totale(QStringLiteral("lblTotaleDocumento"), QStringLiteral("Totale documento"));
    QFont grassetto = lblTotaleDocumento->font();
    grassetto.setBold(true);
    lblTotaleDocumento->setFont(grassetto);
    return banda;
}

QWidget *TKRVInserimentoDocumentoBase::CreaPaginaGenerale(const QList<QWidget *> &pulsantiCliente, QWidget *altro)
{
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("tsGenerale"));
    auto layout = new QVBoxLayout(pagina);

    txtNumero = new QSpinBox;
    txtNumero->setObjectName(QStringLiteral("txtNumero"));
    txtNumero->setRange(0, 999999999);
    dtpData = KRVCampoData(QStringLiteral("dtpData"));
    auto testa = new QHBoxLayout;
    testa->addWidget(KRVEtichetta(QStringLiteral("N."), txtNumero));
    testa->addWidget(txtNumero);
    testa->addSpacing(12);
    testa->addWidget(KRVEtichetta(QStringLiteral("Data"), dtpData));
    testa->addWidget(dtpData);
    testa->addStretch(1);
    layout->addLayout(testa);

    auto cliente = new QGroupBox(QStringLiteral(" Cliente "));
    cliente->setObjectName(QStringLiteral("grpCliente"));
    auto griglia = new QGridLayout(cliente);
    int riga = 0;
    for (const auto &campo : CampiCliente) {
        QLabel *valore = KRVValore(QString::fromLatin1(campo.Nome));
        valore->setAccessibleName(QString::fromUtf8(campo.Caption));
        auto caption = new QLabel(QString::fromUtf8(campo.Caption));
        caption->setBuddy(valore);
        griglia->addWidget(caption, riga / 2, (riga % 2) * 2);
        griglia->addWidget(valore, riga / 2, (riga % 2) * 2 + 1);
        m_cliente << valore;
        ++riga;
    }
    griglia->setColumnStretch(1, 1);
    griglia->setColumnStretch(3, 1);
    auto pulsanti = new QVBoxLayout;
    QToolButton *seleziona = KRVPulsante(findChild<QAction *>(QStringLiteral("actSelezionaCliente")));
    SetRichHint(seleziona, QStringLiteral("Seleziona cliente"),
                QStringLiteral("Seleziona un cliente\ntra quelli presenti in archivio."));
    pulsanti->addWidget(seleziona);
    for (QWidget *pulsante : pulsantiCliente)
        pulsanti->addWidget(pulsante);
    pulsanti->addStretch(1);
    griglia->addLayout(pulsanti, 0, 4, 5, 1);
    layout->addWidget(cliente);

    auto pagamento = new QGroupBox(QStringLiteral(" Tipo di pagamento "));
    pagamento->setObjectName(QStringLiteral("grpTipoPagamento"));
    auto rigaPagamento = new QHBoxLayout(pagamento);
    lblTipoPagamento = KRVValore(QStringLiteral("lblTipoPagamento"));
    lblTipoPagamento->setAccessibleName(QStringLiteral("Tipo di pagamento"));
    rigaPagamento->addWidget(lblTipoPagamento, 1);
    rigaPagamento->addWidget(KRVPulsante(findChild<QAction *>(QStringLiteral("actSelezionaTipoPagamento"))));
    layout->addWidget(pagamento);

    chkScadenzaPagamento = KRVCasella(QStringLiteral("chkScadenzaPagamento"), QStringLiteral("Scadenza pagamento"));
    dtpScadenzaPagamento = KRVCampoData(QStringLiteral("dtpScadenzaPagamento"));
    dtpScadenzaPagamento->setAccessibleName(QStringLiteral("Scadenza pagamento"));
    connect(chkScadenzaPagamento, &QCheckBox::toggled, dtpScadenzaPagamento, &QWidget::setEnabled);
    chkPagato = KRVCasella(QStringLiteral("chkPagato"), QStringLiteral("Pagato"));
    chkNotificata = KRVCasella(QStringLiteral("chkNotificata"), QStringLiteral("Notificata"));
    auto stato = new QHBoxLayout;
    stato->addWidget(chkScadenzaPagamento);
    stato->addWidget(dtpScadenzaPagamento);
    stato->addSpacing(12);
    stato->addWidget(chkPagato);
    stato->addWidget(chkNotificata);
    stato->addStretch(1);
    layout->addLayout(stato);
    if (altro)
        layout->addWidget(altro);

    txtNote = new QPlainTextEdit;
    txtNote->setObjectName(QStringLiteral("txtNote"));
    layout->addWidget(KRVEtichetta(QStringLiteral("Note"), txtNote));
    layout->addWidget(txtNote, 1);

    for (QWidget *campo : std::initializer_list<QWidget *>{txtNumero, dtpData, chkScadenzaPagamento,
                                                           dtpScadenzaPagamento, chkPagato, chkNotificata, txtNote})
        CollegaCampo(campo);
    connect(dtpData, &QDateEdit::dateChanged, this, [this] { DataChanged(); });
    connect(dtpScadenzaPagamento, &QDateEdit::dateChanged, this, [this] { DataChanged(); });
    return pagina;
}

TKRVTotaliDocumento TKRVInserimentoDocumentoBase::AggiornaTotaliDocumento()
{
    const TKRVTotaliDocumento totali =
        ::AggiornaTotaliDocumento(*m_righe, IvaEsente(), KRVAliquoteArchivio(Sessione()));
    lblTotaleImponibile->setText(FormatCurrency(totali.Imponibile));
    lblTotaleImposta->setText(FormatCurrency(totali.Imposta));
    lblTotaleDocumento->setText(FormatCurrency(totali.Totale()));
    return totali;
}

void TKRVInserimentoDocumentoBase::ClearFields()
{
    ImpostaBlocco(false);
    pgcPagine->setCurrentIndex(0);
    const QDate oggi = QDate::currentDate();
    txtNumero->setValue(NumeroSuccessivo(oggi.year()));
    dtpData->setDate(oggi);
    MostraCliente(TCliente());
    ImpostaTipoPagamento(0, QString());
    dtpScadenzaPagamento->setDate(oggi);
    chkScadenzaPagamento->setChecked(false);
    dtpScadenzaPagamento->setEnabled(false);
    chkPagato->setChecked(false);
    chkNotificata->setChecked(false);
    txtNote->clear();
    m_righe->Svuota();
    PulisciCampiPropri();
    AggiornaTotaliDocumento();
}

void TKRVInserimentoDocumentoBase::MostraCliente(const TCliente &cliente)
{
    m_datiCliente = cliente;
    for (int i = 0; i < m_cliente.size(); ++i)
        KRVMostraValore(m_cliente.at(i), cliente.*CampiCliente[i].Campo);
}

void TKRVInserimentoDocumentoBase::ImpostaTipoPagamento(int id, const QString &testo)
{
    m_idTipoPagamento = id;
    m_tipoPagamento = testo;
    KRVMostraValore(lblTipoPagamento, testo);
}

QString TKRVInserimentoDocumentoBase::CodiceCliente() const
{
    return m_datiCliente.CODICE;
}

QString TKRVInserimentoDocumentoBase::RagioneSocialeCliente() const
{
    return m_datiCliente.RAGIONESOCIALE;
}

void TKRVInserimentoDocumentoBase::MostraTestata(const TKRVTestataDocumento &testata)
{
    txtNumero->setValue(testata.Numero);
    dtpData->setDate(testata.Data);
    MostraCliente(testata.Cliente);
    ImpostaTipoPagamento(testata.IdTipoPagamento, testata.TipoPagamento);
    chkPagato->setChecked(testata.Pagato);
    chkNotificata->setChecked(testata.Notificato);
    chkScadenzaPagamento->setChecked(testata.Scadenza.has_value());
    dtpScadenzaPagamento->setEnabled(testata.Scadenza.has_value());
    if (testata.Scadenza)
        dtpScadenzaPagamento->setDate(*testata.Scadenza);
    txtNote->setPlainText(NormalizeLineBreaks(testata.Note));
}

void TKRVInserimentoDocumentoBase::LeggiTestata(TKRVTestataDocumento &testata) const
{
    testata.Numero = txtNumero->value();
    testata.Data = dtpData->date();
    // The data as it came, not as the labels show it: a value "..." is a value.
    for (const auto &campo : CampiCliente)
        testata.Cliente.*campo.Campo = m_datiCliente.*campo.Campo;
    testata.IdTipoPagamento = m_idTipoPagamento;
    testata.TipoPagamento = m_tipoPagamento;
    testata.Pagato = chkPagato->isChecked();
    testata.Notificato = chkNotificata->isChecked();
    if (chkScadenzaPagamento->isChecked())
        testata.Scadenza = dtpScadenzaPagamento->date();
    testata.Note = txtNote->toPlainText();
}

void TKRVInserimentoDocumentoBase::DopoLettura()
{
    m_griglia->AdattaAltezzeRighe();
    AggiornaTotaliDocumento();
}

void TKRVInserimentoDocumentoBase::ScriviDocumento(
    const std::function<void(const TKRVTotaliDocumento &, int &)> &scrivi)
{
    TQ3BusyCursor busy;
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento();
    int id = IdRecord();
    try {
        scrivi(totali, id);
    } catch (...) {
        SetIdRecord(id);
        throw;
    }
    SetIdRecord(id);
}

QString TKRVInserimentoDocumentoBase::ValidationError()
{
    const int descrizione = m_righe->Layout().Descrizione;
    for (int r = 0; r < m_righe->Righe(); ++r) {
        const QString problema =
            KRVTestoNonAmmesso(QStringLiteral("Descrizione (riga %1)").arg(r + 1), m_righe->Cella(r, descrizione));
        if (!problema.isEmpty())
            return problema;
    }
    if (NumeroEsistente(txtNumero->value(), dtpData->date().year(), IdRecord()))
        return QStringLiteral("Esiste già un documento con questo numero!");
    if (m_datiCliente.CODICE.isEmpty())
        return QStringLiteral("Non è stato selezionato un cliente!");
    if (m_idTipoPagamento <= 0)
        return QStringLiteral("Non è stato selezionato un tipo di pagamento!");
    return CopiaTroppoLunga();
}

// The document keeps its own copy of the customer's data and of the payment
// type, in columns that may be shorter than the ones it copies.
QString TKRVInserimentoDocumentoBase::CopiaTroppoLunga() const
{
    const QHash<QString, int> lunghezze = KRVLunghezzeColonne(Sessione(), Dataset()->UpdateTable());
    const auto eccede = [&lunghezze](const QString &colonna, const QString &testo) {
        return lunghezze.contains(colonna) && KRVCaratteri(testo) > lunghezze.value(colonna);
    };
    const QString msg = QStringLiteral("Il campo \"%1\"%2 supera i %3 caratteri che il documento può contenere.");
    for (const auto &campo : CampiCliente) {
        const QString colonna = KRVColonnaCliente(campo.Campo);
        if (eccede(colonna, m_datiCliente.*campo.Campo))
            return msg.arg(QString::fromUtf8(campo.Caption).chopped(1), QStringLiteral(" del cliente"))
                .arg(lunghezze.value(colonna));
    }
    const QString tipoPagamento = QStringLiteral("TIPO_PAGAMENTO");
    if (eccede(tipoPagamento, m_tipoPagamento))
        return msg.arg(QStringLiteral("Tipo di pagamento"), QString()).arg(lunghezze.value(tipoPagamento));
    return {};
}

bool TKRVInserimentoDocumentoBase::ConfermaSalvataggio()
{
    if (!m_datiCliente.CODICEFISCALE.isEmpty() || !m_datiCliente.PARTITAIVA.isEmpty())
        return true;
    return Q3AskYesNo(
        QStringLiteral("Non sono stati indicati nè il codice fiscale, nè la partita IVA,\n\rproseguire comunque?"));
}

bool TKRVInserimentoDocumentoBase::ConsentiChiusura()
{
    return ChiediSalvataggioPrimaDiChiudere();
}

void TKRVInserimentoDocumentoBase::actSelezionaClienteExecute()
{
    auto dialog = Main().Selezione<TKRVModSelezionaCliente>(TKRVAzione::ModSelezionaCliente);
    if (!dialog)
        return;
    const TCliente cliente = GetCliente(Sessione(), dialog->ApriSelezionato());
    if (cliente.IDCLIENTE > 0) {
        const bool altroCliente = cliente.CODICE != m_datiCliente.CODICE;
        MostraCliente(cliente);
        if (altroCliente)
            ClienteCambiato();
        const QString tipoPagamento =
            cliente.IDTIPO_PAGAMENTO > 0 ? GetTipoPagamento(Sessione(), cliente.IDTIPO_PAGAMENTO) : QString();
        if (!tipoPagamento.isEmpty()
            && (m_idTipoPagamento <= 0
                || Q3AskYesNo(
                    QStringLiteral("Applicare il tipo di pagamento del cliente selezionato?\n\rRispondendo Si "
                                   "verrà sostituito il tipo di pagamento attuale."))))
            ImpostaTipoPagamento(cliente.IDTIPO_PAGAMENTO, tipoPagamento);
    }
    SetModified(true);
}

void TKRVInserimentoDocumentoBase::actSelezionaTipoPagamentoExecute()
{
    auto dialog = Main().Selezione<TKRVModSelezionaTipoPagamento>(TKRVAzione::ModSelezionaTipoPagamento);
    if (!dialog)
        return;
    const TKRVVoceSelezionata voce = dialog->ApriSelezionato();
    if (voce.Id <= 0)
        return;
    ImpostaTipoPagamento(voce.Id, voce.Text);
    SetModified(true);
}

void TKRVInserimentoDocumentoBase::StatoRecordCambiato()
{
    if (m_actFatturaElettronica)
        m_actFatturaElettronica->setEnabled(HaRigaPropria() && !Modified());
}

void TKRVInserimentoDocumentoBase::DopoApertura()
{
    AggiornaBlocco(true);
}

void TKRVInserimentoDocumentoBase::AggiornaBlocco(bool avvisa)
{
    const TKRVStatoFatturaPA stato = KRVStatoFatturaPA(Sessione(), TipoFatturaPA(), IdRecord());
    ImpostaBlocco(stato.Bloccato());
    if (stato.Bloccato() && avvisa)
        Q3MessageBox(QStringLiteral("Attenzione"), KRVMsgDocumentoEmesso(stato), TQ3MsgIcon::Warning);
}

void TKRVInserimentoDocumentoBase::ImpostaBlocco(bool bloccato)
{
    if (m_solaLettura)
        m_solaLettura->Imposta(bloccato);
    m_actSbloccaDocumento->setEnabled(bloccato && Q3UtenteAmministratore(Sessione(), GetQ3CurrentUserName()));
}

void TKRVInserimentoDocumentoBase::actSbloccaDocumentoExecute()
{
    if (!Q3AskYesNo(QStringLiteral("Il documento è già stato emesso come fattura elettronica.\n\rSbloccarlo per "
                                   "modificarlo? Lo sblocco viene registrato a nome dell'utente.")))
        return;
    KRVSbloccaFatturaPA(Sessione(), TipoFatturaPA(), IdRecord(), GetQ3CurrentUserName());
    ImpostaBlocco(false);
}

bool TKRVInserimentoDocumentoBase::StampaConsentita() const
{
    if (HaRigaPropria() && !Modified())
        return true;
    Q3ShowWarning(QStringLiteral("Salvare le mofiche prima di stampare!"));
    return false;
}
