#include "Q3Connection.h"
#include "Q3DatabaseFile.h"
#include "Q3Sql.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

// What a connection string carries, whatever characters its values hold.
class TestQ3Connection : public QObject
{
    Q_OBJECT

private slots:
    void valuesSurviveTheConnectionString_data();
    void valuesSurviveTheConnectionString();
    void plainValuesStayAsTheyWere();
    void databaseInAFolderWithASeparatorOpens();
};

void TestQ3Connection::valuesSurviveTheConnectionString_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << QStringLiteral("segreto1");
    QTest::newRow("separator") << QStringLiteral("pa;ss");
    QTest::newRow("double quotes") << QStringLiteral("\"pa\"ss\"");
    QTest::newRow("single quotes") << QStringLiteral("'pa'ss'");
    QTest::newRow("everything") << QStringLiteral(" a;b=\"c';d ");
    QTest::newRow("equals") << QStringLiteral("a=b");
}

void TestQ3Connection::valuesSurviveTheConnectionString()
{
    QFETCH(QString, value);
    const TQ3DatabaseTarget target{QStringLiteral("host/3051:/dati/") + value + QStringLiteral(".fdb"), value, value};
    const TQ3DatabaseTarget back = TQ3DatabaseTarget::FromConnectionString(target.ConnectionString());
    QCOMPARE(back.Database, target.Database);
    QCOMPARE(back.User, value);
    QCOMPARE(back.Password, value);
}

void TestQ3Connection::plainValuesStayAsTheyWere()
{
    const TQ3DatabaseTarget target{QStringLiteral("/dati/ditta.fdb"), QStringLiteral("SYSDBA"),
                                   QStringLiteral("masterkey")};
    QCOMPARE(target.ConnectionString(),
             QStringLiteral("Provider=Firebird;Data Source=/dati/ditta.fdb;User ID=SYSDBA;Password=masterkey;"));
}

void TestQ3Connection::databaseInAFolderWithASeparatorOpens()
{
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("con;punto")));
    const TQ3DatabaseTarget target{dir.filePath(QStringLiteral("con;punto/ditta.fdb")), {}, {}};
    CreateQ3Database(target);
    TQ3Connection connection;
    connection.SetConnectionString(target.ConnectionString());
    connection.Open();
    QVERIFY(connection.Connected());
    QCOMPARE(QueryScalar(connection.Database(), QStringLiteral("SELECT 1 FROM RDB$DATABASE")).toInt(), 1);
    // A new database is never swept by itself (an engine's automatic sweep
    // after a crash can bring records back).
    QCOMPARE(QueryScalar(connection.Database(), QStringLiteral("SELECT MON$SWEEP_INTERVAL FROM MON$DATABASE")).toInt(),
             0);
}

QTEST_GUILESS_MAIN(TestQ3Connection)
#include "tst_q3connection.moc"
