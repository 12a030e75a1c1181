#include "Q3Connection.h"

#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QAtomicInt>
#include <QRegularExpression>
#include <QSqlError>

namespace {

QAtomicInt connectionCounter;

const QString ProviderFirebird = QStringLiteral("Firebird");

QString ConnectionValue(const QString &connectionString, const QString &key)
{
    for (const QString &part : connectionString.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const qsizetype eq = part.indexOf(QLatin1Char('='));
        if (eq > 0 && part.left(eq).trimmed().compare(key, Qt::CaseInsensitive) == 0)
            return part.mid(eq + 1);
    }
    return {};
}

} // namespace

bool TQ3DatabaseTarget::IsRemote() const
{
    static const QRegularExpression remote(QStringLiteral("^[^/\\\\:]+(/[0-9]+)?:.+"));
    return remote.match(Database).hasMatch();
}

QString TQ3DatabaseTarget::ConnectionString() const
{
    QString s = QStringLiteral("Provider=%1;Data Source=%2;").arg(ProviderFirebird, Database);
    if (!User.isEmpty())
        s += QStringLiteral("User ID=%1;").arg(User);
    if (!Password.isEmpty())
        s += QStringLiteral("Password=%1;").arg(Password);
    return s;
}

TQ3DatabaseTarget TQ3DatabaseTarget::FromConnectionString(const QString &connectionString)
{
    TQ3DatabaseTarget target;
    target.Database = ConnectionValue(connectionString, QStringLiteral("Data Source"));
    target.User = ConnectionValue(connectionString, QStringLiteral("User ID"));
    target.Password = ConnectionValue(connectionString, QStringLiteral("Password"));
    return target;
}

TQ3Connection::TQ3Connection(QObject *owner)
    : QObject(owner),
      m_connectionName(QStringLiteral("q3connection_%1").arg(connectionCounter.fetchAndAddRelaxed(1) + 1))
{
    QSqlDatabase::addDatabase(QStringLiteral("QIBASE"), m_connectionName);
}

TQ3Connection::~TQ3Connection()
{
    Close();
    QSqlDatabase::removeDatabase(m_connectionName);
}

void TQ3Connection::SetConnectionString(const QString &connectionString)
{
    m_connectionString = connectionString;
}

void TQ3Connection::Open()
{
    if (Connected())
        return;
    const QString provider = ConnectionValue(m_connectionString, QStringLiteral("Provider"));
    if (provider.compare(ProviderFirebird, Qt::CaseInsensitive) != 0)
        throw EQ3Exception(tr("Provider del database non supportato: \"%1\".").arg(provider));
    const TQ3DatabaseTarget target = TQ3DatabaseTarget::FromConnectionString(m_connectionString);
    QSqlDatabase db = QSqlDatabase::database(m_connectionName, false);
    if (!db.isValid())
        throw EQ3Exception(tr("Il driver Firebird di Qt (QIBASE) non è installato."));
    db.setDatabaseName(target.Database);
    db.setUserName(target.User);
    db.setPassword(target.Password);
    db.setConnectOptions(QStringLiteral("ISC_DPB_LC_CTYPE=UTF8"));
    if (!db.open())
        throw EQ3Exception(tr("Impossibile aprire il database \"%1\":\n%2")
                               .arg(target.Database, SqlErrorText(db.lastError())));
}

void TQ3Connection::Close()
{
    QSqlDatabase db = QSqlDatabase::database(m_connectionName, false);
    if (db.isOpen())
        db.close();
}

bool TQ3Connection::Connected() const
{
    return QSqlDatabase::database(m_connectionName, false).isOpen();
}

QSqlDatabase TQ3Connection::Database() const
{
    return QSqlDatabase::database(m_connectionName, false);
}
