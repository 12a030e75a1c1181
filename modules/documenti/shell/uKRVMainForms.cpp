#include "uKRVMainForms.h"

#include "KRVStampeRiepiloghi.h"
#include "uKRVModStampaFatturatoPerCliente.h"
#include "uKRVModStampaRiepilogoFatture.h"

#include "uKRVGestioneCategorieAnaMaga.h"
#include "uKRVGestioneCategorieServizi.h"
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
    return {[](IKRVMain &) -> QWidget * { return new TDialog; }, {},
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

const QHash<QString, TKRVFormClass> &KRVFormClasses()
{
    static const QHash<QString, TKRVFormClass> classes = {
        {QStringLiteral("actInserimentoAliquoteIVA"), KRVWindow<TKRVInserimentoAliquoteIVA>()},
        {QStringLiteral("actRicercaAliquoteIVA"), KRVWindow<TKRVRicercaAliquoteIva>()},
        {QStringLiteral("actInserimentoUM"), KRVWindow<TKRVInserimentoUM>()},
        {QStringLiteral("actRicercaUM"), KRVWindow<TKRVRicercaUM>()},
        {QStringLiteral("actInserimentoTipiPagamento"), KRVWindow<TKRVInserimentoTipiPagamento>()},
        {QStringLiteral("actRicercaTipiPagamento"), KRVWindow<TKRVRicercaTipiPagamento>()},
        {QStringLiteral("actModSelezionaUM"), KRVSelectionDialog<TKRVModSelezionaUM>()},
        {QStringLiteral("actModSelezionaTipoPagamento"), KRVSelectionDialog<TKRVModSelezionaTipoPagamento>()},
        {QStringLiteral("actModSelezionaAliquotaIVA"), KRVSelectionDialog<TKRVModSelezionaAliquotaIVA>()},
        {QStringLiteral("actGestioneCategorieAnaMaga"), KRVWindow<TKRVGestioneCategorieAnaMaga>()},
        {QStringLiteral("actGestioneCategorieServizi"), KRVWindow<TKRVGestioneCategorieServizi>()},
        {QStringLiteral("actInserimentoClienti"), KRVWindow<TKRVInserimentoClienti>()},
        {QStringLiteral("actRicercaClienti"), KRVWindow<TKRVRicercaClienti>()},
        {QStringLiteral("actModSelezionaCliente"), KRVSelectionDialog<TKRVModSelezionaCliente>()},
        {QStringLiteral("actInserimentoArticoli"), KRVWindow<TKRVInserimentoArticoli>()},
        {QStringLiteral("actRicercaArticoli"), KRVWindow<TKRVRicercaArticoli>()},
        {QStringLiteral("actModSelezionaArticolo"), KRVSelectionDialog<TKRVModSelezionaArticolo>()},
        {QStringLiteral("actInserimentoServizi"), KRVWindow<TKRVInserimentoServizi>()},
        {QStringLiteral("actRicercaServizi"), KRVWindow<TKRVRicercaServizi>()},
        {QStringLiteral("actModSelezionaServizio"), KRVSelectionDialog<TKRVModSelezionaServizio>()},
        {QStringLiteral("actInserimentoFattureVendita"), KRVWindow<TKRVInserimentoFattureVendita>()},
        {QStringLiteral("actRicercaFattureVendita"), KRVWindow<TKRVRicercaFattureVendita>()},
        {QStringLiteral("actInserimentoNoteAccredito"), KRVWindow<TKRVInserimentoNoteAccredito>()},
        {QStringLiteral("actRicercaNoteAccredito"), KRVWindow<TKRVRicercaNoteAccredito>()},
        {QStringLiteral("actInserimentoNoteDocumenti"), KRVWindow<TKRVInserimentoNoteDocumenti>()},
        {QStringLiteral("actRicercaNoteDocumenti"), KRVWindow<TKRVRicercaNoteDocumenti>()},
        {QStringLiteral("actModSelezionaNotaDocumenti"), KRVSelectionDialog<TKRVModSelezionaNotaDocumenti>()},
        {QStringLiteral("actModSelezionaDdtScaricoMulti"), KRVSelectionDialog<TKRVModSelezionaDdtScaricoMulti>()},
        {QStringLiteral("actModStampaRiepilogoFatture"),
         KRVStampaAnnuale<TKRVModStampaRiepilogoFatture>([](const TKRVModStampaRiepilogoFatture &dialog) {
             StampaRiepilogoFatture(dialog.Anno(), dialog.Pagato(), dialog.Scadenza());
         })},
        {QStringLiteral("actModStampaFatturatoPerCliente"),
         KRVStampaAnnuale<TKRVModStampaFatturatoPerCliente>(
             [](const TKRVModStampaFatturatoPerCliente &dialog) { StampaFatturatoPerCliente(dialog.Anno()); })},
        {QStringLiteral("actStatisticheFatturato"), KRVWindow<TKRVStatisticheFatturato>()},
        {QStringLiteral("actStatisticheRedditivitaMensile"), KRVWindow<TKRVStatisticheRedditivitaMensile>()},
        {QStringLiteral("actStatisticheFatturatoPerArticolo"), KRVStatistica<TKRVModStatisticheFatturatoPerArticolo>()},
        {QStringLiteral("actStatisticheFatturatoPerServizio"), KRVStatistica<TKRVModStatisticheFatturatoPerServizio>()},
        {QStringLiteral("actStatisticheMedieServizi1"), KRVStatistica<TKRVModStatisticheMedieServizi1>()},
        {QStringLiteral("actStatisticheFatturatoClientiServizi"),
         KRVStatistica<TKRVModStatisticheFatturatoClientiServizi>()},
    };
    return classes;
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

void KRVApriFatturaCiclica(QWidget *editor, int id)
{
    auto fattura = qobject_cast<TKRVInserimentoFattureVendita *>(editor);
    if (fattura && fattura->ApriRecord(id) == 0)
        fattura->ImpostaFatturaCiclica();
}
