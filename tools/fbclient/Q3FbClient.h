#pragma once

// A thin layer over the Firebird client library itself, without Qt's driver:
// the firm generator's bulk inserts and the benchmarks' raw reference timings.
#include "Q3Connection.h"

#include <QByteArray>
#include <QList>

#include <memory>

class TQ3FbStatement;

// One attachment to a database and at most one transaction on it at a time.
// Every failure raises EQ3Exception with Firebird's own message.
class TQ3FbClient
{
public:
    explicit TQ3FbClient(const TQ3DatabaseTarget &target);
    ~TQ3FbClient();
    TQ3FbClient(const TQ3FbClient &) = delete;
    TQ3FbClient &operator=(const TQ3FbClient &) = delete;

    // Read-committed, waiting on locks. A bulk transaction keeps no undo log:
    // it writes many rows faster, and a failure inside it is undone only by
    // rolling the whole transaction back.
    void Begin(bool bulk = false);
    void Commit();
    void Rollback();
    bool InTransaction() const;

    // A statement without parameters or rows, in the open transaction.
    void Execute(const QByteArray &sql);

private:
    friend class TQ3FbStatement;
    struct TPrivate;
    std::unique_ptr<TPrivate> d;
};

// A prepared statement. Every parameter is sent as text and converted by the
// server to the column's type ("12.50", "2024-03-01", "7"); for a BLOB column
// write CAST(? AS VARCHAR(n)) in the statement.
class TQ3FbStatement
{
public:
    TQ3FbStatement(TQ3FbClient &client, const QByteArray &sql);
    ~TQ3FbStatement();
    TQ3FbStatement(const TQ3FbStatement &) = delete;
    TQ3FbStatement &operator=(const TQ3FbStatement &) = delete;

    int ParameterCount() const;
    void SetText(int index, const QByteArray &value);
    void SetNull(int index);

    // Runs the statement in the client's open transaction; the parameters keep
    // their values for the next run.
    void Execute();
    // Runs a query and reads every row to the end, text blobs included;
    // answers the number of rows.
    qint64 FetchAll();

private:
    struct TPrivate;
    std::unique_ptr<TPrivate> d;
};
