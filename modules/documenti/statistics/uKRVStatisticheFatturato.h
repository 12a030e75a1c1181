#pragma once

#include "KRVStatisticheFatturato.h"

#include <QWidget>

class QCheckBox;
class QChart;
class QChartView;
class QLineSeries;
class QStackedWidget;
class QTabWidget;
class QTableWidget;
class QToolBar;
class TKRVGrafico3D;
class IKRVMain;

// "Statistiche fatturato": the turnover net of VAT of this year and the two
// before it by month, as a table with differences and as a chart; printed
// and exported to a workbook.
class TKRVStatisticheFatturato : public QWidget
{
    Q_OBJECT

public:
    explicit TKRVStatisticheFatturato(IKRVMain &main, QWidget *parent = nullptr);

    void CreaGrigliaVuotaTabella();
    void AggiornaGrigliaTabella();
    void AggiornaGrafico();
    void actStampaExecute();
    void actEsportaExcelExecute();

    const TKRVGrigliaFatturato &Griglia() const { return m_griglia; }
    // What a cell shows.
    QString TestoVisualizzato(int riga, int colonna) const;
    // The statements the last refresh sent to the database.
    QStringList IstruzioniEseguite() const { return m_istruzioni; }
    QList<QLineSeries *> Serie() const { return m_serie; }
    QChart *Grafico() const { return m_grafico; }

private:
    QWidget *CreaPaginaTabella();
    QWidget *CreaPaginaGrafico();
    void MostraGriglia();
    void Mostra3D(bool attivo);

    IKRVMain &m_main;
    QToolBar *tBarStandard;
    QTabWidget *pgcPagine;
    QTableWidget *grdTabella = nullptr;
    QChart *m_grafico = nullptr;
    QChartView *chtGrafico = nullptr;
    TKRVGrafico3D *grf3D = nullptr;
    QStackedWidget *m_viste = nullptr;
    QWidget *pnlLegenda = nullptr;
    QCheckBox *chkLegenda = nullptr;
    QCheckBox *chk3D = nullptr;
    QList<QCheckBox *> m_caselleSerie;
    QList<QLineSeries *> m_serie;
    TKRVGrigliaFatturato m_griglia;
    QStringList m_istruzioni;
};
