#include "../data/KRVServiceRows.h"
#include "KRVMastersTestKit.h"
#include "KRVUtils.h"
#include "uKRVInserimentoClienti.h"
#include "uKRVModSelezionaTipoPagamento.h"
#include "uKRVRicercaClienti.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>

using namespace KRVTest;

namespace {

const QString ActEditor = QStringLiteral("actInserimentoClienti");
const QString ActList = QStringLiteral("actRicercaClienti");
const QString ActPaymentDialog = QStringLiteral("actModSelezionaTipoPagamento");

// Every text input of the editor: name, label, limit, typed in capitals, column.
struct TField
{
    const char *Name;
    const char *Label;
    int Limit;
    bool Upper;
    const char *Column;
};

const TField Fields[] = {
    {"txtCodice", "Codice", 20, false, "CODICE"},
    {"txtRagioneSociale", "Ragione sociale", 100, false, "RAGIONESOCIALE"},
    {"txtIndirizzo", "Indirizzo", 100, false, "INDIRIZZO"},
    {"txtCitta", "Città", 30, false, "CITTA"},
    {"txtCap", "CAP", 5, true, "CAP"},
    {"txtProvincia", "Prov.", 2, true, "PROVINCIA"},
    {"txtNazione", "Nazione", 30, false, "NAZIONE"},
    {"txtCodiceFiscale", "Codice fiscale", 16, true, "CODICEFISCALE"},
    {"txtPartitaIVA", "Partita IVA", 13, true, "PARTITAIVA"},
    {"txtTelefono1", "Telefono 1", 20, false, "TELEFONO1"},
    {"txtTelefono2", "Telefono 2", 20, false, "TELEFONO2"},
    {"txtTelefono3", "Telefono 3", 20, false, "TELEFONO3"},
    {"txtFax", "Fax", 20, false, "FAX"},
    {"txtEmail", "e-mail", 100, false, "EMAIL"},
    {"txtWeb", "web", 100, false, "WEB"},
    {"txtCoordBanBanca", "Banca", 100, false, "COORDBAN_BANCA"},
    {"txtCoordBanAgenzia", "Agenzia", 100, false, "COORDBAN_AGENZIA"},
    {"txtCoordBanPaese", "Paese", 2, true, "COORDBAN_PAESE"},
    {"txtCoordBanCINEur", "CIN EUR", 2, true, "COORDBAN_CIN_EUR"},
    {"txtCoordBanCIN", "CIN", 1, true, "COORDBAN_CIN"},
    {"txtCoordBanABI", "ABI (Banca)", 5, true, "COORDBAN_ABI"},
    {"txtCoordBanCAB", "CAB (Sport.)", 5, true, "COORDBAN_CAB"},
    // The column holds 20 characters: so does the field.
    {"txtCoordBanConto", "N° Conto", 20, true, "COORDBAN_CONTO"},
    {"txtCoordBanSwift", "Codice BIC SWIFT", 50, false, "COORDBAN_SWIFT"},
    {"txtNome", "Nome", 60, false, "NOME"},
    {"txtCognome", "Cognome", 60, false, "COGNOME"},
    {"txtCodiceDestinatario", "Codice destinatario", 7, true, "CODICE_DESTINATARIO"},
    {"txtPec", "PEC", 256, false, "PEC"},
};

// A value the field's save check accepts, different for every field.
QString ValidValue(const TField &field, int index)
{
    if (QLatin1String(field.Name) == QLatin1String("txtCodiceDestinatario"))
        return QStringLiteral("ABC1234");
    if (QLatin1String(field.Name) == QLatin1String("txtPec"))
        return QStringLiteral("amministrazione@pec.esempio.it");
    return (QStringLiteral("V") + QString::number(index)).left(field.Limit);
}

const char MsgNoRecipient[] = "Non sono stati indicati né il codice destinatario, né la PEC:\n\rle fatture "
                              "elettroniche useranno il codice destinatario \"0000000\",\n\rproseguire comunque?";

} // namespace

class TestInserimentoClienti : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void opensOnANewCustomerWithAProposedCode();
    void fieldsHaveTheirLabelsLimitsAndCapitals();
    void pagesAndGroups();
    void savesTheProposedCodeWithEmptyTaxCodes();
    void savesEveryFieldAndReadsItBack();
    void checksComeInOrder();
    void wrongTaxCodesAreRefusedNamingTheField();
    void rightTaxCodesAreSaved();
    void foreignCustomersTaxCodesAreKeptAsWritten();
    void codeDifferingOnlyInCaseIsRefused();
    void savedCustomerKeepsItsCodeLocked();
    void paymentTypeChosenInTheDialogIsSaved();
    void cancellingThePaymentDialogChangesNothing();
    void deletingASavedCustomerAsksAndDeletes();
    void deletingACustomerOnDocumentsFollowsTheRule();
    void deleteAnsweredNoKeepsTheCustomer();
    void deletingANewRecordAsksThenBlanks();
    void failedDeleteIsReportedAndTheWindowBlanks();
    void failedSaveIsReported();
    void unsavedChangesAreAskedAbout();
    void listIsNotRefreshed();
    void electronicInvoiceDataAreCheckedNamingTheField();
    void recipientCodeIsTypedInCapitals();
    void publicAdministrationWithItsOfficeCodeIsSaved();
    void namesAreTypedForAPrivatePersonOnly();
    void noRecipientAnsweredNoKeepsEverythingTyped();
    void pecAloneIsSavedWithoutQuestion();
    void foreignCustomerGetsTheForeignRecipientCode();
    void savedCustomerShowsItsElectronicInvoiceData();
    void newCustomerKeepsItsOwnKeyWhenAnotherWorkstationInsertsMeanwhile();
    void deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsCustomer();

private:
    TKRVInserimentoClienti *Open();
    QLineEdit *Edit(const char *name) const;
    // Chooses the kind of subject by its caption, as the user does in its list.
    void ChooseKind(const QString &caption);
    // A valid recipient code, so that saving asks nothing about it.
    void TypeRecipientCode();
    static bool IsNoRecipientQuestion(const TQ3Message &box);
    // Saves and answers the one warning shown, or an empty text when none.
    QString SaveWarning();
    int NextKey() const;
    QStringList Customers() const;
    // Answers the payment-type dialog, once it is up, with the row of that
    // text, or with "Annulla" for an empty text.
    void AnswerPaymentDialog(const QString &choice);

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    TKRVInserimentoClienti *m_editor = nullptr;
    bool m_dialogWasShown = false;
};

void TestInserimentoClienti::initTestCase()
{
    UseItalianLocale();
}

void TestInserimentoClienti::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    m_editor = Open();
    m_dialogWasShown = false;
}

void TestInserimentoClienti::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

TKRVInserimentoClienti *TestInserimentoClienti::Open()
{
    return Run<TKRVInserimentoClienti>(*m_module, ActEditor);
}

QLineEdit *TestInserimentoClienti::Edit(const char *name) const
{
    return Field(m_editor, QString::fromLatin1(name));
}

void TestInserimentoClienti::ChooseKind(const QString &caption)
{
    auto kind = Field<QComboBox>(m_editor, QStringLiteral("cboTipoSoggetto"));
    const int index = kind->findText(caption);
    QVERIFY2(index >= 0, qPrintable(caption));
    kind->setCurrentIndex(index);
}

void TestInserimentoClienti::TypeRecipientCode()
{
    Type(Edit("txtCodiceDestinatario"), QStringLiteral("ABC1234"));
}

bool TestInserimentoClienti::IsNoRecipientQuestion(const TQ3Message &box)
{
    return SameMessage(box, QStringLiteral("Conferma"), QString::fromUtf8(MsgNoRecipient), TQ3MsgIcon::Question,
                       TQ3MsgButtons::YesNo);
}

QString TestInserimentoClienti::SaveWarning()
{
    m_boxes->Clear();
    Trigger(m_editor, QStringLiteral("actSalva"));
    if (m_boxes->Messages().isEmpty())
        return {};
    const TQ3Message box = m_boxes->Messages().first();
    if (m_boxes->Messages().size() != 1 || box.Title != QLatin1String("Attenzione") || box.Icon != TQ3MsgIcon::Warning
        || box.Buttons != TQ3MsgButtons::Ok)
        return QStringLiteral("unexpected boxes: ") + box.Title + QStringLiteral(" / ") + box.Text;
    return box.Text;
}

int TestInserimentoClienti::NextKey() const
{
    return GetLastGeneratorValue(QStringLiteral("GN_IDCLIENTE"), m_module->Database.Db()) + 1;
}

QStringList TestInserimentoClienti::Customers() const
{
    return m_module->Database.Rows(
        QStringLiteral("SELECT IDCLIENTE, CODICE, RAGIONESOCIALE FROM CLIENTI ORDER BY IDCLIENTE"));
}

void TestInserimentoClienti::AnswerPaymentDialog(const QString &choice)
{
    QTimer::singleShot(0, m_editor, [this, choice] {
        auto dialog = m_module->Main->FormAs<TKRVModSelezionaTipoPagamento>(ActPaymentDialog);
        m_dialogWasShown = dialog && dialog->isVisible() && dialog->isModal();
        if (!dialog)
            return;
        if (choice.isEmpty()) {
            Trigger(dialog, QStringLiteral("actAnnulla"));
            return;
        }
        SelectRow(dialog->gridRisultati(), RowOf(dialog->gridRisultati(), 1, choice));
        Trigger(dialog, QStringLiteral("actOK"));
    });
}

void TestInserimentoClienti::opensOnANewCustomerWithAProposedCode()
{
    QVERIFY(m_editor);
    QVERIFY(m_module->Main->Action(ActEditor)->isEnabled());
    QCOMPARE(m_editor->windowTitle(), QStringLiteral("Inserimento / Modifica clienti"));
    QCOMPARE(m_editor->minimumSize(), QSize(750, 550));
    QCOMPARE(m_editor->size(), QSize(750, 550));
    QVERIFY(qobject_cast<QMdiSubWindow *>(m_editor->parentWidget()));

    QCOMPARE(Edit("txtCodice")->text(), GetCustomCodice(NextKey(), QStringLiteral("CLN"), QString(), 10));
    QVERIFY(Edit("txtCodice")->text().startsWith(QLatin1String("CLN")));
    QCOMPARE(Edit("txtCodice")->text().size(), 10);
    QVERIFY(Edit("txtCodice")->isEnabled());
    QVERIFY(Edit("txtRagioneSociale")->text().isEmpty());
    QCOMPARE(Field<QLabel>(m_editor, QStringLiteral("txtTipoPagamento"))->text(), QStringLiteral("..."));
    QCOMPARE(m_editor->IdTipoPagamento(), 0);

    QCOMPARE(m_editor->IdRecord(), -1);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
    QVERIFY(!m_editor->actNuovo()->isEnabled());
    QVERIFY(!m_editor->actSalva()->isEnabled());

    QCOMPARE(Open(), m_editor);
    QCOMPARE(m_module->MainForm->MdiArea()->subWindowList().size(), 1);
}

void TestInserimentoClienti::fieldsHaveTheirLabelsLimitsAndCapitals()
{
    ChooseKind(QStringLiteral("Privato"));
    for (const TField &field : Fields) {
        QLineEdit *edit = Edit(field.Name);
        QCOMPARE(edit->accessibleName(), QString::fromUtf8(field.Label));
        QCOMPARE(edit->maxLength(), field.Limit);
        edit->clear();
        QTest::keyClicks(edit, QStringLiteral("ab"));
        QCOMPARE(edit->text(), QString(field.Upper ? QStringLiteral("AB") : QStringLiteral("ab")).left(field.Limit));
    }
    QCOMPARE(Field<QLabel>(m_editor, QStringLiteral("txtTipoPagamento"))->accessibleName(),
             QStringLiteral("Tipo di pagamento"));
    QCOMPARE(Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote"))->accessibleName(), QStringLiteral("Note"));
    QVERIFY(Field<QToolButton>(m_editor, QStringLiteral("cmdSelezionaTipoPagamento")));
    QVERIFY(m_editor->Modified());
}

void TestInserimentoClienti::pagesAndGroups()
{
    auto pages = m_editor->findChild<QTabWidget *>();
    QVERIFY(pages);
    QCOMPARE(pages->count(), 4);
    QCOMPARE(pages->tabText(0), QStringLiteral(" Generale "));
    QCOMPARE(pages->tabText(1), QStringLiteral(" Coordinate bancarie "));
    QCOMPARE(pages->tabText(2), QStringLiteral(" Fattura elettronica "));
    QCOMPARE(pages->tabText(3), QStringLiteral(" Note "));
    QVERIFY(pages->widget(0)->isAncestorOf(Edit("txtPartitaIVA")));
    QVERIFY(pages->widget(1)->isAncestorOf(Edit("txtCoordBanSwift")));
    for (const char *name : {"txtNome", "txtCognome", "txtCodiceDestinatario", "txtPec"})
        QVERIFY(pages->widget(2)->isAncestorOf(Edit(name)));
    QVERIFY(pages->widget(2)->isAncestorOf(Field<QComboBox>(m_editor, QStringLiteral("cboTipoSoggetto"))));
    QVERIFY(pages->widget(3)->isAncestorOf(Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote"))));

    auto iban = Field<QGroupBox>(m_editor, QStringLiteral("grpIBAN"));
    auto bban = Field<QGroupBox>(m_editor, QStringLiteral("grpBBAN"));
    QCOMPARE(iban->title(), QStringLiteral(" IBAN - COORDINATE BANCARIE INTERNAZIONALI "));
    QCOMPARE(bban->title(), QStringLiteral(" BBAN - COORDINATE BANCARIE NAZIONALI "));
    for (const char *name : {"txtCoordBanPaese", "txtCoordBanCINEur"})
        QVERIFY(iban->isAncestorOf(Edit(name)));
    for (const char *name : {"txtCoordBanCIN", "txtCoordBanABI", "txtCoordBanCAB", "txtCoordBanConto"})
        QVERIFY(bban->isAncestorOf(Edit(name)));
    QVERIFY(Field<QGroupBox>(m_editor, QStringLiteral("grpBIC"))->isAncestorOf(Edit("txtCoordBanSwift")));
    // The two groups stand side by side, neither inside the other.
    QVERIFY(!iban->isAncestorOf(bban));
    QVERIFY(!bban->isAncestorOf(iban));
    QCOMPARE(iban->parentWidget(), bban->parentWidget());
    pages->setCurrentIndex(1);
    QCOMPARE(iban->y(), bban->y());
    QVERIFY(iban->geometry().right() < bban->x());

    // A new record comes up on the first page.
    pages->setCurrentIndex(3);
    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(pages->currentIndex(), 0);
}

void TestInserimentoClienti::savesTheProposedCodeWithEmptyTaxCodes()
{
    const int key = NextKey();
    const QString code = Edit("txtCodice")->text();
    Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.r.l."));
    Trigger(m_editor, QStringLiteral("actSalva"));

    // No recipient code nor PEC either: asked about, and saved on "Sì".
    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(IsNoRecipientQuestion(m_boxes->Messages().first()));
    QCOMPARE(m_module->Database.Rows(QStringLiteral(
                 "SELECT IDCLIENTE, CODICE, RAGIONESOCIALE, CODICEFISCALE, PARTITAIVA, "
                 "COALESCE(IDTIPO_PAGAMENTO, -1), TIPO_SOGGETTO, CODICE_DESTINATARIO, PEC FROM CLIENTI")),
             QStringList{QStringLiteral("%1|%2|Alfa S.r.l.|||-1|A||").arg(key).arg(code)});
    QCOMPARE(m_editor->IdRecord(), key);
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
    QVERIFY(!Edit("txtCodice")->isEnabled());
    QVERIFY(m_editor->actNuovo()->isEnabled());

    // The next new customer gets the next number.
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(Edit("txtCodice")->text(), GetCustomCodice(key + 1, QStringLiteral("CLN"), QString(), 10));
    QVERIFY(Edit("txtCodice")->isEnabled());
    QVERIFY(Edit("txtRagioneSociale")->text().isEmpty());
}

void TestInserimentoClienti::savesEveryFieldAndReadsItBack()
{
    QStringList expected;
    QStringList columns;
    ChooseKind(QStringLiteral("Privato"));
    for (const TField &field : Fields) {
        const QString value = ValidValue(field, int(&field - Fields));
        Type(Edit(field.Name), value);
        expected << value;
        columns << QString::fromLatin1(field.Column);
    }
    Type(Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote")), QStringLiteral("Cliente storico"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY2(m_boxes->Messages().isEmpty(), qPrintable(m_boxes->Messages().value(0).Text));

    const int key = m_editor->IdRecord();
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT ") + columns.join(QStringLiteral(", "))
                                     + QStringLiteral(", NOTE, TIPO_SOGGETTO FROM CLIENTI WHERE IDCLIENTE=")
                                     + QString::number(key)),
             QStringList{expected.join(QLatin1Char('|')) + QStringLiteral("|Cliente storico|P")});

    Trigger(m_editor, QStringLiteral("actNuovo"));
    for (const TField &field : Fields) {
        if (QLatin1String(field.Name) != QLatin1String("txtCodice"))
            QVERIFY(Edit(field.Name)->text().isEmpty());
    }
    QCOMPARE(m_editor->ApriRecord(key), 0);
    QStringList shown;
    for (const TField &field : Fields)
        shown << Edit(field.Name)->text();
    QCOMPARE(shown, expected);
    QCOMPARE(Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote"))->toPlainText(),
             QStringLiteral("Cliente storico"));
    QCOMPARE(Field<QComboBox>(m_editor, QStringLiteral("cboTipoSoggetto"))->currentText(), QStringLiteral("Privato"));
    QVERIFY(Edit("txtNome")->isEnabled());
    QVERIFY(!m_editor->Modified());
}

void TestInserimentoClienti::checksComeInOrder()
{
    Edit("txtCodice")->clear();
    Trigger(m_editor, QStringLiteral("actSalva"));
    Type(Edit("txtCodice"), QStringLiteral("C1"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    Type(Edit("txtCodice"), QString());
    Type(Edit("txtRagioneSociale"), QStringLiteral("Senza codice"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 3);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Attenzione", "Non è stato indicato il codice!", Warning, Ok);
    KRV_COMPARE_BOX(m_boxes->Messages().at(1), "Attenzione", "Non è stata indicata la ragione sociale!", Warning, Ok);
    KRV_COMPARE_BOX(m_boxes->Messages().at(2), "Attenzione", "Non è stato indicato il codice!", Warning, Ok);
    QVERIFY(Customers().isEmpty());
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->Modified());
}

// An Italian customer's Partita IVA and Codice Fiscale must add up to their
// check digits: a wrong one is named in the warning and nothing is saved.
void TestInserimentoClienti::wrongTaxCodesAreRefusedNamingTheField()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.r.l."));
    Type(Edit("txtPartitaIVA"), QStringLiteral("01234567890"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    Type(Edit("txtPartitaIVA"), QStringLiteral("12345678903"));
    Type(Edit("txtCodiceFiscale"), QStringLiteral("RSSMRA80A01H501A"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    Type(Edit("txtNazione"), QStringLiteral("Italia"));
    Type(Edit("txtPartitaIVA"), QStringLiteral("1234567890"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 3);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Attenzione", "La partita IVA non è valida: controllare le 11 cifre.",
                    Warning, Ok);
    KRV_COMPARE_BOX(m_boxes->Messages().at(1), "Attenzione", "Il codice fiscale non è valido.", Warning, Ok);
    KRV_COMPARE_BOX(m_boxes->Messages().at(2), "Attenzione",
                    "La partita IVA non è valida: controllare le 11 cifre.\n\rIl codice fiscale non è valido.", Warning,
                    Ok);
    QVERIFY(Customers().isEmpty());
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->Modified());
    QCOMPARE(Edit("txtPartitaIVA")->text(), QStringLiteral("1234567890"));
}

void TestInserimentoClienti::rightTaxCodesAreSaved()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Rossi Mario"));
    TypeRecipientCode();
    Type(Edit("txtPartitaIVA"), QStringLiteral("12345678903"));
    // A code changed for a namesake: letters in place of its last digits.
    Type(Edit("txtCodiceFiscale"), QStringLiteral("rssmra80a01h5lmx"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY2(m_boxes->Messages().isEmpty(), qPrintable(m_boxes->Messages().value(0).Text));
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT PARTITAIVA, CODICEFISCALE FROM CLIENTI")),
             QStringList{QStringLiteral("12345678903|RSSMRA80A01H5LMX")});
}

// A foreign customer's VAT number follows the rules of its own country.
void TestInserimentoClienti::foreignCustomersTaxCodesAreKeptAsWritten()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Schmidt GmbH"));
    TypeRecipientCode();
    Type(Edit("txtNazione"), QStringLiteral("Germania"));
    Type(Edit("txtPartitaIVA"), QStringLiteral("DE123456789"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY2(m_boxes->Messages().isEmpty(), qPrintable(m_boxes->Messages().value(0).Text));
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT NAZIONE, PARTITAIVA FROM CLIENTI")),
             QStringList{QStringLiteral("Germania|DE123456789")});
}

void TestInserimentoClienti::codeDifferingOnlyInCaseIsRefused()
{
    KRVInsertCliente(m_module->Database, QStringLiteral("cln9"), QStringLiteral("Minuscolo"));
    const QStringList before = Customers();
    Type(Edit("txtCodice"), QStringLiteral("CLN9"));
    Type(Edit("txtRagioneSociale"), QStringLiteral("Maiuscolo"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione", "Codice già utilizzato!", Warning, Ok);
    QCOMPARE(Customers(), before);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->Modified());
}

void TestInserimentoClienti::savedCustomerKeepsItsCodeLocked()
{
    const int id = KRVInsertCliente(m_module->Database, QStringLiteral("C001"), QStringLiteral("Beta S.p.A."), 2);
    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(Edit("txtCodice")->text(), QStringLiteral("C001"));
    QCOMPARE(Edit("txtRagioneSociale")->text(), QStringLiteral("Beta S.p.A."));
    QCOMPARE(Field<QLabel>(m_editor, QStringLiteral("txtTipoPagamento"))->text(),
             QStringLiteral("Bonifico 30 gg Data Fattura"));
    QCOMPARE(Field<QLabel>(m_editor, QStringLiteral("txtTipoPagamento"))->accessibleDescription(),
             QStringLiteral("Bonifico 30 gg Data Fattura"));
    QCOMPARE(m_editor->IdTipoPagamento(), 2);
    QVERIFY(!Edit("txtCodice")->isEnabled());
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());

    // Its own unchanged code does not count as used.
    Type(Edit("txtCitta"), QStringLiteral("Bologna"));
    TypeRecipientCode();
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE, CITTA, IDTIPO_PAGAMENTO FROM CLIENTI")),
             QStringList{QStringLiteral("C001|Bologna|2")});
}

void TestInserimentoClienti::paymentTypeChosenInTheDialogIsSaved()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Gamma"));
    TypeRecipientCode();
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(!m_editor->Modified());

    AnswerPaymentDialog(QStringLiteral("Ri.Ba. 30 gg Fine Mese"));
    Click(Field<QToolButton>(m_editor, QStringLiteral("cmdSelezionaTipoPagamento")));

    QVERIFY(m_dialogWasShown);
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Field<QLabel>(m_editor, QStringLiteral("txtTipoPagamento"))->text(),
             QStringLiteral("Ri.Ba. 30 gg Fine Mese"));
    QCOMPARE(m_editor->IdTipoPagamento(), 5);
    QVERIFY(m_editor->Modified());
    QVERIFY(m_editor->actSalva()->isEnabled());

    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT RAGIONESOCIALE, IDTIPO_PAGAMENTO FROM CLIENTI")),
             QStringList{QStringLiteral("Gamma|5")});
}

void TestInserimentoClienti::cancellingThePaymentDialogChangesNothing()
{
    const int id = KRVInsertCliente(m_module->Database, QStringLiteral("C002"), QStringLiteral("Delta"), 1);
    QCOMPARE(m_editor->ApriRecord(id), 0);

    AnswerPaymentDialog(QString());
    Click(Field<QToolButton>(m_editor, QStringLiteral("cmdSelezionaTipoPagamento")));

    QVERIFY(m_dialogWasShown);
    QCOMPARE(Field<QLabel>(m_editor, QStringLiteral("txtTipoPagamento"))->text(), QStringLiteral("Rimessa diretta"));
    QCOMPARE(m_editor->IdTipoPagamento(), 1);
    QVERIFY(!m_editor->Modified());
}

void TestInserimentoClienti::deletingASavedCustomerAsksAndDeletes()
{
    const int id = KRVInsertCliente(m_module->Database, QStringLiteral("C003"), QStringLiteral("Epsilon"));
    KRVInsertCliente(m_module->Database, QStringLiteral("C004"), QStringLiteral("Zeta"));
    QCOMPARE(m_editor->ApriRecord(id), 0);
    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE FROM CLIENTI")),
             QStringList{QStringLiteral("C004")});
    QVERIFY(m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), -1);
    QVERIFY(Edit("txtCodice")->text().startsWith(QLatin1String("CLN")));
    QVERIFY(Edit("txtRagioneSociale")->text().isEmpty());
}

// The rule never reads its count: a customer whose code documents bear is
// deleted like any other once the user confirms.
void TestInserimentoClienti::deletingACustomerOnDocumentsFollowsTheRule()
{
    const TQ3TestDatabase &db = m_module->Database;
    const int id = KRVInsertCliente(db, QStringLiteral("C005"), QStringLiteral("Eta"));
    KRVInsertDocumento(db, QStringLiteral("FATT_VEND"), 1, 2024, QStringLiteral("c005"));
    KRVInsertDocumento(db, QStringLiteral("NOTE_ACCREDITO"), 1, 2024, QStringLiteral("C005"));
    QVERIFY(CanDeleteCliente(m_module->Db(), QStringLiteral("C005")));

    QCOMPARE(m_editor->ApriRecord(id), 0);
    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QVERIFY(Customers().isEmpty());
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 1);
    QVERIFY(m_editor->NewRecord());
}

void TestInserimentoClienti::deleteAnsweredNoKeepsTheCustomer()
{
    const int id = KRVInsertCliente(m_module->Database, QStringLiteral("C006"), QStringLiteral("Theta"));
    QCOMPARE(m_editor->ApriRecord(id), 0);
    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(Customers().size(), 1);
    QCOMPARE(m_editor->IdRecord(), id);
    QCOMPARE(Edit("txtCodice")->text(), QStringLiteral("C006"));
}

void TestInserimentoClienti::deletingANewRecordAsksThenBlanks()
{
    KRVInsertCliente(m_module->Database, QStringLiteral("C007"), QStringLiteral("Iota"));
    QVERIFY(m_editor->NewRecord());
    Type(Edit("txtRagioneSociale"), QStringLiteral("Mai salvato"));
    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(Customers().size(), 1);
    QVERIFY(Edit("txtRagioneSociale")->text().isEmpty());
    QVERIFY(!m_editor->Modified());
    QVERIFY(m_editor->NewRecord());
}

void TestInserimentoClienti::failedDeleteIsReportedAndTheWindowBlanks()
{
    const TQ3TestDatabase &db = m_module->Database;
    const int id = KRVInsertCliente(db, QStringLiteral("C008"), QStringLiteral("Kappa"));
    db.Exec(QStringLiteral("CREATE EXCEPTION E_CLIENTE_BLOCCATO 'Cliente bloccato'"));
    db.Exec(QStringLiteral("CREATE TRIGGER TG_BD_CLIENTI_TEST FOR CLIENTI BEFORE DELETE AS "
                           "BEGIN EXCEPTION E_CLIENTE_BLOCCATO; END"));

    QCOMPARE(m_editor->ApriRecord(id), 0);
    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 2);
    KRV_COMPARE_BOX(m_boxes->Messages().at(1), "Errore",
                    "Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!",
                    Error, Ok);
    QCOMPARE(Customers().size(), 1);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(Edit("txtRagioneSociale")->text().isEmpty());
}

void TestInserimentoClienti::failedSaveIsReported()
{
    // The generator behind its rows: the new key is one a row already has.
    KRVInsertCliente(m_module->Database, QStringLiteral("C009"), QStringLiteral("Lambda"));
    m_module->Database.Exec(QStringLiteral("SET GENERATOR GN_IDCLIENTE TO 0"));
    QVERIFY(m_editor->NewRecord());
    Type(Edit("txtCodice"), QStringLiteral("C010"));
    Type(Edit("txtRagioneSociale"), QStringLiteral("Mu"));
    TypeRecipientCode();
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Errore", "Si è verificato un errore durante il salvataggio dei dati!",
                    Error, Ok);
    QCOMPARE(Customers().size(), 1);
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
}

void TestInserimentoClienti::unsavedChangesAreAskedAbout()
{
    const int id = KRVInsertCliente(m_module->Database, QStringLiteral("C011"), QStringLiteral("Nu"));
    Type(Edit("txtRagioneSociale"), QStringLiteral("In sospeso"));

    m_boxes->Enqueue(TQ3MsgResult::No);
    QCOMPARE(m_editor->ApriRecord(id), -1);
    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actChiudi"));
    ProcessDeletes();

    QCOMPARE(m_boxes->Messages().size(), 2);
    for (const TQ3Message &box : m_boxes->Messages())
        KRV_COMPARE_BOX(box, "Conferma", "Ci sono delle modifiche non salvate.\n\rContinuare comunque?", Question,
                        YesNo);
    QCOMPARE(m_module->Main->Form(ActEditor), m_editor);
    QCOMPARE(Edit("txtRagioneSociale")->text(), QStringLiteral("In sospeso"));

    m_boxes->Enqueue(TQ3MsgResult::Yes);
    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(Edit("txtRagioneSociale")->text(), QStringLiteral("Nu"));
}

void TestInserimentoClienti::listIsNotRefreshed()
{
    KRVInsertCliente(m_module->Database, QStringLiteral("C012"), QStringLiteral("Antares"));
    auto list = Run<TKRVRicercaClienti>(*m_module, ActList);
    QVERIFY(list);
    QCOMPARE(Column(list->GridRisultati(), 2), QStringList{QStringLiteral("Antares")});

    m_editor = Open();
    Type(Edit("txtRagioneSociale"), QStringLiteral("Aldebaran"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(Customers().size(), 2);
    QCOMPARE(Column(list->GridRisultati(), 2), QStringList{QStringLiteral("Antares")});

    // The list shows the change at its next search.
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(Column(list->GridRisultati(), 2), (QStringList{"Aldebaran", "Antares"}));

    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(Customers().size(), 1);
    QCOMPARE(Column(list->GridRisultati(), 2), (QStringList{"Aldebaran", "Antares"}));
}

void TestInserimentoClienti::newCustomerKeepsItsOwnKeyWhenAnotherWorkstationInsertsMeanwhile()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.r.l."));
    TypeRecipientCode();
    SaveChangeDeleteBesideAnotherWorkstation(
        *m_module, m_editor, QStringLiteral("CLIENTI"), QStringLiteral("IDCLIENTE"),
        QStringLiteral("INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE) VALUES ('ALTRO', 'Altra postazione')"),
        [this] { Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.p.A.")); });
    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE, RAGIONESOCIALE FROM CLIENTI")),
             QStringList{QStringLiteral("ALTRO|Altra postazione")});
}

void TestInserimentoClienti::deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsCustomer()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.r.l."));
    TypeRecipientCode();
    const QString codice = Edit("txtCodice")->text();
    DeleteAfterAFailedSaveBesideAnotherWorkstation(
        *m_module, m_editor, *m_boxes, QStringLiteral("CLIENTI"), QStringLiteral("IDCLIENTE"),
        QStringLiteral("INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE) VALUES (%1, 'Altra postazione')")
            .arg(QuotedStr(codice)));
}

// Each wrong datum of the electronic invoice is named in the warning, after
// the tax codes' own; nothing is saved and what was typed stays.
void TestInserimentoClienti::electronicInvoiceDataAreCheckedNamingTheField()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.r.l."));
    Type(Edit("txtCodiceDestinatario"), QStringLiteral("ABC12"));
    QCOMPARE(SaveWarning(), QStringLiteral("Il codice destinatario deve essere di 7 lettere o cifre."));
    Type(Edit("txtCodiceDestinatario"), QStringLiteral("ABC-123"));
    QCOMPARE(SaveWarning(), QStringLiteral("Il codice destinatario deve essere di 7 lettere o cifre."));

    Type(Edit("txtCodiceDestinatario"), QString());
    Type(Edit("txtPec"), QStringLiteral("alfa.pec.it"));
    QCOMPARE(SaveWarning(), QStringLiteral("La PEC non è un indirizzo e-mail valido."));
    Type(Edit("txtPec"), QStringLiteral("alfa@pec"));
    QCOMPARE(SaveWarning(), QStringLiteral("La PEC non è un indirizzo e-mail valido."));

    Type(Edit("txtPec"), QString());
    ChooseKind(QStringLiteral("Privato"));
    Type(Edit("txtNome"), QStringLiteral("Mario"));
    QCOMPARE(SaveWarning(), QStringLiteral("Per un privato indicare nome e cognome."));
    Type(Edit("txtCognome"), QStringLiteral("   "));
    QCOMPARE(SaveWarning(), QStringLiteral("Per un privato indicare nome e cognome."));

    const QString pa =
        QStringLiteral("Per una pubblica amministrazione il codice destinatario (codice univoco ufficio) "
                       "deve essere di 6 lettere o cifre.");
    ChooseKind(QStringLiteral("Pubblica amministrazione"));
    QCOMPARE(SaveWarning(), pa);
    Type(Edit("txtCodiceDestinatario"), QStringLiteral("ABC1234"));
    QCOMPARE(SaveWarning(), pa);

    // Every problem at once, the tax code's first.
    Type(Edit("txtPartitaIVA"), QStringLiteral("01234567890"));
    Type(Edit("txtPec"), QStringLiteral("no"));
    QCOMPARE(SaveWarning(), QStringLiteral("La partita IVA non è valida: controllare le 11 cifre.\n\r") + pa
                                + QStringLiteral("\n\rLa PEC non è un indirizzo e-mail valido."));

    QVERIFY(Customers().isEmpty());
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->Modified());
    QCOMPARE(Edit("txtCodiceDestinatario")->text(), QStringLiteral("ABC1234"));
    QCOMPARE(Edit("txtPec")->text(), QStringLiteral("no"));
    QCOMPARE(Edit("txtNome")->text(), QStringLiteral("Mario"));
    QCOMPARE(Field<QComboBox>(m_editor, QStringLiteral("cboTipoSoggetto"))->currentText(),
             QStringLiteral("Pubblica amministrazione"));
}

void TestInserimentoClienti::recipientCodeIsTypedInCapitals()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.r.l."));
    Type(Edit("txtCodiceDestinatario"), QStringLiteral("m5uxcr1x"));
    QCOMPARE(Edit("txtCodiceDestinatario")->text(), QStringLiteral("M5UXCR1"));
    QCOMPARE(SaveWarning(), QString());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE_DESTINATARIO FROM CLIENTI")),
             QStringList{QStringLiteral("M5UXCR1")});
}

void TestInserimentoClienti::publicAdministrationWithItsOfficeCodeIsSaved()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Comune di Bologna"));
    ChooseKind(QStringLiteral("Pubblica amministrazione"));
    Type(Edit("txtCodiceDestinatario"), QStringLiteral("UF3Z9K"));
    QCOMPARE(SaveWarning(), QString());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT TIPO_SOGGETTO, CODICE_DESTINATARIO FROM CLIENTI")),
             QStringList{QStringLiteral("PA|UF3Z9K")});
}

// The names are for a private person: for the other kinds they are not typed,
// and what they hold is kept.
void TestInserimentoClienti::namesAreTypedForAPrivatePersonOnly()
{
    auto kind = Field<QComboBox>(m_editor, QStringLiteral("cboTipoSoggetto"));
    QCOMPARE(kind->accessibleName(), QStringLiteral("Tipo soggetto"));
    QCOMPARE(kind->count(), 3);
    QCOMPARE(kind->itemText(0), QStringLiteral("Azienda"));
    QCOMPARE(kind->itemText(1), QStringLiteral("Privato"));
    QCOMPARE(kind->itemText(2), QStringLiteral("Pubblica amministrazione"));
    QCOMPARE(kind->currentText(), QStringLiteral("Azienda"));
    QVERIFY(!Edit("txtNome")->isEnabled());
    QVERIFY(!Edit("txtCognome")->isEnabled());

    ChooseKind(QStringLiteral("Privato"));
    QVERIFY(m_editor->Modified());
    QVERIFY(Edit("txtNome")->isEnabled());
    QVERIFY(Edit("txtCognome")->isEnabled());
    Type(Edit("txtNome"), QStringLiteral("Anna"));
    Type(Edit("txtCognome"), QStringLiteral("Bianchi"));
    ChooseKind(QStringLiteral("Azienda"));
    QVERIFY(!Edit("txtNome")->isEnabled());
    QCOMPARE(Edit("txtNome")->text(), QStringLiteral("Anna"));

    Type(Edit("txtRagioneSociale"), QStringLiteral("Bianchi Anna"));
    TypeRecipientCode();
    QCOMPARE(SaveWarning(), QString());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT TIPO_SOGGETTO, NOME, COGNOME FROM CLIENTI")),
             QStringList{QStringLiteral("A|Anna|Bianchi")});

    // A new record is a company again.
    ChooseKind(QStringLiteral("Privato"));
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(kind->currentText(), QStringLiteral("Azienda"));
    QVERIFY(!Edit("txtNome")->isEnabled());
}

// Neither recipient code nor PEC: the question answered "No" saves nothing
// and leaves everything as typed.
void TestInserimentoClienti::noRecipientAnsweredNoKeepsEverythingTyped()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Verdi Luca"));
    // A private person is not asked: the reserved area is the rule.
    ChooseKind(QStringLiteral("Privato"));
    Type(Edit("txtNome"), QStringLiteral("Luca"));
    Type(Edit("txtCognome"), QStringLiteral("Verdi"));
    QCOMPARE(SaveWarning(), QString());
    QCOMPARE(m_module->Database.Rows(QStringLiteral(
                 "SELECT RAGIONESOCIALE, TIPO_SOGGETTO, NOME, COGNOME, CODICE_DESTINATARIO, PEC FROM CLIENTI")),
             QStringList{QStringLiteral("Verdi Luca|P|Luca|Verdi||")});
    Trigger(m_editor, QStringLiteral("actNuovo"));
    m_boxes->Clear();

    Type(Edit("txtRagioneSociale"), QStringLiteral("Verdi Luca S.r.l."));
    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(IsNoRecipientQuestion(m_boxes->Messages().first()));
    QCOMPARE(Customers().size(), 1);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->Modified());
    QVERIFY(m_editor->actSalva()->isEnabled());
    QCOMPARE(Edit("txtRagioneSociale")->text(), QStringLiteral("Verdi Luca S.r.l."));

    // Asked again, "Sì" saves it with the empty code.
    m_boxes->Clear();
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(IsNoRecipientQuestion(m_boxes->Messages().first()));
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT RAGIONESOCIALE, TIPO_SOGGETTO, CODICE_DESTINATARIO, PEC "
                                                    "FROM CLIENTI ORDER BY RAGIONESOCIALE")),
             (QStringList{QStringLiteral("Verdi Luca|P||"), QStringLiteral("Verdi Luca S.r.l.|A||")}));
}

void TestInserimentoClienti::pecAloneIsSavedWithoutQuestion()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.r.l."));
    Type(Edit("txtPec"), QStringLiteral("alfa@legalmail.it"));
    QCOMPARE(SaveWarning(), QString());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE_DESTINATARIO, PEC FROM CLIENTI")),
             QStringList{QStringLiteral("|alfa@legalmail.it")});
}

// A foreign customer's invoices go through the foreign customers' code: it is
// proposed once the country is typed, when no code was given.
void TestInserimentoClienti::foreignCustomerGetsTheForeignRecipientCode()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Dupont SARL"));
    Type(Edit("txtNazione"), QStringLiteral("Italia"));
    PressEnter(Edit("txtNazione"));
    QVERIFY(Edit("txtCodiceDestinatario")->text().isEmpty());
    Type(Edit("txtNazione"), QStringLiteral("Francia"));
    PressEnter(Edit("txtNazione"));
    QCOMPARE(Edit("txtCodiceDestinatario")->text(), QStringLiteral("XXXXXXX"));
    QCOMPARE(SaveWarning(), QString());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT NAZIONE, CODICE_DESTINATARIO FROM CLIENTI")),
             QStringList{QStringLiteral("Francia|XXXXXXX")});

    // A code typed by the user is never replaced.
    Trigger(m_editor, QStringLiteral("actNuovo"));
    Type(Edit("txtRagioneSociale"), QStringLiteral("Mueller AG"));
    Type(Edit("txtCodiceDestinatario"), QStringLiteral("ABC1234"));
    Type(Edit("txtNazione"), QStringLiteral("Svizzera"));
    PressEnter(Edit("txtNazione"));
    QCOMPARE(Edit("txtCodiceDestinatario")->text(), QStringLiteral("ABC1234"));
}

void TestInserimentoClienti::savedCustomerShowsItsElectronicInvoiceData()
{
    const int id = KRVInsertCliente(m_module->Database, QStringLiteral("C020"), QStringLiteral("Neri Paola"));
    m_module->Database.Exec(QStringLiteral("UPDATE CLIENTI SET TIPO_SOGGETTO = 'P', NOME = 'Paola', COGNOME = 'Neri', "
                                           "CODICE_DESTINATARIO = '0000000', PEC = 'paola@pec.it' WHERE IDCLIENTE = ")
                            + QString::number(id));
    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(Field<QComboBox>(m_editor, QStringLiteral("cboTipoSoggetto"))->currentText(), QStringLiteral("Privato"));
    QVERIFY(Edit("txtNome")->isEnabled());
    QCOMPARE(Edit("txtNome")->text(), QStringLiteral("Paola"));
    QCOMPARE(Edit("txtCognome")->text(), QStringLiteral("Neri"));
    QCOMPARE(Edit("txtCodiceDestinatario")->text(), QStringLiteral("0000000"));
    QCOMPARE(Edit("txtPec")->text(), QStringLiteral("paola@pec.it"));
    QVERIFY(!m_editor->Modified());

    // A kind the list does not know is shown as stored, and saving keeps it.
    m_module->Database.Exec(QStringLiteral("UPDATE CLIENTI SET TIPO_SOGGETTO = 'Z' WHERE IDCLIENTE = ")
                            + QString::number(id));
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(Field<QComboBox>(m_editor, QStringLiteral("cboTipoSoggetto"))->currentText(), QStringLiteral("Z"));
    Type(Edit("txtCitta"), QStringLiteral("Parma"));
    QCOMPARE(SaveWarning(), QString());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT TIPO_SOGGETTO, CITTA FROM CLIENTI")),
             QStringList{QStringLiteral("Z|Parma")});
}

QTEST_MAIN(TestInserimentoClienti)
#include "tst_inserimentoclienti.moc"
