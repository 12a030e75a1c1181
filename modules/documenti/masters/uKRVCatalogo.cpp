#include "uKRVCatalogo.h"

#include "KRVUtils.h"

const TKRVCatalogo &KRVCatalogoArticoli()
{
    static const TKRVCatalogo articoli{
        .Table = QStringLiteral("ANA_MAGA"),
        .KeyField = QStringLiteral("IDANA_MAGA"),
        .Generator = QStringLiteral("GN_IDANA_MAGA"),
        .Dataset = QStringLiteral("adsAnaMaga"),
        .CodePrefix = QStringLiteral("ART"),
        .CategoryTable = QStringLiteral("CATEGORIE_ANA_MAGA"),
        .CategoryKey = QStringLiteral("IDCATEGORIA_ANA_MAGA"),
        .EditorAction = QStringLiteral("actInserimentoArticoli"),
        .SearchAction = QStringLiteral("actRicercaArticoli"),
        .CodiceExists = &CodiceAnaMagaExists,
        .Eliminazione = {.CanDelete = &CanDeleteAnaMaga,
                         .Rifiuto = QStringLiteral(
                             "Non è possibile eliminare questo articolo,\n\resistono dei dati correlati!"),
                         .Delete = &KRVEliminaAnaMaga},
    };
    return articoli;
}

const TKRVCatalogo &KRVCatalogoServizi()
{
    static const TKRVCatalogo servizi{
        .Table = QStringLiteral("SERVIZI"),
        .KeyField = QStringLiteral("IDSERVIZIO"),
        .Generator = QStringLiteral("GN_IDSERVIZIO"),
        .Dataset = QStringLiteral("adsServizi"),
        .CodePrefix = QStringLiteral("SRV"),
        .CategoryTable = QStringLiteral("CATEGORIE_SERVIZI"),
        .CategoryKey = QStringLiteral("IDCATEGORIA_SERVIZI"),
        .EditorAction = QStringLiteral("actInserimentoServizi"),
        .SearchAction = QStringLiteral("actRicercaServizi"),
        .CodiceExists = &CodiceServizioExists,
        .Eliminazione = {.CanDelete = &CanDeleteServizio,
                         .Rifiuto = QStringLiteral(
                             "Non è possibile eliminare questo servizio,\n\resistono dei dati correlati!"),
                         .Delete = &KRVEliminaServizio},
    };
    return servizi;
}
