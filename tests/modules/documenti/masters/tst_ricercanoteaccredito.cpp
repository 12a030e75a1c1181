// The credit note search list driven as a user would.
#include "../documents/KRVFattureTestKit.h"
#include "Q3MainForm.h"
#include "uKRVGrigliaRighe.h"
#include "uKRVInserimentoNoteAccredito.h"
#include "uKRVModSelezionaCliente.h"
#include "uKRVRicercaNoteAccredito.h"

#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QToolBar>

#include <memory>

using namespace KRVTest;

namespace {

const QString ActLista = QStringLiteral("actRicercaNoteAccredito");
const QString ActEditor = QStringLiteral("actInserimentoNoteAccredito");

} // namespace

class TestRicercaNoteAccredito : public QObject, public TKRVElencoDocumentiTest<TKRVRicercaNoteAccredito>
{
    Q_OBJECT

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init();
    void cleanup() { Chiudi(); }
    void columnsAndEmptyGridUntilTheFirstSearch();
    void yearClauseWithBlanks();
    void threeFiltersOnly();
    void noPrintCommands();
    void openingNeedsTheViewRight();
    void newCreditNoteFromTheList();
    void nuovoAsksBeforeDroppingTheEditorsChanges();
    void deleteFromTheList();
    void savedNoteFoundAndReopenedFromTheMenu();
};

void TestRicercaNoteAccredito::init()
{
    Prepara();
    KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), 1, m_anno, QStringLiteral("CLN0000001"));
    const int seconda = KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), 2, m_anno, QStringLiteral("CLN0000002"));
    KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), 1, m_anno - 1, QStringLiteral("CLN0000001"));
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 9, m_anno, QStringLiteral("CLN0000001"));
    Db().Exec(QStringLiteral("UPDATE NOTE_ACCREDITO SET CLI_RAGIONESOCIALE = 'L''Ottica di Rossi', TOTALE_DOCUMENTO = 1234.5 "
                             "WHERE IDNOTA_ACCREDITO = ")
              + QString::number(seconda));
    KRVInsertRiga(Db(), QStringLiteral("NOTE_ACCREDITO_DETT"), seconda, QStringLiteral("Testo"));
    m_lista = Run<TKRVRicercaNoteAccredito>(*m_module, ActLista);
}

void TestRicercaNoteAccredito::columnsAndEmptyGridUntilTheFirstSearch()
{
    QVERIFY(m_lista);
    QCOMPARE(m_lista->windowTitle(), QStringLiteral("Ricerca note di accredito"));
    TKRVGrigliaRisultati *griglia = m_lista->GridRisultati();
    QCOMPARE(griglia->rowCount(), 0);
    QStringList titoli;
    for (int c = 1; c < griglia->columnCount(); ++c)
        titoli << griglia->Titolo(c);
    QCOMPARE(titoli, (QStringList{"N.", "Data", "Codice", "Ragione sociale", "Totale", "Pagato"}));
    QVERIFY(griglia->isColumnHidden(0));
    QCOMPARE(Anno()->value(), m_anno);
    Trigger(m_lista, QStringLiteral("actCerca"));
    QCOMPARE(Column(griglia, 1), (QStringList{"2", "1"}));
    const int riga = RowOf(griglia, 1, QStringLiteral("2"));
    QCOMPARE(griglia->Testo(riga, 4), QStringLiteral("L'Ottica di Rossi"));
    QCOMPARE(griglia->Testo(riga, 5), QStringLiteral("1.234,50\u00A0€"));
}

void TestRicercaNoteAccredito::yearClauseWithBlanks()
{
    QCOMPARE(m_lista->ClausolaFiltri(), QStringLiteral("WHERE ANNO = %1").arg(m_anno));
    Anno()->setValue(m_anno - 1);
    Type(Field(m_lista, QStringLiteral("txtCodice")), QStringLiteral("CLN"));
    Type(Field(m_lista, QStringLiteral("txtRagioneSociale")), QStringLiteral("L'Ottica"));
    QCOMPARE(m_lista->ClausolaFiltri(),
             QStringLiteral("WHERE ANNO = %1 AND CLI_CODICE CONTAINING 'CLN' AND CLI_RAGIONESOCIALE CONTAINING 'L''Ottica'")
                 .arg(m_anno - 1));
    Field(m_lista, QStringLiteral("txtRagioneSociale"))->clear();
    QTest::keyClick(Anno(), Qt::Key_Return);
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"1"});
    // Emptied by the user, the box still holds its last value.
    Anno()->findChild<QLineEdit *>()->clear();
    QCOMPARE(m_lista->ClausolaFiltri(), QStringLiteral("WHERE ANNO = %1 AND CLI_CODICE CONTAINING 'CLN'").arg(m_anno - 1));
    Trigger(m_lista, QStringLiteral("actRipristina"));
    QCOMPARE(Anno()->value(), m_anno);
    QCOMPARE(Field(m_lista, QStringLiteral("txtCodice"))->text(), QString());
    QCOMPARE(m_lista->GridRisultati()->rowCount(), 1);
}

void TestRicercaNoteAccredito::threeFiltersOnly()
{
    QVERIFY(!m_lista->findChild<QLineEdit *>(QStringLiteral("txtRigaDescrizione")));
    QToolBar *barra = Field<QToolBar>(m_lista, QStringLiteral("tBarRicerca"));
    QStringList etichette;
    for (QAction *action : barra->actions()) {
        if (auto etichetta = qobject_cast<QLabel *>(barra->widgetForAction(action)))
            etichette << etichetta->text();
    }
    QCOMPARE(etichette, (QStringList{"Codice", "Ragione sociale", "Anno"}));
}

void TestRicercaNoteAccredito::noPrintCommands()
{
    QVERIFY(!m_lista->findChild<QAction *>(QStringLiteral("actStampa")));
    QVERIFY(!m_lista->findChild<QAction *>(QStringLiteral("actSalvaPDF")));
}

void TestRicercaNoteAccredito::openingNeedsTheViewRight()
{
    Trigger(m_lista, QStringLiteral("actCerca"));
    LoginWithRights(Db(), QStringLiteral("magazziniere"),
                    {QStringLiteral("Note di accredito (modifica)"), QStringLiteral("Fatture di vendita (visualizzazione)")});
    DoubleClickRow(m_lista->GridRisultati(), 0);
    Trigger(m_lista, QStringLiteral("actModifica"));
    QCOMPARE(m_responder->Messages().size(), 2);
    for (const TQ3Message &box : m_responder->Messages())
        KRV_COMPARE_BOX(box, "Attenzione", "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QVERIFY(!m_module->Main->Form(ActEditor));
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    LoginWithRights(Db(), QStringLiteral("lettore"), {QStringLiteral("Note di accredito (visualizzazione)")});
    DoubleClickRow(m_lista->GridRisultati(), RowOf(m_lista->GridRisultati(), 1, QStringLiteral("2")));
    auto editor = m_module->Main->FormAs<TKRVInserimentoNoteAccredito>(ActEditor);
    QVERIFY(editor);
    QCOMPARE(editor->Testata().Cliente.RAGIONESOCIALE, QStringLiteral("L'Ottica di Rossi"));
    QCOMPARE(editor->Righe()->Righe(), 1);
}

void TestRicercaNoteAccredito::newCreditNoteFromTheList()
{
    LoginWithRights(Db(), QStringLiteral("ospite"),
                    {QStringLiteral("Note di accredito (visualizzazione)"), QStringLiteral("Fatture di vendita (modifica)")});
    Trigger(m_lista, QStringLiteral("actNuovo"));
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QVERIFY(!m_module->Main->Form(ActEditor));
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    LoginWithRights(Db(), QStringLiteral("contabile"), {QStringLiteral("Note di accredito (modifica)")});
    Trigger(m_lista, QStringLiteral("actNuovo"));
    auto editor = m_module->Main->FormAs<TKRVInserimentoNoteAccredito>(ActEditor);
    QVERIFY(editor);
    QVERIFY(editor->NewRecord());
    QCOMPARE(editor->Testata().Numero, 3);
}

void TestRicercaNoteAccredito::deleteFromTheList()
{
    Trigger(m_lista, QStringLiteral("actCerca"));
    LoginWithRights(Db(), QStringLiteral("ospite"),
                    {QStringLiteral("Note di accredito (visualizzazione)"), QStringLiteral("Fatture di vendita (eliminazione)")});
    Trigger(m_lista, QStringLiteral("actElimina"));
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    LoginWithRights(Db(), QStringLiteral("contabile"), {QStringLiteral("Note di accredito (eliminazione)")});
    SelectRow(m_lista->GridRisultati(), RowOf(m_lista->GridRisultati(), 1, QStringLiteral("2")));
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_lista, QStringLiteral("actElimina"));
    KRV_COMPARE_BOX(m_responder->Messages().at(1), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(Column(m_lista->GridRisultati(), 1), QStringList{"1"});
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO")).toInt(), 2);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT")).toInt(), 0);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 1);
}

// The whole round: the menu opens the list, a new note is written, saved,
// found, reopened, changed and deleted.
void TestRicercaNoteAccredito::savedNoteFoundAndReopenedFromTheMenu()
{
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
    m_lista = m_module->Main->FormAs<TKRVRicercaNoteAccredito>(ActLista);
    QVERIFY(m_lista);
    Trigger(m_lista, QStringLiteral("actNuovo"));
    auto editor = m_module->Main->FormAs<TKRVInserimentoNoteAccredito>(ActEditor);
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
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE CLI_CODICE = 'CLN0000009'")).toInt(), 0);
}

void TestRicercaNoteAccredito::nuovoAsksBeforeDroppingTheEditorsChanges()
{
    NuovoSopraUnDocumentoModificato(ActEditor);
}

QTEST_MAIN(TestRicercaNoteAccredito)
#include "tst_ricercanoteaccredito.moc"
