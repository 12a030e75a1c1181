#include "KATGenerazione.h"

#include "KATPromemoria.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QRegularExpression>
#include <QSqlQuery>

TKATGenerazione KATIniziaGenerazione(const QSqlDatabase &db, int idPromemoria)
{
    QSqlQuery query = OpenQuery(db, QStringLiteral("SELECT P.TIPO, P.STATO, F.IDFATT_VEND, F.NUMERO, F.CLI_CODICE "
                                                   "FROM PROMEMORIA P LEFT JOIN FATT_VEND F ON "
                                                   "F.IDFATT_VEND = P.IDFATT_VEND WHERE P.IDPROMEMORIA=")
                                        + QString::number(idPromemoria));
    if (!query.next())
        throw EQ3Exception(QStringLiteral("Il promemoria non esiste più."));
    if (query.value(0).toString() != QLatin1String(KATTipoFatturaCiclica))
        throw EQ3Exception(QStringLiteral("Il promemoria non riguarda una fattura ciclica."));
    if (query.value(1).toString() != QLatin1String(KATStatoDaFare))
        throw EQ3Exception(QStringLiteral("Il promemoria è già stato eseguito."));
    if (query.value(2).isNull())
        throw EQ3Exception(QStringLiteral("La fattura ciclica del promemoria non esiste più."));
    TKATGenerazione generazione;
    generazione.IdPromemoria = idPromemoria;
    generazione.IdFattura = query.value(2).toInt();
    generazione.FattNumero = query.value(3).toInt();
    generazione.CliCodice = query.value(4).toString();
    generazione.UltimaChiave = GetLastGeneratorValue(QStringLiteral("GN_IDFATT_VEND"), db);
    return generazione;
}

bool KATFatturaGenerata(const QSqlDatabase &db, const TKATGenerazione &generazione, int idFattura)
{
    if (idFattura <= generazione.UltimaChiave)
        return false;
    QSqlQuery query = OpenQuery(db, QStringLiteral("SELECT CLI_CODICE, NOTE FROM FATT_VEND WHERE IDFATT_VEND=")
                                        + QString::number(idFattura));
    if (!query.next() || query.value(0).toString() != generazione.CliCodice)
        return false;
    const QString riferimento = QStringLiteral("Rif. Fattura n. ") + QString::number(generazione.FattNumero);
    const QStringList righe = query.value(1).toString().split(QRegularExpression(QStringLiteral("[\r\n]+")));
    return righe.contains(riferimento);
}

int KATNumeroFattura(const QSqlDatabase &db, int idFattura)
{
    return QueryScalar(db,
                       QStringLiteral("SELECT NUMERO FROM FATT_VEND WHERE IDFATT_VEND=") + QString::number(idFattura))
        .toInt();
}
