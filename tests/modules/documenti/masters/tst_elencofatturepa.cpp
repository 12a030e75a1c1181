// "Fatture elettroniche..." of the sales documents' search lists, driven as a
// user would: the documents chosen (the selected ones or all those found),
// the folder or the ZIP file typed in the dialog, the files written and
// checked by the program's validator and by xmllint, the summary window, and
// the exported documents marked in the list.
#include "../documents/KRVEmissioneTestKit.h"
#include "../documents/KRVFatturaPATestKit.h"
#include "../documents/KRVFattureTestKit.h"
#include "Q3AdminTestKit.h"
#include "uKRVEsportaFatturePA.h"
#include "uKRVRicercaDocumentiVendita.h"
#include "uKRVRiepilogoFatturePA.h"
#include "uKRVScegliCartella.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

using namespace KRVTest;

namespace {

const QString ActEsporta = QStringLiteral("actEsportaFattureElettroniche");
const QString FattVend = QStringLiteral("FATT_VEND");

QString AnnoCorrente()
{
    return QString::number(QDate::currentDate().year());
}

QByteArray Contenuto(const QString &percorso)
{
    QFile file(percorso);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Once the export dialog is up: the documents and the kind of destination
// chosen with their radio buttons, the destination typed, then "Esporta".
// Answers, through the flag, whether the dialog came up at all.
void AnswerExportDialog(QObject *owner, const char *documenti, const char *scrivere, const QString &destinazione,
                        bool *shown)
{
    auto timer = new QTimer(owner);
    timer->setInterval(20);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto dialog = qobject_cast<TKRVEsportaFatturePA *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        timer->deleteLater();
        *shown = true;
        Click(Field<QRadioButton>(dialog, QString::fromLatin1(documenti)));
        Click(Field<QRadioButton>(dialog, QString::fromLatin1(scrivere)));
        auto campo = Field<QLineEdit>(dialog, QStringLiteral("txtDestinazione"));
        campo->clear();
        QTest::keyClicks(campo, destinazione);
        Click(Field<QPushButton>(dialog, QStringLiteral("btnEsporta")));
        // Refused with a warning, the dialog stays: the user cancels it.
        if (dialog->isVisible())
            Click(Field<QPushButton>(dialog, QStringLiteral("btnAnnulla")));
    });
    timer->start();
}

} // namespace

class TestElencoFatturePA : public QObject, public TKRVElencoDocumentiTest<TKRVRicercaDocumentiVendita>
{
    Q_OBJECT

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init();
    void cleanup();
    void selectedInvoicesIntoAFolder();
    void allFoundIntoOneZipFile();
    void emptyDestinationIsAskedFor();
    void creditNotesListHasTheCommand();
    void browseChoosesTheZipFileInTheModulesDialog();

private:
    // Invoices 1, 2 and 3 of this year, the second of a customer whose VAT
    // number has a wrong check digit; the list opened and searched.
    void ApriFatture();
    TKRVRiepilogoFatturePA *Riepilogo() const { return m_lista->findChild<TKRVRiepilogoFatturePA *>(); }
    QStringList Segnate() const;

    std::unique_ptr<QTemporaryDir> m_cartella;
};

void TestElencoFatturePA::init()
{
    Prepara();
    m_cartella = std::make_unique<QTemporaryDir>();
    Q3ScriviAzienda(Db().Db(), AziendaFatturaPA());
}

void TestElencoFatturePA::cleanup()
{
    m_cartella.reset();
    Chiudi();
}

void TestElencoFatturePA::ApriFatture()
{
    InsertClienteFatturaPA(Db(), {});
    TClienteFatturaPA sbagliato;
    sbagliato.Codice = QStringLiteral("C002");
    sbagliato.PartitaIva = QStringLiteral("07654321013");
    InsertClienteFatturaPA(Db(), sbagliato);
    for (int numero = 1; numero <= 3; ++numero) {
        const int id = InsertDocumentoFatturaPA(Db(), FattVend, numero,
                                                numero == 2 ? QStringLiteral("C002") : QStringLiteral("C001"));
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Articolo"), QStringLiteral("Viti"), double(numero), 10, 0, "20"});
    }
    m_lista = Run<TKRVRicercaDocumentiVendita>(*m_module, QStringLiteral("actRicercaFattureVendita"));
    QVERIFY(m_lista);
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(m_lista->GridRisultati()->rowCount(), 3);
}

// The list's "Fattura elettronica" column, by number.
QStringList TestElencoFatturePA::Segnate() const
{
    TKRVGrigliaRisultati *griglia = m_lista->GridRisultati();
    QStringList righe;
    for (int r = 0; r < griglia->rowCount(); ++r)
        righe << griglia->Testo(r, 1) + QLatin1Char('|') + griglia->Testo(r, 7);
    righe.sort();
    return righe;
}

void TestElencoFatturePA::selectedInvoicesIntoAFolder()
{
    ApriFatture();
    QCOMPARE(m_lista->GridRisultati()->Titolo(7), QStringLiteral("Fattura elettronica"));
    QCOMPARE(Segnate(), (QStringList{"1|", "2|", "3|"}));
    // Invoices 1 and 3 selected, as with the mouse and the Control key.
    TKRVGrigliaRisultati *griglia = m_lista->GridRisultati();
    griglia->clearSelection();
    for (const QString &numero : {QStringLiteral("1"), QStringLiteral("3")}) {
        const int riga = RowOf(griglia, 1, numero);
        griglia->selectionModel()->select(griglia->model()->index(riga, 1),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    bool shown = false;
    AnswerExportDialog(m_lista, "rbSelezionati", "rbCartella", QDir::toNativeSeparators(m_cartella->path()), &shown);
    Trigger(m_lista, ActEsporta);
    QVERIFY(shown);
    QVERIFY(m_responder->Messages().isEmpty());

    const QStringList files = QDir(m_cartella->path()).entryList(QDir::Files, QDir::Name);
    QCOMPARE(files.size(), 2);
    for (const QString &file : files) {
        const QByteArray xml = Contenuto(QDir(m_cartella->path()).filePath(file));
        VALIDA(xml);
    }
    const QStringList segnate = Segnate();
    QCOMPARE(segnate.at(1), QStringLiteral("2|"));
    QVERIFY(files.contains(segnate.at(0).section(QLatin1Char('|'), 1)));
    QVERIFY(files.contains(segnate.at(2).section(QLatin1Char('|'), 1)));

    TKRVRiepilogoFatturePA *riepilogo = Riepilogo();
    QVERIFY(riepilogo);
    QVERIFY(riepilogo->isVisible());
    QCOMPARE(riepilogo->windowTitle(), QStringLiteral("Fatture elettroniche"));
    QCOMPARE(Field<QLabel>(riepilogo, QStringLiteral("lblDestinazione"))->text(),
             QStringLiteral("Cartella: ") + QDir::toNativeSeparators(m_cartella->path()));
    // In the list's order, the newest first.
    const QString testo = Field<QPlainTextEdit>(riepilogo, QStringLiteral("txtRiepilogo"))->toPlainText();
    QVERIFY2(testo.startsWith(
                 QStringLiteral("Fatture elettroniche scritte: 2\nDocumenti rifiutati: 0\n\nFile scritti:\n"
                                "Fattura 3/%1: ")
                     .arg(AnnoCorrente())),
             qPrintable(testo));
}

void TestElencoFatturePA::allFoundIntoOneZipFile()
{
    ApriFatture();
    bool shown = false;
    const QString zip = m_cartella->filePath(QStringLiteral("fatture"));
    AnswerExportDialog(m_lista, "rbTrovati", "rbZip", QDir::toNativeSeparators(zip), &shown);
    Trigger(m_lista, ActEsporta);
    QVERIFY(shown);
    QCOMPARE(QDir(m_cartella->path()).entryList(QDir::Files), QStringList{QStringLiteral("fatture.zip")});
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral("-m"), QStringLiteral("zipfile"), QStringLiteral("-l"), zip + QStringLiteral(".zip")});
    QVERIFY(python.waitForFinished(60000));
    QCOMPARE(QString::fromUtf8(python.readAllStandardOutput()).count(QStringLiteral(".xml")), 2);

    const QString testo = Field<QPlainTextEdit>(Riepilogo(), QStringLiteral("txtRiepilogo"))->toPlainText();
    QVERIFY2(testo.startsWith(
                 QStringLiteral("Fatture elettroniche scritte: 2\nDocumenti rifiutati: 1\n\nDa correggere:\n"
                                "- Fattura 2/%1: ")
                     .arg(AnnoCorrente())),
             qPrintable(testo));
    QVERIFY(testo.contains(QStringLiteral("07654321013")));
    QCOMPARE(Field<QLabel>(Riepilogo(), QStringLiteral("lblDestinazione"))->text(),
             QStringLiteral("File ZIP: ") + QDir::toNativeSeparators(zip + QStringLiteral(".zip")));
    QCOMPARE(Segnate().at(1), QStringLiteral("2|"));
    QVERIFY(Segnate().at(0).endsWith(QStringLiteral(".xml")));
}

void TestElencoFatturePA::emptyDestinationIsAskedFor()
{
    ApriFatture();
    bool shown = false;
    AnswerExportDialog(m_lista, "rbTrovati", "rbCartella", QString(), &shown);
    Trigger(m_lista, ActEsporta);
    QVERIFY(shown);
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione", "Indicare la cartella in cui scrivere i file.",
                    Warning, Ok);
    QVERIFY(!Riepilogo());
    QCOMPARE(QDir(m_cartella->path()).entryList(QDir::Files), QStringList());
    QCOMPARE(Segnate(), (QStringList{"1|", "2|", "3|"}));
}

void TestElencoFatturePA::creditNotesListHasTheCommand()
{
    m_lista = Run<TKRVRicercaDocumentiVendita>(*m_module, QStringLiteral("actRicercaNoteAccredito"));
    QVERIFY(m_lista);
    QCOMPARE(Action(m_lista, ActEsporta)->text(), QStringLiteral("Fatture elettroniche..."));
    // Nothing found: nothing to ask.
    Trigger(m_lista, ActEsporta);
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione", "Nessun documento da esportare.", Warning, Ok);
}

// "Sfoglia..." opens the module's ZIP file dialog, which adds the extension
// and remembers the file for the next time.
void TestElencoFatturePA::browseChoosesTheZipFileInTheModulesDialog()
{
    ApriFatture();
    const QString zip = m_cartella->filePath(QStringLiteral("anno"));
    QString mostrato;
    auto timer = new QTimer(m_lista);
    timer->setInterval(20);
    connect(timer, &QTimer::timeout, timer, [&] {
        auto dialog = qobject_cast<TKRVEsportaFatturePA *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        timer->deleteLater();
        Click(Field<QRadioButton>(dialog, QStringLiteral("rbZip")));
        Q3AdminTest::ChooseFileWhenShown(dialog, zip);
        Click(Field<QPushButton>(dialog, QStringLiteral("btnSfoglia")));
        mostrato = Field<QLineEdit>(dialog, QStringLiteral("txtDestinazione"))->text();
        Click(Field<QPushButton>(dialog, QStringLiteral("btnAnnulla")));
    });
    timer->start();
    Trigger(m_lista, ActEsporta);
    QCOMPARE(mostrato, QDir::toNativeSeparators(zip + QStringLiteral(".zip")));
    QCOMPARE(m_module->Main->ZipDialogFatturePA()->LastFileName(), zip + QStringLiteral(".zip"));
    QCOMPARE(QDir(m_cartella->path()).entryList(QDir::Files), QStringList());
}

QTEST_MAIN(TestElencoFatturePA)
#include "tst_elencofatturepa.moc"
