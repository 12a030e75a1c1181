#include "KRVNumbering.h"
#include "KRVServiceRows.h"
#include "KRVTestCore.h"
#include "Q3Exception.h"

#include <QtTest>

#include <functional>
#include <memory>

class TestNumbering : public QObject
{
    Q_OBJECT

private slots:
    void failuresWithoutSession();
    void init();
    void cleanup();
    void noInvoiceGivesOne();
    void highestPlusOne();
    void otherYearsDoNotCount();
    void deletedLastNumberIsFreeAgain();
    void sharedSequence();
    void sharedSequenceWithAccompanyingOnly();
    void sharedSequenceAsNumber();
    void fattVendExists();
    void fattVendExistsForAccompanyingInvoice();
    void notaAccreditoNumbering();
    void missingOptionRaisesBracketedError();
    void nonBooleanOptionRaisesBracketedError();
    void missingOptionReachesExistenceTestUnchanged();

private:
    void SetShared(const QString &value) const;
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    std::unique_ptr<TKRVTestCore> m_module;
};

// Handed no session, both proposals bracket the failure. For invoices it is
// the option's, which reads as absent.
void TestNumbering::failuresWithoutSession()
{
    const QList<std::pair<std::function<void()>, QString>> calls{
        {[] { GetNextNumeroFattVend(QSqlDatabase(), 2024); },
         QStringLiteral("[GetNextNumeroFattVend]\n\r'' non è un valore booleano valido")},
        {[] { GetNextNumeroNotaAccredito(QSqlDatabase(), 2024); },
         QStringLiteral("[GetNextNumeroNotaAccredito]\n\r") + QString::fromUtf8(KRVMsgSenzaSessione)},
        {[] { NotaAccreditoExists(QSqlDatabase(), 1, 2024, 0); }, QString::fromUtf8(KRVMsgSenzaSessione)},
    };
    for (const auto &[call, message] : calls) {
        try {
            call();
            QFAIL("no failure raised");
        } catch (const EQ3Exception &e) {
            QCOMPARE(e.Message(), message);
        }
    }
}

// Every case starts on a new database, with the warehouse tables and the
// option set to "False" as the host creates it.
void TestNumbering::init()
{
    m_module = std::make_unique<TKRVTestCore>();
    Db().LoadFixture(QStringLiteral("magazzino.sql"));
}

void TestNumbering::cleanup()
{
    m_module.reset();
}

void TestNumbering::SetShared(const QString &value) const
{
    Db().Exec(QStringLiteral("UPDATE OPZIONI SET VALORE = ") + QuotedStr(value)
              + QStringLiteral(" WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'"));
}

namespace {

void InsertFattAcc(const TQ3TestDatabase &db, int numero, int anno)
{
    db.Exec(
        QStringLiteral("INSERT INTO FATT_ACC (NUMERO, DATA, ANNO) VALUES (%1, '%2-03-01', %2)").arg(numero).arg(anno));
}

} // namespace

void TestNumbering::noInvoiceGivesOne()
{
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 1);
    SetShared(QStringLiteral("True"));
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 1);
}

void TestNumbering::highestPlusOne()
{
    for (int numero : {1, 2, 5})
        KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), numero, 2024);
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 6);
}

void TestNumbering::otherYearsDoNotCount()
{
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 40, 2023);
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 3, 2024);
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 4);
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2023), 41);
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2025), 1);
}

void TestNumbering::deletedLastNumberIsFreeAgain()
{
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 1, 2024);
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 2, 2024);
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 3, 2024);
    Db().Exec(QStringLiteral("DELETE FROM FATT_VEND WHERE NUMERO = 2"));
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 4);
    Db().Exec(QStringLiteral("DELETE FROM FATT_VEND WHERE NUMERO = 3"));
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 2);
}

void TestNumbering::sharedSequence()
{
    for (int numero = 1; numero <= 7; ++numero)
        KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), numero, 2024);
    for (int numero : {8, 9})
        InsertFattAcc(Db(), numero, 2024);
    InsertFattAcc(Db(), 50, 2023);
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 8);
    SetShared(QStringLiteral("True"));
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 10);
}

void TestNumbering::sharedSequenceWithAccompanyingOnly()
{
    SetShared(QStringLiteral("True"));
    InsertFattAcc(Db(), 3, 2024);
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 4);
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 12, 2024);
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 13);
}

void TestNumbering::sharedSequenceAsNumber()
{
    InsertFattAcc(Db(), 9, 2024);
    SetShared(QStringLiteral("1"));
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 10);
    SetShared(QStringLiteral("0"));
    QCOMPARE(GetNextNumeroFattVend(m_module->Db(), 2024), 1);
}

void TestNumbering::fattVendExists()
{
    const int id = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 4, 2024);
    QVERIFY(FattVendExists(m_module->Db(), 4, 2024, 0));
    QVERIFY(!FattVendExists(m_module->Db(), 4, 2024, id));
    QVERIFY(!FattVendExists(m_module->Db(), 4, 2023, 0));
    QVERIFY(!FattVendExists(m_module->Db(), 5, 2024, 0));
}

void TestNumbering::fattVendExistsForAccompanyingInvoice()
{
    InsertFattAcc(Db(), 6, 2024);
    QVERIFY(!FattVendExists(m_module->Db(), 6, 2024, 0));
    SetShared(QStringLiteral("True"));
    QVERIFY(FattVendExists(m_module->Db(), 6, 2024, 0));
    QVERIFY(!FattVendExists(m_module->Db(), 6, 2025, 0));
    // The own invoice is excluded from sales invoices only.
    const int id = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 7, 2024);
    InsertFattAcc(Db(), 7, 2024);
    QVERIFY(FattVendExists(m_module->Db(), 7, 2024, id));
}

void TestNumbering::notaAccreditoNumbering()
{
    QCOMPARE(GetNextNumeroNotaAccredito(m_module->Db(), 2024), 1);
    SetShared(QStringLiteral("True"));
    InsertFattAcc(Db(), 30, 2024);
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 20, 2024);
    int id = 0;
    for (int numero : {1, 2, 5})
        id = KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), numero, 2024);
    QCOMPARE(GetNextNumeroNotaAccredito(m_module->Db(), 2024), 6);
    QCOMPARE(GetNextNumeroNotaAccredito(m_module->Db(), 2025), 1);
    QVERIFY(NotaAccreditoExists(m_module->Db(), 5, 2024, 0));
    QVERIFY(!NotaAccreditoExists(m_module->Db(), 5, 2024, id));
    QVERIFY(!NotaAccreditoExists(m_module->Db(), 20, 2024, 0));
    QVERIFY(!NotaAccreditoExists(m_module->Db(), 30, 2024, 0));
}

void TestNumbering::missingOptionRaisesBracketedError()
{
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 1, 2024);
    Db().Exec(QStringLiteral("DELETE FROM OPZIONI WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'"));
    try {
        GetNextNumeroFattVend(m_module->Db(), 2024);
        QFAIL("no failure raised");
    } catch (const EQ3Exception &e) {
        QCOMPARE(e.Message(), QStringLiteral("[GetNextNumeroFattVend]\n\r'' non è un valore booleano valido"));
    }
    // Credit notes do not read the option.
    QCOMPARE(GetNextNumeroNotaAccredito(m_module->Db(), 2024), 1);
}

void TestNumbering::nonBooleanOptionRaisesBracketedError()
{
    SetShared(QStringLiteral("Sì"));
    try {
        GetNextNumeroFattVend(m_module->Db(), 2024);
        QFAIL("no failure raised");
    } catch (const EQ3Exception &e) {
        QCOMPARE(e.Message(), QStringLiteral("[GetNextNumeroFattVend]\n\r'Sì' non è un valore booleano valido"));
    }
}

// The option is read whatever the invoices' own count found.
void TestNumbering::missingOptionReachesExistenceTestUnchanged()
{
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 1, 2024);
    Db().Exec(QStringLiteral("DELETE FROM OPZIONI WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'"));
    for (int numero : {1, 2}) {
        try {
            FattVendExists(m_module->Db(), numero, 2024, 0);
            QFAIL("no failure raised");
        } catch (const EQ3Exception &e) {
            QCOMPARE(e.Message(), QStringLiteral("'' non è un valore booleano valido"));
        }
    }
    QVERIFY(!NotaAccreditoExists(m_module->Db(), 1, 2024, 0));
}

QTEST_GUILESS_MAIN(TestNumbering)
#include "tst_numbering.moc"
