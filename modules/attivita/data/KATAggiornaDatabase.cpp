#include "KATAggiornaDatabase.h"

namespace {

// The reminders: those of a recurring invoice (TIPO 'Fattura ciclica', with
// its key) and those added by hand (TIPO 'Manuale', no invoice); each is
// 'Da fare' until it is acted on, then 'Fatto' with when, and the number of
// the invoice it produced.
TQ3SchemaStep CreatePromemoria()
{
    return Q3CreateTableStep(QStringLiteral("PROMEMORIA"),
                             QStringLiteral(
                                 "CREATE TABLE PROMEMORIA (IDPROMEMORIA INTEGER NOT NULL, TIPO VARCHAR(20) NOT NULL, "
                                 "IDFATT_VEND INTEGER, TITOLO VARCHAR(100), DATA DATE NOT NULL, NOTE BLOB SUB_TYPE 1, "
                                 "STATO VARCHAR(20) NOT NULL, FATTO_IL TIMESTAMP, FATT_NUMERO_GENERATA INTEGER, "
                                 "CONSTRAINT PK_PROMEMORIA PRIMARY KEY(IDPROMEMORIA))"),
                             QStringLiteral("PROMEMORIA"), QStringLiteral("PROMEMORIA"));
}

} // namespace

QList<TQ3SchemaStep> KATSchemaSteps()
{
    return {CreatePromemoria()};
}

void KATAggiornaDatabase(const QSqlDatabase &db)
{
    TQ3SchemaUpgrade upgrade(db);
    upgrade.Run(KATSchemaSteps());
}
