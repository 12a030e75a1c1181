#include "uKRVModSelezionaNotaDocumenti.h"

#include "Q3Guards.h"
#include "uKRVNoteDocumentiElenco.h"

TKRVModSelezionaNotaDocumenti::TKRVModSelezionaNotaDocumenti()
    : TKRVModSelezionaBase(KRVElencoNoteDocumenti(QStringLiteral("Seleziona nota documenti"),
                                                  {{QStringLiteral("Titolo"), 400, QStringLiteral("TITOLO"),
                                                    TKRVTipoColonna::Testo}}),
                           QSize(500, 420))
{
    setObjectName(QStringLiteral("KRVModSelezionaNotaDocumenti"));
    actOK()->setText(QStringLiteral("Ok"));
    FormCreate();
    Q3Guarded([this] { actRipristinaExecute(); });
}

int TKRVModSelezionaNotaDocumenti::ApriSelezionato() const
{
    return gridRisultati()->ChiaveSelezionata();
}

void TKRVModSelezionaNotaDocumenti::FormShow()
{
    // The rows of the last search stay as they were.
}

void TKRVModSelezionaNotaDocumenti::actRipristinaExecute()
{
    Elenco()->SvuotaFiltri();
    AggiornaGriglia(QString());
}
