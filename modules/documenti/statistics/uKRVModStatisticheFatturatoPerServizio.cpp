#include "uKRVModStatisticheFatturatoPerServizio.h"

TKRVModStatisticheFatturatoPerServizio::TKRVModStatisticheFatturatoPerServizio(IKRVMain &main)
    : TKRVModStatisticheBase(main, {.Nome = QStringLiteral("KRVModStatisticheFatturatoPerServizio"),
                                    .Caption = QStringLiteral("Fatturato per servizio"),
                                    .Voce = &KRVVoceServizio(),
                                    .Scrittura = TKRVScritturaSQL::Spaziata,
                                    .CategoryTable = QStringLiteral("CATEGORIE_SERVIZI"),
                                    .CategoryKey = QStringLiteral("IDCATEGORIA_SERVIZI"),
                                    .Dataset = QStringLiteral("adsFatturatoPerServizio"),
                                    .Report = QStringLiteral("FatturatoPerServizio"),
                                    .Titolo = QStringLiteral("Fatturato per servizio dal ")})
{
    FormCreate();
}
