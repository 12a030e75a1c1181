#include "Q3Sql.h"

#include "Q3Exception.h"

#include <QAtomicInt>
#include <QSqlError>

namespace {

QAtomicInt connectionLosses;

// Firebird's SQLCODE for the errors after which an attachment is useless.
const QString SqlCodeFatal = QStringLiteral("-902");

} // namespace

QString QuotedStr(const QString &value)
{
    QString quoted = value;
    quoted.replace(QLatin1Char('\''), QStringLiteral("''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

bool Q3ConnectionLost(const QSqlError &error)
{
    return error.nativeErrorCode() == SqlCodeFatal;
}

int Q3ConnectionLosses()
{
    return connectionLosses.loadRelaxed();
}

QString SqlErrorText(const QSqlError &error)
{
    const QString text = SqlDatabaseText(error);
    if (!Q3ConnectionLost(error))
        return text;
    connectionLosses.fetchAndAddRelaxed(1);
    return QString::fromUtf8(Q3MsgConnessioneInterrotta) + QLatin1Char('\n') + text;
}

QString SqlDatabaseText(const QSqlError &error)
{
    QString text = error.databaseText().trimmed();
    const QString driver = error.driverText().trimmed();
    if (text.isEmpty())
        return driver;
    if (!driver.isEmpty() && !text.contains(driver))
        text = driver + QLatin1Char('\n') + text;
    return text;
}

void ExecSQL(const QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query(db);
    const TQ3AttesaLimitata attesa(db);
    if (!query.exec(sql))
        throw EQ3Exception(attesa.TestoErrore(query.lastError()));
}

QSqlQuery OpenQuery(const QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.exec(sql))
        throw EQ3Exception(SqlErrorText(query.lastError()));
    return query;
}

QVariant QueryScalar(const QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query = OpenQuery(db, sql);
    return query.next() ? query.value(0) : QVariant();
}

int FieldIndex(const QSqlRecord &layout, const QString &field)
{
    const int index = layout.indexOf(field);
    if (index < 0)
        throw EQ3Exception(QStringLiteral("Campo \"%1\" non trovato.").arg(field));
    return index;
}

TQ3PreparedQuery::TQ3PreparedQuery(const QSqlDatabase &db, const QString &sql) : m_db(db), m_query(db)
{
    m_query.setForwardOnly(true);
    if (!m_query.prepare(sql))
        throw EQ3Exception(SqlErrorText(m_query.lastError()));
}

QSqlQuery &TQ3PreparedQuery::Run(const QVariantList &values)
{
    m_query.finish();
    for (int i = 0; i < values.size(); ++i)
        m_query.bindValue(i, values.at(i));
    const TQ3AttesaLimitata attesa(m_db);
    if (!m_query.exec())
        throw EQ3Exception(attesa.TestoErrore(m_query.lastError()));
    return m_query;
}

TQ3Transaction::TQ3Transaction(QSqlDatabase db, TQ3Attesa attesa) : m_db(std::move(db)), m_attesa(attesa)
{
    if (!m_db.transaction())
        throw EQ3Exception(SqlErrorText(m_db.lastError()));
    m_open = true;
    Q3InizioTransazioneGuardata(m_db, m_attesa);
}

TQ3Transaction::~TQ3Transaction()
{
    if (m_open) {
        Chiudi();
        m_db.rollback();
    }
}

void TQ3Transaction::Commit()
{
    if (!m_open)
        return;
    if (!m_db.commit())
        throw EQ3Exception(SqlErrorText(m_db.lastError()));
    Chiudi();
}

void TQ3Transaction::Rollback()
{
    if (!m_open)
        return;
    Chiudi();
    m_db.rollback();
}

void TQ3Transaction::Chiudi()
{
    m_open = false;
    Q3FineTransazioneGuardata(m_db, m_attesa);
}

// The driver refuses a second transaction on a connection that has one open:
// the reads then run in that one.
TQ3LetturaCoerente::TQ3LetturaCoerente(QSqlDatabase db) : m_db(std::move(db)), m_propria(m_db.transaction()) {}

TQ3LetturaCoerente::~TQ3LetturaCoerente()
{
    // Nothing was written: ending it either way leaves the database as it is.
    if (m_propria && !m_db.commit())
        m_db.rollback();
}
