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
    explicit TQ3TestDatabase(Where where = Where::Embedded, bool hostSchema = true);
    ~TQ3TestDatabase();

    // Whether the environment names a Firebird server for the tests
    // (Q3_TEST_SERVER="host/port", Q3_TEST_SERVER_USER, Q3_TEST_SERVER_PASSWORD).
    static bool ServerConfigured();

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

private:
    QTemporaryDir m_dir;
    TQ3DatabaseTarget m_target;
    std::unique_ptr<TQ3Connection> m_connection;
};

// Writes a text to a file of the folder and answers its path.
QString WriteQ3TestFile(const QString &folder, const QString &name, const QString &text);
