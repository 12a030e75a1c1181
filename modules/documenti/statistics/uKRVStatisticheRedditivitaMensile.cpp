#include "uKRVStatisticheRedditivitaMensile.h"

#include "Q3Guards.h"
#include "Q3MainForm.h"
#include "Q3Registry.h"
#include "Q3Utils.h"
#include "uKRVFormKit.h"
#include "uKRVGrigliaStatistiche.h"
#include "uKRVImages.h"

#include <QDate>
#include <QEvent>
#include <QHBoxLayout>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

bool ColonnaNumerica(int colonna)
{
    return (colonna >= 1 && colonna <= 3) || colonna == KRVColonnaTotale || colonna == KRVColonnaMedia;
}

bool RigaNumerica(int riga)
{
    return (riga >= 1 && riga <= 12) || riga == KRVRigaTotale || riga == KRVRigaMedia;
}

Qt::Alignment Allineamento(int riga, int colonna)
{
    if (colonna >= 1 && colonna <= 3)
        return Qt::AlignRight | Qt::AlignVCenter;
    if ((colonna == KRVColonnaTotale || colonna == KRVColonnaMedia) && riga > 0)
        return Qt::AlignRight | Qt::AlignVCenter;
    return Qt::AlignLeft | Qt::AlignVCenter;
}

} // namespace

TKRVStatisticheRedditivitaMensile::TKRVStatisticheRedditivitaMensile(IKRVMain &, QWidget *parent)
    : QWidget(parent), tBarStandard(KRVCreaToolBar(this, QStringLiteral("tBarStandard"))), speAnno(new QSpinBox),
      grdTabella(new QTableWidget)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Redditività mensile"));
    setWindowIcon(KRVImage(KRVImgStatistiche));

    tBarStandard->addAction(KRVCreaAzione(this, QStringLiteral("actChiudi"), QStringLiteral("Chiudi"), KRVImgChiudi,
                                          [this] { CloseQ3ChildForm(this); }));
    tBarStandard->addSeparator();
    QAction *aggiorna = KRVCreaAzione(this, QStringLiteral("actAggiornaTabella"), QStringLiteral("Aggiorna tabella"),
                                      KRVImgRipristina, [this] { actAggiornaTabellaExecute(); });
    tBarStandard->addAction(aggiorna);
    SetRichHint(tBarStandard->widgetForAction(aggiorna), QStringLiteral("Aggiorna"), QStringLiteral("Aggiorna i dati"));
    tBarStandard->addSeparator();
    speAnno->setObjectName(QStringLiteral("speAnno"));
    speAnno->setRange(1900, 3000);
    tBarStandard->addWidget(KRVEtichetta(QStringLiteral("    Anno"), speAnno));
    tBarStandard->addWidget(speAnno);

    KRVPreparaGrigliaStatistiche(
        grdTabella, QStringLiteral("grdTabella"),
        [this](int riga, int colonna) { return TestoVisualizzato(riga, colonna); },
        &TKRVStatisticheRedditivitaMensile::CellaIntestazione);
    grdTabella->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grdTabella->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grdTabella->viewport()->installEventFilter(this);

    auto pagine = new QTabWidget;
    pagine->setObjectName(QStringLiteral("pgcPagine"));
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("tsTabella"));
    auto layoutPagina = new QVBoxLayout(pagina);
    layoutPagina->addWidget(grdTabella);
    pagine->addTab(pagina, QStringLiteral(" Tabella "));

    auto layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tBarStandard);
    layout->addWidget(pagine, 1);

    setMinimumSize(750, 550);
    resize(minimumSize());
    Q3Guarded([this] { CreaGrigliaVuota(); });
    Ripristina();
    Q3Guarded([this] { actAggiornaTabellaExecute(); });
}

void TKRVStatisticheRedditivitaMensile::Ripristina()
{
    speAnno->setValue(QDate::currentDate().year());
}

void TKRVStatisticheRedditivitaMensile::CreaGrigliaVuota()
{
    grdTabella->clear();
    grdTabella->setColumnCount(KRVRedditivitaColonne);
    grdTabella->setRowCount(KRVRedditivitaRighe);
    MostraTabella(KRVTabellaVuota(speAnno->value()));
    RidimensionaGriglia();
}

void TKRVStatisticheRedditivitaMensile::MostraTabella(const TKRVTabellaRedditivita &tabella)
{
    KRVMostraTestiStatistiche(grdTabella, tabella, [](QTableWidgetItem *cella, int riga, int colonna) {
        cella->setTextAlignment(Allineamento(riga, colonna));
        QFont carattere = cella->font();
        carattere.setBold(riga == KRVRigaTotale && colonna == KRVColonnaTotale);
        cella->setFont(carattere);
    });
}

void TKRVStatisticheRedditivitaMensile::RidimensionaGriglia()
{
    const int larghezza = grdTabella->viewport()->width();
    const int unita = qRound(larghezza / 13.0);
    int altre = 0;
    for (int colonna = 0; colonna < KRVRedditivitaColonne; ++colonna) {
        if (colonna == 4)
            continue;
        grdTabella->setColumnWidth(colonna, 2 * unita);
        altre += 2 * unita;
    }
    grdTabella->setColumnWidth(4, larghezza - altre);
}

void TKRVStatisticheRedditivitaMensile::actAggiornaTabellaExecute()
{
    TQ3BusyCursor attesa;
    CreaGrigliaVuota();
    m_istruzioni.clear();
    const int anno = speAnno->value();
    const QSqlDatabase db = KRVSessioneModulo();
    const bool conFattAcc = KRVEsisteFattAcc(db);
    TKRVTabellaRedditivita tabella = KRVTabellaVuota(anno);
    for (const int primoMese : {1, 7}) {
        const QString sql = KRVRedditivitaSemestreSQL(primoMese, anno, conFattAcc);
        m_istruzioni << sql;
        KRVApplicaMesi(tabella, KRVLeggiRedditivita(db, sql));
        MostraTabella(tabella);
    }
    KRVCompletaTotali(tabella);
    MostraTabella(tabella);
}

QString TKRVStatisticheRedditivitaMensile::TestoVisualizzato(int riga, int colonna) const
{
    const QTableWidgetItem *cella = grdTabella->item(riga, colonna);
    const QString testo = cella ? cella->text() : QString();
    if (RigaNumerica(riga) && ColonnaNumerica(colonna))
        return FormatCurrency(KRVValoreImporto(testo));
    return testo;
}

bool TKRVStatisticheRedditivitaMensile::CellaIntestazione(int riga, int colonna)
{
    if (riga == 0)
        return ColonnaNumerica(colonna);
    return colonna == 0 && RigaNumerica(riga);
}

bool TKRVStatisticheRedditivitaMensile::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == grdTabella->viewport() && event->type() == QEvent::Resize)
        Q3Guarded([this] { RidimensionaGriglia(); });
    return QWidget::eventFilter(watched, event);
}
