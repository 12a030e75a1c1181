#include "../data/KRVServiceRows.h"
#include "KRVMastersTestKit.h"
#include "KRVUtils.h"
#include "uKRVInserimentoClienti.h"
#include "uKRVModSelezionaTipoPagamento.h"
#include "uKRVRicercaClienti.h"

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
};

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
    void newCustomerKeepsItsOwnKeyWhenAnotherWorkstationInsertsMeanwhile();

private:
    TKRVInserimentoClienti *Open();
    QLineEdit *Edit(const char *name) const;
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
    QCOMPARE(pages->count(), 3);
    QCOMPARE(pages->tabText(0), QStringLiteral(" Generale "));
    QCOMPARE(pages->tabText(1), QStringLiteral(" Coordinate bancarie "));
    QCOMPARE(pages->tabText(2), QStringLiteral(" Note "));
    QVERIFY(pages->widget(0)->isAncestorOf(Edit("txtPartitaIVA")));
    QVERIFY(pages->widget(1)->isAncestorOf(Edit("txtCoordBanSwift")));
    QVERIFY(pages->widget(2)->isAncestorOf(Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote"))));

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
    pages->setCurrentIndex(2);
    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(pages->currentIndex(), 0);
}

void TestInserimentoClienti::savesTheProposedCodeWithEmptyTaxCodes()
{
    const int key = NextKey();
    const QString code = Edit("txtCodice")->text();
    Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.r.l."));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT IDCLIENTE, CODICE, RAGIONESOCIALE, CODICEFISCALE, PARTITAIVA, "
                                "COALESCE(IDTIPO_PAGAMENTO, -1) FROM CLIENTI")),
             QStringList{QStringLiteral("%1|%2|Alfa S.r.l.|||-1").arg(key).arg(code)});
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
    for (const TField &field : Fields) {
        const QString value = QStringLiteral("V") + QString::number(&field - Fields);
        Type(Edit(field.Name), value.left(field.Limit));
        expected << value.left(field.Limit);
        columns << QString::fromLatin1(field.Column);
    }
    Type(Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote")), QStringLiteral("Cliente storico"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());

    const int key = m_editor->IdRecord();
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT ") + columns.join(QStringLiteral(", "))
                                     + QStringLiteral(", NOTE FROM CLIENTI WHERE IDCLIENTE=") + QString::number(key)),
             QStringList{expected.join(QLatin1Char('|')) + QStringLiteral("|Cliente storico")});

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
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE, CITTA, IDTIPO_PAGAMENTO FROM CLIENTI")),
             QStringList{QStringLiteral("C001|Bologna|2")});
}

void TestInserimentoClienti::paymentTypeChosenInTheDialogIsSaved()
{
    Type(Edit("txtRagioneSociale"), QStringLiteral("Gamma"));
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
    SaveChangeDeleteBesideAnotherWorkstation(
        *m_module, m_editor, QStringLiteral("CLIENTI"), QStringLiteral("IDCLIENTE"),
        QStringLiteral("INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE) VALUES ('ALTRO', 'Altra postazione')"),
        [this] { Type(Edit("txtRagioneSociale"), QStringLiteral("Alfa S.p.A.")); });
    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE, RAGIONESOCIALE FROM CLIENTI")),
             QStringList{QStringLiteral("ALTRO|Altra postazione")});
}

QTEST_MAIN(TestInserimentoClienti)
#include "tst_inserimentoclienti.moc"
