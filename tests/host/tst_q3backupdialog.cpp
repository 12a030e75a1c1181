#include "Q3Backup.h"
#include "Q3BackupDialog.h"
#include "Q3BackupTestKit.h"
#include "Q3DatabaseFile.h"
#include "Q3Exception.h"
#include "Q3Host.h"
#include "Q3Messages.h"
#include "Q3RipristinoDialog.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3TestHost.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

// The backup and restore windows driven as a user would, the boxes answered
// by the test responder; and the automatic backup at the host's exit.
class TestQ3BackupDialog : public QObject
{
    Q_OBJECT

private slots:
    // The choice of the next start's database goes to a test folder of its own.
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init() { ImpostaQ3DatabaseAllAvvio(QString()); }
    void backupMakesTheChosenFileAndTellsItsSize();
    void backupOverAnExistingFileAsksFirst();
    void browseFillsTheChosenFile();
    void emptyFileIsAskedFor();
    void aServersPathsAreTheServers();
    void restoreMakesTheNewDatabaseAndOffersIt();
    void restoreDeclinedLeavesTheChoiceUnmade();
    void restoreOfAFileThatIsNotABackupShowsWhy();
    void restoreOverTheDatabaseInUseIsRefused();
    void entriesOpenTheWindowsModal();
    void autoBackupAtExitMakesACopy();
    void autoBackupFailureAtExitIsShownAndTheExitGoesOn();

private:
    static void Type(QWidget *window, const QString &field, const QString &text)
    {
        auto edit = window->findChild<QLineEdit *>(field);
        QVERIFY(edit);
        QVERIFY(edit->isEnabled());
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }
    // Clicks the button and waits until the job it started has ended.
    static void RunAndWait(TQ3BackupWindow *window, const QString &button)
    {
        auto run = window->findChild<QPushButton *>(button);
        QVERIFY(run);
        QVERIFY(run->isEnabled());
        QTest::mouseClick(run, Qt::LeftButton);
        if (window->Running()) {
            // Its inputs wait for the end, and the window stays open.
            QVERIFY(!run->isEnabled());
            QVERIFY(!window->findChild<QLineEdit *>(QStringLiteral("edtFileBackup"))->isEnabled());
            window->reject();
            QVERIFY(window->isVisible());
        }
        QTRY_VERIFY_WITH_TIMEOUT(!window->Running(), 60000);
        QVERIFY(run->isEnabled());
    }
    static QStringList Headless(const QString &database, const QString &passwordFile)
    {
        return {QStringLiteral("--headless"), QStringLiteral("--database"),      database,    QStringLiteral("--user"),
                QStringLiteral("admin"),      QStringLiteral("--password-file"), passwordFile};
    }
    // Fills the restore window's files and runs it to its end.
    static void Restore(TQ3RipristinoDialog *dialog, const QString &backup, const QString &newFile)
    {
        dialog->show();
        Type(dialog, QStringLiteral("edtFileBackup"), backup);
        Type(dialog, QStringLiteral("edtNuovoDatabase"), newFile);
        RunAndWait(dialog, QStringLiteral("btnEseguiRipristino"));
    }
    // A database the host made, with the automatic backup's options set.
    static QString HostDatabase(const QTemporaryDir &dir, const TQ3AutoBackupOptions &options);
};

void TestQ3BackupDialog::backupMakesTheChosenFileAndTellsItsSize()
{
    TQ3RecordingResponder responder;
    TQ3TestDatabase db;
    FillQ3BackupTestData(db.Target(), 100);
    TQ3BackupDialog dialog(db.Target());
    dialog.show();
    QCOMPARE(dialog.objectName(), QStringLiteral("Q3Backup"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Backup"));
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("lbledtFileBackup"))->buddy(),
             dialog.findChild<QLineEdit *>(QStringLiteral("edtFileBackup")));
    QVERIFY(dialog.findChild<QPushButton *>(QStringLiteral("btnSfogliaFileBackup")));

    const QString file = QDir(db.Folder()).filePath(QStringLiteral("mio backup.fbk"));
    Type(&dialog, QStringLiteral("edtFileBackup"), file);
    bool ran = false;
    connect(dialog.Job(), &TQ3BackupJob::Progress, this, [&ran] { ran = true; });
    RunAndWait(&dialog, QStringLiteral("btnEseguiBackup"));
    QVERIFY(ran);
    QVERIFY(QFile::exists(file));
    QCOMPARE(responder.Messages().size(), 1);
    const TQ3Message box = responder.Messages().first();
    QCOMPARE(box.Title, QStringLiteral("Informazioni"));
    QCOMPARE(box.Icon, TQ3MsgIcon::Information);
    QCOMPARE(box.Text,
             QStringLiteral("Backup completato: %1 (%2).").arg(file, Q3BackupSizeText(QFileInfo(file).size())));
    auto progress = dialog.findChild<QProgressBar *>(QStringLiteral("pbAvanzamento"));
    QVERIFY(progress->maximum() > 1);
    QCOMPARE(progress->value(), progress->maximum());
    QVERIFY(dialog.findChild<QPushButton *>(QStringLiteral("btnEseguiBackup"))->isEnabled());
}

void TestQ3BackupDialog::backupOverAnExistingFileAsksFirst()
{
    TQ3RecordingResponder responder;
    responder.Enqueue(TQ3MsgResult::No);
    TQ3TestDatabase db;
    const QString file = WriteQ3TestFile(db.Folder(), QStringLiteral("vecchio.fbk"), QStringLiteral("mio"));
    TQ3BackupDialog dialog(db.Target());
    dialog.show();
    Type(&dialog, QStringLiteral("edtFileBackup"), file);
    RunAndWait(&dialog, QStringLiteral("btnEseguiBackup"));
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().first().Title, QStringLiteral("Conferma"));
    QFile kept(file);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("mio"));
}

void TestQ3BackupDialog::browseFillsTheChosenFile()
{
    TQ3TestDatabase db;
    TQ3RipristinoDialog dialog(db.Target());
    dialog.show();
    const QString chosen = QDir(db.Folder()).filePath(QStringLiteral("scelto.fdb"));
    QString title;
    QTimer::singleShot(0, [&] {
        auto files = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!files)
            return;
        title = files->windowTitle();
        auto name = files->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name->setText(chosen);
        QTest::keyClick(name, Qt::Key_Return);
    });
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("btnSfogliaNuovoDatabase")), Qt::LeftButton);
    QCOMPARE(title, QStringLiteral("Nuovo file di database"));
    QCOMPARE(dialog.findChild<QLineEdit *>(QStringLiteral("edtNuovoDatabase"))->text(), chosen);
    QVERIFY(dialog.findChild<QLineEdit *>(QStringLiteral("edtFileBackup"))->text().isEmpty());
}

void TestQ3BackupDialog::emptyFileIsAskedFor()
{
    TQ3RecordingResponder responder;
    TQ3TestDatabase db;
    TQ3BackupDialog dialog(db.Target());
    dialog.show();
    Type(&dialog, QStringLiteral("edtFileBackup"), QStringLiteral("  "));
    RunAndWait(&dialog, QStringLiteral("btnEseguiBackup"));
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().first().Title, QStringLiteral("Attenzione"));
    QCOMPARE(responder.Messages().first().Text, QStringLiteral("Indicare il file di backup."));
    QVERIFY(QDir(db.Folder()).entryList({QStringLiteral("*.fbk")}, QDir::Files).isEmpty());
}

void TestQ3BackupDialog::aServersPathsAreTheServers()
{
    const TQ3DatabaseTarget server{QStringLiteral("dbserver/3050:/srv/quillo3.fdb"), QStringLiteral("U"),
                                   QStringLiteral("P")};
    TQ3BackupDialog backup(server);
    QCOMPARE(backup.findChild<QLabel *>(QStringLiteral("lbledtFileBackup"))->text(),
             QStringLiteral("File di backup (percorso sul server):"));
    QVERIFY(backup.findChild<QLineEdit *>(QStringLiteral("edtFileBackup"))->text().isEmpty());
    TQ3RipristinoDialog restore(server);
    QCOMPARE(restore.findChild<QLabel *>(QStringLiteral("lbledtNuovoDatabase"))->text(),
             QStringLiteral("Nuovo file di database (percorso sul server):"));
    QCOMPARE(Q3RestoreTarget(server, QStringLiteral("/srv/ripristinato.fdb")).Database,
             QStringLiteral("dbserver/3050:/srv/ripristinato.fdb"));
}

void TestQ3BackupDialog::restoreMakesTheNewDatabaseAndOffersIt()
{
    TQ3RecordingResponder responder;
    responder.Enqueue(TQ3MsgResult::Yes);
    TQ3TestDatabase db;
    FillQ3BackupTestData(db.Target(), 100);
    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    Q3BackupDatabase(db.Target(), backup);
    const QString restored = QDir(db.Folder()).filePath(QStringLiteral("ripristinato.fdb"));

    TQ3RipristinoDialog dialog(db.Target());
    QCOMPARE(dialog.objectName(), QStringLiteral("Q3Ripristino"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Ripristino"));
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("lbledtNuovoDatabase"))->buddy(),
             dialog.findChild<QLineEdit *>(QStringLiteral("edtNuovoDatabase")));
    Restore(&dialog, backup, restored);

    QCOMPARE(responder.Messages().size(), 2);
    QCOMPARE(responder.Messages().at(0).Title, QStringLiteral("Conferma"));
    QVERIFY(responder.Messages().at(0).Text.contains(restored));
    QCOMPARE(responder.Messages().at(1).Title, QStringLiteral("Informazioni"));
    QVERIFY(responder.Messages().at(1).Text.startsWith(
        QStringLiteral("Al prossimo avvio Quillo 3 userà il database ripristinato \"%1\".").arg(restored)));
    QCOMPARE(dialog.DatabaseScelto(), restored);
    // The next start without a database named opens the restored one.
    QCOMPARE(Q3DatabaseAllAvvio(), restored);
    QCOMPARE(DefaultQ3Database(), restored);
    // Once that file is gone, the default opens again rather than a new empty one there.
    QVERIFY(QFile::rename(restored, restored + QStringLiteral(".spostato")));
    QVERIFY(DefaultQ3Database().endsWith(QLatin1String("/quillo3.fdb")));
    QVERIFY(QFile::rename(restored + QStringLiteral(".spostato"), restored));
    QCOMPARE(Q3TableChecksums(TQ3DatabaseTarget{restored, {}, {}}), Q3TableChecksums(db.Target()));
    // The database in use is still the one the window was opened on.
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM PROVA_BACKUP")).toInt(), 100);
}

void TestQ3BackupDialog::restoreDeclinedLeavesTheChoiceUnmade()
{
    TQ3RecordingResponder responder;
    responder.Enqueue(TQ3MsgResult::No);
    TQ3TestDatabase db;
    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    Q3BackupDatabase(db.Target(), backup);
    const QString restored = QDir(db.Folder()).filePath(QStringLiteral("ripristinato.fdb"));
    TQ3RipristinoDialog dialog(db.Target());
    Restore(&dialog, backup, restored);
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().first().Title, QStringLiteral("Conferma"));
    QVERIFY(dialog.DatabaseScelto().isEmpty());
    QVERIFY(Q3DatabaseAllAvvio().isEmpty());
    QVERIFY(DefaultQ3Database().endsWith(QLatin1String("/quillo3.fdb")));
    QVERIFY(QFile::exists(restored));
}

void TestQ3BackupDialog::restoreOfAFileThatIsNotABackupShowsWhy()
{
    TQ3RecordingResponder responder;
    TQ3TestDatabase db;
    const QString junk = WriteQ3TestFile(db.Folder(), QStringLiteral("note.fbk"), QStringLiteral("appunti"));
    const QString restored = QDir(db.Folder()).filePath(QStringLiteral("ripristinato.fdb"));
    TQ3RipristinoDialog dialog(db.Target());
    Restore(&dialog, junk, restored);
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().first().Title, QStringLiteral("Errore"));
    QCOMPARE(responder.Messages().first().Icon, TQ3MsgIcon::Error);
    QVERIFY2(responder.Messages().first().Text.startsWith(
                 QStringLiteral("Il file scelto non è un backup di Quillo 3 valido.\n")),
             qPrintable(responder.Messages().first().Text));
    QVERIFY(!QFile::exists(restored));
    QCOMPARE(dialog.findChild<QProgressBar *>(QStringLiteral("pbAvanzamento"))->value(), 0);
}

void TestQ3BackupDialog::restoreOverTheDatabaseInUseIsRefused()
{
    TQ3RecordingResponder responder;
    TQ3TestDatabase db;
    const QString backup = QDir(db.Folder()).filePath(QStringLiteral("copia.fbk"));
    Q3BackupDatabase(db.Target(), backup);
    TQ3RipristinoDialog dialog(db.Target());
    Restore(&dialog, backup, db.Target().Database);
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().first().Title, QStringLiteral("Errore"));
    QCOMPARE(responder.Messages().first().Text,
             QStringLiteral("Impossibile ripristinare sul database in uso: scegliere un nuovo file di database."));
    QVERIFY(db.Connection()->Connected());
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM UTENTI")).toInt(), 1);
}

void TestQ3BackupDialog::entriesOpenTheWindowsModal()
{
    TQ3TestDatabase db;
    QStringList opened;
    for (auto entry : {&Q3ApriBackup, &Q3ApriRipristino}) {
        QTimer::singleShot(0, [&opened] {
            QWidget *modal = QApplication::activeModalWidget();
            opened << (modal ? modal->objectName() : QString());
            if (modal)
                QTest::mouseClick(modal->findChild<QPushButton *>(QStringLiteral("btnChiudi")), Qt::LeftButton);
        });
        entry(db.Target(), nullptr);
    }
    QCOMPARE(opened, QStringList({QStringLiteral("Q3Backup"), QStringLiteral("Q3Ripristino")}));
}

QString TestQ3BackupDialog::HostDatabase(const QTemporaryDir &dir, const TQ3AutoBackupOptions &options)
{
    const QString database = dir.filePath(QStringLiteral("quillo3.fdb"));
    const QString password = WriteQ3TestFile(dir.path(), QStringLiteral("password.txt"), QStringLiteral("Segreta1!"));
    const TQ3HostRun first = RunQuillo3Process(Headless(database, password));
    if (first.ExitCode != 0)
        throw EQ3Exception(first.StdErr);
    TQ3Connection connection;
    connection.SetConnectionString(TQ3DatabaseTarget{database, {}, {}}.ConnectionString());
    connection.Open();
    options.Write(connection.Database());
    return database;
}

void TestQ3BackupDialog::autoBackupAtExitMakesACopy()
{
    QTemporaryDir dir;
    TQ3AutoBackupOptions options;
    options.Attivo = true;
    options.Cartella = dir.filePath(QStringLiteral("copie"));
    const QString database = HostDatabase(dir, options);
    QVERIFY(!QDir(options.Cartella).exists());
    const TQ3HostRun run = RunQuillo3Process(Headless(database, dir.filePath(QStringLiteral("password.txt"))));
    QCOMPARE(run.ExitCode, 0);
    QVERIFY2(!run.StdErr.contains(QStringLiteral("Errore")), qPrintable(run.StdErr));
    const QStringList copies = QDir(options.Cartella).entryList({QStringLiteral("quillo3-*.fbk")}, QDir::Files);
    QCOMPARE(copies.size(), 1);
    QVERIFY(QFileInfo(QDir(options.Cartella).filePath(copies.first())).size() > 0);
}

void TestQ3BackupDialog::autoBackupFailureAtExitIsShownAndTheExitGoesOn()
{
    QTemporaryDir dir;
    TQ3AutoBackupOptions options;
    options.Attivo = true;
    // A folder that cannot be made: its parent is a file.
    options.Cartella =
        WriteQ3TestFile(dir.path(), QStringLiteral("file"), QStringLiteral("x")) + QStringLiteral("/copie");
    const QString database = HostDatabase(dir, options);
    const TQ3HostRun run = RunQuillo3Process(Headless(database, dir.filePath(QStringLiteral("password.txt"))));
    QCOMPARE(run.ExitCode, 0);
    QVERIFY2(run.StdErr.contains(QStringLiteral("Errore: Backup automatico non riuscito:")), qPrintable(run.StdErr));
}

QTEST_MAIN(TestQ3BackupDialog)
#include "tst_q3backupdialog.moc"
