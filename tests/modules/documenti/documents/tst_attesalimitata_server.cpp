// Two workstations on one server: while the other keeps an uncommitted change
// of an invoice, this workstation's save of the same invoice waits no longer
// than the lock-wait limit, fails with the editor's failure box and writes
// nothing, the editor keeping what the user typed; once the other commits,
// the next save goes through. The firm's data and the options wait no longer
// either.
#include "KRVAltraPostazione.h"
#include "KRVFattureTestKit.h"
#include "KRVOptions.h"
#include "Q3Azienda.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "uKRVInserimentoFattureVendita.h"

#include <QElapsedTimer>
#include <QPlainTextEdit>

#include <memory>

using namespace KRVTest;

namespace {

const QString NotaAltra = QStringLiteral("Modifica dell'altra postazione");
const QString NotaPropria = QStringLiteral("Modifica di questa postazione");
// However loaded the machine, a wait that stops at the limit ends well before this.
constexpr int MargineMs = 20000;

// The other workstation changes the invoice's header and keeps its
// transaction open until told to commit (or for a minute at most, so that a
// save that waits without limit ends too).
class TAltraPostazione : public TKRVAltraPostazione
{
public:
    using TKRVAltraPostazione::TKRVAltraPostazione;

    QSemaphore Conferma;

protected:
    void Scrivi(const QSqlDatabase &db, int id) override
    {
        ExecSQL(db, QStringLiteral("UPDATE FATT_VEND SET NOTE = ") + QuotedStr(NotaAltra)
                        + QStringLiteral(" WHERE IDFATT_VEND = ") + QString::number(id));
    }
    void Attendi(const QSqlDatabase &) override { Conferma.tryAcquire(1, 60000); }
};

// The other workstation runs its statements and keeps them uncommitted until
// told to commit.
class TAltraPostazioneSQL : public TKRVAltraPostazione
{
public:
    TAltraPostazioneSQL(const QString &connessione, QStringList istruzioni)
        : TKRVAltraPostazione(connessione, 0), m_istruzioni(std::move(istruzioni))
    {}

    QSemaphore Conferma;

protected:
    void Scrivi(const QSqlDatabase &db, int) override
    {
        for (const QString &istruzione : std::as_const(m_istruzioni))
            ExecSQL(db, istruzione);
    }
    void Attendi(const QSqlDatabase &) override { Conferma.tryAcquire(1, 60000); }

private:
    QStringList m_istruzioni;
};

} // namespace

class TestAttesaLimitataServer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init();
    void cleanup();
    void saveMeetingAnUncommittedChangeFailsAtTheLimit();
    void guardedStatementFailsWithTheLimitsMessage();
    void firmDataAndOptionsWaitAtMostTheLimit();

private:
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    QString Nota(int id) const
    {
        return Db()
            .Scalar(QStringLiteral("SELECT NOTE FROM FATT_VEND WHERE IDFATT_VEND = ") + QString::number(id))
            .toString();
    }

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_responder;
};

void TestAttesaLimitataServer::init()
{
    Q3_REQUIRE_TEST_SERVER();
    m_module = std::make_unique<TKRVTestModule>(TQ3TestDatabase::Where::Server);
    m_responder = std::make_unique<TQ3RecordingResponder>();
    InsertAnagraficheDocumenti(Db());
}

void TestAttesaLimitataServer::cleanup()
{
    m_responder.reset();
    m_module.reset();
}

void TestAttesaLimitataServer::saveMeetingAnUncommittedChangeFailsAtTheLimit()
{
    auto editor = Run<TKRVInserimentoFattureVendita>(*m_module, QStringLiteral("actInserimentoFattureVendita"));
    QVERIFY(editor);
    ChooseCustomer(*m_module, editor, QStringLiteral("CLN0000001"));
    AddArticle(*m_module, editor, QStringLiteral("ART1"));
    Trigger(editor, QStringLiteral("actSalva"));
    QVERIFY(m_responder->Messages().isEmpty());
    const int id = editor->IdRecord();
    QVERIFY(id > 0);
    auto note = Field<QPlainTextEdit>(editor, QStringLiteral("txtNote"));
    note->setPlainText(NotaPropria);
    QVERIFY(editor->Modified());

    TAltraPostazione altra(Db().ConnectionString(), id);
    altra.start();
    QVERIFY(altra.Scritta.tryAcquire(1, 30000));
    QVERIFY2(altra.Errore.isEmpty(), qPrintable(altra.Errore));

    QElapsedTimer tempo;
    tempo.start();
    Trigger(editor, QStringLiteral("actSalva"));
    const qint64 attesa = tempo.elapsed();
    altra.Conferma.release();
    QVERIFY(altra.wait(90000));
    qInfo("save against the other workstation's uncommitted change ended after %lld ms (limit %d ms)", attesa,
          Q3AttesaMassimaMs);
    QVERIFY2(attesa < Q3AttesaMassimaMs + MargineMs, qPrintable(QString::number(attesa)));
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Errore",
                    "Si è verificato un errore durante il salvataggio dei dati!", None, Ok);
    // Nothing of this save was written, and what the user typed is still in the window.
    QVERIFY2(altra.Errore.isEmpty(), qPrintable(altra.Errore));
    QCOMPARE(Nota(id), NotaAltra);
    QCOMPARE(note->toPlainText(), NotaPropria);
    QCOMPARE(editor->Righe()->Righe(), 1);
    QCOMPARE(editor->IdRecord(), id);

    // The other has committed: the next save (after a change, as a failed
    // save counts as saved) writes this workstation's version.
    note->setPlainText(NotaPropria + QStringLiteral(" (di nuovo)"));
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(Nota(id), NotaPropria + QStringLiteral(" (di nuovo)"));
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT WHERE IDFATT_VEND = ")
                         + QString::number(id))
                 .toInt(),
             1);
    QVERIFY(!editor->Modified());
}

// The failure a cancelled statement raises says why, in the user's words,
// before the database's own text.
void TestAttesaLimitataServer::guardedStatementFailsWithTheLimitsMessage()
{
    const int id = KRVInsertRow(Db(), KRVInsertDocumentoSQL(QStringLiteral("FATT_VEND"), 1, 2025),
                                QStringLiteral("GN_IDFATT_VEND"));
    TAltraPostazione altra(Db().ConnectionString(), id);
    altra.start();
    QVERIFY(altra.Scritta.tryAcquire(1, 30000));
    QVERIFY2(altra.Errore.isEmpty(), qPrintable(altra.Errore));
    QString errore;
    QElapsedTimer tempo;
    tempo.start();
    try {
        const QSqlDatabase db = m_module->Main->ModADOConn()->Database();
        TQ3Transaction transazione(db);
        ExecSQL(db, QStringLiteral("UPDATE FATT_VEND SET NOTE = 'questa' WHERE IDFATT_VEND = ") + QString::number(id));
        transazione.Commit();
    } catch (const std::exception &e) {
        errore = ExceptionMessage(e);
    }
    const qint64 attesa = tempo.elapsed();
    altra.Conferma.release();
    QVERIFY(altra.wait(90000));
    QVERIFY2(attesa < Q3AttesaMassimaMs + MargineMs, qPrintable(QString::number(attesa)));
    QVERIFY2(errore.startsWith(QString::fromUtf8(Q3MsgAttesaScaduta).arg(Q3AttesaMassimaMs / 1000) + QLatin1Char('\n')),
             qPrintable(errore));
    QCOMPARE(Nota(id), NotaAltra);
}

// The firm's data fail with the limit's message, an option is reported not
// written, each after the limit; what the other workstation wrote stays.
void TestAttesaLimitataServer::firmDataAndOptionsWaitAtMostTheLimit()
{
    const QString opzione = QString::fromLatin1(KRVOpzioneNotaIvaEsente);
    Db().Exec(QStringLiteral("UPDATE OR INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES (%1, 'Prima') MATCHING (OPZIONE)")
                  .arg(QuotedStr(opzione)));
    TAltraPostazioneSQL altra(Db().ConnectionString(),
                              {QStringLiteral("UPDATE AZIENDA SET RAGIONESOCIALE = 'Altra postazione'"),
                               QStringLiteral("UPDATE OPZIONI SET VALORE = 'Altra postazione' WHERE OPZIONE = ")
                                   + QuotedStr(opzione)});
    altra.start();
    QVERIFY(altra.Scritta.tryAcquire(1, 30000));
    QVERIFY2(altra.Errore.isEmpty(), qPrintable(altra.Errore));
    const QSqlDatabase db = m_module->Main->ModADOConn()->Database();
    TQ3Azienda azienda = Q3LeggiAzienda(db);
    azienda.RagioneSociale = QStringLiteral("Questa postazione");
    QString errore;
    QElapsedTimer tempo;
    tempo.start();
    try {
        Q3ScriviAzienda(db, azienda);
    } catch (const std::exception &e) {
        errore = ExceptionMessage(e);
    }
    const qint64 attesaAzienda = tempo.restart();
    const bool scritta = SetOptionValue(db, opzione, QStringLiteral("Questa postazione"));
    const qint64 attesaOpzione = tempo.elapsed();
    altra.Conferma.release();
    QVERIFY(altra.wait(90000));
    QVERIFY2(altra.Errore.isEmpty(), qPrintable(altra.Errore));
    QVERIFY2(attesaAzienda < Q3AttesaMassimaMs + MargineMs, qPrintable(QString::number(attesaAzienda)));
    QVERIFY2(errore.startsWith(QString::fromUtf8(Q3MsgAttesaScaduta).arg(Q3AttesaMassimaMs / 1000) + QLatin1Char('\n')),
             qPrintable(errore));
    QVERIFY(!scritta);
    QVERIFY2(attesaOpzione < Q3AttesaMassimaMs + MargineMs, qPrintable(QString::number(attesaOpzione)));
    QCOMPARE(Q3LeggiAzienda(db).RagioneSociale, QStringLiteral("Altra postazione"));
    QVariant valore;
    QVERIFY(GetOptionValue(db, opzione, valore));
    QCOMPARE(valore.toString(), QStringLiteral("Altra postazione"));
}

QTEST_MAIN(TestAttesaLimitataServer)
#include "tst_attesalimitata_server.moc"
