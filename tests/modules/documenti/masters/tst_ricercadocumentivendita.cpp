// The search lists of the sales documents, invoices and credit notes, driven
// as a user would. What both lists do is tested once for each, row by row;
// what only one does, on its own.
#include "../documents/KRVFattureTestKit.h"
#include "Q3MainForm.h"
#include "uKRVGrigliaRighe.h"
#include "uKRVInserimentoFattureVendita.h"
#include "uKRVInserimentoNoteAccredito.h"
#include "uKRVModSelezionaCliente.h"
#include "uKRVRicercaDocumentiVendita.h"

#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QToolBar>

#include <memory>

using namespace KRVTest;

namespace {

const QString ListaFatture = QStringLiteral("actRicercaFattureVendita");
const QString EditorFatture = QStringLiteral("actInserimentoFattureVendita");
const QString ListaNote = QStringLiteral("actRicercaNoteAccredito");
const QString EditorNote = QStringLiteral("actInserimentoNoteAccredito");

// The header an editor shows, whichever document it edits.
TKRVTestataDocumento TestataDi(QWidget *editor)
{
    if (auto fattura = qobject_cast<TKRVInserimentoFattureVendita *>(editor))
        return fattura->Testata();
    return qobject_cast<TKRVInserimentoNoteAccredito *>(editor)->Testata();
}

} // namespace

class TestRicercaDocumentiVendita : public QObject, public TKRVElencoDocumentiTest<TKRVRicercaDocumentiVendita>
{
    Q_OBJECT

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init() { Prepara(); }
    void cleanup() { Chiudi(); }

    // Both lists: the column "lista" names the list's action, "editore" its editor's.
    void columnsAndEmptyGridUntilTheFirstSearch_data();
    void columnsAndEmptyGridUntilTheFirstSearch();
    void openingNeedsTheViewRight_data();
    void openingNeedsTheViewRight();
    void newDocumentFromTheList_data();
    void newDocumentFromTheList();
    void nuovoAsksBeforeDroppingTheEditorsChanges_data();
    void nuovoAsksBeforeDroppingTheEditorsChanges();
    void deleteFromTheList_data();
    void deleteFromTheList();

    // The invoices' list.
    void theYearAlwaysFilters();
    void filtersComposeTheClause();
    void lineTextFindsAnInvoiceOnce();
    void enterInAnyFilterSearches();
    void ripristinaDoesNotSearch();
    void printNeedsASelectedInvoice();

    // The credit notes' list.
    void yearClauseWithBlanks();
    void threeFiltersOnly();
    void noPrintCommands();
    void savedNoteFoundAndReopenedFromTheMenu();

private:
    // The rows of the list's documents, then the list opened by its action.
    void Apri(const QString &lista);
    void ApriFatture();
    void ApriNote();
    // The two rows of a data-driven test, with the columns "lista" and "editore" first.
    static void RighePerLista();
};

void TestRicercaDocumentiVendita::Apri(const QString &lista)
{
    if (lista == ListaFatture)
        ApriFatture();
    else
        ApriNote();
}

// Invoices 1 and 2 of this year, 1 of last year; the second with a quote in
// the name, a total and three text lines, the first with one.
void TestRicercaDocumentiVendita::ApriFatture()
{
    const int prima = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 1, m_anno, QStringLiteral("CLN0000001"));
    const int seconda = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 2, m_anno, QStringLiteral("CLN0000002"));
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 1, m_anno - 1, QStringLiteral("CLN0000001"));
    Db().Exec(
        QStringLiteral("UPDATE FATT_VEND SET CLI_RAGIONESOCIALE = 'L''Ottica di Rossi', TOTALE_DOCUMENTO = 1234.5 "
                       "WHERE IDFATT_VEND = ")
        + QString::number(seconda));
    for (const char *testo : {"Montatura in titanio", "Lenti in titanio", "Astuccio"})
        Db().Exec(QStringLiteral("INSERT INTO FATT_VEND_DETT (IDFATT_VEND, TIPO_RIGA, DESCRIZIONE) VALUES (")
                  + QString::number(seconda) + QStringLiteral(", 'Testo', ") + QuotedStr(QString::fromUtf8(testo))
                  + QStringLiteral(")"));
    Db().Exec(QStringLiteral("INSERT INTO FATT_VEND_DETT (IDFATT_VEND, TIPO_RIGA, DESCRIZIONE) VALUES (")
              + QString::number(prima) + QStringLiteral(", 'Testo', 'Consulenza')"));
    m_lista = Run<TKRVRicercaDocumentiVendita>(*m_module, ListaFatture);
}

// Credit notes 1 and 2 of this year, 1 of last year, and an invoice; the
// second note with a quote in the name, a total and a text line.
void TestRicercaDocumentiVendita::ApriNote()
{
    KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), 1, m_anno, QStringLiteral("CLN0000001"));
    const int seconda =
        KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), 2, m_anno, QStringLiteral("CLN0000002"));
    KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), 1, m_anno - 1, QStringLiteral("CLN0000001"));
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 9, m_anno, QStringLiteral("CLN0000001"));
    Db().Exec(
        QStringLiteral("UPDATE NOTE_ACCREDITO SET CLI_RAGIONESOCIALE = 'L''Ottica di Rossi', TOTALE_DOCUMENTO = 1234.5 "
                       "WHERE IDNOTA_ACCREDITO = ")
        + QString::number(seconda));
    KRVInsertRiga(Db(), QStringLiteral("NOTE_ACCREDITO_DETT"), seconda, QStringLiteral("Testo"));
    m_lista = Run<TKRVRicercaDocumentiVendita>(*m_module, ListaNote);
}

void TestRicercaDocumentiVendita::RighePerLista()
{
    QTest::addColumn<QString>("lista");
    QTest::addColumn<QString>("editore");
}

void TestRicercaDocumentiVendita::columnsAndEmptyGridUntilTheFirstSearch_data()
{
    RighePerLista();
    QTest::addColumn<QString>("titolo");
    QTest::newRow("fatture") << ListaFatture << EditorFatture << QStringLiteral("Gestione fatture di vendita");
    QTest::newRow("note di accredito") << ListaNote << EditorNote << QStringLiteral("Ricerca note di accredito");
}

void TestRicercaDocumentiVendita::columnsAndEmptyGridUntilTheFirstSearch()
{
    QFETCH(QString, lista);
    QFETCH(QString, titolo);
    Apri(lista);
    QVERIFY(m_lista);
    QCOMPARE(m_lista->windowTitle(), titolo);
    TKRVGrigliaRisultati *griglia = m_lista->GridRisultati();
    QCOMPARE(griglia->rowCount(), 0);
    QStringList titoli;
    QList<int> larghezze;
    for (int c = 1; c < griglia->columnCount(); ++c) {
        titoli << griglia->Titolo(c);
        if (c != 4)
            larghezze << griglia->columnWidth(c);
    }
    // The last column names the electronic invoice file a document was exported to.
    QCOMPARE(titoli,
             (QStringList{"N.", "Data", "Codice", "Ragione sociale", "Totale", "Pagato", "Fattura elettronica"}));
    QCOMPARE(larghezze, (QList<int>{50, 80, 120, 110, 60, 170}));
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

void TestRicercaDocumentiVendita::openingNeedsTheViewRight_data()
{
    RighePerLista();
    // The rights of a user who may not open the document, and of one who may
    // (none: the administrator); the lines of the document opened.
    QTest::addColumn<QStringList>("negati");
    QTest::addColumn<QStringList>("lettore");
    QTest::addColumn<int>("righe");
    QTest::newRow("fatture") << ListaFatture << EditorFatture << QStringList{"Fatture di vendita (modifica)"}
                             << QStringList() << 3;
    QTest::newRow("note di accredito") << ListaNote << EditorNote
                                       << QStringList{"Note di accredito (modifica)",
                                                      "Fatture di vendita (visualizzazione)"}
                                       << QStringList{"Note di accredito (visualizzazione)"} << 1;
}

void TestRicercaDocumentiVendita::openingNeedsTheViewRight()
{
    QFETCH(QString, lista);
    QFETCH(QString, editore);
    QFETCH(QStringList, negati);
    QFETCH(QStringList, lettore);
    QFETCH(int, righe);
    Apri(lista);
    Trigger(m_lista, QStringLiteral("actCerca"));
    LoginWithRights(Db(), QStringLiteral("magazziniere"), negati);
    DoubleClickRow(m_lista->GridRisultati(), 0);
    Trigger(m_lista, QStringLiteral("actModifica"));
    QCOMPARE(m_responder->Messages().size(), 2);
    for (const TQ3Message &box : m_responder->Messages())
        KRV_COMPARE_BOX(box, "Attenzione", "Non si dispone di diritti sufficienti per eseguire questa operazione.",
                        Warning, Ok);
    QVERIFY(!m_module->Main->Form(editore));
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    if (!lettore.isEmpty())
        LoginWithRights(Db(), QStringLiteral("lettore"), lettore);
    DoubleClickRow(m_lista->GridRisultati(), RowOf(m_lista->GridRisultati(), 1, QStringLiteral("2")));
    auto editor = m_module->Main->FormAs<TKRVInserimentoDocumentoBase>(editore);
    QVERIFY(editor);
    QCOMPARE(TestataDi(editor).Cliente.RAGIONESOCIALE, QStringLiteral("L'Ottica di Rossi"));
    QCOMPARE(editor->Righe()->Righe(), righe);
}

void TestRicercaDocumentiVendita::newDocumentFromTheList_data()
{
    RighePerLista();
    // The rights of a user who may not write the document, and of one who may
    // (none: the administrator).
    QTest::addColumn<QStringList>("negati");
    QTest::addColumn<QStringList>("autorizzati");
    QTest::newRow("fatture") << ListaFatture << EditorFatture << QStringList{"Fatture di vendita (visualizzazione)"}
                             << QStringList();
    QTest::newRow("note di accredito") << ListaNote << EditorNote
                                       << QStringList{"Note di accredito (visualizzazione)",
                                                      "Fatture di vendita (modifica)"}
                                       << QStringList{"Note di accredito (modifica)"};
}

void TestRicercaDocumentiVendita::newDocumentFromTheList()
{
    QFETCH(QString, lista);
    QFETCH(QString, editore);
    QFETCH(QStringList, negati);
    QFETCH(QStringList, autorizzati);
    Apri(lista);
    LoginWithRights(Db(), QStringLiteral("ospite"), negati);
    Trigger(m_lista, QStringLiteral("actNuovo"));
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QVERIFY(!m_module->Main->Form(editore));
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    if (!autorizzati.isEmpty())
        LoginWithRights(Db(), QStringLiteral("contabile"), autorizzati);
    Trigger(m_lista, QStringLiteral("actNuovo"));
    auto editor = m_module->Main->FormAs<TKRVInserimentoDocumentoBase>(editore);
    QVERIFY(editor);
    QVERIFY(editor->NewRecord());
    QCOMPARE(TestataDi(editor).Numero, 3);
}

void TestRicercaDocumentiVendita::nuovoAsksBeforeDroppingTheEditorsChanges_data()
{
    RighePerLista();
    QTest::newRow("fatture") << ListaFatture << EditorFatture;
    QTest::newRow("note di accredito") << ListaNote << EditorNote;
}

void TestRicercaDocumentiVendita::nuovoAsksBeforeDroppingTheEditorsChanges()
{
    QFETCH(QString, lista);
    QFETCH(QString, editore);
    Apri(lista);
    NuovoSopraUnDocumentoModificato(editore);
}

void TestRicercaDocumentiVendita::deleteFromTheList_data()
{
    RighePerLista();
    // The rights of a user who may not delete and of one who may (none: the
    // administrator); the tables of the headers and lines, and the lines left;
    // a table of the other documents that must stay as it is, and its rows.
    QTest::addColumn<QStringList>("negati");
    QTest::addColumn<QStringList>("autorizzati");
    QTest::addColumn<QString>("testate");
    QTest::addColumn<QString>("righe");
    QTest::addColumn<int>("righeRimaste");
    QTest::addColumn<QString>("altri");
    QTest::addColumn<int>("altriRimasti");
    QTest::newRow("fatture") << ListaFatture << EditorFatture << QStringList{"Fatture di vendita (visualizzazione)"}
                             << QStringList() << QStringLiteral("FATT_VEND") << QStringLiteral("FATT_VEND_DETT") << 1
                             << QString() << 0;
    QTest::newRow("note di accredito") << ListaNote << EditorNote
                                       << QStringList{"Note di accredito (visualizzazione)",
                                                      "Fatture di vendita (eliminazione)"}
                                       << QStringList{"Note di accredito (eliminazione)"}
                                       << QStringLiteral("NOTE_ACCREDITO") << QStringLiteral("NOTE_ACCREDITO_DETT") << 0
                                       << QStringLiteral("FATT_VEND") << 1;
}

void TestRicercaDocumentiVendita::deleteFromTheList()
{
    QFETCH(QString, lista);
    QFETCH(QStringList, negati);
    QFETCH(QStringList, autorizzati);
    QFETCH(QString, testate);
    QFETCH(QString, righe);
    QFETCH(int, righeRimaste);
    QFETCH(QString, altri);
    QFETCH(int, altriRimasti);
    Apri(lista);
    Trigger(m_lista, QStringLiteral("actCerca"));
    LoginWithRights(Db(), QStringLiteral("ospite"), negati);
    Trigger(m_lista, QStringLiteral("actElimina"));
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    if (!autorizzati.isEmpty())
        LoginWithRights(Db(), QStringLiteral("contabile"), autorizzati);
    SelectRow(m_lista->GridRisultati(), RowOf(m_lista->GridRisultati(), 1, QStringLiteral("2")));
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_lista, QStringLiteral("actElimina"));
    KRV_COMPARE_BOX(m_responder->Messages().at(1), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"1"});
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM ") + testate).toInt(), 2);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM ") + righe).toInt(), righeRimaste);
    if (!altri.isEmpty())
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM ") + altri).toInt(), altriRimasti);
}

void TestRicercaDocumentiVendita::theYearAlwaysFilters()
{
    ApriFatture();
    Anno()->setValue(m_anno - 1);
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"1"});
    QCOMPARE(m_lista->ClausolaFiltri(), QStringLiteral("WHERE ANNO=%1").arg(m_anno - 1));
    // Emptied by the user, the box still holds its last value.
    Anno()->findChild<QLineEdit *>()->clear();
    QCOMPARE(m_lista->ClausolaFiltri(), QStringLiteral("WHERE ANNO=%1").arg(m_anno - 1));
}

void TestRicercaDocumentiVendita::filtersComposeTheClause()
{
    ApriFatture();
    Type(Field(m_lista, QStringLiteral("txtCodice")), QStringLiteral("CLN"));
    Type(Field(m_lista, QStringLiteral("txtRagioneSociale")), QStringLiteral("L'Ottica"));
    Type(Field(m_lista, QStringLiteral("txtRigaDescrizione")), QStringLiteral("titanio"));
    QCOMPARE(m_lista->ClausolaFiltri(),
             QStringLiteral(
                 "WHERE ANNO=%1 AND CLI_CODICE CONTAINING 'CLN' AND CLI_RAGIONESOCIALE CONTAINING 'L''Ottica' AND "
                 "(FATT_VEND.IDFATT_VEND IN (SELECT FATT_VEND_DETT.IDFATT_VEND FROM FATT_VEND_DETT WHERE "
                 "FATT_VEND_DETT.DESCRIZIONE CONTAINING 'titanio'))")
                 .arg(m_anno));
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"2"});
}

void TestRicercaDocumentiVendita::lineTextFindsAnInvoiceOnce()
{
    ApriFatture();
    Type(Field(m_lista, QStringLiteral("txtRigaDescrizione")), QStringLiteral("TITANIO"));
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"2"});
}

void TestRicercaDocumentiVendita::enterInAnyFilterSearches()
{
    ApriFatture();
    Type(Field(m_lista, QStringLiteral("txtRigaDescrizione")), QStringLiteral("Consulenza"));
    PressEnter(Field(m_lista, QStringLiteral("txtRigaDescrizione")));
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"1"});
    Field(m_lista, QStringLiteral("txtRigaDescrizione"))->clear();
    Anno()->setValue(m_anno - 1);
    QTest::keyClick(Anno(), Qt::Key_Return);
    QCOMPARE(m_lista->GridRisultati()->rowCount(), 1);
}

void TestRicercaDocumentiVendita::ripristinaDoesNotSearch()
{
    ApriFatture();
    Trigger(m_lista, QStringLiteral("actCerca"));
    Type(Field(m_lista, QStringLiteral("txtCodice")), QStringLiteral("X"));
    Anno()->setValue(2001);
    Trigger(m_lista, QStringLiteral("actRipristina"));
    QCOMPARE(Field(m_lista, QStringLiteral("txtCodice"))->text(), QString());
    QCOMPARE(Anno()->value(), m_anno);
    QCOMPARE(m_lista->GridRisultati()->rowCount(), 2);
}

void TestRicercaDocumentiVendita::printNeedsASelectedInvoice()
{
    ApriFatture();
    Trigger(m_lista, QStringLiteral("actStampa"));
    Trigger(m_lista, QStringLiteral("actSalvaPDF"));
    QCOMPARE(m_responder->Messages().size(), 2);
    for (const TQ3Message &box : m_responder->Messages())
        KRV_COMPARE_BOX(box, "Attenzione", "Nessuna fattura selezionata!", Warning, Ok);
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(ModalTitlesWhile([this] { Trigger(m_lista, QStringLiteral("actStampa")); }),
             QStringList{"Output Options"});
    QCOMPARE(ModalTitlesWhile([this] { Trigger(m_lista, QStringLiteral("actSalvaPDF")); }),
             QStringList{"Salva come PDF"});
    QCOMPARE(m_responder->Messages().size(), 2);
}

void TestRicercaDocumentiVendita::yearClauseWithBlanks()
{
    ApriNote();
    QCOMPARE(m_lista->ClausolaFiltri(), QStringLiteral("WHERE ANNO = %1").arg(m_anno));
    Anno()->setValue(m_anno - 1);
    Type(Field(m_lista, QStringLiteral("txtCodice")), QStringLiteral("CLN"));
    Type(Field(m_lista, QStringLiteral("txtRagioneSociale")), QStringLiteral("L'Ottica"));
    QCOMPARE(m_lista->ClausolaFiltri(),
             QStringLiteral(
                 "WHERE ANNO = %1 AND CLI_CODICE CONTAINING 'CLN' AND CLI_RAGIONESOCIALE CONTAINING 'L''Ottica'")
                 .arg(m_anno - 1));
    Field(m_lista, QStringLiteral("txtRagioneSociale"))->clear();
    QTest::keyClick(Anno(), Qt::Key_Return);
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"1"});
    // Emptied by the user, the box still holds its last value.
    Anno()->findChild<QLineEdit *>()->clear();
    QCOMPARE(m_lista->ClausolaFiltri(),
             QStringLiteral("WHERE ANNO = %1 AND CLI_CODICE CONTAINING 'CLN'").arg(m_anno - 1));
    Trigger(m_lista, QStringLiteral("actRipristina"));
    QCOMPARE(Anno()->value(), m_anno);
    QCOMPARE(Field(m_lista, QStringLiteral("txtCodice"))->text(), QString());
    QCOMPARE(m_lista->GridRisultati()->rowCount(), 1);
}

void TestRicercaDocumentiVendita::threeFiltersOnly()
{
    ApriNote();
    QVERIFY(!m_lista->findChild<QLineEdit *>(QStringLiteral("txtRigaDescrizione")));
    QToolBar *barra = Field<QToolBar>(m_lista, QStringLiteral("tBarRicerca"));
    QStringList etichette;
    for (QAction *action : barra->actions()) {
        if (auto etichetta = qobject_cast<QLabel *>(barra->widgetForAction(action)))
            etichette << etichetta->text();
    }
    QCOMPARE(etichette, (QStringList{"Codice", "Ragione sociale", "Anno"}));
}

void TestRicercaDocumentiVendita::noPrintCommands()
{
    ApriNote();
    QVERIFY(!m_lista->findChild<QAction *>(QStringLiteral("actStampa")));
    QVERIFY(!m_lista->findChild<QAction *>(QStringLiteral("actSalvaPDF")));
}

// The whole round: the menu opens the list, a new note is written, saved,
// found, reopened, changed and deleted.
void TestRicercaDocumentiVendita::savedNoteFoundAndReopenedFromTheMenu()
{
    ApriNote();
    CloseFrame(m_lista);
    InsertClienteCompleto(Db(), QStringLiteral("CLN0000009"), QStringLiteral("Neri S.r.l."), 2,
                          QStringLiteral("NRENRE80A01F257X"), QStringLiteral("09876543210"));
    QAction *voce = nullptr;
    for (QAction *action : m_module->MainForm->TopMenu(QStringLiteral("Documenti"))->actions()) {
        if (action->text() == QStringLiteral("Note di accredito"))
            voce = action;
    }
    QVERIFY(voce);
    QVERIFY(voce->isEnabled());
    Trigger(voce);
    m_lista = m_module->Main->FormAs<TKRVRicercaDocumentiVendita>(ListaNote);
    QVERIFY(m_lista);
    Trigger(m_lista, QStringLiteral("actNuovo"));
    auto editor = m_module->Main->FormAs<TKRVInserimentoNoteAccredito>(EditorNote);
    QVERIFY(editor);
    ChooseWhenShown<TKRVModSelezionaCliente>(*m_module, editor, QStringLiteral("actModSelezionaCliente"), 1,
                                             QStringLiteral("CLN0000009"));
    Trigger(editor, QStringLiteral("actSelezionaCliente"));
    Trigger(editor, QStringLiteral("actAggiungiTesto"));
    EditCell(editor->gridRigheDocumento(), 0, 2, QStringLiteral("Storno"));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 0);
    Type(Field(m_lista, QStringLiteral("txtRagioneSociale")), QStringLiteral("Neri"));
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(Column(m_lista->GridRisultati(), 4), QStringList{"Neri S.r.l."});
    editor->NuovoRecord();
    DoubleClickRow(m_lista->GridRisultati(), 0);
    QCOMPARE(editor->Righe()->Cella(0, 2), QStringLiteral("Storno"));
    Field<QPlainTextEdit>(editor, QStringLiteral("txtNote"))->setPlainText(QStringLiteral("Cambiata"));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(Db().Rows(QStringLiteral("SELECT NOTE FROM NOTE_ACCREDITO WHERE CLI_CODICE = 'CLN0000009'")),
             QStringList{"Cambiata"});
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(editor, QStringLiteral("actElimina"));
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE CLI_CODICE = 'CLN0000009'")).toInt(),
             0);
}

QTEST_MAIN(TestRicercaDocumentiVendita)
#include "tst_ricercadocumentivendita.moc"
