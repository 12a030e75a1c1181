#pragma once

#include "Q3Connection.h"
#include "Q3Dataset.h"

#include <QHash>
#include <QObject>
#include <QString>

// The module's master datasets on its session's connection, each one row of
// its table by the key parameter (or the whole category table), written back
// to that table: adsAliquoteIVA, adsUM, adsTipiPagamento, adsCategorieAnaMaga,
// adsCategorieServizi, adsAnaMaga, adsServizi, adsClienti, adsFattVend,
// adsFattVendDett, adsNoteAccredito, adsNoteAccreditoDett, adsNotaDocumenti,
// and adsAzienda, the firm's letterhead, each contact shown with its prefix or
// not at all. Made for the owner, by their names.
QHash<QString, TQ3Dataset *> KRVCreaDatasetModulo(QObject *owner, TQ3Connection *connection);
