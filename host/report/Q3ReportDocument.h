#pragma once

#include "Q3ReportLayout.h"

#include <QHash>
#include <QList>
#include <QSizeF>
#include <QString>

#include <functional>

class QPainter;

// What a run reads: the data connections and text parameters by name.
struct Q3_EXPORT TQ3ReportContext
{
    QHash<QString, IQ3ReportData *> Connections;
    QHash<QString, QString> Parameters;
};

// The rows a band's totals ({sum:..}, {count}) cover for one connection: a
// detail's rows from Begin up to, not including, End. A detail's header and
// footer cover all its rows, a group's header and footer the group's rows, a
// row the rows up to itself (running totals). Totals of any other connection
// cover all its rows.
struct Q3_EXPORT TQ3ReportScope
{
    QString Connection;
    QList<int> Rows;
    qsizetype Begin = 0;
    qsizetype End = 0;
};

// A band placed on a page, with the rows of the connections it shows.
struct Q3_EXPORT TQ3PlacedBand
{
    const TQ3ReportBand *Band = nullptr;
    qreal Top = 0;
    qreal Height = 0;
    QHash<QString, int> Rows;
    TQ3ReportScope Totals;
};

struct Q3_EXPORT TQ3ReportPage
{
    QList<TQ3PlacedBand> Bands;
};

// A report laid out in pages. It refers to its layout and its connections,
// which must stay unchanged while the document is drawn.
class Q3_EXPORT TQ3ReportDocument
{
public:
    // Lays the report out; calls onPage with the number of each page begun.
    // Raises EQ3Exception when a connection or a column is missing.
    TQ3ReportDocument(std::shared_ptr<const TQ3ReportLayout> layout, TQ3ReportContext context,
                      const std::function<void(int)> &onPage = {});

    const TQ3ReportLayout &Layout() const { return *m_layout; }
    int PageCount() const { return int(m_pages.size()); }
    const TQ3ReportPage &Page(int index) const { return m_pages.at(index); }
    // The paper size in layout units.
    QSizeF PaperSize() const;
    // The text of an item as printed on a page (0-based) for the given rows.
    QString ItemText(const TQ3ReportItem &item, const QHash<QString, int> &rows, int page,
                     const TQ3ReportScope &totals = {}) const;
    // The colour of a text for the given rows: its negative colour when a
    // number it prints is below zero, else its own.
    QColor ItemColor(const TQ3ReportItem &item, const QHash<QString, int> &rows,
                     const TQ3ReportScope &totals = {}) const;
    // Whether a band prints for the given rows: always, or when its condition
    // prints something other than the number zero.
    bool BandShown(const TQ3ReportBand &band, const QHash<QString, int> &rows, const TQ3ReportScope &totals = {}) const;

    // Draws a page with the painter's origin at the paper's top-left corner
    // and one layout unit mapped to one painter unit.
    void DrawPage(QPainter &painter, int index) const;

private:
    void Resolve();
    QVariant FieldValue(const TQ3ReportSegment &segment, const QHash<QString, int> &rows) const;
    // The value of a placeholder of a column, a parameter or a total; none for the others.
    QVariant SegmentValue(const TQ3ReportSegment &segment, const QHash<QString, int> &rows,
                          const TQ3ReportScope &totals) const;
    QString Text(const QList<TQ3ReportSegment> &segments, const QHash<QString, int> &rows, int page,
                 const TQ3ReportScope &totals) const;
    QVariant Total(const TQ3ReportSegment &segment, const TQ3ReportScope &totals) const;
    qreal Measure(const TQ3ReportBand &band, const QHash<QString, int> &rows, const TQ3ReportScope &totals = {}) const;

    // The sum of a column over a detail's rows from the first up to end.
    double RunningSum(const TQ3ReportSegment &segment, const TQ3ReportScope &totals, qsizetype end) const;

    // A column's sums over a detail's rows from the first, up to each row
    // (Sums[k]: the first k rows), added once in the rows' order. The rows
    // are kept, so the address that keys them stays theirs.
    struct TRunningSums
    {
        QList<int> Rows;
        QList<double> Sums;
    };

    std::shared_ptr<const TQ3ReportLayout> m_layout;
    TQ3ReportContext m_context;
    QList<TQ3ReportPage> m_pages;
    // By the rows' address, the connection's and the column.
    mutable QHash<QString, TRunningSums> m_runningSums;
    friend class TQ3Paginator;
};
