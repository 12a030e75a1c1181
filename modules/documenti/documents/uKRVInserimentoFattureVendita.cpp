#include "uKRVInserimentoFattureVendita.h"

#include "KRVCaricaDaDdt.h"
#include "KRVDeleteRules.h"
#include "KRVLookups.h"
#include "KRVNumbering.h"
#include "KRVPermissions.h"
#include "KRVStampe.h"
#include "Q3Guards.h"
#include "Q3Messages.h"
#include "Q3Registry.h"
#include "Q3Utils.h"
#include "uKRVFormKit.h"
#include "uKRVGrigliaRighe.h"
#include "uKRVImages.h"
#include "uKRVMain.h"
#include "uKRVModSelezionaCliente.h"
#include "uKRVModSelezionaDdtScaricoMulti.h"
#include "uKRVModSelezionaNotaDocumenti.h"
#include "uKRVModSelezionaTipoPagamento.h"
#include "uKRVSalvaPDF.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLocale>
#include <QMenu>
#include <QScopeGuard>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const QString Vuoto = QStringLiteral("...");

TKRVInserimentoInfo InfoFattura()
{
    return {.Caption = QStringLiteral("Inserimento / Modifica fatture di vendita"),
            .MinimumSize = QSize(960, 640),
            .Dataset = QStringLiteral("adsFattVend"),
            .KeyField = QStringLiteral("IDFATT_VEND"),
            .Generator = QStringLiteral("GN_IDFATT_VEND"),
            .SearchAction = QStringLiteral("actRicercaFattureVendita"),
            .RefreshAfterSave = false,
            .RefreshAfterDelete = false,
            .CheckIcon = TQ3MsgIcon::Warning,
            .SaveFailureIcon = TQ3MsgIcon::None,
            .CanDelete = &CanDeleteFatturaVendita,
            .Delete = &DeleteFatturaVendita,
            .DeleteRefused = QStringLiteral("Non è possibile eliminare questa fattura,\n\resistono dei dati correlati!"),
            .PermessoModifica = QStringLiteral("Fatture di vendita (modifica)"),
            .PermessoEliminazione = QStringLiteral("Fatture di vendita (eliminazione)"),
            .IdNuovoRecord = 0};
}

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

// A value label shows the value, "..." when empty, and tells it to screen readers.
void Mostra(QLabel *etichetta, const QString &testo)
{
    etichetta->setText(testo.isEmpty() ? Vuoto : testo);
    etichetta->setAccessibleDescription(etichetta->text());
}

QString Valore(const QLabel *etichetta)
{
    // An empty copy is written as empty text, as the customer had it.
    return etichetta->text() == Vuoto ? QStringLiteral("") : etichetta->text();
}

QDateEdit *CampoData(const QString &nome)
{
    auto data = new QDateEdit;
    data->setObjectName(nome);
    data->setCalendarPopup(true);
    data->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    return data;
}

QCheckBox *Casella(const QString &nome, const QString &caption)
{
    auto casella = new QCheckBox(caption);
    casella->setObjectName(nome);
    return casella;
}

QLabel *Valore(const QString &nome)
{
    auto etichetta = new QLabel(Vuoto);
    etichetta->setObjectName(nome);
    etichetta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return etichetta;
}

QToolButton *Pulsante(QAction *action)
{
    auto pulsante = new QToolButton;
    pulsante->setObjectName(QStringLiteral("cmd") + action->objectName().mid(3));
    pulsante->setDefaultAction(action);
    pulsante->setAccessibleName(action->text());
    return pulsante;
}

} // namespace

TKRVInserimentoFattureVendita::TKRVInserimentoFattureVendita(TKRVMain &main)
    : TKRVInserimentoBase(main, InfoFattura()),
      m_archivio(std::make_unique<TKRVArchivioFattureVendita>(*main.Dataset(QStringLiteral("adsFattVend")))),
      m_righe(new TKRVRigheDocumento(KRVLayoutFattura(), this)),
      m_griglia(new TKRVGrigliaRighe(main, m_righe, QStringLiteral("gridRigheFattura")))
{
    setObjectName(QStringLiteral("KRVInserimentoFattureVendita"));
    CreaComandi();

    auto contenuto = new QWidget;
    auto layout = new QVBoxLayout(contenuto);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(CreaTotali());
    pgcPagine = new QTabWidget;
    pgcPagine->setObjectName(QStringLiteral("pgcPagine"));
    pgcPagine->addTab(CreaPaginaGenerale(), QStringLiteral("Generale"));
    pgcPagine->addTab(CreaPaginaRighe(), QStringLiteral("Righe fattura"));
    tsFattureCicliche = CreaPaginaFattureCicliche();
    pgcPagine->addTab(tsFattureCicliche, QStringLiteral("Fatture cicliche"));
    layout->addWidget(pgcPagine, 1);
    ImpostaContenuto(contenuto);

    // The recurrence is the activities module's business, the delivery notes the warehouse's.
    if (!KRVModuloCaricato(QStringLiteral("Attivita"))) {
        pgcPagine->setTabVisible(pgcPagine->indexOf(tsFattureCicliche), false);
        tsFattureCicliche->setEnabled(false);
    }
    connect(m_griglia, &TKRVGrigliaRighe::Modificata, this, [this](bool ricalcola) {
        SetModified(true);
        if (ricalcola)
            AggiornaTotaliDocumento();
    });
    FormCreate();
}

TKRVInserimentoFattureVendita::~TKRVInserimentoFattureVendita() = default;

void TKRVInserimentoFattureVendita::CreaComandi()
{
    QToolBar *barra = findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    const struct
    {
        const char *Azione;
        const char *Titolo;
        const char *Nota;
    } suggerimenti[] = {
        {"actNuovo", "Nuova fattura", "Crea una nuova\nfattura di vendita."},
        {"actElimina", "Elimina fattura", "Elimina la fattura\ndi vendita."},
        {"actSalva", "Salva", "Salva le modifiche\napportate."},
        {"actChiudi", "Chiudi", "Chiude la maschera."},
    };
    for (const auto &suggerimento : suggerimenti) {
        QAction *action = findChild<QAction *>(QString::fromLatin1(suggerimento.Azione));
        SetRichHint(barra->widgetForAction(action), QString::fromUtf8(suggerimento.Titolo),
                    QString::fromUtf8(suggerimento.Nota));
    }
    QAction *chiudi = findChild<QAction *>(QStringLiteral("actChiudi"));
    QAction *stampa = KRVCreaAzione(this, QStringLiteral("actStampa"), QStringLiteral("Stampa"), KRVImgStampa,
                                    [this] { actStampaExecute(); });
    QAction *pdf = KRVCreaAzione(this, QStringLiteral("actSalvaPDF"), QStringLiteral("Salva in PDF"), KRVImgStampa,
                                 [this] { actSalvaPDFExecute(); });
    QAction *ddt = KRVCreaAzione(this, QStringLiteral("actCaricaDaDdt"), QStringLiteral("Carica da D.d.T."),
                                 KRVImgFatture, [this] { actCaricaDaDdtExecute(); });
    QAction *nota = KRVCreaAzione(this, QStringLiteral("actInserisciNotaDocumento"), QStringLiteral("Inserisci nota"),
                                  KRVImgNuovo, [this] { actInserisciNotaDocumentoExecute(); });
    // The delivery notes are the warehouse module's.
    ddt->setEnabled(KRVModuloCaricato(QStringLiteral("Magazzino")));
    barra->insertAction(chiudi, stampa);
    SetRichHint(barra->widgetForAction(stampa), QStringLiteral("Stampa"), QStringLiteral("Stampa la fattura\ndi vendita."));
    barra->insertAction(chiudi, pdf);
    barra->insertAction(chiudi, ddt);
    auto altro = new QToolButton;
    altro->setObjectName(QStringLiteral("cmdAltro"));
    altro->setText(QStringLiteral("Altro"));
    altro->setPopupMode(QToolButton::InstantPopup);
    altro->addAction(nota);
    barra->insertWidget(chiudi, altro);
    barra->insertSeparator(chiudi);
    // The window's pop-up menu offers the note insertion.
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this,
            [this, nota](const QPoint &pos) { QMenu::exec({nota}, mapToGlobal(pos), nullptr, this); });

    KRVCreaAzione(this, QStringLiteral("actSelezionaCliente"), QStringLiteral("..."), KRVImgClienti,
                  [this] { actSelezionaClienteExecute(); });
    KRVCreaAzione(this, QStringLiteral("actInformazioniCliente"), QStringLiteral("Contatti"), KRVImgClienti,
                  [this] { actInformazioniClienteExecute(); });
    KRVCreaAzione(this, QStringLiteral("actSelezionaTipoPagamento"), QStringLiteral("..."), KRVImgCerca,
                  [this] { actSelezionaTipoPagamentoExecute(); });
}

QWidget *TKRVInserimentoFattureVendita::CreaTotali()
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

QWidget *TKRVInserimentoFattureVendita::CreaPaginaGenerale()
{
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("tsGenerale"));
    auto layout = new QVBoxLayout(pagina);

    txtNumero = new QSpinBox;
    txtNumero->setObjectName(QStringLiteral("txtNumero"));
    txtNumero->setRange(0, 999999999);
    dtpData = CampoData(QStringLiteral("dtpData"));
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
        QLabel *valore = Valore(QString::fromLatin1(campo.Nome));
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
    QToolButton *seleziona = Pulsante(findChild<QAction *>(QStringLiteral("actSelezionaCliente")));
    SetRichHint(seleziona, QStringLiteral("Seleziona cliente"),
                QStringLiteral("Seleziona un cliente\ntra quelli presenti in archivio."));
    QToolButton *contatti = Pulsante(findChild<QAction *>(QStringLiteral("actInformazioniCliente")));
    SetRichHint(contatti, QStringLiteral("Contatti del cliente"),
                QStringLiteral("Visualizza tutti i riferimenti\ntelefonici e web del cliente."));
    pulsanti->addWidget(seleziona);
    pulsanti->addWidget(contatti);
    pulsanti->addStretch(1);
    griglia->addLayout(pulsanti, 0, 4, 5, 1);
    layout->addWidget(cliente);

    auto pagamento = new QGroupBox(QStringLiteral(" Tipo di pagamento "));
    pagamento->setObjectName(QStringLiteral("grpTipoPagamento"));
    auto rigaPagamento = new QHBoxLayout(pagamento);
    lblTipoPagamento = Valore(QStringLiteral("lblTipoPagamento"));
    lblTipoPagamento->setAccessibleName(QStringLiteral("Tipo di pagamento"));
    rigaPagamento->addWidget(lblTipoPagamento, 1);
    rigaPagamento->addWidget(Pulsante(findChild<QAction *>(QStringLiteral("actSelezionaTipoPagamento"))));
    layout->addWidget(pagamento);

    chkScadenzaPagamento = Casella(QStringLiteral("chkScadenzaPagamento"), QStringLiteral("Scadenza pagamento"));
    dtpScadenzaPagamento = CampoData(QStringLiteral("dtpScadenzaPagamento"));
    dtpScadenzaPagamento->setAccessibleName(QStringLiteral("Scadenza pagamento"));
    connect(chkScadenzaPagamento, &QCheckBox::toggled, dtpScadenzaPagamento, &QWidget::setEnabled);
    chkPagato = Casella(QStringLiteral("chkPagato"), QStringLiteral("Pagato"));
    chkNotificata = Casella(QStringLiteral("chkNotificata"), QStringLiteral("Notificata"));
    auto stato = new QHBoxLayout;
    stato->addWidget(chkScadenzaPagamento);
    stato->addWidget(dtpScadenzaPagamento);
    stato->addSpacing(12);
    stato->addWidget(chkPagato);
    stato->addWidget(chkNotificata);
    stato->addStretch(1);
    layout->addLayout(stato);

    auto iva = new QGroupBox(QStringLiteral(" IVA "));
    iva->setObjectName(QStringLiteral("grpIVA"));
    chkIvaEsente = Casella(QStringLiteral("chkIvaEsente"), QStringLiteral("Fattura esente IVA"));
    (new QHBoxLayout(iva))->addWidget(chkIvaEsente);
    connect(chkIvaEsente, &QCheckBox::toggled, this, [this] { Q3Guarded([this] { AggiornaTotaliDocumento(); }); });
    layout->addWidget(iva);

    txtNote = new QPlainTextEdit;
    txtNote->setObjectName(QStringLiteral("txtNote"));
    layout->addWidget(KRVEtichetta(QStringLiteral("Note"), txtNote));
    layout->addWidget(txtNote, 1);

    for (QWidget *campo : std::initializer_list<QWidget *>{txtNumero, dtpData, chkScadenzaPagamento, dtpScadenzaPagamento,
                                                           chkPagato, chkNotificata, chkIvaEsente, txtNote})
        CollegaCampo(campo);
    connect(dtpData, &QDateEdit::dateChanged, this, [this] { DataChanged(); });
    connect(dtpScadenzaPagamento, &QDateEdit::dateChanged, this, [this] { DataChanged(); });
    return pagina;
}

QWidget *TKRVInserimentoFattureVendita::CreaPaginaRighe()
{
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("tsRigheFattura"));
    auto layout = new QVBoxLayout(pagina);
    layout->addWidget(m_griglia->BarraComandi());
    layout->addWidget(m_griglia, 1);
    return pagina;
}

QWidget *TKRVInserimentoFattureVendita::CreaPaginaFattureCicliche()
{
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("tsFattureCicliche"));
    auto layout = new QVBoxLayout(pagina);
    chkGeneraFattureCicliche =
        Casella(QStringLiteral("chkGeneraFattureCicliche"), QStringLiteral("Genera promemoria per fatture cicliche"));
    connect(chkGeneraFattureCicliche, &QCheckBox::clicked, this,
            [this] { Q3Guarded([this] { chkGeneraFattureCicliche_Click(); }); });
    layout->addWidget(chkGeneraFattureCicliche);

    speGeneraOgni = new QSpinBox;
    speGeneraOgni->setObjectName(QStringLiteral("speGeneraOgni"));
    speGeneraOgni->setRange(1, 9999);
    speGeneraOgni->setSingleStep(1);
    cmbGeneraOgniUM = new QComboBox;
    cmbGeneraOgniUM->setObjectName(QStringLiteral("cmbGeneraOgniUM"));
    cmbGeneraOgniUM->setEditable(false);
    cmbGeneraOgniUM->addItems(KRVUnitaRicorrenza);
    cmbGeneraOgniUM->setAccessibleName(QStringLiteral("Unità"));
    dtpDataInizio = CampoData(QStringLiteral("dtpDataInizio"));
    dtpDataFine = CampoData(QStringLiteral("dtpDataFine"));
    auto campi = new QFormLayout;
    auto ogni = new QHBoxLayout;
    ogni->addWidget(speGeneraOgni);
    ogni->addWidget(cmbGeneraOgniUM);
    ogni->addStretch(1);
    campi->addRow(KRVEtichetta(QStringLiteral("Genera ogni"), speGeneraOgni), ogni);
    campi->addRow(KRVEtichetta(QStringLiteral("A partire dalla data"), dtpDataInizio), dtpDataInizio);
    campi->addRow(KRVEtichetta(QStringLiteral("fino alla data"), dtpDataFine), dtpDataFine);
    layout->addLayout(campi);

    grpDataNuoveFatture = new QGroupBox(QStringLiteral("Data delle nuove fatture"));
    grpDataNuoveFatture->setObjectName(QStringLiteral("grpDataNuoveFatture"));
    auto opzioni = new QVBoxLayout(grpDataNuoveFatture);
    const char *nomi[] = {"opzPrimoGiornoMese", "opzGiorno15Mese", "opzGiornoEsatto", "opzUltimoGiornoMese"};
    for (int i = 0; i < KRVDateNuoveFatture.size(); ++i) {
        auto opzione = new QRadioButton(KRVDateNuoveFatture.at(i));
        opzione->setObjectName(QString::fromLatin1(nomi[i]));
        opzioni->addWidget(opzione);
        m_dataNuoveFatture << opzione;
        CollegaCampo(opzione);
    }
    layout->addWidget(grpDataNuoveFatture);
    layout->addStretch(1);

    for (QWidget *campo : std::initializer_list<QWidget *>{chkGeneraFattureCicliche, speGeneraOgni, cmbGeneraOgniUM})
        CollegaCampo(campo);
    connect(dtpDataInizio, &QDateEdit::dateChanged, this, [this] { DataChanged(); });
    connect(dtpDataFine, &QDateEdit::dateChanged, this, [this] { DataChanged(); });
    return pagina;
}

TKRVTotaliDocumento TKRVInserimentoFattureVendita::AggiornaTotaliDocumento()
{
    const TKRVTotaliDocumento totali = ::AggiornaTotaliDocumento(*m_righe, chkIvaEsente->isChecked(), KRVAliquoteArchivio());
    lblTotaleImponibile->setText(FormatCurrency(totali.Imponibile));
    lblTotaleImposta->setText(FormatCurrency(totali.Imposta));
    lblTotaleDocumento->setText(FormatCurrency(totali.Totale()));
    return totali;
}

void TKRVInserimentoFattureVendita::AggiornaStatoControlliFattureCicliche()
{
    const bool abilitato = chkGeneraFattureCicliche->isChecked();
    for (QWidget *campo : std::initializer_list<QWidget *>{speGeneraOgni, cmbGeneraOgniUM, dtpDataInizio, dtpDataFine,
                                                           grpDataNuoveFatture})
        campo->setEnabled(abilitato);
    if (!abilitato)
        return;
    speGeneraOgni->setValue(1);
    cmbGeneraOgniUM->setCurrentIndex(0);
    dtpDataInizio->setDate(dtpData->date());
    dtpDataFine->setDate(dtpData->date());
    m_dataNuoveFatture.first()->setChecked(true);
}

void TKRVInserimentoFattureVendita::chkGeneraFattureCicliche_Click()
{
    SetModified(true);
    AggiornaStatoControlliFattureCicliche();
}

void TKRVInserimentoFattureVendita::ClearFields()
{
    pgcPagine->setCurrentIndex(0);
    const QDate oggi = QDate::currentDate();
    txtNumero->setValue(GetNextNumeroFattVend(oggi.year()));
    dtpData->setDate(oggi);
    MostraCliente(TCliente());
    ImpostaTipoPagamento(0, QString());
    dtpScadenzaPagamento->setDate(oggi);
    chkScadenzaPagamento->setChecked(false);
    dtpScadenzaPagamento->setEnabled(false);
    chkPagato->setChecked(false);
    chkNotificata->setChecked(false);
    txtNote->clear();
    chkIvaEsente->setChecked(false);
    m_righe->Svuota();
    chkGeneraFattureCicliche->setChecked(false);
    AggiornaStatoControlliFattureCicliche();
    AggiornaTotaliDocumento();
}

void TKRVInserimentoFattureVendita::MostraCliente(const TCliente &cliente)
{
    for (int i = 0; i < m_cliente.size(); ++i)
        Mostra(m_cliente.at(i), cliente.*CampiCliente[i].Campo);
}

void TKRVInserimentoFattureVendita::ImpostaTipoPagamento(int id, const QString &testo)
{
    m_idTipoPagamento = id;
    Mostra(lblTipoPagamento, testo);
}

void TKRVInserimentoFattureVendita::MostraTestata(const TKRVTestataFattura &testata)
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
    const TKRVRicorrenza &ricorrenza = testata.Ricorrenza;
    chkGeneraFattureCicliche->setChecked(ricorrenza.Abilitato);
    AggiornaStatoControlliFattureCicliche();
    if (ricorrenza.Abilitato) {
        speGeneraOgni->setValue(ricorrenza.GeneraOgni);
        cmbGeneraOgniUM->setCurrentIndex(cmbGeneraOgniUM->findText(ricorrenza.GeneraOgniUM, Qt::MatchExactly));
        dtpDataInizio->setDate(ricorrenza.DataInizio);
        dtpDataFine->setDate(ricorrenza.DataFine);
        // Exclusive options cannot all be cleared while exclusive.
        for (QRadioButton *opzione : std::as_const(m_dataNuoveFatture)) {
            opzione->setAutoExclusive(false);
            opzione->setChecked(opzione->text() == ricorrenza.DataNuovaFattura);
            opzione->setAutoExclusive(true);
        }
    }
    chkIvaEsente->setChecked(testata.IvaEsente);
    txtNote->setPlainText(testata.Note);
}

TKRVTestataFattura TKRVInserimentoFattureVendita::Testata() const
{
    TKRVTestataFattura testata;
    testata.Numero = txtNumero->value();
    testata.Data = dtpData->date();
    for (int i = 0; i < m_cliente.size(); ++i)
        testata.Cliente.*CampiCliente[i].Campo = Valore(m_cliente.at(i));
    testata.IdTipoPagamento = m_idTipoPagamento;
    testata.TipoPagamento = Valore(lblTipoPagamento);
    testata.Pagato = chkPagato->isChecked();
    testata.Notificato = chkNotificata->isChecked();
    if (chkScadenzaPagamento->isChecked())
        testata.Scadenza = dtpScadenzaPagamento->date();
    TKRVRicorrenza &ricorrenza = testata.Ricorrenza;
    ricorrenza.Abilitato = chkGeneraFattureCicliche->isChecked();
    ricorrenza.GeneraOgni = speGeneraOgni->value();
    ricorrenza.GeneraOgniUM = cmbGeneraOgniUM->currentText();
    ricorrenza.DataInizio = dtpDataInizio->date();
    ricorrenza.DataFine = dtpDataFine->date();
    for (const QRadioButton *opzione : m_dataNuoveFatture) {
        if (opzione->isChecked())
            ricorrenza.DataNuovaFattura = opzione->text();
    }
    testata.IvaEsente = chkIvaEsente->isChecked();
    testata.Note = txtNote->toPlainText();
    return testata;
}

QString TKRVInserimentoFattureVendita::ValidationError()
{
    if (FattVendExists(txtNumero->value(), dtpData->date().year(), IdRecord()))
        return QStringLiteral("Esiste già un documento con questo numero!");
    if (m_cliente.first()->text() == Vuoto)
        return QStringLiteral("Non è stato selezionato un cliente!");
    if (m_idTipoPagamento <= 0)
        return QStringLiteral("Non è stato selezionato un tipo di pagamento!");
    return {};
}

bool TKRVInserimentoFattureVendita::ConfermaSalvataggio()
{
    const QLabel *codiceFiscale = m_cliente.at(7);
    const QLabel *partitaIva = m_cliente.at(8);
    if (codiceFiscale->text() != Vuoto || partitaIva->text() != Vuoto)
        return true;
    return Q3AskYesNo(
        QStringLiteral("Non sono stati indicati nè il codice fiscale, nè la partita IVA,\n\rproseguire comunque?"));
}

bool TKRVInserimentoFattureVendita::LeggiRecord(int id)
{
    TKRVTestataFattura testata;
    if (!m_archivio->Leggi(id, testata, *m_righe))
        return false;
    MostraTestata(testata);
    m_griglia->AdattaAltezzeRighe();
    AggiornaTotaliDocumento();
    return true;
}

void TKRVInserimentoFattureVendita::ScriviRecord()
{
    TQ3BusyCursor busy;
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento();
    int id = IdRecord();
    try {
        m_archivio->Scrivi(Testata(), *m_righe, totali, NewRecord(), id);
    } catch (...) {
        // A new invoice keeps the key it drew, saved or not.
        SetIdRecord(id);
        throw;
    }
    SetIdRecord(id);
    KRVEseguiAzioneModulo(QStringLiteral("Attivita"), QStringLiteral("Nuova fattura ciclica"), {id, 0});
}

bool TKRVInserimentoFattureVendita::ConsentiChiusura()
{
    if (!Modified())
        return true;
    switch (Q3MessageBox(QStringLiteral("Conferma"), QStringLiteral("Salvare le modifiche al record corrente\n\rprima di continuare?"),
                         TQ3MsgIcon::Question, TQ3MsgButtons::YesNoCancel)) {
    case TQ3MsgResult::Yes:
        actSalva()->trigger();
        return true;
    case TQ3MsgResult::No:
        return true;
    default:
        return false;
    }
}

void TKRVInserimentoFattureVendita::ImpostaFatturaCiclica()
{
    Q3Guarded([this] {
        const int numero = txtNumero->value();
        const QDate data = dtpData->date();
        SetNewRecord(true);
        SetIdRecord(0);
        txtNote->setPlainText(txtNote->toPlainText() + QStringLiteral("\n\rFattura ciclica") + QStringLiteral("\n\rRif. Fattura n. ")
                              + QString::number(numero) + QStringLiteral("\n\rdel ")
                              + QLocale().toString(data, QLocale::ShortFormat));
        const QDate oggi = QDate::currentDate();
        txtNumero->setValue(GetNextNumeroFattVend(oggi.year()));
        dtpData->setDate(oggi);
        chkGeneraFattureCicliche->setChecked(false);
        chkPagato->setChecked(false);
        dtpScadenzaPagamento->setDate(oggi);
        chkScadenzaPagamento->setChecked(false);
        AggiornaStatoControlliFattureCicliche();
        SetModified(true);
    });
}

void TKRVInserimentoFattureVendita::actSelezionaClienteExecute()
{
    auto dialog = Main().Selezione<TKRVModSelezionaCliente>(QStringLiteral("actModSelezionaCliente"));
    if (!dialog)
        return;
    const TCliente cliente = GetCliente(dialog->ApriSelezionato());
    if (cliente.IDCLIENTE > 0) {
        MostraCliente(cliente);
        const QString tipoPagamento = cliente.IDTIPO_PAGAMENTO > 0 ? GetTipoPagamento(cliente.IDTIPO_PAGAMENTO) : QString();
        if (!tipoPagamento.isEmpty()
            && (m_idTipoPagamento <= 0
                || Q3AskYesNo(QStringLiteral("Applicare il tipo di pagamento del cliente selezionato?\n\rRispondendo Si "
                                             "verrà sostituito il tipo di pagamento attuale."))))
            ImpostaTipoPagamento(cliente.IDTIPO_PAGAMENTO, tipoPagamento);
    }
    SetModified(true);
}

void TKRVInserimentoFattureVendita::actSelezionaTipoPagamentoExecute()
{
    auto dialog = Main().Selezione<TKRVModSelezionaTipoPagamento>(QStringLiteral("actModSelezionaTipoPagamento"));
    if (!dialog)
        return;
    const TKRVVoceSelezionata voce = dialog->ApriSelezionato();
    if (voce.Id <= 0)
        return;
    ImpostaTipoPagamento(voce.Id, voce.Text);
    SetModified(true);
}

void TKRVInserimentoFattureVendita::actInformazioniClienteExecute()
{
    const QString codice = Valore(m_cliente.first());
    if (codice.isEmpty())
        return;
    const TCliente cliente = GetCliente(codice);
    if (cliente.IDCLIENTE <= 0)
        return;
    const QString a = QStringLiteral("\n\r\n\r");
    Q3MessageBox(QStringLiteral("Contatti del cliente"),
                 QStringLiteral("Cliente: ") + cliente.RAGIONESOCIALE + a + QStringLiteral("Telefono 1: ") + cliente.TELEFONO1
                     + a + QStringLiteral("Telefono 2: ") + cliente.TELEFONO2 + a + QStringLiteral("Telefono 3: ")
                     + cliente.TELEFONO3 + a + QStringLiteral("Fax: ") + cliente.FAX + a + QStringLiteral("e-mail: ")
                     + cliente.EMAIL,
                 TQ3MsgIcon::Information);
}

void TKRVInserimentoFattureVendita::actInserisciNotaDocumentoExecute()
{
    auto dialog = Main().Selezione<TKRVModSelezionaNotaDocumenti>(QStringLiteral("actModSelezionaNotaDocumenti"));
    if (!dialog)
        return;
    txtNote->appendPlainText(GetNotaDocumento(dialog->ApriSelezionato()));
    SetModified(true);
}

void TKRVInserimentoFattureVendita::actCaricaDaDdtExecute()
{
    const QString azione = QStringLiteral("actModSelezionaDdtScaricoMulti");
    Main().Run(azione);
    auto dialog = Main().FormAs<TKRVModSelezionaDdtScaricoMulti>(azione);
    if (!dialog)
        return;
    dialog->actRipristinaExecute();
    // The dialog opens on the delivery notes of the invoice's customer.
    const QString cliente = m_cliente.at(1)->text();
    if (cliente != Vuoto) {
        dialog->SetRagioneSociale(cliente);
        dialog->actCercaExecute();
    }
    if (dialog->exec() != QDialog::Accepted)
        return;
    {
        TQ3BusyCursor busy;
        // Lines read before a failure stay, and count as a change.
        const auto fine = qScopeGuard([this] {
            m_griglia->AdattaAltezzeRighe();
            SetModified(true);
        });
        KRVCaricaDaDdt(Main().ModADOConn()->Database(), dialog->GetSelected(),
                       [this](const QStringList &riga) { m_righe->AccodaRiga(riga); });
    }
    Q3MessageBox(QStringLiteral("Informazioni"), QStringLiteral("Caricamento completato"), TQ3MsgIcon::Information);
}

bool TKRVInserimentoFattureVendita::StampaConsentita() const
{
    // Only what is saved can be printed.
    if (!NewRecord() && !Modified())
        return true;
    Q3ShowWarning(QStringLiteral("Salvare le mofiche prima di stampare!"));
    return false;
}

void TKRVInserimentoFattureVendita::actStampaExecute()
{
    if (StampaConsentita())
        StampaFatturaVendita(IdRecord(), QString(), 1);
}

void TKRVInserimentoFattureVendita::actSalvaPDFExecute()
{
    if (StampaConsentita())
        SalvaFatturaVenditaPDF(IdRecord());
}
