#pragma once

#include "Q3AttesaLimitata.h"
#include "Q3Global.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVariant>

// The only way a text value enters a composed SQL statement: single quotes
// around it, every inner quote doubled.
Q3_EXPORT QString QuotedStr(const QString &value);

// Runs a statement, raising EQ3Exception with the database's message on failure.
Q3_EXPORT void ExecSQL(const QSqlDatabase &db, const QString &sql);

// Opens a forward-only query, raising EQ3Exception on failure.
Q3_EXPORT QSqlQuery OpenQuery(const QSqlDatabase &db, const QString &sql);

// The first column of the first row, or an invalid variant when there is none.
Q3_EXPORT QVariant QueryScalar(const QSqlDatabase &db, const QString &sql);

// The position of a column in a query's row description (query.record()).
// Take the description once per query, never per row or per value: the
// Firebird driver builds it again, with a metadata query per column, at every
// record() and every lookup by name (value(name)).
// Raises EQ3Exception for an unknown column.
Q3_EXPORT int FieldIndex(const QSqlRecord &layout, const QString &field);

// The database's own text for a failed query or transaction. When the failure
// means that the connection is gone, the text says so first, in the user's
// words, and the failure is counted (Q3ConnectionLosses).
Q3_EXPORT QString SqlErrorText(const QSqlError &error);

// The database's own text, as the driver gives it (a failed connection attempt).
Q3_EXPORT QString SqlDatabaseText(const QSqlError &error);

// Whether a failure leaves the connection of no further use: Firebird's class
// of fatal errors (SQLCODE -902), among them a server that stopped or cannot
// be reached and a connection that broke.
Q3_EXPORT bool Q3ConnectionLost(const QSqlError &error);

// How many statements of this process failed so far because their connection
// was gone. A connection that has seen fewer checks itself at its next use.
Q3_EXPORT int Q3ConnectionLosses();

// What the user reads first when an operation found the connection gone, and
// when the connection could not be opened again at the next one.
inline constexpr char Q3MsgConnessioneInterrotta[] =
    "Connessione al database interrotta: l'operazione non è stata completata. "
    "Ripeterla quando il database sarà di nuovo raggiungibile.";
inline constexpr char Q3MsgConnessioneNonRipristinata[] =
    "Connessione al database interrotta: impossibile ristabilirla. "
    "Riprovare quando il database sarà di nuovo raggiungibile.";

// A statement prepared once and run again with each set of values of its
// parameters (its "?", in order), forward only: for the same query over many
// keys. Raises EQ3Exception on failure.
class Q3_EXPORT TQ3PreparedQuery
{
public:
    TQ3PreparedQuery(const QSqlDatabase &db, const QString &sql);

    // The statement run with these values, positioned before its first row.
    QSqlQuery &Run(const QVariantList &values);

private:
    QSqlDatabase m_db;
    QSqlQuery m_query;
};

// A transaction that rolls back unless committed. Its statements run through
// ExecSQL, TQ3PreparedQuery and TQ3Dataset wait at most Q3AttesaMassimaMs for
// another workstation's uncommitted change, unless it is opened with
// TQ3Attesa::Illimitata (work that may rightly take longer, such as the
// schema's upgrade).
class Q3_EXPORT TQ3Transaction
{
public:
    explicit TQ3Transaction(QSqlDatabase db, TQ3Attesa attesa = TQ3Attesa::Limitata);
    ~TQ3Transaction();
    TQ3Transaction(const TQ3Transaction &) = delete;
    TQ3Transaction &operator=(const TQ3Transaction &) = delete;

    void Commit();
    void Rollback();

private:
    void Chiudi();

    QSqlDatabase m_db;
    TQ3Attesa m_attesa;
    bool m_open = false;
};

// Reads that belong together (a document's header and lines) made in one
// transaction, which sees the database as it was at its start, so that
// another workstation's save cannot fall between them. When the connection
// is already inside a transaction, the reads share its view and it is left
// as it is; otherwise the guard's own transaction ends with it.
class Q3_EXPORT TQ3LetturaCoerente
{
public:
    explicit TQ3LetturaCoerente(QSqlDatabase db);
    ~TQ3LetturaCoerente();
    TQ3LetturaCoerente(const TQ3LetturaCoerente &) = delete;
    TQ3LetturaCoerente &operator=(const TQ3LetturaCoerente &) = delete;

private:
    QSqlDatabase m_db;
    bool m_propria = false;
};
