#pragma once

// Driving the sales document windows as a user would: choices in the
// selection dialogs, typing into the line grid, and users with only some rights.
#include "../data/KRVServiceRows.h"
#include "../masters/KRVMastersTestKit.h"
#include "Q3Users.h"
#include "uKRVGrigliaRisultati.h"
#include "uKRVInserimentoDocumentoBase.h"
#include "uKRVMain.h"
#include "uKRVModSelezionaArticolo.h"
#include "uKRVModSelezionaCliente.h"
#include "uKRVModSelezionaServizio.h"

#include <QAbstractItemDelegate>
#include <QApplication>
#include <QCheckBox>
#include <QDate>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTableView>
#include <QTimer>

#include <memory>

namespace KRVTest {

// When the selection dialog of the action opens, picks the row whose column
// holds the text and presses "OK" (an empty text presses "Annulla").
template <typename TDialog>
void ChooseWhenShown(TKRVTestModule &module, QObject *context, const QString &action, int column, const QString &text)
{
    QTimer::singleShot(0, context, [&module, action, column, text] {
        auto dialog = module.Main->FormAs<TDialog>(action);
        if (!dialog || !dialog->isVisible())
            return;
        // The customers' dialog opens on the names beginning with A: the user asks for all.
        if constexpr (requires { dialog->BarraRicercaButtonClick(QString()); })
            dialog->BarraRicercaButtonClick(QStringLiteral("*"));
        int row = text.isEmpty() ? -1 : RowOf(dialog->gridRisultati(), column, text);
        // A dialog that keeps its last rows shows none before its first search.
        if (row < 0 && !text.isEmpty()) {
            Trigger(dialog, QStringLiteral("actCerca"));
            row = RowOf(dialog->gridRisultati(), column, text);
        }
        if (row < 0) {
            Trigger(dialog, QStringLiteral("actAnnulla"));
            return;
        }
        SelectRow(dialog->gridRisultati(), row);
        Trigger(dialog, QStringLiteral("actOK"));
    });
}

// Types into a cell of a grid as the user does, and ends the edit.
inline void EditCell(QTableView *grid, int row, int column, const QString &text)
{
    const QModelIndex cell = grid->model()->index(row, column);
    grid->setCurrentIndex(cell);
    grid->edit(cell);
    QWidget *editor = grid->indexWidget(cell);
    if (!editor)
        editor = grid->viewport()->findChild<QWidget *>(QStringLiteral("memoDescrizione"));
    if (!editor)
        editor = grid->viewport()->findChild<QLineEdit *>();
    QVERIFY2(editor, "no cell editor");
    if (auto memo = qobject_cast<QPlainTextEdit *>(editor)) {
        memo->selectAll();
        QTest::keyClick(memo, Qt::Key_Delete);
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (int i = 0; i < lines.size(); ++i) {
            if (i > 0)
                QTest::keyClick(memo, Qt::Key_Return);
            QTest::keyClicks(memo, lines.at(i));
        }
    } else if (auto line = qobject_cast<QLineEdit *>(editor)) {
        line->selectAll();
        QTest::keyClicks(line, text);
    }
    QAbstractItemDelegate *delegate = grid->itemDelegateForIndex(cell);
    emit delegate->commitData(editor);
    emit delegate->closeEditor(editor);
}

// A user whose one role grants exactly these rights; it becomes the current user.
inline void LoginWithRights(const TQ3TestDatabase &db, const QString &user, const QStringList &rights)
{
    const QString role = QStringLiteral("Ruolo ") + user;
    db.Exec(QStringLiteral("INSERT INTO RUOLI_UTENTE VALUES (0, ") + QuotedStr(role) + QStringLiteral(")"));
    db.Exec(QStringLiteral("INSERT INTO UTENTI_RUOLI (USER_NAME, IDRUOLO_UTENTE) SELECT ") + QuotedStr(user)
            + QStringLiteral(", IDRUOLO_UTENTE FROM RUOLI_UTENTE WHERE RUOLO_UTENTE = ") + QuotedStr(role));
    for (const QString &right : rights)
        db.Exec(
            QStringLiteral("INSERT INTO ABILITAZIONI_RUOLI (IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE) SELECT "
                           "R.IDRUOLO_UTENTE, A.IDABILITAZIONE_UTENTE FROM RUOLI_UTENTE R, ABILITAZIONI_UTENTE A WHERE "
                           "R.RUOLO_UTENTE = ")
            + QuotedStr(role) + QStringLiteral(" AND A.ABILITAZIONE_UTENTE = ") + QuotedStr(right));
    SetQ3CurrentUserName(user);
}

// A customer with all the data an invoice copies; answers its key.
inline int InsertClienteCompleto(const TQ3TestDatabase &db, const QString &codice, const QString &ragioneSociale,
                                 int idTipoPagamento, const QString &codiceFiscale, const QString &partitaIva)
{
    return KRVInsertRow(
        db,
        QStringLiteral(
            "INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE, INDIRIZZO, CITTA, CAP, PROVINCIA, NAZIONE, "
            "CODICEFISCALE, PARTITAIVA, IDTIPO_PAGAMENTO, TELEFONO1, TELEFONO2, TELEFONO3, FAX, EMAIL) VALUES (")
            + QuotedStr(codice) + QStringLiteral(", ") + QuotedStr(ragioneSociale)
            + QStringLiteral(", 'Via Roma 1', 'Modena', '41121', 'MO', 'Italia', ") + QuotedStr(codiceFiscale)
            + QStringLiteral(", ") + QuotedStr(partitaIva) + QStringLiteral(", ") + QString::number(idTipoPagamento)
            + QStringLiteral(", '059 111', '059 222', '', '059 333', 'info@esempio.it')"),
        QStringLiteral("GN_IDCLIENTE"));
}

// What both sales document editors' tests start from: customer CLN0000001 with
// its tax code, VAT number and payment type 2, customer CLN0000002 with neither
// code and payment type 3, article ART1 and service SRV1; answers the first
// customer's key.
inline int InsertAnagraficheDocumenti(const TQ3TestDatabase &db)
{
    const int cliente = InsertClienteCompleto(db, QStringLiteral("CLN0000001"), QStringLiteral("Bianchi S.p.A."), 2,
                                              QStringLiteral("BNCMRA80A01F257X"), QStringLiteral("01234567890"));
    InsertClienteCompleto(db, QStringLiteral("CLN0000002"), QStringLiteral("Verdi Mario"), 3, QString(), QString());
    KRVInsertArticolo(db, QStringLiteral("ART1"));
    KRVInsertServizio(db, QStringLiteral("SRV1"));
    return cliente;
}

// The customer, article or service of that code chosen in a document editor.
inline void ChooseCustomer(TKRVTestModule &module, QWidget *editor, const QString &codice)
{
    ChooseWhenShown<TKRVModSelezionaCliente>(module, editor, QStringLiteral("actModSelezionaCliente"), 1, codice);
    Trigger(editor, QStringLiteral("actSelezionaCliente"));
}

inline void AddArticle(TKRVTestModule &module, QWidget *editor, const QString &codice)
{
    ChooseWhenShown<TKRVModSelezionaArticolo>(module, editor, QStringLiteral("actModSelezionaArticolo"), 1, codice);
    Trigger(editor, QStringLiteral("actAggiungiArticolo"));
}

inline void AddService(TKRVTestModule &module, QWidget *editor, const QString &codice)
{
    ChooseWhenShown<TKRVModSelezionaServizio>(module, editor, QStringLiteral("actModSelezionaServizio"), 1, codice);
    Trigger(editor, QStringLiteral("actAggiungiServizio"));
}

// What a sales document editor's test holds: a fresh module with the
// starting rows, the message responder, and the editor once its action opened it.
template <typename TEditor>
class TKRVDocumentoTest
{
protected:
    explicit TKRVDocumentoTest(QString azione) : m_azione(std::move(azione)) {}

    void Prepara()
    {
        m_module = std::make_unique<TKRVTestModule>();
        m_responder = std::make_unique<TQ3RecordingResponder>();
        m_cliente = InsertAnagraficheDocumenti(Db());
        m_editor = nullptr;
    }
    void Chiudi()
    {
        m_responder.reset();
        m_module.reset();
        SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    }
    TEditor *Editor()
    {
        m_editor = Run<TEditor>(*m_module, m_azione);
        return m_editor;
    }
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    QLabel *Label(const char *name) const { return Field<QLabel>(m_editor, QString::fromLatin1(name)); }
    // A new document with customer 1 and an article, saved; answers its key.
    int SaveReady()
    {
        if (!m_editor)
            Editor();
        ChooseCustomer(*m_module, m_editor, QStringLiteral("CLN0000001"));
        AddArticle(*m_module, m_editor, QStringLiteral("ART1"));
        Trigger(m_editor, QStringLiteral("actSalva"));
        return m_editor->IdRecord();
    }

    // Saves a new document while another workstation's document (number 900
    // of this year) takes the key the generator would have given it next;
    // the other workstation then adds a line to its own, and this document is
    // changed, saved again and deleted. Every write must hit this document's
    // own header and lines, and the other workstation's stay as they were.
    void SalvaAccantoAdAltraPostazione(const QString &tabella, const QString &righe, const QString &chiave)
    {
        const int atteso = GetLastGeneratorValue(QStringLiteral("GN_") + chiave, Db().Db()) + 1;
        Db().InsertOfAnotherWorkstationAtNextInsert(tabella,
                                                    KRVInsertDocumentoSQL(tabella, 900, QDate::currentDate().year()));
        const QString testate = QStringLiteral("SELECT %1, NUMERO, PAGATO FROM %2 ORDER BY %1").arg(chiave, tabella);
        const QString righeSalvate = QStringLiteral("SELECT %1, TIPO_RIGA FROM %2 ORDER BY %1").arg(chiave, righe);
        const QString altra = QStringLiteral("%1|900|False").arg(atteso);
        Editor();
        const int numero = Field<QSpinBox>(m_editor, QStringLiteral("txtNumero"))->value();

        QCOMPARE(SaveReady(), atteso + 1);
        QVERIFY(m_responder->Messages().isEmpty());
        QCOMPARE(Db().Rows(testate), (QStringList{altra, QStringLiteral("%1|%2|False").arg(atteso + 1).arg(numero)}));
        QCOMPARE(Db().Rows(righeSalvate), QStringList{QStringLiteral("%1|Articolo").arg(atteso + 1)});

        KRVInsertRiga(Db(), righe, atteso, QStringLiteral("Testo"));
        Click(Field<QCheckBox>(m_editor, QStringLiteral("chkPagato")));
        Trigger(m_editor, QStringLiteral("actSalva"));
        QVERIFY(m_responder->Messages().isEmpty());
        QCOMPARE(Db().Rows(testate), (QStringList{altra, QStringLiteral("%1|%2|True").arg(atteso + 1).arg(numero)}));
        QCOMPARE(Db().Rows(righeSalvate),
                 (QStringList{QStringLiteral("%1|Testo").arg(atteso), QStringLiteral("%1|Articolo").arg(atteso + 1)}));

        m_responder->Enqueue(TQ3MsgResult::Yes);
        Trigger(m_editor, QStringLiteral("actElimina"));
        QCOMPARE(m_responder->Messages().size(), 1);
        QVERIFY(m_editor->NewRecord());
        QCOMPARE(Db().Rows(testate), QStringList{altra});
        QCOMPARE(Db().Rows(righeSalvate), QStringList{QStringLiteral("%1|Testo").arg(atteso)});
    }

    QString m_azione;
    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_responder;
    TEditor *m_editor = nullptr;
    int m_cliente = 0;
};

// What a sales document search list's test holds: a fresh module, the
// message responder, the current year and the list once opened.
template <typename TLista>
class TKRVElencoDocumentiTest
{
protected:
    void Prepara()
    {
        m_module = std::make_unique<TKRVTestModule>();
        m_responder = std::make_unique<TQ3RecordingResponder>();
        m_anno = QDate::currentDate().year();
    }
    void Chiudi()
    {
        m_responder.reset();
        m_module.reset();
        SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    }
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    QSpinBox *Anno() const { return Field<QSpinBox>(m_lista, QStringLiteral("txtAnno")); }

    // "Nuovo" in the list over an editor holding unsaved changes asks first:
    // "No" keeps the document as it is, "Si" starts a new one.
    void NuovoSopraUnDocumentoModificato(const QString &azioneEditor)
    {
        Trigger(m_lista, QStringLiteral("actNuovo"));
        auto editor = m_module->Main->template FormAs<TKRVInserimentoDocumentoBase>(azioneEditor);
        QVERIFY(editor);
        auto note = Field<QPlainTextEdit>(editor, QStringLiteral("txtNote"));
        QTest::keyClicks(note, QStringLiteral("Appunti da non perdere"));
        QVERIFY(editor->Modified());
        QVERIFY(m_responder->Messages().isEmpty());

        m_responder->Enqueue(TQ3MsgResult::No);
        Trigger(m_lista, QStringLiteral("actNuovo"));
        QCOMPARE(m_responder->Messages().size(), 1);
        KRV_COMPARE_BOX(m_responder->Messages().at(0), "Conferma",
                        "Ci sono delle modifiche non salvate.\n\rContinuare comunque?", Question, YesNo);
        QCOMPARE(note->toPlainText(), QStringLiteral("Appunti da non perdere"));
        QVERIFY(editor->Modified());

        m_responder->Enqueue(TQ3MsgResult::Yes);
        Trigger(m_lista, QStringLiteral("actNuovo"));
        QCOMPARE(m_responder->Messages().size(), 2);
        QVERIFY(note->toPlainText().isEmpty());
        QVERIFY(!editor->Modified());
        QVERIFY(editor->NewRecord());
    }

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_responder;
    TLista *m_lista = nullptr;
    int m_anno = 0;
};

// Runs the command and closes every modal window it opens, as the user's
// "Annulla" would; answers the windows' titles in order.
inline QStringList ModalTitlesWhile(const std::function<void()> &command)
{
    QStringList titles;
    QTimer timer;
    timer.setInterval(10);
    QObject::connect(&timer, &QTimer::timeout, [&titles] {
        if (QWidget *modal = QApplication::activeModalWidget()) {
            titles << modal->windowTitle();
            if (auto dialog = qobject_cast<QDialog *>(modal))
                dialog->reject();
            else
                modal->close();
        }
    });
    timer.start();
    command();
    return titles;
}

} // namespace KRVTest
