#include "KRVPermissions.h"

#include "KRVErrors.h"
#include "Q3Sql.h"

bool UserHasAbilitazione(const QString &abilitazione, const QString &userName, const QSqlDatabase &connection)
{
    return KRVWrapped("UserHasAbilitazione", [&] {
        const QString sql =
            QStringLiteral(
                "SELECT ABILITAZIONI_UTENTE.* FROM UTENTI_RUOLI "
                "LEFT JOIN ABILITAZIONI_RUOLI ON ABILITAZIONI_RUOLI.IDRUOLO_UTENTE = UTENTI_RUOLI.IDRUOLO_UTENTE "
                "LEFT JOIN ABILITAZIONI_UTENTE ON ABILITAZIONI_UTENTE.IDABILITAZIONE_UTENTE = ABILITAZIONI_RUOLI.IDABILITAZIONE_UTENTE "
                "WHERE UPPER(UTENTI_RUOLI.USER_NAME) = ")
            + QuotedStr(userName.toUpper());
        QSqlQuery query = OpenQuery(connection, sql);
        QStringList granted;
        // A role whose permission link is missing gives a row of nulls: it grants nothing.
        const int column = FieldIndex(query.record(), QStringLiteral("ABILITAZIONE_UTENTE"));
        while (query.next()) {
            const QVariant abilitazioneUtente = query.value(column);
            if (!abilitazioneUtente.isNull())
                granted << abilitazioneUtente.toString();
        }
        return granted.contains(QStringLiteral("Controllo completo")) || granted.contains(abilitazione);
    });
}
