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

// The reminder of the query's row, from its first nine columns.
TKATPromemoria LeggiPromemoria(const QSqlQuery &query)
{
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
    return row;
}

QList<TKATPromemoria> ReadPromemoria(const QSqlDatabase &db, const QString &where)
{
    QList<TKATPromemoria> rows;
    QSqlQuery query = OpenQuery(db, PromemoriaSelect + where + QStringLiteral(" ORDER BY DATA, IDPROMEMORIA"));
    while (query.next())
        rows << LeggiPromemoria(query);
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
    const int id =
        QueryScalar(db, QStringLiteral("INSERT INTO PROMEMORIA (IDPROMEMORIA, TIPO, TITOLO, DATA, NOTE, "
                                       "STATO) VALUES(0, ")
                            + SqlText(KATTipoManuale) + QStringLiteral(", ") + QuotedStr(titolo) + QStringLiteral(", ")
                            + SqlDate(data) + QStringLiteral(", ") + QuotedStr(note) + QStringLiteral(", ")
                            + SqlText(KATStatoDaFare) + QStringLiteral(") RETURNING IDPROMEMORIA"))
            .toInt();
    transaction.Commit();
    return id;
}

namespace {

// The condition of one reminder added by hand, checked to exist.
QString Manuale(const QSqlDatabase &db, int id)
{
    const QString where = QStringLiteral(" WHERE IDPROMEMORIA=") + QString::number(id) + QStringLiteral(" AND TIPO=")
                          + SqlText(KATTipoManuale);
    if (!QueryScalar(db, QStringLiteral("SELECT IDPROMEMORIA FROM PROMEMORIA") + where).isValid())
        throw EQ3Exception(QStringLiteral("Il promemoria non esiste più."));
    return where;
}

} // namespace

void KATModificaManuale(const QSqlDatabase &db, int id, const QString &titolo, const QDate &data, const QString &note,
                        bool fatto)
{
    TQ3Transaction transaction(db);
    const QString where = Manuale(db, id);
    const QString stato = fatto
                              ? QStringLiteral("STATO=") + SqlText(KATStatoFatto)
                                    + QStringLiteral(", FATTO_IL=COALESCE(FATTO_IL, CURRENT_TIMESTAMP)")
                              : QStringLiteral("STATO=") + SqlText(KATStatoDaFare) + QStringLiteral(", FATTO_IL=NULL");
    ExecSQL(db, QStringLiteral("UPDATE PROMEMORIA SET TITOLO=") + QuotedStr(titolo) + QStringLiteral(", DATA=")
                    + SqlDate(data) + QStringLiteral(", NOTE=") + QuotedStr(note) + QStringLiteral(", ") + stato
                    + where);
    transaction.Commit();
}

void KATEliminaManuale(const QSqlDatabase &db, int id)
{
    TQ3Transaction transaction(db);
    ExecSQL(db, QStringLiteral("DELETE FROM PROMEMORIA") + Manuale(db, id));
    transaction.Commit();
}

QList<TKATRigaPromemoria> KATElencoPromemoria(const QSqlDatabase &db, const TKATFiltroPromemoria &filtro)
{
    QString where =
        QStringLiteral("WHERE P.DATA BETWEEN ") + SqlDate(filtro.Dal) + QStringLiteral(" AND ") + SqlDate(filtro.Al);
    if (!filtro.Stato.isEmpty())
        where += QStringLiteral(" AND P.STATO=") + QuotedStr(filtro.Stato);
    QSqlQuery query =
        OpenQuery(db, QStringLiteral("SELECT P.IDPROMEMORIA, P.TIPO, P.IDFATT_VEND, P.TITOLO, P.DATA, P.NOTE, P.STATO, "
                                     "P.FATTO_IL, P.FATT_NUMERO_GENERATA, F.CLI_RAGIONESOCIALE, F.NUMERO, F.DATA "
                                     "FROM PROMEMORIA P LEFT JOIN FATT_VEND F ON F.IDFATT_VEND = P.IDFATT_VEND ")
                          + where + QStringLiteral(" ORDER BY P.DATA, P.IDPROMEMORIA"));
    QList<TKATRigaPromemoria> rows;
    while (query.next()) {
        TKATRigaPromemoria row;
        row.Promemoria = LeggiPromemoria(query);
        row.Cliente = query.value(9).toString();
        row.FattNumero = query.value(10).toInt();
        row.FattData = query.value(11).toDate();
        rows << row;
    }
    return rows;
}

int KATContaScaduti(const QSqlDatabase &db, const QDate &oggi)
{
    return QueryScalar(db, QStringLiteral("SELECT COUNT(*) FROM PROMEMORIA WHERE STATO=") + SqlText(KATStatoDaFare)
                               + QStringLiteral(" AND DATA<=") + SqlDate(oggi))
        .toInt();
}

QDate KATPrimoDaFare(const QSqlDatabase &db)
{
    return QueryScalar(db, QStringLiteral("SELECT MIN(DATA) FROM PROMEMORIA WHERE STATO=") + SqlText(KATStatoDaFare))
        .toDate();
}
