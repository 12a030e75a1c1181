#include "Q3Utils.h"

#include "Q3Sql.h"

#include <QHash>
#include <QLocale>
#include <QSet>

#include <algorithm>
#include <functional>

int GetLastGeneratorValue(const QString &generator, const QSqlDatabase &connection)
{
    return QueryScalar(connection,
                       QStringLiteral("SELECT GEN_ID(") + generator + QStringLiteral(", 0) FROM RDB$DATABASE"))
        .toInt();
}

QString GetCustomCodice(int number, const QString &prefix, const QString &suffix, int length)
{
    const int digits = length - prefix.length() - suffix.length();
    return prefix + QString::number(number).rightJustified(digits, QLatin1Char('0')) + suffix;
}

QString DateToString_YYYYMMDD(const QDate &date)
{
    return date.toString(QStringLiteral("yyyy-MM-dd"));
}

QString GetCurrencyPrefix()
{
    return QLocale().currencySymbol();
}

QString BoolToStrIta(bool value)
{
    return value ? QStringLiteral("Sì") : QStringLiteral("No");
}

TCustomBoolean StrToCustomBoolean(const QVariant &value)
{
    if (value.isNull())
        return TCustomBoolean::cbNull;
    const QString text = value.toString();
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return TCustomBoolean::cbTrue;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return TCustomBoolean::cbFalse;
    return TCustomBoolean::cbNull;
}

QList<int> GetElencoIdFiglio(const QString &keyColumn, int key, const QString &table, const QSqlDatabase &connection)
{
    // One statement gathers the key and every row below it with its parent;
    // the depth limit stops a damaged tree whose parents form a loop.
    QSqlQuery rows =
        OpenQuery(connection,
                  QStringLiteral("WITH RECURSIVE RAMO (ID, PADRE, LIVELLO) AS (SELECT %1, CAST(NULL AS INTEGER), 0 "
                                 "FROM RDB$DATABASE UNION ALL SELECT F.%2, F.IDPADRE, R.LIVELLO + 1 FROM %3 F "
                                 "JOIN RAMO R ON F.IDPADRE = R.ID WHERE R.LIVELLO < 1000) SELECT ID, PADRE FROM RAMO")
                      .arg(QString::number(key), keyColumn, table));
    QHash<int, QList<int>> children;
    while (rows.next()) {
        if (!rows.isNull(1))
            children[rows.value(1).toInt()].append(rows.value(0).toInt());
    }
    // Depth first, children by key, so that every key comes before the keys
    // below it; a key met twice is not followed again.
    QList<int> keys;
    QSet<int> seen;
    QList<int> pending{key};
    while (!pending.isEmpty()) {
        const int current = pending.takeLast();
        if (seen.contains(current))
            continue;
        seen.insert(current);
        keys.append(current);
        QList<int> below = children.value(current);
        std::sort(below.begin(), below.end(), std::greater<int>());
        pending.append(below);
    }
    return keys;
}

int DecimalsNeeded(double value, int minimum, int maximum)
{
    const QString digits = QString::number(value, 'f', maximum);
    int decimals = maximum;
    while (decimals > minimum && digits.at(digits.size() - maximum + decimals - 1) == QLatin1Char('0'))
        --decimals;
    return decimals;
}

QString FormatCurrency(double value, int maxDecimals)
{
    const QLocale locale;
    return locale.toCurrencyString(value, locale.currencySymbol(), DecimalsNeeded(value, 2, qMax(2, maxDecimals)));
}

QString FormatNumber(double value, int decimals)
{
    return QLocale().toString(value, 'f', decimals);
}

QString FormatShortDate(const QDate &date)
{
    return QLocale().toString(date, QLocale::ShortFormat);
}

QString NormalizeLineBreaks(QString text)
{
    text.replace(QStringLiteral("\n\r"), QStringLiteral("\n"));
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}
