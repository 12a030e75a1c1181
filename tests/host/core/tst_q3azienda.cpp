#include "Q3Azienda.h"
#include "Q3Exception.h"
#include "Q3TestDatabase.h"

#include <QtTest>

class TestQ3Azienda : public QObject
{
    Q_OBJECT

private slots:
    void newDatabase_readsEmptyFirmWithDefaults();
    void writeThenRead_everyColumnAndTheLogo();
    void hostileTexts_storedAsTheyAre();
    void removedLogo_storedAsNull();
    void failedWrite_storesNothing();
    void problems_eachFieldNamed();
    void problems_emptyFieldsAllowed();
    void problems_foreignFirm_italianFormsNotAsked();
};

namespace {

TQ3Azienda Completa()
{
    TQ3Azienda azienda;
    int i = 0;
    for (const TQ3ColonnaAzienda &colonna : Q3ColonneAzienda())
        azienda.*colonna.Campo = QStringLiteral("v%1").arg(i++).left(colonna.Lunghezza);
    azienda.Logo = QByteArray("\x89PNG\r\n\x1a\n\0\xff", 10);
    return azienda;
}

// A firm of that country with these identifiers, codes and address parts.
TQ3Azienda Codici(const QString &nazione, const QString &partitaIva, const QString &codiceFiscale, const QString &iban,
                  const QString &cap, const QString &provincia, const QString &reaUfficio = {})
{
    TQ3Azienda azienda;
    azienda.CodiceNazione = nazione;
    azienda.PartitaIva = partitaIva;
    azienda.CodiceFiscale = codiceFiscale;
    azienda.Iban = iban;
    azienda.Cap = cap;
    azienda.Provincia = provincia;
    azienda.ReaUfficio = reaUfficio;
    return azienda;
}

} // namespace

void TestQ3Azienda::newDatabase_readsEmptyFirmWithDefaults()
{
    TQ3TestDatabase db;
    const TQ3Azienda azienda = Q3LeggiAzienda(db.Db());
    QCOMPARE(azienda, TQ3Azienda());
    QCOMPARE(azienda.RegimeFiscale, QStringLiteral("RF01"));
    QVERIFY(azienda.RagioneSociale.isEmpty());
    QVERIFY(azienda.Logo.isEmpty());
}

void TestQ3Azienda::writeThenRead_everyColumnAndTheLogo()
{
    TQ3TestDatabase db;
    const TQ3Azienda azienda = Completa();
    Q3ScriviAzienda(db.Db(), azienda);
    QCOMPARE(Q3LeggiAzienda(db.Db()), azienda);
    // Stored in the row of the firm, column by column.
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM AZIENDA")).toInt(), 1);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT RAGIONESOCIALE FROM AZIENDA")).toString(), QStringLiteral("v0"));
    QCOMPARE(db.Scalar(QStringLiteral("SELECT CODICE_NAZIONE FROM AZIENDA")).toString(), QStringLiteral("v2"));
    QCOMPARE(db.Scalar(QStringLiteral("SELECT OCTET_LENGTH(LOGO) FROM AZIENDA")).toInt(), 10);
}

void TestQ3Azienda::hostileTexts_storedAsTheyAre()
{
    TQ3TestDatabase db;
    const QStringList ostili = {QStringLiteral("O'Reilly & \"Figli\"; --"),
                                QStringLiteral("'); DROP TABLE AZIENDA; --"),
                                QStringLiteral("x' OR '1'='1"),
                                QString::fromUtf8("Ελληνικά Русский 中文 日本語 😀"),
                                QString(1000, QLatin1Char('a')),
                                QStringLiteral("\\ % _ ? :param {dsAzienda.IBAN}")};
    for (const QString &ostile : ostili) {
        TQ3Azienda azienda;
        for (const TQ3ColonnaAzienda &colonna : Q3ColonneAzienda())
            azienda.*colonna.Campo = ostile.left(colonna.Lunghezza);
        azienda.Logo = ostile.toUtf8();
        Q3ScriviAzienda(db.Db(), azienda);
        QCOMPARE(Q3LeggiAzienda(db.Db()), azienda);
    }
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM AZIENDA")).toInt(), 1);
}

void TestQ3Azienda::removedLogo_storedAsNull()
{
    TQ3TestDatabase db;
    TQ3Azienda azienda = Completa();
    Q3ScriviAzienda(db.Db(), azienda);
    azienda.Logo.clear();
    Q3ScriviAzienda(db.Db(), azienda);
    QVERIFY(db.Scalar(QStringLiteral("SELECT LOGO FROM AZIENDA")).isNull());
    QVERIFY(Q3LeggiAzienda(db.Db()).Logo.isEmpty());
}

void TestQ3Azienda::failedWrite_storesNothing()
{
    TQ3TestDatabase db;
    Q3ScriviAzienda(db.Db(), Completa());
    TQ3Azienda troppo = Completa();
    troppo.RagioneSociale = QStringLiteral("Nuova ragione sociale");
    troppo.Cap = QStringLiteral("123456"); // one more than the column takes
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, Q3ScriviAzienda(db.Db(), troppo));
    QCOMPARE(Q3LeggiAzienda(db.Db()), Completa());
}

void TestQ3Azienda::problems_eachFieldNamed()
{
    QCOMPARE(Q3ProblemiAzienda(Codici(QStringLiteral("IT"), QStringLiteral("01234567890"),
                                      QStringLiteral("RSSMRA80A01H501A"), QStringLiteral("IT60X0542811101000000123457"),
                                      QStringLiteral("4012"), QStringLiteral("B0"), QStringLiteral("B"))),
             (QStringList{QString::fromUtf8("La partita IVA non è valida: controllare le 11 cifre."),
                          QString::fromUtf8("Il codice fiscale non è valido."), QStringLiteral("L'IBAN non è valido."),
                          QStringLiteral("Il CAP deve essere di 5 cifre."),
                          QStringLiteral("La provincia deve essere di 2 lettere."),
                          QStringLiteral("L'ufficio del REA deve essere la sigla di 2 lettere della provincia.")}));

    QVERIFY(Q3ProblemiAzienda(Codici(QStringLiteral("IT"), QStringLiteral("12345678903"),
                                     QStringLiteral("rssmra80a01h50mm"),
                                     QStringLiteral("IT60 X054 2811 1010 0000 0123 456"), QStringLiteral("40121"),
                                     QStringLiteral("bo"), QStringLiteral("BO")))
                .isEmpty());
}

void TestQ3Azienda::problems_emptyFieldsAllowed()
{
    TQ3Azienda azienda;
    azienda.CodiceNazione.clear();
    QVERIFY(Q3ProblemiAzienda(azienda).isEmpty());
    QVERIFY(Q3ProblemiAzienda(TQ3Azienda()).isEmpty());
}

// A firm abroad has no Partita IVA, CAP or province of the Italian form; its
// IBAN is checked all the same.
void TestQ3Azienda::problems_foreignFirm_italianFormsNotAsked()
{
    TQ3Azienda azienda =
        Codici(QStringLiteral("DE"), QStringLiteral("123456789"), QString(), QStringLiteral("DE89370400440532013001"),
               QStringLiteral("1010"), QStringLiteral("Wien"));
    QCOMPARE(Q3ProblemiAzienda(azienda), QStringList{QStringLiteral("L'IBAN non è valido.")});
    azienda.CodiceNazione = QStringLiteral("DEU");
    QCOMPARE(Q3ProblemiAzienda(azienda),
             (QStringList{QStringLiteral("L'IBAN non è valido."),
                          QStringLiteral("Il codice della nazione deve essere di 2 lettere.")}));
}

QTEST_GUILESS_MAIN(TestQ3Azienda)
#include "tst_q3azienda.moc"
