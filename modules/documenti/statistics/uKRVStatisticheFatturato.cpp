#include "uKRVStatisticheFatturato.h"

#include "KRVStampe.h"
#include "Q3Exception.h"
#include "Q3Guards.h"
#include "Q3MainForm.h"
#include "Q3Report.h"
#include "uKRVFormKit.h"
#include "uKRVGrafico3D.h"
#include "uKRVGrigliaStatistiche.h"
#include "uKRVImages.h"
#include "uKRVSalvaExcel.h"
#include "uKRVServiziFinestre.h"

#include <QCategoryAxis>
#include <QChart>
#include <QChartView>
#include <QCheckBox>
#include <QDate>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineSeries>
#include <QPainter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>
#include <QValueAxis>

#include <algorithm>

namespace {

Qt::Alignment Allineamento(int riga, int colonna)
{
    if (riga == 0)
        return Qt::AlignCenter;
    if (riga == 1 || colonna > 0)
        return Qt::AlignRight | Qt::AlignVCenter;
    return Qt::AlignLeft | Qt::AlignVCenter;
}

int AnnoCorrente()
{
    return QDate::currentDate().year();
}

QPixmap Campione(const QColor &colore)
{
    QPixmap campione(12, 12);
    campione.fill(colore);
    return campione;
}

} // namespace

TKRVStatisticheFatturato::TKRVStatisticheFatturato(IKRVMain &main, QWidget *parent)
    : QWidget(parent), m_main(main), tBarStandard(KRVCreaToolBar(this, QStringLiteral("tBarStandard"))),
      pgcPagine(new QTabWidget)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Statistiche fatturato"));
    setWindowIcon(KRVImage(KRVImgStatistiche));

    tBarStandard->addAction(KRVCreaAzione(this, QStringLiteral("actChiudi"), QStringLiteral("Chiudi"), KRVImgChiudi,
                                          [this] { CloseQ3ChildForm(this); }));
    tBarStandard->addSeparator();
    tBarStandard->addAction(
        KRVCreaAzione(this, QStringLiteral("actAggiorna"), QStringLiteral("Aggiorna"), KRVImgRipristina, [this] {
            AggiornaGrigliaTabella();
            AggiornaGrafico();
        }));

    pgcPagine->setObjectName(QStringLiteral("pgcPagine"));
    pgcPagine->addTab(CreaPaginaTabella(), QStringLiteral(" Tabella  "));
    pgcPagine->addTab(CreaPaginaGrafico(), QStringLiteral(" Grafico "));

    auto layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tBarStandard);
    layout->addWidget(pgcPagine, 1);

    resize(800, 560);
    pgcPagine->setCurrentIndex(0);
    CreaGrigliaVuotaTabella();
    AggiornaGrigliaTabella();
    AggiornaGrafico();
    chkLegenda->setChecked(true);
    chk3D->setChecked(false);
}

QWidget *TKRVStatisticheFatturato::CreaPaginaTabella()
{
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("tsTabella"));
    auto barra = KRVCreaToolBar(pagina, QStringLiteral("tBarTabella"));
    barra->addAction(KRVCreaAzione(this, QStringLiteral("actStampa"), QStringLiteral("Stampa"), KRVImgStampa,
                                   [this] { actStampaExecute(); }));
    barra->addAction(KRVCreaAzione(this, QStringLiteral("actEsportaExcel"), QStringLiteral("Esporta su Excel"),
                                   KRVImgSalva, [this] { actEsportaExcelExecute(); }));
    auto titolo = new QLabel(KRVTitoloFatturato());
    titolo->setObjectName(QStringLiteral("lblTitolo"));
    QFont grassetto = titolo->font();
    grassetto.setBold(true);
    titolo->setFont(grassetto);
    titolo->setAlignment(Qt::AlignCenter);

    grdTabella = new QTableWidget;
    KRVPreparaGrigliaStatistiche(
        grdTabella, QStringLiteral("grdTabella"),
        [this](int riga, int colonna) { return TestoVisualizzato(riga, colonna); }, &KRVCellaIntestazioneFatturato);

    auto layout = new QVBoxLayout(pagina);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(barra);
    layout->addWidget(titolo);
    layout->addWidget(grdTabella, 1);
    return pagina;
}

QWidget *TKRVStatisticheFatturato::CreaPaginaGrafico()
{
    auto pagina = new QWidget;
    pagina->setObjectName(QStringLiteral("tsGrafico"));
    chkLegenda = new QCheckBox(QStringLiteral("Legenda"));
    chkLegenda->setObjectName(QStringLiteral("chkLegenda"));
    chk3D = new QCheckBox(QStringLiteral("3D"));
    chk3D->setObjectName(QStringLiteral("chk3D"));

    m_grafico = new QChart;
    m_grafico->setTitle(KRVTitoloFatturato());
    m_grafico->legend()->hide();
    auto asseX = new QCategoryAxis;
    asseX->setObjectName(QStringLiteral("AsseOrizzontale"));
    asseX->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
    asseX->setStartValue(0);
    auto asseY = new QValueAxis;
    asseY->setObjectName(QStringLiteral("AsseVerticale"));
    asseY->setLabelFormat(QStringLiteral("%.0f"));
    m_grafico->addAxis(asseX, Qt::AlignBottom);
    m_grafico->addAxis(asseY, Qt::AlignLeft);

    pnlLegenda = new QWidget;
    pnlLegenda->setObjectName(QStringLiteral("pnlLegenda"));
    auto legenda = new QVBoxLayout(pnlLegenda);
    legenda->addStretch();
    for (int indice = 0; indice < 3; ++indice) {
        auto serie = new QLineSeries;
        serie->setObjectName(QStringLiteral("Series%1").arg(indice + 1));
        m_grafico->addSeries(serie);
        serie->attachAxis(asseX);
        serie->attachAxis(asseY);
        if (indice == 2)
            serie->setColor(Qt::blue);
        QPen penna = serie->pen();
        penna.setWidth(2);
        serie->setPen(penna);
        serie->setPointsVisible(false);
        m_serie << serie;

        auto casella = new QCheckBox;
        casella->setObjectName(QStringLiteral("chkSerie%1").arg(indice + 1));
        casella->setChecked(true);
        casella->setIcon(Campione(serie->color()));
        connect(casella, &QCheckBox::toggled, this, [this, indice](bool visibile) {
            m_serie.at(indice)->setVisible(visibile);
            grf3D->ImpostaVisibile(indice, visibile);
        });
        legenda->addWidget(casella);
        m_caselleSerie << casella;
    }
    legenda->addStretch();

    chtGrafico = new QChartView(m_grafico);
    chtGrafico->setObjectName(QStringLiteral("chtGrafico"));
    chtGrafico->setRenderHint(QPainter::Antialiasing);
    chtGrafico->setRubberBand(QChartView::NoRubberBand);
    grf3D = new TKRVGrafico3D;
    m_viste = new QStackedWidget;
    m_viste->addWidget(chtGrafico);
    m_viste->addWidget(grf3D);

    connect(chkLegenda, &QCheckBox::toggled, pnlLegenda, &QWidget::setVisible);
    connect(chk3D, &QCheckBox::toggled, this, [this](bool attivo) { Mostra3D(attivo); });

    auto opzioni = new QHBoxLayout;
    opzioni->addWidget(chkLegenda);
    opzioni->addWidget(chk3D);
    opzioni->addStretch();
    auto corpo = new QHBoxLayout;
    corpo->addWidget(m_viste, 1);
    corpo->addWidget(pnlLegenda);
    auto layout = new QVBoxLayout(pagina);
    layout->addLayout(opzioni);
    layout->addLayout(corpo, 1);
    return pagina;
}

void TKRVStatisticheFatturato::Mostra3D(bool attivo)
{
    m_viste->setCurrentWidget(attivo ? static_cast<QWidget *>(grf3D) : chtGrafico);
    for (QLineSeries *serie : std::as_const(m_serie)) {
        QPen penna = serie->pen();
        penna.setWidth(attivo ? TKRVGrafico3D::LarghezzaLinee() : 2);
        serie->setPen(penna);
    }
}

void TKRVStatisticheFatturato::CreaGrigliaVuotaTabella()
{
    grdTabella->clear();
    grdTabella->clearSpans();
    grdTabella->setColumnCount(KRVFatturatoColonne);
    grdTabella->setRowCount(KRVFatturatoRighe);
    const QList<int> larghezze = KRVLarghezzeFatturato();
    for (int colonna = 0; colonna < KRVFatturatoColonne; ++colonna)
        grdTabella->setColumnWidth(colonna, larghezze.at(colonna));
    for (const TQ3XlsUnione &unione : KRVUnioniFatturato())
        grdTabella->setSpan(unione.RigaDa, unione.ColonnaDa, unione.RigaA - unione.RigaDa + 1,
                            unione.ColonnaA - unione.ColonnaDa + 1);
    m_griglia = KRVGrigliaFatturatoVuota(AnnoCorrente());
    MostraGriglia();
}

void TKRVStatisticheFatturato::MostraGriglia()
{
    KRVMostraTestiStatistiche(grdTabella, m_griglia, [this](QTableWidgetItem *cella, int riga, int colonna) {
        cella->setTextAlignment(Allineamento(riga, colonna));
        QFont carattere = cella->font();
        carattere.setBold(KRVCellaIntestazioneFatturato(riga, colonna));
        cella->setFont(carattere);
        const bool rossa = riga != KRVFatturatoRigaSeparatore && KRVCellaNegativaFatturato(m_griglia, riga, colonna);
        cella->setForeground(rossa ? QBrush(Qt::red) : QBrush());
    });
}

void TKRVStatisticheFatturato::AggiornaGrigliaTabella()
{
    m_istruzioni.clear();
    Q3Guarded([this] {
        TQ3BusyCursor attesa;
        m_istruzioni = KRVAggiornaFatturato(m_main.Sessione(), m_griglia, AnnoCorrente());
    });
    MostraGriglia();
}

void TKRVStatisticheFatturato::AggiornaGrafico()
{
    Q3Guarded([this] {
        auto asseX = qobject_cast<QCategoryAxis *>(m_grafico->axes(Qt::Horizontal).constFirst());
        asseX->setRange(0, 12);
        const QList<TKRVSerieFatturato> serie = KRVSerieFatturato(m_griglia, AnnoCorrente());
        for (const QString &etichetta : asseX->categoriesLabels())
            asseX->remove(etichetta);
        const TKRVSerieFatturato &prima = serie.constFirst();
        for (int posizione = 0; posizione < prima.Etichette.size(); ++posizione)
            asseX->append(prima.Etichette.at(posizione), posizione);
        asseX->setRange(0, 12);

        double minimo = 0;
        double massimo = 0;
        QList<QColor> colori;
        for (int indice = 0; indice < serie.size(); ++indice) {
            QLineSeries *linea = m_serie.at(indice);
            linea->clear();
            linea->setName(serie.at(indice).Titolo);
            m_caselleSerie.at(indice)->setText(serie.at(indice).Titolo);
            for (int posizione = 0; posizione < serie.at(indice).Valori.size(); ++posizione) {
                const double valore = serie.at(indice).Valori.at(posizione);
                linea->append(posizione, valore);
                if (posizione <= 12) {
                    minimo = std::min(minimo, valore);
                    massimo = std::max(massimo, valore);
                }
            }
            colori << linea->color();
        }
        auto asseY = qobject_cast<QValueAxis *>(m_grafico->axes(Qt::Vertical).constFirst());
        asseY->setRange(minimo, massimo > minimo ? massimo : minimo + 1);
        asseY->applyNiceNumbers();
        grf3D->ImpostaSerie(serie, colori);
        for (int indice = 0; indice < m_caselleSerie.size(); ++indice)
            grf3D->ImpostaVisibile(indice, m_caselleSerie.at(indice)->isChecked());
    });
}

QString TKRVStatisticheFatturato::TestoVisualizzato(int riga, int colonna) const
{
    return KRVTestoVisualizzatoFatturato(m_griglia, riga, colonna);
}

void TKRVStatisticheFatturato::actStampaExecute()
{
    Q3Guarded([this] {
        IKRVStampeHost &stampe = m_main.Stampe();
        KRVAggiornaAzienda(&stampe);
        TQ3ReportProject *progetto = stampe.rProject();
        for (const auto &[nome, valore] : KRVParametriFatturato(m_griglia))
            progetto->SetParam(nome, valore);
        progetto->ExecuteReport(QStringLiteral("StatisticheFatturato01"));
    });
}

void TKRVStatisticheFatturato::actEsportaExcelExecute()
{
    Q3Guarded([this] {
        QString file;
        if (!m_main.SaveDialogExcel()->Execute(file))
            return;
        if (QFile::exists(file) && !QFile::remove(file))
            throw EQ3Exception(QStringLiteral("Impossibile sostituire il file \"%1\".").arg(file));
        Q3ScriviXls(file, KRVFoglioFatturato(m_griglia));
    });
}
