#include "Q3BackupTestKit.h"

#include "Q3Backup.h"
#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

namespace {

QStringList Names(const QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query = OpenQuery(db, sql);
    QStringList names;
    while (query.next())
        names << query.value(0).toString().trimmed();
    return names;
}

QByteArray TableChecksum(const QSqlDatabase &db, const QString &table, int *rows)
{
    QSqlQuery query = OpenQuery(db, QStringLiteral("SELECT * FROM ") + table);
    const int columns = query.record().count();
    QList<QByteArray> hashes;
    while (query.next()) {
        QCryptographicHash row(QCryptographicHash::Sha256);
        for (int i = 0; i < columns; ++i) {
            const QVariant value = query.value(i);
            const QByteArray bytes = query.isNull(i)                           ? QByteArrayLiteral("<null>")
                                     : value.typeId() == QMetaType::QByteArray ? value.toByteArray()
                                                                               : value.toString().toUtf8();
            row.addData(QByteArray::number(bytes.size()) + ':' + bytes);
        }
        hashes << row.result();
    }
    std::sort(hashes.begin(), hashes.end());
    *rows = int(hashes.size());
    QCryptographicHash all(QCryptographicHash::Sha256);
    for (const QByteArray &hash : hashes)
        all.addData(hash);
    return all.result().toHex();
}

} // namespace

QMap<QString, QString> Q3TableChecksums(const TQ3DatabaseTarget &target)
{
    TQ3Connection connection;
    connection.SetConnectionString(target.ConnectionString());
    connection.Open();
    const QSqlDatabase db = connection.Database();
    QMap<QString, QString> sums;
    const QStringList tables =
        Names(db, QStringLiteral("SELECT RDB$RELATION_NAME FROM RDB$RELATIONS "
                                 "WHERE COALESCE(RDB$SYSTEM_FLAG, 0) = 0 AND RDB$VIEW_BLR IS NULL"));
    for (const QString &table : tables) {
        int rows = 0;
        const QByteArray sum = TableChecksum(db, table, &rows);
        sums.insert(table, QStringLiteral("%1 righe, %2").arg(rows).arg(QString::fromLatin1(sum)));
    }
    const QStringList generators =
        Names(db,
              QStringLiteral("SELECT RDB$GENERATOR_NAME FROM RDB$GENERATORS WHERE COALESCE(RDB$SYSTEM_FLAG, 0) = 0"));
    for (const QString &generator : generators)
        sums.insert(QStringLiteral("GEN ") + generator,
                    QueryScalar(db, QStringLiteral("SELECT GEN_ID(%1, 0) FROM RDB$DATABASE").arg(generator))
                        .toString());
    return sums;
}

void FillQ3BackupTestData(const TQ3DatabaseTarget &target, int rows)
{
    TQ3Connection connection;
    connection.SetConnectionString(target.ConnectionString());
    connection.Open();
    const QSqlDatabase db = connection.Database();
    ExecSQL(db, QStringLiteral("CREATE TABLE PROVA_BACKUP (ID INTEGER NOT NULL PRIMARY KEY, TESTO VARCHAR(100), "
                               "IMPORTO DECIMAL(13,2), QUANTITA DOUBLE PRECISION, GRANDE BIGINT, DATA DATE, "
                               "MOMENTO TIMESTAMP, ORA TIME, NOTE BLOB SUB_TYPE 1, DATI BLOB SUB_TYPE 0)"));
    ExecSQL(db, QStringLiteral("CREATE GENERATOR GN_PROVA_BACKUP"));
    TQ3Transaction transaction(db);
    QSqlQuery insert(db);
    insert.prepare(QStringLiteral("INSERT INTO PROVA_BACKUP VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    for (int i = 0; i < rows; ++i) {
        const bool nulls = i % 7 == 3;
        insert.addBindValue(i);
        insert.addBindValue(nulls ? QVariant() : QStringLiteral("Città n. %1 'è' «àù»").arg(i));
        insert.addBindValue(nulls ? QVariant() : QVariant(i * 12.34 - 500));
        insert.addBindValue(nulls ? QVariant() : QVariant(i / 3.0));
        insert.addBindValue(nulls ? QVariant() : QVariant(qint64(i) * 1000000007LL));
        insert.addBindValue(nulls ? QVariant() : QVariant(QDate(2026, 1, 1).addDays(i)));
        insert.addBindValue(nulls ? QVariant() : QVariant(QDateTime(QDate(2025, 6, 30), QTime(23, 59, 58)).addSecs(i)));
        insert.addBindValue(nulls ? QVariant() : QVariant(QTime(8, 0).addSecs(i * 61)));
        insert.addBindValue(nulls ? QVariant() : QVariant(QStringLiteral("Nota lunga ").repeated(i % 50 + 1)));
        QByteArray bytes;
        for (int b = 0; b < i % 300; ++b)
            bytes.append(char((b * 31 + i) & 0xFF));
        insert.addBindValue(nulls ? QVariant() : QVariant(bytes));
        if (!insert.exec())
            throw EQ3Exception(SqlErrorText(insert.lastError()));
    }
    QSqlQuery logo(db);
    logo.prepare(QStringLiteral("UPDATE AZIENDA SET RAGIONESOCIALE = ?, LOGO = ?"));
    logo.addBindValue(QStringLiteral("Ditta Prova S.r.l."));
    logo.addBindValue(QByteArray(5000, '\x89'));
    if (!logo.exec())
        throw EQ3Exception(SqlErrorText(logo.lastError()));
    ExecSQL(db, QStringLiteral("SET GENERATOR GN_PROVA_BACKUP TO 4242"));
    transaction.Commit();
}

QString Q3RestoreFailure(const TQ3DatabaseTarget &running, const QString &backup, const QString &newFile)
{
    try {
        Q3RestoreDatabase(running, backup, newFile);
    } catch (const EQ3Exception &e) {
        return e.Message();
    }
    return {};
}
