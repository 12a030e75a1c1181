#include "KATAggiornaDatabase.h"

#include "KATDiritti.h"
#include "Q3Sql.h"

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

// The reminders of an invoice and the due ones are found through an index;
// the module's two rights join the host's catalogue in a group of their own.
TQ3SchemaStep IndiciEDiritti()
{
    TQ3SchemaStep step;
    step.Key = QStringLiteral("PROMEMORIA");
    step.From = QStringLiteral("1.0.0");
    step.To = QStringLiteral("1.1.0");
    step.Statements = {QStringLiteral("CREATE INDEX IX_PROMEMORIA_IDFATT_VEND ON PROMEMORIA (IDFATT_VEND)"),
                       QStringLiteral("CREATE INDEX IX_PROMEMORIA_STATO_DATA ON PROMEMORIA (STATO, DATA)")};
    for (const char *diritto : {KATDirittoVisualizzazione, KATDirittoModifica})
        step.Statements << QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES(0, %1, %2)")
                               .arg(QuotedStr(QString::fromUtf8(diritto)),
                                    QuotedStr(QString::fromUtf8(KATGruppoDiritti)));
    step.FailureIcon = TQ3MsgIcon::Error;
    return step;
}

} // namespace

QList<TQ3SchemaStep> KATSchemaSteps()
{
    return {CreatePromemoria(), IndiciEDiritti()};
}

void KATAggiornaDatabase(const QSqlDatabase &db)
{
    TQ3SchemaUpgrade upgrade(db);
    upgrade.Run(KATSchemaSteps());
}
