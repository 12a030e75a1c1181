#pragma once

// What the load test checks once its workstations have ended: the database
// against what they recorded, and their figures.
#include "KRVRegistroCarico.h"
#include "Q3Connection.h"

#include <QList>
#include <QString>

// Each count is of faults: every one is told by a warning.
struct TKRVVerificaCarico
{
    int NumeriDoppi = 0;       // a number twice in its kind and year (with the shared sequence, also
                               // an invoice's number among the accompanying invoices')
    int RigheOrfane = 0;       // lines without their header
    int RighePerse = 0;        // a document whose lines are not those its last save wrote
    int TotaliErrati = 0;      // header totals other than its lines give
    int SalvataggiIgnoti = 0;  // a document left by a save no workstation saw succeed
    int SalvataggiPersi = 0;   // a save that succeeded, lost under an earlier one
    int DocumentiPersi = 0;    // a saved document gone without a delete that succeeded
    int EliminazioniPerse = 0; // a document that a delete that succeeded left
    int Documenti = 0;         // documents checked

    int Difetti() const
    {
        return NumeriDoppi + RigheOrfane + RighePerse + TotaliErrati + SalvataggiIgnoti + SalvataggiPersi
               + DocumentiPersi + EliminazioniPerse;
    }
};

// Checks every invoice and credit note of the database, in one snapshot on
// the connection, against the requests of all the workstations.
TKRVVerificaCarico KRVVerificaArchivioCarico(TQ3Connection &connessione, const QList<TKRVRichiestaCarico> &richieste);

// The figures of a run of the given seconds.
struct TKRVCifreCarico
{
    int Richieste = 0;
    int Salvataggi = 0; // saves that succeeded
    double SalvataggiAlSecondo = 0;
    qint64 P50 = 0, P95 = 0, P99 = 0, MassimoSalvataggio = 0; // save times, ms
    qint64 AttesaMassima = 0;                                 // the longest request of any kind, ms
    qint64 Limite = 0;                                        // the bound on a request's time, ms
    int OltreLimite = 0;                                      // requests longer than that
    int Conflitti = 0, Rifiutati = 0, Assenti = 0, LettureMiste = 0, Errori = 0;
    int Eliminazioni = 0, Letture = 0, Ricerche = 0;
};

TKRVCifreCarico KRVCifreCarico(const QList<TKRVRichiestaCarico> &richieste, int secondi, qint64 limite);
// The figures as lines of text, for the run's log and the notes.
QStringList KRVTestoCifre(const TKRVCifreCarico &cifre, const TKRVVerificaCarico &verifica);
