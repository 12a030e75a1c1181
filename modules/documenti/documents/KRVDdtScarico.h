#pragma once

#include <QString>

// The outgoing delivery notes of the warehouse module ("D.d.T. di scarico"),
// as the multi-selection dialog searches them.

// The statement of a search is the head, the condition and the tail.
inline const QString KRVQueryDdtScaricoTesta = QStringLiteral("SELECT * FROM DDT_SCARICO ");
inline const QString KRVQueryDdtScaricoCoda = QStringLiteral(" ORDER BY ANNO DESC, NUMERO DESC");

// The notes of a year and, when a name is given, of the customers whose
// business name contains it.
QString KRVCondizioneDdtScarico(int anno, const QString &ragioneSociale);
