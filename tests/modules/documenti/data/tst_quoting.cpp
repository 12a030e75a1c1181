#include "KRVDeleteRules.h"
#include "KRVLookups.h"
#include "KRVOptions.h"
#include "KRVPermissions.h"
#include "KRVServiceRows.h"
#include "KRVTestCore.h"

#include <QtTest>

#include <memory>

// Values typed by the user reach the composed statements as text literals:
// a quote inside them is part of the value, never the end of it.
class TestQuoting : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void apostropheIsSearchedAsText();
    void injectionFindsNothing();
    void injectionInOptionsChangesNothing();
    void injectionInPermissionsGrantsNothing();
    void injectionInDeleteRuleIsOneLiteral();
    void databaseUnchanged();

private:
    QStringList Snapshot() const;
    std::unique_ptr<TKRVTestCore> m_module;
    QStringList m_before;
};

namespace {

const QString Injection = QStringLiteral("x' OR '1'='1");

} // namespace

QStringList TestQuoting::Snapshot() const
{
    QStringList rows;
    for (const char *table : {"CLIENTI", "ANA_MAGA", "SERVIZI", "UM", "ALIQUOTE_IVA", "TIPI_PAGAMENTO",
                              "NOTE_DOCUMENTI", "OPZIONI", "UTENTI_RUOLI"})
        rows << m_module->Database.Rows(QStringLiteral("SELECT * FROM ") + QLatin1String(table)
                                        + QStringLiteral(" ORDER BY 1"));
    return rows;
}

void TestQuoting::initTestCase()
{
    m_module = std::make_unique<TKRVTestCore>();
    const TQ3TestDatabase &db = m_module->Database;
    KRVInsertCliente(db, QStringLiteral("O'BRIEN"), QStringLiteral("O'Brien Ltd"));
    KRVInsertCliente(db, QStringLiteral("ROSSI"), QStringLiteral("Rossi"));
    KRVInsertArticolo(db, QStringLiteral("ART'1"));
    KRVInsertServizio(db, QStringLiteral("SERV'1"));
    KRVInsertNotaDocumenti(db, QStringLiteral("Nota dell'anno"), QStringLiteral("testo"));
    m_before = Snapshot();
}

void TestQuoting::apostropheIsSearchedAsText()
{
    QVERIFY(CodiceClienteExists(m_module->Db(), QStringLiteral("O'Brien"), 0));
    QCOMPARE(GetCliente(m_module->Db(), QStringLiteral("o'brien")).RAGIONESOCIALE, QStringLiteral("O'Brien Ltd"));
    QVERIFY(CodiceAnaMagaExists(m_module->Db(), QStringLiteral("art'1"), 0));
    QVERIFY(CodiceServizioExists(m_module->Db(), QStringLiteral("serv'1"), 0));
    QVERIFY(TitoloNotaDocumentiExists(m_module->Db(), QStringLiteral("NOTA DELL'ANNO"), 0));
    QVERIFY(!CodiceClienteExists(m_module->Db(), QStringLiteral("O'Brie"), 0));
}

void TestQuoting::injectionFindsNothing()
{
    QCOMPARE(GetCliente(m_module->Db(), Injection).IDCLIENTE, 0);
    QVERIFY(GetCliente(m_module->Db(), Injection).CODICE.isEmpty());
    QVERIFY(!CodiceClienteExists(m_module->Db(), Injection, 0));
    QVERIFY(!CodiceAnaMagaExists(m_module->Db(), Injection, 0));
    QVERIFY(!CodiceServizioExists(m_module->Db(), Injection, 0));
    QVERIFY(!CodiceAliquotaIvaExists(m_module->Db(), QStringLiteral("' OR ''='"), 0));
    QVERIFY(!CodiceUMExists(m_module->Db(), Injection, 0));
    QVERIFY(!CodiceTipoPagamentoExists(m_module->Db(), Injection, 0));
    QVERIFY(!TitoloNotaDocumentiExists(m_module->Db(), Injection, 0));
}

void TestQuoting::injectionInOptionsChangesNothing()
{
    QVariant value(QStringLiteral("invariato"));
    QVERIFY(!GetOptionValue(m_module->Db(), Injection, value));
    QCOMPARE(value.toString(), QStringLiteral("invariato"));
    QVERIFY(!SetOptionValue(m_module->Db(), Injection, QStringLiteral("True")));
    QVERIFY(!SetOptionValue(m_module->Db(), QStringLiteral("NUMERAZIONE_UNICA_FATTURE' OR '1'='1"),
                            QStringLiteral("True")));
}

void TestQuoting::injectionInPermissionsGrantsNothing()
{
    QVERIFY(!UserHasAbilitazione(QStringLiteral("Controllo completo"), Injection, m_module->Db()));
    QVERIFY(!UserHasAbilitazione(QStringLiteral("Controllo completo"),
                                 QStringLiteral("nessuno' OR UPPER(USER_NAME)='ADMIN"), m_module->Db()));
}

void TestQuoting::injectionInDeleteRuleIsOneLiteral()
{
    const QString sql = CanDeleteSQL(QStringLiteral("CanDeleteCliente"), Injection);
    QVERIFY(sql.contains(QStringLiteral("UPPER(CLI_CODICE)='X'' OR ''1''=''1'")));
    QVERIFY(CanDeleteCliente(m_module->Db(), Injection));
    QVERIFY(CanDeleteAnaMaga(m_module->Db(), Injection));
    QVERIFY(CanDeleteServizio(m_module->Db(), Injection));
}

void TestQuoting::databaseUnchanged()
{
    QCOMPARE(Snapshot(), m_before);
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT VALORE FROM OPZIONI WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'")),
             QStringList{QStringLiteral("False")});
}

QTEST_GUILESS_MAIN(TestQuoting)
#include "tst_quoting.moc"
