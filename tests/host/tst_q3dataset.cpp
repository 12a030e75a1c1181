#include "Q3Dataset.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"

#include <QtTest>

// Writing a dataset's row back to its table; reads that belong together.
class TestQ3Dataset : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void editedRowIsUpdated();
    void updateOfAVanishedRowFails();
    void rowThatFailsToFetchFailsTheOpen();
    void insertedRowTakesTheKeyTheTriggerAssigned();
    void appendNewLeavesTheDatasetOnTheInsertedRow();
    void failedInsertLeavesNoRowToEdit();
    void consistentReadSeesOneMomentOfTheDatabase();
    void consistentReadInsideATransactionLeavesItOpen();

private:
    void OpenRow(int id);

    std::unique_ptr<TQ3TestDatabase> m_database;
    std::unique_ptr<TQ3Dataset> m_dataset;
};

void TestQ3Dataset::init()
{
    m_database = std::make_unique<TQ3TestDatabase>(TQ3TestDatabase::Where::Embedded, false);
    m_database->Exec(QStringLiteral("CREATE TABLE PROVA (IDPROVA INTEGER NOT NULL PRIMARY KEY, NOME VARCHAR(20))"));
    m_database->Exec(QStringLiteral("INSERT INTO PROVA VALUES (1, 'Uno')"));
    m_database->Exec(QStringLiteral("CREATE GENERATOR GN_IDPROVA"));
    m_database->Exec(QStringLiteral("SET GENERATOR GN_IDPROVA TO 1"));
    m_database->Exec(QStringLiteral("CREATE TRIGGER TG_BI_PROVA FOR PROVA BEFORE INSERT AS BEGIN "
                                    "NEW.IDPROVA = GEN_ID(GN_IDPROVA, 1); END"));
    m_dataset = std::make_unique<TQ3Dataset>();
    m_dataset->SetConnection(m_database->Connection());
    m_dataset->SetSQL(QStringLiteral("SELECT * FROM PROVA WHERE IDPROVA=:IDPROVA"));
    m_dataset->SetUpdateTable(QStringLiteral("PROVA"), QStringLiteral("IDPROVA"));
}

void TestQ3Dataset::cleanup()
{
    m_dataset.reset();
    m_database.reset();
}

void TestQ3Dataset::OpenRow(int id)
{
    m_dataset->Close();
    m_dataset->SetParamValue(QStringLiteral("IDPROVA"), id);
    m_dataset->Open();
}

void TestQ3Dataset::editedRowIsUpdated()
{
    OpenRow(1);
    m_dataset->Edit();
    m_dataset->SetFieldValue(QStringLiteral("NOME"), QStringLiteral("Primo"));
    m_dataset->Post();

    QCOMPARE(m_dataset->State(), TQ3Dataset::TState::Browse);
    QCOMPARE(m_database->Rows(QStringLiteral("SELECT IDPROVA, NOME FROM PROVA")),
             QStringList{QStringLiteral("1|Primo")});
}

void TestQ3Dataset::updateOfAVanishedRowFails()
{
    OpenRow(1);
    // Another workstation deletes the row while it is shown.
    m_database->Exec(QStringLiteral("DELETE FROM PROVA WHERE IDPROVA = 1"));
    m_dataset->Edit();
    m_dataset->SetFieldValue(QStringLiteral("NOME"), QStringLiteral("Perso"));

    QVERIFY_THROWS_EXCEPTION(EQ3Exception, m_dataset->Post());
    QCOMPARE(m_dataset->State(), TQ3Dataset::TState::Edit);
    QVERIFY(m_database->Rows(QStringLiteral("SELECT IDPROVA FROM PROVA")).isEmpty());
}

// The driver ends the rows at a fetch error: the dataset must not take that
// for the end of the rows.
void TestQ3Dataset::rowThatFailsToFetchFailsTheOpen()
{
    TQ3Dataset dataset;
    dataset.SetConnection(m_database->Connection());
    dataset.SetSQL(QStringLiteral("SELECT IDPROVA, 100 / (IDPROVA - 2) AS QUOTA FROM PROVA ORDER BY IDPROVA"));
    m_database->Exec(QStringLiteral("INSERT INTO PROVA VALUES (2, 'Due')"));
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, dataset.Open());
    QVERIFY(!dataset.Active());
}

void TestQ3Dataset::insertedRowTakesTheKeyTheTriggerAssigned()
{
    OpenRow(1);
    m_database->InsertOfAnotherWorkstationAtNextInsert(QStringLiteral("PROVA"),
                                                       QStringLiteral("INSERT INTO PROVA (NOME) VALUES ('Altrui')"));
    m_dataset->Append();
    m_dataset->SetFieldValue(QStringLiteral("IDPROVA"), 2);
    m_dataset->SetFieldValue(QStringLiteral("NOME"), QStringLiteral("Nostro"));
    m_dataset->Post();

    QCOMPARE(m_database->Rows(QStringLiteral("SELECT IDPROVA, NOME FROM PROVA ORDER BY IDPROVA")),
             (QStringList{QStringLiteral("1|Uno"), QStringLiteral("2|Altrui"), QStringLiteral("3|Nostro")}));
    QCOMPARE(m_dataset->FieldValue(QStringLiteral("IDPROVA")).toInt(), 3);
    // Editing the row just inserted writes that row, not the one whose key it was given.
    m_dataset->Edit();
    m_dataset->SetFieldValue(QStringLiteral("NOME"), QStringLiteral("Ancora nostro"));
    m_dataset->Post();
    QCOMPARE(m_database->Rows(QStringLiteral("SELECT IDPROVA, NOME FROM PROVA ORDER BY IDPROVA")),
             (QStringList{QStringLiteral("1|Uno"), QStringLiteral("2|Altrui"), QStringLiteral("3|Ancora nostro")}));
}

void TestQ3Dataset::appendNewLeavesTheDatasetOnTheInsertedRow()
{
    OpenRow(1);
    m_dataset->AppendNew(QStringLiteral("IDPROVA"));
    QCOMPARE(m_dataset->State(), TQ3Dataset::TState::Insert);
    QVERIFY(m_dataset->IsEmpty());
    m_dataset->SetFieldValue(QStringLiteral("NOME"), QStringLiteral("Nuovo"));
    m_dataset->Post();
    QCOMPARE(m_dataset->RecordCount(), 1);
    QCOMPARE(m_dataset->FieldValue(QStringLiteral("IDPROVA")).toInt(), 2);

    m_dataset->Requery();
    QCOMPARE(m_dataset->RecordCount(), 1);
    QCOMPARE(m_dataset->FieldValue(QStringLiteral("NOME")).toString(), QStringLiteral("Nuovo"));
}

void TestQ3Dataset::failedInsertLeavesNoRowToEdit()
{
    OpenRow(1);
    m_dataset->AppendNew(QStringLiteral("IDPROVA"));
    m_dataset->SetFieldValue(QStringLiteral("NOME"), QString(30, QLatin1Char('X')));
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, m_dataset->Post());
    m_dataset->Cancel();
    QVERIFY(m_dataset->IsEmpty());
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, m_dataset->Edit());
    m_dataset->Requery();
    QVERIFY(m_dataset->IsEmpty());
}

// Another workstation's save between two reads of one consistent read is
// not seen by the second; the next reads see it.
void TestQ3Dataset::consistentReadSeesOneMomentOfTheDatabase()
{
    TQ3Connection altra;
    altra.SetConnectionString(m_database->ConnectionString());
    altra.Open();
    {
        const TQ3LetturaCoerente lettura(m_database->Db());
        OpenRow(1);
        QCOMPARE(m_dataset->FieldValue(QStringLiteral("NOME")).toString(), QStringLiteral("Uno"));
        {
            TQ3Transaction salvataggio(altra.Database());
            ExecSQL(altra.Database(), QStringLiteral("UPDATE PROVA SET NOME = 'Due' WHERE IDPROVA = 1"));
            salvataggio.Commit();
        }
        OpenRow(1);
        QCOMPARE(m_dataset->FieldValue(QStringLiteral("NOME")).toString(), QStringLiteral("Uno"));
    }
    OpenRow(1);
    QCOMPARE(m_dataset->FieldValue(QStringLiteral("NOME")).toString(), QStringLiteral("Due"));
}

// Inside a transaction the reads see its own changes, and the transaction
// stays open: rolled back, its change is gone.
void TestQ3Dataset::consistentReadInsideATransactionLeavesItOpen()
{
    TQ3Transaction transazione(m_database->Db());
    ExecSQL(m_database->Db(), QStringLiteral("UPDATE PROVA SET NOME = 'Tre' WHERE IDPROVA = 1"));
    {
        const TQ3LetturaCoerente lettura(m_database->Db());
        OpenRow(1);
        QCOMPARE(m_dataset->FieldValue(QStringLiteral("NOME")).toString(), QStringLiteral("Tre"));
    }
    transazione.Rollback();
    OpenRow(1);
    QCOMPARE(m_dataset->FieldValue(QStringLiteral("NOME")).toString(), QStringLiteral("Uno"));
}

QTEST_GUILESS_MAIN(TestQ3Dataset)
#include "tst_q3dataset.moc"
