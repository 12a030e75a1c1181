#include "uKRVModSelezionaServizio.h"

#include "KRVQueryElenchi.h"

TKRVModSelezionaServizio::TKRVModSelezionaServizio()
    : TKRVModSelezionaCatalogo(KRVCatalogoServizi(), QStringLiteral("Seleziona un servizio"),
                               KRVQuerySelezioneServizioTesta)
{
    setObjectName(QStringLiteral("KRVModSelezionaServizio"));
}
