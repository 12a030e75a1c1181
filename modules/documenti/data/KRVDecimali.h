#pragma once

// The decimals a document line keeps of the unit price and of the quantity the
// user typed; amounts, discounts and rates keep two.
inline constexpr int KRVDecimaliPrezzo = 6;
inline constexpr int KRVDecimaliQuantita = 3;
