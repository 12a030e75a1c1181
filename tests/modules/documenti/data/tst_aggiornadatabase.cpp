#include "schema_testing.h"

#include "Q3Exception.h"
#include "Q3TestDatabaseFile.h"

#include <QScopeGuard>
#include <QTest>

#include <algorithm>
#include <memory>

namespace {

const QString UpgradeError = QStringLiteral("Errore durante l'aggiornamento del database!");

// The thirty recorded steps, the index step after them and the later ones.
constexpr int AllSteps = 41;
constexpr int IndexStep = 31;

// A credit note as the first release stored it, number 1 of 2020.
void InsertFirstCreditNote(const TQ3TestDatabase &db)
{
    db.Exec(QStringLiteral(
        "INSERT INTO NOTE_ACCREDITO (IDNOTA_ACCREDITO, NUMERO, DATA, ANNO, CLI_CODICE, "
        "CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, "
        "TOTALE_DOCUMENTO) VALUES (0, 1, '2020-02-04', 2020, 'C001', 'Rossi Srl', 1, 'Rimessa diretta', "
        "'False', 10, 2.2, 12.2)"));
}

// The one failure box of a step, with the icon it shows.
void VerifyOneFailureBox(const TQ3RecordingResponder &boxes, TQ3MsgIcon icon)
{
    QCOMPARE(boxes.Messages().size(), 1);
    const TQ3Message &box = boxes.Messages().constFirst();
    QCOMPARE(box.Title, QStringLiteral("Errore"));
    QCOMPARE(box.Text, UpgradeError);
    QCOMPARE(box.Icon, icon);
    QCOMPARE(box.Buttons, TQ3MsgButtons::Ok);
}

QString SqlError(const TQ3TestDatabase &db, const QString &sql)
{
    try {
        db.Exec(sql);
    } catch (const EQ3Exception &e) {
        return e.Message();
    }
    return {};
}

// Creates a table, its generator and trigger as the given step does, without recording it.
void CreateAsStep(const TQ3TestDatabase &db, int number)
{
    const QList<TQ3SchemaStep> steps = KRVSchemaSteps();
    for (const QString &sql : steps.at(number - 1).Statements)
        db.Exec(sql);
}

} // namespace

class TestAggiornaDatabase : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void stepsFollowTheRecordedHistory();
    void composedStatements();
    void freshDatabaseReachesFinalState();
    void freshDatabaseHasTheFinalShape();
    void templateCopiesAreFreshlyUpgradedDatabases();
    void secondRunOnlyQueriesVersions();
    void existingRowsUntouchedOnRerun();
    void onlyMatchingStepsRunForRecordedVersions();
    void unknownVersionSkipsSilently();
    void keyMatchIsCaseSensitive();
    void seedsRunAfterAFailedCreate();
    void seedFailureEndsTheRun();
    void serviziKeepsItsVersionAfterStep13();
    void explicitKeyGetsGeneratorValue_data();
    void explicitKeyGetsGeneratorValue();
    void invoiceNumberUniqueWithinYear();
    void longAddressFitsCustomerNotInvoice();
    void costOfLinesFromArticlesAndServices();
    void flagColumnsFilledOnExistingRows();
    void eInvoiceColumnsFilledOnExistingRows();
    void eInvoiceColumnsAreRequired();
    void producedFileColumnsAndProgressive();
    void invoiceReferencesOnExistingRows();
    void failedStepRollsBackWholeStep();
    void failedLaterStepShowsErrorIcon();
    void failedFlagStepSkipsLaterStepsOfItsKey();
    void stepDoneMeanwhileByAnotherWorkstationIsSkipped();
    void indexStepComposesItsStatements();
    void indexStepRunsAfterTheRecordedHistory();
    void failedIndexStepIsRolledBackAndTriedAgain();
    void upgradeFromEveryState_data();
    void upgradeFromEveryState();
    void handWrittenStates_data();
    void handWrittenStates();

private:
    QStringList m_finalMetadata;
    QStringList m_finalData;
    std::unique_ptr<TQ3TestDatabase> m_upgraded;
};

void TestAggiornaDatabase::initTestCase()
{
    TKRVDaAggiornare module;
    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    m_finalMetadata = SchemaMetadata(module.Database);
    m_finalData = ModuleData(module.Database);

    // One upgraded database for the tests that only add rows, each to a table of its own.
    m_upgraded = std::make_unique<TQ3TestDatabase>();
    RunFirstSteps(m_upgraded->Db(), AllSteps);
    QCOMPARE(ModuleData(*m_upgraded), m_finalData);
}

void TestAggiornaDatabase::stepsFollowTheRecordedHistory()
{
    struct Expected
    {
        const char *key;
        const char *from;
        const char *to;
        TQ3MsgIcon icon;
    };
    const TQ3MsgIcon none = TQ3MsgIcon::None;
    const TQ3MsgIcon error = TQ3MsgIcon::Error;
    const QList<Expected> expected = {
        {"FATT_VEND", "", "1.0.0", none},
        {"FATT_VEND_DETT", "", "1.0.0", none},
        {"NOTE_ACCREDITO", "", "1.0.0", none},
        {"NOTE_ACCREDITO_DETT", "", "1.0.0", none},
        {"ALIQUOTE_IVA", "", "1.0.0", none},
        {"UM", "", "1.0.0", none},
        {"TIPI_PAGAMENTO", "", "1.0.0", none},
        {"CATEGORIE_ANA_MAGA", "", "1.0.0", none},
        {"CATEGORIE_SERVIZI", "", "1.0.0", none},
        {"SERVIZI", "", "1.0.0", none},
        {"CLIENTI", "", "1.0.0", none},
        {"ANA_MAGA", "", "1.0.0", none},
        {"FATT_VEND", "1.0.0", "1.1.0", none},
        {"TIPI_PAGAMENTO", "1.0.0", "1.1.0", none},
        {"FATT_VEND_DETT", "1.0.0", "1.1.0", none},
        {"FATT_VEND_DETT", "1.1.0", "1.2.0", none},
        {"FATT_VEND_DETT", "1.2.0", "1.3.0", none},
        {"NOTE_DOCUMENTI", "", "1.0.0", none},
        {"ANA_MAGA", "1.0.0", "1.1.0", none},
        {"CLIENTI", "1.0.0", "1.1.0", none},
        {"CLIENTI", "1.1.0", "1.2.0", error},
        {"FATT_VEND", "1.1.0", "1.2.0", error},
        {"NOTE_ACCREDITO", "1.0.0", "1.1.0", error},
        {"KRV_ABILITAZIONI", "", "1.0.0", none},
        {"CLIENTI", "1.2.0", "1.3.0", error},
        {"FATT_VEND", "1.2.0", "1.3.0", error},
        {"NOTE_ACCREDITO", "1.1.0", "1.2.0", error},
        {"KRV_ABILITAZIONI", "1.0.0", "1.0.1", error},
        {"FATT_VEND", "1.3.0", "1.4.0", error},
        {"FATT_VEND", "1.4.0", "1.5.0", error},
        {"KRV_INDICI", "", "1.0.0", error},
        {"CLIENTI", "1.3.0", "1.4.0", error},
        {"ALIQUOTE_IVA", "1.0.0", "1.1.0", error},
        {"FATT_VEND_DETT", "1.3.0", "1.4.0", error},
        {"NOTE_ACCREDITO_DETT", "1.0.0", "1.1.0", error},
        {"FATT_VEND", "1.5.0", "1.6.0", error},
        {"NOTE_ACCREDITO", "1.2.0", "1.3.0", error},
        {"FATTURAPA", "", "1.0.0", error},
        {"NOTE_ACCREDITO", "1.3.0", "1.4.0", error},
        {"FATT_VEND_DDT", "", "1.0.0", error},
        {"FATT_VEND_DDT", "1.0.0", "1.1.0", error},
    };
    const QList<TQ3SchemaStep> steps = KRVSchemaSteps();
    QCOMPARE(steps.size(), AllSteps);
    for (int i = 0; i < steps.size(); ++i) {
        const TQ3SchemaStep &step = steps.at(i);
        const Expected &e = expected.at(i);
        const QString where = QStringLiteral("step %1").arg(i + 1);
        QVERIFY2(step.Key == QLatin1String(e.key), qPrintable(where));
        QVERIFY2(step.From == QLatin1String(e.from), qPrintable(where));
        QVERIFY2(step.To == QLatin1String(e.to), qPrintable(where));
        QVERIFY2(step.FailureIcon == e.icon, qPrintable(where));
        QVERIFY2(step.Statements.size() > 0, qPrintable(where));
    }
    QCOMPARE(steps.at(19).Statements.size(), 9);
    QCOMPARE(steps.at(23).Statements.size(), 3);
    QCOMPARE(steps.at(27).Statements.size(), 4);
}

void TestAggiornaDatabase::composedStatements()
{
    const QList<TQ3SchemaStep> steps = KRVSchemaSteps();
    QCOMPARE(steps.at(5).Statements,
             QStringList({QStringLiteral("CREATE TABLE UM (IDUM INTEGER NOT NULL, UM VARCHAR(5) NOT NULL, "
                                         "CONSTRAINT PK_UM PRIMARY KEY(IDUM), CONSTRAINT UK1_UM UNIQUE(UM))"),
                          QStringLiteral("CREATE GENERATOR GN_IDUM"),
                          QStringLiteral("CREATE TRIGGER TG_BI_UM FOR UM BEFORE INSERT AS BEGIN "
                                         "NEW.IDUM = GEN_ID(GN_IDUM, 1); END")}));
    QCOMPARE(steps.at(5).Seeds, QStringList({QStringLiteral("INSERT INTO UM VALUES(1, 'PEZZI')"),
                                             QStringLiteral("INSERT INTO UM VALUES(2, 'ORE')"),
                                             QStringLiteral("INSERT INTO UM VALUES(3, 'Q.LI')"),
                                             QStringLiteral("INSERT INTO UM VALUES(4, 'KG')")}));
    QCOMPARE(steps.at(4).Seeds.constFirst(),
             QStringLiteral("INSERT INTO ALIQUOTE_IVA VALUES(1, '20', 'Aliquota standard', 20)"));
    QCOMPARE(steps.at(7).Seeds,
             QStringList({QStringLiteral("INSERT INTO CATEGORIE_ANA_MAGA VALUES(1, 'Altro', NULL)")}));
    QCOMPARE(steps.at(2).Statements.at(1), QStringLiteral("CREATE GENERATOR GN_IDNOTA_ACCREDITO"));
    QCOMPARE(steps.at(2).Statements.at(2),
             QStringLiteral("CREATE TRIGGER TG_BI_NOTE_ACCREDITO FOR NOTE_ACCREDITO BEFORE INSERT AS BEGIN "
                            "NEW.IDNOTA_ACCREDITO = GEN_ID(GN_IDNOTA_ACCREDITO, 1); END"));
    QCOMPARE(steps.at(15).Statements.constFirst(),
             QStringLiteral("UPDATE FATT_VEND_DETT SET COSTO=(SELECT ANA_MAGA.COSTO FROM ANA_MAGA "
                            "WHERE ANA_MAGA.CODICE=FATT_VEND_DETT.CODICE ) WHERE TIPO_RIGA='Articolo'"));
    QCOMPARE(steps.at(16).Statements.constFirst(),
             QStringLiteral("UPDATE FATT_VEND_DETT SET COSTO=(SELECT SERVIZI.COSTO FROM SERVIZI "
                            "WHERE SERVIZI.CODICE=FATT_VEND_DETT.CODICE ) WHERE TIPO_RIGA='Servizio'"));
    QCOMPARE(steps.at(21).Statements.constFirst(),
             QStringLiteral("ALTER TABLE FATT_VEND ADD NOTIFICATO VARCHAR(5) DEFAULT 'False' NOT NULL"));
    QCOMPARE(steps.at(22).Statements.constFirst(),
             QStringLiteral("ALTER TABLE NOTE_ACCREDITO ADD NOTIFICATO VARCHAR(5) DEFAULT 'False' NOT NULL"));
    QCOMPARE(steps.at(23).Statements.constLast(),
             QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES(0, 'Statistiche (visualizzazione)', 'Documenti')"));
    QCOMPARE(steps.at(27).Statements.constFirst(),
             QStringLiteral(
                 "INSERT INTO ABILITAZIONI_UTENTE VALUES(0, 'Fatture di vendita (visualizzazione)', 'Documenti')"));
    QCOMPARE(steps.at(28).Statements.constFirst(),
             QStringLiteral("ALTER TABLE FATT_VEND ADD IVA_ESENTE VARCHAR(5) DEFAULT 'False' NOT NULL"));
    QCOMPARE(steps.at(29).Statements.constFirst(), QStringLiteral("UPDATE FATT_VEND SET IVA_ESENTE = 'False'"));
    QCOMPARE(steps.at(19).Statements.constFirst(), QStringLiteral("ALTER TABLE CLIENTI ADD COORDBAN_PAESE VARCHAR(2)"));
    QCOMPARE(steps.at(19).Statements.constLast(),
             QStringLiteral("ALTER TABLE CLIENTI ADD COORDBAN_AGENZIA VARCHAR(100)"));
}

void TestAggiornaDatabase::freshDatabaseReachesFinalState()
{
    TKRVDaAggiornare module;
    TQ3RecordingResponder boxes;
    TStatementRecorder recorder;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    VerifyFreshUpgrade(module.Database);
    if (QTest::currentTestFailed())
        return;
    QList<int> all;
    for (int i = 1; i <= AllSteps; ++i)
        all << i;
    QCOMPARE(recorder.StepStatements(), StatementsOfSteps(all));
    // One reading for the run, and one more before each step that runs.
    QCOMPARE(recorder.Statements().count(TStatementRecorder::VersionQuery()), 1 + AllSteps);
}

void TestAggiornaDatabase::freshDatabaseHasTheFinalShape()
{
    TQ3TestDatabase handWritten;
    LoadSchemaFile(handWritten, QStringLiteral("schema_final.sql"));
    const QStringList expected = SchemaMetadata(handWritten);
    QCOMPARE(m_finalMetadata.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(m_finalMetadata.at(i), expected.at(i));
}

// The module's other suites start from copies of the template database the
// build makes once: each copy is the database the upgrade makes, in a file of
// its own that the test may change. The template itself forces its writes, as
// a new database does; a copy leaves them to the system's cache when the run
// asks for it.
void TestAggiornaDatabase::templateCopiesAreFreshlyUpgradedDatabases()
{
    TQ3TestDatabase first(TQ3TestDatabase::Where::Embedded, TQ3TestDatabase::Schema::Upgraded);
    TQ3TestDatabase second(TQ3TestDatabase::Where::Embedded, TQ3TestDatabase::Schema::Upgraded);
    QCOMPARE(SchemaMetadata(first), m_finalMetadata);
    QCOMPARE(ModuleData(first), m_finalData);
    QCOMPARE(ModuleVersionRows(first), FinalModuleVersions());
    QVERIFY(first.Target().Database != second.Target().Database);
    QVERIFY(first.Target().Database != Q3TestTemplateDatabase());
    first.Exec(QStringLiteral("INSERT INTO UM (UM) VALUES ('MQ')"));
    QCOMPARE(second.Scalar(QStringLiteral("SELECT COUNT(*) FROM UM WHERE UM = 'MQ'")).toInt(), 0);
    const QString forcedWrites = QStringLiteral("SELECT MON$FORCED_WRITES FROM MON$DATABASE");
    QCOMPARE(first.Scalar(forcedWrites).toInt(), Q3TestWritesCached() ? 0 : 1);

    // A copy made as a run by hand makes it forces its writes as the template does.
    const QByteArray cached = qgetenv("Q3_TEST_CACHED_WRITES");
    const auto restore = qScopeGuard([&cached] { qputenv("Q3_TEST_CACHED_WRITES", cached); });
    qunsetenv("Q3_TEST_CACHED_WRITES");
    TQ3TestDatabase byHand(TQ3TestDatabase::Where::Embedded, TQ3TestDatabase::Schema::Upgraded);
    QCOMPARE(byHand.Scalar(forcedWrites).toInt(), 1);
}

void TestAggiornaDatabase::secondRunOnlyQueriesVersions()
{
    TKRVDaAggiornare module;
    AggiornaDatabase(module.Db());
    TQ3RecordingResponder boxes;
    TStatementRecorder recorder;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(recorder.Statements(), QStringList(1, TStatementRecorder::VersionQuery()));
}

void TestAggiornaDatabase::existingRowsUntouchedOnRerun()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    AggiornaDatabase(module.Db());
    db.Exec(QStringLiteral("UPDATE UM SET UM = 'PZ' WHERE IDUM = 1"));
    db.Exec(QStringLiteral("DELETE FROM UM WHERE IDUM = 4"));
    db.Exec(QStringLiteral("DELETE FROM CATEGORIE_SERVIZI"));
    db.Exec(
        QStringLiteral("DELETE FROM ABILITAZIONI_UTENTE WHERE ABILITAZIONE_UTENTE = 'Statistiche (visualizzazione)'"));
    db.Exec(QStringLiteral("INSERT INTO CLIENTI (IDCLIENTE, CODICE, RAGIONESOCIALE) VALUES (0, 'C001', 'Rossi Srl')"));
    const QStringList before = ModuleData(db);
    const QStringList metadataBefore = SchemaMetadata(db);

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(ModuleData(db), before);
    QCOMPARE(SchemaMetadata(db), metadataBefore);
    QCOMPARE(db.Rows(QStringLiteral("SELECT * FROM UM ORDER BY IDUM")),
             QStringList({QStringLiteral("1|PZ"), QStringLiteral("2|ORE"), QStringLiteral("3|Q.LI")}));
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM CATEGORIE_SERVIZI")).toInt(), 0);
    QCOMPARE(db.Rows(QStringLiteral("SELECT CODICE, RAGIONESOCIALE FROM CLIENTI")),
             QStringList({QStringLiteral("C001|Rossi Srl")}));
    QCOMPARE(PermissionRowsOfGroup(db, QStringLiteral("Documenti")).size(), 6);
}

void TestAggiornaDatabase::onlyMatchingStepsRunForRecordedVersions()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), 25);
    QCOMPARE(Version(db, QStringLiteral("FATT_VEND")), QStringLiteral("1.2.0"));
    QCOMPARE(Version(db, QStringLiteral("CLIENTI")), QStringLiteral("1.3.0"));

    TQ3RecordingResponder boxes;
    TStatementRecorder recorder;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    // Steps 27 and 28 belong to other keys; of FATT_VEND and CLIENTI only 26, 29, 30, 32 and 36 run.
    QCOMPARE(recorder.StepStatements(),
             StatementsOfSteps({26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41}));
    QCOMPARE(Version(db, QStringLiteral("FATT_VEND")), QStringLiteral("1.6.0"));
    QCOMPARE(Version(db, QStringLiteral("CLIENTI")), QStringLiteral("1.4.0"));
    QCOMPARE(SchemaMetadata(db), m_finalMetadata);
}

void TestAggiornaDatabase::unknownVersionSkipsSilently()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), 12);
    db.Exec(QStringLiteral("UPDATE TABLE_VERSION SET VERSIONE = '1.1' WHERE TABELLA = 'CLIENTI'"));

    TQ3RecordingResponder boxes;
    TStatementRecorder recorder;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(Version(db, QStringLiteral("CLIENTI")), QStringLiteral("1.1"));
    for (const QString &sql : recorder.StepStatements())
        QVERIFY2(!sql.contains(QLatin1String("TABLE CLIENTI")), qPrintable(sql));
    QVERIFY(!ColumnExists(db, QStringLiteral("CLIENTI"), QStringLiteral("COORDBAN_PAESE")));
    QCOMPARE(ColumnLength(db, QStringLiteral("CLIENTI"), QStringLiteral("INDIRIZZO")), 50);
    QCOMPARE(Version(db, QStringLiteral("FATT_VEND")), QStringLiteral("1.6.0"));
    QCOMPARE(Version(db, QStringLiteral("KRV_ABILITAZIONI")), QStringLiteral("1.0.1"));
}

void TestAggiornaDatabase::keyMatchIsCaseSensitive()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    CreateAsStep(db, 1);
    db.Exec(QStringLiteral("INSERT INTO TABLE_VERSION (TABELLA, VERSIONE) VALUES ('fatt_vend', '1.0.0')"));

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    VerifyOneFailureBox(boxes, TQ3MsgIcon::None);
    QCOMPARE(Version(db, QStringLiteral("fatt_vend")), QStringLiteral("1.0.0"));
    QVERIFY(db.Scalar(QStringLiteral("SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA = 'FATT_VEND'")).isNull());
    // The FATT_VEND key never got its row, so none of its upgrades ran, SERVIZI's widening included.
    QVERIFY(!ColumnExists(db, QStringLiteral("FATT_VEND"), QStringLiteral("NOTIFICATO")));
    QCOMPARE(ColumnLength(db, QStringLiteral("SERVIZI"), QStringLiteral("DESCRIZIONE")), 100);
    QCOMPARE(Version(db, QStringLiteral("CLIENTI")), QStringLiteral("1.4.0"));
    QCOMPARE(Version(db, QStringLiteral("NOTE_DOCUMENTI")), QStringLiteral("1.0.0"));
    QCOMPARE(Version(db, QStringLiteral("KRV_ABILITAZIONI")), QStringLiteral("1.0.1"));
}

void TestAggiornaDatabase::seedsRunAfterAFailedCreate()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    CreateAsStep(db, 6);
    db.Exec(QStringLiteral("INSERT INTO TABLE_VERSION (TABELLA, VERSIONE) VALUES ('um', '1.0.0')"));

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    VerifyOneFailureBox(boxes, TQ3MsgIcon::None);
    QVERIFY(db.Scalar(QStringLiteral("SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA = 'UM'")).isNull());
    QCOMPARE(db.Rows(QStringLiteral("SELECT * FROM UM ORDER BY IDUM")),
             QStringList({QStringLiteral("1|PEZZI"), QStringLiteral("2|ORE"), QStringLiteral("3|Q.LI"),
                          QStringLiteral("4|KG")}));
    QCOMPARE(Version(db, QStringLiteral("KRV_ABILITAZIONI")), QStringLiteral("1.0.1"));
}

void TestAggiornaDatabase::seedFailureEndsTheRun()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    CreateAsStep(db, 6);
    db.Exec(QStringLiteral("INSERT INTO UM VALUES(0, 'PEZZI')"));
    db.Exec(QStringLiteral("INSERT INTO TABLE_VERSION (TABELLA, VERSIONE) VALUES ('um', '1.0.0')"));

    TQ3RecordingResponder boxes;
    QString failure;
    try {
        AggiornaDatabase(module.Db());
    } catch (const EQ3Exception &e) {
        failure = e.Message();
    }
    QVERIFY2(failure.contains(QLatin1String("UK1_UM")), qPrintable(failure));
    VerifyOneFailureBox(boxes, TQ3MsgIcon::None);
    QCOMPARE(db.Rows(QStringLiteral("SELECT UM FROM UM")), QStringList({QStringLiteral("PEZZI")}));
    // The run ended at the UM step: later steps never ran.
    QVERIFY(!Q3TableExists(db.Db(), QStringLiteral("TIPI_PAGAMENTO")));
    QVERIFY(
        db.Scalar(QStringLiteral("SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA = 'KRV_ABILITAZIONI'")).isNull());
}

void TestAggiornaDatabase::serviziKeepsItsVersionAfterStep13()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    LoadSchemaFile(db, QStringLiteral("schema_state13.sql"));
    RunFirstSteps(db.Db(), 13);
    QCOMPARE(Version(db, QStringLiteral("FATT_VEND")), QStringLiteral("1.1.0"));
    QCOMPARE(Version(db, QStringLiteral("SERVIZI")), QStringLiteral("1.0.0"));
    QCOMPARE(ColumnLength(db, QStringLiteral("SERVIZI"), QStringLiteral("DESCRIZIONE")), 150);

    AggiornaDatabase(module.Db());
    QCOMPARE(Version(db, QStringLiteral("SERVIZI")), QStringLiteral("1.0.0"));
}

void TestAggiornaDatabase::explicitKeyGetsGeneratorValue_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("insert");
    QTest::addColumn<int>("key");
    QTest::newRow("FATT_VEND")
        << QStringLiteral("FATT_VEND")
        << QStringLiteral(
               "INSERT INTO FATT_VEND (IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, "
               "IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, "
               "FC_ABILITATO) VALUES (1000, 1, '2024-01-10', 2024, 'C001', 'Rossi Srl', 1, 'Rimessa diretta', "
               "'False', 0, 0, 0, 'False')")
        << 1;
    QTest::newRow("FATT_VEND_DETT") << QStringLiteral("FATT_VEND_DETT")
                                    << QStringLiteral(
                                           "INSERT INTO FATT_VEND_DETT (IDFATT_VEND_DETT, IDFATT_VEND, TIPO_RIGA) "
                                           "VALUES (1000, 1, 'Testo')")
                                    << 1;
    QTest::newRow("NOTE_ACCREDITO")
        << QStringLiteral("NOTE_ACCREDITO")
        << QStringLiteral(
               "INSERT INTO NOTE_ACCREDITO (IDNOTA_ACCREDITO, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, "
               "IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO) "
               "VALUES (1000, 1, '2024-01-10', 2024, 'C001', 'Rossi Srl', 1, 'Rimessa diretta', 'False', 0, 0, 0)")
        << 1;
    QTest::newRow("NOTE_ACCREDITO_DETT")
        << QStringLiteral("NOTE_ACCREDITO_DETT")
        << QStringLiteral("INSERT INTO NOTE_ACCREDITO_DETT (IDNOTA_ACCREDITO_DETT, IDNOTA_ACCREDITO, TIPO_RIGA) "
                          "VALUES (1000, 1, 'Testo')")
        << 1;
    QTest::newRow("ALIQUOTE_IVA") << QStringLiteral("ALIQUOTE_IVA")
                                  << QStringLiteral(
                                         "INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) "
                                         "VALUES(1000, '10', 'Aliquota ridotta', 10)")
                                  << 4;
    QTest::newRow("UM") << QStringLiteral("UM") << QStringLiteral("INSERT INTO UM VALUES(1000, 'MT')") << 5;
    QTest::newRow("TIPI_PAGAMENTO") << QStringLiteral("TIPI_PAGAMENTO")
                                    << QStringLiteral("INSERT INTO TIPI_PAGAMENTO VALUES(1000, 'Contanti')") << 6;
    QTest::newRow("CATEGORIE_ANA_MAGA") << QStringLiteral("CATEGORIE_ANA_MAGA")
                                        << QStringLiteral("INSERT INTO CATEGORIE_ANA_MAGA VALUES(1000, 'Viteria', 1)")
                                        << 2;
    QTest::newRow("CATEGORIE_SERVIZI") << QStringLiteral(
        "CATEGORIE_SERVIZI") << QStringLiteral("INSERT INTO CATEGORIE_SERVIZI VALUES(1000, 'Consulenze', NULL)")
                                       << 2;
    QTest::newRow("SERVIZI") << QStringLiteral(
        "SERVIZI") << QStringLiteral("INSERT INTO SERVIZI VALUES(1000, 'S001', 'Consulenza', 1, 50, 30, 1, 2)")
                             << 1;
    QTest::newRow("CLIENTI") << QStringLiteral("CLIENTI")
                             << QStringLiteral("INSERT INTO CLIENTI (IDCLIENTE, CODICE, RAGIONESOCIALE) "
                                               "VALUES (1000, 'C001', 'Rossi Srl')")
                             << 1;
    QTest::newRow("ANA_MAGA") << QStringLiteral("ANA_MAGA")
                              << QStringLiteral(
                                     "INSERT INTO ANA_MAGA (IDANA_MAGA, CODICE, DESCRIZIONE, SOTTOSCORTA, RIORDINO, "
                                     "IDCATEGORIA_ANA_MAGA, PREZZO, COSTO, IDALIQUOTA_IVA, IDUM) "
                                     "VALUES (1000, 'A001', 'Vite', 0, 0, 1, 1, 0.5, 1, 1)")
                              << 1;
    QTest::newRow("NOTE_DOCUMENTI")
        << QStringLiteral("NOTE_DOCUMENTI")
        << QStringLiteral("INSERT INTO NOTE_DOCUMENTI (IDNOTA_DOCUMENTI, TITOLO) VALUES (1000, 'Nota')") << 1;
}

void TestAggiornaDatabase::explicitKeyGetsGeneratorValue()
{
    QFETCH(QString, table);
    QFETCH(QString, insert);
    QFETCH(int, key);
    const TQ3TestDatabase &db = *m_upgraded;
    const QList<TModuleTable> tables = ModuleTables();
    const auto info =
        std::find_if(tables.cbegin(), tables.cend(), [&](const TModuleTable &t) { return t.Table == table; });
    QVERIFY(info != tables.cend());

    db.Exec(insert);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT GEN_ID(%1, 0) FROM RDB$DATABASE").arg(info->Generator)).toInt(), key);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT MAX(%1) FROM %2").arg(info->Key, table)).toInt(), key);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM %2 WHERE %1 = 1000").arg(info->Key, table)).toInt(), 0);
}

void TestAggiornaDatabase::invoiceNumberUniqueWithinYear()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    AggiornaDatabase(module.Db());
    const QString insert = QStringLiteral(
        "INSERT INTO FATT_VEND (IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, "
        "TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO) "
        "VALUES (0, 7, '%1-03-01', %1, 'C001', 'Rossi Srl', 1, 'Rimessa diretta', 'False', 0, 0, 0, 'False')");
    db.Exec(insert.arg(2023));
    db.Exec(insert.arg(2024));
    QCOMPARE(db.Rows(QStringLiteral("SELECT NUMERO, ANNO FROM FATT_VEND ORDER BY ANNO")),
             QStringList({QStringLiteral("7|2023"), QStringLiteral("7|2024")}));
    const QString error = SqlError(db, insert.arg(2024));
    QVERIFY2(error.contains(QLatin1String("UK1_FATT_VEND")), qPrintable(error));
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 2);
}

void TestAggiornaDatabase::longAddressFitsCustomerNotInvoice()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    AggiornaDatabase(module.Db());
    const QString address51 = QString(51, QLatin1Char('v'));
    const QString address100 = QString(100, QLatin1Char('w'));
    db.Exec(QStringLiteral(
                "INSERT INTO CLIENTI (IDCLIENTE, CODICE, RAGIONESOCIALE, INDIRIZZO) VALUES (0, 'C051', 'Rossi', %1)")
                .arg(QuotedStr(address51)));
    db.Exec(QStringLiteral(
                "INSERT INTO CLIENTI (IDCLIENTE, CODICE, RAGIONESOCIALE, INDIRIZZO) VALUES (0, 'C100', 'Bianchi', %1)")
                .arg(QuotedStr(address100)));
    QCOMPARE(db.Rows(QStringLiteral("SELECT INDIRIZZO FROM CLIENTI ORDER BY CODICE")),
             QStringList({address51, address100}));

    const QString copy = QStringLiteral(
        "INSERT INTO FATT_VEND (IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, CLI_INDIRIZZO, "
        "IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO) "
        "SELECT 0, %1, '2024-05-02', 2024, CODICE, RAGIONESOCIALE, INDIRIZZO, 1, 'Rimessa diretta', 'False', 0, 0, 0, 'False' "
        "FROM CLIENTI WHERE CODICE = %2");
    for (const char *code : {"C051", "C100"}) {
        const QString error = SqlError(db, copy.arg(QStringLiteral("1"), QuotedStr(QString::fromLatin1(code))));
        QVERIFY2(error.contains(QLatin1String("truncation"), Qt::CaseInsensitive), qPrintable(error));
    }
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 0);
    db.Exec(
        QStringLiteral("UPDATE CLIENTI SET INDIRIZZO = %1 WHERE CODICE = 'C051'").arg(QuotedStr(address51.left(50))));
    db.Exec(copy.arg(QStringLiteral("2"), QuotedStr(QStringLiteral("C051"))));
    QCOMPARE(db.Scalar(QStringLiteral("SELECT CLI_INDIRIZZO FROM FATT_VEND")).toString(), address51.left(50));
}

void TestAggiornaDatabase::costOfLinesFromArticlesAndServices()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), 15);
    db.Exec(QStringLiteral("INSERT INTO ANA_MAGA VALUES(0, 'A001', 'Vite', 0, 0, 1, 1, 5.5, 1, 1)"));
    db.Exec(QStringLiteral("INSERT INTO ANA_MAGA VALUES(0, 'X001', 'Dado', 0, 0, 1, 1, 9, 1, 1)"));
    db.Exec(QStringLiteral("INSERT INTO SERVIZI VALUES(0, 'S001', 'Consulenza', 1, 50, 7.25, 1, 2)"));
    db.Exec(QStringLiteral("INSERT INTO SERVIZI VALUES(0, 'X001', 'Montaggio', 1, 50, 3, 1, 2)"));
    const QString line =
        QStringLiteral("INSERT INTO FATT_VEND_DETT (IDFATT_VEND_DETT, IDFATT_VEND, CODICE, TIPO_RIGA, COSTO) "
                       "VALUES (0, 1, %1, %2, %3)");
    const QList<QStringList> lines = {{"A001", "Articolo", "NULL"},   {"S001", "Servizio", "NULL"},
                                      {"Z999", "Articolo", "1"},      {"A001", "Testo", "NULL"},
                                      {"X001", "Servizio", "NULL"},   {"X001", "Articolo", "NULL"},
                                      {"A001", "Non imponibile", "4"}};
    for (const QStringList &l : lines)
        db.Exec(line.arg(QuotedStr(l.at(0)), QuotedStr(l.at(1)), l.at(2)));

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(db.Rows(QStringLiteral("SELECT CODICE, TIPO_RIGA, CAST(COSTO AS VARCHAR(20)) FROM FATT_VEND_DETT "
                                    "ORDER BY IDFATT_VEND_DETT")),
             QStringList({QStringLiteral("A001|Articolo|5.50"), QStringLiteral("S001|Servizio|7.25"),
                          QStringLiteral("Z999|Articolo|<null>"), QStringLiteral("A001|Testo|<null>"),
                          QStringLiteral("X001|Servizio|3.00"), QStringLiteral("X001|Articolo|9.00"),
                          QStringLiteral("A001|Non imponibile|4.00")}));
}

void TestAggiornaDatabase::flagColumnsFilledOnExistingRows()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), 21);
    db.Exec(
        QStringLiteral("INSERT INTO FATT_VEND (IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, "
                       "CLI_PARTITAIVA, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, "
                       "TOTALE_DOCUMENTO, FC_ABILITATO) VALUES (0, 1, '2020-02-03', 2020, 'C001', 'Rossi Srl', "
                       "'01234567890', 1, 'Rimessa diretta', 'True', 100, 22, 122, 'False')"));
    InsertFirstCreditNote(db);

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(db.Rows(QStringLiteral("SELECT NUMERO, CLI_PARTITAIVA, PAGATO, NOTIFICATO, IVA_ESENTE FROM FATT_VEND")),
             QStringList({QStringLiteral("1|01234567890|True|False|False")}));
    QCOMPARE(db.Rows(QStringLiteral("SELECT NUMERO, NOTIFICATO FROM NOTE_ACCREDITO")),
             QStringList({QStringLiteral("1|False")}));
}

void TestAggiornaDatabase::eInvoiceColumnsFilledOnExistingRows()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), IndexStep);
    QCOMPARE(Version(db, QStringLiteral("CLIENTI")), QStringLiteral("1.3.0"));
    QCOMPARE(Version(db, QStringLiteral("ALIQUOTE_IVA")), QStringLiteral("1.0.0"));
    db.Exec(QStringLiteral("INSERT INTO CLIENTI (IDCLIENTE, CODICE, RAGIONESOCIALE, PARTITAIVA) "
                           "VALUES (0, 'C001', 'Rossi Srl', 'IT01234567890')"));
    db.Exec(QStringLiteral("INSERT INTO ALIQUOTE_IVA VALUES(0, '10', 'Aliquota ridotta', 10)"));

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(Version(db, QStringLiteral("CLIENTI")), QStringLiteral("1.4.0"));
    QCOMPARE(Version(db, QStringLiteral("ALIQUOTE_IVA")), QStringLiteral("1.1.0"));
    QCOMPARE(db.Rows(QStringLiteral("SELECT CODICE, RAGIONESOCIALE, PARTITAIVA, '[' || CODICE_DESTINATARIO || ']', "
                                    "'[' || PEC || ']', TIPO_SOGGETTO, '[' || NOME || ']', '[' || COGNOME || ']' "
                                    "FROM CLIENTI")),
             QStringList({QStringLiteral("C001|Rossi Srl|IT01234567890|[]|[]|A|[]|[]")}));
    QCOMPARE(db.Rows(QStringLiteral("SELECT CODICE, DESCRIZIONE, CAST(ALIQUOTA AS VARCHAR(20)), '[' || NATURA || ']', "
                                    "'[' || RIFERIMENTO_NORMATIVO || ']' FROM ALIQUOTE_IVA ORDER BY CODICE")),
             QStringList(
                 {QStringLiteral("10|Aliquota ridotta|10.00|[]|[]"), QStringLiteral("20|Aliquota standard|20.00|[]|[]"),
                  QStringLiteral("N0|Aliquota esente|0.00|[]|[]"), QStringLiteral("N1|Aliquota esclusa|0.00|[]|[]")}));
    const QList<QPair<const char *, int>> clienti = {{"CODICE_DESTINATARIO", 7},
                                                     {"PEC", 256},
                                                     {"TIPO_SOGGETTO", 2},
                                                     {"NOME", 60},
                                                     {"COGNOME", 60}};
    for (const auto &[column, length] : clienti)
        QCOMPARE(ColumnLength(db, QStringLiteral("CLIENTI"), QString::fromLatin1(column)), length);
    QCOMPARE(ColumnLength(db, QStringLiteral("ALIQUOTE_IVA"), QStringLiteral("NATURA")), 4);
    QCOMPARE(ColumnLength(db, QStringLiteral("ALIQUOTE_IVA"), QStringLiteral("RIFERIMENTO_NORMATIVO")), 100);
    QCOMPARE(SchemaMetadata(db), m_finalMetadata);
}

void TestAggiornaDatabase::eInvoiceColumnsAreRequired()
{
    const QList<QPair<const char *, const char *>> columns = {{"CLIENTI", "CODICE_DESTINATARIO"},
                                                              {"CLIENTI", "PEC"},
                                                              {"CLIENTI", "TIPO_SOGGETTO"},
                                                              {"CLIENTI", "NOME"},
                                                              {"CLIENTI", "COGNOME"},
                                                              {"ALIQUOTE_IVA", "NATURA"},
                                                              {"ALIQUOTE_IVA", "RIFERIMENTO_NORMATIVO"}};
    for (const auto &[table, column] : columns) {
        const QString flag = m_upgraded
                                 ->Scalar(QStringLiteral("SELECT COALESCE(RDB$NULL_FLAG, 0) FROM RDB$RELATION_FIELDS "
                                                         "WHERE RDB$RELATION_NAME = '%1' AND RDB$FIELD_NAME = '%2'")
                                              .arg(QString::fromLatin1(table), QString::fromLatin1(column)))
                                 .toString();
        QVERIFY2(flag == QLatin1String("1"), column);
    }
}

void TestAggiornaDatabase::producedFileColumnsAndProgressive()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), AllSteps - 6);
    db.Exec(QStringLiteral("INSERT INTO NOTE_ACCREDITO (IDNOTA_ACCREDITO, NUMERO, DATA, ANNO, CLI_CODICE, "
                           "CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, "
                           "TOTALE_IMPOSTA, TOTALE_DOCUMENTO, NOTIFICATO) "
                           "VALUES (0, 1, '2026-03-01', 2026, 'C001', 'Rossi Srl', 1, 'Contanti', 'False', 0, 0, 0, "
                           "'False')"));

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(Version(db, QStringLiteral("FATT_VEND")), QStringLiteral("1.6.0"));
    QCOMPARE(Version(db, QStringLiteral("NOTE_ACCREDITO")), QStringLiteral("1.4.0"));
    QCOMPARE(Version(db, QStringLiteral("FATTURAPA")), QStringLiteral("1.0.0"));
    for (const char *table : {"FATT_VEND", "NOTE_ACCREDITO"}) {
        QCOMPARE(ColumnLength(db, QString::fromLatin1(table), QStringLiteral("FPA_NOME_FILE")), 30);
        QCOMPARE(ColumnLength(db, QString::fromLatin1(table), QStringLiteral("FPA_SBLOCCATA_DA")), 50);
    }
    // Nothing was produced from the documents already there.
    QCOMPARE(db.Rows(
                 QStringLiteral("SELECT NUMERO, COALESCE(FPA_NOME_FILE, '-'), COALESCE(FPA_PROGRESSIVO, -1), "
                                "COALESCE(CAST(FPA_PRODOTTA AS VARCHAR(30)), '-'), COALESCE(FPA_SBLOCCATA_DA, '-'), "
                                "COALESCE(CAST(FPA_SBLOCCATA_IL AS VARCHAR(30)), '-') FROM NOTE_ACCREDITO")),
             QStringList({QStringLiteral("1|-|-1|-|-|-")}));
    // The progressive of the files starts at 1 and every call takes a new one.
    const QString prossimo = QStringLiteral("SELECT NEXT VALUE FOR GEN_FPA_PROGRESSIVO FROM RDB$DATABASE");
    QCOMPARE(db.Scalar(prossimo).toInt(), 1);
    QCOMPARE(db.Scalar(prossimo).toInt(), 2);
    QCOMPARE(SchemaMetadata(db), m_finalMetadata);
}

// An existing credit note refers to no invoice; the invoices' delivery notes
// have their own table, key and generator.
void TestAggiornaDatabase::invoiceReferencesOnExistingRows()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), AllSteps - 3);
    QCOMPARE(Version(db, QStringLiteral("NOTE_ACCREDITO")), QStringLiteral("1.3.0"));
    QVERIFY(!Q3TableExists(db.Db(), QStringLiteral("FATT_VEND_DDT")));
    InsertFirstCreditNote(db);

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(Version(db, QStringLiteral("NOTE_ACCREDITO")), QStringLiteral("1.4.0"));
    QCOMPARE(Version(db, QStringLiteral("FATT_VEND_DDT")), QStringLiteral("1.1.0"));
    QCOMPARE(db.Rows(QStringLiteral("SELECT NUMERO, FATT_IDFATT_VEND, FATT_NUMERO, FATT_DATA FROM NOTE_ACCREDITO")),
             QStringList({QStringLiteral("1|<null>|<null>|<null>")}));
    db.Exec(QStringLiteral("INSERT INTO FATT_VEND_DDT (IDFATT_VEND, IDDDT_SCARICO, NUMERO, DATA) "
                           "VALUES (5, NULL, '12/B', '2020-02-01')"));
    QCOMPARE(db.Rows(QStringLiteral("SELECT IDFATT_VEND_DDT, IDFATT_VEND, IDDDT_SCARICO, NUMERO, DATA "
                                    "FROM FATT_VEND_DDT")),
             QStringList({QStringLiteral("1|5|<null>|12/B|2020-02-01")}));
    QCOMPARE(ColumnLength(db, QStringLiteral("FATT_VEND_DDT"), QStringLiteral("NUMERO")), 20);
    QCOMPARE(SchemaMetadata(db), m_finalMetadata);
}

void TestAggiornaDatabase::failedStepRollsBackWholeStep()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), 19);
    // The seventh of step 20's nine columns is already there.
    db.Exec(QStringLiteral("ALTER TABLE CLIENTI ADD COORDBAN_SWIFT VARCHAR(50)"));

    TQ3RecordingResponder boxes;
    TStatementRecorder recorder;
    AggiornaDatabase(module.Db());
    VerifyOneFailureBox(boxes, TQ3MsgIcon::None);
    QCOMPARE(Version(db, QStringLiteral("CLIENTI")), QStringLiteral("1.0.0"));
    for (const char *column : {"COORDBAN_PAESE", "COORDBAN_CIN_EUR", "COORDBAN_CIN", "COORDBAN_ABI", "COORDBAN_CAB",
                               "COORDBAN_CONTO", "COORDBAN_BANCA", "COORDBAN_AGENZIA"})
        QVERIFY2(!ColumnExists(db, QStringLiteral("CLIENTI"), QString::fromLatin1(column)), column);
    // Later CLIENTI steps no longer match; the other keys still reach their end.
    QCOMPARE(ColumnLength(db, QStringLiteral("CLIENTI"), QStringLiteral("INDIRIZZO")), 50);
    QCOMPARE(ColumnLength(db, QStringLiteral("CLIENTI"), QStringLiteral("PARTITAIVA")), 11);
    QCOMPARE(Version(db, QStringLiteral("FATT_VEND")), QStringLiteral("1.6.0"));
    QCOMPARE(Version(db, QStringLiteral("KRV_ABILITAZIONI")), QStringLiteral("1.0.1"));
    // Nothing is tried twice in one run.
    QCOMPARE(recorder.StepStatements().count(QStringLiteral("ALTER TABLE CLIENTI ADD COORDBAN_PAESE VARCHAR(2)")), 1);
}

void TestAggiornaDatabase::failedLaterStepShowsErrorIcon()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), 20);
    db.Exec(QStringLiteral("ALTER TABLE CLIENTI DROP INDIRIZZO"));

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    VerifyOneFailureBox(boxes, TQ3MsgIcon::Error);
    QCOMPARE(Version(db, QStringLiteral("CLIENTI")), QStringLiteral("1.1.0"));
    QCOMPARE(ColumnLength(db, QStringLiteral("CLIENTI"), QStringLiteral("PARTITAIVA")), 11);
    QCOMPARE(Version(db, QStringLiteral("FATT_VEND")), QStringLiteral("1.6.0"));
    QCOMPARE(Version(db, QStringLiteral("NOTE_ACCREDITO")), QStringLiteral("1.4.0"));

    // The failed step is tried again at the next start.
    db.Exec(QStringLiteral("ALTER TABLE CLIENTI ADD INDIRIZZO VARCHAR(50)"));
    boxes.Clear();
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(Version(db, QStringLiteral("CLIENTI")), QStringLiteral("1.4.0"));
    QCOMPARE(ColumnLength(db, QStringLiteral("CLIENTI"), QStringLiteral("INDIRIZZO")), 100);
    QCOMPARE(ColumnLength(db, QStringLiteral("CLIENTI"), QStringLiteral("PARTITAIVA")), 13);
}

void TestAggiornaDatabase::failedFlagStepSkipsLaterStepsOfItsKey()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunFirstSteps(db.Db(), 21);
    db.Exec(QStringLiteral("ALTER TABLE FATT_VEND ADD NOTIFICATO VARCHAR(5)"));

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    VerifyOneFailureBox(boxes, TQ3MsgIcon::Error);
    QCOMPARE(Version(db, QStringLiteral("FATT_VEND")), QStringLiteral("1.1.0"));
    QCOMPARE(ColumnLength(db, QStringLiteral("FATT_VEND"), QStringLiteral("CLI_PARTITAIVA")), 11);
    QVERIFY(!ColumnExists(db, QStringLiteral("FATT_VEND"), QStringLiteral("IVA_ESENTE")));
    QCOMPARE(Version(db, QStringLiteral("NOTE_ACCREDITO")), QStringLiteral("1.4.0"));
}

void TestAggiornaDatabase::stepDoneMeanwhileByAnotherWorkstationIsSkipped()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunAllStepsBut(db.Db(), IndexStep);

    // Between the run's first reading and the index step, another workstation records that step.
    TQ3RecordingResponder boxes;
    QStringList statements;
    int versionQueries = 0;
    SetAggiornaDatabaseObserver([&](const QString &sql) {
        statements << sql;
        if (sql == TStatementRecorder::VersionQuery() && ++versionQueries == 2)
            db.Exec(QStringLiteral("INSERT INTO TABLE_VERSION (TABELLA, VERSIONE) VALUES ('KRV_INDICI', '1.0.0')"));
    });
    AggiornaDatabase(module.Db());
    SetAggiornaDatabaseObserver({});
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(statements, QStringList(2, TStatementRecorder::VersionQuery()));
    QCOMPARE(IndexNames(db), QStringList());
}

void TestAggiornaDatabase::indexStepComposesItsStatements()
{
    const TQ3SchemaStep step = KRVSchemaSteps().at(IndexStep - 1);
    QCOMPARE(step.Key, QStringLiteral("KRV_INDICI"));
    QVERIFY(step.Seeds.isEmpty());
    QCOMPARE(
        step.Statements,
        QStringList(
            {QStringLiteral("CREATE INDEX IX_FATT_VEND_DETT_IDFATT_VEND ON FATT_VEND_DETT (IDFATT_VEND)"),
             QStringLiteral("CREATE INDEX IX_NOTE_ACCREDITO_DETT_IDNOTA ON NOTE_ACCREDITO_DETT (IDNOTA_ACCREDITO)"),
             QStringLiteral("CREATE DESCENDING INDEX IX_FATT_VEND_ANNO_NUMERO ON FATT_VEND (ANNO, NUMERO)"),
             QStringLiteral("CREATE DESCENDING INDEX IX_NOTE_ACCREDITO_ANNO_NUMERO ON NOTE_ACCREDITO (ANNO, NUMERO)"),
             QStringLiteral("CREATE INDEX IX_FATT_VEND_CLI_CODICE_ANNO ON FATT_VEND (CLI_CODICE, ANNO)"),
             QStringLiteral("CREATE INDEX IX_FATT_VEND_DETT_CODICE ON FATT_VEND_DETT (CODICE)"),
             QStringLiteral("CREATE INDEX IX_FATT_VEND_DATA ON FATT_VEND (DATA)"),
             QStringLiteral("CREATE INDEX IX_CATEGORIE_ANA_MAGA_IDPADRE ON CATEGORIE_ANA_MAGA (IDPADRE)"),
             QStringLiteral("CREATE INDEX IX_CATEGORIE_SERVIZI_IDPADRE ON CATEGORIE_SERVIZI (IDPADRE)"),
             QStringLiteral("CREATE INDEX IX_ANA_MAGA_IDCATEGORIA ON ANA_MAGA (IDCATEGORIA_ANA_MAGA)"),
             QStringLiteral("CREATE INDEX IX_SERVIZI_IDCATEGORIA ON SERVIZI (IDCATEGORIA_SERVIZI)"),
             QStringLiteral("CREATE INDEX IX_ANA_MAGA_UPPER_CODICE ON ANA_MAGA COMPUTED BY (UPPER(CODICE))"),
             QStringLiteral("CREATE INDEX IX_CLIENTI_UPPER_RAGIONESOCIALE ON CLIENTI COMPUTED BY "
                            "(UPPER(RAGIONESOCIALE))")}));
}

void TestAggiornaDatabase::indexStepRunsAfterTheRecordedHistory()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunAllStepsBut(db.Db(), IndexStep);
    QCOMPARE(IndexNames(db), QStringList());
    QStringList recorded = FinalModuleVersions();
    recorded.removeOne(QStringLiteral("KRV_INDICI|1.0.0"));
    QCOMPARE(ModuleVersionRows(db), recorded);

    TQ3RecordingResponder boxes;
    TStatementRecorder recorder;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(recorder.StepStatements(), StatementsOfSteps({IndexStep}));
    // The recorded keys keep their versions; the indexes have a key of their own.
    QCOMPARE(ModuleVersionRows(db), FinalModuleVersions());
    QCOMPARE(IndexNames(db).size(), 13);
    QCOMPARE(SchemaMetadata(db), m_finalMetadata);
}

void TestAggiornaDatabase::failedIndexStepIsRolledBackAndTriedAgain()
{
    TKRVDaAggiornare module;
    const TQ3TestDatabase &db = module.Database;
    RunAllStepsBut(db.Db(), IndexStep);
    // The last index's name is taken by another index.
    db.Exec(QStringLiteral("CREATE INDEX IX_CLIENTI_UPPER_RAGIONESOCIALE ON CLIENTI (CITTA)"));

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    VerifyOneFailureBox(boxes, TQ3MsgIcon::Error);
    QVERIFY(db.Scalar(QStringLiteral("SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA = 'KRV_INDICI'")).isNull());
    QCOMPARE(IndexNames(db), QStringList({QStringLiteral("IX_CLIENTI_UPPER_RAGIONESOCIALE")}));

    db.Exec(QStringLiteral("DROP INDEX IX_CLIENTI_UPPER_RAGIONESOCIALE"));
    boxes.Clear();
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(Version(db, QStringLiteral("KRV_INDICI")), QStringLiteral("1.0.0"));
    QCOMPARE(SchemaMetadata(db), m_finalMetadata);
}

void TestAggiornaDatabase::upgradeFromEveryState_data()
{
    QTest::addColumn<int>("done");
    for (int done = 0; done <= AllSteps; ++done)
        QTest::newRow(qPrintable(QStringLiteral("after %1 steps").arg(done))) << done;
}

void TestAggiornaDatabase::upgradeFromEveryState()
{
    QFETCH(int, done);
    TKRVDaAggiornare module;
    TQ3RecordingResponder boxes;
    RunFirstSteps(module.Database.Db(), done);
    QList<int> remaining;
    for (int step = done + 1; step <= AllSteps; ++step)
        remaining << step;

    TStatementRecorder recorder;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(recorder.StepStatements(), StatementsOfSteps(remaining));
    QCOMPARE(SchemaMetadata(module.Database), m_finalMetadata);
    QCOMPARE(ModuleData(module.Database), m_finalData);
}

void TestAggiornaDatabase::handWrittenStates_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("done");
    QTest::newRow("first release") << QStringList({QStringLiteral("schema_state13.sql")}) << 12;
    QTest::newRow("bank coordinates") << QStringList(
        {QStringLiteral("schema_state13.sql"), QStringLiteral("schema_state21.sql")})
                                      << 20;
    QTest::newRow("wider VAT numbers") << QStringList({QStringLiteral("schema_state13.sql"),
                                                       QStringLiteral("schema_state21.sql"),
                                                       QStringLiteral("schema_state28.sql")})
                                       << 27;
}

void TestAggiornaDatabase::handWrittenStates()
{
    QFETCH(QStringList, files);
    QFETCH(int, done);
    TKRVDaAggiornare module;
    for (const QString &file : files)
        LoadSchemaFile(module.Database, file);

    TQ3TestDatabase byRunner;
    RunFirstSteps(byRunner.Db(), done);
    QCOMPARE(SchemaMetadata(module.Database), SchemaMetadata(byRunner));
    QCOMPARE(ModuleData(module.Database), ModuleData(byRunner));

    TQ3RecordingResponder boxes;
    AggiornaDatabase(module.Db());
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(SchemaMetadata(module.Database), m_finalMetadata);
    QCOMPARE(ModuleData(module.Database), m_finalData);
}

QTEST_GUILESS_MAIN(TestAggiornaDatabase)
#include "tst_aggiornadatabase.moc"
