#include "Q3ReportFormat.h"

#include "Q3Utils.h"

#include <QDate>
#include <QDateTime>
#include <QLocale>

namespace {

const QLocale &Italian()
{
    static const QLocale italian(QLocale::Italian, QLocale::Italy);
    return italian;
}

// Numbers, and texts of numbers in either decimal form.
double Number(const QVariant &value, bool &ok)
{
    const double number = value.toDouble(&ok);
    if (ok || value.metaType().id() != QMetaType::QString)
        return number;
    return Italian().toDouble(value.toString().trimmed(), &ok);
}

QString Formatted(double number, const QString &format)
{
    const QLocale &italian = Italian();
    if (format == QLatin1String("currency"))
        return italian.toString(number, 'f', 2) + QStringLiteral(" €");
    if (format == QLatin1String("money"))
        return italian.toString(number, 'f', 2);
    if (format == QLatin1String("integer"))
        return italian.toString(qRound64(number));
    if (format == QLatin1String("percent"))
        return italian.toString(number, 'g', QLocale::FloatingPointShortest) + QLatin1Char('%');
    // "money:6": 2 decimals, or as many as the value has up to 6;
    // "number:2-3": the same between the two bounds.
    const QStringList bounds = format.section(QLatin1Char(':'), 1).split(QLatin1Char('-'));
    const int minimum = format.startsWith(QLatin1String("money:")) ? 2 : bounds.first().toInt();
    const int maximum = qMax(minimum, bounds.last().toInt());
    return italian.toString(number, 'f', DecimalsNeeded(number, minimum, maximum));
}

} // namespace

std::optional<double> Q3ReportNumber(const QVariant &value)
{
    if (value.isNull() || !value.isValid())
        return std::nullopt;
    bool ok = false;
    const double number = Number(value, ok);
    return ok ? std::optional<double>(number) : std::nullopt;
}

QString Q3FormatReportValue(const QVariant &value, const QString &format, bool blankZero, bool plusSign)
{
    if (value.isNull() || !value.isValid())
        return {};
    if (format == QLatin1String("date") || format == QLatin1String("year")) {
        const QDate date = value.metaType().id() == QMetaType::QDateTime ? value.toDateTime().date() : value.toDate();
        if (!date.isValid())
            return value.toString();
        return format == QLatin1String("year") ? QString::number(date.year())
                                               : date.toString(QStringLiteral("dd/MM/yyyy"));
    }
    if (format.isEmpty() && !plusSign && !blankZero)
        return value.toString();
    bool ok = false;
    const double number = Number(value, ok);
    if (!ok)
        return value.toString();
    if (blankZero && number == 0)
        return {};
    const QString text = format.isEmpty() ? value.toString() : Formatted(number, format);
    return plusSign && number > 0 ? QLatin1Char('+') + text : text;
}
