#pragma once

#include "Q3Global.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QVariant>

// A flag column read as three states: "True", "False" or no value.
// As a filter: 0 yes, 1 no, 2 no filter.
enum class TCustomBoolean { cbTrue, cbFalse, cbNull };

// The generator's current value, read without advancing it (GEN_ID(generator, 0)).
Q3_EXPORT int GetLastGeneratorValue(const QString &generator, const QSqlDatabase &connection);

// prefix + number left-padded with zeros + suffix, `length` characters in all; a longer number is kept whole.
Q3_EXPORT QString GetCustomCodice(int number, const QString &prefix, const QString &suffix, int length);

// The date as "YYYY-MM-DD", which Firebird accepts as a date literal once quoted.
Q3_EXPORT QString DateToString_YYYYMMDD(const QDate &date);

// The currency symbol of the application's locale.
Q3_EXPORT QString GetCurrencyPrefix();

// "Sì" or "No".
Q3_EXPORT QString BoolToStrIta(bool value);

// "True"/"False" (in any case) as cbTrue/cbFalse; null or any other value as cbNull.
Q3_EXPORT TCustomBoolean StrToCustomBoolean(const QVariant &value);

// The key and every key below it in the table's IDPADRE tree, each parent before its children.
Q3_EXPORT QList<int> GetElencoIdFiglio(const QString &keyColumn, int key, const QString &table,
                                       const QSqlDatabase &connection);

// How many decimals a number needs, within the bounds: 0,333 needs 3, 2,5
// needs 1 and 2,50 needs no more than the minimum.
Q3_EXPORT int DecimalsNeeded(double value, int minimum, int maximum);

// Money in the application's locale currency format, with 2 decimals, or as
// many more as the value has up to maxDecimals (a unit price of 0,3333).
Q3_EXPORT QString FormatCurrency(double value, int maxDecimals = 2);

// A number in the application's locale, with the given decimals and group separators.
Q3_EXPORT QString FormatNumber(double value, int decimals);

// A date in the application's locale short date format.
Q3_EXPORT QString FormatShortDate(const QDate &date);

// The text with one "\n" for each line break however it was written: the
// system's own "\n\r", Windows' "\r\n", a lone "\r" or "\n".
Q3_EXPORT QString NormalizeLineBreaks(QString text);
