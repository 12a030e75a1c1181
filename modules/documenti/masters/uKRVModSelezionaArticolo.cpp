#include "uKRVModSelezionaArticolo.h"

#include "KRVQueryElenchi.h"

TKRVModSelezionaArticolo::TKRVModSelezionaArticolo()
    : TKRVModSelezionaCatalogo(KRVCatalogoArticoli(), QStringLiteral("Seleziona un articolo"),
                               KRVQuerySelezioneArticoloTesta)
{
    setObjectName(QStringLiteral("KRVModSelezionaArticolo"));
}
