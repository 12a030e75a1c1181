// The monthly profitability window driven as a user would, on a real database.
#include "../documents/KRVFattureTestKit.h"
#include "KRVRedditivitaTestRows.h"
#include "Q3Guards.h"
#include "uKRVStatisticheRedditivitaMensile.h"

#include <QLabel>
#include <QMdiSubWindow>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBar>

#include <memory>

using namespace KRVTest;

namespace {

const QString ActRedditivita = QStringLiteral("actStatisticheRedditivitaMensile");

} // namespace

class TestStatisticheRedditivitaMensile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init();
    void cleanup();

    void opensOnTheCurrentYear();
    void oneWindowReused_closedAndReopenedOnTheCurrentYear();
    void refusedWithoutTheStatisticsRight();
    void openedWithTheStatisticsRight();
    void yearWithoutInvoicesShowsZeroCurrency();
    void refreshIssuesExactlyTwoStatements();
    void refreshAddsTheWarehouseInvoicesWhenTheirTableExists();
    void nullCostCountsTheFullAmount();
    void negativeMarginShownWithoutColour();
    void monthWithOnlyServicesAveragesAThird();
    void totalsAndAveragesOfTheChosenYear();
    void yearSpinnerFrom1900To3000();
    void headingCellsAlignmentAndBoldGrandTotal();
    void columnWidthsFollowTheGrid();
    void databaseErrorShownAndGridKept();

private:
    TKRVStatisticheRedditivitaMensile *Apri();
    QTableWidget *Griglia() const { return Field<QTableWidget>(m_finestra, QStringLiteral("grdTabella")); }
    QSpinBox *SpinAnno() const { return Field<QSpinBox>(m_finestra, QStringLiteral("speAnno")); }
    void Aggiorna(int anno);
    QString Mostrato(int riga, int colonna) const { return m_finestra->TestoVisualizzato(riga, colonna); }
    QString Cella(int riga, int colonna) const { return Griglia()->item(riga, colonna)->text(); }
    const TQ3TestDatabase &Db() const { return m_module->Database; }

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_responder;
    TKRVStatisticheRedditivitaMensile *m_finestra = nullptr;
};

void TestStatisticheRedditivitaMensile::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_responder = std::make_unique<TQ3RecordingResponder>();
    m_finestra = nullptr;
}

void TestStatisticheRedditivitaMensile::cleanup()
{
    m_responder.reset();
    m_module.reset();
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
}

TKRVStatisticheRedditivitaMensile *TestStatisticheRedditivitaMensile::Apri()
{
    m_finestra = Run<TKRVStatisticheRedditivitaMensile>(*m_module, ActRedditivita);
    return m_finestra;
}

void TestStatisticheRedditivitaMensile::Aggiorna(int anno)
{
    Type(SpinAnno(), QString::number(anno));
    Trigger(m_finestra, QStringLiteral("actAggiornaTabella"));
}

void TestStatisticheRedditivitaMensile::opensOnTheCurrentYear()
{
    QVERIFY(Apri());
    QCOMPARE(m_finestra->windowTitle(), QStringLiteral("Redditività mensile"));
    QCOMPARE(m_finestra->minimumSize(), QSize(750, 550));
    QCOMPARE(Captions(Field<QToolBar>(m_finestra, QStringLiteral("tBarStandard"))),
             (QStringList{"Chiudi", "Aggiorna tabella"}));
    auto etichetta = Field<QLabel>(m_finestra, QStringLiteral("lblspeAnno"));
    QCOMPARE(etichetta->text(), QStringLiteral("    Anno"));
    QCOMPARE(etichetta->buddy(), SpinAnno());
    QCOMPARE(Field<QTabWidget>(m_finestra, QStringLiteral("pgcPagine"))->tabText(0), QStringLiteral(" Tabella "));
    const int anno = QDate::currentDate().year();
    QCOMPARE(SpinAnno()->value(), anno);
    QCOMPARE(Griglia()->columnCount(), 7);
    QCOMPARE(Griglia()->rowCount(), 16);
    QCOMPARE(Column(Griglia(), 0), (QStringList{QStringLiteral("Anno: ") + QString::number(anno), "Gennaio", "Febbraio",
                                                "Marzo", "Aprile", "Maggio", "Giugno", "Luglio", "Agosto", "Settembre",
                                                "Ottobre", "Novembre", "Dicembre", "", "TOTALE", "MEDIA"}));
    QStringList intestazioni;
    for (int colonna = 0; colonna < 7; ++colonna)
        intestazioni << Cella(0, colonna);
    QCOMPARE(intestazioni.mid(1), (QStringList{"Articoli", "Servizi", "Altro", "", "TOTALE", "MEDIA"}));
    // The refresh at opening has filled the table.
    QCOMPARE(m_finestra->IstruzioniEseguite().size(), 2);
    QCOMPARE(Cella(14, 5), QStringLiteral("0.00"));
    QVERIFY(m_responder->Messages().isEmpty());
}

void TestStatisticheRedditivitaMensile::oneWindowReused_closedAndReopenedOnTheCurrentYear()
{
    Apri();
    Aggiorna(2020);
    QCOMPARE(Run<TKRVStatisticheRedditivitaMensile>(*m_module, ActRedditivita), m_finestra);
    QCOMPARE(SpinAnno()->value(), 2020);
    QCOMPARE(m_module->MainForm->MdiArea()->subWindowList().size(), 1);
    Trigger(m_finestra, QStringLiteral("actChiudi"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!m_module->Main->Form(ActRedditivita));
    Apri();
    QCOMPARE(SpinAnno()->value(), QDate::currentDate().year());
}

void TestStatisticheRedditivitaMensile::refusedWithoutTheStatisticsRight()
{
    LoginWithRights(Db(), QStringLiteral("ospite"), {QStringLiteral("Fatture di vendita (visualizzazione)")});
    Trigger(m_module->Main->Action(ActRedditivita));
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().first(), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QVERIFY(!m_module->Main->Form(ActRedditivita));
    QVERIFY(m_module->MainForm->MdiArea()->subWindowList().isEmpty());
}

void TestStatisticheRedditivitaMensile::openedWithTheStatisticsRight()
{
    LoginWithRights(Db(), QStringLiteral("analista"), {QStringLiteral("Statistiche (visualizzazione)")});
    QVERIFY(Apri());
    QVERIFY(m_responder->Messages().isEmpty());
}

void TestStatisticheRedditivitaMensile::yearWithoutInvoicesShowsZeroCurrency()
{
    Apri();
    Aggiorna(2025);
    QCOMPARE(Cella(0, 0), QStringLiteral("Anno: 2025"));
    const QString zero = FormatCurrency(0);
    for (int riga : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 15}) {
        for (int colonna : {1, 2, 3, 5, 6})
            QCOMPARE(Mostrato(riga, colonna), zero);
    }
    // Cells never computed show 0 as well.
    QCOMPARE(Cella(14, 6), QString());
    QCOMPARE(Cella(15, 5), QString());
    QCOMPARE(Mostrato(14, 5), zero);
    QCOMPARE(Mostrato(0, 1), QStringLiteral("Articoli"));
    QCOMPARE(Mostrato(13, 1), QString());
    QCOMPARE(Mostrato(1, 4), QString());
}

void TestStatisticheRedditivitaMensile::refreshIssuesExactlyTwoStatements()
{
    Apri();
    Aggiorna(2025);
    const QStringList istruzioni = m_finestra->IstruzioniEseguite();
    QCOMPARE(istruzioni.size(), 2);
    QCOMPARE(istruzioni.at(0), KRVRedditivitaSemestreSQL(1, 2025, false));
    QCOMPARE(istruzioni.at(1), KRVRedditivitaSemestreSQL(7, 2025, false));
    QVERIFY(istruzioni.at(0).startsWith(QStringLiteral(
        "SELECT FIRST 1 1 AS MESE, (COALESCE((SELECT SUM(IMPORTO) - SUM(COALESCE(COSTO, 0) * QUANTITA) FROM "
        "FATT_VEND LEFT JOIN FATT_VEND_DETT ON FATT_VEND_DETT.IDFATT_VEND=FATT_VEND.IDFATT_VEND WHERE "
        "FATT_VEND.DATA >= '2025-01-01' AND FATT_VEND.DATA < '2025-02-01' AND TIPO_RIGA='Articolo'), 0)) AS "
        "TOTALE_ARTICOLI, (COALESCE((")));
    QVERIFY(istruzioni.at(1).startsWith(QStringLiteral("SELECT FIRST 1 7 AS MESE, (")));
    QVERIFY(istruzioni.at(1).contains(
        QStringLiteral(") AS TOTALE_NON_IMPONIBILE FROM RDB$GENERATORS UNION SELECT FIRST 1 12 AS MESE, (")));
    QCOMPARE(istruzioni.at(0).count(QStringLiteral("(SELECT SUM(")), 18);
    QVERIFY(!istruzioni.join(QString()).contains(QStringLiteral("FATT_ACC")));
}

void TestStatisticheRedditivitaMensile::refreshAddsTheWarehouseInvoicesWhenTheirTableExists()
{
    Db().LoadFixture(QStringLiteral("magazzino.sql"));
    const int acc = InsertFattAcc(Db(), 1, QDate(2025, 3, 3));
    InsertRigaMargine(Db(), QStringLiteral("FATT_ACC"), acc, QStringLiteral("Servizio"), 45, -1, 1);
    Apri();
    Aggiorna(2025);
    const QStringList istruzioni = m_finestra->IstruzioniEseguite();
    QCOMPARE(istruzioni.size(), 2);
    QCOMPARE(istruzioni.at(0), KRVRedditivitaSemestreSQL(1, 2025, true));
    QCOMPARE(istruzioni.at(1), KRVRedditivitaSemestreSQL(7, 2025, true));
    QCOMPARE(istruzioni.at(1).count(QStringLiteral("(SELECT SUM(")), 36);
    QVERIFY(istruzioni.at(0).contains(QStringLiteral(
        "TIPO_RIGA='Articolo'), 0) + COALESCE((SELECT SUM(IMPORTO) - SUM(COALESCE(COSTO, 0) * QUANTITA) FROM FATT_ACC_DETT "
        "LEFT JOIN FATT_ACC ON FATT_ACC_DETT.IDFATT_ACC=FATT_ACC.IDFATT_ACC WHERE EXTRACT(MONTH FROM FATT_ACC.DATA) = 1 AND "
        "EXTRACT(YEAR FROM FATT_ACC.DATA) = 2025 AND TIPO_RIGA='Articolo'), 0)) AS TOTALE_ARTICOLI, ")));
    QCOMPARE(Cella(3, 2), QStringLiteral("45.00"));
    QCOMPARE(Cella(3, 6), QStringLiteral("15.00"));
}

void TestStatisticheRedditivitaMensile::nullCostCountsTheFullAmount()
{
    const int id = InsertFattVend(Db(), 1, QDate(2025, 2, 10));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), id, QStringLiteral("Articolo"), 100, -1, 2);
    Apri();
    Aggiorna(2025);
    QCOMPARE(Cella(2, 1), QStringLiteral("100.00"));
    QCOMPARE(Mostrato(2, 1), FormatCurrency(100));
    QCOMPARE(Mostrato(14, 5), FormatCurrency(100));
}

void TestStatisticheRedditivitaMensile::negativeMarginShownWithoutColour()
{
    const int id = InsertFattVend(Db(), 1, QDate(2025, 7, 1));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), id, QStringLiteral("Articolo"), 10, 7.5, 2);
    Apri();
    Aggiorna(2025);
    QCOMPARE(Cella(7, 1), QStringLiteral("-5.00"));
    QCOMPARE(Mostrato(7, 1), FormatCurrency(-5));
    QVERIFY(Mostrato(7, 1).contains(QLatin1Char('-')));
    QVERIFY(!Griglia()->item(7, 1)->data(Qt::ForegroundRole).isValid());
    QCOMPARE(Mostrato(14, 1), FormatCurrency(-5));
}

void TestStatisticheRedditivitaMensile::monthWithOnlyServicesAveragesAThird()
{
    const int id = InsertFattVend(Db(), 1, QDate(2025, 10, 10));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), id, QStringLiteral("Servizio"), 120, 10, 3);
    Apri();
    Aggiorna(2025);
    QCOMPARE(Cella(10, 2), QStringLiteral("90.00"));
    QCOMPARE(Cella(10, 5), QStringLiteral("90.00"));
    QCOMPARE(Cella(10, 6), QStringLiteral("30.00"));
    QCOMPARE(Mostrato(10, 6), FormatCurrency(30));
}

void TestStatisticheRedditivitaMensile::totalsAndAveragesOfTheChosenYear()
{
    const int gennaio = InsertFattVend(Db(), 1, QDate(2024, 1, 31));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), gennaio, QStringLiteral("Articolo"), 240, 0, 1);
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), gennaio, QStringLiteral("Non imponibile"), 36, -1, 1);
    const int maggio = InsertFattVend(Db(), 2, QDate(2024, 5, 1));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), maggio, QStringLiteral("Servizio"), 24, 0, 1);
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), maggio, QStringLiteral("Testo"), 1000, -1, 1);
    const int altroAnno = InsertFattVend(Db(), 1, QDate(2025, 5, 1));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), altroAnno, QStringLiteral("Servizio"), 999, 0, 1);
    Apri();
    Aggiorna(2024);
    QCOMPARE(Cella(1, 5), QStringLiteral("276.00"));
    QCOMPARE(Cella(1, 6), QStringLiteral("92.00"));
    QCOMPARE(Cella(5, 5), QStringLiteral("24.00"));
    QCOMPARE(Cella(5, 6), QStringLiteral("8.00"));
    QCOMPARE(Cella(14, 1), QStringLiteral("240.00"));
    QCOMPARE(Cella(14, 2), QStringLiteral("24.00"));
    QCOMPARE(Cella(14, 3), QStringLiteral("36.00"));
    QCOMPARE(Cella(14, 5), QStringLiteral("300.00"));
    QCOMPARE(Cella(15, 1), QStringLiteral("20.00"));
    QCOMPARE(Cella(15, 2), QStringLiteral("2.00"));
    QCOMPARE(Cella(15, 3), QStringLiteral("3.00"));
    QCOMPARE(Mostrato(14, 5), FormatCurrency(300));
    QCOMPARE(Mostrato(15, 1), FormatCurrency(20));
}

void TestStatisticheRedditivitaMensile::yearSpinnerFrom1900To3000()
{
    Apri();
    QCOMPARE(SpinAnno()->minimum(), 1900);
    QCOMPARE(SpinAnno()->maximum(), 3000);
    Aggiorna(1900);
    QCOMPARE(SpinAnno()->value(), 1900);
    QCOMPARE(Cella(0, 0), QStringLiteral("Anno: 1900"));
    Aggiorna(3000);
    QCOMPARE(SpinAnno()->value(), 3000);
    QCOMPARE(Cella(0, 0), QStringLiteral("Anno: 3000"));
    Type(SpinAnno(), QStringLiteral("3001"));
    QVERIFY(SpinAnno()->value() != 3001);
    Type(SpinAnno(), QStringLiteral("1899"));
    PressEnter(SpinAnno());
    QVERIFY(SpinAnno()->value() >= 1900);
    SpinAnno()->setValue(1899);
    QCOMPARE(SpinAnno()->value(), 1900);
    SpinAnno()->setValue(3001);
    QCOMPARE(SpinAnno()->value(), 3000);
    QVERIFY(m_responder->Messages().isEmpty());
}

void TestStatisticheRedditivitaMensile::headingCellsAlignmentAndBoldGrandTotal()
{
    Apri();
    for (int riga = 0; riga < 16; ++riga) {
        for (int colonna = 0; colonna < 7; ++colonna) {
            const bool intestazione =
                (riga == 0 && (colonna == 1 || colonna == 2 || colonna == 3 || colonna == 5 || colonna == 6))
                || (colonna == 0 && riga != 0 && riga != 13);
            QCOMPARE(TKRVStatisticheRedditivitaMensile::CellaIntestazione(riga, colonna), intestazione);
            const Qt::Alignment orizzontale =
                Qt::Alignment::fromInt(Griglia()->item(riga, colonna)->textAlignment()) & Qt::AlignHorizontal_Mask;
            Qt::Alignment atteso = Qt::AlignLeft;
            if ((colonna >= 1 && colonna <= 3) || ((colonna == 5 || colonna == 6) && riga > 0))
                atteso = Qt::AlignRight;
            QCOMPARE(orizzontale, atteso);
            QCOMPARE(Griglia()->item(riga, colonna)->font().bold(), riga == 14 && colonna == 5);
        }
    }
    QCOMPARE(Griglia()->rowHeight(5), 21);
    QCOMPARE(Griglia()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(Griglia()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(Griglia()->selectionMode(), QAbstractItemView::ContiguousSelection);
    // Rendering the headings and the currency cells goes through the grid's own drawing.
    QVERIFY(!Griglia()->grab().isNull());
}

void TestStatisticheRedditivitaMensile::columnWidthsFollowTheGrid()
{
    Apri();
    m_module->MainForm->show();
    for (const int larghezza : {900, 1234}) {
        m_finestra->parentWidget()->resize(larghezza, 600);
        QCoreApplication::processEvents();
        const int cliente = Griglia()->viewport()->width();
        const int unita = qRound(cliente / 13.0);
        int somma = 0;
        for (int colonna : {0, 1, 2, 3, 5, 6}) {
            QCOMPARE(Griglia()->columnWidth(colonna), 2 * unita);
            somma += Griglia()->columnWidth(colonna);
        }
        QCOMPARE(Griglia()->columnWidth(4), cliente - 12 * unita);
        QCOMPARE(somma + Griglia()->columnWidth(4), cliente);
    }
}

void TestStatisticheRedditivitaMensile::databaseErrorShownAndGridKept()
{
    // A warehouse invoice table without the columns the statement reads.
    Db().Exec(QStringLiteral("CREATE TABLE FATT_ACC (IDFATT_ACC INTEGER)"));
    Apri();
    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(m_responder->Messages().first().Title, QStringLiteral("Errore"));
    QCOMPARE(m_responder->Messages().first().Icon, TQ3MsgIcon::Error);
    QVERIFY(m_finestra);
    Aggiorna(2025);
    QCOMPARE(m_responder->Messages().size(), 2);
    QCOMPARE(m_responder->Messages().last().Title, QStringLiteral("Errore"));
    QVERIFY(m_responder->Messages().last().Text.contains(QLatin1String("FATT_ACC_DETT")));
    QCOMPARE(Cella(0, 0), QStringLiteral("Anno: 2025"));
    QCOMPARE(Cella(1, 0), QStringLiteral("Gennaio"));
    QCOMPARE(Cella(1, 1), QString());
    QCOMPARE(TQ3BusyCursor::Depth(), 0);
}

QTEST_MAIN(TestStatisticheRedditivitaMensile)
#include "tst_statisticheredditivitamensile.moc"
