#include "KRVAggiornaDatabase.h"

#include "KRVSession.h"

QList<TQ3SchemaStep> KRVSchemaSteps()
{
    return {};
}

void AggiornaDatabase()
{
    TQ3SchemaUpgrade(KRVModuleDatabase()).Run(KRVSchemaSteps());
}
