// The database server going away under an open invoice: a price typed into
// the line grid and the hint of the VAT cell, both of which read the VAT
// rates, tell the failure in the "Errore" box instead of ending the
// application, the invoice stays in its window as the user left it, and it is
// saved once the server is back. The suite stops and starts a server of its
// own, never the one the other suites share.
#include "KRVFattureTestKit.h"
#include "Q3TestServer.h"
#include "uKRVGrigliaRighe.h"
#include "uKRVInserimentoFattureVendita.h"

#include <QHelpEvent>
#include <QSpinBox>
#include <QTabWidget>
#include <QToolTip>

#include <memory>

using namespace KRVTest;

namespace {

const QString ActEditor = QStringLiteral("actInserimentoFattureVendita");

// Rests the pointer on a cell of the grid, as the user does to read its hint.
void HoverCell(QTableView *grid, int row, int column)
{
    const QPoint where = grid->visualRect(grid->model()->index(row, column)).center();
    QHelpEvent hover(QEvent::ToolTip, where, grid->viewport()->mapToGlobal(where));
    QApplication::sendEvent(grid->viewport(), &hover);
}

} // namespace

class TestGuardieServer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { m_server.reset(); }
    void invoiceLinesSurviveTheServerGoingAway();

private:
    std::unique_ptr<TQ3TestServer> m_server;
};

void TestGuardieServer::initTestCase()
{
    UseItalianLocale();
    Q3_REQUIRE_TEST_SERVER();
    m_server = std::make_unique<TQ3TestServer>();
}

void TestGuardieServer::invoiceLinesSurviveTheServerGoingAway()
{
    TKRVTestModule module(TQ3TestDatabase::Where::Server);
    module.MainForm->show();
    TQ3RecordingResponder boxes;
    // Every box so far, for the failure's report.
    const auto scatole = [&boxes] { return boxes.Testi(QStringLiteral(" | ")).toLocal8Bit(); };
    InsertAnagraficheDocumenti(module.Database);
    auto editor = Run<TKRVInserimentoFattureVendita>(module, ActEditor);
    QVERIFY(editor);
    ChooseCustomer(module, editor, QStringLiteral("CLN0000001"));
    AddArticle(module, editor, QStringLiteral("ART1"));
    const int numero = Field<QSpinBox>(editor, QStringLiteral("txtNumero"))->value();
    Field<QTabWidget>(editor, QStringLiteral("pgcPagine"))->setCurrentIndex(1);
    TKRVGrigliaRighe *griglia = editor->gridRigheFattura();
    const TKRVLayoutRighe &colonne = editor->Righe()->Layout();
    QCOMPARE(editor->Righe()->Righe(), 1);
    QVERIFY2(boxes.Messages().isEmpty(), scatole().constData());
    // With the server there, the VAT cell's hint tells the rate.
    HoverCell(griglia, 0, colonne.Iva);
    QVERIFY2(QToolTip::text().contains(QLatin1String("Aliquota IVA")), qPrintable(QToolTip::text()));
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());

    m_server->Stop();
    EditCell(griglia, 0, colonne.Prezzo, QStringLiteral("12,5"));
    QVERIFY2(boxes.Messages().size() == 1, scatole().constData());
    QVERIFY(Q3ErrorBoxBeginning(boxes.Messages().at(0), Q3TestConnessioneInterrotta()));
    HoverCell(griglia, 0, colonne.Iva);
    QVERIFY2(boxes.Messages().size() == 2, scatole().constData());
    QVERIFY(Q3ErrorBoxBeginning(boxes.Messages().at(1), Q3TestConnessioneNonRipristinata()));
    QVERIFY(!QToolTip::isVisible());

    // The invoice is as the user left it, the typed price included.
    QVERIFY(editor->isVisible() && editor->isEnabled());
    QVERIFY(editor->Modified());
    QVERIFY(editor->NewRecord());
    QCOMPARE(editor->Righe()->Righe(), 1);
    QCOMPARE(editor->Righe()->Cella(0, colonne.Codice), QStringLiteral("ART1"));
    QCOMPARE(editor->Righe()->Numero(0, colonne.Prezzo), 12.5);
    QCOMPARE(Field<QLabel>(editor, QStringLiteral("lblCliCodice"))->text(), QStringLiteral("CLN0000001"));
    QVERIFY(Field<QLabel>(editor, QStringLiteral("lblTipoPagamento"))->text() != QLatin1String("..."));
    QCOMPARE(Field<QSpinBox>(editor, QStringLiteral("txtNumero"))->value(), numero);

    m_server->Resume();
    Trigger(editor, QStringLiteral("actSalva"));
    QVERIFY2(boxes.Messages().size() == 2, scatole().constData());
    QVERIFY(!editor->Modified());
    // Header and line once each, with the price typed while the server was away
    // and the totals recomputed at the save (20 % VAT).
    QCOMPARE(module.Database.Rows(QStringLiteral("SELECT NUMERO, CLI_CODICE, IDTIPO_PAGAMENTO, TOTALE_IMPONIBILE, "
                                                 "TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM FATT_VEND")),
             QStringList{QStringLiteral("%1|CLN0000001|2|12.5|2.5|15").arg(numero)});
    QCOMPARE(module.Database.Rows(QStringLiteral("SELECT F.NUMERO, D.CODICE, D.PREZZO, D.QUANTITA, D.IMPORTO, "
                                                 "D.IVA_ALIQUOTA FROM FATT_VEND_DETT D JOIN FATT_VEND F ON "
                                                 "F.IDFATT_VEND = D.IDFATT_VEND")),
             QStringList{QStringLiteral("%1|ART1|12.5|1|12.5|20").arg(numero)});
}

QTEST_MAIN(TestGuardieServer)
#include "tst_guardie_server.moc"
