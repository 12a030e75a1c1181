#include "uKRVRicercaFattureVendita.h"

#include "KRVDeleteRules.h"
#include "KRVStampe.h"
#include "Q3Messages.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVInserimentoFattureVendita.h"
#include "uKRVMain.h"
#include "uKRVSalvaPDF.h"

#include <QDate>
#include <QKeyEvent>
#include <QLabel>

namespace {

const QString EditorFatture = QStringLiteral("actInserimentoFattureVendita");

} // namespace

TKRVRicercaFattureVendita::TKRVRicercaFattureVendita(TKRVMain &main)
    : TKRVRicercaBase(
          main,
          {.Elenco = {.Caption = QStringLiteral("Gestione fatture di vendita"),
                      .QueryHead = QStringLiteral("SELECT * FROM FATT_VEND "),
                      .QueryTail = QStringLiteral(" ORDER BY ANNO DESC, NUMERO DESC"),
                      .KeyField = QStringLiteral("IDFATT_VEND"),
                      .Columns = {{QStringLiteral("N."), 50, QStringLiteral("NUMERO"), TKRVTipoColonna::Intero},
                                  {QStringLiteral("Data"), 80, QStringLiteral("DATA"), TKRVTipoColonna::Data},
                                  {QStringLiteral("Codice"), 120, QStringLiteral("CLI_CODICE"), TKRVTipoColonna::Testo},
                                  {QStringLiteral("Ragione sociale"), 350, QStringLiteral("CLI_RAGIONESOCIALE"),
                                   TKRVTipoColonna::Testo},
                                  {QStringLiteral("Totale"), 110, QStringLiteral("TOTALE_DOCUMENTO"),
                                   TKRVTipoColonna::Importo},
                                  {QStringLiteral("Pagato"), 60, QStringLiteral("PAGATO"), TKRVTipoColonna::Testo}},
                      .Filters = {{.Name = QStringLiteral("txtCodice"), .Label = QStringLiteral("Codice"),
                                   .Condition = QStringLiteral("CLI_CODICE CONTAINING ")},
                                  {.Name = QStringLiteral("txtRagioneSociale"), .Label = QStringLiteral("Ragione sociale"),
                                   .Condition = QStringLiteral("CLI_RAGIONESOCIALE CONTAINING ")},
                                  {.Name = QStringLiteral("txtRigaDescrizione"), .Label = QStringLiteral("Riga"),
                                   .Condition = QStringLiteral("(FATT_VEND.IDFATT_VEND IN (SELECT FATT_VEND_DETT.IDFATT_VEND "
                                                               "FROM FATT_VEND_DETT WHERE FATT_VEND_DETT.DESCRIZIONE "
                                                               "CONTAINING "),
                                   .Closing = QStringLiteral("))")}}},
           .EditorAction = EditorFatture,
           .ColonnaDescrizione = 4,
           .CanDelete = &CanDeleteFatturaVendita,
           .Delete = &DeleteFatturaVendita,
           .PermessoApertura = QStringLiteral("Fatture di vendita (visualizzazione)"),
           .PermessoNuovo = QStringLiteral("Fatture di vendita (modifica)"),
           .PermessoEliminazione = QStringLiteral("Fatture di vendita (eliminazione)"),
           .DeleteRefused = QStringLiteral("Non è possibile eliminare questa fattura,\n\resistono dei dati correlati!")}),
      txtAnno(new QSpinBox)
{
    setObjectName(QStringLiteral("KRVRicercaFattureVendita"));
    setWindowIcon(KRVImage(KRVImgFatture));
    AggiungiFiltroAnno();
    AggiungiStampe();
    FormCreate();
}

// The year stands between the name and the line text, and always filters.
void TKRVRicercaFattureVendita::AggiungiFiltroAnno()
{
    txtAnno->setObjectName(QStringLiteral("txtAnno"));
    txtAnno->setRange(0, 9999);
    txtAnno->setGroupSeparatorShown(false);
    txtAnno->installEventFilter(this);
    QToolBar *barra = Elenco()->BarraRicerca();
    QLineEdit *riga = Elenco()->Filtro(QStringLiteral("txtRigaDescrizione"));
    // Four filters and the search actions fit in the window's opening width.
    Elenco()->Filtro(QStringLiteral("txtCodice"))->setFixedWidth(80);
    Elenco()->Filtro(QStringLiteral("txtRagioneSociale"))->setFixedWidth(130);
    riga->setFixedWidth(110);
    txtAnno->setFixedWidth(60);
    const auto etichettaRiga = barra->findChild<QLabel *>(QStringLiteral("lbltxtRigaDescrizione"));
    QAction *prima = nullptr;
    for (QAction *action : barra->actions()) {
        if (barra->widgetForAction(action) == etichettaRiga)
            prima = action;
    }
    barra->insertWidget(prima, KRVEtichetta(QStringLiteral("Anno"), txtAnno));
    barra->insertWidget(prima, txtAnno);
    barra->insertSeparator(prima);
}

void TKRVRicercaFattureVendita::AggiungiStampe()
{
    QToolBar *barra = findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    barra->addAction(KRVCreaAzione(this, QStringLiteral("actStampa"), QStringLiteral("Stampa"), KRVImgStampa, [this] {
        if (const int id = FatturaSelezionata(); id >= 0)
            StampaFatturaVendita(id, QString(), 0);
    }));
    barra->addAction(KRVCreaAzione(this, QStringLiteral("actSalvaPDF"), QStringLiteral("Salva in PDF"), KRVImgStampa, [this] {
        if (const int id = FatturaSelezionata(); id >= 0)
            SalvaFatturaVenditaPDF(id);
    }));
}

int TKRVRicercaFattureVendita::FatturaSelezionata() const
{
    const int id = GridRisultati()->ChiaveSelezionata();
    if (id < 0)
        Q3ShowWarning(QStringLiteral("Nessuna fattura selezionata!"));
    return id;
}

bool TKRVRicercaFattureVendita::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtAnno && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Elenco()->actCerca()->trigger();
            return true;
        }
    }
    return TKRVRicercaBase::eventFilter(watched, event);
}

QString TKRVRicercaFattureVendita::ClausolaFiltri() const
{
    QString where = QStringLiteral("WHERE ANNO=") + QString::number(txtAnno->value());
    const QString filtri = Elenco()->ClausolaFiltri();
    if (!filtri.isEmpty())
        where += QStringLiteral(" AND ") + filtri.mid(QStringLiteral("WHERE ").size());
    return where;
}

void TKRVRicercaFattureVendita::RicercaIniziale()
{
    actRipristinaExecute();
}

void TKRVRicercaFattureVendita::actCercaExecute()
{
    AggiornaGriglia(ClausolaFiltri());
}

void TKRVRicercaFattureVendita::actRipristinaExecute()
{
    Elenco()->SvuotaFiltri();
    txtAnno->setValue(QDate::currentDate().year());
}

void TKRVRicercaFattureVendita::actNuovoExecute()
{
    if (!KRVVerificaPermesso(Info().PermessoNuovo))
        return;
    Main().Run(EditorFatture);
    if (auto editor = Main().FormAs<TKRVInserimentoFattureVendita>(EditorFatture))
        editor->NuovoRecord();
}
