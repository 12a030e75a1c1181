#include "Q3DatabaseFile.h"

#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

#include <ibase.h>

QString Q3FirebirdStatusText(const std::intptr_t *status)
{
    QStringList lines;
    char buffer[1024];
    const ISC_STATUS *vector = status;
    while (fb_interpret(buffer, sizeof buffer, &vector) > 0)
        lines << QString::fromUtf8(buffer);
    return lines.join(QLatin1Char('\n'));
}

QByteArray Q3AttachParameters(const TQ3DatabaseTarget &target)
{
    QByteArray dpb;
    dpb.append(char(isc_dpb_version1));
    auto add = [&dpb](char tag, const QByteArray &value) {
        dpb.append(tag);
        dpb.append(char(value.size()));
        dpb.append(value);
    };
    if (!target.User.isEmpty())
        add(char(isc_dpb_user_name), target.User.toUtf8());
    if (!target.Password.isEmpty())
        add(char(isc_dpb_password), target.Password.toUtf8());
    add(char(isc_dpb_lc_ctype), QByteArrayLiteral("UTF8"));
    return dpb;
}

void CreateQ3Database(const TQ3DatabaseTarget &target)
{
    QString sql = QStringLiteral("CREATE DATABASE %1").arg(QuotedStr(target.Database));
    if (!target.User.isEmpty())
        sql += QStringLiteral(" USER %1").arg(QuotedStr(target.User));
    if (!target.Password.isEmpty())
        sql += QStringLiteral(" PASSWORD %1").arg(QuotedStr(target.Password));
    sql += QStringLiteral(" PAGE_SIZE 16384 DEFAULT CHARACTER SET UTF8");
    const QByteArray statement = sql.toUtf8();

    ISC_STATUS_ARRAY status{};
    isc_db_handle db = 0;
    isc_tr_handle tr = 0;
    if (isc_dsql_execute_immediate(status, &db, &tr, 0, statement.constData(), SQL_DIALECT_V6, nullptr))
        throw EQ3Exception(QStringLiteral("Impossibile creare il database \"%1\":\n%2")
                               .arg(target.Database, Q3FirebirdStatusText(status)));
    isc_detach_database(status, &db);
    DisableQ3AutomaticSweep(target);
}

void DisableQ3AutomaticSweep(const TQ3DatabaseTarget &target)
{
    const QByteArray name = target.Database.toUtf8();
    QByteArray dpb = Q3AttachParameters(target);
    dpb.append(char(isc_dpb_sweep_interval));
    dpb.append(char(4));
    dpb.append(QByteArray(4, '\0'));
    ISC_STATUS_ARRAY status{};
    isc_db_handle db = 0;
    if (isc_attach_database(status, 0, name.constData(), &db, short(dpb.size()), dpb.constData()))
        throw EQ3Exception(QStringLiteral("Impossibile impostare il database \"%1\":\n%2")
                               .arg(target.Database, Q3FirebirdStatusText(status)));
    isc_detach_database(status, &db);
}

void DropQ3Database(const TQ3DatabaseTarget &target)
{
    const QByteArray name = target.Database.toUtf8();
    const QByteArray dpb = Q3AttachParameters(target);
    ISC_STATUS_ARRAY status{};
    isc_db_handle db = 0;
    if (isc_attach_database(status, 0, name.constData(), &db, short(dpb.size()), dpb.constData())
        || isc_drop_database(status, &db))
        throw EQ3Exception(QStringLiteral("Impossibile eliminare il database \"%1\":\n%2")
                               .arg(target.Database, Q3FirebirdStatusText(status)));
}

bool Q3DatabaseFileMissing(const TQ3DatabaseTarget &target)
{
    return !target.IsRemote() && !QFileInfo::exists(target.Database);
}

namespace {

QString FileImpostazioni()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return QDir(folder).filePath(QStringLiteral("quillo3.ini"));
}

const QString ChiaveDatabase = QStringLiteral("Avvio/Database");

} // namespace

QString Q3DatabaseAllAvvio()
{
    return QSettings(FileImpostazioni(), QSettings::IniFormat).value(ChiaveDatabase).toString();
}

void ImpostaQ3DatabaseAllAvvio(const QString &database)
{
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    QSettings settings(FileImpostazioni(), QSettings::IniFormat);
    settings.setValue(ChiaveDatabase, database);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        throw EQ3Exception(QStringLiteral("Impossibile registrare il database da usare al prossimo avvio."));
}
