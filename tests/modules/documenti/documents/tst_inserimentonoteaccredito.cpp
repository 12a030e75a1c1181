// The credit note editor driven as a user would, on a real database.
#include "../printing/KRVStampeTestKit.h"
#include "KRVFatturaRiferimento.h"
#include "KRVFattureTestKit.h"
#include "Q3Registry.h"
#include "uKRVGrigliaRighe.h"
#include "uKRVInserimentoNoteAccredito.h"
#include "uKRVModSelezionaArticolo.h"
#include "uKRVModSelezionaCliente.h"
#include "uKRVModSelezionaFatturaVendita.h"
#include "uKRVModSelezionaServizio.h"
#include "uKRVModSelezionaTipoPagamento.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

#include <memory>

using namespace KRVTest;

namespace {

const QString ActEditor = QStringLiteral("actInserimentoNoteAccredito");

} // namespace

class TestInserimentoNoteAccredito : public QObject, public TKRVDocumentoTest<TKRVInserimentoNoteAccredito>
{
    Q_OBJECT

public:
    TestInserimentoNoteAccredito() : TKRVDocumentoTest(ActEditor) {}

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init() { Prepara(); }
    void cleanup() { Chiudi(); }

    void opensOnANewCreditNote();
    void commandsOfTheCreditNote();
    void savedCreditNotePrints();
    void printFailureShowsItsOwnMessage();
    void numberOfAnInvoiceOfTheSameYearAccepted();
    void saveChecksInOrder();
    void customerAndPaymentTypeButtons();
    void quantityShowsOneDecimal();
    void userWritesACreditNote();
    void savingWithoutLinesDeletesStoredLines();
    void deletedVatRateGivesNullVatColumns();
    void everySaveGivesNewLineKeys();
    void afterAFailedSaveTheNextSaveStoresTheCreditNoteOnce();
    void reopenedCreditNoteShowsItsLines();
    void closingAsksToSave();
    void creditNoteRefersToAnInvoiceOfItsCustomer();
    void changingTheCustomerClearsTheInvoice();
    void choosingAnInvoiceNeedsACustomer();

private:
    QSpinBox *Numero() const { return Field<QSpinBox>(m_editor, QStringLiteral("txtNumero")); }
    QStringList LineKeys() const;
    QStringList ScegliFattura(const QString &numero);
    QStringList Riferimento() const
    {
        return Db().Rows(QStringLiteral("SELECT FATT_IDFATT_VEND, FATT_NUMERO, FATT_DATA FROM NOTE_ACCREDITO"));
    }
};

QStringList TestInserimentoNoteAccredito::LineKeys() const
{
    return Db().Rows(
        QStringLiteral("SELECT IDNOTA_ACCREDITO_DETT FROM NOTE_ACCREDITO_DETT ORDER BY IDNOTA_ACCREDITO_DETT"));
}

// "Seleziona fattura", choosing the invoice of that number in the dialog it
// shows ("Annulla" when there is none); answers the numbers the dialog listed.
QStringList TestInserimentoNoteAccredito::ScegliFattura(const QString &numero)
{
    QStringList elencate;
    QTimer::singleShot(0, m_editor, [this, &elencate, numero] {
        auto dialog =
            m_module->Main->FormAs<TKRVModSelezionaFatturaVendita>(QStringLiteral("actModSelezionaFatturaVendita"));
        if (!dialog || !dialog->isVisible())
            return;
        elencate = Column(dialog->gridRisultati(), 1);
        const int row = RowOf(dialog->gridRisultati(), 1, numero);
        if (row < 0) {
            Trigger(dialog, QStringLiteral("actAnnulla"));
            return;
        }
        SelectRow(dialog->gridRisultati(), row);
        Trigger(dialog, QStringLiteral("actOK"));
    });
    Trigger(m_editor, QStringLiteral("actSelezionaFattura"));
    return elencate;
}

void TestInserimentoNoteAccredito::opensOnANewCreditNote()
{
    const int anno = QDate::currentDate().year();
    KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), 41, anno);
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 90, anno);
    QVERIFY(m_module->Main->Action(ActEditor)->isEnabled());
    Editor();
    QVERIFY(m_editor);
    QCOMPARE(m_editor->windowTitle(), QStringLiteral("Inserimento / Modifica note di accredito"));
    QCOMPARE(Numero()->value(), 42);
    QCOMPARE(Field<QDateEdit>(m_editor, QStringLiteral("dtpData"))->date(), QDate::currentDate());
    for (const char *name :
         {"lblCliCodice", "lblCliRagioneSociale", "lblCliIndirizzo", "lblCliCitta", "lblCliCAP", "lblCliProvincia",
          "lblCliNazione", "lblCliCodiceFiscale", "lblCliPartitaIVA", "lblTipoPagamento"})
        QCOMPARE(Label(name)->text(), QStringLiteral("..."));
    QVERIFY(!Field<QCheckBox>(m_editor, QStringLiteral("chkScadenzaPagamento"))->isChecked());
    QVERIFY(!m_editor->findChild<QCheckBox *>(QStringLiteral("chkIvaEsente")));
    QCOMPARE(Label("lblTotaleDocumento")->text(), QStringLiteral("0,00\u00A0€"));
    QCOMPARE(m_editor->Righe()->Righe(), 0);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
    QCOMPARE(m_editor->IdRecord(), 0);
    auto pagine = Field<QTabWidget>(m_editor, QStringLiteral("pgcPagine"));
    QCOMPARE(pagine->count(), 2);
    QCOMPARE(pagine->tabText(0), QStringLiteral("Generale"));
    QCOMPARE(pagine->tabText(1), QStringLiteral("Righe documento "));
    TKRVGrigliaRighe *griglia = m_editor->gridRigheDocumento();
    QCOMPARE(griglia->objectName(), QStringLiteral("gridRigheDocumento"));
    QCOMPARE(griglia->model()->columnCount(), 12);
}

void TestInserimentoNoteAccredito::commandsOfTheCreditNote()
{
    Editor();
    QToolBar *barra = Field<QToolBar>(m_editor, QStringLiteral("tBarStandard"));
    QStringList comandi;
    for (QAction *action : barra->actions()) {
        if (!action->isSeparator())
            comandi << action->text();
    }
    QCOMPARE(comandi, (QStringList{"Nuovo", "Elimina", "Salva", "Stampa", "Fattura elettronica", "Sblocca", "Chiudi"}));
    QCOMPARE(RichHintTitle(barra->widgetForAction(Action(m_editor, QStringLiteral("actNuovo")))),
             QStringLiteral("Nuova nota di accredito"));
    // Printing asks for the changes to be saved first ("mofiche" as written).
    QAction *stampa = Action(m_editor, QStringLiteral("actStampa"));
    QVERIFY(barra->actions().contains(stampa));
    Trigger(stampa);
    KRV_COMPARE_BOX(m_responder->Messages().last(), "Attenzione", "Salvare le mofiche prima di stampare!", Warning, Ok);
    for (const char *assente : {"actSalvaPDF", "actCaricaDaDdt", "actInserisciNotaDocumento", "actInformazioniCliente",
                                "actAggiungiNonImponibile"})
        QVERIFY2(!m_editor->findChild<QAction *>(QString::fromLatin1(assente)), assente);
    QToolBar *righe = Field<QToolBar>(m_editor, QStringLiteral("tBarRighe"));
    QStringList comandiRighe;
    for (QAction *action : righe->actions()) {
        if (!action->isSeparator())
            comandiRighe << action->text();
    }
    QCOMPARE(comandiRighe, (QStringList{"Aggiungi articolo", "Aggiungi servizio", "Aggiungi testo", "Elimina riga",
                                        "Sposta in alto", "Sposta in basso"}));
    QVERIFY(Field<QToolButton>(m_editor, QStringLiteral("cmdSelezionaCliente")));
    QVERIFY(Field<QToolButton>(m_editor, QStringLiteral("cmdSelezionaTipoPagamento")));
}

// Credit notes number apart from invoices: only credit notes are looked at.
void TestInserimentoNoteAccredito::numberOfAnInvoiceOfTheSameYearAccepted()
{
    const int anno = QDate::currentDate().year();
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 7, anno);
    Editor();
    Numero()->setValue(7);
    SaveReady();
    QCOMPARE(m_responder->Messages().size(), 0);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT NUMERO, ANNO FROM NOTE_ACCREDITO")),
             QStringList{QStringLiteral("7|%1").arg(anno)});
}

void TestInserimentoNoteAccredito::saveChecksInOrder()
{
    KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), 5, QDate::currentDate().year());
    Editor();
    Numero()->setValue(5);
    Trigger(m_editor, QStringLiteral("actSalva"));
    Numero()->setValue(6);
    Trigger(m_editor, QStringLiteral("actSalva"));
    Db().Exec(QStringLiteral("UPDATE CLIENTI SET IDTIPO_PAGAMENTO = 0"));
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    const QList<TQ3Message> &boxes = m_responder->Messages();
    QCOMPARE(boxes.size(), 3);
    KRV_COMPARE_BOX(boxes.at(0), "Attenzione", "Esiste già un documento con questo numero!", Warning, Ok);
    KRV_COMPARE_BOX(boxes.at(1), "Attenzione", "Non è stato selezionato un cliente!", Warning, Ok);
    KRV_COMPARE_BOX(boxes.at(2), "Attenzione", "Non è stato selezionato un tipo di pagamento!", Warning, Ok);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO")).toInt(), 1);
    QVERIFY(m_editor->Modified());
}

void TestInserimentoNoteAccredito::customerAndPaymentTypeButtons()
{
    Editor();
    ChooseWhenShown<TKRVModSelezionaTipoPagamento>(*m_module, m_editor, QStringLiteral("actModSelezionaTipoPagamento"),
                                                   1, QStringLiteral("Rimessa diretta"));
    Click(Field<QToolButton>(m_editor, QStringLiteral("cmdSelezionaTipoPagamento")));
    QCOMPARE(Label("lblTipoPagamento")->text(), QStringLiteral("Rimessa diretta"));
    QVERIFY(m_editor->Modified());
    m_responder->Enqueue(TQ3MsgResult::Yes);
    ChooseWhenShown<TKRVModSelezionaCliente>(*m_module, m_editor, QStringLiteral("actModSelezionaCliente"), 1,
                                             QStringLiteral("CLN0000001"));
    Click(Field<QToolButton>(m_editor, QStringLiteral("cmdSelezionaCliente")));
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(
        m_responder->Messages().at(0), "Conferma",
        "Applicare il tipo di pagamento del cliente selezionato?\n\rRispondendo Si verrà sostituito il tipo di "
        "pagamento attuale.",
        Question, YesNo);
    QCOMPARE(Label("lblCliRagioneSociale")->text(), QStringLiteral("Bianchi S.p.A."));
    QCOMPARE(Label("lblTipoPagamento")->text(), QStringLiteral("Bonifico 30 gg Data Fattura"));
}

void TestInserimentoNoteAccredito::quantityShowsOneDecimal()
{
    Editor();
    AddArticle(*m_module, m_editor, QStringLiteral("ART1"));
    TKRVGrigliaRighe *griglia = m_editor->gridRigheDocumento();
    QCOMPARE(griglia->currentIndex(), m_editor->Righe()->index(0, 4));
    QCOMPARE(m_editor->Righe()->Testo(0, 5), QStringLiteral("1,0"));
    EditCell(griglia, 0, 5, QStringLiteral("2,5"));
    QCOMPARE(m_editor->Righe()->Testo(0, 5), QStringLiteral("2,5"));
    // 2,5 x 12,34
    QCOMPARE(m_editor->Righe()->Testo(0, 6), QStringLiteral("30,85\u00A0€"));
    QCOMPARE(Label("lblTotaleImponibile")->text(), QStringLiteral("30,85\u00A0€"));
    QCOMPARE(Label("lblTotaleImposta")->text(), QStringLiteral("6,17\u00A0€"));
    QCOMPARE(Label("lblTotaleDocumento")->text(), QStringLiteral("37,02\u00A0€"));
    // Zero is refused, the cell keeps its value.
    EditCell(griglia, 0, 5, QStringLiteral("0"));
    QCOMPARE(m_editor->Righe()->Testo(0, 5), QStringLiteral("2,5"));
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(Db().Rows(QStringLiteral("SELECT QUANTITA, PREZZO, IMPORTO FROM NOTE_ACCREDITO_DETT")),
             QStringList{QStringLiteral("2.5|12.34|30.85")});
}

void TestInserimentoNoteAccredito::userWritesACreditNote()
{
    Editor();
    const QDate data(QDate::currentDate().year(), 2, 3);
    Field<QDateEdit>(m_editor, QStringLiteral("dtpData"))->setDate(data);
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
    Click(Field<QCheckBox>(m_editor, QStringLiteral("chkPagato")));
    Click(Field<QCheckBox>(m_editor, QStringLiteral("chkScadenzaPagamento")));
    Field<QDateEdit>(m_editor, QStringLiteral("dtpScadenzaPagamento"))->setDate(data.addDays(30));
    Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote"))->setPlainText(QStringLiteral("Reso merce"));
    AddArticle(*m_module, m_editor, QStringLiteral("ART1"));
    AddService(*m_module, m_editor, QStringLiteral("SRV1"));
    Trigger(m_editor, QStringLiteral("actAggiungiTesto"));
    TKRVGrigliaRighe *griglia = m_editor->gridRigheDocumento();
    QCOMPARE(griglia->currentIndex(), m_editor->Righe()->index(2, 2));
    EditCell(griglia, 2, 2, QStringLiteral("Reso del 3 febbraio"));
    // Services may be negative, so may the price of any credit note line.
    EditCell(griglia, 0, 4, QStringLiteral("-10"));
    EditCell(griglia, 1, 5, QStringLiteral("2"));
    QCOMPARE(Label("lblTotaleImponibile")->text(), QStringLiteral("90,00\u00A0€"));
    QCOMPARE(Label("lblTotaleImposta")->text(), QStringLiteral("18,00\u00A0€"));
    QCOMPARE(Label("lblTotaleDocumento")->text(), QStringLiteral("108,00\u00A0€"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 0);
    const int id = m_editor->IdRecord();
    QCOMPARE(
        Db().Rows(QStringLiteral(
            "SELECT IDNOTA_ACCREDITO, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, CLI_INDIRIZZO, CLI_CITTA, "
            "CLI_CAP, CLI_PROVINCIA, CLI_NAZIONE, CLI_CODICEFISCALE, CLI_PARTITAIVA, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, "
            "PAGATO, NOTIFICATO, SCADENZA_PAGAMENTO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, NOTE "
            "FROM NOTE_ACCREDITO")),
        QStringList{QStringLiteral("%1|1|%2|%3|CLN0000001|Bianchi S.p.A.|Via Roma 1|Modena|41121|MO|Italia|"
                                   "BNCMRA80A01F257X|01234567890|2|Bonifico 30 gg Data Fattura|True|False|%4|90|18|108|"
                                   "Reso merce")
                        .arg(id)
                        .arg(data.toString(Qt::ISODate))
                        .arg(data.year())
                        .arg(data.addDays(30).toString(Qt::ISODate))});
    QCOMPARE(
        Db().Rows(QStringLiteral(
            "SELECT IDNOTA_ACCREDITO, DESCRIZIONE, TIPO_RIGA, CODICE, IDCATEGORIA, CATEGORIA, PREZZO, QUANTITA, IMPORTO, "
            "IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, IDUM, UM FROM NOTE_ACCREDITO_DETT "
            "ORDER BY IDNOTA_ACCREDITO_DETT")),
        (QStringList{QStringLiteral(
                         "%1|Articolo di prova|Articolo|ART1|1|Altro|-10|1|-10|1|20|Aliquota standard|20|1|PEZZI")
                         .arg(id),
                     QStringLiteral(
                         "%1|Servizio di prova|Servizio|SRV1|1|Altro|50|2|100|1|20|Aliquota standard|20|2|ORE")
                         .arg(id),
                     QStringLiteral("%1|Reso del 3 febbraio|Testo|<null>|<null>|<null>|<null>|<null>|<null>|<null>|"
                                    "<null>|<null>|<null>|<null>|<null>")
                         .arg(id)}));
    // The credit note has nowhere to put a cost, a discount, an exemption or a recurrence.
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM RDB$RELATION_FIELDS WHERE RDB$RELATION_NAME IN "
                                        "('NOTE_ACCREDITO', 'NOTE_ACCREDITO_DETT') AND (RDB$FIELD_NAME IN ('SCONTO', "
                                        "'COSTO', 'IVA_ESENTE') OR RDB$FIELD_NAME STARTING WITH 'FC_')"))
                 .toInt(),
             0);
}

void TestInserimentoNoteAccredito::savingWithoutLinesDeletesStoredLines()
{
    const int id = SaveReady();
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT")).toInt(), 1);
    QCOMPARE(m_editor->ApriRecord(id), 0);
    m_editor->gridRigheDocumento()->SelezionaCella(0, 2);
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_editor, QStringLiteral("actEliminaRiga"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT")).toInt(), 0);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT IDNOTA_ACCREDITO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO "
                                      "FROM NOTE_ACCREDITO")),
             QStringList{QStringLiteral("%1|0|0|0").arg(id)});
}

// The line keeps counting in the taxable total; its VAT columns go empty.
void TestInserimentoNoteAccredito::deletedVatRateGivesNullVatColumns()
{
    Db().Exec(QStringLiteral(
        "INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) VALUES (0, '10', 'Ridotta', 10)"));
    KRVInsertArticolo(Db(), QStringLiteral("ART10"), 1, 4);
    Editor();
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
    AddArticle(*m_module, m_editor, QStringLiteral("ART10"));
    Db().Exec(QStringLiteral("DELETE FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA=4"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 0);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, IMPORTO "
                                      "FROM NOTE_ACCREDITO_DETT")),
             QStringList{QStringLiteral("<null>|<null>|<null>|<null>|12.34")});
    QCOMPARE(Db().Rows(
                 QStringLiteral("SELECT TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM NOTE_ACCREDITO")),
             QStringList{QStringLiteral("12.34|0|12.34")});
}

void TestInserimentoNoteAccredito::everySaveGivesNewLineKeys()
{
    const int id = SaveReady();
    AddService(*m_module, m_editor, QStringLiteral("SRV1"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    const QStringList prime = LineKeys();
    QCOMPARE(prime.size(), 2);
    QCOMPARE(m_editor->ApriRecord(id), 0);
    Click(Field<QCheckBox>(m_editor, QStringLiteral("chkNotificata")));
    Trigger(m_editor, QStringLiteral("actSalva"));
    const QStringList seconde = LineKeys();
    QCOMPARE(seconde.size(), 2);
    for (const QString &chiave : seconde)
        QVERIFY(!prime.contains(chiave));
    QCOMPARE(Db().Rows(QStringLiteral("SELECT TIPO_RIGA FROM NOTE_ACCREDITO_DETT ORDER BY IDNOTA_ACCREDITO_DETT")),
             (QStringList{"Articolo", "Servizio"}));
}

void TestInserimentoNoteAccredito::afterAFailedSaveTheNextSaveStoresTheCreditNoteOnce()
{
    Db().Exec(QStringLiteral("CREATE EXCEPTION E_TESTATA_BLOCCATA 'Testata bloccata'"));
    Db().Exec(QStringLiteral(
        "CREATE TRIGGER TG_BI_NOTE_ACCREDITO_TEST FOR NOTE_ACCREDITO BEFORE INSERT AS BEGIN EXCEPTION E_TESTATA_BLOCCATA; END"));
    SaveReady();
    QCOMPARE(m_responder->Messages().size(), 1);
    Db().Exec(QStringLiteral("DROP TRIGGER TG_BI_NOTE_ACCREDITO_TEST"));

    Click(Field<QCheckBox>(m_editor, QStringLiteral("chkPagato")));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 1);
    const int id = m_editor->IdRecord();
    QCOMPARE(Db().Rows(QStringLiteral("SELECT IDNOTA_ACCREDITO, CLI_CODICE, PAGATO FROM NOTE_ACCREDITO")),
             QStringList{QStringLiteral("%1|CLN0000001|True").arg(id)});
    QCOMPARE(Db().Rows(QStringLiteral("SELECT IDNOTA_ACCREDITO, CODICE FROM NOTE_ACCREDITO_DETT")),
             QStringList{QStringLiteral("%1|ART1").arg(id)});
}

void TestInserimentoNoteAccredito::reopenedCreditNoteShowsItsLines()
{
    const int id = SaveReady();
    EditCell(m_editor->gridRigheDocumento(), 0, 5, QStringLiteral("2,5"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(m_editor->Righe()->Righe(), 0);
    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(m_editor->Righe()->Righe(), 1);
    QCOMPARE(m_editor->Righe()->Cella(0, 1), QStringLiteral("ART1"));
    QCOMPARE(m_editor->Righe()->Testo(0, 5), QStringLiteral("2,5"));
    QCOMPARE(m_editor->Righe()->Testo(0, 8), QStringLiteral("20"));
    QCOMPARE(m_editor->Righe()->Tipo(0), KRVRigaArticolo);
    QCOMPARE(Label("lblCliRagioneSociale")->text(), QStringLiteral("Bianchi S.p.A."));
    QCOMPARE(Label("lblTotaleDocumento")->text(), QStringLiteral("37,02\u00A0€"));
    QVERIFY(!m_editor->Modified());
    QVERIFY(!m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), id);
    QCOMPARE(m_editor->Testata().Cliente.PARTITAIVA, QStringLiteral("01234567890"));
}

void TestInserimentoNoteAccredito::closingAsksToSave()
{
    Editor();
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
    m_responder->Enqueue(TQ3MsgResult::Cancel);
    CloseFrame(m_editor);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Conferma",
                    "Salvare le modifiche al record corrente\n\rprima di continuare?", Question, YesNoCancel);
    QVERIFY(m_module->Main->Form(ActEditor));
    m_responder->Enqueue(TQ3MsgResult::Yes);
    CloseFrame(m_editor);
    QVERIFY(!m_module->Main->Form(ActEditor));
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO")).toInt(), 1);
}

void TestInserimentoNoteAccredito::savedCreditNotePrints()
{
    Editor();
    SaveReady();
    QCOMPARE(ModalTitlesWhile([this] { Trigger(m_editor, QStringLiteral("actStampa")); }),
             QStringList{"Output Options"});
    QCOMPARE(m_responder->Messages().size(), 0);
}

// Without its report project (the file missing at start-up) the print fails
// in the report engine: the box shows that failure's own message.
void TestInserimentoNoteAccredito::printFailureShowsItsOwnMessage()
{
    Editor();
    SaveReady();
    m_module->Main->rProject()->Close();
    const QStringList finestre = KRVStampeTest::WithModals([this] { Trigger(m_editor, QStringLiteral("actStampa")); },
                                                           {[](QWidget *opzioni) { KRVStampeTest::ClickOk(opzioni); }});
    m_module->Main->rProject()->Open();
    QCOMPARE(finestre, QStringList{QStringLiteral("Output Options")});
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Errore", "Il progetto delle stampe non è aperto.", Error, Ok);
    // The editor stays as it was, ready to print again.
    QCOMPARE(ModalTitlesWhile([this] { Trigger(m_editor, QStringLiteral("actStampa")); }),
             QStringList{"Output Options"});
    QCOMPARE(m_responder->Messages().size(), 1);
}

// The note refers to one of its customer's invoices, newest first in the
// list; the reference is saved as a copy, which outlives the invoice, and
// "Nessuna fattura" takes it away.
void TestInserimentoNoteAccredito::creditNoteRefersToAnInvoiceOfItsCustomer()
{
    const int dodici = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 12, 2025, QStringLiteral("CLN0000001"));
    Db().Exec(QStringLiteral("UPDATE FATT_VEND SET DATA = '2025-03-05' WHERE IDFATT_VEND = ")
              + QString::number(dodici));
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 7, 2025, QStringLiteral("CLN0000001"));
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 30, 2025, QStringLiteral("CLN0000002"));
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 3, 2024, QStringLiteral("CLN0000001"));
    Editor();
    QLabel *fattura = Label("lblFattRiferimento");
    QCOMPARE(fattura->text(), QStringLiteral("..."));
    QCOMPARE(fattura->accessibleName(), QStringLiteral("Fattura di riferimento"));
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
    AddArticle(*m_module, m_editor, QStringLiteral("ART1"));
    QCOMPARE(ScegliFattura(QStringLiteral("12")), (QStringList{"12", "7", "3"}));
    QCOMPARE(fattura->text(), QStringLiteral("n. 12 del 05/03/2025"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_responder->Messages().isEmpty());
    const int id = m_editor->IdRecord();
    QCOMPARE(Riferimento(), QStringList{QStringLiteral("%1|12|2025-03-05").arg(dodici)});

    // The invoice deleted later: the note still names it.
    Db().Exec(QStringLiteral("DELETE FROM FATT_VEND WHERE IDFATT_VEND = ") + QString::number(dodici));
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(fattura->text(), QStringLiteral("..."));
    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(fattura->text(), QStringLiteral("n. 12 del 05/03/2025"));
    QVERIFY(!m_editor->Modified());
    const TKRVFatturaRiferimento letta = KRVFatturaDellaNota(Db().Db(), id);
    QCOMPARE(letta.IdFattura, dodici);
    QCOMPARE(letta.Numero, 12);
    QCOMPARE(letta.Data, QDate(2025, 3, 5));

    Trigger(m_editor, QStringLiteral("actRimuoviFattura"));
    QCOMPARE(fattura->text(), QStringLiteral("..."));
    QVERIFY(m_editor->Modified());
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_responder->Messages().isEmpty());
    QCOMPARE(Riferimento(), QStringList{QStringLiteral("<null>|<null>|<null>")});
    QVERIFY(KRVFatturaDellaNota(Db().Db(), id).Vuota());
}

// An invoice of one customer is no reference for a note to another.
void TestInserimentoNoteAccredito::changingTheCustomerClearsTheInvoice()
{
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 12, 2025, QStringLiteral("CLN0000001"));
    Editor();
    QLabel *fattura = Label("lblFattRiferimento");
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
    ScegliFattura(QStringLiteral("12"));
    QCOMPARE(fattura->text(), QStringLiteral("n. 12 del 15/01/2025"));
    // The same customer chosen again keeps it.
    m_responder->Enqueue(TQ3MsgResult::No);
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
    QCOMPARE(fattura->text(), QStringLiteral("n. 12 del 15/01/2025"));
    m_responder->Enqueue(TQ3MsgResult::No);
    ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000002"));
    QCOMPARE(Label("lblCliCodice")->text(), QStringLiteral("CLN0000002"));
    QCOMPARE(fattura->text(), QStringLiteral("..."));
    // The new customer has no invoice to offer.
    QCOMPARE(ScegliFattura(QStringLiteral("12")), QStringList());
    QCOMPARE(fattura->text(), QStringLiteral("..."));
    AddArticle(*m_module, m_editor, QStringLiteral("ART1"));
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(Riferimento(), QStringList{QStringLiteral("<null>|<null>|<null>")});
}

void TestInserimentoNoteAccredito::choosingAnInvoiceNeedsACustomer()
{
    KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 12, 2025, QStringLiteral("CLN0000001"));
    Editor();
    const QStringList finestre = ModalTitlesWhile([this] { Trigger(m_editor, QStringLiteral("actSelezionaFattura")); });
    QCOMPARE(finestre, QStringList());
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Attenzione", "Selezionare prima il cliente.", Warning, Ok);
    QCOMPARE(Label("lblFattRiferimento")->text(), QStringLiteral("..."));
    QVERIFY(!m_editor->Modified());
}

QTEST_MAIN(TestInserimentoNoteAccredito)
#include "tst_inserimentonoteaccredito.moc"
