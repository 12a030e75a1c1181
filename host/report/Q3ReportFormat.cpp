#include "Q3ReportFormat.h"

#include <QDate>
#include <QDateTime>
#include <QLocale>

QString Q3FormatReportValue(const QVariant &value, const QString &format, bool blankZero)
{
    if (value.isNull() || !value.isValid())
        return {};
    static const QLocale italian(QLocale::Italian, QLocale::Italy);
    if (format == QLatin1String("date")) {
        const QDate date = value.metaType().id() == QMetaType::QDateTime ? value.toDateTime().date() : value.toDate();
        return date.isValid() ? date.toString(QStringLiteral("dd/MM/yyyy")) : value.toString();
    }
    if (format.isEmpty())
        return value.toString();
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok)
        return value.toString();
    if (blankZero && number == 0)
        return {};
    if (format == QLatin1String("currency"))
        return italian.toString(number, 'f', 2) + QStringLiteral(" €");
    if (format == QLatin1String("money"))
        return italian.toString(number, 'f', 2);
    if (format == QLatin1String("integer"))
        return italian.toString(qRound64(number));
    if (format == QLatin1String("percent"))
        return italian.toString(number, 'g', QLocale::FloatingPointShortest) + QLatin1Char('%');
    return italian.toString(number, 'f', format.mid(7).toInt());
}
