#pragma once

#include "Q3Global.h"

#include <QColor>
#include <QFont>
#include <QHash>
#include <QImage>
#include <QList>
#include <QPageLayout>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <memory>

class IQ3ReportData;

// Lengths of a layout are kept in hundredths of a millimetre.
constexpr qreal Q3ReportUnitsPerMm = 100.0;

// One piece of an item's text: literal text, a column of a data connection,
// a text parameter, the page counters, or a total over a connection's rows
// (the sum of a column, the number of rows).
struct Q3_EXPORT TQ3ReportSegment
{
    enum class TKind { Literal, Field, Parameter, Page, Pages, Sum, Count };
    TKind Kind = TKind::Literal;
    QString Text;       // literal text, parameter name or column name
    QString Connection; // for fields and totals
    QString Format;     // "currency", "money", "number:N", "date", "year", "percent", "integer" or empty
    bool BlankZero = false;
    bool PlusSign = false; // "+" before numbers above zero
    bool Trim = false;     // leading and trailing blanks dropped
    // Printed before and after the value, only when the value prints something.
    QString Before;
    QString After;
    // Resolved once per run.
    mutable const IQ3ReportData *Data = nullptr;
    mutable int Column = -1;
};

struct Q3_EXPORT TQ3ReportItem
{
    enum class TKind { Text, Line, Box, Image };
    TKind Kind = TKind::Text;
    QRectF Rect; // within the band; for lines, from top-left to bottom-right
    QList<TQ3ReportSegment> Segments;
    QFont Font;
    QColor Color = Qt::black;
    // Texts: the colour when a number the text prints is below zero; invalid for none.
    QColor NegativeColor;
    QColor Fill;         // boxes; invalid for none
    qreal PenWidth = 20; // lines and box borders
    int Flags = Qt::AlignLeft | Qt::AlignTop;
    bool Wrap = false;
    bool Grow = false;         // wraps and makes its band as tall as its text needs
    bool Stretch = false;      // follows its band's growth downwards
    bool AnchorBottom = false; // moves down with its band's growth
    QImage Image;              // images of a file
    // Images of a column (one field segment): drawn as large as their box
    // allows, keeping their proportions, centred in it.
};

struct Q3_EXPORT TQ3ReportBand
{
    qreal Height = 0;
    QList<TQ3ReportItem> Items;
    // The band prints only when this text prints something other than the
    // number zero; empty for a band that always prints.
    QList<TQ3ReportSegment> Condition;
    bool IsEmpty() const { return Height <= 0 && Items.isEmpty(); }
};

// A group of a detail's consecutive rows that share the value of a column:
// its header comes before the first of them, its footer after the last.
struct Q3_EXPORT TQ3ReportGroup
{
    QString Column;
    TQ3ReportBand Header;
    TQ3ReportBand Footer;
    // Resolved once per run.
    mutable int ColumnIndex = -1;
};

// A column a detail's rows are sorted by.
struct Q3_EXPORT TQ3ReportSortKey
{
    QString Column;
    bool Descending = false;
    // Resolved once per run.
    mutable int ColumnIndex = -1;
};

// The body of a report: bands printed once, details over a connection's rows,
// and masters repeating their own sections for each row of a connection.
struct Q3_EXPORT TQ3ReportSection
{
    enum class TKind { Band, Detail, Master };
    TKind Kind = TKind::Band;
    TQ3ReportBand Band;            // Band; the row band of a Detail
    TQ3ReportBand Header;          // Detail: the column header, repeated on each page
    TQ3ReportBand Footer;          // Detail
    QList<TQ3ReportGroup> Groups;  // Detail: the outermost first
    QList<TQ3ReportSortKey> Order; // Detail: empty for the connection's own order
    QString Connection;            // Detail, Master
    QString Link;                  // Detail: only rows whose column equals the master row's
    bool RepeatHeader = true;
    bool PageBreak = false;           // Master: each row after the first on a new page
    QList<TQ3ReportSection> Sections; // Master
};

struct Q3_EXPORT TQ3ReportLayout
{
    QString Name;
    QString Title;
    QPageLayout Page; // margins in millimetres
    QStringList Connections;
    QStringList Parameters;
    TQ3ReportBand PageHeader;
    TQ3ReportBand PageFooter;
    QList<TQ3ReportSection> Body;
};

// Reads the reports of a project document; raises EQ3Exception naming the
// element at fault. Image files are looked for beside the project file.
Q3_EXPORT QList<std::shared_ptr<TQ3ReportLayout>> Q3ReadReportProject(const QByteArray &content, const QString &folder);

// Parses an item text: "{connection.COLUMN|format}", "{param:Name|format}",
// "{sum:connection.COLUMN|format}", "{count}", "{count:connection}", "{page}",
// "{pages}"; "{{" and "}}" stand for the braces themselves. The options
// "before:TEXT" and "after:TEXT" keep their text as written, blanks included.
Q3_EXPORT QList<TQ3ReportSegment> Q3ParseReportText(const QString &text, const QString &defaultConnection);
