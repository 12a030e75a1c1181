#include "Q3ReportDocument.h"

#include "Q3Exception.h"
#include "Q3ReportData.h"
#include "Q3ReportFormat.h"
#include "Q3Utils.h"

#include <QCollator>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QSet>

#include <array>

namespace {

QRectF Printable(const TQ3ReportLayout &layout)
{
    const QRectF rect = layout.Page.paintRect(QPageLayout::Millimeter);
    return {rect.x() * Q3ReportUnitsPerMm, rect.y() * Q3ReportUnitsPerMm, rect.width() * Q3ReportUnitsPerMm,
            rect.height() * Q3ReportUnitsPerMm};
}

int TextFlags(const TQ3ReportItem &item)
{
    return item.Flags | (item.Wrap ? Qt::TextWordWrap : Qt::TextSingleLine);
}

// What a font's texts of one line need: the advance of each printable
// character of Latin-1 and the height of one line, measured once.
struct TMisureCarattere
{
    std::array<qreal, 256> Avanzamenti{};
    qreal Riga = 0;
};

const TMisureCarattere &MisureCarattere(const QFont &font)
{
    thread_local QHash<QString, TMisureCarattere> misure;
    const QString chiave = font.key();
    auto trovate = misure.find(chiave);
    if (trovate == misure.end()) {
        const QFontMetricsF metrics(font);
        TMisureCarattere nuove;
        for (char16_t c = 0x20; c < 0x100; ++c)
            nuove.Avanzamenti[c] = metrics.horizontalAdvance(QChar(c));
        nuove.Riga = metrics.boundingRect(QRectF(0, 0, 1e7, 1e7), Qt::TextWordWrap, QStringLiteral("X")).height();
        trovate = misure.insert(chiave, nuove);
    }
    return *trovate;
}

// Whether a text surely fits in one line of the width, known without laying
// it out: printable Latin-1 characters alone (no line break, no character a
// fallback font would draw), whose advances, each with a quarter of an "M"
// more for any kerning, stay within the width.
bool UnaRigaCerta(const TMisureCarattere &misure, const QString &text, qreal width)
{
    const qreal margine = misure.Avanzamenti[u'M'] / 4;
    qreal totale = 0;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u < 0x20 || (u >= 0x7F && u <= 0xA0) || u == 0xAD || u > 0xFF)
            return false;
        totale += misure.Avanzamenti[u] + margine;
        if (totale >= width)
            return false;
    }
    return true;
}

// How much taller than the item's designed height a growing text needs to be.
// Most texts fit in one line, whose height is the font's; the others are laid
// out as they will be drawn.
qreal Growth(const TQ3ReportItem &item, const QString &text)
{
    if (!item.Grow || text.isEmpty())
        return 0;
    const TMisureCarattere &misure = MisureCarattere(item.Font);
    const qreal needed = UnaRigaCerta(misure, text, item.Rect.width())
                             ? misure.Riga
                             : QFontMetricsF(item.Font)
                                   .boundingRect(QRectF(0, 0, item.Rect.width(), 1e7), TextFlags(item), text)
                                   .height();
    return qMax<qreal>(0, needed - item.Rect.height());
}

// A value with the options of its placeholder.
QString Formatted(const TQ3ReportSegment &segment, const QVariant &value)
{
    QString text = Q3FormatReportValue(value, segment.Format, segment.BlankZero, segment.PlusSign);
    if (segment.Trim)
        text = text.trimmed();
    return text.trimmed().isEmpty() ? text : segment.Before + text + segment.After;
}

// Orders values as a reader expects: empty ones first, numbers and dates by
// value, texts alphabetically whatever their case.
int CompareValues(const QVariant &left, const QVariant &right)
{
    if (left.isNull() || right.isNull())
        return int(right.isNull()) - int(left.isNull());
    if (left.metaType().id() == QMetaType::QString || right.metaType().id() == QMetaType::QString) {
        static const QCollator collator = [] {
            QCollator italian{QLocale(QLocale::Italian, QLocale::Italy)};
            italian.setCaseSensitivity(Qt::CaseInsensitive);
            return italian;
        }();
        return collator.compare(left.toString(), right.toString());
    }
    const QPartialOrdering order = QVariant::compare(left, right);
    return order == QPartialOrdering::Less ? -1 : order == QPartialOrdering::Greater ? 1 : 0;
}

// The picture a column holds, scaled into the box with its proportions kept
// and centred; nothing for an empty value or bytes that are no picture.
void DrawColumnImage(QPainter &painter, const QRectF &box, const QVariant &value)
{
    const QImage image = QImage::fromData(value.toByteArray());
    if (image.isNull())
        return;
    QSizeF size = image.size();
    size.scale(box.size(), Qt::KeepAspectRatio);
    QRectF target(QPointF(), size);
    target.moveCenter(box.center());
    painter.drawImage(target, image);
}

} // namespace

// Places the bands of a report on pages: page header and footer on each page,
// a detail's column header again on each page its rows continue on.
class TQ3Paginator
{
public:
    TQ3Paginator(TQ3ReportDocument &document, const std::function<void(int)> &onPage)
        : m_document(document), m_layout(*document.m_layout), m_area(Printable(m_layout)), m_onPage(onPage)
    {}

    void Run()
    {
        NewPage();
        for (const TQ3ReportSection &section : m_layout.Body)
            Section(section);
        FinishPage();
    }

private:
    void Section(const TQ3ReportSection &section)
    {
        switch (section.Kind) {
        case TQ3ReportSection::TKind::Band:
            Place(section.Band);
            break;
        case TQ3ReportSection::TKind::Detail:
            Detail(section);
            break;
        case TQ3ReportSection::TKind::Master:
            Master(section);
            break;
        }
    }

    void Master(const TQ3ReportSection &section)
    {
        const IQ3ReportData *data = m_document.m_context.Connections.value(section.Connection);
        for (int row = 0; row < data->RowCount(); ++row) {
            if (row > 0 && section.PageBreak) {
                FinishPage();
                NewPage();
            }
            m_rows.insert(section.Connection, row);
            for (const TQ3ReportSection &child : section.Sections)
                Section(child);
        }
        m_rows.remove(section.Connection);
    }

    // The rows of a detail; with a link, those whose column equals the same
    // column of the enclosing master row.
    QList<int> DetailRows(const TQ3ReportSection &section) const
    {
        const auto &connections = m_document.m_context.Connections;
        const IQ3ReportData *data = connections.value(section.Connection);
        const int column = section.Link.isEmpty() ? -1 : data->FieldIndex(section.Link);
        QVariant key;
        bool linked = false;
        for (auto it = m_rows.cbegin(); it != m_rows.cend() && column >= 0; ++it) {
            const IQ3ReportData *master = connections.value(it.key());
            const int masterColumn = master->FieldIndex(section.Link);
            if (master != data && masterColumn >= 0) {
                key = master->Value(it.value(), masterColumn);
                linked = true;
            }
        }
        if (!section.Link.isEmpty() && !linked)
            throw EQ3Exception(QStringLiteral("Il collegamento \"%1\" della connessione \"%2\" non trova la colonna.")
                                   .arg(section.Link, section.Connection));
        QList<int> rows;
        for (int row = 0; row < data->RowCount(); ++row) {
            if (!linked || data->Value(row, column) == key)
                rows << row;
        }
        if (!section.Order.isEmpty()) {
            std::stable_sort(rows.begin(), rows.end(), [&section, data](int left, int right) {
                for (const TQ3ReportSortKey &key : section.Order) {
                    const int order =
                        CompareValues(data->Value(left, key.ColumnIndex), data->Value(right, key.ColumnIndex));
                    if (order != 0)
                        return key.Descending ? order > 0 : order < 0;
                }
                return false;
            });
        }
        return rows;
    }

    // A detail's rows and where its groups begin.
    struct TDetailRun
    {
        const TQ3ReportSection &Section;
        QList<int> Rows;
        // For each row, the outermost group it begins; the number of groups when it begins none.
        QList<int> Starts;
        TQ3ReportScope All;

        TDetailRun(const TQ3ReportSection &section, const QList<int> &rows, const IQ3ReportData *data)
            : Section(section), Rows(rows),
              Starts(rows.size(), int(section.Groups.size())), All{section.Connection, rows, 0, rows.size()}
        {
            for (qsizetype i = 0; i < rows.size(); ++i) {
                int level = 0;
                while (i > 0 && level < Starts.at(i)) {
                    const int column = section.Groups.at(level).ColumnIndex;
                    if (data->Value(rows.at(i - 1), column) != data->Value(rows.at(i), column))
                        break;
                    ++level;
                }
                Starts[i] = level;
            }
        }

        // The rows of the group of that level which begins at the row index first.
        TQ3ReportScope GroupRows(int level, qsizetype first) const
        {
            qsizetype end = first + 1;
            while (end < Rows.size() && Starts.at(end) > level)
                ++end;
            return {Section.Connection, Rows, first, end};
        }

        // The rows up to the one at index i, for the running totals of its band.
        TQ3ReportScope UpTo(qsizetype i) const { return {Section.Connection, Rows, 0, i + 1}; }
    };

    void Detail(const TQ3ReportSection &section)
    {
        const TDetailRun run(section, DetailRows(section), m_document.m_context.Connections.value(section.Connection));
        // The header goes with the first row and its group headers: they move to a new page together.
        if (!section.Header.IsEmpty()) {
            const qreal needed =
                m_document.Measure(section.Header, m_rows, run.All) + (run.Rows.isEmpty() ? 0 : Opening(run, 0));
            if (!Fits(needed))
                Break();
            Place(section.Header, run.All);
        }
        if (section.RepeatHeader && !section.Header.IsEmpty())
            m_repeated = {&section.Header, m_rows, run.All};
        const int levels = int(section.Groups.size());
        QList<qsizetype> firsts(levels, 0);
        for (qsizetype i = 0; i < run.Rows.size(); ++i) {
            const int level = run.Starts.at(i);
            if (i > 0)
                CloseGroups(run, firsts, i, level);
            // A group header never stays alone at the bottom of a page.
            if (level < levels && !Fits(Opening(run, i)))
                Break();
            for (int group = level; group < levels; ++group) {
                firsts[group] = i;
                PlaceRow(section.Groups.at(group).Header, run, i, run.GroupRows(group, i));
            }
            PlaceRow(section.Band, run, i, run.UpTo(i));
        }
        if (!run.Rows.isEmpty())
            CloseGroups(run, firsts, run.Rows.size(), 0);
        m_repeated = {};
        m_rows.remove(section.Connection);
        Place(section.Footer, run.All);
    }

    // The footers of the open groups, from the innermost out to level, after
    // their last row (the one before the row index end).
    void CloseGroups(const TDetailRun &run, const QList<qsizetype> &firsts, qsizetype end, int level)
    {
        for (int group = int(run.Section.Groups.size()) - 1; group >= level; --group) {
            const qsizetype first = firsts.at(group);
            PlaceRow(run.Section.Groups.at(group).Footer, run, end - 1, {run.Section.Connection, run.Rows, first, end});
        }
    }

    // The height of the row at index i with the group headers that begin there.
    qreal Opening(const TDetailRun &run, qsizetype i) const
    {
        QHash<QString, int> rows = m_rows;
        rows.insert(run.Section.Connection, run.Rows.at(i));
        qreal height = m_document.Measure(run.Section.Band, rows, run.UpTo(i));
        for (int group = run.Starts.at(i); group < int(run.Section.Groups.size()); ++group)
            height += m_document.Measure(run.Section.Groups.at(group).Header, rows, run.GroupRows(group, i));
        return height;
    }

    void PlaceRow(const TQ3ReportBand &band, const TDetailRun &run, qsizetype i, const TQ3ReportScope &totals)
    {
        m_rows.insert(run.Section.Connection, run.Rows.at(i));
        Place(band, totals);
    }

    bool Fits(qreal height) const { return m_y + height <= m_bottom + 0.01 || m_emptyPage; }

    void Break()
    {
        FinishPage();
        NewPage();
        if (m_repeated.Band) {
            const QHash<QString, int> saved = m_rows;
            m_rows = m_repeated.Rows;
            Place(*m_repeated.Band, m_repeated.Totals);
            m_rows = saved;
            m_emptyPage = true;
        }
    }

    void Place(const TQ3ReportBand &band, const TQ3ReportScope &totals = {})
    {
        if (band.IsEmpty() || !m_document.BandShown(band, m_rows, totals))
            return;
        const qreal height = m_document.Measure(band, m_rows, totals);
        if (!Fits(height))
            Break();
        m_page.Bands << TQ3PlacedBand{&band, m_y, height, m_rows, totals};
        m_y += height;
        m_emptyPage = false;
    }

    void NewPage()
    {
        m_page = TQ3ReportPage();
        if (m_onPage)
            m_onPage(int(m_document.m_pages.size()) + 1);
        m_y = m_area.top();
        m_bottom = m_area.bottom() - m_layout.PageFooter.Height;
        if (!m_layout.PageHeader.IsEmpty()) {
            const qreal height = m_document.Measure(m_layout.PageHeader, m_rows);
            m_page.Bands << TQ3PlacedBand{&m_layout.PageHeader, m_y, height, m_rows, {}};
            m_y += height;
        }
        m_emptyPage = true;
    }

    void FinishPage()
    {
        if (!m_layout.PageFooter.IsEmpty())
            m_page.Bands << TQ3PlacedBand{&m_layout.PageFooter, m_bottom, m_layout.PageFooter.Height, m_rows, {}};
        m_document.m_pages << m_page;
    }

    TQ3ReportDocument &m_document;
    const TQ3ReportLayout &m_layout;
    const QRectF m_area;
    const std::function<void(int)> &m_onPage;
    TQ3ReportPage m_page;
    QHash<QString, int> m_rows;
    // The detail header printed again at the top of each page its rows continue on.
    struct TRepeated
    {
        const TQ3ReportBand *Band = nullptr;
        QHash<QString, int> Rows;
        TQ3ReportScope Totals;
    };
    TRepeated m_repeated;
    qreal m_y = 0;
    qreal m_bottom = 0;
    bool m_emptyPage = true;
};

TQ3ReportDocument::TQ3ReportDocument(std::shared_ptr<const TQ3ReportLayout> layout, TQ3ReportContext context,
                                     const std::function<void(int)> &onPage)
    : m_layout(std::move(layout)), m_context(std::move(context))
{
    Resolve();
    TQ3Paginator(*this, onPage).Run();
}

void TQ3ReportDocument::Resolve()
{
    for (const QString &name : m_layout->Connections) {
        if (!m_context.Connections.value(name))
            throw EQ3Exception(QStringLiteral("Il report \"%1\" legge la connessione dati \"%2\", che non esiste.")
                                   .arg(m_layout->Name, name));
    }
    auto resolveSegments = [this](const QList<TQ3ReportSegment> &segments) {
        for (const TQ3ReportSegment &segment : segments) {
            if (segment.Connection.isEmpty())
                continue;
            segment.Data = m_context.Connections.value(segment.Connection);
            if (segment.Kind == TQ3ReportSegment::TKind::Count)
                continue;
            segment.Column = segment.Data->FieldIndex(segment.Text);
            if (segment.Column < 0)
                throw EQ3Exception(
                    QStringLiteral("Il report \"%1\" legge la colonna \"%2\", che la connessione \"%3\" non ha.")
                        .arg(m_layout->Name, segment.Text, segment.Connection));
        }
    };
    // The installed families, read once: each question to the font database
    // lists them all again.
    QSet<QString> installed;
    const auto hasFamily = [&installed](const QString &family) {
        if (installed.isEmpty()) {
            const QStringList families = QFontDatabase::families();
            installed = QSet<QString>(families.cbegin(), families.cend());
        }
        return installed.contains(family) || QFontDatabase::hasFamily(family);
    };
    auto resolveBand = [this, &resolveSegments, &hasFamily](const TQ3ReportBand &band) {
        resolveSegments(band.Condition);
        for (const TQ3ReportItem &item : band.Items) {
            // A stand-in font would change every measure: the print stops instead.
            if (item.Kind == TQ3ReportItem::TKind::Text && !hasFamily(item.Font.family()))
                throw EQ3Exception(QStringLiteral("Il report \"%1\" usa il carattere \"%2\", che non è installato.")
                                       .arg(m_layout->Name, item.Font.family()));
            resolveSegments(item.Segments);
        }
    };
    // The position of a column that a detail sorts or groups its rows by.
    auto columnIndex = [this](const TQ3ReportSection &section, const QString &column, const QString &verb) {
        const int index = m_context.Connections.value(section.Connection)->FieldIndex(column);
        if (index < 0)
            throw EQ3Exception(
                QStringLiteral("Il report \"%1\" %2 per la colonna \"%3\", che la connessione \"%4\" non ha.")
                    .arg(m_layout->Name, verb, column, section.Connection));
        return index;
    };
    std::function<void(const QList<TQ3ReportSection> &)> resolveSections =
        [&](const QList<TQ3ReportSection> &sections) {
            for (const TQ3ReportSection &section : sections) {
                resolveBand(section.Band);
                resolveBand(section.Header);
                resolveBand(section.Footer);
                for (const TQ3ReportSortKey &key : section.Order)
                    key.ColumnIndex = columnIndex(section, key.Column, QStringLiteral("ordina"));
                for (const TQ3ReportGroup &group : section.Groups) {
                    group.ColumnIndex = columnIndex(section, group.Column, QStringLiteral("raggruppa"));
                    resolveBand(group.Header);
                    resolveBand(group.Footer);
                }
                resolveSections(section.Sections);
            }
        };
    resolveBand(m_layout->PageHeader);
    resolveBand(m_layout->PageFooter);
    resolveSections(m_layout->Body);
}

QSizeF TQ3ReportDocument::PaperSize() const
{
    return m_layout->Page.fullRect(QPageLayout::Millimeter).size() * Q3ReportUnitsPerMm;
}

QVariant TQ3ReportDocument::FieldValue(const TQ3ReportSegment &segment, const QHash<QString, int> &rows) const
{
    // Outside its own bands a connection shows its first row.
    const int row = rows.value(segment.Connection, 0);
    if (row >= segment.Data->RowCount())
        return {};
    return segment.Data->Value(row, segment.Column);
}

QVariant TQ3ReportDocument::Total(const TQ3ReportSegment &segment, const TQ3ReportScope &totals) const
{
    const bool scoped = totals.Connection == segment.Connection;
    const qsizetype begin = scoped ? totals.Begin : 0;
    const qsizetype end = scoped ? totals.End : segment.Data->RowCount();
    if (segment.Kind == TQ3ReportSegment::TKind::Count)
        return int(end - begin);
    // A band's running total, and a detail's whole total, start at its first
    // row: added up once for all its rows, not again for each row.
    if (scoped && begin == 0)
        return RunningSum(segment, totals, end);
    // Empty (NULL) values add nothing.
    double sum = 0;
    for (qsizetype i = begin; i < end; ++i)
        sum += segment.Data->Value(scoped ? totals.Rows.at(i) : int(i), segment.Column).toDouble();
    return sum;
}

double TQ3ReportDocument::RunningSum(const TQ3ReportSegment &segment, const TQ3ReportScope &totals, qsizetype end) const
{
    const QString key = QStringLiteral("%1/%2/%3")
                            .arg(quintptr(totals.Rows.constData()))
                            .arg(quintptr(segment.Data))
                            .arg(segment.Column);
    TRunningSums &running = m_runningSums[key];
    if (running.Sums.isEmpty()) {
        running.Rows = totals.Rows;
        running.Sums.reserve(totals.Rows.size() + 1);
        // Empty (NULL) values add nothing.
        double sum = 0;
        running.Sums << sum;
        for (const int row : std::as_const(running.Rows)) {
            sum += segment.Data->Value(row, segment.Column).toDouble();
            running.Sums << sum;
        }
    }
    return running.Sums.at(end);
}

QVariant TQ3ReportDocument::SegmentValue(const TQ3ReportSegment &segment, const QHash<QString, int> &rows,
                                         const TQ3ReportScope &totals) const
{
    switch (segment.Kind) {
    case TQ3ReportSegment::TKind::Field:
        return FieldValue(segment, rows);
    case TQ3ReportSegment::TKind::Parameter:
        return m_context.Parameters.value(segment.Text);
    case TQ3ReportSegment::TKind::Sum:
    case TQ3ReportSegment::TKind::Count:
        return Total(segment, totals);
    case TQ3ReportSegment::TKind::Literal:
    case TQ3ReportSegment::TKind::Page:
    case TQ3ReportSegment::TKind::Pages:
        break;
    }
    return {};
}

QString TQ3ReportDocument::Text(const QList<TQ3ReportSegment> &segments, const QHash<QString, int> &rows, int page,
                                const TQ3ReportScope &totals) const
{
    QString text;
    for (const TQ3ReportSegment &segment : segments) {
        switch (segment.Kind) {
        case TQ3ReportSegment::TKind::Literal:
            text += segment.Text;
            break;
        case TQ3ReportSegment::TKind::Page:
            text += QString::number(page + 1);
            break;
        case TQ3ReportSegment::TKind::Pages:
            text += QString::number(m_pages.size());
            break;
        case TQ3ReportSegment::TKind::Field:
        case TQ3ReportSegment::TKind::Parameter:
        case TQ3ReportSegment::TKind::Sum:
        case TQ3ReportSegment::TKind::Count:
            text += Formatted(segment, SegmentValue(segment, rows, totals));
            break;
        }
    }
    return text;
}

QColor TQ3ReportDocument::ItemColor(const TQ3ReportItem &item, const QHash<QString, int> &rows,
                                    const TQ3ReportScope &totals) const
{
    if (!item.NegativeColor.isValid())
        return item.Color;
    for (const TQ3ReportSegment &segment : item.Segments) {
        const std::optional<double> number = Q3ReportNumber(SegmentValue(segment, rows, totals));
        if (number && *number < 0)
            return item.NegativeColor;
    }
    return item.Color;
}

bool TQ3ReportDocument::BandShown(const TQ3ReportBand &band, const QHash<QString, int> &rows,
                                  const TQ3ReportScope &totals) const
{
    if (band.Condition.isEmpty())
        return true;
    const QString text = Text(band.Condition, rows, 0, totals).trimmed();
    const std::optional<double> number = Q3ReportNumber(text);
    return !text.isEmpty() && !(number && *number == 0);
}

QString TQ3ReportDocument::ItemText(const TQ3ReportItem &item, const QHash<QString, int> &rows, int page,
                                    const TQ3ReportScope &totals) const
{
    // Every line break prints as one, however it was stored.
    return NormalizeLineBreaks(Text(item.Segments, rows, page, totals));
}

qreal TQ3ReportDocument::Measure(const TQ3ReportBand &band, const QHash<QString, int> &rows,
                                 const TQ3ReportScope &totals) const
{
    if (!BandShown(band, rows, totals))
        return 0;
    qreal growth = 0;
    for (const TQ3ReportItem &item : band.Items) {
        if (item.Grow)
            growth = qMax(growth, Growth(item, ItemText(item, rows, 0, totals)));
    }
    return band.Height + growth;
}

void TQ3ReportDocument::DrawPage(QPainter &painter, int index) const
{
    const QRectF area = Printable(*m_layout);
    for (const TQ3PlacedBand &placed : m_pages.at(index).Bands) {
        const qreal growth = placed.Height - placed.Band->Height;
        const QPointF origin(area.left(), placed.Top);
        for (const TQ3ReportItem &item : placed.Band->Items) {
            QRectF rect = item.Rect.translated(origin);
            if (item.AnchorBottom)
                rect.translate(0, growth);
            else if (item.Stretch)
                rect.setBottom(rect.bottom() + growth);
            switch (item.Kind) {
            case TQ3ReportItem::TKind::Text: {
                const QString text = ItemText(item, placed.Rows, index, placed.Totals);
                if (text.isEmpty())
                    break;
                painter.setFont(item.Font);
                painter.setPen(ItemColor(item, placed.Rows, placed.Totals));
                painter.drawText(rect, TextFlags(item), text);
                break;
            }
            case TQ3ReportItem::TKind::Line:
                painter.setPen(QPen(item.Color, item.PenWidth));
                painter.drawLine(rect.topLeft(), rect.bottomRight());
                break;
            case TQ3ReportItem::TKind::Box:
                painter.setPen(item.PenWidth > 0 ? QPen(item.Color, item.PenWidth) : QPen(Qt::NoPen));
                painter.setBrush(item.Fill.isValid() ? QBrush(item.Fill) : QBrush(Qt::NoBrush));
                painter.drawRect(rect);
                painter.setBrush(Qt::NoBrush);
                break;
            case TQ3ReportItem::TKind::Image:
                if (!item.Segments.isEmpty())
                    DrawColumnImage(painter, rect, FieldValue(item.Segments.constFirst(), placed.Rows));
                else if (!item.Image.isNull())
                    painter.drawImage(rect, item.Image);
                break;
            }
        }
    }
}
