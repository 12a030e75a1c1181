#pragma once

#include <QList>

#include <cstdint>

// A deterministic source of numbers: the same seed gives the same firm on
// every machine and compiler (the standard distributions do not promise that).
class TKRVCasuale
{
public:
    // stream separates the sequences of one seed (customers, articles, invoices...).
    TKRVCasuale(std::uint64_t seed, std::uint64_t stream)
        : m_state(seed * 0x9E3779B97F4A7C15ULL + stream * 0xD1B54A32D192ED03ULL)
    {
        Next();
    }

    std::uint64_t Next()
    {
        std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }

    // A whole number from low to high, both included.
    int Intero(int low, int high) { return low + int(Next() % std::uint64_t(high - low + 1)); }

    // A number in [0, 1).
    double Reale() { return double(Next() >> 11) * (1.0 / 9007199254740992.0); }

    // True with the given probability.
    bool Vero(double probability) { return Reale() < probability; }

    // A position in [0, count), the low positions chosen more often: a few
    // customers and articles make most of the sales.
    int Preferito(int count) { return qMin(count - 1, int(double(count) * Reale() * Reale())); }

    template <typename T>
    const T &Scelta(const QList<T> &values)
    {
        return values.at(Intero(0, int(values.size()) - 1));
    }

private:
    std::uint64_t m_state;
};
