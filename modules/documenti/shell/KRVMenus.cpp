#include "KRVMenus.h"

namespace {

const TKRVMenuEntry Separatore{};

} // namespace

const QList<TKRVMenuInfo> &KRVMenus()
{
    using A = TKRVAzione;
    static const QList<TKRVMenuInfo> menus = {
        {"MenuAnagrafiche",
         "mnAnagrafiche",
         "Anagrafiche",
         100,
         {{A::RicercaClienti}, Separatore, {A::RicercaArticoli}, {A::RicercaServizi}}},
        {"MenuDocumenti",
         "mnDocumenti",
         "Documenti",
         100,
         {{A::RicercaFattureVendita, "Fatture di vendita"}, Separatore, {A::RicercaNoteAccredito}}},
        {"MenuTabelle",
         "mnTabelle",
         "Tabelle",
         100,
         {{A::RicercaAliquoteIVA},
          {A::RicercaUM},
          {A::RicercaTipiPagamento},
          {A::GestioneCategorieAnaMaga},
          {A::GestioneCategorieServizi},
          {A::RicercaNoteDocumenti}}},
        {"MenuStampe", "mnStampe", "Stampe", 0, {{A::ModStampaRiepilogoFatture}, {A::ModStampaFatturatoPerCliente}}},
        {"MenuStatistiche",
         "mnStatistiche",
         "Statistiche",
         0,
         {{A::StatisticheFatturato},
          {A::StatisticheFatturatoPerServizio},
          {A::StatisticheFatturatoClientiServizi},
          {A::StatisticheFatturatoPerArticolo},
          {A::StatisticheRedditivitaMensile}}},
    };
    return menus;
}

const QList<TKRVToolBarInfo> &KRVToolBars()
{
    using A = TKRVAzione;
    static const QList<TKRVToolBarInfo> bars = {
        {"tBarKRVDocumenti", "Documenti", {A::RicercaFattureVendita}},
        {"tBarKRVAnagrafiche", "Anagrafiche", {A::RicercaClienti, A::RicercaArticoli, A::RicercaServizi}},
    };
    return bars;
}
