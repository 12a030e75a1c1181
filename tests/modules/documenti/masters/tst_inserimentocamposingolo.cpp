// The editors of the one-text tables, units of measure and payment types,
// driven as a user would. What both do is tested once for each, row by row;
// what only one does, on its own.
#include "../data/KRVServiceRows.h"
#include "KRVMastersTestKit.h"
#include "uKRVInserimentoCampoSingolo.h"
#include "uKRVRicercaTipiPagamento.h"
#include "uKRVRicercaUM.h"

using namespace KRVTest;

namespace {

// What the tests know of each editor: its action, its list's, its input, its
// table's rows ("key|text", by key) and the generator of its keys.
struct TEditoreCampo
{
    QString Azione;
    QString Lista;
    QString Campo;
    QString Righe;
    QString Generatore;
};

const TEditoreCampo UM{QStringLiteral("actInserimentoUM"), QStringLiteral("actRicercaUM"), QStringLiteral("txtUm"),
                       QStringLiteral("SELECT IDUM, UM FROM UM ORDER BY IDUM"), QStringLiteral("GN_IDUM")};
const TEditoreCampo TipiPagamento{
    QStringLiteral("actInserimentoTipiPagamento"), QStringLiteral("actRicercaTipiPagamento"),
    QStringLiteral("txtTipoPagamento"),
    QStringLiteral("SELECT IDTIPO_PAGAMENTO, TIPO_PAGAMENTO FROM TIPI_PAGAMENTO ORDER BY IDTIPO_PAGAMENTO"),
    QStringLiteral("GN_IDTIPO_PAGAMENTO")};

const TEditoreCampo &EditoreDi(const QString &azione)
{
    return azione == UM.Azione ? UM : TipiPagamento;
}

} // namespace

class TestInserimentoCampoSingolo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    // Both editors: the column "editore" names the editor's action.
    void opensWithItsCaptionSizeAndField_data();
    void opensWithItsCaptionSizeAndField();
    void savesANewRowAsShown_data();
    void savesANewRowAsShown();
    void checksWarnWithTheirIcon_data();
    void checksWarnWithTheirIcon();
    void failedSaveShowsItsIconAndCountsAsSaved_data();
    void failedSaveShowsItsIconAndCountsAsSaved();

    // The units of measure.
    void unitFieldStaysEnabledOnASavedUnit();
    void saveLeavesTheListAloneDeleteRefreshesIt();
    void newUnitKeepsItsOwnKeyWhenAnotherWorkstationInsertsMeanwhile();
    void deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsUnit();
    void savingAgainAfterAFailedSaveLeavesTheOtherRowAlone_quirkKept();

    // The payment types.
    void deletingATypeInUseDeletesItAndRefreshesTheList();

private:
    // Opens the editor through its action.
    void Apri(const TEditoreCampo &editore);
    QLineEdit *Testo() const { return Field(m_editor, m_campo->Campo); }
    QStringList Righe() const { return m_module->Database.Rows(m_campo->Righe); }

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    const TEditoreCampo *m_campo = nullptr;
    TKRVInserimentoCampoSingolo *m_editor = nullptr;
};

void TestInserimentoCampoSingolo::initTestCase()
{
    UseItalianLocale();
}

void TestInserimentoCampoSingolo::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
}

void TestInserimentoCampoSingolo::cleanup()
{
    m_boxes.reset();
    m_module.reset();
    m_editor = nullptr;
    m_campo = nullptr;
}

void TestInserimentoCampoSingolo::Apri(const TEditoreCampo &editore)
{
    m_campo = &editore;
    m_editor = Run<TKRVInserimentoCampoSingolo>(*m_module, editore.Azione);
}

void TestInserimentoCampoSingolo::opensWithItsCaptionSizeAndField_data()
{
    QTest::addColumn<QString>("editore");
    QTest::addColumn<QString>("titolo");
    QTest::addColumn<QSize>("dimensioni");
    QTest::addColumn<QString>("nomeCampo");
    QTest::addColumn<int>("lunghezza");
    QTest::newRow("unità di misura") << UM.Azione << QStringLiteral("Inserimento / Modifica unità di misura")
                                     << QSize(350, 150) << QStringLiteral("Unità di misura") << 5;
    QTest::newRow("tipi di pagamento") << TipiPagamento.Azione
                                       << QStringLiteral("Inserimento / Modifica tipi di pagamento") << QSize(800, 600)
                                       << QStringLiteral("Tipo di pagamento") << 50;
}

void TestInserimentoCampoSingolo::opensWithItsCaptionSizeAndField()
{
    QFETCH(QString, editore);
    QFETCH(QString, titolo);
    QFETCH(QSize, dimensioni);
    QFETCH(QString, nomeCampo);
    QFETCH(int, lunghezza);
    Apri(EditoreDi(editore));
    QVERIFY(m_editor);
    QCOMPARE(m_editor->windowTitle(), titolo);
    QCOMPARE(m_editor->minimumSize(), dimensioni);
    QCOMPARE(m_editor->size(), dimensioni);
    QCOMPARE(Testo()->accessibleName(), nomeCampo);
    QCOMPARE(Testo()->maxLength(), lunghezza);
    QVERIFY(Testo()->text().isEmpty());
    QVERIFY(m_editor->NewRecord());
    QVERIFY(!m_editor->actSalva()->isEnabled());
    QVERIFY(!m_editor->actNuovo()->isEnabled());
}

void TestInserimentoCampoSingolo::savesANewRowAsShown_data()
{
    QTest::addColumn<QString>("editore");
    QTest::addColumn<QString>("digitato");
    QTest::addColumn<QString>("mostrato");
    QTest::newRow("unità di misura, in maiuscolo") << UM.Azione << QStringLiteral("mq") << QStringLiteral("MQ");
    QTest::newRow("tipi di pagamento, come digitato")
        << TipiPagamento.Azione << QStringLiteral("Contanti alla consegna") << QStringLiteral("Contanti alla consegna");
}

void TestInserimentoCampoSingolo::savesANewRowAsShown()
{
    QFETCH(QString, editore);
    QFETCH(QString, digitato);
    QFETCH(QString, mostrato);
    Apri(EditoreDi(editore));
    const int expected = GetLastGeneratorValue(m_campo->Generatore, m_module->Database.Db()) + 1;
    Type(Testo(), digitato);
    QCOMPARE(Testo()->text(), mostrato);
    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Righe().last(), QStringLiteral("%1|%2").arg(m_editor->IdRecord()).arg(mostrato));
    QCOMPARE(m_editor->IdRecord(), expected);
    QVERIFY(!m_editor->actSalva()->isEnabled());
    QVERIFY(m_editor->actNuovo()->isEnabled());
    QVERIFY(Testo()->isEnabled());
}

void TestInserimentoCampoSingolo::checksWarnWithTheirIcon_data()
{
    QTest::addColumn<QString>("editore");
    QTest::addColumn<QString>("esistente");
    QTest::addColumn<QString>("doppione");
    QTest::addColumn<QString>("vuoto");
    QTest::addColumn<QString>("giaPresente");
    // A unit is found again whatever its case.
    QTest::newRow("unità di misura") << UM.Azione << QStringLiteral("INSERT INTO UM (IDUM, UM) VALUES (40, 'lt')")
                                     << QStringLiteral("LT")
                                     << QStringLiteral("Non è stata indicata l'unità di misura!")
                                     << QStringLiteral("Unità di misura già in archivio!");
    QTest::newRow("tipi di pagamento") << TipiPagamento.Azione << QString() << QStringLiteral("RIMESSA diretta")
                                       << QStringLiteral("Non è stato indicato il tipo di pagamento!")
                                       << QStringLiteral("Tipo di pagamento già presente!");
}

void TestInserimentoCampoSingolo::checksWarnWithTheirIcon()
{
    QFETCH(QString, editore);
    QFETCH(QString, esistente);
    QFETCH(QString, doppione);
    QFETCH(QString, vuoto);
    QFETCH(QString, giaPresente);
    Apri(EditoreDi(editore));
    if (!esistente.isEmpty())
        m_module->Database.Exec(esistente);
    const QStringList before = Righe();
    Type(Testo(), QStringLiteral("X"));
    Type(Testo(), QString());
    Trigger(m_editor, QStringLiteral("actSalva"));
    Type(Testo(), doppione);
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 2);
    QVERIFY(SameMessage(m_boxes->Messages().at(0), QStringLiteral("Attenzione"), vuoto, TQ3MsgIcon::Warning,
                        TQ3MsgButtons::Ok));
    QVERIFY(SameMessage(m_boxes->Messages().at(1), QStringLiteral("Attenzione"), giaPresente, TQ3MsgIcon::Warning,
                        TQ3MsgButtons::Ok));
    QCOMPARE(Righe(), before);
}

void TestInserimentoCampoSingolo::failedSaveShowsItsIconAndCountsAsSaved_data()
{
    QTest::addColumn<QString>("editore");
    QTest::addColumn<int>("generatore");
    QTest::addColumn<QString>("testo");
    QTest::addColumn<TQ3MsgIcon>("icona");
    // The generator gives a key that a seeded row holds: the insert fails.
    QTest::newRow("unità di misura, icona di errore") << UM.Azione << 1 << QStringLiteral("CM") << TQ3MsgIcon::Error;
    QTest::newRow("tipi di pagamento, senza icona")
        << TipiPagamento.Azione << 2 << QStringLiteral("Assegno") << TQ3MsgIcon::None;
}

void TestInserimentoCampoSingolo::failedSaveShowsItsIconAndCountsAsSaved()
{
    QFETCH(QString, editore);
    QFETCH(int, generatore);
    QFETCH(QString, testo);
    QFETCH(TQ3MsgIcon, icona);
    Apri(EditoreDi(editore));
    m_module->Database.Exec(QStringLiteral("SET GENERATOR %1 TO %2").arg(m_campo->Generatore).arg(generatore));
    const QStringList before = Righe();
    Type(Testo(), testo);
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(SameMessage(m_boxes->Messages().first(), QStringLiteral("Errore"),
                        QStringLiteral("Si è verificato un errore durante il salvataggio dei dati!"), icona,
                        TQ3MsgButtons::Ok));
    QCOMPARE(Righe(), before);
    QCOMPARE(m_editor->IdRecord(), generatore + 1);
    QVERIFY(!m_editor->actSalva()->isEnabled());
    QVERIFY(!m_editor->Modified());

    CloseFrame(m_editor);
    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(!m_module->Main->Form(editore));
}

void TestInserimentoCampoSingolo::unitFieldStaysEnabledOnASavedUnit()
{
    Apri(UM);
    QCOMPARE(m_editor->ApriRecord(4), 0);
    QCOMPARE(Testo()->text(), QStringLiteral("KG"));
    QVERIFY(Testo()->isEnabled());

    // Its own text is no duplicate of itself.
    Type(Testo(), QStringLiteral("KGM"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Righe().at(3), QStringLiteral("4|KGM"));
    QVERIFY(Testo()->isEnabled());
}

void TestInserimentoCampoSingolo::saveLeavesTheListAloneDeleteRefreshesIt()
{
    Apri(UM);
    auto list = Run<TKRVRicercaUM>(*m_module, UM.Lista);
    const QStringList shown = Column(list->GridRisultati(), 1);
    QCOMPARE(shown, (QStringList{"KG", "ORE", "PEZZI", "Q.LI"}));

    Run<TKRVInserimentoCampoSingolo>(*m_module, UM.Azione);
    Type(Testo(), QStringLiteral("MT"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(Column(list->GridRisultati(), 1), shown);

    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QVERIFY(!Righe().join(QLatin1Char(',')).contains(QLatin1String("MT")));
    QVERIFY(m_editor->NewRecord());
    QCOMPARE(Column(list->GridRisultati(), 1), shown);

    // The refresh runs the list's own search, with the filter it holds.
    Type(Field(list, QStringLiteral("txtUnitaMisura")), QStringLiteral("E"));
    QCOMPARE(m_editor->ApriRecord(1), 0);
    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(Column(list->GridRisultati(), 1), QStringList{QStringLiteral("ORE")});
}

void TestInserimentoCampoSingolo::deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsUnit()
{
    Apri(UM);
    Type(Testo(), QStringLiteral("MQ"));
    DeleteAfterAFailedSaveBesideAnotherWorkstation(*m_module, m_editor, *m_boxes, QStringLiteral("UM"),
                                                   QStringLiteral("IDUM"),
                                                   QStringLiteral("INSERT INTO UM (UM) VALUES ('MQ')"));
}

void TestInserimentoCampoSingolo::newUnitKeepsItsOwnKeyWhenAnotherWorkstationInsertsMeanwhile()
{
    Apri(UM);
    Type(Testo(), QStringLiteral("MQ"));
    SaveChangeDeleteBesideAnotherWorkstation(*m_module, m_editor, QStringLiteral("UM"), QStringLiteral("IDUM"),
                                             QStringLiteral("INSERT INTO UM (UM) VALUES ('ALTRA')"),
                                             [this] { Type(Testo(), QStringLiteral("MQ2")); });
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(Righe().mid(4), QStringList{QStringLiteral("5|ALTRA")});
}

// After a failed save the record goes by the key it expected, here the key of
// a row that is not its own: a second save must not write over that row.
void TestInserimentoCampoSingolo::savingAgainAfterAFailedSaveLeavesTheOtherRowAlone_quirkKept()
{
    Apri(UM);
    m_module->Database.Exec(QStringLiteral("SET GENERATOR GN_IDUM TO 1"));
    const QStringList before = Righe();
    Type(Testo(), QStringLiteral("CM"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_editor->IdRecord(), 2);

    Type(Testo(), QStringLiteral("CM2"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 2);
    KRV_COMPARE_BOX(m_boxes->Messages().at(1), "Errore", "Si è verificato un errore durante il salvataggio dei dati!",
                    Error, Ok);
    QCOMPARE(Righe(), before);
}

// The delete rule always allows, so a payment type that a customer uses goes
// once the user confirms.
void TestInserimentoCampoSingolo::deletingATypeInUseDeletesItAndRefreshesTheList()
{
    Apri(TipiPagamento);
    KRVInsertCliente(m_module->Database, QStringLiteral("C001"), QStringLiteral("Cliente"), 2);
    auto list = Run<TKRVRicercaTipiPagamento>(*m_module, TipiPagamento.Lista);
    QCOMPARE(list->GridRisultati()->rowCount(), 5);

    Run<TKRVInserimentoCampoSingolo>(*m_module, TipiPagamento.Azione);
    QCOMPARE(m_editor->ApriRecord(2), 0);
    QCOMPARE(Testo()->text(), QStringLiteral("Bonifico 30 gg Data Fattura"));
    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(Righe().size(), 4);
    QCOMPARE(list->GridRisultati()->rowCount(), 4);
    QCOMPARE(RowOf(list->GridRisultati(), 1, QStringLiteral("Bonifico 30 gg Data Fattura")), -1);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(Testo()->text().isEmpty());
}

QTEST_MAIN(TestInserimentoCampoSingolo)
#include "tst_inserimentocamposingolo.moc"
