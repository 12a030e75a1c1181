#include "KRVCatalogoTestKit.h"
#include "KRVMastersTestKit.h"
#include "uKRVInserimentoServizi.h"
#include "uKRVRicercaServizi.h"

using namespace KRVTest;

namespace {

const QString ActList = QStringLiteral("actRicercaServizi");

} // namespace

class TestRicercaServizi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void opensWithTheTreeAndNoSearch();
    void filtersAndCategorySubtree();
    void ripristinaClearsFiltersAndReloadsTheTree();
    void deleteFollowsTheCodeFilterText();
    void nuovoShowsTheEditor();

private:
    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    TKRVRicercaServizi *m_list = nullptr;
};

void TestRicercaServizi::initTestCase()
{
    UseItalianLocale();
}

void TestRicercaServizi::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    InsertVoce(m_module->Database, KRVCatalogoServizi(), QStringLiteral("S1"), QStringLiteral("Non cercato"));
    m_list = Run<TKRVRicercaServizi>(*m_module, ActList);
}

void TestRicercaServizi::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

void TestRicercaServizi::opensWithTheTreeAndNoSearch()
{
    QCOMPARE(m_list->windowTitle(), QStringLiteral("Ricerca servizi"));
    QCOMPARE(m_list->size(), QSize(800, 600));
    QCOMPARE(m_list->GridRisultati()->rowCount(), 0);
    QCOMPARE(m_list->Categorie()->currentText(), QStringLiteral("Tutte le categorie"));
    QCOMPARE(m_list->Categorie()->Albero()->topLevelItem(1)->text(0), QStringLiteral("Altro"));
    QVERIFY(!m_list->findChild<QAction *>(QStringLiteral("actPageNext")));
    QVERIFY(!m_list->findChild<QAction *>(QStringLiteral("actStampaListinoIVATO")));

    const TKRVGrigliaRisultati *grid = m_list->GridRisultati();
    QCOMPARE(grid->columnCount(), 6);
    QVERIFY(grid->isColumnHidden(0));
    QVERIFY(grid->isColumnHidden(3));
    QCOMPARE(grid->Titolo(1), QStringLiteral("Codice"));
    QCOMPARE(grid->Titolo(4), QStringLiteral("Categoria"));
    QCOMPARE(grid->Titolo(5), QStringLiteral("Prezzo"));

    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(Column(grid, 1), QStringList{QStringLiteral("S1")});
    QCOMPARE(grid->Testo(0, 4), QStringLiteral("Altro"));
    QCOMPARE(grid->Testo(0, 5), FormatCurrency(12.5));
    QVERIFY(Alignment(grid, 0, 5) & Qt::AlignRight);
}

void TestRicercaServizi::filtersAndCategorySubtree()
{
    const TKRVCatalogo &servizi = KRVCatalogoServizi();
    const int consulenze = InsertCategoria(m_module->Database, servizi, QStringLiteral("Consulenze"));
    const int fiscali = InsertCategoria(m_module->Database, servizi, QStringLiteral("Fiscali"), consulenze);
    InsertVoce(m_module->Database, servizi, QStringLiteral("C1"), QStringLiteral("Consulenza d'impresa"), consulenze);
    InsertVoce(m_module->Database, servizi, QStringLiteral("F1"), QStringLiteral("Dichiarazione"), fiscali);
    Trigger(m_list, QStringLiteral("actRipristina"));

    m_list->Categorie()->SelezionaCategoria(consulenze);
    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(Column(m_list->GridRisultati(), 1), (QStringList{"C1", "F1"}));

    Type(Field(m_list, QStringLiteral("txtDescrizione")), QStringLiteral("d'imp"));
    PressEnter(Field(m_list, QStringLiteral("txtDescrizione")));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Column(m_list->GridRisultati(), 1), QStringList{QStringLiteral("C1")});

    Trigger(m_list, QStringLiteral("actRipristina"));
    m_list->Categorie()->SelezionaCategoria(fiscali);
    Type(Field(m_list, QStringLiteral("txtCodice")), QStringLiteral("f"));
    PressEnter(Field(m_list, QStringLiteral("txtCodice")));
    QCOMPARE(Column(m_list->GridRisultati(), 1), QStringList{QStringLiteral("F1")});
}

void TestRicercaServizi::ripristinaClearsFiltersAndReloadsTheTree()
{
    Type(Field(m_list, QStringLiteral("txtCodice")), QStringLiteral("S"));
    Type(Field(m_list, QStringLiteral("txtDescrizione")), QStringLiteral("Non"));
    Trigger(m_list, QStringLiteral("actCerca"));
    m_list->Categorie()->SelezionaCategoria(1);
    InsertCategoria(m_module->Database, KRVCatalogoServizi(), QStringLiteral("Nuova"));

    Trigger(m_list, QStringLiteral("actRipristina"));

    QVERIFY(Field(m_list, QStringLiteral("txtCodice"))->text().isEmpty());
    QVERIFY(Field(m_list, QStringLiteral("txtDescrizione"))->text().isEmpty());
    QCOMPARE(m_list->Categorie()->currentText(), QStringLiteral("Tutte le categorie"));
    QCOMPARE(m_list->Categorie()->Albero()->topLevelItemCount(), 3);
    QCOMPARE(m_list->GridRisultati()->rowCount(), 1);
}

void TestRicercaServizi::deleteFollowsTheCodeFilterText()
{
    InsertVoce(m_module->Database, KRVCatalogoServizi(), QStringLiteral("S2"), QStringLiteral("Usato"));
    const int fattura = KRVInsertDocumento(m_module->Database, QStringLiteral("FATT_VEND"), 1, 2024);
    KRVInsertRiga(m_module->Database, QStringLiteral("FATT_VEND_DETT"), fattura, QStringLiteral("Servizio"),
                  QStringLiteral("S2"));
    Trigger(m_list, QStringLiteral("actCerca"));
    TKRVGrigliaRisultati *grid = m_list->GridRisultati();

    // The rule is asked about the code typed in the filter, and lets it go.
    Type(Field(m_list, QStringLiteral("txtCodice")), QStringLiteral("S2"));
    SelectRow(grid, RowOf(grid, 1, QStringLiteral("S1")));
    m_boxes->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_list, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE FROM SERVIZI")), QStringList{QStringLiteral("S2")});
    QCOMPARE(Column(grid, 1), QStringList{QStringLiteral("S2")});
}

void TestRicercaServizi::nuovoShowsTheEditor()
{
    Trigger(m_list, QStringLiteral("actNuovo"));
    auto editor = m_module->Main->FormAs<TKRVInserimentoServizi>(QStringLiteral("actInserimentoServizi"));
    QVERIFY(editor);
    QVERIFY(editor->NewRecord());
}

QTEST_MAIN(TestRicercaServizi)
#include "tst_ricercaservizi.moc"
