#include "KRVMastersTestKit.h"
#include "uKRVInserimentoAliquoteIVA.h"
#include "uKRVInserimentoTipiPagamento.h"
#include "uKRVInserimentoUM.h"
#include "uKRVRicercaAliquoteIva.h"
#include "uKRVRicercaTipiPagamento.h"
#include "uKRVRicercaUM.h"

#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QToolBar>

using namespace KRVTest;

namespace {

const QString ActRicercaUM = QStringLiteral("actRicercaUM");
const QString ActRicercaIva = QStringLiteral("actRicercaAliquoteIVA");
const QString ActRicercaTipi = QStringLiteral("actRicercaTipiPagamento");

QList<int> Widths(const TKRVGrigliaRisultati *grid)
{
    QList<int> widths;
    for (int column = 1; column < grid->columnCount(); ++column)
        widths << grid->columnWidth(column);
    return widths;
}

void ClickHeader(const TKRVGrigliaRisultati *grid, int column)
{
    QHeaderView *header = grid->horizontalHeader();
    const QPoint where(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, where);
}

} // namespace

class TestRicercaTabelle : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void unitsListShowsEveryUnit();
    void runningTheActionTwiceShowsOneWindow();
    void vatListShowsPercentagesAndFitsItsColumns();
    void paymentTypesListHasNoFilter();
    void unitsFilterAndReset();
    void filterWithAQuoteIsSearchedAsText();
    void headerClickSortsAmountsAsNumbers();
    void doubleClickAndModificaOpenTheEditorOnTheRow();
    void nuovoOnlyShowsTheEditor();
    void deleteAsksThenRemovesTheRow();
    void deleteOnAnEmptyGridDoesNothing();
    void closingFreesTheList();

private:
    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
};

void TestRicercaTabelle::initTestCase()
{
    UseItalianLocale();
}

void TestRicercaTabelle::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
}

void TestRicercaTabelle::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

void TestRicercaTabelle::unitsListShowsEveryUnit()
{
    QVERIFY(m_module->Main->Action(ActRicercaUM)->isEnabled());
    auto list = Run<TKRVRicercaUM>(*m_module, ActRicercaUM);
    QVERIFY(list);
    QCOMPARE(list->windowTitle(), QStringLiteral("Unità di misura"));
    QCOMPARE(list->minimumSize(), QSize(800, 600));
    QVERIFY(qobject_cast<QMdiSubWindow *>(list->parentWidget()));

    TKRVGrigliaRisultati *grid = list->GridRisultati();
    QCOMPARE(grid->objectName(), QStringLiteral("GridRisultati"));
    QCOMPARE(Titles(grid), (QStringList{QString(), "Unità di misura"}));
    QVERIFY(grid->isColumnHidden(0));
    QCOMPARE(grid->editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(grid->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(grid->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(Column(grid, 1), (QStringList{"KG", "ORE", "PEZZI", "Q.LI"}));
    QCOMPARE(grid->Valore(0, 0), QStringLiteral("4"));
    // The one column takes the width less room for the scroll bar.
    QCOMPARE(grid->columnWidth(1), grid->contentsRect().width() - 21);

    auto standard = list->findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    QStringList buttons;
    for (QAction *action : standard->actions()) {
        if (!action->isSeparator())
            buttons << action->objectName();
    }
    QCOMPARE(buttons, (QStringList{"actChiudi", "actModifica", "actNuovo", "actElimina"}));
    QCOMPARE(Field(list, QStringLiteral("txtUnitaMisura"))->accessibleName(), QStringLiteral("Unità di misura"));
}

void TestRicercaTabelle::runningTheActionTwiceShowsOneWindow()
{
    auto first = Run<TKRVRicercaUM>(*m_module, ActRicercaUM);
    auto second = Run<TKRVRicercaUM>(*m_module, ActRicercaUM);
    QCOMPARE(first, second);
    QCOMPARE(m_module->MainForm->MdiArea()->subWindowList().size(), 1);
    QCOMPARE(m_module->MainForm->MdiArea()->activeSubWindow()->widget(), first);
}

void TestRicercaTabelle::vatListShowsPercentagesAndFitsItsColumns()
{
    m_module->Database.Exec(QStringLiteral("INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) "
                                           "VALUES (20, '10', 'Ridotta', 10.5)"));
    auto list = Run<TKRVRicercaAliquoteIva>(*m_module, ActRicercaIva);
    TKRVGrigliaRisultati *grid = list->GridRisultati();
    QCOMPARE(list->windowTitle(), QStringLiteral("Aliquote IVA"));
    QCOMPARE(Titles(grid), (QStringList{QString(), "Codice", "Descrizione", "Aliquota"}));
    QCOMPARE(Column(grid, 1), (QStringList{"10", "20", "N0", "N1"}));
    QCOMPARE(Column(grid, 3), (QStringList{"10,50 %", "20,00 %", "0,00 %", "0,00 %"}));
    QCOMPARE(grid->Valore(0, 3), QStringLiteral("10.50"));
    QVERIFY(Alignment(grid, 0, 3) & Qt::AlignRight);
    QVERIFY(Alignment(grid, 0, 2) & Qt::AlignLeft);
    QCOMPARE(Widths(grid), (QList<int>{60, grid->contentsRect().width() - 21 - 60 - 100, 100}));

    list->parentWidget()->resize(list->parentWidget()->size() + QSize(100, 0));
    QCOMPARE(grid->columnWidth(2), grid->contentsRect().width() - 21 - 60 - 100);
}

void TestRicercaTabelle::paymentTypesListHasNoFilter()
{
    auto list = Run<TKRVRicercaTipiPagamento>(*m_module, ActRicercaTipi);
    QCOMPARE(list->windowTitle(), QStringLiteral("Tipi di pagamento"));
    QVERIFY(list->findChildren<QLineEdit *>().isEmpty());
    QCOMPARE(Column(list->GridRisultati(), 1),
             (QStringList{"Bonifico 30 gg Data Fattura", "Bonifico 30 gg Fine Mese", "Ri.Ba. 30 gg Data Fattura",
                          "Ri.Ba. 30 gg Fine Mese", "Rimessa diretta"}));

    m_module->Database.Exec(
        QStringLiteral("INSERT INTO TIPI_PAGAMENTO (IDTIPO_PAGAMENTO, TIPO_PAGAMENTO) VALUES (9, 'Assegno')"));
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(Column(list->GridRisultati(), 1).first(), QStringLiteral("Assegno"));
    QCOMPARE(list->GridRisultati()->rowCount(), 6);
}

void TestRicercaTabelle::unitsFilterAndReset()
{
    auto list = Run<TKRVRicercaUM>(*m_module, ActRicercaUM);
    QLineEdit *filter = Field(list, QStringLiteral("txtUnitaMisura"));
    Type(filter, QStringLiteral("e"));
    PressEnter(filter);
    QCOMPARE(Column(list->GridRisultati(), 1), (QStringList{"ORE", "PEZZI"}));

    // "Ripristina" empties the filter and leaves the rows as they are.
    Trigger(list, QStringLiteral("actRipristina"));
    QVERIFY(filter->text().isEmpty());
    QCOMPARE(Column(list->GridRisultati(), 1), (QStringList{"ORE", "PEZZI"}));
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(list->GridRisultati()->rowCount(), 4);
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestRicercaTabelle::filterWithAQuoteIsSearchedAsText()
{
    m_module->Database.Exec(QStringLiteral("INSERT INTO UM (IDUM, UM) VALUES (30, 'D''AC')"));
    m_module->Database.Exec(QStringLiteral("INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) "
                                           "VALUES (30, 'AG', 'Regime dell''agricoltura', 4)"));
    auto units = Run<TKRVRicercaUM>(*m_module, ActRicercaUM);
    Type(Field(units, QStringLiteral("txtUnitaMisura")), QStringLiteral("d'a"));
    PressEnter(Field(units, QStringLiteral("txtUnitaMisura")));
    QCOMPARE(Column(units->GridRisultati(), 1), QStringList{QStringLiteral("D'AC")});

    auto rates = Run<TKRVRicercaAliquoteIva>(*m_module, ActRicercaIva);
    Type(Field(rates, QStringLiteral("txtDescrizione")), QStringLiteral("DELL'A"));
    PressEnter(Field(rates, QStringLiteral("txtDescrizione")));
    QCOMPARE(Column(rates->GridRisultati(), 2), QStringList{QStringLiteral("Regime dell'agricoltura")});
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestRicercaTabelle::headerClickSortsAmountsAsNumbers()
{
    m_module->Database.Exec(QStringLiteral("INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) "
                                           "VALUES (20, 'X1', 'Piena', 100)"));
    m_module->Database.Exec(QStringLiteral("INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) "
                                           "VALUES (21, 'X2', 'Minima', 4)"));
    auto list = Run<TKRVRicercaAliquoteIva>(*m_module, ActRicercaIva);
    TKRVGrigliaRisultati *grid = list->GridRisultati();
    QCOMPARE(Column(grid, 1), (QStringList{"20", "N0", "N1", "X1", "X2"}));

    ClickHeader(grid, 3);
    QCOMPARE(Column(grid, 3), (QStringList{"0,00 %", "0,00 %", "4,00 %", "20,00 %", "100,00 %"}));
    ClickHeader(grid, 3);
    QCOMPARE(Column(grid, 3).first(), QStringLiteral("100,00 %"));
    ClickHeader(grid, 2);
    QCOMPARE(Column(grid, 2),
             (QStringList{"Aliquota esclusa", "Aliquota esente", "Aliquota standard", "Minima", "Piena"}));

    // A new search shows the query's order again.
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(Column(grid, 1), (QStringList{"20", "N0", "N1", "X1", "X2"}));
}

void TestRicercaTabelle::doubleClickAndModificaOpenTheEditorOnTheRow()
{
    auto list = Run<TKRVRicercaUM>(*m_module, ActRicercaUM);
    TKRVGrigliaRisultati *grid = list->GridRisultati();
    DoubleClickRow(grid, RowOf(grid, 1, QStringLiteral("ORE")));

    auto editor = m_module->Main->FormAs<TKRVInserimentoUM>(QStringLiteral("actInserimentoUM"));
    QVERIFY(editor);
    QCOMPARE(editor->IdRecord(), 2);
    QCOMPARE(Field(editor, QStringLiteral("txtUm"))->text(), QStringLiteral("ORE"));
    QCOMPARE(m_module->MainForm->MdiArea()->activeSubWindow()->widget(), editor);

    SelectRow(grid, RowOf(grid, 1, QStringLiteral("KG")));
    Trigger(list, QStringLiteral("actModifica"));
    QCOMPARE(m_module->Main->Form(QStringLiteral("actInserimentoUM")), editor);
    QCOMPARE(editor->IdRecord(), 4);

    // The editor asks about its own unsaved changes.
    Type(Field(editor, QStringLiteral("txtUm")), QStringLiteral("KGS"));
    m_boxes->Enqueue(TQ3MsgResult::No);
    SelectRow(grid, RowOf(grid, 1, QStringLiteral("PEZZI")));
    Trigger(list, QStringLiteral("actModifica"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma",
                    "Ci sono delle modifiche non salvate.\n\rContinuare comunque?", Question, YesNo);
    QCOMPARE(editor->IdRecord(), 4);
    QCOMPARE(Field(editor, QStringLiteral("txtUm"))->text(), QStringLiteral("KGS"));
}

void TestRicercaTabelle::nuovoOnlyShowsTheEditor()
{
    auto list = Run<TKRVRicercaAliquoteIva>(*m_module, ActRicercaIva);
    Trigger(list, QStringLiteral("actNuovo"));
    auto editor = m_module->Main->FormAs<TKRVInserimentoAliquoteIVA>(QStringLiteral("actInserimentoAliquoteIVA"));
    QVERIFY(editor);
    QVERIFY(editor->NewRecord());

    QCOMPARE(editor->ApriRecord(1), 0);
    Trigger(list, QStringLiteral("actNuovo"));
    QCOMPARE(editor->IdRecord(), 1);
    QCOMPARE(m_module->MainForm->MdiArea()->activeSubWindow()->widget(), editor);
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestRicercaTabelle::deleteAsksThenRemovesTheRow()
{
    auto list = Run<TKRVRicercaTipiPagamento>(*m_module, ActRicercaTipi);
    TKRVGrigliaRisultati *grid = list->GridRisultati();
    const int row = RowOf(grid, 1, QStringLiteral("Rimessa diretta"));
    SelectRow(grid, row);

    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(list, QStringLiteral("actElimina"));
    QCOMPARE(grid->rowCount(), 5);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM TIPI_PAGAMENTO")).toInt(), 5);

    Trigger(list, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 2);
    for (const TQ3Message &box : m_boxes->Messages())
        KRV_COMPARE_BOX(box, "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(RowOf(grid, 1, QStringLiteral("Rimessa diretta")), -1);
    QCOMPARE(grid->rowCount(), 4);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM TIPI_PAGAMENTO WHERE IDTIPO_PAGAMENTO=1"))
                 .toInt(),
             0);
}

void TestRicercaTabelle::deleteOnAnEmptyGridDoesNothing()
{
    auto list = Run<TKRVRicercaUM>(*m_module, ActRicercaUM);
    Type(Field(list, QStringLiteral("txtUnitaMisura")), QStringLiteral("nessuna"));
    PressEnter(Field(list, QStringLiteral("txtUnitaMisura")));
    QCOMPARE(list->GridRisultati()->rowCount(), 0);

    Trigger(list, QStringLiteral("actElimina"));
    Trigger(list, QStringLiteral("actModifica"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QVERIFY(!m_module->Main->Form(QStringLiteral("actInserimentoUM")));
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM UM")).toInt(), 4);
}

void TestRicercaTabelle::closingFreesTheList()
{
    QPointer<QWidget> list = Run<TKRVRicercaAliquoteIva>(*m_module, ActRicercaIva);
    Trigger(list, QStringLiteral("actChiudi"));
    ProcessDeletes();
    QVERIFY(!list);
    QVERIFY(!m_module->Main->Form(ActRicercaIva));
    QVERIFY(m_module->MainForm->MdiArea()->subWindowList().isEmpty());

    list = Run<TKRVRicercaAliquoteIva>(*m_module, ActRicercaIva);
    CloseFrame(list);
    QVERIFY(!list);
    QVERIFY(!m_module->Main->Form(ActRicercaIva));
    QVERIFY(m_boxes->Messages().isEmpty());
}

QTEST_MAIN(TestRicercaTabelle)
#include "tst_ricercatabelle.moc"
