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

// The columns of one invoice kind's lines ("FATT_VEND"), named through the
// line table aliased EXT_TBL, up to FROM: the code, its first description, the
// category, the sum, the kind.
QString ColonneRighe(const QString &testata, const QString &uguale)
{
    return QStringLiteral("EXT_TBL.CODICE AS CODICE, (SELECT FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM ")
           + testata + QStringLiteral("_DETT INT_TBL WHERE INT_TBL.CODICE") + uguale
           + QStringLiteral(
               "EXT_TBL.CODICE ) AS DESCRIZIONE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS "
               "IMPORTO, EXT_TBL.TIPO_RIGA FROM ");
}

// One invoice kind's lines (aliased EXT_TBL) that pass the conditions, of the
// headers dated in the period, looked up by their key for each line.
QString RigheDelleTestateDelPeriodo(const QString &testata, const QString &where, const QString &dal, const QString &al)
{
    const QString chiave = QStringLiteral("ID") + testata;
    return testata + QStringLiteral("_DETT EXT_TBL ") + where + QStringLiteral(" AND ") + chiave
           + QStringLiteral(" IN (SELECT ") + chiave + QStringLiteral(" FROM ") + testata
           + QStringLiteral(" WHERE DATA >= ") + dal + QStringLiteral(" AND DATA <= ") + al + QLatin1Char(')');
}

// The same, each line joined to its header, whose date is tested.
QString RigheConTestataDelPeriodo(const QString &testata, const QString &where, const QString &dal, const QString &al)
{
    const QString chiave = QStringLiteral("ID") + testata;
    return testata + QStringLiteral("_DETT EXT_TBL LEFT JOIN ") + testata + QStringLiteral(" ON ") + testata
           + QLatin1Char('.') + chiave + QStringLiteral(" = EXT_TBL.") + chiave + QLatin1Char(' ') + where
           + QStringLiteral(" AND (") + testata + QStringLiteral(".DATA >= ") + dal + QStringLiteral(" AND ") + testata
           + QStringLiteral(".DATA <= ") + al + QLatin1Char(')');
}

// One invoice kind's totals, its headers chosen by date.
QString FatturatoRighe(const QString &testata, const QString &where, const QString &dal, const QString &al,
                       TKRVScritturaSQL scrittura)
{
    return QStringLiteral("SELECT ") + ColonneRighe(testata, Uguale(scrittura))
           + RigheDelleTestateDelPeriodo(testata, where, dal, al) + QStringLiteral(" GROUP BY 1, 2, 3, 5");
}

// One invoice kind's totals per customer, its headers joined and chosen by date.
QString FatturatoClientiServizi(const QString &testata, const QString &where, const QString &dal, const QString &al)
{
    return QStringLiteral("SELECT ") + testata + QStringLiteral(".CLI_CODICE, ") + testata
           + QStringLiteral(".CLI_RAGIONESOCIALE, ") + ColonneRighe(testata, QStringLiteral(" = "))
           + RigheConTestataDelPeriodo(testata, where, dal, al) + QStringLiteral("GROUP BY 1, 2, 3, 4, 5, 7 ");
}

// The period's totals of one invoice kind ("FATT_VEND") per code, category and
// kind, and per customer when asked, summed from the lines that source gives
// (aliased EXT_TBL, its headers by their table's name) before each row is
// given the code's first description. Every code and category so has one row,
// whatever descriptions its lines were written with.
QString Totali(const QString &testata, const QString &sorgente, bool perCliente, const QString &uguale)
{
    const QString dett = testata + QStringLiteral("_DETT");
    QString clienti;
    QString clientiRighe;
    if (perCliente) {
        clienti = QStringLiteral("R.CLI_CODICE, R.CLI_RAGIONESOCIALE, ");
        clientiRighe = testata + QStringLiteral(".CLI_CODICE AS CLI_CODICE, ") + testata
                       + QStringLiteral(".CLI_RAGIONESOCIALE AS CLI_RAGIONESOCIALE, ");
    }
    return QStringLiteral("SELECT ") + clienti
           + QStringLiteral("R.CODICE AS CODICE, (SELECT FIRST 1 SUBSTRING(DESCRIZIONE FROM 1 FOR 100) FROM ") + dett
           + QStringLiteral(" INT_TBL WHERE INT_TBL.CODICE") + uguale
           + QStringLiteral("R.CODICE ) AS DESCRIZIONE, R.IDCATEGORIA AS IDCATEGORIA, R.IMPORTO AS IMPORTO, "
                            "R.TIPO_RIGA FROM (SELECT ")
           + clientiRighe
           + QStringLiteral("EXT_TBL.CODICE AS CODICE, EXT_TBL.IDCATEGORIA AS IDCATEGORIA, SUM(EXT_TBL.IMPORTO) AS "
                            "IMPORTO, EXT_TBL.TIPO_RIGA AS TIPO_RIGA FROM ")
           + sorgente + QStringLiteral(" GROUP BY ")
           + (perCliente ? QStringLiteral("1, 2, 3, 4, 6") : QStringLiteral("1, 2, 4")) + QStringLiteral(") R ");
}

// The sales invoices' lines of the period: the headers by their date, then
// their lines (the outer join keeps that order; the conditions on the lines
// drop the headers without any).
QString RigheVenditePeriodo(const QString &where, const QString &dal, const QString &al, bool parentesi)
{
    return QStringLiteral("FATT_VEND LEFT JOIN FATT_VEND_DETT EXT_TBL ON EXT_TBL.IDFATT_VEND = FATT_VEND.IDFATT_VEND ")
           + where + QStringLiteral(" AND ") + (parentesi ? QStringLiteral("(") : QString())
           + QStringLiteral("FATT_VEND.DATA >= ") + dal + QStringLiteral(" AND FATT_VEND.DATA <= ") + al
           + (parentesi ? QStringLiteral(")") : QString());
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

QString KRVSQLFatturatoRigheRiferimento(const QString &where, const QDate &dal, const QDate &al,
                                        TKRVScritturaSQL scrittura)
{
    const QString da = QuotedStr(DateToString_YYYYMMDD(dal));
    const QString a = QuotedStr(DateToString_YYYYMMDD(al));
    return FatturatoRighe(QStringLiteral("FATT_VEND"), where, da, a, scrittura) + QStringLiteral(" UNION ")
           + FatturatoRighe(QStringLiteral("FATT_ACC"), where, da, a, scrittura);
}

QString KRVSQLFatturatoClientiServiziRiferimento(const QString &where, const QDate &dal, const QDate &al,
                                                 bool conFattAcc)
{
    const QString da = QuotedStr(dal.toString(QStringLiteral("yyyy-MM-dd")));
    const QString a = QuotedStr(al.toString(QStringLiteral("yyyy-MM-dd")));
    QString sql = FatturatoClientiServizi(QStringLiteral("FATT_VEND"), where, da, a);
    if (conFattAcc)
        sql += QStringLiteral("UNION ") + FatturatoClientiServizi(QStringLiteral("FATT_ACC"), where, da, a);
    return sql + QStringLiteral("ORDER BY 3, 4");
}

QString KRVSQLFatturatoRighe(const QString &where, const QDate &dal, const QDate &al, TKRVScritturaSQL scrittura)
{
    const QString da = QuotedStr(DateToString_YYYYMMDD(dal));
    const QString a = QuotedStr(DateToString_YYYYMMDD(al));
    const QString uguale = Uguale(scrittura);
    const QString magazzino = QStringLiteral("FATT_ACC");
    return Totali(QStringLiteral("FATT_VEND"), RigheVenditePeriodo(where, da, a, false), false, uguale)
           + QStringLiteral("UNION ")
           + Totali(magazzino, RigheDelleTestateDelPeriodo(magazzino, where, da, a), false, uguale);
}

QString KRVSQLFatturatoClientiServizi(const QString &where, const QDate &dal, const QDate &al, bool conFattAcc)
{
    const QString da = QuotedStr(dal.toString(QStringLiteral("yyyy-MM-dd")));
    const QString a = QuotedStr(al.toString(QStringLiteral("yyyy-MM-dd")));
    const QString uguale = QStringLiteral(" = ");
    QString sql = Totali(QStringLiteral("FATT_VEND"), RigheVenditePeriodo(where, da, a, true), true, uguale);
    if (conFattAcc)
        sql += QStringLiteral("UNION ")
               + Totali(QStringLiteral("FATT_ACC"), RigheConTestataDelPeriodo(QStringLiteral("FATT_ACC"), where, da, a),
                        true, uguale);
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
