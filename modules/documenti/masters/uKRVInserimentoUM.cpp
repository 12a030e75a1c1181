#include "uKRVInserimentoUM.h"

#include "KRVUtils.h"

TKRVInserimentoUM::TKRVInserimentoUM(IKRVMain &main)
    : TKRVInserimentoCampoSingolo(main,
                                  {.Caption = QStringLiteral("Inserimento / Modifica unità di misura"),
                                   .MinimumSize = QSize(350, 150),
                                   .Entita = &KRVEntitaUM(),
                                   .RefreshAfterSave = false,
                                   .RefreshAfterDelete = true,
                                   .CheckIcon = TQ3MsgIcon::Warning,
                                   .SaveFailureIcon = TQ3MsgIcon::Error},
                                  {.Name = QStringLiteral("txtUm"),
                                   .Label = QStringLiteral("Unità di misura"),
                                   .MaxLength = 5,
                                   .UpperCase = true,
                                   .MsgVuoto = QStringLiteral("Non è stata indicata l'unità di misura!"),
                                   .MsgEsistente = QStringLiteral("Unità di misura già in archivio!")})
{
    setObjectName(QStringLiteral("KRVInserimentoUM"));
}
