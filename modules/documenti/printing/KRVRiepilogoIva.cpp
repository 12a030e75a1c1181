#include "KRVRiepilogoIva.h"

#include "KRVRigheDocumento.h"
#include "Q3ReportData.h"

#include <algorithm>
#include <numeric>

namespace {

// A tax in ten-thousandths of the currency unit, as the summary query keeps it.
qint64 DecimiDiMillesimo(double valore)
{
    return qRound64(valore * 10000);
}

// Rounded to the cent, halves away from zero.
qint64 Centesimi(qint64 decimiDiMillesimo)
{
    const qint64 assoluto = (qAbs(decimiDiMillesimo) + 50) / 100;
    return decimiDiMillesimo < 0 ? -assoluto : assoluto;
}

} // namespace

QList<double> KRVImposteArrotondate(const QList<double> &imposte, double totaleImposta)
{
    QList<qint64> esatte;
    QList<qint64> centesimi;
    for (double imposta : imposte) {
        esatte << DecimiDiMillesimo(imposta);
        centesimi << Centesimi(esatte.last());
    }
    const qint64 differenza =
        qRound64(totaleImposta * 100) - std::accumulate(centesimi.cbegin(), centesimi.cend(), qint64(0));
    if (differenza != 0 && qAbs(differenza) <= centesimi.size()) {
        // What rounding took from each rate (positive) or gave it (negative).
        QList<int> ordine(centesimi.size());
        std::iota(ordine.begin(), ordine.end(), 0);
        const auto perso = [&](int i) { return esatte.at(i) - centesimi.at(i) * 100; };
        // Cents to add go to the rates that lost most, cents to take away to
        // those that gained most; between equals, to the larger tax.
        std::stable_sort(ordine.begin(), ordine.end(), [&](int a, int b) {
            const qint64 pa = differenza > 0 ? perso(a) : -perso(a);
            const qint64 pb = differenza > 0 ? perso(b) : -perso(b);
            if (pa != pb)
                return pa > pb;
            return qAbs(esatte.at(a)) > qAbs(esatte.at(b));
        });
        for (qint64 i = 0; i < qAbs(differenza); ++i)
            centesimi[ordine.at(i)] += differenza > 0 ? 1 : -1;
    }
    QList<double> arrotondate;
    for (qint64 c : std::as_const(centesimi))
        arrotondate << double(c) / 100;
    return arrotondate;
}

void KRVRiepilogoIvaStampa(const IQ3ReportData &iva, const IQ3ReportData &righe, double totaleImposta,
                           TQ3MemoryData &riepilogo)
{
    const QStringList colonne{QStringLiteral("IVA_CODICE"), QStringLiteral("IVA_DESCRIZIONE"),
                              QStringLiteral("IVA_ALIQUOTA"), QStringLiteral("IMPONIBILE"), QStringLiteral("IMPOSTA")};
    QList<int> posizioni;
    for (const QString &colonna : colonne)
        posizioni << iva.FieldIndex(colonna);
    const int imposta = posizioni.at(4);
    QList<double> imposte;
    for (int r = 0; r < iva.RowCount(); ++r)
        imposte << iva.Value(r, imposta).toDouble();
    const QList<double> arrotondate = KRVImposteArrotondate(imposte, totaleImposta);

    riepilogo.Clear();
    riepilogo.SetFields(colonne + QStringList{QStringLiteral("NON_IMPONIBILE")});
    for (int r = 0; r < iva.RowCount(); ++r) {
        QVariantList valori;
        for (int i = 0; i < 4; ++i)
            valori << iva.Value(r, posizioni.at(i));
        riepilogo.AddRow(valori << arrotondate.at(r) << QVariant());
    }
    const int tipo = righe.FieldIndex(QStringLiteral("TIPO_RIGA"));
    const int importo = righe.FieldIndex(QStringLiteral("IMPORTO"));
    double nonImponibile = 0;
    bool presenti = false;
    for (int r = 0; r < righe.RowCount(); ++r) {
        if (righe.Value(r, tipo).toString() == KRVRigaNonImponibile) {
            nonImponibile += righe.Value(r, importo).toDouble();
            presenti = true;
        }
    }
    if (presenti)
        riepilogo.AddRow({QVariant(), KRVRigaNonImponibile, QVariant(), QVariant(), QVariant(), nonImponibile});
}
