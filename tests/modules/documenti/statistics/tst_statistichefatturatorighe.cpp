// The statements of the turnover by article, service and customer and their
// first forms, compared to the letter, and what Firebird makes of them.
#include "../documents/KRVFattureTestKit.h"
#include "KRVRedditivitaTestRows.h"
#include "KRVStampe.h"
#include "KRVStatisticheFatturatoRighe.h"
#include "Q3Dataset.h"

#include <memory>

using namespace KRVTest;

namespace {

const QDate Dal(2026, 1, 1);
const QDate Al(2026, 3, 31);

TKRVFiltroRighe Filtro(const QString &tipoRiga, const QList<int> &categorie = {}, const QString &codice = QString())
{
    TKRVFiltroRighe filtro;
    filtro.TipoRiga = tipoRiga;
    filtro.Categorie = categorie;
    filtro.Codice = codice;
    return filtro;
}

// The rows a statement reads into the print dataset, columns apart by "|".
QStringList Letto(const QString &dataset, const QString &sql)
{
    TQ3Dataset *letto = KRVApriDatiStampa(KRVStampeHost(), dataset, sql);
    QStringList righe;
    for (int riga = 0; riga < letto->RecordCount(); ++riga) {
        QStringList colonne;
        for (int colonna = 0; colonna < letto->FieldNames().size(); ++colonna)
            colonne << letto->ValueAt(riga, colonna).toString();
        righe << colonne.join(QLatin1Char('|'));
    }
    return righe;
}

} // namespace

class TestStatisticheFatturatoRighe : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_module.reset(); }

    void whereWithoutBlanks();
    void whereWithBlanksAroundTheSigns();
    void referenceArticleStatementWithoutBlanks();
    void referenceServiceStatementWithBlanksInBothHalves();
    void referenceCustomerStatementWithoutTheWarehouseTable();
    void referenceCustomerStatementWithTheWarehouseTable();
    void articleStatementSumsThePeriodsLinesFirst();
    void customerStatementSumsThePeriodsLinesFirst();
    void titleWithBothDays();
    void statementsRunWithTheColumnsTheLayoutsRead();
    void emptyResultPrintsNothing();

private:
    // The module on a new database, for the tests that run statements.
    TKRVMain *Main()
    {
        m_module = std::make_unique<TKRVTestModule>();
        return m_module->Main;
    }

    std::unique_ptr<TKRVTestModule> m_module;
};

void TestStatisticheFatturatoRighe::whereWithoutBlanks()
{
    QCOMPARE(KRVWhereRighe(Filtro(QStringLiteral("Articolo")), TKRVScritturaSQL::Compatta),
             QStringLiteral("WHERE TIPO_RIGA='Articolo'"));
    QCOMPARE(KRVWhereRighe(Filtro(QStringLiteral("Articolo"), {4, 7, 12}, QStringLiteral("ART'1")),
                           TKRVScritturaSQL::Compatta),
             QStringLiteral("WHERE TIPO_RIGA='Articolo' AND IDCATEGORIA IN (4,7,12) AND CODICE='ART''1'"));
    QCOMPARE(KRVWhereRighe(Filtro(QStringLiteral("Servizio"), {3}), TKRVScritturaSQL::Compatta),
             QStringLiteral("WHERE TIPO_RIGA='Servizio' AND IDCATEGORIA IN (3)"));
}

void TestStatisticheFatturatoRighe::whereWithBlanksAroundTheSigns()
{
    QCOMPARE(KRVWhereRighe(Filtro(QStringLiteral("Servizio")), TKRVScritturaSQL::Spaziata),
             QStringLiteral("WHERE TIPO_RIGA = 'Servizio'"));
    QCOMPARE(KRVWhereRighe(Filtro(QStringLiteral("Servizio"), {2, 5}, QStringLiteral("SRV1")),
                           TKRVScritturaSQL::Spaziata),
             QStringLiteral("WHERE TIPO_RIGA = 'Servizio' AND IDCATEGORIA IN (2,5) AND CODICE = 'SRV1'"));
}

void TestStatisticheFatturatoRighe::referenceArticleStatementWithoutBlanks()
{
    QCOMPARE(
        KRVSQLFatturatoRigheRiferimento(QStringLiteral("WHERE TIPO_RIGA='Articolo'"), Dal, Al,
                                        TKRVScritturaSQL::Compatta),
        QStringLiteral(
            "SELECT EXT_TBL.CODICE AS CODICE, (SELECT FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM "
            "FATT_VEND_DETT INT_TBL WHERE INT_TBL.CODICE=EXT_TBL.CODICE ) AS DESCRIZIONE, EXT_TBL.IDCATEGORIA "
            "AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS IMPORTO, EXT_TBL.TIPO_RIGA FROM FATT_VEND_DETT "
            "EXT_TBL WHERE TIPO_RIGA='Articolo' AND IDFATT_VEND IN (SELECT IDFATT_VEND FROM FATT_VEND WHERE DATA >= "
            "'2026-01-01' AND DATA <= '2026-03-31') GROUP BY 1, 2, 3, 5 UNION SELECT EXT_TBL.CODICE AS CODICE, "
            "(SELECT FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM FATT_ACC_DETT INT_TBL WHERE "
            "INT_TBL.CODICE=EXT_TBL.CODICE ) AS DESCRIZIONE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, "
            "SUM(EXT_TBL.IMPORTO) AS IMPORTO, EXT_TBL.TIPO_RIGA FROM FATT_ACC_DETT EXT_TBL WHERE "
            "TIPO_RIGA='Articolo' AND IDFATT_ACC IN (SELECT IDFATT_ACC FROM FATT_ACC WHERE DATA >= '2026-01-01' AND "
            "DATA <= '2026-03-31') GROUP BY 1, 2, 3, 5"));
}

void TestStatisticheFatturatoRighe::referenceServiceStatementWithBlanksInBothHalves()
{
    QCOMPARE(
        KRVSQLFatturatoRigheRiferimento(QStringLiteral("WHERE TIPO_RIGA = 'Servizio' AND CODICE = 'SRV1'"), Dal, Al,
                                        TKRVScritturaSQL::Spaziata),
        QStringLiteral(
            "SELECT EXT_TBL.CODICE AS CODICE, (SELECT FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM "
            "FATT_VEND_DETT INT_TBL WHERE INT_TBL.CODICE = EXT_TBL.CODICE ) AS DESCRIZIONE, "
            "EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS IMPORTO, "
            "EXT_TBL.TIPO_RIGA FROM FATT_VEND_DETT EXT_TBL WHERE TIPO_RIGA = 'Servizio' AND CODICE = 'SRV1' "
            "AND IDFATT_VEND IN (SELECT IDFATT_VEND FROM FATT_VEND WHERE DATA >= '2026-01-01' AND DATA <= "
            "'2026-03-31') GROUP BY 1, 2, 3, 5 UNION SELECT EXT_TBL.CODICE AS CODICE, (SELECT FIRST 1 "
            "SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM FATT_ACC_DETT INT_TBL WHERE INT_TBL.CODICE = EXT_TBL.CODICE ) "
            "AS DESCRIZIONE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS IMPORTO, "
            "EXT_TBL.TIPO_RIGA FROM FATT_ACC_DETT EXT_TBL WHERE TIPO_RIGA = 'Servizio' AND CODICE = 'SRV1' AND "
            "IDFATT_ACC IN (SELECT IDFATT_ACC FROM FATT_ACC WHERE DATA >= '2026-01-01' AND DATA <= '2026-03-31') "
            "GROUP BY 1, 2, 3, 5"));
}

// The date filter runs straight into GROUP BY, with no blank between.
void TestStatisticheFatturatoRighe::referenceCustomerStatementWithoutTheWarehouseTable()
{
    QCOMPARE(KRVSQLFatturatoClientiServiziRiferimento(QStringLiteral("WHERE TIPO_RIGA = 'Servizio'"), Dal, Al, false),
             QStringLiteral(
                 "SELECT FATT_VEND.CLI_CODICE, FATT_VEND.CLI_RAGIONESOCIALE, EXT_TBL.CODICE AS CODICE, (SELECT "
                 "FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM FATT_VEND_DETT INT_TBL WHERE INT_TBL.CODICE = "
                 "EXT_TBL.CODICE ) AS DESCRIZIONE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) "
                 "AS IMPORTO, EXT_TBL.TIPO_RIGA FROM FATT_VEND_DETT EXT_TBL LEFT JOIN FATT_VEND ON "
                 "FATT_VEND.IDFATT_VEND = EXT_TBL.IDFATT_VEND WHERE TIPO_RIGA = 'Servizio' AND (FATT_VEND.DATA >= "
                 "'2026-01-01' AND FATT_VEND.DATA <= '2026-03-31')GROUP BY 1, 2, 3, 4, 5, 7 ORDER BY 3, 4"));
}

void TestStatisticheFatturatoRighe::referenceCustomerStatementWithTheWarehouseTable()
{
    QCOMPARE(
        KRVSQLFatturatoClientiServiziRiferimento(QStringLiteral("WHERE TIPO_RIGA = 'Servizio' AND IDCATEGORIA IN (1)"),
                                                 Dal, Al, true),
        QStringLiteral(
            "SELECT FATT_VEND.CLI_CODICE, FATT_VEND.CLI_RAGIONESOCIALE, EXT_TBL.CODICE AS CODICE, (SELECT "
            "FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM FATT_VEND_DETT INT_TBL WHERE INT_TBL.CODICE = "
            "EXT_TBL.CODICE ) AS DESCRIZIONE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) "
            "AS IMPORTO, EXT_TBL.TIPO_RIGA FROM FATT_VEND_DETT EXT_TBL LEFT JOIN FATT_VEND ON "
            "FATT_VEND.IDFATT_VEND = EXT_TBL.IDFATT_VEND WHERE TIPO_RIGA = 'Servizio' AND IDCATEGORIA IN (1) AND "
            "(FATT_VEND.DATA >= '2026-01-01' AND FATT_VEND.DATA <= '2026-03-31')GROUP BY 1, 2, 3, 4, 5, 7 UNION "
            "SELECT FATT_ACC.CLI_CODICE, FATT_ACC.CLI_RAGIONESOCIALE, EXT_TBL.CODICE AS CODICE, (SELECT FIRST 1 "
            "SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM FATT_ACC_DETT INT_TBL WHERE INT_TBL.CODICE = EXT_TBL.CODICE "
            ") AS DESCRIZIONE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS IMPORTO, "
            "EXT_TBL.TIPO_RIGA FROM FATT_ACC_DETT EXT_TBL LEFT JOIN FATT_ACC ON FATT_ACC.IDFATT_ACC = "
            "EXT_TBL.IDFATT_ACC WHERE TIPO_RIGA = 'Servizio' AND IDCATEGORIA IN (1) AND (FATT_ACC.DATA >= "
            "'2026-01-01' AND FATT_ACC.DATA <= '2026-03-31')GROUP BY 1, 2, 3, 4, 5, 7 ORDER BY 3, 4"));
}

// The sales invoices' lines of the period, from their headers, summed per
// code before the description is looked up; the warehouse's through their
// headers' keys.
void TestStatisticheFatturatoRighe::articleStatementSumsThePeriodsLinesFirst()
{
    QCOMPARE(
        KRVSQLFatturatoRighe(QStringLiteral("WHERE TIPO_RIGA='Articolo'"), Dal, Al, TKRVScritturaSQL::Compatta),
        QStringLiteral(
            "SELECT R.CODICE AS CODICE, (SELECT FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM FATT_VEND_DETT "
            "INT_TBL WHERE INT_TBL.CODICE=R.CODICE ) AS DESCRIZIONE, R.IDCATEGORIA AS IDCATEGORIA, R.IMPORTO AS "
            "IMPORTO, R.TIPO_RIGA FROM (SELECT EXT_TBL.CODICE AS CODICE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, "
            "SUM(EXT_TBL.IMPORTO) AS IMPORTO, EXT_TBL.TIPO_RIGA AS TIPO_RIGA FROM FATT_VEND LEFT JOIN FATT_VEND_DETT "
            "EXT_TBL ON EXT_TBL.IDFATT_VEND = FATT_VEND.IDFATT_VEND WHERE TIPO_RIGA='Articolo' AND FATT_VEND.DATA >= "
            "'2026-01-01' AND FATT_VEND.DATA <= '2026-03-31' GROUP BY 1, 2, 4) R UNION SELECT R.CODICE AS CODICE, "
            "(SELECT FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM FATT_ACC_DETT INT_TBL WHERE "
            "INT_TBL.CODICE=R.CODICE ) AS DESCRIZIONE, R.IDCATEGORIA AS IDCATEGORIA, R.IMPORTO AS IMPORTO, "
            "R.TIPO_RIGA FROM (SELECT EXT_TBL.CODICE AS CODICE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, "
            "SUM(EXT_TBL.IMPORTO) AS IMPORTO, EXT_TBL.TIPO_RIGA AS TIPO_RIGA FROM FATT_ACC_DETT EXT_TBL WHERE "
            "TIPO_RIGA='Articolo' AND IDFATT_ACC IN (SELECT IDFATT_ACC FROM FATT_ACC WHERE DATA >= '2026-01-01' AND "
            "DATA <= '2026-03-31') GROUP BY 1, 2, 4) R "));
}

void TestStatisticheFatturatoRighe::customerStatementSumsThePeriodsLinesFirst()
{
    QCOMPARE(KRVSQLFatturatoClientiServizi(QStringLiteral("WHERE TIPO_RIGA = 'Servizio'"), Dal, Al, true),
             QStringLiteral(
                 "SELECT R.CLI_CODICE, R.CLI_RAGIONESOCIALE, R.CODICE AS CODICE, (SELECT FIRST 1 "
                 "SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM FATT_VEND_DETT INT_TBL WHERE INT_TBL.CODICE = R.CODICE ) "
                 "AS DESCRIZIONE, R.IDCATEGORIA AS IDCATEGORIA, R.IMPORTO AS IMPORTO, R.TIPO_RIGA FROM (SELECT "
                 "FATT_VEND.CLI_CODICE AS CLI_CODICE, FATT_VEND.CLI_RAGIONESOCIALE AS CLI_RAGIONESOCIALE, "
                 "EXT_TBL.CODICE AS CODICE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS IMPORTO, "
                 "EXT_TBL.TIPO_RIGA AS TIPO_RIGA FROM FATT_VEND LEFT JOIN FATT_VEND_DETT EXT_TBL ON "
                 "EXT_TBL.IDFATT_VEND = FATT_VEND.IDFATT_VEND WHERE TIPO_RIGA = 'Servizio' AND (FATT_VEND.DATA >= "
                 "'2026-01-01' AND FATT_VEND.DATA <= '2026-03-31') GROUP BY 1, 2, 3, 4, 6) R UNION SELECT "
                 "R.CLI_CODICE, R.CLI_RAGIONESOCIALE, R.CODICE AS CODICE, (SELECT FIRST 1 SUBSTRING(DESCRIZIONE FROM "
                 "1 FOR 100) FROM FATT_ACC_DETT INT_TBL WHERE INT_TBL.CODICE = R.CODICE ) AS DESCRIZIONE, "
                 "R.IDCATEGORIA AS IDCATEGORIA, R.IMPORTO AS IMPORTO, R.TIPO_RIGA FROM (SELECT FATT_ACC.CLI_CODICE AS "
                 "CLI_CODICE, FATT_ACC.CLI_RAGIONESOCIALE AS CLI_RAGIONESOCIALE, EXT_TBL.CODICE AS CODICE, "
                 "EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS IMPORTO, EXT_TBL.TIPO_RIGA AS TIPO_RIGA "
                 "FROM FATT_ACC_DETT EXT_TBL LEFT JOIN FATT_ACC ON FATT_ACC.IDFATT_ACC = EXT_TBL.IDFATT_ACC WHERE "
                 "TIPO_RIGA = 'Servizio' AND (FATT_ACC.DATA >= '2026-01-01' AND FATT_ACC.DATA <= '2026-03-31') GROUP "
                 "BY 1, 2, 3, 4, 6) R ORDER BY 3, 4"));
}

void TestStatisticheFatturatoRighe::titleWithBothDays()
{
    QCOMPARE(KRVTitoloStatistica(QStringLiteral("Fatturato per articolo dal "), QDate(2026, 1, 1), QDate(2026, 12, 9)),
             QStringLiteral("Fatturato per articolo dal 01/01/2026 al 09/12/2026"));
}

// Firebird runs the statements as composed: each invoice kind's lines
// through its alias, under the column names the layouts print.
void TestStatisticheFatturatoRighe::statementsRunWithTheColumnsTheLayoutsRead()
{
    TKRVMain *main = Main();
    const TQ3TestDatabase &db = m_module->Database;
    db.LoadFixture(QStringLiteral("magazzino.sql"));
    db.Exec(
        QStringLiteral("INSERT INTO FATT_VEND_DETT (IDFATT_VEND, TIPO_RIGA, CODICE, DESCRIZIONE, IDCATEGORIA, IMPORTO) "
                       "VALUES (%1, 'Articolo', 'ART1', 'Valvola', 1, 12.5)")
            .arg(InsertFattVend(db, 1, Dal)));
    db.Exec(
        QStringLiteral("INSERT INTO FATT_ACC_DETT (IDFATT_ACC, TIPO_RIGA, CODICE, DESCRIZIONE, IDCATEGORIA, IMPORTO) "
                       "VALUES (%1, 'Articolo', 'ART2', 'Raccordo', 1, 3)")
            .arg(InsertFattAcc(db, 1, Al)));

    const QString articoli = QStringLiteral("adsFatturatoPerArticolo");
    QCOMPARE(Letto(articoli,
                   KRVSQLFatturatoRighe(KRVWhereRighe(Filtro(QStringLiteral("Articolo")), TKRVScritturaSQL::Compatta),
                                        Dal, Al, TKRVScritturaSQL::Compatta)),
             (QStringList{"ART1|Valvola|1|12.5|Articolo", "ART2|Raccordo|1|3|Articolo"}));
    QCOMPARE(main->StampeDataset(articoli)->FieldNames(),
             (QStringList{"CODICE", "DESCRIZIONE", "IDCATEGORIA", "IMPORTO", "TIPO_RIGA"}));

    const QString servizi = QStringLiteral("adsFatturatoPerServizio");
    QVERIFY(Letto(servizi,
                  KRVSQLFatturatoRighe(KRVWhereRighe(Filtro(QStringLiteral("Servizio")), TKRVScritturaSQL::Spaziata),
                                       Dal, Al, TKRVScritturaSQL::Spaziata))
                .isEmpty());
    QCOMPARE(main->StampeDataset(servizi)->FieldNames(),
             (QStringList{"CODICE", "DESCRIZIONE", "IDCATEGORIA", "IMPORTO", "TIPO_RIGA"}));

    const QString clienti = QStringLiteral("adsFatturatoClientiServizi");
    const QString where = KRVWhereRighe(Filtro(QStringLiteral("Articolo")), TKRVScritturaSQL::Spaziata);
    QCOMPARE(Letto(clienti, KRVSQLFatturatoClientiServizi(where, Dal, Al, true)),
             (QStringList{"C001|Cliente di prova|ART1|Valvola|1|12.5|Articolo", "||ART2|Raccordo|1|3|Articolo"}));
    QCOMPARE(Letto(clienti, KRVSQLFatturatoClientiServizi(where, Dal, Al, false)),
             (QStringList{"C001|Cliente di prova|ART1|Valvola|1|12.5|Articolo"}));
    QCOMPARE(main->StampeDataset(clienti)->FieldNames(),
             (QStringList{"CLI_CODICE", "CLI_RAGIONESOCIALE", "CODICE", "DESCRIZIONE", "IDCATEGORIA", "IMPORTO",
                          "TIPO_RIGA"}));
}

// A statement that reads no row leaves the title and the report alone.
void TestStatisticheFatturatoRighe::emptyResultPrintsNothing()
{
    TKRVMain *main = Main();
    TQ3ReportProject *progetto = main->rProject();
    progetto->SetParam(QStringLiteral("Param1"), QStringLiteral("prima"));
    QVERIFY(!KRVStampaStatistica(QStringLiteral("adsFatturatoPerServizio"),
                                 QStringLiteral("SELECT CODICE FROM FATT_VEND_DETT WHERE 1 = 0"),
                                 QStringLiteral("FatturatoPerServizio"), QStringLiteral("dopo")));
    QCOMPARE(progetto->GetParam(QStringLiteral("Param1")), QStringLiteral("prima"));
    QVERIFY(main->StampeDataset(QStringLiteral("adsFatturatoPerServizio"))->Active());
}

QTEST_MAIN(TestStatisticheFatturatoRighe)
#include "tst_statistichefatturatorighe.moc"
