#include "KRVClientiFatturaPA.h"

#include "Q3Controlli.h"

#include <QRegularExpression>

namespace {

// Letters and digits only, of exactly that many characters.
bool CodiceDiLunghezza(const QString &codice, int lunghezza)
{
    static const QRegularExpression alfanumerico(QStringLiteral("^[A-Z0-9]*$"));
    return codice.size() == lunghezza && alfanumerico.match(codice).hasMatch();
}

// A name, an at sign, a domain with at least one dot; no blanks.
bool IndirizzoEmail(const QString &indirizzo)
{
    static const QRegularExpression email(QStringLiteral("^[^@\\s]+@[^@\\s.]+(\\.[^@\\s.]+)+$"));
    return email.match(indirizzo).hasMatch();
}

} // namespace

const QList<TKRVTipoSoggetto> &KRVTipiSoggetto()
{
    static const QList<TKRVTipoSoggetto> tipi = {
        {QString::fromLatin1(KRVSoggettoAzienda), QStringLiteral("Azienda")},
        {QString::fromLatin1(KRVSoggettoPrivato), QStringLiteral("Privato")},
        {QString::fromLatin1(KRVSoggettoPA), QStringLiteral("Pubblica amministrazione")},
    };
    return tipi;
}

QStringList KRVProblemiRecapito(const TKRVRecapitoCliente &recapito)
{
    QStringList problems;
    // A public administration is reached only through its office's six-character code.
    if (recapito.TipoSoggetto == QLatin1String(KRVSoggettoPA)) {
        if (!CodiceDiLunghezza(recapito.CodiceDestinatario, 6))
            problems << QString::fromUtf8(KRVMsgDestinatarioPA);
    } else if (!recapito.CodiceDestinatario.isEmpty() && !CodiceDiLunghezza(recapito.CodiceDestinatario, 7)) {
        problems << QString::fromUtf8(KRVMsgDestinatarioNonValido);
    }
    if (Q3Compilato(recapito.Pec) && !IndirizzoEmail(recapito.Pec))
        problems << QString::fromUtf8(KRVMsgPecNonValida);
    if (recapito.TipoSoggetto == QLatin1String(KRVSoggettoPrivato)
        && (!Q3Compilato(recapito.Nome) || !Q3Compilato(recapito.Cognome)))
        problems << QString::fromUtf8(KRVMsgPrivatoSenzaNome);
    return problems;
}

bool KRVSenzaRecapito(const TKRVRecapitoCliente &recapito)
{
    // A private person receives in the tax agency's reserved area with the
    // code "0000000" as a rule: only a company is asked about it.
    const bool azienda = recapito.TipoSoggetto.isEmpty() || recapito.TipoSoggetto == QLatin1String(KRVSoggettoAzienda);
    return azienda && recapito.CodiceDestinatario.isEmpty() && !Q3Compilato(recapito.Pec);
}

QString KRVDestinatarioProposto(const QString &nazione, const QString &codice)
{
    if (codice.isEmpty() && !Q3NazioneItaliana(nazione))
        return QString::fromLatin1(KRVDestinatarioEstero);
    return codice;
}
