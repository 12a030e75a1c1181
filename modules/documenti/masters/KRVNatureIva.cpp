#include "KRVNatureIva.h"

#include "KRVOptions.h"

#include <algorithm>

const QList<TKRVNaturaIva> &KRVNatureIva()
{
    static const QList<TKRVNaturaIva> nature = {
        {QStringLiteral("N1"), QStringLiteral("Escluse ex art. 15")},
        {QStringLiteral("N2.1"), QStringLiteral("Non soggette ex artt. da 7 a 7-septies")},
        {QStringLiteral("N2.2"), QStringLiteral("Non soggette - altri casi")},
        {QStringLiteral("N3.1"), QStringLiteral("Non imponibili - esportazioni")},
        {QStringLiteral("N3.2"), QStringLiteral("Non imponibili - cessioni intracomunitarie")},
        {QStringLiteral("N3.3"), QStringLiteral("Non imponibili - cessioni verso San Marino")},
        {QStringLiteral("N3.4"), QStringLiteral("Non imponibili - operazioni assimilate alle esportazioni")},
        {QStringLiteral("N3.5"), QStringLiteral("Non imponibili - a seguito di dichiarazioni d'intento")},
        {QStringLiteral("N3.6"), QStringLiteral("Non imponibili - altre operazioni fuori plafond")},
        {QStringLiteral("N4"), QStringLiteral("Esenti")},
        {QStringLiteral("N5"), QStringLiteral("Regime del margine / IVA non esposta in fattura")},
        {QStringLiteral("N6.1"), QStringLiteral("Inversione contabile - rottami e materiali di recupero")},
        {QStringLiteral("N6.2"), QStringLiteral("Inversione contabile - oro e argento")},
        {QStringLiteral("N6.3"), QStringLiteral("Inversione contabile - subappalto nel settore edile")},
        {QStringLiteral("N6.4"), QStringLiteral("Inversione contabile - cessione di fabbricati")},
        {QStringLiteral("N6.5"), QStringLiteral("Inversione contabile - telefoni cellulari")},
        {QStringLiteral("N6.6"), QStringLiteral("Inversione contabile - prodotti elettronici")},
        {QStringLiteral("N6.7"), QStringLiteral("Inversione contabile - comparto edile e settori connessi")},
        {QStringLiteral("N6.8"), QStringLiteral("Inversione contabile - settore energetico")},
        {QStringLiteral("N6.9"), QStringLiteral("Inversione contabile - altri casi")},
        {QStringLiteral("N7"), QStringLiteral("IVA assolta in altro stato UE")},
    };
    return nature;
}

namespace {

// The nature an option holds, when it is one of KRVNatureIva; otherwise the default.
QString NaturaOpzione(const QSqlDatabase &db, const char *opzione, const QString &predefinita)
{
    QVariant value;
    if (!GetOptionValue(db, QString::fromLatin1(opzione), value))
        return predefinita;
    const QString codice = value.toString().trimmed();
    const QList<TKRVNaturaIva> &nature = KRVNatureIva();
    const bool nota = std::any_of(nature.cbegin(), nature.cend(),
                                  [&codice](const TKRVNaturaIva &natura) { return natura.Codice == codice; });
    return nota ? codice : predefinita;
}

} // namespace

QString KRVNaturaNonImponibile(const QSqlDatabase &db)
{
    // A "Non imponibile" line is an amount outside the VAT base, most often
    // expenses advanced in the customer's name and charged back at cost
    // (art. 15 DPR 633/72): excluded operations, whose nature is N1. A firm
    // that uses these lines otherwise (e.g. exempt or export amounts) chooses
    // its own nature in the module options.
    return NaturaOpzione(db, KRVOpzioneNaturaNonImponibile, QStringLiteral("N1"));
}

QString KRVNaturaEsente(const QSqlDatabase &db)
{
    // An invoice marked exempt is, as a rule, one of exempt operations
    // (art. 10 DPR 633/72): N4.
    return NaturaOpzione(db, KRVOpzioneNaturaEsente, QStringLiteral("N4"));
}
