#include "uKRVInserimentoClienti.h"

#include "KRVTesti.h"
#include "KRVUtils.h"
#include "Q3Controlli.h"
#include "Q3Dataset.h"
#include "Q3Guards.h"
#include "Q3Messages.h"
#include "Q3Utils.h"
#include "uKRVEliminazione.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVModSelezionaTipoPagamento.h"
#include "uKRVServiziFinestre.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <initializer_list>
#include <utility>

namespace {

const TKRVAzione ActSelezionaTipoPagamento = TKRVAzione::ModSelezionaTipoPagamento;
const QString Nessuno = QStringLiteral("...");
const QString ColonnaTipoSoggetto = QStringLiteral("TIPO_SOGGETTO");

// The kinds of subject, each with its code as its data.
QComboBox *CampoTipoSoggetto()
{
    auto combo = new QComboBox;
    combo->setObjectName(QStringLiteral("cboTipoSoggetto"));
    for (const TKRVTipoSoggetto &tipo : KRVTipiSoggetto())
        combo->addItem(tipo.Descrizione, tipo.Codice);
    return combo;
}

using TCampo = std::pair<QString, QWidget *>;

QFormLayout *NuovoModulo()
{
    auto form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setHorizontalSpacing(12);
    return form;
}

// One row of the form: the first input under the form's label column, the
// others each after its own label.
void AggiungiRiga(QFormLayout *form, std::initializer_list<TCampo> campi)
{
    auto row = new QHBoxLayout;
    for (const TCampo &campo : campi) {
        if (campo.second != campi.begin()->second) {
            row->addSpacing(16);
            row->addWidget(KRVEtichetta(campo.first, campo.second));
            row->addSpacing(6);
        }
        row->addWidget(campo.second);
    }
    row->addStretch(1);
    form->addRow(KRVEtichetta(campi.begin()->first, campi.begin()->second), row);
}

QGroupBox *Gruppo(const QString &name, const QString &title, QLayout *content)
{
    auto group = new QGroupBox(title);
    group->setObjectName(name);
    group->setLayout(content);
    return group;
}

QWidget *Pagina(const QString &name, QLayout *content)
{
    auto page = new QWidget;
    page->setObjectName(name);
    page->setLayout(content);
    return page;
}

} // namespace

TKRVInserimentoClienti::TKRVInserimentoClienti(IKRVMain &main)
    : TKRVInserimentoBase(main, {.Caption = QStringLiteral("Inserimento / Modifica clienti"),
                                 .MinimumSize = QSize(750, 550),
                                 .Entita = &KRVEntitaClienti(),
                                 .RefreshAfterSave = false,
                                 .RefreshAfterDelete = false}),
      pgcPagine(new QTabWidget), txtCodice(CampoTesto(QStringLiteral("txtCodice"), 20, QStringLiteral("CODICE"))),
      txtRagioneSociale(CampoTesto(QStringLiteral("txtRagioneSociale"), 100, QStringLiteral("RAGIONESOCIALE"))),
      txtIndirizzo(CampoTesto(QStringLiteral("txtIndirizzo"), 100, QStringLiteral("INDIRIZZO"))),
      txtCitta(CampoTesto(QStringLiteral("txtCitta"), 30, QStringLiteral("CITTA"))),
      txtCap(CampoTesto(QStringLiteral("txtCap"), 5, QStringLiteral("CAP"), true)),
      txtProvincia(CampoTesto(QStringLiteral("txtProvincia"), 2, QStringLiteral("PROVINCIA"), true)),
      txtNazione(CampoTesto(QStringLiteral("txtNazione"), 30, QStringLiteral("NAZIONE"))),
      txtCodiceFiscale(CampoTesto(QStringLiteral("txtCodiceFiscale"), 16, QStringLiteral("CODICEFISCALE"), true)),
      txtPartitaIVA(CampoTesto(QStringLiteral("txtPartitaIVA"), 13, QStringLiteral("PARTITAIVA"), true)),
      txtTelefono1(CampoTesto(QStringLiteral("txtTelefono1"), 20, QStringLiteral("TELEFONO1"))),
      txtTelefono2(CampoTesto(QStringLiteral("txtTelefono2"), 20, QStringLiteral("TELEFONO2"))),
      txtTelefono3(CampoTesto(QStringLiteral("txtTelefono3"), 20, QStringLiteral("TELEFONO3"))),
      txtFax(CampoTesto(QStringLiteral("txtFax"), 20, QStringLiteral("FAX"))),
      txtEmail(CampoTesto(QStringLiteral("txtEmail"), 100, QStringLiteral("EMAIL"))),
      txtWeb(CampoTesto(QStringLiteral("txtWeb"), 100, QStringLiteral("WEB"))),
      txtCoordBanBanca(CampoTesto(QStringLiteral("txtCoordBanBanca"), 100, QStringLiteral("COORDBAN_BANCA"))),
      txtCoordBanAgenzia(CampoTesto(QStringLiteral("txtCoordBanAgenzia"), 100, QStringLiteral("COORDBAN_AGENZIA"))),
      txtCoordBanPaese(CampoTesto(QStringLiteral("txtCoordBanPaese"), 2, QStringLiteral("COORDBAN_PAESE"), true)),
      txtCoordBanCINEur(CampoTesto(QStringLiteral("txtCoordBanCINEur"), 2, QStringLiteral("COORDBAN_CIN_EUR"), true)),
      txtCoordBanCIN(CampoTesto(QStringLiteral("txtCoordBanCIN"), 1, QStringLiteral("COORDBAN_CIN"), true)),
      txtCoordBanABI(CampoTesto(QStringLiteral("txtCoordBanABI"), 5, QStringLiteral("COORDBAN_ABI"), true)),
      txtCoordBanCAB(CampoTesto(QStringLiteral("txtCoordBanCAB"), 5, QStringLiteral("COORDBAN_CAB"), true)),
      txtCoordBanConto(CampoTesto(QStringLiteral("txtCoordBanConto"), 50, QStringLiteral("COORDBAN_CONTO"), true)),
      txtCoordBanSwift(CampoTesto(QStringLiteral("txtCoordBanSwift"), 50, QStringLiteral("COORDBAN_SWIFT"))),
      cboTipoSoggetto(CampoTipoSoggetto()), txtNome(CampoTesto(QStringLiteral("txtNome"), 60, QStringLiteral("NOME"))),
      txtCognome(CampoTesto(QStringLiteral("txtCognome"), 60, QStringLiteral("COGNOME"))),
      txtCodiceDestinatario(
          CampoTesto(QStringLiteral("txtCodiceDestinatario"), 7, QStringLiteral("CODICE_DESTINATARIO"), true)),
      txtPec(CampoTesto(QStringLiteral("txtPec"), 256, QStringLiteral("PEC"))), txtTipoPagamento(new QLabel(Nessuno)),
      cmdSelezionaTipoPagamento(new QToolButton), txtNote(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("KRVInserimentoClienti"));
    pgcPagine->setObjectName(QStringLiteral("pgcPagine"));
    pgcPagine->addTab(PaginaGenerale(), QStringLiteral(" Generale "));
    pgcPagine->addTab(PaginaCoordinateBancarie(), QStringLiteral(" Coordinate bancarie "));
    pgcPagine->addTab(PaginaFatturaElettronica(), QStringLiteral(" Fattura elettronica "));
    pgcPagine->addTab(PaginaNote(), QStringLiteral(" Note "));

    auto content = new QWidget;
    auto layout = new QVBoxLayout(content);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(pgcPagine);
    ImpostaContenuto(content);

    BloccaSeSalvato(txtCodice);
    Q3Guarded([this] { LimitaAlleColonne(); });
    FormCreate();
}

// No field takes more characters than its column holds, whatever its own limit.
void TKRVInserimentoClienti::LimitaAlleColonne()
{
    const QHash<QString, int> lunghezze = KRVLunghezzeColonne(Sessione(), QStringLiteral("CLIENTI"));
    for (const TCampoTesto &campo : std::as_const(m_testi)) {
        if (lunghezze.contains(campo.Column))
            campo.Edit->setMaxLength(qMin(campo.Edit->maxLength(), lunghezze.value(campo.Column)));
    }
}

QLineEdit *TKRVInserimentoClienti::CampoTesto(const QString &name, int maxLength, const QString &column, bool upperCase)
{
    QLineEdit *edit = KRVCampoTesto(name, maxLength, upperCase);
    m_testi.append({edit, column});
    CollegaCampo(edit);
    return edit;
}

QWidget *TKRVInserimentoClienti::PaginaGenerale()
{
    QFormLayout *form = NuovoModulo();
    AggiungiRiga(form, {{QStringLiteral("Codice"), txtCodice}});
    AggiungiRiga(form, {{QStringLiteral("Ragione sociale"), txtRagioneSociale}});
    AggiungiRiga(form, {{QStringLiteral("Indirizzo"), txtIndirizzo}});
    AggiungiRiga(form, {{QStringLiteral("Città"), txtCitta},
                        {QStringLiteral("CAP"), txtCap},
                        {QStringLiteral("Prov."), txtProvincia}});
    AggiungiRiga(form, {{QStringLiteral("Nazione"), txtNazione}});
    AggiungiRiga(form, {{QStringLiteral("Codice fiscale"), txtCodiceFiscale},
                        {QStringLiteral("Partita IVA"), txtPartitaIVA}});
    form->addRow(KRVEtichetta(QStringLiteral("Tipo di pagamento"), txtTipoPagamento), SceltaTipoPagamento());
    AggiungiRiga(form, {{QStringLiteral("Telefono 1"), txtTelefono1}, {QStringLiteral("Telefono 2"), txtTelefono2}});
    AggiungiRiga(form, {{QStringLiteral("Telefono 3"), txtTelefono3}, {QStringLiteral("Fax"), txtFax}});
    AggiungiRiga(form, {{QStringLiteral("e-mail"), txtEmail}});
    AggiungiRiga(form, {{QStringLiteral("web"), txtWeb}});
    return Pagina(QStringLiteral("tabGenerale"), form);
}

QWidget *TKRVInserimentoClienti::SceltaTipoPagamento()
{
    txtTipoPagamento->setObjectName(QStringLiteral("txtTipoPagamento"));
    txtTipoPagamento->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    txtTipoPagamento->setFixedWidth(txtIndirizzo->minimumWidth() - 32);
    cmdSelezionaTipoPagamento->setObjectName(QStringLiteral("cmdSelezionaTipoPagamento"));
    cmdSelezionaTipoPagamento->setIcon(KRVImage(KRVImgCerca));
    cmdSelezionaTipoPagamento->setToolTip(QStringLiteral("Seleziona il tipo di pagamento"));
    cmdSelezionaTipoPagamento->setAccessibleName(QStringLiteral("Seleziona il tipo di pagamento"));
    connect(cmdSelezionaTipoPagamento, &QToolButton::clicked, this,
            [this] { Q3Guarded([this] { cmdSelezionaTipoPagamentoClick(); }); });

    auto choice = new QWidget;
    auto row = new QHBoxLayout(choice);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(txtTipoPagamento);
    row->addWidget(cmdSelezionaTipoPagamento);
    row->addStretch(1);
    return choice;
}

QWidget *TKRVInserimentoClienti::PaginaCoordinateBancarie()
{
    QFormLayout *banca = NuovoModulo();
    AggiungiRiga(banca, {{QStringLiteral("Banca"), txtCoordBanBanca}});
    AggiungiRiga(banca, {{QStringLiteral("Agenzia"), txtCoordBanAgenzia}});

    QFormLayout *bban = NuovoModulo();
    AggiungiRiga(bban, {{QStringLiteral("CIN"), txtCoordBanCIN},
                        {QStringLiteral("ABI (Banca)"), txtCoordBanABI},
                        {QStringLiteral("CAB (Sport.)"), txtCoordBanCAB}});
    AggiungiRiga(bban, {{QStringLiteral("N° Conto"), txtCoordBanConto}});

    QFormLayout *iban = NuovoModulo();
    AggiungiRiga(iban, {{QStringLiteral("Paese"), txtCoordBanPaese}, {QStringLiteral("CIN EUR"), txtCoordBanCINEur}});

    QFormLayout *bic = NuovoModulo();
    AggiungiRiga(bic, {{QStringLiteral("Codice BIC SWIFT"), txtCoordBanSwift}});

    auto layout = new QVBoxLayout;
    layout->addLayout(banca);
    // The international and the national coordinates side by side.
    auto coordinate = new QHBoxLayout;
    coordinate->addWidget(
        Gruppo(QStringLiteral("grpIBAN"), QStringLiteral(" IBAN - COORDINATE BANCARIE INTERNAZIONALI "), iban));
    coordinate->addWidget(
        Gruppo(QStringLiteral("grpBBAN"), QStringLiteral(" BBAN - COORDINATE BANCARIE NAZIONALI "), bban));
    layout->addLayout(coordinate);
    layout->addWidget(Gruppo(QStringLiteral("grpBIC"), QStringLiteral(" BIC "), bic));
    layout->addStretch(1);
    return Pagina(QStringLiteral("tabCoordinateBancarie"), layout);
}

QWidget *TKRVInserimentoClienti::PaginaFatturaElettronica()
{
    CollegaCampo(cboTipoSoggetto);
    connect(cboTipoSoggetto, &QComboBox::currentIndexChanged, this,
            [this] { Q3Guarded([this] { AggiornaNominativo(); }); });
    connect(txtNazione, &QLineEdit::editingFinished, this,
            [this] { Q3Guarded([this] { txtNazioneEditingFinished(); }); });
    QFormLayout *form = NuovoModulo();
    AggiungiRiga(form, {{QStringLiteral("Tipo soggetto"), cboTipoSoggetto}});
    AggiungiRiga(form, {{QStringLiteral("Nome"), txtNome}});
    AggiungiRiga(form, {{QStringLiteral("Cognome"), txtCognome}});
    AggiungiRiga(form, {{QStringLiteral("Codice destinatario"), txtCodiceDestinatario}});
    AggiungiRiga(form, {{QStringLiteral("PEC"), txtPec}});
    return Pagina(QStringLiteral("tabFatturaElettronica"), form);
}

void TKRVInserimentoClienti::AggiornaNominativo()
{
    // What a company's fields still hold stays there, and is saved as it is.
    const bool privato = cboTipoSoggetto->currentData().toString() == QLatin1String(KRVSoggettoPrivato);
    txtNome->setEnabled(privato);
    txtCognome->setEnabled(privato);
}

void TKRVInserimentoClienti::txtNazioneEditingFinished()
{
    txtCodiceDestinatario->setText(KRVDestinatarioProposto(txtNazione->text(), txtCodiceDestinatario->text()));
}

void TKRVInserimentoClienti::ImpostaTipoSoggetto(const QString &codice)
{
    // An empty column is the company it defaults to; a kind the list does not
    // know is shown as stored, so saving keeps it.
    const QString tipo = codice.isEmpty() ? QString::fromLatin1(KRVSoggettoAzienda) : codice;
    if (cboTipoSoggetto->findData(tipo) < 0)
        cboTipoSoggetto->addItem(tipo, tipo);
    cboTipoSoggetto->setCurrentIndex(cboTipoSoggetto->findData(tipo));
    AggiornaNominativo();
}

TKRVRecapitoCliente TKRVInserimentoClienti::Recapito() const
{
    return {cboTipoSoggetto->currentData().toString(), txtNome->text(), txtCognome->text(),
            txtCodiceDestinatario->text(), txtPec->text()};
}

QWidget *TKRVInserimentoClienti::PaginaNote()
{
    txtNote->setObjectName(QStringLiteral("txtNote"));
    txtNote->setAccessibleName(QStringLiteral("Note"));
    CollegaCampo(txtNote);
    auto layout = new QVBoxLayout;
    layout->addWidget(txtNote);
    return Pagina(QStringLiteral("tabNote"), layout);
}

void TKRVInserimentoClienti::ImpostaTipoPagamento(int id, const QString &text)
{
    m_idTipoPagamento = id;
    txtTipoPagamento->setText(text.isEmpty() ? Nessuno : text);
    // Named by its caption, the label reads what it shows as its description.
    txtTipoPagamento->setAccessibleDescription(txtTipoPagamento->text());
}

void TKRVInserimentoClienti::cmdSelezionaTipoPagamentoClick()
{
    auto dialog = Main().Selezione<TKRVModSelezionaTipoPagamento>(ActSelezionaTipoPagamento);
    if (!dialog)
        return;
    const TKRVVoceSelezionata voce = dialog->ApriSelezionato();
    ImpostaTipoPagamento(voce.Id, voce.Text);
    SetModified(true);
}

void TKRVInserimentoClienti::ClearFields()
{
    pgcPagine->setCurrentIndex(0);
    for (const TCampoTesto &campo : std::as_const(m_testi))
        campo.Edit->clear();
    const int prossimo = ProssimaChiave();
    txtCodice->setText(GetCustomCodice(prossimo, QStringLiteral("CLN"), QString(), 10));
    ImpostaTipoPagamento(0, QString());
    ImpostaTipoSoggetto(QString());
    txtNote->clear();
}

void TKRVInserimentoClienti::FillFields(const TQ3Dataset &dataset)
{
    for (const TCampoTesto &campo : std::as_const(m_testi))
        campo.Edit->setText(dataset.FieldValue(campo.Column).toString());
    const int idTipoPagamento = dataset.FieldValue(QStringLiteral("IDTIPO_PAGAMENTO")).toInt();
    ImpostaTipoPagamento(idTipoPagamento,
                         idTipoPagamento > 0 ? GetTipoPagamento(Sessione(), idTipoPagamento) : QString());
    ImpostaTipoSoggetto(dataset.FieldValue(ColonnaTipoSoggetto).toString());
    txtNote->setPlainText(dataset.FieldValue(QStringLiteral("NOTE")).toString());
}

void TKRVInserimentoClienti::WriteFields(TQ3Dataset &dataset)
{
    for (const TCampoTesto &campo : std::as_const(m_testi))
        dataset.SetFieldValue(campo.Column, campo.Edit->text());
    // No payment type chosen: the column stays empty.
    dataset.SetFieldValue(QStringLiteral("IDTIPO_PAGAMENTO"),
                          m_idTipoPagamento > 0 ? QVariant(m_idTipoPagamento) : QVariant(QMetaType::fromType<int>()));
    dataset.SetFieldValue(ColonnaTipoSoggetto, cboTipoSoggetto->currentData().toString());
    dataset.SetFieldValue(QStringLiteral("NOTE"), txtNote->toPlainText());
}

QString TKRVInserimentoClienti::ValidationError()
{
    if (txtCodice->text().isEmpty())
        return QStringLiteral("Non è stato indicato il codice!");
    if (txtRagioneSociale->text().isEmpty())
        return QStringLiteral("Non è stata indicata la ragione sociale!");
    if (Entita().CodiceEsiste(Sessione(), txtCodice->text(), IdRecord()))
        return QStringLiteral("Codice già utilizzato!");
    // An Italian customer's tax codes are checked; a foreign one's are kept as written.
    QStringList problems = Q3ProblemiCodiciFiscali(txtPartitaIVA->text(), txtCodiceFiscale->text(), txtNazione->text());
    problems << KRVProblemiRecapito(Recapito());
    return problems.join(QStringLiteral("\n\r"));
}

bool TKRVInserimentoClienti::ConfermaSalvataggio()
{
    return !KRVSenzaRecapito(Recapito()) || Q3AskYesNo(QString::fromUtf8(KRVMsgSenzaRecapito));
}

bool TKRVInserimentoClienti::CanDeleteRecord()
{
    // The rule is asked about the code shown.
    return Entita().PerCodice.CanDelete(Sessione(), txtCodice->text());
}

bool TKRVInserimentoClienti::DeleteRecord()
{
    if (!Q3AskYesNo(QString::fromUtf8(KRVMsgConfermaEliminazione)))
        return false;
    // A failed delete is reported; the window blanks all the same.
    if (HaRigaPropria())
        KRVEliminaRecord(Sessione(), Entita(), IdRecord());
    return true;
}
