// The clauses of the search lists and selection dialogs, composed by the
// module's core as the lists send them, every typed text one quoted literal.
#include "KRVClausole.h"

#include <QTest>

class TestClausole : public QObject
{
    Q_OBJECT

private slots:
    void conditionsJoinUnderOneWhere();
    void filterQuotesTheTextTyped();
    void customerLettersInTheTwoSpellings();
    void telephoneInAnyOfTheFourNumbers();
    void categoriesAsTheListAndTheDialogWriteThem();
    void yearThenTheFilters();
};

void TestClausole::conditionsJoinUnderOneWhere()
{
    QString where;
    KRVAggiungiCondizione(where, QStringLiteral("A = 1"));
    QCOMPARE(where, QStringLiteral("WHERE A = 1"));
    KRVAggiungiCondizione(where, QStringLiteral("B = 2"));
    QCOMPARE(where, QStringLiteral("WHERE A = 1 AND B = 2"));
}

void TestClausole::filterQuotesTheTextTyped()
{
    QCOMPARE(KRVCondizioneFiltro(QStringLiteral("UM CONTAINING "), QStringLiteral("d'o"), false),
             QStringLiteral("UM CONTAINING 'd''o'"));
    QCOMPARE(KRVCondizioneFiltro(QStringLiteral("UPPER(CODICE) LIKE "), QStringLiteral("straße"), true),
             QStringLiteral("UPPER(CODICE) LIKE 'STRAßE'"));
    QCOMPARE(KRVCondizioneFiltro(QStringLiteral("(X IN (SELECT Y FROM Z WHERE W CONTAINING "),
                                 QStringLiteral("x' OR '1'='1"), false, QStringLiteral("))")),
             QStringLiteral("(X IN (SELECT Y FROM Z WHERE W CONTAINING 'x'' OR ''1''=''1'))"));
}

void TestClausole::customerLettersInTheTwoSpellings()
{
    QCOMPARE(KRVClausolaLetteraRicercaClienti(QStringLiteral("b")),
             QStringLiteral("WHERE UPPER(RAGIONESOCIALE)LIKE  'B%'"));
    QCOMPARE(KRVClausolaLetteraSelezioneCliente(QStringLiteral("b")),
             QStringLiteral("WHERE UPPER(RAGIONESOCIALE) LIKE 'B%'"));
    QVERIFY(KRVClausolaLetteraRicercaClienti(QStringLiteral("*")).isEmpty());
    QVERIFY(KRVClausolaLetteraSelezioneCliente(QStringLiteral("*")).isEmpty());
    QCOMPARE(KRVClausolaClientiIniziale, QStringLiteral("WHERE UPPER(RAGIONESOCIALE) LIKE 'A%'"));
}

void TestClausole::telephoneInAnyOfTheFourNumbers()
{
    QCOMPARE(KRVCondizioneTelefono(QStringLiteral("05'1")),
             QStringLiteral(
                 "(TELEFONO1 CONTAINING '05''1' OR TELEFONO2 CONTAINING '05''1' OR TELEFONO3 CONTAINING '05''1' "
                 "OR FAX CONTAINING '05''1')"));
}

void TestClausole::categoriesAsTheListAndTheDialogWriteThem()
{
    QCOMPARE(KRVCondizioneCategorie(QStringLiteral("ANA_MAGA.IDCATEGORIA_ANA_MAGA"), QStringLiteral("1,4")),
             QStringLiteral("ANA_MAGA.IDCATEGORIA_ANA_MAGA IN (1,4)"));
    QCOMPARE(KRVCondizioneCategorieSelezione(QStringLiteral("SERVIZI.IDCATEGORIA_SERVIZI"), QStringLiteral("1, 4")),
             QStringLiteral(" SERVIZI.IDCATEGORIA_SERVIZI IN (1, 4)"));
}

void TestClausole::yearThenTheFilters()
{
    QCOMPARE(KRVClausolaAnno(QStringLiteral("WHERE ANNO="), 2024, QString()), QStringLiteral("WHERE ANNO=2024"));
    QCOMPARE(KRVClausolaAnno(QStringLiteral("WHERE ANNO = "), 2023, QStringLiteral("WHERE CLI_CODICE CONTAINING 'C'")),
             QStringLiteral("WHERE ANNO = 2023 AND CLI_CODICE CONTAINING 'C'"));
}

QTEST_GUILESS_MAIN(TestClausole)
#include "tst_clausole.moc"
