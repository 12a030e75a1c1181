#include "Q3Dataset.h"
#include "Q3Exception.h"
#include "Q3TestDatabase.h"

#include <QtTest>

// Writing a dataset's row back to its table.
class TestQ3Dataset : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void editedRowIsUpdated();
    void updateOfAVanishedRowFails();
    void rowThatFailsToFetchFailsTheOpen();

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
    QCOMPARE(m_database->Rows(QStringLiteral("SELECT IDPROVA, NOME FROM PROVA")), QStringList{QStringLiteral("1|Primo")});
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

QTEST_MAIN(TestQ3Dataset)
#include "tst_q3dataset.moc"
