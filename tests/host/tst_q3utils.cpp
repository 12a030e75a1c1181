#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3Utils.h"

#include <QLocale>
#include <QtTest>

class TestQ3Utils : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void lastGeneratorValueDoesNotAdvance();
    void lastGeneratorValueOfUnknownGeneratorRaises();
    void customCodicePadsToLength();
    void customCodiceKeepsLongNumberWhole();
    void dateTextIsAFirebirdDateLiteral();
    void boolToStrIta();
    void customBooleanFromFlags();
    void elencoIdFiglioListsParentsBeforeChildren();
    void elencoIdFiglioOfLeafIsTheKeyAlone();
    void elencoIdFiglioOrdersChildrenByKey();
    void elencoIdFiglioStopsOnALoopOfParents();
    void currencyAndNumbersInItalianLocale();
    void everyLineBreakBecomesOne();

private:
    std::unique_ptr<TQ3TestDatabase> m_database;
};

void TestQ3Utils::initTestCase()
{
    // As the host does at start when the system names no locale.
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    m_database = std::make_unique<TQ3TestDatabase>();
}

void TestQ3Utils::lastGeneratorValueDoesNotAdvance()
{
    m_database->Exec(QStringLiteral("CREATE GENERATOR GN_PROVA"));
    QCOMPARE(GetLastGeneratorValue(QStringLiteral("GN_PROVA"), m_database->Db()), 0);
    m_database->Exec(QStringLiteral("SET GENERATOR GN_PROVA TO 41"));
    QCOMPARE(GetLastGeneratorValue(QStringLiteral("GN_PROVA"), m_database->Db()), 41);
    QCOMPARE(GetLastGeneratorValue(QStringLiteral("GN_PROVA"), m_database->Db()), 41);
    QCOMPARE(m_database->Scalar(QStringLiteral("SELECT GEN_ID(GN_PROVA, 1) FROM RDB$DATABASE")).toInt(), 42);
}

void TestQ3Utils::lastGeneratorValueOfUnknownGeneratorRaises()
{
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, GetLastGeneratorValue(QStringLiteral("GN_NESSUNO"), m_database->Db()));
}

void TestQ3Utils::customCodicePadsToLength()
{
    QCOMPARE(GetCustomCodice(7, QStringLiteral("ART"), QString(), 10), QStringLiteral("ART0000007"));
    QCOMPARE(GetCustomCodice(123, QStringLiteral("C"), QStringLiteral("/X"), 8), QStringLiteral("C00123/X"));
    QCOMPARE(GetCustomCodice(5, QString(), QString(), 3), QStringLiteral("005"));
}

void TestQ3Utils::customCodiceKeepsLongNumberWhole()
{
    QCOMPARE(GetCustomCodice(1234567, QStringLiteral("ART"), QString(), 6), QStringLiteral("ART1234567"));
}

void TestQ3Utils::dateTextIsAFirebirdDateLiteral()
{
    const QDate date(2024, 3, 9);
    const QString text = DateToString_YYYYMMDD(date);
    QCOMPARE(text, QStringLiteral("2024-03-09"));
    QCOMPARE(m_database
                 ->Scalar(QStringLiteral("SELECT CAST(") + QuotedStr(text)
                          + QStringLiteral(" AS DATE) FROM RDB$DATABASE"))
                 .toDate(),
             date);
}

void TestQ3Utils::boolToStrIta()
{
    QCOMPARE(BoolToStrIta(true), QStringLiteral("Sì"));
    QCOMPARE(BoolToStrIta(false), QStringLiteral("No"));
}

void TestQ3Utils::customBooleanFromFlags()
{
    QCOMPARE(StrToCustomBoolean(QStringLiteral("True")), TCustomBoolean::cbTrue);
    QCOMPARE(StrToCustomBoolean(QStringLiteral("False")), TCustomBoolean::cbFalse);
    QCOMPARE(StrToCustomBoolean(QVariant()), TCustomBoolean::cbNull);
    QCOMPARE(StrToCustomBoolean(QStringLiteral("forse")), TCustomBoolean::cbNull);

    m_database->Exec(QStringLiteral("CREATE TABLE FLAGS (ID INTEGER NOT NULL, PAGATO VARCHAR(5))"));
    m_database->Exec(QStringLiteral("INSERT INTO FLAGS VALUES (1, 'True')"));
    m_database->Exec(QStringLiteral("INSERT INTO FLAGS VALUES (2, 'False')"));
    m_database->Exec(QStringLiteral("INSERT INTO FLAGS VALUES (3, NULL)"));
    QSqlQuery flags = OpenQuery(m_database->Db(), QStringLiteral("SELECT PAGATO FROM FLAGS ORDER BY ID"));
    QList<TCustomBoolean> states;
    while (flags.next())
        states << StrToCustomBoolean(flags.value(0));
    QCOMPARE(states, (QList<TCustomBoolean>{TCustomBoolean::cbTrue, TCustomBoolean::cbFalse, TCustomBoolean::cbNull}));
}

void TestQ3Utils::elencoIdFiglioListsParentsBeforeChildren()
{
    // 1 ── 2 ── 4
    //  │    └── 5 ── 7
    //  └─ 3
    // 6 (another root)
    m_database->Exec(QStringLiteral("CREATE TABLE ALBERO (IDNODO INTEGER NOT NULL, IDPADRE INTEGER)"));
    for (const QString &row :
         {QStringLiteral("1, NULL"), QStringLiteral("2, 1"), QStringLiteral("3, 1"), QStringLiteral("4, 2"),
          QStringLiteral("5, 2"), QStringLiteral("6, NULL"), QStringLiteral("7, 5")})
        m_database->Exec(QStringLiteral("INSERT INTO ALBERO VALUES (") + row + QStringLiteral(")"));

    QCOMPARE(GetElencoIdFiglio(QStringLiteral("IDNODO"), 1, QStringLiteral("ALBERO"), m_database->Db()),
             (QList<int>{1, 2, 4, 5, 7, 3}));
    QCOMPARE(GetElencoIdFiglio(QStringLiteral("IDNODO"), 2, QStringLiteral("ALBERO"), m_database->Db()),
             (QList<int>{2, 4, 5, 7}));
}

void TestQ3Utils::elencoIdFiglioOfLeafIsTheKeyAlone()
{
    QCOMPARE(GetElencoIdFiglio(QStringLiteral("IDNODO"), 6, QStringLiteral("ALBERO"), m_database->Db()),
             (QList<int>{6}));
    QCOMPARE(GetElencoIdFiglio(QStringLiteral("IDNODO"), 99, QStringLiteral("ALBERO"), m_database->Db()),
             (QList<int>{99}));
}

void TestQ3Utils::elencoIdFiglioOrdersChildrenByKey()
{
    // Children written in another order than their keys': 6 ── 12, 10 ── 13, 11.
    for (const QString &row :
         {QStringLiteral("12, 6"), QStringLiteral("10, 6"), QStringLiteral("13, 10"), QStringLiteral("11, 6")})
        m_database->Exec(QStringLiteral("INSERT INTO ALBERO VALUES (") + row + QStringLiteral(")"));
    QCOMPARE(GetElencoIdFiglio(QStringLiteral("IDNODO"), 6, QStringLiteral("ALBERO"), m_database->Db()),
             (QList<int>{6, 10, 13, 11, 12}));
}

void TestQ3Utils::elencoIdFiglioStopsOnALoopOfParents()
{
    // A damaged tree: 20 and 21 are each other's parent.
    m_database->Exec(QStringLiteral("INSERT INTO ALBERO VALUES (20, 21)"));
    m_database->Exec(QStringLiteral("INSERT INTO ALBERO VALUES (21, 20)"));
    QCOMPARE(GetElencoIdFiglio(QStringLiteral("IDNODO"), 20, QStringLiteral("ALBERO"), m_database->Db()),
             (QList<int>{20, 21}));
}

void TestQ3Utils::currencyAndNumbersInItalianLocale()
{
    QCOMPARE(GetCurrencyPrefix(), QStringLiteral("€"));
    // The locale puts a no-break space between the amount and the symbol.
    QCOMPARE(FormatCurrency(1234.5), QStringLiteral("1.234,50\u00A0€"));
    QCOMPARE(FormatCurrency(0), QStringLiteral("0,00\u00A0€"));
    QCOMPARE(FormatCurrency(-2), QStringLiteral("-2,00\u00A0€"));
    QCOMPARE(FormatNumber(1234.567, 2), QStringLiteral("1.234,57"));
    QCOMPARE(FormatNumber(3, 1), QStringLiteral("3,0"));
}

void TestQ3Utils::everyLineBreakBecomesOne()
{
    QCOMPARE(NormalizeLineBreaks(QStringLiteral("a\n\rb\r\nc\rd\ne")), QStringLiteral("a\nb\nc\nd\ne"));
    // Two separators in a row are one blank line, not three.
    QCOMPARE(NormalizeLineBreaks(QStringLiteral("a\n\r\n\rb")), QStringLiteral("a\n\nb"));
    QCOMPARE(NormalizeLineBreaks(QStringLiteral("senza righe")), QStringLiteral("senza righe"));
}

QTEST_GUILESS_MAIN(TestQ3Utils)
#include "tst_q3utils.moc"
