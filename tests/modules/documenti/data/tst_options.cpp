#include "KRVNatureIva.h"
#include "KRVOptions.h"
#include "KRVTestCore.h"
#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QtTest>

#include <memory>

class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void failuresWithoutSessionAnswerFalse();
    void getExistingOption();
    void getOptionWithNullValue();
    void getMissingOptionLeavesValueUntouched();
    void setExistingOption();
    void setNumberValue();
    void setMissingOptionChangesNothing();
    void missingTableAnswersFalse();
    void strToBoolWords();
    void strToBoolNumbers();
    void strToBoolRejectsOtherTexts();
    void naturaNonImponibileDefaultsToExcluded();
    void naturaNonImponibileReadsTheOption();
    void naturaNonImponibileIgnoresValuesThatAreNoNature();

private:
    TKRVTestCore &Module();
    void StoreNatura(const QString &value);
    std::unique_ptr<TKRVTestCore> m_module;
};

TKRVTestCore &TestOptions::Module()
{
    if (!m_module)
        m_module = std::make_unique<TKRVTestCore>();
    return *m_module;
}

void TestOptions::failuresWithoutSessionAnswerFalse()
{
    QVariant value(QStringLiteral("invariato"));
    QVERIFY(!GetOptionValue(QSqlDatabase(), QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), value));
    QCOMPARE(value, QVariant(QStringLiteral("invariato")));
    QVERIFY(!SetOptionValue(QSqlDatabase(), QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), QStringLiteral("True")));
}

void TestOptions::getExistingOption()
{
    Module().Database.Exec(
        QStringLiteral("UPDATE OPZIONI SET VALORE = 'False' WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'"));
    QVariant value;
    QVERIFY(GetOptionValue(Module().Db(), QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), value));
    QCOMPARE(value.toString(), QStringLiteral("False"));
}

void TestOptions::getOptionWithNullValue()
{
    Module().Database.Exec(QStringLiteral("INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES ('OPZIONE_VUOTA', NULL)"));
    QVariant value(7);
    QVERIFY(GetOptionValue(Module().Db(), QStringLiteral("OPZIONE_VUOTA"), value));
    QVERIFY(value.isNull());
}

void TestOptions::getMissingOptionLeavesValueUntouched()
{
    QVariant value(42);
    QVERIFY(!GetOptionValue(Module().Db(), QStringLiteral("OPZIONE_INESISTENTE"), value));
    QCOMPARE(value, QVariant(42));
    // The name is compared whole and exactly.
    QVERIFY(!GetOptionValue(Module().Db(), QStringLiteral("numerazione_unica_fatture"), value));
    QCOMPARE(value, QVariant(42));
}

void TestOptions::setExistingOption()
{
    QVERIFY(SetOptionValue(Module().Db(), QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), QStringLiteral("True")));
    QCOMPARE(Module().Database.Rows(
                 QStringLiteral("SELECT VALORE FROM OPZIONI WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'")),
             QStringList{QStringLiteral("True")});
    QVariant value;
    QVERIFY(GetOptionValue(Module().Db(), QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), value));
    QCOMPARE(value.toString(), QStringLiteral("True"));
}

void TestOptions::setNumberValue()
{
    Module().Database.Exec(QStringLiteral("INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES ('OPZIONE_NUMERO', '0')"));
    QVERIFY(SetOptionValue(Module().Db(), QStringLiteral("OPZIONE_NUMERO"), 15));
    QCOMPARE(Module().Database.Rows(QStringLiteral("SELECT VALORE FROM OPZIONI WHERE OPZIONE = 'OPZIONE_NUMERO'")),
             QStringList{QStringLiteral("15")});
}

void TestOptions::setMissingOptionChangesNothing()
{
    const QString everything = QStringLiteral("SELECT OPZIONE, VALORE FROM OPZIONI ORDER BY OPZIONE");
    const QStringList before = Module().Database.Rows(everything);
    QVERIFY(!SetOptionValue(Module().Db(), QStringLiteral("OPZIONE_INESISTENTE"), QStringLiteral("True")));
    QCOMPARE(Module().Database.Rows(everything), before);
    QCOMPARE(Module()
                 .Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM OPZIONI WHERE OPZIONE = 'OPZIONE_INESISTENTE'"))
                 .toInt(),
             0);
}

void TestOptions::missingTableAnswersFalse()
{
    // On a database of its own: one module main object lives at a time.
    m_module.reset();
    Module().Database.Exec(QStringLiteral("DROP TABLE OPZIONI"));
    QVariant value(1);
    QVERIFY(!GetOptionValue(Module().Db(), QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), value));
    QCOMPARE(value, QVariant(1));
    QVERIFY(!SetOptionValue(Module().Db(), QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), QStringLiteral("True")));
}

void TestOptions::strToBoolWords()
{
    QVERIFY(KRVStrToBool(QStringLiteral("True")));
    QVERIFY(!KRVStrToBool(QStringLiteral("False")));
    QVERIFY(KRVStrToBool(QStringLiteral("true")));
    QVERIFY(!KRVStrToBool(QStringLiteral("FALSE")));
}

void TestOptions::strToBoolNumbers()
{
    QVERIFY(!KRVStrToBool(QStringLiteral("0")));
    QVERIFY(KRVStrToBool(QStringLiteral("1")));
    QVERIFY(KRVStrToBool(QStringLiteral("-1")));
    QVERIFY(KRVStrToBool(QStringLiteral("2.5")));
}

void TestOptions::strToBoolRejectsOtherTexts()
{
    for (const QString &text : {QString(), QStringLiteral("Sì"), QStringLiteral("forse")}) {
        try {
            KRVStrToBool(text);
            QFAIL("no failure raised");
        } catch (const EQ3Exception &e) {
            QCOMPARE(e.Message(), QLatin1Char('\'') + text + QStringLiteral("' non è un valore booleano valido"));
        }
    }
}

void TestOptions::StoreNatura(const QString &value)
{
    Module().Database.Exec(QStringLiteral("UPDATE OR INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES "
                                          "('FATTURAPA_NATURA_NON_IMPONIBILE', %1) MATCHING (OPZIONE)")
                               .arg(value.isNull() ? QStringLiteral("NULL") : QuotedStr(value)));
}

// Expenses advanced in the customer's name are excluded from the VAT base:
// that is what a "Non imponibile" line carries until the firm says otherwise.
void TestOptions::naturaNonImponibileDefaultsToExcluded()
{
    // On a database of its own, with its option store.
    m_module.reset();
    QCOMPARE(Module()
                 .Database
                 .Scalar(
                     QStringLiteral("SELECT COUNT(*) FROM OPZIONI WHERE OPZIONE = 'FATTURAPA_NATURA_NON_IMPONIBILE'"))
                 .toInt(),
             0);
    QCOMPARE(KRVNaturaNonImponibile(Module().Db()), QStringLiteral("N1"));
    QCOMPARE(KRVNaturaNonImponibile(QSqlDatabase()), QStringLiteral("N1"));
}

void TestOptions::naturaNonImponibileReadsTheOption()
{
    // On a database of its own, with its option store.
    m_module.reset();
    for (const TKRVNaturaIva &natura : KRVNatureIva()) {
        StoreNatura(natura.Codice);
        QCOMPARE(KRVNaturaNonImponibile(Module().Db()), natura.Codice);
    }
    StoreNatura(QStringLiteral(" N3.5 "));
    QCOMPARE(KRVNaturaNonImponibile(Module().Db()), QStringLiteral("N3.5"));
}

// A value no invoice may carry (a generic code refused since 2021, a typing
// error, nothing) does not reach the electronic invoice: the default does.
void TestOptions::naturaNonImponibileIgnoresValuesThatAreNoNature()
{
    // On a database of its own, with its option store.
    m_module.reset();
    for (const QString &value : {QStringLiteral("N2"), QStringLiteral("n4"), QStringLiteral("N8"), QString(""),
                                 QStringLiteral("' OR 1=1 --"), QString()}) {
        StoreNatura(value);
        QCOMPARE(KRVNaturaNonImponibile(Module().Db()), QStringLiteral("N1"));
    }
}

QTEST_GUILESS_MAIN(TestOptions)
#include "tst_options.moc"
