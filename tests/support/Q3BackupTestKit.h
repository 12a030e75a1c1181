#pragma once

#include "Q3Connection.h"

#include <QMap>
#include <QString>

// What a database holds, table by table: each user table's row count and a
// checksum over every column of every row (in no particular order), and each
// generator's value. Two databases with the same content give the same map.
QMap<QString, QString> Q3TableChecksums(const TQ3DatabaseTarget &target);

// Adds rows of every kind of value to a database with the host's tables: a
// table of texts (accents included), numbers, dates, times, NULLs and text
// and binary blobs, the firm's logo and a generator moved on.
void FillQ3BackupTestData(const TQ3DatabaseTarget &target, int rows);

// Restores the backup next to the running database; answers the message the
// restore failed with, empty when it did not fail.
QString Q3RestoreFailure(const TQ3DatabaseTarget &running, const QString &backup, const QString &newFile);
