#pragma once

#include "KRVEmissioneFatturaPA.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <functional>

// Where an export writes: one file a document into a folder, or all of them
// into one new ZIP file.
struct TKRVDestinazioneFatturePA
{
    QString Percorso; // the folder, or the ZIP file
    bool Zip = false;
};

// One document of an export: the file written for it, or why it was refused.
struct TKRVEsitoFatturaPA
{
    int Id = 0;
    QString Documento; // "Fattura 12/2026"
    QString NomeFile;
    QStringList Errori;
};

struct TKRVEsportazioneFatturePA
{
    QList<TKRVEsitoFatturaPA> Scritte;
    QList<TKRVEsitoFatturaPA> Rifiutate;
    int NonEsaminate = 0; // left out when the user stopped the export
};

// Told after each document how many are done of all; answering false stops
// the export there: what was written until then stays written.
using TKRVAvanzamentoFatturePA = std::function<bool(int fatti, int totale)>;

// Produces the electronic invoices of the saved documents, in the order
// given: each one checked as a single export would check it, a refused one
// written nowhere. A written one takes a new send progressive and, once all
// files are on the disk (the ZIP file closed), every document records its
// file in one transaction. When the folder is missing, the ZIP file cannot be
// written or the database fails, raises EQ3Exception and leaves no file and
// no record behind.
TKRVEsportazioneFatturePA KRVEsportaFatturePA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo,
                                              const QList<int> &ids, const TKRVDestinazioneFatturePA &destinazione,
                                              const TKRVAvanzamentoFatturePA &avanzamento = {});

// The summary shown at the end, in Italian: the counts, then each refused
// document with what to correct, then the files written.
QString KRVRiepilogoEsportazione(const TKRVEsportazioneFatturePA &esito);
