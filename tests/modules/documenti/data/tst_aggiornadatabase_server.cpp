#include "schema_testing.h"

#include <QTest>

// The schema upgrade against a database on a Firebird server, where DDL and
// the version rows travel through the network protocol.
class TestAggiornaDatabaseServer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void freshDatabaseOnServer();
};

void TestAggiornaDatabaseServer::init()
{
    Q3_REQUIRE_TEST_SERVER();
}

void TestAggiornaDatabaseServer::freshDatabaseOnServer()
{
    TKRVDaAggiornare module(TQ3TestDatabase::Where::Server);
    QVERIFY(module.Database.Target().IsRemote());

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    VerifyFreshUpgrade(module.Database);
    if (QTest::currentTestFailed())
        return;

    TQ3TestDatabase handWritten(TQ3TestDatabase::Where::Server);
    LoadSchemaFile(handWritten, QStringLiteral("schema_final.sql"));
    QCOMPARE(SchemaMetadata(module.Database), SchemaMetadata(handWritten));

    const QStringList data = ModuleData(module.Database);
    TStatementRecorder recorder;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(recorder.Statements(), QStringList(1, TStatementRecorder::VersionQuery()));
    QCOMPARE(ModuleData(module.Database), data);
}

QTEST_GUILESS_MAIN(TestAggiornaDatabaseServer)
#include "tst_aggiornadatabase_server.moc"
