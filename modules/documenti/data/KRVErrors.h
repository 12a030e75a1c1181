#pragma once

#include "Q3Exception.h"

#include <exception>

// Runs a service body; any failure comes back as a new one whose message is
// the routine's name in square brackets, a line feed, a carriage return and
// the caught message.
template <typename Body>
auto KRVWrapped(const char *routine, Body &&body) -> decltype(body())
{
    try {
        return body();
    } catch (const std::exception &e) {
        throw EQ3Exception(QLatin1Char('[') + QString::fromLatin1(routine) + QStringLiteral("]\n\r")
                           + ExceptionMessage(e));
    }
}
