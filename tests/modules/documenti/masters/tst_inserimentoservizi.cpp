#include "KRVCatalogoTestKit.h"
#include "KRVMastersTestKit.h"
#include "uKRVInserimentoServizi.h"
#include "uKRVModSelezionaAliquotaIVA.h"
#include "uKRVModSelezionaUM.h"
#include "uKRVRicercaServizi.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QPointer>
#include <QTabWidget>
#include <QToolButton>

using namespace KRVTest;

namespace {

const QString ActEditor = QStringLiteral("actInserimentoServizi");

} // namespace

class TestInserimentoServizi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void opensOnANewServiceWithAProposedCode();
    void savesANewServiceWithItsChoices();
    void vatRateIsCheckedBeforeTheUnit();
    void openingShowsTheStoredRateAndUnit();
    void deletingASavedServiceRefreshesTheList();
    void deletingANewServiceAsksThenOnlyBlanks();
    void closingModifiedAsksTheTwoWayQuestion();
    void failedDeleteIsReportedAndTheWindowBlanks();

private:
    template <typename T = QLineEdit>
    T *F(const QString &name) const
    {
        return Field<T>(m_editor, name);
    }
    void Choose(const QString &action, const QString &button, const QString &text);

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    TKRVInserimentoServizi *m_editor = nullptr;
};

void TestInserimentoServizi::initTestCase()
{
    UseItalianLocale();
}

void TestInserimentoServizi::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    m_editor = Run<TKRVInserimentoServizi>(*m_module, ActEditor);
}

void TestInserimentoServizi::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

void TestInserimentoServizi::Choose(const QString &action, const QString &button, const QString &text)
{
    Trigger(m_module->Main->Action(action));
    auto dialog = qobject_cast<TKRVModSelezionaBase *>(m_module->Main->Form(action));
    WhileModal(dialog, [dialog, text] {
        SelectRow(dialog->gridRisultati(), RowOf(dialog->gridRisultati(), 1, text));
        Trigger(dialog, QStringLiteral("actOK"));
    });
    QTest::mouseClick(F<QToolButton>(button), Qt::LeftButton);
}

void TestInserimentoServizi::opensOnANewServiceWithAProposedCode()
{
    QCOMPARE(m_editor->windowTitle(), QStringLiteral("Inserimento / Modifica servizi"));
    QCOMPARE(m_editor->minimumSize(), QSize(800, 600));
    QCOMPARE(m_editor->size(), QSize(800, 600));
    QVERIFY(!m_editor->findChild<QTabWidget *>());
    QCOMPARE(F(QStringLiteral("txtCodice"))->text(),
             GetCustomCodice(GetLastGeneratorValue(QStringLiteral("GN_IDSERVIZIO"), m_module->Database.Db()) + 1,
                             QStringLiteral("SRV"), QString(), 10));
    QCOMPARE(F(QStringLiteral("txtDescrizione"))->maxLength(), 150);
    QVERIFY(!m_editor->findChild<QWidget *>(QStringLiteral("txtSottoscorta")));
    QVERIFY(!m_editor->findChild<QWidget *>(QStringLiteral("txtNote")));
    QCOMPARE(F<QDoubleSpinBox>(QStringLiteral("txtPrezzo"))->text(), QStringLiteral("0,00"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->text(), QStringLiteral("..."));
    QCOMPARE(F<QLabel>(QStringLiteral("txtUM"))->text(), QStringLiteral("..."));
    auto categoria = F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"));
    QCOMPARE(categoria->Albero()->topLevelItem(0)->text(0), QStringLiteral("Altro"));
    QCOMPARE(categoria->Categoria(), -1);
    QVERIFY(!m_editor->Modified());
}

void TestInserimentoServizi::savesANewServiceWithItsChoices()
{
    const QString code = F(QStringLiteral("txtCodice"))->text();
    const int expected = GetLastGeneratorValue(QStringLiteral("GN_IDSERVIZIO"), m_module->Database.Db()) + 1;
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Consulenza"));
    F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"))->SelezionaCategoria(1);
    Choose(QStringLiteral("actModSelezionaAliquotaIVA"), QStringLiteral("cmdSelezionaAliquotaIVA"),
           QStringLiteral("20"));
    Choose(QStringLiteral("actModSelezionaUM"), QStringLiteral("cmdSelezionaUM"), QStringLiteral("ORE"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->text(), QStringLiteral("20(20%)"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtUM"))->text(), QStringLiteral("ORE"));
    Type(F<QDoubleSpinBox>(QStringLiteral("txtPrezzo")), QStringLiteral("60"));

    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT IDSERVIZIO, CODICE, DESCRIZIONE, IDCATEGORIA_SERVIZI, PREZZO, "
                                "COSTO, IDALIQUOTA_IVA, IDUM FROM SERVIZI")),
             QStringList{QStringLiteral("%1|%2|Consulenza|1|60|0|1|2").arg(expected).arg(code)});
}

void TestInserimentoServizi::vatRateIsCheckedBeforeTheUnit()
{
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Senza IVA"));
    F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"))->SelezionaCategoria(1);
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Attenzione", "Non è stata indicata l'aliquota IVA!", Warning, Ok);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM SERVIZI")).toInt(), 0);
}

void TestInserimentoServizi::openingShowsTheStoredRateAndUnit()
{
    const int id =
        InsertVoce(m_module->Database, KRVCatalogoServizi(), QStringLiteral("S1"), QStringLiteral("Trasporto"));
    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(F(QStringLiteral("txtDescrizione"))->text(), QStringLiteral("Trasporto"));
    QCOMPARE(F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"))->currentText(), QStringLiteral("Altro"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->text(), QStringLiteral("20(20%)"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtUM"))->text(), QStringLiteral("PEZZI"));
    QVERIFY(!m_editor->Modified());
}

void TestInserimentoServizi::deletingASavedServiceRefreshesTheList()
{
    const int id =
        InsertVoce(m_module->Database, KRVCatalogoServizi(), QStringLiteral("VIA"), QStringLiteral("Da togliere"));
    InsertVoce(m_module->Database, KRVCatalogoServizi(), QStringLiteral("RESTA"), QStringLiteral("Resta"));
    auto list = Run<TKRVRicercaServizi>(*m_module, QStringLiteral("actRicercaServizi"));
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(list->GridRisultati()->rowCount(), 2);
    m_editor = Run<TKRVInserimentoServizi>(*m_module, ActEditor);
    QCOMPARE(m_editor->ApriRecord(id), 0);
    m_boxes->Enqueue(TQ3MsgResult::Yes);

    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE FROM SERVIZI")),
             QStringList{QStringLiteral("RESTA")});
    QCOMPARE(Column(list->GridRisultati(), 1), QStringList{QStringLiteral("RESTA")});
    QVERIFY(m_editor->NewRecord());
}

void TestInserimentoServizi::deletingANewServiceAsksThenOnlyBlanks()
{
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Mai salvato"));
    m_boxes->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(F(QStringLiteral("txtDescrizione"))->text().isEmpty());
    QVERIFY(!m_editor->Modified());
}

void TestInserimentoServizi::closingModifiedAsksTheTwoWayQuestion()
{
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("In corso"));
    QPointer<TKRVInserimentoServizi> editor(m_editor);
    m_boxes->Enqueue(TQ3MsgResult::No);
    CloseFrame(m_editor);
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Conferma",
                    "Ci sono delle modifiche non salvate.\n\rContinuare comunque?", Question, YesNo);
    QVERIFY(editor);
    QCOMPARE(F(QStringLiteral("txtDescrizione"))->text(), QStringLiteral("In corso"));

    m_boxes->Enqueue(TQ3MsgResult::Yes);
    CloseFrame(m_editor);
    QVERIFY(!editor);
    QVERIFY(!m_module->Main->Form(ActEditor));
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM SERVIZI")).toInt(), 0);
}

void TestInserimentoServizi::failedDeleteIsReportedAndTheWindowBlanks()
{
    VerifyFailedDeleteBlanks(m_module->Database, KRVCatalogoServizi(), m_editor, *m_boxes);
}

QTEST_MAIN(TestInserimentoServizi)
#include "tst_inserimentoservizi.moc"
