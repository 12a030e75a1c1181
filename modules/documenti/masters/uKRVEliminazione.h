#pragma once

#include <QSqlDatabase>
#include <QString>

// A master row whose delete rule is asked about the code (the code typed, not
// necessarily the row's) and which is deleted by its key.
struct TKRVEliminazionePerCodice
{
    bool (*CanDelete)(const QSqlDatabase &db, const QString &codice) = nullptr;
    QString Rifiuto;        // shown when the rule answers false
    bool (*Delete)(const QSqlDatabase &db, int id) = nullptr;
};

// The customers' own.
const TKRVEliminazionePerCodice &KRVEliminazioneClienti();

// The rule on the code, then its refusal ("Attenzione") or the question
// "Confermare l'eliminazione?": whether the delete may go on.
bool KRVConfermaEliminazione(const QSqlDatabase &db, const TKRVEliminazionePerCodice &info, const QString &codice);

// The row's delete in a transaction; a failure is rolled back and reported
// ("Errore"). Answers whether the row went.
bool KRVEliminaRecord(const QSqlDatabase &db, const TKRVEliminazionePerCodice &info, int id);
