#include "KRVFatturaRiferimento.h"

#include "Q3Sql.h"

#include <QSqlQuery>

namespace {

// The first row of a query of key, number and date, in this order, run for one key.
TKRVFatturaRiferimento LeggiRiferimento(const QSqlDatabase &db, const QString &sql, int chiave)
{
    TQ3PreparedQuery lettura(db, sql);
    QSqlQuery &query = lettura.Run({chiave});
    TKRVFatturaRiferimento fattura;
    if (!query.next() || query.isNull(2))
        return fattura;
    fattura.IdFattura = query.value(0).toInt();
    fattura.Numero = query.value(1).toInt();
    fattura.Data = query.value(2).toDate();
    return fattura;
}

} // namespace

TKRVFatturaRiferimento KRVFatturaDellaNota(const QSqlDatabase &db, int idNota)
{
    return LeggiRiferimento(db, KRVQueryFatturaDellaNota, idNota);
}

TKRVFatturaRiferimento KRVFatturaVendita(const QSqlDatabase &db, int idFattura)
{
    return LeggiRiferimento(db, QStringLiteral("SELECT IDFATT_VEND, NUMERO, DATA FROM FATT_VEND WHERE IDFATT_VEND = ?"),
                            idFattura);
}

QString KRVTestoFatturaRiferimento(const TKRVFatturaRiferimento &fattura)
{
    if (fattura.Vuota())
        return {};
    return QStringLiteral("n. ") + QString::number(fattura.Numero) + QStringLiteral(" del ")
           + fattura.Data.toString(QStringLiteral("dd/MM/yyyy"));
}

QString KRVCondizioneFattureCliente(const QString &codiceCliente)
{
    return QStringLiteral("WHERE CLI_CODICE = ") + QuotedStr(codiceCliente);
}
