#pragma once

#include <QHashFunctions>

// The module's actions, as the windows and the shell name them to each other.
// Each has one row in the shell's action table (its object name "act...",
// caption, right, icon and window); the names as text serve only the host.
enum class TKRVAzione {
    InserimentoAliquoteIVA,
    RicercaAliquoteIVA,
    ModSelezionaTipoPagamento,
    ModSelezionaAliquotaIVA,
    InserimentoUM,
    RicercaUM,
    InserimentoTipiPagamento,
    RicercaTipiPagamento,
    GestioneCategorieAnaMaga,
    GestioneCategorieServizi,
    InserimentoArticoli,
    ModSelezionaUM,
    RicercaArticoli,
    InserimentoServizi,
    RicercaServizi,
    ModSelezionaServizio,
    ModSelezionaArticolo,
    InserimentoFattureVendita,
    InserimentoClienti,
    RicercaClienti,
    ModSelezionaCliente,
    RicercaFattureVendita,
    InserimentoNoteAccredito,
    RicercaNoteAccredito,
    ModStampaRiepilogoFatture,
    ModStampaFatturatoPerCliente,
    RicercaNoteDocumenti,
    InserimentoNoteDocumenti,
    StatisticheFatturato,
    StatisticheFatturatoPerServizio,
    StatisticheFatturatoPerArticolo,
    StatisticheMedieServizi1,
    StatisticheRedditivitaMensile,
    ModSelezionaDdtScaricoMulti,
    StatisticheFatturatoClientiServizi,
    ModSelezionaNotaDocumenti,
    ModSelezionaFatturaVendita,
};

inline size_t qHash(TKRVAzione azione, size_t seed = 0) noexcept
{
    return ::qHash(static_cast<int>(azione), seed);
}
