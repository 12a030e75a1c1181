#pragma once

// The two shapes of the services' reads on the session they are given: each
// runs a query of its own, opened, read and freed within the call.
#include "Q3Sql.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>

// Runs the query and, when it is not empty, hands its first row, with its
// values, to read. Answers whether there was a row.
template <typename Read>
bool KRVReadFirstRow(const QSqlDatabase &db, const QString &sql, Read &&read)
{
    QSqlQuery dataset = OpenQuery(db, sql);
    if (!dataset.next())
        return false;
    read(static_cast<const QSqlRecord &>(dataset.record()));
    return true;
}

// Whether the count in the first column of a counting query is above 0.
inline bool KRVCountAboveZero(const QSqlDatabase &db, const QString &countSql)
{
    return QueryScalar(db, countSql).toInt() > 0;
}
