#pragma once

// A program killed while it saves invoices must leave each of them whole: the
// test executable, started again as a child, saves invoices without end while
// the test kills it at random moments and checks the database after each kill.
#include "KRVFatturaVendita.h"
#include "KRVNumbering.h"
#include "KRVTestModule.h"
#include "Q3Dataset.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3TestDatabaseFile.h"

#include <QElapsedTimer>
#include <QHash>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlQuery>
#include <QTextStream>
#include <QThread>
#include <QtTest>

#include <cmath>
#include <csignal>
#include <cstdio>

// The argument that makes the test executable the saving child:
// --figlio <connection string> <seed> <round>.
inline const QString KRVArgomentoFiglio = QStringLiteral("--figlio");

// The child keeps the database to this many invoices: beyond it, it only
// saves existing ones again, so checking all of them stays quick.
constexpr int KRVFattureMassime = 40;
constexpr int KRVRigheMassime = 500;

// Rates the lines choose among: the seeded ones, two added by the test, and
// one that is not in the table (no tax, null VAT columns).
inline const QList<int> KRVAliquoteRighe{1, 2, 3, 4, 5, 99};

// Every save is marked "G<round>.<n>": the header's note holds the mark and its
// number of lines, each line's description starts with the mark.
struct TKRVSegno
{
    int Giro = 0;
    int Numero = 0;

    QString Testo() const { return QStringLiteral("G%1.%2").arg(Giro).arg(Numero); }
    static TKRVSegno Leggi(const QString &testo)
    {
        const QStringList parti = testo.mid(1).split(QLatin1Char('.'));
        return parti.size() == 2 && testo.startsWith(QLatin1Char('G')) ? TKRVSegno{parti[0].toInt(), parti[1].toInt()}
                                                                       : TKRVSegno{};
    }
};

inline QString KRVNotaSalvataggio(const TKRVSegno &segno, int righe)
{
    return segno.Testo() + QLatin1Char('|') + QString::number(righe);
}

inline double KRVImportoCasuale(QRandomGenerator &caso, int massimo)
{
    return caso.bounded(massimo * 100) / 100.0;
}

// One line of a random kind with random amounts; its description comes with
// the mark of the save.
inline void KRVAggiungiRigaCasuale(TKRVRigheDocumento &righe, QRandomGenerator &caso)
{
    const TKRVLayoutRighe &l = righe.Layout();
    const int tipo = int(caso.bounded(4));
    if (tipo == 2) {
        righe.AggiungiTesto();
        return;
    }
    int riga = 0;
    if (tipo == 3) {
        riga = righe.AggiungiNonImponibile();
    } else {
        const bool articolo = tipo == 0;
        const int idIva = KRVAliquoteRighe.at(int(caso.bounded(qsizetype(KRVAliquoteRighe.size()))));
        riga = righe.AggiungiVoce({articolo ? KRVRigaArticolo : KRVRigaServizio, KRVImportoCasuale(caso, 500),
                                   articolo ? QStringLiteral("ART1") : QStringLiteral("SRV1"), QString(), 1,
                                   KRVImportoCasuale(caso, 1000), idIva, QString::number(idIva), articolo ? 1 : 2,
                                   articolo ? QStringLiteral("PEZZI") : QStringLiteral("ORE")});
        if (caso.bounded(4) == 0)
            righe.SetNumero(riga, l.Sconto, KRVImportoCasuale(caso, 50));
    }
    righe.SetNumero(riga, l.Prezzo, KRVImportoCasuale(caso, 1000));
    righe.SetNumero(riga, l.Quantita, (1 + caso.bounded(10000)) / 100.0);
}

inline void KRVSegnaRighe(TKRVRigheDocumento &righe, const TKRVSegno &segno)
{
    for (int r = 0; r < righe.Righe(); ++r) {
        QString descrizione = segno.Testo() + QStringLiteral(" riga ") + QString::number(r + 1);
        if (righe.Tipo(r) == KRVRigaTesto)
            descrizione += QStringLiteral("\nseconda riga del testo");
        righe.SetCella(r, righe.Layout().Descrizione, descrizione);
    }
}

inline TKRVTestataFattura KRVTestataCasuale(const QSqlDatabase &db, QRandomGenerator &caso)
{
    TKRVTestataFattura testata;
    testata.Data = QDate(2025, 1, 1).addDays(caso.bounded(365));
    testata.Numero = GetNextNumeroFattVend(db, testata.Data.year());
    testata.Cliente.CODICE = QStringLiteral("CLN%1").arg(caso.bounded(1000), 7, 10, QLatin1Char('0'));
    testata.Cliente.RAGIONESOCIALE = QStringLiteral("Cliente ") + testata.Cliente.CODICE;
    testata.Cliente.CITTA = QStringLiteral("Bologna");
    testata.IdTipoPagamento = 1;
    testata.TipoPagamento = QStringLiteral("Rimessa diretta");
    testata.Scadenza = testata.Data.addDays(30);
    return testata;
}

// The child: saves invoices through the store without end, new ones and
// existing ones whose lines it replaces, and says "inizio <mark>" before each
// save and "salvata <id> <mark>" after each commit. Answers only on failure.
inline int KRVSalvaFattureSenzaFine(const QString &connectionString, quint32 seme, int giro)
{
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    QTextStream out(stdout);
    try {
        TKRVModuloInizializzato modulo(connectionString);
        TKRVArchivioFattureVendita archivio(*modulo.Main->Dataset(QStringLiteral("adsFattVend")));
        QRandomGenerator caso(seme);
        QList<int> fatture;
        QSqlQuery esistenti = OpenQuery(modulo.Db(), QStringLiteral("SELECT IDFATT_VEND FROM FATT_VEND"));
        while (esistenti.next())
            fatture << esistenti.value(0).toInt();
        out << "pronto\n" << Qt::flush;

        for (int numero = 1;; ++numero) {
            const TKRVSegno segno{giro, numero};
            const bool nuova = fatture.isEmpty() || (fatture.size() < KRVFattureMassime && caso.bounded(3) == 0);
            int id = 0;
            TKRVTestataFattura testata;
            TKRVRigheDocumento righe(KRVLayoutFattura());
            if (nuova) {
                testata = KRVTestataCasuale(modulo.Db(), caso);
            } else {
                id = fatture.at(int(caso.bounded(qsizetype(fatture.size()))));
                if (!archivio.Leggi(id, testata, righe))
                    throw EQ3Exception(QStringLiteral("La fattura %1 non c'è più.").arg(id));
            }
            const int quante = 1 + int(caso.bounded(KRVRigheMassime));
            // A re-saved invoice keeps some of its lines, the rest is new.
            const int tenute = std::min(int(caso.bounded(righe.Righe() + 1)), quante);
            while (righe.Righe() > tenute)
                righe.EliminaRiga(righe.Righe() - 1);
            while (righe.Righe() < quante)
                KRVAggiungiRigaCasuale(righe, caso);
            KRVSegnaRighe(righe, segno);
            if (caso.bounded(6) == 0)
                testata.IvaEsente = !testata.IvaEsente;
            testata.Note = KRVNotaSalvataggio(segno, quante);
            const TKRVTotaliDocumento totali =
                AggiornaTotaliDocumento(righe, testata.IvaEsente, KRVAliquoteArchivio(modulo.Db()));
            out << "inizio " << segno.Testo() << '\n' << Qt::flush;
            archivio.Scrivi(testata, righe, totali, nuova, id);
            out << "salvata " << id << ' ' << segno.Testo() << '\n' << Qt::flush;
            if (nuova)
                fatture << id;
        }
    } catch (const std::exception &e) {
        QTextStream(stderr) << "errore: " << ExceptionMessage(e) << '\n' << Qt::flush;
    }
    return 2;
}

// The test executable's entry: the child when asked, the suite otherwise.
template <class TSuite>
int KRVMainSalvataggioInterrotto(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList argomenti = app.arguments();
    if (argomenti.size() == 5 && argomenti.at(1) == KRVArgomentoFiglio)
        return KRVSalvaFattureSenzaFine(argomenti.at(2), argomenti.at(3).toUInt(), argomenti.at(4).toInt());
    TSuite suite;
    return QTest::qExec(&suite, argc, argv);
}

// The module's tables on the new database, with two more VAT rates. The
// test's own attachment closes: an embedded database file is one process's
// at a time. A file forces its writes to the disk, as the application's do:
// the saves take their real time, and the kills fall inside them.
inline void KRVPreparaArchivio(TQ3TestDatabase &database)
{
    {
        TKRVModuloInizializzato modulo(database.ConnectionString());
        ExecSQL(
            modulo.Db(),
            QStringLiteral(
                "INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) VALUES (0, '10', 'Ridotta', 10)"));
        ExecSQL(
            modulo.Db(),
            QStringLiteral(
                "INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) VALUES (0, '4', 'Minima', 4)"));
    }
    database.Connection()->Close();
    if (!database.Target().IsRemote())
        SetQ3TestForcedWrites(database.Target().Database, true);
}

struct TKRVConteggiInterruzioni
{
    int Uccisioni = 0;
    int UccisioniDuranteSalvataggio = 0;
    int Commit = 0;
    int Incoerenze = 0;
    int FigliFalliti = 0; // a child that did not start, or stopped on its own
};

// What one killed child said: the last mark committed for each invoice, and
// whether it was killed inside a save.
struct TKRVUscitaFiglio
{
    QHash<int, TKRVSegno> Salvate;
    int Commit = 0;
    bool DuranteSalvataggio = false;

    void Leggi(const QByteArray &uscita)
    {
        // What follows the last line feed is a line the kill cut short.
        QList<QByteArray> righe = uscita.split('\n');
        righe.removeLast();
        for (const QByteArray &riga : std::as_const(righe)) {
            const QList<QByteArray> parti = riga.split(' ');
            if (parti.value(0) == "inizio") {
                DuranteSalvataggio = true;
            } else if (parti.value(0) == "salvata" && parti.size() == 3) {
                Salvate.insert(parti[1].toInt(), TKRVSegno::Leggi(QString::fromLatin1(parti[2])));
                ++Commit;
                DuranteSalvataggio = false;
            }
        }
    }
};

// Checks every invoice of the database, in a session of its own: header totals
// as its stored lines give them, as many lines as the header's save wrote and
// all of that save, no line without its header, no commit the child saw lost.
// Answers the inconsistencies, each one told by a warning.
inline int KRVIncoerenze(const QString &connectionString, const TKRVUscitaFiglio &figlio)
{
    TKRVModuloInizializzato modulo(connectionString);
    TKRVArchivioFattureVendita archivio(*modulo.Main->Dataset(QStringLiteral("adsFattVend")));
    // One snapshot for the whole check, which is quicker than one per query.
    TQ3Transaction lettura(modulo.Db());
    int incoerenze = 0;
    const auto incoerente = [&incoerenze](const QString &testo) {
        ++incoerenze;
        qWarning().noquote() << testo;
    };
    const QString senzaTestata = QStringLiteral(
        "SELECT COUNT(*) FROM FATT_VEND_DETT WHERE IDFATT_VEND NOT IN (SELECT IDFATT_VEND FROM FATT_VEND)");
    const int orfane = QueryScalar(modulo.Db(), senzaTestata).toInt();
    if (orfane > 0)
        incoerente(QStringLiteral("%1 righe senza fattura").arg(orfane));
    QHash<int, TKRVSegno> segni;
    QSqlQuery testate = OpenQuery(modulo.Db(), QStringLiteral("SELECT IDFATT_VEND, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, "
                                                              "TOTALE_DOCUMENTO FROM FATT_VEND ORDER BY IDFATT_VEND"));
    while (testate.next()) {
        const int id = testate.value(0).toInt();
        TKRVTestataFattura testata;
        TKRVRigheDocumento righe(KRVLayoutFattura());
        if (!archivio.Leggi(id, testata, righe)) {
            incoerente(QStringLiteral("fattura %1 illeggibile").arg(id));
            continue;
        }
        const TKRVTotaliDocumento totali =
            AggiornaTotaliDocumento(righe, testata.IvaEsente, KRVAliquoteArchivio(modulo.Db()));
        const double calcolati[] = {totali.Imponibile, totali.Imposta, totali.Totale()};
        const char *colonne[] = {"TOTALE_IMPONIBILE", "TOTALE_IMPOSTA", "TOTALE_DOCUMENTO"};
        for (int i = 0; i < 3; ++i) {
            // The header holds the sum rounded to the cent.
            const double scritto = testate.value(i + 1).toDouble();
            if (std::abs(scritto - calcolati[i]) > 0.005 + 1e-7)
                incoerente(QStringLiteral("fattura %1: %2 %3, dalle righe %4")
                               .arg(id)
                               .arg(QLatin1String(colonne[i]))
                               .arg(scritto, 0, 'f', 2)
                               .arg(calcolati[i], 0, 'f', 4));
        }
        const QStringList nota = testata.Note.split(QLatin1Char('|'));
        const TKRVSegno segno = TKRVSegno::Leggi(nota.value(0));
        segni.insert(id, segno);
        if (nota.size() != 2 || nota[1].toInt() != righe.Righe())
            incoerente(
                QStringLiteral("fattura %1: %2 righe, la testata \"%3\"").arg(id).arg(righe.Righe()).arg(testata.Note));
        for (int r = 0; r < righe.Righe(); ++r) {
            const QString descrizione = righe.Cella(r, righe.Layout().Descrizione);
            if (!descrizione.startsWith(segno.Testo() + QLatin1Char(' '))) {
                incoerente(QStringLiteral("fattura %1 (%2): riga \"%3\" di un altro salvataggio")
                               .arg(id)
                               .arg(segno.Testo(), descrizione));
                break;
            }
        }
    }
    for (auto salvata = figlio.Salvate.cbegin(); salvata != figlio.Salvate.cend(); ++salvata) {
        const TKRVSegno trovato = segni.value(salvata.key());
        if (trovato.Giro != salvata->Giro || trovato.Numero < salvata->Numero)
            incoerente(QStringLiteral("fattura %1: salvata come %2, trovata come %3")
                           .arg(salvata.key())
                           .arg(salvata->Testo(), trovato.Testo()));
    }
    return incoerenze;
}

// Starts the saving child on the database, kills it (SIGKILL) a random time
// after it is ready, checks the database; as many times as asked. The seed,
// printed, replays the same waits and the same children's choices
// (Q3_SALVATAGGIO_SEME).
inline TKRVConteggiInterruzioni KRVUccidiSalvataggi(const QString &connectionString, int uccisioni)
{
    bool semeDato = false;
    const quint32 seme = quint32(qEnvironmentVariable("Q3_SALVATAGGIO_SEME").toUInt(&semeDato));
    const quint32 semeUsato = semeDato ? seme : QRandomGenerator::global()->generate();
    qInfo("Seme %u (Q3_SALVATAGGIO_SEME=%u lo ripete), %d uccisioni", semeUsato, semeUsato, uccisioni);
    QRandomGenerator caso(semeUsato);
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    ambiente.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    TKRVConteggiInterruzioni conti;
    for (int giro = 1; giro <= uccisioni; ++giro) {
        const quint32 semeFiglio = caso.generate();
        const int attesa = 20 + int(caso.bounded(381));
        QProcess figlio;
        figlio.setProcessEnvironment(ambiente);
        figlio.start(QCoreApplication::applicationFilePath(),
                     {KRVArgomentoFiglio, connectionString, QString::number(semeFiglio), QString::number(giro)});
        QByteArray uscita;
        QElapsedTimer avvio;
        avvio.start();
        while (!uscita.contains("pronto\n") && figlio.state() != QProcess::NotRunning && avvio.elapsed() < 60000) {
            figlio.waitForReadyRead(1000);
            uscita += figlio.readAllStandardOutput();
        }
        if (!uscita.contains("pronto\n")) {
            figlio.kill();
            figlio.waitForFinished();
            qWarning().noquote() << QStringLiteral("Giro %1: il processo figlio non è partito:\n").arg(giro)
                                        + QString::fromLocal8Bit(figlio.readAllStandardError());
            ++conti.FigliFalliti;
            break;
        }
        QThread::msleep(attesa);
        ::kill(pid_t(figlio.processId()), SIGKILL);
        figlio.waitForFinished(60000);
        uscita += figlio.readAllStandardOutput();
        ++conti.Uccisioni;
        TKRVUscitaFiglio detto;
        detto.Leggi(uscita);
        conti.Commit += detto.Commit;
        conti.UccisioniDuranteSalvataggio += detto.DuranteSalvataggio ? 1 : 0;
        if (figlio.exitStatus() == QProcess::NormalExit) {
            // It stopped on its own before the kill: a save that failed.
            qWarning().noquote() << QStringLiteral("Giro %1: il processo figlio si è fermato da solo:\n").arg(giro)
                                        + QString::fromLocal8Bit(figlio.readAllStandardError());
            ++conti.FigliFalliti;
        }
        const int incoerenze = KRVIncoerenze(connectionString, detto);
        if (incoerenze > 0)
            qWarning("Giro %d (figlio con seme %u, ucciso dopo %d ms): %d incoerenze", giro, semeFiglio, attesa,
                     incoerenze);
        conti.Incoerenze += incoerenze;
    }
    qInfo("%d uccisioni (%d durante un salvataggio), %d commit, %d incoerenze, %d processi figli falliti",
          conti.Uccisioni, conti.UccisioniDuranteSalvataggio, conti.Commit, conti.Incoerenze, conti.FigliFalliti);
    return conti;
}

// The whole check on a new database: as many kills as asked
// (Q3_SALVATAGGIO_UCCISIONI, for a quick run) or the suite's own count, every
// one counted, commits seen, kills inside a save, not one inconsistency and
// not one child that failed by itself.
inline void KRVVerificaSalvataggiInterrotti(TQ3TestDatabase::Where where, int uccisioniPredefinite)
{
    TQ3TestDatabase database(where);
    KRVPreparaArchivio(database);
    bool chieste = false;
    const int numero = qEnvironmentVariableIntValue("Q3_SALVATAGGIO_UCCISIONI", &chieste);
    const int uccisioni = chieste && numero > 0 ? numero : uccisioniPredefinite;
    const TKRVConteggiInterruzioni conti = KRVUccidiSalvataggi(database.ConnectionString(), uccisioni);
    QCOMPARE(conti.Uccisioni, uccisioni);
    QVERIFY(conti.Commit > 0);
    QVERIFY(conti.UccisioniDuranteSalvataggio > 0);
    QCOMPARE(conti.Incoerenze, 0);
    QCOMPARE(conti.FigliFalliti, 0);
}
