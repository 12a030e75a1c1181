// The turnover statistics window driven as a user would, on a real database.
#include "../documents/KRVFattureTestKit.h"
#include "../printing/KRVStampeTestKit.h"
#include "KRVRedditivitaTestRows.h"
#include "uKRVGrafico3D.h"
#include "uKRVSalvaExcel.h"
#include "uKRVStatisticheFatturato.h"

#include <QCategoryAxis>
#include <QChart>
#include <QCheckBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineSeries>
#include <QMdiSubWindow>
#include <QProcess>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QToolBar>
#include <QValueAxis>

#include <memory>

using namespace KRVTest;
using KRVStampeTest::WithModals;

namespace {

const QString ActFatturato = QStringLiteral("actStatisticheFatturato");

int Y()
{
    return QDate::currentDate().year();
}

// A sales invoice of year anno, month mese, with its document and VAT totals.
void Fattura(const TQ3TestDatabase &db, int numero, int anno, int mese, double documento, double imposta)
{
    const int id = InsertFattVend(db, numero, QDate(anno, mese, 10));
    db.Exec(QStringLiteral("UPDATE FATT_VEND SET TOTALE_DOCUMENTO = %1, TOTALE_IMPOSTA = %2, TOTALE_IMPONIBILE = %3 "
                           "WHERE IDFATT_VEND = %4")
                .arg(documento)
                .arg(imposta)
                .arg(documento - imposta)
                .arg(id));
}

void NotaAccredito(const TQ3TestDatabase &db, int numero, int anno, int mese, double imponibile)
{
    db.Exec(QStringLiteral("INSERT INTO NOTE_ACCREDITO (IDNOTA_ACCREDITO, NUMERO, DATA, ANNO, CLI_CODICE, "
                           "CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, "
                           "TOTALE_IMPOSTA, TOTALE_DOCUMENTO) VALUES (0, %1, '%2', %3, 'C001', 'Cliente di prova', 1, "
                           "'Rimessa diretta', 'False', %4, 0, %4)")
                .arg(numero)
                .arg(QDate(anno, mese, 12).toString(Qt::ISODate))
                .arg(anno)
                .arg(imponibile));
}

void FatturaAccompagnatoria(const TQ3TestDatabase &db, int numero, int anno, int mese, double imponibile)
{
    const int id = InsertFattAcc(db, numero, QDate(anno, mese, 15));
    db.Exec(QStringLiteral("UPDATE FATT_ACC SET TOTALE_IMPONIBILE = %1 WHERE IDFATT_ACC = %2").arg(imponibile).arg(id));
}

} // namespace

class TestStatisticheFatturato : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init();
    void cleanup();

    void opensOnTheTablePageWithItsHeadings();
    void oneWindowAtATime_closedAndReopenedFresh();
    void refusedWithoutTheStatisticsRight();
    void openedWithTheStatisticsRight();
    void noDocumentsShowsZerosWithoutSignOrRed();
    void invoicesNetOfVatWarehouseAddedCreditNotesSubtracted();
    void monthWithPreviousYearOnlyIsRedMinusHundred();
    void growthShownWithExplicitPlus();
    void creditNotesAboveInvoicesShowRed();
    void documentsOlderThanTwoYearsBeforeAreNeverRead();
    void documentFiledUnderItsYearAndTheMonthOfItsDate();
    void separatorRowShownBlankThoughItHoldsNumbers();
    void totalsRowSumsTheMonths();
    void databaseErrorShownAndGridKept();
    void chartSeriesPointByPoint_totalsOutsideTheAxisKept();
    void legendAndThreeDimensionalView();
    void printSetsTheNinetyFourParameters();
    void exportWritesTheWorksheet();
    void exportCancelledWritesNothing();

private:
    TKRVStatisticheFatturato *Apri();
    QString Mostrato(int riga, int colonna) const { return m_finestra->TestoVisualizzato(riga, colonna); }
    QString Cella(int riga, int colonna) const { return m_finestra->Griglia().at(riga).at(colonna); }
    QTableWidget *Tabella() const { return Field<QTableWidget>(m_finestra, QStringLiteral("grdTabella")); }
    bool Rossa(int riga, int colonna) const
    {
        return Tabella()->item(riga, colonna)->foreground().color() == QColor(Qt::red);
    }
    const TQ3TestDatabase &Db() const { return m_module->Database; }

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_responder;
    TKRVStatisticheFatturato *m_finestra = nullptr;
};

void TestStatisticheFatturato::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_responder = std::make_unique<TQ3RecordingResponder>();
    m_finestra = nullptr;
}

void TestStatisticheFatturato::cleanup()
{
    m_responder.reset();
    m_module.reset();
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
}

TKRVStatisticheFatturato *TestStatisticheFatturato::Apri()
{
    m_finestra = Run<TKRVStatisticheFatturato>(*m_module, ActFatturato);
    return m_finestra;
}

void TestStatisticheFatturato::opensOnTheTablePageWithItsHeadings()
{
    QVERIFY(Apri());
    QCOMPARE(m_finestra->windowTitle(), QStringLiteral("Statistiche fatturato"));
    QCOMPARE(Captions(Field<QToolBar>(m_finestra, QStringLiteral("tBarStandard"))),
             (QStringList{"Chiudi", "Aggiorna"}));
    QCOMPARE(Captions(Field<QToolBar>(m_finestra, QStringLiteral("tBarTabella"))),
             (QStringList{"Stampa", "Esporta su Excel"}));
    auto pagine = Field<QTabWidget>(m_finestra, QStringLiteral("pgcPagine"));
    QCOMPARE(pagine->tabText(0), QStringLiteral(" Tabella  "));
    QCOMPARE(pagine->tabText(1), QStringLiteral(" Grafico "));
    QCOMPARE(pagine->currentIndex(), 0);
    QCOMPARE(Field<QLabel>(m_finestra, QStringLiteral("lblTitolo"))->text(),
             QStringLiteral("Fatturato ultimi 3 anni al netto dell'IVA"));
    QCOMPARE(m_finestra->Grafico()->title(), QStringLiteral("Fatturato ultimi 3 anni al netto dell'IVA"));
    QVERIFY(Field<QCheckBox>(m_finestra, QStringLiteral("chkLegenda"))->isChecked());
    QVERIFY(!Field<QCheckBox>(m_finestra, QStringLiteral("chk3D"))->isChecked());

    QTableWidget *griglia = Tabella();
    QCOMPARE(griglia->columnCount(), 8);
    QCOMPARE(griglia->rowCount(), 16);
    const QList<int> larghezze{90, 108, 103, 55, 108, 103, 55, 108};
    for (int colonna = 0; colonna < 8; ++colonna)
        QCOMPARE(griglia->columnWidth(colonna), larghezze.at(colonna));
    QCOMPARE(griglia->rowHeight(5), 21);
    QCOMPARE(griglia->columnSpan(0, 1), 3);
    QCOMPARE(griglia->columnSpan(0, 4), 3);
    QCOMPARE(griglia->columnSpan(0, 7), 1);
    QCOMPARE(griglia->columnSpan(14, 0), 8);
    QCOMPARE(m_finestra->Griglia().at(0), (QStringList{"", QString::number(Y()), "", "", QString::number(Y() - 1), "",
                                                       "", QString::number(Y() - 2)}));
    QCOMPARE(m_finestra->Griglia().at(1), (QStringList{"", "Valori", "Diff.", "%", "Valori", "Diff.", "%", "Valori"}));
    QCOMPARE(Column(griglia, 0),
             (QStringList{"", "", "gennaio", "febbraio", "marzo", "aprile", "maggio", "giugno", "luglio", "agosto",
                          "settembre", "ottobre", "novembre", "dicembre", "", "Totali"}));
    // Headings bold; row 0 centred, row 1 and the figures right, months left.
    QVERIFY(griglia->item(1, 2)->font().bold());
    QVERIFY(griglia->item(5, 0)->font().bold());
    QVERIFY(!griglia->item(5, 1)->font().bold());
    QCOMPARE(Qt::Alignment(griglia->item(0, 1)->textAlignment()), Qt::AlignCenter);
    QCOMPARE(Qt::Alignment(griglia->item(1, 3)->textAlignment()), Qt::AlignRight | Qt::AlignVCenter);
    QCOMPARE(Qt::Alignment(griglia->item(3, 0)->textAlignment()), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(Qt::Alignment(griglia->item(3, 6)->textAlignment()), Qt::AlignRight | Qt::AlignVCenter);
    QVERIFY(m_responder->Messages().isEmpty());
}

void TestStatisticheFatturato::oneWindowAtATime_closedAndReopenedFresh()
{
    Apri();
    QCOMPARE(Run<TKRVStatisticheFatturato>(*m_module, ActFatturato), m_finestra);
    QCOMPARE(m_module->MainForm->MdiArea()->subWindowList().size(), 1);
    Trigger(m_finestra, QStringLiteral("actChiudi"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!m_module->Main->Form(ActFatturato));
    QVERIFY(Apri());
    QCOMPARE(m_module->MainForm->MdiArea()->subWindowList().size(), 1);
}

void TestStatisticheFatturato::refusedWithoutTheStatisticsRight()
{
    LoginWithRights(Db(), QStringLiteral("ospite"), {QStringLiteral("Fatture di vendita (visualizzazione)")});
    Trigger(m_module->Main->Action(ActFatturato));
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().first(), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QVERIFY(!m_module->Main->Form(ActFatturato));
}

void TestStatisticheFatturato::openedWithTheStatisticsRight()
{
    LoginWithRights(Db(), QStringLiteral("analista"), {QStringLiteral("Statistiche (visualizzazione)")});
    QVERIFY(Apri());
    QVERIFY(m_responder->Messages().isEmpty());
}

void TestStatisticheFatturato::noDocumentsShowsZerosWithoutSignOrRed()
{
    Apri();
    for (int riga = 2; riga <= 15; ++riga) {
        for (int colonna = 1; colonna <= 7; ++colonna) {
            QCOMPARE(Cella(riga, colonna), QStringLiteral("0,00"));
            QVERIFY(!Rossa(riga, colonna));
            if (riga == 14)
                continue;
            const QString atteso = colonna == 3 || colonna == 6   ? QStringLiteral("0,0%")
                                   : colonna == 2 || colonna == 5 ? GetCurrencyPrefix() + QStringLiteral(" 0,00")
                                                                  : FormatCurrency(0);
            QCOMPARE(Mostrato(riga, colonna), atteso);
        }
    }
    QCOMPARE(Mostrato(3, 3), QStringLiteral("0,0%"));
    QCOMPARE(Mostrato(3, 2), QStringLiteral("€ 0,00"));
}

void TestStatisticheFatturato::invoicesNetOfVatWarehouseAddedCreditNotesSubtracted()
{
    Db().LoadFixture(QStringLiteral("magazzino.sql"));
    Fattura(Db(), 1, Y(), 3, 1220, 220);
    Fattura(Db(), 2, Y(), 3, 610, 110);
    FatturaAccompagnatoria(Db(), 1, Y(), 3, 300);
    NotaAccredito(Db(), 1, Y(), 3, 200);
    Apri();
    QCOMPARE(Cella(4, 1), QStringLiteral("1600,00"));
    QCOMPARE(Mostrato(4, 1), FormatCurrency(1600));
    const QString y2 = QString::number(Y() - 2);
    QCOMPARE(
        m_finestra->IstruzioniEseguite(),
        (QStringList{QStringLiteral("SELECT SUM(TOTALE_DOCUMENTO - TOTALE_IMPOSTA) AS TOTALE, EXTRACT(MONTH FROM DATA) "
                                    "AS MESE, ANNO FROM FATT_VEND WHERE ANNO >= ")
                         + y2 + QStringLiteral(" GROUP BY 2, 3 ORDER BY 3, 2"),
                     QStringLiteral("SELECT SUM(TOTALE_IMPONIBILE) AS TOTALE, EXTRACT(MONTH FROM DATA) AS MESE, ANNO "
                                    "FROM FATT_ACC WHERE ANNO >= ")
                         + y2 + QStringLiteral(" GROUP BY 2, 3 ORDER BY 3, 2"),
                     QStringLiteral("SELECT SUM(TOTALE_IMPONIBILE) AS TOTALE, EXTRACT(MONTH FROM DATA) AS MESE, ANNO "
                                    "FROM NOTE_ACCREDITO WHERE ANNO >= ")
                         + y2 + QStringLiteral(" GROUP BY 2, 3 ORDER BY 3, 2")}));
}

void TestStatisticheFatturato::monthWithPreviousYearOnlyIsRedMinusHundred()
{
    Fattura(Db(), 1, Y() - 1, 2, 1220, 220);
    Apri();
    QCOMPARE(Cella(3, 4), QStringLiteral("1000,00"));
    QCOMPARE(Cella(3, 2), QStringLiteral("-1000,00"));
    QCOMPARE(Mostrato(3, 2), QStringLiteral("€ -1.000,00"));
    QVERIFY(Rossa(3, 2));
    QCOMPARE(Cella(3, 3), QStringLiteral("-100,00"));
    QCOMPARE(Mostrato(3, 3), QStringLiteral("-100,0%"));
    QVERIFY(Rossa(3, 3));
    // Against a year without turnover the percentage stays 0.
    QCOMPARE(Mostrato(3, 5), QStringLiteral("€ +1.000,00"));
    QCOMPARE(Mostrato(3, 6), QStringLiteral("0,0%"));
    QVERIFY(!Rossa(3, 4));
    QVERIFY(!Rossa(3, 5));
}

void TestStatisticheFatturato::growthShownWithExplicitPlus()
{
    Fattura(Db(), 1, Y(), 1, 1500, 0);
    Fattura(Db(), 1, Y() - 1, 1, 1000, 0);
    Fattura(Db(), 1, Y() - 2, 1, 800, 0);
    Apri();
    QCOMPARE(Mostrato(2, 2), QStringLiteral("€ +500,00"));
    QCOMPARE(Mostrato(2, 3), QStringLiteral("+50,0%"));
    QCOMPARE(Mostrato(2, 5), QStringLiteral("€ +200,00"));
    QCOMPARE(Cella(2, 6), QStringLiteral("25,00"));
    QCOMPARE(Mostrato(2, 6), QStringLiteral("+25,0%"));
    QCOMPARE(Mostrato(2, 7), FormatCurrency(800));
}

void TestStatisticheFatturato::creditNotesAboveInvoicesShowRed()
{
    Fattura(Db(), 1, Y(), 4, 122, 22);
    NotaAccredito(Db(), 1, Y(), 4, 300);
    Apri();
    QCOMPARE(Cella(5, 1), QStringLiteral("-200,00"));
    QCOMPARE(Mostrato(5, 1), FormatCurrency(-200));
    QVERIFY(Rossa(5, 1));
    QVERIFY(Rossa(15, 1));
}

void TestStatisticheFatturato::documentsOlderThanTwoYearsBeforeAreNeverRead()
{
    Fattura(Db(), 1, Y() - 3, 5, 9999, 0);
    Fattura(Db(), 1, Y() - 2, 5, 100, 0);
    Apri();
    for (const QString &sql : m_finestra->IstruzioniEseguite())
        QVERIFY(sql.contains(QStringLiteral("WHERE ANNO >= ") + QString::number(Y() - 2) + QLatin1Char(' ')));
    QCOMPARE(Cella(6, 7), QStringLiteral("100,00"));
    QCOMPARE(Cella(15, 7), QStringLiteral("100,00"));
    QCOMPARE(Cella(15, 1), QStringLiteral("0,00"));
    QCOMPARE(Cella(15, 4), QStringLiteral("0,00"));
}

void TestStatisticheFatturato::documentFiledUnderItsYearAndTheMonthOfItsDate()
{
    InsertFattVend(Db(), 7, QDate(Y() - 1, 12, 30), Y());
    Db().Exec(QStringLiteral("UPDATE FATT_VEND SET TOTALE_DOCUMENTO = 50 WHERE NUMERO = 7"));
    Apri();
    QCOMPARE(Cella(13, 1), QStringLiteral("50,00"));
    QCOMPARE(Cella(13, 4), QStringLiteral("0,00"));
}

void TestStatisticheFatturato::separatorRowShownBlankThoughItHoldsNumbers()
{
    Fattura(Db(), 1, Y(), 6, 100, 0);
    Apri();
    for (int colonna = 0; colonna < 8; ++colonna)
        QCOMPARE(Mostrato(14, colonna), QString());
    QCOMPARE(Cella(14, 1), QStringLiteral("0,00"));
    QCOMPARE(Cella(14, 0), QString());
}

void TestStatisticheFatturato::totalsRowSumsTheMonths()
{
    Fattura(Db(), 1, Y(), 1, 100, 0);
    Fattura(Db(), 2, Y(), 12, 300, 0);
    Fattura(Db(), 1, Y() - 1, 7, 200, 0);
    Apri();
    QCOMPARE(Cella(15, 1), QStringLiteral("400,00"));
    QCOMPARE(Cella(15, 4), QStringLiteral("200,00"));
    QCOMPARE(Cella(15, 2), QStringLiteral("200,00"));
    QCOMPARE(Cella(15, 3), QStringLiteral("100,00"));
    QCOMPARE(Mostrato(15, 3), QStringLiteral("+100,0%"));
    QCOMPARE(Cella(15, 5), QStringLiteral("200,00"));
    QCOMPARE(Cella(15, 6), QStringLiteral("0,00"));
    QCOMPARE(Mostrato(15, 0), QStringLiteral("Totali"));
}

void TestStatisticheFatturato::databaseErrorShownAndGridKept()
{
    Fattura(Db(), 1, Y(), 2, 100, 0);
    // A warehouse table without the column the statement reads.
    Db().Exec(QStringLiteral("CREATE TABLE FATT_ACC (IDFATT_ACC INTEGER, ANNO INTEGER, DATA DATE)"));
    Apri();
    QCOMPARE(m_responder->Messages().size(), 1);
    const TQ3Message errore = m_responder->Messages().first();
    QCOMPARE(errore.Title, QStringLiteral("Errore"));
    QCOMPARE(errore.Icon, TQ3MsgIcon::Error);
    QVERIFY2(errore.Text.contains(QStringLiteral("TOTALE_IMPONIBILE")), qPrintable(errore.Text));
    // What was read before the failure stays.
    QCOMPARE(Cella(3, 1), QStringLiteral("100,00"));
    QCOMPARE(Mostrato(3, 1), FormatCurrency(100));
    QCOMPARE(Tabella()->item(3, 1)->text(), QStringLiteral("100,00"));
}

void TestStatisticheFatturato::chartSeriesPointByPoint_totalsOutsideTheAxisKept()
{
    Fattura(Db(), 1, Y(), 1, 100, 0);
    Fattura(Db(), 1, Y() - 1, 12, 200, 0);
    Fattura(Db(), 1, Y() - 2, 6, 300, 0);
    Apri();
    const QList<QLineSeries *> serie = m_finestra->Serie();
    QCOMPARE(serie.size(), 3);
    QCOMPARE(serie.at(0)->name(), QString::number(Y()));
    QCOMPARE(serie.at(1)->name(), QString::number(Y() - 1));
    QCOMPARE(serie.at(2)->name(), QString::number(Y() - 2));
    QCOMPARE(serie.at(2)->color(), QColor(Qt::blue));
    QVERIFY(serie.at(0)->color() != QColor(Qt::blue));
    const int colonne[] = {1, 4, 7};
    for (int indice = 0; indice < 3; ++indice) {
        QCOMPARE(serie.at(indice)->count(), 14);
        QCOMPARE(serie.at(indice)->pen().width(), 2);
        QVERIFY(!serie.at(indice)->pointsVisible());
        for (int posizione = 0; posizione < 14; ++posizione) {
            const QPointF punto = serie.at(indice)->at(posizione);
            QCOMPARE(punto.x(), double(posizione));
            QCOMPARE(punto.y(), KRVValoreFatturato(Cella(posizione + 2, colonne[indice])));
        }
    }
    QCOMPARE(serie.at(0)->at(0).y(), 100.0);
    QCOMPARE(serie.at(1)->at(11).y(), 200.0);
    QCOMPARE(serie.at(2)->at(5).y(), 300.0);
    // The blank row gives 0 at the right edge, the totals a point beyond it.
    QCOMPARE(serie.at(0)->at(12).y(), 0.0);
    QCOMPARE(serie.at(0)->at(13), QPointF(13, 100));
    auto asse = qobject_cast<QCategoryAxis *>(m_finestra->Grafico()->axes(Qt::Horizontal).constFirst());
    QCOMPARE(asse->min(), 0.0);
    QCOMPARE(asse->max(), 12.0);
    QCOMPARE(asse->categoriesLabels().first(), QStringLiteral("1"));
    QCOMPARE(asse->endValue(QStringLiteral("1")), 0.0);
    QCOMPARE(asse->endValue(QStringLiteral("12")), 11.0);
    QCOMPARE(asse->endValue(QStringLiteral("13")), 12.0);
}

void TestStatisticheFatturato::legendAndThreeDimensionalView()
{
    Apri();
    Field<QTabWidget>(m_finestra, QStringLiteral("pgcPagine"))->setCurrentIndex(1);
    auto legenda = Field<QWidget>(m_finestra, QStringLiteral("pnlLegenda"));
    QVERIFY(legenda->isVisibleTo(m_finestra));
    auto secondo = Field<QCheckBox>(m_finestra, QStringLiteral("chkSerie2"));
    QCOMPARE(secondo->text(), QString::number(Y() - 1));
    Click(secondo);
    QVERIFY(!m_finestra->Serie().at(1)->isVisible());
    QVERIFY(m_finestra->Serie().at(0)->isVisible());
    Click(Field<QCheckBox>(m_finestra, QStringLiteral("chkLegenda")));
    QVERIFY(!legenda->isVisibleTo(m_finestra));

    Click(Field<QCheckBox>(m_finestra, QStringLiteral("chk3D")));
    auto vista3D = Field<TKRVGrafico3D>(m_finestra, QStringLiteral("grf3D"));
    QVERIFY(vista3D->isVisibleTo(m_finestra));
    QVERIFY(!Field<QWidget>(m_finestra, QStringLiteral("chtGrafico"))->isVisibleTo(m_finestra));
    QCOMPARE(TKRVGrafico3D::LarghezzaLinee(), 1);
    QCOMPARE(m_finestra->Serie().at(0)->pen().width(), 1);
    QVERIFY(!vista3D->SerieVisibile(1));
    QVERIFY(vista3D->SerieVisibile(2));
    QVERIFY(!vista3D->grab().isNull());
    Click(Field<QCheckBox>(m_finestra, QStringLiteral("chk3D")));
    QVERIFY(Field<QWidget>(m_finestra, QStringLiteral("chtGrafico"))->isVisibleTo(m_finestra));
    QCOMPARE(m_finestra->Serie().at(2)->pen().width(), 2);
}

void TestStatisticheFatturato::printSetsTheNinetyFourParameters()
{
    Fattura(Db(), 1, Y(), 1, 100, 0);
    Fattura(Db(), 1, Y() - 1, 2, 200, 0);
    Fattura(Db(), 1, Y() - 2, 3, 400, 0);
    Apri();
    const QStringList finestre = WithModals([&] { Trigger(m_finestra, QStringLiteral("actStampa")); }, {});
    QCOMPARE(finestre, (QStringList{"Output Options", "(annullata)"}));
    QVERIFY2(m_responder->Messages().isEmpty(), qPrintable(m_responder->Messages().value(0).Text));
    TQ3ReportProject *progetto = m_module->Main->rProject();
    const auto param = [progetto](int numero) { return progetto->GetParam(QStringLiteral("Param%1").arg(numero)); };
    QCOMPARE(param(1), QString::number(Y()));
    QCOMPARE(param(2), QString::number(Y() - 1));
    QCOMPARE(param(3), QString::number(Y() - 2));
    QCOMPARE(param(4), QStringLiteral("100,00"));
    QCOMPARE(param(16), QStringLiteral("100,00"));
    QCOMPARE(param(17), QStringLiteral("100,00"));
    QCOMPARE(param(30), QStringLiteral("0,00"));
    QCOMPARE(param(44), QStringLiteral("200,00"));
    QCOMPARE(param(55), QStringLiteral("200,00"));
    QCOMPARE(param(57), QStringLiteral("200,00"));
    QCOMPARE(param(58), QStringLiteral("-400,00"));
    QCOMPARE(param(84), QStringLiteral("400,00"));
    QCOMPARE(param(94), QStringLiteral("400,00"));
    const auto parametri = KRVParametriFatturato(m_finestra->Griglia());
    QCOMPARE(parametri.size(), 94);
    for (int numero = 1; numero <= 94; ++numero) {
        QCOMPARE(parametri.at(numero - 1).first, QStringLiteral("Param%1").arg(numero));
        QCOMPARE(param(numero), parametri.at(numero - 1).second);
    }
    // Column c, month m lands in the parameter (c - 1) x 13 + 4 + m - 1.
    for (int colonna = 1; colonna <= 7; ++colonna) {
        for (int riga = 2; riga <= 13; ++riga)
            QCOMPARE(param((colonna - 1) * 13 + 4 + riga - 2), Cella(riga, colonna));
        QCOMPARE(param((colonna - 1) * 13 + 16), Cella(15, colonna));
    }
}

void TestStatisticheFatturato::exportWritesTheWorksheet()
{
    Fattura(Db(), 1, Y(), 8, 1234.5, 0);
    Apri();
    TKRVSalvaExcel *dialogo = m_module->Main->SaveDialogExcel();
    QCOMPARE(dialogo->windowTitle(), QStringLiteral("Salva con nome..."));
    QCOMPARE(dialogo->nameFilters(), QStringList{QStringLiteral("Cartella di lavoro di Microsoft Excel (*.xls)")});
    QCOMPARE(dialogo->defaultSuffix(), QStringLiteral("xls"));
    QVERIFY(!dialogo->testOption(QFileDialog::DontConfirmOverwrite));

    QTemporaryDir cartella;
    const QString file = cartella.filePath(QStringLiteral("fatturato"));
    const auto esporta = [&](const QString &nome) {
        return WithModals([&] { Trigger(m_finestra, QStringLiteral("actEsportaExcel")); }, {[&](QWidget *finestra) {
                              auto edit = finestra->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
                              edit->setText(nome);
                              QTest::keyClick(edit, Qt::Key_Return);
                              // A name refused leaves the dialog open: the user gives up.
                              if (finestra->isVisible())
                                  qobject_cast<QDialog *>(finestra)->reject();
                          }});
    };
    // A folder that does not exist is refused in the dialog.
    esporta(cartella.filePath(QStringLiteral("manca/fatturato")));
    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(m_responder->Messages().first().Title, QStringLiteral("Salva con nome..."));
    QCOMPARE(m_responder->Messages().first().Icon, TQ3MsgIcon::Warning);
    m_responder->Clear();

    // A new file is confirmed first (the responder answers yes).
    esporta(file);
    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(m_responder->Messages().first().Icon, TQ3MsgIcon::Question);
    QCOMPARE(m_responder->Messages().first().Buttons, TQ3MsgButtons::YesNo);
    const QString xls = file + QStringLiteral(".xls");
    QVERIFY(QFile::exists(xls));

    QProcess lettore;
    lettore.start(QFile::exists(QStringLiteral("/usr/bin/python3")) ? QStringLiteral("/usr/bin/python3")
                                                                    : QStringLiteral("python3"),
                  {QStringLiteral("-c"),
                   QStringLiteral("import json,sys,xlrd\n"
                                  "b=xlrd.open_workbook(sys.argv[1],formatting_info=True)\n"
                                  "s=b.sheet_by_index(0)\n"
                                  "print(json.dumps({'nomi':b.sheet_names(),'righe':s.nrows,'colonne':s.ncols,"
                                  "'celle':[[s.cell_value(r,c) for c in range(s.ncols)] for r in range(s.nrows)],"
                                  "'unioni':[list(m) for m in s.merged_cells]}))\n"),
                   xls});
    QVERIFY(lettore.waitForFinished(30000));
    QCOMPARE(lettore.exitCode(), 0);
    const QJsonObject letto = QJsonDocument::fromJson(lettore.readAllStandardOutput()).object();
    QCOMPARE(letto.value(QStringLiteral("nomi")).toArray().first().toString(), QStringLiteral("Fatturato"));
    QCOMPARE(letto.value(QStringLiteral("righe")).toInt(), 16);
    QCOMPARE(letto.value(QStringLiteral("colonne")).toInt(), 8);
    const QJsonArray celle = letto.value(QStringLiteral("celle")).toArray();
    const auto cella = [&](int riga, int colonna) { return celle.at(riga).toArray().at(colonna); };
    QCOMPARE(cella(0, 1).toString(), QString::number(Y()));
    QCOMPARE(cella(1, 2).toString(), QStringLiteral("Diff."));
    QCOMPARE(cella(9, 0).toString(), QStringLiteral("agosto"));
    QCOMPARE(cella(15, 0).toString(), QStringLiteral("Totali"));
    QCOMPARE(cella(9, 1).toDouble(), 1234.5);
    QCOMPARE(cella(15, 1).toDouble(), 1234.5);
    QCOMPARE(cella(9, 2).toDouble(), 1234.5);
    QCOMPARE(cella(9, 4).toDouble(), 0.0);
    QCOMPARE(cella(14, 3).toString(), QString());
    QVariantList unioni = letto.value(QStringLiteral("unioni")).toArray().toVariantList();
    std::sort(unioni.begin(), unioni.end(), [](const QVariant &a, const QVariant &b) {
        return a.toList().at(0).toInt() * 100 + a.toList().at(2).toInt()
               < b.toList().at(0).toInt() * 100 + b.toList().at(2).toInt();
    });
    // xlrd gives each merge as first row, row after, first column, column after.
    QCOMPARE(unioni, (QVariantList{QVariantList{0, 1, 1, 4}, QVariantList{0, 1, 4, 7}, QVariantList{14, 15, 0, 8}}));
}

void TestStatisticheFatturato::exportCancelledWritesNothing()
{
    Apri();
    QTemporaryDir cartella;
    m_module->Main->SaveDialogExcel()->setDirectory(cartella.path());
    const QStringList finestre = WithModals([&] { Trigger(m_finestra, QStringLiteral("actEsportaExcel")); }, {});
    QCOMPARE(finestre, (QStringList{"Salva con nome...", "(annullata)"}));
    QVERIFY(QDir(cartella.path()).isEmpty());
    QVERIFY(m_responder->Messages().isEmpty());
}

QTEST_MAIN(TestStatisticheFatturato)
#include "tst_statistichefatturato.moc"
