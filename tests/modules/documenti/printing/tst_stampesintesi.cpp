// The summary and statistics layouts of the report project printed to PDF
// from a real database: month groups with subtotals, ranked customers, the
// three-year turnover table of 94 text parameters, and the turnover by
// article, service and customer. The PDF text is read back with poppler.
#include "../data/KRVServiceRows.h"
#include "../masters/KRVMastersTestKit.h"
#include "KRVModuloFratello.h"
#include "KRVStampeRiepiloghi.h"
#include "KRVStampeTestKit.h"
#include "KRVStatisticheFatturatoRighe.h"
#include "Q3Dataset.h"

#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace KRVStampeTest;

namespace {

// The turnover of one line kind per code over 2026, sales invoices and
// accompanying invoices together: the statistics prints' own statement.
QString FatturatoPerCodice(const QString &tipo)
{
    TKRVFiltroRighe filtro;
    filtro.TipoRiga = tipo;
    return KRVSQLFatturatoRighe(KRVWhereRighe(filtro, TKRVScritturaSQL::Compatta), QDate(2026, 1, 1),
                                QDate(2026, 12, 31), TKRVScritturaSQL::Compatta);
}

// Services sold per customer, ordered by service code and description (and, for
// repeatable tests, by customer).
QString FatturatoClientiServizi()
{
    return QStringLiteral(
        "SELECT FATT_VEND.CLI_CODICE, FATT_VEND.CLI_RAGIONESOCIALE, EXT_TBL.CODICE AS CODICE, (SELECT FIRST 1 "
        "SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM FATT_VEND_DETT INT_TBL WHERE INT_TBL.CODICE = EXT_TBL.CODICE ) AS "
        "DESCRIZIONE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS IMPORTO, EXT_TBL.TIPO_RIGA FROM "
        "FATT_VEND_DETT EXT_TBL LEFT JOIN FATT_VEND ON FATT_VEND.IDFATT_VEND = EXT_TBL.IDFATT_VEND WHERE TIPO_RIGA = "
        "'Servizio' GROUP BY 1, 2, 3, 4, 5, 7 ORDER BY 3, 4, 1");
}

TRiga Servizio(const QString &codice, const QString &descrizione, double prezzo)
{
    return {
        codice, descrizione, prezzo, 1, 0, QStringLiteral("20"), 20, QStringLiteral("ORE"), QStringLiteral("Servizio")};
}

// The colour of each text of a report as it prints now, by the text printed.
QHash<QString, QColor> Colori(const TQ3ReportProject &project, const QString &report)
{
    QHash<QString, QColor> colori;
    const auto document = project.Generate(report);
    for (int page = 0; page < document->PageCount(); ++page) {
        for (const TQ3PlacedBand &placed : document->Page(page).Bands) {
            for (const TQ3ReportItem &item : placed.Band->Items) {
                if (item.Kind == TQ3ReportItem::TKind::Text)
                    colori.insert(document->ItemText(item, placed.Rows, page, placed.Totals),
                                  document->ItemColor(item, placed.Rows, placed.Totals));
            }
        }
    }
    return colori;
}

// The pixels of a word of a one-page PDF, rendered at 150 dpi, that are red.
int PixelRossi(const QString &pdf, const QString &parola)
{
    const QRegularExpression box(QStringLiteral("<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" "
                                                "yMax=\"([\\d.]+)\">%1</word>")
                                     .arg(QRegularExpression::escape(parola)));
    const QRegularExpressionMatch match = box.match(Q3PdfWordBoxes(pdf));
    if (!match.hasMatch())
        return -1;
    const QString prefix = pdf + QStringLiteral("-pagina");
    Q3PdfToPng(pdf, prefix, 150);
    const QFileInfo info(prefix);
    const QImage image(
        QDir(info.absolutePath())
            .filePath(QDir(info.absolutePath()).entryList({info.fileName() + QStringLiteral("*.png")}).value(0)));
    const double scala = 150.0 / 72;
    int rossi = 0;
    for (int y = int(match.captured(2).toDouble() * scala); y <= int(match.captured(4).toDouble() * scala); ++y) {
        for (int x = int(match.captured(1).toDouble() * scala); x <= int(match.captured(3).toDouble() * scala); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            rossi += pixel.red() > 180 && pixel.green() < 90 && pixel.blue() < 90;
        }
    }
    return rossi;
}

} // namespace

class TestStampeSintesi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void riepilogoFatture_monthsWithSubtotalsAndTotal();
    void riepilogoFatture_longYearOverPages();
    void totaleFatturatoPerCliente_rankedWithShares();
    void statisticheFatturato_94ParametersInTheirCells();
    void fatturatoPerArticoloEServizio_bothInvoiceKinds();
    void fatturatoClientiServizi_byServiceOrByCustomer();
    void riepiloghiAnnuali_yearAndFiltersInTheHeading();
    void statisticheFatturato_negativeFiguresInRed();
    void fatturatoPerCodice_negativeAmountsInRed();

private:
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    // An invoice on that date for that customer, its lines in category 1; answers its key.
    int Fattura(int numero, const QString &data, const QString &cliente, const QList<TRiga> &righe);
    // Fills a report dataset with a statement and prints the report to a PDF through the output options.
    QString Stampa(const QString &dataset, const QString &sql, const QString &report, const QString &titolo);

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    QTemporaryDir m_dir;
};

void TestStampeSintesi::initTestCase()
{
    KRVTest::UseItalianLocale();
    m_module = std::make_unique<TKRVTestModule>();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    SetAzienda(Db());
}

void TestStampeSintesi::cleanupTestCase()
{
    m_boxes.reset();
    m_module.reset();
}

void TestStampeSintesi::init()
{
    Db().Exec(QStringLiteral("DELETE FROM FATT_VEND_DETT"));
    Db().Exec(QStringLiteral("DELETE FROM FATT_VEND"));
}

int TestStampeSintesi::Fattura(int numero, const QString &data, const QString &cliente, const QList<TRiga> &righe)
{
    const int id = InsertFattura(Db(), numero, righe);
    Db().Exec(QStringLiteral("UPDATE FATT_VEND_DETT SET IDCATEGORIA = 1 WHERE IDFATT_VEND = %1").arg(id));
    Db().Exec(QStringLiteral(
                  "UPDATE FATT_VEND SET DATA = %1, CLI_CODICE = %2, CLI_RAGIONESOCIALE = %3 WHERE IDFATT_VEND = %4")
                  .arg(QuotedStr(data), QuotedStr(cliente), QuotedStr(QStringLiteral("Cliente ") + cliente))
                  .arg(id));
    return id;
}

QString TestStampeSintesi::Stampa(const QString &dataset, const QString &sql, const QString &report,
                                  const QString &titolo)
{
    TQ3Dataset *righe = m_module->Main->StampeDataset(dataset);
    righe->Close();
    righe->SetSQL(sql);
    righe->Open();
    KRVAggiornaAzienda(KRVStampeHost());
    m_module->Main->rProject()->SetParam(QStringLiteral("Param1"), titolo);
    return PdfThroughOptions([&] { m_module->Main->rProject()->ExecuteReport(report); },
                             m_dir.filePath(report + QStringLiteral(".pdf")));
}

// Newest first, one group per month: its name and year, its invoices, their
// count and subtotals; the grand total at the end.
void TestStampeSintesi::riepilogoFatture_monthsWithSubtotalsAndTotal()
{
    const TRiga cento{QStringLiteral("A"), QStringLiteral("Articolo"), 100, 1, 0};
    const TRiga mille{QStringLiteral("B"), QStringLiteral("Articolo"), 1000, 1, 0};
    Fattura(1, QStringLiteral("2026-01-10"), QStringLiteral("C1"), {cento});
    Fattura(2, QStringLiteral("2026-01-20"), QStringLiteral("C2"), {mille});
    Fattura(3, QStringLiteral("2026-03-02"), QStringLiteral("C1"), {cento, mille});
    Fattura(4, QStringLiteral("2026-03-09"), QStringLiteral("C3"), {cento});
    Fattura(5, QStringLiteral("2026-03-30"), QStringLiteral("C2"), {mille});
    const QString text =
        PdfThroughOptions([] { StampaRiepilogoFatture(2026, TCustomBoolean::cbNull, TCustomBoolean::cbNull); },
                          m_dir.filePath(QStringLiteral("RiepilogoFatture.pdf")));
    const QStringList lines = Lines(text);
    const QStringList expected{QStringLiteral("Riepilogo fatture - Anno 2026"),
                               QStringLiteral("Rossi Impianti S.r.l. Fatture: tutte - Scadenza: tutte"),
                               QStringLiteral("N. Data Tipo Codice Cliente Pagata Scadenza Imponibile Totale"),
                               QStringLiteral("Marzo 2026"),
                               QStringLiteral("5 30/03/2026 FV C2 Cliente C2 NO 04/04/2026 1.000,00 1.200,00"),
                               QStringLiteral("4 09/03/2026 FV C3 Cliente C3 NO 04/04/2026 100,00 120,00"),
                               QStringLiteral("3 02/03/2026 FV C1 Cliente C1 NO 04/04/2026 1.100,00 1.320,00"),
                               QStringLiteral("Totale Marzo (fatture: 3) 2.200,00 2.640,00"),
                               QStringLiteral("Gennaio 2026"),
                               QStringLiteral("2 20/01/2026 FV C2 Cliente C2 NO 04/04/2026 1.000,00 1.200,00"),
                               QStringLiteral("1 10/01/2026 FV C1 Cliente C1 NO 04/04/2026 100,00 120,00"),
                               QStringLiteral("Totale Gennaio (fatture: 2) 1.100,00 1.320,00"),
                               QStringLiteral("Totale generale (fatture: 5) 3.300,00 € 3.960,00 €"),
                               QStringLiteral("Rossi Impianti S.r.l. - Riepilogo fatture - Anno 2026 Pagina 1 di 1")};
    QCOMPARE(lines, expected);
    QVERIFY(m_boxes->Messages().isEmpty());
}

// Over several pages: the column titles on each, a month's title never last
// on a page, each month's subtotal after its own invoices.
void TestStampeSintesi::riepilogoFatture_longYearOverPages()
{
    const TRiga cento{QStringLiteral("A"), QStringLiteral("Articolo"), 100, 1, 0};
    for (int i = 1; i <= 96; ++i)
        Fattura(i, QDate(2026, 1 + (i - 1) / 24, 1 + (i - 1) % 24).toString(Qt::ISODate), QStringLiteral("C1"),
                {cento});
    const QString file = m_dir.filePath(QStringLiteral("RiepilogoFattureLungo.pdf"));
    const QString all =
        PdfThroughOptions([] { StampaRiepilogoFatture(2026, TCustomBoolean::cbNull, TCustomBoolean::cbNull); }, file);
    const int pages = QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)")).match(Q3PdfInfo(file)).captured(1).toInt();
    QVERIFY2(pages >= 3, qPrintable(QString::number(pages)));
    const QRegularExpression month(QStringLiteral("^(Gennaio|Febbraio|Marzo|Aprile) 2026$"));
    for (int page = 1; page <= pages; ++page) {
        const QStringList lines = Lines(Q3PdfText(file, page));
        QVERIFY(lines.contains(QStringLiteral("N. Data Tipo Codice Cliente Pagata Scadenza Imponibile Totale")));
        // The line before the page footer.
        QVERIFY2(!month.match(lines.value(lines.size() - 2)).hasMatch(), qPrintable(lines.join(QLatin1Char('\n'))));
    }
    const QStringList lines = Lines(all);
    for (const QString &mese :
         {QStringLiteral("Aprile"), QStringLiteral("Marzo"), QStringLiteral("Febbraio"), QStringLiteral("Gennaio")}) {
        const qsizetype header = lines.indexOf(mese + QStringLiteral(" 2026"));
        const qsizetype footer = lines.indexOf(QStringLiteral("Totale %1 (fatture: 24) 2.400,00 2.880,00").arg(mese));
        QVERIFY2(header >= 0 && footer > header, qPrintable(mese));
    }
    QVERIFY(lines.contains(QStringLiteral("Totale generale (fatture: 96) 9.600,00 € 11.520,00 €")));
}

// Largest first: the position, each customer's share and the running share;
// the totals of invoices, turnover and share.
void TestStampeSintesi::totaleFatturatoPerCliente_rankedWithShares()
{
    KRVInsertCliente(Db(), QStringLiteral("C1"), QStringLiteral("Alfa Costruzioni"));
    KRVInsertCliente(Db(), QStringLiteral("C2"), QStringLiteral("Beta Impianti"));
    KRVInsertCliente(Db(), QStringLiteral("C3"), QStringLiteral("Gamma Servizi"));
    const TRiga cento{QStringLiteral("A"), QStringLiteral("Articolo"), 100, 1, 0};
    Fattura(1, QStringLiteral("2026-01-10"), QStringLiteral("C1"), {cento});
    Fattura(2, QStringLiteral("2026-02-10"), QStringLiteral("C2"), {cento, cento});
    Fattura(3, QStringLiteral("2026-03-10"), QStringLiteral("C2"), {cento});
    Fattura(4, QStringLiteral("2025-03-10"), QStringLiteral("C3"), {cento});
    Db().Exec(QStringLiteral("UPDATE FATT_VEND SET ANNO = 2025 WHERE NUMERO = 4"));
    const QString text = PdfThroughOptions([] { StampaFatturatoPerCliente(2026); },
                                           m_dir.filePath(QStringLiteral("TotaleFatturatoPerCliente.pdf")));
    const QStringList lines = Lines(text);
    QCOMPARE(lines.mid(2, 5),
             (QStringList{QStringLiteral("Pos. Codice Ragione sociale Fatture Imponibile Quota Cumulata"),
                          QStringLiteral("1 C2 Beta Impianti 2 300,00 75,00% 75,00%"),
                          QStringLiteral("2 C1 Alfa Costruzioni 1 100,00 25,00% 100,00%"),
                          QStringLiteral("3 C3 Gamma Servizi 0 0,00 0,00% 100,00%"),
                          QStringLiteral("Totale (clienti: 3) 3 400,00 € 100,00%")}));
    QVERIFY(lines.first().startsWith(QStringLiteral("Fatturato per cliente")));
}

// Each of the 94 parameters in its cell: the years over their columns, a
// month per row, values as money, differences and percentages with their sign.
void TestStampeSintesi::statisticheFatturato_94ParametersInTheirCells()
{
    TQ3ReportProject *project = m_module->Main->rProject();
    project->SetParam(QStringLiteral("Param1"), QStringLiteral("2026"));
    project->SetParam(QStringLiteral("Param2"), QStringLiteral("2025"));
    project->SetParam(QStringLiteral("Param3"), QStringLiteral("2024"));
    // Stored texts in "%.2f" form with the decimal comma: parameter n holds n x 100 + 0.50.
    for (int n = 4; n <= 94; ++n)
        project->SetParam(QStringLiteral("Param%1").arg(n),
                          QString::number(n * 100 + 0.5, 'f', 2).replace(QLatin1Char('.'), QLatin1Char(',')));
    project->SetParam(QStringLiteral("Param17"), QStringLiteral("-12,30"));
    project->SetParam(QStringLiteral("Param30"), QStringLiteral("-100,00"));
    project->SetParam(QStringLiteral("Param31"), QStringLiteral("0,00"));
    KRVAggiornaAzienda(KRVStampeHost());
    const QString file = m_dir.filePath(QStringLiteral("StatisticheFatturato01.pdf"));
    const QString text =
        PdfThroughOptions([&] { project->ExecuteReport(QStringLiteral("StatisticheFatturato01")); }, file);
    const QStringList lines = Lines(text);
    const QStringList mesi{QStringLiteral("Gennaio"), QStringLiteral("Febbraio"), QStringLiteral("Marzo"),
                           QStringLiteral("Aprile"),  QStringLiteral("Maggio"),   QStringLiteral("Giugno"),
                           QStringLiteral("Luglio"),  QStringLiteral("Agosto"),   QStringLiteral("Settembre"),
                           QStringLiteral("Ottobre"), QStringLiteral("Novembre"), QStringLiteral("Dicembre"),
                           QStringLiteral("Totali")};
    const QLocale italian(QLocale::Italian, QLocale::Italy);
    const auto money = [&italian](int n) { return italian.toString(n * 100 + 0.5, 'f', 2); };
    const auto percent = [&italian](int n) { return italian.toString(n * 100 + 0.5, 'f', 1) + QLatin1Char('%'); };
    QCOMPARE(lines.mid(0, 4), (QStringList{QStringLiteral("Fatturato ultimi 3 anni al netto dell'IVA"),
                                           QStringLiteral("Rossi Impianti S.r.l."), QStringLiteral("2026 2025 2024"),
                                           QStringLiteral("Valori Diff. % Valori Diff. % Valori")}));
    for (int row = 0; row < 13; ++row) {
        const int n = 4 + row;
        QString diff = QLatin1Char('+') + money(n + 13);
        QString change = QLatin1Char('+') + percent(n + 26);
        if (row == 0) {
            diff = QStringLiteral("-12,30");
            change = QStringLiteral("-100,0%");
        } else if (row == 1) {
            change = QStringLiteral("0,0%");
        }
        const QString expected = QStringList{mesi.at(row),
                                             money(n),
                                             diff,
                                             change,
                                             money(n + 39),
                                             QLatin1Char('+') + money(n + 52),
                                             QLatin1Char('+') + percent(n + 65),
                                             money(n + 78)}
                                     .join(QLatin1Char(' '));
        QCOMPARE(lines.value(4 + row), expected);
    }
    QCOMPARE(lines.value(4 + 12),
             QStringLiteral("Totali 1.600,50 +2.900,50 +4.200,5% 5.500,50 +6.800,50 +8.100,5% 9.400,50"));
    QVERIFY(lines.last().endsWith(QStringLiteral("Pagina 1 di 1")));
    QVERIFY(Q3PdfInfo(file).contains(QRegularExpression(QStringLiteral("Page size:\\s+842 x 595"))));
}

// The article and service turnover: one line per code, category and invoice
// kind, the title line of the print, the grand total.
void TestStampeSintesi::fatturatoPerArticoloEServizio_bothInvoiceKinds()
{
    TKRVModuloFratello magazzino(QStringLiteral("Magazzino"));
    Db().LoadFixture(QStringLiteral("magazzino.sql"));
    Fattura(1, QStringLiteral("2026-02-10"), QStringLiteral("C1"),
            {{QStringLiteral("ART-001"), QStringLiteral("Valvola a sfera"), 12.5, 4, 0},
             {QStringLiteral("ART-002"), QStringLiteral("Raccordo in ottone"), 3.2, 10, 0},
             Servizio(QStringLiteral("SRV-01"), QStringLiteral("Manodopera"), 35)});
    Fattura(2, QStringLiteral("2026-05-10"), QStringLiteral("C2"),
            {{QStringLiteral("ART-001"), QStringLiteral("Valvola a sfera (nuova)"), 12.5, 2, 0}});
    Fattura(3, QStringLiteral("2025-05-10"), QStringLiteral("C2"),
            {{QStringLiteral("ART-003"), QStringLiteral("Vecchio"), 1, 1, 0}});
    Db().Exec(
        QStringLiteral("INSERT INTO FATT_ACC (IDFATT_ACC, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, PAGATO) "
                       "VALUES (0, 1, '2026-04-01', 2026, 'C1', 'Cliente C1', 'True')"));
    Db().Exec(QStringLiteral(
        "INSERT INTO FATT_ACC_DETT (IDFATT_ACC_DETT, IDFATT_ACC, CODICE, DESCRIZIONE, IMPORTO, TIPO_RIGA) "
        "VALUES (0, (SELECT MAX(IDFATT_ACC) FROM FATT_ACC), 'ART-004', 'Guarnizione', 9.9, 'Articolo')"));

    const QStringList articoli =
        Lines(Stampa(QStringLiteral("adsFatturatoPerArticolo"), FatturatoPerCodice(QStringLiteral("Articolo")),
                     QStringLiteral("FatturatoPerArticolo"),
                     QStringLiteral("Fatturato per articolo dal 01/01/2026 al 31/12/2026")));
    QCOMPARE(articoli,
             (QStringList{QStringLiteral("Fatturato per articolo dal 01/01/2026 al 31/12/2026"),
                          QStringLiteral("Rossi Impianti S.r.l."), QStringLiteral("Codice Descrizione Cat. Importo"),
                          QStringLiteral("ART-001 Valvola a sfera 1 75,00"),
                          QStringLiteral("ART-002 Raccordo in ottone 1 32,00"),
                          QStringLiteral("ART-004 Guarnizione 9,90"), QStringLiteral("Totale (righe: 3) 116,90 €"),
                          QStringLiteral("Rossi Impianti S.r.l. - Fatturato per articolo dal 01/01/2026 al 31/12/2026 "
                                         "Pagina 1 di 1")}));

    const QStringList servizi =
        Lines(Stampa(QStringLiteral("adsFatturatoPerServizio"), FatturatoPerCodice(QStringLiteral("Servizio")),
                     QStringLiteral("FatturatoPerServizio"),
                     QStringLiteral("Fatturato per servizio dal 01/01/2026 al 31/12/2026")));
    QVERIFY2(servizi.contains(QStringLiteral("SRV-01 Manodopera 1 35,00")),
             qPrintable(servizi.join(QLatin1Char('\n'))));
    QVERIFY(servizi.contains(QStringLiteral("Totale (righe: 1) 35,00 €")));
}

// By service as the rows come, each customer under it; or by customer, the
// rows sorted by the layout, each with its services and total.
void TestStampeSintesi::fatturatoClientiServizi_byServiceOrByCustomer()
{
    Fattura(1, QStringLiteral("2026-02-10"), QStringLiteral("C2"),
            {Servizio(QStringLiteral("SRV-01"), QStringLiteral("Manodopera"), 35),
             Servizio(QStringLiteral("SRV-02"), QStringLiteral("Sopralluogo"), 50)});
    Fattura(2, QStringLiteral("2026-03-10"), QStringLiteral("C1"),
            {Servizio(QStringLiteral("SRV-01"), QStringLiteral("Manodopera"), 70)});
    Fattura(3, QStringLiteral("2026-04-10"), QStringLiteral("C2"),
            {Servizio(QStringLiteral("SRV-01"), QStringLiteral("Manodopera"), 35)});
    // The lines under the title and the firm's name.
    const auto righe = [this](const QString &report) {
        return Lines(Stampa(QStringLiteral("adsFatturatoClientiServizi"), FatturatoClientiServizi(), report,
                            QStringLiteral("Fatturato clienti-servizi dal 01/01/2026 al 31/12/2026")))
            .mid(2, 9);
    };
    QCOMPARE(righe(QStringLiteral("FatturatoClientiServizi01")),
             (QStringList{QStringLiteral("Cliente Ragione sociale Cat. Importo"), QStringLiteral("SRV-01 Manodopera"),
                          QStringLiteral("C1 Cliente C1 1 70,00"), QStringLiteral("C2 Cliente C2 1 70,00"),
                          QStringLiteral("Totale SRV-01 140,00"), QStringLiteral("SRV-02 Sopralluogo"),
                          QStringLiteral("C2 Cliente C2 1 50,00"), QStringLiteral("Totale SRV-02 50,00"),
                          QStringLiteral("Totale generale (righe: 3) 190,00 €")}));
    QCOMPARE(righe(QStringLiteral("FatturatoClientiServizi02")),
             (QStringList{QStringLiteral("Servizio Descrizione Cat. Importo"), QStringLiteral("C1 Cliente C1"),
                          QStringLiteral("SRV-01 Manodopera 1 70,00"), QStringLiteral("Totale Cliente C1 70,00"),
                          QStringLiteral("C2 Cliente C2"), QStringLiteral("SRV-01 Manodopera 1 70,00"),
                          QStringLiteral("SRV-02 Sopralluogo 1 50,00"), QStringLiteral("Totale Cliente C2 120,00"),
                          QStringLiteral("Totale generale (righe: 3) 190,00 €")}));
}

// The year and the filters chosen print in the heading of each page.
void TestStampeSintesi::riepiloghiAnnuali_yearAndFiltersInTheHeading()
{
    const QString oggi = QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
    QCOMPARE(KRVFiltriRiepilogoFatture(TCustomBoolean::cbTrue, TCustomBoolean::cbFalse, QDate(2026, 6, 15)),
             QStringLiteral("Fatture: pagate - Scadenza: in scadenza dal 15/06/2026"));
    QCOMPARE(KRVFiltriRiepilogoFatture(TCustomBoolean::cbNull, TCustomBoolean::cbNull, QDate(2026, 6, 15)),
             QStringLiteral("Fatture: tutte - Scadenza: tutte"));

    KRVInsertCliente(Db(), QStringLiteral("C9"), QStringLiteral("Zeta Forniture"));
    const TRiga cento{QStringLiteral("A"), QStringLiteral("Articolo"), 100, 1, 0};
    // Not paid, due on 04/04/2025: overdue.
    for (int i = 1; i <= 80; ++i)
        Fattura(i, QDate(2025, 1 + (i - 1) / 20, 1 + (i - 1) % 20).toString(Qt::ISODate), QStringLiteral("C9"),
                {cento});
    Db().Exec(QStringLiteral("UPDATE FATT_VEND SET ANNO = 2025, SCADENZA_PAGAMENTO = '2025-04-04'"));
    const QString file = m_dir.filePath(QStringLiteral("RiepilogoFattureFiltri.pdf"));
    PdfThroughOptions([] { StampaRiepilogoFatture(2025, TCustomBoolean::cbFalse, TCustomBoolean::cbTrue); }, file);
    const int pages = QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)")).match(Q3PdfInfo(file)).captured(1).toInt();
    QVERIFY(pages >= 2);
    for (int page = 1; page <= pages; ++page) {
        const QStringList lines = Lines(Q3PdfText(file, page));
        QCOMPARE(lines.mid(0, 2),
                 (QStringList{QStringLiteral("Riepilogo fatture - Anno 2025"),
                              QStringLiteral("Rossi Impianti S.r.l. Fatture: da pagare - Scadenza: scadute prima del ")
                                  + oggi}));
        QCOMPARE(lines.last(), QStringLiteral("Rossi Impianti S.r.l. - Riepilogo fatture - Anno 2025 Pagina %1 di %2")
                                   .arg(page)
                                   .arg(pages));
    }
    QVERIFY(Lines(Q3PdfText(file)).contains(QStringLiteral("Totale generale (fatture: 80) 8.000,00 € 9.600,00 €")));

    const QStringList cliente = Lines(PdfThroughOptions([] { StampaFatturatoPerCliente(2025); },
                                                        m_dir.filePath(QStringLiteral("FatturatoPerClienteAnno.pdf"))));
    QCOMPARE(cliente.first(), QStringLiteral("Fatturato per cliente - Anno 2025"));
    QVERIFY(cliente.last().startsWith(
        QStringLiteral("Rossi Impianti S.r.l. - Fatturato per cliente - Anno 2025 Pagina 1 di 1")));
}

// As in the statistics window, every figure below zero prints in red: values,
// differences and percentages; the others keep the colour of their cell.
void TestStampeSintesi::statisticheFatturato_negativeFiguresInRed()
{
    TQ3ReportProject *project = m_module->Main->rProject();
    for (int n = 1; n <= 3; ++n)
        project->SetParam(QStringLiteral("Param%1").arg(n), QString::number(2027 - n));
    for (int n = 4; n <= 94; ++n)
        project->SetParam(QStringLiteral("Param%1").arg(n), QStringLiteral("1250,00"));
    project->SetParam(QStringLiteral("Param4"), QStringLiteral("-310,40"));
    project->SetParam(QStringLiteral("Param17"), QStringLiteral("-12,30"));
    project->SetParam(QStringLiteral("Param30"), QStringLiteral("-100,00"));
    project->SetParam(QStringLiteral("Param94"), QStringLiteral("-7,00"));
    project->SetParam(QStringLiteral("Param18"), QStringLiteral("45,00"));
    project->SetParam(QStringLiteral("Param5"), QStringLiteral("88,00"));
    project->SetParam(QStringLiteral("Param31"), QStringLiteral("0,00"));
    KRVAggiornaAzienda(KRVStampeHost());
    const QHash<QString, QColor> colori = Colori(*project, QStringLiteral("StatisticheFatturato01"));
    for (const QString &negativo :
         {QStringLiteral("-310,40"), QStringLiteral("-12,30"), QStringLiteral("-100,0%"), QStringLiteral("-7,00")})
        QVERIFY2(colori.value(negativo) == QColor(Qt::red), qPrintable(negativo));
    QCOMPARE(colori.value(QStringLiteral("+45,00")), QColor(Qt::black));
    QCOMPARE(colori.value(QStringLiteral("0,0%")), QColor(Qt::black));
    QCOMPARE(colori.value(QStringLiteral("88,00")), QColor(Qt::black));
    QCOMPARE(colori.value(QStringLiteral("Totali")), QColor(0x1f3a5f));

    // And so on paper.
    const QString file = m_dir.filePath(QStringLiteral("StatisticheNegative.pdf"));
    PdfThroughOptions([&] { project->ExecuteReport(QStringLiteral("StatisticheFatturato01")); }, file);
    QVERIFY(PixelRossi(file, QStringLiteral("-12,30")) > 10);
    QCOMPARE(PixelRossi(file, QStringLiteral("+45,00")), 0);
}

// A service sold at a negative price (a deduction) prints its amount, and a
// total below zero, in red.
void TestStampeSintesi::fatturatoPerCodice_negativeAmountsInRed()
{
    Fattura(1, QStringLiteral("2026-02-10"), QStringLiteral("C1"),
            {Servizio(QStringLiteral("SRV-01"), QStringLiteral("Manodopera"), 35),
             Servizio(QStringLiteral("SRV-09"), QStringLiteral("Abbuono"), -50)});
    TQ3Dataset *righe = m_module->Main->StampeDataset(QStringLiteral("adsFatturatoPerServizio"));
    righe->Close();
    righe->SetSQL(FatturatoPerCodice(QStringLiteral("Servizio")).section(QStringLiteral(" UNION "), 0, 0));
    righe->Open();
    KRVAggiornaAzienda(KRVStampeHost());
    const QHash<QString, QColor> servizi = Colori(*m_module->Main->rProject(), QStringLiteral("FatturatoPerServizio"));
    QCOMPARE(servizi.value(QStringLiteral("-50,00")), QColor(Qt::red));
    QCOMPARE(servizi.value(QStringLiteral("35,00")), QColor(Qt::black));
    QCOMPARE(servizi.value(QStringLiteral("-15,00 €")), QColor(Qt::red));
    QCOMPARE(servizi.value(QStringLiteral("SRV-09")), QColor(Qt::black));

    righe = m_module->Main->StampeDataset(QStringLiteral("adsFatturatoClientiServizi"));
    righe->Close();
    righe->SetSQL(FatturatoClientiServizi());
    righe->Open();
    for (const QString &report :
         {QStringLiteral("FatturatoClientiServizi01"), QStringLiteral("FatturatoClientiServizi02")}) {
        const QHash<QString, QColor> clienti = Colori(*m_module->Main->rProject(), report);
        QCOMPARE(clienti.value(QStringLiteral("-50,00")), QColor(Qt::red));
        QCOMPARE(clienti.value(QStringLiteral("-15,00 €")), QColor(Qt::red));
    }
}

QTEST_MAIN(TestStampeSintesi)
#include "tst_stampesintesi.moc"
