#pragma once

#include "Q3Connection.h"

#include <QDateTime>
#include <QSqlDatabase>
#include <QString>

#include <functional>

// Backup and restore through Firebird's own backup service (the engine's
// gbak, run by the embedded engine for a file, by the server for a server's
// database): never a copy of a live file. For a server's database the backup
// file and the new database are paths of the server's machine, which the
// server's process must be able to read and write; the credentials travel in
// the service's attachment, never on a command line.

// One line of the service's report, how many tables' data it has gone
// through so far, and how many it goes through in all.
using TQ3BackupProgress = std::function<void(int tablesDone, int tables, const QString &line)>;

// A backup made: its file and size in bytes (as the service wrote them).
struct Q3_EXPORT TQ3BackupResult
{
    QString File;
    qint64 Size = 0;
};

// Backs the target's database up into the file (replaced when it exists).
// Raises EQ3Exception with Firebird's reason when it fails.
Q3_EXPORT TQ3BackupResult Q3BackupDatabase(const TQ3DatabaseTarget &target, const QString &backupFile,
                                           const TQ3BackupProgress &progress = {});

// The database a restore next to the running one makes: the same server and
// credentials for a server's database, the file itself otherwise.
Q3_EXPORT TQ3DatabaseTarget Q3RestoreTarget(const TQ3DatabaseTarget &running, const QString &newFile);

// Restores the backup into a new database next to the running one (see
// Q3RestoreTarget), then checks that the new database opens and that its
// schema is the running database's (the same TABLE_VERSION rows). Refuses an
// existing file and the database in use; when the file is not a backup, or
// the check fails, nothing is left behind. Raises EQ3Exception with the
// reason; answers the new database.
Q3_EXPORT TQ3DatabaseTarget Q3RestoreDatabase(const TQ3DatabaseTarget &running, const QString &backupFile,
                                              const QString &newFile, const TQ3BackupProgress &progress = {});

inline constexpr char Q3MsgBackupNonValido[] = "Il file scelto non è un backup di Quillo 3 valido.";
inline constexpr char Q3MsgRipristinoSuDatabaseInUso[] =
    "Impossibile ripristinare sul database in uso: scegliere un nuovo file di database.";
inline constexpr char Q3MsgRipristinoSuFileEsistente[] =
    "Il file \"%1\" esiste già: il ripristino crea sempre un nuovo file di database.";

// The automatic backup on exit, as the options store OPZIONI keeps it
// (BACKUP_AUTOMATICO "True"/"False", BACKUP_CARTELLA, BACKUP_COPIE).
struct Q3_EXPORT TQ3AutoBackupOptions
{
    bool Attivo = false;
    QString Cartella;
    int Copie = 5;

    // Missing options read as their defaults; raises EQ3Exception when the store cannot be read.
    static TQ3AutoBackupOptions Read(const QSqlDatabase &db);
    // Adds or updates the three options; raises EQ3Exception.
    void Write(const QSqlDatabase &db) const;
};

// The name of an automatic backup made at that time: quillo3-yyyy-MM-dd-HHmm.fbk.
Q3_EXPORT QString Q3AutoBackupFileName(const QDateTime &when);

// Makes an automatic backup into the options' folder (made when missing),
// named after the time, and removes the oldest automatic backups there beyond
// the options' number of copies. For a server's database the folder is on
// the server, which must have it; its oldest copies are removed when this
// computer sees the folder too (the same machine, or a shared path).
// Raises EQ3Exception.
Q3_EXPORT TQ3BackupResult Q3RunAutoBackup(const TQ3DatabaseTarget &target, const TQ3AutoBackupOptions &options,
                                          const QDateTime &when, const TQ3BackupProgress &progress = {});

// A size in bytes as the user reads it ("12,5 MB").
Q3_EXPORT QString Q3BackupSizeText(qint64 bytes);
