#include "uKRVEliminazione.h"

#include "KRVUtils.h"
#include "Q3Messages.h"
#include "uKRVFormKit.h"

const TKRVEliminazionePerCodice &KRVEliminazioneClienti()
{
    static const TKRVEliminazionePerCodice info{
        &CanDeleteCliente, QStringLiteral("Non è possibile eliminare questo cliente,\n\resistono dei dati correlati!"),
        &KRVEliminaCliente};
    return info;
}

bool KRVConfermaEliminazione(const QSqlDatabase &db, const TKRVEliminazionePerCodice &info, const QString &codice)
{
    // The rule looks the code up in the database: it must be able to get there.
    if (!KRVTestoCercabile(codice))
        return false;
    if (!info.CanDelete(db, codice)) {
        Q3ShowWarning(info.Rifiuto);
        return false;
    }
    return Q3AskYesNo(QString::fromUtf8(KRVMsgConfermaEliminazione));
}

bool KRVEliminaRecord(const QSqlDatabase &db, const TKRVEliminazionePerCodice &info, int id)
{
    return info.Delete(db, id);
}
