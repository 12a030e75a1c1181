#include "Q3TestDatabase.h"

#include "Q3DatabaseFile.h"
#include "Q3Exception.h"
#include "Q3HostSchema.h"
#include "Q3Sql.h"
#include "Q3TestDatabaseFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTextStream>

TQ3TestDatabase::TQ3TestDatabase(Where where, bool hostSchema)
    : TQ3TestDatabase(where, hostSchema ? Schema::Host : Schema::None)
{}

TQ3TestDatabase::TQ3TestDatabase(Where where, Schema schema)
{
    if (schema == Schema::Upgraded && where == Where::Server)
        throw EQ3Exception(QStringLiteral("Il database aggiornato di prova è un file: solo incorporato."));
    if (where == Where::Server) {
        // The server runs as another process: the folder must be open to it.
        QFile::setPermissions(m_dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther
                                                | QFile::WriteOther | QFile::ExeOther | QFile::ReadGroup
                                                | QFile::WriteGroup | QFile::ExeGroup);
        m_target.Database =
            qEnvironmentVariable("Q3_TEST_SERVER") + QLatin1Char(':') + m_dir.filePath(QStringLiteral("test.fdb"));
        m_target.User = qEnvironmentVariable("Q3_TEST_SERVER_USER");
        m_target.Password = qEnvironmentVariable("Q3_TEST_SERVER_PASSWORD");
    } else {
        m_target.Database = m_dir.filePath(QStringLiteral("test.fdb"));
    }
    // Nothing has the copy open while it is taken: the template's maker has
    // ended, and the template is never opened itself.
    if (schema == Schema::Upgraded) {
        if (!QFile::copy(Q3TestTemplateDatabase(), m_target.Database))
            throw EQ3Exception(QStringLiteral("Impossibile copiare il database modello in ") + m_target.Database);
    } else {
        CreateQ3Database(m_target);
    }
    if (where == Where::Embedded && Q3TestWritesCached())
        SetQ3TestForcedWrites(m_target.Database, false);
    m_connection = std::make_unique<TQ3Connection>();
    m_connection->SetConnectionString(m_target.ConnectionString());
    m_connection->Open();
    if (schema == Schema::Host)
        UpgradeQ3HostSchema(Db());
}

TQ3TestDatabase::~TQ3TestDatabase()
{
    m_connection.reset();
    if (m_target.IsRemote()) {
        try {
            DropQ3Database(m_target);
        } catch (const EQ3Exception &) {
            // Left for the temporary folder's removal.
        }
    }
}

QString Q3TestTemplateDatabase()
{
    const QString path = QStringLiteral(Q3_TEST_TEMPLATE);
    const QString maker = QStringLiteral(Q3_TEST_TEMPLATE_MAKER);
    const QFileInfo made(path);
    // The fixture test q3_test_template makes it at the start of every ctest
    // run; a suite run by hand makes it when it is missing or stale.
    if (made.exists() && made.lastModified() >= QFileInfo(maker).lastModified())
        return path;
    QProcess process;
    process.start(maker, {path});
    if (!process.waitForFinished(300000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw EQ3Exception(QStringLiteral("Impossibile creare il database modello %1:\n%2")
                               .arg(path, QString::fromLocal8Bit(process.readAllStandardError())));
    return path;
}

bool TQ3TestDatabase::ServerConfigured()
{
    return !qEnvironmentVariableIsEmpty("Q3_TEST_SERVER");
}

bool TQ3TestDatabase::ServerRequired()
{
    return !qEnvironmentVariableIsEmpty("Q3_TEST_SERVER_REQUIRED");
}

void TQ3TestDatabase::Exec(const QString &sql) const
{
    ExecSQL(Db(), sql);
}

QVariant TQ3TestDatabase::Scalar(const QString &sql) const
{
    return QueryScalar(Db(), sql);
}

QStringList TQ3TestDatabase::Rows(const QString &sql) const
{
    QSqlQuery query = OpenQuery(Db(), sql);
    QStringList rows;
    while (query.next()) {
        QStringList columns;
        for (int i = 0; i < query.record().count(); ++i)
            columns << (query.isNull(i) ? QStringLiteral("<null>") : query.value(i).toString().trimmed());
        rows << columns.join(QLatin1Char('|'));
    }
    return rows;
}

void TQ3TestDatabase::InsertOfAnotherWorkstationAtNextInsert(const QString &table, const QString &insert) const
{
    // Runs once: the other workstation's own insert passes the trigger too.
    Exec(QStringLiteral("CREATE GENERATOR GN_ALTRA_%1").arg(table));
    Exec(QStringLiteral("CREATE TRIGGER TG_ALTRA_%1 FOR %1 ACTIVE BEFORE INSERT POSITION 0 AS BEGIN "
                        "IF (GEN_ID(GN_ALTRA_%1, 1) = 1) THEN EXECUTE STATEMENT %2 ON EXTERNAL %3 "
                        "AS USER %4 PASSWORD %5 WITH AUTONOMOUS TRANSACTION; END")
             .arg(table, QuotedStr(insert), QuotedStr(m_target.Database),
                  QuotedStr(m_target.User.isEmpty() ? QStringLiteral("SYSDBA") : m_target.User),
                  QuotedStr(m_target.Password)));
    Exec(QStringLiteral("ALTER TRIGGER TG_BI_%1 POSITION 1").arg(table));
}

void TQ3TestDatabase::LoadFixture(const QString &fileName) const
{
    QFile file(QDir(QStringLiteral(Q3_TEST_FIXTURES)).filePath(fileName));
    if (!file.open(QIODevice::ReadOnly))
        throw EQ3Exception(QStringLiteral("Fixture mancante: ") + file.fileName());
    QString statement;
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QString line = in.readLine();
        if (line.trimmed().startsWith(QLatin1String("--")))
            continue;
        statement += line + QLatin1Char('\n');
        if (line.trimmed().endsWith(QLatin1Char(';'))) {
            statement = statement.trimmed();
            statement.chop(1);
            Exec(statement);
            statement.clear();
        }
    }
}

QString WriteQ3TestFile(const QString &folder, const QString &name, const QString &text)
{
    const QString path = QDir(folder).filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw EQ3Exception(QStringLiteral("Impossibile scrivere ") + path);
    file.write(text.toUtf8());
    return path;
}
