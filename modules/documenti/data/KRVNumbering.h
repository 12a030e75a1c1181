#pragma once

// Next free number of the year: the highest one plus 1 (with the shared
// sequence, the highest of sales and accompanying invoices).
int GetNextNumeroFattVend(int anno);
int GetNextNumeroNotaAccredito(int anno);

// Whether the number is taken in that year by another document.
bool FattVendExists(int numero, int anno, int id);
bool NotaAccreditoExists(int numero, int anno, int id);
