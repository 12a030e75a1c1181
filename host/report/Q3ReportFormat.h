#pragma once

#include "Q3Global.h"

#include <QString>
#include <QVariant>

// A value as a report prints it, Italian style: "currency" 1.234,50 €, "money"
// 1.234,50, "number:N" N decimals, "integer", "date" dd/mm/yyyy, "percent" 22%.
// NULL prints as nothing; with blankZero so does zero.
Q3_EXPORT QString Q3FormatReportValue(const QVariant &value, const QString &format, bool blankZero = false);
