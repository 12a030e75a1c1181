// The monthly margin statements and table, on a real database, without windows.
#include "KRVRedditivitaMensile.h"
#include "KRVRedditivitaTestRows.h"
#include "KRVTestCore.h"

#include <QtTest>

#include <memory>

using namespace KRVTest;

namespace {

const QString FattVendMarzo = QStringLiteral(
    "SELECT SUM(IMPORTO) - SUM(COALESCE(COSTO, 0) * QUANTITA) FROM FATT_VEND_DETT LEFT JOIN FATT_VEND ON "
    "FATT_VEND_DETT.IDFATT_VEND=FATT_VEND.IDFATT_VEND WHERE EXTRACT(MONTH FROM FATT_VEND.DATA) = 3 AND "
    "EXTRACT(YEAR FROM FATT_VEND.DATA) = 2025 AND TIPO_RIGA='Articolo'");
const QString FattAccMarzo =
    QStringLiteral("SELECT SUM(IMPORTO) - SUM(COALESCE(COSTO, 0) * QUANTITA) FROM FATT_ACC_DETT LEFT JOIN FATT_ACC ON "
                   "FATT_ACC_DETT.IDFATT_ACC=FATT_ACC.IDFATT_ACC WHERE EXTRACT(MONTH FROM FATT_ACC.DATA) = 3 AND "
                   "EXTRACT(YEAR FROM FATT_ACC.DATA) = 2025 AND TIPO_RIGA='Articolo'");

// The three kinds of a month as the statement selects them.
QString TreTipi(int mese, int anno, bool conFattAcc)
{
    return QStringLiteral("(") + InternalGetSQL01(mese, anno, QStringLiteral("Articolo"), conFattAcc)
           + QStringLiteral(") AS TOTALE_ARTICOLI, (")
           + InternalGetSQL01(mese, anno, QStringLiteral("Servizio"), conFattAcc)
           + QStringLiteral(") AS TOTALE_SERVIZI, (")
           + InternalGetSQL01(mese, anno, QStringLiteral("Non imponibile"), conFattAcc)
           + QStringLiteral(") AS TOTALE_NON_IMPONIBILE ");
}

TKRVTabellaRedditivita Anno(const QSqlDatabase &db, int anno)
{
    const bool conFattAcc = KRVEsisteFattAcc(db);
    TKRVTabellaRedditivita tabella = KRVTabellaVuota(anno);
    KRVApplicaMesi(tabella, KRVLeggiRedditivita(db, KRVRedditivitaSemestreSQL(1, anno, conFattAcc)));
    KRVApplicaMesi(tabella, KRVLeggiRedditivita(db, KRVRedditivitaSemestreSQL(7, anno, conFattAcc)));
    KRVCompletaTotali(tabella);
    return tabella;
}

} // namespace

class TestRedditivitaMensile : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_module = std::make_unique<TKRVTestCore>(); }
    void cleanup() { m_module.reset(); }

    void marginStatementsOfBothInvoiceKinds();
    void monthStatementAddsTheWarehouseInvoicesOnlyWhenAsked();
    void lineKindQuotedWithInnerQuotesDoubled();
    void semesterStatementsComposedMonthByMonth();
    void warehouseInvoicesDetectedFromTheDatabase();
    void emptyTableHeadingsAndMonthNames();
    void yearWithoutInvoicesGivesZeroEverywhere();
    void nullCostCountsTheFullAmount();
    void costAboveAmountGivesANegativeMargin();
    void monthWithOnlyServicesAveragesAThird();
    void totalsAndYearlyAveragesOverTwelveMonths();
    void monthAndYearTakenFromTheDateNotTheFiledYear();
    void textLinesAndOtherYearsNotCounted();
    void warehouseInvoicesAddedWhenTheirTableExists();
    void monthsOutsideTheYearIgnored();

private:
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    std::unique_ptr<TKRVTestCore> m_module;
};

void TestRedditivitaMensile::marginStatementsOfBothInvoiceKinds()
{
    QCOMPARE(GetFattVendSQL(3, 2025, QStringLiteral("Articolo")), FattVendMarzo);
    QCOMPARE(GetFattAccSQL(3, 2025, QStringLiteral("Articolo")), FattAccMarzo);
}

void TestRedditivitaMensile::monthStatementAddsTheWarehouseInvoicesOnlyWhenAsked()
{
    QCOMPARE(InternalGetSQL01(3, 2025, QStringLiteral("Articolo"), false),
             QStringLiteral("COALESCE((") + FattVendMarzo + QStringLiteral("), 0)"));
    QCOMPARE(InternalGetSQL01(3, 2025, QStringLiteral("Articolo"), true), QStringLiteral("COALESCE((") + FattVendMarzo
                                                                              + QStringLiteral("), 0) + COALESCE((")
                                                                              + FattAccMarzo + QStringLiteral("), 0)"));
}

void TestRedditivitaMensile::lineKindQuotedWithInnerQuotesDoubled()
{
    QVERIFY(
        GetFattVendSQL(12, 1900, QStringLiteral("Non imponibile"))
            .endsWith(QStringLiteral("EXTRACT(MONTH FROM FATT_VEND.DATA) = 12 AND EXTRACT(YEAR FROM FATT_VEND.DATA) = "
                                     "1900 AND TIPO_RIGA='Non imponibile'")));
    QVERIFY(GetFattAccSQL(1, 3000, QStringLiteral("l'altro")).endsWith(QStringLiteral("AND TIPO_RIGA='l''altro'")));
}

void TestRedditivitaMensile::semesterStatementsComposedMonthByMonth()
{
    for (const bool conFattAcc : {false, true}) {
        QString primo = QStringLiteral("SELECT FIRST 1 1 AS MESE, ") + TreTipi(1, 2025, conFattAcc)
                        + QStringLiteral("FROM RDB$GENERATORS ");
        QString secondo = QStringLiteral("SELECT FIRST 1 7 AS MESE, ") + TreTipi(7, 2025, conFattAcc)
                          + QStringLiteral("FROM RDB$GENERATORS ");
        for (int m = 2; m <= 6; ++m) {
            primo += QStringLiteral("UNION SELECT FIRST 1 ") + QString::number(m) + QStringLiteral(" AS MESE, ")
                     + TreTipi(m, 2025, conFattAcc) + QStringLiteral("FROM RDB$GENERATORS")
                     + QString::fromLatin1(m < 6 ? " " : "");
            secondo += QStringLiteral("UNION SELECT FIRST 1 ") + QString::number(m + 6) + QStringLiteral(" AS MESE, ")
                       + TreTipi(m + 6, 2025, conFattAcc) + QStringLiteral("FROM RDB$GENERATORS")
                       + QString::fromLatin1(m < 6 ? " " : "");
        }
        QCOMPARE(KRVRedditivitaSemestreSQLRiferimento(1, 2025, conFattAcc), primo);
        QCOMPARE(KRVRedditivitaSemestreSQLRiferimento(7, 2025, conFattAcc), secondo);
        QVERIFY(primo.startsWith(QStringLiteral("SELECT FIRST 1 1 AS MESE, (COALESCE((SELECT SUM(IMPORTO)")));
        QVERIFY(primo.endsWith(QStringLiteral("AS TOTALE_NON_IMPONIBILE FROM RDB$GENERATORS")));
        QCOMPARE(primo.count(QStringLiteral("(SELECT SUM(IMPORTO)")), conFattAcc ? 36 : 18);
        QCOMPARE(primo.count(QStringLiteral("FROM FATT_ACC_DETT")), conFattAcc ? 18 : 0);
        QCOMPARE(primo.count(QStringLiteral("COALESCE((")), conFattAcc ? 36 : 18);
        QCOMPARE(primo.count(QStringLiteral("UNION SELECT FIRST 1 ")), 5);
    }
}

void TestRedditivitaMensile::warehouseInvoicesDetectedFromTheDatabase()
{
    QVERIFY(!KRVEsisteFattAcc(Db().Db()));
    Db().LoadFixture(QStringLiteral("magazzino.sql"));
    QVERIFY(KRVEsisteFattAcc(Db().Db()));
}

void TestRedditivitaMensile::emptyTableHeadingsAndMonthNames()
{
    const TKRVTabellaRedditivita tabella = KRVTabellaVuota(2024);
    QCOMPARE(tabella.size(), 16);
    QCOMPARE(tabella.at(0), (QStringList{"Anno: 2024", "Articoli", "Servizi", "Altro", "", "TOTALE", "MEDIA"}));
    QStringList colonna;
    for (const QStringList &riga : tabella) {
        QCOMPARE(riga.size(), 7);
        colonna << riga.at(0);
    }
    QCOMPARE(colonna, (QStringList{"Anno: 2024", "Gennaio", "Febbraio", "Marzo", "Aprile", "Maggio", "Giugno", "Luglio",
                                   "Agosto", "Settembre", "Ottobre", "Novembre", "Dicembre", "", "TOTALE", "MEDIA"}));
    QCOMPARE(tabella.at(13), QStringList(7));
}

void TestRedditivitaMensile::yearWithoutInvoicesGivesZeroEverywhere()
{
    const TKRVTabellaRedditivita tabella = Anno(Db().Db(), 2025);
    for (int riga = 1; riga <= 12; ++riga) {
        QCOMPARE(tabella.at(riga).mid(1, 3), (QStringList{"0.00", "0.00", "0.00"}));
        QCOMPARE(tabella.at(riga).at(5), QStringLiteral("0.00"));
        QCOMPARE(tabella.at(riga).at(6), QStringLiteral("0.00"));
    }
    QCOMPARE(tabella.at(14), (QStringList{"TOTALE", "0.00", "0.00", "0.00", "", "0.00", ""}));
    QCOMPARE(tabella.at(15), (QStringList{"MEDIA", "0.00", "0.00", "0.00", "", "", ""}));
}

void TestRedditivitaMensile::nullCostCountsTheFullAmount()
{
    const int id = InsertFattVend(Db(), 1, QDate(2025, 2, 10));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), id, QStringLiteral("Articolo"), 100, -1, 2);
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), id, QStringLiteral("Articolo"), 50, 10, 3);
    const TKRVTabellaRedditivita tabella = Anno(Db().Db(), 2025);
    QCOMPARE(tabella.at(2).at(1), QStringLiteral("120.00"));
    QCOMPARE(tabella.at(2).at(5), QStringLiteral("120.00"));
}

void TestRedditivitaMensile::costAboveAmountGivesANegativeMargin()
{
    const int id = InsertFattVend(Db(), 1, QDate(2025, 4, 30));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), id, QStringLiteral("Non imponibile"), 10, 8, 2);
    const TKRVTabellaRedditivita tabella = Anno(Db().Db(), 2025);
    QCOMPARE(tabella.at(4).at(3), QStringLiteral("-6.00"));
    QCOMPARE(tabella.at(4).at(5), QStringLiteral("-6.00"));
    QCOMPARE(tabella.at(4).at(6), QStringLiteral("-2.00"));
    QCOMPARE(tabella.at(14).at(3), QStringLiteral("-6.00"));
    QCOMPARE(tabella.at(15).at(3), QStringLiteral("-0.50"));
}

void TestRedditivitaMensile::monthWithOnlyServicesAveragesAThird()
{
    const int id = InsertFattVend(Db(), 1, QDate(2025, 9, 1));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), id, QStringLiteral("Servizio"), 90, 0, 1);
    const TKRVTabellaRedditivita tabella = Anno(Db().Db(), 2025);
    QCOMPARE(tabella.at(9).mid(1), (QStringList{"0.00", "90.00", "0.00", "", "90.00", "30.00"}));
}

void TestRedditivitaMensile::totalsAndYearlyAveragesOverTwelveMonths()
{
    const int gennaio = InsertFattVend(Db(), 1, QDate(2025, 1, 1));
    const int dicembre = InsertFattVend(Db(), 2, QDate(2025, 12, 31));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), gennaio, QStringLiteral("Articolo"), 300, 100, 1);
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), gennaio, QStringLiteral("Servizio"), 60, -1, 1);
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), dicembre, QStringLiteral("Articolo"), 400, 0, 1);
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), dicembre, QStringLiteral("Non imponibile"), 12, -1, 1);
    const TKRVTabellaRedditivita tabella = Anno(Db().Db(), 2025);
    QCOMPARE(tabella.at(1).mid(1),
             (QStringList{"200.00", "60.00", "0.00", "", "260.00", QString::asprintf("%.2f", 260.0 / 3)}));
    QCOMPARE(tabella.at(12).mid(1),
             (QStringList{"400.00", "0.00", "12.00", "", "412.00", QString::asprintf("%.2f", 412.0 / 3)}));
    QCOMPARE(tabella.at(14), (QStringList{"TOTALE", "600.00", "60.00", "12.00", "", "672.00", ""}));
    QCOMPARE(tabella.at(15), (QStringList{"MEDIA", "50.00", "5.00", "1.00", "", "", ""}));
}

void TestRedditivitaMensile::monthAndYearTakenFromTheDateNotTheFiledYear()
{
    const int id = InsertFattVend(Db(), 1, QDate(2024, 12, 31), 2025);
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), id, QStringLiteral("Articolo"), 70, -1, 1);
    QCOMPARE(Anno(Db().Db(), 2025).at(14).at(5), QStringLiteral("0.00"));
    QCOMPARE(Anno(Db().Db(), 2024).at(12).at(1), QStringLiteral("70.00"));
}

void TestRedditivitaMensile::textLinesAndOtherYearsNotCounted()
{
    const int id = InsertFattVend(Db(), 1, QDate(2025, 5, 5));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), id, QStringLiteral("Testo"), 80, -1, 1);
    const int altro = InsertFattVend(Db(), 2, QDate(2026, 5, 5));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), altro, QStringLiteral("Articolo"), 80, -1, 1);
    QCOMPARE(Anno(Db().Db(), 2025).at(14).at(5), QStringLiteral("0.00"));
}

void TestRedditivitaMensile::warehouseInvoicesAddedWhenTheirTableExists()
{
    Db().LoadFixture(QStringLiteral("magazzino.sql"));
    const int vend = InsertFattVend(Db(), 1, QDate(2025, 6, 15));
    InsertRigaMargine(Db(), QStringLiteral("FATT_VEND"), vend, QStringLiteral("Articolo"), 100, 20, 1);
    const int acc = InsertFattAcc(Db(), 1, QDate(2025, 6, 20));
    InsertRigaMargine(Db(), QStringLiteral("FATT_ACC"), acc, QStringLiteral("Articolo"), 50, -1, 4);
    InsertRigaMargine(Db(), QStringLiteral("FATT_ACC"), acc, QStringLiteral("Servizio"), 30, 5, 2);
    const TKRVTabellaRedditivita tabella = Anno(Db().Db(), 2025);
    QCOMPARE(tabella.at(6).mid(1, 3), (QStringList{"130.00", "20.00", "0.00"}));
    QCOMPARE(tabella.at(14).at(5), QStringLiteral("150.00"));
}

void TestRedditivitaMensile::monthsOutsideTheYearIgnored()
{
    TKRVTabellaRedditivita tabella = KRVTabellaVuota(2025);
    KRVApplicaMesi(tabella, {{0, 1, 2, 3}, {13, 4, 5, 6}, {2, 1.5, 0, 0}});
    KRVCompletaTotali(tabella);
    QCOMPARE(tabella.at(13), QStringList(7));
    QCOMPARE(tabella.at(14).at(5), QStringLiteral("1.50"));
    QCOMPARE(tabella.at(2).at(1), QStringLiteral("1.50"));
}

QTEST_GUILESS_MAIN(TestRedditivitaMensile)
#include "tst_redditivitamensile.moc"
