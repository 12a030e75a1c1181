#include "../masters/KRVMastersTestKit.h"
#include "KRVCaricaDaDdt.h"
#include "KRVDdtTestRows.h"
#include "uKRVModSelezionaDdtScaricoMulti.h"

#include <QHeaderView>
#include <QSpinBox>

using namespace KRVTest;

namespace {

const QString ActDialog = QStringLiteral("actModSelezionaDdtScaricoMulti");

// The check boxes as the grid draws them.
QList<Qt::CheckState> Checks(const TKRVGrigliaRisultati *grid)
{
    QList<Qt::CheckState> checks;
    for (int row = 0; row < grid->rowCount(); ++row)
        checks << Qt::CheckState(grid->model()->index(row, 1).data(Qt::CheckStateRole).toInt());
    return checks;
}

// Clicks a row away from its check box.
QPoint Centre(const TKRVGrigliaRisultati *grid, int row)
{
    return CellRect(grid, row, 5).center();
}

// Clicks a row's check box as the user does.
void ClickCheck(TKRVGrigliaRisultati *grid, int row)
{
    const QRect cell = CellRect(grid, row, 1);
    QStyleOptionViewItem option;
    option.initFrom(grid);
    option.rect = cell;
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    const QRect box = grid->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, grid);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, box.center());
}

} // namespace

class TestModSelezionaDdtScaricoMulti : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void actionCreatesTheDialogOnceEmptyOnTheCurrentYear();
    void searchListsTheYearsNotesNewestFirst();
    void customerNameWithAQuoteIsSearched();
    void checkBoxesAndGetSelectedInGridOrder();
    void ripristinaClearsTheNameSetsTheYearAndUnchecks();
    void okWithNothingCheckedWarnsAndStays();
    void doubleClickChoosesNothing();
    void dialogKeepsItsRowsBetweenUses();
    void searchFailureShowsItsMessageAndEmptiesTheGrid();
    void chosenNotesGiveTheirLinesInGridOrder();

private:
    TKRVModSelezionaDdtScaricoMulti *Dialog() const;
    QLineEdit *Nome(QWidget *dialog) const { return Field(dialog, QStringLiteral("txtRagioneSociale")); }
    QSpinBox *Anno(QWidget *dialog) const { return Field<QSpinBox>(dialog, QStringLiteral("txtAnno")); }
    void Search(TKRVModSelezionaDdtScaricoMulti *dialog, int anno, const QString &nome) const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    int m_year = 0;
};

void TestModSelezionaDdtScaricoMulti::initTestCase()
{
    UseItalianLocale();
}

// This year's notes 1 to 3 and last year's 12; note 2 (key 21) has no lines.
void TestModSelezionaDdtScaricoMulti::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    m_year = QDate::currentDate().year();
    const TQ3TestDatabase &db = m_module->Database;
    LoadDdtTables(db);
    InsertDdt(db, 20, 1, QDate(m_year, 1, 10), QStringLiteral("C001"), QStringLiteral("Idraulica Dell'Acqua"));
    InsertDdt(db, 21, 2, QDate(m_year, 1, 12), QStringLiteral("C002"), QStringLiteral("Bianchi S.r.l."));
    InsertDdt(db, 22, 3, QDate(m_year, 2, 1), QStringLiteral("C001"), QStringLiteral("Idraulica Dell'Acqua"));
    InsertDdt(db, 23, 12, QDate(m_year - 1, 12, 20), QStringLiteral("C001"), QStringLiteral("Idraulica Dell'Acqua"));
    InsertRigaVoce(db, 201, 20, QStringLiteral("Articolo"), QStringLiteral("ART1"), QStringLiteral("Rubinetto"),
                   QStringLiteral("5, 3, 12.5, 2, 25, 1, '20', 4, 'PZ'"));
    InsertRigaTesto(db, 202, 22, QStringLiteral("Testo"), QStringLiteral("Ritiro in sede"));
    InsertRigaVoce(db, 203, 22, QStringLiteral("Servizio"), QStringLiteral("SRV1"), QStringLiteral("Montaggio"),
                   QStringLiteral("10, 2, 40, 1, 40, 1, '20', 2, 'ORE'"));
}

void TestModSelezionaDdtScaricoMulti::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

TKRVModSelezionaDdtScaricoMulti *TestModSelezionaDdtScaricoMulti::Dialog() const
{
    Trigger(m_module->Main->Action(ActDialog));
    return m_module->Main->FormAs<TKRVModSelezionaDdtScaricoMulti>(ActDialog);
}

void TestModSelezionaDdtScaricoMulti::Search(TKRVModSelezionaDdtScaricoMulti *dialog, int anno,
                                             const QString &nome) const
{
    Type(Nome(dialog), nome);
    Anno(dialog)->setValue(anno);
    Trigger(dialog, QStringLiteral("actCerca"));
}

void TestModSelezionaDdtScaricoMulti::actionCreatesTheDialogOnceEmptyOnTheCurrentYear()
{
    QVERIFY(m_module->Main->Action(ActDialog)->isEnabled());
    QVERIFY(!m_module->Main->Form(ActDialog));
    auto dialog = Dialog();
    QVERIFY(dialog);
    QVERIFY(!dialog->isVisible());
    QVERIFY(dialog->isModal());
    QCOMPARE(Dialog(), dialog);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Seleziona D.d.T. di scarico"));

    TKRVGrigliaRisultati *grid = dialog->gridRisultati();
    QCOMPARE(Titles(grid), (QStringList{QString(), QString(), "N.", "Data", "Codice", "Ragione sociale"}));
    QVERIFY(grid->isColumnHidden(0));
    QVERIFY(!grid->isColumnHidden(1));
    QCOMPARE(grid->rowCount(), 0);

    QCOMPARE(Nome(dialog)->accessibleName(), QStringLiteral("    Ragione sociale"));
    QCOMPARE(Anno(dialog)->accessibleName(), QStringLiteral("    Anno"));
    QVERIFY(Nome(dialog)->text().isEmpty());
    QCOMPARE(Anno(dialog)->value(), m_year);
    QCOMPARE(Captions(dialog->findChild<QToolBar *>(QStringLiteral("tBarRicerca"))),
             (QStringList{"Cerca", "Ripristina"}));
    QCOMPARE(Captions(dialog->findChild<QToolBar *>(QStringLiteral("tBarConferma"))),
             (QStringList{"Selez. tutti", "Deselez. tutti", "OK", "Annulla"}));
}

void TestModSelezionaDdtScaricoMulti::searchListsTheYearsNotesNewestFirst()
{
    auto dialog = Dialog();
    Trigger(dialog, QStringLiteral("actCerca"));
    TKRVGrigliaRisultati *grid = dialog->gridRisultati();
    const QList<QStringList> expected{
        {"22", "", "3", QDate(m_year, 2, 1).toString(Qt::ISODate), "C001", "Idraulica Dell'Acqua"},
        {"21", "", "2", QDate(m_year, 1, 12).toString(Qt::ISODate), "C002", "Bianchi S.r.l."},
        {"20", "", "1", QDate(m_year, 1, 10).toString(Qt::ISODate), "C001", "Idraulica Dell'Acqua"},
    };
    QCOMPARE(grid->rowCount(), expected.size());
    for (int row = 0; row < expected.size(); ++row) {
        for (int column = 0; column < 6; ++column)
            QCOMPARE(grid->Valore(row, column), expected.at(row).at(column));
    }
    QCOMPARE(Checks(grid), (QList<Qt::CheckState>{Qt::Unchecked, Qt::Unchecked, Qt::Unchecked}));
    // The date shows in the short date form of the user's language.
    const QString yy = QString::number(m_year % 100).rightJustified(2, QLatin1Char('0'));
    QCOMPARE(grid->Testo(0, 3), QStringLiteral("01/02/") + yy);
    QCOMPARE(grid->Testo(0, 2), QStringLiteral("3"));

    // Another year, through the year box.
    Search(dialog, m_year - 1, QString());
    QCOMPARE(Column(grid, 0), QStringList{QStringLiteral("23")});
    QCOMPARE(Column(grid, 2), QStringList{QStringLiteral("12")});
    Search(dialog, m_year + 1, QString());
    QCOMPARE(grid->rowCount(), 0);
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestModSelezionaDdtScaricoMulti::customerNameWithAQuoteIsSearched()
{
    auto dialog = Dialog();
    Search(dialog, m_year, QStringLiteral("dell'acq"));
    QCOMPARE(Column(dialog->gridRisultati(), 0), (QStringList{"22", "20"}));

    // Enter in the name filter searches too.
    Type(Nome(dialog), QStringLiteral("BIANCHI"));
    PressEnter(Nome(dialog));
    QCOMPARE(Column(dialog->gridRisultati(), 0), QStringList{QStringLiteral("21")});
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestModSelezionaDdtScaricoMulti::checkBoxesAndGetSelectedInGridOrder()
{
    auto dialog = Dialog();
    Trigger(dialog, QStringLiteral("actCerca"));
    TKRVGrigliaRisultati *grid = dialog->gridRisultati();
    QVERIFY(dialog->GetSelected().isEmpty());

    Trigger(dialog, QStringLiteral("actSelezionaTutti"));
    QCOMPARE(Checks(grid), (QList<Qt::CheckState>{Qt::Checked, Qt::Checked, Qt::Checked}));
    QCOMPARE(dialog->GetSelected(), (QList<int>{22, 21, 20}));
    Trigger(dialog, QStringLiteral("actDeselezionaTutti"));
    QCOMPARE(Checks(grid), (QList<Qt::CheckState>{Qt::Unchecked, Qt::Unchecked, Qt::Unchecked}));
    QVERIFY(dialog->GetSelected().isEmpty());

    ClickCheck(grid, 2);
    ClickCheck(grid, 0);
    QCOMPARE(Checks(grid), (QList<Qt::CheckState>{Qt::Checked, Qt::Unchecked, Qt::Checked}));
    QCOMPARE(dialog->GetSelected(), (QList<int>{22, 20}));

    // Sorted by number, oldest first: the grid's order is the order handed back.
    QHeaderView *header = grid->horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(2) + header->sectionSize(2) / 2, header->height() / 2));
    QCOMPARE(Column(grid, 2), (QStringList{"1", "2", "3"}));
    QCOMPARE(dialog->GetSelected(), (QList<int>{20, 22}));

    // A new search shows its rows unchecked.
    Trigger(dialog, QStringLiteral("actCerca"));
    QVERIFY(dialog->GetSelected().isEmpty());
}

void TestModSelezionaDdtScaricoMulti::ripristinaClearsTheNameSetsTheYearAndUnchecks()
{
    auto dialog = Dialog();
    Search(dialog, m_year - 1, QStringLiteral("Idraulica"));
    Trigger(dialog, QStringLiteral("actSelezionaTutti"));
    QCOMPARE(dialog->GetSelected(), QList<int>{23});

    Trigger(dialog, QStringLiteral("actRipristina"));
    QVERIFY(Nome(dialog)->text().isEmpty());
    QCOMPARE(Anno(dialog)->value(), m_year);
    // The rows stay, unchecked: no search is run.
    QCOMPARE(Column(dialog->gridRisultati(), 0), QStringList{QStringLiteral("23")});
    QCOMPARE(Checks(dialog->gridRisultati()), QList<Qt::CheckState>{Qt::Unchecked});
    QVERIFY(dialog->GetSelected().isEmpty());
}

void TestModSelezionaDdtScaricoMulti::okWithNothingCheckedWarnsAndStays()
{
    auto dialog = Dialog();
    bool stayedOpen = false;
    bool selected = false;
    const int result = ShowModal(dialog, [&] {
        Trigger(dialog, QStringLiteral("actCerca"));
        // A selected row is not a checked one.
        QTest::mouseClick(dialog->gridRisultati()->viewport(), Qt::LeftButton, {}, Centre(dialog->gridRisultati(), 1));
        selected = dialog->gridRisultati()->selectionModel()->isSelected(dialog->gridRisultati()->model()->index(1, 5));
        Trigger(dialog, QStringLiteral("actOK"));
        stayedOpen = dialog->isVisible();
        Trigger(dialog, QStringLiteral("actAnnulla"));
    });
    QVERIFY(selected);
    QVERIFY(stayedOpen);
    QCOMPARE(result, int(QDialog::Rejected));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione", "Nessuna voce selezionata!", Warning, Ok);

    // Empty grid: the same.
    const int empty = ShowModal(dialog, [&] {
        Search(dialog, m_year + 1, QString());
        Trigger(dialog, QStringLiteral("actOK"));
    });
    QCOMPARE(empty, int(QDialog::Rejected));
    QCOMPARE(m_boxes->Messages().size(), 2);
    KRV_COMPARE_BOX(m_boxes->Messages().at(1), "Attenzione", "Nessuna voce selezionata!", Warning, Ok);

    const int accepted = ShowModal(dialog, [&] {
        Search(dialog, m_year, QString());
        ClickCheck(dialog->gridRisultati(), 1);
        Trigger(dialog, QStringLiteral("actOK"));
    });
    QCOMPARE(accepted, int(QDialog::Accepted));
    QCOMPARE(dialog->GetSelected(), QList<int>{21});
    QCOMPARE(m_boxes->Messages().size(), 2);
}

void TestModSelezionaDdtScaricoMulti::doubleClickChoosesNothing()
{
    auto dialog = Dialog();
    bool stayedOpen = false;
    const int result = ShowModal(dialog, [&] {
        Trigger(dialog, QStringLiteral("actSelezionaTutti"));
        Trigger(dialog, QStringLiteral("actCerca"));
        Trigger(dialog, QStringLiteral("actSelezionaTutti"));
        QTest::mouseClick(dialog->gridRisultati()->viewport(), Qt::LeftButton, {}, Centre(dialog->gridRisultati(), 0));
        QTest::mouseDClick(dialog->gridRisultati()->viewport(), Qt::LeftButton, {}, Centre(dialog->gridRisultati(), 0));
        stayedOpen = dialog->isVisible();
    });
    QVERIFY(stayedOpen);
    QCOMPARE(result, int(QDialog::Rejected));
    QVERIFY(m_boxes->Messages().isEmpty());
}

// The caller resets and searches; showing it again reloads nothing.
void TestModSelezionaDdtScaricoMulti::dialogKeepsItsRowsBetweenUses()
{
    auto dialog = Dialog();
    ShowModal(dialog, [&] {
        Search(dialog, m_year, QStringLiteral("Bianchi"));
        ClickCheck(dialog->gridRisultati(), 0);
        Trigger(dialog, QStringLiteral("actOK"));
    });
    InsertDdt(m_module->Database, 24, 4, QDate(m_year, 3, 1), QStringLiteral("C002"), QStringLiteral("Bianchi S.r.l."));

    QStringList shown;
    QString name;
    QList<int> selected;
    ShowModal(dialog, [&] {
        shown = Column(dialog->gridRisultati(), 0);
        name = Nome(dialog)->text();
        selected = dialog->GetSelected();
    });
    QCOMPARE(shown, QStringList{QStringLiteral("21")});
    QCOMPARE(name, QStringLiteral("Bianchi"));
    QCOMPARE(selected, QList<int>{21});

    ShowModal(dialog, [&] { Trigger(dialog, QStringLiteral("actCerca")); });
    QCOMPARE(Column(dialog->gridRisultati(), 0), (QStringList{"24", "21"}));
}

void TestModSelezionaDdtScaricoMulti::searchFailureShowsItsMessageAndEmptiesTheGrid()
{
    auto dialog = Dialog();
    Trigger(dialog, QStringLiteral("actCerca"));
    QCOMPARE(dialog->gridRisultati()->rowCount(), 3);
    m_module->Database.Exec(QStringLiteral("ALTER TABLE DDT_SCARICO DROP CLI_CODICE"));

    Trigger(dialog, QStringLiteral("actCerca"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    const TQ3Message &box = m_boxes->Messages().first();
    QCOMPARE(box.Title, QStringLiteral("Errore"));
    QCOMPARE(box.Icon, TQ3MsgIcon::Error);
    QVERIFY(box.Text.contains(QLatin1String("CLI_CODICE")));
    QCOMPARE(dialog->gridRisultati()->rowCount(), 0);
    QVERIFY(!dialog->isVisible());
}

// What the invoice's loading does with the choice: the notes in grid order,
// each with its reference and closing lines; the note without lines adds
// nothing.
void TestModSelezionaDdtScaricoMulti::chosenNotesGiveTheirLinesInGridOrder()
{
    auto dialog = Dialog();
    Trigger(dialog, QStringLiteral("actRipristina"));
    dialog->SetRagioneSociale(QStringLiteral("Idraulica Dell'Acqua"));
    dialog->actCercaExecute();
    QCOMPARE(Column(dialog->gridRisultati(), 0), (QStringList{"22", "20"}));
    const int result = ShowModal(dialog, [&] {
        Search(dialog, m_year, QString());
        Trigger(dialog, QStringLiteral("actSelezionaTutti"));
        Trigger(dialog, QStringLiteral("actOK"));
    });
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(dialog->GetSelected(), (QList<int>{22, 21, 20}));

    QList<QStringList> righe;
    KRVCaricaDaDdt(m_module->Db(), dialog->GetSelected(), [&righe](const QStringList &riga) { righe << riga; });
    QStringList descriptions;
    for (const QStringList &riga : std::as_const(righe))
        descriptions << riga.at(3);
    const QString yy = QString::number(m_year % 100).rightJustified(2, QLatin1Char('0'));
    QCOMPARE(descriptions, (QStringList{"-- Rif. D.d.T. n. 3 del 01/02/" + yy + " --", "Ritiro in sede", "Montaggio",
                                        "-- --", "-- Rif. D.d.T. n. 1 del 10/01/" + yy + " --", "Rubinetto", "-- --"}));
    QCOMPARE(righe.at(2), (QStringList{"-1", "10,00", "SRV1", "Montaggio", "2", "40,00", "0,00", "1,00", "40,00", "1",
                                       "20", "2", "ORE", "Servizio"}));
    QCOMPARE(righe.at(5), (QStringList{"-1", "5,00", "ART1", "Rubinetto", "3", "12,50", "0,00", "2,00", "25,00", "1",
                                       "20", "4", "PZ", "Articolo"}));
}

QTEST_MAIN(TestModSelezionaDdtScaricoMulti)
#include "tst_modselezionaddtscaricomulti.moc"
