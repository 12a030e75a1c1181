#pragma once

#include "Q3Global.h"

#include <QObject>
#include <QSqlDatabase>

// Where a database lives and who opens it. A name of the form "host:/path" or
// "host/port:/path" is a Firebird server's; anything else is a file opened by
// the embedded engine.
struct Q3_EXPORT TQ3DatabaseTarget
{
    QString Database;
    QString User;
    QString Password;

    bool IsRemote() const;
    QString ConnectionString() const;
    static TQ3DatabaseTarget FromConnectionString(const QString &connectionString);
};

// A database connection component. Its connection string names a provider,
// the database and the credentials ("Provider=Firebird;Data Source=...;"), a
// value with a ";", a quote or an outer blank between double quotes.
class Q3_EXPORT TQ3Connection : public QObject
{
    Q_OBJECT

public:
    explicit TQ3Connection(QObject *owner = nullptr);
    ~TQ3Connection() override;

    QString ConnectionString() const { return m_connectionString; }
    void SetConnectionString(const QString &connectionString);

    // Raises EQ3Exception with the driver's message when the database cannot be opened.
    void Open();
    void Close();
    bool Connected() const;

    // The handle every query of this connection runs on. Once a statement has
    // failed because its connection was gone, a connection to a server checks
    // itself here and, when it is gone too, opens again; while it cannot, this
    // raises EQ3Exception and tries again at the next use. A file opened by
    // the embedded engine has no server to lose and is left as it is.
    // Nothing that failed is run again: the user repeats it.
    QSqlDatabase Database() const;

private:
    void CheckAfterLoss() const;

    QString m_connectionName;
    QString m_connectionString;
    // The count of lost connections this one has checked itself against, and
    // whether it was found gone and is still to be opened again.
    mutable int m_lossesSeen = 0;
    mutable bool m_lost = false;
};
