#include "Q3Backup.h"
#include "Q3BackupTestKit.h"
#include "Q3DatabaseFile.h"
#include "Q3Exception.h"
#include "Q3TestDatabase.h"
#include "Q3TestServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QtTest>

// Backup and restore of a database on a Firebird server: the server writes
// the backup and the new database, in the test's folder, which the server's
// process can reach (it runs as the user who started it).
class TestQ3BackupServer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void backupThenRestoreKeepsEveryRowOfEveryTable();
    void restoreOverAnExistingFileOrTheDatabaseInUseIsRefused();
    void restoreOfAFileThatIsNotABackupMakesNothing();
    void autoBackupOnTheServerKeepsTheLastCopies();
    void backupOfAServerThatWentAwayFailsAtOnce();
};

void TestQ3BackupServer::init()
{
    Q3_REQUIRE_TEST_SERVER();
}

void TestQ3BackupServer::backupThenRestoreKeepsEveryRowOfEveryTable()
{
    TQ3TestDatabase db(TQ3TestDatabase::Where::Server);
    FillQ3BackupTestData(db.Target(), 300);
    const QMap<QString, QString> before = Q3TableChecksums(db.Target());

    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    int done = 0;
    const TQ3BackupResult made =
        Q3BackupDatabase(db.Target(), backup, [&](int tables, int, const QString &) { done = tables; });
    QVERIFY(made.Size > 0);
    QCOMPARE(made.Size, QFileInfo(backup).size());
    QVERIFY(done > 0);

    const QString restoredFile = QDir(db.Folder()).filePath(QStringLiteral("ripristinato.fdb"));
    const TQ3DatabaseTarget restored = Q3RestoreDatabase(db.Target(), backup, restoredFile);
    QCOMPARE(restored.Database, qEnvironmentVariable("Q3_TEST_SERVER") + QLatin1Char(':') + restoredFile);
    QCOMPARE(restored.User, db.Target().User);
    QCOMPARE(Q3TableChecksums(restored), before);
    DropQ3Database(restored);
}

void TestQ3BackupServer::restoreOverAnExistingFileOrTheDatabaseInUseIsRefused()
{
    TQ3TestDatabase db(TQ3TestDatabase::Where::Server);
    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    Q3BackupDatabase(db.Target(), backup);
    const QString running = db.Target().Database.mid(db.Target().Database.indexOf(QLatin1Char(':')) + 1);
    QCOMPARE(Q3RestoreFailure(db.Target(), backup, running),
             QStringLiteral("Impossibile ripristinare sul database in uso: scegliere un nuovo file di database."));
    const QString existing = WriteQ3TestFile(db.Folder(), QStringLiteral("esistente.fdb"), QStringLiteral("dati"));
    QVERIFY(Q3RestoreFailure(db.Target(), backup, existing).contains(QStringLiteral("esiste già")));
    QFile file(existing);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("dati"));
}

void TestQ3BackupServer::restoreOfAFileThatIsNotABackupMakesNothing()
{
    TQ3TestDatabase db(TQ3TestDatabase::Where::Server);
    const QString junk = WriteQ3TestFile(db.Folder(), QStringLiteral("fattura.fbk"), QStringLiteral("non un backup"));
    const QString newFile = QDir(db.Folder()).filePath(QStringLiteral("nuovo.fdb"));
    const QString message = Q3RestoreFailure(db.Target(), junk, newFile);
    QVERIFY2(message.startsWith(QStringLiteral("Il file scelto non è un backup di Quillo 3 valido.\n")),
             qPrintable(message));
    QVERIFY(!QFile::exists(newFile));
}

void TestQ3BackupServer::autoBackupOnTheServerKeepsTheLastCopies()
{
    TQ3TestDatabase db(TQ3TestDatabase::Where::Server);
    TQ3AutoBackupOptions options;
    options.Attivo = true;
    // The server's folder: it must be there already.
    options.Cartella = db.Folder();
    options.Copie = 2;
    const QDateTime first(QDate(2026, 11, 24), QTime(9, 5));
    for (int i = 0; i < 3; ++i)
        Q3RunAutoBackup(db.Target(), options, first.addDays(i));
    QCOMPARE(QDir(db.Folder()).entryList({QStringLiteral("*.fbk")}, QDir::Files, QDir::Name),
             QStringList(
                 {QStringLiteral("quillo3-2026-11-25-0905.fbk"), QStringLiteral("quillo3-2026-11-26-0905.fbk")}));
}

void TestQ3BackupServer::backupOfAServerThatWentAwayFailsAtOnce()
{
    TQ3TestServer server;
    TQ3TestDatabase db(TQ3TestDatabase::Where::Server);
    TQ3AutoBackupOptions options;
    options.Attivo = true;
    options.Cartella = db.Folder();
    server.Stop();
    QElapsedTimer timer;
    timer.start();
    QString message;
    try {
        Q3RunAutoBackup(db.Target(), options, QDateTime::currentDateTime());
    } catch (const EQ3Exception &e) {
        message = e.Message();
    }
    const qint64 waited = timer.elapsed();
    server.Resume();
    QVERIFY2(message.startsWith(QStringLiteral("Backup non riuscito:\n")), qPrintable(message));
    QVERIFY2(waited < 30000, qPrintable(QString::number(waited)));
    QVERIFY(QDir(db.Folder()).entryList({QStringLiteral("*.fbk")}, QDir::Files).isEmpty());
}

QTEST_GUILESS_MAIN(TestQ3BackupServer)
#include "tst_q3backup_server.moc"
