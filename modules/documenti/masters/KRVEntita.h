#pragma once

#include "KRVAzioni.h"

#include <QSqlDatabase>
#include <QString>

// A row whose delete rule is asked about the code (the code typed, not
// necessarily the row's) and which is deleted by its key, asking nothing.
struct TKRVEliminazionePerCodice
{
    bool (*CanDelete)(const QSqlDatabase &db, const QString &codice) = nullptr;
    bool (*Delete)(const QSqlDatabase &db, int id) = nullptr;
};

// One master table or document as its search list, selection dialog, editor,
// lookups and delete rules know it.
struct TKRVEntita
{
    QString Tabella;       // "UM"
    QString Chiave;        // "IDUM"
    QString Generatore;    // "GN_IDUM": its value plus one is the key a new row expects
    QString Dataset;       // the main object's dataset on one row
    QString ColonnaCodice; // the code or text a row is known by
    TKRVAzione Editor;     // the action that shows the editor
    TKRVAzione Ricerca;    // the search list kept in step with the editor
    // Whether another row (key other than id) holds the code or text the rows are known by.
    bool (*CodiceEsiste)(const QSqlDatabase &db, const QString &codice, int id) = nullptr;
    // The delete rule and delete service of a row known by its key (the service asks first
    // when ask is true) ...
    bool (*CanDelete)(const QSqlDatabase &db, int id) = nullptr;
    bool (*Delete)(const QSqlDatabase &db, int id, bool ask) = nullptr;
    // ... or, for customers, articles and services, by its code.
    TKRVEliminazionePerCodice PerCodice{};
    QString Rifiuto{}; // shown when the delete rule refuses
    // Rights asked before showing a row, before creating or changing one and before
    // deleting one (none when empty).
    QString PermessoVisualizzazione{};
    QString PermessoModifica{};
    QString PermessoEliminazione{};
};

const TKRVEntita &KRVEntitaAliquoteIVA();
const TKRVEntita &KRVEntitaUM();
const TKRVEntita &KRVEntitaTipiPagamento();
const TKRVEntita &KRVEntitaArticoli();
const TKRVEntita &KRVEntitaServizi();
const TKRVEntita &KRVEntitaClienti();
const TKRVEntita &KRVEntitaNoteDocumenti();
const TKRVEntita &KRVEntitaFattureVendita();
const TKRVEntita &KRVEntitaNoteAccredito();
