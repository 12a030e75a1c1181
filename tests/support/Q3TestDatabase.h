#pragma once

#include "Q3Connection.h"

#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QVariant>

#include <memory>

// A new database in a temporary folder (or on the test server when one is
// configured and asked for), with the host's tables, and a connection to it.
class TQ3TestDatabase
{
public:
    enum class Where { Embedded, Server };
    // What the new database holds: nothing yet, the host's tables, or the
    // host's tables and the whole schema upgrade of the "Documenti" module.
    enum class Schema { None, Host, Upgraded };
    explicit TQ3TestDatabase(Where where = Where::Embedded, bool hostSchema = true);
    // An upgraded database is a copy of the template the build makes once
    // (tests/template): a file, so it lives embedded, never on the server.
    TQ3TestDatabase(Where where, Schema schema);
    ~TQ3TestDatabase();

    // Whether the environment names a Firebird server for the tests
    // (Q3_TEST_SERVER="host/port", Q3_TEST_SERVER_USER, Q3_TEST_SERVER_PASSWORD).
    static bool ServerConfigured();
    // Whether the run must have the server (Q3_TEST_SERVER_REQUIRED, set by
    // scripts/test.sh): a missing one then fails the suite instead of skipping it.
    static bool ServerRequired();

    TQ3DatabaseTarget Target() const { return m_target; }
    QString ConnectionString() const { return m_target.ConnectionString(); }
    TQ3Connection *Connection() const { return m_connection.get(); }
    QSqlDatabase Db() const { return m_connection->Database(); }
    QString Folder() const { return m_dir.path(); }

    void Exec(const QString &sql) const;
    QVariant Scalar(const QString &sql) const;
    // The rows of a query, each as its columns' texts joined by "|".
    QStringList Rows(const QString &sql) const;
    // Runs the statements of a fixture file of tests/fixtures, separated by ";" at line ends.
    void LoadFixture(const QString &fileName) const;
    // Another workstation runs the insert into the table, through an
    // attachment of its own and committed at once, at the very moment the next
    // insert into the table begins, before that row is given its key: the
    // other workstation takes the key the generator would have given next.
    void InsertOfAnotherWorkstationAtNextInsert(const QString &table, const QString &insert) const;

private:
    QTemporaryDir m_dir;
    TQ3DatabaseTarget m_target;
    std::unique_ptr<TQ3Connection> m_connection;
};

// The template every upgraded test database is copied from, made first when
// it is missing or older than its maker; answers its path.
QString Q3TestTemplateDatabase();

// For the init() of a suite that needs the test server: without one the test
// fails when the server is required, and is skipped, visibly, otherwise.
#define Q3_REQUIRE_TEST_SERVER()                                                                                       \
    do {                                                                                                               \
        if (!TQ3TestDatabase::ServerConfigured()) {                                                                    \
            if (TQ3TestDatabase::ServerRequired())                                                                     \
                QFAIL("No Firebird server configured (Q3_TEST_SERVER), but Q3_TEST_SERVER_REQUIRED is set.");          \
            QSKIP("No Firebird server configured (Q3_TEST_SERVER).");                                                  \
        }                                                                                                              \
    } while (false)

// Writes a text to a file of the folder and answers its path.
QString WriteQ3TestFile(const QString &folder, const QString &name, const QString &text);
