#include "KRVRedditivitaMensile.h"

#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QDate>

#include <QSqlQuery>

namespace {

QString MargineSQL(const QString &righe, const QString &testata, const QString &chiave, int mese, int anno,
                   const QString &tipoRiga)
{
    return QStringLiteral("SELECT SUM(IMPORTO) - SUM(COALESCE(COSTO, 0) * QUANTITA) FROM ") + righe
           + QStringLiteral(" LEFT JOIN ") + testata + QStringLiteral(" ON ") + righe + QLatin1Char('.') + chiave
           + QLatin1Char('=') + testata + QLatin1Char('.') + chiave + QStringLiteral(" WHERE EXTRACT(MONTH FROM ")
           + testata + QStringLiteral(".DATA) = ") + QString::number(mese) + QStringLiteral(" ")
           + QStringLiteral("AND EXTRACT(YEAR FROM ") + testata + QStringLiteral(".DATA) = ") + QString::number(anno)
           + QStringLiteral(" ") + QStringLiteral("AND TIPO_RIGA=") + QuotedStr(tipoRiga);
}

// The month's margin of one line kind, as a statement composes it.
using TKRVMargineSQL = QString (*)(int mese, int anno, const QString &tipoRiga, bool conFattAcc);

// The month's margin read through the headers of the month, found by date on
// their index, and their lines, found by the header's key on theirs.
QString MargineMeseSQL(const QString &righe, const QString &testata, const QString &chiave, int mese, int anno,
                       const QString &tipoRiga)
{
    const QDate primo(anno, mese, 1);
    return QStringLiteral("SELECT SUM(IMPORTO) - SUM(COALESCE(COSTO, 0) * QUANTITA) FROM ") + testata
           + QStringLiteral(" LEFT JOIN ") + righe + QStringLiteral(" ON ") + righe + QLatin1Char('.') + chiave
           + QLatin1Char('=') + testata + QLatin1Char('.') + chiave + QStringLiteral(" WHERE ") + testata
           + QStringLiteral(".DATA >= ") + QuotedStr(DateToString_YYYYMMDD(primo)) + QStringLiteral(" AND ") + testata
           + QStringLiteral(".DATA < ") + QuotedStr(DateToString_YYYYMMDD(primo.addMonths(1)))
           + QStringLiteral(" AND TIPO_RIGA=") + QuotedStr(tipoRiga);
}

// The warehouse's invoices keep the reference's reading: their table's
// indexes are that module's own.
QString MargineMese(int mese, int anno, const QString &tipoRiga, bool conFattAcc)
{
    QString sql = QStringLiteral("COALESCE((")
                  + MargineMeseSQL(QStringLiteral("FATT_VEND_DETT"), QStringLiteral("FATT_VEND"),
                                   QStringLiteral("IDFATT_VEND"), mese, anno, tipoRiga)
                  + QStringLiteral("), 0)");
    if (conFattAcc)
        sql += QStringLiteral(" + COALESCE((") + GetFattAccSQL(mese, anno, tipoRiga) + QStringLiteral("), 0)");
    return sql;
}

// The three kinds of a month as columns of one row.
QString TreTipiSQL(TKRVMargineSQL margine, int mese, int anno, bool conFattAcc)
{
    return QStringLiteral("(") + margine(mese, anno, QStringLiteral("Articolo"), conFattAcc)
           + QStringLiteral(") AS TOTALE_ARTICOLI, ") + QStringLiteral("(")
           + margine(mese, anno, QStringLiteral("Servizio"), conFattAcc) + QStringLiteral(") AS TOTALE_SERVIZI, ")
           + QStringLiteral("(") + margine(mese, anno, QStringLiteral("Non imponibile"), conFattAcc)
           + QStringLiteral(") AS TOTALE_NON_IMPONIBILE ");
}

// Six months from primoMese, one row per month.
QString SemestreSQL(TKRVMargineSQL margine, int primoMese, int anno, bool conFattAcc)
{
    QString sql = QStringLiteral("SELECT FIRST 1 ") + QString::number(primoMese) + QStringLiteral(" AS MESE, ")
                  + TreTipiSQL(margine, primoMese, anno, conFattAcc) + QStringLiteral("FROM RDB$GENERATORS ");
    const int ultimoMese = primoMese + 5;
    for (int mese = primoMese + 1; mese <= ultimoMese; ++mese) {
        sql += QStringLiteral("UNION SELECT ") + QStringLiteral("FIRST 1 ") + QString::number(mese)
               + QStringLiteral(" AS MESE, ") + TreTipiSQL(margine, mese, anno, conFattAcc)
               + QStringLiteral("FROM RDB$GENERATORS");
        if (mese < ultimoMese)
            sql += QLatin1Char(' ');
    }
    return sql;
}

double Cella(const TKRVTabellaRedditivita &tabella, int riga, int colonna)
{
    return KRVValoreImporto(tabella.at(riga).at(colonna));
}

} // namespace

QString GetFattVendSQL(int mese, int anno, const QString &tipoRiga)
{
    return MargineSQL(QStringLiteral("FATT_VEND_DETT"), QStringLiteral("FATT_VEND"), QStringLiteral("IDFATT_VEND"),
                      mese, anno, tipoRiga);
}

QString GetFattAccSQL(int mese, int anno, const QString &tipoRiga)
{
    return MargineSQL(QStringLiteral("FATT_ACC_DETT"), QStringLiteral("FATT_ACC"), QStringLiteral("IDFATT_ACC"), mese,
                      anno, tipoRiga);
}

QString InternalGetSQL01(int mese, int anno, const QString &tipoRiga, bool conFattAcc)
{
    QString sql = QStringLiteral("COALESCE((") + GetFattVendSQL(mese, anno, tipoRiga) + QStringLiteral("), 0)");
    if (conFattAcc)
        sql += QStringLiteral(" + ") + QStringLiteral("COALESCE((") + GetFattAccSQL(mese, anno, tipoRiga)
               + QStringLiteral("), 0)");
    return sql;
}

QString KRVRedditivitaSemestreSQLRiferimento(int primoMese, int anno, bool conFattAcc)
{
    return SemestreSQL(InternalGetSQL01, primoMese, anno, conFattAcc);
}

QString KRVRedditivitaSemestreSQL(int primoMese, int anno, bool conFattAcc)
{
    return SemestreSQL(MargineMese, primoMese, anno, conFattAcc);
}

bool KRVEsisteFattAcc(const QSqlDatabase &db)
{
    return db.tables().contains(QStringLiteral("FATT_ACC"), Qt::CaseInsensitive);
}

QList<TKRVRedditivitaMese> KRVLeggiRedditivita(const QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query = OpenQuery(db, sql);
    const QSqlRecord layout = query.record();
    const int mese = FieldIndex(layout, QStringLiteral("MESE"));
    const int articoli = FieldIndex(layout, QStringLiteral("TOTALE_ARTICOLI"));
    const int servizi = FieldIndex(layout, QStringLiteral("TOTALE_SERVIZI"));
    const int nonImponibile = FieldIndex(layout, QStringLiteral("TOTALE_NON_IMPONIBILE"));
    QList<TKRVRedditivitaMese> mesi;
    while (query.next())
        mesi.append({query.value(mese).toInt(), query.value(articoli).toDouble(), query.value(servizi).toDouble(),
                     query.value(nonImponibile).toDouble()});
    return mesi;
}

TKRVTabellaRedditivita KRVTabellaVuota(int anno)
{
    static const QStringList nomiMesi{"Gennaio", "Febbraio", "Marzo",     "Aprile",  "Maggio",   "Giugno",
                                      "Luglio",  "Agosto",   "Settembre", "Ottobre", "Novembre", "Dicembre"};
    TKRVTabellaRedditivita tabella(KRVRedditivitaRighe, QStringList(KRVRedditivitaColonne));
    tabella[0] = QStringList{QStringLiteral("Anno: ") + QString::number(anno),
                             QStringLiteral("Articoli"),
                             QStringLiteral("Servizi"),
                             QStringLiteral("Altro"),
                             QString(),
                             QStringLiteral("TOTALE"),
                             QStringLiteral("MEDIA")};
    for (int mese = 1; mese <= 12; ++mese)
        tabella[mese][0] = nomiMesi.at(mese - 1);
    tabella[KRVRigaTotale][0] = QStringLiteral("TOTALE");
    tabella[KRVRigaMedia][0] = QStringLiteral("MEDIA");
    return tabella;
}

void KRVApplicaMesi(TKRVTabellaRedditivita &tabella, const QList<TKRVRedditivitaMese> &mesi)
{
    for (const TKRVRedditivitaMese &riga : mesi) {
        if (riga.Mese < 1 || riga.Mese > 12)
            continue;
        const double valori[3] = {riga.Articoli, riga.Servizi, riga.NonImponibile};
        for (int tipo = 0; tipo < 3; ++tipo) {
            tabella[riga.Mese][tipo + 1] = KRVTestoImporto(valori[tipo]);
            tabella[KRVRigaTotale][tipo + 1] = KRVTestoImporto(Cella(tabella, KRVRigaTotale, tipo + 1) + valori[tipo]);
        }
        tabella[riga.Mese][KRVColonnaTotale] = KRVTestoImporto(valori[0] + valori[1] + valori[2]);
    }
}

void KRVCompletaTotali(TKRVTabellaRedditivita &tabella)
{
    tabella[KRVRigaTotale][KRVColonnaTotale] = KRVTestoImporto(
        Cella(tabella, KRVRigaTotale, 1) + Cella(tabella, KRVRigaTotale, 2) + Cella(tabella, KRVRigaTotale, 3));
    for (int mese = 1; mese <= 12; ++mese)
        tabella[mese][KRVColonnaMedia] = KRVTestoImporto(Cella(tabella, mese, KRVColonnaTotale) / 3);
    for (int colonna = 1; colonna <= 3; ++colonna)
        tabella[KRVRigaMedia][colonna] = KRVTestoImporto(Cella(tabella, KRVRigaTotale, colonna) / 12);
}

QString KRVTestoImporto(double valore)
{
    return QString::asprintf("%.2f", valore);
}

double KRVValoreImporto(const QString &testo)
{
    bool ok = false;
    const double valore = testo.toDouble(&ok);
    return ok ? valore : 0;
}
