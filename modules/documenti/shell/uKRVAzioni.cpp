#include "uKRVAzioni.h"

#include "KRVEntita.h"

#include "KRVStampeRiepiloghi.h"
#include "uKRVModStampaFatturatoPerCliente.h"
#include "uKRVModStampaRiepilogoFatture.h"

#include "uKRVGestioneCategorieAnaMaga.h"
#include "uKRVGestioneCategorieServizi.h"
#include "uKRVImages.h"
#include "uKRVInserimentoAliquoteIVA.h"
#include "uKRVInserimentoArticoli.h"
#include "uKRVInserimentoClienti.h"
#include "uKRVInserimentoFattureVendita.h"
#include "uKRVInserimentoNoteAccredito.h"
#include "uKRVInserimentoNoteDocumenti.h"
#include "uKRVInserimentoServizi.h"
#include "uKRVInserimentoTipiPagamento.h"
#include "uKRVInserimentoUM.h"
#include "uKRVModSelezionaAliquotaIVA.h"
#include "uKRVModSelezionaArticolo.h"
#include "uKRVModSelezionaCliente.h"
#include "uKRVModSelezionaDdtScaricoMulti.h"
#include "uKRVModSelezionaFatturaVendita.h"
#include "uKRVModSelezionaNotaDocumenti.h"
#include "uKRVModSelezionaServizio.h"
#include "uKRVModSelezionaTipoPagamento.h"
#include "uKRVModSelezionaUM.h"
#include "uKRVModStatisticheFatturatoClientiServizi.h"
#include "uKRVModStatisticheFatturatoPerArticolo.h"
#include "uKRVModStatisticheFatturatoPerServizio.h"
#include "uKRVModStatisticheMedieServizi1.h"
#include "uKRVRicercaAliquoteIva.h"
#include "uKRVRicercaArticoli.h"
#include "uKRVRicercaClienti.h"
#include "uKRVRicercaFattureVendita.h"
#include "uKRVRicercaNoteAccredito.h"
#include "uKRVRicercaNoteDocumenti.h"
#include "uKRVRicercaServizi.h"
#include "uKRVRicercaTipiPagamento.h"
#include "uKRVRicercaUM.h"
#include "uKRVSalvaExcel.h"
#include "uKRVSalvaPDF.h"
#include "uKRVScegliCartella.h"
#include "uKRVStatisticheFatturato.h"
#include "uKRVStatisticheRedditivitaMensile.h"

namespace {

// A window made for the main object.
template <typename TForm>
TKRVFormClass KRVWindow()
{
    return {[](IKRVMain &main) -> QWidget * { return new TForm(main); }, {}, {}};
}

// A selection dialog, which needs nothing of the main object.
template <typename TDialog>
TKRVFormClass KRVSelectionDialog()
{
    return {[](IKRVMain &) -> QWidget * { return new TDialog; }, {}, {}};
}

// A yearly print dialog and the print that follows its OK.
template <typename TDialog>
TKRVFormClass KRVStampaAnnuale(void (*stampa)(const TDialog &dialog))
{
    return {[](IKRVMain &) -> QWidget * { return new TDialog; },
            {},
            [stampa](QWidget *form) { stampa(*static_cast<TDialog *>(form)); }};
}

// A statistics print dialog, reset before every showing: through its own
// "Ripristina" action where it has one.
template <typename TDialog>
TKRVFormClass KRVStatistica()
{
    return {[](IKRVMain &main) -> QWidget * { return new TDialog(main); },
            [](QWidget *form) {
                auto dialog = static_cast<TDialog *>(form);
                if constexpr (requires { dialog->actRipristina(); })
                    dialog->actRipristina()->trigger();
                else
                    dialog->Ripristina();
            },
            {}};
}

} // namespace

const QList<TKRVActionInfo> &KRVActionCatalogue()
{
    using A = TKRVAzione;
    using S = TKRVActionShape;
    const QString Statistiche = QStringLiteral("Statistiche (visualizzazione)");
    static const QList<TKRVActionInfo> catalogue = {
        {A::InserimentoAliquoteIVA,
         "actInserimentoAliquoteIVA",
         "Tabelle",
         "Inserimento aliquote IVA",
         {},
         S::ShowReused,
         KRVImgTabelle,
         KRVWindow<TKRVInserimentoAliquoteIVA>()},
        {A::RicercaAliquoteIVA,
         "actRicercaAliquoteIVA",
         "Tabelle",
         "Aliquote IVA",
         {},
         S::ShowReused,
         KRVImgTabelle,
         KRVWindow<TKRVRicercaAliquoteIva>()},
        {A::ModSelezionaTipoPagamento,
         "actModSelezionaTipoPagamento",
         "Modali",
         "Seleziona un tipo di pagamento",
         {},
         S::CreateOnly,
         KRVImgFatture,
         KRVSelectionDialog<TKRVModSelezionaTipoPagamento>()},
        {A::ModSelezionaAliquotaIVA,
         "actModSelezionaAliquotaIVA",
         "Modali",
         "actModSelezionaAliquotaIVA",
         {},
         S::CreateOnly,
         KRVImgFatture,
         KRVSelectionDialog<TKRVModSelezionaAliquotaIVA>()},
        {A::InserimentoUM,
         "actInserimentoUM",
         "Tabelle",
         "Inserimento unità di misura",
         {},
         S::ShowReused,
         KRVImgTabelle,
         KRVWindow<TKRVInserimentoUM>()},
        {A::RicercaUM,
         "actRicercaUM",
         "Tabelle",
         "Unità di misura",
         {},
         S::ShowReused,
         KRVImgTabelle,
         KRVWindow<TKRVRicercaUM>()},
        {A::InserimentoTipiPagamento,
         "actInserimentoTipiPagamento",
         "Tabelle",
         "Inserimento tipi di pagamento",
         {},
         S::ShowReused,
         KRVImgTabelle,
         KRVWindow<TKRVInserimentoTipiPagamento>()},
        {A::RicercaTipiPagamento,
         "actRicercaTipiPagamento",
         "Tabelle",
         "Tipi di pagamento",
         {},
         S::ShowReused,
         KRVImgTabelle,
         KRVWindow<TKRVRicercaTipiPagamento>()},
        {A::GestioneCategorieAnaMaga,
         "actGestioneCategorieAnaMaga",
         "Tabelle",
         "Gestione categorie articoli",
         {},
         S::ShowReused,
         KRVImgArticoli,
         KRVWindow<TKRVGestioneCategorieAnaMaga>()},
        {A::GestioneCategorieServizi,
         "actGestioneCategorieServizi",
         "Tabelle",
         "Gestione categorie servizi",
         {},
         S::ShowReused,
         KRVImgServizi,
         KRVWindow<TKRVGestioneCategorieServizi>()},
        {A::InserimentoArticoli,
         "actInserimentoArticoli",
         "Inserimento",
         "Inserimento articoli",
         {},
         S::ShowReused,
         KRVImgArticoli,
         KRVWindow<TKRVInserimentoArticoli>()},
        {A::ModSelezionaUM,
         "actModSelezionaUM",
         "Modali",
         "Seleziona un'unità di misura",
         {},
         S::CreateOnly,
         KRVImgFatture,
         KRVSelectionDialog<TKRVModSelezionaUM>()},
        {A::RicercaArticoli,
         "actRicercaArticoli",
         "Ricerca",
         "Articoli",
         {},
         S::ShowReused,
         KRVImgArticoli,
         KRVWindow<TKRVRicercaArticoli>(),
         "Gestione articoli",
         "Apre la maschera per cercare, creare o eliminare gli articoli."},
        {A::InserimentoServizi,
         "actInserimentoServizi",
         "Inserimento",
         "Inserimento servizi",
         {},
         S::ShowReused,
         KRVImgServizi,
         KRVWindow<TKRVInserimentoServizi>()},
        {A::RicercaServizi,
         "actRicercaServizi",
         "Ricerca",
         "Servizi",
         {},
         S::ShowReused,
         KRVImgServizi,
         KRVWindow<TKRVRicercaServizi>(),
         "Gestione servizi",
         "Apre la maschera per cercare, creare o eliminare i servizi."},
        {A::ModSelezionaServizio,
         "actModSelezionaServizio",
         "Modali",
         "Seleziona un servizio",
         {},
         S::CreateOnly,
         KRVImgServizi,
         KRVSelectionDialog<TKRVModSelezionaServizio>()},
        {A::ModSelezionaArticolo,
         "actModSelezionaArticolo",
         "Modali",
         "Seleziona un articolo",
         {},
         S::CreateOnly,
         KRVImgArticoli,
         KRVSelectionDialog<TKRVModSelezionaArticolo>()},
        {A::InserimentoFattureVendita,
         "actInserimentoFattureVendita",
         "Inserimento",
         "Inserimento fatture di vendita",
         {},
         S::ShowReused,
         KRVImgFatture,
         KRVWindow<TKRVInserimentoFattureVendita>()},
        {A::InserimentoClienti,
         "actInserimentoClienti",
         "Inserimento",
         "Inserimento clienti",
         {},
         S::ShowReused,
         KRVImgClienti,
         KRVWindow<TKRVInserimentoClienti>()},
        {A::RicercaClienti,
         "actRicercaClienti",
         "Ricerca",
         "Clienti",
         {},
         S::ShowReused,
         KRVImgClienti,
         KRVWindow<TKRVRicercaClienti>(),
         "Gestione clienti",
         "Apre la maschera per la ricerca, modifica e creazione di anagrafiche cliente."},
        {A::ModSelezionaCliente,
         "actModSelezionaCliente",
         "Modali",
         "Seleziona un cliente",
         {},
         S::CreateOnly,
         KRVImgClienti,
         KRVSelectionDialog<TKRVModSelezionaCliente>()},
        {A::RicercaFattureVendita, "actRicercaFattureVendita", "Ricerca", "Fatture",
         KRVEntitaFattureVendita().PermessoVisualizzazione, S::ShowReused, KRVImgFatture,
         KRVWindow<TKRVRicercaFattureVendita>(), "Ricerca fatture di vendita", "Cerca una fattura di vendita."},
        {A::InserimentoNoteAccredito,
         "actInserimentoNoteAccredito",
         "Inserimento",
         "Inserimento note di accredito",
         {},
         S::ShowReused,
         KRVImgFatture,
         KRVWindow<TKRVInserimentoNoteAccredito>()},
        {A::RicercaNoteAccredito, "actRicercaNoteAccredito", "Ricerca", "Note di accredito",
         KRVEntitaNoteAccredito().PermessoVisualizzazione, S::ShowReused, KRVImgFatture,
         KRVWindow<TKRVRicercaNoteAccredito>()},
        {A::ModStampaRiepilogoFatture, "actModStampaRiepilogoFatture", "Stampe", "Stampa riepilogo fatture",
         Statistiche, S::ModalPrint, KRVImgStampa,
         KRVStampaAnnuale<TKRVModStampaRiepilogoFatture>([](const TKRVModStampaRiepilogoFatture &dialog) {
             StampaRiepilogoFatture(dialog.Anno(), dialog.Pagato(), dialog.Scadenza());
         })},
        {A::ModStampaFatturatoPerCliente, "actModStampaFatturatoPerCliente", "Stampe", "Stampa fatturato per cliente",
         Statistiche, S::ModalPrint, KRVImgClienti,
         KRVStampaAnnuale<TKRVModStampaFatturatoPerCliente>(
             [](const TKRVModStampaFatturatoPerCliente &dialog) { StampaFatturatoPerCliente(dialog.Anno()); })},
        {A::RicercaNoteDocumenti,
         "actRicercaNoteDocumenti",
         "Ricerca",
         "Note documenti",
         {},
         S::ShowReused,
         KRVImgFatture,
         KRVWindow<TKRVRicercaNoteDocumenti>()},
        {A::InserimentoNoteDocumenti,
         "actInserimentoNoteDocumenti",
         "Inserimento",
         "Nuova nota documenti",
         {},
         S::ShowReused,
         KRVImgFatture,
         KRVWindow<TKRVInserimentoNoteDocumenti>()},
        {A::StatisticheFatturato, "actStatisticheFatturato", "Statistiche", "Fatturato", Statistiche, S::ShowReused,
         KRVImgStatistiche, KRVWindow<TKRVStatisticheFatturato>()},
        {A::StatisticheFatturatoPerServizio, "actStatisticheFatturatoPerServizio", "Statistiche",
         "Fatturato per servizio", Statistiche, S::ModalStatistics, KRVImgServizi,
         KRVStatistica<TKRVModStatisticheFatturatoPerServizio>()},
        {A::StatisticheFatturatoPerArticolo, "actStatisticheFatturatoPerArticolo", "Statistiche",
         "Fatturato per articolo", Statistiche, S::ModalStatistics, KRVImgArticoli,
         KRVStatistica<TKRVModStatisticheFatturatoPerArticolo>()},
        {A::StatisticheMedieServizi1,
         "actStatisticheMedieServizi1",
         "Statistiche",
         "Medie produttività per servizio",
         {},
         S::ModalStatistics,
         KRVImgServizi,
         KRVStatistica<TKRVModStatisticheMedieServizi1>()},
        {A::StatisticheRedditivitaMensile, "actStatisticheRedditivitaMensile", "Statistiche", "Redditività mensile",
         Statistiche, S::ShowReused, KRVImgStatistiche, KRVWindow<TKRVStatisticheRedditivitaMensile>()},
        {A::ModSelezionaDdtScaricoMulti,
         "actModSelezionaDdtScaricoMulti",
         "Modali",
         "actModSelezionaDdtScaricoMulti",
         {},
         S::CreateOnly,
         KRVImgFatture,
         KRVSelectionDialog<TKRVModSelezionaDdtScaricoMulti>()},
        {A::StatisticheFatturatoClientiServizi, "actStatisticheFatturatoClientiServizi", "Statistiche",
         "Fatturato clienti-servizi", Statistiche, S::ModalStatistics, KRVImgClienti,
         KRVStatistica<TKRVModStatisticheFatturatoClientiServizi>()},
        {A::ModSelezionaNotaDocumenti,
         "actModSelezionaNotaDocumenti",
         "Modali",
         "Seleziona...",
         {},
         S::CreateOnly,
         KRVImgFatture,
         KRVSelectionDialog<TKRVModSelezionaNotaDocumenti>()},
        {A::ModSelezionaFatturaVendita,
         "actModSelezionaFatturaVendita",
         "Modali",
         "Seleziona...",
         {},
         S::CreateOnly,
         KRVImgFatture,
         KRVSelectionDialog<TKRVModSelezionaFatturaVendita>()},
    };
    return catalogue;
}

const TKRVActionInfo &KRVAction(TKRVAzione azione)
{
    // The rows stand in the order of the keys.
    return KRVActionCatalogue().at(static_cast<int>(azione));
}

const TKRVActionInfo *KRVFindAction(const QString &name)
{
    for (const TKRVActionInfo &info : KRVActionCatalogue()) {
        if (info.Name == name)
            return &info;
    }
    return nullptr;
}

TKRVDialoghiSalvataggio::TKRVDialoghiSalvataggio() = default;

TKRVDialoghiSalvataggio::~TKRVDialoghiSalvataggio() = default;

TKRVSalvaPDF *TKRVDialoghiSalvataggio::PDF()
{
    if (!m_pdf)
        m_pdf = std::make_unique<TKRVSalvaPDF>();
    return m_pdf.get();
}

TKRVSalvaExcel *TKRVDialoghiSalvataggio::Excel()
{
    if (!m_excel)
        m_excel = std::make_unique<TKRVSalvaExcel>();
    return m_excel.get();
}

TKRVCartellaFatturaPA *TKRVDialoghiSalvataggio::CartellaFatturaPA()
{
    if (!m_cartellaFatturaPA)
        m_cartellaFatturaPA = std::make_unique<TKRVCartellaFatturaPA>();
    return m_cartellaFatturaPA.get();
}

TKRVZipFatturePA *TKRVDialoghiSalvataggio::ZipFatturePA()
{
    if (!m_zipFatturePA)
        m_zipFatturePA = std::make_unique<TKRVZipFatturePA>();
    return m_zipFatturePA.get();
}

void KRVApriFatturaCiclica(QWidget *editor, int id)
{
    auto fattura = qobject_cast<TKRVInserimentoFattureVendita *>(editor);
    if (fattura && fattura->ApriRecord(id) == 0)
        fattura->ImpostaFatturaCiclica();
}
