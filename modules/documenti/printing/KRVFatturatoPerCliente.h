#pragma once

#include "Q3Dataset.h"

#include <QString>

// The turnover by customer of one year: each customer with invoices in any
// year, with the number of invoices of the year (NUM_DOC), their taxable total
// (TOTALE_IMPONIBILE, 0 when none) and its share of the year's taxable total
// (PERC_FATTURATO), largest first. Only the sales invoices count. For a year
// without invoices, while some customer has invoices in other years, the share
// divides by zero and the database refuses the rows.
//
// The statements take the year as the parameters :ANNO1, :ANNO2, ...

// The statement as first written, kept as the reference of the rows: it sums
// the year's invoices again for every customer row, so its time grows with
// the customers times the year's invoices.
QString KRVSQLFatturatoPerClienteRiferimento();

// The statement the print runs: the same columns, values, order and failure,
// with the year's total read once and joined to every customer row.
QString KRVSQLFatturatoPerCliente();

// Opens the dataset (its statement one of the above) on the year, every year
// parameter of its statement set.
void KRVApriFatturatoPerCliente(TQ3Dataset &dataset, int anno);
