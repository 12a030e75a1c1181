// The firm's data typed in "Dati azienda" and printed on the letterhead of
// invoices and credit notes, logo included, read back from the PDF.
#include "KRVStampe.h"
#include "KRVStampeTestKit.h"
#include "Q3AdminTestKit.h"
#include "Q3DatiAzienda.h"
#include "Q3PdfText.h"

#include <QProcess>
#include <QTemporaryDir>

using namespace KRVStampeTest;

namespace {

// The images of a PDF file as pdfimages lists them: one line per image, with
// its page and its size in pixels.
QStringList PdfImages(const QString &file)
{
    QProcess process;
    process.start(QStringLiteral("pdfimages"), {QStringLiteral("-list"), file});
    process.waitForFinished();
    QStringList images;
    const QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'));
    // Two lines of column titles, then one line per image.
    for (const QString &line : lines.mid(2)) {
        const QStringList columns = line.simplified().split(QLatin1Char(' '));
        if (columns.size() > 4)
            images << QStringLiteral("page %1: %2x%3").arg(columns.at(0), columns.at(3), columns.at(4));
    }
    return images;
}

// How many pixels of the logo's colour the first page shows inside a box,
// in millimetres from the paper's top-left corner, rendered at 60 dpi.
int RedPixels(const QString &file, const QString &folder, const QRectF &box)
{
    const QString prefix = folder + QStringLiteral("/pagina");
    if (Q3PdfToPng(file, prefix) < 1)
        return -1;
    const QImage page(prefix + QStringLiteral("-1.png"));
    const double perMm = page.width() / 210.0;
    int red = 0;
    for (int y = int(box.top() * perMm); y < int(box.bottom() * perMm); ++y) {
        for (int x = int(box.left() * perMm); x < int(box.right() * perMm); ++x) {
            const QColor pixel = page.pixelColor(x, y);
            red += pixel.red() > 150 && pixel.green() < 60 && pixel.blue() < 60;
        }
    }
    return red;
}

// The logo's box on the letterhead (left margin 15 mm, top 12 mm), and the
// rest of the page's top.
const QRectF LogoBox(15 + 146, 12, 34, 13);
const QRectF LeftOfLogo(15, 12, 140, 13);

} // namespace

class TestStampaAzienda : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void firmTypedInTheWindow_printedOnInvoiceWithLogo();
    void logoOnExemptInvoiceAndCreditNote();
    void logoRemoved_letterheadWithoutImage();

private:
    // Prints the invoice to a PDF file of that name; answers its path.
    QString Pdf(int id, const QString &name);

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    QTemporaryDir m_dir;
};

void TestStampaAzienda::initTestCase()
{
    KRVTest::UseItalianLocale();
    m_module = std::make_unique<TKRVTestModule>();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
}

void TestStampaAzienda::cleanupTestCase()
{
    m_boxes.reset();
    m_module.reset();
}

QString TestStampaAzienda::Pdf(int id, const QString &name)
{
    const QString file = m_dir.filePath(name + QStringLiteral(".pdf"));
    StampaFatturaVendita(id, file, 2);
    KeepPdf(file, name + QStringLiteral(".pdf"));
    return file;
}

void TestStampaAzienda::firmTypedInTheWindow_printedOnInvoiceWithLogo()
{
    {
        TQ3DatiAzienda window(m_module->Database.Db());
        window.show();
        Q3AdminTest::Type(&window, "txtRagionesociale", QStringLiteral("Officine Verdi S.r.l."));
        Q3AdminTest::Type(&window, "txtIndirizzo", QStringLiteral("Via Emilia Est 45"));
        Q3AdminTest::Type(&window, "txtCap", QStringLiteral("41121"));
        Q3AdminTest::Type(&window, "txtCitta", QStringLiteral("Modena"));
        Q3AdminTest::Type(&window, "txtProvincia", QStringLiteral("MO"));
        Q3AdminTest::Type(&window, "txtPartitaiva", QStringLiteral("12345678903"));
        Q3AdminTest::Type(&window, "txtTelefono", QStringLiteral("059 123456"));
        Q3AdminTest::Type(&window, "txtIban", QStringLiteral("IT60X0542811101000000123456"));
        Q3AdminTest::ChooseFileWhenShown(&window, Q3AdminTest::LogoFile(m_dir.path()));
        Q3AdminTest::Click(&window, "btnScegliLogo");
        Q3AdminTest::Click(&window, "btnSalva");
        QVERIFY2(m_boxes->Messages().isEmpty(), qPrintable(m_boxes->Messages().value(0).Text));
        QVERIFY(!window.Modificata());
    }
    const int id = InsertFattura(m_module->Database, 1,
                                 {{QStringLiteral("ART-001"), QStringLiteral("Valvola a sfera"), 12.5, 4, 0}});
    const QString file = Pdf(id, QStringLiteral("fattura_azienda"));
    const QStringList lines = Lines(Q3PdfText(file));
    const QString text = lines.join(QLatin1Char('\n'));
    for (const QString &piece :
         {QStringLiteral("Officine Verdi S.r.l."), QStringLiteral("Via Emilia Est 45 - 41121 Modena (MO)"),
          QStringLiteral("P.I.: 12345678903 Tel. 059 123456"), QStringLiteral("IT60X0542811101000000123456")})
        QVERIFY2(text.contains(piece), qPrintable(piece + QStringLiteral("\n") + text));
    QCOMPARE(PdfImages(file), QStringList{QStringLiteral("page 1: 120x60")});
    // The logo stands in its box at the right of the firm's name, and nowhere to its left.
    QVERIFY(RedPixels(file, m_dir.path(), LogoBox) > 200);
    QCOMPARE(RedPixels(file, m_dir.path(), LeftOfLogo), 0);
}

void TestStampaAzienda::logoOnExemptInvoiceAndCreditNote()
{
    TQ3Azienda azienda = Q3LeggiAzienda(m_module->Database.Db());
    QFile logo(Q3AdminTest::LogoFile(m_dir.path()));
    QVERIFY(logo.open(QIODevice::ReadOnly));
    azienda.Logo = logo.readAll();
    Q3ScriviAzienda(m_module->Database.Db(), azienda);

    const int esente = InsertFattura(m_module->Database, 2,
                                     {{QStringLiteral("ART-001"), QStringLiteral("Valvola a sfera"), 12.5, 4, 0}},
                                     QStringLiteral("True"));
    const QString file = Pdf(esente, QStringLiteral("esente_azienda"));
    QVERIFY(Q3PdfText(file).contains(QStringLiteral("Officine Verdi S.r.l.")));
    QCOMPARE(PdfImages(file), QStringList{QStringLiteral("page 1: 120x60")});
    QVERIFY(RedPixels(file, m_dir.path(), LogoBox) > 200);

    const int nota =
        InsertFattura(m_module->Database, 3, {{QStringLiteral("ART-001"), QStringLiteral("Reso valvola"), 12.5, 1, 0}},
                      QString(), QStringLiteral("NOTE_ACCREDITO"));
    const QString notaFile = m_dir.filePath(QStringLiteral("nota_azienda.pdf"));
    const QString text = PdfThroughOptions([&] { StampaNotaAccredito(nota); }, notaFile);
    QVERIFY2(text.contains(QStringLiteral("Officine Verdi S.r.l.")), qPrintable(text));
    QCOMPARE(PdfImages(notaFile), QStringList{QStringLiteral("page 1: 120x60")});
    QVERIFY(RedPixels(notaFile, m_dir.path(), LogoBox) > 200);
}

void TestStampaAzienda::logoRemoved_letterheadWithoutImage()
{
    {
        TQ3DatiAzienda window(m_module->Database.Db());
        window.show();
        Q3AdminTest::Click(&window, "btnRimuoviLogo");
        Q3AdminTest::Click(&window, "btnSalva");
        QVERIFY(m_boxes->Messages().isEmpty());
    }
    const int id = InsertFattura(m_module->Database, 4,
                                 {{QStringLiteral("ART-001"), QStringLiteral("Valvola a sfera"), 12.5, 4, 0}});
    const QString file = Pdf(id, QStringLiteral("senza_logo"));
    QVERIFY(Q3PdfText(file).contains(QStringLiteral("Officine Verdi S.r.l.")));
    QVERIFY(PdfImages(file).isEmpty());
    QCOMPARE(RedPixels(file, m_dir.path(), LogoBox), 0);
}

QTEST_MAIN(TestStampaAzienda)
#include "tst_stampaazienda.moc"
