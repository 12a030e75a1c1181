// The firm's data window driven as a user does, on a real database.
#include "Q3AdminTestKit.h"
#include "Q3Azienda.h"
#include "Q3DatiAzienda.h"
#include "Q3Messages.h"
#include "Q3TestDatabase.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

using namespace Q3AdminTest;

class TestQ3DatiAzienda : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void window_captionFieldsLabelsAndLimits();
    void typedAndSaved_readBack();
    void wrongCodes_eachWarnedNothingStored_data();
    void wrongCodes_eachWarnedNothingStored();
    void allWrongCodes_oneBox();
    void closingWithChanges_asks();
    void logo_chosenPreviewedStoredAndRemoved();
    void notAPicture_warnedLogoKept();
    void hostileTexts_storedAsTyped();
    void entry_showsTheWindowModal();

private:
    std::unique_ptr<TQ3TestDatabase> m_db;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    std::unique_ptr<TQ3DatiAzienda> m_window;
};

void TestQ3DatiAzienda::init()
{
    m_db = std::make_unique<TQ3TestDatabase>();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    m_window = std::make_unique<TQ3DatiAzienda>(m_db->Db());
    m_window->show();
}

void TestQ3DatiAzienda::cleanup()
{
    m_window.reset();
    m_boxes.reset();
    m_db.reset();
}

void TestQ3DatiAzienda::window_captionFieldsLabelsAndLimits()
{
    QCOMPARE(m_window->objectName(), QStringLiteral("Q3DatiAzienda"));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Dati azienda"));
    auto tabs = m_window->findChild<QTabWidget *>();
    QStringList pages;
    for (int i = 0; i < tabs->count(); ++i)
        pages << tabs->tabText(i);
    QCOMPARE(pages, (QStringList{"Anagrafica", "Dati fiscali", "Banca", "Logo"}));
    // Every text column has its input, as long as the column, with its label.
    for (const TQ3ColonnaAzienda &colonna : Q3ColonneAzienda()) {
        const QString column = QString::fromLatin1(colonna.Colonna);
        if (QStringList{"REGIME_FISCALE", "SOCIO_UNICO", "STATO_LIQUIDAZIONE"}.contains(column))
            continue;
        QLineEdit *edit = nullptr;
        for (QLineEdit *candidate : m_window->findChildren<QLineEdit *>()) {
            if (candidate->objectName().compare(QStringLiteral("txt") + QString(column).remove(QLatin1Char('_')),
                                                Qt::CaseInsensitive)
                == 0)
                edit = candidate;
        }
        QVERIFY2(edit, qPrintable(column));
        QCOMPARE(edit->maxLength(), colonna.Lunghezza);
        auto label = m_window->findChild<QLabel *>(QStringLiteral("lbl") + edit->objectName());
        QVERIFY2(label && label->buddy() == edit, qPrintable(column));
        QVERIFY(!edit->accessibleName().isEmpty());
    }
    auto regimi = m_window->findChild<QComboBox *>(QStringLiteral("cmbRegimeFiscale"));
    QCOMPARE(regimi->count(), 18);
    QCOMPARE(regimi->itemData(0).toString(), QStringLiteral("RF01"));
    QCOMPARE(regimi->itemText(18 - 1), QStringLiteral("RF19 - Regime forfettario (art. 1, c. 54-89, L. 190/2014)"));
    QCOMPARE(regimi->findData(QStringLiteral("RF03")), -1);
    QCOMPARE(regimi->currentData().toString(), QStringLiteral("RF01"));
    QVERIFY(!m_window->findChild<QPushButton *>(QStringLiteral("btnRimuoviLogo"))->isEnabled());
}

void TestQ3DatiAzienda::typedAndSaved_readBack()
{
    Type(m_window.get(), "txtRagionesociale", QStringLiteral("Rossi Impianti S.r.l."));
    Type(m_window.get(), "txtIndirizzo", QStringLiteral("Via Garibaldi 12"));
    Type(m_window.get(), "txtCap", QStringLiteral("40121"));
    Type(m_window.get(), "txtCitta", QStringLiteral("Bologna"));
    Type(m_window.get(), "txtProvincia", QStringLiteral("BO"));
    Type(m_window.get(), "txtPartitaiva", QStringLiteral("12345678903"));
    Type(m_window.get(), "txtCodicefiscale", QStringLiteral("rssmra80a01h50mm"));
    Type(m_window.get(), "txtIban", QStringLiteral("IT60 X054 2811 1010 0000 0123 456"));
    Type(m_window.get(), "txtReaUfficio", QStringLiteral("BO"));
    Type(m_window.get(), "txtReaNumero", QStringLiteral("123456"));
    Choose(m_window.get(), "cmbRegimeFiscale", QStringLiteral("RF19"));
    Choose(m_window.get(), "cmbSocioUnico", QStringLiteral("SU"));
    Choose(m_window.get(), "cmbStatoLiquidazione", QStringLiteral("LS"));
    Click(m_window.get(), "btnSalva");
    QVERIFY2(m_boxes->Messages().isEmpty(), qPrintable(m_boxes->Messages().value(0).Text));
    QCOMPARE(
        m_db->Rows(QStringLiteral(
            "SELECT RAGIONESOCIALE, INDIRIZZO, CAP, CITTA, PROVINCIA, PARTITAIVA, CODICEFISCALE, IBAN, "
            "REA_UFFICIO, REA_NUMERO, REGIME_FISCALE, SOCIO_UNICO, STATO_LIQUIDAZIONE, CODICE_NAZIONE FROM AZIENDA")),
        QStringList{"Rossi Impianti S.r.l.|Via Garibaldi 12|40121|Bologna|BO|12345678903|rssmra80a01h50mm|"
                    "IT60 X054 2811 1010 0000 0123 456|BO|123456|RF19|SU|LS|IT"});
    QVERIFY(!m_window->Modificata());
    // A new window shows what was stored.
    TQ3DatiAzienda again(m_db->Db());
    QCOMPARE(Edit(&again, "txtRagionesociale")->text(), QStringLiteral("Rossi Impianti S.r.l."));
    QCOMPARE(again.findChild<QComboBox *>(QStringLiteral("cmbRegimeFiscale"))->currentData().toString(),
             QStringLiteral("RF19"));
    QVERIFY(!again.Modificata());
}

void TestQ3DatiAzienda::wrongCodes_eachWarnedNothingStored_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("warning");
    QTest::newRow("partita IVA") << "txtPartitaiva"
                                 << "01234567890"
                                 << QString::fromUtf8("La partita IVA non è valida: controllare le 11 cifre.");
    QTest::newRow("codice fiscale") << "txtCodicefiscale"
                                    << "RSSMRA80A01H501A" << QString::fromUtf8("Il codice fiscale non è valido.");
    QTest::newRow("IBAN") << "txtIban"
                          << "IT60X0542811101000000123457" << QStringLiteral("L'IBAN non è valido.");
    QTest::newRow("CAP") << "txtCap"
                         << "4012" << QStringLiteral("Il CAP deve essere di 5 cifre.");
    QTest::newRow("provincia") << "txtProvincia"
                               << "B0" << QStringLiteral("La provincia deve essere di 2 lettere.");
}

void TestQ3DatiAzienda::wrongCodes_eachWarnedNothingStored()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QString, warning);
    const QString everything = QStringLiteral("SELECT * FROM AZIENDA");
    const QStringList before = m_db->Rows(everything);
    Type(m_window.get(), "txtRagionesociale", QStringLiteral("Rossi S.r.l."));
    Type(m_window.get(), qPrintable(field), text);
    Click(m_window.get(), "btnSalva");
    QCOMPARE(m_boxes->Messages().size(), 1);
    const TQ3Message box = m_boxes->Messages().first();
    QCOMPARE(box.Title, QStringLiteral("Attenzione"));
    QCOMPARE(box.Text, warning);
    QCOMPARE(box.Icon, TQ3MsgIcon::Warning);
    QCOMPARE(m_db->Rows(everything), before);
    QVERIFY(m_window->Modificata());
    QCOMPARE(Edit(m_window.get(), qPrintable(field))->text(), text);
}

void TestQ3DatiAzienda::allWrongCodes_oneBox()
{
    Type(m_window.get(), "txtPartitaiva", QStringLiteral("1234567890"));
    Type(m_window.get(), "txtCodicefiscale", QStringLiteral("RSSMRA80A01H501"));
    Type(m_window.get(), "txtIban", QStringLiteral("IT00"));
    Click(m_window.get(), "btnSalva");
    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(m_boxes->Messages().first().Text,
             QString::fromUtf8("La partita IVA non è valida: controllare le 11 cifre.\n\rIl codice fiscale non è "
                               "valido.\n\rL'IBAN non è valido."));
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT PARTITAIVA FROM AZIENDA")).toString(), QString());
}

// Closing with changes not saved asks; Cancel stays, Yes saves, No drops.
void TestQ3DatiAzienda::closingWithChanges_asks()
{
    // Nothing changed: the window closes without a question.
    Click(m_window.get(), "btnChiudi");
    QVERIFY(m_boxes->Messages().isEmpty());
    QVERIFY(!m_window->isVisible());

    m_window->show();
    Type(m_window.get(), "txtRagionesociale", QStringLiteral("Bianchi S.p.A."));
    m_boxes->Enqueue(TQ3MsgResult::Cancel);
    Click(m_window.get(), "btnChiudi");
    QCOMPARE(m_boxes->Messages().size(), 1);
    const TQ3Message question = m_boxes->Messages().first();
    QCOMPARE(question.Title, QStringLiteral("Conferma"));
    QCOMPARE(question.Text, QStringLiteral("Salvare le modifiche?"));
    QCOMPARE(question.Icon, TQ3MsgIcon::Question);
    QCOMPARE(question.Buttons, TQ3MsgButtons::YesNoCancel);
    QVERIFY(m_window->isVisible());
    QCOMPARE(Edit(m_window.get(), "txtRagionesociale")->text(), QStringLiteral("Bianchi S.p.A."));

    // Escape asks the same; a wrong code answered Yes warns and stays.
    Type(m_window.get(), "txtPartitaiva", QStringLiteral("01234567890"));
    m_boxes->Clear();
    m_boxes->Enqueue(TQ3MsgResult::Yes);
    QTest::keyClick(m_window.get(), Qt::Key_Escape);
    QCOMPARE(m_boxes->Messages().size(), 2);
    QCOMPARE(m_boxes->Messages().at(1).Title, QStringLiteral("Attenzione"));
    QVERIFY(m_window->isVisible());
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT RAGIONESOCIALE FROM AZIENDA")).toString(), QString());

    Type(m_window.get(), "txtPartitaiva", QStringLiteral("12345678903"));
    m_boxes->Clear();
    m_boxes->Enqueue(TQ3MsgResult::Yes);
    m_window->close();
    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(!m_window->isVisible());
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT RAGIONESOCIALE FROM AZIENDA")).toString(),
             QStringLiteral("Bianchi S.p.A."));

    m_window->show();
    Type(m_window.get(), "txtRagionesociale", QStringLiteral("Verdi S.a.s."));
    m_boxes->Clear();
    m_boxes->Enqueue(TQ3MsgResult::No);
    Click(m_window.get(), "btnChiudi");
    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(!m_window->isVisible());
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT RAGIONESOCIALE FROM AZIENDA")).toString(),
             QStringLiteral("Bianchi S.p.A."));
}

void TestQ3DatiAzienda::logo_chosenPreviewedStoredAndRemoved()
{
    QTemporaryDir dir;
    const QString file = LogoFile(dir.path());
    ChooseFileWhenShown(m_window.get(), file);
    Click(m_window.get(), "btnScegliLogo");
    auto preview = m_window->findChild<QLabel *>(QStringLiteral("lblAnteprimaLogo"));
    QVERIFY(!preview->pixmap().isNull());
    QVERIFY(m_window->Modificata());
    Click(m_window.get(), "btnSalva");
    QVERIFY(m_boxes->Messages().isEmpty());
    QFile png(file);
    QVERIFY(png.open(QIODevice::ReadOnly));
    QCOMPARE(Q3LeggiAzienda(m_db->Db()).Logo, png.readAll());

    Click(m_window.get(), "btnRimuoviLogo");
    QVERIFY(preview->pixmap().isNull());
    QCOMPARE(preview->text(), QStringLiteral("Nessun logo"));
    Click(m_window.get(), "btnSalva");
    QVERIFY(m_db->Scalar(QStringLiteral("SELECT LOGO FROM AZIENDA")).isNull());
}

void TestQ3DatiAzienda::notAPicture_warnedLogoKept()
{
    QTemporaryDir dir;
    const QString file = WriteQ3TestFile(dir.path(), QStringLiteral("logo.png"), QStringLiteral("not a picture"));
    ChooseFileWhenShown(m_window.get(), file);
    Click(m_window.get(), "btnScegliLogo");
    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(m_boxes->Messages().first().Title, QStringLiteral("Attenzione"));
    QCOMPARE(m_boxes->Messages().first().Text,
             QString::fromUtf8("Il file \"%1\" non è un'immagine leggibile.").arg(file));
    QVERIFY(!m_window->Modificata());
}

void TestQ3DatiAzienda::hostileTexts_storedAsTyped()
{
    const QStringList hostile = {QStringLiteral("O'Reilly \"&\" Figli; --"),
                                 QStringLiteral("'); DELETE FROM AZIENDA; --"), QStringLiteral("x' OR '1'='1"),
                                 QString::fromUtf8("Ελληνικά Русский"), QString(1000, QLatin1Char('w'))};
    for (const QString &text : hostile) {
        m_boxes->Clear();
        for (const char *name : {"txtRagionesociale", "txtIndirizzo", "txtCitta", "txtNazione", "txtTelefono", "txtFax",
                                 "txtEmail", "txtWeb", "txtRea", "txtReaNumero", "txtCapitaleSociale", "txtBanca"})
            Type(m_window.get(), name, text);
        Click(m_window.get(), "btnSalva");
        QVERIFY2(m_boxes->Messages().isEmpty(), qPrintable(m_boxes->Messages().value(0).Text));
        const TQ3Azienda stored = Q3LeggiAzienda(m_db->Db());
        QCOMPARE(stored.RagioneSociale, text.left(100));
        QCOMPARE(stored.Citta, text.left(30));
        QCOMPARE(stored.ReaNumero, text.left(20));
        QCOMPARE(stored.Banca, text.left(100));
        QCOMPARE(stored, m_window->Azienda());
        QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM AZIENDA")).toInt(), 1);
    }
}

// The entry the host's menu calls shows the window modal until it is closed.
void TestQ3DatiAzienda::entry_showsTheWindowModal()
{
    QStringList seen;
    QTimer timer;
    timer.setInterval(20);
    connect(&timer, &QTimer::timeout, this, [&] {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        timer.stop();
        seen << modal->objectName() << modal->windowTitle() << Edit(modal, "txtRagionesociale")->text();
        Click(modal, "btnChiudi");
    });
    m_db->Exec(QStringLiteral("UPDATE AZIENDA SET RAGIONESOCIALE = 'Rossi S.r.l.'"));
    timer.start();
    Q3ApriDatiAzienda(m_db->Db(), m_window.get());
    QCOMPARE(seen, (QStringList{"Q3DatiAzienda", "Dati azienda", "Rossi S.r.l."}));
    QVERIFY(m_boxes->Messages().isEmpty());
}

QTEST_MAIN(TestQ3DatiAzienda)
#include "tst_q3datiazienda.moc"
