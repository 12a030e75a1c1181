#include "uKRVInserimentoNoteAccredito.h"

#include "KRVStampe.h"

#include "KRVDeleteRules.h"
#include "KRVNumbering.h"
#include "Q3Messages.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVModSelezionaFatturaVendita.h"
#include "uKRVServiziFinestre.h"

#include <QGroupBox>
#include <QHBoxLayout>

namespace {

TKRVInserimentoInfo InfoNotaAccredito()
{
    return {.Caption = QStringLiteral("Inserimento / Modifica note di accredito"),
            .MinimumSize = QSize(800, 600),
            .Entita = &KRVEntitaNoteAccredito(),
            .RefreshAfterSave = false,
            .RefreshAfterDelete = false,
            .CheckIcon = TQ3MsgIcon::Warning,
            .SaveFailureIcon = TQ3MsgIcon::Question,
            .IdNuovoRecord = 0,
            .ChiediSeNonMemorizzato = true};
}

} // namespace

TKRVInserimentoNoteAccredito::TKRVInserimentoNoteAccredito(IKRVMain &main)
    : TKRVInserimentoDocumentoBase(main, InfoNotaAccredito(), KRVLayoutNotaAccredito(),
                                   QStringLiteral("gridRigheDocumento"),
                                   {.NuovoTitolo = QStringLiteral("Nuova nota di accredito"),
                                    .NuovoNota = QStringLiteral("Crea una nuova\nnota di accredito."),
                                    .EliminaTitolo = QStringLiteral("Elimina nota di accredito"),
                                    .EliminaNota = QStringLiteral("Elimina la nota\ndi accredito."),
                                    .StampaNota = QStringLiteral("Stampa la nota\ndi accredito.")}),
      m_archivio(std::make_unique<TKRVArchivioNoteAccredito>(*main.Dataset(QStringLiteral("adsNoteAccredito"))))
{
    setObjectName(QStringLiteral("KRVInserimentoNoteAccredito"));
    CreaContenuto(CreaPaginaGenerale({}, CreaFatturaRiferimento()), QStringLiteral("Righe documento "),
                  QStringLiteral("tsRigheDocumento"));
    FormCreate();
}

TKRVInserimentoNoteAccredito::~TKRVInserimentoNoteAccredito() = default;

int TKRVInserimentoNoteAccredito::NumeroSuccessivo(int anno)
{
    return GetNextNumeroNotaAccredito(Sessione(), anno);
}

bool TKRVInserimentoNoteAccredito::NumeroEsistente(int numero, int anno, int id)
{
    return NotaAccreditoExists(Sessione(), numero, anno, id);
}

TKRVTestataNota TKRVInserimentoNoteAccredito::Testata() const
{
    TKRVTestataNota testata;
    LeggiTestata(testata);
    testata.Fattura = m_fattura;
    return testata;
}

bool TKRVInserimentoNoteAccredito::LeggiRecord(int id)
{
    TKRVTestataNota testata;
    if (!m_archivio->Leggi(id, testata, *Righe()))
        return false;
    MostraTestata(testata);
    MostraFatturaRiferimento(testata.Fattura);
    DopoLettura();
    return true;
}

void TKRVInserimentoNoteAccredito::ScriviRecord()
{
    ScriviDocumento([this](const TKRVTotaliDocumento &totali, int &id) {
        m_archivio->Scrivi(Testata(), *Righe(), totali, NewRecord(), id);
    });
}

void TKRVInserimentoNoteAccredito::Stampa()
{
    StampaNotaAccredito(IdRecord());
}

// The invoice the note corrects, chosen among its customer's saved invoices.
QWidget *TKRVInserimentoNoteAccredito::CreaFatturaRiferimento()
{
    QAction *seleziona = KRVCreaAzione(this, QStringLiteral("actSelezionaFattura"), QStringLiteral("Seleziona fattura"),
                                       KRVImgFatture, [this] { actSelezionaFatturaExecute(); });
    QAction *rimuovi = KRVCreaAzione(this, QStringLiteral("actRimuoviFattura"), QStringLiteral("Nessuna fattura"),
                                     KRVImgAnnulla, [this] { actRimuoviFatturaExecute(); });
    auto gruppo = new QGroupBox(QStringLiteral(" Fattura di riferimento "));
    gruppo->setObjectName(QStringLiteral("grpFattRiferimento"));
    lblFattRiferimento = KRVValore(QStringLiteral("lblFattRiferimento"));
    lblFattRiferimento->setAccessibleName(QStringLiteral("Fattura di riferimento"));
    auto riga = new QHBoxLayout(gruppo);
    riga->addWidget(lblFattRiferimento, 1);
    for (QAction *azione : {seleziona, rimuovi}) {
        QToolButton *pulsante = KRVPulsante(azione);
        pulsante->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        riga->addWidget(pulsante);
    }
    return gruppo;
}

void TKRVInserimentoNoteAccredito::MostraFatturaRiferimento(const TKRVFatturaRiferimento &fattura)
{
    m_fattura = fattura;
    KRVMostraValore(lblFattRiferimento, KRVTestoFatturaRiferimento(fattura));
}

void TKRVInserimentoNoteAccredito::PulisciCampiPropri()
{
    MostraFatturaRiferimento({});
}

// An invoice of one customer is no reference for a note to another.
void TKRVInserimentoNoteAccredito::ClienteCambiato()
{
    MostraFatturaRiferimento({});
}

void TKRVInserimentoNoteAccredito::actSelezionaFatturaExecute()
{
    const QString cliente = CodiceCliente();
    if (cliente.isEmpty()) {
        Q3ShowWarning(QStringLiteral("Selezionare prima il cliente."));
        return;
    }
    const TKRVAzione azione = TKRVAzione::ModSelezionaFatturaVendita;
    Main().Run(azione);
    auto dialog = Main().FormAs<TKRVModSelezionaFatturaVendita>(azione);
    if (!dialog)
        return;
    dialog->SetCliente(cliente);
    if (dialog->exec() != QDialog::Accepted)
        return;
    const TKRVFatturaRiferimento fattura = KRVFatturaVendita(Sessione(), dialog->ApriSelezionato());
    if (fattura.Vuota())
        return;
    MostraFatturaRiferimento(fattura);
    SetModified(true);
}

void TKRVInserimentoNoteAccredito::actRimuoviFatturaExecute()
{
    if (m_fattura.Vuota())
        return;
    MostraFatturaRiferimento({});
    SetModified(true);
}
