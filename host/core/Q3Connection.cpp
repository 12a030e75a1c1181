#include "Q3Connection.h"

#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QAtomicInt>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>

namespace {

QAtomicInt connectionCounter;

const QString ProviderFirebird = QStringLiteral("Firebird");

// The "key=value;" pairs of a connection string. A value that holds a ";"
// or a quote, or starts or ends with a blank, is written between double
// quotes (or single ones), the quote inside it doubled.
QString ConnectionValue(const QString &connectionString, const QString &key)
{
    qsizetype at = 0;
    const qsizetype size = connectionString.size();
    while (at < size) {
        const qsizetype eq = connectionString.indexOf(QLatin1Char('='), at);
        if (eq < 0)
            break;
        const QString name = connectionString.mid(at, eq - at).trimmed();
        QString value;
        at = eq + 1;
        const QChar quote = at < size ? connectionString.at(at) : QChar();
        if (quote == QLatin1Char('"') || quote == QLatin1Char('\'')) {
            for (++at; at < size; ++at) {
                if (connectionString.at(at) != quote) {
                    value += connectionString.at(at);
                } else if (at + 1 < size && connectionString.at(at + 1) == quote) {
                    value += quote;
                    ++at;
                } else {
                    break;
                }
            }
            const qsizetype end = connectionString.indexOf(QLatin1Char(';'), at);
            at = end < 0 ? size : end + 1;
        } else {
            const qsizetype end = connectionString.indexOf(QLatin1Char(';'), at);
            value = connectionString.mid(at, end < 0 ? -1 : end - at);
            at = end < 0 ? size : end + 1;
        }
        if (name.compare(key, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

QString ConnectionPart(const QString &key, const QString &value)
{
    const bool quoted = value.contains(QLatin1Char(';')) || value.startsWith(QLatin1Char('"'))
                        || value.startsWith(QLatin1Char('\'')) || value != value.trimmed();
    if (!quoted)
        return key + QLatin1Char('=') + value + QLatin1Char(';');
    QString inner = value;
    inner.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return key + QStringLiteral("=\"") + inner + QStringLiteral("\";");
}

} // namespace

bool TQ3DatabaseTarget::IsRemote() const
{
    static const QRegularExpression remote(QStringLiteral("^[^/\\\\:]+(/[0-9]+)?:.+"));
    return remote.match(Database).hasMatch();
}

QString TQ3DatabaseTarget::ConnectionString() const
{
    QString s = ConnectionPart(QStringLiteral("Provider"), ProviderFirebird)
                + ConnectionPart(QStringLiteral("Data Source"), Database);
    if (!User.isEmpty())
        s += ConnectionPart(QStringLiteral("User ID"), User);
    if (!Password.isEmpty())
        s += ConnectionPart(QStringLiteral("Password"), Password);
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
    m_lost = false;
    m_lossesSeen = Q3ConnectionLosses();
    if (!db.open())
        throw EQ3Exception(
            tr("Impossibile aprire il database \"%1\":\n%2").arg(target.Database, SqlDatabaseText(db.lastError())));
}

void TQ3Connection::Close()
{
    m_lost = false;
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
    if (m_lossesSeen != Q3ConnectionLosses())
        CheckAfterLoss();
    return QSqlDatabase::database(m_connectionName, false);
}

void TQ3Connection::CheckAfterLoss() const
{
    const int losses = Q3ConnectionLosses();
    QSqlDatabase db = QSqlDatabase::database(m_connectionName, false);
    if (!m_lost) {
        if (!db.isOpen() || !TQ3DatabaseTarget::FromConnectionString(m_connectionString).IsRemote()
            || QSqlQuery(db).exec(QStringLiteral("SELECT 1 FROM RDB$DATABASE"))) {
            m_lossesSeen = losses;
            return;
        }
        m_lost = true;
    }
    db.close();
    // A server that has just come back may turn the first attempt away while
    // it starts: two more, a moment apart, before telling the user.
    for (int tentativo = 1; !db.open(); ++tentativo) {
        if (tentativo == 3)
            throw EQ3Exception(QString::fromUtf8(Q3MsgConnessioneNonRipristinata) + QLatin1Char('\n')
                               + SqlDatabaseText(db.lastError()));
        QThread::msleep(250);
    }
    m_lost = false;
    m_lossesSeen = losses;
}
