#include "../data/KRVServiceRows.h"
#include "KRVMastersTestKit.h"
#include "uKRVInserimentoTipiPagamento.h"
#include "uKRVRicercaTipiPagamento.h"

using namespace KRVTest;

namespace {

const QString ActEditor = QStringLiteral("actInserimentoTipiPagamento");
const QString ActList = QStringLiteral("actRicercaTipiPagamento");

} // namespace

class TestInserimentoTipiPagamento : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void opensWithItsCaptionSizeAndField();
    void savesTheTextAsTyped();
    void checksWarnWithTheirIcon();
    void failedSaveShowsNoIconAndCountsAsSaved();
    void deletingATypeInUseDeletesItAndRefreshesTheList();

private:
    QLineEdit *Tipo() const { return Field(m_editor, QStringLiteral("txtTipoPagamento")); }
    QStringList Types() const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    TKRVInserimentoTipiPagamento *m_editor = nullptr;
};

void TestInserimentoTipiPagamento::initTestCase()
{
    UseItalianLocale();
}

void TestInserimentoTipiPagamento::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    m_editor = Run<TKRVInserimentoTipiPagamento>(*m_module, ActEditor);
}

void TestInserimentoTipiPagamento::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

QStringList TestInserimentoTipiPagamento::Types() const
{
    return m_module->Database.Rows(
        QStringLiteral("SELECT IDTIPO_PAGAMENTO, TIPO_PAGAMENTO FROM TIPI_PAGAMENTO ORDER BY IDTIPO_PAGAMENTO"));
}

void TestInserimentoTipiPagamento::opensWithItsCaptionSizeAndField()
{
    QVERIFY(m_editor);
    QCOMPARE(m_editor->windowTitle(), QStringLiteral("Inserimento / Modifica tipi di pagamento"));
    QCOMPARE(m_editor->minimumSize(), QSize(800, 600));
    QCOMPARE(m_editor->size(), QSize(800, 600));
    QCOMPARE(Tipo()->accessibleName(), QStringLiteral("Tipo di pagamento"));
    QCOMPARE(Tipo()->maxLength(), 50);
    QVERIFY(m_editor->NewRecord());
}

void TestInserimentoTipiPagamento::savesTheTextAsTyped()
{
    Type(Tipo(), QStringLiteral("Contanti alla consegna"));
    QCOMPARE(Tipo()->text(), QStringLiteral("Contanti alla consegna"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Types().last(), QStringLiteral("%1|Contanti alla consegna").arg(m_editor->IdRecord()));
    QVERIFY(Tipo()->isEnabled());
}

void TestInserimentoTipiPagamento::checksWarnWithTheirIcon()
{
    const QStringList before = Types();
    Type(Tipo(), QStringLiteral("X"));
    Type(Tipo(), QString());
    Trigger(m_editor, QStringLiteral("actSalva"));
    Type(Tipo(), QStringLiteral("RIMESSA diretta"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 2);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Attenzione", "Non è stato indicato il tipo di pagamento!", Warning, Ok);
    KRV_COMPARE_BOX(m_boxes->Messages().at(1), "Attenzione", "Tipo di pagamento già presente!", Warning, Ok);
    QCOMPARE(Types(), before);
}

void TestInserimentoTipiPagamento::failedSaveShowsNoIconAndCountsAsSaved()
{
    m_module->Database.Exec(QStringLiteral("SET GENERATOR GN_IDTIPO_PAGAMENTO TO 2"));
    const QStringList before = Types();
    Type(Tipo(), QStringLiteral("Assegno"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Errore", "Si è verificato un errore durante il salvataggio dei dati!",
                    None, Ok);
    QCOMPARE(Types(), before);
    QCOMPARE(m_editor->IdRecord(), 3);
    QVERIFY(!m_editor->Modified());

    CloseFrame(m_editor);
    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(!m_module->Main->Form(ActEditor));
}

// The delete rule always allows, so a payment type that a customer uses goes
// once the user confirms.
void TestInserimentoTipiPagamento::deletingATypeInUseDeletesItAndRefreshesTheList()
{
    KRVInsertCliente(m_module->Database, QStringLiteral("C001"), QStringLiteral("Cliente"), 2);
    auto list = Run<TKRVRicercaTipiPagamento>(*m_module, ActList);
    QCOMPARE(list->GridRisultati()->rowCount(), 5);

    Run<TKRVInserimentoTipiPagamento>(*m_module, ActEditor);
    QCOMPARE(m_editor->ApriRecord(2), 0);
    QCOMPARE(Tipo()->text(), QStringLiteral("Bonifico 30 gg Data Fattura"));
    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(Types().size(), 4);
    QCOMPARE(list->GridRisultati()->rowCount(), 4);
    QCOMPARE(RowOf(list->GridRisultati(), 1, QStringLiteral("Bonifico 30 gg Data Fattura")), -1);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(Tipo()->text().isEmpty());
}

QTEST_MAIN(TestInserimentoTipiPagamento)
#include "tst_inserimentotipipagamento.moc"
