#include "Q3Users.h"

#include "Q3Exception.h"
#include "Q3Sql.h"

#include <sodium.h>

#include <algorithm>

namespace {

QString currentUserName;

// The row of a name in ACCESSI_FALLITI: upper case, as long as a user name can be.
QString ThrottleKey(const QString &userName)
{
    return userName.toUpper().left(50);
}

void InitSodium()
{
    if (sodium_init() < 0)
        throw EQ3Exception(QStringLiteral("Impossibile inizializzare la libreria crittografica."));
}

} // namespace

QString Q3HashPassword(const QString &password)
{
    InitSodium();
    const QByteArray bytes = password.toUtf8();
    char hash[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str(hash, bytes.constData(), quint64(bytes.size()), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE)
        != 0)
        throw EQ3Exception(QStringLiteral("Memoria insufficiente per calcolare la password."));
    return QString::fromLatin1(hash);
}

bool Q3VerifyPassword(const QString &hash, const QString &password)
{
    InitSodium();
    const QByteArray stored = hash.toLatin1();
    const QByteArray bytes = password.toUtf8();
    return !stored.isEmpty()
           && crypto_pwhash_str_verify(stored.constData(), bytes.constData(), quint64(bytes.size())) == 0;
}

TQ3Users::TQ3Users(QSqlDatabase db) : m_db(db), m_throttle(std::move(db)) {}

TQ3Users::TStoredUser TQ3Users::Stored(const QString &userName) const
{
    QSqlQuery query = OpenQuery(m_db, QStringLiteral("SELECT USER_NAME, PASSWORD_HASH FROM UTENTI "
                                                     "WHERE UPPER(USER_NAME) = %1 AND ATTIVO = 'True'")
                                          .arg(QuotedStr(userName.toUpper())));
    TStoredUser user;
    user.Found = query.next();
    if (user.Found) {
        user.Name = query.value(0).toString();
        user.Hash = query.value(1).toString();
    }
    return user;
}

bool TQ3Users::NeedsPassword(const QString &userName) const
{
    const TStoredUser user = Stored(userName);
    return user.Found && user.Hash.isEmpty();
}

void TQ3Users::SetPassword(const QString &userName, const QString &password)
{
    if (password.size() < Q3MinPasswordLength)
        throw EQ3Rifiuto(QStringLiteral("La password deve contenere almeno %1 caratteri.").arg(Q3MinPasswordLength));
    ExecSQL(m_db, QStringLiteral("UPDATE UTENTI SET PASSWORD_HASH = %1 WHERE UPPER(USER_NAME) = %2")
                      .arg(QuotedStr(Q3HashPassword(password)), QuotedStr(userName.toUpper())));
}

QString TQ3Users::Login(const QString &userName, const QString &password)
{
    if (m_throttle.WaitSeconds(userName) > 0)
        return {};
    const TStoredUser user = Stored(userName);
    if (!user.Found || !Q3VerifyPassword(user.Hash, password)) {
        m_throttle.Failed(userName);
        return {};
    }
    m_throttle.Succeeded(userName);
    return user.Name;
}

TQ3LoginThrottle::TQ3LoginThrottle(QSqlDatabase db) : m_db(std::move(db)) {}

int TQ3LoginThrottle::Failures(const QString &userName) const
{
    return QueryScalar(m_db, QStringLiteral("SELECT TENTATIVI FROM ACCESSI_FALLITI WHERE USER_NAME = %1")
                                 .arg(QuotedStr(ThrottleKey(userName))))
        .toInt();
}

int TQ3LoginThrottle::WaitSeconds(const QString &userName) const
{
    QSqlQuery query = OpenQuery(m_db, QStringLiteral("SELECT TENTATIVI, DATEDIFF(MILLISECOND FROM ULTIMO_TENTATIVO TO "
                                                     "CURRENT_TIMESTAMP) FROM ACCESSI_FALLITI WHERE USER_NAME = %1")
                                          .arg(QuotedStr(ThrottleKey(userName))));
    if (!query.next())
        return 0;
    const qint64 left = qint64(DelaySeconds(query.value(0).toInt())) * 1000 - query.value(1).toLongLong();
    return left > 0 ? int((left + 999) / 1000) : 0;
}

void TQ3LoginThrottle::Failed(const QString &userName)
{
    const QString key = QuotedStr(ThrottleKey(userName));
    ExecSQL(m_db,
            QStringLiteral("UPDATE OR INSERT INTO ACCESSI_FALLITI (USER_NAME, TENTATIVI, ULTIMO_TENTATIVO) "
                           "VALUES (%1, COALESCE((SELECT TENTATIVI FROM ACCESSI_FALLITI WHERE USER_NAME = %1), 0) + 1, "
                           "CURRENT_TIMESTAMP) MATCHING (USER_NAME)")
                .arg(key));
}

void TQ3LoginThrottle::Succeeded(const QString &userName)
{
    ExecSQL(m_db,
            QStringLiteral("DELETE FROM ACCESSI_FALLITI WHERE USER_NAME = %1").arg(QuotedStr(ThrottleKey(userName))));
}

int TQ3LoginThrottle::DelaySeconds(int failures)
{
    if (failures <= 0)
        return 0;
    return std::min(1 << std::min(failures - 1, 5), 30);
}

QString GetQ3CurrentUserName()
{
    return currentUserName;
}

void SetQ3CurrentUserName(const QString &userName)
{
    currentUserName = userName;
}
