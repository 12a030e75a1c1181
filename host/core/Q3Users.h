#pragma once

#include "Q3Global.h"

#include <QSqlDatabase>
#include <QString>

// Salted, deliberately slow password hashes (Argon2id through libsodium).
Q3_EXPORT QString Q3HashPassword(const QString &password);
Q3_EXPORT bool Q3VerifyPassword(const QString &hash, const QString &password);

// The shortest password the application accepts.
inline constexpr int Q3MinPasswordLength = 6;

// Failed logins in a row of each user name, kept in the host's table
// ACCESSI_FALLITI: a new login window, or a new start of the program, on the
// same database does not begin afresh. Names count without regard to case,
// whether a user has them or not; times are the database's.
class Q3_EXPORT TQ3LoginThrottle
{
public:
    explicit TQ3LoginThrottle(QSqlDatabase db);

    int Failures(const QString &userName) const;
    // How long the name must still wait before its next attempt: the delay of
    // its failures less the time since the last one, in whole seconds rounded up.
    int WaitSeconds(const QString &userName) const;
    void Failed(const QString &userName);
    void Succeeded(const QString &userName);

    // 0 before any failure, then 1, 2, 4, 8 ... seconds, at most 30.
    static int DelaySeconds(int failures);

private:
    QSqlDatabase m_db;
};

// The users of the host's UTENTI table. Names match without regard to case.
class Q3_EXPORT TQ3Users
{
public:
    explicit TQ3Users(QSqlDatabase db);

    // True when the user exists but has never been given a password.
    bool NeedsPassword(const QString &userName) const;
    // Stores the hash of a new password; raises EQ3Exception when it is too short.
    void SetPassword(const QString &userName, const QString &password);
    // The stored name on success, empty otherwise. While the name must still
    // wait (Throttle().WaitSeconds) the attempt is refused without looking at
    // the password; a wrong password counts as a failure of the name, a right
    // one clears its failures.
    QString Login(const QString &userName, const QString &password);
    const TQ3LoginThrottle &Throttle() const { return m_throttle; }

private:
    // The active user's row: the name as stored and the password hash.
    struct TStoredUser
    {
        bool Found = false;
        QString Name;
        QString Hash;
    };
    TStoredUser Stored(const QString &userName) const;
    QSqlDatabase m_db;
    TQ3LoginThrottle m_throttle;
};

// The logged-in user, as the host reports it to modules.
Q3_EXPORT QString GetQ3CurrentUserName();
Q3_EXPORT void SetQ3CurrentUserName(const QString &userName);
