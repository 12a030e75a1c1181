#include "KRVOptions.h"

#include "KRVDataset.h"
#include "Q3Exception.h"

#include <QSqlQuery>
#include <QSqlRecord>

bool GetOptionValue(const QSqlDatabase &db, const QString &option, QVariant &value)
{
    try {
        return KRVReadFirstRow(db, QStringLiteral("SELECT VALORE FROM OPZIONI WHERE OPZIONE=") + QuotedStr(option),
                               [&](const QSqlRecord &row) { value = row.value(QStringLiteral("VALORE")); });
    } catch (const std::exception &) {
        return false;
    }
}

bool SetOptionValue(const QSqlDatabase &db, const QString &option, const QVariant &value)
{
    try {
        if (!OpenQuery(db, QStringLiteral("SELECT * FROM OPZIONI WHERE OPZIONE=") + QuotedStr(option)).next())
            return false;
        TQ3Transaction transaction(db);
        TQ3PreparedQuery(db, QStringLiteral("UPDATE OPZIONI SET VALORE = ? WHERE OPZIONE = ?")).Run({value, option});
        transaction.Commit();
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

bool KRVStrToBool(const QString &text)
{
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber)
        throw EQ3Exception(QLatin1Char('\'') + text + QStringLiteral("' non è un valore booleano valido"));
    return number != 0;
}
