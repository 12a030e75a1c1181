#include "Q3Backup.h"

#include "Q3ArchivioOpzioni.h"
#include "Q3DatabaseFile.h"
#include "Q3Exception.h"
#include "Q3SchemaUpgrade.h"
#include "Q3Sql.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>

#include <ibase.h>

namespace {

// "host" or "host/port", and the path on that server, of a server's database.
struct TServerPath
{
    QString Server;
    QString Path;
};

TServerPath SplitServer(const TQ3DatabaseTarget &target)
{
    if (!target.IsRemote())
        return {QString(), target.Database};
    const qsizetype colon = target.Database.indexOf(QLatin1Char(':'));
    return {target.Database.left(colon), target.Database.mid(colon + 1)};
}

void AppendString(QByteArray &buffer, char tag, const QString &value)
{
    const QByteArray bytes = value.toUtf8();
    buffer.append(tag);
    buffer.append(char(bytes.size() & 0xFF));
    buffer.append(char((bytes.size() >> 8) & 0xFF));
    buffer.append(bytes);
}

void AppendNumber(QByteArray &buffer, char tag, quint32 value)
{
    buffer.append(tag);
    for (int shift = 0; shift < 32; shift += 8)
        buffer.append(char((value >> shift) & 0xFF));
}

// An attachment to the service manager of the target's engine: the embedded
// one in this process, or the server's.
class TServiceManager
{
public:
    explicit TServiceManager(const TQ3DatabaseTarget &target)
    {
        const TServerPath where = SplitServer(target);
        const QByteArray name = where.Server.isEmpty() ? QByteArrayLiteral("service_mgr")
                                                       : where.Server.toUtf8() + QByteArrayLiteral(":service_mgr");
        QByteArray spb;
        spb.append(char(isc_spb_version));
        spb.append(char(isc_spb_current_version));
        auto add = [&spb](char tag, const QByteArray &value) {
            spb.append(tag);
            spb.append(char(value.size()));
            spb.append(value);
        };
        const QString user =
            target.User.isEmpty() ? qEnvironmentVariable("ISC_USER", QStringLiteral("SYSDBA")) : target.User;
        add(char(isc_spb_user_name), user.toUtf8());
        if (!target.Password.isEmpty())
            add(char(isc_spb_password), target.Password.toUtf8());
        spb.append(char(isc_spb_utf8_filename));
        spb.append(char(0));
        ISC_STATUS_ARRAY status{};
        if (isc_service_attach(status, 0, name.constData(), &m_handle, ushort(spb.size()), spb.constData()))
            throw EQ3Exception(QStringLiteral("Impossibile raggiungere il servizio di backup di Firebird:\n%1")
                                   .arg(Q3FirebirdStatusText(status)));
    }

    ~TServiceManager()
    {
        ISC_STATUS_ARRAY status{};
        isc_service_detach(status, &m_handle);
    }

    TServiceManager(const TServiceManager &) = delete;
    TServiceManager &operator=(const TServiceManager &) = delete;

    // Starts the request and reads its report to the end; each line goes to
    // the callback. Raises EQ3Exception with the service's reason when it failed.
    void Run(const QByteArray &request, const std::function<void(const QString &)> &line)
    {
        ISC_STATUS_ARRAY status{};
        if (isc_service_start(status, &m_handle, nullptr, ushort(request.size()), request.constData()))
            throw EQ3Exception(Q3FirebirdStatusText(status));
        const char item = char(isc_info_svc_line);
        QByteArray buffer(16384, '\0');
        for (;;) {
            if (isc_service_query(status, &m_handle, nullptr, 0, nullptr, 1, &item, ushort(buffer.size()),
                                  buffer.data()))
                throw EQ3Exception(Q3FirebirdStatusText(status));
            const auto *p = reinterpret_cast<const uchar *>(buffer.constData());
            if (p[0] != isc_info_svc_line)
                throw EQ3Exception(QStringLiteral("Risposta inattesa dal servizio di backup di Firebird."));
            const int length = p[1] | (p[2] << 8);
            if (length == 0)
                return;
            line(QString::fromUtf8(buffer.constData() + 3, length));
        }
    }

private:
    isc_svc_handle m_handle = 0;
};

// The tables of the database, which a backup or restore goes through.
int TableCount(const TQ3DatabaseTarget &target)
{
    TQ3Connection connection;
    connection.SetConnectionString(target.ConnectionString());
    connection.Open();
    return QueryScalar(connection.Database(),
                       QStringLiteral("SELECT COUNT(*) FROM RDB$RELATIONS WHERE "
                                      "COALESCE(RDB$SYSTEM_FLAG, 0) = 0 AND RDB$VIEW_BLR IS NULL"))
        .toInt();
}

// Runs a backup or restore request of the running database with its
// progress: the tables whose data the report has gone through.
QString RunWithProgress(const TQ3DatabaseTarget &running, const QByteArray &request, const TQ3BackupProgress &progress)
{
    const int total = progress ? TableCount(running) : 0;
    TServiceManager service(running);
    int tables = 0;
    QString last;
    service.Run(request, [&](const QString &line) {
        last = line.trimmed();
        if (last.contains(QLatin1String("data for table")))
            tables = qMin(tables + 1, total);
        if (progress)
            progress(tables, total, last);
    });
    // A restore reports no data for an empty table: at the end all are done.
    if (progress && tables < total)
        progress(total, total, last);
    return last;
}

QString Normalized(const TQ3DatabaseTarget &target)
{
    if (target.IsRemote())
        return target.Database;
    const QFileInfo file(target.Database);
    return file.exists() ? file.canonicalFilePath() : file.absoluteFilePath();
}

bool SameDatabase(const TQ3DatabaseTarget &a, const TQ3DatabaseTarget &b)
{
    return Normalized(a).compare(Normalized(b), Qt::CaseSensitive) == 0;
}

QStringList TableVersions(const TQ3DatabaseTarget &target)
{
    TQ3Connection connection;
    connection.SetConnectionString(target.ConnectionString());
    connection.Open();
    const QSqlDatabase db = connection.Database();
    if (!Q3TableExists(db, QStringLiteral("TABLE_VERSION")))
        return {};
    QSqlQuery query = OpenQuery(db, QStringLiteral("SELECT TABELLA, VERSIONE FROM TABLE_VERSION ORDER BY TABELLA"));
    QStringList rows;
    while (query.next())
        rows << query.value(0).toString().trimmed() + QLatin1Char('=') + query.value(1).toString().trimmed();
    return rows;
}

// Removes what a failed restore may have made; nothing else is there.
void RemoveRestored(const TQ3DatabaseTarget &made)
{
    try {
        DropQ3Database(made);
    } catch (const EQ3Exception &) {
        if (!made.IsRemote())
            QFile::remove(made.Database);
    }
}

// Checks the restored database against the running one; answers what is wrong, or nothing.
QString CheckRestored(const TQ3DatabaseTarget &running, const TQ3DatabaseTarget &made)
{
    QStringList restored;
    try {
        restored = TableVersions(made);
    } catch (const std::exception &e) {
        return QStringLiteral("Il database ripristinato non si apre:\n%1").arg(ExceptionMessage(e));
    }
    if (restored.isEmpty())
        return QString::fromUtf8(Q3MsgBackupNonValido)
               + QStringLiteral("\nIl database ripristinato non contiene le versioni delle tabelle di Quillo 3.");
    const QStringList current = TableVersions(running);
    if (restored != current)
        return QStringLiteral("Il database ripristinato ha uno schema diverso da quello del database in uso "
                              "(versioni delle tabelle: %1; attese: %2). Aggiornarlo con la versione di Quillo 3 "
                              "che lo ha creato, oppure usare un backup recente.")
            .arg(restored.join(QStringLiteral(", ")), current.join(QStringLiteral(", ")));
    return {};
}

const QString AutoBackupKey = QStringLiteral("BACKUP_AUTOMATICO");
const QString FolderKey = QStringLiteral("BACKUP_CARTELLA");
const QString CopiesKey = QStringLiteral("BACKUP_COPIE");

void KeepToOwner(const QString &file)
{
    QFile made(file);
    if (made.open(QIODevice::Append))
        made.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

} // namespace

TQ3BackupResult Q3BackupDatabase(const TQ3DatabaseTarget &target, const QString &backupFile,
                                 const TQ3BackupProgress &progress)
{
    QByteArray request;
    request.append(char(isc_action_svc_backup));
    AppendString(request, char(isc_spb_dbname), SplitServer(target).Path);
    AppendString(request, char(isc_spb_bkp_file), backupFile);
    request.append(char(isc_spb_verbose));
    // The backup holds the users' password hashes: a file this process
    // writes is its user's alone, made so before anything is in it.
    const bool local = !target.IsRemote();
    const bool existed = QFileInfo::exists(backupFile);
    if (local)
        KeepToOwner(backupFile);
    QString last;
    try {
        last = RunWithProgress(target, request, progress);
    } catch (const EQ3Exception &e) {
        if (local && !existed)
            QFile::remove(backupFile);
        throw EQ3Exception(QStringLiteral("Backup non riuscito:\n%1").arg(e.Message()));
    }
    // The service's last line tells the size written, also of a file on a
    // server that this computer cannot see.
    static const QRegularExpression written(QStringLiteral("(\\d+) bytes written"));
    const QRegularExpressionMatch size = written.match(last);
    return {backupFile, size.hasMatch() ? size.captured(1).toLongLong() : QFileInfo(backupFile).size()};
}

TQ3DatabaseTarget Q3RestoreTarget(const TQ3DatabaseTarget &running, const QString &newFile)
{
    TQ3DatabaseTarget made = running;
    const TServerPath where = SplitServer(running);
    made.Database = where.Server.isEmpty() ? newFile : where.Server + QLatin1Char(':') + newFile;
    return made;
}

TQ3DatabaseTarget Q3RestoreDatabase(const TQ3DatabaseTarget &running, const QString &backupFile, const QString &newFile,
                                    const TQ3BackupProgress &progress)
{
    const TQ3DatabaseTarget made = Q3RestoreTarget(running, newFile);
    if (SameDatabase(running, made))
        throw EQ3Exception(QString::fromUtf8(Q3MsgRipristinoSuDatabaseInUso));
    if (QFileInfo::exists(newFile))
        throw EQ3Exception(QString::fromUtf8(Q3MsgRipristinoSuFileEsistente).arg(newFile));

    QByteArray request;
    request.append(char(isc_action_svc_restore));
    AppendString(request, char(isc_spb_bkp_file), backupFile);
    AppendString(request, char(isc_spb_dbname), newFile);
    AppendNumber(request, char(isc_spb_options), isc_spb_res_create);
    request.append(char(isc_spb_verbose));
    bool created = false;
    try {
        RunWithProgress(running, request, [&](int tables, int total, const QString &line) {
            created = created || line.contains(QLatin1String("created database"));
            if (progress)
                progress(tables, total, line);
        });
    } catch (const EQ3Exception &e) {
        // A file the service cannot read as a backup stops it before any
        // database is made; a new file it cannot make is named in its reason.
        if (!created && !e.Message().contains(newFile))
            throw EQ3Exception(QString::fromUtf8(Q3MsgBackupNonValido) + QLatin1Char('\n') + e.Message());
        RemoveRestored(made);
        throw EQ3Exception(QStringLiteral("Ripristino non riuscito:\n%1").arg(e.Message()));
    }
    const QString wrong = CheckRestored(running, made);
    if (!wrong.isEmpty()) {
        RemoveRestored(made);
        throw EQ3Exception(wrong + QStringLiteral("\nIl file ripristinato è stato eliminato."));
    }
    DisableQ3AutomaticSweep(made);
    return made;
}

TQ3AutoBackupOptions TQ3AutoBackupOptions::Read(const QSqlDatabase &db)
{
    TQ3AutoBackupOptions options;
    options.Attivo = Q3OpzioneVera(Q3LeggiOpzione(db, AutoBackupKey));
    options.Cartella = Q3LeggiOpzione(db, FolderKey);
    bool number = false;
    const int copies = Q3LeggiOpzione(db, CopiesKey).toInt(&number);
    if (number && copies > 0)
        options.Copie = copies;
    return options;
}

void TQ3AutoBackupOptions::Write(const QSqlDatabase &db) const
{
    Q3ScriviOpzioni(db, {{AutoBackupKey, Attivo ? QStringLiteral("True") : QStringLiteral("False")},
                         {FolderKey, Cartella},
                         {CopiesKey, QString::number(Copie)}});
}

QString Q3AutoBackupFileName(const QDateTime &when)
{
    return QStringLiteral("quillo3-%1.fbk").arg(when.toString(QStringLiteral("yyyy-MM-dd-HHmm")));
}

TQ3BackupResult Q3RunAutoBackup(const TQ3DatabaseTarget &target, const TQ3AutoBackupOptions &options,
                                const QDateTime &when, const TQ3BackupProgress &progress)
{
    if (options.Cartella.trimmed().isEmpty())
        throw EQ3Exception(QStringLiteral("Backup automatico: nessuna cartella indicata nelle opzioni."));
    const QDir folder(options.Cartella);
    // A server's folder is the server's own, which the server must find.
    if (!target.IsRemote() && !folder.exists() && !QDir().mkpath(folder.path()))
        throw EQ3Exception(
            QStringLiteral("Backup automatico: impossibile creare la cartella \"%1\".").arg(folder.path()));
    const TQ3BackupResult made = Q3BackupDatabase(target, folder.filePath(Q3AutoBackupFileName(when)), progress);

    // The names sort by their time: the oldest come first. A server's folder
    // that this computer cannot see keeps its copies.
    static const QRegularExpression automatic(QStringLiteral("^quillo3-\\d{4}-\\d{2}-\\d{2}-\\d{4}\\.fbk$"));
    QStringList copies = folder.entryList({QStringLiteral("quillo3-*.fbk")}, QDir::Files, QDir::Name);
    copies.removeIf([](const QString &name) { return !automatic.match(name).hasMatch(); });
    for (qsizetype i = 0; i + options.Copie < copies.size(); ++i) {
        if (!QFile::remove(folder.filePath(copies.at(i))))
            throw EQ3Exception(QStringLiteral("Backup automatico eseguito in \"%1\", ma impossibile eliminare la "
                                              "copia più vecchia \"%2\".")
                                   .arg(made.File, copies.at(i)));
    }
    return made;
}

QString Q3BackupSizeText(qint64 bytes)
{
    return QLocale(QLocale::Italian, QLocale::Italy).formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}
