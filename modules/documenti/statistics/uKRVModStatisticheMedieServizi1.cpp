#include "uKRVModStatisticheMedieServizi1.h"

TKRVModStatisticheMedieServizi1::TKRVModStatisticheMedieServizi1(IKRVMain &main)
    : TKRVModStatisticheBase(main, {.Nome = QStringLiteral("KRVModStatisticheMedieServizi1"),
                                    .Caption = QStringLiteral("Medie di produttività per servizio"),
                                    .Voce = &KRVVoceServizio(),
                                    .Scrittura = TKRVScritturaSQL::Compatta,
                                    .CategoryTable = QStringLiteral("CATEGORIE_SERVIZI"),
                                    .CategoryKey = QStringLiteral("IDCATEGORIA_SERVIZIO"),
                                    .Dataset = QStringLiteral("adsFatturatoPerArticolo"),
                                    .Report = QStringLiteral("FatturatoPerArticolo"),
                                    .Titolo = QStringLiteral("Fatturato per articolo dal ")})
{
    FormCreate();
}
