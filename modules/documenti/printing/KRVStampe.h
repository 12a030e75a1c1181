#pragma once

#include "Q3Report.h"

#include <QString>

class TQ3Dataset;

// What the module's prints need of its main object: the report project, the
// report system with its PDF back-end, the report datasets by name
// (adsAzienda and the datasets of the report data module), and the rows the
// prints compute themselves by the name of their connection.
class IKRVStampeHost
{
public:
    virtual ~IKRVStampeHost() = default;
    virtual TQ3ReportProject *rProject() const = 0;
    virtual TQ3ReportSystem *rSystem() const = 0;
    virtual TQ3RenderPDF *rRenderPDF() const = 0;
    virtual TQ3Dataset *StampeDataset(const QString &name) const = 0;
    virtual TQ3MemoryData *StampeDatiCalcolati(const QString &connection) const = 0;
};

// The module's main object as the prints see it, found through the host's
// registry; raises EQ3Exception when the module is not loaded.
IKRVStampeHost *KRVStampeHost();

// Reads the firm's data again: another module may have changed it since the last print.
void KRVAggiornaAzienda(IKRVStampeHost *host);

// Under the wait cursor: the firm's data read again and a print's own
// statement run in its dataset, which it answers.
TQ3Dataset *KRVApriDatiStampa(IKRVStampeHost *host, const QString &dataset, const QString &sql);

// Prints a sales invoice: "FattVend", or "FattVendIVAEsente" for a VAT-exempt
// one with the exemption note as "Param1". Destinazione 2 writes the PDF file
// NomeFilePDF with no dialog; any other value shows the output options.
// Failures come back as "[StampaFatturaVendita]" + "\n\r" + their message.
void StampaFatturaVendita(int IdFattVend, const QString &NomeFilePDF, int Destinazione);

// Prints a credit note ("NotaAccredito") with the output options. Failures
// come back with their own message, for the credit note editor to show.
void StampaNotaAccredito(int IdNotaAccredito);

// The price list of all articles with VAT-inclusive prices ("ElencoArticoli01").
void StampaListinoIVATO();
