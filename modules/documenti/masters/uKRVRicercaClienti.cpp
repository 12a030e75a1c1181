#include "uKRVRicercaClienti.h"

#include "Q3Sql.h"
#include "uKRVBarraLettere.h"
#include "uKRVEliminazione.h"
#include "uKRVFormKit.h"

#include <QVBoxLayout>

namespace {

const QString FiltroCodice = QStringLiteral("txtCodice");
const QString FiltroRagioneSociale = QStringLiteral("txtRagioneSociale");

// One telephone text searched in all four numbers.
QString CondizioneTelefono(const QString &text)
{
    const QString q = QuotedStr(text);
    return QStringLiteral("(TELEFONO1 CONTAINING ") + q + QStringLiteral(" OR TELEFONO2 CONTAINING ") + q
           + QStringLiteral(" OR TELEFONO3 CONTAINING ") + q + QStringLiteral(" OR FAX CONTAINING ") + q
           + QStringLiteral(")");
}

} // namespace

TKRVRicercaClienti::TKRVRicercaClienti(IKRVMain &main)
    : TKRVRicercaBase(
          main,
          {.Elenco = {.Caption = QStringLiteral("Ricerca clienti"),
                      .QueryHead = QStringLiteral("SELECT * FROM CLIENTI "),
                      .QueryTail = QStringLiteral(" ORDER BY UPPER(RAGIONESOCIALE)"),
                      .KeyField = QStringLiteral("IDCLIENTE"),
                      .Columns = {{QStringLiteral("Codice"), 100, QStringLiteral("CODICE"), TKRVTipoColonna::Testo},
                                  {QStringLiteral("Ragione sociale"), 490, QStringLiteral("RAGIONESOCIALE"),
                                   TKRVTipoColonna::Testo},
                                  {QStringLiteral("Telefono 1"), 90, QStringLiteral("TELEFONO1"), TKRVTipoColonna::Testo},
                                  {QStringLiteral("Telefono 2"), 90, QStringLiteral("TELEFONO2"), TKRVTipoColonna::Testo}},
                      .Filters = {{FiltroCodice, QStringLiteral("Codice"), QStringLiteral("CODICE CONTAINING ")},
                                  {FiltroRagioneSociale, QStringLiteral("Ragione sociale"),
                                   QStringLiteral("RAGIONESOCIALE CONTAINING ")}}},
           .EditorAction = QStringLiteral("actInserimentoClienti"),
           .ColonnaDescrizione = 2}),
      txtTelefono(KRVCampoTesto(QStringLiteral("txtTelefono")))
{
    setObjectName(QStringLiteral("KRVRicercaClienti"));
    AggiungiFiltroTelefono();
    // The letters below the filters.
    static_cast<QVBoxLayout *>(layout())->insertWidget(
        2, new TKRVBarraLettere(this, [this](const QString &letter) { BarraRicercaButtonClick(letter); }));
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
    AggiornaGriglia(QStringLiteral("WHERE UPPER(RAGIONESOCIALE) LIKE 'A%'"));
}

void TKRVRicercaClienti::BarraRicercaButtonClick(const QString &letter)
{
    AggiornaGriglia(ClausolaLettera(letter));
}

QString TKRVRicercaClienti::ClausolaLettera(const QString &letter)
{
    return TKRVBarraLettere::Clausola(QStringLiteral("WHERE UPPER(RAGIONESOCIALE)LIKE  "), letter);
}

QString TKRVRicercaClienti::ClausolaFiltri() const
{
    QString where = Elenco()->ClausolaFiltri();
    if (!txtTelefono->text().isEmpty())
        TKRVElencoRicerca::AggiungiCondizione(where, CondizioneTelefono(txtTelefono->text()));
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
    const TKRVEliminazionePerCodice &clienti = KRVEliminazioneClienti();
    if (!KRVConfermaEliminazione(clienti, Elenco()->Filtro(FiltroCodice)->text()))
        return;
    if (KRVEliminaRecord(clienti, id))
        GridRisultati()->RimuoviSelezionata();
}
