#include "uKRVEsportaFatturePA.h"

#include "Q3Guards.h"
#include "Q3Messages.h"
#include "uKRVFormKit.h"
#include "uKRVRiepilogoFatturePA.h"
#include "uKRVScegliCartella.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

QRadioButton *Scelta(const QString &name, const QString &caption)
{
    auto scelta = new QRadioButton(caption);
    scelta->setObjectName(name);
    return scelta;
}

QGroupBox *Gruppo(const QString &caption, QRadioButton *primo, QRadioButton *secondo)
{
    auto gruppo = new QGroupBox(caption);
    auto layout = new QVBoxLayout(gruppo);
    layout->addWidget(primo);
    layout->addWidget(secondo);
    return gruppo;
}

} // namespace

TKRVEsportaFatturePA::TKRVEsportaFatturePA(int selezionati, int trovati, TKRVDialoghiFatturePA dialoghi,
                                           QWidget *parent)
    : QDialog(parent), rbSelezionati(Scelta(QStringLiteral("rbSelezionati"),
                                            QStringLiteral("Documenti selezionati (%1)").arg(selezionati))),
      rbTrovati(Scelta(QStringLiteral("rbTrovati"), QStringLiteral("Tutti i documenti trovati (%1)").arg(trovati))),
      rbCartella(Scelta(QStringLiteral("rbCartella"), QStringLiteral("Un file per documento in una cartella"))),
      rbZip(Scelta(QStringLiteral("rbZip"), QStringLiteral("Un unico file ZIP"))), txtDestinazione(new QLineEdit),
      m_dialoghi(dialoghi)
{
    setObjectName(QStringLiteral("frmEsportaFatturePA"));
    setWindowTitle(QStringLiteral("Esportazione fatture elettroniche"));
    rbSelezionati->setEnabled(selezionati > 0);
    (selezionati > 1 || selezionati == trovati ? rbSelezionati : rbTrovati)->setChecked(true);
    rbCartella->setChecked(true);
    txtDestinazione->setObjectName(QStringLiteral("txtDestinazione"));
    txtDestinazione->setMinimumWidth(360);
    auto sfoglia = new QPushButton(QStringLiteral("Sfoglia..."));
    sfoglia->setObjectName(QStringLiteral("btnSfoglia"));
    connect(sfoglia, &QPushButton::clicked, this, [this] { Q3Guarded([this] { Sfoglia(); }); });
    // A folder and a ZIP file are different things: a new choice starts anew.
    connect(rbZip, &QRadioButton::toggled, txtDestinazione, &QLineEdit::clear);

    auto pulsanti = new QDialogButtonBox;
    pulsanti->addButton(QStringLiteral("Esporta"), QDialogButtonBox::AcceptRole)
        ->setObjectName(QStringLiteral("btnEsporta"));
    pulsanti->addButton(QStringLiteral("Annulla"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("btnAnnulla"));
    connect(pulsanti, &QDialogButtonBox::accepted, this, &TKRVEsportaFatturePA::accept);
    connect(pulsanti, &QDialogButtonBox::rejected, this, &TKRVEsportaFatturePA::reject);

    auto destinazione = new QHBoxLayout;
    destinazione->addWidget(KRVEtichetta(QStringLiteral("Destinazione"), txtDestinazione));
    destinazione->addWidget(txtDestinazione, 1);
    destinazione->addWidget(sfoglia);
    auto layout = new QVBoxLayout(this);
    layout->addWidget(Gruppo(QStringLiteral("Documenti"), rbSelezionati, rbTrovati));
    layout->addWidget(Gruppo(QStringLiteral("Scrivere"), rbCartella, rbZip));
    layout->addLayout(destinazione);
    layout->addWidget(pulsanti);
}

bool TKRVEsportaFatturePA::SoloSelezionati() const
{
    return rbSelezionati->isChecked();
}

TKRVDestinazioneFatturePA TKRVEsportaFatturePA::Destinazione() const
{
    QString percorso = txtDestinazione->text().trimmed();
    if (rbZip->isChecked() && !percorso.endsWith(QLatin1String(".zip"), Qt::CaseInsensitive))
        percorso += QStringLiteral(".zip");
    return {QDir::fromNativeSeparators(percorso), rbZip->isChecked()};
}

void TKRVEsportaFatturePA::accept()
{
    if (txtDestinazione->text().trimmed().isEmpty()) {
        Q3MessageBox(QStringLiteral("Attenzione"),
                     rbZip->isChecked() ? QStringLiteral("Indicare il file ZIP da creare.")
                                        : QStringLiteral("Indicare la cartella in cui scrivere i file."),
                     TQ3MsgIcon::Warning);
        txtDestinazione->setFocus();
        return;
    }
    QDialog::accept();
}

void TKRVEsportaFatturePA::Sfoglia()
{
    QString scelto;
    const bool scelta = rbZip->isChecked() ? m_dialoghi.Zip->Execute(scelto) : m_dialoghi.Cartella->Execute(scelto);
    if (scelta)
        txtDestinazione->setText(QDir::toNativeSeparators(scelto));
}

bool KRVEsportaFattureElettroniche(QWidget *lista, TKRVDialoghiFatturePA dialoghi, const QSqlDatabase &db,
                                   EKRVDocumentoFatturaPA tipo, const QList<int> &selezionati,
                                   const QList<int> &trovati)
{
    if (trovati.isEmpty()) {
        Q3MessageBox(QStringLiteral("Attenzione"), QStringLiteral("Nessun documento da esportare."),
                     TQ3MsgIcon::Warning);
        return false;
    }
    TKRVEsportaFatturePA scelta(int(selezionati.size()), int(trovati.size()), dialoghi, lista);
    if (scelta.exec() != QDialog::Accepted)
        return false;
    const QList<int> ids = scelta.SoloSelezionati() ? selezionati : trovati;
    QProgressDialog avanzamento(QStringLiteral("Esportazione delle fatture elettroniche in corso..."),
                                QStringLiteral("Annulla"), 0, int(ids.size()), lista);
    avanzamento.setObjectName(QStringLiteral("frmAvanzamentoFatturePA"));
    avanzamento.setWindowTitle(QStringLiteral("Fatture elettroniche"));
    avanzamento.setWindowModality(Qt::WindowModal);
    avanzamento.setMinimumDuration(500);
    const TKRVEsportazioneFatturePA esito =
        KRVEsportaFatturePA(db, tipo, ids, scelta.Destinazione(), [&avanzamento](int fatti, int) {
            avanzamento.setValue(fatti);
            return !avanzamento.wasCanceled();
        });
    avanzamento.reset();
    auto riepilogo = new TKRVRiepilogoFatturePA(esito, scelta.Destinazione(), lista);
    riepilogo->show();
    return !esito.Scritte.isEmpty();
}
