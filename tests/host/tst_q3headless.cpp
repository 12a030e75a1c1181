#include "Q3Connection.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3TestHost.h"
#include "Q3Users.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

// The administrators' headless start: log in, load the modules, upgrade, exit.
class TestQ3Headless : public QObject
{
    Q_OBJECT

private slots:
    void newDatabaseIsCreatedAndUpgraded();
    void secondRunChangesNothing();
    void wrongPasswordFails();
    void failedLoginsHoldAcrossStarts();
    void missingDatabaseFolderFails();
    void messageBoxesGoToStandardError();
    void helpPrintsTheOptionsAndCreatesNothing();
    void unknownOptionIsRefusedClearly();

private:
    static QStringList Arguments(const QString &database, const QString &passwordFile,
                                 const QString &user = QStringLiteral("admin"))
    {
        return {QStringLiteral("--headless"),
                QStringLiteral("--database"),
                database,
                QStringLiteral("--user"),
                user,
                QStringLiteral("--password-file"),
                passwordFile};
    }
    // A connection of the test to the file, closed again before the next start.
    static std::unique_ptr<TQ3Connection> Connect(const QString &database)
    {
        auto connection = std::make_unique<TQ3Connection>();
        connection->SetConnectionString(TQ3DatabaseTarget{database, {}, {}}.ConnectionString());
        connection->Open();
        return connection;
    }
    static QStringList Snapshot(const QString &database)
    {
        const std::unique_ptr<TQ3Connection> connection = Connect(database);
        QStringList rows;
        QSqlQuery query = OpenQuery(connection->Database(),
                                    QStringLiteral("SELECT TABELLA || '=' || VERSIONE FROM TABLE_VERSION ORDER BY 1"));
        while (query.next())
            rows << query.value(0).toString();
        for (const char *table : {"UTENTI", "ABILITAZIONI_UTENTE", "OPZIONI", "AZIENDA"})
            rows << QString::fromLatin1(table) + QLatin1Char('#')
                        + QueryScalar(connection->Database(),
                                      QStringLiteral("SELECT COUNT(*) FROM ") + QString::fromLatin1(table))
                              .toString();
        rows << QueryScalar(connection->Database(),
                            QStringLiteral("SELECT PASSWORD_HASH FROM UTENTI WHERE USER_NAME='admin'"))
                    .toString();
        return rows;
    }
};

void TestQ3Headless::newDatabaseIsCreatedAndUpgraded()
{
    QTemporaryDir dir;
    const QString database = dir.filePath(QStringLiteral("nuova.fdb"));
    const QString password = WriteQ3TestFile(dir.path(), QStringLiteral("pw"), QStringLiteral("segreto1\n"));
    const TQ3HostRun run = RunQuillo3Process(Arguments(database, password));
    QVERIFY2(run.ExitCode == 0, qPrintable(run.StdErr));
    QVERIFY(QFileInfo::exists(database));
    const QStringList snapshot = Snapshot(database);
    QVERIFY(snapshot.contains(QStringLiteral("UTENTI=1.0.0")));
    QVERIFY(snapshot.last().startsWith(QLatin1String("$argon2id$")));
    // The module was loaded and initialised: its permissions are in the catalogue.
    QCOMPARE(QueryScalar(Connect(database)->Database(),
                         QStringLiteral("SELECT COUNT(*) FROM ABILITAZIONI_UTENTE WHERE GRUPPO = 'Documenti'"))
                 .toInt(),
             7);
}

void TestQ3Headless::secondRunChangesNothing()
{
    QTemporaryDir dir;
    const QString database = dir.filePath(QStringLiteral("db.fdb"));
    const QString password = WriteQ3TestFile(dir.path(), QStringLiteral("pw"), QStringLiteral("segreto1"));
    QCOMPARE(RunQuillo3Process(Arguments(database, password)).ExitCode, 0);
    const QStringList before = Snapshot(database);
    const TQ3HostRun again = RunQuillo3Process(Arguments(database, password, QStringLiteral("ADMIN")));
    QVERIFY2(again.ExitCode == 0, qPrintable(again.StdErr));
    QCOMPARE(Snapshot(database), before);
}

void TestQ3Headless::wrongPasswordFails()
{
    QTemporaryDir dir;
    const QString database = dir.filePath(QStringLiteral("db.fdb"));
    QCOMPARE(RunQuillo3Process(
                 Arguments(database, WriteQ3TestFile(dir.path(), QStringLiteral("pw"), QStringLiteral("segreto1"))))
                 .ExitCode,
             0);
    const QStringList before = Snapshot(database);
    const TQ3HostRun run = RunQuillo3Process(
        Arguments(database, WriteQ3TestFile(dir.path(), QStringLiteral("bad"), QStringLiteral("sbagliata"))));
    QVERIFY(run.ExitCode != 0);
    QVERIFY2(run.StdErr.contains(QLatin1String("nome utente o password non validi")), qPrintable(run.StdErr));
    QCOMPARE(Snapshot(database), before);
    QVERIFY(RunQuillo3Process(Arguments(database, dir.filePath(QStringLiteral("pw")), QStringLiteral("mario"))).ExitCode
            != 0);
}

void TestQ3Headless::failedLoginsHoldAcrossStarts()
{
    QTemporaryDir dir;
    const QString database = dir.filePath(QStringLiteral("db.fdb"));
    const QString right = WriteQ3TestFile(dir.path(), QStringLiteral("pw"), QStringLiteral("segreto1"));
    const QString wrong = WriteQ3TestFile(dir.path(), QStringLiteral("bad"), QStringLiteral("sbagliata"));
    QCOMPARE(RunQuillo3Process(Arguments(database, right)).ExitCode, 0);
    TQ3HostRun run = RunQuillo3Process(Arguments(database, wrong));
    QCOMPARE(run.ExitCode, 3);
    const auto failures = [&database] {
        return QueryScalar(Connect(database)->Database(),
                           QStringLiteral("SELECT TENTATIVI FROM ACCESSI_FALLITI WHERE USER_NAME = 'ADMIN'"))
            .toInt();
    };
    QCOMPARE(failures(), 1);
    // Four more failures, from wherever they came, make the name wait sixteen seconds.
    {
        const std::unique_ptr<TQ3Connection> connection = Connect(database);
        for (int i = 0; i < 4; ++i)
            TQ3LoginThrottle(connection->Database()).Failed(QStringLiteral("admin"));
    }
    // A new start is still held up: even the right password is not looked at.
    run = RunQuillo3Process(Arguments(database, right));
    QCOMPARE(run.ExitCode, 3);
    static const QRegularExpression refused(
        QStringLiteral("quillo3: troppi tentativi di accesso non riusciti: riprovare tra (\\d+) secondi\\."));
    const QRegularExpressionMatch match = refused.match(run.StdErr);
    QVERIFY2(match.hasMatch(), qPrintable(run.StdErr));
    QVERIFY(match.captured(1).toInt() > 0 && match.captured(1).toInt() <= 16);
    QCOMPARE(failures(), 5);
    // Once the wait is over the right password gets in, and the count starts again.
    ExecSQL(Connect(database)->Database(),
            QStringLiteral("UPDATE ACCESSI_FALLITI SET ULTIMO_TENTATIVO = DATEADD(-1 MINUTE TO CURRENT_TIMESTAMP)"));
    run = RunQuillo3Process(Arguments(database, right));
    QVERIFY2(run.ExitCode == 0, qPrintable(run.StdErr));
    QCOMPARE(failures(), 0);
}

void TestQ3Headless::missingDatabaseFolderFails()
{
    QTemporaryDir dir;
    const QString password = WriteQ3TestFile(dir.path(), QStringLiteral("pw"), QStringLiteral("segreto1"));
    const TQ3HostRun run =
        RunQuillo3Process(Arguments(QStringLiteral("127.0.0.1/1:/nessuna/cartella/db.fdb"), password));
    QVERIFY(run.ExitCode != 0);
    QVERIFY2(run.StdErr.contains(QLatin1String("Impossibile aprire il database")), qPrintable(run.StdErr));
}

void TestQ3Headless::messageBoxesGoToStandardError()
{
    QTemporaryDir dir;
    const QString database = dir.filePath(QStringLiteral("db.fdb"));
    const QString password = WriteQ3TestFile(dir.path(), QStringLiteral("pw"), QStringLiteral("segreto1"));
    QCOMPARE(RunQuillo3Process(Arguments(database, password)).ExitCode, 0);
    // A version row whose key differs only in case makes the module try to
    // create a table that exists: the failure is reported as a box.
    ExecSQL(Connect(database)->Database(),
            QStringLiteral("UPDATE TABLE_VERSION SET TABELLA = 'fatt_vend' WHERE TABELLA = 'FATT_VEND'"));
    const TQ3HostRun run = RunQuillo3Process(Arguments(database, password));
    QCOMPARE(run.ExitCode, 0);
    QVERIFY2(run.StdErr.contains(QLatin1String("Errore: Errore durante l'aggiornamento del database!")),
             qPrintable(run.StdErr));
}

void TestQ3Headless::helpPrintsTheOptionsAndCreatesNothing()
{
    QTemporaryDir home;
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));

    const TQ3HostRun run = RunQuillo3Process({QStringLiteral("--help")}, environment);

    QCOMPARE(run.ExitCode, 0);
    for (const char *option :
         {"--database", "--db-user", "--db-password-file", "--headless", "--user", "--password-file"})
        QVERIFY2(run.StdOut.contains(QLatin1String(option)), qPrintable(run.StdOut));
    QCOMPARE(QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList());
}

void TestQ3Headless::unknownOptionIsRefusedClearly()
{
    QTemporaryDir home;
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));

    TQ3HostRun run = RunQuillo3Process({QStringLiteral("--databse"), QStringLiteral("x.fdb")}, environment);
    QVERIFY(run.ExitCode != 0);
    QVERIFY2(run.StdErr.contains(QLatin1String("Opzione sconosciuta: --databse.")), qPrintable(run.StdErr));
    QVERIFY2(run.StdErr.contains(QLatin1String("quillo3 --help")), qPrintable(run.StdErr));

    run = RunQuillo3Process({QStringLiteral("firm.fdb")}, environment);
    QVERIFY(run.ExitCode != 0);
    QVERIFY2(run.StdErr.contains(QLatin1String("Argomento non previsto: \"firm.fdb\"")), qPrintable(run.StdErr));
    QCOMPARE(QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList());
}

QTEST_GUILESS_MAIN(TestQ3Headless)
#include "tst_q3headless.moc"
