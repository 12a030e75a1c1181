#include "Q3Connection.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"

#include <QtTest>

// Credentials of any characters reach the Firebird server intact.
class TestQ3ConnectionServer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void passwordWithSeparatorsAndQuotesOpens();
};

void TestQ3ConnectionServer::init()
{
    Q3_REQUIRE_TEST_SERVER();
}

void TestQ3ConnectionServer::passwordWithSeparatorsAndQuotesOpens()
{
    // The test server's user is given such a password on purpose.
    const QString password = qEnvironmentVariable("Q3_TEST_SERVER_PASSWORD");
    for (const char *character : {";", "\"", "'"})
        QVERIFY2(password.contains(QLatin1String(character)), qPrintable(password));

    TQ3TestDatabase server(TQ3TestDatabase::Where::Server, false);
    QVERIFY(server.Connection()->Connected());
    // A second connection from the first one's string, as the module takes over the host's.
    TQ3Connection copy;
    copy.SetConnectionString(server.Connection()->ConnectionString());
    copy.Open();
    QCOMPARE(QueryScalar(copy.Database(), QStringLiteral("SELECT CURRENT_USER FROM RDB$DATABASE")).toString().trimmed(),
             qEnvironmentVariable("Q3_TEST_SERVER_USER").toUpper());
}

QTEST_GUILESS_MAIN(TestQ3ConnectionServer)
#include "tst_q3connection_server.moc"
