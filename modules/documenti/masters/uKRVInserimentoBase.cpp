#include "uKRVInserimentoBase.h"

#include "KRVArchivioRecord.h"
#include "Q3Dataset.h"
#include "Q3Guards.h"
#include "Q3MainForm.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVServiziFinestre.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QVBoxLayout>

TKRVInserimentoBase::TKRVInserimentoBase(IKRVMain &main, TKRVInserimentoInfo info)
    : m_main(main), m_info(std::move(info)), m_campi(new QFormLayout)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(m_info.Caption);
    setWindowIcon(KRVImage(KRVImgTabelle));

    QToolBar *toolBar = KRVCreaToolBar(this, QStringLiteral("tBarStandard"));
    m_actNuovo = KRVCreaAzione(this, QStringLiteral("actNuovo"), QStringLiteral("Nuovo"), KRVImgNuovo,
                               [this] { actNuovoExecute(); });
    QAction *elimina = KRVCreaAzione(this, QStringLiteral("actElimina"), QStringLiteral("Elimina"), KRVImgElimina,
                                     [this] { actEliminaExecute(); });
    m_actSalva = KRVCreaAzione(this, QStringLiteral("actSalva"), QStringLiteral("Salva"), KRVImgSalva,
                               [this] { actSalvaExecute(); });
    QAction *chiudi = KRVCreaAzione(this, QStringLiteral("actChiudi"), QStringLiteral("Chiudi"), KRVImgChiudi,
                                    [this] { actChiudiExecute(); });
    toolBar->addAction(m_actNuovo);
    toolBar->addAction(elimina);
    toolBar->addAction(m_actSalva);
    toolBar->addSeparator();
    toolBar->addAction(chiudi);

    auto panel = new QWidget(this);
    panel->setObjectName(QStringLiteral("pnlCampi"));
    panel->setLayout(m_campi);
    m_campi->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_campi->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    m_campi->setContentsMargins(12, 12, 12, 12);
    m_campi->setHorizontalSpacing(12);

    auto layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(toolBar);
    layout->addWidget(panel);
    layout->addStretch(1);

    m_actSalva->setEnabled(m_modified);
    m_actNuovo->setEnabled(!m_newRecord);
}

TKRVInserimentoBase::~TKRVInserimentoBase() = default;

QString TKRVInserimentoBase::MsgModificheNonSalvate()
{
    return QStringLiteral("Ci sono delle modifiche non salvate.\n\rContinuare comunque?");
}

QString TKRVInserimentoBase::MsgSalvareModifiche()
{
    return QStringLiteral("Salvare le modifiche al record corrente\n\rprima di continuare?");
}

QSqlDatabase TKRVInserimentoBase::Sessione() const
{
    return m_main.Sessione();
}

int TKRVInserimentoBase::ProssimaChiave() const
{
    return KRVProssimaChiave(Sessione(), Entita().Generatore);
}

TQ3Dataset *TKRVInserimentoBase::Dataset() const
{
    return m_main.Dataset(Entita().Dataset);
}

void TKRVInserimentoBase::FormCreate()
{
    Q3Guarded([this] {
        setMinimumSize(m_info.MinimumSize);
        resize(minimumSize());
        NuovoRecord();
    });
}

void TKRVInserimentoBase::AggiungiCampo(const QString &label, QWidget *field)
{
    m_campi->addRow(KRVEtichetta(label, field), field);
    CollegaCampo(field);
}

void TKRVInserimentoBase::CollegaCampo(QWidget *field)
{
    const auto changed = [this] { DataChanged(); };
    if (auto edit = qobject_cast<QLineEdit *>(field))
        connect(edit, &QLineEdit::textChanged, this, changed);
    else if (auto spin = qobject_cast<QDoubleSpinBox *>(field))
        connect(spin, &QDoubleSpinBox::valueChanged, this, changed);
    else if (auto whole = qobject_cast<QSpinBox *>(field))
        connect(whole, &QSpinBox::valueChanged, this, changed);
    else if (auto text = qobject_cast<QPlainTextEdit *>(field))
        connect(text, &QPlainTextEdit::textChanged, this, changed);
    else if (auto combo = qobject_cast<QComboBox *>(field))
        connect(combo, &QComboBox::currentIndexChanged, this, changed);
    else if (auto button = qobject_cast<QAbstractButton *>(field))
        connect(button, &QAbstractButton::toggled, this, changed);
}

QTabWidget *TKRVInserimentoBase::ImpaginaCampi(const QString &firstPage)
{
    QWidget *panel = m_campi->parentWidget();
    auto pages = new QTabWidget(this);
    pages->setObjectName(QStringLiteral("pgPagine"));
    auto box = static_cast<QVBoxLayout *>(layout());
    delete box->replaceWidget(panel, pages);
    // The pages take the room the stretch below the panel kept.
    delete box->takeAt(box->count() - 1);
    box->setStretchFactor(pages, 1);
    pages->addTab(panel, firstPage);
    return pages;
}

void TKRVInserimentoBase::ImpostaContenuto(QWidget *content)
{
    m_campi->parentWidget()->hide();
    auto layout = static_cast<QVBoxLayout *>(this->layout());
    // The content takes the room of the stretch below the field panel.
    delete layout->takeAt(layout->count() - 1);
    layout->addWidget(content, 1);
}

void TKRVInserimentoBase::BloccaSeSalvato(QWidget *field)
{
    m_bloccati.append(field);
    field->setEnabled(m_newRecord);
}

void TKRVInserimentoBase::SetIdRecord(int value)
{
    m_idRecord = value;
}

void TKRVInserimentoBase::SetNewRecord(bool value)
{
    m_newRecord = value;
    m_actNuovo->setEnabled(!value);
    for (QWidget *field : std::as_const(m_bloccati))
        field->setEnabled(value);
    StatoRecordCambiato();
}

void TKRVInserimentoBase::SetModified(bool value)
{
    m_modified = value;
    m_actSalva->setEnabled(value);
    StatoRecordCambiato();
}

void TKRVInserimentoBase::DataChanged()
{
    SetModified(true);
}

bool TKRVInserimentoBase::AbbandonaModifiche()
{
    return !ModificheDaSalvare() || Q3AskYesNo(MsgModificheNonSalvate());
}

void TKRVInserimentoBase::NuovoRecord()
{
    Q3Guarded([this] {
        TQ3BusyCursor busy;
        ClearFields();
        SetNewRecord(true);
        SetModified(false);
        SetIdRecord(m_info.IdNuovoRecord);
        m_senzaRiga = false;
    });
}

int TKRVInserimentoBase::ApriRecord(int id)
{
    int result = -1;
    Q3Guarded([&] {
        if (!AbbandonaModifiche())
            return;
        if (!LeggiRecord(id))
            return;
        SetIdRecord(id);
        SetModified(false);
        SetNewRecord(false);
        m_senzaRiga = false;
        result = 0;
        DopoApertura();
    });
    return result;
}

bool TKRVInserimentoBase::LeggiRecord(int id)
{
    TQ3Dataset *dataset = Dataset();
    TKRVArchivioRecord archivio(*dataset, Entita().Chiave, Entita().Generatore);
    if (!archivio.Leggi(id, m_newRecord ? std::nullopt : std::optional<int>(m_idRecord)))
        return false;
    FillFields(*dataset);
    return true;
}

void TKRVInserimentoBase::SalvaRecord()
{
    if (!KRVVerificaPermesso(Entita().PermessoModifica))
        return;
    // Characters the database cannot take are refused before any check reads the texts.
    QString problem = KRVCampoNonAmmesso(this);
    if (problem.isEmpty())
        problem = ValidationError();
    if (!problem.isEmpty()) {
        Q3MessageBox(QStringLiteral("Attenzione"), problem, m_info.CheckIcon);
        return;
    }
    if (!ConfermaSalvataggio())
        return;
    const bool senzaRiga = m_newRecord || m_senzaRiga;
    try {
        ScriviRecord();
        m_senzaRiga = false;
    } catch (const std::exception &) {
        Q3MessageBox(QStringLiteral("Errore"),
                     QStringLiteral("Si è verificato un errore durante il salvataggio dei dati!"),
                     m_info.SaveFailureIcon);
        // Still nothing stored: the next save stores it whole, and where the
        // editor says so nothing drops it without a question.
        m_senzaRiga = senzaRiga;
    }
    // Whatever the outcome, the record now counts as saved.
    SetModified(false);
    SetNewRecord(false);
    DopoSalvataggio();
}

void TKRVInserimentoBase::DopoSalvataggio()
{
    if (m_info.RefreshAfterSave)
        AggiornaRicerca();
}

void TKRVInserimentoBase::ScriviRecord()
{
    TKRVArchivioRecord archivio(*Dataset(), Entita().Chiave, Entita().Generatore);
    int id = m_idRecord;
    try {
        archivio.Scrivi(
            m_newRecord, [this](TQ3Dataset &dataset) { WriteFields(dataset); }, id);
    } catch (...) {
        SetIdRecord(id);
        throw;
    }
    SetIdRecord(id);
}

void TKRVInserimentoBase::AggiornaRicerca()
{
    QWidget *list = m_main.Form(Entita().Ricerca);
    if (!list)
        return;
    if (auto cerca = list->findChild<QAction *>(QStringLiteral("actCerca")))
        cerca->trigger();
}

bool TKRVInserimentoBase::CanDeleteRecord()
{
    return Entita().CanDelete(Sessione(), m_idRecord);
}

bool TKRVInserimentoBase::DeleteRecord()
{
    return !HaRigaPropria() || Entita().Delete(Sessione(), m_idRecord, true);
}

bool TKRVInserimentoBase::ConsentiChiusura()
{
    return AbbandonaModifiche();
}

bool TKRVInserimentoBase::ChiediSalvataggioPrimaDiChiudere()
{
    if (!ModificheDaSalvare())
        return true;
    switch (Q3MessageBox(QStringLiteral("Conferma"), MsgSalvareModifiche(), TQ3MsgIcon::Question,
                         TQ3MsgButtons::YesNoCancel)) {
    case TQ3MsgResult::Yes:
        actSalvaExecute();
        return true;
    case TQ3MsgResult::Cancel:
        return false;
    default:
        return true;
    }
}

void TKRVInserimentoBase::actNuovoExecute()
{
    if (!KRVVerificaPermesso(Entita().PermessoModifica))
        return;
    if (!AbbandonaModifiche())
        return;
    NuovoRecord();
}

void TKRVInserimentoBase::actEliminaExecute()
{
    if (!KRVVerificaPermesso(Entita().PermessoEliminazione))
        return;
    // Some delete rules look up the code shown, which must be able to reach the database.
    if (const QString problem = KRVCampoNonAmmesso(this); !problem.isEmpty()) {
        Q3MessageBox(QStringLiteral("Attenzione"), problem, m_info.CheckIcon);
        return;
    }
    if (!CanDeleteRecord()) {
        Q3ShowWarning(Entita().Rifiuto);
        return;
    }
    if (!DeleteRecord())
        return;
    NuovoRecord();
    if (m_info.RefreshAfterDelete)
        AggiornaRicerca();
}

void TKRVInserimentoBase::actSalvaExecute()
{
    SalvaRecord();
}

void TKRVInserimentoBase::actChiudiExecute()
{
    CloseQ3ChildForm(this);
}

void TKRVInserimentoBase::closeEvent(QCloseEvent *event)
{
    bool allowed = false;
    Q3Guarded([&] { allowed = ConsentiChiusura(); });
    if (allowed)
        event->accept();
    else
        event->ignore();
}

void TKRVInserimentoBase::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Q3Guarded([this] { RidimensionaForm(); });
}
