#pragma once

#include "Q3Messages.h"

#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QStringList>

#include <functional>

// One step of a versioned schema upgrade, keyed in TABLE_VERSION.
struct Q3_EXPORT TQ3SchemaStep
{
    QString Key;
    QString From; // empty: the key has no row yet, the step creates it
    QString To;
    QStringList Statements; // run in the step's transaction, with the version row
    QStringList Seeds;      // create steps only: after the commit, errors not caught
    TQ3MsgIcon FailureIcon = TQ3MsgIcon::None;

    bool IsCreate() const { return From.isEmpty(); }
};

// A create step for a table keyed by ID<entity>, with its generator GN_ID<entity>
// and the before-insert trigger TG_BI_<table> that assigns it.
Q3_EXPORT TQ3SchemaStep Q3CreateTableStep(const QString &key, const QString &createTable, const QString &table,
                                          const QString &entity, const QStringList &seeds = {});

// Runs steps in order. Each step whose "from" matches the key's recorded version
// exactly runs in one transaction with its version row; a failing step is rolled
// back, reported in a box titled "Errore", and the run goes on with the next.
// The versions are read once for the whole run, and again before each step
// that runs.
class Q3_EXPORT TQ3SchemaUpgrade
{
public:
    explicit TQ3SchemaUpgrade(QSqlDatabase db);

    void Run(const QList<TQ3SchemaStep> &steps);

    // Sees every statement sent to the database, the version query included.
    void SetStatementObserver(std::function<void(const QString &)> observer) { m_observer = std::move(observer); }

private:
    // Every key's version, read in one query.
    QHash<QString, QString> RecordedVersions();
    void Exec(const QString &sql);
    // Answers whether the step ran to its commit.
    bool RunStep(const TQ3SchemaStep &step);

    QSqlDatabase m_db;
    std::function<void(const QString &)> m_observer;
};

// Creates TABLE_VERSION when the database has none.
Q3_EXPORT void Q3EnsureTableVersion(const QSqlDatabase &db);

// Whether a table exists in the database.
Q3_EXPORT bool Q3TableExists(const QSqlDatabase &db, const QString &table);
