#include "Q3ReportLayout.h"

#include "Q3Exception.h"

#include <QDir>
#include <QPageSize>
#include <QXmlStreamReader>

namespace {

// An element of the project document, read whole before it is interpreted.
struct TNode
{
    QString Name;
    QXmlStreamAttributes Attributes;
    QString Text;
    qint64 Line = 0;
    QList<TNode> Children;

    QString Attr(const QString &name, const QString &fallback = {}) const
    {
        return Attributes.hasAttribute(name) ? Attributes.value(name).toString() : fallback;
    }
};

[[noreturn]] void Fail(const TNode &node, const QString &what)
{
    throw EQ3Exception(QStringLiteral("Progetto delle stampe, riga %1 (<%2>): %3").arg(node.Line).arg(node.Name, what));
}

TNode ReadDocument(const QByteArray &content)
{
    QXmlStreamReader reader(content);
    QList<TNode> stack;
    TNode root;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            TNode node;
            node.Name = reader.name().toString();
            node.Attributes = reader.attributes();
            node.Line = reader.lineNumber();
            stack.append(node);
            break;
        }
        case QXmlStreamReader::Characters:
            if (!stack.isEmpty())
                stack.last().Text += reader.text();
            break;
        case QXmlStreamReader::EndElement: {
            TNode node = stack.takeLast();
            if (stack.isEmpty())
                root = node;
            else
                stack.last().Children.append(node);
            break;
        }
        default:
            break;
        }
    }
    if (reader.hasError())
        throw EQ3Exception(
            QStringLiteral("Progetto delle stampe, riga %1: %2").arg(reader.lineNumber()).arg(reader.errorString()));
    if (root.Name != QLatin1String("project"))
        throw EQ3Exception(QStringLiteral("Il progetto delle stampe non inizia con <project>."));
    return root;
}

qreal Length(const TNode &node, const QString &name, qreal fallback = 0)
{
    const QString text = node.Attr(name);
    if (text.isEmpty())
        return fallback;
    bool ok = false;
    const qreal value = text.toDouble(&ok);
    if (!ok)
        Fail(node, QStringLiteral("la misura %1=\"%2\" non è un numero").arg(name, text));
    return value * Q3ReportUnitsPerMm;
}

bool Flag(const TNode &node, const QString &name, bool fallback = false)
{
    const QString text = node.Attr(name);
    if (text.isEmpty())
        return fallback;
    if (text == QLatin1String("true"))
        return true;
    if (text == QLatin1String("false"))
        return false;
    Fail(node, QStringLiteral("%1 vale \"true\" o \"false\"").arg(name));
}

QColor Colour(const TNode &node, const QString &name)
{
    const QColor colour(node.Attr(name));
    if (!colour.isValid())
        Fail(node, QStringLiteral("il colore %1=\"%2\" non è valido").arg(name, node.Attr(name)));
    return colour;
}

// Font, size and colour of a text, from a style and the item's own attributes.
struct TStyle
{
    QString Family = QStringLiteral("DejaVu Sans");
    qreal Size = 9;
    bool Bold = false;
    bool Italic = false;
    QColor Color = Qt::black;
    QColor NegativeColor;

    void Apply(const TNode &node)
    {
        Family = node.Attr(QStringLiteral("font"), Family);
        if (node.Attributes.hasAttribute(QStringLiteral("size")))
            Size = Length(node, QStringLiteral("size")) / Q3ReportUnitsPerMm;
        Bold = Flag(node, QStringLiteral("bold"), Bold);
        Italic = Flag(node, QStringLiteral("italic"), Italic);
        if (node.Attributes.hasAttribute(QStringLiteral("color")))
            Color = QColor(node.Attr(QStringLiteral("color")));
        if (node.Attributes.hasAttribute(QStringLiteral("negative-color")))
            NegativeColor = Colour(node, QStringLiteral("negative-color"));
    }

    QFont Font() const
    {
        QFont font(Family);
        // Sizes in layout units, so that text measures the same on every device.
        font.setPixelSize(qRound(Size * 25.4 / 72.0 * Q3ReportUnitsPerMm));
        font.setBold(Bold);
        font.setItalic(Italic);
        font.setHintingPreference(QFont::PreferNoHinting);
        font.setKerning(true);
        // A spacing too small to see turns ligatures off, so that "fi" stays
        // two letters for searching and copying from the PDF.
        font.setLetterSpacing(QFont::AbsoluteSpacing, 0.05);
        return font;
    }
};

class TReader
{
public:
    explicit TReader(QString folder) : m_folder(std::move(folder)) {}

    std::shared_ptr<TQ3ReportLayout> Report(const TNode &node)
    {
        auto layout = std::make_shared<TQ3ReportLayout>();
        layout->Name = node.Attr(QStringLiteral("name"));
        if (layout->Name.isEmpty())
            Fail(node, QStringLiteral("manca il nome del report"));
        layout->Title = node.Attr(QStringLiteral("title"), layout->Name);
        layout->Page = QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(10, 10, 10, 10),
                                   QPageLayout::Millimeter);
        m_styles.clear();
        m_styles.insert(QString(), TStyle());
        m_report = layout.get();
        for (const TNode &child : node.Children) {
            const QString &name = child.Name;
            if (name == QLatin1String("page"))
                Page(child, *layout);
            else if (name == QLatin1String("connection"))
                layout->Connections << Required(child, QStringLiteral("name"));
            else if (name == QLatin1String("parameter"))
                layout->Parameters << Required(child, QStringLiteral("name"));
            else if (name == QLatin1String("style"))
                Style(child);
            else if (name == QLatin1String("pageHeader") || name == QLatin1String("pageFooter"))
                PageBand(child, name == QLatin1String("pageHeader") ? layout->PageHeader : layout->PageFooter);
            else
                layout->Body << Section(child, QString());
        }
        return layout;
    }

private:
    static QString Required(const TNode &node, const QString &name)
    {
        const QString value = node.Attr(name);
        if (value.isEmpty())
            Fail(node, QStringLiteral("manca l'attributo %1").arg(name));
        return value;
    }

    void Page(const TNode &node, TQ3ReportLayout &layout)
    {
        const QString size = node.Attr(QStringLiteral("size"), QStringLiteral("A4"));
        QPageSize pageSize;
        if (size == QLatin1String("A4"))
            pageSize = QPageSize(QPageSize::A4);
        else if (size == QLatin1String("A5"))
            pageSize = QPageSize(QPageSize::A5);
        else if (size == QLatin1String("A3"))
            pageSize = QPageSize(QPageSize::A3);
        else if (size == QLatin1String("Letter"))
            pageSize = QPageSize(QPageSize::Letter);
        else
            Fail(node, QStringLiteral("formato di pagina \"%1\" sconosciuto").arg(size));
        const QString orientation = node.Attr(QStringLiteral("orientation"), QStringLiteral("portrait"));
        if (orientation != QLatin1String("portrait") && orientation != QLatin1String("landscape"))
            Fail(node, QStringLiteral("orientation vale \"portrait\" o \"landscape\""));
        const QMarginsF margins(Length(node, QStringLiteral("left"), 1000) / Q3ReportUnitsPerMm,
                                Length(node, QStringLiteral("top"), 1000) / Q3ReportUnitsPerMm,
                                Length(node, QStringLiteral("right"), 1000) / Q3ReportUnitsPerMm,
                                Length(node, QStringLiteral("bottom"), 1000) / Q3ReportUnitsPerMm);
        layout.Page =
            QPageLayout(pageSize,
                        orientation == QLatin1String("portrait") ? QPageLayout::Portrait : QPageLayout::Landscape,
                        margins, QPageLayout::Millimeter);
    }

    void Style(const TNode &node)
    {
        TStyle style = m_styles.value(node.Attr(QStringLiteral("base")));
        style.Apply(node);
        m_styles.insert(Required(node, QStringLiteral("name")), style);
    }

    TQ3ReportSection Section(const TNode &node, const QString &connection)
    {
        TQ3ReportSection section;
        const QString &name = node.Name;
        if (name == QLatin1String("title") || name == QLatin1String("band") || name == QLatin1String("summary")) {
            section.Band = Band(node, connection);
        } else if (name == QLatin1String("detail")) {
            section.Kind = TQ3ReportSection::TKind::Detail;
            section.Connection = Connection(node);
            section.Link = node.Attr(QStringLiteral("link"));
            section.RepeatHeader = Flag(node, QStringLiteral("repeat-header"), true);
            section.Order = Order(node);
            for (const TNode &child : node.Children) {
                if (child.Name == QLatin1String("header"))
                    section.Header = Band(child, section.Connection);
                else if (child.Name == QLatin1String("band"))
                    section.Band = Band(child, section.Connection);
                else if (child.Name == QLatin1String("footer"))
                    section.Footer = Band(child, section.Connection);
                else if (child.Name == QLatin1String("group") && section.Groups.isEmpty())
                    Group(child, section.Connection, section.Groups);
                else if (child.Name == QLatin1String("group"))
                    Fail(child,
                         QStringLiteral("un <detail> contiene un solo <group>: un gruppo interno va dentro l'altro"));
                else
                    Fail(child, QStringLiteral("un <detail> contiene <header>, <group>, <band> e <footer>"));
            }
        } else if (name == QLatin1String("master")) {
            section.Kind = TQ3ReportSection::TKind::Master;
            section.Connection = Connection(node);
            section.PageBreak = Flag(node, QStringLiteral("page-break"));
            for (const TNode &child : node.Children)
                section.Sections << Section(child, section.Connection);
        } else {
            Fail(node, QStringLiteral("elemento sconosciuto"));
        }
        return section;
    }

    // "COLUMN, COLUMN desc, ...": the columns a detail's rows are sorted by.
    static QList<TQ3ReportSortKey> Order(const TNode &node)
    {
        QList<TQ3ReportSortKey> keys;
        const QString order = node.Attr(QStringLiteral("order"));
        if (order.trimmed().isEmpty())
            return keys;
        for (const QString &part : order.split(QLatin1Char(','))) {
            const QStringList words = part.split(QLatin1Char(' '), Qt::SkipEmptyParts);
            const bool known =
                words.size() == 1
                || (words.size() == 2 && (words.at(1) == QLatin1String("asc") || words.at(1) == QLatin1String("desc")));
            if (!known)
                Fail(node,
                     QStringLiteral(
                         "order elenca colonne separate da virgole, ciascuna con \"asc\" o \"desc\" facoltativo"));
            keys << TQ3ReportSortKey{words.at(0), words.size() == 2 && words.at(1) == QLatin1String("desc"), -1};
        }
        return keys;
    }

    // A group and, nested in it, its inner groups, outermost first.
    void Group(const TNode &node, const QString &connection, QList<TQ3ReportGroup> &groups)
    {
        TQ3ReportGroup group;
        group.Column = Required(node, QStringLiteral("column"));
        const TNode *inner = nullptr;
        for (const TNode &child : node.Children) {
            if (child.Name == QLatin1String("groupHeader"))
                group.Header = Band(child, connection);
            else if (child.Name == QLatin1String("groupFooter"))
                group.Footer = Band(child, connection);
            else if (child.Name == QLatin1String("group") && !inner)
                inner = &child;
            else
                Fail(child,
                     QStringLiteral("un <group> contiene <groupHeader>, <groupFooter> e al più un <group> interno"));
        }
        groups << group;
        if (inner)
            Group(*inner, connection, groups);
    }

    QString Connection(const TNode &node) const
    {
        const QString name = Required(node, QStringLiteral("connection"));
        if (!m_report->Connections.contains(name))
            Fail(node, QStringLiteral("la connessione \"%1\" non è dichiarata con <connection>").arg(name));
        return name;
    }

    TQ3ReportBand Band(const TNode &node, const QString &connection)
    {
        TQ3ReportBand band;
        band.Height = Length(node, QStringLiteral("height"));
        if (node.Attributes.hasAttribute(QStringLiteral("if")))
            band.Condition = Segments(node, node.Attr(QStringLiteral("if")), connection);
        for (const TNode &child : node.Children)
            band.Items << Item(child, connection);
        return band;
    }

    // Page headers and footers keep their place on every page: they have no condition.
    void PageBand(const TNode &node, TQ3ReportBand &band)
    {
        if (node.Attributes.hasAttribute(QStringLiteral("if")))
            Fail(node, QStringLiteral("l'intestazione e il piede di pagina si stampano sempre: non hanno \"if\""));
        band = Band(node, QString());
    }

    // The pieces of a text, whose connections and parameters the report declares.
    QList<TQ3ReportSegment> Segments(const TNode &node, const QString &text, const QString &connection) const
    {
        QList<TQ3ReportSegment> segments;
        try {
            segments = Q3ParseReportText(text, connection);
        } catch (const EQ3Exception &e) {
            Fail(node, e.Message());
        }
        for (const TQ3ReportSegment &segment : std::as_const(segments)) {
            if (!segment.Connection.isEmpty() && !m_report->Connections.contains(segment.Connection))
                Fail(node,
                     QStringLiteral("la connessione \"%1\" non è dichiarata con <connection>").arg(segment.Connection));
            if (segment.Kind == TQ3ReportSegment::TKind::Parameter && !m_report->Parameters.contains(segment.Text))
                Fail(node, QStringLiteral("il parametro \"%1\" non è dichiarato con <parameter>").arg(segment.Text));
        }
        return segments;
    }

    TQ3ReportItem Item(const TNode &node, const QString &connection)
    {
        TQ3ReportItem item;
        const qreal x = Length(node, QStringLiteral("x"));
        const qreal y = Length(node, QStringLiteral("y"));
        item.Rect = QRectF(x, y, Length(node, QStringLiteral("width")), Length(node, QStringLiteral("height")));
        item.Stretch = Flag(node, QStringLiteral("stretch"));
        const QString anchor = node.Attr(QStringLiteral("anchor"), QStringLiteral("top"));
        if (anchor != QLatin1String("top") && anchor != QLatin1String("bottom"))
            Fail(node, QStringLiteral("anchor vale \"top\" o \"bottom\""));
        item.AnchorBottom = anchor == QLatin1String("bottom");
        item.PenWidth = Length(node, QStringLiteral("line-width"), 20);
        if (node.Attributes.hasAttribute(QStringLiteral("color")))
            item.Color = QColor(node.Attr(QStringLiteral("color")));
        const QString &name = node.Name;
        if (name == QLatin1String("text") || name == QLatin1String("field") || name == QLatin1String("param")
            || name == QLatin1String("pageNumber")) {
            Text(node, connection, item);
        } else if (name == QLatin1String("line")) {
            item.Kind = TQ3ReportItem::TKind::Line;
            item.Rect = QRectF(QPointF(Length(node, QStringLiteral("x1")), Length(node, QStringLiteral("y1"))),
                               QPointF(Length(node, QStringLiteral("x2")), Length(node, QStringLiteral("y2"))));
        } else if (name == QLatin1String("box")) {
            item.Kind = TQ3ReportItem::TKind::Box;
            if (node.Attributes.hasAttribute(QStringLiteral("fill")))
                item.Fill = QColor(node.Attr(QStringLiteral("fill")));
            if (!node.Attributes.hasAttribute(QStringLiteral("line-width")) && item.Fill.isValid())
                item.PenWidth = 0;
        } else if (name == QLatin1String("image")) {
            item.Kind = TQ3ReportItem::TKind::Image;
            if (node.Attributes.hasAttribute(QStringLiteral("source"))) {
                // The picture of a column (a BLOB holding an image file's bytes).
                item.Segments =
                    Segments(node, QLatin1Char('{') + node.Attr(QStringLiteral("source")) + QLatin1Char('}'),
                             connection);
                if (item.Segments.size() != 1 || item.Segments.constFirst().Kind != TQ3ReportSegment::TKind::Field)
                    Fail(node, QStringLiteral("source indica una colonna: connessione.COLONNA"));
            } else {
                const QString file = QDir(m_folder).filePath(Required(node, QStringLiteral("file")));
                // A missing picture leaves its place empty: the rest of the document still prints.
                item.Image.load(file);
            }
        } else {
            Fail(node, QStringLiteral("elemento sconosciuto"));
        }
        return item;
    }

    void Text(const TNode &node, const QString &connection, TQ3ReportItem &item)
    {
        TStyle style = m_styles.value(node.Attr(QStringLiteral("style")));
        if (node.Attributes.hasAttribute(QStringLiteral("style"))
            && !m_styles.contains(node.Attr(QStringLiteral("style"))))
            Fail(node, QStringLiteral("lo stile \"%1\" non è definito").arg(node.Attr(QStringLiteral("style"))));
        style.Apply(node);
        item.Font = style.Font();
        item.Color = style.Color;
        item.NegativeColor = style.NegativeColor;
        item.Grow = Flag(node, QStringLiteral("grow"));
        item.Wrap = item.Grow || Flag(node, QStringLiteral("wrap"));
        item.Stretch = item.Stretch || item.Grow;

        const QString align = node.Attr(QStringLiteral("align"), QStringLiteral("left"));
        const QString valign = node.Attr(QStringLiteral("valign"), QStringLiteral("top"));
        const QHash<QString, int> horizontal = {{QStringLiteral("left"), Qt::AlignLeft},
                                                {QStringLiteral("center"), Qt::AlignHCenter},
                                                {QStringLiteral("right"), Qt::AlignRight},
                                                {QStringLiteral("justify"), Qt::AlignJustify}};
        const QHash<QString, int> vertical = {{QStringLiteral("top"), Qt::AlignTop},
                                              {QStringLiteral("middle"), Qt::AlignVCenter},
                                              {QStringLiteral("bottom"), Qt::AlignBottom}};
        if (!horizontal.contains(align) || !vertical.contains(valign))
            Fail(node, QStringLiteral("allineamento sconosciuto"));
        item.Flags = horizontal.value(align) | vertical.value(valign);

        QString text = node.Text;
        const QString format = node.Attr(QStringLiteral("format"));
        if (node.Name == QLatin1String("field")) {
            const QString source = Required(node, QStringLiteral("source"));
            text = QLatin1Char('{') + source + (format.isEmpty() ? QString() : QLatin1Char('|') + format)
                   + (Flag(node, QStringLiteral("blank-zero")) ? QStringLiteral("|blankzero") : QString())
                   + QLatin1Char('}');
        } else if (node.Name == QLatin1String("param")) {
            text = QStringLiteral("{param:") + Required(node, QStringLiteral("name")) + QLatin1Char('}');
        } else if (node.Name == QLatin1String("pageNumber")) {
            text = node.Attr(QStringLiteral("text"), QStringLiteral("Pagina {page} di {pages}"));
        } else {
            text = text.trimmed();
        }
        item.Segments = Segments(node, text, connection);
    }

    QString m_folder;
    QHash<QString, TStyle> m_styles;
    TQ3ReportLayout *m_report = nullptr;
};

// "connection.COLUMN" or, inside a detail, "COLUMN".
void Source(const QString &source, const QString &defaultConnection, TQ3ReportSegment &segment)
{
    const qsizetype dot = source.indexOf(QLatin1Char('.'));
    segment.Connection = dot < 0 ? defaultConnection : source.left(dot);
    segment.Text = source.mid(dot + 1);
    if (segment.Connection.isEmpty() || segment.Text.isEmpty())
        throw EQ3Exception(QStringLiteral("il campo \"%1\" non indica la connessione").arg(source));
}

TQ3ReportSegment Placeholder(const QString &inner, const QString &defaultConnection)
{
    TQ3ReportSegment segment;
    QStringList parts = inner.split(QLatin1Char('|'));
    const QString head = parts.takeFirst().trimmed();
    if (head == QLatin1String("page")) {
        segment.Kind = TQ3ReportSegment::TKind::Page;
    } else if (head == QLatin1String("pages")) {
        segment.Kind = TQ3ReportSegment::TKind::Pages;
    } else if (head.startsWith(QLatin1String("param:"))) {
        segment.Kind = TQ3ReportSegment::TKind::Parameter;
        segment.Text = head.mid(6).trimmed();
    } else if (head.startsWith(QLatin1String("sum:"))) {
        segment.Kind = TQ3ReportSegment::TKind::Sum;
        Source(head.mid(4).trimmed(), defaultConnection, segment);
    } else if (head == QLatin1String("count") || head.startsWith(QLatin1String("count:"))) {
        segment.Kind = TQ3ReportSegment::TKind::Count;
        segment.Connection = head.size() > 5 ? head.mid(6).trimmed() : defaultConnection;
        if (segment.Connection.isEmpty())
            throw EQ3Exception(QStringLiteral("il conteggio \"%1\" non indica la connessione").arg(head));
    } else {
        segment.Kind = TQ3ReportSegment::TKind::Field;
        Source(head, defaultConnection, segment);
    }
    for (const QString &part : std::as_const(parts)) {
        const QString option = part.trimmed();
        // The text of "before:" and "after:" runs to the next "|" or "}", blanks included.
        const QString text = part.mid(part.indexOf(QLatin1Char(':')) + 1);
        if (option.startsWith(QLatin1String("before:")))
            segment.Before = text;
        else if (option.startsWith(QLatin1String("after:")))
            segment.After = text;
        else if (option == QLatin1String("blankzero"))
            segment.BlankZero = true;
        else if (option == QLatin1String("plus"))
            segment.PlusSign = true;
        else if (option == QLatin1String("trim"))
            segment.Trim = true;
        else if (option == QLatin1String("currency") || option == QLatin1String("money")
                 || option == QLatin1String("date") || option == QLatin1String("year")
                 || option == QLatin1String("percent") || option == QLatin1String("integer")
                 || option.startsWith(QLatin1String("number:")) || option.startsWith(QLatin1String("money:")))
            segment.Format = option;
        else
            throw EQ3Exception(QStringLiteral("formato \"%1\" sconosciuto").arg(option));
    }
    return segment;
}

} // namespace

QList<TQ3ReportSegment> Q3ParseReportText(const QString &text, const QString &defaultConnection)
{
    QList<TQ3ReportSegment> segments;
    QString literal;
    auto flush = [&] {
        if (literal.isEmpty())
            return;
        TQ3ReportSegment segment;
        segment.Text = literal;
        segments << segment;
        literal.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if ((c == QLatin1Char('{') || c == QLatin1Char('}')) && i + 1 < text.size() && text.at(i + 1) == c) {
            literal += c;
            ++i;
        } else if (c == QLatin1Char('{')) {
            const qsizetype end = text.indexOf(QLatin1Char('}'), i);
            if (end < 0)
                throw EQ3Exception(QStringLiteral("manca la \"}\" di chiusura"));
            flush();
            segments << Placeholder(text.mid(i + 1, end - i - 1), defaultConnection);
            i = end;
        } else {
            literal += c;
        }
    }
    flush();
    return segments;
}

QList<std::shared_ptr<TQ3ReportLayout>> Q3ReadReportProject(const QByteArray &content, const QString &folder)
{
    const TNode root = ReadDocument(content);
    TReader reader(folder);
    QList<std::shared_ptr<TQ3ReportLayout>> reports;
    for (const TNode &child : root.Children) {
        if (child.Name != QLatin1String("report"))
            Fail(child, QStringLiteral("un <project> contiene solo <report>"));
        reports << reader.Report(child);
    }
    return reports;
}
