// The database server going away under the open application and coming back:
// the user is told, the windows stay usable, and the next action after the
// server's return works without starting the application again. The suite
// stops and starts a server of its own, never the one the other suites share.
#include "../data/KRVServiceRows.h"
#include "../masters/KRVMastersTestKit.h"
#include "Q3Dataset.h"
#include "Q3Sql.h"
#include "Q3TestServer.h"
#include "uKRVInserimentoClienti.h"
#include "uKRVRicercaClienti.h"

#include <memory>

using namespace KRVTest;

namespace {

const QString ActList = QStringLiteral("actRicercaClienti");
const QString ActEditor = QStringLiteral("actInserimentoClienti");

const QString Interrotta = Q3TestConnessioneInterrotta();
const QString NonRipristinata = Q3TestConnessioneNonRipristinata();

int Attachment(const TQ3TestDatabase &db)
{
    return db.Scalar(QStringLiteral("SELECT CURRENT_CONNECTION FROM RDB$DATABASE")).toInt();
}

} // namespace

class TestRiconnessioneServer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { m_server.reset(); }
    void windowsTellAndWorkAgainWhenTheServerIsBack();
    void failedWritesAreNotRunAgain();
    void ordinaryFailureKeepsTheConnection();

private:
    std::unique_ptr<TQ3TestServer> m_server;
};

void TestRiconnessioneServer::initTestCase()
{
    UseItalianLocale();
    Q3_REQUIRE_TEST_SERVER();
    m_server = std::make_unique<TQ3TestServer>();
}

void TestRiconnessioneServer::windowsTellAndWorkAgainWhenTheServerIsBack()
{
    TKRVTestModule module(TQ3TestDatabase::Where::Server);
    module.MainForm->show();
    TQ3RecordingResponder boxes;
    const int alfa = KRVInsertCliente(module.Database, QStringLiteral("C01"), QStringLiteral("Alfa S.r.l."));
    KRVInsertCliente(module.Database, QStringLiteral("C02"), QStringLiteral("Acme"));
    auto list = Run<TKRVRicercaClienti>(module, ActList);
    TKRVGrigliaRisultati *grid = list->GridRisultati();
    QCOMPARE(grid->rowCount(), 2);
    const int attachment = Attachment(module.Database);

    m_server->Stop();
    DoubleClickRow(grid, RowOf(grid, 2, QStringLiteral("Alfa S.r.l.")));
    QVERIFY(!boxes.Messages().isEmpty());
    QVERIFY(Q3ErrorBoxBeginning(boxes.Messages().at(0), Interrotta));
    // Still away: what follows says that the connection cannot be had again.
    for (qsizetype i = 1; i < boxes.Messages().size(); ++i)
        QVERIFY(Q3ErrorBoxBeginning(boxes.Messages().at(i), NonRipristinata));
    const qsizetype opening = boxes.Messages().size();
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(boxes.Messages().size(), opening + 1);
    QVERIFY(Q3ErrorBoxBeginning(boxes.Messages().last(), NonRipristinata));
    // The list emptied its grid before reading, as it always does, and takes the next command.
    QCOMPARE(grid->rowCount(), 0);
    QVERIFY(list->isVisible() && list->isEnabled());
    const qsizetype whileAway = boxes.Messages().size();

    m_server->Resume();
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(grid->rowCount(), 2);
    DoubleClickRow(grid, RowOf(grid, 2, QStringLiteral("Alfa S.r.l.")));
    auto editor = module.Main->FormAs<TKRVInserimentoClienti>(ActEditor);
    QVERIFY(editor);
    QCOMPARE(editor->IdRecord(), alfa);
    QCOMPARE(Field(editor, QStringLiteral("txtCodice"))->text(), QStringLiteral("C01"));
    Type(Field(editor, QStringLiteral("txtRagioneSociale")), QStringLiteral("Alfa Due S.r.l."));
    // With its recipient code the save asks nothing.
    Type(Field(editor, QStringLiteral("txtCodiceDestinatario")), QStringLiteral("ABC1234"));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(boxes.Messages().size(), whileAway);
    // The test's own connection found its server again too, on a new attachment.
    QCOMPARE(module.Database.Rows(QStringLiteral("SELECT RAGIONESOCIALE FROM CLIENTI WHERE CODICE = 'C01'")),
             QStringList{"Alfa Due S.r.l."});
    QVERIFY(Attachment(module.Database) != attachment);

    // A save while the server is away is reported and not written; the user saves again.
    m_server->Stop();
    Type(Field(editor, QStringLiteral("txtRagioneSociale")), QStringLiteral("Alfa Tre S.r.l."));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(boxes.Messages().size(), whileAway + 1);
    QVERIFY(Q3ErrorBoxBeginning(boxes.Messages().last(), Interrotta));
    m_server->Resume();
    QCOMPARE(module.Database.Rows(QStringLiteral("SELECT RAGIONESOCIALE FROM CLIENTI WHERE CODICE = 'C01'")),
             QStringList{"Alfa Due S.r.l."});
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(boxes.Messages().size(), whileAway + 1);
    QCOMPARE(module.Database.Rows(QStringLiteral("SELECT RAGIONESOCIALE FROM CLIENTI WHERE CODICE = 'C01'")),
             QStringList{"Alfa Tre S.r.l."});
}

void TestRiconnessioneServer::failedWritesAreNotRunAgain()
{
    TQ3TestDatabase server(TQ3TestDatabase::Where::Server, false);
    TQ3TestDatabase embedded(TQ3TestDatabase::Where::Embedded, false);
    server.Exec(QStringLiteral("CREATE TABLE PROVA (ID INTEGER NOT NULL PRIMARY KEY)"));
    const int embeddedAttachment = Attachment(embedded);

    // A transaction whose commit finds the server gone.
    {
        TQ3Transaction transaction(server.Db());
        ExecSQL(server.Db(), QStringLiteral("INSERT INTO PROVA (ID) VALUES (1)"));
        m_server->Stop();
        try {
            transaction.Commit();
            QFAIL("the commit went through without a server");
        } catch (const EQ3Exception &e) {
            QVERIFY2(e.Message().startsWith(Interrotta), qPrintable(e.Message()));
        }
    }
    // Still away: the next use says so, and so does the one after.
    for (int i = 0; i < 2; ++i) {
        try {
            server.Scalar(QStringLiteral("SELECT COUNT(*) FROM PROVA"));
            QFAIL("a query went through without a server");
        } catch (const EQ3Exception &e) {
            QVERIFY2(e.Message().startsWith(NonRipristinata), qPrintable(e.Message()));
        }
    }
    m_server->Resume();
    QCOMPARE(server.Scalar(QStringLiteral("SELECT COUNT(*) FROM PROVA")).toInt(), 0);

    // A row posted while the server is away stays to be posted: the user does it again.
    TQ3Dataset dataset;
    dataset.SetConnection(server.Connection());
    dataset.SetSQL(QStringLiteral("SELECT ID FROM PROVA"));
    dataset.SetUpdateTable(QStringLiteral("PROVA"), QStringLiteral("ID"));
    dataset.Open();
    dataset.Append();
    dataset.SetFieldValue(QStringLiteral("ID"), 2);
    m_server->Stop();
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, dataset.Post());
    QCOMPARE(dataset.State(), TQ3Dataset::TState::Insert);
    m_server->Resume();
    QCOMPARE(server.Scalar(QStringLiteral("SELECT COUNT(*) FROM PROVA")).toInt(), 0);
    dataset.Post();
    QCOMPARE(server.Rows(QStringLiteral("SELECT ID FROM PROVA")), QStringList{"2"});

    // A file of the embedded engine had no server to lose: it kept its attachment.
    QCOMPARE(Attachment(embedded), embeddedAttachment);
}

void TestRiconnessioneServer::ordinaryFailureKeepsTheConnection()
{
    TQ3TestDatabase server(TQ3TestDatabase::Where::Server, false);
    const int attachment = Attachment(server);
    const int losses = Q3ConnectionLosses();
    try {
        server.Exec(QStringLiteral("SELECT * FROM TABELLA_CHE_NON_ESISTE"));
        QFAIL("a query on a missing table went through");
    } catch (const EQ3Exception &e) {
        QVERIFY2(!e.Message().startsWith(QString::fromUtf8(Q3MsgConnessioneInterrotta)), qPrintable(e.Message()));
        QVERIFY2(e.Message().contains(QLatin1String("TABELLA_CHE_NON_ESISTE")), qPrintable(e.Message()));
    }
    QCOMPARE(Q3ConnectionLosses(), losses);
    QCOMPARE(Attachment(server), attachment);
}

QTEST_MAIN(TestRiconnessioneServer)
#include "tst_riconnessione_server.moc"
