// One saved invoice, two workstations: the editor of this one has it open
// while another one changes or deletes it through an attachment of its own.
// Whatever the order, an invoice is one workstation's version whole, header
// and lines, or the save fails with the editor's failure box.
#include "KRVAltraPostazione.h"
#include "KRVFattureTestKit.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "uKRVGrigliaRighe.h"
#include "uKRVInserimentoFattureVendita.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QSemaphore>
#include <QThread>

#include <cmath>
#include <functional>

using namespace KRVTest;

namespace {

const QString NotaAltra = QStringLiteral("Modifica dell'altra postazione");
const QString NotaPropria = QStringLiteral("Modifica di questa postazione");
const QString MsgErrore = QStringLiteral("Si è verificato un errore durante il salvataggio dei dati!");

// What the other workstation's save writes, as the editor would: the header
// with totals that match its two non-taxable lines, and those lines only.
void ScriviVersioneAltra(const QSqlDatabase &db, int id)
{
    const QString chiave = QString::number(id);
    ExecSQL(db, QStringLiteral("UPDATE FATT_VEND SET NOTE = ") + QuotedStr(NotaAltra)
                    + QStringLiteral(", PAGATO = 'True', TOTALE_IMPONIBILE = 0, TOTALE_IMPOSTA = 0, "
                                     "TOTALE_DOCUMENTO = 120 WHERE IDFATT_VEND = ")
                    + chiave);
    ExecSQL(db, QStringLiteral("DELETE FROM FATT_VEND_DETT WHERE IDFATT_VEND=") + chiave);
    for (const auto &[descrizione, importo] : {std::pair{"Riga altra 1", "50"}, std::pair{"Riga altra 2", "70"}})
        ExecSQL(db, QStringLiteral("INSERT INTO FATT_VEND_DETT (IDFATT_VEND, TIPO_RIGA, DESCRIZIONE, PREZZO, QUANTITA, "
                                   "IMPORTO) VALUES (")
                        + chiave + QStringLiteral(", 'Non imponibile', ") + QuotedStr(QString::fromLatin1(descrizione))
                        + QStringLiteral(", ") + QString::fromLatin1(importo) + QStringLiteral(", 1, ")
                        + QString::fromLatin1(importo) + QLatin1Char(')'));
}

const QStringList TestataAltra{NotaAltra + QStringLiteral("|True|False")};
const QStringList RigheAltra{QStringLiteral("Non imponibile|Riga altra 1"),
                             QStringLiteral("Non imponibile|Riga altra 2")};

// The other workstation writes its version and keeps its transaction open
// until this workstation's update of the header is seen waiting on the row
// (or a while has passed), then commits.
class TPostazioneInSospeso : public TKRVAltraPostazione
{
public:
    using TKRVAltraPostazione::TKRVAltraPostazione;

    bool AttesaVista = false;

protected:
    void Scrivi(const QSqlDatabase &db, int id) override { ScriviVersioneAltra(db, id); }

    void Attendi(const QSqlDatabase &db) override
    {
        TQ3Connection sorveglianza;
        sorveglianza.SetConnectionString(Connessione());
        sorveglianza.Open();
        const QString propria =
            QueryScalar(db, QStringLiteral("SELECT CURRENT_CONNECTION FROM RDB$DATABASE")).toString();
        QElapsedTimer tempo;
        tempo.start();
        while (!AttesaVista && tempo.elapsed() < 20000) {
            AttesaVista =
                QueryScalar(sorveglianza.Database(),
                            QStringLiteral("SELECT COUNT(*) FROM MON$STATEMENTS WHERE MON$STATE = 1 AND "
                                           "MON$ATTACHMENT_ID NOT IN (CURRENT_CONNECTION, ")
                                + propria + QStringLiteral(") AND MON$SQL_TEXT STARTING WITH 'UPDATE FATT_VEND SET'"))
                    .toInt()
                > 0;
            if (!AttesaVista)
                msleep(20);
        }
    }
};

// What all the cases tried, for the run's summary.
struct TConteggi
{
    int Salvataggi = 0;
    int Conflitti = 0;
    int RighePerse = 0;
};

} // namespace

class TestFatturaDuePostazioni : public QObject, public TKRVDocumentoTest<TKRVInserimentoFattureVendita>
{
    Q_OBJECT

public:
    TestFatturaDuePostazioni() : TKRVDocumentoTest(QStringLiteral("actInserimentoFattureVendita")) {}

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init() { Prepara(); }
    void cleanup() { Chiudi(); }
    void cleanupTestCase()
    {
        qInfo("saves tried: %d, conflicts seen: %d, lines lost: %d", m_conteggi.Salvataggi, m_conteggi.Conflitti,
              m_conteggi.RighePerse);
    }

    void savedAfterTheOtherWorkstation_ownVersionWinsWhole();
    void otherWorkstationStillWriting_saveFailsThenSucceeds();
    void invoiceDeletedElsewhere_everySaveFailsWithoutOrphanLines();

private:
    // A saved invoice, opened again and changed by this user: a text line
    // added, "Notificata" ticked, a note; answers its key. Nothing is asked.
    int ApertaEModificata();
    // A failed save counts as saved: "Salva" waits for the next change, which
    // the user makes by typing the note again.
    void CambiaNota();
    // The writes of another workstation, through an attachment of its own,
    // in one transaction committed at once.
    void AltraPostazione(const std::function<void(const QSqlDatabase &)> &scrivi) const;
    // Triggers the save; answers whether it showed the failure box.
    bool Salva();
    QStringList Testata(int id) const;
    QStringList Righe(int id) const;
    // The lines as this user's grid holds them.
    QStringList RigheProprie() const;
    // Checks that the invoice holds exactly those lines, counting the missing ones.
    void VerificaRighe(int id, const QStringList &attese);
    // The header's totals are the sums of its stored lines.
    void VerificaTotali(int id) const;
    int Orfane() const;

    TConteggi m_conteggi;
};

int TestFatturaDuePostazioni::ApertaEModificata()
{
    const int id = SaveReady();
    m_editor->ApriRecord(id);
    Trigger(m_editor, QStringLiteral("actAggiungiTesto"));
    EditCell(m_editor->gridRigheFattura(), 1, 3, QStringLiteral("Riga di questa postazione"));
    Click(Field<QCheckBox>(m_editor, QStringLiteral("chkNotificata")));
    Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote"))->setPlainText(NotaPropria);
    return id;
}

void TestFatturaDuePostazioni::CambiaNota()
{
    QVERIFY(!Action(m_editor, QStringLiteral("actSalva"))->isEnabled());
    Field<QPlainTextEdit>(m_editor, QStringLiteral("txtNote"))->setPlainText(NotaPropria);
    QVERIFY(Action(m_editor, QStringLiteral("actSalva"))->isEnabled());
}

void TestFatturaDuePostazioni::AltraPostazione(const std::function<void(const QSqlDatabase &)> &scrivi) const
{
    TQ3Connection altra;
    altra.SetConnectionString(Db().ConnectionString());
    altra.Open();
    TQ3Transaction transazione(altra.Database());
    scrivi(altra.Database());
    transazione.Commit();
}

bool TestFatturaDuePostazioni::Salva()
{
    const qsizetype prima = m_responder->Messages().size();
    ++m_conteggi.Salvataggi;
    Trigger(m_editor, QStringLiteral("actSalva"));
    bool fallito = false;
    for (qsizetype i = prima; i < m_responder->Messages().size(); ++i)
        fallito = fallito || m_responder->Messages().at(i).Text == MsgErrore;
    if (fallito)
        ++m_conteggi.Conflitti;
    return fallito;
}

QStringList TestFatturaDuePostazioni::Testata(int id) const
{
    return Db().Rows(QStringLiteral("SELECT NOTE, PAGATO, NOTIFICATO FROM FATT_VEND WHERE IDFATT_VEND = ")
                     + QString::number(id));
}

QStringList TestFatturaDuePostazioni::Righe(int id) const
{
    return Db().Rows(
        QStringLiteral("SELECT TIPO_RIGA, COALESCE(DESCRIZIONE, '') FROM FATT_VEND_DETT WHERE IDFATT_VEND = ")
        + QString::number(id) + QStringLiteral(" ORDER BY IDFATT_VEND_DETT"));
}

QStringList TestFatturaDuePostazioni::RigheProprie() const
{
    const TKRVRigheDocumento *righe = m_editor->Righe();
    QStringList testi;
    for (int r = 0; r < righe->Righe(); ++r)
        testi << righe->Tipo(r) + QLatin1Char('|') + righe->Cella(r, righe->Layout().Descrizione).trimmed();
    return testi;
}

void TestFatturaDuePostazioni::VerificaRighe(int id, const QStringList &attese)
{
    const QStringList salvate = Righe(id);
    for (const QString &riga : attese)
        m_conteggi.RighePerse += salvate.contains(riga) ? 0 : 1;
    QCOMPARE(salvate, attese);
}

void TestFatturaDuePostazioni::VerificaTotali(int id) const
{
    const QString chiave = QString::number(id);
    const QStringList totali = Db().Rows(
        QStringLiteral("SELECT TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM FATT_VEND WHERE IDFATT_VEND = ")
        + chiave);
    QCOMPARE(totali.size(), 1);
    const QStringList t = totali.first().split(QLatin1Char('|'));
    const auto somma = [&](const QString &espressione, const QString &tipi) {
        return Db()
            .Scalar(QStringLiteral("SELECT COALESCE(SUM(") + espressione
                    + QStringLiteral("), 0) FROM FATT_VEND_DETT WHERE IDFATT_VEND = ") + chiave
                    + QStringLiteral(" AND TIPO_RIGA IN (") + tipi + QLatin1Char(')'))
            .toDouble();
    };
    const QString imponibili = QStringLiteral("'Articolo', 'Servizio'");
    const double imponibile = somma(QStringLiteral("IMPORTO"), imponibili);
    const double imposta = somma(QStringLiteral("IMPORTO * IVA_ALIQUOTA / 100"), imponibili);
    const double nonImponibile = somma(QStringLiteral("IMPORTO"), QStringLiteral("'Non imponibile'"));
    QVERIFY(std::abs(t.at(0).toDouble() - imponibile) < 0.005);
    QVERIFY(std::abs(t.at(1).toDouble() - imposta) < 0.01);
    QVERIFY(std::abs(t.at(2).toDouble() - (t.at(0).toDouble() + t.at(1).toDouble() + nonImponibile)) < 0.005);
}

int TestFatturaDuePostazioni::Orfane() const
{
    return Db()
        .Scalar(QStringLiteral(
            "SELECT COUNT(*) FROM FATT_VEND_DETT WHERE IDFATT_VEND NOT IN (SELECT IDFATT_VEND FROM FATT_VEND)"))
        .toInt();
}

// The other workstation's save came first and is committed: this user's save
// simply rewrites the invoice, header and lines, with nothing of the other's left.
void TestFatturaDuePostazioni::savedAfterTheOtherWorkstation_ownVersionWinsWhole()
{
    const int id = ApertaEModificata();
    QVERIFY(m_responder->Messages().isEmpty());
    QCOMPARE(RigheProprie().size(), 2);
    AltraPostazione([id](const QSqlDatabase &altra) { ScriviVersioneAltra(altra, id); });
    QCOMPARE(Testata(id), TestataAltra);
    QCOMPARE(Righe(id), RigheAltra);

    QVERIFY(!Salva());
    QVERIFY(m_responder->Messages().isEmpty());
    QCOMPARE(Testata(id), QStringList{NotaPropria + QStringLiteral("|False|True")});
    VerificaRighe(id, RigheProprie());
    VerificaTotali(id);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 1);
    QVERIFY(!m_editor->Modified());
}

// The other workstation has written its version but not committed it when this
// user saves: the update of the header waits on the row, and the other's
// commit makes it an update conflict. The save fails as any failed save does,
// the other's version stays whole, and after the next change saving again
// succeeds.
void TestFatturaDuePostazioni::otherWorkstationStillWriting_saveFailsThenSucceeds()
{
    const int id = ApertaEModificata();
    QVERIFY(m_responder->Messages().isEmpty());
    QCOMPARE(RigheProprie().size(), 2);
    TPostazioneInSospeso altra(Db().ConnectionString(), id);
    altra.start();
    QVERIFY(altra.Scritta.tryAcquire(1, 30000));
    QVERIFY2(altra.Errore.isEmpty(), qPrintable(altra.Errore));

    QVERIFY(Salva());
    QVERIFY(altra.wait(30000));
    QVERIFY2(altra.Errore.isEmpty(), qPrintable(altra.Errore));
    qInfo("this workstation's update seen waiting on the other's row: %s", altra.AttesaVista ? "yes" : "no");
    QVERIFY(altra.AttesaVista);
    QCOMPARE(m_responder->Messages().size(), 1);
    KRV_COMPARE_BOX(m_responder->Messages().at(0), "Errore",
                    "Si è verificato un errore durante il salvataggio dei dati!", None, Ok);
    QCOMPARE(Testata(id), TestataAltra);
    VerificaRighe(id, RigheAltra);
    VerificaTotali(id);
    QVERIFY(!m_editor->Modified());
    QVERIFY(!m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), id);

    CambiaNota();
    QVERIFY(!Salva());
    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(Testata(id), QStringList{NotaPropria + QStringLiteral("|False|True")});
    VerificaRighe(id, RigheProprie());
    VerificaTotali(id);
    QCOMPARE(Orfane(), 0);
}

// The invoice this user has open is deleted elsewhere, header and lines: the
// update of the header finds no row, so every save (after a change, as a
// failed save counts as saved) fails with the failure box and writes nothing; the invoice is not created again and no line is left
// without its header.
void TestFatturaDuePostazioni::invoiceDeletedElsewhere_everySaveFailsWithoutOrphanLines()
{
    const int id = ApertaEModificata();
    QVERIFY(m_responder->Messages().isEmpty());
    QCOMPARE(RigheProprie().size(), 2);
    AltraPostazione([id](const QSqlDatabase &altra) {
        ExecSQL(altra, QStringLiteral("DELETE FROM FATT_VEND_DETT WHERE IDFATT_VEND=") + QString::number(id));
        ExecSQL(altra, QStringLiteral("DELETE FROM FATT_VEND WHERE IDFATT_VEND=") + QString::number(id));
    });

    for (int tentativo = 1; tentativo <= 2; ++tentativo) {
        if (tentativo > 1)
            CambiaNota();
        QVERIFY(Salva());
        QCOMPARE(m_responder->Messages().size(), tentativo);
        KRV_COMPARE_BOX(m_responder->Messages().last(), "Errore",
                        "Si è verificato un errore durante il salvataggio dei dati!", None, Ok);
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 0);
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT")).toInt(), 0);
        QCOMPARE(Orfane(), 0);
        QVERIFY(!m_editor->Modified());
        QVERIFY(!m_editor->NewRecord());
        QCOMPARE(m_editor->IdRecord(), id);
    }
}

QTEST_MAIN(TestFatturaDuePostazioni)
#include "tst_fatturaduepostazioni.moc"
