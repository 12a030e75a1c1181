#include "uKRVInserimentoFattureVendita.h"

#include "KRVStampe.h"
#include "uKRVSalvaPDF.h"

#include "KRVCaricaDaDdt.h"
#include "KRVDeleteRules.h"
#include "KRVLookups.h"
#include "KRVNumbering.h"
#include "KRVPermissions.h"
#include "KRVSession.h"
#include "Q3Guards.h"
#include "Q3Messages.h"
#include "Q3Registry.h"
#include "Q3Utils.h"
#include "uKRVFormKit.h"
#include "uKRVGrigliaRighe.h"
#include "uKRVImages.h"
#include "uKRVModSelezionaDdtScaricoMulti.h"
#include "uKRVModSelezionaNotaDocumenti.h"
#include "uKRVServiziFinestre.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLocale>
#include <QMenu>
#include <QScopeGuard>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

TKRVInserimentoInfo InfoFattura()
{
    return {.Caption = QStringLiteral("Inserimento / Modifica fatture di vendita"),
            .MinimumSize = QSize(960, 640),
            .Entita = &KRVEntitaFattureVendita(),
            .RefreshAfterSave = false,
            .RefreshAfterDelete = false,
            .CheckIcon = TQ3MsgIcon::Warning,
            .SaveFailureIcon = TQ3MsgIcon::None,
            .IdNuovoRecord = 0,
            .ChiediSeNonMemorizzato = true};
}

} // namespace

TKRVInserimentoFattureVendita::TKRVInserimentoFattureVendita(IKRVMain &main)
    : TKRVInserimentoDocumentoBase(main, InfoFattura(), KRVLayoutFattura(), QStringLiteral("gridRigheFattura"),
                                   {.NuovoTitolo = QStringLiteral("Nuova fattura"),
                                    .NuovoNota = QStringLiteral("Crea una nuova\nfattura di vendita."),
                                    .EliminaTitolo = QStringLiteral("Elimina fattura"),
                                    .EliminaNota = QStringLiteral("Elimina la fattura\ndi vendita."),
                                    .StampaNota = QStringLiteral("Stampa la fattura\ndi vendita.")}),
      m_archivio(std::make_unique<TKRVArchivioFattureVendita>(*main.Dataset(QStringLiteral("adsFattVend"))))
{
    setObjectName(QStringLiteral("KRVInserimentoFattureVendita"));
    CreaComandi();

    auto contatti = KRVPulsante(findChild<QAction *>(QStringLiteral("actInformazioniCliente")));
    SetRichHint(contatti, QStringLiteral("Contatti del cliente"),
                QStringLiteral("Visualizza tutti i riferimenti\ntelefonici e web del cliente."));
    auto iva = new QGroupBox(QStringLiteral(" IVA "));
    iva->setObjectName(QStringLiteral("grpIVA"));
    chkIvaEsente = KRVCasella(QStringLiteral("chkIvaEsente"), QStringLiteral("Fattura esente IVA"));
    (new QHBoxLayout(iva))->addWidget(chkIvaEsente);
    connect(chkIvaEsente, &QCheckBox::toggled, this, [this] { Q3Guarded([this] { AggiornaTotaliDocumento(); }); });
    CollegaCampo(chkIvaEsente);
    CreaContenuto(CreaPaginaGenerale({contatti}, iva), QStringLiteral("Righe fattura"),
                  QStringLiteral("tsRigheFattura"));
    tsFattureCicliche = CreaPaginaFattureCicliche();
    pgcPagine->addTab(tsFattureCicliche, QStringLiteral("Fatture cicliche"));

    // The recurrence is the activities module's business, the delivery notes the warehouse's.
    if (!KRVModuloCaricato(QStringLiteral("Attivita"))) {
        pgcPagine->setTabVisible(pgcPagine->indexOf(tsFattureCicliche), false);
        tsFattureCicliche->setEnabled(false);
    }
    FormCreate();
}

TKRVInserimentoFattureVendita::~TKRVInserimentoFattureVendita() = default;

void TKRVInserimentoFattureVendita::CreaComandi()
{
    QToolBar *barra = findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    QAction *chiudi = findChild<QAction *>(QStringLiteral("actChiudi"));
    QAction *pdf =
        KRVCreaAzione(this, QStringLiteral("actSalvaPDF"), QStringLiteral("Salva in PDF"), KRVImgStampa, [this] {
            if (StampaConsentita())
                SalvaFatturaVenditaPDF(*Main().SaveDialogPDF(), IdRecord());
        });
    QAction *ddt = KRVCreaAzione(this, QStringLiteral("actCaricaDaDdt"), QStringLiteral("Carica da D.d.T."),
                                 KRVImgFatture, [this] { actCaricaDaDdtExecute(); });
    QAction *nota = KRVCreaAzione(this, QStringLiteral("actInserisciNotaDocumento"), QStringLiteral("Inserisci nota"),
                                  KRVImgNuovo, [this] { actInserisciNotaDocumentoExecute(); });
    // The delivery notes are the warehouse module's.
    ddt->setEnabled(KRVModuloCaricato(QStringLiteral("Magazzino")));
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

    KRVCreaAzione(this, QStringLiteral("actInformazioniCliente"), QStringLiteral("Contatti"), KRVImgClienti,
                  [this] { actInformazioniClienteExecute(); });
}

int TKRVInserimentoFattureVendita::NumeroSuccessivo(int anno)
{
    return GetNextNumeroFattVend(Sessione(), anno);
}

bool TKRVInserimentoFattureVendita::NumeroEsistente(int numero, int anno, int id)
{
    return FattVendExists(Sessione(), numero, anno, id);
}

bool TKRVInserimentoFattureVendita::IvaEsente() const
{
    return chkIvaEsente->isChecked();
}

void TKRVInserimentoFattureVendita::PulisciCampiPropri()
{
    m_dataNuovaFatturaLetta.clear();
    m_ddt.clear();
    chkIvaEsente->setChecked(false);
    chkGeneraFattureCicliche->setChecked(false);
    AggiornaStatoControlliFattureCicliche();
}

void TKRVInserimentoFattureVendita::MostraFattura(const TKRVTestataFattura &testata)
{
    MostraTestata(testata);
    const TKRVRicorrenza &ricorrenza = testata.Ricorrenza;
    chkGeneraFattureCicliche->setChecked(ricorrenza.Abilitato);
    AggiornaStatoControlliFattureCicliche();
    if (ricorrenza.Abilitato) {
        speGeneraOgni->setValue(ricorrenza.GeneraOgni);
        cmbGeneraOgniUM->setCurrentIndex(cmbGeneraOgniUM->findText(ricorrenza.GeneraOgniUM, Qt::MatchExactly));
        dtpDataInizio->setDate(ricorrenza.DataInizio);
        dtpDataFine->setDate(ricorrenza.DataFine);
        // A stored rule that matches no option stays as it is until the user chooses one.
        m_dataNuovaFatturaLetta = ricorrenza.DataNuovaFattura;
        // Exclusive options cannot all be cleared while exclusive.
        for (QRadioButton *opzione : std::as_const(m_dataNuoveFatture)) {
            opzione->setAutoExclusive(false);
            opzione->setChecked(opzione->text() == ricorrenza.DataNuovaFattura);
            opzione->setAutoExclusive(true);
        }
    }
    chkIvaEsente->setChecked(testata.IvaEsente);
    m_ddt = testata.Ddt;
}

TKRVTestataFattura TKRVInserimentoFattureVendita::Testata() const
{
    TKRVTestataFattura testata;
    LeggiTestata(testata);
    TKRVRicorrenza &ricorrenza = testata.Ricorrenza;
    ricorrenza.Abilitato = chkGeneraFattureCicliche->isChecked();
    ricorrenza.GeneraOgni = speGeneraOgni->value();
    ricorrenza.GeneraOgniUM = cmbGeneraOgniUM->currentText();
    ricorrenza.DataInizio = dtpDataInizio->date();
    ricorrenza.DataFine = dtpDataFine->date();
    ricorrenza.DataNuovaFattura = m_dataNuovaFatturaLetta;
    for (const QRadioButton *opzione : m_dataNuoveFatture) {
        if (opzione->isChecked())
            ricorrenza.DataNuovaFattura = opzione->text();
    }
    testata.IvaEsente = chkIvaEsente->isChecked();
    testata.Ddt = m_ddt;
    return testata;
}

bool TKRVInserimentoFattureVendita::LeggiRecord(int id)
{
    TKRVTestataFattura testata;
    if (!m_archivio->Leggi(id, testata, *Righe()))
        return false;
    MostraFattura(testata);
    DopoLettura();
    return true;
}

void TKRVInserimentoFattureVendita::ScriviRecord()
{
    ScriviDocumento([this](const TKRVTotaliDocumento &totali, int &id) {
        m_archivio->Scrivi(Testata(), *Righe(), totali, NewRecord(), id);
    });
    KRVEseguiAzioneModulo(QStringLiteral("Attivita"), QStringLiteral("Nuova fattura ciclica"), {IdRecord(), 0});
}

QWidget *TKRVInserimentoFattureVendita::CreaPaginaFattureCicliche()
{
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("tsFattureCicliche"));
    auto layout = new QVBoxLayout(pagina);
    chkGeneraFattureCicliche = KRVCasella(QStringLiteral("chkGeneraFattureCicliche"),
                                          QStringLiteral("Genera promemoria per fatture cicliche"));
    // However the box changes (mouse, keyboard, a screen reader's toggle), the page follows it.
    connect(chkGeneraFattureCicliche, &QCheckBox::toggled, this,
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
    dtpDataInizio = KRVCampoData(QStringLiteral("dtpDataInizio"));
    dtpDataFine = KRVCampoData(QStringLiteral("dtpDataFine"));
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

void TKRVInserimentoFattureVendita::ImpostaFatturaCiclica()
{
    Q3Guarded([this] {
        const int numero = txtNumero->value();
        const QDate data = dtpData->date();
        SetNewRecord(true);
        SetIdRecord(0);
        // Each "\n\r" is one line break, in the memo, in the stored notes and on paper.
        txtNote->setPlainText(NormalizeLineBreaks(
            txtNote->toPlainText() + QStringLiteral("\n\rFattura ciclica") + QStringLiteral("\n\rRif. Fattura n. ")
            + QString::number(numero) + QStringLiteral("\n\rdel ") + QLocale().toString(data, QLocale::ShortFormat)));
        const QDate oggi = QDate::currentDate();
        txtNumero->setValue(GetNextNumeroFattVend(Sessione(), oggi.year()));
        dtpData->setDate(oggi);
        chkGeneraFattureCicliche->setChecked(false);
        chkPagato->setChecked(false);
        // The copy was loaded from no delivery note.
        m_ddt.clear();
        dtpScadenzaPagamento->setDate(oggi);
        chkScadenzaPagamento->setChecked(false);
        AggiornaStatoControlliFattureCicliche();
        SetModified(true);
    });
}

void TKRVInserimentoFattureVendita::actInformazioniClienteExecute()
{
    const QString codice = CodiceCliente();
    if (codice.isEmpty())
        return;
    const TCliente cliente = GetCliente(Sessione(), codice);
    if (cliente.IDCLIENTE <= 0)
        return;
    const QString a = QStringLiteral("\n\r\n\r");
    Q3MessageBox(QStringLiteral("Contatti del cliente"),
                 QStringLiteral("Cliente: ") + cliente.RAGIONESOCIALE + a + QStringLiteral("Telefono 1: ")
                     + cliente.TELEFONO1 + a + QStringLiteral("Telefono 2: ") + cliente.TELEFONO2 + a
                     + QStringLiteral("Telefono 3: ") + cliente.TELEFONO3 + a + QStringLiteral("Fax: ") + cliente.FAX
                     + a + QStringLiteral("e-mail: ") + cliente.EMAIL,
                 TQ3MsgIcon::Information);
}

void TKRVInserimentoFattureVendita::actInserisciNotaDocumentoExecute()
{
    auto dialog = Main().Selezione<TKRVModSelezionaNotaDocumenti>(TKRVAzione::ModSelezionaNotaDocumenti);
    if (!dialog)
        return;
    txtNote->appendPlainText(NormalizeLineBreaks(GetNotaDocumento(Sessione(), dialog->ApriSelezionato())));
    SetModified(true);
}

void TKRVInserimentoFattureVendita::actCaricaDaDdtExecute()
{
    const TKRVAzione azione = TKRVAzione::ModSelezionaDdtScaricoMulti;
    Main().Run(azione);
    auto dialog = Main().FormAs<TKRVModSelezionaDdtScaricoMulti>(azione);
    if (!dialog)
        return;
    dialog->actRipristinaExecute();
    // The dialog opens on the delivery notes of the invoice's customer.
    const QString cliente = RagioneSocialeCliente();
    if (!cliente.isEmpty()) {
        dialog->SetRagioneSociale(cliente);
        dialog->actCercaExecute();
    }
    if (dialog->exec() != QDialog::Accepted)
        return;
    {
        TQ3BusyCursor busy;
        // Lines read before a failure stay, and count as a change.
        const auto fine = qScopeGuard([this] {
            Griglia()->AdattaAltezzeRighe();
            SetModified(true);
        });
        KRVCaricaDaDdt(
            Main().Sessione(), dialog->GetSelected(), [this](const QStringList &riga) { Righe()->AccodaRiga(riga); },
            [this](const TKRVDdtFattura &ddt) {
                // A note loaded again is still one note of the invoice.
                const bool nuova = std::none_of(m_ddt.cbegin(), m_ddt.cend(),
                                                [&ddt](const TKRVDdtFattura &d) { return d.IdDdt == ddt.IdDdt; });
                if (nuova)
                    m_ddt.append(ddt);
            });
    }
    Q3MessageBox(QStringLiteral("Informazioni"), QStringLiteral("Caricamento completato"), TQ3MsgIcon::Information);
}

void TKRVInserimentoFattureVendita::Stampa()
{
    StampaFatturaVendita(IdRecord(), QString(), 1);
}
