#pragma once

#include "Q3Global.h"

#include <QSqlDatabase>
#include <QString>

// Salted, deliberately slow password hashes (Argon2id through libsodium).
Q3_EXPORT QString Q3HashPassword(const QString &password);
Q3_EXPORT bool Q3VerifyPassword(const QString &hash, const QString &password);

// The shortest password the application accepts.
inline constexpr int Q3MinPasswordLength = 6;

// The users of the host's UTENTI table. Names match without regard to case.
class Q3_EXPORT TQ3Users
{
public:
    explicit TQ3Users(QSqlDatabase db);

    // True when the user exists but has never been given a password.
    bool NeedsPassword(const QString &userName) const;
    // Stores the hash of a new password; raises EQ3Exception when it is too short.
    void SetPassword(const QString &userName, const QString &password);
    // The stored name on success, empty otherwise.
    QString Login(const QString &userName, const QString &password) const;

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
};

// Failed logins in a row, and how long the next attempt must wait.
class Q3_EXPORT TQ3LoginThrottle
{
public:
    void Failed() { ++m_failures; }
    void Succeeded() { m_failures = 0; }
    int Failures() const { return m_failures; }
    // 0 before any failure, then 1, 2, 4, 8 ... seconds, at most 30.
    int DelaySeconds() const;

private:
    int m_failures = 0;
};

// The logged-in user, as the host reports it to modules.
Q3_EXPORT QString GetQ3CurrentUserName();
Q3_EXPORT void SetQ3CurrentUserName(const QString &userName);
