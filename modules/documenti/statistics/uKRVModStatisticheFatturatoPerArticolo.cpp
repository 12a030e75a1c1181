#include "uKRVModStatisticheFatturatoPerArticolo.h"

TKRVModStatisticheFatturatoPerArticolo::TKRVModStatisticheFatturatoPerArticolo(IKRVMain &main)
    : TKRVModStatisticheBase(main, {.Nome = QStringLiteral("KRVModStatisticheFatturatoPerArticolo"),
                                    .Caption = QStringLiteral("Fatturato per articolo"),
                                    .Voce = &KRVVoceArticolo(),
                                    .Scrittura = TKRVScritturaSQL::Compatta,
                                    .CategoryTable = QStringLiteral("CATEGORIE_ANA_MAGA"),
                                    .CategoryKey = QStringLiteral("IDCATEGORIA_ANA_MAGA"),
                                    .Dataset = QStringLiteral("adsFatturatoPerArticolo"),
                                    .Report = QStringLiteral("FatturatoPerArticolo"),
                                    .Titolo = QStringLiteral("Fatturato per articolo dal ")})
{
    FormCreate();
}
