#include "uKRVModSelezionaUM.h"

#include "KRVEntita.h"
#include "KRVQueryElenchi.h"

TKRVModSelezionaUM::TKRVModSelezionaUM()
    : TKRVModSelezionaBase({.Caption = QStringLiteral("Seleziona un'unità di misura"),
                            .QueryHead = KRVQueryUMTesta,
                            .QueryTail = KRVQueryUMCoda,
                            .KeyField = KRVEntitaUM().Chiave,
                            .Columns = {{QStringLiteral("Unità di misura"), 300, QStringLiteral("UM"),
                                         TKRVTipoColonna::Testo}},
                            .Filters = {}},
                           QSize(360, 420))
{
    setObjectName(QStringLiteral("KRVModSelezionaUM"));
    FormCreate();
}

TKRVVoceSelezionata TKRVModSelezionaUM::ApriSelezionato() const
{
    return VoceSelezionata(1);
}
