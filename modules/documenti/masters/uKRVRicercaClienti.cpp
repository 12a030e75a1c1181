#include "uKRVRicercaClienti.h"

#include "KRVClausole.h"
#include "KRVQueryElenchi.h"
#include "uKRVBarraLettere.h"
#include "uKRVEliminazione.h"
#include "uKRVFormKit.h"

#include <QVBoxLayout>

namespace {

const QString FiltroCodice = QStringLiteral("txtCodice");
const QString FiltroRagioneSociale = QStringLiteral("txtRagioneSociale");

} // namespace

TKRVRicercaClienti::TKRVRicercaClienti(IKRVMain &main)
    : TKRVRicercaBase(
        main,
        {.Elenco = {.Caption = QStringLiteral("Ricerca clienti"),
                    .QueryHead = KRVQueryClientiTesta,
                    .QueryTail = KRVQueryClientiCoda,
                    .Columns = {{QStringLiteral("Codice"), 100, QStringLiteral("CODICE"), TKRVTipoColonna::Testo},
                                {QStringLiteral("Ragione sociale"), 490, QStringLiteral("RAGIONESOCIALE"),
                                 TKRVTipoColonna::Testo},
                                {QStringLiteral("Telefono 1"), 90, QStringLiteral("TELEFONO1"), TKRVTipoColonna::Testo},
                                {QStringLiteral("Telefono 2"), 90, QStringLiteral("TELEFONO2"),
                                 TKRVTipoColonna::Testo}},
                    .Filters = {{FiltroCodice, QStringLiteral("Codice"), QStringLiteral("CODICE CONTAINING ")},
                                {FiltroRagioneSociale, QStringLiteral("Ragione sociale"),
                                 QStringLiteral("RAGIONESOCIALE CONTAINING ")}}},
         .Entita = &KRVEntitaClienti(),
         .ColonnaDescrizione = 2}),
      txtTelefono(KRVCampoTesto(QStringLiteral("txtTelefono")))
{
    setObjectName(QStringLiteral("KRVRicercaClienti"));
    AggiungiFiltroTelefono();
    // The letters below the filters.
    static_cast<QVBoxLayout *>(layout())->insertWidget(2, new TKRVBarraLettere(this, [this](const QString &letter) {
                                                           BarraRicercaButtonClick(letter);
                                                       }));
    FormCreate();
}

// Not one of the list's plain filters: its condition spans four columns, and
// "Ripristina" leaves its text as it is.
void TKRVRicercaClienti::AggiungiFiltroTelefono()
{
    QToolBar *barra = Elenco()->BarraRicerca();
    QAction *cerca = Elenco()->actCerca();
    // Three filters and the search actions fit in the window's opening width.
    Elenco()->Filtro(FiltroCodice)->setFixedWidth(90);
    Elenco()->Filtro(FiltroRagioneSociale)->setFixedWidth(170);
    txtTelefono->setFixedWidth(100);
    connect(txtTelefono, &QLineEdit::returnPressed, cerca, &QAction::trigger);
    barra->insertWidget(cerca, KRVEtichetta(QStringLiteral("Telefono"), txtTelefono));
    barra->insertWidget(cerca, txtTelefono);
    barra->insertSeparator(cerca);
}

void TKRVRicercaClienti::RicercaIniziale()
{
    AggiornaGriglia(KRVClausolaClientiIniziale);
}

void TKRVRicercaClienti::BarraRicercaButtonClick(const QString &letter)
{
    AggiornaGriglia(ClausolaLettera(letter));
}

QString TKRVRicercaClienti::ClausolaLettera(const QString &letter)
{
    return KRVClausolaLetteraRicercaClienti(letter);
}

QString TKRVRicercaClienti::ClausolaFiltri() const
{
    QString where = Elenco()->ClausolaFiltri();
    if (!txtTelefono->text().isEmpty())
        KRVAggiungiCondizione(where, KRVCondizioneTelefono(txtTelefono->text()));
    return where;
}

void TKRVRicercaClienti::actCercaExecute()
{
    AggiornaGriglia(ClausolaFiltri());
}

void TKRVRicercaClienti::actEliminaExecute()
{
    const int id = GridRisultati()->ChiaveSelezionata();
    if (id < 0)
        return;
    // The rule is asked about the code typed in the filter, not the row's.
    if (!KRVConfermaEliminazione(Sessione(), Entita(), Elenco()->Filtro(FiltroCodice)->text()))
        return;
    if (KRVEliminaRecord(Sessione(), Entita(), id))
        GridRisultati()->RimuoviSelezionata();
}
