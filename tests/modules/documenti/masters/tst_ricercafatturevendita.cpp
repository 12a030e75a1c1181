// The sales invoice search list driven as a user would.
#include "../documents/KRVFattureTestKit.h"
#include "uKRVInserimentoFattureVendita.h"
#include "uKRVRicercaFattureVendita.h"

#include <QSpinBox>
#include <QToolBar>

#include <memory>

using namespace KRVTest;

namespace {

const QString ActLista = QStringLiteral("actRicercaFattureVendita");
const QString ActEditor = QStringLiteral("actInserimentoFattureVendita");

} // namespace

class TestRicercaFattureVendita : public QObject, public TKRVElencoDocumentiTest<TKRVRicercaFattureVendita>
{
    Q_OBJECT

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init();
    void cleanup() { Chiudi(); }
    void columnsAndEmptyGridUntilTheFirstSearch();
    void theYearAlwaysFilters();
    void filtersComposeTheClause();
    void lineTextFindsAnInvoiceOnce();
    void enterInAnyFilterSearches();
    void ripristinaDoesNotSearch();
    void openingNeedsTheViewRight();
    void newInvoiceFromTheList();
    void nuovoAsksBeforeDroppingTheEditorsChanges();
    void deleteFromTheList();
    void printNeedsASelectedInvoice();
};

void TestRicercaFattureVendita::init()
{
    Prepara();
    const int prima = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 1, m_anno, QStringLiteral("CLN0000001"));
    const int seconda = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 2, m_anno, QStringLiteral("CLN0000002"));
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 1, m_anno - 1, QStringLiteral("CLN0000001"));
    Db().Exec(QStringLiteral("UPDATE FATT_VEND SET CLI_RAGIONESOCIALE = 'L''Ottica di Rossi', TOTALE_DOCUMENTO = 1234.5 "
                             "WHERE IDFATT_VEND = ")
              + QString::number(seconda));
    for (const char *testo : {"Montatura in titanio", "Lenti in titanio", "Astuccio"})
        Db().Exec(QStringLiteral("INSERT INTO FATT_VEND_DETT (IDFATT_VEND, TIPO_RIGA, DESCRIZIONE) VALUES (")
                  + QString::number(seconda) + QStringLiteral(", 'Testo', ") + QuotedStr(QString::fromUtf8(testo))
                  + QStringLiteral(")"));
    Db().Exec(QStringLiteral("INSERT INTO FATT_VEND_DETT (IDFATT_VEND, TIPO_RIGA, DESCRIZIONE) VALUES (")
              + QString::number(prima) + QStringLiteral(", 'Testo', 'Consulenza')"));
    m_lista = Run<TKRVRicercaFattureVendita>(*m_module, ActLista);
}

void TestRicercaFattureVendita::columnsAndEmptyGridUntilTheFirstSearch()
{
    QVERIFY(m_lista);
    QCOMPARE(m_lista->windowTitle(), QStringLiteral("Gestione fatture di vendita"));
    TKRVGrigliaRisultati *griglia = m_lista->GridRisultati();
    QCOMPARE(griglia->rowCount(), 0);
    QStringList titoli;
    QList<int> larghezze;
    for (int c = 1; c < griglia->columnCount(); ++c) {
        titoli << griglia->Titolo(c);
        if (c != 4)
            larghezze << griglia->columnWidth(c);
    }
    QCOMPARE(titoli, (QStringList{"N.", "Data", "Codice", "Ragione sociale", "Totale", "Pagato"}));
    QCOMPARE(larghezze, (QList<int>{50, 80, 120, 110, 60}));
    QVERIFY(griglia->isColumnHidden(0));
    QCOMPARE(Anno()->value(), m_anno);
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(Column(griglia, 1), (QStringList{"2", "1"}));
    const int riga = RowOf(griglia, 1, QStringLiteral("2"));
    QCOMPARE(griglia->Testo(riga, 2), FormatShortDate(QDate(m_anno, 1, 15)));
    QCOMPARE(griglia->Testo(riga, 4), QStringLiteral("L'Ottica di Rossi"));
    QCOMPARE(griglia->Testo(riga, 5), QStringLiteral("1.234,50\u00A0€"));
    QCOMPARE(griglia->Testo(riga, 6), QStringLiteral("False"));
}

void TestRicercaFattureVendita::theYearAlwaysFilters()
{
    Anno()->setValue(m_anno - 1);
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"1"});
    QCOMPARE(m_lista->ClausolaFiltri(), QStringLiteral("WHERE ANNO=%1").arg(m_anno - 1));
    // Emptied by the user, the box still holds its last value.
    Anno()->findChild<QLineEdit *>()->clear();
    QCOMPARE(m_lista->ClausolaFiltri(), QStringLiteral("WHERE ANNO=%1").arg(m_anno - 1));
}

void TestRicercaFattureVendita::filtersComposeTheClause()
{
    Type(Field(m_lista, QStringLiteral("txtCodice")), QStringLiteral("CLN"));
    Type(Field(m_lista, QStringLiteral("txtRagioneSociale")), QStringLiteral("L'Ottica"));
    Type(Field(m_lista, QStringLiteral("txtRigaDescrizione")), QStringLiteral("titanio"));
    QCOMPARE(m_lista->ClausolaFiltri(),
             QStringLiteral("WHERE ANNO=%1 AND CLI_CODICE CONTAINING 'CLN' AND CLI_RAGIONESOCIALE CONTAINING 'L''Ottica' AND "
                            "(FATT_VEND.IDFATT_VEND IN (SELECT FATT_VEND_DETT.IDFATT_VEND FROM FATT_VEND_DETT WHERE "
                            "FATT_VEND_DETT.DESCRIZIONE CONTAINING 'titanio'))")
                 .arg(m_anno));
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"2"});
}

void TestRicercaFattureVendita::lineTextFindsAnInvoiceOnce()
{
    Type(Field(m_lista, QStringLiteral("txtRigaDescrizione")), QStringLiteral("TITANIO"));
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"2"});
}

void TestRicercaFattureVendita::enterInAnyFilterSearches()
{
    Type(Field(m_lista, QStringLiteral("txtRigaDescrizione")), QStringLiteral("Consulenza"));
    PressEnter(Field(m_lista, QStringLiteral("txtRigaDescrizione")));
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"1"});
    Field(m_lista, QStringLiteral("txtRigaDescrizione"))->clear();
    Anno()->setValue(m_anno - 1);
    QTest::keyClick(Anno(), Qt::Key_Return);
    QCOMPARE(m_lista->GridRisultati()->rowCount(), 1);
}

void TestRicercaFattureVendita::ripristinaDoesNotSearch()
{
    Trigger(m_lista, QStringLiteral("actCerca"));
    Type(Field(m_lista, QStringLiteral("txtCodice")), QStringLiteral("X"));
    Anno()->setValue(2001);
    Trigger(m_lista, QStringLiteral("actRipristina"));
    QCOMPARE(Field(m_lista, QStringLiteral("txtCodice"))->text(), QString());
    QCOMPARE(Anno()->value(), m_anno);
    QCOMPARE(m_lista->GridRisultati()->rowCount(), 2);
}

void TestRicercaFattureVendita::openingNeedsTheViewRight()
{
    Trigger(m_lista, QStringLiteral("actCerca"));
    LoginWithRights(Db(), QStringLiteral("magazziniere"), {QStringLiteral("Fatture di vendita (modifica)")});
    DoubleClickRow(m_lista->GridRisultati(), 0);
    Trigger(m_lista, QStringLiteral("actModifica"));
    QCOMPARE(m_responder->Messages().size(), 2);
    for (const TQ3Message &box : m_responder->Messages())
        KRV_COMPARE_BOX(box, "Attenzione", "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QVERIFY(!m_module->Main->Form(ActEditor));
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    DoubleClickRow(m_lista->GridRisultati(), RowOf(m_lista->GridRisultati(), 1, QStringLiteral("2")));
    auto editor = m_module->Main->FormAs<TKRVInserimentoFattureVendita>(ActEditor);
    QVERIFY(editor);
    QCOMPARE(editor->Testata().Cliente.RAGIONESOCIALE, QStringLiteral("L'Ottica di Rossi"));
    QCOMPARE(editor->Righe()->Righe(), 3);
}

void TestRicercaFattureVendita::newInvoiceFromTheList()
{
    LoginWithRights(Db(), QStringLiteral("ospite"), {QStringLiteral("Fatture di vendita (visualizzazione)")});
    Trigger(m_lista, QStringLiteral("actNuovo"));
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QVERIFY(!m_module->Main->Form(ActEditor));
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    Trigger(m_lista, QStringLiteral("actNuovo"));
    auto editor = m_module->Main->FormAs<TKRVInserimentoFattureVendita>(ActEditor);
    QVERIFY(editor);
    QVERIFY(editor->NewRecord());
    QCOMPARE(editor->Testata().Numero, 3);
}

void TestRicercaFattureVendita::deleteFromTheList()
{
    Trigger(m_lista, QStringLiteral("actCerca"));
    LoginWithRights(Db(), QStringLiteral("ospite"), {QStringLiteral("Fatture di vendita (visualizzazione)")});
    Trigger(m_lista, QStringLiteral("actElimina"));
    QCOMPARE(m_responder->Messages().size(), 1);
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    SelectRow(m_lista->GridRisultati(), RowOf(m_lista->GridRisultati(), 1, QStringLiteral("2")));
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_lista, QStringLiteral("actElimina"));
    KRV_COMPARE_BOX(m_responder->Messages().at(1), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"1"});
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 2);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT")).toInt(), 1);
}

void TestRicercaFattureVendita::printNeedsASelectedInvoice()
{
    Trigger(m_lista, QStringLiteral("actStampa"));
    Trigger(m_lista, QStringLiteral("actSalvaPDF"));
    QCOMPARE(m_responder->Messages().size(), 2);
    for (const TQ3Message &box : m_responder->Messages())
        KRV_COMPARE_BOX(box, "Attenzione", "Nessuna fattura selezionata!", Warning, Ok);
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(ModalTitlesWhile([this] { Trigger(m_lista, QStringLiteral("actStampa")); }), QStringList{"Output Options"});
    QCOMPARE(ModalTitlesWhile([this] { Trigger(m_lista, QStringLiteral("actSalvaPDF")); }), QStringList{"Salva come PDF"});
    QCOMPARE(m_responder->Messages().size(), 2);
}

void TestRicercaFattureVendita::nuovoAsksBeforeDroppingTheEditorsChanges()
{
    NuovoSopraUnDocumentoModificato(ActEditor);
}

QTEST_MAIN(TestRicercaFattureVendita)
#include "tst_ricercafatturevendita.moc"
