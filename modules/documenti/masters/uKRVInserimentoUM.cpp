#include "uKRVInserimentoUM.h"

#include "KRVUtils.h"

TKRVInserimentoUM::TKRVInserimentoUM(IKRVMain &main)
    : TKRVInserimentoCampoSingolo(
          main,
          {.Caption = QStringLiteral("Inserimento / Modifica unità di misura"),
           .MinimumSize = QSize(350, 150),
           .Dataset = QStringLiteral("adsUM"),
           .KeyField = QStringLiteral("IDUM"),
           .Generator = QStringLiteral("GN_IDUM"),
           .SearchAction = QStringLiteral("actRicercaUM"),
           .RefreshAfterSave = false,
           .RefreshAfterDelete = true,
           .CheckIcon = TQ3MsgIcon::Warning,
           .SaveFailureIcon = TQ3MsgIcon::Error,
           .CanDelete = &CanDeleteUM,
           .Delete = &DeleteUM,
           .DeleteRefused = QStringLiteral("Non è possibile eliminare questa unità di misura,\n\rEsistono dei dati correlati!")},
          {.Name = QStringLiteral("txtUm"),
           .Label = QStringLiteral("Unità di misura"),
           .MaxLength = 5,
           .UpperCase = true,
           .Column = QStringLiteral("UM"),
           .MsgVuoto = QStringLiteral("Non è stata indicata l'unità di misura!"),
           .Exists = &CodiceUMExists,
           .MsgEsistente = QStringLiteral("Unità di misura già in archivio!")})
{
    setObjectName(QStringLiteral("KRVInserimentoUM"));
}
