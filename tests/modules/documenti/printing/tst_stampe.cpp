// Printing invoices, credit notes and the price list through the report
// project, on a real database; PDF output read back with poppler.
#include "../masters/KRVMastersTestKit.h"
#include "KRVRiepilogoIva.h"
#include "KRVStampe.h"
#include "KRVStampeTestKit.h"
#include "KRVdmStampe.h"
#include "Q3PdfText.h"
#include "Q3ReportPreview.h"
#include "Q3ReportSetupDialog.h"
#include "uKRVRicercaArticoli.h"
#include "uKRVSalvaPDF.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace KRVStampeTest;

namespace {

QList<TRiga> RigheNormali()
{
    return {{QStringLiteral("ART-001"), QStringLiteral("Valvola a sfera 1/2\""), 12.5, 4, 0},
            {QStringLiteral("ART-002"), QStringLiteral("Raccordo in ottone"), 3.2, 10, 10},
            {QStringLiteral("SRV-01"), QStringLiteral("Manodopera installazione"), 35, 3, 0, QStringLiteral("20"), 20,
             QStringLiteral("ORE"), QStringLiteral("Servizio")},
            {QStringLiteral("NI-1"), QStringLiteral("Spese di trasporto esenti"), 15, 1, 0, QStringLiteral("N0"), 0,
             QStringLiteral("PEZZI"), QStringLiteral("Non imponibile")}};
}

// The lines of the VAT summary: those between its column titles and the totals.
QStringList RigheRiepilogo(const QStringList &lines)
{
    const qsizetype first = lines.indexOf(QStringLiteral("Codice IVA Descrizione Aliquota Imponibile Imposta")) + 1;
    qsizetype last = first;
    while (last < lines.size() && !lines.at(last).startsWith(QLatin1String("Totale")))
        ++last;
    return first > 0 ? lines.mid(first, last - first) : QStringList();
}

TRiga Aliquota(const QString &codice, double aliquota, const QString &descrizione, double prezzo)
{
    return {QStringLiteral("ART-") + codice,
            QStringLiteral("Articolo al ") + codice + QLatin1Char('%'),
            prezzo,
            1,
            0,
            codice,
            aliquota,
            QStringLiteral("PEZZI"),
            QStringLiteral("Articolo"),
            descrizione};
}

} // namespace

class TestStampe : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void dataModule_connectionsAndStatements();
    void azienda_descColumns();
    void azienda_emptyOrNullFax_noLabel();
    void pdf_holdsInvoiceInItalianForm();
    void pdf_priceAndQuantityWithTheirTypedDecimals();
    void courtesyCopy_namesTheElectronicInvoiceFile();
    void textOnlyInvoice_emptyVatSummaryStillPrints();
    void sameRate_oneSummaryRowWithSummedTax();
    void exemptInvoice_noteAsParam1();
    void exemptWithoutOption_emptyParam1();
    void param1KeptForLaterRuns_quirkKept();
    void afterPdfRun_nextPrintShowsOptionsAndPreview();
    void outputOptionsCancelled_printsNothing();
    void notBoolean_conversionErrorWrapped();
    void pdfFailure_keepsPdfSettings_quirkKept();
    void longInvoice_headerAndPageNumbersOnEveryPage();
    void tenLineDescription_wrapsInsideItsCell();
    void creditNote_printsThroughOutputOptions();
    void nonTaxableLines_ownSummaryRowAndTotal();
    void vatRates_roundedToAddUpToTheTotal();
    void vatRates_roundingSpreadsTheCents();
    void exemptInvoice_noTaxButExemptTotalWithNote();
    void letterhead_reaAndCapitalWithTheirLabels();
    void listinoIvato_allArticlesWithVat();
    void saveDialog_remembersLastNameAndWrites();

private:
    QString PdfOf(int id, const QString &name);
    // Runs a print choosing a PDF file in the output options, as a user does;
    // answers the file's text, empty when other windows came up.
    QString PdfThroughOptions(const std::function<void()> &print, const QString &name);

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    QTemporaryDir m_dir;
    int m_numero = 1;
};

void TestStampe::initTestCase()
{
    KRVTest::UseItalianLocale();
    m_module = std::make_unique<TKRVTestModule>();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    SetAzienda(m_module->Database);
}

void TestStampe::cleanupTestCase()
{
    m_boxes.reset();
    m_module.reset();
}

void TestStampe::init()
{
    m_boxes->Clear();
    m_module->Database.Exec(QStringLiteral("DELETE FROM OPZIONI WHERE OPZIONE='FATT_IVA_ESENTE_NOTE'"));
}

QString TestStampe::PdfOf(int id, const QString &name)
{
    const QString file = m_dir.filePath(name + QStringLiteral(".pdf"));
    StampaFatturaVendita(id, file, 2);
    KeepPdf(file, name + QStringLiteral(".pdf"));
    return file;
}

QString TestStampe::PdfThroughOptions(const std::function<void()> &print, const QString &name)
{
    return KRVStampeTest::PdfThroughOptions(print, m_dir.filePath(name));
}

void TestStampe::dataModule_connectionsAndStatements()
{
    TKRVdmStampe *dm = m_module->Main->dmStampe();
    QCOMPARE(dm->DatasetNames().size(), 12);
    TQ3ReportProject *project = m_module->Main->rProject();
    for (const QString &name : dm->DatasetNames())
        QVERIFY2(project->Connection(QStringLiteral("ds") + name.mid(3)), qPrintable(name));
    QVERIFY(project->Connection(QStringLiteral("dsAzienda")));
    QCOMPARE(
        dm->Dataset(QStringLiteral("adsFattVendIva"))->SQL(),
        QStringLiteral(
            "SELECT SUM(IMPORTO) AS IMPONIBILE, SUM((IMPORTO * IVA_ALIQUOTA) / 100) AS IMPOSTA, IVA_CODICE, "
            "IVA_DESCRIZIONE, IVA_ALIQUOTA FROM FATT_VEND_DETT WHERE IDFATT_VEND = :IDFATT_VEND AND "
            "IVA_IDALIQUOTA_IVA IS NOT NULL GROUP BY IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA ORDER BY IVA_CODICE"));
    QVERIFY(dm->Dataset(QStringLiteral("adsNoteAccreditoIva"))
                ->SQL()
                .contains(QStringLiteral("FROM NOTE_ACCREDITO_DETT WHERE IDNOTA_ACCREDITO = :IDNOTA_ACCREDITO")));
    QCOMPARE(project->ReportNames(),
             QStringList({QStringLiteral("FattVend"), QStringLiteral("FattVendIVAEsente"),
                          QStringLiteral("NotaAccredito"), QStringLiteral("ElencoArticoli01"),
                          QStringLiteral("RiepilogoFatture"), QStringLiteral("TotaleFatturatoPerCliente"),
                          QStringLiteral("StatisticheFatturato01"), QStringLiteral("FatturatoPerArticolo"),
                          QStringLiteral("FatturatoPerServizio"), QStringLiteral("FatturatoClientiServizi01"),
                          QStringLiteral("FatturatoClientiServizi02")}));
    // Every report reads only connections the module registers.
    for (const QString &name : project->ReportNames()) {
        for (const QString &connection : project->Report(name)->Connections)
            QVERIFY2(project->Connection(connection), qPrintable(name + QLatin1Char(' ') + connection));
    }
    QCOMPARE(m_module->Main->rSystem()->TitleSetup, QStringLiteral("Output Options"));
    QCOMPARE(m_module->Main->rSystem()->TitlePreview, QStringLiteral("Report Preview"));
    QCOMPARE(m_module->Main->rSystem()->TitleStatus, QStringLiteral("Report Status"));
    QCOMPARE(m_module->Main->rRenderPDF()->DisplayName, QStringLiteral("Adobe Acrobat (PDF)"));
}

void TestStampe::azienda_descColumns()
{
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali());
    PdfOf(id, QStringLiteral("azienda"));
    TQ3Dataset *azienda = m_module->Main->StampeDataset(QStringLiteral("adsAzienda"));
    QCOMPARE(azienda->FieldValue(QStringLiteral("PARTITAIVA_DESC")).toString(), QStringLiteral("P.I.: 01234567890 "));
    QCOMPARE(azienda->FieldValue(QStringLiteral("CODICEFISCALE_DESC")).toString(),
             QStringLiteral("C.F.: 01234567890 "));
    QCOMPARE(azienda->FieldValue(QStringLiteral("TELEFONO_DESC")).toString(), QStringLiteral("Tel. 051 234567 "));
    QCOMPARE(azienda->FieldValue(QStringLiteral("FAX_DESC")).toString(), QStringLiteral("Fax. 051 234568 "));
    QCOMPARE(azienda->FieldValue(QStringLiteral("EMAIL_DESC")).toString(),
             QStringLiteral("e-mail: info@rossiimpianti.it "));
    QCOMPARE(azienda->FieldValue(QStringLiteral("WEB_DESC")).toString(), QStringLiteral("web: www.rossiimpianti.it "));
}

void TestStampe::azienda_emptyOrNullFax_noLabel()
{
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali());
    TQ3Dataset *azienda = m_module->Main->StampeDataset(QStringLiteral("adsAzienda"));
    m_module->Database.Exec(QStringLiteral("UPDATE AZIENDA SET FAX=''"));
    QString text = Q3PdfText(PdfOf(id, QStringLiteral("faxvuoto")));
    QCOMPARE(azienda->FieldValue(QStringLiteral("FAX_DESC")).toString(), QString());
    QVERIFY(!azienda->FieldIsNull(QStringLiteral("FAX_DESC")));
    QVERIFY(!text.contains(QStringLiteral("Fax.")));
    QVERIFY(text.contains(QStringLiteral("Tel. 051 234567")));

    // The firm table of an older host may hold NULL: the same.
    m_module->Database.Exec(QStringLiteral("ALTER TABLE AZIENDA ALTER FAX DROP NOT NULL"));
    m_module->Database.Exec(QStringLiteral("UPDATE AZIENDA SET FAX=NULL"));
    text = Q3PdfText(PdfOf(id, QStringLiteral("faxnull")));
    QVERIFY(!azienda->FieldIsNull(QStringLiteral("FAX_DESC")));
    QCOMPARE(azienda->FieldValue(QStringLiteral("FAX_DESC")).toString(), QString());
    QVERIFY(!text.contains(QStringLiteral("Fax.")));
    SetAzienda(m_module->Database);
}

void TestStampe::pdf_holdsInvoiceInItalianForm()
{
    const int id = InsertFattura(m_module->Database, 4711, RigheNormali());
    const QString file = PdfOf(id, QStringLiteral("fattura"));
    const QString text = Q3PdfText(file);
    const QStringList expected{
        QStringLiteral("Rossi Impianti S.r.l."), QStringLiteral("Via Garibaldi 12 - 40121 Bologna (BO)"),
        QStringLiteral(
            "P.I.: 01234567890 C.F.: 01234567890 Tel. 051 234567 Fax. 051 234568 e-mail: info@rossiimpianti.it web: www.rossiimpianti.it"),
        QStringLiteral("Fattura n. 4711 del 05/03/2026"), QStringLiteral("Bianchi & Figli S.n.c."),
        QStringLiteral("Corso Italia 7"), QStringLiteral("41121 Modena (MO)"), QStringLiteral("BNCMRA70A01F257X"),
        QStringLiteral("09876543210"), QStringLiteral("Bonifico 30 gg Data Fattura"), QStringLiteral("04/04/2026"),
        QStringLiteral("IT60X0542811101000000123456"),
        // Lines: code, description, quantity, unit, price, discount, amount, VAT code.
        QStringLiteral("ART-001"), QStringLiteral("Valvola a sfera 1/2\""), QStringLiteral("4,00"),
        QStringLiteral("12,50"), QStringLiteral("50,00"), QStringLiteral("ART-002"),
        QStringLiteral("Raccordo in ottone"), QStringLiteral("10%"), QStringLiteral("28,80"),
        QStringLiteral("Manodopera installazione"), QStringLiteral("ORE"), QStringLiteral("105,00"),
        QStringLiteral("Spese di trasporto esenti"), QStringLiteral("15,00"),
        // VAT summary by rate, then the totals.
        QStringLiteral("Riepilogo IVA"), QStringLiteral("Aliquota standard"), QStringLiteral("183,80"),
        QStringLiteral("36,76"), QStringLiteral("Totale imponibile"), QStringLiteral("183,80 €"),
        QStringLiteral("36,76 €"), QStringLiteral("Totale documento"), QStringLiteral("235,56 €"),
        QStringLiteral("Merce consegnata presso il cantiere di via Emilia."), QStringLiteral("Pagina 1 di 1")};
    for (const QString &piece : expected)
        QVERIFY2(text.contains(piece), qPrintable(piece + QStringLiteral("\n") + text));
    QVERIFY(text.indexOf(QStringLiteral("ART-001")) < text.indexOf(QStringLiteral("ART-002")));
    QVERIFY(text.indexOf(QStringLiteral("Riepilogo IVA")) < text.indexOf(QStringLiteral("Totale documento")));
    const QString info = Q3PdfInfo(file);
    QVERIFY2(info.contains(QRegularExpression(QStringLiteral("Title:\\s+Quillo 3\\n"))), qPrintable(info));
    QVERIFY(info.contains(QRegularExpression(QStringLiteral("Author:\\s+Quillo 3\\n"))));
    QVERIFY(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+1\\n"))));
    QVERIFY(m_boxes->Messages().isEmpty());
}

// A price of 0,333333 and a quantity of 1,125 print as they were typed; a
// price and a quantity without further decimals keep two.
void TestStampe::pdf_priceAndQuantityWithTheirTypedDecimals()
{
    const int id = InsertFattura(m_module->Database, 4712,
                                 {{QStringLiteral("ART-001"), QStringLiteral("Viti a peso"), 0.333333, 3, 0},
                                  {QStringLiteral("ART-002"), QStringLiteral("Cavo a metro"), 8, 1.125, 0},
                                  {QStringLiteral("ART-003"), QStringLiteral("Raccordo"), 2.5, 2, 0}});
    const QStringList lines = Lines(Q3PdfText(PdfOf(id, QStringLiteral("decimali"))));
    for (const QString &line : {QStringLiteral("ART-001 Viti a peso 3,00 PEZZI 0,333333 1,00 20"),
                                QStringLiteral("ART-002 Cavo a metro 1,125 PEZZI 8,00 9,00 20"),
                                QStringLiteral("ART-003 Raccordo 2,00 PEZZI 2,50 5,00 20")})
        QVERIFY2(lines.contains(line), qPrintable(lines.join(QLatin1Char('\n'))));
}

// Once its electronic invoice was produced, a printed document says it is a
// courtesy copy and names the file; before, it says nothing of the kind.
void TestStampe::courtesyCopy_namesTheElectronicInvoiceFile()
{
    const int id = InsertFattura(m_module->Database, 4713, RigheNormali());
    QVERIFY(!Q3PdfText(PdfOf(id, QStringLiteral("noncortesia"))).contains(QStringLiteral("Copia di cortesia")));
    m_module->Database.Exec(QStringLiteral("UPDATE FATT_VEND SET FPA_NOME_FILE = 'IT01234567897_A1.xml', "
                                           "FPA_PRODOTTA = CURRENT_TIMESTAMP WHERE IDFATT_VEND = ")
                            + QString::number(id));
    const QString testo = Q3PdfText(PdfOf(id, QStringLiteral("cortesia"))).simplified();
    QVERIFY2(testo.contains(QStringLiteral("Copia di cortesia della fattura elettronica IT01234567897_A1.xml: il "
                                           "documento valido ai fini fiscali è il file XML.")),
             qPrintable(testo));

    const int nota =
        InsertFattura(m_module->Database, 32, {{QStringLiteral("ART-001"), QStringLiteral("Reso"), 12.5, 2, 0}},
                      QString(), QStringLiteral("NOTE_ACCREDITO"));
    m_module->Database.Exec(
        QStringLiteral("UPDATE NOTE_ACCREDITO SET FPA_NOME_FILE = 'IT01234567897_A2.xml' WHERE IDNOTA_ACCREDITO = ")
        + QString::number(nota));
    const QString testoNota =
        PdfThroughOptions([&] { StampaNotaAccredito(nota); }, QStringLiteral("notacortesia.pdf")).simplified();
    QVERIFY2(testoNota.contains(QStringLiteral("Copia di cortesia della fattura elettronica IT01234567897_A2.xml")),
             qPrintable(testoNota));
}

void TestStampe::textOnlyInvoice_emptyVatSummaryStillPrints()
{
    TRiga testo;
    testo.Tipo = QStringLiteral("Testo");
    testo.Descrizione = QStringLiteral("Come da accordi telefonici");
    const int id = InsertFattura(m_module->Database, m_numero++, {testo});
    const QString text = Q3PdfText(PdfOf(id, QStringLiteral("solotesto")));
    QCOMPARE(m_module->Main->StampeDataset(QStringLiteral("adsFattVendIva"))->RecordCount(), 0);
    QCOMPARE(m_module->Main->StampeDataset(QStringLiteral("adsFattVendDett"))->RecordCount(), 1);
    QVERIFY(text.contains(QStringLiteral("Come da accordi telefonici")));
    QVERIFY(text.contains(QStringLiteral("Riepilogo IVA")));
    QVERIFY(text.contains(QStringLiteral("0,00 €")));
}

void TestStampe::sameRate_oneSummaryRowWithSummedTax()
{
    const int id = InsertFattura(m_module->Database, m_numero++,
                                 {{QStringLiteral("A"), QStringLiteral("Primo"), 10.05, 1, 0},
                                  {QStringLiteral("B"), QStringLiteral("Secondo"), 10.05, 1, 0}});
    PdfOf(id, QStringLiteral("stessaaliquota"));
    TQ3Dataset *iva = m_module->Main->StampeDataset(QStringLiteral("adsFattVendIva"));
    QCOMPARE(iva->RecordCount(), 1);
    QCOMPARE(iva->FieldValue(QStringLiteral("IVA_CODICE")).toString(), QStringLiteral("20"));
    QCOMPARE(iva->FieldValue(QStringLiteral("IMPONIBILE")).toDouble(), 20.10);
    // Each line's tax (2.01) summed, with no rounding in between.
    QVERIFY(qAbs(iva->FieldValue(QStringLiteral("IMPOSTA")).toDouble() - 4.02) < 1e-9);
}

void TestStampe::exemptInvoice_noteAsParam1()
{
    m_module->Database.Exec(QStringLiteral("INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES ('FATT_IVA_ESENTE_NOTE', "
                                           "'Operazione non soggetta ad IVA ai sensi dell''art. 7-ter DPR 633/72')"));
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali(), QStringLiteral("True"));
    const QString text = Q3PdfText(PdfOf(id, QStringLiteral("esente")));
    QVERIFY2(text.contains(QStringLiteral("Operazione non soggetta ad IVA ai sensi dell'art. 7-ter DPR 633/72")),
             qPrintable(text));
    QCOMPARE(m_module->Main->rProject()->GetParam(QStringLiteral("Param1")),
             QStringLiteral("Operazione non soggetta ad IVA ai sensi dell'art. 7-ter DPR 633/72"));
}

void TestStampe::exemptWithoutOption_emptyParam1()
{
    m_module->Main->rProject()->SetParam(QStringLiteral("Param1"), QStringLiteral("Nota vecchia"));
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali(), QStringLiteral("True"));
    const QString text = Q3PdfText(PdfOf(id, QStringLiteral("esentesenzanota")));
    QCOMPARE(m_module->Main->rProject()->GetParam(QStringLiteral("Param1")), QString());
    QVERIFY(!text.contains(QStringLiteral("Nota vecchia")));
    QVERIFY(text.contains(QStringLiteral("Totale documento")));
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestStampe::param1KeptForLaterRuns_quirkKept()
{
    m_module->Database.Exec(
        QStringLiteral("INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES ('FATT_IVA_ESENTE_NOTE', 'Esente art. 10')"));
    const int esente = InsertFattura(m_module->Database, m_numero++, RigheNormali(), QStringLiteral("True"));
    const int normale = InsertFattura(m_module->Database, m_numero++, RigheNormali());
    PdfOf(esente, QStringLiteral("param1a"));
    const QString text = Q3PdfText(PdfOf(normale, QStringLiteral("param1b")));
    QCOMPARE(m_module->Main->rProject()->GetParam(QStringLiteral("Param1")), QStringLiteral("Esente art. 10"));
    // Only the exempt layout prints it.
    QVERIFY(!text.contains(QStringLiteral("Esente art. 10")));
}

void TestStampe::afterPdfRun_nextPrintShowsOptionsAndPreview()
{
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali());
    PdfOf(id, QStringLiteral("primaPdf"));
    TQ3ReportSystem *system = m_module->Main->rSystem();
    QCOMPARE(system->DefaultDest, TQ3ReportDestination::Preview);
    QVERIFY(system->AllowSetup);
    QVERIFY(system->DoNativeOutput);
    QCOMPARE(system->RenderObject.data(), m_module->Main->rRenderPDF());

    int pages = 0;
    QString pageTitle;
    const QStringList seen =
        WithModals([&] { StampaFatturaVendita(id, QString(), 1); },
                   {[](QWidget *setup) {
                        QVERIFY(setup->findChild<QRadioButton *>(QStringLiteral("rbPreview"))->isChecked());
                        ClickOk(setup);
                    },
                    [&](QWidget *window) {
                        auto preview = qobject_cast<TQ3ReportPreview *>(window);
                        pages = preview->PageCount();
                        pageTitle = preview->findChild<QLabel *>(QStringLiteral("lblInfo"))->text();
                        QCOMPARE(preview->Zoom(), 100);
                        QVERIFY(!preview->PageImage().isNull());
                        const QString folder = qEnvironmentVariable("Q3_TEST_OUTPUT");
                        if (!folder.isEmpty())
                            preview->grab().save(QDir(folder).filePath(QStringLiteral("anteprima-fattura.png")));
                        preview->accept();
                    }});
    QCOMPARE(seen, QStringList({QStringLiteral("Output Options"), QStringLiteral("Report Preview")}));
    QCOMPARE(pages, 1);
    QCOMPARE(pageTitle, QStringLiteral("Pagina 1 di 1 - 100 %"));
    QVERIFY(m_boxes->Messages().isEmpty());

    // The invoice list passes 0: the same ordinary path.
    const QStringList again = WithModals([&] { StampaFatturaVendita(id, QString(), 0); },
                                         {[](QWidget *setup) { ClickOk(setup); },
                                          [](QWidget *preview) { qobject_cast<QDialog *>(preview)->accept(); }});
    QCOMPARE(again, seen);
}

void TestStampe::outputOptionsCancelled_printsNothing()
{
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali());
    const QStringList seen = WithModals([&] { StampaFatturaVendita(id, QString(), 1); },
                                        {[](QWidget *setup) { qobject_cast<QDialog *>(setup)->reject(); }});
    QCOMPARE(seen, QStringList({QStringLiteral("Output Options")}));
}

void TestStampe::notBoolean_conversionErrorWrapped()
{
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali(), QStringLiteral("Forse"));
    const QString file = m_dir.filePath(QStringLiteral("nonbool.pdf"));
    try {
        StampaFatturaVendita(id, file, 2);
        QFAIL("no error");
    } catch (const EQ3Exception &e) {
        QCOMPARE(e.Message(), QStringLiteral("[StampaFatturaVendita]\n\r'Forse' non è un valore booleano valido"));
    }
    QVERIFY(!QFile::exists(file));
}

void TestStampe::pdfFailure_keepsPdfSettings_quirkKept()
{
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali());
    const QString missing = m_dir.filePath(QStringLiteral("nessuna/cartella/fattura.pdf"));
    try {
        StampaFatturaVendita(id, missing, 2);
        QFAIL("no error");
    } catch (const EQ3Exception &e) {
        QVERIFY(e.Message().startsWith(QStringLiteral("[StampaFatturaVendita]\n\rImpossibile scrivere il file")));
    }
    TQ3ReportSystem *system = m_module->Main->rSystem();
    QCOMPARE(system->DefaultDest, TQ3ReportDestination::File);
    QVERIFY(!system->AllowSetup);
    QVERIFY(!system->DoNativeOutput);
    // The next successful run puts the ordinary output back.
    PdfOf(id, QStringLiteral("dopoErrore"));
    QCOMPARE(system->DefaultDest, TQ3ReportDestination::Preview);
    QVERIFY(system->AllowSetup);
}

void TestStampe::longInvoice_headerAndPageNumbersOnEveryPage()
{
    QList<TRiga> righe;
    for (int i = 1; i <= 120; ++i)
        righe << TRiga{QStringLiteral("COD%1").arg(i, 4, 10, QLatin1Char('0')),
                       QStringLiteral("Articolo di magazzino numero %1").arg(i), 1.0 + i, 2, 0};
    const int id = InsertFattura(m_module->Database, m_numero++, righe);
    const QString file = PdfOf(id, QStringLiteral("centoventi"));
    const QString info = Q3PdfInfo(file);
    const int pages = QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)")).match(info).captured(1).toInt();
    QVERIFY2(pages >= 3, qPrintable(info));
    for (int page = 1; page <= pages; ++page) {
        const QString text = Q3PdfText(file, page);
        QVERIFY2(text.contains(QStringLiteral("Rossi Impianti S.r.l.")), qPrintable(text));
        QVERIFY(text.contains(QStringLiteral("Pagina %1 di %2").arg(page).arg(pages)));
        if (page < pages) // the last page may hold the totals only
            QVERIFY2(text.contains(
                         QRegularExpression(QStringLiteral("Codice\\s+Descrizione\\s+Q\\.tà\\s+U\\.M\\.\\s+Prezzo"))),
                     qPrintable(text));
    }
    const QString all = Q3PdfText(file);
    for (int i = 1; i <= 120; ++i)
        QVERIFY2(all.contains(QStringLiteral("Articolo di magazzino numero %1\n").arg(i))
                     || all.contains(QStringLiteral("Articolo di magazzino numero %1 ").arg(i)),
                 qPrintable(QString::number(i)));
    QVERIFY(Q3PdfText(file, 1).contains(QStringLiteral("Fattura n. ")));
    QVERIFY(Q3PdfText(file, pages).contains(QStringLiteral("Totale documento")));
}

void TestStampe::tenLineDescription_wrapsInsideItsCell()
{
    QStringList words;
    for (int i = 1; i <= 60; ++i)
        words << QStringLiteral("parola%1").arg(i, 2, 10, QLatin1Char('0'));
    const int id = InsertFattura(m_module->Database, m_numero++,
                                 {{QStringLiteral("LUNGA"), words.join(QLatin1Char(' ')), 100, 1, 0},
                                  {QStringLiteral("DOPO"), QStringLiteral("Riga seguente"), 1, 1, 0}});
    const QString boxes = Q3PdfWordBoxes(PdfOf(id, QStringLiteral("descrizionelunga")));
    const QRegularExpression word(QStringLiteral(
        "<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" yMax=\"([\\d.]+)\">([^<]*)</word>"));
    // The description cell: from 25 to 106 mm from the paper's left edge.
    const double cellLeft = 39 * 72 / 25.4;
    const double cellRight = 107 * 72 / 25.4;
    QSet<int> lines;
    double lastBottom = 0;
    double nextTop = 0;
    for (auto it = word.globalMatch(boxes); it.hasNext();) {
        const auto match = it.next();
        const QString text = match.captured(5);
        if (text.startsWith(QLatin1String("parola"))) {
            QVERIFY2(match.captured(1).toDouble() >= cellLeft - 1 && match.captured(3).toDouble() <= cellRight,
                     qPrintable(text));
            lines << qRound(match.captured(2).toDouble());
            lastBottom = qMax(lastBottom, match.captured(4).toDouble());
        }
        if (text == QLatin1String("DOPO"))
            nextTop = match.captured(2).toDouble();
    }
    QVERIFY2(lines.size() >= 10, qPrintable(QString::number(lines.size())));
    // The band grew: the next line starts below the whole description.
    QVERIFY(nextTop > lastBottom);
}

void TestStampe::creditNote_printsThroughOutputOptions()
{
    const int id = InsertFattura(m_module->Database, 31,
                                 {{QStringLiteral("ART-001"), QStringLiteral("Reso valvola difettosa"), 12.5, 2, 0}},
                                 QString(), QStringLiteral("NOTE_ACCREDITO"));
    const QString text = PdfThroughOptions([&] { StampaNotaAccredito(id); }, QStringLiteral("nota.pdf"));
    for (const QString &piece :
         {QStringLiteral("Nota di accredito n. 31 del 05/03/2026"), QStringLiteral("Reso valvola difettosa"),
          QStringLiteral("25,00 €"), QStringLiteral("5,00 €"), QStringLiteral("30,00 €"),
          QStringLiteral("Bianchi & Figli S.n.c."), QStringLiteral("Pagina 1 di 1")})
        QVERIFY2(text.contains(piece), qPrintable(piece + QStringLiteral("\n") + text));
    QVERIFY(!text.contains(QStringLiteral("Sconto")));
    QCOMPARE(m_module->Main->StampeDataset(QStringLiteral("adsNoteAccreditoIva"))->RecordCount(), 1);
}

// "Non imponibile" lines carry no VAT rate, so the summary by rate leaves
// them out: they print as a row of their own and as their own total, and the
// document's total is the sum of the totals printed above it.
void TestStampe::nonTaxableLines_ownSummaryRowAndTotal()
{
    QList<TRiga> righe = RigheNormali();
    TRiga testo;
    testo.Tipo = QStringLiteral("Testo");
    testo.Descrizione = QStringLiteral("Rif. ordine n. 12 del 02/03/2026");
    righe.insert(2, testo);
    righe << TRiga{QString(), QStringLiteral("Cassa previdenza"), 4.5, 2, 0, QString(), 0,
                   QString(), QStringLiteral("Non imponibile")};
    const int id = InsertFattura(m_module->Database, m_numero++, righe);
    const QStringList lines = Lines(Q3PdfText(PdfOf(id, QStringLiteral("nonimponibile"))));
    QCOMPARE(RigheRiepilogo(lines), (QStringList{QStringLiteral("20 Aliquota standard 20% 183,80 36,76"),
                                                 QStringLiteral("Non imponibile 24,00")}));
    const qsizetype totali = lines.indexOf(QStringLiteral("Totale imponibile 183,80 €"));
    QVERIFY2(totali > 0, qPrintable(lines.join(QLatin1Char('\n'))));
    QCOMPARE(lines.mid(totali, 4),
             (QStringList{QStringLiteral("Totale imponibile 183,80 €"), QStringLiteral("Totale non imponibile 24,00 €"),
                          QStringLiteral("Totale IVA 36,76 €"), QStringLiteral("Totale documento 244,56 €")}));

    // Without such lines, neither the row nor the total.
    const int normale = InsertFattura(m_module->Database, m_numero++, RigheNormali().mid(0, 3));
    const QStringList senza = Lines(Q3PdfText(PdfOf(normale, QStringLiteral("senzanonimponibile"))));
    QCOMPARE(RigheRiepilogo(senza), QStringList{QStringLiteral("20 Aliquota standard 20% 183,80 36,76")});
    const qsizetype imponibile = senza.indexOf(QStringLiteral("Totale imponibile 183,80 €"));
    QCOMPARE(senza.mid(imponibile, 3),
             (QStringList{QStringLiteral("Totale imponibile 183,80 €"), QStringLiteral("Totale IVA 36,76 €"),
                          QStringLiteral("Totale documento 220,56 €")}));
}

// Three rates whose exact taxes (1,004 + 3,004 + 2,004) rounded one by one
// would print 1,00 + 3,00 + 2,00 against a total of 6,01 (the exact sum
// rounded once): the missing cent goes to a rate that lost most in rounding,
// the largest between equals, and the rows add up to the total.
void TestStampe::vatRates_roundedToAddUpToTheTotal()
{
    const QList<TRiga> righe{Aliquota(QStringLiteral("04"), 4, QStringLiteral("Aliquota minima"), 25.10),
                             Aliquota(QStringLiteral("05"), 5, QStringLiteral("Aliquota agevolata"), 60.08),
                             Aliquota(QStringLiteral("10"), 10, QStringLiteral("Aliquota ridotta"), 20.04)};
    const int id = InsertFattura(m_module->Database, m_numero++, righe);
    const QStringList lines = Lines(Q3PdfText(PdfOf(id, QStringLiteral("arrotondamento"))));
    const QStringList riepilogo = RigheRiepilogo(lines);
    QCOMPARE(riepilogo, (QStringList{QStringLiteral("04 Aliquota minima 4% 25,10 1,00"),
                                     QStringLiteral("05 Aliquota agevolata 5% 60,08 3,01"),
                                     QStringLiteral("10 Aliquota ridotta 10% 20,04 2,00")}));
    QVERIFY2(lines.contains(QStringLiteral("Totale IVA 6,01 €")), qPrintable(lines.join(QLatin1Char('\n'))));
    QVERIFY(lines.contains(QStringLiteral("Totale imponibile 105,22 €")));
    QVERIFY(lines.contains(QStringLiteral("Totale documento 111,23 €")));
    // The summary by rate keeps the exact taxes.
    TQ3Dataset *iva = m_module->Main->StampeDataset(QStringLiteral("adsFattVendIva"));
    iva->First();
    QCOMPARE(iva->FieldValue(QStringLiteral("IMPOSTA")).toDouble(), 1.004);

    // The credit note's summary the same way.
    const int nota = InsertFattura(m_module->Database, 4714, righe, QString(), QStringLiteral("NOTE_ACCREDITO"));
    const QStringList notaLines =
        Lines(PdfThroughOptions([&] { StampaNotaAccredito(nota); }, QStringLiteral("notaarr.pdf")));
    QCOMPARE(RigheRiepilogo(notaLines), riepilogo);
    QVERIFY(notaLines.contains(QStringLiteral("Totale IVA 6,01 €")));
}

void TestStampe::vatRates_roundingSpreadsTheCents()
{
    // Already adding up: each rate rounded on its own.
    QCOMPARE(KRVImposteArrotondate({36.76, 2.2}, 38.96), (QList<double>{36.76, 2.2}));
    // Short of a cent: to the rate that lost most in rounding down.
    QCOMPARE(KRVImposteArrotondate({1.0040, 2.0030, 0.5010}, 3.51), (QList<double>{1.01, 2.0, 0.5}));
    // A cent over: away from the rates that gained, the larger first between equals.
    QCOMPARE(KRVImposteArrotondate({2.255, 1.005}, 3.26), (QList<double>{2.25, 1.01}));
    // Between equals of the same size, the first; negative taxes round the same way.
    QCOMPARE(KRVImposteArrotondate({0.005, 0.005, 0.004}, 0.01), (QList<double>{0.0, 0.01, 0.0}));
    QCOMPARE(KRVImposteArrotondate({-2.255, -1.005}, -3.26), (QList<double>{-2.25, -1.01}));
    // A difference that rounding cannot make is left alone.
    QCOMPARE(KRVImposteArrotondate({10.0, 5.0}, 20.0), (QList<double>{10.0, 5.0}));
    QCOMPARE(KRVImposteArrotondate({}, 0), QList<double>{});
}

// An exempt invoice shows no tax: no VAT column, no rate, no tax row; the
// exempt total of all its lines with the exemption note, and its total.
void TestStampe::exemptInvoice_noTaxButExemptTotalWithNote()
{
    m_module->Database.Exec(QStringLiteral("INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES ('FATT_IVA_ESENTE_NOTE', "
                                           "'Operazione esente ai sensi dell''art. 10 DPR 633/72')"));
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali(), QStringLiteral("True"));
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM FATT_VEND "
                                "WHERE IDFATT_VEND = %1")
                     .arg(id)),
             QStringList{QStringLiteral("0|0|198.8")});
    const QString text = Q3PdfText(PdfOf(id, QStringLiteral("esentetotali")));
    const QStringList lines = Lines(text);
    const qsizetype riepilogo = lines.indexOf(QStringLiteral("Riepilogo IVA"));
    QVERIFY2(riepilogo > 0, qPrintable(text));
    QCOMPARE(lines.mid(riepilogo, 5),
             (QStringList{QStringLiteral("Riepilogo IVA"), QStringLiteral("Totale esente 198,80"),
                          QStringLiteral("Operazione esente ai sensi dell'art. 10 DPR 633/72"),
                          QStringLiteral("Totale esente 198,80 €"), QStringLiteral("Totale documento 198,80 €")}));
    for (const QString &tassa :
         {QStringLiteral("Imposta"), QStringLiteral("Totale IVA"), QStringLiteral("Aliquota standard"),
          QStringLiteral("36,76"), QStringLiteral("20%"), QStringLiteral("Imponibile")})
        QVERIFY2(!text.contains(tassa), qPrintable(tassa));
    // The lines keep their own amounts, without a VAT code.
    QVERIFY(lines.contains(QStringLiteral("ART-001 Valvola a sfera 1/2\" 4,00 PEZZI 12,50 50,00")));
}

// The letterhead labels the REA number and the share capital, and leaves out
// what the firm has not filled in.
void TestStampe::letterhead_reaAndCapitalWithTheirLabels()
{
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali());
    const QStringList lines = Lines(Q3PdfText(PdfOf(id, QStringLiteral("rea"))));
    QVERIFY(lines.contains(QStringLiteral("REA: BO-123456 Cap. soc. Euro 10.000,00 i.v.")));
    m_module->Database.Exec(QStringLiteral("UPDATE AZIENDA SET REA=''"));
    const QString senzaRea = Q3PdfText(PdfOf(id, QStringLiteral("senzarea")));
    QVERIFY(Lines(senzaRea).contains(QStringLiteral("Cap. soc. Euro 10.000,00 i.v.")));
    QVERIFY(!senzaRea.contains(QStringLiteral("REA")));
    m_module->Database.Exec(QStringLiteral("UPDATE AZIENDA SET REA='BO-123456', CAPITALE_SOCIALE=''"));
    const QString senzaCapitale = Q3PdfText(PdfOf(id, QStringLiteral("senzacapitale")));
    QVERIFY(Lines(senzaCapitale).contains(QStringLiteral("REA: BO-123456")));
    QVERIFY(!senzaCapitale.contains(QStringLiteral("Cap. soc.")));
    SetAzienda(m_module->Database);
}

void TestStampe::listinoIvato_allArticlesWithVat()
{
    m_module->Database.Exec(QStringLiteral(
        "INSERT INTO ANA_MAGA (IDANA_MAGA, CODICE, DESCRIZIONE, SOTTOSCORTA, RIORDINO, IDCATEGORIA_ANA_MAGA, PREZZO, COSTO, "
        "IDALIQUOTA_IVA, IDUM) VALUES (0, 'zeta-9', 'Guarnizione piana', 0, 0, 1, 10, 5, 1, 1)"));
    m_module->Database.Exec(QStringLiteral(
        "INSERT INTO ANA_MAGA (IDANA_MAGA, CODICE, DESCRIZIONE, SOTTOSCORTA, RIORDINO, IDCATEGORIA_ANA_MAGA, PREZZO, COSTO, "
        "IDALIQUOTA_IVA, IDUM) VALUES (0, 'ALFA-1', 'Rubinetto da esterno', 0, 0, 1, 1000, 500, 2, 1)"));
    auto list = KRVTest::Run<TKRVRicercaArticoli>(*m_module, QStringLiteral("actRicercaArticoli"));
    KRVTest::Type(KRVTest::Field(list, QStringLiteral("txtCodice")), QStringLiteral("ZETA"));
    const QString text = PdfThroughOptions([&] { KRVTest::Trigger(list, QStringLiteral("actStampaListinoIVATO")); },
                                           QStringLiteral("listino.pdf"));
    QVERIFY2(text.contains(QStringLiteral("Listino articoli")), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("Tutti i prezzi si intendono IVA inclusa")));
    QVERIFY(text.contains(QStringLiteral("12,00 €")));
    QVERIFY(text.contains(QStringLiteral("1.000,00 €")));
    // Every article, ordered by code whatever its case.
    QVERIFY(text.indexOf(QStringLiteral("ALFA-1")) >= 0);
    QVERIFY(text.indexOf(QStringLiteral("ALFA-1")) < text.indexOf(QStringLiteral("zeta-9")));
    QCOMPARE(m_module->Main->rProject()->GetParam(QStringLiteral("ReportTitle")), QStringLiteral("Listino articoli"));
    QVERIFY(m_boxes->Messages().isEmpty());
    KRVTest::CloseFrame(list);
}

void TestStampe::saveDialog_remembersLastNameAndWrites()
{
    const int id = InsertFattura(m_module->Database, m_numero++, RigheNormali());
    TKRVSalvaPDF *dialog = m_module->Main->SaveDialogPDF();
    QCOMPARE(dialog, m_module->Main->SaveDialogPDF());
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Salva come PDF"));
    QCOMPARE(dialog->nameFilters(), QStringList({QStringLiteral("File PDF (*.pdf)")}));
    QCOMPARE(dialog->defaultSuffix(), QStringLiteral("pdf"));
    QVERIFY(!dialog->testOption(QFileDialog::DontConfirmOverwrite));
    QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);

    // The name the dialog starts with; the dialog is then cancelled.
    const auto proposedName = [id, dialog] {
        QString proposed = QStringLiteral("(nessun dialogo)");
        WithModals([&] { SalvaFatturaVenditaPDF(*dialog, id); }, {[&](QWidget *window) {
                       proposed = window->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
                       qobject_cast<QDialog *>(window)->reject();
                   }});
        return proposed;
    };
    // Cancelled: nothing written, nothing remembered.
    QCOMPARE(proposedName(), QString());
    QCOMPARE(dialog->LastFileName(), QString());

    const QString file = m_dir.filePath(QStringLiteral("scelta"));
    WithModals([&] { SalvaFatturaVenditaPDF(*dialog, id); }, {[&](QWidget *window) {
                   auto edit = window->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
                   edit->setText(file);
                   QTest::keyClick(edit, Qt::Key_Return);
               }});
    QCOMPARE(dialog->LastFileName(), file + QStringLiteral(".pdf"));
    QVERIFY(Q3PdfText(file + QStringLiteral(".pdf")).contains(QStringLiteral("Totale documento")));

    QCOMPARE(proposedName(), QStringLiteral("scelta.pdf"));
}

QTEST_MAIN(TestStampe)
#include "tst_stampe.moc"
