#pragma once

#include <QList>

class IQ3ReportData;
class TQ3MemoryData;

// The tax of each rate of a VAT summary rounded to the cent, so that the rates
// add up to the document's tax total, which is the unrounded sum of its lines'
// taxes rounded once. Where the rates rounded one by one do not add up, each
// cent of difference goes to a rate whose rounding was furthest from its exact
// tax, one cent at most per rate. A difference larger than that does not come
// from rounding: the rates are then left as they round.
QList<double> KRVImposteArrotondate(const QList<double> &imposte, double totaleImposta);

// The VAT summary as a document prints it, written into riepilogo with the
// columns IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, IMPONIBILE, IMPOSTA and
// NON_IMPONIBILE: one row per row of the summary by rate iva, its tax rounded
// to add up to totaleImposta; then, when the document's lines (righe) have
// "Non imponibile" ones, which carry no VAT rate, one row described
// "Non imponibile" with their amount in NON_IMPONIBILE.
void KRVRiepilogoIvaStampa(const IQ3ReportData &iva, const IQ3ReportData &righe, double totaleImposta,
                           TQ3MemoryData &riepilogo);
