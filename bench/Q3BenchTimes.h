#pragma once

// Timings of the benchmarks: milliseconds of a timer, and min / median / max
// of a series, printed one line a series.
#include <QElapsedTimer>
#include <QList>

#include <algorithm>
#include <cstdio>

inline double Q3Milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

inline double Q3Median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

inline void Q3PrintTimes(const char *what, const QList<double> &times)
{
    std::printf("%-32s median %7.1f ms  min %7.1f ms  max %7.1f ms  (%lld runs)\n", what, Q3Median(times),
                *std::min_element(times.cbegin(), times.cend()), *std::max_element(times.cbegin(), times.cend()),
                static_cast<long long>(times.size()));
}
