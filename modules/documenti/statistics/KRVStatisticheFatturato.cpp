#include "KRVStatisticheFatturato.h"

#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QLocale>
#include <QSqlQuery>

namespace {

struct TKRVFonteFatturato
{
    const char *Tabella;
    const char *Inizio;
    double Segno;
};

// Sales invoices count net of VAT; the warehouse's invoices are added, the
// credit notes subtracted.
const TKRVFonteFatturato Fonti[] = {
    {"FATT_VEND",
     "SELECT SUM(TOTALE_DOCUMENTO - TOTALE_IMPOSTA) AS TOTALE, EXTRACT(MONTH FROM DATA) AS MESE, ANNO FROM FATT_VEND "
     "WHERE ANNO >= ",
     1},
    {"FATT_ACC",
     "SELECT SUM(TOTALE_IMPONIBILE) AS TOTALE, EXTRACT(MONTH FROM DATA) AS MESE, ANNO FROM FATT_ACC WHERE ANNO >= ", 1},
    {"NOTE_ACCREDITO",
     "SELECT SUM(TOTALE_IMPONIBILE) AS TOTALE, EXTRACT(MONTH FROM DATA) AS MESE, ANNO FROM NOTE_ACCREDITO WHERE ANNO >= ",
     -1},
};

// The column of the values of a year, 0 for a year not shown.
int ColonnaAnno(int annoRiga, int anno)
{
    if (annoRiga == anno)
        return 1;
    if (annoRiga == anno - 1)
        return 4;
    if (annoRiga == anno - 2)
        return 7;
    return 0;
}

double Valore(const TKRVGrigliaFatturato &griglia, int riga, int colonna)
{
    return KRVValoreFatturato(griglia.at(riga).at(colonna));
}

void Imposta(TKRVGrigliaFatturato &griglia, int riga, int colonna, double valore)
{
    griglia[riga][colonna] = KRVTestoFatturato(valore);
}

// Differences and percentages of one row from its three values.
void CalcolaRiga(TKRVGrigliaFatturato &griglia, int riga)
{
    const double anno = Valore(griglia, riga, 1);
    const double precedente = Valore(griglia, riga, 4);
    const double secondo = Valore(griglia, riga, 7);
    Imposta(griglia, riga, 2, anno - precedente);
    Imposta(griglia, riga, 5, precedente - secondo);
    if (precedente != 0)
        Imposta(griglia, riga, 3, anno * 100 / precedente - 100);
    if (secondo != 0)
        Imposta(griglia, riga, 6, precedente * 100 / secondo - 100);
}

// A number with a fixed count of decimals in the locale's separator, without
// thousands grouping.
QString Fisso(double valore, int decimali)
{
    return QString::asprintf("%.*f", decimali, valore).replace(QLatin1Char('.'), QLocale().decimalPoint());
}

} // namespace

QString KRVTitoloFatturato()
{
    return QStringLiteral("Fatturato ultimi 3 anni al netto dell'IVA");
}

QList<int> KRVLarghezzeFatturato()
{
    return {90, 108, 103, 55, 108, 103, 55, 108};
}

TKRVGrigliaFatturato KRVGrigliaFatturatoVuota(int anno)
{
    TKRVGrigliaFatturato griglia(KRVFatturatoRighe, QStringList(KRVFatturatoColonne));
    griglia[0][1] = QString::number(anno);
    griglia[0][4] = QString::number(anno - 1);
    griglia[0][7] = QString::number(anno - 2);
    griglia[1] = QStringList{QString(),           QStringLiteral("Valori"), QStringLiteral("Diff."),
                             QStringLiteral("%"), QStringLiteral("Valori"), QStringLiteral("Diff."),
                             QStringLiteral("%"), QStringLiteral("Valori")};
    const QLocale locale;
    for (int mese = 1; mese <= 12; ++mese)
        griglia[mese + 1][0] = locale.monthName(mese, QLocale::LongFormat);
    griglia[KRVFatturatoRigaTotali][0] = QStringLiteral("Totali");
    return griglia;
}

QList<TQ3XlsUnione> KRVUnioniFatturato()
{
    return {{0, 1, 0, 3}, {0, 4, 0, 6}, {KRVFatturatoRigaSeparatore, 0, KRVFatturatoRigaSeparatore, 7}};
}

QString KRVSQLFatturato(const QString &tabella, int anno)
{
    for (const TKRVFonteFatturato &fonte : Fonti) {
        if (tabella == QLatin1String(fonte.Tabella))
            return QString::fromLatin1(fonte.Inizio) + QString::number(anno - 2) + QStringLiteral(" GROUP BY 2, 3 ")
                   + QStringLiteral("ORDER BY 3, 2");
    }
    return QString();
}

QStringList KRVAggiornaFatturato(const QSqlDatabase &db, TKRVGrigliaFatturato &griglia, int anno)
{
    for (int riga = KRVFatturatoPrimaRiga; riga < KRVFatturatoRighe; ++riga) {
        for (int colonna = 1; colonna < KRVFatturatoColonne; ++colonna)
            Imposta(griglia, riga, colonna, 0);
    }
    const QStringList tabelle = db.tables();
    QStringList istruzioni;
    for (const TKRVFonteFatturato &fonte : Fonti) {
        if (!tabelle.contains(QLatin1String(fonte.Tabella), Qt::CaseInsensitive))
            continue;
        const QString sql = KRVSQLFatturato(QLatin1String(fonte.Tabella), anno);
        istruzioni << sql;
        QSqlQuery query = OpenQuery(db, sql);
        while (query.next()) {
            const int colonna = ColonnaAnno(query.value(2).toInt(), anno);
            const int riga = query.value(1).toInt() + 1;
            if (colonna == 0 || riga < KRVFatturatoPrimaRiga || riga > 13)
                continue;
            Imposta(griglia, riga, colonna, Valore(griglia, riga, colonna) + fonte.Segno * query.value(0).toDouble());
        }
    }
    KRVCalcolaFatturato(griglia);
    return istruzioni;
}

void KRVCalcolaFatturato(TKRVGrigliaFatturato &griglia)
{
    for (int riga = KRVFatturatoPrimaRiga; riga < KRVFatturatoRighe; ++riga)
        CalcolaRiga(griglia, riga);
    for (int colonna : {1, 4, 7}) {
        double totale = 0;
        for (int riga = KRVFatturatoPrimaRiga; riga <= 13; ++riga)
            totale += Valore(griglia, riga, colonna);
        Imposta(griglia, KRVFatturatoRigaTotali, colonna, totale);
    }
    CalcolaRiga(griglia, KRVFatturatoRigaTotali);
}

QString KRVTestoFatturato(double valore)
{
    return Fisso(valore, 2);
}

double KRVValoreFatturato(const QString &testo)
{
    bool ok = false;
    const double valore = QString(testo).replace(QLocale().decimalPoint(), QStringLiteral(".")).toDouble(&ok);
    return ok ? valore : 0;
}

QString KRVTestoVisualizzatoFatturato(const TKRVGrigliaFatturato &griglia, int riga, int colonna)
{
    if (riga == KRVFatturatoRigaSeparatore)
        return QString();
    const QString testo = griglia.at(riga).at(colonna);
    if (KRVCellaIntestazioneFatturato(riga, colonna))
        return testo;
    const double valore = KRVValoreFatturato(testo);
    switch (colonna) {
    case 2:
    case 5: {
        const QString cifre = QLocale().toString(qAbs(valore), 'f', 2);
        const QString segno = valore > 0 ? QStringLiteral("+") : valore < 0 ? QStringLiteral("-") : QString();
        return GetCurrencyPrefix() + QLatin1Char(' ') + segno + cifre;
    }
    case 3:
    case 6:
        return (valore > 0 ? QStringLiteral("+") : QString()) + Fisso(valore, 1) + QLatin1Char('%');
    default:
        return FormatCurrency(valore);
    }
}

bool KRVCellaNegativaFatturato(const TKRVGrigliaFatturato &griglia, int riga, int colonna)
{
    return !KRVCellaIntestazioneFatturato(riga, colonna) && KRVValoreFatturato(griglia.at(riga).at(colonna)) < 0;
}

bool KRVCellaIntestazioneFatturato(int riga, int colonna)
{
    return riga < KRVFatturatoPrimaRiga || colonna == 0;
}

QList<TKRVSerieFatturato> KRVSerieFatturato(const TKRVGrigliaFatturato &griglia, int anno)
{
    QList<TKRVSerieFatturato> serie;
    const int colonne[] = {1, 4, 7};
    for (int indice = 0; indice < 3; ++indice) {
        TKRVSerieFatturato linea;
        linea.Titolo = QString::number(anno - indice);
        for (int riga = KRVFatturatoPrimaRiga; riga < KRVFatturatoRighe; ++riga) {
            linea.Valori << Valore(griglia, riga, colonne[indice]);
            linea.Etichette << QString::number(riga - 1);
        }
        serie << linea;
    }
    return serie;
}

QList<std::pair<QString, QString>> KRVParametriFatturato(const TKRVGrigliaFatturato &griglia)
{
    const auto nome = [](int numero) { return QStringLiteral("Param") + QString::number(numero); };
    QList<std::pair<QString, QString>> parametri;
    parametri << std::pair(nome(1), griglia.at(0).at(1)) << std::pair(nome(2), griglia.at(0).at(4))
              << std::pair(nome(3), griglia.at(0).at(7));
    for (int colonna = 1; colonna < KRVFatturatoColonne; ++colonna) {
        int numero = colonna == 1 ? 4 : (colonna - 1) * 13 + 4;
        for (int riga = KRVFatturatoPrimaRiga; riga <= 13; ++riga)
            parametri << std::pair(nome(numero++), griglia.at(riga).at(colonna));
        parametri << std::pair(nome(numero), griglia.at(KRVFatturatoRigaTotali).at(colonna));
    }
    return parametri;
}

TQ3XlsFoglio KRVFoglioFatturato(const TKRVGrigliaFatturato &griglia)
{
    TQ3XlsFoglio foglio;
    foglio.Nome = QStringLiteral("Fatturato");
    for (int riga = 0; riga < KRVFatturatoRighe; ++riga) {
        QList<QVariant> celle;
        for (int colonna = 0; colonna < KRVFatturatoColonne; ++colonna) {
            const QString testo = griglia.at(riga).at(colonna);
            if (KRVCellaIntestazioneFatturato(riga, colonna))
                celle << (testo.isEmpty() ? QVariant() : QVariant(testo));
            else if (riga == KRVFatturatoRigaSeparatore)
                celle << QVariant();
            else
                celle << QVariant(KRVValoreFatturato(testo));
        }
        foglio.Celle << celle;
    }
    foglio.Unioni = KRVUnioniFatturato();
    foglio.LarghezzeColonne = KRVLarghezzeFatturato();
    foglio.RigheGrassetto = {0, 1};
    return foglio;
}
