#include "KRVCatalogoTestKit.h"
#include "KRVMastersTestKit.h"
#include "uKRVInserimentoArticoli.h"
#include "uKRVRicercaArticoli.h"

#include <QHeaderView>
#include <QToolBar>
#include <QToolButton>

using namespace KRVTest;

namespace {

const QString ActList = QStringLiteral("actRicercaArticoli");
const QStringList PageActions{QStringLiteral("actPageFirst"), QStringLiteral("actPagePrevious"),
                              QStringLiteral("actPageNext"), QStringLiteral("actPageLast")};

} // namespace

class TestRicercaArticoli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void opensWithTheTreeAndNoSearch();
    void pagesOfTwoHundred_data();
    void pagesOfTwoHundred();
    void pageActionsWalkThePages();
    void pagingRepeatsThePreviousSearch();
    void filtersAreUpperCasedAndQuoted();
    void parentCategoryFindsItsSubCategories();
    void ripristinaClearsFiltersAndPage();
    void pricesShowAsCurrencyAndSortAsAmounts();
    void deleteFollowsTheCodeFilterText();
    void modificaOpensTheSelectedArticle();

private:
    QString Indicator() const { return Field<QToolButton>(m_list, QStringLiteral("btnPagina"))->text(); }
    QList<bool> PageStates() const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    TKRVRicercaArticoli *m_list = nullptr;
};

void TestRicercaArticoli::initTestCase()
{
    UseItalianLocale();
}

void TestRicercaArticoli::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    m_list = Run<TKRVRicercaArticoli>(*m_module, ActList);
}

void TestRicercaArticoli::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

QList<bool> TestRicercaArticoli::PageStates() const
{
    QList<bool> states;
    for (const QString &name : PageActions)
        states << Action(m_list, name)->isEnabled();
    return states;
}

void TestRicercaArticoli::opensWithTheTreeAndNoSearch()
{
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("A1"), QStringLiteral("Non cercato"));
    CloseFrame(m_list);
    m_list = Run<TKRVRicercaArticoli>(*m_module, ActList);

    QCOMPARE(m_list->windowTitle(), QStringLiteral("Gestione articoli"));
    QCOMPARE(m_list->size(), QSize(800, 600));
    QCOMPARE(m_list->GridRisultati()->rowCount(), 0);
    QCOMPARE(m_list->PageCurrent(), 1);
    QCOMPARE(m_list->PageTotal(), 1);
    QCOMPARE(Indicator(), QStringLiteral("Pagina 1 di 1"));
    QCOMPARE(PageStates(), (QList<bool>{false, false, false, false}));
    QVERIFY(m_list->LastSearchString().isEmpty());
    QVERIFY(Field<QToolButton>(m_list, QStringLiteral("btnPagina"))->autoRaise());

    auto categoria = m_list->Categorie();
    QCOMPARE(categoria->objectName(), QStringLiteral("txtCategoria"));
    QCOMPARE(categoria->currentText(), QStringLiteral("Tutte le categorie"));
    QCOMPARE(categoria->Albero()->topLevelItemCount(), 2);
    QCOMPARE(categoria->Albero()->topLevelItem(1)->text(0), QStringLiteral("Altro"));
    QVERIFY(!categoria->Albero()->topLevelItem(1)->icon(0).isNull());

    // The price list is shown and ready.
    QAction *listino = Action(m_list, QStringLiteral("actStampaListinoIVATO"));
    QCOMPARE(listino->text(), QStringLiteral("Listino IVATO"));
    QCOMPARE(listino->toolTip(), QStringLiteral("Listino prezzi IVATO"));
    QVERIFY(listino->isEnabled());
    auto bar = m_list->findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    QVERIFY(bar->widgetForAction(listino)->isVisible());

    // Columns after the hidden key: code, description, hidden category key, category, price.
    const TKRVGrigliaRisultati *grid = m_list->GridRisultati();
    QCOMPARE(grid->columnCount(), 6);
    QVERIFY(grid->isColumnHidden(0));
    QVERIFY(grid->isColumnHidden(3));
    QCOMPARE(grid->Titolo(1), QStringLiteral("Codice"));
    QCOMPARE(grid->columnWidth(1), 150);
    QCOMPARE(grid->Titolo(2), QStringLiteral("Descrizione"));
    QCOMPARE(grid->Titolo(4), QStringLiteral("Categoria"));
    QCOMPARE(grid->columnWidth(4), 150);
    QCOMPARE(grid->Titolo(5), QStringLiteral("Prezzo"));
    QCOMPARE(grid->columnWidth(5), 100);
    QCOMPARE(Field(m_list, QStringLiteral("txtCodice"))->accessibleName(), QStringLiteral("Codice"));
}

void TestRicercaArticoli::pagesOfTwoHundred_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("pages");
    QTest::addColumn<QString>("indicator");
    QTest::addColumn<bool>("further");
    QTest::newRow("400") << 400 << 2 << QStringLiteral("Pagina 1 di 2") << true;
    QTest::newRow("401") << 401 << 3 << QStringLiteral("Pagina 1 di 3") << true;
    QTest::newRow("0") << 0 << 0 << QStringLiteral("Pagina 1 di 0") << false;
}

void TestRicercaArticoli::pagesOfTwoHundred()
{
    QFETCH(int, rows);
    QFETCH(int, pages);
    QFETCH(QString, indicator);
    QFETCH(bool, further);
    InsertVoci(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("A"), rows);

    Trigger(m_list, QStringLiteral("actCerca"));

    QCOMPARE(m_list->PageTotal(), pages);
    QCOMPARE(m_list->PageCurrent(), 1);
    QCOMPARE(Indicator(), indicator);
    QCOMPARE(m_list->GridRisultati()->rowCount(), qMin(rows, 200));
    QCOMPARE(PageStates(), (QList<bool>{false, false, further, further}));
}

void TestRicercaArticoli::pageActionsWalkThePages()
{
    InsertVoci(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("A"), 401);
    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(m_list->GridRisultati()->Testo(0, 1), QStringLiteral("A0001"));

    Trigger(m_list, QStringLiteral("actPageNext"));
    QCOMPARE(m_list->PageCurrent(), 2);
    QCOMPARE(Indicator(), QStringLiteral("Pagina 2 di 3"));
    QCOMPARE(m_list->GridRisultati()->rowCount(), 200);
    QCOMPARE(m_list->GridRisultati()->Testo(0, 1), QStringLiteral("A0201"));
    QCOMPARE(PageStates(), (QList<bool>{true, true, true, true}));

    Trigger(m_list, QStringLiteral("actPageLast"));
    QCOMPARE(Indicator(), QStringLiteral("Pagina 3 di 3"));
    QCOMPARE(Column(m_list->GridRisultati(), 1), QStringList{QStringLiteral("A0401")});
    QCOMPARE(PageStates(), (QList<bool>{true, true, false, false}));

    Trigger(m_list, QStringLiteral("actPagePrevious"));
    QCOMPARE(m_list->PageCurrent(), 2);

    Trigger(m_list, QStringLiteral("actPageFirst"));
    QCOMPARE(m_list->PageCurrent(), 1);
    QCOMPARE(m_list->GridRisultati()->Testo(0, 1), QStringLiteral("A0001"));
    QCOMPARE(PageStates(), (QList<bool>{false, false, true, true}));
}

void TestRicercaArticoli::pagingRepeatsThePreviousSearch()
{
    InsertVoci(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("A"), 250);
    InsertVoci(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("B"), 10);
    Type(Field(m_list, QStringLiteral("txtCodice")), QStringLiteral("a"));
    PressEnter(Field(m_list, QStringLiteral("txtCodice")));
    QCOMPARE(m_list->LastSearchString(), QStringLiteral("WHERE UPPER(CODICE) CONTAINING 'A'"));
    QCOMPARE(m_list->PageTotal(), 2);

    Type(Field(m_list, QStringLiteral("txtCodice")), QStringLiteral("B"));
    Trigger(m_list, QStringLiteral("actPageNext"));

    QCOMPARE(m_list->PageCurrent(), 2);
    QCOMPARE(m_list->GridRisultati()->rowCount(), 50);
    QCOMPARE(m_list->GridRisultati()->Testo(0, 1), QStringLiteral("A0201"));
    QCOMPARE(m_list->LastSearchString(), QStringLiteral("WHERE UPPER(CODICE) CONTAINING 'A'"));
}

void TestRicercaArticoli::filtersAreUpperCasedAndQuoted()
{
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("VITE'X"), QStringLiteral("Vite d'acciaio"));
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("DADO"), QStringLiteral("Dado d'acciaio"));
    Type(Field(m_list, QStringLiteral("txtCodice")), QStringLiteral("e'x"));
    Type(Field(m_list, QStringLiteral("txtDescrizione")), QStringLiteral("d'acc"));
    Trigger(m_list, QStringLiteral("actCerca"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_list->LastSearchString(),
             QStringLiteral("WHERE UPPER(CODICE) CONTAINING 'E''X' AND UPPER(DESCRIZIONE) CONTAINING 'D''ACC'"));
    QCOMPARE(Column(m_list->GridRisultati(), 1), QStringList{QStringLiteral("VITE'X")});
}

void TestRicercaArticoli::parentCategoryFindsItsSubCategories()
{
    const TKRVCatalogo &articoli = KRVCatalogoArticoli();
    const int ferramenta = InsertCategoria(m_module->Database, articoli, QStringLiteral("Ferramenta"));
    const int viti = InsertCategoria(m_module->Database, articoli, QStringLiteral("Viti"), ferramenta);
    const int legno = InsertCategoria(m_module->Database, articoli, QStringLiteral("Viti da legno"), viti);
    InsertVoce(m_module->Database, articoli, QStringLiteral("F1"), QStringLiteral("Martello"), ferramenta);
    InsertVoce(m_module->Database, articoli, QStringLiteral("V1"), QStringLiteral("Vite"), viti);
    InsertVoce(m_module->Database, articoli, QStringLiteral("L1"), QStringLiteral("Vite da legno"), legno);
    InsertVoce(m_module->Database, articoli, QStringLiteral("X1"), QStringLiteral("Altro"), 1);
    InsertCategoria(m_module->Database, articoli, QStringLiteral("bulloni"));
    Trigger(m_list, QStringLiteral("actRipristina"));

    // The tree orders siblings by their upper-cased names, below "Tutte le categorie".
    const QTreeWidget *tree = m_list->Categorie()->Albero();
    QCOMPARE(tree->topLevelItem(0)->text(0), QStringLiteral("Tutte le categorie"));
    QCOMPARE(tree->topLevelItem(1)->text(0), QStringLiteral("Altro"));
    QCOMPARE(tree->topLevelItem(2)->text(0), QStringLiteral("bulloni"));
    QCOMPARE(tree->topLevelItem(3)->text(0), QStringLiteral("Ferramenta"));
    QCOMPARE(tree->topLevelItem(3)->child(0)->child(0)->text(0), QStringLiteral("Viti da legno"));

    m_list->Categorie()->SelezionaCategoria(ferramenta);
    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(m_list->LastSearchString(),
             QStringLiteral("WHERE ANA_MAGA.IDCATEGORIA_ANA_MAGA IN (%1,%2,%3)").arg(ferramenta).arg(viti).arg(legno));
    QCOMPARE(Column(m_list->GridRisultati(), 1), (QStringList{"F1", "L1", "V1"}));
    QCOMPARE(Column(m_list->GridRisultati(), 4), (QStringList{"Ferramenta", "Viti da legno", "Viti"}));

    m_list->Categorie()->SelezionaCategoria(viti);
    Type(Field(m_list, QStringLiteral("txtCodice")), QStringLiteral("l"));
    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(m_list->LastSearchString(),
             QStringLiteral("WHERE UPPER(CODICE) CONTAINING 'L' AND ANA_MAGA.IDCATEGORIA_ANA_MAGA IN (%1,%2)")
                 .arg(viti)
                 .arg(legno));
    QCOMPARE(Column(m_list->GridRisultati(), 1), QStringList{QStringLiteral("L1")});
}

void TestRicercaArticoli::ripristinaClearsFiltersAndPage()
{
    InsertVoci(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("A"), 201);
    Trigger(m_list, QStringLiteral("actCerca"));
    Trigger(m_list, QStringLiteral("actPageNext"));
    Type(Field(m_list, QStringLiteral("txtCodice")), QStringLiteral("A"));
    Type(Field(m_list, QStringLiteral("txtDescrizione")), QStringLiteral("Voce"));
    m_list->Categorie()->SelezionaCategoria(1);
    InsertCategoria(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("Nuova"));

    Trigger(m_list, QStringLiteral("actRipristina"));

    QVERIFY(Field(m_list, QStringLiteral("txtCodice"))->text().isEmpty());
    QVERIFY(Field(m_list, QStringLiteral("txtDescrizione"))->text().isEmpty());
    QVERIFY(m_list->LastSearchString().isEmpty());
    QCOMPARE(m_list->PageCurrent(), 1);
    QCOMPARE(m_list->Categorie()->currentText(), QStringLiteral("Tutte le categorie"));
    QCOMPARE(m_list->Categorie()->Albero()->topLevelItemCount(), 3);
    // No search: the grid keeps its rows.
    QCOMPARE(m_list->GridRisultati()->rowCount(), 1);
}

void TestRicercaArticoli::pricesShowAsCurrencyAndSortAsAmounts()
{
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("A"), QStringLiteral("Caro"), 1,
               QStringLiteral("1250.5"));
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("B"), QStringLiteral("Economico"), 1,
               QStringLiteral("9"));
    Trigger(m_list, QStringLiteral("actCerca"));
    TKRVGrigliaRisultati *grid = m_list->GridRisultati();
    QCOMPARE(grid->Testo(0, 5), FormatCurrency(1250.5));
    QVERIFY(grid->Testo(0, 5).contains(QStringLiteral("1.250,50")));
    QVERIFY(Alignment(grid, 0, 5) & Qt::AlignRight);
    QVERIFY(Alignment(grid, 0, 1) & Qt::AlignLeft);

    QTest::mouseClick(grid->horizontalHeader()->viewport(), Qt::LeftButton, {},
                      QPoint(grid->horizontalHeader()->sectionViewportPosition(5) + 10, 5));
    QCOMPARE(Column(grid, 1), (QStringList{"B", "A"}));
}

void TestRicercaArticoli::deleteFollowsTheCodeFilterText()
{
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("USATO"), QStringLiteral("In fattura"));
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("LIBERO"), QStringLiteral("Libero"));
    const int fattura = KRVInsertDocumento(m_module->Database, QStringLiteral("FATT_VEND"), 1, 2024);
    KRVInsertRiga(m_module->Database, QStringLiteral("FATT_VEND_DETT"), fattura, QStringLiteral("Articolo"),
                  QStringLiteral("USATO"));
    Trigger(m_list, QStringLiteral("actCerca"));
    TKRVGrigliaRisultati *grid = m_list->GridRisultati();

    // Nothing happens without a selected row.
    grid->clearSelection();
    Trigger(m_list, QStringLiteral("actElimina"));
    QVERIFY(m_boxes->Messages().isEmpty());

    // With the code filter empty the test passes and the selected row goes,
    // even though documents refer to it; No first keeps it.
    SelectRow(grid, RowOf(grid, 1, QStringLiteral("USATO")));
    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_list, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(grid->rowCount(), 2);

    m_boxes->Clear();
    m_boxes->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_list, QStringLiteral("actElimina"));
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE FROM ANA_MAGA")),
             QStringList{QStringLiteral("LIBERO")});
    QCOMPARE(Column(grid, 1), QStringList{QStringLiteral("LIBERO")});

    // The code filter's text, not the row, goes to the delete rule, which lets
    // every code go: the selected row is deleted whatever the filter holds.
    Type(Field(m_list, QStringLiteral("txtCodice")), QStringLiteral("USATO"));
    m_boxes->Clear();
    SelectRow(grid, 0);
    Trigger(m_list, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM ANA_MAGA")).toInt(), 0);
}

void TestRicercaArticoli::modificaOpensTheSelectedArticle()
{
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("A"), QStringLiteral("Primo"));
    const int id =
        InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("B"), QStringLiteral("Secondo"));
    Trigger(m_list, QStringLiteral("actCerca"));
    DoubleClickRow(m_list->GridRisultati(), 1);

    auto editor = m_module->Main->FormAs<TKRVInserimentoArticoli>(QStringLiteral("actInserimentoArticoli"));
    QVERIFY(editor);
    QCOMPARE(editor->IdRecord(), id);
    QCOMPARE(Field(editor, QStringLiteral("txtDescrizione"))->text(), QStringLiteral("Secondo"));
}

QTEST_MAIN(TestRicercaArticoli)
#include "tst_ricercaarticoli.moc"
