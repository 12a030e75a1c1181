#pragma once

// Shared by the schema upgrade tests: the module's session on a test
// database, recording what an upgrade run executes, and comparable snapshots
// of a database's metadata and of the module's data.
#include "KRVAggiornaDatabase.h"
#include "KRVTestCore.h"
#include "Q3SchemaUpgrade.h"
#include "Q3Sql.h"

#include <QList>
#include <QPair>
#include <QStringList>
#include <QTest>

// The module's own connection, as Initialize opens it, on a new database that
// has only the host's tables: the module's upgrade has not run on it yet.
struct TKRVDaAggiornare : TKRVTestCore
{
    explicit TKRVDaAggiornare(TQ3TestDatabase::Where where = TQ3TestDatabase::Where::Embedded)
        : TKRVTestCore(where, TQ3TestDatabase::Schema::Host)
    {}
};

// The module's keys in TABLE_VERSION and the version each reaches at the end.
inline QStringList FinalModuleVersions()
{
    return {QStringLiteral("ALIQUOTE_IVA|1.1.0"),
            QStringLiteral("ANA_MAGA|1.1.0"),
            QStringLiteral("CATEGORIE_ANA_MAGA|1.0.0"),
            QStringLiteral("CATEGORIE_SERVIZI|1.0.0"),
            QStringLiteral("CLIENTI|1.4.0"),
            QStringLiteral("FATTURAPA|1.0.0"),
            QStringLiteral("FATT_VEND|1.6.0"),
            QStringLiteral("FATT_VEND_DDT|1.1.0"),
            QStringLiteral("FATT_VEND_DETT|1.4.0"),
            QStringLiteral("KRV_ABILITAZIONI|1.0.1"),
            QStringLiteral("KRV_INDICI|1.0.0"),
            QStringLiteral("NOTE_ACCREDITO|1.4.0"),
            QStringLiteral("NOTE_ACCREDITO_DETT|1.1.0"),
            QStringLiteral("NOTE_DOCUMENTI|1.0.0"),
            QStringLiteral("SERVIZI|1.0.0"),
            QStringLiteral("TIPI_PAGAMENTO|1.1.0"),
            QStringLiteral("UM|1.0.0")};
}

inline QStringList ModuleKeys()
{
    QStringList keys;
    for (const QString &row : FinalModuleVersions())
        keys << row.section(QLatin1Char('|'), 0, 0);
    return keys;
}

// The version rows of the module's keys, "KEY|VERSION", ordered by key.
inline QStringList ModuleVersionRows(const TQ3TestDatabase &db)
{
    QStringList quoted;
    for (const QString &key : ModuleKeys())
        quoted << QuotedStr(key);
    return db.Rows(QStringLiteral("SELECT TABELLA, VERSIONE FROM TABLE_VERSION WHERE TABELLA IN (%1) ORDER BY TABELLA")
                       .arg(quoted.join(QLatin1Char(','))));
}

inline QString Version(const TQ3TestDatabase &db, const QString &key)
{
    return db.Scalar(QStringLiteral("SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA = %1").arg(QuotedStr(key)))
        .toString();
}

// Declared length of a text column, 0 when the column does not exist.
inline int ColumnLength(const TQ3TestDatabase &db, const QString &table, const QString &column)
{
    return db
        .Scalar(QStringLiteral("SELECT F.RDB$CHARACTER_LENGTH FROM RDB$RELATION_FIELDS RF "
                               "JOIN RDB$FIELDS F ON F.RDB$FIELD_NAME = RF.RDB$FIELD_SOURCE "
                               "WHERE RF.RDB$RELATION_NAME = %1 AND RF.RDB$FIELD_NAME = %2")
                    .arg(QuotedStr(table), QuotedStr(column)))
        .toInt();
}

inline bool ColumnExists(const TQ3TestDatabase &db, const QString &table, const QString &column)
{
    return db.Scalar(QStringLiteral("SELECT COUNT(*) FROM RDB$RELATION_FIELDS WHERE RDB$RELATION_NAME = %1 "
                                    "AND RDB$FIELD_NAME = %2")
                         .arg(QuotedStr(table), QuotedStr(column)))
               .toInt()
           > 0;
}

// Everything a user object of the database is made of, one text per fact, with
// the names Firebird generates (RDB$nnn, INTEG_nn) left out.
inline QStringList SchemaMetadata(const TQ3TestDatabase &db)
{
    const QString userRelation =
        QStringLiteral("JOIN RDB$RELATIONS R ON R.RDB$RELATION_NAME = %1 AND COALESCE(R.RDB$SYSTEM_FLAG, 0) = 0 ");
    const QString generatedConstraint =
        QStringLiteral("CASE WHEN %1 STARTING WITH 'INTEG_' OR %1 STARTING WITH 'RDB$' THEN '' ELSE TRIM(%1) END");
    QStringList facts;
    const auto add = [&](const QString &kind, const QString &sql) {
        for (const QString &row : db.Rows(sql))
            facts << kind + QLatin1Char('|') + row;
    };
    add(QStringLiteral("column"),
        QStringLiteral(
            "SELECT TRIM(RF.RDB$RELATION_NAME), RF.RDB$FIELD_POSITION, TRIM(RF.RDB$FIELD_NAME), F.RDB$FIELD_TYPE, "
            "COALESCE(F.RDB$FIELD_SUB_TYPE, 0), F.RDB$FIELD_LENGTH, COALESCE(F.RDB$CHARACTER_LENGTH, 0), "
            "COALESCE(F.RDB$CHARACTER_SET_ID, 0), COALESCE(F.RDB$FIELD_PRECISION, 0), F.RDB$FIELD_SCALE, "
            "COALESCE(RF.RDB$NULL_FLAG, F.RDB$NULL_FLAG, 0), "
            "COALESCE(CAST(RF.RDB$DEFAULT_SOURCE AS VARCHAR(200)), CAST(F.RDB$DEFAULT_SOURCE AS VARCHAR(200)), '') "
            "FROM RDB$RELATION_FIELDS RF JOIN RDB$FIELDS F ON F.RDB$FIELD_NAME = RF.RDB$FIELD_SOURCE ")
            + userRelation.arg(QStringLiteral("RF.RDB$RELATION_NAME")) + QStringLiteral("ORDER BY 1, 2"));
    add(QStringLiteral("constraint"),
        QStringLiteral("SELECT TRIM(RC.RDB$RELATION_NAME), TRIM(RC.RDB$CONSTRAINT_TYPE), %1, %2, "
                       "TRIM(COALESCE(S.RDB$FIELD_NAME, CC.RDB$TRIGGER_NAME, '')), COALESCE(S.RDB$FIELD_POSITION, 0) "
                       "FROM RDB$RELATION_CONSTRAINTS RC "
                       "LEFT JOIN RDB$INDEX_SEGMENTS S ON S.RDB$INDEX_NAME = RC.RDB$INDEX_NAME "
                       "LEFT JOIN RDB$CHECK_CONSTRAINTS CC ON CC.RDB$CONSTRAINT_NAME = RC.RDB$CONSTRAINT_NAME ")
                .arg(generatedConstraint.arg(QStringLiteral("RC.RDB$CONSTRAINT_NAME")),
                     generatedConstraint.arg(QStringLiteral("COALESCE(RC.RDB$INDEX_NAME, '')")))
            + userRelation.arg(QStringLiteral("RC.RDB$RELATION_NAME")) + QStringLiteral("ORDER BY 1, 2, 3, 4, 5, 6"));
    add(QStringLiteral("index"),
        QStringLiteral("SELECT TRIM(I.RDB$RELATION_NAME), %1, COALESCE(I.RDB$UNIQUE_FLAG, 0), "
                       "COALESCE(I.RDB$INDEX_INACTIVE, 0), COALESCE(I.RDB$INDEX_TYPE, 0), TRIM(S.RDB$FIELD_NAME), "
                       "S.RDB$FIELD_POSITION FROM RDB$INDICES I "
                       "JOIN RDB$INDEX_SEGMENTS S ON S.RDB$INDEX_NAME = I.RDB$INDEX_NAME ")
                .arg(generatedConstraint.arg(QStringLiteral("I.RDB$INDEX_NAME")))
            + userRelation.arg(QStringLiteral("I.RDB$RELATION_NAME")) + QStringLiteral("ORDER BY 1, 2, 6, 7"));
    // Indexes on an expression have no segments: their expression stands for them.
    add(QStringLiteral("expression index"),
        QStringLiteral("SELECT TRIM(I.RDB$RELATION_NAME), TRIM(I.RDB$INDEX_NAME), COALESCE(I.RDB$UNIQUE_FLAG, 0), "
                       "COALESCE(I.RDB$INDEX_INACTIVE, 0), COALESCE(I.RDB$INDEX_TYPE, 0), "
                       "CAST(I.RDB$EXPRESSION_SOURCE AS VARCHAR(200)) FROM RDB$INDICES I ")
            + userRelation.arg(QStringLiteral("I.RDB$RELATION_NAME"))
            + QStringLiteral("WHERE I.RDB$EXPRESSION_SOURCE IS NOT NULL ORDER BY 1, 2"));
    add(QStringLiteral("generator"),
        QStringLiteral("SELECT TRIM(RDB$GENERATOR_NAME) FROM RDB$GENERATORS WHERE COALESCE(RDB$SYSTEM_FLAG, 0) = 0 "
                       "ORDER BY 1"));
    add(QStringLiteral("trigger"),
        QStringLiteral("SELECT TRIM(T.RDB$TRIGGER_NAME), TRIM(T.RDB$RELATION_NAME), T.RDB$TRIGGER_TYPE, "
                       "COALESCE(T.RDB$TRIGGER_SEQUENCE, 0), COALESCE(T.RDB$TRIGGER_INACTIVE, 0), "
                       "CAST(T.RDB$TRIGGER_SOURCE AS VARCHAR(2000)) FROM RDB$TRIGGERS T "
                       "WHERE COALESCE(T.RDB$SYSTEM_FLAG, 0) = 0 ORDER BY 1"));
    return facts;
}

// The tables the module creates, each with its key and generator.
struct TModuleTable
{
    QString Table;
    QString Key;
    QString Generator;
};

inline QList<TModuleTable> ModuleTables()
{
    const auto table = [](const char *name, const char *entity) {
        const QString e = QString::fromLatin1(entity);
        return TModuleTable{QString::fromLatin1(name), QStringLiteral("ID") + e, QStringLiteral("GN_ID") + e};
    };
    return {table("FATT_VEND", "FATT_VEND"),
            table("FATT_VEND_DETT", "FATT_VEND_DETT"),
            table("NOTE_ACCREDITO", "NOTA_ACCREDITO"),
            table("NOTE_ACCREDITO_DETT", "NOTA_ACCREDITO_DETT"),
            table("ALIQUOTE_IVA", "ALIQUOTA_IVA"),
            table("UM", "UM"),
            table("TIPI_PAGAMENTO", "TIPO_PAGAMENTO"),
            table("CATEGORIE_ANA_MAGA", "CATEGORIA_ANA_MAGA"),
            table("CATEGORIE_SERVIZI", "CATEGORIA_SERVIZI"),
            table("SERVIZI", "SERVIZIO"),
            table("CLIENTI", "CLIENTE"),
            table("ANA_MAGA", "ANA_MAGA"),
            table("NOTE_DOCUMENTI", "NOTA_DOCUMENTI"),
            table("FATT_VEND_DDT", "FATT_VEND_DDT")};
}

// The seed rows as they read back, text columns as stored and amounts with their scale.
inline QStringList SeedRows(const TQ3TestDatabase &db, const QString &table)
{
    if (table == QLatin1String("ALIQUOTE_IVA"))
        return db.Rows(QStringLiteral("SELECT IDALIQUOTA_IVA, CODICE, DESCRIZIONE, CAST(ALIQUOTA AS VARCHAR(20)) "
                                      "FROM ALIQUOTE_IVA ORDER BY IDALIQUOTA_IVA"));
    return db.Rows(QStringLiteral("SELECT * FROM %1 ORDER BY 1").arg(table));
}

inline QStringList SeededTables()
{
    return {QStringLiteral("ALIQUOTE_IVA"), QStringLiteral("UM"), QStringLiteral("TIPI_PAGAMENTO"),
            QStringLiteral("CATEGORIE_ANA_MAGA"), QStringLiteral("CATEGORIE_SERVIZI")};
}

// The rows the module owns or seeds: version rows, permissions, the seeded
// tables, the row count of every module table and every generator's value.
inline QStringList ModuleData(const TQ3TestDatabase &db)
{
    QStringList data;
    for (const QString &row : db.Rows(QStringLiteral("SELECT TABELLA, VERSIONE FROM TABLE_VERSION ORDER BY TABELLA")))
        data << QStringLiteral("version|") + row;
    for (const QString &row : db.Rows(QStringLiteral("SELECT * FROM ABILITAZIONI_UTENTE ORDER BY 1")))
        data << QStringLiteral("permission|") + row;
    for (const TModuleTable &table : ModuleTables()) {
        if (!Q3TableExists(db.Db(), table.Table))
            continue;
        data << QStringLiteral("count|%1|%2")
                    .arg(table.Table, db.Scalar(QStringLiteral("SELECT COUNT(*) FROM ") + table.Table).toString());
        data << QStringLiteral("generator|%1|%2")
                    .arg(table.Generator,
                         db.Scalar(QStringLiteral("SELECT GEN_ID(%1, 0) FROM RDB$DATABASE").arg(table.Generator))
                             .toString());
        if (SeededTables().contains(table.Table)) {
            for (const QString &row : SeedRows(db, table.Table))
                data << table.Table + QLatin1Char('|') + row;
        }
    }
    return data;
}

// The names of the indexes that are neither keys nor unique constraints.
inline QStringList IndexNames(const TQ3TestDatabase &db)
{
    // The delivery notes' index comes with a step of their table's own key.
    return db.Rows(
        QStringLiteral("SELECT TRIM(I.RDB$INDEX_NAME) FROM RDB$INDICES I WHERE COALESCE(I.RDB$SYSTEM_FLAG, 0) = 0 "
                       "AND NOT EXISTS (SELECT 1 FROM RDB$RELATION_CONSTRAINTS C "
                       "WHERE C.RDB$INDEX_NAME = I.RDB$INDEX_NAME) "
                       "AND I.RDB$INDEX_NAME <> 'IX_FATT_VEND_DDT_IDFATT_VEND' ORDER BY 1"));
}

// Runs the first steps of the module's history through the upgrade runner.
inline void RunFirstSteps(const QSqlDatabase &db, int count)
{
    TQ3SchemaUpgrade(db).Run(KRVSchemaSteps().mid(0, count));
}

// Runs every step but the one numbered skipped (from 1).
inline void RunAllStepsBut(const QSqlDatabase &db, int skipped)
{
    QList<TQ3SchemaStep> steps = KRVSchemaSteps();
    steps.removeAt(skipped - 1);
    TQ3SchemaUpgrade(db).Run(steps);
}

// Runs a hand-written SQL file of this folder on the database.
inline void LoadSchemaFile(const TQ3TestDatabase &db, const QString &name)
{
    db.LoadFixture(QStringLiteral("../modules/documenti/data/") + name);
}

// Every statement AggiornaDatabase sends while this object lives.
class TStatementRecorder
{
public:
    TStatementRecorder()
    {
        SetAggiornaDatabaseObserver([this](const QString &sql) { m_statements << sql; });
    }
    ~TStatementRecorder() { SetAggiornaDatabaseObserver({}); }
    TStatementRecorder(const TStatementRecorder &) = delete;
    TStatementRecorder &operator=(const TStatementRecorder &) = delete;

    const QStringList &Statements() const { return m_statements; }

    static QString VersionQuery() { return QStringLiteral("SELECT * FROM TABLE_VERSION"); }

    // The statements of the steps themselves: no version query, no version row write.
    QStringList StepStatements() const
    {
        QStringList statements;
        for (const QString &sql : m_statements) {
            if (sql != VersionQuery() && !sql.startsWith(QLatin1String("INSERT INTO TABLE_VERSION"))
                && !sql.startsWith(QLatin1String("UPDATE TABLE_VERSION")))
                statements << sql;
        }
        return statements;
    }

private:
    QStringList m_statements;
};

// The statements of the given steps (numbered from 1), seeds included, in order.
inline QStringList StatementsOfSteps(const QList<int> &numbers)
{
    const QList<TQ3SchemaStep> steps = KRVSchemaSteps();
    QStringList statements;
    for (int number : numbers)
        statements << steps.at(number - 1).Statements << steps.at(number - 1).Seeds;
    return statements;
}

// The seven permissions the module adds to the host's catalogue, as stored.
inline QStringList ModulePermissionRows()
{
    return {QStringLiteral("Fatture di vendita (eliminazione)|Documenti"),
            QStringLiteral("Note di accredito (eliminazione)|Documenti"),
            QStringLiteral("Statistiche (visualizzazione)|Documenti"),
            QStringLiteral("Fatture di vendita (visualizzazione)|Documenti"),
            QStringLiteral("Fatture di vendita (modifica)|Documenti"),
            QStringLiteral("Note di accredito (visualizzazione)|Documenti"),
            QStringLiteral("Note di accredito (modifica)|Documenti")};
}

inline QStringList PermissionRowsOfGroup(const TQ3TestDatabase &db, const QString &group)
{
    return db.Rows(QStringLiteral("SELECT ABILITAZIONE_UTENTE, GRUPPO FROM ABILITAZIONI_UTENTE WHERE GRUPPO = %1 "
                                  "ORDER BY IDABILITAZIONE_UTENTE")
                       .arg(QuotedStr(group)));
}

// The seed rows of a fresh database, table by table.
inline QList<QPair<QString, QStringList>> ExpectedSeedRows()
{
    return {{QStringLiteral("ALIQUOTE_IVA"),
             {QStringLiteral("1|20|Aliquota standard|20.00"), QStringLiteral("2|N0|Aliquota esente|0.00"),
              QStringLiteral("3|N1|Aliquota esclusa|0.00")}},
            {QStringLiteral("UM"),
             {QStringLiteral("1|PEZZI"), QStringLiteral("2|ORE"), QStringLiteral("3|Q.LI"), QStringLiteral("4|KG")}},
            {QStringLiteral("TIPI_PAGAMENTO"),
             {QStringLiteral("1|Rimessa diretta"), QStringLiteral("2|Bonifico 30 gg Data Fattura"),
              QStringLiteral("3|Bonifico 30 gg Fine Mese"), QStringLiteral("4|Ri.Ba. 30 gg Data Fattura"),
              QStringLiteral("5|Ri.Ba. 30 gg Fine Mese")}},
            {QStringLiteral("CATEGORIE_ANA_MAGA"), {QStringLiteral("1|Altro|<null>")}},
            {QStringLiteral("CATEGORIE_SERVIZI"), {QStringLiteral("1|Altro|<null>")}}};
}

// What one run leaves on a fresh database: the final versions, exactly the
// seed rows, the seven permissions, and the other module tables empty.
inline void VerifyFreshUpgrade(const TQ3TestDatabase &db)
{
    QCOMPARE(ModuleVersionRows(db), FinalModuleVersions());
    const QList<QPair<QString, QStringList>> seeds = ExpectedSeedRows();
    for (const auto &[table, rows] : seeds)
        QCOMPARE(SeedRows(db, table), rows);
    for (const TModuleTable &table : ModuleTables()) {
        if (!SeededTables().contains(table.Table))
            QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM ") + table.Table).toInt(), 0);
    }
    QCOMPARE(PermissionRowsOfGroup(db, QStringLiteral("Documenti")), ModulePermissionRows());
}
