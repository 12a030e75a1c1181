#include "Q3Exception.h"
#include "Q3XlsWriter.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

// Every workbook is read back by xlrd (Debian's python3-xlrd), a reader that
// shares nothing with the writer. The script prints what it read as JSON: the
// sheet names, every cell as [type, value, format index], the merged ranges
// (half-open, as xlrd gives them), the column widths, every cell format and
// whatever xlrd complained about. With "summary" it prints only the sizes and
// the sum of the numbers, for sheets too big to print whole.
static const char *const ReaderScript = R"(
import io, json, sys, xlrd
log = io.StringIO()
book = xlrd.open_workbook(sys.argv[1], formatting_info=True, logfile=log)
sheet = book.sheet_by_index(0)
if len(sys.argv) > 2:
    total = sum(sheet.cell_value(r, c) for r in range(sheet.nrows) for c in range(sheet.row_len(r))
                if sheet.cell_type(r, c) == xlrd.XL_CELL_NUMBER)
    print(json.dumps({"sheets": book.sheet_names(), "rows": sheet.nrows, "columns": sheet.ncols,
                      "sum": total, "last": sheet.cell_value(sheet.nrows - 1, sheet.ncols - 1), "log": log.getvalue()}))
    sys.exit(0)
formats = []
for xf in book.xf_list:
    font = book.font_list[xf.font_index]
    fmt = book.format_map.get(xf.format_key)
    formats.append({"bold": bool(font.bold), "weight": font.weight,
                    "borders": [xf.border.left_line_style, xf.border.right_line_style,
                                xf.border.top_line_style, xf.border.bottom_line_style],
                    "wrap": xf.alignment.text_wrapped, "format": fmt.format_str if fmt else ""})
cells = [[[sheet.cell_type(r, c), sheet.cell_value(r, c), sheet.cell_xf_index(r, c)]
          for c in range(sheet.row_len(r))] for r in range(sheet.nrows)]
print(json.dumps({"sheets": book.sheet_names(), "cells": cells,
                  "merged": [list(m) for m in sheet.merged_cells],
                  "widths": {str(c): info.width for c, info in sheet.colinfo_map.items()},
                  "formats": formats, "log": log.getvalue()}))
)";

// xlrd's cell types.
constexpr int CellText = 1;
constexpr int CellNumber = 2;
constexpr int CellBlank = 6;

class TestQ3XlsWriter : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void turnoverSheetReadsBackCellByCell();
    void textOutsideLatin1BecomesQuestionMark();
    void mergesWidthsAndBoldRowsReadBack();
    void everyCellIsBorderedAndWrapped();
    void numbersShowAsMoney();
    void emptySheetIsAValidWorkbook();
    void sheetNameIsMadeValid();
    void longTextsSpanRecordsAndAreCutAtTheCellLimit();
    void bigSheetReadsBack();
    void fullHeightSheetNeedsMoreThanTheHeadersFatList();
    void existingFileIsOverwritten();
    void missingFolderRaisesNamingTheFile();
    void sheetBeyondTheFormatsLimitsIsRefused();
    void invalidMergeIsRefused();
    void writesWithoutAnyOtherProgram();

private:
    QString Path(const QString &name) const { return m_dir->filePath(name); }
    QJsonObject Read(const QString &path, bool summary = false);
    static QString Failure(const QString &path, const TQ3XlsFoglio &sheet);
    static TQ3XlsFoglio TurnoverSheet();

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestQ3XlsWriter::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

QJsonObject TestQ3XlsWriter::Read(const QString &path, bool summary)
{
    // Debian's xlrd belongs to Debian's interpreter, which a developer's PATH may hide.
    const QString python = QFile::exists(QStringLiteral("/usr/bin/python3"))
                               ? QStringLiteral("/usr/bin/python3")
                               : QStandardPaths::findExecutable(QStringLiteral("python3"));
    QStringList arguments{QStringLiteral("-c"), QString::fromUtf8(ReaderScript), path};
    if (summary)
        arguments << QStringLiteral("summary");
    QProcess process;
    process.start(python, arguments);
    const bool finished = process.waitForFinished(90000);
    const QByteArray errors = process.readAllStandardError();
    if (!finished || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        qWarning().noquote() << "The reader failed (python3-xlrd is installed by scripts/install-deps.sh):"
                             << QString::fromUtf8(errors);
        return {};
    }
    const QJsonObject read = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    if (!read.value(QStringLiteral("log")).toString().isEmpty())
        qWarning().noquote() << "xlrd says:" << read.value(QStringLiteral("log")).toString();
    return read;
}

// The message the writer raises, empty when it writes the file.
QString TestQ3XlsWriter::Failure(const QString &path, const TQ3XlsFoglio &sheet)
{
    try {
        Q3ScriviXls(path, sheet);
    } catch (const EQ3Exception &e) {
        return e.Message();
    }
    return QString();
}

// The turnover statistics' table: 16 rows by 8 columns, two header rows, the
// months, an empty separator row and the totals.
TQ3XlsFoglio TestQ3XlsWriter::TurnoverSheet()
{
    const QStringList months{QStringLiteral("gennaio"), QStringLiteral("febbraio"), QStringLiteral("marzo"),
                             QStringLiteral("aprile"),  QStringLiteral("maggio"),   QStringLiteral("giugno"),
                             QStringLiteral("luglio"),  QStringLiteral("Agosto"),   QStringLiteral("settembre"),
                             QStringLiteral("ottobre"), QStringLiteral("novembre"), QStringLiteral("dicembre")};
    TQ3XlsFoglio sheet;
    sheet.Nome = QStringLiteral("Fatturato");
    for (int r = 0; r < 16; ++r)
        sheet.Celle.append(QList<QVariant>(8));
    sheet.Celle[0][1] = 2025.0;
    sheet.Celle[0][4] = 2024.0;
    sheet.Celle[0][7] = 2023.0;
    sheet.Celle[1] = {QVariant(),          QStringLiteral("Valori"), QStringLiteral("Diff."),
                      QStringLiteral("%"), QStringLiteral("Valori"), QStringLiteral("Diff."),
                      QStringLiteral("%"), QStringLiteral("Valori")};
    for (int m = 0; m < 12; ++m) {
        sheet.Celle[m + 2][0] = months[m];
        for (int c = 1; c < 8; ++c)
            sheet.Celle[m + 2][c] = (m + 1) * 1234.56 - c * 1000.25;
    }
    sheet.Celle[15][0] = QStringLiteral("Totali");
    for (int c = 1; c < 8; ++c)
        sheet.Celle[15][c] = -c * 0.5;
    sheet.Celle[14][3] = QStringLiteral("è");
    sheet.Unioni = {{0, 1, 0, 3}, {0, 4, 0, 6}, {14, 0, 14, 7}};
    sheet.LarghezzeColonne = {90, 108, 103, 55, 108, 103, 55, 108};
    sheet.RigheGrassetto = {0, 1};
    return sheet;
}

void TestQ3XlsWriter::turnoverSheetReadsBackCellByCell()
{
    const TQ3XlsFoglio sheet = TurnoverSheet();
    Q3ScriviXls(Path(QStringLiteral("fatturato.xls")), sheet);
    const QJsonObject read = Read(Path(QStringLiteral("fatturato.xls")));
    QCOMPARE(read.value(QStringLiteral("sheets")).toArray(), QJsonArray{QStringLiteral("Fatturato")});
    QCOMPARE(read.value(QStringLiteral("log")).toString(), QString());
    const QJsonArray cells = read.value(QStringLiteral("cells")).toArray();
    QCOMPARE(cells.size(), 16);
    for (int r = 0; r < 16; ++r) {
        const QJsonArray row = cells[r].toArray();
        QCOMPARE(row.size(), 8);
        for (int c = 0; c < 8; ++c) {
            const QJsonArray cell = row[c].toArray();
            const QVariant &written = sheet.Celle[r][c];
            if (!written.isValid()) {
                QCOMPARE(cell[0].toInt(), CellBlank);
            } else if (written.typeId() == QMetaType::Double) {
                QCOMPARE(cell[0].toInt(), CellNumber);
                QCOMPARE(cell[1].toDouble(), written.toDouble());
            } else {
                QCOMPARE(cell[0].toInt(), CellText);
                QCOMPARE(cell[1].toString(), written.toString());
            }
        }
    }
    QCOMPARE(cells[9].toArray()[0].toArray()[1].toString(), QStringLiteral("Agosto"));
    QCOMPARE(cells[15].toArray()[0].toArray()[1].toString(), QStringLiteral("Totali"));
    QCOMPARE(cells[14].toArray()[3].toArray()[1].toString(), QStringLiteral("è"));
    QCOMPARE(cells[1].toArray()[6].toArray()[1].toString(), QStringLiteral("%"));
    QCOMPARE(cells[15].toArray()[7].toArray()[1].toDouble(), -3.5);
}

void TestQ3XlsWriter::textOutsideLatin1BecomesQuestionMark()
{
    TQ3XlsFoglio sheet;
    sheet.Nome = QStringLiteral("Fatturato");
    sheet.Celle = {{QStringLiteral("Novità: più € per te"), QStringLiteral("ÀÉÌÒÙ àéìòù ç ñ ß ÿ"), QStringLiteral("Ω"),
                    QString::fromUtf8("a\xF0\x9F\x98\x80z")}};
    Q3ScriviXls(Path(QStringLiteral("testi.xls")), sheet);
    const QJsonArray row =
        Read(Path(QStringLiteral("testi.xls"))).value(QStringLiteral("cells")).toArray()[0].toArray();
    QCOMPARE(row[0].toArray()[1].toString(), QStringLiteral("Novità: più ? per te"));
    QCOMPARE(row[1].toArray()[1].toString(), QStringLiteral("ÀÉÌÒÙ àéìòù ç ñ ß ÿ"));
    QCOMPARE(row[2].toArray()[1].toString(), QStringLiteral("?"));
    // A character beyond the 16-bit range is one character, so one '?'.
    QCOMPARE(row[3].toArray()[1].toString(), QStringLiteral("a?z"));
}

void TestQ3XlsWriter::mergesWidthsAndBoldRowsReadBack()
{
    Q3ScriviXls(Path(QStringLiteral("fatturato.xls")), TurnoverSheet());
    const QJsonObject read = Read(Path(QStringLiteral("fatturato.xls")));

    QList<QList<int>> merged;
    for (const QJsonValue &range : read.value(QStringLiteral("merged")).toArray()) {
        QList<int> bounds;
        for (const QJsonValue &bound : range.toArray())
            bounds << bound.toInt();
        merged << bounds;
    }
    std::sort(merged.begin(), merged.end());
    // Rows then columns, each from the first to one past the last.
    QCOMPARE(merged, (QList<QList<int>>{{0, 1, 1, 4}, {0, 1, 4, 7}, {14, 15, 0, 8}}));

    const QJsonObject widths = read.value(QStringLiteral("widths")).toObject();
    const QList<int> pixels{90, 108, 103, 55, 108, 103, 55, 108};
    QCOMPARE(widths.size(), 8);
    for (int c = 0; c < 8; ++c)
        QCOMPARE(widths.value(QString::number(c)).toInt(), qRound(pixels[c] * 256.0 / 7.0));
    QCOMPARE(widths.value(QStringLiteral("0")).toInt(), 3291);

    const QJsonArray formats = read.value(QStringLiteral("formats")).toArray();
    const QJsonArray cells = read.value(QStringLiteral("cells")).toArray();
    for (int r = 0; r < 16; ++r) {
        for (int c = 0; c < 8; ++c) {
            const QJsonObject format = formats[cells[r].toArray()[c].toArray()[2].toInt()].toObject();
            const bool bold = r < 2;
            QCOMPARE(format.value(QStringLiteral("bold")).toBool(), bold);
            QCOMPARE(format.value(QStringLiteral("weight")).toInt(), bold ? 700 : 400);
        }
    }
}

void TestQ3XlsWriter::everyCellIsBorderedAndWrapped()
{
    Q3ScriviXls(Path(QStringLiteral("fatturato.xls")), TurnoverSheet());
    const QJsonObject read = Read(Path(QStringLiteral("fatturato.xls")));
    const QJsonArray formats = read.value(QStringLiteral("formats")).toArray();
    const QJsonArray thinAllAround{1, 1, 1, 1};
    int checked = 0;
    for (const QJsonValue &row : read.value(QStringLiteral("cells")).toArray()) {
        for (const QJsonValue &cell : row.toArray()) {
            const QJsonObject format = formats[cell.toArray()[2].toInt()].toObject();
            QCOMPARE(format.value(QStringLiteral("borders")).toArray(), thinAllAround);
            QCOMPARE(format.value(QStringLiteral("wrap")).toInt(), 1);
            ++checked;
        }
    }
    // Empty cells too: the separator row and the corner.
    QCOMPARE(checked, 16 * 8);
}

void TestQ3XlsWriter::numbersShowAsMoney()
{
    Q3ScriviXls(Path(QStringLiteral("fatturato.xls")), TurnoverSheet());
    const QJsonObject read = Read(Path(QStringLiteral("fatturato.xls")));
    const QJsonArray formats = read.value(QStringLiteral("formats")).toArray();
    int numbers = 0;
    for (const QJsonValue &row : read.value(QStringLiteral("cells")).toArray()) {
        for (const QJsonValue &cell : row.toArray()) {
            const bool number = cell.toArray()[0].toInt() == CellNumber;
            const QString format =
                formats[cell.toArray()[2].toInt()].toObject().value(QStringLiteral("format")).toString();
            QCOMPARE(format, number ? QStringLiteral("#,##0.00") : QStringLiteral("General"));
            numbers += number ? 1 : 0;
        }
    }
    // The three years, 12 months and the totals, 7 columns each.
    QCOMPARE(numbers, 3 + 13 * 7);
}

void TestQ3XlsWriter::emptySheetIsAValidWorkbook()
{
    TQ3XlsFoglio sheet;
    sheet.Nome = QStringLiteral("Fatturato");
    Q3ScriviXls(Path(QStringLiteral("vuoto.xls")), sheet);
    const QJsonObject read = Read(Path(QStringLiteral("vuoto.xls")));
    QCOMPARE(read.value(QStringLiteral("sheets")).toArray(), QJsonArray{QStringLiteral("Fatturato")});
    QCOMPARE(read.value(QStringLiteral("cells")).toArray(), QJsonArray());
    QCOMPARE(read.value(QStringLiteral("log")).toString(), QString());
}

void TestQ3XlsWriter::sheetNameIsMadeValid()
{
    TQ3XlsFoglio sheet;
    sheet.Nome = QStringLiteral("Fatt/urato [2025]: *più* di trentuno caratteri");
    Q3ScriviXls(Path(QStringLiteral("nome.xls")), sheet);
    QCOMPARE(Read(Path(QStringLiteral("nome.xls"))).value(QStringLiteral("sheets")).toArray(),
             QJsonArray{QStringLiteral("Fatt_urato _2025__ _più_ di tre")});
    sheet.Nome = QStringLiteral("Ω");
    Q3ScriviXls(Path(QStringLiteral("nome.xls")), sheet);
    QCOMPARE(Read(Path(QStringLiteral("nome.xls"))).value(QStringLiteral("sheets")).toArray(),
             QJsonArray{QStringLiteral("_")});
    sheet.Nome.clear();
    Q3ScriviXls(Path(QStringLiteral("nome.xls")), sheet);
    QCOMPARE(Read(Path(QStringLiteral("nome.xls"))).value(QStringLiteral("sheets")).toArray(),
             QJsonArray{QStringLiteral("Foglio1")});
}

void TestQ3XlsWriter::longTextsSpanRecordsAndAreCutAtTheCellLimit()
{
    // Texts longer than one record, side by side with short ones, so that
    // strings start and end at every kind of place in the string table.
    QString long20000;
    for (int i = 0; i < 20000; ++i)
        long20000 += QChar(u"àbcdefghìjklmnòpqrstù"[i % 21]);
    TQ3XlsFoglio sheet;
    sheet.Nome = QStringLiteral("Fatturato");
    for (int r = 0; r < 40; ++r)
        sheet.Celle.append({QStringLiteral("riga %1").arg(r), long20000.left(5000 + r * 397), QString(40000, u'x')});
    Q3ScriviXls(Path(QStringLiteral("lunghi.xls")), sheet);
    const QJsonArray cells = Read(Path(QStringLiteral("lunghi.xls"))).value(QStringLiteral("cells")).toArray();
    QCOMPARE(cells.size(), 40);
    for (int r = 0; r < 40; ++r) {
        const QJsonArray row = cells[r].toArray();
        QCOMPARE(row[0].toArray()[1].toString(), QStringLiteral("riga %1").arg(r));
        QCOMPARE(row[1].toArray()[1].toString(), long20000.left(5000 + r * 397));
        QCOMPARE(row[2].toArray()[1].toString(), QString(32767, u'x'));
    }
}

void TestQ3XlsWriter::bigSheetReadsBack()
{
    // 70,000 cells, a different text in every row: the stream takes many
    // sectors and more than one FAT sector, the strings many records.
    TQ3XlsFoglio sheet;
    sheet.Nome = QStringLiteral("Fatturato");
    sheet.RigheGrassetto = {0};
    for (int r = 0; r < 8750; ++r) {
        QList<QVariant> row{QStringLiteral("Riga %1 è qui").arg(r)};
        for (int c = 1; c < 8; ++c)
            row << (c == 4 ? QVariant() : QVariant(r * 8.0 + c + 0.25));
        sheet.Celle.append(row);
    }
    sheet.Unioni = {{8749, 5, 8749, 7}};
    Q3ScriviXls(Path(QStringLiteral("grande.xls")), sheet);
    QVERIFY(QFileInfo(Path(QStringLiteral("grande.xls"))).size() > 128 * 512 * 2);

    const QJsonObject read = Read(Path(QStringLiteral("grande.xls")));
    QCOMPARE(read.value(QStringLiteral("log")).toString(), QString());
    const QJsonArray cells = read.value(QStringLiteral("cells")).toArray();
    QCOMPARE(cells.size(), 8750);
    for (int r = 0; r < 8750; ++r) {
        const QJsonArray row = cells[r].toArray();
        QCOMPARE(row.size(), 8);
        QCOMPARE(row[0].toArray()[1].toString(), QStringLiteral("Riga %1 è qui").arg(r));
        for (int c = 1; c < 8; ++c) {
            const QJsonArray cell = row[c].toArray();
            QCOMPARE(cell[0].toInt(), c == 4 ? CellBlank : CellNumber);
            if (c != 4)
                QCOMPARE(cell[1].toDouble(), r * 8.0 + c + 0.25);
        }
    }
    QCOMPARE(read.value(QStringLiteral("merged")).toArray(), (QJsonArray() << QJsonArray{8749, 8750, 5, 8}));
}

void TestQ3XlsWriter::fullHeightSheetNeedsMoreThanTheHeadersFatList()
{
    // Every row the format allows: a stream of about 9 MB, whose FAT sectors no
    // longer all fit in the file header's list.
    TQ3XlsFoglio sheet;
    sheet.Nome = QStringLiteral("Fatturato");
    double sum = 0;
    for (int r = 0; r < 65536; ++r) {
        QList<QVariant> row;
        for (int c = 0; c < 8; ++c) {
            row << double(r % 1000 + c);
            sum += r % 1000 + c;
        }
        sheet.Celle.append(row);
    }
    Q3ScriviXls(Path(QStringLiteral("pieno.xls")), sheet);
    QVERIFY(QFileInfo(Path(QStringLiteral("pieno.xls"))).size() > 109 * 128 * 512);
    const QJsonObject read = Read(Path(QStringLiteral("pieno.xls")), true);
    QCOMPARE(read.value(QStringLiteral("log")).toString(), QString());
    QCOMPARE(read.value(QStringLiteral("rows")).toInt(), 65536);
    QCOMPARE(read.value(QStringLiteral("columns")).toInt(), 8);
    QCOMPARE(read.value(QStringLiteral("sum")).toDouble(), sum);
    QCOMPARE(read.value(QStringLiteral("last")).toDouble(), 535.0 + 7);
}

void TestQ3XlsWriter::existingFileIsOverwritten()
{
    const QString path = Path(QStringLiteral("fatturato.xls"));
    {
        QFile old(path);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write(QByteArray(200000, 'x'));
    }
    Q3ScriviXls(path, TurnoverSheet());
    QVERIFY(QFileInfo(path).size() < 200000);
    const QJsonObject read = Read(path);
    QCOMPARE(read.value(QStringLiteral("sheets")).toArray(), QJsonArray{QStringLiteral("Fatturato")});
    QCOMPARE(read.value(QStringLiteral("cells")).toArray()[15].toArray()[0].toArray()[1].toString(),
             QStringLiteral("Totali"));

    TQ3XlsFoglio other;
    other.Nome = QStringLiteral("Fatturato");
    other.Celle = {{QStringLiteral("Solo questa")}};
    Q3ScriviXls(path, other);
    const QJsonArray cells = Read(path).value(QStringLiteral("cells")).toArray();
    QCOMPARE(cells.size(), 1);
    QCOMPARE(cells[0].toArray()[0].toArray()[1].toString(), QStringLiteral("Solo questa"));
}

void TestQ3XlsWriter::missingFolderRaisesNamingTheFile()
{
    const QString path = Path(QStringLiteral("non esiste/fatturato.xls"));
    const QString message = Failure(path, TurnoverSheet());
    QVERIFY2(message.startsWith(
                 QStringLiteral("Impossibile scrivere il file \"%1\"").arg(QDir::toNativeSeparators(path))),
             qPrintable(message));
    QVERIFY(!QFile::exists(path));
}

void TestQ3XlsWriter::sheetBeyondTheFormatsLimitsIsRefused()
{
    const QString path = Path(QStringLiteral("troppo.xls"));
    const QString refusal = QStringLiteral("Impossibile scrivere il file \"%1\": il foglio supera i limiti del formato "
                                           "(65536 righe, 256 colonne).")
                                .arg(QDir::toNativeSeparators(path));
    TQ3XlsFoglio tall;
    tall.Celle.resize(65537);
    TQ3XlsFoglio wide;
    wide.Celle = {QList<QVariant>(257)};
    TQ3XlsFoglio wideColumns;
    wideColumns.LarghezzeColonne = QList<int>(257, 64);
    for (const TQ3XlsFoglio &sheet : {tall, wide, wideColumns}) {
        QCOMPARE(Failure(path, sheet), refusal);
        QVERIFY(!QFile::exists(path));
    }
}

void TestQ3XlsWriter::invalidMergeIsRefused()
{
    const QString path = Path(QStringLiteral("unione.xls"));
    for (const TQ3XlsUnione &merge : {TQ3XlsUnione{2, 0, 1, 0}, TQ3XlsUnione{0, 3, 0, 2}, TQ3XlsUnione{-1, 0, 0, 0},
                                      TQ3XlsUnione{0, 0, 65536, 0}, TQ3XlsUnione{0, 0, 0, 256}}) {
        TQ3XlsFoglio sheet;
        sheet.Unioni = {merge};
        QCOMPARE(Failure(path, sheet),
                 QStringLiteral("Impossibile scrivere il file \"%1\": unione di celle non valida.")
                     .arg(QDir::toNativeSeparators(path)));
        QVERIFY(!QFile::exists(path));
    }
}

void TestQ3XlsWriter::writesWithoutAnyOtherProgram()
{
    // No spreadsheet program (LibreOffice or other) is needed: with nothing to
    // run on the PATH the workbook is written all the same.
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray());
    Q3ScriviXls(Path(QStringLiteral("fatturato.xls")), TurnoverSheet());
    qputenv("PATH", path);
    QCOMPARE(Read(Path(QStringLiteral("fatturato.xls"))).value(QStringLiteral("sheets")).toArray(),
             QJsonArray{QStringLiteral("Fatturato")});
}

QTEST_GUILESS_MAIN(TestQ3XlsWriter)
#include "tst_q3xlswriter.moc"
