#include "uKRVRicercaNoteDocumenti.h"

#include "KRVUtils.h"
#include "uKRVNoteDocumentiElenco.h"

TKRVRicercaNoteDocumenti::TKRVRicercaNoteDocumenti(IKRVMain &main)
    : TKRVRicercaBase(main, {.Elenco = KRVElencoNoteDocumenti(QStringLiteral("Gestione note documenti"),
                                                              {{QStringLiteral("Titolo"), 250, QStringLiteral("TITOLO"),
                                                                TKRVTipoColonna::Testo},
                                                               {QStringLiteral("Testo"), 500, QStringLiteral("TESTO"),
                                                                TKRVTipoColonna::Testo}}),
                             .Entita = &KRVEntitaNoteDocumenti(),
                             .ColonnaDescrizione = 2})
{
    setObjectName(QStringLiteral("KRVRicercaNoteDocumenti"));
    FormCreate();
}

void TKRVRicercaNoteDocumenti::actRipristinaExecute()
{
    Elenco()->SvuotaFiltri();
    AggiornaGriglia(QString());
}

void TKRVRicercaNoteDocumenti::actEliminaExecute()
{
    const int id = GridRisultati()->ChiaveSelezionata();
    if (id < 0)
        return;
    if (Entita().Delete(Sessione(), id, true))
        actCercaExecute();
}
