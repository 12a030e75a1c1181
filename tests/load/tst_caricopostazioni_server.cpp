// Twenty workstations on one database of the Firebird server, each a process
// with its own connection (q3_postazione), create, open, change, search and
// delete invoices and credit notes of the same year at random; once they have
// stopped by themselves the database is checked against what they recorded:
// no number twice, no line without its header, no line lost, totals as the
// lines give them, no workstation fallen, no request waiting beyond the bound.
//
// The suite runs them for a short time; scripts/prova-di-carico.sh runs them
// for two minutes (Q3_CARICO_SECONDI, Q3_CARICO_POSTAZIONI, Q3_CARICO_SEME,
// Q3_CARICO_RIEPILOGO, a file the figures are written to, and
// Q3_CARICO_CARTELLA, a folder that keeps each workstation's records).
#include "KRVGeneraAzienda.h"
#include "KRVOptions.h"
#include "KRVVerificaCarico.h"
#include "Q3AttesaLimitata.h"
#include "Q3TestDatabase.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <vector>

namespace {

constexpr int PostazioniPredefinite = 20;
constexpr int SecondiPredefiniti = 15;
// The longest a request of any kind may take, waiting on another
// workstation's change included. Each statement of a save waits at most
// Q3AttesaMassimaMs before it is cancelled; a save can meet it twice (on its
// header, then on a line of a document another workstation has just taken),
// and twenty processes on two cores add their scheduling.
constexpr qint64 AttesaMassimaMs = 2 * Q3AttesaMassimaMs + 2000;
// Beyond their time, how long the workstations have to end by themselves.
constexpr int MargineArrestoSecondi = 45;
// The year of the firm's last invoices, on which the workstations work.
constexpr int Anno = 2026;

int Ambiente(const char *nome, int predefinito)
{
    bool letto = false;
    const int valore = qEnvironmentVariableIntValue(nome, &letto);
    return letto && valore > 0 ? valore : predefinito;
}

// The firm: customers, articles, services, payment types and two years of
// documents from the generator, and the warehouse's accompanying invoices of
// the year sharing the invoices' sequence, some numbers beyond the last
// invoice's.
void PreparaAzienda(TQ3TestDatabase &database)
{
    KRVPreparaDatabase(database.Target());
    TKRVOpzioniGenerazione opzioni;
    opzioni.Dimensione = KRVDimensioneAzienda(QStringLiteral("prova"));
    opzioni.AnnoFinale = Anno;
    KRVGeneraAzienda(database.Target(), opzioni);
    database.LoadFixture(QStringLiteral("magazzino.sql"));
    const int ultimo =
        database.Scalar(QStringLiteral("SELECT MAX(NUMERO) FROM FATT_VEND WHERE ANNO = %1").arg(Anno)).toInt();
    for (int numero : {ultimo + 1, ultimo + 2, ultimo + 4})
        database.Exec(
            QStringLiteral("INSERT INTO FATT_ACC (IDFATT_ACC, NUMERO, DATA, ANNO) VALUES (0, %1, '%2-06-30', %2)")
                .arg(numero)
                .arg(Anno));
    QVERIFY(SetOptionValue(database.Db(), QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), QStringLiteral("True")));
}

QString Testo(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()) : QString();
}

struct TPostazioneAvviata
{
    std::unique_ptr<QProcess> Processo;
    QString File;
};

} // namespace

class TestCaricoPostazioniServer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy)); }
    void init();
    void postazioniSenzaNumeriDoppiNeRighePerse();
};

void TestCaricoPostazioniServer::init()
{
    Q3_REQUIRE_TEST_SERVER();
}

void TestCaricoPostazioniServer::postazioniSenzaNumeriDoppiNeRighePerse()
{
    const int postazioni = Ambiente("Q3_CARICO_POSTAZIONI", PostazioniPredefinite);
    const int secondi = Ambiente("Q3_CARICO_SECONDI", SecondiPredefiniti);
    const quint32 seme = quint32(Ambiente("Q3_CARICO_SEME", int(QRandomGenerator::global()->bounded(1, 1000000))));
    qInfo("%d postazioni per %d s, seme %u (Q3_CARICO_SEME lo ripete)", postazioni, secondi, seme);

    TQ3TestDatabase database(TQ3TestDatabase::Where::Server, TQ3TestDatabase::Schema::Host);
    PreparaAzienda(database);
    if (QTest::currentTestFailed())
        return;

    // The workstations' records stay in Q3_CARICO_CARTELLA when it is given.
    QTemporaryDir temporanea;
    const QDir cartella(qEnvironmentVariable("Q3_CARICO_CARTELLA", temporanea.path()));
    std::vector<TPostazioneAvviata> avviate;
    for (int p = 1; p <= postazioni; ++p) {
        TPostazioneAvviata avviata{std::make_unique<QProcess>(),
                                   cartella.filePath(QStringLiteral("postazione%1.tsv").arg(p))};
        // What a workstation writes goes to a file: a full pipe would stop it
        // in the middle of a transaction.
        avviata.Processo->setStandardOutputFile(avviata.File + QStringLiteral(".out"));
        avviata.Processo->setStandardErrorFile(avviata.File + QStringLiteral(".err"));
        avviata.Processo->start(QStringLiteral(Q3_POSTAZIONE),
                                {database.ConnectionString(), QString::number(p), QString::number(seme + quint32(p)),
                                 QString::number(secondi), QString::number(Anno), avviata.File});
        avviate.push_back(std::move(avviata));
    }

    // Each workstation stops by itself at its time. One still running well
    // beyond it is stopped as a last resort, and the test fails.
    const QDeadlineTimer limite(qint64(secondi + MargineArrestoSecondi) * 1000);
    int bloccate = 0, cadute = 0;
    QList<TKRVRichiestaCarico> richieste;
    for (TPostazioneAvviata &avviata : avviate) {
        QProcess &processo = *avviata.Processo;
        if (!processo.waitForFinished(int(std::max<qint64>(limite.remainingTime(), 1)))) {
            ++bloccate;
            qWarning("Postazione %s ancora in corso oltre il limite: fermata", qPrintable(avviata.File));
            processo.terminate();
            if (!processo.waitForFinished(10000)) {
                processo.kill();
                processo.waitForFinished(10000);
            }
            continue;
        }
        if (processo.exitStatus() != QProcess::NormalExit || processo.exitCode() != 0) {
            ++cadute;
            qWarning().noquote() << QStringLiteral("Postazione %1 caduta (uscita %2):\n%3")
                                        .arg(avviata.File)
                                        .arg(processo.exitCode())
                                        .arg(Testo(avviata.File + QStringLiteral(".err")));
        }
        if (QFile::exists(avviata.File))
            richieste += KRVLeggiRichieste(avviata.File);
    }
    for (const TKRVRichiestaCarico &r : std::as_const(richieste)) {
        if (r.Esito == KRVCarico::Errore || r.Durata() > AttesaMassimaMs)
            qWarning().noquote() << QStringLiteral("Postazione %1, %2 %3 %4: %5 in %6 ms: %7")
                                        .arg(r.Postazione)
                                        .arg(r.Operazione, r.Documento)
                                        .arg(r.Id)
                                        .arg(r.Esito)
                                        .arg(r.Durata())
                                        .arg(r.Messaggio);
    }

    const TKRVVerificaCarico verifica = KRVVerificaArchivioCarico(*database.Connection(), richieste);
    const TKRVCifreCarico cifre = KRVCifreCarico(richieste, secondi, AttesaMassimaMs);
    QStringList testo{QStringLiteral("%1 postazioni per %2 s, seme %3; postazioni bloccate %4, cadute %5")
                          .arg(postazioni)
                          .arg(secondi)
                          .arg(seme)
                          .arg(bloccate)
                          .arg(cadute)};
    testo += KRVTestoCifre(cifre, verifica);
    for (const QString &riga : std::as_const(testo))
        qInfo().noquote() << riga;
    const QString riepilogo = qEnvironmentVariable("Q3_CARICO_RIEPILOGO");
    if (!riepilogo.isEmpty()) {
        QFile file(riepilogo);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text));
        file.write((testo.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8());
    }

    QCOMPARE(bloccate, 0);
    QCOMPARE(cadute, 0);
    QVERIFY(cifre.Salvataggi > 0);
    QVERIFY(cifre.Eliminazioni > 0);
    QCOMPARE(cifre.Errori, 0);
    QCOMPARE(cifre.LettureMiste, 0);
    QCOMPARE(cifre.OltreLimite, 0);
    QCOMPARE(verifica.NumeriDoppi, 0);
    QCOMPARE(verifica.RigheOrfane, 0);
    QCOMPARE(verifica.RighePerse, 0);
    QCOMPARE(verifica.TotaliErrati, 0);
    QCOMPARE(verifica.SalvataggiIgnoti, 0);
    QCOMPARE(verifica.SalvataggiPersi, 0);
    QCOMPARE(verifica.DocumentiPersi, 0);
    QCOMPARE(verifica.EliminazioniPerse, 0);
}

QTEST_GUILESS_MAIN(TestCaricoPostazioniServer)

#include "tst_caricopostazioni_server.moc"
