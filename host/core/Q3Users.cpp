#include "Q3Users.h"

#include "Q3Exception.h"
#include "Q3Sql.h"

#include <sodium.h>

#include <algorithm>

namespace {

QString currentUserName;

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
    return !stored.isEmpty() && crypto_pwhash_str_verify(stored.constData(), bytes.constData(), quint64(bytes.size())) == 0;
}

TQ3Users::TQ3Users(QSqlDatabase db) : m_db(std::move(db)) {}

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
        throw EQ3Exception(QStringLiteral("La password deve contenere almeno %1 caratteri.").arg(Q3MinPasswordLength));
    ExecSQL(m_db, QStringLiteral("UPDATE UTENTI SET PASSWORD_HASH = %1 WHERE UPPER(USER_NAME) = %2")
                      .arg(QuotedStr(Q3HashPassword(password)), QuotedStr(userName.toUpper())));
}

QString TQ3Users::Login(const QString &userName, const QString &password) const
{
    const TStoredUser user = Stored(userName);
    return user.Found && Q3VerifyPassword(user.Hash, password) ? user.Name : QString();
}

int TQ3LoginThrottle::DelaySeconds() const
{
    if (m_failures == 0)
        return 0;
    return std::min(1 << std::min(m_failures - 1, 5), 30);
}

QString GetQ3CurrentUserName()
{
    return currentUserName;
}

void SetQ3CurrentUserName(const QString &userName)
{
    currentUserName = userName;
}
