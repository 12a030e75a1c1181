#include "../masters/KRVMastersTestKit.h"
#include "KRVUtils.h"
#include "Q3Sql.h"
#include "uKRVInserimentoNoteDocumenti.h"
#include "uKRVModSelezionaNotaDocumenti.h"
#include "uKRVRicercaNoteDocumenti.h"

#include <QMenuBar>
#include <QPlainTextEdit>

using namespace KRVTest;

namespace {

const QString ActEditor = QStringLiteral("actInserimentoNoteDocumenti");
const QString ActList = QStringLiteral("actRicercaNoteDocumenti");
const QString ActDialog = QStringLiteral("actModSelezionaNotaDocumenti");
const QString MsgModifiche = QStringLiteral("Ci sono delle modifiche non salvate.\n\rContinuare comunque?");

} // namespace

class TestNoteDocumenti : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    // Editor
    void editorOpensOnANewNote();
    void savesANewNoteWithItsText();
    void emptyTitleIsRefused();
    void titleUsedByAnotherNoteIsRefusedWhateverItsCase();
    void resavingAnUnchangedNotePassesTheTitleCheck();
    void nuovoAndClosingAskAboutUnsavedChanges();
    void failedSaveShowsTheErrorAndCountsAsSaved();
    void afterAFailedSaveTheNoteIsKeptAndTheNextSaveStoresItOnce();
    void deleteFromTheEditorAsksThenBlanksAndRefreshesTheList();
    void deleteOnANewNoteAsksNothing();

    // Search list
    void listShowsEveryNoteByTitleWithoutRegardToCase();
    void titleFilterWithAQuoteAndReset();
    void listDeleteAsksThenDeletesAndSearchesAgain();
    void doubleClickModificaAndNuovoOpenTheEditor();
    void savingInTheEditorRefreshesTheList();
    void menuTabelleNoteDocumentiOpensTheList();

    // Selection dialog
    void dialogIsCreatedOnceWithItsTitleColumnAndButtons();
    void okWithNoRowWarnsAndStays();
    void doubleClickChoosesTheNoteWhoseTextTheCallerReads();
    void dialogKeepsItsFilterAndRowsBetweenUses();

private:
    QLineEdit *Titolo() const { return Field(m_editor, QStringLiteral("txtTitolo")); }
    QPlainTextEdit *Testo() const { return Field<QPlainTextEdit>(m_editor, QStringLiteral("txtTesto")); }
    QStringList Notes() const;
    void InsertNote(int id, const QString &titolo, const QString &testo) const;
    QStringList SalvaConChiaveOccupata();
    TKRVModSelezionaNotaDocumenti *Dialog() const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    TKRVInserimentoNoteDocumenti *m_editor = nullptr;
};

void TestNoteDocumenti::initTestCase()
{
    UseItalianLocale();
}

void TestNoteDocumenti::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    InsertNote(1, QStringLiteral("bonifico"), QStringLiteral("Pagamento a mezzo bonifico bancario."));
    InsertNote(2, QStringLiteral("Avvertenze"), QStringLiteral("Merce viaggiante a rischio del committente.\nFirma."));
    InsertNote(3, QStringLiteral("Contributo CONAI"), QStringLiteral("Contributo CONAI assolto ove dovuto."));
    m_module->Database.Exec(QStringLiteral("SET GENERATOR GN_IDNOTA_DOCUMENTI TO 3"));
    m_editor = nullptr;
}

void TestNoteDocumenti::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

QStringList TestNoteDocumenti::Notes() const
{
    return m_module->Database.Rows(
        QStringLiteral("SELECT IDNOTA_DOCUMENTI, TITOLO, TESTO FROM NOTE_DOCUMENTI ORDER BY IDNOTA_DOCUMENTI"));
}

// A new note "Nuova" saved while the key its save expects is taken: the
// save fails. Answers the notes as they were.
QStringList TestNoteDocumenti::SalvaConChiaveOccupata()
{
    m_module->Database.Exec(QStringLiteral("SET GENERATOR GN_IDNOTA_DOCUMENTI TO 1"));
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    const QStringList before = Notes();
    Type(Titolo(), QStringLiteral("Nuova"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    return before;
}

void TestNoteDocumenti::InsertNote(int id, const QString &titolo, const QString &testo) const
{
    m_module->Database.Exec(
        QStringLiteral("INSERT INTO NOTE_DOCUMENTI (IDNOTA_DOCUMENTI, TITOLO, TESTO) VALUES (%1, %2, %3)")
            .arg(id)
            .arg(QuotedStr(titolo), QuotedStr(testo)));
}

TKRVModSelezionaNotaDocumenti *TestNoteDocumenti::Dialog() const
{
    Trigger(m_module->Main->Action(ActDialog));
    return m_module->Main->FormAs<TKRVModSelezionaNotaDocumenti>(ActDialog);
}

void TestNoteDocumenti::editorOpensOnANewNote()
{
    QVERIFY(m_module->Main->Action(ActEditor)->isEnabled());
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    QVERIFY(m_editor);
    QVERIFY(qobject_cast<QMdiSubWindow *>(m_editor->parentWidget()));
    QCOMPARE(m_editor->windowTitle(), QStringLiteral("Inserimento / Modifica note documenti"));
    QCOMPARE(m_editor->size(), m_editor->minimumSize());
    QCOMPARE(Titolo()->accessibleName(), QStringLiteral("Titolo"));
    QCOMPARE(Titolo()->maxLength(), 100);
    QCOMPARE(Testo()->accessibleName(), QStringLiteral("Testo"));
    QVERIFY(Titolo()->text().isEmpty());
    QVERIFY(Testo()->toPlainText().isEmpty());
    QVERIFY(m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), -1);
    QVERIFY(!m_editor->actSalva()->isEnabled());
    QVERIFY(!m_editor->actNuovo()->isEnabled());
    QCOMPARE(Captions(m_editor->findChild<QToolBar *>(QStringLiteral("tBarStandard"))),
             (QStringList{"Nuovo", "Elimina", "Salva", "Chiudi"}));
    // The text takes the room below the title.
    QVERIFY(Testo()->height() > m_editor->height() / 2);
}

void TestNoteDocumenti::savesANewNoteWithItsText()
{
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    Type(Titolo(), QStringLiteral("Reso merce"));
    QVERIFY(m_editor->actSalva()->isEnabled());
    QTest::keyClicks(Testo(), QStringLiteral("Prima riga"));
    QTest::keyClick(Testo(), Qt::Key_Return);
    QTest::keyClicks(Testo(), QStringLiteral("seconda riga"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_editor->IdRecord(), 4);
    QCOMPARE(Notes().last(), QStringLiteral("4|Reso merce|Prima riga\nseconda riga"));
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->actSalva()->isEnabled());
    QVERIFY(m_editor->actNuovo()->isEnabled());
    QCOMPARE(GetNotaDocumento(m_module->Db(), 4), QStringLiteral("Prima riga\nseconda riga"));
}

void TestNoteDocumenti::emptyTitleIsRefused()
{
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    const QStringList before = Notes();
    QTest::keyClicks(Testo(), QStringLiteral("Senza titolo"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione", "Non è stato indicato il titolo!", Warning, Ok);
    QCOMPARE(Notes(), before);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->actSalva()->isEnabled());
}

void TestNoteDocumenti::titleUsedByAnotherNoteIsRefusedWhateverItsCase()
{
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    const QStringList before = Notes();
    Type(Titolo(), QStringLiteral("BONIFICO"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione", "Esiste già una nota con questo titolo!", Warning, Ok);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->actSalva()->isEnabled());

    // An opened note taking another's title is refused too.
    m_boxes->Clear();
    m_boxes->Enqueue(TQ3MsgResult::Yes);
    QCOMPARE(m_editor->ApriRecord(2), 0);
    Type(Titolo(), QStringLiteral("Bonifico"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 2);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Conferma",
                    "Ci sono delle modifiche non salvate.\n\rContinuare comunque?", Question, YesNo);
    KRV_COMPARE_BOX(m_boxes->Messages().at(1), "Attenzione", "Esiste già una nota con questo titolo!", Warning, Ok);
    QCOMPARE(Notes(), before);
    QVERIFY(m_editor->actSalva()->isEnabled());
}

// The note's own key is left out of the uniqueness test.
void TestNoteDocumenti::resavingAnUnchangedNotePassesTheTitleCheck()
{
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    const QStringList before = Notes();
    QCOMPARE(m_editor->ApriRecord(2), 0);
    QCOMPARE(Titolo()->text(), QStringLiteral("Avvertenze"));
    QCOMPARE(Testo()->toPlainText(), QStringLiteral("Merce viaggiante a rischio del committente.\nFirma."));
    QVERIFY(!m_editor->actSalva()->isEnabled());

    m_editor->SalvaRecord();
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Notes(), before);

    // Its own title in other letters, with a new text, is no duplicate either.
    Type(Titolo(), QStringLiteral("AVVERTENZE"));
    Testo()->setPlainText(QStringLiteral("Nuovo testo"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Notes().at(1), QStringLiteral("2|AVVERTENZE|Nuovo testo"));
    QCOMPARE(m_editor->IdRecord(), 2);
    QCOMPARE(Notes().size(), before.size());
}

void TestNoteDocumenti::nuovoAndClosingAskAboutUnsavedChanges()
{
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    QCOMPARE(m_editor->ApriRecord(1), 0);
    Testo()->setPlainText(QStringLiteral("Cambiato"));

    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(m_editor->IdRecord(), 1);
    QCOMPARE(Testo()->toPlainText(), QStringLiteral("Cambiato"));

    m_boxes->Enqueue(TQ3MsgResult::No);
    CloseFrame(m_editor);
    QCOMPARE(m_module->Main->Form(ActEditor), m_editor);

    m_boxes->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QVERIFY(m_editor->NewRecord());
    QVERIFY(Titolo()->text().isEmpty());
    QVERIFY(Testo()->toPlainText().isEmpty());

    QCOMPARE(m_boxes->Messages().size(), 3);
    for (const TQ3Message &box : m_boxes->Messages())
        QVERIFY(SameMessage(box, QStringLiteral("Conferma"), MsgModifiche, TQ3MsgIcon::Question, TQ3MsgButtons::YesNo));
    QCOMPARE(Notes().first(), QStringLiteral("1|bonifico|Pagamento a mezzo bonifico bancario."));

    // A clean editor closes without a question.
    CloseFrame(m_editor);
    QCOMPARE(m_boxes->Messages().size(), 3);
    QVERIFY(!m_module->Main->Form(ActEditor));
}

// The generator behind the table's keys: the new key is taken already.
void TestNoteDocumenti::failedSaveShowsTheErrorAndCountsAsSaved()
{
    const QStringList before = SalvaConChiaveOccupata();

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Errore", "Si è verificato un errore durante il salvataggio dei dati!",
                    Error, Ok);
    QCOMPARE(Notes(), before);
    QCOMPARE(m_editor->IdRecord(), 2);
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->actSalva()->isEnabled());
}

// The note of the failed save is in no table: closing asks first, and once
// the cause is gone the next save stores it, once.
void TestNoteDocumenti::afterAFailedSaveTheNoteIsKeptAndTheNextSaveStoresItOnce()
{
    const QStringList before = SalvaConChiaveOccupata();
    QCOMPARE(m_boxes->Messages().size(), 1);

    m_boxes->Enqueue(TQ3MsgResult::No);
    CloseFrame(m_editor);
    QCOMPARE(m_boxes->Messages().size(), 2);
    QVERIFY(SameMessage(m_boxes->Messages().at(1), QStringLiteral("Conferma"), MsgModifiche, TQ3MsgIcon::Question,
                        TQ3MsgButtons::YesNo));
    QCOMPARE(m_module->Main->Form(ActEditor), m_editor);

    m_module->Database.Exec(QStringLiteral("SET GENERATOR GN_IDNOTA_DOCUMENTI TO 3"));
    Testo()->setPlainText(QStringLiteral("Testo della nuova nota"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 2);
    QCOMPARE(Notes(), before + QStringList{QStringLiteral("4|Nuova|Testo della nuova nota")});
    QCOMPARE(m_editor->IdRecord(), 4);

    Testo()->setPlainText(QStringLiteral("Testo cambiato"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(Notes(), before + QStringList{QStringLiteral("4|Nuova|Testo cambiato")});
    CloseFrame(m_editor);
    QCOMPARE(m_boxes->Messages().size(), 2);
}

void TestNoteDocumenti::deleteFromTheEditorAsksThenBlanksAndRefreshesTheList()
{
    auto list = Run<TKRVRicercaNoteDocumenti>(*m_module, ActList);
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    QCOMPARE(m_editor->ApriRecord(3), 0);

    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(Notes().size(), 3);
    QCOMPARE(m_editor->IdRecord(), 3);

    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 2);
    for (const TQ3Message &box : m_boxes->Messages())
        KRV_COMPARE_BOX(box, "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(Notes().size(), 2);
    QVERIFY(!Notes().join(QLatin1Char(',')).contains(QLatin1String("CONAI")));
    QVERIFY(m_editor->NewRecord());
    QVERIFY(Titolo()->text().isEmpty());
    QCOMPARE(Column(list->GridRisultati(), 1), (QStringList{"Avvertenze", "bonifico"}));
}

void TestNoteDocumenti::deleteOnANewNoteAsksNothing()
{
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    Type(Titolo(), QStringLiteral("Bozza"));
    Trigger(m_editor, QStringLiteral("actElimina"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QVERIFY(Titolo()->text().isEmpty());
    QVERIFY(!m_editor->actSalva()->isEnabled());
    QCOMPARE(Notes().size(), 3);
}

void TestNoteDocumenti::listShowsEveryNoteByTitleWithoutRegardToCase()
{
    QVERIFY(m_module->Main->Action(ActList)->isEnabled());
    auto list = Run<TKRVRicercaNoteDocumenti>(*m_module, ActList);
    QVERIFY(list);
    QCOMPARE(list->windowTitle(), QStringLiteral("Gestione note documenti"));
    TKRVGrigliaRisultati *grid = list->GridRisultati();
    QCOMPARE(Titles(grid), (QStringList{QString(), "Titolo", "Testo"}));
    QVERIFY(grid->isColumnHidden(0));
    QCOMPARE(grid->rowCount(), 3);
    const QList<QStringList> expected{
        {"2", "Avvertenze", "Merce viaggiante a rischio del committente.\nFirma."},
        {"1", "bonifico", "Pagamento a mezzo bonifico bancario."},
        {"3", "Contributo CONAI", "Contributo CONAI assolto ove dovuto."},
    };
    for (int row = 0; row < expected.size(); ++row) {
        for (int column = 0; column < 3; ++column)
            QCOMPARE(grid->Valore(row, column), expected.at(row).at(column));
    }
    QCOMPARE(grid->Testo(1, 1), QStringLiteral("bonifico"));
    // The text column takes the width the title leaves.
    QCOMPARE(grid->columnWidth(2), grid->contentsRect().width() - 21 - grid->columnWidth(1));
    QCOMPARE(Field(list, QStringLiteral("txtTitolo"))->accessibleName(), QStringLiteral("    Titolo"));
    QCOMPARE(Captions(list->findChild<QToolBar *>(QStringLiteral("tBarStandard"))),
             (QStringList{"Chiudi", "Modifica", "Nuovo", "Elimina"}));
    QCOMPARE(Captions(list->findChild<QToolBar *>(QStringLiteral("tBarRicerca"))),
             (QStringList{"Cerca", "Ripristina"}));
}

void TestNoteDocumenti::titleFilterWithAQuoteAndReset()
{
    InsertNote(4, QStringLiteral("Dell'Orto"), QStringLiteral("Consegna presso Dell'Orto."));
    auto list = Run<TKRVRicercaNoteDocumenti>(*m_module, ActList);
    QLineEdit *filter = Field(list, QStringLiteral("txtTitolo"));
    Type(filter, QStringLiteral("dell'o"));
    PressEnter(filter);
    QCOMPARE(Column(list->GridRisultati(), 1), QStringList{QStringLiteral("Dell'Orto")});

    Type(filter, QStringLiteral("CO"));
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(Column(list->GridRisultati(), 1), (QStringList{"bonifico", "Contributo CONAI"}));

    // "Ripristina" empties the filter and lists every note.
    Trigger(list, QStringLiteral("actRipristina"));
    QVERIFY(filter->text().isEmpty());
    QCOMPARE(Column(list->GridRisultati(), 1),
             (QStringList{"Avvertenze", "bonifico", "Contributo CONAI", "Dell'Orto"}));
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestNoteDocumenti::listDeleteAsksThenDeletesAndSearchesAgain()
{
    auto list = Run<TKRVRicercaNoteDocumenti>(*m_module, ActList);
    TKRVGrigliaRisultati *grid = list->GridRisultati();
    Type(Field(list, QStringLiteral("txtTitolo")), QStringLiteral("o"));
    PressEnter(Field(list, QStringLiteral("txtTitolo")));
    QCOMPARE(Column(grid, 1), (QStringList{"bonifico", "Contributo CONAI"}));
    SelectRow(grid, 0);

    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(list, QStringLiteral("actElimina"));
    QCOMPARE(Notes().size(), 3);
    QCOMPARE(grid->rowCount(), 2);

    // Meanwhile another note matches: the search after the delete shows it.
    InsertNote(4, QStringLiteral("Ordine"), QString());
    SelectRow(grid, 0);
    Trigger(list, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 2);
    for (const TQ3Message &box : m_boxes->Messages())
        KRV_COMPARE_BOX(box, "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_DOCUMENTI WHERE IDNOTA_DOCUMENTI=1"))
                 .toInt(),
             0);
    QCOMPARE(Column(grid, 1), (QStringList{"Contributo CONAI", "Ordine"}));

    // Nothing selected, nothing asked.
    Type(Field(list, QStringLiteral("txtTitolo")), QStringLiteral("nessuna"));
    Trigger(list, QStringLiteral("actCerca"));
    Trigger(list, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 2);
}

void TestNoteDocumenti::doubleClickModificaAndNuovoOpenTheEditor()
{
    auto list = Run<TKRVRicercaNoteDocumenti>(*m_module, ActList);
    TKRVGrigliaRisultati *grid = list->GridRisultati();
    DoubleClickRow(grid, RowOf(grid, 1, QStringLiteral("Contributo CONAI")));
    m_editor = m_module->Main->FormAs<TKRVInserimentoNoteDocumenti>(ActEditor);
    QVERIFY(m_editor);
    QCOMPARE(m_editor->IdRecord(), 3);
    QCOMPARE(Titolo()->text(), QStringLiteral("Contributo CONAI"));
    QCOMPARE(m_module->MainForm->MdiArea()->activeSubWindow()->widget(), m_editor);

    SelectRow(grid, RowOf(grid, 1, QStringLiteral("Avvertenze")));
    Trigger(list, QStringLiteral("actModifica"));
    QCOMPARE(m_editor->IdRecord(), 2);

    Trigger(list, QStringLiteral("actNuovo"));
    QCOMPARE(m_module->Main->Form(ActEditor), m_editor);
    QCOMPARE(m_editor->IdRecord(), 2);
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestNoteDocumenti::savingInTheEditorRefreshesTheList()
{
    auto list = Run<TKRVRicercaNoteDocumenti>(*m_module, ActList);
    m_editor = Run<TKRVInserimentoNoteDocumenti>(*m_module, ActEditor);
    Type(Titolo(), QStringLiteral("Acconto"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(Column(list->GridRisultati(), 1), (QStringList{"Acconto", "Avvertenze", "bonifico", "Contributo CONAI"}));
    QCOMPARE(list->GridRisultati()->Valore(0, 0), QStringLiteral("4"));
}

void TestNoteDocumenti::menuTabelleNoteDocumentiOpensTheList()
{
    QMenu *tabelle = nullptr;
    for (QAction *top : m_module->MainForm->menuBar()->actions()) {
        if (top->text() == QLatin1String("Tabelle"))
            tabelle = top->menu();
    }
    QVERIFY(tabelle);
    QAction *entry = nullptr;
    for (QAction *action : tabelle->actions()) {
        if (action->text() == QLatin1String("Note documenti"))
            entry = action;
    }
    QVERIFY(entry);
    QVERIFY(entry->isEnabled());
    Trigger(entry);
    auto list = m_module->Main->FormAs<TKRVRicercaNoteDocumenti>(ActList);
    QVERIFY(list);
    QCOMPARE(m_module->MainForm->MdiArea()->activeSubWindow()->widget(), list);
}

void TestNoteDocumenti::dialogIsCreatedOnceWithItsTitleColumnAndButtons()
{
    QVERIFY(m_module->Main->Action(ActDialog)->isEnabled());
    QVERIFY(!m_module->Main->Form(ActDialog));
    auto dialog = Dialog();
    QVERIFY(dialog);
    QVERIFY(!dialog->isVisible());
    QVERIFY(dialog->isModal());
    QCOMPARE(Dialog(), dialog);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Seleziona nota documenti"));
    TKRVGrigliaRisultati *grid = dialog->gridRisultati();
    QCOMPARE(grid->objectName(), QStringLiteral("gridRisultati"));
    QCOMPARE(Titles(grid), (QStringList{QString(), "Titolo"}));
    QVERIFY(grid->isColumnHidden(0));
    QCOMPARE(Column(grid, 1), (QStringList{"Avvertenze", "bonifico", "Contributo CONAI"}));
    QCOMPARE(Captions(dialog->findChild<QToolBar *>(QStringLiteral("tBarConferma"))), (QStringList{"Ok", "Annulla"}));
    QCOMPARE(Captions(dialog->findChild<QToolBar *>(QStringLiteral("tBarRicerca"))),
             (QStringList{"Cerca", "Ripristina"}));
    QCOMPARE(Field(dialog, QStringLiteral("txtTitolo"))->accessibleName(), QStringLiteral("    Titolo"));
}

void TestNoteDocumenti::okWithNoRowWarnsAndStays()
{
    auto dialog = Dialog();
    bool stayedOpen = false;
    const int result = ShowModal(dialog, [&] {
        Type(Field(dialog, QStringLiteral("txtTitolo")), QStringLiteral("nessuna"));
        Trigger(dialog, QStringLiteral("actCerca"));
        Trigger(dialog, QStringLiteral("actOK"));
        stayedOpen = dialog->isVisible();
        Trigger(dialog, QStringLiteral("actAnnulla"));
    });
    QVERIFY(stayedOpen);
    QCOMPARE(result, int(QDialog::Rejected));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione", "Nessuna voce selezionata!", Warning, Ok);
    QCOMPARE(dialog->ApriSelezionato(), -1);
}

void TestNoteDocumenti::doubleClickChoosesTheNoteWhoseTextTheCallerReads()
{
    auto dialog = Dialog();
    const int result = ShowModal(dialog, [&] {
        TKRVGrigliaRisultati *grid = dialog->gridRisultati();
        DoubleClickRow(grid, RowOf(grid, 1, QStringLiteral("Avvertenze")));
    });
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(dialog->ApriSelezionato(), 2);
    QCOMPARE(GetNotaDocumento(m_module->Db(), dialog->ApriSelezionato()),
             QStringLiteral("Merce viaggiante a rischio del committente.\nFirma."));

    const int chosen = ShowModal(dialog, [&] {
        SelectRow(dialog->gridRisultati(), RowOf(dialog->gridRisultati(), 1, QStringLiteral("bonifico")));
        Trigger(dialog, QStringLiteral("actOK"));
    });
    QCOMPARE(chosen, int(QDialog::Accepted));
    QCOMPARE(dialog->ApriSelezionato(), 1);
    QVERIFY(m_boxes->Messages().isEmpty());
}

// Like the other dialogs with a filter, it shows again what it showed; "Cerca"
// and "Ripristina" read the notes again.
void TestNoteDocumenti::dialogKeepsItsFilterAndRowsBetweenUses()
{
    auto dialog = Dialog();
    QLineEdit *filter = Field(dialog, QStringLiteral("txtTitolo"));
    ShowModal(dialog, [&] {
        Type(filter, QStringLiteral("CONAI"));
        PressEnter(filter);
    });
    QCOMPARE(Column(dialog->gridRisultati(), 1), QStringList{QStringLiteral("Contributo CONAI")});

    InsertNote(4, QStringLiteral("CONAI esente"), QString());
    QStringList shown;
    QString filterShown;
    ShowModal(dialog, [&] {
        shown = Column(dialog->gridRisultati(), 1);
        filterShown = filter->text();
        Trigger(dialog, QStringLiteral("actCerca"));
    });
    QCOMPARE(shown, QStringList{QStringLiteral("Contributo CONAI")});
    QCOMPARE(filterShown, QStringLiteral("CONAI"));
    QCOMPARE(Column(dialog->gridRisultati(), 1), (QStringList{"CONAI esente", "Contributo CONAI"}));

    ShowModal(dialog, [&] { Trigger(dialog, QStringLiteral("actRipristina")); });
    QVERIFY(filter->text().isEmpty());
    QCOMPARE(Column(dialog->gridRisultati(), 1),
             (QStringList{"Avvertenze", "bonifico", "CONAI esente", "Contributo CONAI"}));
    QVERIFY(m_boxes->Messages().isEmpty());
}

QTEST_MAIN(TestNoteDocumenti)
#include "tst_notedocumenti.moc"
