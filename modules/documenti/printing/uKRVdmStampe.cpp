#include "uKRVdmStampe.h"

TKRVdmStampe::TKRVdmStampe(QObject *owner) : QObject(owner)
{
    setObjectName(QStringLiteral("KRVdmStampe"));
}
