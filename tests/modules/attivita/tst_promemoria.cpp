// The activities module beside the sales documents module, both in the host's
// registry as its loading puts them: the reminders follow the recurring
// invoices the editor saves, changes and deletes; the window "Promemoria"
// turns a due reminder into a new invoice and marks it done once that is
// saved; the login tells the due ones; the module's rights are checked.
#include "../documenti/documents/KRVFattureTestKit.h"
#include "KATDiritti.h"
#include "KATPromemoria.h"
#include "Q3ModuleLoader.h"
#include "Q3Ruoli.h"
#include "uKATElencoPromemoria.h"
#include "uKATInserimentoPromemoria.h"
#include "uKATMain.h"
#include "uKRVInserimentoFattureVendita.h"

#include <QComboBox>
#include <QDateEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <memory>

using namespace KRVTest;

namespace {

const QString ActEditor = QStringLiteral("actInserimentoFattureVendita");
const QString FileAttivita = QStringLiteral("Attivita.so");

// Both modules registered and initialised, the activities module first, as
// the host's loader starts them in the order of their file names.
class TKATModuli
{
public:
    TKATModuli()
    {
        RegisterPackage(FileAttivita, QStringLiteral("Modulo Attività"),
                        [](QObject *owner) -> IQ3Module * { return new TKATMain(owner); });
        Documenti = std::make_unique<TKRVTestModule>();
        Documenti->MainForm->show();
        Attivita = KATMain();
        Attivita->Initialize();
    }
    ~TKATModuli()
    {
        delete Attivita;
        Documenti.reset();
        UnregisterPackage(FileAttivita);
    }
    TKATModuli(const TKATModuli &) = delete;
    TKATModuli &operator=(const TKATModuli &) = delete;

    std::unique_ptr<TKRVTestModule> Documenti;
    TKATMain *Attivita = nullptr;
};

} // namespace

class TestPromemoria : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init();
    void cleanup();

    void savingARecurringInvoiceCreatesItsReminders();
    void changingThePeriodRewritesTheRemindersStillToDo();
    void clearingTheBoxRemovesTheRemindersStillToDo();
    void deletingTheInvoiceRemovesTheRemindersStillToDo();
    void unknownDayRuleIsReportedOnce();
    void generaFatturaOpensTheCopyAndSavingMarksTheReminderDone();
    void closingTheCopyWithoutSavingLeavesTheReminderDue();
    void loginTellsTheDueRemindersAndOpensTheWindow();
    void loginSaysNothingWithoutDueRemindersOrRights();
    void rightsAreChecked();
    void rightsFormAGroupOfTheirOwn();
    void manualRemindersAreAddedChangedDoneAndDeleted();
    void filtersByPeriodAndState();

private:
    const TQ3TestDatabase &Db() const { return m_moduli->Documenti->Database; }
    TKRVInserimentoFattureVendita *Editor()
    {
        return Run<TKRVInserimentoFattureVendita>(*m_moduli->Documenti, ActEditor);
    }
    // A new invoice of customer 1 with an article, recurring every month from
    // `inizio` to `fine` on the month's last day, saved; answers its key.
    int SalvaFatturaCiclica(const QDate &inizio, const QDate &fine);
    // Recurring invoice n. 12 of 5 January 2025 stored as another
    // workstation saved it, monthly on the exact day from 5 January to 5
    // April 2025, with the reminders the save gave it; answers its key.
    int FatturaCiclicaSalvata();
    QStringList Promemoria() const
    {
        return Db().Rows(QStringLiteral("SELECT DATA, STATO, FATT_NUMERO_GENERATA FROM PROMEMORIA ORDER BY DATA"));
    }
    TKATElencoPromemoria *ApriElenco()
    {
        Trigger(m_moduli->Attivita->actPromemoria());
        return m_moduli->Attivita->ElencoPromemoria();
    }
    // Every box so far, for a failure's report.
    QString Scatole() const { return m_responder->Testi(QStringLiteral(" | ")); }
    static void SelezionaData(TKATElencoPromemoria *elenco, const QDate &data);

    std::unique_ptr<TKATModuli> m_moduli;
    std::unique_ptr<TQ3RecordingResponder> m_responder;
};

void TestPromemoria::init()
{
    m_moduli = std::make_unique<TKATModuli>();
    m_responder = std::make_unique<TQ3RecordingResponder>();
    InsertAnagraficheDocumenti(Db());
}

void TestPromemoria::cleanup()
{
    m_responder.reset();
    m_moduli.reset();
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
}

int TestPromemoria::SalvaFatturaCiclica(const QDate &inizio, const QDate &fine)
{
    auto editor = Editor();
    ChooseCustomer(*m_moduli->Documenti, editor, QStringLiteral("CLN0000001"));
    AddArticle(*m_moduli->Documenti, editor, QStringLiteral("ART1"));
    Click(Field<QCheckBox>(editor, QStringLiteral("chkGeneraFattureCicliche")));
    Field<QComboBox>(editor, QStringLiteral("cmbGeneraOgniUM"))->setCurrentText(QStringLiteral("Mese"));
    Field<QDateEdit>(editor, QStringLiteral("dtpDataInizio"))->setDate(inizio);
    Field<QDateEdit>(editor, QStringLiteral("dtpDataFine"))->setDate(fine);
    Click(Field<QRadioButton>(editor, QStringLiteral("opzUltimoGiornoMese")));
    Trigger(editor, QStringLiteral("actSalva"));
    return editor->IdRecord();
}

int TestPromemoria::FatturaCiclicaSalvata()
{
    const int id = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 12, 2025, QStringLiteral("CLN0000001"));
    Db().Exec(QStringLiteral("UPDATE FATT_VEND SET DATA = '2025-01-05', CLI_RAGIONESOCIALE = 'Bianchi S.p.A.', "
                             "CLI_PARTITAIVA = '12345678903', "
                             "FC_ABILITATO = 'True', FC_GENERA_OGNI = 1, FC_GENERA_OGNI_UM = 'Mese', "
                             "FC_DATA_INIZIO = '2025-01-05', FC_DATA_FINE = '2025-04-05', "
                             "FC_DATA_NUOVA_FATTURA = 'Il giorno esatto', NOTE = 'Canone mensile' "
                             "WHERE IDFATT_VEND = ")
              + QString::number(id));
    KRVInsertRiga(Db(), QStringLiteral("FATT_VEND_DETT"), id, QStringLiteral("Testo"));
    m_moduli->Attivita->ExecutePkgAction(QStringLiteral("Nuova fattura ciclica"), {id, 0}, 1);
    return id;
}

void TestPromemoria::SelezionaData(TKATElencoPromemoria *elenco, const QDate &data)
{
    auto grid = Field<QTableView>(elenco, QStringLiteral("gridPromemoria"));
    for (int row = 0; row < elenco->Righe().size(); ++row) {
        if (elenco->Righe().at(row).Promemoria.Data == data) {
            grid->setCurrentIndex(grid->model()->index(row, 0));
            return;
        }
    }
    QFAIL("no reminder of that date");
}

void TestPromemoria::savingARecurringInvoiceCreatesItsReminders()
{
    const int id = SalvaFatturaCiclica(QDate(2026, 1, 31), QDate(2026, 4, 30));
    QVERIFY(id > 0);
    QVERIFY(m_responder->Messages().isEmpty());
    // 31 January + 1 month is 28 February, and the month's last day keeps the end of each month.
    QCOMPARE(Promemoria(), (QStringList{"2026-01-31|Da fare|<null>", "2026-02-28|Da fare|<null>",
                                        "2026-03-31|Da fare|<null>", "2026-04-30|Da fare|<null>"}));
    const int numero = Db().Scalar(QStringLiteral("SELECT NUMERO FROM FATT_VEND")).toInt();
    QCOMPARE(Db().Rows(QStringLiteral("SELECT DISTINCT TIPO, IDFATT_VEND, TITOLO FROM PROMEMORIA")),
             QStringList{QStringLiteral("Fattura ciclica|%1|Fattura ciclica n. %2/%3")
                             .arg(id)
                             .arg(numero)
                             .arg(QDate::currentDate().year())});
}

void TestPromemoria::changingThePeriodRewritesTheRemindersStillToDo()
{
    SalvaFatturaCiclica(QDate(2026, 1, 31), QDate(2026, 3, 31));
    Db().Exec(
        QStringLiteral("UPDATE PROMEMORIA SET STATO = 'Fatto', FATT_NUMERO_GENERATA = 77 WHERE DATA = '2026-01-31'"));
    auto editor = m_moduli->Documenti->Main->FormAs<TKRVInserimentoFattureVendita>(ActEditor);
    Field<QDateEdit>(editor, QStringLiteral("dtpDataFine"))->setDate(QDate(2026, 5, 31));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(Promemoria(), (QStringList{"2026-01-31|Fatto|77", "2026-02-28|Da fare|<null>", "2026-03-31|Da fare|<null>",
                                        "2026-04-30|Da fare|<null>", "2026-05-31|Da fare|<null>"}));
    Field<QDateEdit>(editor, QStringLiteral("dtpDataFine"))->setDate(QDate(2026, 2, 28));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(Promemoria(), (QStringList{"2026-01-31|Fatto|77", "2026-02-28|Da fare|<null>"}));
}

void TestPromemoria::clearingTheBoxRemovesTheRemindersStillToDo()
{
    SalvaFatturaCiclica(QDate(2026, 1, 31), QDate(2026, 3, 31));
    Db().Exec(QStringLiteral("UPDATE PROMEMORIA SET STATO = 'Fatto' WHERE DATA = '2026-01-31'"));
    auto editor = m_moduli->Documenti->Main->FormAs<TKRVInserimentoFattureVendita>(ActEditor);
    Click(Field<QCheckBox>(editor, QStringLiteral("chkGeneraFattureCicliche")));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(Promemoria(), QStringList{"2026-01-31|Fatto|<null>"});
}

void TestPromemoria::deletingTheInvoiceRemovesTheRemindersStillToDo()
{
    SalvaFatturaCiclica(QDate(2026, 1, 31), QDate(2026, 3, 31));
    Db().Exec(QStringLiteral("UPDATE PROMEMORIA SET STATO = 'Fatto' WHERE DATA = '2026-01-31'"));
    auto editor = m_moduli->Documenti->Main->FormAs<TKRVInserimentoFattureVendita>(ActEditor);
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(editor, QStringLiteral("actElimina"));
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 0);
    // What was acted on stays as history.
    QCOMPARE(Promemoria(), QStringList{"2026-01-31|Fatto|<null>"});
}

void TestPromemoria::unknownDayRuleIsReportedOnce()
{
    const int id = FatturaCiclicaSalvata();
    Db().Exec(QStringLiteral("UPDATE FATT_VEND SET FC_DATA_NUOVA_FATTURA = 'Il giorno 16 del mese'"));
    auto editor = Editor();
    QCOMPARE(editor->ApriRecord(id), 0);
    Click(Field<QCheckBox>(editor, QStringLiteral("chkPagato")));
    Trigger(editor, QStringLiteral("actSalva"));
    Click(Field<QCheckBox>(editor, QStringLiteral("chkPagato")));
    Trigger(editor, QStringLiteral("actSalva"));
    QVERIFY2(m_responder->Messages().size() == 1, qPrintable(Scatole()));
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione",
                    "La data delle nuove fatture indicata nella fattura ciclica non è tra quelle previste:\n\ri "
                    "promemoria vengono datati con il giorno esatto.",
                    Warning, Ok);
}

void TestPromemoria::generaFatturaOpensTheCopyAndSavingMarksTheReminderDone()
{
    FatturaCiclicaSalvata();
    const int anno = QDate::currentDate().year();
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 40, anno);
    auto elenco = ApriElenco();
    QVERIFY(elenco && elenco->isVisible());
    QCOMPARE(elenco->Righe().size(), 4);
    const QString giorno = QLocale().toString(QDate(2025, 1, 5), QLocale::ShortFormat);
    auto grid = Field<QTableView>(elenco, QStringLiteral("gridPromemoria"));
    QCOMPARE(grid->model()->index(0, TKATElencoPromemoria::Cliente).data().toString(),
             QStringLiteral("Bianchi S.p.A."));
    QCOMPARE(grid->model()->index(0, TKATElencoPromemoria::FattNumero).data().toString(), QStringLiteral("12"));
    QCOMPARE(grid->model()->index(0, TKATElencoPromemoria::FattData).data().toString(), giorno);
    QCOMPARE(grid->model()->index(0, TKATElencoPromemoria::Stato).data().toString(), QStringLiteral("Da fare"));

    SelezionaData(elenco, QDate(2025, 2, 5));
    Trigger(elenco, QStringLiteral("actGeneraFattura"));
    auto editor = m_moduli->Documenti->Main->FormAs<TKRVInserimentoFattureVendita>(ActEditor);
    QVERIFY(editor && editor->isVisible());
    QVERIFY(editor->NewRecord());
    QVERIFY(editor->Modified());
    QCOMPARE(Field<QSpinBox>(editor, QStringLiteral("txtNumero"))->value(), 41);
    QCOMPARE(Field<QDateEdit>(editor, QStringLiteral("dtpData"))->date(), QDate::currentDate());
    const QStringList note = Field<QPlainTextEdit>(editor, QStringLiteral("txtNote"))
                                 ->toPlainText()
                                 .split(QRegularExpression(QStringLiteral("[\r\n]")), Qt::SkipEmptyParts);
    QCOMPARE(note, (QStringList{QStringLiteral("Canone mensile"), QStringLiteral("Fattura ciclica"),
                                QStringLiteral("Rif. Fattura n. 12"), QStringLiteral("del ") + giorno}));
    QCOMPARE(Promemoria().at(1), QStringLiteral("2025-02-05|Da fare|<null>"));

    Trigger(editor, QStringLiteral("actSalva"));
    QVERIFY2(m_responder->Messages().isEmpty(), qPrintable(Scatole()));
    QCOMPARE(Promemoria(), (QStringList{"2025-01-05|Da fare|<null>", "2025-02-05|Fatto|41", "2025-03-05|Da fare|<null>",
                                        "2025-04-05|Da fare|<null>"}));
    QVERIFY(!Db().Scalar(QStringLiteral("SELECT FATTO_IL FROM PROMEMORIA WHERE DATA = '2025-02-05'")).isNull());
    // The window shows it at once: with the filter on "Da fare" the reminder done has gone.
    QCOMPARE(elenco->Righe().size(), 3);
    // Saving the new invoice again does not touch another reminder.
    Click(Field<QCheckBox>(editor, QStringLiteral("chkPagato")));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM PROMEMORIA WHERE STATO = 'Fatto'")).toInt(), 1);
}

void TestPromemoria::closingTheCopyWithoutSavingLeavesTheReminderDue()
{
    FatturaCiclicaSalvata();
    auto elenco = ApriElenco();
    SelezionaData(elenco, QDate(2025, 1, 5));
    Trigger(elenco, QStringLiteral("actGeneraFattura"));
    auto editor = m_moduli->Documenti->Main->FormAs<TKRVInserimentoFattureVendita>(ActEditor);
    QVERIFY(editor && editor->Modified());
    m_responder->Enqueue(TQ3MsgResult::No);
    CloseFrame(editor);
    QVERIFY2(m_responder->Messages().size() == 1, qPrintable(Scatole()));
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Conferma",
                    "Salvare le modifiche al record corrente\n\rprima di continuare?", Question, YesNoCancel);
    QVERIFY(!m_moduli->Documenti->Main->Form(ActEditor));
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 1);
    // Another new invoice of the same customer is not the generated one.
    auto altra = Editor();
    ChooseCustomer(*m_moduli->Documenti, altra, QStringLiteral("CLN0000001"));
    AddArticle(*m_moduli->Documenti, altra, QStringLiteral("ART1"));
    Trigger(altra, QStringLiteral("actSalva"));
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 2);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM PROMEMORIA WHERE STATO = 'Fatto'")).toInt(), 0);
    QCOMPARE(elenco->Righe().size(), 4);
}

void TestPromemoria::loginTellsTheDueRemindersAndOpensTheWindow()
{
    FatturaCiclicaSalvata();
    KATAggiungiManuale(m_moduli->Attivita->Sessione(), QStringLiteral("Rinnovo dominio"), QDate::currentDate(),
                       QString());
    KATAggiungiManuale(m_moduli->Attivita->Sessione(), QStringLiteral("Più avanti"), QDate::currentDate().addDays(1),
                       QString());
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Q3MostraAvvisiAccesso();
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Promemoria",
                    "Ci sono 5 promemoria scaduti da fare.\n\rAprire l'elenco dei promemoria?", Question, YesNo);
    auto elenco = m_moduli->Attivita->ElencoPromemoria();
    QVERIFY(elenco && elenco->isVisible());
    // Every reminder still to do shows, the oldest from January 2025, with the next one.
    QCOMPARE(elenco->Righe().size(), 6);

    // Answered "No", the window is not opened.
    CloseFrame(elenco);
    m_responder->Enqueue(TQ3MsgResult::No);
    KATSegnaFatto(m_moduli->Attivita->Sessione(),
                  Db().Scalar(QStringLiteral("SELECT MIN(IDPROMEMORIA) FROM PROMEMORIA")).toInt(), 0);
    Q3MostraAvvisiAccesso();
    QCOMPARE(m_responder->Messages().size(), 2);
    KRV_COMPARE_BOX(m_responder->Messages().at(1), "Promemoria",
                    "Ci sono 4 promemoria scaduti da fare.\n\rAprire l'elenco dei promemoria?", Question, YesNo);
    QVERIFY(!m_moduli->Attivita->ElencoPromemoria());
}

void TestPromemoria::loginSaysNothingWithoutDueRemindersOrRights()
{
    KATAggiungiManuale(m_moduli->Attivita->Sessione(), QStringLiteral("Più avanti"), QDate::currentDate().addDays(1),
                       QString());
    Q3MostraAvvisiAccesso();
    QVERIFY(m_responder->Messages().isEmpty());
    KATAggiungiManuale(m_moduli->Attivita->Sessione(), QStringLiteral("Oggi"), QDate::currentDate(), QString());
    LoginWithRights(Db(), QStringLiteral("mario"), {QStringLiteral("Fatture di vendita (visualizzazione)")});
    Q3MostraAvvisiAccesso();
    QVERIFY(m_responder->Messages().isEmpty());
    LoginWithRights(Db(), QStringLiteral("lucia"), {QString::fromUtf8(KATDirittoVisualizzazione)});
    m_responder->Enqueue(TQ3MsgResult::No);
    Q3MostraAvvisiAccesso();
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Promemoria",
                    "C'è un promemoria scaduto da fare.\n\rAprire l'elenco dei promemoria?", Question, YesNo);
}

void TestPromemoria::rightsAreChecked()
{
    FatturaCiclicaSalvata();
    LoginWithRights(Db(), QStringLiteral("mario"), {QStringLiteral("Fatture di vendita (modifica)")});
    QVERIFY(!ApriElenco());
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);

    LoginWithRights(Db(), QStringLiteral("lucia"), {QString::fromUtf8(KATDirittoVisualizzazione)});
    auto elenco = ApriElenco();
    QVERIFY(elenco && elenco->isVisible());
    SelezionaData(elenco, QDate(2025, 1, 5));
    Trigger(elenco, QStringLiteral("actGeneraFattura"));
    QCOMPARE(m_responder->Messages().size(), 2);
    KRV_COMPARE_BOX(m_responder->Messages().at(1), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QVERIFY(!m_moduli->Documenti->Main->Form(ActEditor));
    Trigger(elenco, QStringLiteral("actSegnaFatto"));
    QCOMPARE(m_responder->Messages().size(), 3);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM PROMEMORIA WHERE STATO = 'Fatto'")).toInt(), 0);
}

void TestPromemoria::rightsFormAGroupOfTheirOwn()
{
    const QList<TQ3GruppoDiritti> catalogo = TQ3Ruoli(m_moduli->Attivita->Sessione()).Catalogo();
    QStringList gruppi;
    QStringList attivita;
    for (const TQ3GruppoDiritti &gruppo : catalogo) {
        gruppi << gruppo.Gruppo;
        if (gruppo.Gruppo == QLatin1String("Attivita")) {
            for (const TQ3Diritto &diritto : gruppo.Diritti)
                attivita << diritto.Nome;
        }
    }
    QVERIFY(gruppi.contains(QStringLiteral("Documenti")));
    QCOMPARE(attivita,
             (QStringList{QStringLiteral("Promemoria (modifica)"), QStringLiteral("Promemoria (visualizzazione)")}));
}

void TestPromemoria::manualRemindersAreAddedChangedDoneAndDeleted()
{
    auto elenco = ApriElenco();
    QCOMPARE(elenco->Righe().size(), 0);
    QVERIFY(!Action(elenco, QStringLiteral("actModificaPromemoria"))->isEnabled());
    QVERIFY(!Action(elenco, QStringLiteral("actGeneraFattura"))->isEnabled());
    // The dialog refuses an empty title and stays open; then it saves.
    bool rifiutato = false;
    QTimer::singleShot(0, elenco, [this, &rifiutato] {
        auto dialogo = qobject_cast<TKATInserimentoPromemoria *>(QApplication::activeModalWidget());
        QVERIFY(dialogo);
        Click(Field<QPushButton>(dialogo, QStringLiteral("btnSalva")));
        rifiutato = dialogo->isVisible() && m_responder->Messages().size() == 1;
        Field(dialogo, QStringLiteral("txtTitolo"))->setText(QStringLiteral("Rinnovo dominio"));
        Field<QDateEdit>(dialogo, QStringLiteral("txtData"))->setDate(QDate::currentDate().addDays(2));
        Field<QPlainTextEdit>(dialogo, QStringLiteral("memoNote"))->setPlainText(QStringLiteral("Registrar"));
        Click(Field<QPushButton>(dialogo, QStringLiteral("btnSalva")));
    });
    Trigger(elenco, QStringLiteral("actNuovoPromemoria"));
    QVERIFY(rifiutato);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione", "Indicare il titolo del promemoria.", Warning, Ok);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT TIPO, IDFATT_VEND, TITOLO, DATA, NOTE, STATO FROM PROMEMORIA")),
             QStringList{QStringLiteral("Manuale|<null>|Rinnovo dominio|%1|Registrar|Da fare")
                             .arg(QDate::currentDate().addDays(2).toString(Qt::ISODate))});
    QCOMPARE(elenco->Righe().size(), 1);

    // Changed and marked done in the dialog.
    QTimer::singleShot(0, elenco, [] {
        auto dialogo = qobject_cast<TKATInserimentoPromemoria *>(QApplication::activeModalWidget());
        QVERIFY(dialogo);
        QCOMPARE(Field(dialogo, QStringLiteral("txtTitolo"))->text(), QStringLiteral("Rinnovo dominio"));
        Field(dialogo, QStringLiteral("txtTitolo"))->setText(QStringLiteral("Rinnovo dominio e PEC"));
        Click(Field<QCheckBox>(dialogo, QStringLiteral("chkFatto")));
        Click(Field<QPushButton>(dialogo, QStringLiteral("btnSalva")));
    });
    Trigger(elenco, QStringLiteral("actModificaPromemoria"));
    QCOMPARE(Db().Rows(QStringLiteral("SELECT TITOLO, STATO, FATTO_IL IS NOT NULL FROM PROMEMORIA")),
             QStringList{QStringLiteral("Rinnovo dominio e PEC|Fatto|true")});
    QCOMPARE(elenco->Righe().size(), 0);

    Field<QComboBox>(elenco, QStringLiteral("cmbStato"))->setCurrentText(QStringLiteral("Tutti"));
    QCOMPARE(elenco->Righe().size(), 1);
    QVERIFY(!Action(elenco, QStringLiteral("actSegnaFatto"))->isEnabled());
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(elenco, QStringLiteral("actEliminaPromemoria"));
    KRV_COMPARE_BOX(m_responder->Messages().last(), "Conferma", "Eliminare il promemoria selezionato?", Question,
                    YesNo);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM PROMEMORIA")).toInt(), 0);
    QCOMPARE(elenco->Righe().size(), 0);
}

void TestPromemoria::filtersByPeriodAndState()
{
    FatturaCiclicaSalvata();
    KATSegnaFatto(m_moduli->Attivita->Sessione(),
                  Db().Scalar(QStringLiteral("SELECT IDPROMEMORIA FROM PROMEMORIA WHERE DATA = '2025-01-05'")).toInt(),
                  0);
    auto elenco = ApriElenco();
    // At first from the oldest reminder still to do.
    QCOMPARE(Field<QDateEdit>(elenco, QStringLiteral("txtDal"))->date(), QDate(2025, 2, 5));
    QCOMPARE(elenco->Righe().size(), 3);
    QCOMPARE(Field<QLabel>(elenco, QStringLiteral("lblConteggio"))->text(), QStringLiteral("3 promemoria"));
    Field<QDateEdit>(elenco, QStringLiteral("txtDal"))->setDate(QDate(2025, 1, 1));
    Field<QDateEdit>(elenco, QStringLiteral("txtAl"))->setDate(QDate(2025, 3, 5));
    QCOMPARE(elenco->Righe().size(), 2);
    Field<QComboBox>(elenco, QStringLiteral("cmbStato"))->setCurrentText(QStringLiteral("Fatto"));
    QCOMPARE(elenco->Righe().size(), 1);
    QCOMPARE(elenco->Righe().at(0).Promemoria.Data, QDate(2025, 1, 5));
    Field<QComboBox>(elenco, QStringLiteral("cmbStato"))->setCurrentText(QStringLiteral("Tutti"));
    QCOMPARE(elenco->Righe().size(), 3);
    QCOMPARE(Field<QLabel>(elenco, QStringLiteral("lblConteggio"))->text(), QStringLiteral("3 promemoria"));
}

QTEST_MAIN(TestPromemoria)
#include "tst_promemoria.moc"
