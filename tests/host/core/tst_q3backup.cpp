#include "Q3Backup.h"
#include "Q3BackupTestKit.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"

#include <QDir>
#include <QFile>
#include <QtTest>

// Backup and restore of an embedded database through Firebird's backup service.
class TestQ3Backup : public QObject
{
    Q_OBJECT

private slots:
    void backupThenRestoreKeepsEveryRowOfEveryTable();
    void restoreOfAFileThatIsNotABackupMakesNothing();
    void restoreOverAnExistingFileIsRefused();
    void restoreIntoAFolderThatIsNotThereSaysWhy();
    void restoreOverTheDatabaseInUseIsRefused();
    void restoreOfAnotherSchemaIsRemoved();
    void restoreOfAFirebirdBackupNotOfQuillo3IsRemoved();
    void autoBackupOptionsDefaultAndWrite();
    void autoBackupKeepsTheLastCopies();
    void autoBackupWithoutFolderFails();
    void failedBackupLeavesNoFile();
};

void TestQ3Backup::backupThenRestoreKeepsEveryRowOfEveryTable()
{
    TQ3TestDatabase db;
    FillQ3BackupTestData(db.Target(), 400);
    const QMap<QString, QString> before = Q3TableChecksums(db.Target());
    QVERIFY(before.value(QStringLiteral("PROVA_BACKUP")).startsWith(QStringLiteral("400 righe")));

    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    QList<int> done;
    int total = 0;
    const TQ3BackupResult made = Q3BackupDatabase(db.Target(), backup, [&](int tables, int all, const QString &) {
        done << tables;
        total = all;
    });
    QCOMPARE(made.File, backup);
    QVERIFY(made.Size > 0);
    QCOMPARE(made.Size, QFileInfo(backup).size());
    // It holds the users' password hashes: no one else reads it.
    QCOMPARE(QFileInfo(backup).permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther), 0);
    QCOMPARE(total, before.keys().filter(QRegularExpression(QStringLiteral("^(?!GEN )"))).size());
    QCOMPARE(done.last(), total);
    QVERIFY(done.contains(total / 2));

    const QString restoredFile = QDir(db.Folder()).filePath(QStringLiteral("ripristinato.fdb"));
    done.clear();
    const TQ3DatabaseTarget restored =
        Q3RestoreDatabase(db.Target(), backup, restoredFile, [&](int tables, int, const QString &) { done << tables; });
    QCOMPARE(restored.Database, restoredFile);
    QCOMPARE(done.last(), total);
    QVERIFY(done.contains(1));
    QCOMPARE(Q3TableChecksums(restored), before);
    // The restored database, like a new one, is never swept by itself.
    TQ3Connection connection;
    connection.SetConnectionString(restored.ConnectionString());
    connection.Open();
    QCOMPARE(QueryScalar(connection.Database(), QStringLiteral("SELECT MON$SWEEP_INTERVAL FROM MON$DATABASE")).toInt(),
             0);
}

void TestQ3Backup::restoreOfAFileThatIsNotABackupMakesNothing()
{
    TQ3TestDatabase db;
    const QString junk = WriteQ3TestFile(db.Folder(), QStringLiteral("fattura.fbk"), QStringLiteral("non un backup"));
    const QString newFile = QDir(db.Folder()).filePath(QStringLiteral("nuovo.fdb"));
    const QString message = Q3RestoreFailure(db.Target(), junk, newFile);
    QVERIFY2(message.startsWith(QStringLiteral("Il file scelto non è un backup di Quillo 3 valido.\n")),
             qPrintable(message));
    // Firebird's own reason follows.
    QVERIFY2(message.contains(QStringLiteral("backup")), qPrintable(message));
    QVERIFY(!QFile::exists(newFile));
}

void TestQ3Backup::restoreOverAnExistingFileIsRefused()
{
    TQ3TestDatabase db;
    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    Q3BackupDatabase(db.Target(), backup);
    const QString existing = WriteQ3TestFile(db.Folder(), QStringLiteral("esistente.fdb"), QStringLiteral("dati"));
    QCOMPARE(Q3RestoreFailure(db.Target(), backup, existing),
             QStringLiteral("Il file \"%1\" esiste già: il ripristino crea sempre un nuovo file di database.")
                 .arg(existing));
    QFile file(existing);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("dati"));
}

void TestQ3Backup::restoreIntoAFolderThatIsNotThereSaysWhy()
{
    TQ3TestDatabase db;
    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    Q3BackupDatabase(db.Target(), backup);
    const QString newFile = QDir(db.Folder()).filePath(QStringLiteral("manca/nuovo.fdb"));
    const QString message = Q3RestoreFailure(db.Target(), backup, newFile);
    QVERIFY2(message.startsWith(QStringLiteral("Ripristino non riuscito:\n")), qPrintable(message));
    QVERIFY2(message.contains(newFile), qPrintable(message));
    QVERIFY(!QFile::exists(newFile));
}

void TestQ3Backup::restoreOverTheDatabaseInUseIsRefused()
{
    TQ3TestDatabase db;
    db.Exec(QStringLiteral("INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES ('PRIMA', 'x')"));
    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    Q3BackupDatabase(db.Target(), backup);
    db.Exec(QStringLiteral("INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES ('DOPO', 'y')"));
    const QString refused =
        QStringLiteral("Impossibile ripristinare sul database in uso: scegliere un nuovo file di database.");
    QCOMPARE(Q3RestoreFailure(db.Target(), backup, db.Target().Database), refused);
    // Another spelling of the same file is the same database.
    const QString other = QDir(db.Folder()).filePath(QStringLiteral("./sub/../test.fdb"));
    QDir(db.Folder()).mkdir(QStringLiteral("sub"));
    QCOMPARE(Q3RestoreFailure(db.Target(), backup, other), refused);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM OPZIONI WHERE OPZIONE IN ('PRIMA', 'DOPO')")).toInt(), 2);
}

namespace {

// Backs the database up, restores the backup next to another database in use
// and answers the restore's failure; the new file must not be left.
QString RestoreOfBackupOf(const TQ3TestDatabase &backedUp)
{
    const QString backup = QDir(backedUp.Folder()).filePath(QStringLiteral("copia.fbk"));
    Q3BackupDatabase(backedUp.Target(), backup);
    TQ3TestDatabase running;
    const QString newFile = QDir(running.Folder()).filePath(QStringLiteral("nuovo.fdb"));
    const QString message = Q3RestoreFailure(running.Target(), backup, newFile);
    return QFile::exists(newFile) ? QStringLiteral("Il nuovo file è rimasto: ") + message : message;
}

} // namespace

void TestQ3Backup::restoreOfAnotherSchemaIsRemoved()
{
    TQ3TestDatabase older;
    older.Exec(QStringLiteral("UPDATE TABLE_VERSION SET VERSIONE = '0.9.0' WHERE TABELLA = 'AZIENDA'"));
    const QString message = RestoreOfBackupOf(older);
    QVERIFY2(message.startsWith(QStringLiteral("Il database ripristinato ha uno schema diverso")), qPrintable(message));
    QVERIFY2(message.contains(QStringLiteral("AZIENDA=0.9.0")), qPrintable(message));
    QVERIFY2(message.endsWith(QStringLiteral("Il file ripristinato è stato eliminato.")), qPrintable(message));
}

void TestQ3Backup::restoreOfAFirebirdBackupNotOfQuillo3IsRemoved()
{
    TQ3TestDatabase other(TQ3TestDatabase::Where::Embedded, false);
    other.Exec(QStringLiteral("CREATE TABLE ALTRO (A INTEGER)"));
    const QString message = RestoreOfBackupOf(other);
    QVERIFY2(message.startsWith(QStringLiteral("Il file scelto non è un backup di Quillo 3 valido.")),
             qPrintable(message));
}

void TestQ3Backup::autoBackupOptionsDefaultAndWrite()
{
    TQ3TestDatabase db;
    const TQ3AutoBackupOptions defaults = TQ3AutoBackupOptions::Read(db.Db());
    QVERIFY(!defaults.Attivo);
    QVERIFY(defaults.Cartella.isEmpty());
    QCOMPARE(defaults.Copie, 5);

    TQ3AutoBackupOptions options;
    options.Attivo = true;
    options.Cartella = QStringLiteral("/tmp/copie di Quillo");
    options.Copie = 3;
    options.Write(db.Db());
    QCOMPARE(db.Rows(QStringLiteral("SELECT OPZIONE, VALORE FROM OPZIONI WHERE OPZIONE STARTING WITH 'BACKUP_' "
                                    "ORDER BY OPZIONE")),
             QStringList({QStringLiteral("BACKUP_AUTOMATICO|True"),
                          QStringLiteral("BACKUP_CARTELLA|/tmp/copie di Quillo"), QStringLiteral("BACKUP_COPIE|3")}));
    options.Attivo = false;
    options.Write(db.Db());
    const TQ3AutoBackupOptions read = TQ3AutoBackupOptions::Read(db.Db());
    QVERIFY(!read.Attivo);
    QCOMPARE(read.Cartella, QStringLiteral("/tmp/copie di Quillo"));
    QCOMPARE(read.Copie, 3);
}

void TestQ3Backup::autoBackupKeepsTheLastCopies()
{
    TQ3TestDatabase db;
    TQ3AutoBackupOptions options;
    options.Attivo = true;
    options.Cartella = QDir(db.Folder()).filePath(QStringLiteral("copie/automatiche"));
    options.Copie = 3;
    QDir().mkpath(options.Cartella);
    // Files that are not automatic backups stay.
    WriteQ3TestFile(options.Cartella, QStringLiteral("quillo3-manuale.fbk"), QStringLiteral("mio"));
    WriteQ3TestFile(options.Cartella, QStringLiteral("altro.fbk"), QStringLiteral("mio"));

    const QDateTime first(QDate(2026, 11, 24), QTime(15, 30));
    for (int i = 0; i < 5; ++i) {
        const TQ3BackupResult made = Q3RunAutoBackup(db.Target(), options, first.addSecs(i * 3600 * 20));
        QVERIFY(made.Size > 0);
    }
    QCOMPARE(QDir(options.Cartella).entryList(QDir::Files, QDir::Name),
             QStringList({QStringLiteral("altro.fbk"), QStringLiteral("quillo3-2026-11-26-0730.fbk"),
                          QStringLiteral("quillo3-2026-11-27-0330.fbk"), QStringLiteral("quillo3-2026-11-27-2330.fbk"),
                          QStringLiteral("quillo3-manuale.fbk")}));
    QCOMPARE(Q3AutoBackupFileName(first), QStringLiteral("quillo3-2026-11-24-1530.fbk"));
}

void TestQ3Backup::autoBackupWithoutFolderFails()
{
    TQ3TestDatabase db;
    TQ3AutoBackupOptions options;
    options.Attivo = true;
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, Q3RunAutoBackup(db.Target(), options, QDateTime::currentDateTime()));
}

void TestQ3Backup::failedBackupLeavesNoFile()
{
    TQ3TestDatabase db;
    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    const TQ3DatabaseTarget missing{QDir(db.Folder()).filePath(QStringLiteral("manca.fdb")), {}, {}};
    try {
        Q3BackupDatabase(missing, backup);
        QFAIL("The backup of a missing database succeeded.");
    } catch (const EQ3Exception &e) {
        QVERIFY2(e.Message().startsWith(QStringLiteral("Backup non riuscito:\n")), qPrintable(e.Message()));
    }
    QVERIFY(!QFile::exists(backup));
}

QTEST_GUILESS_MAIN(TestQ3Backup)
#include "tst_q3backup.moc"
