#pragma once

#include <QHash>
#include <QSqlDatabase>
#include <QString>

// Texts the user typed, on their way into the module's SQL and tables.

// Capitals as the database's UPPER makes them: each character by its own
// capital, so that "ß" stays itself and the length never changes.
QString KRVMaiuscole(const QString &testo);

// The characters of the text that cannot reach the database, described for
// the user ("U+0000 (carattere nullo)", comma-separated), or an empty text. A
// NUL ends the statement's text before its time, and half of a surrogate pair
// is no character at all: the connection would write "?" in its place.
QString KRVCaratteriNonAmmessi(const QString &testo);

// How many characters a column holds: the text columns of the table by name,
// as the session's database describes them.
QHash<QString, int> KRVLunghezzeColonne(const QSqlDatabase &db, const QString &tabella);

// The characters of a text as a column counts them (a surrogate pair is one).
int KRVCaratteri(const QString &testo);
