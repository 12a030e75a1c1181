#include "KRVMastersTestKit.h"
#include "uKRVModSelezionaAliquotaIVA.h"
#include "uKRVModSelezionaTipoPagamento.h"
#include "uKRVModSelezionaUM.h"

#include <QScreen>
#include <QTimer>

#include <functional>

using namespace KRVTest;

namespace {

const QString ActUM = QStringLiteral("actModSelezionaUM");
const QString ActTipo = QStringLiteral("actModSelezionaTipoPagamento");
const QString ActIva = QStringLiteral("actModSelezionaAliquotaIVA");

} // namespace

class TestModSelezionaTabelle : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void actionCreatesTheDialogOnceWithoutShowingIt();
    void unitDialogReloadsEveryShowing();
    void okOnAnEmptyGridWarnsAndStaysThenAnnullaCloses();
    void doubleClickChoosesThePaymentType();
    void vatRateHandsBackItsPercentageAsShown();
    void closeBoxCancelsAndKeepsTheDialog();

private:
    template <typename T>
    T *Dialog(const QString &action)
    {
        Trigger(m_module->Main->Action(action));
        return m_module->Main->FormAs<T>(action);
    }

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
};

void TestModSelezionaTabelle::initTestCase()
{
    UseItalianLocale();
}

void TestModSelezionaTabelle::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
}

void TestModSelezionaTabelle::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

void TestModSelezionaTabelle::actionCreatesTheDialogOnceWithoutShowingIt()
{
    for (const QString &action : {ActUM, ActTipo, ActIva})
        QVERIFY(m_module->Main->Action(action)->isEnabled());
    QVERIFY(!m_module->Main->Form(ActUM));
    auto dialog = Dialog<TKRVModSelezionaUM>(ActUM);
    QVERIFY(dialog);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(Dialog<TKRVModSelezionaUM>(ActUM), dialog);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Seleziona un'unità di misura"));
    QVERIFY(dialog->isModal());
    QCOMPARE(Dialog<TKRVModSelezionaTipoPagamento>(ActTipo)->windowTitle(),
             QStringLiteral("Seleziona un tipo di pagamento"));
    QCOMPARE(Dialog<TKRVModSelezionaAliquotaIVA>(ActIva)->windowTitle(), QStringLiteral("Seleziona un'aliquota IVA"));
    QCOMPARE(dialog->gridRisultati()->objectName(), QStringLiteral("gridRisultati"));
    QVERIFY(dialog->gridRisultati()->isColumnHidden(0));
    QCOMPARE(dialog->gridRisultati()->Titolo(1), QStringLiteral("Unità di misura"));
}

void TestModSelezionaTabelle::unitDialogReloadsEveryShowing()
{
    auto dialog = Dialog<TKRVModSelezionaUM>(ActUM);
    QStringList shown;
    QPoint centre;
    const int result = ShowModal(dialog, [&] {
        shown = Column(dialog->gridRisultati(), 1);
        centre = dialog->frameGeometry().center();
        SelectRow(dialog->gridRisultati(), RowOf(dialog->gridRisultati(), 1, QStringLiteral("ORE")));
        Trigger(dialog, QStringLiteral("actOK"));
    });
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(shown, (QStringList{"KG", "ORE", "PEZZI", "Q.LI"}));
    QVERIFY((centre - dialog->screen()->availableGeometry().center()).manhattanLength() < 40);
    const TKRVVoceSelezionata voce = dialog->ApriSelezionato();
    QCOMPARE(voce.Id, 2);
    QCOMPARE(voce.Text, QStringLiteral("ORE"));

    m_module->Database.Exec(QStringLiteral("INSERT INTO UM (IDUM, UM) VALUES (12, 'LT')"));
    ShowModal(dialog, [&] { shown = Column(dialog->gridRisultati(), 1); });
    QCOMPARE(shown, (QStringList{"KG", "LT", "ORE", "PEZZI", "Q.LI"}));
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestModSelezionaTabelle::okOnAnEmptyGridWarnsAndStaysThenAnnullaCloses()
{
    m_module->Database.Exec(QStringLiteral("DELETE FROM UM"));
    auto dialog = Dialog<TKRVModSelezionaUM>(ActUM);
    bool stayedOpen = false;
    const int result = ShowModal(dialog, [&] {
        Trigger(dialog, QStringLiteral("actOK"));
        stayedOpen = dialog->isVisible();
        Trigger(dialog, QStringLiteral("actAnnulla"));
    });
    QVERIFY(stayedOpen);
    QCOMPARE(result, int(QDialog::Rejected));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione", "Nessuna voce selezionata!", Warning, Ok);
    QCOMPARE(dialog->ApriSelezionato().Id, -1);
    QVERIFY(dialog->ApriSelezionato().Text.isEmpty());
    QCOMPARE(m_module->Main->Form(ActUM), dialog);
}

void TestModSelezionaTabelle::doubleClickChoosesThePaymentType()
{
    auto dialog = Dialog<TKRVModSelezionaTipoPagamento>(ActTipo);
    const int result = ShowModal(dialog, [&] {
        TKRVGrigliaRisultati *grid = dialog->gridRisultati();
        DoubleClickRow(grid, RowOf(grid, 1, QStringLiteral("Ri.Ba. 30 gg Fine Mese")));
    });
    QCOMPARE(result, int(QDialog::Accepted));
    const TKRVVoceSelezionata voce = dialog->ApriSelezionato();
    QCOMPARE(voce.Id, 5);
    QCOMPARE(voce.Text, QStringLiteral("Ri.Ba. 30 gg Fine Mese"));
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestModSelezionaTabelle::vatRateHandsBackItsPercentageAsShown()
{
    m_module->Database.Exec(QStringLiteral("INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) "
                                           "VALUES (7, 'r1', 'Ridotta', 10.5)"));
    const int key =
        m_module->Database.Scalar(QStringLiteral("SELECT IDALIQUOTA_IVA FROM ALIQUOTE_IVA WHERE CODICE='r1'")).toInt();
    auto dialog = Dialog<TKRVModSelezionaAliquotaIVA>(ActIva);
    QStringList codes;
    QString shown;
    const int result = ShowModal(dialog, [&] {
        TKRVGrigliaRisultati *grid = dialog->gridRisultati();
        codes = Column(grid, 1);
        const int row = RowOf(grid, 1, QStringLiteral("r1"));
        shown = grid->Testo(row, 3);
        DoubleClickRow(grid, row);
    });
    QCOMPARE(result, int(QDialog::Accepted));
    // Ordered by the code in capitals.
    QCOMPARE(codes, (QStringList{"20", "N0", "N1", "r1"}));
    QCOMPARE(shown, QStringLiteral("10,50 %"));
    const TAliquotaIVA aliquota = dialog->ApriSelezionato();
    QCOMPARE(aliquota.IDALIQUOTA_IVA, key);
    QCOMPARE(aliquota.CODICE, QStringLiteral("r1"));
    QCOMPARE(aliquota.DESCRIZIONE, QStringLiteral("Ridotta"));
    QCOMPARE(aliquota.ALIQUOTA, 10.5);
}

void TestModSelezionaTabelle::closeBoxCancelsAndKeepsTheDialog()
{
    QPointer<TKRVModSelezionaAliquotaIVA> dialog = Dialog<TKRVModSelezionaAliquotaIVA>(ActIva);
    const int result = ShowModal(dialog, [&] { dialog->close(); });
    QCOMPARE(result, int(QDialog::Rejected));
    ProcessDeletes();
    QVERIFY(dialog);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(m_module->Main->Form(ActIva), dialog.data());
    QVERIFY(m_boxes->Messages().isEmpty());
}

QTEST_MAIN(TestModSelezionaTabelle)
#include "tst_modselezionatabelle.moc"
