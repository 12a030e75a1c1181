#include "Q3BackupAutomatico.h"

#include "Q3Backup.h"
#include "Q3BackupJob.h"
#include "Q3Exception.h"
#include "Q3Messages.h"

#include <QProgressDialog>

void Q3BackupAutomaticoAllUscita(const TQ3DatabaseTarget &target, const QSqlDatabase &db)
{
    TQ3AutoBackupOptions options;
    try {
        options = TQ3AutoBackupOptions::Read(db);
    } catch (const std::exception &e) {
        Q3ShowError(QStringLiteral("Backup automatico non eseguito: impossibile leggere le opzioni.\n%1")
                        .arg(ExceptionMessage(e)));
        return;
    }
    if (!options.Attivo)
        return;

    QProgressDialog window(QStringLiteral("Backup automatico del database in corso..."), QString(), 0, 0);
    window.setObjectName(QStringLiteral("Q3BackupAutomatico"));
    window.setWindowTitle(QStringLiteral("Backup automatico"));
    window.setMinimumDuration(0);
    TQ3BackupJob job;
    QObject::connect(&job, &TQ3BackupJob::Progress, &window, [&window](int done, int tables) {
        window.setMaximum(qMax(tables, 1));
        window.setValue(done);
    });
    bool succeeded = false;
    QString text;
    QObject::connect(&job, &TQ3BackupJob::Finished, &window, [&](bool ok, const QString &message) {
        succeeded = ok;
        text = message;
    });
    job.Start([target, options](const TQ3BackupProgress &progress) {
        return Q3RunAutoBackup(target, options, QDateTime::currentDateTime(), progress).File;
    });
    job.Wait();
    window.close();
    if (!succeeded)
        Q3ShowError(QStringLiteral("Backup automatico non riuscito:\n%1").arg(text));
}
