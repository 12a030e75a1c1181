#pragma once

#include "Q3Global.h"

#include <QString>
#include <QVariant>

#include <optional>

// A value as a report prints it, Italian style: "currency" 1.234,50 €, "money"
// 1.234,50, "number:N" N decimals, "integer", "date" dd/mm/yyyy, "year" yyyy,
// "percent" 22%.
// Texts holding numbers are read with a dot or a comma as the decimal separator
// ("1234.50", "1234,50"), so numbers kept as text print formatted too.
// NULL prints as nothing; with blankZero so does zero; with plusSign numbers
// above zero start with "+".
Q3_EXPORT QString Q3FormatReportValue(const QVariant &value, const QString &format, bool blankZero = false,
                                      bool plusSign = false);

// The number a value holds, numbers kept as text included (either decimal
// separator, thousands dots allowed); none for NULL and for other texts.
Q3_EXPORT std::optional<double> Q3ReportNumber(const QVariant &value);
