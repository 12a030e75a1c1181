#include "uKRVMainForms.h"

#include "uKRVMain.h"

const QHash<QString, TKRVFormClass> &KRVFormClasses()
{
    static const QHash<QString, TKRVFormClass> classes = {};
    return classes;
}
