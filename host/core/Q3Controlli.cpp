#include "Q3Controlli.h"

#include <array>

namespace {

bool AsciiDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool AsciiLetter(QChar c)
{
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) || (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
}

bool AllDigits(const QString &text, qsizetype length)
{
    if (text.size() != length)
        return false;
    for (const QChar c : text) {
        if (!AsciiDigit(c))
            return false;
    }
    return true;
}

// The letters that stand for the digits 0 to 9 in a code that collides with another.
constexpr char Omocodia[] = "LMNPQRSTUV";

// The digit a character of a person's code stands for at a place that holds a
// digit: the digit itself or its replacing letter; -1 for anything else.
int DigitOf(QChar c)
{
    if (AsciiDigit(c))
        return c.unicode() - '0';
    for (int i = 0; i < 10; ++i) {
        if (c == QLatin1Char(Omocodia[i]))
            return i;
    }
    return -1;
}

// The pattern of a person's code: L letter, N digit (or its replacing letter).
constexpr char PatternCodiceFiscale[] = "LLLLLLNNLNNLNNNL";

int CheckValue(QChar c, bool odd)
{
    // Values of the characters at the odd places (1-based), digits as the letters A to J.
    static constexpr std::array<int, 26> oddValues = {1,  0,  5, 7, 9, 13, 15, 17, 19, 21, 2,  4,  18,
                                                      20, 11, 3, 6, 8, 12, 14, 16, 10, 22, 25, 24, 23};
    const int index = AsciiDigit(c) ? c.unicode() - '0' : c.unicode() - 'A';
    return odd ? oddValues.at(index) : index;
}

} // namespace

bool Q3PartitaIvaValida(const QString &partitaIva)
{
    if (!AllDigits(partitaIva, 11))
        return false;
    int sum = 0;
    for (int i = 0; i < 10; ++i) {
        int digit = partitaIva.at(i).unicode() - '0';
        // Places 2, 4, ... (1-based) count double, less 9 above 9.
        if (i % 2 == 1) {
            digit *= 2;
            if (digit > 9)
                digit -= 9;
        }
        sum += digit;
    }
    return (10 - sum % 10) % 10 == partitaIva.at(10).unicode() - '0';
}

bool Q3CodiceFiscaleValido(const QString &codiceFiscale)
{
    if (codiceFiscale.size() == 11)
        return Q3PartitaIvaValida(codiceFiscale);
    if (codiceFiscale.size() != 16)
        return false;
    const QString code = codiceFiscale.toUpper();
    int sum = 0;
    for (int i = 0; i < 15; ++i) {
        const QChar c = code.at(i);
        const bool letterPlace = PatternCodiceFiscale[i] == 'L';
        if (letterPlace ? !AsciiLetter(c) : DigitOf(c) < 0)
            return false;
        sum += CheckValue(c, i % 2 == 0);
    }
    return QStringLiteral("ABCDEHLMPRST").contains(code.at(8)) && code.at(15) == QLatin1Char(char('A' + sum % 26));
}

bool Q3IbanValido(const QString &iban)
{
    QString compact = iban.toUpper();
    compact.remove(QLatin1Char(' '));
    if (compact.size() < 15 || compact.size() > 34)
        return false;
    if (!AsciiLetter(compact.at(0)) || !AsciiLetter(compact.at(1)) || !AsciiDigit(compact.at(2))
        || !AsciiDigit(compact.at(3)))
        return false;
    // The country and check digits go to the end; each letter counts as 10 to 35.
    const QString moved = compact.mid(4) + compact.left(4);
    int remainder = 0;
    for (const QChar c : moved) {
        if (AsciiDigit(c)) {
            remainder = (remainder * 10 + (c.unicode() - '0')) % 97;
        } else if (AsciiLetter(c)) {
            remainder = (remainder * 100 + (c.unicode() - 'A' + 10)) % 97;
        } else {
            return false;
        }
    }
    return remainder == 1;
}

bool Q3CapValido(const QString &cap)
{
    return AllDigits(cap, 5);
}

bool Q3ProvinciaValida(const QString &provincia)
{
    return provincia.size() == 2 && AsciiLetter(provincia.at(0)) && AsciiLetter(provincia.at(1));
}

bool Q3NazioneItaliana(const QString &nazione)
{
    const QString country = nazione.trimmed();
    return country.isEmpty() || country.compare(QLatin1String("IT"), Qt::CaseInsensitive) == 0
           || country.compare(QLatin1String("Italia"), Qt::CaseInsensitive) == 0;
}

bool Q3Compilato(const QString &field)
{
    return !field.trimmed().isEmpty();
}

QStringList Q3ProblemiCodiciFiscali(const QString &partitaIva, const QString &codiceFiscale, const QString &nazione)
{
    QStringList problems;
    if (!Q3NazioneItaliana(nazione))
        return problems;
    if (Q3Compilato(partitaIva) && !Q3PartitaIvaValida(partitaIva))
        problems << QString::fromUtf8(Q3MsgPartitaIvaNonValida);
    if (Q3Compilato(codiceFiscale) && !Q3CodiceFiscaleValido(codiceFiscale))
        problems << QString::fromUtf8(Q3MsgCodiceFiscaleNonValido);
    return problems;
}
