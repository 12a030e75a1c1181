#include "uKRVEliminazione.h"

#include "KRVUtils.h"
#include "Q3Messages.h"

const TKRVEliminazionePerCodice &KRVEliminazioneClienti()
{
    static const TKRVEliminazionePerCodice info{
        &CanDeleteCliente, QStringLiteral("Non è possibile eliminare questo cliente,\n\resistono dei dati correlati!"),
        QStringLiteral("DELETE FROM CLIENTI WHERE IDCLIENTE=")};
    return info;
}

bool KRVConfermaEliminazione(const TKRVEliminazionePerCodice &info, const QString &codice)
{
    if (!info.CanDelete(codice)) {
        Q3ShowWarning(info.Rifiuto);
        return false;
    }
    return Q3AskYesNo(QString::fromUtf8(KRVMsgConfermaEliminazione));
}

bool KRVEliminaRecord(const TKRVEliminazionePerCodice &info, int id)
{
    return KRVDeleteInTransaction({info.DeleteSQL + QString::number(id)}, false);
}
