#include "KATPromemoria.h"

#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QSqlQuery>

namespace {

// The columns every reader of PROMEMORIA selects, in the order ReadPromemoria reads them.
const QString PromemoriaSelect =
    QStringLiteral("SELECT IDPROMEMORIA, TIPO, IDFATT_VEND, TITOLO, DATA, NOTE, STATO, FATTO_IL, "
                   "FATT_NUMERO_GENERATA FROM PROMEMORIA ");

QList<TKATPromemoria> ReadPromemoria(const QSqlDatabase &db, const QString &where)
{
    QList<TKATPromemoria> rows;
    QSqlQuery query = OpenQuery(db, PromemoriaSelect + where + QStringLiteral(" ORDER BY DATA, IDPROMEMORIA"));
    while (query.next()) {
        TKATPromemoria row;
        row.Id = query.value(0).toInt();
        row.Tipo = query.value(1).toString();
        row.IdFattura = query.value(2).toInt();
        row.Titolo = query.value(3).toString();
        row.Data = query.value(4).toDate();
        row.Note = query.value(5).toString();
        row.Stato = query.value(6).toString();
        row.FattoIl = query.value(7).toDateTime();
        row.FattNumeroGenerata = query.value(8).toInt();
        rows << row;
    }
    return rows;
}

QString SqlDate(const QDate &date)
{
    return QuotedStr(DateToString_YYYYMMDD(date));
}

QString SqlText(const char *text)
{
    return QuotedStr(QString::fromUtf8(text));
}

// The recurrence an invoice stores, and what its reminders are called.
struct TRicorrenza
{
    bool Abilitata = false;
    int Ogni = 0;
    QString Unita;
    QDate Inizio;
    QDate Fine;
    QString Regola;
    QString Titolo;
};

// The invoice's recurrence; a missing invoice reads as one whose recurrence is off.
TRicorrenza LeggiRicorrenza(const QSqlDatabase &db, int idFattura)
{
    TRicorrenza ricorrenza;
    QSqlQuery query = OpenQuery(db, QStringLiteral("SELECT FC_ABILITATO, FC_GENERA_OGNI, FC_GENERA_OGNI_UM, "
                                                   "FC_DATA_INIZIO, FC_DATA_FINE, FC_DATA_NUOVA_FATTURA, NUMERO, ANNO "
                                                   "FROM FATT_VEND WHERE IDFATT_VEND=")
                                        + QString::number(idFattura));
    if (!query.next())
        return ricorrenza;
    ricorrenza.Abilitata = StrToCustomBoolean(query.value(0)) == TCustomBoolean::cbTrue;
    ricorrenza.Ogni = query.value(1).toInt();
    ricorrenza.Unita = query.value(2).toString();
    ricorrenza.Inizio = query.value(3).toDate();
    ricorrenza.Fine = query.value(4).toDate();
    ricorrenza.Regola = query.value(5).toString();
    ricorrenza.Titolo =
        QStringLiteral("Fattura ciclica n. %1/%2").arg(query.value(6).toString(), query.value(7).toString());
    return ricorrenza;
}

} // namespace

TKATScadenze KATAggiornaPromemoriaFattura(const QSqlDatabase &db, int idFattura)
{
    const QString fattura = QString::number(idFattura);
    TQ3Transaction transaction(db);
    const TRicorrenza ricorrenza = LeggiRicorrenza(db, idFattura);
    TKATScadenze scadenze;
    if (ricorrenza.Abilitata)
        scadenze = KATCalcolaScadenze(ricorrenza.Ogni, ricorrenza.Unita, ricorrenza.Inizio, ricorrenza.Fine,
                                      ricorrenza.Regola);
    ExecSQL(db, QStringLiteral("DELETE FROM PROMEMORIA WHERE TIPO=") + SqlText(KATTipoFatturaCiclica)
                    + QStringLiteral(" AND IDFATT_VEND=") + fattura + QStringLiteral(" AND STATO=")
                    + SqlText(KATStatoDaFare));
    QList<QDate> fatte;
    for (const TKATPromemoria &storico : ReadPromemoria(db, QStringLiteral("WHERE IDFATT_VEND=") + fattura))
        fatte << storico.Data;
    for (const QDate &data : std::as_const(scadenze.Date)) {
        if (fatte.contains(data))
            continue;
        ExecSQL(db, QStringLiteral("INSERT INTO PROMEMORIA (IDPROMEMORIA, TIPO, IDFATT_VEND, TITOLO, DATA, STATO) "
                                   "VALUES(0, ")
                        + SqlText(KATTipoFatturaCiclica) + QStringLiteral(", ") + fattura + QStringLiteral(", ")
                        + QuotedStr(ricorrenza.Titolo) + QStringLiteral(", ") + SqlDate(data) + QStringLiteral(", ")
                        + SqlText(KATStatoDaFare) + QLatin1Char(')'));
    }
    transaction.Commit();
    return scadenze;
}

QList<TKATPromemoria> KATPromemoriaScaduti(const QSqlDatabase &db, const QDate &oggi)
{
    return ReadPromemoria(db, QStringLiteral("WHERE STATO=") + SqlText(KATStatoDaFare) + QStringLiteral(" AND DATA<=")
                                  + SqlDate(oggi));
}

QList<TKATPromemoria> KATPromemoriaFattura(const QSqlDatabase &db, int idFattura)
{
    return ReadPromemoria(db, idFattura == 0 ? QStringLiteral("WHERE IDFATT_VEND IS NULL")
                                             : QStringLiteral("WHERE IDFATT_VEND=") + QString::number(idFattura));
}

void KATSegnaFatto(const QSqlDatabase &db, int id, int numeroFattura)
{
    const QString where = QStringLiteral(" WHERE IDPROMEMORIA=") + QString::number(id);
    TQ3Transaction transaction(db);
    if (!QueryScalar(db, QStringLiteral("SELECT IDPROMEMORIA FROM PROMEMORIA") + where).isValid())
        throw EQ3Exception(QStringLiteral("Promemoria inesistente: %1.").arg(id));
    ExecSQL(db, QStringLiteral("UPDATE PROMEMORIA SET STATO=") + SqlText(KATStatoFatto)
                    + QStringLiteral(", FATTO_IL=CURRENT_TIMESTAMP, FATT_NUMERO_GENERATA=")
                    + (numeroFattura == 0 ? QStringLiteral("NULL") : QString::number(numeroFattura)) + where);
    transaction.Commit();
}

int KATAggiungiManuale(const QSqlDatabase &db, const QString &titolo, const QDate &data, const QString &note)
{
    TQ3Transaction transaction(db);
    const int id = GetLastGeneratorValue(QStringLiteral("GN_IDPROMEMORIA"), db) + 1;
    ExecSQL(db, QStringLiteral("INSERT INTO PROMEMORIA (IDPROMEMORIA, TIPO, TITOLO, DATA, NOTE, STATO) VALUES(")
                    + QString::number(id) + QStringLiteral(", ") + SqlText(KATTipoManuale) + QStringLiteral(", ")
                    + QuotedStr(titolo) + QStringLiteral(", ") + SqlDate(data) + QStringLiteral(", ") + QuotedStr(note)
                    + QStringLiteral(", ") + SqlText(KATStatoDaFare) + QLatin1Char(')'));
    transaction.Commit();
    return id;
}
