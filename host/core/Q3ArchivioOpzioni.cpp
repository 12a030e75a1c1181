#include "Q3ArchivioOpzioni.h"

#include "Q3Sql.h"

#include <QSqlQuery>

QString Q3LeggiOpzione(const QSqlDatabase &db, const QString &opzione, bool *found)
{
    QSqlQuery query = OpenQuery(db, QStringLiteral("SELECT VALORE FROM OPZIONI WHERE OPZIONE = ") + QuotedStr(opzione));
    const bool exists = query.next();
    if (found)
        *found = exists;
    return exists ? query.value(0).toString() : QString();
}

bool Q3OpzioneVera(const QString &valore)
{
    bool numero = false;
    const int n = valore.trimmed().toInt(&numero);
    return numero ? n != 0 : valore.trimmed().compare(QLatin1String("True"), Qt::CaseInsensitive) == 0;
}

void Q3ScriviOpzioni(const QSqlDatabase &db, const QList<QPair<QString, QString>> &valori)
{
    TQ3Transaction transaction(db);
    for (const auto &[opzione, valore] : valori)
        ExecSQL(db, QStringLiteral("UPDATE OR INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES (%1, %2) MATCHING (OPZIONE)")
                        .arg(QuotedStr(opzione), QuotedStr(valore)));
    transaction.Commit();
}
