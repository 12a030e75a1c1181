#include "KRVStampeRiepiloghi.h"

#include "KRVErrors.h"
#include "KRVFatturatoPerCliente.h"
#include "KRVSession.h"
#include "KRVStampe.h"
#include "Q3Dataset.h"
#include "Q3Guards.h"

namespace {

QString MeseDesc()
{
    const char *mesi[] = {"Gennaio", "Febbraio", "Marzo",     "Aprile",  "Maggio",   "Giugno",
                          "Luglio",  "Agosto",   "Settembre", "Ottobre", "Novembre", "Dicembre"};
    QString caso = QStringLiteral("(CASE ");
    for (int m = 1; m <= 12; ++m)
        caso += QStringLiteral("WHEN EXTRACT(MONTH FROM DATA) = %1 THEN '%2' ")
                    .arg(m)
                    .arg(QString::fromLatin1(mesi[m - 1]));
    return caso + QStringLiteral("END ) AS MESE_DESC, ");
}

QString Pagato()
{
    return QStringLiteral("(CASE WHEN PAGATO='True' THEN 'SI' WHEN PAGATO='False' THEN 'NO' END ) AS PAGATO, ");
}

// The paid and due conditions over one table.
QString Filtri(const QString &tabella, TCustomBoolean pagato, TCustomBoolean scadenza, const QDate &oggi)
{
    QString filtri;
    if (pagato == TCustomBoolean::cbTrue)
        filtri += QStringLiteral(" AND ") + tabella + QStringLiteral(".PAGATO='True'");
    else if (pagato == TCustomBoolean::cbFalse)
        filtri += QStringLiteral(" AND ") + tabella + QStringLiteral(".PAGATO='False'");
    const QString data = QLatin1Char('\'') + DateToString_YYYYMMDD(oggi) + QLatin1Char('\'');
    if (scadenza == TCustomBoolean::cbTrue)
        filtri += QStringLiteral(" AND ") + tabella + QStringLiteral(".SCADENZA_PAGAMENTO < ") + data;
    else if (scadenza == TCustomBoolean::cbFalse)
        filtri += QStringLiteral(" AND ") + tabella + QStringLiteral(".SCADENZA_PAGAMENTO >= ") + data;
    return filtri;
}

} // namespace

QString KRVSQLRiepilogoFatture(int anno, TCustomBoolean pagato, TCustomBoolean scadenza, bool magazzino,
                               const QDate &oggi)
{
    const QString annoTesto = QString::number(anno);
    QString sql =
        QStringLiteral("SELECT NUMERO, DATA, ") + MeseDesc()
        + QStringLiteral("EXTRACT(MONTH FROM DATA) AS MESE_INT, CLI_CODICE, CLI_RAGIONESOCIALE, ") + Pagato()
        + QStringLiteral("SCADENZA_PAGAMENTO, 'FV' AS TIPO_DOCUMENTO, TOTALE_IMPONIBILE, TOTALE_DOCUMENTO FROM "
                         "FATT_VEND WHERE ANNO=")
        + annoTesto + Filtri(QStringLiteral("FATT_VEND"), pagato, scadenza, oggi);
    if (!magazzino)
        return sql + QStringLiteral(" ORDER BY DATA DESC, NUMERO DESC");
    sql += QStringLiteral(" UNION ");
    sql += QStringLiteral("SELECT ") + QStringLiteral("NUMERO, ") + QStringLiteral("DATA, ") + MeseDesc()
           + QStringLiteral("EXTRACT(MONTH FROM DATA) AS MESE_INT, CLI_CODICE, CLI_RAGIONESOCIALE, ") + Pagato()
           + QStringLiteral("SCADENZA_PAGAMENTO, ") + QStringLiteral("'FA' AS TIPO_DOCUMENTO, ")
           + QStringLiteral("TOTALE_IMPONIBILE, ") + QStringLiteral("TOTALE_DOCUMENTO ")
           + QStringLiteral("FROM FATT_ACC ") + QStringLiteral("WHERE ANNO=") + annoTesto
           + Filtri(QStringLiteral("FATT_ACC"), pagato, scadenza, oggi);
    return sql + QStringLiteral(" ORDER BY 2 DESC, 1 DESC");
}

QString KRVFiltriRiepilogoFatture(TCustomBoolean pagato, TCustomBoolean scadenza, const QDate &oggi)
{
    QString filtri = QStringLiteral("Fatture: ");
    if (pagato == TCustomBoolean::cbTrue)
        filtri += QStringLiteral("pagate");
    else if (pagato == TCustomBoolean::cbFalse)
        filtri += QStringLiteral("da pagare");
    else
        filtri += QStringLiteral("tutte");
    filtri += QStringLiteral(" - Scadenza: ");
    const QString data = oggi.toString(QStringLiteral("dd/MM/yyyy"));
    if (scadenza == TCustomBoolean::cbTrue)
        filtri += QStringLiteral("scadute prima del ") + data;
    else if (scadenza == TCustomBoolean::cbFalse)
        filtri += QStringLiteral("in scadenza dal ") + data;
    else
        filtri += QStringLiteral("tutte");
    return filtri;
}

void StampaRiepilogoFatture(int anno, TCustomBoolean pagato, TCustomBoolean scadenza)
{
    KRVWrapped("StampaRiepilogoFatture", [&] {
        IKRVStampeHost *host = KRVStampeHost();
        const QDate oggi = QDate::currentDate();
        KRVApriDatiStampa(host, QStringLiteral("adsRiepilogoFatture"),
                          KRVSQLRiepilogoFatture(anno, pagato, scadenza, KRVModuloCaricato(QStringLiteral("Magazzino")),
                                                 oggi));
        host->rProject()->SetParam(QStringLiteral("Anno"), QString::number(anno));
        host->rProject()->SetParam(QStringLiteral("Filtri"), KRVFiltriRiepilogoFatture(pagato, scadenza, oggi));
        host->rProject()->ExecuteReport(QStringLiteral("RiepilogoFatture"));
    });
}

void StampaFatturatoPerCliente(int anno)
{
    KRVWrapped("StampaFatturatoPerCliente", [&] {
        IKRVStampeHost *host = KRVStampeHost();
        {
            TQ3BusyCursor busy;
            KRVAggiornaAzienda(host);
            KRVApriFatturatoPerCliente(*host->StampeDataset(QStringLiteral("adsFatturatoPerCliente")), anno);
        }
        host->rProject()->SetParam(QStringLiteral("Anno"), QString::number(anno));
        host->rProject()->ExecuteReport(QStringLiteral("TotaleFatturatoPerCliente"));
    });
}
