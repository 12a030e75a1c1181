#include "uKRVModStampaFatturatoPerCliente.h"

TKRVModStampaFatturatoPerCliente::TKRVModStampaFatturatoPerCliente()
    : TKRVModStampaAnno(QStringLiteral("Stampa fatturato per cliente"))
{
    setObjectName(QStringLiteral("KRVModStampaFatturatoPerCliente"));
    FormCreate();
}
