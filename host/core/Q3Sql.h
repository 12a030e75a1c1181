#pragma once

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

// The database's own text for a failed query or connection.
Q3_EXPORT QString SqlErrorText(const QSqlError &error);

// A transaction that rolls back unless committed.
class Q3_EXPORT TQ3Transaction
{
public:
    explicit TQ3Transaction(QSqlDatabase db);
    ~TQ3Transaction();
    TQ3Transaction(const TQ3Transaction &) = delete;
    TQ3Transaction &operator=(const TQ3Transaction &) = delete;

    void Commit();
    void Rollback();

private:
    QSqlDatabase m_db;
    bool m_open = false;
};
