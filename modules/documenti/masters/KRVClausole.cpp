#include "KRVClausole.h"

#include "KRVTesti.h"
#include "Q3Sql.h"

namespace {

const QString TutteLeLettere = QStringLiteral("*");

// head followed by the quoted, upper-cased letter with "%" appended.
QString ClausolaLettera(const QString &testa, const QString &lettera)
{
    if (lettera == TutteLeLettere)
        return {};
    return testa + QuotedStr(KRVMaiuscole(lettera) + QStringLiteral("%"));
}

} // namespace

void KRVAggiungiCondizione(QString &where, const QString &condizione)
{
    where += where.isEmpty() ? QStringLiteral("WHERE ") : QStringLiteral(" AND ");
    where += condizione;
}

QString KRVCondizioneFiltro(const QString &condizione, const QString &testo, bool maiuscole, const QString &chiusura)
{
    return condizione + QuotedStr(maiuscole ? KRVMaiuscole(testo) : testo) + chiusura;
}

QString KRVClausolaLetteraRicercaClienti(const QString &lettera)
{
    return ClausolaLettera(QStringLiteral("WHERE UPPER(RAGIONESOCIALE)LIKE  "), lettera);
}

QString KRVClausolaLetteraSelezioneCliente(const QString &lettera)
{
    return ClausolaLettera(QStringLiteral("WHERE UPPER(RAGIONESOCIALE) LIKE "), lettera);
}

QString KRVCondizioneTelefono(const QString &testo)
{
    const QString q = QuotedStr(testo);
    return QStringLiteral("(TELEFONO1 CONTAINING ") + q + QStringLiteral(" OR TELEFONO2 CONTAINING ") + q
           + QStringLiteral(" OR TELEFONO3 CONTAINING ") + q + QStringLiteral(" OR FAX CONTAINING ") + q
           + QStringLiteral(")");
}

QString KRVCondizioneCategorie(const QString &colonna, const QString &chiavi)
{
    return colonna + QStringLiteral(" IN (") + chiavi + QLatin1Char(')');
}

QString KRVCondizioneCategorieSelezione(const QString &colonna, const QString &chiavi)
{
    return QLatin1Char(' ') + KRVCondizioneCategorie(colonna, chiavi);
}

QString KRVClausolaAnno(const QString &condizioneAnno, int anno, const QString &filtri)
{
    QString where = condizioneAnno + QString::number(anno);
    if (!filtri.isEmpty())
        where += QStringLiteral(" AND ") + filtri.mid(QStringLiteral("WHERE ").size());
    return where;
}
