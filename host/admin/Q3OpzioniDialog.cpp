#include "Q3OpzioniDialog.h"

#include "Q3AdminKit.h"
#include "Q3ArchivioOpzioni.h"
#include "Q3Exception.h"
#include "Q3Guards.h"
#include "Q3Messages.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

const QString Si = QStringLiteral("Sì");
const QString No = QStringLiteral("No");

} // namespace

QString TQ3OpzioniDialog::TCampo::Valore() const
{
    if (SiNo)
        return SiNo->currentText() == Si ? QStringLiteral("True") : QStringLiteral("False");
    if (Scelta)
        return Scelta->currentText();
    return Testo->text();
}

TQ3OpzioniDialog::TQ3OpzioniDialog(const QSqlDatabase &db, const QList<TQ3ModuleMetadata> &modules, QWidget *parent)
    : QDialog(parent), m_db(db), m_salva(new QPushButton(QStringLiteral("Salva")))
{
    setObjectName(QStringLiteral("Q3Opzioni"));
    setWindowTitle(QStringLiteral("Opzioni"));
    setMinimumSize(720, 320);

    auto contenuto = new QWidget;
    auto colonna = new QVBoxLayout(contenuto);
    for (const TQ3ModuleMetadata &module : modules) {
        if (!module.Options.isEmpty())
            AggiungiModulo(module, colonna);
    }
    if (m_campi.isEmpty()) {
        auto nessuna = new QLabel(QStringLiteral("Nessun modulo caricato ha delle opzioni."));
        nessuna->setObjectName(QStringLiteral("lblNessunaOpzione"));
        colonna->addWidget(nessuna);
    }
    colonna->addStretch();
    auto scorrimento = new QScrollArea;
    scorrimento->setWidgetResizable(true);
    scorrimento->setWidget(contenuto);

    m_salva->setObjectName(QStringLiteral("btnSalva"));
    auto chiudi = new QPushButton(QStringLiteral("Chiudi"));
    chiudi->setObjectName(QStringLiteral("btnChiudi"));
    auto pulsanti = new QDialogButtonBox;
    pulsanti->addButton(m_salva, QDialogButtonBox::AcceptRole);
    pulsanti->addButton(chiudi, QDialogButtonBox::RejectRole);
    connect(m_salva, &QPushButton::clicked, this, [this] { Q3Guarded([this] { Salva(); }); });
    connect(chiudi, &QPushButton::clicked, this, &QDialog::reject);

    auto layout = new QVBoxLayout(this);
    layout->addWidget(scorrimento, 1);
    layout->addWidget(pulsanti);
    AggiornaPulsanti();
}

void TQ3OpzioniDialog::AggiungiModulo(const TQ3ModuleMetadata &module, QVBoxLayout *layout)
{
    auto gruppo = new QGroupBox(module.Description);
    gruppo->setObjectName(QStringLiteral("grp") + module.Name);
    auto form = new QFormLayout(gruppo);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const TQ3ModuleOption &opzione : module.Options) {
        TCampo campo{opzione, {}, false};
        const QString letto = Q3LeggiOpzione(m_db, opzione.Key, &campo.Memorizzato);
        campo.Letto = campo.Memorizzato ? letto : opzione.Default;
        // "1", "true" and "True" say the same: only a different answer is a change.
        if (opzione.Kind == TQ3ModuleOptionKind::SiNo)
            campo.Letto = Q3OpzioneVera(campo.Letto) ? QStringLiteral("True") : QStringLiteral("False");
        QWidget *input = nullptr;
        if (opzione.Kind == TQ3ModuleOptionKind::SiNo) {
            campo.SiNo = new QComboBox;
            campo.SiNo->addItems({Si, No});
            campo.SiNo->setCurrentText(campo.Letto == QLatin1String("True") ? Si : No);
            connect(campo.SiNo, &QComboBox::currentIndexChanged, this, [this] { AggiornaPulsanti(); });
            input = campo.SiNo;
        } else if (opzione.Kind == TQ3ModuleOptionKind::Scelta) {
            campo.Scelta = new QComboBox;
            campo.Scelta->addItems(opzione.Values);
            if (!opzione.Values.contains(campo.Letto))
                campo.Scelta->addItem(campo.Letto);
            campo.Scelta->setCurrentText(campo.Letto);
            connect(campo.Scelta, &QComboBox::currentIndexChanged, this, [this] { AggiornaPulsanti(); });
            input = campo.Scelta;
        } else {
            campo.Testo = Q3CampoTesto(opzione.Key, 1000);
            campo.Testo->setText(campo.Letto);
            connect(campo.Testo, &QLineEdit::textChanged, this, [this] { AggiornaPulsanti(); });
            input = campo.Testo;
        }
        input->setObjectName(opzione.Key);
        form->addRow(Q3Etichetta(opzione.Caption, input), input);
        m_campi << campo;
    }
    layout->addWidget(gruppo);
}

bool TQ3OpzioniDialog::Modificato() const
{
    return std::any_of(m_campi.cbegin(), m_campi.cend(),
                       [](const TCampo &campo) { return campo.Valore() != campo.Letto; });
}

void TQ3OpzioniDialog::AggiornaPulsanti()
{
    m_salva->setEnabled(Modificato());
}

bool TQ3OpzioniDialog::Salva()
{
    QList<QPair<QString, QString>> valori;
    for (const TCampo &campo : std::as_const(m_campi)) {
        // A default shown but never stored is stored as well: the modules read the store.
        if (campo.Valore() != campo.Letto || !campo.Memorizzato)
            valori.append({campo.Opzione.Key, campo.Valore()});
    }
    try {
        Q3ScriviOpzioni(m_db, valori);
    } catch (const std::exception &e) {
        Q3ShowError(QStringLiteral("Impossibile salvare le opzioni:\n\r") + ExceptionMessage(e));
        return false;
    }
    for (TCampo &campo : m_campi) {
        campo.Letto = campo.Valore();
        campo.Memorizzato = true;
    }
    AggiornaPulsanti();
    return true;
}

void TQ3OpzioniDialog::reject()
{
    if (Modificato()
        && !Q3SalvaPrimaDiProseguire(QStringLiteral("Salvare le modifiche alle opzioni?"), [this] { return Salva(); }))
        return;
    QDialog::reject();
}

void Q3ApriOpzioni(const QSqlDatabase &db, const QList<TQ3ModuleMetadata> &modules, QWidget *parent)
{
    TQ3OpzioniDialog dialog(db, modules, parent);
    dialog.exec();
}
