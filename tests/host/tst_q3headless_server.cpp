#include "Q3Connection.h"
#include "Q3DatabaseFile.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3TestHost.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

// The same host start-up against a database on a Firebird server.
class TestQ3HeadlessServer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void startsWithCredentialsFromEnvironment();
    void startsWithCredentialsFromOptions();
    void wrongServerPasswordFails();

private:
    QProcessEnvironment ServerCredentials() const
    {
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("ISC_USER"), qEnvironmentVariable("Q3_TEST_SERVER_USER"));
        environment.insert(QStringLiteral("ISC_PASSWORD"), qEnvironmentVariable("Q3_TEST_SERVER_PASSWORD"));
        return environment;
    }
};

void TestQ3HeadlessServer::init()
{
    Q3_REQUIRE_TEST_SERVER();
}

void TestQ3HeadlessServer::startsWithCredentialsFromEnvironment()
{
    TQ3TestDatabase server(TQ3TestDatabase::Where::Server, false);
    const QString database = server.Target().Database;
    const QString password = WriteQ3TestFile(server.Folder(), QStringLiteral("pw"), QStringLiteral("segreto1"));
    const QStringList arguments{QStringLiteral("--headless"),
                                QStringLiteral("--database"),
                                database,
                                QStringLiteral("--user"),
                                QStringLiteral("admin"),
                                QStringLiteral("--password-file"),
                                password};
    TQ3HostRun run = RunQuillo3Process(arguments, ServerCredentials());
    QVERIFY2(run.ExitCode == 0, qPrintable(run.StdErr));
    QCOMPARE(server.Scalar(QStringLiteral("SELECT COUNT(*) FROM ABILITAZIONI_UTENTE WHERE GRUPPO = 'Documenti'"))
                 .toInt(),
             7);
    const QString versions =
        server.Rows(QStringLiteral("SELECT TABELLA, VERSIONE FROM TABLE_VERSION ORDER BY 1")).join(QLatin1Char(','));
    run = RunQuillo3Process(arguments, ServerCredentials());
    QVERIFY2(run.ExitCode == 0, qPrintable(run.StdErr));
    QCOMPARE(server.Rows(QStringLiteral("SELECT TABELLA, VERSIONE FROM TABLE_VERSION ORDER BY 1"))
                 .join(QLatin1Char(',')),
             versions);
    const QString wrong = WriteQ3TestFile(server.Folder(), QStringLiteral("bad"), QStringLiteral("sbagliata"));
    QVERIFY(
        RunQuillo3Process({QStringLiteral("--headless"), QStringLiteral("--database"), database,
                           QStringLiteral("--user"), QStringLiteral("admin"), QStringLiteral("--password-file"), wrong},
                          ServerCredentials())
            .ExitCode
        != 0);
}

void TestQ3HeadlessServer::startsWithCredentialsFromOptions()
{
    TQ3TestDatabase server(TQ3TestDatabase::Where::Server, false);
    const QString password = WriteQ3TestFile(server.Folder(), QStringLiteral("pw"), QStringLiteral("segreto1"));
    const QString serverPassword =
        WriteQ3TestFile(server.Folder(), QStringLiteral("dbpw"), qEnvironmentVariable("Q3_TEST_SERVER_PASSWORD"));
    QProcessEnvironment none;
    none.insert(QStringLiteral("ISC_USER"), QString());
    none.insert(QStringLiteral("ISC_PASSWORD"), QString());
    const TQ3HostRun run =
        RunQuillo3Process({QStringLiteral("--headless"), QStringLiteral("--database"), server.Target().Database,
                           QStringLiteral("--db-user"), qEnvironmentVariable("Q3_TEST_SERVER_USER"),
                           QStringLiteral("--db-password-file"), serverPassword, QStringLiteral("--user"),
                           QStringLiteral("admin"), QStringLiteral("--password-file"), password},
                          none);
    QVERIFY2(run.ExitCode == 0, qPrintable(run.StdErr));
    QVERIFY(server.Scalar(QStringLiteral("SELECT PASSWORD_HASH FROM UTENTI WHERE USER_NAME = 'admin'"))
                .toString()
                .startsWith(QLatin1String("$argon2id$")));
}

void TestQ3HeadlessServer::wrongServerPasswordFails()
{
    TQ3TestDatabase server(TQ3TestDatabase::Where::Server, false);
    const QString password = WriteQ3TestFile(server.Folder(), QStringLiteral("pw"), QStringLiteral("segreto1"));
    QProcessEnvironment wrong = ServerCredentials();
    wrong.insert(QStringLiteral("ISC_PASSWORD"), QStringLiteral("non-questa"));
    const TQ3HostRun run = RunQuillo3Process({QStringLiteral("--headless"), QStringLiteral("--database"),
                                              server.Target().Database, QStringLiteral("--user"),
                                              QStringLiteral("admin"), QStringLiteral("--password-file"), password},
                                             wrong);
    QVERIFY(run.ExitCode != 0);
    QVERIFY2(run.StdErr.contains(QLatin1String("Impossibile aprire il database")), qPrintable(run.StdErr));
}

QTEST_GUILESS_MAIN(TestQ3HeadlessServer)
#include "tst_q3headless_server.moc"
