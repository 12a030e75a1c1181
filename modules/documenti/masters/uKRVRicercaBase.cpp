#include "uKRVRicercaBase.h"

#include "Q3Guards.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVInserimentoBase.h"
#include "uKRVServiziFinestre.h"

#include <QVBoxLayout>

namespace {

// The list's rows are known by the key of its table.
TKRVRicercaInfo ConChiaveTabella(TKRVRicercaInfo info)
{
    info.Elenco.KeyField = info.Entita->Chiave;
    return info;
}

} // namespace

TKRVRicercaBase::TKRVRicercaBase(IKRVMain &main, TKRVRicercaInfo info)
    : m_main(main), m_info(ConChiaveTabella(std::move(info))),
      m_elenco(new TKRVElencoRicerca(
          this, QStringLiteral("GridRisultati"), m_info.Elenco, [this] { actCercaExecute(); },
          [this] { actRipristinaExecute(); })),
      m_barraStandard(KRVCreaToolBar(this, QStringLiteral("tBarStandard")))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(m_info.Elenco.Caption);
    setWindowIcon(KRVImage(KRVImgTabelle));

    m_barraStandard->addAction(KRVCreaAzione(this, QStringLiteral("actChiudi"), QStringLiteral("Chiudi"), KRVImgChiudi,
                                             [this] { actChiudiExecute(); }));
    m_barraStandard->addSeparator();
    m_barraStandard->addAction(KRVCreaAzione(this, QStringLiteral("actModifica"), QStringLiteral("Modifica"),
                                             KRVImgModifica, [this] { actModificaExecute(); }));
    m_barraStandard->addAction(KRVCreaAzione(this, QStringLiteral("actNuovo"), QStringLiteral("Nuovo"), KRVImgNuovo,
                                             [this] { actNuovoExecute(); }));
    m_barraStandard->addAction(KRVCreaAzione(this, QStringLiteral("actElimina"), QStringLiteral("Elimina"),
                                             KRVImgElimina, [this] { actEliminaExecute(); }));

    TKRVGrigliaRisultati *grid = m_elenco->Griglia();
    connect(grid, &QAbstractItemView::doubleClicked, this,
            [this] { Q3Guarded([this] { GridRisultatiDblClickCell(); }); });
    connect(grid, &TKRVGrigliaRisultati::Ridimensionata, this,
            [this] { Q3Guarded([this] { RidimensionaGriglia(); }); });

    auto layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_barraStandard);
    layout->addWidget(m_elenco->BarraRicerca());
    layout->addWidget(grid, 1);
}

TKRVRicercaBase::~TKRVRicercaBase() = default;

QString TKRVRicercaBase::MsgDatiCorrelati()
{
    return QStringLiteral("Impossibile eliminare, esistono dei dati correlati!");
}

void TKRVRicercaBase::FormCreate()
{
    Q3Guarded([this] {
        setMinimumSize(800, 600);
        resize(minimumSize());
        CreaGrigliaVuota();
        RicercaIniziale();
    });
}

void TKRVRicercaBase::RicercaIniziale()
{
    actCercaExecute();
}

void TKRVRicercaBase::CreaGrigliaVuota()
{
    m_elenco->CreaGrigliaVuota();
    RidimensionaGriglia();
}

void TKRVRicercaBase::AggiornaGriglia(const QString &where)
{
    m_elenco->AggiornaGriglia(where);
}

void TKRVRicercaBase::RidimensionaGriglia()
{
    m_elenco->Griglia()->AdattaColonna(m_info.ColonnaDescrizione);
}

void TKRVRicercaBase::ApriSelezionato()
{
    if (!KRVVerificaPermesso(Entita().PermessoVisualizzazione))
        return;
    const int id = m_elenco->Griglia()->ChiaveSelezionata();
    if (id < 0)
        return;
    m_main.Run(Entita().Editor);
    // The editor asks about its own unsaved changes; what it answers is its business.
    if (auto editor = m_main.FormAs<TKRVInserimentoBase>(Entita().Editor))
        editor->ApriRecord(id);
}

void TKRVRicercaBase::actCercaExecute()
{
    AggiornaGriglia(m_elenco->ClausolaFiltri());
}

void TKRVRicercaBase::actRipristinaExecute()
{
    m_elenco->SvuotaFiltri();
}

void TKRVRicercaBase::actEliminaExecute()
{
    if (!KRVVerificaPermesso(Entita().PermessoEliminazione))
        return;
    const int id = m_elenco->Griglia()->ChiaveSelezionata();
    if (id < 0)
        return;
    if (!Entita().CanDelete(Sessione(), id)) {
        Q3ShowWarning(m_info.RifiutoDellaTabella ? Entita().Rifiuto : MsgDatiCorrelati());
        return;
    }
    if (Entita().Delete(Sessione(), id, true))
        m_elenco->Griglia()->RimuoviSelezionata();
}

QSqlDatabase TKRVRicercaBase::Sessione() const
{
    return m_main.Sessione();
}

void TKRVRicercaBase::actModificaExecute()
{
    ApriSelezionato();
}

void TKRVRicercaBase::actNuovoExecute()
{
    if (!KRVVerificaPermesso(Entita().PermessoModifica))
        return;
    m_main.Run(Entita().Editor);
}

void TKRVRicercaBase::actChiudiExecute()
{
    CloseQ3ChildForm(this);
}

void TKRVRicercaBase::GridRisultatiDblClickCell()
{
    ApriSelezionato();
}
