#include "KRVDeleteRules.h"

#include "KRVErrors.h"
#include "KRVTesti.h"
#include "Q3Exception.h"
#include "Q3Guards.h"
#include "Q3Messages.h"
#include "Q3Sql.h"

#include <QHash>
#include <QStringList>

namespace {

// One referencing table of a rule: the rows whose column matches the record,
// restricted to one line kind when the table holds document lines.
struct TSubCount
{
    const char *Table;
    const char *Column;
    const char *TipoRiga = nullptr;
};

// A rule's counting query: the table it reads its single row from, whether it
// matches a code (UPPER(column) against the upper-cased code) or a key, and
// its sub-counts in order. A rule without sub-counts has no query.
struct TDeleteRule
{
    const char *Table = nullptr;
    bool ByCode = false;
    QList<TSubCount> SubCounts;
};

const QHash<QString, TDeleteRule> &DeleteRules()
{
    static const QHash<QString, TDeleteRule> rules{
        {QStringLiteral("CanDeleteAliquotaIVA"),
         {"ALIQUOTE_IVA",
          false,
          {{"FATT_VEND_DETT", "IVA_IDALIQUOTA_IVA"},
           {"NOTE_ACCREDITO_DETT", "IVA_IDALIQUOTA_IVA"},
           {"ANA_MAGA", "IDALIQUOTA_IVA"},
           {"SERVIZI", "IDALIQUOTA_IVA"}}}},
        {QStringLiteral("CanDeleteUM"),
         {"UM",
          false,
          {{"FATT_VEND_DETT", "IDUM"},
           {"NOTE_ACCREDITO_DETT", "IDUM"},
           {"ANA_MAGA", "IDUM"},
           {"SERVIZI", "IDUM"},
           {"DDT_SCARICO", "PESO_IDUM"},
           {"DDT_SCARICO_DETT", "IDUM"}}}},
        {QStringLiteral("CanDeleteTipoPagamento"),
         {"TIPI_PAGAMENTO",
          false,
          {{"FATT_VEND", "IDTIPO_PAGAMENTO"},
           {"NOTE_ACCREDITO", "IDTIPO_PAGAMENTO"},
           {"CLIENTI", "IDTIPO_PAGAMENTO"}}}},
        {QStringLiteral("CanDeleteCategoriaAnaMaga"),
         {"CATEGORIE_ANA_MAGA",
          false,
          {{"ANA_MAGA", "IDCATEGORIA_ANA_MAGA"},
           {"DDT_SCARICO_DETT", "IDCATEGORIA_ANA_MAGA"},
           {"FATT_VEND_DETT", "IDCATEGORIA", "Articolo"},
           {"NOTE_ACCREDITO_DETT", "IDCATEGORIA", "Articolo"}}}},
        {QStringLiteral("CanDeleteCategoriaServizi"),
         {"CATEGORIE_SERVIZI",
          false,
          {{"SERVIZI", "IDCATEGORIA_SERVIZI"},
           {"FATT_VEND_DETT", "IDCATEGORIA", "Servizio"},
           {"NOTE_ACCREDITO_DETT", "IDCATEGORIA", "Servizio"}}}},
        {QStringLiteral("CanDeleteAnaMaga"),
         {"ANA_MAGA",
          true,
          {{"DDT_SCARICO_DETT", "CODICE", "Articolo"},
           {"FATT_VEND_DETT", "CODICE", "Articolo"},
           {"NOTE_ACCREDITO_DETT", "CODICE", "Articolo"}}}},
        {QStringLiteral("CanDeleteServizio"),
         {"SERVIZI", true, {{"FATT_VEND_DETT", "CODICE", "Servizio"}, {"NOTE_ACCREDITO_DETT", "CODICE", "Servizio"}}}},
        {QStringLiteral("CanDeleteCliente"),
         {"CLIENTI",
          true,
          {{"DDT_SCARICO", "CLI_CODICE"}, {"FATT_VEND", "CLI_CODICE"}, {"NOTE_ACCREDITO", "CLI_CODICE"}}}},
        {QStringLiteral("CanDeleteCausaleTrasporto"),
         {"CAUSALI_TRASPORTO", false, {{"DDT_SCARICO", "IDCAUSALE_TRASPORTO"}}}},
        {QStringLiteral("CanDeleteFatturaVendita"), {}},
        {QStringLiteral("CanDeleteNotaAccredito"), {}},
    };
    return rules;
}

QString SubCountSQL(const TSubCount &subCount, bool byCode, const QString &argument)
{
    const QString column = QLatin1String(subCount.Column);
    QString sql =
        QStringLiteral("(SELECT COUNT(*) FROM ") + QLatin1String(subCount.Table) + QStringLiteral(" WHERE ")
        + (byCode ? QStringLiteral("UPPER(") + column + QStringLiteral(")=") + QuotedStr(KRVMaiuscole(argument))
                  : column + QLatin1Char('=') + argument);
    if (subCount.TipoRiga)
        sql += QStringLiteral(" AND TIPO_RIGA=") + QuotedStr(QLatin1String(subCount.TipoRiga));
    return sql + QLatin1Char(')');
}

// The rule's answer. Its counting query is composed for the rule's dataset on
// the session, but that dataset is never opened: the count is never read and
// every record may be deleted. The callers keep their refusals.
bool RuleAnswer(const char *rule, const QString &argument)
{
    CanDeleteSQL(QLatin1String(rule), argument);
    return true;
}

bool WrappedRule(const char *rule, const QString &argument)
{
    return KRVWrapped(rule, [&] { return RuleAnswer(rule, argument); });
}

} // namespace

bool KRVDeleteInTransaction(const QSqlDatabase &db, const QStringList &statements, bool ask)
{
    if (ask && !Q3AskYesNo(QString::fromUtf8(KRVMsgConfermaEliminazione)))
        return false;
    TQ3Transaction transaction(db);
    try {
        TQ3BusyCursor busy;
        for (const QString &statement : statements)
            ExecSQL(db, statement);
        transaction.Commit();
        return true;
    } catch (const std::exception &) {
        transaction.Rollback();
        Q3ShowError(QString::fromUtf8(KRVMsgErroreEliminazione));
        return false;
    }
}

namespace {

bool WrappedDelete(const QSqlDatabase &db, const char *routine, const QStringList &statements, bool ask)
{
    return KRVWrapped(routine, [&] { return KRVDeleteInTransaction(db, statements, ask); });
}

} // namespace

QString CanDeleteSQL(const QString &rule, const QString &argument)
{
    const auto found = DeleteRules().constFind(rule);
    if (found == DeleteRules().constEnd())
        throw EQ3Exception(QStringLiteral("Regola di eliminazione sconosciuta: ") + rule);
    if (found->SubCounts.isEmpty())
        return QString();
    QStringList subCounts;
    for (const TSubCount &subCount : found->SubCounts)
        subCounts << SubCountSQL(subCount, found->ByCode, argument);
    return QStringLiteral("SELECT FIRST 1 (") + subCounts.join(QStringLiteral(" + "))
           + QStringLiteral(") AS NUMERO FROM ") + QLatin1String(found->Table);
}

bool CanDeleteAliquotaIVA(const QSqlDatabase &, int id)
{
    return WrappedRule("CanDeleteAliquotaIVA", QString::number(id));
}

bool CanDeleteUM(const QSqlDatabase &, int id)
{
    return RuleAnswer("CanDeleteUM", QString::number(id));
}

bool CanDeleteTipoPagamento(const QSqlDatabase &, int id)
{
    return RuleAnswer("CanDeleteTipoPagamento", QString::number(id));
}

bool CanDeleteCategoriaAnaMaga(const QSqlDatabase &, int id)
{
    return RuleAnswer("CanDeleteCategoriaAnaMaga", QString::number(id));
}

bool CanDeleteCategoriaServizi(const QSqlDatabase &, int id)
{
    return RuleAnswer("CanDeleteCategoriaServizi", QString::number(id));
}

bool CanDeleteAnaMaga(const QSqlDatabase &, const QString &codice)
{
    return RuleAnswer("CanDeleteAnaMaga", codice);
}

bool CanDeleteServizio(const QSqlDatabase &, const QString &codice)
{
    return RuleAnswer("CanDeleteServizio", codice);
}

bool CanDeleteCliente(const QSqlDatabase &, const QString &codice)
{
    return RuleAnswer("CanDeleteCliente", codice);
}

bool CanDeleteCausaleTrasporto(const QSqlDatabase &, int id)
{
    return WrappedRule("CanDeleteCausaleTrasporto", QString::number(id));
}

bool CanDeleteFatturaVendita(const QSqlDatabase &, int id)
{
    return WrappedRule("CanDeleteFatturaVendita", QString::number(id));
}

bool CanDeleteNotaAccredito(const QSqlDatabase &, int id)
{
    return WrappedRule("CanDeleteNotaAccredito", QString::number(id));
}

bool DeleteNotaDocumenti(const QSqlDatabase &db, int id, bool ask)
{
    return KRVDeleteInTransaction(db,
                                  {QStringLiteral("DELETE FROM NOTE_DOCUMENTI WHERE IDNOTA_DOCUMENTI=")
                                   + QString::number(id)},
                                  ask);
}

bool DeleteTipiPagamento(const QSqlDatabase &db, int id, bool ask)
{
    return WrappedDelete(db, "DeleteTipiPagamento",
                         {QStringLiteral("DELETE FROM TIPI_PAGAMENTO WHERE IDTIPO_PAGAMENTO = ") + QString::number(id)},
                         ask);
}

bool DeleteAliquotaIVA(const QSqlDatabase &db, int id, bool ask)
{
    return WrappedDelete(db, "DeleteAliquotaIVA",
                         {QStringLiteral("DELETE FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA = ") + QString::number(id)},
                         ask);
}

bool DeleteUM(const QSqlDatabase &db, int id, bool ask)
{
    return WrappedDelete(db, "DeleteUM", {QStringLiteral("DELETE FROM UM WHERE IDUM = ") + QString::number(id)}, ask);
}

bool DeleteFatturaVendita(const QSqlDatabase &db, int id, bool ask)
{
    const QString key = QString::number(id);
    return WrappedDelete(db, "DeleteFatturaVendita",
                         {QStringLiteral("DELETE FROM FATT_VEND_DETT WHERE IDFATT_VEND = ") + key,
                          QStringLiteral("DELETE FROM FATT_VEND_DDT WHERE IDFATT_VEND = ") + key,
                          QStringLiteral("DELETE FROM FATT_VEND WHERE IDFATT_VEND = ") + key},
                         ask);
}

bool DeleteNotaAccredito(const QSqlDatabase &db, int id, bool ask)
{
    const QString key = QString::number(id);
    return WrappedDelete(db, "DeleteNotaAccredito",
                         {QStringLiteral("DELETE FROM NOTE_ACCREDITO_DETT WHERE IDNOTA_ACCREDITO = ") + key,
                          QStringLiteral("DELETE FROM NOTE_ACCREDITO WHERE IDNOTA_ACCREDITO = ") + key},
                         ask);
}

bool KRVEliminaCliente(const QSqlDatabase &db, int id)
{
    return KRVDeleteInTransaction(db, {QStringLiteral("DELETE FROM CLIENTI WHERE IDCLIENTE=") + QString::number(id)},
                                  false);
}

bool KRVEliminaAnaMaga(const QSqlDatabase &db, int id)
{
    return KRVDeleteInTransaction(db, {QStringLiteral("DELETE FROM ANA_MAGA WHERE IDANA_MAGA=") + QString::number(id)},
                                  false);
}

bool KRVEliminaServizio(const QSqlDatabase &db, int id)
{
    return KRVDeleteInTransaction(db, {QStringLiteral("DELETE FROM SERVIZI WHERE IDSERVIZIO=") + QString::number(id)},
                                  false);
}
