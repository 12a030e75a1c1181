#pragma once

#include <QString>

// The clauses of the search lists and selection dialogs, composed as the
// lists send them: a clause is empty or begins with "WHERE ", its conditions
// joined by " AND ", every text typed going in as one quoted literal.

// Appends a condition to a clause: "WHERE " first, " AND " between.
void KRVAggiungiCondizione(QString &where, const QString &condizione);

// A filter's condition ("UM CONTAINING "), the text typed as a literal (in
// capitals when asked) and the closing of brackets the condition opened.
QString KRVCondizioneFiltro(const QString &condizione, const QString &testo, bool maiuscole,
                            const QString &chiusura = QString());

// The customers whose business name begins with the letter, as the search
// list and the selection dialog spell it; no clause for "*", which stands for
// all of them.
QString KRVClausolaLetteraRicercaClienti(const QString &lettera);
QString KRVClausolaLetteraSelezioneCliente(const QString &lettera);
// The customers both show first: those under "A".
inline const QString KRVClausolaClientiIniziale = QStringLiteral("WHERE UPPER(RAGIONESOCIALE) LIKE 'A%'");

// The customers with the text in any of their four numbers.
QString KRVCondizioneTelefono(const QString &testo);

// The rows whose category column holds one of the keys ("1,4,7"), as the
// search list writes it and, after a blank, as the selection dialog does.
QString KRVCondizioneCategorie(const QString &colonna, const QString &chiavi);
QString KRVCondizioneCategorieSelezione(const QString &colonna, const QString &chiavi);

// The documents of the year ("WHERE ANNO=" and the year), then the conditions
// of the filters' clause, when there is one.
QString KRVClausolaAnno(const QString &condizioneAnno, int anno, const QString &filtri);
