#include "KRVStatisticheFatturatoRighe.h"

#include "KRVStampe.h"
#include "Q3Dataset.h"
#include "Q3Guards.h"
#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QStringList>

namespace {

QString Uguale(TKRVScritturaSQL scrittura)
{
    return scrittura == TKRVScritturaSQL::Spaziata ? QStringLiteral(" = ") : QStringLiteral("=");
}

// The columns of one invoice kind's lines ("FATT_VEND"), up to the line table
// aliased EXT_TBL, through which they are named: the code, its first
// description, the category, the sum, the kind.
QString ColonneRighe(const QString &testata, const QString &uguale)
{
    const QString dett = testata + QStringLiteral("_DETT");
    return QStringLiteral("EXT_TBL.CODICE AS CODICE, (SELECT FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM ")
           + dett + QStringLiteral(" INT_TBL WHERE INT_TBL.CODICE") + uguale
           + QStringLiteral(
               "EXT_TBL.CODICE ) AS DESCRIZIONE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS "
               "IMPORTO, EXT_TBL.TIPO_RIGA FROM ")
           + dett + QStringLiteral(" EXT_TBL ");
}

// One invoice kind's totals, its headers chosen by date.
QString FatturatoRighe(const QString &testata, const QString &where, const QString &dal, const QString &al,
                       TKRVScritturaSQL scrittura)
{
    const QString chiave = QStringLiteral("ID") + testata;
    return QStringLiteral("SELECT ") + ColonneRighe(testata, Uguale(scrittura)) + where + QStringLiteral(" AND ")
           + chiave + QStringLiteral(" IN (SELECT ") + chiave + QStringLiteral(" FROM ") + testata
           + QStringLiteral(" WHERE DATA >= ") + dal + QStringLiteral(" AND DATA <= ") + al
           + QStringLiteral(") GROUP BY 1, 2, 3, 5");
}

// One invoice kind's totals per customer, its headers joined and chosen by date.
QString FatturatoClientiServizi(const QString &testata, const QString &where, const QString &dal, const QString &al)
{
    const QString chiave = QStringLiteral("ID") + testata;
    return QStringLiteral("SELECT ") + testata + QStringLiteral(".CLI_CODICE, ") + testata
           + QStringLiteral(".CLI_RAGIONESOCIALE, ") + ColonneRighe(testata, QStringLiteral(" = "))
           + QStringLiteral("LEFT JOIN ") + testata + QStringLiteral(" ON ") + testata + QLatin1Char('.') + chiave
           + QStringLiteral(" = EXT_TBL.") + chiave + QLatin1Char(' ') + where + QStringLiteral(" AND (") + testata
           + QStringLiteral(".DATA >= ") + dal + QStringLiteral(" AND ") + testata + QStringLiteral(".DATA <= ") + al
           + QStringLiteral(")GROUP BY 1, 2, 3, 4, 5, 7 ");
}

} // namespace

QString KRVWhereRighe(const TKRVFiltroRighe &filtro, TKRVScritturaSQL scrittura)
{
    const QString uguale = Uguale(scrittura);
    QString where = QStringLiteral("WHERE TIPO_RIGA") + uguale + QuotedStr(filtro.TipoRiga);
    if (!filtro.Categorie.isEmpty()) {
        QStringList chiavi;
        for (const int categoria : filtro.Categorie)
            chiavi << QString::number(categoria);
        where += QStringLiteral(" AND IDCATEGORIA IN (") + chiavi.join(QLatin1Char(',')) + QLatin1Char(')');
    }
    if (!filtro.Codice.isEmpty())
        where += QStringLiteral(" AND CODICE") + uguale + QuotedStr(filtro.Codice);
    return where;
}

QString KRVSQLFatturatoRighe(const QString &where, const QDate &dal, const QDate &al, TKRVScritturaSQL scrittura)
{
    const QString da = QuotedStr(DateToString_YYYYMMDD(dal));
    const QString a = QuotedStr(DateToString_YYYYMMDD(al));
    return FatturatoRighe(QStringLiteral("FATT_VEND"), where, da, a, scrittura) + QStringLiteral(" UNION ")
           + FatturatoRighe(QStringLiteral("FATT_ACC"), where, da, a, scrittura);
}

QString KRVSQLFatturatoClientiServizi(const QString &where, const QDate &dal, const QDate &al, bool conFattAcc)
{
    const QString da = QuotedStr(dal.toString(QStringLiteral("yyyy-MM-dd")));
    const QString a = QuotedStr(al.toString(QStringLiteral("yyyy-MM-dd")));
    QString sql = FatturatoClientiServizi(QStringLiteral("FATT_VEND"), where, da, a);
    if (conFattAcc)
        sql += QStringLiteral("UNION ") + FatturatoClientiServizi(QStringLiteral("FATT_ACC"), where, da, a);
    return sql + QStringLiteral("ORDER BY 3, 4");
}

QString KRVTitoloStatistica(const QString &testo, const QDate &dal, const QDate &al)
{
    const QString formato = QStringLiteral("dd/MM/yyyy");
    return testo + dal.toString(formato) + QStringLiteral(" al ") + al.toString(formato);
}

bool KRVStampaStatistica(const QString &dataset, const QString &sql, const QString &report, const QString &titolo)
{
    IKRVStampeHost *host = KRVStampeHost();
    if (KRVApriDatiStampa(host, dataset, sql)->IsEmpty())
        return false;
    host->rProject()->SetParam(QStringLiteral("Param1"), titolo);
    host->rProject()->ExecuteReport(report);
    return true;
}
