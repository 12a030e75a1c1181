#pragma once

#include "Q3Global.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QVariant>

// One worksheet of a legacy .xls workbook: cells by row and column (a double
// is stored as a number, anything else as text), merged ranges, column widths.
struct TQ3XlsUnione
{
    int RigaDa = 0;
    int ColonnaDa = 0;
    int RigaA = 0;
    int ColonnaA = 0;
};
struct TQ3XlsFoglio
{
    QString Nome;                 // worksheet name, e.g. "Fatturato"
    QList<QList<QVariant>> Celle; // Celle[riga][colonna]; an invalid/null QVariant = empty cell (still bordered)
    QList<TQ3XlsUnione> Unioni;   // merged ranges, inclusive
    QList<int>
        LarghezzeColonne; // widths in pixels as shown on screen (convert to 1/256 char units, ~ px*256/7); may be shorter than the columns
    QSet<int> RigheGrassetto; // rows whose text is bold (header rows)
};

// Writes a workbook with one worksheet; every cell gets thin borders on all sides and
// wrapped text. Text is stored non-Unicode (8-bit compressed strings, Latin-1;
// characters outside Latin-1 become '?'). Throws EQ3Exception (host/core/Q3Exception.h)
// with an Italian message naming the file when the file cannot be written.
//
// Numbers show as "#,##0.00"; an empty text counts as an empty cell. The format's
// limits apply: at most 65,536 rows and 256 columns (beyond them nothing is written
// and EQ3Exception is thrown), texts of at most 32,767 characters (longer ones are
// cut), worksheet names of at most 31 characters without : \ / ? * [ ] (those
// become '_', an empty name becomes "Foglio1").
Q3_EXPORT void Q3ScriviXls(const QString &percorso, const TQ3XlsFoglio &foglio);
