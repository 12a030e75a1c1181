#include "KRVCatalogoTestKit.h"
#include "KRVMastersTestKit.h"
#include "uKRVModSelezionaArticolo.h"
#include "uKRVModSelezionaServizio.h"

using namespace KRVTest;

namespace {

const QString ActArticolo = QStringLiteral("actModSelezionaArticolo");
const QString ActServizio = QStringLiteral("actModSelezionaServizio");

} // namespace

class TestModSelezionaArticoli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void createdOnceWithAnEmptyGridAndTheTree();
    void filtersAndCategorySubtree();
    void onlyTheCodeFieldSearchesOnEnter();
    void reopeningShowsTheLastSearch();
    void ripristinaClearsAndReloadsTheTree();
    void okHandsBackTheKeyAndEmptyGridWarns();
    void serviceDialogSearchesItsOwnTable();

private:
    template <typename T>
    T *Dialog(const QString &action)
    {
        Trigger(m_module->Main->Action(action));
        return m_module->Main->FormAs<T>(action);
    }

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    int m_ferramenta = 0;
    int m_viti = 0;
};

void TestModSelezionaArticoli::initTestCase()
{
    UseItalianLocale();
}

void TestModSelezionaArticoli::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    const TKRVCatalogo &articoli = KRVCatalogoArticoli();
    m_ferramenta = InsertCategoria(m_module->Database, articoli, QStringLiteral("ferramenta"));
    m_viti = InsertCategoria(m_module->Database, articoli, QStringLiteral("Viti"), m_ferramenta);
    InsertVoce(m_module->Database, articoli, QStringLiteral("F1"), QStringLiteral("Martello"), m_ferramenta);
    InsertVoce(m_module->Database, articoli, QStringLiteral("V1"), QStringLiteral("Vite"), m_viti);
    InsertVoce(m_module->Database, articoli, QStringLiteral("X1"), QStringLiteral("Vaso"), 1);
}

void TestModSelezionaArticoli::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

void TestModSelezionaArticoli::createdOnceWithAnEmptyGridAndTheTree()
{
    auto dialog = Dialog<TKRVModSelezionaArticolo>(ActArticolo);
    QVERIFY(dialog);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(Dialog<TKRVModSelezionaArticolo>(ActArticolo), dialog);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Seleziona un articolo"));
    QCOMPARE(dialog->gridRisultati()->rowCount(), 0);
    QCOMPARE(dialog->gridRisultati()->columnCount(), 4);
    QCOMPARE(dialog->gridRisultati()->Titolo(3), QStringLiteral("Categoria"));
    QCOMPARE(dialog->ApriSelezionato(), -1);

    // The tree is ordered by the names as stored: capitals first.
    InsertCategoria(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("Zinco"));
    Trigger(dialog, QStringLiteral("actRipristina"));
    const QTreeWidget *tree = dialog->Categorie()->Albero();
    QCOMPARE(dialog->Categorie()->currentText(), QStringLiteral("Tutte le categorie"));
    QCOMPARE(tree->topLevelItem(1)->text(0), QStringLiteral("Altro"));
    QCOMPARE(tree->topLevelItem(2)->text(0), QStringLiteral("Zinco"));
    QCOMPARE(tree->topLevelItem(3)->text(0), QStringLiteral("ferramenta"));
    QCOMPARE(tree->topLevelItem(3)->child(0)->text(0), QStringLiteral("Viti"));
    QVERIFY(!tree->topLevelItem(3)->child(0)->icon(0).isNull());

    dialog->show();
    QCOMPARE(dialog->gridRisultati()->rowCount(), 0);
    dialog->reject();
}

void TestModSelezionaArticoli::filtersAndCategorySubtree()
{
    auto dialog = Dialog<TKRVModSelezionaArticolo>(ActArticolo);
    Trigger(dialog, QStringLiteral("actCerca"));
    QCOMPARE(Column(dialog->gridRisultati(), 1), (QStringList{"F1", "V1", "X1"}));

    dialog->Categorie()->SelezionaCategoria(m_ferramenta);
    Trigger(dialog, QStringLiteral("actCerca"));
    QCOMPARE(Column(dialog->gridRisultati(), 1), (QStringList{"F1", "V1"}));
    QCOMPARE(Column(dialog->gridRisultati(), 3), (QStringList{"ferramenta", "Viti"}));

    Type(Field(dialog, QStringLiteral("txtDescrizione")), QStringLiteral("vit"));
    Trigger(dialog, QStringLiteral("actCerca"));
    QCOMPARE(Column(dialog->gridRisultati(), 1), QStringList{QStringLiteral("V1")});

    Type(Field(dialog, QStringLiteral("txtDescrizione")), QString());
    Type(Field(dialog, QStringLiteral("txtCodice")), QStringLiteral("x"));
    dialog->Categorie()->SelezionaCategoria(1);
    Trigger(dialog, QStringLiteral("actCerca"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Column(dialog->gridRisultati(), 1), QStringList{QStringLiteral("X1")});
}

void TestModSelezionaArticoli::onlyTheCodeFieldSearchesOnEnter()
{
    auto dialog = Dialog<TKRVModSelezionaArticolo>(ActArticolo);
    dialog->show();
    Type(Field(dialog, QStringLiteral("txtDescrizione")), QStringLiteral("Vaso"));
    PressEnter(Field(dialog, QStringLiteral("txtDescrizione")));
    QCOMPARE(dialog->gridRisultati()->rowCount(), 0);
    QVERIFY(dialog->isVisible());

    PressEnter(Field(dialog, QStringLiteral("txtCodice")));
    QCOMPARE(Column(dialog->gridRisultati(), 1), QStringList{QStringLiteral("X1")});
    dialog->reject();
}

void TestModSelezionaArticoli::reopeningShowsTheLastSearch()
{
    auto dialog = Dialog<TKRVModSelezionaArticolo>(ActArticolo);
    WhileModal(dialog, [dialog] {
        Type(Field(dialog, QStringLiteral("txtCodice")), QStringLiteral("V"));
        Trigger(dialog, QStringLiteral("actCerca"));
        Trigger(dialog, QStringLiteral("actAnnulla"));
    });
    QCOMPARE(dialog->exec(), int(QDialog::Rejected));

    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("V2"), QStringLiteral("Vite nuova"));
    QStringList shown;
    WhileModal(Dialog<TKRVModSelezionaArticolo>(ActArticolo),
               [dialog, &shown] { shown = Column(dialog->gridRisultati(), 1); });
    dialog->exec();

    QCOMPARE(shown, QStringList{QStringLiteral("V1")});
    QCOMPARE(Field(dialog, QStringLiteral("txtCodice"))->text(), QStringLiteral("V"));
}

void TestModSelezionaArticoli::ripristinaClearsAndReloadsTheTree()
{
    auto dialog = Dialog<TKRVModSelezionaArticolo>(ActArticolo);
    Type(Field(dialog, QStringLiteral("txtCodice")), QStringLiteral("V"));
    Type(Field(dialog, QStringLiteral("txtDescrizione")), QStringLiteral("Vite"));
    Trigger(dialog, QStringLiteral("actCerca"));
    dialog->Categorie()->SelezionaCategoria(m_viti);
    InsertCategoria(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("Bulloni"));

    Trigger(dialog, QStringLiteral("actRipristina"));

    QVERIFY(Field(dialog, QStringLiteral("txtCodice"))->text().isEmpty());
    QVERIFY(Field(dialog, QStringLiteral("txtDescrizione"))->text().isEmpty());
    QCOMPARE(dialog->Categorie()->currentText(), QStringLiteral("Tutte le categorie"));
    QCOMPARE(dialog->Categorie()->Albero()->topLevelItem(2)->text(0), QStringLiteral("Bulloni"));
    QCOMPARE(dialog->gridRisultati()->rowCount(), 1);
}

void TestModSelezionaArticoli::okHandsBackTheKeyAndEmptyGridWarns()
{
    auto dialog = Dialog<TKRVModSelezionaArticolo>(ActArticolo);
    WhileModal(dialog, [dialog] { Trigger(dialog, QStringLiteral("actOK")); });
    QCOMPARE(dialog->exec(), int(QDialog::Rejected));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Attenzione", "Nessuna voce selezionata!", Warning, Ok);

    const int id =
        m_module->Database.Scalar(QStringLiteral("SELECT IDANA_MAGA FROM ANA_MAGA WHERE CODICE='V1'")).toInt();
    WhileModal(dialog, [dialog] {
        Trigger(dialog, QStringLiteral("actCerca"));
        DoubleClickRow(dialog->gridRisultati(), RowOf(dialog->gridRisultati(), 1, QStringLiteral("V1")));
    });
    QCOMPARE(dialog->exec(), int(QDialog::Accepted));
    QCOMPARE(dialog->ApriSelezionato(), id);
}

void TestModSelezionaArticoli::serviceDialogSearchesItsOwnTable()
{
    const TKRVCatalogo &servizi = KRVCatalogoServizi();
    const int consulenze = InsertCategoria(m_module->Database, servizi, QStringLiteral("Consulenze"));
    const int fiscali = InsertCategoria(m_module->Database, servizi, QStringLiteral("Fiscali"), consulenze);
    InsertVoce(m_module->Database, servizi, QStringLiteral("C1"), QStringLiteral("Consulenza"), consulenze);
    const int id =
        InsertVoce(m_module->Database, servizi, QStringLiteral("F1"), QStringLiteral("Dichiarazione"), fiscali);
    InsertVoce(m_module->Database, servizi, QStringLiteral("A1"), QStringLiteral("Altro"), 1);

    auto dialog = Dialog<TKRVModSelezionaServizio>(ActServizio);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Seleziona un servizio"));
    QCOMPARE(dialog->gridRisultati()->rowCount(), 0);
    QCOMPARE(dialog->Categorie()->Albero()->topLevelItem(1)->text(0), QStringLiteral("Altro"));
    dialog->Categorie()->SelezionaCategoria(consulenze);
    Trigger(dialog, QStringLiteral("actCerca"));
    QCOMPARE(Column(dialog->gridRisultati(), 1), (QStringList{"C1", "F1"}));
    SelectRow(dialog->gridRisultati(), 1);
    QCOMPARE(dialog->ApriSelezionato(), id);
}

QTEST_MAIN(TestModSelezionaArticoli)
#include "tst_modselezionaarticoli.moc"
