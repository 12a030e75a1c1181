#pragma once

#include "Q3Global.h"

#include <QString>
#include <QStringList>

// Checks of the identifiers an Italian firm writes on its documents. Each
// judges the text as it would be stored: an empty text is not valid (callers
// that allow an empty field test for it first).

// Eleven digits whose last is the check digit of the first ten.
Q3_EXPORT bool Q3PartitaIvaValida(const QString &partitaIva);

// A person's code of sixteen characters with its check letter, upper or lower
// case, the letters that replace digits of codes that collide included; or a
// company's code, eleven digits checked as a Partita IVA.
Q3_EXPORT bool Q3CodiceFiscaleValido(const QString &codiceFiscale);

// An IBAN of any country: two letters, two check digits and up to thirty
// letters and digits, blanks ignored, whose number taken modulo 97 is 1.
Q3_EXPORT bool Q3IbanValido(const QString &iban);

// Five digits.
Q3_EXPORT bool Q3CapValido(const QString &cap);

// Two letters, upper or lower case.
Q3_EXPORT bool Q3ProvinciaValida(const QString &provincia);

// Whether a country, as written in the firm's or a customer's data, is Italy
// (empty, "IT" or "Italia", whatever the case): only Italian identifiers are checked.
Q3_EXPORT bool Q3NazioneItaliana(const QString &nazione);

// Whether a field holds something other than blanks: fields left blank are not checked.
Q3_EXPORT bool Q3Compilato(const QString &field);

// The warnings of the checks, each naming its field.
inline constexpr char Q3MsgPartitaIvaNonValida[] = "La partita IVA non è valida: controllare le 11 cifre.";
inline constexpr char Q3MsgCodiceFiscaleNonValido[] = "Il codice fiscale non è valido.";
inline constexpr char Q3MsgIbanNonValido[] = "L'IBAN non è valido.";
inline constexpr char Q3MsgCapNonValido[] = "Il CAP deve essere di 5 cifre.";
inline constexpr char Q3MsgProvinciaNonValida[] = "La provincia deve essere di 2 lettere.";

// The warnings for a Partita IVA and a Codice Fiscale of a subject of that
// country, in this order; blank fields and foreign subjects are not checked.
Q3_EXPORT QStringList Q3ProblemiCodiciFiscali(const QString &partitaIva, const QString &codiceFiscale,
                                              const QString &nazione);
