#include "KATScadenze.h"

#include <functional>
#include <optional>

namespace {

using TPeriodo = std::function<QDate(const QDate &, qint64)>;

// The date `passi` units after the start, or nothing for an unknown unit.
std::optional<TPeriodo> Periodo(const QString &unita)
{
    if (unita == QLatin1String(KATUnitaGiorno))
        return [](const QDate &inizio, qint64 passi) { return inizio.addDays(passi); };
    if (unita == QLatin1String(KATUnitaSettimana))
        return [](const QDate &inizio, qint64 passi) { return inizio.addDays(passi * 7); };
    if (unita == QLatin1String(KATUnitaMese))
        return [](const QDate &inizio, qint64 passi) { return inizio.addMonths(static_cast<int>(passi)); };
    if (unita == QLatin1String(KATUnitaAnno))
        return [](const QDate &inizio, qint64 passi) { return inizio.addYears(static_cast<int>(passi)); };
    return std::nullopt;
}

// The day a period date is moved to; an unknown rule keeps the exact day.
QDate Giorno(const QDate &data, const QString &regola)
{
    if (regola == QLatin1String(KATRegolaPrimoGiorno))
        return QDate(data.year(), data.month(), 1);
    if (regola == QLatin1String(KATRegolaGiorno15))
        return QDate(data.year(), data.month(), 15);
    if (regola == QLatin1String(KATRegolaUltimoGiorno))
        return QDate(data.year(), data.month(), data.daysInMonth());
    return data;
}

bool RegolaNota(const QString &regola)
{
    for (const char *nota : {KATRegolaPrimoGiorno, KATRegolaGiorno15, KATRegolaGiornoEsatto, KATRegolaUltimoGiorno})
        if (regola == QLatin1String(nota))
            return true;
    return false;
}

} // namespace

TKATScadenze KATCalcolaScadenze(int ogni, const QString &unita, const QDate &inizio, const QDate &fine,
                                const QString &regola)
{
    TKATScadenze scadenze;
    scadenze.RegolaSconosciuta = !RegolaNota(regola);
    const std::optional<TPeriodo> periodo = Periodo(unita);
    scadenze.UnitaSconosciuta = !periodo.has_value();
    if (!periodo || ogni < 1 || !inizio.isValid() || !fine.isValid())
        return scadenze;
    for (qint64 k = 0;; ++k) {
        const QDate data = (*periodo)(inizio, k * ogni);
        if (!data.isValid() || data > fine)
            break;
        const QDate scadenza = Giorno(data, regola);
        if (!scadenze.Date.isEmpty() && scadenze.Date.last() == scadenza)
            continue;
        if (scadenze.Date.size() == KATMaxScadenze) {
            scadenze.Troncate = true;
            break;
        }
        scadenze.Date.append(scadenza);
    }
    return scadenze;
}
