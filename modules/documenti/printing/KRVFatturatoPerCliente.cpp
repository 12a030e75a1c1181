#include "KRVFatturatoPerCliente.h"

#include <QRegularExpression>

namespace {

// The customer's columns, the share's numerator and the opening of its
// divisor, the same in both statements.
const char Cliente[] =
    "SELECT CLIENTI.CODICE, CLIENTI.RAGIONESOCIALE, SUM( ( SELECT COUNT(*) FROM FATT_VEND WHERE "
    "FATT_VEND.CLI_CODICE=CLIENTI.CODICE AND ANNO=:ANNO1 ) ) AS NUM_DOC, ( CASE WHEN (( SELECT SUM(TOTALE_IMPONIBILE) "
    "FROM FATT_VEND WHERE FATT_VEND.CLI_CODICE=CLIENTI.CODICE AND ANNO=:ANNO2 ) IS NULL) THEN 0 ELSE ( SELECT "
    "SUM(TOTALE_IMPONIBILE) FROM FATT_VEND WHERE FATT_VEND.CLI_CODICE=CLIENTI.CODICE AND ANNO=:ANNO3 ) END ) AS "
    "TOTALE_IMPONIBILE, ( (100 * ( CASE WHEN (( SELECT SUM(TOTALE_IMPONIBILE) FROM FATT_VEND WHERE "
    "FATT_VEND.CLI_CODICE=CLIENTI.CODICE AND ANNO=:ANNO4 ) IS NULL) THEN 0 ELSE ( SELECT SUM(TOTALE_IMPONIBILE) FROM "
    "FATT_VEND WHERE FATT_VEND.CLI_CODICE=CLIENTI.CODICE AND ANNO=:ANNO5 ) END ) ) / ( CASE WHEN ";

// The customers listed: those with an invoice in any year.
const char Clienti[] = "CLIENTI.CODICE IN ( SELECT FATT_VEND.CLI_CODICE FROM FATT_VEND ) GROUP BY CLIENTI.CODICE, "
                       "CLIENTI.RAGIONESOCIALE";

} // namespace

QString KRVSQLFatturatoPerClienteRiferimento()
{
    return QLatin1String(Cliente)
           + QStringLiteral(
               "(( SELECT SUM(TOTALE_IMPONIBILE) FROM FATT_VEND WHERE ANNO=:ANNO6 ) IS NULL) THEN 0 ELSE ( "
               "SELECT SUM(TOTALE_IMPONIBILE) FROM FATT_VEND WHERE ANNO=:ANNO7 ) END ) ) AS PERC_FATTURATO "
               "FROM CLIENTI WHERE ")
           + QLatin1String(Clienti) + QStringLiteral(" ORDER BY 4 DESC");
}

QString KRVSQLFatturatoPerCliente()
{
    // The year's total is a one-row derived table written first, so that it
    // is read once and each customer row is joined to it; its column joins the
    // grouping columns, which changes no group. A customer's own sums stay
    // sub-selects through the index on (CLI_CODICE, ANNO), with their types.
    return QLatin1String(Cliente)
           + QStringLiteral("ANNUO.TOTALE IS NULL THEN 0 ELSE ANNUO.TOTALE END ) ) AS PERC_FATTURATO FROM ( SELECT "
                            "SUM(TOTALE_IMPONIBILE) AS TOTALE FROM FATT_VEND WHERE ANNO=:ANNO6 ) ANNUO CROSS JOIN "
                            "CLIENTI WHERE ")
           + QLatin1String(Clienti) + QStringLiteral(", ANNUO.TOTALE ORDER BY 4 DESC");
}

void KRVApriFatturatoPerCliente(TQ3Dataset &dataset, int anno)
{
    dataset.Close();
    static const QRegularExpression parametro(QStringLiteral(":(ANNO[0-9]+)"));
    for (const QRegularExpressionMatch &trovato : parametro.globalMatch(dataset.SQL()))
        dataset.SetParamValue(trovato.captured(1), anno);
    dataset.Open();
}
