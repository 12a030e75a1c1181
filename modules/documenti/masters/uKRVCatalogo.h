#pragma once

#include "KRVEntita.h"

#include <QString>

// What sets the articles apart from the services in their editors, search
// lists and selection dialogs, besides their table.
struct TKRVCatalogo
{
    const TKRVEntita &Entita;
    QString CodePrefix;    // of the proposed code
    QString CategoryTable; // "CATEGORIE_ANA_MAGA"
    QString CategoryKey;   // its key, also the row's category column

    // The row's category column with its table: "ANA_MAGA.IDCATEGORIA_ANA_MAGA".
    QString CategoryColumn() const { return Entita.Tabella + QLatin1Char('.') + CategoryKey; }
};

const TKRVCatalogo &KRVCatalogoArticoli();
const TKRVCatalogo &KRVCatalogoServizi();
