#pragma once

#include "uKRVEliminazione.h"

#include <QString>

// What sets the articles apart from the services in their editors, search
// lists and selection dialogs.
struct TKRVCatalogo
{
    QString Table;         // "ANA_MAGA"
    QString KeyField;      // "IDANA_MAGA"
    QString Generator;     // "GN_IDANA_MAGA"
    QString Dataset;       // the main object's dataset on one row
    QString CodePrefix;    // of the proposed code
    QString CategoryTable; // "CATEGORIE_ANA_MAGA"
    QString CategoryKey;   // its key, also the row's category column
    QString EditorAction;
    QString SearchAction;
    bool (*CodiceExists)(const QSqlDatabase &db, const QString &codice, int id) = nullptr;
    TKRVEliminazionePerCodice Eliminazione;

    // The row's category column with its table: "ANA_MAGA.IDCATEGORIA_ANA_MAGA".
    QString CategoryColumn() const { return Table + QLatin1Char('.') + CategoryKey; }
};

const TKRVCatalogo &KRVCatalogoArticoli();
const TKRVCatalogo &KRVCatalogoServizi();
