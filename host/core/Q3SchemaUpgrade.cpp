#include "Q3SchemaUpgrade.h"

#include "Q3Exception.h"
#include "Q3Sql.h"

namespace {
const QString FirstVersion = QStringLiteral("1.0.0");
}

TQ3SchemaStep Q3CreateTableStep(const QString &key, const QString &createTable, const QString &table,
                                const QString &entity, const QStringList &seeds)
{
    TQ3SchemaStep step;
    step.Key = key;
    step.To = FirstVersion;
    step.Statements = {
        createTable,
        QStringLiteral("CREATE GENERATOR GN_ID%1").arg(entity),
        QStringLiteral("CREATE TRIGGER TG_BI_%1 FOR %1 BEFORE INSERT AS BEGIN NEW.ID%2 = GEN_ID(GN_ID%2, 1); END")
            .arg(table, entity),
    };
    step.Seeds = seeds;
    return step;
}

TQ3SchemaUpgrade::TQ3SchemaUpgrade(QSqlDatabase db) : m_db(std::move(db)) {}

void TQ3SchemaUpgrade::Exec(const QString &sql)
{
    if (m_observer)
        m_observer(sql);
    ExecSQL(m_db, sql);
}

QHash<QString, QString> TQ3SchemaUpgrade::RecordedVersions()
{
    const QString sql = QStringLiteral("SELECT * FROM TABLE_VERSION");
    if (m_observer)
        m_observer(sql);
    QSqlQuery query = OpenQuery(m_db, sql);
    // The host creates the table as (TABELLA, VERSIONE): read by position,
    // without describing the row, which costs the driver a query per column.
    QHash<QString, QString> versions;
    while (query.next())
        versions.insert(query.value(0).toString(), query.value(1).toString());
    return versions;
}

bool TQ3SchemaUpgrade::RunStep(const TQ3SchemaStep &step)
{
    try {
        // An upgrade may rightly run longer than a save waits for another workstation.
        TQ3Transaction transaction(m_db, TQ3Attesa::Illimitata);
        for (const QString &statement : step.Statements)
            Exec(statement);
        if (step.IsCreate())
            Exec(QStringLiteral("INSERT INTO TABLE_VERSION (TABELLA, VERSIONE) VALUES (%1, %2)")
                     .arg(QuotedStr(step.Key), QuotedStr(step.To)));
        else
            Exec(QStringLiteral("UPDATE TABLE_VERSION SET VERSIONE = %1 WHERE TABELLA = %2")
                     .arg(QuotedStr(step.To), QuotedStr(step.Key)));
        transaction.Commit();
        return true;
    } catch (const std::exception &) {
        Q3MessageBox(QStringLiteral("Errore"), QStringLiteral("Errore durante l'aggiornamento del database!"),
                     step.FailureIcon);
        return false;
    }
}

namespace {

// Whether the step is due: a create step while its key has no row, an upgrade
// step while its key holds exactly its "from" version.
bool Due(const TQ3SchemaStep &step, const QHash<QString, QString> &versions)
{
    const auto found = versions.constFind(step.Key);
    if (step.IsCreate())
        return found == versions.constEnd();
    return found != versions.constEnd() && found.value() == step.From;
}

} // namespace

void TQ3SchemaUpgrade::Run(const QList<TQ3SchemaStep> &steps)
{
    // One reading of the versions decides which steps are due: an up-to-date
    // database costs that one query. A due step reads them again just before
    // it runs, since another workstation may have run it meanwhile.
    QHash<QString, QString> versions = RecordedVersions();
    for (const TQ3SchemaStep &step : steps) {
        if (!Due(step, versions))
            continue;
        versions = RecordedVersions();
        if (!Due(step, versions))
            continue;
        if (RunStep(step))
            versions.insert(step.Key, step.To);
        if (step.IsCreate()) {
            for (const QString &seed : step.Seeds)
                Exec(seed);
        }
    }
}

bool Q3TableExists(const QSqlDatabase &db, const QString &table)
{
    return QueryScalar(db, QStringLiteral("SELECT COUNT(*) FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = %1")
                               .arg(QuotedStr(table)))
               .toInt()
           > 0;
}

void Q3EnsureTableVersion(const QSqlDatabase &db)
{
    if (Q3TableExists(db, QStringLiteral("TABLE_VERSION")))
        return;
    ExecSQL(db,
            QStringLiteral("CREATE TABLE TABLE_VERSION (TABELLA VARCHAR(50) NOT NULL, VERSIONE VARCHAR(20) NOT NULL, "
                           "CONSTRAINT PK_TABLE_VERSION PRIMARY KEY(TABELLA))"));
}
