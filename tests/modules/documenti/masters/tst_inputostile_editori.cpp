// Hostile texts typed into every text field of the editors and saved: what
// the database holds afterwards is exactly what the field shows (the field
// itself keeping to its column's length), or the window refuses with its own
// message; never an error box, and no other row of any table changes.
#include "../documents/KRVFattureTestKit.h"
#include "KRVInputOstile.h"
#include "uKRVInserimentoAliquoteIVA.h"
#include "uKRVInserimentoArticoli.h"
#include "uKRVInserimentoClienti.h"
#include "uKRVInserimentoFattureVendita.h"
#include "uKRVInserimentoNoteAccredito.h"
#include "uKRVInserimentoNoteDocumenti.h"
#include "uKRVInserimentoServizi.h"
#include "uKRVInserimentoTipiPagamento.h"
#include "uKRVInserimentoUM.h"
#include "uKRVModSelezionaTipoPagamento.h"

#include <QAbstractItemDelegate>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QStackedWidget>
#include <QTableView>

using namespace KRVTest;

namespace {

// A new record for the next try: "Nuovo" where the window offers it; a window
// still on a record never stored (its save was refused) is typed over.
void NuovoSeOfferto(QWidget *editor)
{
    if (Action(editor, QStringLiteral("actNuovo"))->isEnabled())
        Trigger(editor, QStringLiteral("actNuovo"));
}

// An input of the editor and the column it is saved to.
struct TCampo
{
    QString Nome;
    QString Colonna;
    bool Maiuscole = false; // the input turns what is typed into capitals
};

// Brings the page that holds the input forward, as the user would.
void MostraCampo(QWidget *campo)
{
    for (QWidget *w = campo; w && w->parentWidget(); w = w->parentWidget()) {
        if (auto pagine = qobject_cast<QTabWidget *>(w->parentWidget()->parentWidget());
            pagine && qobject_cast<QStackedWidget *>(w->parentWidget()))
            pagine->setCurrentWidget(w);
    }
}

QString Testo(const QWidget *campo)
{
    if (auto memo = qobject_cast<const QPlainTextEdit *>(campo))
        return memo->toPlainText();
    return qobject_cast<const QLineEdit *>(campo)->text();
}

// What a line input shows of a typed text: no more than its length, never
// half a character (a pasted text is cut at the length, a typed character that
// does not fit is left out), in capitals when it takes them.
QString Atteso(const QWidget *campo, const TCampo &descrizione, const QString &testo)
{
    auto edit = qobject_cast<const QLineEdit *>(campo);
    if (!edit)
        return TestoMemo(testo);
    QString atteso;
    if (DaIncollare(testo)) {
        atteso = testo.left(edit->maxLength());
        if (!atteso.isEmpty() && atteso.back().isHighSurrogate())
            atteso.chop(1);
    } else {
        for (int i = 0; i < testo.size(); ++i) {
            const int lunghezza = testo.at(i).isHighSurrogate() && i + 1 < testo.size() ? 2 : 1;
            if (atteso.size() + lunghezza <= edit->maxLength())
                atteso += testo.mid(i, lunghezza);
            i += lunghezza - 1;
        }
    }
    return descrizione.Maiuscole ? Maiuscole(atteso) : atteso;
}

// The text inputs of a window a user types into (not the spin boxes' own).
QStringList InputTesto(const QWidget *window)
{
    QStringList nomi;
    for (const QLineEdit *edit : window->findChildren<QLineEdit *>()) {
        if (!qobject_cast<QAbstractSpinBox *>(edit->parentWidget()) && !edit->isReadOnly())
            nomi << edit->objectName();
    }
    for (const QPlainTextEdit *memo : window->findChildren<QPlainTextEdit *>())
        nomi << memo->objectName();
    nomi.sort();
    return nomi;
}

// The master editors, each on a record of its own: the unit "XX", payment
// type 1, the article and service of the documents' starting rows, the note
// "Nota"; VAT rates and customers lock their code once saved, so each text
// goes into a new record.
struct TEditore
{
    QString Azione;
    QString Tabella;
    QString Chiave;
    QList<TCampo> Campi;
    bool Nuovo = false;
    // What the user chooses besides the texts for the record to be saved.
    std::function<void(QWidget *)> Prepara = {};
    // The inputs whose content the window checks before saving: Prepara types
    // an accepted value there, and their own step tries the hostile texts.
    QList<TCampo> Controllati = {};
};

// The customer's electronic invoice data, which the editor checks: a private
// person's names, the recipient code, the PEC.
QList<TCampo> ControllatiClienti()
{
    return {{QStringLiteral("txtNome"), QStringLiteral("NOME")},
            {QStringLiteral("txtCognome"), QStringLiteral("COGNOME")},
            {QStringLiteral("txtCodiceDestinatario"), QStringLiteral("CODICE_DESTINATARIO"), true},
            {QStringLiteral("txtPec"), QStringLiteral("PEC")}};
}

// A private person whose electronic invoice data the editor accepts.
void PreparaCliente(QWidget *editor)
{
    auto tipo = Field<QComboBox>(editor, QStringLiteral("cboTipoSoggetto"));
    tipo->setCurrentIndex(tipo->findText(QStringLiteral("Privato")));
    const QStringList valori = {QStringLiteral("Mario"), QStringLiteral("Rossi"), QStringLiteral("ABC1234"),
                                QStringLiteral("mario.rossi@pec.it")};
    const QList<TCampo> campi = ControllatiClienti();
    for (int i = 0; i < campi.size(); ++i) {
        QWidget *campo = Field<QWidget>(editor, campi.at(i).Nome);
        MostraCampo(campo);
        Type(campo, valori.at(i));
    }
}

QList<TEditore> Editori()
{
    QList<TCampo> clienti;
    for (const char *nome : {"Codice",        "RagioneSociale",  "Indirizzo",     "Citta",          "Cap",
                             "Provincia",     "Nazione",         "CodiceFiscale", "PartitaIVA",     "Telefono1",
                             "Telefono2",     "Telefono3",       "Fax",           "Email",          "Web",
                             "CoordBanBanca", "CoordBanAgenzia", "CoordBanPaese", "CoordBanCINEur", "CoordBanCIN",
                             "CoordBanABI",   "CoordBanCAB",     "CoordBanConto", "CoordBanSwift",  "Note"}) {
        const QString campo = QString::fromLatin1(nome);
        QString colonna = campo.toUpper();
        if (campo == QLatin1String("CoordBanCINEur"))
            colonna = QStringLiteral("COORDBAN_CIN_EUR");
        else if (campo.startsWith(QLatin1String("CoordBan")))
            colonna = QStringLiteral("COORDBAN_") + campo.mid(8).toUpper();
        const bool maiuscole = QStringList{QStringLiteral("Cap"),           QStringLiteral("Provincia"),
                                           QStringLiteral("CodiceFiscale"), QStringLiteral("PartitaIVA"),
                                           QStringLiteral("CoordBanPaese"), QStringLiteral("CoordBanCINEur"),
                                           QStringLiteral("CoordBanCIN"),   QStringLiteral("CoordBanABI"),
                                           QStringLiteral("CoordBanCAB"),   QStringLiteral("CoordBanConto")}
                                   .contains(campo);
        clienti.append({QStringLiteral("txt") + campo, colonna, maiuscole});
    }
    const TCampo codice{QStringLiteral("txtCodice"), QStringLiteral("CODICE")};
    const TCampo codiceIva{QStringLiteral("txtCodice"), QStringLiteral("CODICE"), true};
    const TCampo descrizione{QStringLiteral("txtDescrizione"), QStringLiteral("DESCRIZIONE")};
    return {{QStringLiteral("actInserimentoUM"),
             QStringLiteral("UM"),
             QStringLiteral("IDUM"),
             {{QStringLiteral("txtUm"), QStringLiteral("UM"), true}}},
            {QStringLiteral("actInserimentoTipiPagamento"),
             QStringLiteral("TIPI_PAGAMENTO"),
             QStringLiteral("IDTIPO_PAGAMENTO"),
             {{QStringLiteral("txtTipoPagamento"), QStringLiteral("TIPO_PAGAMENTO")}}},
            {QStringLiteral("actInserimentoAliquoteIVA"),
             QStringLiteral("ALIQUOTE_IVA"),
             QStringLiteral("IDALIQUOTA_IVA"),
             {codiceIva,
              descrizione,
              {QStringLiteral("txtRiferimentoNormativo"), QStringLiteral("RIFERIMENTO_NORMATIVO")}},
             true,
             [](QWidget *editor) {
                 auto natura = Field<QComboBox>(editor, QStringLiteral("cboNatura"));
                 natura->setCurrentIndex(natura->findData(QStringLiteral("N4")));
             }},
            {QStringLiteral("actInserimentoClienti"), QStringLiteral("CLIENTI"), QStringLiteral("IDCLIENTE"), clienti,
             true, &PreparaCliente, ControllatiClienti()},
            {QStringLiteral("actInserimentoArticoli"),
             QStringLiteral("ANA_MAGA"),
             QStringLiteral("IDANA_MAGA"),
             {codice, descrizione, {QStringLiteral("txtNote"), QStringLiteral("NOTE")}}},
            {QStringLiteral("actInserimentoServizi"),
             QStringLiteral("SERVIZI"),
             QStringLiteral("IDSERVIZIO"),
             {codice, descrizione}},
            {QStringLiteral("actInserimentoNoteDocumenti"),
             QStringLiteral("NOTE_DOCUMENTI"),
             QStringLiteral("IDNOTA_DOCUMENTI"),
             {{QStringLiteral("txtTitolo"), QStringLiteral("TITOLO")},
              {QStringLiteral("txtTesto"), QStringLiteral("TESTO")}}}};
}

} // namespace

class TestInputOstileEditori : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void unitEditor();
    void paymentTypeEditor();
    void vatRateEditor();
    void customerEditor();
    void customerEditorCheckedFields();
    void articleEditor();
    void serviceEditor();
    void documentNoteEditor();
    void invoiceEditor();
    void creditNoteEditor();
    void fieldsKeepToTheirColumns();
    void invoiceRefusesCustomerDataLongerThanItsColumns();
    void invoiceCopiesCustomerDataAsWritten();
    void refusalNamesTheFieldAndTheCharacters();
    void deleteTestsTheCodeAsTyped();
    void codesDifferingOnlyInCaseAreOneCode();

private:
    QSqlDatabase Db() const { return m_module->Database.Db(); }
    // Every hostile text typed into every input and saved; a new record for
    // each text when nuovo (deleted afterwards), otherwise the record open.
    void ProvaCampi(TKRVInserimentoBase *editor, const QString &tabella, const QString &chiave,
                    const QList<TCampo> &campi, bool nuovo, const std::function<void(QWidget *)> &prepara);
    // The editor of the action, on its record or on new ones.
    void ProvaEditore(const QString &azione);
    void ProvaDocumento(const QString &azione, const QString &griglia, const QString &tabella,
                        const QString &tabellaRighe, const QString &chiave);
    // The rows of the tables other than those the editor writes, and of those
    // the rows other than its own record.
    QHash<QString, QStringList> Altre(const QStringList &tabelle, const QStringList &condizioni) const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    int m_provati = 0;
    int m_rifiuti = 0;
};

void TestInputOstileEditori::initTestCase()
{
    UseItalianLocale();
    UsaDatabaseInMemoria();
}

void TestInputOstileEditori::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    InsertAnagraficheDocumenti(m_module->Database);
    m_provati = 0;
    m_rifiuti = 0;
}

void TestInputOstileEditori::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

QHash<QString, QStringList> TestInputOstileEditori::Altre(const QStringList &tabelle,
                                                          const QStringList &condizioni) const
{
    QHash<QString, QStringList> foto = Fotografia(Db(), tabelle);
    for (int i = 0; i < tabelle.size(); ++i) {
        QSqlQuery righe = OpenQuery(Db(), QStringLiteral("SELECT * FROM ") + tabelle.at(i) + QStringLiteral(" WHERE ")
                                              + condizioni.at(i) + QStringLiteral(" ORDER BY 1"));
        QStringList testi;
        while (righe.next()) {
            QStringList valori;
            for (int c = 0; c < righe.record().count(); ++c)
                valori << righe.value(c).toString();
            testi << valori.join(QChar(0x1F));
        }
        foto.insert(QStringLiteral("altre ") + tabelle.at(i), testi);
    }
    return foto;
}

void TestInputOstileEditori::ProvaCampi(TKRVInserimentoBase *editor, const QString &tabella, const QString &chiave,
                                        const QList<TCampo> &campi, bool nuovo,
                                        const std::function<void(QWidget *)> &prepara)
{
    QStringList colonne;
    for (const TCampo &campo : campi)
        colonne << campo.Colonna;
    const QString lettura = QStringLiteral("SELECT ") + colonne.join(QStringLiteral(", ")) + QStringLiteral(" FROM ")
                            + tabella + QStringLiteral(" WHERE ") + chiave + QStringLiteral(" = ");
    const int aperto = editor->IdRecord();
    const QString altre = chiave + QStringLiteral(" <> ") + QString::number(aperto);
    const QHash<QString, QStringList> prima = Altre({tabella}, {altre});
    for (const QString &testo : TestiOstili()) {
        m_boxes->Clear();
        if (nuovo)
            NuovoSeOfferto(editor);
        if (prepara)
            prepara(editor);
        const QStringList salvate = m_module->Database.Rows(lettura + QString::number(editor->IdRecord()));
        QStringList mostrati;
        bool nonAmmesso = false;
        for (const TCampo &campo : campi) {
            QWidget *input = Field<QWidget>(editor, campo.Nome);
            MostraCampo(input);
            ScriviOstile(input, testo);
            QVERIFY2(Testo(input) == Atteso(input, campo, testo),
                     qPrintable(campo.Nome + QLatin1Char(' ') + Visibile(testo) + QStringLiteral(" shows ")
                                + Visibile(Testo(input))));
            mostrati << Testo(input);
            nonAmmesso = nonAmmesso || NonAmmesso(Testo(input));
        }
        Trigger(editor, QStringLiteral("actSalva"));
        ++m_provati;
        const QString errore = BoxErrore(*m_boxes);
        QVERIFY2(errore.isEmpty(), qPrintable(Visibile(testo) + QStringLiteral(": ") + errore));
        if (nonAmmesso) {
            QCOMPARE(m_boxes->Messages().size(), 1);
            QCOMPARE(m_boxes->Messages().first().Title, QStringLiteral("Attenzione"));
            QVERIFY2(m_boxes->Messages().first().Text.contains(QStringLiteral("contiene caratteri non ammessi")),
                     qPrintable(m_boxes->Messages().first().Text));
            // Nothing was written.
            QCOMPARE(m_module->Database.Rows(lettura + QString::number(editor->IdRecord())), salvate);
            QVERIFY(editor->Modified());
            ++m_rifiuti;
            continue;
        }
        QVERIFY2(m_boxes->Messages().isEmpty(),
                 qPrintable(Visibile(testo) + QStringLiteral(": ") + m_boxes->Messages().value(0).Text));
        QVERIFY(!editor->Modified());
        QSqlQuery riga = OpenQuery(Db(), lettura + QString::number(editor->IdRecord()));
        QVERIFY(riga.next());
        for (int i = 0; i < campi.size(); ++i)
            QVERIFY2(riga.value(i).toString() == mostrati.at(i),
                     qPrintable(campi.at(i).Nome + QLatin1Char(' ') + Visibile(mostrati.at(i))
                                + QStringLiteral(" saved as ") + Visibile(riga.value(i).toString())));
        if (nuovo)
            m_module->Database.Exec(QStringLiteral("DELETE FROM ") + tabella + QStringLiteral(" WHERE ") + chiave
                                    + QStringLiteral(" = ") + QString::number(editor->IdRecord()));
    }
    QVERIFY(Altre({tabella}, {altre}) == prima);
}

void TestInputOstileEditori::ProvaEditore(const QString &azione)
{
    InserisciRiga(Db(), QStringLiteral("UM"), {QStringLiteral("UM")}, {QStringLiteral("XX")});
    InserisciRiga(Db(), QStringLiteral("NOTE_DOCUMENTI"), {QStringLiteral("TITOLO"), QStringLiteral("TESTO")},
                  {QStringLiteral("Nota"), QStringLiteral("Testo")});
    const QList<TEditore> editori = Editori();
    const TEditore editore =
        *std::find_if(editori.cbegin(), editori.cend(), [&azione](const TEditore &e) { return e.Azione == azione; });
    auto editor = Run<TKRVInserimentoBase>(*m_module, azione);
    QVERIFY(editor);
    QStringList nomi;
    for (const TCampo &campo : editore.Campi + editore.Controllati)
        nomi << campo.Nome;
    nomi.sort();
    // Every text input of the editor is tried, and no other.
    QCOMPARE(InputTesto(editor), nomi);
    if (!editore.Nuovo) {
        const int id = GetLastGeneratorValue(QStringLiteral("GN_") + editore.Chiave, Db());
        QCOMPARE(editor->ApriRecord(id), 0);
    }
    ProvaCampi(editor, editore.Tabella, editore.Chiave, editore.Campi, editore.Nuovo, editore.Prepara);
    qInfo("%s: %d testi ostili provati, %d rifiutati con il messaggio della finestra",
          qPrintable(editor->windowTitle()), m_provati, m_rifiuti);
}

void TestInputOstileEditori::unitEditor()
{
    ProvaEditore(QStringLiteral("actInserimentoUM"));
}

void TestInputOstileEditori::paymentTypeEditor()
{
    ProvaEditore(QStringLiteral("actInserimentoTipiPagamento"));
}

void TestInputOstileEditori::vatRateEditor()
{
    ProvaEditore(QStringLiteral("actInserimentoAliquoteIVA"));
}

void TestInputOstileEditori::customerEditor()
{
    ProvaEditore(QStringLiteral("actInserimentoClienti"));
}

// Each hostile text in each checked input of a customer otherwise accepted:
// saved exactly as shown, or refused with the window's warning and nothing
// written; never an error box.
void TestInputOstileEditori::customerEditorCheckedFields()
{
    auto editor = Run<TKRVInserimentoBase>(*m_module, QStringLiteral("actInserimentoClienti"));
    QVERIFY(editor);
    const QHash<QString, QStringList> prima = Fotografia(Db());
    int salvati = 0;
    for (const TCampo &campo : ControllatiClienti()) {
        for (const QString &testo : TestiOstiliBase()) {
            m_boxes->Clear();
            NuovoSeOfferto(editor);
            PreparaCliente(editor);
            Type(Field<QWidget>(editor, QStringLiteral("txtRagioneSociale")), QStringLiteral("Rossi Mario"));
            QWidget *input = Field<QWidget>(editor, campo.Nome);
            MostraCampo(input);
            ScriviOstile(input, testo);
            QVERIFY2(Testo(input) == Atteso(input, campo, testo),
                     qPrintable(campo.Nome + QLatin1Char(' ') + Visibile(testo)));
            const QString mostrato = Testo(input);
            Trigger(editor, QStringLiteral("actSalva"));
            const QString dove = campo.Nome + QLatin1Char(' ') + Visibile(testo) + QStringLiteral(": ");
            QVERIFY2(BoxErrore(*m_boxes).isEmpty(), qPrintable(dove + BoxErrore(*m_boxes)));
            if (!m_boxes->Messages().isEmpty()) {
                QCOMPARE(m_boxes->Messages().size(), 1);
                const TQ3Message &box = m_boxes->Messages().first();
                QVERIFY2(box.Title == QLatin1String("Attenzione") && box.Icon == TQ3MsgIcon::Warning,
                         qPrintable(dove + box.Title + QStringLiteral(" / ") + box.Text));
                QVERIFY(editor->NewRecord());
                QVERIFY(editor->Modified());
                QVERIFY(Fotografia(Db()) == prima);
                continue;
            }
            ++salvati;
            QVERIFY(!editor->Modified());
            QCOMPARE(m_module->Database
                         .Scalar(QStringLiteral("SELECT ") + campo.Colonna
                                 + QStringLiteral(" FROM CLIENTI WHERE IDCLIENTE = ")
                                 + QString::number(editor->IdRecord()))
                         .toString(),
                     mostrato);
            m_module->Database.Exec(QStringLiteral("DELETE FROM CLIENTI WHERE IDCLIENTE = ")
                                    + QString::number(editor->IdRecord()));
        }
    }
    // The names take any text; the code and the PEC only their own shapes.
    QVERIFY(salvati > 0);
}

void TestInputOstileEditori::articleEditor()
{
    ProvaEditore(QStringLiteral("actInserimentoArticoli"));
}

void TestInputOstileEditori::serviceEditor()
{
    ProvaEditore(QStringLiteral("actInserimentoServizi"));
}

void TestInputOstileEditori::documentNoteEditor()
{
    ProvaEditore(QStringLiteral("actInserimentoNoteDocumenti"));
}

// The header's note and the description of a text line, on a saved document
// with a customer and an article.
void TestInputOstileEditori::ProvaDocumento(const QString &azione, const QString &griglia, const QString &tabella,
                                            const QString &tabellaRighe, const QString &chiave)
{
    auto editor = Run<TKRVInserimentoDocumentoBase>(*m_module, azione);
    ChooseCustomer(*m_module, editor, QStringLiteral("CLN0000001"));
    AddArticle(*m_module, editor, QStringLiteral("ART1"));
    Trigger(editor, QStringLiteral("actAggiungiTesto"));
    Trigger(editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QVERIFY(!editor->NewRecord());
    QCOMPARE(InputTesto(editor), QStringList{QStringLiteral("txtNote")});
    const int id = editor->IdRecord();
    const QString mio = chiave + QStringLiteral(" = ") + QString::number(id);
    const QString altri = chiave + QStringLiteral(" <> ") + QString::number(id);
    const QString lettura = QStringLiteral("SELECT D.NOTE, R.DESCRIZIONE FROM ") + tabella + QStringLiteral(" D JOIN ")
                            + tabellaRighe + QStringLiteral(" R ON R.") + chiave + QStringLiteral(" = D.") + chiave
                            + QStringLiteral(" AND R.TIPO_RIGA = 'Testo' WHERE D.") + mio;
    const QHash<QString, QStringList> prima = Altre({tabella, tabellaRighe}, {altri, altri});
    auto note = Field<QPlainTextEdit>(editor, QStringLiteral("txtNote"));
    auto righe = Field<QTableView>(editor, griglia);
    TKRVRigheDocumento *modello = editor->Righe();
    const int descrizione = modello->Layout().Descrizione;
    for (const QString &testo : TestiOstili()) {
        m_boxes->Clear();
        const QStringList salvate = m_module->Database.Rows(lettura);
        MostraCampo(note);
        ScriviOstile(note, testo);
        QCOMPARE(note->toPlainText(), TestoMemo(testo));
        int riga = 0;
        while (modello->Tipo(riga) != KRVRigaTesto)
            ++riga;
        MostraCampo(righe);
        const QModelIndex cella = modello->index(riga, descrizione);
        righe->setCurrentIndex(cella);
        righe->edit(cella);
        auto memo = righe->viewport()->findChild<QPlainTextEdit *>(QStringLiteral("memoDescrizione"));
        QVERIFY(memo);
        ScriviOstile(memo, testo);
        QAbstractItemDelegate *delegate = righe->itemDelegateForIndex(cella);
        emit delegate->commitData(memo);
        emit delegate->closeEditor(memo);
        ProcessDeletes();
        QCOMPARE(modello->Cella(riga, descrizione), TestoMemo(testo));
        Trigger(editor, QStringLiteral("actSalva"));
        ++m_provati;
        const QString errore = BoxErrore(*m_boxes);
        QVERIFY2(errore.isEmpty(), qPrintable(Visibile(testo) + QStringLiteral(": ") + errore));
        if (NonAmmesso(TestoMemo(testo))) {
            QCOMPARE(m_boxes->Messages().size(), 1);
            QCOMPARE(m_boxes->Messages().first().Title, QStringLiteral("Attenzione"));
            QVERIFY2(m_boxes->Messages().first().Text.contains(QStringLiteral("contiene caratteri non ammessi")),
                     qPrintable(m_boxes->Messages().first().Text));
            QCOMPARE(m_module->Database.Rows(lettura), salvate);
            ++m_rifiuti;
            continue;
        }
        QVERIFY2(m_boxes->Messages().isEmpty(),
                 qPrintable(Visibile(testo) + QStringLiteral(": ") + m_boxes->Messages().value(0).Text));
        QSqlQuery letta = OpenQuery(Db(), lettura);
        QVERIFY(letta.next());
        QVERIFY2(letta.value(0).toString() == TestoMemo(testo), qPrintable(Visibile(letta.value(0).toString())));
        QVERIFY2(letta.value(1).toString() == TestoMemo(testo), qPrintable(Visibile(letta.value(1).toString())));
        QVERIFY(!letta.next());
    }
    QVERIFY(Altre({tabella, tabellaRighe}, {altri, altri}) == prima);
    qInfo("%s: %d testi ostili provati (note e descrizione di una riga), %d rifiutati con il messaggio della finestra",
          qPrintable(editor->windowTitle()), m_provati, m_rifiuti);
}

void TestInputOstileEditori::invoiceEditor()
{
    ProvaDocumento(QStringLiteral("actInserimentoFattureVendita"), QStringLiteral("gridRigheFattura"),
                   QStringLiteral("FATT_VEND"), QStringLiteral("FATT_VEND_DETT"), QStringLiteral("IDFATT_VEND"));
}

void TestInputOstileEditori::creditNoteEditor()
{
    ProvaDocumento(QStringLiteral("actInserimentoNoteAccredito"), QStringLiteral("gridRigheDocumento"),
                   QStringLiteral("NOTE_ACCREDITO"), QStringLiteral("NOTE_ACCREDITO_DETT"),
                   QStringLiteral("IDNOTA_ACCREDITO"));
}

// No line input takes more characters than its column holds.
void TestInputOstileEditori::fieldsKeepToTheirColumns()
{
    for (const TEditore &editore : Editori()) {
        auto editor = Run<TKRVInserimentoBase>(*m_module, editore.Azione);
        const QHash<QString, int> lunghezze = LunghezzeColonne(Db(), editore.Tabella);
        for (const TCampo &campo : editore.Campi) {
            auto edit = editor->findChild<QLineEdit *>(campo.Nome);
            if (!edit)
                continue;
            QVERIFY2(lunghezze.contains(campo.Colonna), qPrintable(campo.Colonna));
            QVERIFY2(edit->maxLength() <= lunghezze.value(campo.Colonna),
                     qPrintable(editore.Tabella + QLatin1Char('.') + campo.Colonna + QStringLiteral(" holds ")
                                + QString::number(lunghezze.value(campo.Colonna)) + QStringLiteral(", ") + campo.Nome
                                + QStringLiteral(" takes ") + QString::number(edit->maxLength())));
        }
        CloseFrame(editor);
    }
}

// A customer's address and payment type may be longer than the document's
// copy of them holds: the document says so and keeps what it had.
void TestInputOstileEditori::invoiceRefusesCustomerDataLongerThanItsColumns()
{
    const QSqlDatabase db = Db();
    const QHash<QString, int> fattura = LunghezzeColonne(db, QStringLiteral("FATT_VEND"));
    const QHash<QString, int> clienti = LunghezzeColonne(db, QStringLiteral("CLIENTI"));
    QVERIFY(clienti.value(QStringLiteral("INDIRIZZO")) > fattura.value(QStringLiteral("CLI_INDIRIZZO")));
    const QString emoji = QStringLiteral("😀");
    const QList<std::pair<QString, QString>> indirizzi{
        {QStringLiteral("LUNGO"), QString(fattura.value(QStringLiteral("CLI_INDIRIZZO")) + 1, QLatin1Char('x'))},
        {QStringLiteral("EMOJI"), emoji.repeated(fattura.value(QStringLiteral("CLI_INDIRIZZO")) + 10)},
        {QStringLiteral("GIUSTO"), emoji.repeated(fattura.value(QStringLiteral("CLI_INDIRIZZO")))}};
    for (const auto &[codice, indirizzo] : indirizzi)
        InserisciRiga(db, QStringLiteral("CLIENTI"),
                      {QStringLiteral("CODICE"), QStringLiteral("RAGIONESOCIALE"), QStringLiteral("INDIRIZZO"),
                       QStringLiteral("CODICEFISCALE"), QStringLiteral("IDTIPO_PAGAMENTO")},
                      {codice, QStringLiteral("Cliente ") + codice, indirizzo, QStringLiteral("X"), 1});
    auto editor = Run<TKRVInserimentoFattureVendita>(*m_module, QStringLiteral("actInserimentoFattureVendita"));
    for (const auto &[codice, indirizzo] : indirizzi) {
        m_boxes->Clear();
        NuovoSeOfferto(editor);
        ChooseCustomer(*m_module, editor, codice);
        AddArticle(*m_module, editor, QStringLiteral("ART1"));
        const int fatture = m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt();
        m_boxes->Clear();
        Trigger(editor, QStringLiteral("actSalva"));
        QVERIFY2(BoxErrore(*m_boxes).isEmpty(), qPrintable(BoxErrore(*m_boxes)));
        if (codice == QLatin1String("GIUSTO")) {
            QVERIFY(m_boxes->Messages().isEmpty());
            QCOMPARE(m_module->Database
                         .Scalar(QStringLiteral("SELECT CLI_INDIRIZZO FROM FATT_VEND WHERE IDFATT_VEND = ")
                                 + QString::number(editor->IdRecord()))
                         .toString(),
                     indirizzo);
            continue;
        }
        QVERIFY2(m_boxes->Messages().size() == 1, qPrintable(m_boxes->Messages().value(1).Text));
        KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione",
                        "Il campo \"Indirizzo\" del cliente supera i 50 caratteri che il documento può contenere.",
                        Warning, Ok);
        QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), fatture);
        QVERIFY(editor->Modified());
    }
    // A payment type longer than the document's copy of it.
    InserisciRiga(db, QStringLiteral("TIPI_PAGAMENTO"), {QStringLiteral("TIPO_PAGAMENTO")},
                  {QString(fattura.value(QStringLiteral("TIPO_PAGAMENTO")) + 5, QLatin1Char('p'))});
    m_boxes->Clear();
    NuovoSeOfferto(editor);
    ChooseCustomer(*m_module, editor, QStringLiteral("CLN0000001"));
    AddArticle(*m_module, editor, QStringLiteral("ART1"));
    ChooseWhenShown<TKRVModSelezionaTipoPagamento>(*m_module, editor, QStringLiteral("actModSelezionaTipoPagamento"), 1,
                                                   QString(fattura.value(QStringLiteral("TIPO_PAGAMENTO")) + 5,
                                                           QLatin1Char('p')));
    Trigger(editor, QStringLiteral("actSelezionaTipoPagamento"));
    m_boxes->Clear();
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione",
                    "Il campo \"Tipo di pagamento\" supera i 30 caratteri che il documento può contenere.", Warning,
                    Ok);
}

// A customer's data that reads like markup, or like the "..." of an empty
// label, is shown and copied as it is written.
void TestInputOstileEditori::invoiceCopiesCustomerDataAsWritten()
{
    const QStringList colonne{QStringLiteral("CODICE"),    QStringLiteral("RAGIONESOCIALE"),
                              QStringLiteral("INDIRIZZO"), QStringLiteral("CITTA"),
                              QStringLiteral("CAP"),       QStringLiteral("PROVINCIA"),
                              QStringLiteral("NAZIONE"),   QStringLiteral("CODICEFISCALE"),
                              QStringLiteral("PARTITAIVA")};
    const QVariantList valori{QStringLiteral("PUNTI"), QStringLiteral("..."), QStringLiteral("<b>Via</b> Roma &amp; 1"),
                              QStringLiteral("..."),   QStringLiteral("..."), QStringLiteral(".."),
                              QStringLiteral("<i>"),   QStringLiteral("..."), QStringLiteral("")};
    InserisciRiga(Db(), QStringLiteral("CLIENTI"), colonne + QStringList{QStringLiteral("IDTIPO_PAGAMENTO")},
                  valori + QVariantList{1});
    auto editor = Run<TKRVInserimentoFattureVendita>(*m_module, QStringLiteral("actInserimentoFattureVendita"));
    ChooseCustomer(*m_module, editor, QStringLiteral("PUNTI"));
    AddArticle(*m_module, editor, QStringLiteral("ART1"));
    auto indirizzo = Field<QLabel>(editor, QStringLiteral("lblCliIndirizzo"));
    QCOMPARE(indirizzo->textFormat(), Qt::PlainText);
    QCOMPARE(indirizzo->text(), valori.at(2).toString());
    m_boxes->Clear();
    Trigger(editor, QStringLiteral("actSalva"));
    QVERIFY2(m_boxes->Messages().isEmpty(), qPrintable(m_boxes->Messages().value(0).Text));
    QStringList cli;
    for (const QString &colonna : colonne)
        cli << QStringLiteral("CLI_") + colonna;
    QSqlQuery letta = OpenQuery(Db(), QStringLiteral("SELECT ") + cli.join(QStringLiteral(", "))
                                          + QStringLiteral(" FROM FATT_VEND WHERE IDFATT_VEND = ")
                                          + QString::number(editor->IdRecord()));
    QVERIFY(letta.next());
    for (int i = 0; i < colonne.size(); ++i)
        QCOMPARE(letta.value(i).toString(), valori.at(i).toString());
}

// The refusal names the input by its label, and the characters.
void TestInputOstileEditori::refusalNamesTheFieldAndTheCharacters()
{
    auto editor = Run<TKRVInserimentoTipiPagamento>(*m_module, QStringLiteral("actInserimentoTipiPagamento"));
    ScriviOstile(Field(editor, QStringLiteral("txtTipoPagamento")),
                 QStringLiteral("a") + QChar(0) + QStringLiteral("b") + QChar(0xDC00));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione",
                    "Il campo \"Tipo di pagamento\" contiene caratteri non ammessi: U+0000 (carattere nullo), U+DC00 "
                    "(carattere non valido).",
                    Warning, Ok);
    QVERIFY(editor->NewRecord());
    QVERIFY(editor->Modified());
}

// The delete rule of customers and articles looks up the code the window
// shows: whatever it holds, the rule answers or the window refuses the text;
// the deletion is then declined.
void TestInputOstileEditori::deleteTestsTheCodeAsTyped()
{
    const QString articoli = QStringLiteral("SELECT * FROM ANA_MAGA");
    const QString clienti = QStringLiteral("SELECT * FROM CLIENTI");
    const QStringList prima = m_module->Database.Rows(articoli) + m_module->Database.Rows(clienti);
    auto cliente = Run<TKRVInserimentoBase>(*m_module, QStringLiteral("actInserimentoClienti"));
    auto articolo = Run<TKRVInserimentoBase>(*m_module, QStringLiteral("actInserimentoArticoli"));
    QCOMPARE(articolo->ApriRecord(GetLastGeneratorValue(QStringLiteral("GN_IDANA_MAGA"), Db())), 0);
    for (TKRVInserimentoBase *editor : {cliente, articolo}) {
        QLineEdit *codice = Field(editor, QStringLiteral("txtCodice"));
        for (const QString &testo : TestiOstili()) {
            m_boxes->Clear();
            ScriviOstile(codice, testo);
            m_boxes->Enqueue(TQ3MsgResult::No);
            Trigger(editor, QStringLiteral("actElimina"));
            ++m_provati;
            const QString esito = EsitoEliminazione(*m_boxes, codice->text());
            QVERIFY2(esito.isEmpty(), qPrintable(esito));
        }
    }
    QCOMPARE(m_module->Database.Rows(articoli) + m_module->Database.Rows(clienti), prima);
    qInfo("Elimina di clienti e articoli: %d testi ostili provati", m_provati);
}

// Capitals are those of the database, letter for letter: "straße" is the
// code "STRAßE" already saved, not "STRASSE".
void TestInputOstileEditori::codesDifferingOnlyInCaseAreOneCode()
{
    InserisciRiga(Db(), QStringLiteral("CLIENTI"), {QStringLiteral("CODICE"), QStringLiteral("RAGIONESOCIALE")},
                  {QStringLiteral("STRAßE"), QStringLiteral("Prima")});
    auto editor = Run<TKRVInserimentoBase>(*m_module, QStringLiteral("actInserimentoClienti"));
    ScriviOstile(Field(editor, QStringLiteral("txtCodice")), QStringLiteral("straße"));
    ScriviOstile(Field(editor, QStringLiteral("txtRagioneSociale")), QStringLiteral("Seconda"));
    PreparaCliente(editor);
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione", "Codice già utilizzato!", Warning, Ok);
    m_boxes->Clear();
    ScriviOstile(Field(editor, QStringLiteral("txtCodice")), QStringLiteral("STRASSE"));
    Trigger(editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE FROM CLIENTI WHERE RAGIONESOCIALE = 'Seconda'")),
             QStringList{QStringLiteral("STRASSE")});
}

QTEST_MAIN(TestInputOstileEditori)
#include "tst_inputostile_editori.moc"
