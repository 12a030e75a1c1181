#include "Q3XlsWriter.h"

#include "Q3Bytes.h"
#include "Q3CompoundFile.h"
#include "Q3Exception.h"

#include <QDir>
#include <QHash>
#include <QSaveFile>

#include <cmath>

// The workbook is a BIFF8 stream: a globals part (fonts, number format, cell
// formats, the worksheet's name and the shared string table) followed by the
// worksheet's part (column widths, cells, window settings, merged ranges).
namespace {
constexpr quint16 RecBof = 0x0809;
constexpr quint16 RecEof = 0x000A;
constexpr quint16 RecCodepage = 0x0042;
constexpr quint16 RecWindow1 = 0x003D;
constexpr quint16 RecFont = 0x0031;
constexpr quint16 RecFormat = 0x041E;
constexpr quint16 RecXf = 0x00E0;
constexpr quint16 RecStyle = 0x0293;
constexpr quint16 RecBoundSheet = 0x0085;
constexpr quint16 RecSst = 0x00FC;
constexpr quint16 RecContinue = 0x003C;
constexpr quint16 RecExtSst = 0x00FF;
constexpr quint16 RecColInfo = 0x007D;
constexpr quint16 RecDimensions = 0x0200;
constexpr quint16 RecRow = 0x0208;
constexpr quint16 RecNumber = 0x0203;
constexpr quint16 RecLabelSst = 0x00FD;
constexpr quint16 RecBlank = 0x0201;
constexpr quint16 RecWindow2 = 0x023E;
constexpr quint16 RecMergedCells = 0x00E5;

constexpr qsizetype MaxRecordData = 8224;
constexpr int MaxRows = 65536;
constexpr int MaxColumns = 256;
constexpr qsizetype MaxTextLength = 32767;
constexpr qsizetype MaxSheetName = 31;
constexpr int RowsPerBlock = 32;
constexpr int RangesPerMergeRecord = 1026;

constexpr quint16 BofGlobals = 0x0005;
constexpr quint16 BofWorksheet = 0x0010;
constexpr quint16 CodepageUtf16 = 1200;

// Font index 4 does not exist in the format: the fifth FONT record is font 5.
constexpr quint16 FontNormal = 0;
constexpr quint16 FontBold = 5;
constexpr quint16 FormatGeneral = 0;
constexpr quint16 FormatMoney = 164; // the first index of a workbook's own formats

// Cell formats 0-14 are the styles' and 15 the default cell format, as every
// workbook has them; ours follow.
constexpr quint16 XfDefaultCell = 15;
constexpr quint16 XfText = 16;
constexpr quint16 XfTextBold = 17;
constexpr quint16 XfNumber = 18;
constexpr quint16 XfNumberBold = 19;

void Record(QByteArray &out, quint16 type, const QByteArray &data)
{
    AppendU16(out, type);
    AppendU16(out, quint16(data.size()));
    out.append(data);
}

// The text's code points as 8-bit characters, '?' for those beyond Latin-1.
QByteArray Latin1(const QString &text, qsizetype maxLength)
{
    QByteArray out;
    for (char32_t c : text.toUcs4()) {
        if (out.size() == maxLength)
            break;
        out.append(c <= 0xFF ? char(c) : '?');
    }
    return out;
}

// A string as 8-bit characters, after its length (in one or two bytes) and a flags byte.
QByteArray CompressedString(const QByteArray &latin1, bool twoByteLength)
{
    QByteArray out;
    if (twoByteLength)
        AppendU16(out, quint16(latin1.size()));
    else
        AppendU8(out, quint8(latin1.size()));
    AppendU8(out, 0);
    out.append(latin1);
    return out;
}

QString SheetName(const QString &name)
{
    QString result = QString::fromLatin1(Latin1(name, MaxSheetName));
    for (QChar &c : result) {
        if (QStringLiteral(":\\/?*[]").contains(c))
            c = u'_';
    }
    return result.isEmpty() ? QStringLiteral("Foglio1") : result;
}

struct TStringTable
{
    QList<QByteArray> Strings;
    QHash<QByteArray, quint32> Index;
    quint32 References = 0;

    quint32 Add(const QByteArray &text)
    {
        ++References;
        const auto found = Index.constFind(text);
        if (found != Index.constEnd())
            return found.value();
        const quint32 index = quint32(Strings.size());
        Strings.append(text);
        Index.insert(text, index);
        return index;
    }
};

enum class TCellKind { Blank, Number, Text };

struct TCell
{
    TCellKind Kind = TCellKind::Blank;
    double Number = 0;
    quint32 String = 0; // index in the shared strings
};

QList<QList<TCell>> PrepareCells(const TQ3XlsFoglio &foglio, TStringTable &strings)
{
    QList<QList<TCell>> rows;
    rows.reserve(foglio.Celle.size());
    for (const QList<QVariant> &values : foglio.Celle) {
        QList<TCell> cells(values.size());
        for (qsizetype c = 0; c < values.size(); ++c) {
            const QVariant &value = values[c];
            if (!value.isValid() || value.isNull())
                continue;
            if (value.typeId() == QMetaType::Double && std::isfinite(value.toDouble())) {
                cells[c].Kind = TCellKind::Number;
                cells[c].Number = value.toDouble();
                continue;
            }
            const QByteArray text = Latin1(value.toString(), MaxTextLength);
            if (text.isEmpty())
                continue;
            cells[c].Kind = TCellKind::Text;
            cells[c].String = strings.Add(text);
        }
        rows.append(cells);
    }
    return rows;
}

QString Refusal(const QString &percorso, const QString &reason)
{
    return QStringLiteral("Impossibile scrivere il file \"%1\": %2").arg(QDir::toNativeSeparators(percorso), reason);
}

void CheckLimits(const QString &percorso, const TQ3XlsFoglio &foglio)
{
    bool fits = foglio.Celle.size() <= MaxRows && foglio.LarghezzeColonne.size() <= MaxColumns;
    for (const QList<QVariant> &row : foglio.Celle)
        fits = fits && row.size() <= MaxColumns;
    if (!fits)
        throw EQ3Exception(
            Refusal(percorso, QStringLiteral("il foglio supera i limiti del formato (65536 righe, 256 colonne).")));
    for (const TQ3XlsUnione &u : foglio.Unioni) {
        const bool valid = 0 <= u.RigaDa && u.RigaDa <= u.RigaA && u.RigaA < MaxRows && 0 <= u.ColonnaDa
                           && u.ColonnaDa <= u.ColonnaA && u.ColonnaA < MaxColumns;
        if (!valid)
            throw EQ3Exception(Refusal(percorso, QStringLiteral("unione di celle non valida.")));
    }
}

QByteArray Bof(quint16 kind)
{
    QByteArray data;
    AppendU16(data, 0x0600); // BIFF8
    AppendU16(data, kind);
    AppendU16(data, 0x0DBB); // build
    AppendU16(data, 0x07CC); // year
    AppendU32(data, 0);      // file history
    AppendU32(data, 0x0006); // lowest version that can read the file
    return data;
}

QByteArray Font(bool bold)
{
    QByteArray data;
    AppendU16(data, 200);               // height in twips: 10 points
    AppendU16(data, bold ? 0x0001 : 0); // attributes; bit 0 repeats the weight for older readers
    AppendU16(data, 0x7FFF);            // automatic colour
    AppendU16(data, bold ? 700 : 400);  // weight
    AppendU16(data, 0);                 // no super/subscript
    AppendU8(data, 0);                  // no underline
    AppendU8(data, 0);                  // family
    AppendU8(data, 0);                  // character set
    AppendU8(data, 0);
    data.append(CompressedString("Arial", false));
    return data;
}

// A cell format. `used` says which groups of attributes the format sets itself
// (in a style's format: which it leaves out); a bordered format has thin lines
// on all four sides and wraps its text.
QByteArray Xf(quint16 font, quint16 format, quint16 protectionAndParent, quint8 used, bool bordered)
{
    constexpr quint8 wrap = 0x08;
    constexpr quint8 alignBottom = 0x20;
    constexpr quint32 thin = 1;
    constexpr quint32 automaticColour = 0x40;
    QByteArray data;
    AppendU16(data, font);
    AppendU16(data, format);
    AppendU16(data, protectionAndParent);
    AppendU8(data, alignBottom | (bordered ? wrap : 0));
    AppendU8(data, 0); // rotation
    AppendU8(data, 0); // indent, shrink, reading order
    AppendU8(data, used);
    if (bordered) {
        AppendU32(data, thin | thin << 4 | thin << 8 | thin << 12 | automaticColour << 16 | automaticColour << 23);
        AppendU32(data, automaticColour | automaticColour << 7);
    } else {
        AppendU32(data, 0);
        AppendU32(data, 0);
    }
    AppendU16(data, 0x40 | 0x41 << 7); // pattern colours: automatic, no fill
    return data;
}

void WriteFormats(QByteArray &out)
{
    constexpr quint16 styleFormat = 0xFFF5;  // locked, style, no parent
    constexpr quint16 cellOfNormal = 0x0001; // locked, parent: the Normal style
    constexpr quint8 allGroups = 0xFC;
    constexpr quint8 styleFontOnly = 0xF4;
    for (int i = 0; i < 4; ++i)
        Record(out, RecFont, Font(false));
    Record(out, RecFont, Font(true));

    QByteArray money;
    AppendU16(money, FormatMoney);
    money.append(CompressedString("#,##0.00", true));
    Record(out, RecFormat, money);

    Record(out, RecXf, Xf(FontNormal, FormatGeneral, styleFormat, 0, false));
    for (int i = 1; i < XfDefaultCell; ++i)
        Record(out, RecXf, Xf(FontNormal, FormatGeneral, styleFormat, styleFontOnly, false));
    Record(out, RecXf, Xf(FontNormal, FormatGeneral, cellOfNormal, 0, false));
    Record(out, RecXf, Xf(FontNormal, FormatGeneral, cellOfNormal, allGroups, true));
    Record(out, RecXf, Xf(FontBold, FormatGeneral, cellOfNormal, allGroups, true));
    Record(out, RecXf, Xf(FontNormal, FormatMoney, cellOfNormal, allGroups, true));
    Record(out, RecXf, Xf(FontBold, FormatMoney, cellOfNormal, allGroups, true));

    QByteArray normal;
    AppendU16(normal, 0x8000); // built-in style on cell format 0
    AppendU8(normal, 0);       // Normal
    AppendU8(normal, 0xFF);
    Record(out, RecStyle, normal);
}

// The shared strings, continued over as many records as they need (a string's
// header never splits; a string's remainder restarts with its flags byte), then
// the index of every few strings' positions.
void WriteStringTable(QByteArray &out, const TStringTable &table)
{
    const int perBucket = qMax(8, int((table.Strings.size() + 127) / 128));
    QByteArray index;
    AppendU16(index, quint16(perBucket));

    QByteArray record;
    AppendU32(record, table.References);
    AppendU32(record, quint32(table.Strings.size()));
    quint16 type = RecSst;
    const auto flush = [&] {
        Record(out, type, record);
        record.clear();
        type = RecContinue;
    };
    for (qsizetype i = 0; i < table.Strings.size(); ++i) {
        const QByteArray &text = table.Strings[i];
        const qsizetype header = 3;
        if (MaxRecordData - record.size() < header + (text.isEmpty() ? 0 : 1))
            flush();
        if (i % perBucket == 0) {
            AppendU32(index, quint32(out.size() + 4 + record.size()));
            AppendU16(index, quint16(4 + record.size()));
            AppendU16(index, 0);
        }
        AppendU16(record, quint16(text.size()));
        AppendU8(record, 0);
        qsizetype written = 0;
        for (;;) {
            const qsizetype part = qMin(text.size() - written, MaxRecordData - record.size());
            record.append(text.constData() + written, part);
            written += part;
            if (written == text.size())
                break;
            flush();
            AppendU8(record, 0); // the rest is 8-bit characters too
        }
    }
    Record(out, type, record);
    Record(out, RecExtSst, index);
}

// Returns the position of the sheet's stream offset, filled in once known.
qsizetype WriteGlobals(QByteArray &out, const QString &sheetName, const TStringTable &strings)
{
    Record(out, RecBof, Bof(BofGlobals));
    QByteArray codepage;
    AppendU16(codepage, CodepageUtf16);
    Record(out, RecCodepage, codepage);

    QByteArray window;
    AppendU16(window, 0);      // left
    AppendU16(window, 0);      // top
    AppendU16(window, 0x3A98); // width
    AppendU16(window, 0x2328); // height
    AppendU16(window, 0x0038); // scroll bars and sheet tabs shown
    AppendU16(window, 0);      // active sheet
    AppendU16(window, 0);      // first tab shown
    AppendU16(window, 1);      // selected sheets
    AppendU16(window, 0x0258); // tab bar width ratio
    Record(out, RecWindow1, window);

    WriteFormats(out);

    QByteArray sheet;
    AppendU32(sheet, 0); // stream offset of the sheet's BOF
    AppendU8(sheet, 0);  // visible
    AppendU8(sheet, 0);  // worksheet
    sheet.append(CompressedString(Latin1(sheetName, MaxSheetName), false));
    const qsizetype offsetPosition = out.size() + 4;
    Record(out, RecBoundSheet, sheet);

    WriteStringTable(out, strings);
    Record(out, RecEof, QByteArray());
    return offsetPosition;
}

void WriteColumnWidths(QByteArray &out, const QList<int> &widths)
{
    for (qsizetype c = 0; c < widths.size(); ++c) {
        QByteArray data;
        AppendU16(data, quint16(c));
        AppendU16(data, quint16(c));
        AppendU16(data, quint16(qBound(0, qRound(widths[c] * 256.0 / 7.0), 0xFFFF)));
        AppendU16(data, XfDefaultCell);
        AppendU16(data, 0);
        AppendU16(data, 0);
        Record(out, RecColInfo, data);
    }
}

void WriteCells(QByteArray &out, const QList<QList<TCell>> &rows, const QSet<int> &boldRows)
{
    for (qsizetype first = 0; first < rows.size(); first += RowsPerBlock) {
        const qsizetype last = qMin(first + RowsPerBlock, rows.size());
        for (qsizetype r = first; r < last; ++r) {
            if (rows[r].isEmpty())
                continue;
            QByteArray data;
            AppendU16(data, quint16(r));
            AppendU16(data, 0);
            AppendU16(data, quint16(rows[r].size()));
            AppendU16(data, 0x00FF); // default height
            AppendU16(data, 0);
            AppendU16(data, 0);
            AppendU32(data, 0x0100);
            Record(out, RecRow, data);
        }
        for (qsizetype r = first; r < last; ++r) {
            const bool bold = boldRows.contains(int(r));
            for (qsizetype c = 0; c < rows[r].size(); ++c) {
                const TCell &cell = rows[r][c];
                QByteArray data;
                AppendU16(data, quint16(r));
                AppendU16(data, quint16(c));
                if (cell.Kind == TCellKind::Number) {
                    AppendU16(data, bold ? XfNumberBold : XfNumber);
                    AppendDouble(data, cell.Number);
                    Record(out, RecNumber, data);
                } else if (cell.Kind == TCellKind::Text) {
                    AppendU16(data, bold ? XfTextBold : XfText);
                    AppendU32(data, cell.String);
                    Record(out, RecLabelSst, data);
                } else {
                    AppendU16(data, bold ? XfTextBold : XfText);
                    Record(out, RecBlank, data);
                }
            }
        }
    }
}

void WriteMerges(QByteArray &out, const QList<TQ3XlsUnione> &merges)
{
    for (qsizetype first = 0; first < merges.size(); first += RangesPerMergeRecord) {
        const qsizetype last = qMin(first + RangesPerMergeRecord, merges.size());
        QByteArray data;
        AppendU16(data, quint16(last - first));
        for (qsizetype i = first; i < last; ++i) {
            AppendU16(data, quint16(merges[i].RigaDa));
            AppendU16(data, quint16(merges[i].RigaA));
            AppendU16(data, quint16(merges[i].ColonnaDa));
            AppendU16(data, quint16(merges[i].ColonnaA));
        }
        Record(out, RecMergedCells, data);
    }
}

void WriteSheet(QByteArray &out, const TQ3XlsFoglio &foglio, const QList<QList<TCell>> &rows)
{
    Record(out, RecBof, Bof(BofWorksheet));
    WriteColumnWidths(out, foglio.LarghezzeColonne);

    quint32 usedRows = 0;
    quint16 usedColumns = 0;
    for (qsizetype r = 0; r < rows.size(); ++r) {
        if (!rows[r].isEmpty())
            usedRows = quint32(r + 1);
        usedColumns = qMax(usedColumns, quint16(rows[r].size()));
    }
    QByteArray dimensions;
    AppendU32(dimensions, 0);
    AppendU32(dimensions, usedRows);
    AppendU16(dimensions, 0);
    AppendU16(dimensions, usedColumns);
    AppendU16(dimensions, 0);
    Record(out, RecDimensions, dimensions);

    WriteCells(out, rows, foglio.RigheGrassetto);

    QByteArray window;
    AppendU16(window, 0x06B6); // grid, headers, zeros, outline shown; sheet selected and active
    AppendU16(window, 0);      // first row shown
    AppendU16(window, 0);      // first column shown
    AppendU16(window, 0x40);   // automatic grid colour
    AppendU16(window, 0);
    AppendU16(window, 0); // page break preview zoom: default
    AppendU16(window, 0); // normal zoom: default
    AppendU32(window, 0);
    Record(out, RecWindow2, window);

    WriteMerges(out, foglio.Unioni);
    Record(out, RecEof, QByteArray());
}
} // namespace

void Q3ScriviXls(const QString &percorso, const TQ3XlsFoglio &foglio)
{
    CheckLimits(percorso, foglio);
    TStringTable strings;
    const QList<QList<TCell>> rows = PrepareCells(foglio, strings);

    QByteArray workbook;
    const qsizetype sheetOffsetPosition = WriteGlobals(workbook, SheetName(foglio.Nome), strings);
    PutU32(workbook, sheetOffsetPosition, quint32(workbook.size()));
    WriteSheet(workbook, foglio, rows);
    const QByteArray file = Q3CompoundFile(QStringLiteral("Workbook"), workbook);

    QSaveFile out(percorso);
    out.setDirectWriteFallback(true);
    if (!out.open(QIODevice::WriteOnly) || out.write(file) != file.size() || !out.commit())
        throw EQ3Exception(Refusal(percorso, out.errorString()));
}
