#include "uKRVRicercaCatalogo.h"

#include "KRVClausole.h"
#include "uKRVEliminazione.h"

TKRVRicercaCatalogo::TKRVRicercaCatalogo(IKRVMain &main, const TKRVCatalogo &catalogo, const QString &caption,
                                         const QString &queryHead, const QString &queryTail)
    : TKRVRicercaBase(
        main,
        {.Elenco = {.Caption = caption,
                    .QueryHead = queryHead,
                    .QueryTail = queryTail,
                    .Columns = {{QStringLiteral("Codice"), 150, QStringLiteral("CODICE"), TKRVTipoColonna::Testo},
                                {QStringLiteral("Descrizione"), 370, QStringLiteral("DESCRIZIONE"),
                                 TKRVTipoColonna::Testo},
                                {QString(), 0, catalogo.CategoryKey, TKRVTipoColonna::Intero},
                                {QStringLiteral("Categoria"), 150, QStringLiteral("CATEGORIA"), TKRVTipoColonna::Testo},
                                {QStringLiteral("Prezzo"), 100, QStringLiteral("PREZZO"), TKRVTipoColonna::Importo}},
                    .Filters = {{.Name = QStringLiteral("txtCodice"),
                                 .Label = QStringLiteral("Codice"),
                                 .Condition = QStringLiteral("UPPER(CODICE) CONTAINING "),
                                 .UpperCase = true},
                                {.Name = QStringLiteral("txtDescrizione"),
                                 .Label = QStringLiteral("Descrizione"),
                                 .Condition = QStringLiteral("UPPER(DESCRIZIONE) CONTAINING "),
                                 .UpperCase = true}}},
         .Entita = &catalogo.Entita,
         .ColonnaDescrizione = 2}),
      m_catalogo(catalogo), txtCategoria(new TKRVCategoriaBox(QStringLiteral("txtCategoria"),
                                                              {.Table = catalogo.CategoryTable,
                                                               .KeyColumn = catalogo.CategoryKey,
                                                               .OrderBy = QStringLiteral("ORDER BY UPPER(CATEGORIA)"),
                                                               .FirstEntry = QStringLiteral("Tutte le categorie")}))
{
    KRVInserisciCategorie(this, *Elenco(), txtCategoria);
}

QString TKRVRicercaCatalogo::ClausolaRicerca() const
{
    QString where = Elenco()->ClausolaFiltri();
    const QString categorie = txtCategoria->ElencoCategorie(QStringLiteral(","));
    if (!categorie.isEmpty())
        KRVAggiungiCondizione(where, KRVCondizioneCategorie(m_catalogo.CategoryColumn(), categorie));
    return where;
}

void TKRVRicercaCatalogo::Cerca(const QString &where)
{
    AggiornaGriglia(where);
}

void TKRVRicercaCatalogo::RicercaIniziale()
{
    txtCategoria->CaricaCategorie();
}

void TKRVRicercaCatalogo::actCercaExecute()
{
    Cerca(ClausolaRicerca());
}

void TKRVRicercaCatalogo::actRipristinaExecute()
{
    Elenco()->SvuotaFiltri();
    txtCategoria->CaricaCategorie();
}

void TKRVRicercaCatalogo::actEliminaExecute()
{
    TKRVGrigliaRisultati *grid = GridRisultati();
    if (!grid->HaRigaSelezionata())
        return;
    // The test follows what the user typed in the code filter, not the row.
    if (!KRVConfermaEliminazione(Sessione(), m_catalogo.Entita, Elenco()->Filtro(QStringLiteral("txtCodice"))->text()))
        return;
    if (KRVEliminaRecord(Sessione(), m_catalogo.Entita, grid->ChiaveSelezionata()))
        grid->RimuoviSelezionata();
}
