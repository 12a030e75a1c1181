// The report engine on its own: layouts read from text, in-memory data, pages
// and PDF output, with no database.
#include "Q3Exception.h"
#include "Q3PdfText.h"
#include "Q3Report.h"
#include "Q3ReportFormat.h"
#include "Q3TestDatabase.h"

#include <QBuffer>
#include <QDate>
#include <QFontMetricsF>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const char Project[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<project>
  <report name="Elenco">
    <page size="A4" left="15" top="12" right="15" bottom="10"/>
    <connection name="dsTesta"/>
    <connection name="dsRighe"/>
    <parameter name="Titolo"/>
    <style name="cell" font="DejaVu Sans" size="9"/>
    <pageHeader height="12">
      <param x="0" y="0" width="180" height="6" name="Titolo" bold="true"/>
    </pageHeader>
    <pageFooter height="8">
      <pageNumber x="120" y="2" width="60" height="4" align="right"/>
    </pageFooter>
    <title height="10">
      <text x="0" y="0" width="180" height="6">Documento n. {dsTesta.NUMERO} del {dsTesta.DATA|date}</text>
    </title>
    <detail connection="dsRighe">
      <header height="6">
        <box x="0" y="0" width="180" height="5.5" fill="#dddddd"/>
        <text x="1" y="1" width="60" height="4" style="cell" bold="true">Descrizione colonna</text>
        <text x="150" y="1" width="29" height="4" style="cell" bold="true" align="right">Importo</text>
      </header>
      <band height="5">
        <text x="1" y="0.5" width="60" height="4" style="cell" grow="true">{DESCRIZIONE}</text>
        <field x="150" y="0.5" width="29" height="4" style="cell" align="right" source="dsRighe.IMPORTO" format="currency"/>
        <line x1="0" y1="4.9" x2="180" y2="4.9" line-width="0.1" anchor="bottom"/>
      </band>
    </detail>
    <summary height="8">
      <text x="100" y="1" width="80" height="5" align="right">Totale {dsTesta.TOTALE|currency}</text>
    </summary>
  </report>
</project>
)";

// Sales grouped by month, and by year and month: on pages 277 mm high with no
// page header or footer, so that positions are easy to work out.
const char GroupProject[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<project>
  <report name="Gruppi">
    <page size="A4" left="10" top="10" right="10" bottom="10"/>
    <connection name="dsVendite"/>
    <detail connection="dsVendite">
      <header height="10">
        <text x="0" y="0" width="150" height="5">Intestazione</text>
      </header>
      <group column="MESE">
        <groupHeader height="10">
          <text x="0" y="0" width="150" height="5">Mese {MESE|trim}</text>
        </groupHeader>
        <groupFooter height="7">
          <text x="0" y="0" width="150" height="5">Totale {MESE} {sum:IMPORTO|money} ({count})</text>
        </groupFooter>
      </group>
      <band height="10">
        <text x="0" y="0" width="150" height="5">{CLIENTE} {IMPORTO|money}</text>
      </band>
      <footer height="10">
        <text x="0" y="0" width="150" height="5">Totale generale {sum:IMPORTO|money} ({count})</text>
      </footer>
    </detail>
    <summary height="10">
      <text x="0" y="0" width="150" height="5">Riepilogo {sum:dsVendite.IMPORTO|currency} {count:dsVendite}</text>
    </summary>
  </report>
  <report name="Annidati">
    <page size="A4" left="10" top="10" right="10" bottom="10"/>
    <connection name="dsVendite"/>
    <detail connection="dsVendite">
      <group column="ANNO">
        <groupHeader height="10">
          <text x="0" y="0" width="150" height="5">Anno {ANNO} ({count} vendite)</text>
        </groupHeader>
        <group column="MESE">
          <groupHeader height="10">
            <text x="0" y="0" width="150" height="5">Mese {MESE}</text>
          </groupHeader>
          <groupFooter height="10">
            <text x="0" y="0" width="150" height="5">Totale {MESE} {sum:IMPORTO|money}</text>
          </groupFooter>
        </group>
        <groupFooter height="10">
          <text x="0" y="0" width="150" height="5">Totale {ANNO} {sum:IMPORTO|money}</text>
        </groupFooter>
      </group>
      <band height="10">
        <text x="0" y="0" width="150" height="5">{count}. {CLIENTE} {sum:IMPORTO|money}</text>
      </band>
    </detail>
  </report>
  <report name="Ordinati">
    <page size="A4" left="10" top="10" right="10" bottom="10"/>
    <connection name="dsVendite"/>
    <detail connection="dsVendite" order="MESE, IMPORTO desc">
      <group column="MESE">
        <groupFooter height="10">
          <text x="0" y="0" width="150" height="5">Totale {MESE} {sum:IMPORTO|money}</text>
        </groupFooter>
      </group>
      <band height="10">
        <text x="0" y="0" width="150" height="5">{CLIENTE} {IMPORTO|money}</text>
      </band>
    </detail>
  </report>
</project>
)";

// Amounts in red below zero, a total and a note printed only when there is
// one, labels that go away with an empty value: on pages with no page header
// or footer and 10 mm margins.
const char ConditionProject[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<project>
  <report name="Condizioni">
    <page size="A4" left="10" top="10" right="10" bottom="10"/>
    <connection name="dsRighe"/>
    <parameter name="Nota"/>
    <style name="cifra" font="DejaVu Sans" size="9" negative-color="red"/>
    <detail connection="dsRighe">
      <band height="10">
        <text x="0" y="0" width="80" height="5">{DESCRIZIONE|before:Voce: |after: -}</text>
        <text x="100" y="0" width="50" height="5" style="cifra" align="right">{IMPORTO|money}</text>
      </band>
      <footer height="10" if="{sum:IMPORTO|money}">
        <text x="0" y="0" width="150" height="5" negative-color="#0000ff">Totale {sum:IMPORTO|money}</text>
      </footer>
    </detail>
    <band height="10" if="{param:Nota}">
      <text x="0" y="0" width="150" height="5">Nota: {param:Nota}</text>
    </band>
    <summary height="10">
      <text x="0" y="0" width="150" height="5">Fine</text>
    </summary>
  </report>
</project>
)";

class TRun
{
public:
    explicit TRun(const char *project = ::Project)
    {
        Testa.AddRow({12, QDate(2026, 3, 5), 1234.5});
        Project.SetProjectFile(WriteQ3TestFile(Dir.path(), QStringLiteral("prova.rav"), QString::fromUtf8(project)));
        Project.Open();
        Project.SetEngine(&System);
        Project.SetParam(QStringLiteral("Nota"), QString());
        Project.RegisterConnection(QStringLiteral("dsTesta"), &Testa);
        Project.RegisterConnection(QStringLiteral("dsRighe"), &Righe);
        Project.RegisterConnection(QStringLiteral("dsVendite"), &Vendite);
        Render.Title = Render.Author = Render.Creator = Render.Producer = QStringLiteral("Quillo 3");
        System.RenderObject = &Render;
    }

    void AddRows(int count, const QString &prefix = QStringLiteral("Riga"))
    {
        for (int i = 1; i <= count; ++i)
            Righe.AddRow({QStringLiteral("%1 %2").arg(prefix).arg(i), i * 10.0});
    }

    // A run straight to a PDF file, as a module's save-as-PDF does.
    QString Pdf(const QString &name = QStringLiteral("Elenco"))
    {
        const QString file = Dir.filePath(name + QStringLiteral(".pdf"));
        System.DefaultDest = TQ3ReportDestination::File;
        System.DoNativeOutput = false;
        System.AllowSetup = false;
        System.OutputFileName = file;
        Project.ExecuteReport(name);
        return file;
    }

    // Count sales in a month, each of 10.00 more than the one before.
    void AddSales(int year, const QString &month, int count)
    {
        for (int i = 1; i <= count; ++i)
            Vendite.AddRow({year, month, QStringLiteral("%1 %2").arg(month).arg(i), i * 10.0});
    }

    QTemporaryDir Dir;
    TQ3MemoryData Vendite{
        {QStringLiteral("ANNO"), QStringLiteral("MESE"), QStringLiteral("CLIENTE"), QStringLiteral("IMPORTO")}};
    TQ3MemoryData Testa{{QStringLiteral("NUMERO"), QStringLiteral("DATA"), QStringLiteral("TOTALE")}};
    TQ3MemoryData Righe{{QStringLiteral("DESCRIZIONE"), QStringLiteral("IMPORTO")}};
    TQ3ReportProject Project;
    TQ3ReportSystem System;
    TQ3RenderPDF Render;
};

// Each band of a page as "top: texts", the top in millimetres from the paper's edge.
QStringList Bands(const TQ3ReportDocument &document, int page)
{
    QStringList bands;
    for (const TQ3PlacedBand &placed : document.Page(page).Bands) {
        QStringList texts;
        for (const TQ3ReportItem &item : placed.Band->Items)
            texts << document.ItemText(item, placed.Rows, page, placed.Totals);
        bands << QStringLiteral("%1: %2").arg(placed.Top / Q3ReportUnitsPerMm).arg(texts.join(QLatin1Char(' ')));
    }
    return bands;
}

} // namespace

class TestQ3Report : public QObject
{
    Q_OBJECT

private slots:
    void formats_italian()
    {
        QCOMPARE(Q3FormatReportValue(1234.5, QStringLiteral("currency")), QStringLiteral("1.234,50 €"));
        QCOMPARE(Q3FormatReportValue(QStringLiteral("1234.5"), QStringLiteral("money")), QStringLiteral("1.234,50"));
        QCOMPARE(Q3FormatReportValue(2.125, QStringLiteral("number:3")), QStringLiteral("2,125"));
        QCOMPARE(Q3FormatReportValue(2.5, QStringLiteral("number:2-3")), QStringLiteral("2,50"));
        QCOMPARE(Q3FormatReportValue(0.333, QStringLiteral("number:2-3")), QStringLiteral("0,333"));
        QCOMPARE(Q3FormatReportValue(1.0004, QStringLiteral("number:2-3")), QStringLiteral("1,00"));
        QCOMPARE(Q3FormatReportValue(1234.5, QStringLiteral("money:6")), QStringLiteral("1.234,50"));
        QCOMPARE(Q3FormatReportValue(0.333333, QStringLiteral("money:6")), QStringLiteral("0,333333"));
        QCOMPARE(Q3FormatReportValue(0.1234567, QStringLiteral("money:6")), QStringLiteral("0,123457"));
        QCOMPARE(Q3FormatReportValue(7.6, QStringLiteral("integer")), QStringLiteral("8"));
        QCOMPARE(Q3FormatReportValue(QDate(2026, 1, 9), QStringLiteral("date")), QStringLiteral("09/01/2026"));
        QCOMPARE(Q3FormatReportValue(QDate(2026, 1, 9), QStringLiteral("year")), QStringLiteral("2026"));
        QCOMPARE(Q3FormatReportValue(20.0, QStringLiteral("percent")), QStringLiteral("20%"));
        QCOMPARE(Q3FormatReportValue(4.5, QStringLiteral("percent")), QStringLiteral("4,5%"));
        QCOMPARE(Q3FormatReportValue(0.0, QStringLiteral("money"), true), QString());
        QCOMPARE(Q3FormatReportValue(QVariant(), QStringLiteral("money")), QString());
    }

    // Numbers kept as text, with either decimal separator, print formatted.
    void formats_numbersAsTextAndPlusSign()
    {
        QCOMPARE(Q3FormatReportValue(QStringLiteral("1234,50"), QStringLiteral("money")), QStringLiteral("1.234,50"));
        QCOMPARE(Q3FormatReportValue(QStringLiteral("-12,30"), QStringLiteral("money")), QStringLiteral("-12,30"));
        QCOMPARE(Q3FormatReportValue(QStringLiteral(" 1234.50 "), QStringLiteral("currency")),
                 QStringLiteral("1.234,50 €"));
        QCOMPARE(Q3FormatReportValue(QStringLiteral("12,50"), QStringLiteral("number:1")), QStringLiteral("12,5"));
        QCOMPARE(Q3FormatReportValue(QStringLiteral("Totali"), QStringLiteral("money")), QStringLiteral("Totali"));
        QCOMPARE(Q3FormatReportValue(QString(), QStringLiteral("money")), QString());
        QCOMPARE(Q3FormatReportValue(QStringLiteral("1234,50"), QStringLiteral("money"), false, true),
                 QStringLiteral("+1.234,50"));
        QCOMPARE(Q3FormatReportValue(QStringLiteral("-5,00"), QStringLiteral("money"), false, true),
                 QStringLiteral("-5,00"));
        QCOMPARE(Q3FormatReportValue(QStringLiteral("0,00"), QStringLiteral("money"), false, true),
                 QStringLiteral("0,00"));
        QCOMPARE(Q3FormatReportValue(QStringLiteral("0,00"), QStringLiteral("money"), true), QString());
        QCOMPARE(Q3FormatReportValue(0, QString(), true), QString());
    }

    void parseText_placeholders()
    {
        const auto segments =
            Q3ParseReportText(QStringLiteral("N. {dsA.NUMERO|number:0} {{x}} {param:P} {page}/{pages}"), QString());
        QCOMPARE(segments.size(), 8);
        QCOMPARE(segments.at(1).Connection, QStringLiteral("dsA"));
        QCOMPARE(segments.at(1).Format, QStringLiteral("number:0"));
        QCOMPARE(segments.at(2).Text, QStringLiteral(" {x} "));
        QCOMPARE(segments.at(3).Kind, TQ3ReportSegment::TKind::Parameter);
        QVERIFY_THROWS_EXCEPTION(EQ3Exception, Q3ParseReportText(QStringLiteral("{dsA.X|strano}"), QString()));
    }

    void parseText_totalsAndParameterFormats()
    {
        const auto segments = Q3ParseReportText(
            QStringLiteral("{sum:IMPORTO|money}{count}{count:dsB}{sum:dsB.TOTALE}{param:P|money|plus}{MESE|trim}"),
            QStringLiteral("dsA"));
        QCOMPARE(segments.size(), 6);
        QVERIFY(segments.at(5).Trim);
        QVERIFY(!segments.at(4).Trim);
        QCOMPARE(segments.at(0).Kind, TQ3ReportSegment::TKind::Sum);
        QCOMPARE(segments.at(0).Connection, QStringLiteral("dsA"));
        QCOMPARE(segments.at(0).Text, QStringLiteral("IMPORTO"));
        QCOMPARE(segments.at(0).Format, QStringLiteral("money"));
        QCOMPARE(segments.at(1).Kind, TQ3ReportSegment::TKind::Count);
        QCOMPARE(segments.at(1).Connection, QStringLiteral("dsA"));
        QCOMPARE(segments.at(2).Connection, QStringLiteral("dsB"));
        QCOMPARE(segments.at(3).Connection, QStringLiteral("dsB"));
        QCOMPARE(segments.at(3).Text, QStringLiteral("TOTALE"));
        QCOMPARE(segments.at(4).Kind, TQ3ReportSegment::TKind::Parameter);
        QCOMPARE(segments.at(4).Text, QStringLiteral("P"));
        QCOMPARE(segments.at(4).Format, QStringLiteral("money"));
        QVERIFY(segments.at(4).PlusSign);
        // Outside a detail a total names its connection.
        QVERIFY_THROWS_EXCEPTION(EQ3Exception, Q3ParseReportText(QStringLiteral("{count}"), QString()));
        QVERIFY_THROWS_EXCEPTION(EQ3Exception, Q3ParseReportText(QStringLiteral("{sum:IMPORTO}"), QString()));
    }

    void readProject_groupErrors()
    {
        const auto fails = [](const char *detail) {
            const QByteArray project = QByteArray("<project><report name=\"R\"><connection name=\"dsA\"/>\n") + detail
                                       + "\n</report></project>";
            try {
                Q3ReadReportProject(project, QString());
            } catch (const EQ3Exception &e) {
                return e.Message();
            }
            return QString();
        };
        QVERIFY(fails("<detail connection=\"dsA\"><group><groupHeader height=\"5\"/></group></detail>")
                    .contains(QStringLiteral("manca l'attributo column")));
        QVERIFY(fails("<detail connection=\"dsA\"><group column=\"A\"/><group column=\"B\"/></detail>")
                    .contains(QStringLiteral("un solo <group>")));
        QVERIFY(fails("<detail connection=\"dsA\"><group column=\"A\"><band height=\"5\"/></group></detail>")
                    .contains(QStringLiteral("riga 2 (<band>)")));
        QVERIFY(fails("<summary height=\"5\"><text>{count:dsX}</text></summary>").contains(QStringLiteral("dsX")));
        QCOMPARE(fails("<detail connection=\"dsA\"><group column=\"A\"><group column=\"B\"/></group></detail>"),
                 QString());
    }

    void groupColumnMissing_fails()
    {
        TRun run(GroupProject);
        run.Vendite.SetFields(
            {QStringLiteral("ANNO"), QStringLiteral("MESI"), QStringLiteral("CLIENTE"), QStringLiteral("IMPORTO")});
        try {
            run.Project.Generate(QStringLiteral("Gruppi"));
            QFAIL("no error");
        } catch (const EQ3Exception &e) {
            QCOMPARE(
                e.Message(),
                QStringLiteral(
                    "Il report \"Gruppi\" raggruppa per la colonna \"MESE\", che la connessione \"dsVendite\" non ha."));
        }
    }

    // Each group: its header before its first row, its footer with its own
    // totals after its last; the detail's footer and the summary total all rows.
    void groups_headersFootersAndTotals()
    {
        TRun run(GroupProject);
        // Month names as fixed-length texts come padded: the header trims them.
        run.AddSales(2026, QStringLiteral("  Marzo  "), 3);
        run.AddSales(2026, QStringLiteral("Febbraio"), 2);
        run.AddSales(2026, QStringLiteral("Gennaio"), 1);
        const auto document = run.Project.Generate(QStringLiteral("Gruppi"));
        QCOMPARE(document->PageCount(), 1);
        QCOMPARE(Bands(*document, 0),
                 (QStringList{"10: Intestazione", "20: Mese Marzo", "30:   Marzo   1 10,00", "40:   Marzo   2 20,00",
                              "50:   Marzo   3 30,00", "60: Totale   Marzo   60,00 (3)", "67: Mese Febbraio",
                              "77: Febbraio 1 10,00", "87: Febbraio 2 20,00", "97: Totale Febbraio 30,00 (2)",
                              "104: Mese Gennaio", "114: Gennaio 1 10,00", "124: Totale Gennaio 10,00 (1)",
                              "131: Totale generale 100,00 (6)", "141: Riepilogo 100,00 € 6"}));
        const QString text = Q3PdfText(run.Pdf(QStringLiteral("Gruppi")));
        QVERIFY2(text.contains(QStringLiteral("Totale Febbraio 30,00 (2)")), qPrintable(text));
        QVERIFY(text.contains(QStringLiteral("Totale generale 100,00 (6)")));
    }

    // A month that comes back later is a new group; an empty detail prints
    // no group and totals nothing.
    void groups_breakOnEveryChangeAndEmptyDetail()
    {
        TRun run(GroupProject);
        const auto empty = run.Project.Generate(QStringLiteral("Gruppi"));
        QCOMPARE(Bands(*empty, 0),
                 (QStringList{"10: Intestazione", "20: Totale generale 0,00 (0)", "30: Riepilogo 0,00 € 0"}));
        run.AddSales(2026, QStringLiteral("Marzo"), 1);
        run.AddSales(2026, QStringLiteral("Aprile"), 1);
        run.AddSales(2026, QStringLiteral("Marzo"), 1);
        const QStringList bands = Bands(*run.Project.Generate(QStringLiteral("Gruppi")), 0);
        QCOMPARE(bands.filter(QStringLiteral("Totale Marzo")),
                 (QStringList{"40: Totale Marzo 10,00 (1)", "94: Totale Marzo 10,00 (1)"}));
    }

    // An outer change closes the inner group too; a header may total its group
    // ahead; a row's totals run from the detail's first row to itself.
    void groups_nested()
    {
        TRun run(GroupProject);
        run.AddSales(2026, QStringLiteral("Febbraio"), 2);
        run.AddSales(2026, QStringLiteral("Gennaio"), 1);
        run.AddSales(2025, QStringLiteral("Gennaio"), 2);
        QStringList bands;
        for (const QString &band : Bands(*run.Project.Generate(QStringLiteral("Annidati")), 0))
            bands << band.section(QStringLiteral(": "), 1);
        QCOMPARE(bands,
                 (QStringList{"Anno 2026 (3 vendite)", "Mese Febbraio", "1. Febbraio 1 10,00", "2. Febbraio 2 30,00",
                              "Totale Febbraio 30,00", "Mese Gennaio", "3. Gennaio 1 40,00", "Totale Gennaio 10,00",
                              "Totale 2026 40,00", "Anno 2025 (2 vendite)", "Mese Gennaio", "4. Gennaio 1 50,00",
                              "5. Gennaio 2 70,00", "Totale Gennaio 30,00", "Totale 2025 30,00"}));
    }

    // Rows sorted by the layout: empty values first, texts whatever their
    // case, rows of equal keys in the connection's order.
    void detail_orderedByTheLayout()
    {
        TRun run(GroupProject);
        run.AddSales(2026, QStringLiteral("Marzo"), 2);
        run.AddSales(2026, QStringLiteral("aprile"), 1);
        run.Vendite.AddRow({2026, QStringLiteral("Marzo"), QStringLiteral("Ultima"), 10.0});
        run.Vendite.AddRow({2026, QVariant(), QStringLiteral("Senza mese"), 5.0});
        QStringList bands;
        for (const QString &band : Bands(*run.Project.Generate(QStringLiteral("Ordinati")), 0))
            bands << band.section(QStringLiteral(": "), 1);
        QCOMPARE(bands, (QStringList{"Senza mese 5,00", "Totale  5,00", "aprile 1 10,00", "Totale aprile 10,00",
                                     "Marzo 2 20,00", "Marzo 1 10,00", "Ultima 10,00", "Totale Marzo 40,00"}));
        QVERIFY_THROWS_EXCEPTION(EQ3Exception,
                                 Q3ReadReportProject("<project><report name=\"R\"><connection name=\"dsA\"/>"
                                                     "<detail connection=\"dsA\" order=\"A discendente\"/>"
                                                     "</report></project>",
                                                     QString()));
    }

    // The next group's header would just fit under the last footer of a page,
    // but not with its first row: both go to the next page, under the detail's
    // header printed again.
    void groups_headerKeptWithItsFirstRow()
    {
        TRun run(GroupProject);
        // From the top margin at 10 mm: 10 (header) + 10 (group header) + 24 x 10
        // (rows) + 7 (footer) end at 277 mm, 10 mm above the bottom margin.
        run.AddSales(2026, QStringLiteral("Marzo"), 24);
        run.AddSales(2026, QStringLiteral("Aprile"), 2);
        const auto document = run.Project.Generate(QStringLiteral("Gruppi"));
        QCOMPARE(document->PageCount(), 2);
        const QStringList first = Bands(*document, 0);
        QCOMPARE(first.last(), QStringLiteral("270: Totale Marzo 3.000,00 (24)"));
        QCOMPARE(Bands(*document, 1).mid(0, 3),
                 (QStringList{"10: Intestazione", "20: Mese Aprile", "30: Aprile 1 10,00"}));

        // One row fewer: the header and its first row fit at the bottom.
        TRun shorter(GroupProject);
        shorter.AddSales(2026, QStringLiteral("Marzo"), 23);
        shorter.AddSales(2026, QStringLiteral("Aprile"), 2);
        const QStringList bands = Bands(*shorter.Project.Generate(QStringLiteral("Gruppi")), 0);
        QVERIFY2(bands.contains(QStringLiteral("267: Mese Aprile")), qPrintable(bands.join(QLatin1Char('\n'))));
        QVERIFY(bands.contains(QStringLiteral("277: Aprile 1 10,00")));
    }

    void readProject_errorNamesLine()
    {
        try {
            Q3ReadReportProject("<project>\n<report name=\"R\">\n<bandx/>\n</report>\n</project>", QString());
            QFAIL("no error");
        } catch (const EQ3Exception &e) {
            QVERIFY2(e.Message().contains(QStringLiteral("riga 3")), qPrintable(e.Message()));
        }
        QVERIFY_THROWS_EXCEPTION(EQ3Exception, Q3ReadReportProject("<project><report name=\"R\"><title height=\"5\">"
                                                                   "<text>{dsX.A}</text></title></report></project>",
                                                                   QString()));
    }

    void missingColumn_fails()
    {
        TRun run;
        run.Righe.SetFields({QStringLiteral("DESCRIZIONE")});
        QVERIFY_THROWS_EXCEPTION(EQ3Exception, run.Project.Generate(QStringLiteral("Elenco")));
        QVERIFY_THROWS_EXCEPTION(EQ3Exception, run.Project.Generate(QStringLiteral("Inesistente")));
    }

    void missingFont_fails()
    {
        const auto reports =
            Q3ReadReportProject("<project><report name=\"R\"><title height=\"5\">"
                                "<text font=\"Carattere Inesistente\">x</text></title></report></project>",
                                QString());
        try {
            TQ3ReportDocument document(reports.first(), {});
            QFAIL("no error");
        } catch (const EQ3Exception &e) {
            QCOMPARE(e.Message(),
                     QStringLiteral(
                         "Il report \"R\" usa il carattere \"Carattere Inesistente\", che non è installato."));
        }
    }

    void manyRows_headerOnEveryPage()
    {
        TRun run;
        run.AddRows(150);
        run.Project.SetParam(QStringLiteral("Titolo"), QStringLiteral("Elenco di prova"));
        const auto document = run.Project.Generate(QStringLiteral("Elenco"));
        QVERIFY(document->PageCount() >= 3);
        const QString file = run.Pdf();
        for (int page = 1; page <= document->PageCount(); ++page) {
            const QString text = Q3PdfText(file, page);
            QVERIFY2(text.contains(QStringLiteral("Descrizione colonna")), qPrintable(QString::number(page)));
            QVERIFY(text.contains(QStringLiteral("Elenco di prova")));
            QVERIFY(text.contains(QStringLiteral("Pagina %1 di %2").arg(page).arg(document->PageCount())));
        }
        const QString all = Q3PdfText(file);
        for (int i = 1; i <= 150; ++i)
            QVERIFY2(all.contains(QStringLiteral("Riga %1 ").arg(i)), qPrintable(QString::number(i)));
        QVERIFY(all.contains(QStringLiteral("1.500,00 €")));
        QVERIFY(all.contains(QStringLiteral("Documento n. 12 del 05/03/2026")));
        QVERIFY(Q3PdfText(file, document->PageCount()).contains(QStringLiteral("Totale 1.234,50 €")));
    }

    void longText_growsItsBand()
    {
        TRun run;
        QStringList lines;
        for (int i = 1; i <= 10; ++i)
            lines << QStringLiteral("Linea %1 della descrizione").arg(i);
        run.Righe.AddRow({lines.join(QStringLiteral("\r\n")), 5.0});
        run.Righe.AddRow({QStringLiteral("Dopo"), 1.0});
        const auto document = run.Project.Generate(QStringLiteral("Elenco"));
        const TQ3ReportPage &page = document->Page(0);
        qreal first = 0;
        qreal second = 0;
        for (const TQ3PlacedBand &band : page.Bands) {
            if (band.Rows.value(QStringLiteral("dsRighe"), -1) == 0 && band.Band->Height == 500)
                first = band.Height;
            if (band.Rows.value(QStringLiteral("dsRighe"), -1) == 1 && band.Band->Height == 500)
                second = band.Height;
        }
        QCOMPARE(second, 500.0);
        QVERIFY2(first > 10 * 350, qPrintable(QString::number(first)));
    }

    // Each row's band is as tall as its text laid out in the item's width:
    // short texts, texts about the width, accents, characters of other
    // scripts, tabs, a soft hyphen, a word longer than the width.
    void growth_sameAsLayingTheTextOut()
    {
        TRun run;
        QStringList testi{QStringLiteral("Breve"),
                          QStringLiteral("Però già così è"),
                          QStringLiteral("Ελληνικά και русский"),
                          QStringLiteral("Con\ttabulazione"),
                          QStringLiteral("Parola\u00ADspezzata"),
                          QString(300, QLatin1Char('W'))};
        for (int parole = 1; parole <= 40; ++parole)
            testi << QStringList(parole, QStringLiteral("Mille")).join(QLatin1Char(' '))
                  << QStringList(parole, QStringLiteral("il")).join(QLatin1Char(' '));
        for (const QString &testo : std::as_const(testi))
            run.Righe.AddRow({testo, 1.0});
        const auto document = run.Project.Generate(QStringLiteral("Elenco"));
        int misurate = 0;
        for (int pagina = 0; pagina < document->PageCount(); ++pagina) {
            for (const TQ3PlacedBand &band : document->Page(pagina).Bands) {
                const int riga = band.Rows.value(QStringLiteral("dsRighe"), -1);
                if (riga < 0 || band.Band->Height != 500)
                    continue;
                for (const TQ3ReportItem &item : band.Band->Items) {
                    if (!item.Grow)
                        continue;
                    const qreal necessaria = QFontMetricsF(item.Font)
                                                 .boundingRect(QRectF(0, 0, item.Rect.width(), 1e7),
                                                               item.Flags | Qt::TextWordWrap, testi.at(riga))
                                                 .height();
                    QCOMPARE(band.Height, 500 + qMax<qreal>(0, necessaria - item.Rect.height()));
                    ++misurate;
                }
            }
        }
        QCOMPARE(misurate, testi.size());
    }

    void parameters_keptBetweenRuns()
    {
        TRun run;
        run.Project.SetParam(QStringLiteral("Titolo"), QStringLiteral("Primo titolo"));
        QVERIFY(Q3PdfText(run.Pdf()).contains(QStringLiteral("Primo titolo")));
        QVERIFY(Q3PdfText(run.Pdf()).contains(QStringLiteral("Primo titolo")));
    }

    void pdf_documentInformation()
    {
        TRun run;
        const QString info = Q3PdfInfo(run.Pdf());
        QVERIFY2(info.contains(QRegularExpression(QStringLiteral("Title:\\s+Quillo 3"))), qPrintable(info));
        QVERIFY(info.contains(QRegularExpression(QStringLiteral("Author:\\s+Quillo 3"))));
        QVERIFY(info.contains(QRegularExpression(QStringLiteral("Producer:\\s+Quillo 3"))));
        QVERIFY(info.contains(QRegularExpression(QStringLiteral("Page size:\\s+595"))));
    }

    void directPdf_noWindowsAndStatusTexts()
    {
        TRun run;
        run.AddRows(120);
        int windows = 0;
        run.System.OnOverrideSetup = [&](TQ3ReportSystem *, TQ3OverrideMode, QObject *&) { ++windows; };
        run.System.OnOverridePreview = [&](TQ3ReportSystem *, TQ3OverrideMode, QObject *&) { ++windows; };
        QStringList status;
        connect(&run.System, &TQ3ReportSystem::StatusChanged, this, [&](const QString &text) { status << text; });
        run.Pdf();
        QCOMPARE(windows, 0);
        QCOMPARE(status.first(), QStringLiteral("Generating page 1"));
        QVERIFY(status.contains(QStringLiteral("Generating page 3")));
    }

    void setupAndPreview_ordinaryRun()
    {
        TRun run;
        run.AddRows(3);
        QStringList calls;
        int pages = 0;
        run.System.OnOverrideSetup = [&](TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&) {
            calls << QStringLiteral("setup %1").arg(int(mode));
            system->SetSetupResult(true, TQ3ReportDestination::Preview);
        };
        run.System.OnOverridePreview = [&](TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&) {
            calls << QStringLiteral("preview %1").arg(int(mode));
            pages = system->Document()->PageCount();
        };
        run.Project.ExecuteReport(QStringLiteral("Elenco"));
        QCOMPARE(calls, QStringList({QStringLiteral("setup 0"), QStringLiteral("preview 0")}));
        QCOMPARE(pages, 1);
        QVERIFY(!run.System.Document());

        // Cancelled output options: nothing is shown.
        calls.clear();
        run.System.OnOverrideSetup = [&](TQ3ReportSystem *system, TQ3OverrideMode, QObject *&) {
            system->SetSetupResult(false, TQ3ReportDestination::Preview);
        };
        run.Project.ExecuteReport(QStringLiteral("Elenco"));
        QVERIFY(calls.isEmpty());
    }

    // A printer run goes to the printer back-end the system was given, at the
    // system's printer scale, with the printing status; the engine itself has
    // no printer.
    void printerRun_throughTheGivenBackEnd()
    {
        struct TFakePrinter : IQ3ReportPrinter
        {
            void Print(const TQ3ReportDocument &document, qreal scaleX, qreal scaleY,
                       const std::function<void(int)> &onPage) override
            {
                Pages = document.PageCount();
                Scale = {scaleX, scaleY};
                for (int page = 1; page <= Pages; ++page)
                    onPage(page);
            }
            int Pages = 0;
            QPointF Scale;
        };
        TRun run;
        run.AddRows(120);
        run.System.OnOverrideSetup = [](TQ3ReportSystem *system, TQ3OverrideMode, QObject *&) {
            system->SetSetupResult(true, TQ3ReportDestination::Printer);
        };
        QVERIFY(!run.System.Printer());
        try {
            run.Project.ExecuteReport(QStringLiteral("Elenco"));
            QFAIL("a printer run without a printer printed");
        } catch (const EQ3Exception &e) {
            QCOMPARE(e.Message(), QStringLiteral("Nessuna stampante disponibile."));
        }

        auto printer = std::make_unique<TFakePrinter>();
        TFakePrinter *fake = printer.get();
        run.System.SetPrinter(std::move(printer));
        run.System.PrinterScaleX = 90;
        QStringList status;
        connect(&run.System, &TQ3ReportSystem::StatusChanged, this, [&](const QString &text) { status << text; });
        run.Project.ExecuteReport(QStringLiteral("Elenco"));
        QVERIFY(fake->Pages >= 3);
        QCOMPARE(fake->Scale, QPointF(0.9, 1.0));
        QVERIFY(status.contains(QStringLiteral("Printing page 3")));
    }

    // A text with a negative colour takes it for the rows where a number it
    // prints is below zero, numbers kept as text included; others keep their own.
    void negativeColor_forNumbersBelowZero()
    {
        TRun run(ConditionProject);
        run.Righe.AddRow({QStringLiteral("Sconto"), -12.3});
        run.Righe.AddRow({QStringLiteral("Merce"), 50.0});
        run.Righe.AddRow({QStringLiteral("Vuota"), QVariant()});
        run.Righe.AddRow({QStringLiteral("Testo"), QStringLiteral("-5,00")});
        run.Righe.AddRow({QStringLiteral("Zero"), QStringLiteral("0,00")});
        const auto document = run.Project.Generate(QStringLiteral("Condizioni"));
        QStringList colours;
        for (const TQ3PlacedBand &placed : document->Page(0).Bands) {
            for (const TQ3ReportItem &item : placed.Band->Items)
                colours << document->ItemText(item, placed.Rows, 0, placed.Totals) + QLatin1Char('=')
                               + document->ItemColor(item, placed.Rows, placed.Totals).name();
        }
        QCOMPARE(colours,
                 (QStringList{"Voce: Sconto -=#000000", "-12,30=#ff0000", "Voce: Merce -=#000000", "50,00=#000000",
                              "Voce: Vuota -=#000000", "=#000000", "Voce: Testo -=#000000", "-5,00=#ff0000",
                              "Voce: Zero -=#000000", "0,00=#000000", "Totale 37,70=#000000", "Fine=#000000"}));

        // A negative total takes the colour of its own text.
        run.Righe.AddRow({QStringLiteral("Reso"), -100.0});
        const auto negative = run.Project.Generate(QStringLiteral("Condizioni"));
        const TQ3PlacedBand &footer = negative->Page(0).Bands.at(6);
        QCOMPARE(negative->ItemText(footer.Band->Items.at(0), footer.Rows, 0, footer.Totals),
                 QStringLiteral("Totale -62,30"));
        QCOMPARE(negative->ItemColor(footer.Band->Items.at(0), footer.Rows, footer.Totals), QColor(Qt::blue));

        // Drawn: the negative amount in red, the positive one in black.
        QImage image(QSize(210, 297) * 4, QImage::Format_RGB32);
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            painter.scale(4 / Q3ReportUnitsPerMm, 4 / Q3ReportUnitsPerMm);
            document->DrawPage(painter, 0);
        }
        // The amount cells, 110 to 160 mm from the left edge, of the first two rows.
        const auto redPixels = [&image](int top) {
            int red = 0;
            for (int y = top * 4; y < (top + 5) * 4; ++y) {
                for (int x = 110 * 4; x < 160 * 4; ++x) {
                    const QColor pixel = image.pixelColor(x, y);
                    red += pixel.red() > 200 && pixel.green() < 80 && pixel.blue() < 80;
                }
            }
            return red;
        };
        QVERIFY(redPixels(10) > 20);
        QCOMPARE(redPixels(20), 0);

        const auto fails = [](const char *attribute) {
            try {
                Q3ReadReportProject(QByteArray("<project><report name=\"R\"><title height=\"5\"><text ") + attribute
                                        + ">x</text></title></report></project>",
                                    QString());
            } catch (const EQ3Exception &e) {
                return e.Message();
            }
            return QString();
        };
        QVERIFY(fails("negative-color=\"rossastro\"")
                    .contains(QStringLiteral("il colore negative-color=\"rossastro\" non è valido")));
        QCOMPARE(fails("negative-color=\"#c00000\""), QString());
    }

    // A band with a condition prints only when its text prints something
    // other than zero, and then takes no room: the bands after it move up.
    void bandIf_printsOnlyWithSomethingToShow()
    {
        TRun run(ConditionProject);
        run.Righe.AddRow({QStringLiteral("Merce"), 5.0});
        run.Righe.AddRow({QString(), -5.0});
        QCOMPARE(Bands(*run.Project.Generate(QStringLiteral("Condizioni")), 0),
                 (QStringList{"10: Voce: Merce - 5,00", "20:  -5,00", "30: Fine"}));

        run.Righe.AddRow({QStringLiteral("Trasporto"), 7.5});
        run.Project.SetParam(QStringLiteral("Nota"), QStringLiteral("Consegna al piano"));
        QCOMPARE(Bands(*run.Project.Generate(QStringLiteral("Condizioni")), 0),
                 (QStringList{"10: Voce: Merce - 5,00", "20:  -5,00", "30: Voce: Trasporto - 7,50", "40: Totale 7,50",
                              "50: Nota: Consegna al piano", "60: Fine"}));

        // Page headers and footers print on every page: no condition there.
        try {
            Q3ReadReportProject("<project><report name=\"R\"><parameter name=\"P\"/>\n<pageHeader height=\"5\" "
                                "if=\"{param:P}\"/></report></project>",
                                QString());
            QFAIL("no error");
        } catch (const EQ3Exception &e) {
            QVERIFY2(e.Message().contains(QStringLiteral("riga 2 (<pageHeader>)")), qPrintable(e.Message()));
        }
        QVERIFY_THROWS_EXCEPTION(EQ3Exception, Q3ReadReportProject("<project><report name=\"R\"><band height=\"5\" "
                                                                   "if=\"{param:P}\"/></report></project>",
                                                                   QString()));
    }

    // The text of "before:" and "after:" is kept as written, blanks included,
    // and prints only beside a value that prints something.
    void beforeAfter_onlyWithAValue()
    {
        const auto segments =
            Q3ParseReportText(QStringLiteral("{dsA.REA|before:REA: |after:   }{dsA.CAPITALE|trim|before:Cap. soc. }"),
                              QString());
        QCOMPARE(segments.size(), 2);
        QCOMPARE(segments.at(0).Before, QStringLiteral("REA: "));
        QCOMPARE(segments.at(0).After, QStringLiteral("   "));
        QCOMPARE(segments.at(1).Before, QStringLiteral("Cap. soc. "));
        QVERIFY(segments.at(1).Trim);

        TRun run(ConditionProject);
        run.Righe.AddRow({QStringLiteral("Merce"), 1.0});
        run.Righe.AddRow({QString(), 2.0});
        run.Righe.AddRow({QStringLiteral("   "), 3.0});
        QCOMPARE(Bands(*run.Project.Generate(QStringLiteral("Condizioni")), 0).mid(0, 3),
                 (QStringList{"10: Voce: Merce - 1,00", "20:  2,00", "30:     3,00"}));
    }

    void fileChosenInOptions_writesPdf()
    {
        TRun run;
        run.AddRows(2);
        const QString file = run.Dir.filePath(QStringLiteral("scelto.pdf"));
        run.System.OnOverrideSetup = [&](TQ3ReportSystem *system, TQ3OverrideMode, QObject *&) {
            system->SetSetupResult(true, TQ3ReportDestination::File, file);
        };
        run.Project.ExecuteReport(QStringLiteral("Elenco"));
        QVERIFY(Q3PdfText(file).contains(QStringLiteral("Riga 2")));
    }

    // An image of a column: the picture file's bytes a BLOB holds, drawn as
    // large as its box allows with its proportions kept, centred; nothing for
    // an empty value or bytes that are no picture.
    void imageOfColumn_scaledIntoItsBox()
    {
        const QByteArray project =
            R"(<project><report name="Logo"><page size="A4" left="10" top="10" right="10" bottom="10"/>
            <connection name="dsAzienda"/>
            <title height="40"><image x="20" y="0" width="40" height="40" source="dsAzienda.LOGO"/></title>
            </report></project>)";
        const auto layouts = Q3ReadReportProject(project, QString());
        QImage logo(QSize(200, 100), QImage::Format_RGB32);
        logo.fill(Qt::red);
        QByteArray png;
        QBuffer buffer(&png);
        QVERIFY(logo.save(&buffer, "PNG"));
        const auto redRows = [&](const QVariant &value) {
            TQ3MemoryData azienda{{QStringLiteral("RAGIONESOCIALE"), QStringLiteral("LOGO")}};
            azienda.AddRow({QStringLiteral("Rossi"), value});
            TQ3ReportContext context;
            context.Connections.insert(QStringLiteral("dsAzienda"), &azienda);
            const TQ3ReportDocument document(layouts.constFirst(), context);
            QImage page(QSize(210, 297), QImage::Format_RGB32);
            page.fill(Qt::white);
            {
                QPainter painter(&page);
                painter.scale(1 / Q3ReportUnitsPerMm, 1 / Q3ReportUnitsPerMm);
                document.DrawPage(painter, 0);
            }
            // The millimetres from the paper's top whose row is red, and how wide it is.
            QStringList rows;
            for (int y = 0; y < 60; ++y) {
                int first = -1;
                int last = -1;
                for (int x = 0; x < 210; ++x) {
                    if (page.pixelColor(x, y) == QColor(Qt::red)) {
                        last = x;
                        if (first < 0)
                            first = x;
                    }
                }
                if (first >= 0)
                    rows << QStringLiteral("%1:%2-%3").arg(y).arg(first).arg(last);
            }
            return rows;
        };
        // A box of 40 x 40 mm at 30 mm from the paper's left and 10 mm from its
        // top takes a picture twice as wide as tall as 40 x 20 mm, in its middle.
        const QStringList drawn = redRows(png);
        QCOMPARE(drawn.size(), 20);
        QCOMPARE(drawn.constFirst(), QStringLiteral("20:30-69"));
        QCOMPARE(drawn.constLast(), QStringLiteral("39:30-69"));
        QVERIFY(redRows(QVariant()).isEmpty());
        QVERIFY(redRows(QByteArray("no picture")).isEmpty());

        const auto fails = [](const char *source) {
            try {
                Q3ReadReportProject(QByteArray("<project><report name=\"R\"><connection name=\"dsAzienda\"/>"
                                               "<title height=\"5\"><image x=\"0\" y=\"0\" width=\"5\" height=\"5\" "
                                               "source=\"")
                                        + source + "\"/></title></report></project>",
                                    QString());
            } catch (const EQ3Exception &e) {
                return e.Message();
            }
            return QString();
        };
        QCOMPARE(fails("dsAzienda.LOGO"), QString());
        QVERIFY(fails("count:dsAzienda").contains(QStringLiteral("source indica una colonna")));
        QVERIFY(fails("dsAzienda.LOGO} e {dsAzienda.LOGO").contains(QStringLiteral("source indica una colonna")));
        QVERIFY(fails("dsAltro.LOGO").contains(QStringLiteral("la connessione \"dsAltro\" non è dichiarata")));
    }

    // A running total in every row of a long detail: each row's value is read
    // a few times, not once for every row after it.
    void runningTotalsReadEachRowOnce()
    {
        // The rows, counting the values read.
        class TContate : public IQ3ReportData
        {
        public:
            TQ3MemoryData Righe{{QStringLiteral("IMPORTO")}};
            mutable qint64 Letture = 0;
            int RowCount() const override { return Righe.RowCount(); }
            int FieldIndex(const QString &name) const override { return Righe.FieldIndex(name); }
            QVariant Value(int row, int column) const override
            {
                ++Letture;
                return Righe.Value(row, column);
            }
        } dati;
        const int righe = 3000;
        for (int i = 1; i <= righe; ++i)
            dati.Righe.AddRow({QVariant(i % 7 == 0 ? QVariant() : QVariant(i * 0.25))});
        const auto layouts = Q3ReadReportProject(
            R"(<project><report name="R"><page size="A4" left="10" top="10" right="10" bottom="10"/>
            <connection name="dsRighe"/><detail connection="dsRighe">
            <band height="5"><text x="0" y="0" width="150" height="4">{IMPORTO|number:2} {sum:IMPORTO|number:2}</text></band>
            <footer height="5"><text x="0" y="0" width="150" height="4">Totale {sum:IMPORTO|number:2}</text></footer>
            </detail></report></project>)",
            QString());
        TQ3ReportContext context;
        context.Connections.insert(QStringLiteral("dsRighe"), &dati);
        const TQ3ReportDocument document(layouts.constFirst(), context);
        QStringList testi;
        for (int page = 0; page < document.PageCount(); ++page)
            testi << Bands(document, page);
        double atteso = 0;
        for (int i = 1; i <= righe; ++i)
            atteso += i % 7 == 0 ? 0 : i * 0.25;
        const QString totale = Q3FormatReportValue(atteso, QStringLiteral("number:2"));
        QVERIFY2(testi.last().endsWith(QStringLiteral("Totale ") + totale), qPrintable(testi.last()));
        QVERIFY2(testi.at(testi.size() - 2).endsWith(QLatin1Char(' ') + totale),
                 qPrintable(testi.at(testi.size() - 2)));
        QVERIFY2(testi.first().endsWith(QStringLiteral("0,25 0,25")), qPrintable(testi.first()));
        qInfo("%d rows with a running total: %lld values read", righe, dati.Letture);
        QVERIFY2(dati.Letture < 20 * righe, qPrintable(QString::number(dati.Letture)));
    }
};

QTEST_MAIN(TestQ3Report)
#include "tst_q3report.moc"
