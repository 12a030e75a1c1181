#include "Q3Controlli.h"

#include <QtTest>

class TestQ3Controlli : public QObject
{
    Q_OBJECT

private slots:
    void partitaIva_data();
    void partitaIva();
    void codiceFiscale_data();
    void codiceFiscale();
    void iban_data();
    void iban();
    void cap_data();
    void cap();
    void provincia_data();
    void provincia();
    void nazioneItaliana();
    void codiciFiscali_blankFieldsAndForeignersNotChecked();
};

void TestQ3Controlli::partitaIva_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("valid") << "12345678903" << true;
    QTest::newRow("valid with doubled digits over nine") << "01234567897" << true;
    QTest::newRow("check digit zero") << "00112233440" << true;
    // The number of the official examples: its check digit is wrong.
    QTest::newRow("examples' number") << "01234567890" << false;
    QTest::newRow("one digit changed") << "12345678913" << false;
    QTest::newRow("two digits swapped") << "21345678903" << false;
    QTest::newRow("ten digits") << "1234567890" << false;
    QTest::newRow("twelve digits") << "123456789030" << false;
    QTest::newRow("country prefix") << "IT12345678903" << false;
    QTest::newRow("inner blank") << "12345 678903" << false;
    QTest::newRow("trailing blank") << "12345678903 " << false;
    QTest::newRow("letter") << "1234567890A" << false;
    QTest::newRow("arabic-indic digits") << QString::fromUtf8("١٢٣٤٥٦٧٨٩٠٣") << false;
    QTest::newRow("empty") << "" << false;
}

void TestQ3Controlli::partitaIva()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QCOMPARE(Q3PartitaIvaValida(text), valid);
}

void TestQ3Controlli::codiceFiscale_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("person") << "RSSMRA80A01H501U" << true;
    QTest::newRow("lower case") << "rssmra80a01h501u" << true;
    QTest::newRow("mixed case") << "RssMra80A01h501U" << true;
    QTest::newRow("omocodia, last digit") << "RSSMRA80A01H50MM" << true;
    QTest::newRow("omocodia, two digits") << "RSSMRA80A01H5LMX" << true;
    QTest::newRow("omocodia with the unaltered check letter") << "RSSMRA80A01H50MU" << false;
    QTest::newRow("company: a partita IVA") << "12345678903" << true;
    QTest::newRow("company with a wrong check digit") << "01234567890" << false;
    QTest::newRow("wrong check letter") << "RSSMRA80A01H501A" << false;
    QTest::newRow("check place holds a digit") << "RSSMRA80A01H5011" << false;
    QTest::newRow("letter not among the replacing ones") << "RSSMRA80A01H50AU" << false;
    QTest::newRow("digit in the surname") << "R5SMRA80A01H501U" << false;
    QTest::newRow("month letter unknown") << "RSSMRA80F01H501U" << false;
    QTest::newRow("fifteen characters") << "RSSMRA80A01H501" << false;
    QTest::newRow("seventeen characters") << "RSSMRA80A01H501UX" << false;
    QTest::newRow("blanks around") << " RSSMRA80A01H501U" << false;
    QTest::newRow("inner blank") << "RSSMRA80 01H501U" << false;
    QTest::newRow("accented letter") << QString::fromUtf8("RSSMRÀ80A01H501U") << false;
    QTest::newRow("empty") << "" << false;
}

void TestQ3Controlli::codiceFiscale()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QCOMPARE(Q3CodiceFiscaleValido(text), valid);
}

void TestQ3Controlli::iban_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("italian") << "IT60X0542811101000000123456" << true;
    QTest::newRow("italian, groups of four") << "IT60 X054 2811 1010 0000 0123 456" << true;
    QTest::newRow("italian, lower case") << "it60x0542811101000000123456" << true;
    QTest::newRow("german") << "DE89370400440532013000" << true;
    QTest::newRow("british") << "GB82 WEST 1234 5698 7654 32" << true;
    QTest::newRow("one digit changed") << "IT60X0542811101000000123457" << false;
    QTest::newRow("check digits changed") << "IT61X0542811101000000123456" << false;
    QTest::newRow("country not letters") << "1160X0542811101000000123456" << false;
    QTest::newRow("check digits not digits") << "ITX0X0542811101000000123456" << false;
    QTest::newRow("punctuation") << "IT60-X054-2811-1010-0000-0123-456" << false;
    QTest::newRow("too short") << "IT60X05428" << false;
    QTest::newRow("too long") << "IT60X0542811101000000123456000000000" << false;
    QTest::newRow("blanks only") << "    " << false;
    QTest::newRow("empty") << "" << false;
}

void TestQ3Controlli::iban()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QCOMPARE(Q3IbanValido(text), valid);
}

void TestQ3Controlli::cap_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("bologna") << "40121" << true;
    QTest::newRow("leading zero") << "00184" << true;
    QTest::newRow("four digits") << "4012" << false;
    QTest::newRow("six digits") << "401210" << false;
    QTest::newRow("letter") << "4012A" << false;
    QTest::newRow("blank") << "4012 " << false;
    QTest::newRow("empty") << "" << false;
}

void TestQ3Controlli::cap()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QCOMPARE(Q3CapValido(text), valid);
}

void TestQ3Controlli::provincia_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("upper case") << "BO" << true;
    QTest::newRow("lower case") << "bo" << true;
    QTest::newRow("one letter") << "B" << false;
    QTest::newRow("three letters") << "BOL" << false;
    QTest::newRow("digit") << "B1" << false;
    QTest::newRow("blank") << "B " << false;
    QTest::newRow("non-latin letters") << QString::fromUtf8("ΒΟ") << false;
    QTest::newRow("empty") << "" << false;
}

void TestQ3Controlli::provincia()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QCOMPARE(Q3ProvinciaValida(text), valid);
}

void TestQ3Controlli::nazioneItaliana()
{
    for (const char *italy : {"", "  ", "IT", "it", "Italia", "ITALIA", " Italia "})
        QVERIFY2(Q3NazioneItaliana(QString::fromLatin1(italy)), italy);
    for (const char *other : {"DE", "Germania", "Italia del Nord", "I"})
        QVERIFY2(!Q3NazioneItaliana(QString::fromLatin1(other)), other);
}

void TestQ3Controlli::codiciFiscali_blankFieldsAndForeignersNotChecked()
{
    const QString piva = QString::fromUtf8("La partita IVA non è valida: controllare le 11 cifre.");
    const QString cf = QStringLiteral("Il codice fiscale non è valido.");
    QCOMPARE(Q3ProblemiCodiciFiscali(QStringLiteral("01234567890"), QStringLiteral("RSSMRA80A01H501A"), QString()),
             (QStringList{piva, cf}));
    QCOMPARE(Q3ProblemiCodiciFiscali(QStringLiteral("01234567890"), QString(), QStringLiteral("Italia")),
             QStringList{piva});
    QCOMPARE(Q3ProblemiCodiciFiscali(QString(), QStringLiteral("X"), QStringLiteral("IT")), QStringList{cf});
    QVERIFY(Q3ProblemiCodiciFiscali(QStringLiteral("12345678903"), QStringLiteral("RSSMRA80A01H501U"), QString())
                .isEmpty());
    QVERIFY(Q3ProblemiCodiciFiscali(QString(), QString(), QString()).isEmpty());
    QVERIFY(Q3ProblemiCodiciFiscali(QStringLiteral("   "), QStringLiteral(" "), QString()).isEmpty());
    QVERIFY(Q3ProblemiCodiciFiscali(QStringLiteral("DE123456789"), QStringLiteral("X"), QStringLiteral("Germania"))
                .isEmpty());
}

QTEST_GUILESS_MAIN(TestQ3Controlli)
#include "tst_q3controlli.moc"
