#include "KRVDdtScarico.h"

#include "Q3Sql.h"

QString KRVCondizioneDdtScarico(int anno, const QString &ragioneSociale)
{
    // The year is always there, so a name is always the second condition.
    QString condizione = QStringLiteral("WHERE ANNO=") + QString::number(anno);
    if (!ragioneSociale.isEmpty())
        condizione +=
            QStringLiteral(" AND ") + QStringLiteral("CLI_RAGIONESOCIALE CONTAINING ") + QuotedStr(ragioneSociale);
    return condizione;
}
