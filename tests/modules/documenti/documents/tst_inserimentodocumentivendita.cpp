// What both sales document editors, the invoice's and the credit note's, do
// alike, driven as a user would: each test runs once for each editor. What
// only one of them does is in its own suite.
#include "KRVFattureTestKit.h"
#include "uKRVInserimentoDocumentoBase.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSpinBox>

using namespace KRVTest;

namespace {

const QString EditorFatture = QStringLiteral("actInserimentoFattureVendita");
const QString EditorNote = QStringLiteral("actInserimentoNoteAccredito");

// The row of each editor, its further columns' values to follow.
QTestData &Fattura(const char *tag)
{
    return QTest::newRow(tag) << EditorFatture << QStringLiteral("FATT_VEND") << QStringLiteral("FATT_VEND_DETT")
                              << QStringLiteral("IDFATT_VEND");
}

QTestData &Nota(const char *tag)
{
    return QTest::newRow(tag) << EditorNote << QStringLiteral("NOTE_ACCREDITO") << QStringLiteral("NOTE_ACCREDITO_DETT")
                              << QStringLiteral("IDNOTA_ACCREDITO");
}

} // namespace

class TestInserimentoDocumentiVendita : public QObject, public TKRVDocumentoTest<TKRVInserimentoDocumentoBase>
{
    Q_OBJECT

public:
    TestInserimentoDocumentiVendita() : TKRVDocumentoTest(QString()) {}

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init() { Prepara(); }
    void cleanup() { Chiudi(); }

    // The columns "editore", "testate", "righe" and "chiave" come first in
    // every row: the editor's action, its document's tables and key.
    void missingTaxCodeAndVatNumberAskFirst_data();
    void missingTaxCodeAndVatNumberAskFirst();
    void duplicateNumberSameYearRefused_otherYearAccepted_data();
    void duplicateNumberSameYearRefused_otherYearAccepted();
    void resavingUnchangedPassesTheNumberCheck_data();
    void resavingUnchangedPassesTheNumberCheck();
    void failedSaveCountsAsSaved_quirkKept_data();
    void failedSaveCountsAsSaved_quirkKept();
    void deleteDocument_data();
    void deleteDocument();
    void deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsDocument_data();
    void deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsDocument();
    void printingAfterAFailedFirstSaveWarnsAndIssuesNothing_data();
    void printingAfterAFailedFirstSaveWarnsAndIssuesNothing();
    void rightsOfTheEditor_data();
    void rightsOfTheEditor();
    void ownHeaderAndLinesWhenAnotherWorkstationInsertsMeanwhile_data();
    void ownHeaderAndLinesWhenAnotherWorkstationInsertsMeanwhile();

private:
    static void Documenti();
    // The row's editor, tables and key.
    void Documento();
    void FallisciPrimoSalvataggio();
    QSpinBox *Numero() const { return Field<QSpinBox>(m_editor, QStringLiteral("txtNumero")); }
    int Conta(const QString &tabella) const
    {
        return Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM ") + tabella).toInt();
    }

    QString m_testate;
    QString m_righe;
    QString m_chiave;
};

void TestInserimentoDocumentiVendita::Documenti()
{
    QTest::addColumn<QString>("editore");
    QTest::addColumn<QString>("testate");
    QTest::addColumn<QString>("righe");
    QTest::addColumn<QString>("chiave");
}

void TestInserimentoDocumentiVendita::Documento()
{
    QFETCH(QString, editore);
    QFETCH(QString, testate);
    QFETCH(QString, righe);
    QFETCH(QString, chiave);
    m_azione = editore;
    m_testate = testate;
    m_righe = righe;
    m_chiave = chiave;
}

void TestInserimentoDocumentiVendita::missingTaxCodeAndVatNumberAskFirst_data()
{
    Documenti();
    Fattura("fattura");
    Nota("nota di accredito");
}

void TestInserimentoDocumentiVendita::missingTaxCodeAndVatNumberAskFirst()
{
    Documento();
    Editor();
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000002"));
    QCOMPARE(Label("lblCliCodiceFiscale")->text(), QStringLiteral("..."));
    QCOMPARE(Label("lblCliPartitaIVA")->text(), QStringLiteral("..."));
    m_responder->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Conferma",
                    "Non sono stati indicati nè il codice fiscale, nè la partita IVA,\n\rproseguire comunque?",
                    Question, YesNo);
    QCOMPARE(Conta(m_testate), 0);
    QVERIFY(m_editor->NewRecord());
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(Db().Rows(QStringLiteral("SELECT CLI_CODICE, CLI_CODICEFISCALE, CLI_PARTITAIVA, TIPO_PAGAMENTO FROM ")
                       + m_testate),
             QStringList{QStringLiteral("CLN0000002|||Bonifico 30 gg Fine Mese")});
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
}

void TestInserimentoDocumentiVendita::duplicateNumberSameYearRefused_otherYearAccepted_data()
{
    Documenti();
    Fattura("fattura");
    Nota("nota di accredito");
}

void TestInserimentoDocumentiVendita::duplicateNumberSameYearRefused_otherYearAccepted()
{
    Documento();
    const int anno = QDate::currentDate().year();
    KRVInsertDocumento(Db(), m_testate, 3, anno - 1);
    Editor();
    Numero()->setValue(3);
    SaveReady();
    QCOMPARE(m_responder->Messages().size(), 0);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT NUMERO, ANNO FROM %1 ORDER BY ANNO").arg(m_testate)),
             (QStringList{QStringLiteral("3|%1").arg(anno - 1), QStringLiteral("3|%1").arg(anno)}));
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(Numero()->value(), 4);
    Numero()->setValue(3);
    SaveReady();
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().last(), "Attenzione", "Esiste già un documento con questo numero!", Warning,
                    Ok);
    QCOMPARE(Conta(m_testate), 2);
}

void TestInserimentoDocumentiVendita::resavingUnchangedPassesTheNumberCheck_data()
{
    Documenti();
    // A change beside the number, so that the save runs: a flag and its column.
    QTest::addColumn<QString>("casella");
    QTest::addColumn<QString>("colonna");
    Fattura("fattura") << QStringLiteral("chkPagato") << QStringLiteral("PAGATO");
    Nota("nota di accredito") << QStringLiteral("chkNotificata") << QStringLiteral("NOTIFICATO");
}

void TestInserimentoDocumentiVendita::resavingUnchangedPassesTheNumberCheck()
{
    Documento();
    QFETCH(QString, casella);
    QFETCH(QString, colonna);
    const int id = SaveReady();
    QCOMPARE(m_editor->ApriRecord(id), 0);
    // Its own number must not count as taken.
    Click(Field<QCheckBox>(m_editor, casella));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 0);
    QVERIFY(!m_editor->Modified());
    QCOMPARE(Db().Rows(QStringLiteral("SELECT %1, NUMERO, %2 FROM %3").arg(m_chiave, colonna, m_testate)),
             QStringList{QStringLiteral("%1|1|True").arg(id)});
}

void TestInserimentoDocumentiVendita::failedSaveCountsAsSaved_quirkKept_data()
{
    Documenti();
    // The icon of the box: the invoice's box has none, the credit note's a
    // question mark, though it asks nothing.
    QTest::addColumn<TQ3MsgIcon>("icona");
    Fattura("fattura, senza icona") << TQ3MsgIcon::None;
    Nota("nota di accredito, con il punto di domanda") << TQ3MsgIcon::Question;
}

// A failed save shows its box and still counts as saved, keeping the drawn key.
void TestInserimentoDocumentiVendita::failedSaveCountsAsSaved_quirkKept()
{
    Documento();
    QFETCH(TQ3MsgIcon, icona);
    // The database refuses the header.
    Db().Exec(QStringLiteral("CREATE EXCEPTION E_TESTATA_BLOCCATA 'Testata bloccata'"));
    Db().Exec(
        QStringLiteral("CREATE TRIGGER TG_BI_%1_TEST FOR %1 BEFORE INSERT AS BEGIN EXCEPTION E_TESTATA_BLOCCATA; END")
            .arg(m_testate));
    const int atteso = GetLastGeneratorValue(QStringLiteral("GN_") + m_chiave, Db().Db()) + 1;
    SaveReady();
    QCOMPARE(m_responder->Messages().size(), 1);
    QVERIFY(SameMessage(m_responder->Messages().at(0), QStringLiteral("Errore"),
                        QStringLiteral("Si è verificato un errore durante il salvataggio dei dati!"), icona,
                        TQ3MsgButtons::Ok));
    QVERIFY(!m_editor->Modified());
    QVERIFY(!m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), atteso);
    QCOMPARE(Conta(m_testate), 0);
    QCOMPARE(Conta(m_righe), 0);
}

void TestInserimentoDocumentiVendita::deleteDocument_data()
{
    Documenti();
    Fattura("fattura");
    Nota("nota di accredito");
}

void TestInserimentoDocumentiVendita::deleteDocument()
{
    Documento();
    const int id = SaveReady();
    m_responder->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actElimina"));
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(m_editor->IdRecord(), id);
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(Conta(m_testate), 0);
    QCOMPARE(Conta(m_righe), 0);
    QVERIFY(m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), 0);
    // A never saved document is simply started again.
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(m_responder->Messages().size(), 2);
    QCOMPARE(Label("lblCliCodice")->text(), QStringLiteral("..."));
}

void TestInserimentoDocumentiVendita::deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsDocument_data()
{
    Documenti();
    Fattura("fattura");
    Nota("nota di accredito");
}

// The document whose first save failed goes by the other workstation's key:
// deleting it deletes nothing of the other workstation's, the editor simply
// starts a new one.
void TestInserimentoDocumentiVendita::deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsDocument()
{
    Documento();
    const QString altra = QStringLiteral("SELECT %1, NUMERO FROM %2").arg(m_chiave, m_testate);
    FallisciPrimoSalvataggio();
    const QStringList prima = Db().Rows(altra);
    QCOMPARE(prima.size(), 1);

    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(Db().Rows(altra), prima);
    QVERIFY(m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), 0);
    QCOMPARE(Label("lblCliCodice")->text(), QStringLiteral("..."));
}

void TestInserimentoDocumentiVendita::printingAfterAFailedFirstSaveWarnsAndIssuesNothing_data()
{
    Documenti();
    Fattura("fattura");
    Nota("nota di accredito");
}

// The document whose first save failed goes by the other workstation's key:
// it is not printed, and its electronic invoice cannot be produced, until a
// save stores it.
void TestInserimentoDocumentiVendita::printingAfterAFailedFirstSaveWarnsAndIssuesNothing()
{
    Documento();
    FallisciPrimoSalvataggio();
    auto elettronica = m_editor->findChild<QAction *>(QStringLiteral("actFatturaElettronica"));
    QVERIFY(elettronica);
    QVERIFY(!elettronica->isEnabled());
    Trigger(m_editor, QStringLiteral("actStampa"));
    QCOMPARE(m_responder->Messages().size(), 2);
    KRV_COMPARE_BOX(m_responder->Messages().at(1), "Attenzione", "Salvare le mofiche prima di stampare!", Warning, Ok);

    Numero()->setValue(Numero()->value() + 1);
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 2);
    QVERIFY(elettronica->isEnabled());
}

// Another workstation saves the number of the editor's new document at the
// very moment of its first save and takes the key the document expected: the
// save fails, and the document goes by the other one's key.
void TestInserimentoDocumentiVendita::FallisciPrimoSalvataggio()
{
    Editor();
    const int atteso = GetLastGeneratorValue(QStringLiteral("GN_") + m_chiave, Db().Db()) + 1;
    Db().InsertOfAnotherWorkstationAtNextInsert(m_testate, KRVInsertDocumentoSQL(m_testate, Numero()->value(),
                                                                                 QDate::currentDate().year()));
    SaveReady();
    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(m_responder->Messages().at(0).Title, QStringLiteral("Errore"));
    QVERIFY(!m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), atteso);
}

void TestInserimentoDocumentiVendita::rightsOfTheEditor_data()
{
    Documenti();
    // The rights of a user who may only look at the document (those of the
    // other document do not count), and of one who may change and delete it.
    QTest::addColumn<QStringList>("lettore");
    QTest::addColumn<QStringList>("autorizzato");
    Fattura("fattura") << QStringList{"Fatture di vendita (visualizzazione)"}
                       << QStringList{"Fatture di vendita (modifica)", "Fatture di vendita (eliminazione)"};
    Nota("nota di accredito") << QStringList{"Note di accredito (visualizzazione)", "Fatture di vendita (modifica)",
                                             "Fatture di vendita (eliminazione)"}
                              << QStringList{"Note di accredito (modifica)", "Note di accredito (eliminazione)"};
}

void TestInserimentoDocumentiVendita::rightsOfTheEditor()
{
    Documento();
    QFETCH(QStringList, lettore);
    QFETCH(QStringList, autorizzato);
    const int id = SaveReady();
    QCOMPARE(m_editor->ApriRecord(id), 0);
    LoginWithRights(Db(), QStringLiteral("ospite"), lettore);
    Click(Field<QCheckBox>(m_editor, QStringLiteral("chkPagato")));
    Trigger(m_editor, QStringLiteral("actSalva"));
    Trigger(m_editor, QStringLiteral("actElimina"));
    m_editor->SetModified(false);
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(m_responder->Messages().size(), 3);
    for (const TQ3Message &box : m_responder->Messages())
        KRV_COMPARE_BOX(box, "Attenzione", "Non si dispone di diritti sufficienti per eseguire questa operazione.",
                        Warning, Ok);
    QCOMPARE(m_editor->IdRecord(), id);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT PAGATO FROM ") + m_testate), QStringList{"False"});
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    LoginWithRights(Db(), QStringLiteral("contabile"), autorizzato);
    Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote"))->setPlainText(QStringLiteral("Autorizzata"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 3);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT PAGATO, NOTE FROM ") + m_testate), QStringList{"True|Autorizzata"});
}

void TestInserimentoDocumentiVendita::ownHeaderAndLinesWhenAnotherWorkstationInsertsMeanwhile_data()
{
    Documenti();
    Fattura("fattura");
    Nota("nota di accredito");
}

void TestInserimentoDocumentiVendita::ownHeaderAndLinesWhenAnotherWorkstationInsertsMeanwhile()
{
    Documento();
    SalvaAccantoAdAltraPostazione(m_testate, m_righe, m_chiave);
}

QTEST_MAIN(TestInserimentoDocumentiVendita)
#include "tst_inserimentodocumentivendita.moc"
