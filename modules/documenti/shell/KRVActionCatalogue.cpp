#include "KRVActionCatalogue.h"

namespace {

using S = TKRVActionShape;

const QString Fatture = QStringLiteral("Fatture di vendita (visualizzazione)");
const QString Note = QStringLiteral("Note di accredito (visualizzazione)");
const QString Statistiche = QStringLiteral("Statistiche (visualizzazione)");

} // namespace

const QList<TKRVActionInfo> &KRVActionCatalogue()
{
    static const QList<TKRVActionInfo> catalogue = {
        {"actInserimentoAliquoteIVA", "Tabelle", "Inserimento aliquote IVA", {}, S::ShowReused},
        {"actRicercaAliquoteIVA", "Tabelle", "Aliquote IVA", {}, S::ShowReused},
        {"actModSelezionaTipoPagamento", "Modali", "Seleziona un tipo di pagamento", {}, S::CreateOnly},
        {"actModSelezionaAliquotaIVA", "Modali", "actModSelezionaAliquotaIVA", {}, S::CreateOnly},
        {"actInserimentoUM", "Tabelle", "Inserimento unità di misura", {}, S::ShowReused},
        {"actRicercaUM", "Tabelle", "Unità di misura", {}, S::ShowReused},
        {"actInserimentoTipiPagamento", "Tabelle", "Inserimento tipi di pagamento", {}, S::ShowReused},
        {"actRicercaTipiPagamento", "Tabelle", "Tipi di pagamento", {}, S::ShowReused},
        {"actGestioneCategorieAnaMaga", "Tabelle", "Gestione categorie articoli", {}, S::ShowReused},
        {"actGestioneCategorieServizi", "Tabelle", "Gestione categorie servizi", {}, S::ShowReused},
        {"actInserimentoArticoli", "Inserimento", "Inserimento articoli", {}, S::ShowReused},
        {"actModSelezionaUM", "Modali", "Seleziona un'unità di misura", {}, S::CreateOnly},
        {"actRicercaArticoli", "Ricerca", "Articoli", {}, S::ShowReused},
        {"actInserimentoServizi", "Inserimento", "Inserimento servizi", {}, S::ShowReused},
        {"actRicercaServizi", "Ricerca", "Servizi", {}, S::ShowReused},
        {"actModSelezionaServizio", "Modali", "Seleziona un servizio", {}, S::CreateOnly},
        {"actModSelezionaArticolo", "Modali", "Seleziona un articolo", {}, S::CreateOnly},
        {"actInserimentoFattureVendita", "Inserimento", "Inserimento fatture di vendita", {}, S::ShowReused},
        {"actInserimentoClienti", "Inserimento", "Inserimento clienti", {}, S::ShowReused},
        {"actRicercaClienti", "Ricerca", "Clienti", {}, S::ShowReused},
        {"actModSelezionaCliente", "Modali", "Seleziona un cliente", {}, S::CreateOnly},
        {"actRicercaFattureVendita", "Ricerca", "Fatture", Fatture, S::ShowReused},
        {"actInserimentoNoteAccredito", "Inserimento", "Inserimento note di accredito", {}, S::ShowReused},
        {"actRicercaNoteAccredito", "Ricerca", "Note di accredito", Note, S::ShowReused},
        {"actModStampaRiepilogoFatture", "Stampe", "Stampa riepilogo fatture", Statistiche, S::ModalPrint},
        {"actModStampaFatturatoPerCliente", "Stampe", "Stampa fatturato per cliente", Statistiche, S::ModalPrint},
        {"actRicercaNoteDocumenti", "Ricerca", "Note documenti", {}, S::ShowReused},
        {"actInserimentoNoteDocumenti", "Inserimento", "Nuova nota documenti", {}, S::ShowReused},
        {"actStatisticheFatturato", "Statistiche", "Fatturato", Statistiche, S::ShowReused},
        {"actStatisticheFatturatoPerServizio", "Statistiche", "Fatturato per servizio", Statistiche, S::ModalStatistics},
        {"actStatisticheFatturatoPerArticolo", "Statistiche", "Fatturato per articolo", Statistiche, S::ModalStatistics},
        {"actStatisticheMedieServizi1", "Statistiche", "Medie produttività per servizio", {}, S::ModalStatistics},
        {"actStatisticheRedditivitaMensile", "Statistiche", "Redditività mensile", Statistiche, S::ShowReused},
        {"actModSelezionaDdtScaricoMulti", "Modali", "actModSelezionaDdtScaricoMulti", {}, S::CreateOnly},
        {"actStatisticheFatturatoClientiServizi", "Statistiche", "Fatturato clienti-servizi", Statistiche, S::ModalStatistics},
        {"actModSelezionaNotaDocumenti", "Modali", "Seleziona...", {}, S::CreateOnly},
    };
    return catalogue;
}

const TKRVActionInfo *KRVFindAction(const QString &name)
{
    for (const TKRVActionInfo &info : KRVActionCatalogue()) {
        if (info.Name == name)
            return &info;
    }
    return nullptr;
}

const QList<TKRVMenuInfo> &KRVMenus()
{
    static const QList<TKRVMenuInfo> menus = {
        {"MenuAnagrafiche", "mnAnagrafiche", "Anagrafiche", 100,
         {{"actRicercaClienti", {}}, {"-", {}}, {"actRicercaArticoli", {}}, {"actRicercaServizi", {}}}},
        {"MenuDocumenti", "mnDocumenti", "Documenti", 100,
         {{"actRicercaFattureVendita", "Fatture di vendita"}, {"-", {}}, {"actRicercaNoteAccredito", {}}}},
        {"MenuTabelle", "mnTabelle", "Tabelle", 100,
         {{"actRicercaAliquoteIVA", {}}, {"actRicercaUM", {}}, {"actRicercaTipiPagamento", {}},
          {"actGestioneCategorieAnaMaga", {}}, {"actGestioneCategorieServizi", {}}, {"actRicercaNoteDocumenti", {}}}},
        {"MenuStampe", "mnStampe", "Stampe", 0,
         {{"actModStampaRiepilogoFatture", {}}, {"actModStampaFatturatoPerCliente", {}}}},
        {"MenuStatistiche", "mnStatistiche", "Statistiche", 0,
         {{"actStatisticheFatturato", {}}, {"actStatisticheFatturatoPerServizio", {}},
          {"actStatisticheFatturatoClientiServizi", {}}, {"actStatisticheFatturatoPerArticolo", {}},
          {"actStatisticheRedditivitaMensile", {}}}},
    };
    return menus;
}
