#include "uKRVModSelezionaDdtScaricoMulti.h"

#include "KRVDdtScarico.h"
#include "Q3Messages.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"

#include <QDate>

namespace {

constexpr int ColonnaSpunta = 1;

} // namespace

TKRVModSelezionaDdtScaricoMulti::TKRVModSelezionaDdtScaricoMulti()
    : TKRVModSelezionaBase({.Caption = QStringLiteral("Seleziona D.d.T. di scarico"),
                            .QueryHead = KRVQueryDdtScaricoTesta,
                            .QueryTail = KRVQueryDdtScaricoCoda,
                            .KeyField = QStringLiteral("IDDDT_SCARICO"),
                            .Columns = {{QString(), 30, QString(), TKRVTipoColonna::Spunta},
                                        {QStringLiteral("N."), 60, QStringLiteral("NUMERO"), TKRVTipoColonna::Intero},
                                        {QStringLiteral("Data"), 90, QStringLiteral("DATA"), TKRVTipoColonna::Data},
                                        {QStringLiteral("Codice"), 110, QStringLiteral("CLI_CODICE"),
                                         TKRVTipoColonna::Testo},
                                        {QStringLiteral("Ragione sociale"), 340, QStringLiteral("CLI_RAGIONESOCIALE"),
                                         TKRVTipoColonna::Testo}},
                            // The search composes its own condition, year first.
                            .Filters = {{QStringLiteral("txtRagioneSociale"), QStringLiteral("    Ragione sociale"),
                                         QString()}}},
                           QSize(700, 480)),
      txtRagioneSociale(Elenco()->Filtro(QStringLiteral("txtRagioneSociale"))), txtAnno(new QSpinBox)
{
    setObjectName(QStringLiteral("KRVModSelezionaDdtScaricoMulti"));
    txtAnno->setObjectName(QStringLiteral("txtAnno"));
    txtAnno->setRange(1900, 9999);
    txtAnno->setFixedWidth(80);

    // The year stands beside the name, before "Cerca".
    QToolBar *barra = Elenco()->BarraRicerca();
    QLabel *etichetta = KRVEtichetta(QStringLiteral("    Anno"), txtAnno);
    etichetta->setContentsMargins(6, 0, 6, 0);
    barra->insertWidget(Elenco()->actCerca(), etichetta);
    barra->insertWidget(Elenco()->actCerca(), txtAnno);
    barra->insertSeparator(Elenco()->actCerca());

    // The check box commands stand at the left of "OK" and "Annulla".
    QToolBar *conferma = findChild<QToolBar *>(QStringLiteral("tBarConferma"));
    QAction *primo = conferma->actions().value(0);
    conferma->insertAction(primo,
                           KRVCreaAzione(this, QStringLiteral("actSelezionaTutti"), QStringLiteral("Selez. tutti"),
                                         KRVImgSelezionaTutti, [this] { actSelezionaTuttiExecute(); }));
    conferma->insertAction(primo,
                           KRVCreaAzione(this, QStringLiteral("actDeselezionaTutti"), QStringLiteral("Deselez. tutti"),
                                         KRVImgDeselezionaTutti, [this] { actDeselezionaTuttiExecute(); }));

    FormCreate();
    actRipristinaExecute();
}

QList<int> TKRVModSelezionaDdtScaricoMulti::GetSelected() const
{
    const TKRVRisultati *righe = gridRisultati()->Risultati();
    QList<int> keys;
    for (int row = 0; row < righe->rowCount(); ++row) {
        if (righe->Spunta(row, ColonnaSpunta) == Qt::Checked)
            keys << righe->Valore(row, 0).toInt();
    }
    return keys;
}

void TKRVModSelezionaDdtScaricoMulti::SetRagioneSociale(const QString &text)
{
    txtRagioneSociale->setText(text);
}

void TKRVModSelezionaDdtScaricoMulti::accept()
{
    if (GetSelected().isEmpty()) {
        Q3ShowWarning(QStringLiteral("Nessuna voce selezionata!"));
        return;
    }
    QDialog::accept();
}

void TKRVModSelezionaDdtScaricoMulti::actCercaExecute()
{
    AggiornaGriglia(KRVCondizioneDdtScarico(txtAnno->value(), txtRagioneSociale->text()));
}

void TKRVModSelezionaDdtScaricoMulti::actRipristinaExecute()
{
    txtRagioneSociale->clear();
    txtAnno->setValue(QDate::currentDate().year());
    ImpostaSpunte(Qt::Unchecked);
}

void TKRVModSelezionaDdtScaricoMulti::actSelezionaTuttiExecute()
{
    ImpostaSpunte(Qt::Checked);
}

void TKRVModSelezionaDdtScaricoMulti::actDeselezionaTuttiExecute()
{
    ImpostaSpunte(Qt::Unchecked);
}

void TKRVModSelezionaDdtScaricoMulti::FormShow()
{
    // Whoever shows the dialog has reset it and searched already.
}

void TKRVModSelezionaDdtScaricoMulti::gridRisultatiDblClickCell()
{
    // The choice is the check boxes: a double click on a row chooses nothing.
}

void TKRVModSelezionaDdtScaricoMulti::ImpostaSpunte(Qt::CheckState state)
{
    gridRisultati()->Risultati()->ImpostaSpunte(ColonnaSpunta, state);
}
