// The report engine on its own: layouts read from text, in-memory data, pages
// and PDF output, with no database.
#include "Q3Exception.h"
#include "Q3PdfText.h"
#include "Q3Report.h"
#include "Q3ReportFormat.h"
#include "Q3TestDatabase.h"

#include <QDate>
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

class TRun
{
public:
    TRun()
    {
        Testa.AddRow({12, QDate(2026, 3, 5), 1234.5});
        Project.SetProjectFile(WriteQ3TestFile(Dir.path(), QStringLiteral("prova.rav"), QString::fromUtf8(::Project)));
        Project.Open();
        Project.SetEngine(&System);
        Project.RegisterConnection(QStringLiteral("dsTesta"), &Testa);
        Project.RegisterConnection(QStringLiteral("dsRighe"), &Righe);
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

    QTemporaryDir Dir;
    TQ3MemoryData Testa{{QStringLiteral("NUMERO"), QStringLiteral("DATA"), QStringLiteral("TOTALE")}};
    TQ3MemoryData Righe{{QStringLiteral("DESCRIZIONE"), QStringLiteral("IMPORTO")}};
    TQ3ReportProject Project;
    TQ3ReportSystem System;
    TQ3RenderPDF Render;
};

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
        QCOMPARE(Q3FormatReportValue(7.6, QStringLiteral("integer")), QStringLiteral("8"));
        QCOMPARE(Q3FormatReportValue(QDate(2026, 1, 9), QStringLiteral("date")), QStringLiteral("09/01/2026"));
        QCOMPARE(Q3FormatReportValue(20.0, QStringLiteral("percent")), QStringLiteral("20%"));
        QCOMPARE(Q3FormatReportValue(4.5, QStringLiteral("percent")), QStringLiteral("4,5%"));
        QCOMPARE(Q3FormatReportValue(0.0, QStringLiteral("money"), true), QString());
        QCOMPARE(Q3FormatReportValue(QVariant(), QStringLiteral("money")), QString());
    }

    void parseText_placeholders()
    {
        const auto segments = Q3ParseReportText(QStringLiteral("N. {dsA.NUMERO|number:0} {{x}} {param:P} {page}/{pages}"),
                                                QString());
        QCOMPARE(segments.size(), 8);
        QCOMPARE(segments.at(1).Connection, QStringLiteral("dsA"));
        QCOMPARE(segments.at(1).Format, QStringLiteral("number:0"));
        QCOMPARE(segments.at(2).Text, QStringLiteral(" {x} "));
        QCOMPARE(segments.at(3).Kind, TQ3ReportSegment::TKind::Parameter);
        QVERIFY_THROWS_EXCEPTION(EQ3Exception, Q3ParseReportText(QStringLiteral("{dsA.X|strano}"), QString()));
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
        const auto reports = Q3ReadReportProject("<project><report name=\"R\"><title height=\"5\">"
                                                 "<text font=\"Carattere Inesistente\">x</text></title></report></project>",
                                                 QString());
        try {
            TQ3ReportDocument document(reports.first(), {});
            QFAIL("no error");
        } catch (const EQ3Exception &e) {
            QCOMPARE(e.Message(), QStringLiteral("Il report \"R\" usa il carattere \"Carattere Inesistente\", che non è installato."));
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
};

QTEST_MAIN(TestQ3Report)
#include "tst_q3report.moc"
