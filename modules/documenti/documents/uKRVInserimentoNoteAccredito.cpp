#include "uKRVInserimentoNoteAccredito.h"

#include "KRVStampe.h"

#include "KRVDeleteRules.h"
#include "KRVNumbering.h"
#include "uKRVServiziFinestre.h"

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
    CreaContenuto(CreaPaginaGenerale({}, nullptr), QStringLiteral("Righe documento "),
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

TKRVTestataDocumento TKRVInserimentoNoteAccredito::Testata() const
{
    TKRVTestataDocumento testata;
    LeggiTestata(testata);
    return testata;
}

bool TKRVInserimentoNoteAccredito::LeggiRecord(int id)
{
    TKRVTestataDocumento testata;
    if (!m_archivio->Leggi(id, testata, *Righe()))
        return false;
    MostraTestata(testata);
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
