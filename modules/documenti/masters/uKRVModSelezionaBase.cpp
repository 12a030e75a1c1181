#include "uKRVModSelezionaBase.h"

#include "Q3Guards.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"

#include <QHeaderView>
#include <QScreen>
#include <QShowEvent>
#include <QVBoxLayout>

TKRVModSelezionaBase::TKRVModSelezionaBase(TKRVElencoInfo info, QSize minimumSize)
    : QDialog(GetQ3MainForm()), m_elenco(new TKRVElencoRicerca(
                                    this, QStringLiteral("gridRisultati"), std::move(info),
                                    [this] { actCercaExecute(); }, [this] { actRipristinaExecute(); })),
      m_actOK(KRVCreaAzione(this, QStringLiteral("actOK"), QStringLiteral("OK"), KRVImgOK, [this] { accept(); }))
{
    setWindowTitle(m_elenco->Info().Caption);
    setModal(true);
    setMinimumSize(minimumSize);
    resize(minimumSize);

    QToolBar *bottom = KRVCreaToolBar(this, QStringLiteral("tBarConferma"));
    auto spacer = new QWidget(bottom);
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bottom->addWidget(spacer);
    bottom->addAction(m_actOK);
    bottom->addAction(KRVCreaAzione(this, QStringLiteral("actAnnulla"), QStringLiteral("Annulla"), KRVImgAnnulla,
                                    [this] { reject(); }));

    TKRVGrigliaRisultati *grid = m_elenco->Griglia();
    // Every column keeps its width; a wider grid leaves the rest empty.
    grid->horizontalHeader()->setStretchLastSection(false);
    connect(grid, &QAbstractItemView::doubleClicked, this,
            [this] { Q3Guarded([this] { gridRisultatiDblClickCell(); }); });

    auto layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_elenco->BarraRicerca());
    layout->addWidget(grid, 1);
    layout->addWidget(bottom);
}

TKRVModSelezionaBase::~TKRVModSelezionaBase() = default;

void TKRVModSelezionaBase::FormCreate()
{
    Q3Guarded([this] { CreaGrigliaVuota(); });
}

void TKRVModSelezionaBase::CreaGrigliaVuota()
{
    m_elenco->CreaGrigliaVuota();
}

void TKRVModSelezionaBase::AggiornaGriglia(const QString &where)
{
    m_elenco->AggiornaGriglia(where);
}

TKRVVoceSelezionata TKRVModSelezionaBase::VoceSelezionata(int textColumn) const
{
    const TKRVGrigliaRisultati *grid = m_elenco->Griglia();
    return {grid->ChiaveSelezionata(), grid->ValoreSelezionato(textColumn)};
}

void TKRVModSelezionaBase::accept()
{
    if (!m_elenco->Griglia()->HaRigaSelezionata()) {
        Q3ShowWarning(QStringLiteral("Nessuna voce selezionata!"));
        return;
    }
    QDialog::accept();
}

void TKRVModSelezionaBase::FormShow()
{
    AggiornaGriglia(QString());
}

void TKRVModSelezionaBase::actCercaExecute()
{
    AggiornaGriglia(m_elenco->ClausolaFiltri());
}

void TKRVModSelezionaBase::actRipristinaExecute()
{
    m_elenco->SvuotaFiltri();
}

void TKRVModSelezionaBase::gridRisultatiDblClickCell()
{
    accept();
}

void TKRVModSelezionaBase::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (event->spontaneous())
        return;
    if (QScreen *where = screen())
        move(where->availableGeometry().center() - rect().center());
    Q3Guarded([this] { FormShow(); });
}
