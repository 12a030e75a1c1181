#include "uKRVModSelezionaCatalogo.h"

#include "KRVClausole.h"
#include "KRVQueryElenchi.h"
#include "Q3Guards.h"

TKRVModSelezionaCatalogo::TKRVModSelezionaCatalogo(const TKRVCatalogo &catalogo, const QString &caption,
                                                   const QString &queryHead)
    : TKRVModSelezionaBase(
        {.Caption = caption,
         .QueryHead = queryHead,
         .QueryTail = KRVQueryCatalogoCoda,
         .KeyField = catalogo.Entita.Chiave,
         .Columns = {{QStringLiteral("Codice"), 130, QStringLiteral("CODICE"), TKRVTipoColonna::Testo},
                     {QStringLiteral("Descrizione"), 330, QStringLiteral("DESCRIZIONE"), TKRVTipoColonna::Testo},
                     {QStringLiteral("Categoria"), 150, QStringLiteral("CATEGORIA"), TKRVTipoColonna::Testo}},
         .Filters = {{.Name = QStringLiteral("txtCodice"),
                      .Label = QStringLiteral("Codice"),
                      .Condition = QStringLiteral("CODICE CONTAINING ")},
                     {.Name = QStringLiteral("txtDescrizione"),
                      .Label = QStringLiteral("Descrizione"),
                      .Condition = QStringLiteral("DESCRIZIONE CONTAINING "),
                      .EnterSearches = false}}},
        QSize(760, 480)),
      m_catalogo(catalogo), txtCategoria(new TKRVCategoriaBox(QStringLiteral("txtCategoria"),
                                                              {.Table = catalogo.CategoryTable,
                                                               .KeyColumn = catalogo.CategoryKey,
                                                               .OrderBy = QStringLiteral("ORDER BY CATEGORIA"),
                                                               .FirstEntry = QStringLiteral("Tutte le categorie")}))
{
    KRVInserisciCategorie(this, *Elenco(), txtCategoria);
    FormCreate();
    Q3Guarded([this] { actRipristinaExecute(); });
}

int TKRVModSelezionaCatalogo::ApriSelezionato() const
{
    return gridRisultati()->ChiaveSelezionata();
}

void TKRVModSelezionaCatalogo::FormShow()
{
    // The rows of the last search stay as they were.
}

void TKRVModSelezionaCatalogo::actCercaExecute()
{
    QString where = Elenco()->ClausolaFiltri();
    const QString categorie = txtCategoria->ElencoCategorie(QStringLiteral(", "));
    if (!categorie.isEmpty())
        KRVAggiungiCondizione(where, KRVCondizioneCategorieSelezione(m_catalogo.CategoryColumn(), categorie));
    AggiornaGriglia(where);
}

void TKRVModSelezionaCatalogo::actRipristinaExecute()
{
    Elenco()->SvuotaFiltri();
    txtCategoria->CaricaCategorie();
}
