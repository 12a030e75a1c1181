#include "uKRVEliminazione.h"

#include "KRVDeleteRules.h"
#include "Q3Messages.h"
#include "uKRVFormKit.h"

bool KRVConfermaEliminazione(const QSqlDatabase &db, const TKRVEntita &entita, const QString &codice)
{
    // The rule looks the code up in the database: it must be able to get there.
    if (!KRVTestoCercabile(codice))
        return false;
    if (!entita.PerCodice.CanDelete(db, codice)) {
        Q3ShowWarning(entita.Rifiuto);
        return false;
    }
    return Q3AskYesNo(QString::fromUtf8(KRVMsgConfermaEliminazione));
}

bool KRVEliminaRecord(const QSqlDatabase &db, const TKRVEntita &entita, int id)
{
    return entita.PerCodice.Delete(db, id);
}
