#include "../data/KRVServiceRows.h"
#include "KRVMastersTestKit.h"
#include "KRVUtils.h"
#include "uKRVModSelezionaCliente.h"

#include <QHeaderView>
#include <QToolBar>

using namespace KRVTest;

namespace {

const QString ActDialog = QStringLiteral("actModSelezionaCliente");

} // namespace

class TestModSelezionaCliente : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void actionOnlyCreatesTheDialog();
    void showingListsTheNamesBeginningWithA();
    void nameFilterSearchesOnEnterAndDoublesQuotes();
    void letterBarClauses();
    void starAndLowerCaseLetters();
    void reopeningAfterANameSearchShowsTheAListAgain();
    void okWithAnEmptyGridKeepsTheDialogOpen();
    void okHandsBackTheSelectedKey();
    void doubleClickChoosesTheRow();
    void ripristinaClearsWithoutSearching();

private:
    TKRVModSelezionaCliente *Dialog() const;
    TKRVModSelezionaCliente *Show();
    QStringList Names() const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    int m_alfa = 0;
};

void TestModSelezionaCliente::initTestCase()
{
    UseItalianLocale();
}

void TestModSelezionaCliente::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    const TQ3TestDatabase &db = m_module->Database;
    m_alfa = KRVInsertRow(db,
                          QStringLiteral("INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE, CODICEFISCALE, PARTITAIVA) "
                                         "VALUES ('C01', 'Alfa S.r.l.', 'RSSMRA80A01A944X', '01234567890')"),
                          QStringLiteral("GN_IDCLIENTE"));
    KRVInsertCliente(db, QStringLiteral("C02"), QStringLiteral("acme spa"));
    KRVInsertCliente(db, QStringLiteral("C03"), QStringLiteral("Beta"));
    KRVInsertCliente(db, QStringLiteral("C04"), QStringLiteral("bianchi mario"));
    KRVInsertCliente(db, QStringLiteral("C05"), QStringLiteral("O'Brien Ltd"));
}

void TestModSelezionaCliente::cleanup()
{
    if (TKRVModSelezionaCliente *dialog = Dialog())
        dialog->hide();
    m_boxes.reset();
    m_module.reset();
}

TKRVModSelezionaCliente *TestModSelezionaCliente::Dialog() const
{
    return m_module->Main->FormAs<TKRVModSelezionaCliente>(ActDialog);
}

// The caller's protocol: run the action so that the dialog exists, then show it.
TKRVModSelezionaCliente *TestModSelezionaCliente::Show()
{
    Trigger(m_module->Main->Action(ActDialog));
    TKRVModSelezionaCliente *dialog = Dialog();
    dialog->show();
    return dialog;
}

QStringList TestModSelezionaCliente::Names() const
{
    return Column(Dialog()->gridRisultati(), 2);
}

void TestModSelezionaCliente::actionOnlyCreatesTheDialog()
{
    QVERIFY(!Dialog());
    QVERIFY(m_module->Main->Action(ActDialog)->isEnabled());
    Trigger(m_module->Main->Action(ActDialog));
    TKRVModSelezionaCliente *dialog = Dialog();
    QVERIFY(dialog);
    QVERIFY(!dialog->isVisible());
    QVERIFY(dialog->isModal());
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Seleziona un cliente"));

    TKRVGrigliaRisultati *grid = dialog->gridRisultati();
    QCOMPARE(grid->rowCount(), 0);
    QCOMPARE(grid->columnCount(), 5);
    QVERIFY(grid->isColumnHidden(0));
    QStringList titles;
    for (int column = 1; column < 5; ++column)
        titles << grid->Titolo(column);
    QCOMPARE(titles, (QStringList{"Codice", "Ragione sociale", "Codice fiscale", "Partita IVA"}));
    QCOMPARE(grid->columnWidth(1), 120);
    QCOMPARE(grid->columnWidth(2), 358);
    QCOMPARE(grid->columnWidth(3), 160);
    QCOMPARE(grid->columnWidth(4), 130);
    // A wider grid leaves the room after the last column empty.
    dialog->resize(1400, dialog->height());
    dialog->show();
    QCOMPARE(grid->columnWidth(4), 130);
    dialog->hide();
    QCOMPARE(Field(dialog, QStringLiteral("txtRagioneSociale"))->accessibleName().trimmed(),
             QStringLiteral("Ragione sociale"));

    // A second run keeps the same dialog.
    Trigger(m_module->Main->Action(ActDialog));
    QCOMPARE(Dialog(), dialog);
}

void TestModSelezionaCliente::showingListsTheNamesBeginningWithA()
{
    TKRVModSelezionaCliente *dialog = Show();
    QVERIFY(dialog->isVisible());
    QCOMPARE(Names(), (QStringList{"acme spa", "Alfa S.r.l."}));
    TKRVGrigliaRisultati *grid = dialog->gridRisultati();
    const int alfa = RowOf(grid, 2, QStringLiteral("Alfa S.r.l."));
    QCOMPARE(grid->Testo(alfa, 1), QStringLiteral("C01"));
    QCOMPARE(grid->Testo(alfa, 3), QStringLiteral("RSSMRA80A01A944X"));
    QCOMPARE(grid->Testo(alfa, 4), QStringLiteral("01234567890"));
}

void TestModSelezionaCliente::nameFilterSearchesOnEnterAndDoublesQuotes()
{
    TKRVModSelezionaCliente *dialog = Show();
    QLineEdit *filter = Field(dialog, QStringLiteral("txtRagioneSociale"));
    Type(filter, QStringLiteral("o'brien"));
    PressEnter(filter);
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Names(), QStringList{QStringLiteral("O'Brien Ltd")});
    QVERIFY(dialog->isVisible());

    Type(filter, QStringLiteral("MARIO"));
    Trigger(dialog, QStringLiteral("actCerca"));
    QCOMPARE(Names(), QStringList{QStringLiteral("bianchi mario")});

    // An empty filter lists all.
    Type(filter, QString());
    Trigger(dialog, QStringLiteral("actCerca"));
    QCOMPARE(Names().size(), 5);
}

void TestModSelezionaCliente::letterBarClauses()
{
    QCOMPARE(TKRVModSelezionaCliente::ClausolaLettera(QStringLiteral("b")),
             QStringLiteral("WHERE UPPER(RAGIONESOCIALE) LIKE 'B%'"));
    QVERIFY(TKRVModSelezionaCliente::ClausolaLettera(QStringLiteral("*")).isEmpty());

    TKRVModSelezionaCliente *dialog = Show();
    auto bar = dialog->findChild<QToolBar *>(QStringLiteral("tBarLettere"));
    QVERIFY(bar);
    QString letters;
    for (QAction *action : bar->actions())
        letters += action->text();
    QCOMPARE(letters, QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ*"));
}

void TestModSelezionaCliente::starAndLowerCaseLetters()
{
    TKRVModSelezionaCliente *dialog = Show();
    Trigger(dialog, QStringLiteral("actLetteraTutte"));
    QCOMPARE(Names(), (QStringList{"acme spa", "Alfa S.r.l.", "Beta", "bianchi mario", "O'Brien Ltd"}));

    dialog->BarraRicercaButtonClick(QStringLiteral("b"));
    QCOMPARE(Names(), (QStringList{"Beta", "bianchi mario"}));
    Trigger(dialog, QStringLiteral("actLetteraO"));
    QCOMPARE(Names(), QStringList{QStringLiteral("O'Brien Ltd")});
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestModSelezionaCliente::reopeningAfterANameSearchShowsTheAListAgain()
{
    TKRVModSelezionaCliente *dialog = Show();
    Type(Field(dialog, QStringLiteral("txtRagioneSociale")), QStringLiteral("Beta"));
    Trigger(dialog, QStringLiteral("actCerca"));
    QCOMPARE(Names(), QStringList{QStringLiteral("Beta")});
    Trigger(dialog, QStringLiteral("actAnnulla"));
    QVERIFY(!dialog->isVisible());

    QCOMPARE(Show(), dialog);
    QCOMPARE(Names(), (QStringList{"acme spa", "Alfa S.r.l."}));
    // The filter keeps its text between showings.
    QCOMPARE(Field(dialog, QStringLiteral("txtRagioneSociale"))->text(), QStringLiteral("Beta"));
}

void TestModSelezionaCliente::okWithAnEmptyGridKeepsTheDialogOpen()
{
    TKRVModSelezionaCliente *dialog = Show();
    Trigger(dialog, QStringLiteral("actLetteraQ"));
    QCOMPARE(dialog->gridRisultati()->rowCount(), 0);
    QCOMPARE(dialog->ApriSelezionato(), -1);

    Trigger(dialog, QStringLiteral("actOK"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione", "Nessuna voce selezionata!", Warning, Ok);
    QVERIFY(dialog->isVisible());

    Trigger(dialog, QStringLiteral("actAnnulla"));
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
    QCOMPARE(m_boxes->Messages().size(), 1);
}

void TestModSelezionaCliente::okHandsBackTheSelectedKey()
{
    TKRVModSelezionaCliente *dialog = Show();
    TKRVGrigliaRisultati *grid = dialog->gridRisultati();
    SelectRow(grid, RowOf(grid, 2, QStringLiteral("Alfa S.r.l.")));
    Trigger(dialog, QStringLiteral("actOK"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
    QCOMPARE(dialog->ApriSelezionato(), m_alfa);
    QCOMPARE(GetCliente(m_module->Db(), dialog->ApriSelezionato()).RAGIONESOCIALE, QStringLiteral("Alfa S.r.l."));
}

void TestModSelezionaCliente::doubleClickChoosesTheRow()
{
    TKRVModSelezionaCliente *dialog = Show();
    TKRVGrigliaRisultati *grid = dialog->gridRisultati();
    DoubleClickRow(grid, RowOf(grid, 2, QStringLiteral("acme spa")));

    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
    QCOMPARE(GetCliente(m_module->Db(), dialog->ApriSelezionato()).CODICE, QStringLiteral("C02"));
}

void TestModSelezionaCliente::ripristinaClearsWithoutSearching()
{
    TKRVModSelezionaCliente *dialog = Show();
    Type(Field(dialog, QStringLiteral("txtRagioneSociale")), QStringLiteral("Beta"));
    Trigger(dialog, QStringLiteral("actCerca"));
    Trigger(dialog, QStringLiteral("actRipristina"));
    QVERIFY(Field(dialog, QStringLiteral("txtRagioneSociale"))->text().isEmpty());
    QCOMPARE(Names(), QStringList{QStringLiteral("Beta")});
}

QTEST_MAIN(TestModSelezionaCliente)
#include "tst_modselezionacliente.moc"
