#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>

// The nature of an operation charged without VAT, as the electronic invoice
// codes it, with its short description.
struct TKRVNaturaIva
{
    QString Codice;
    QString Descrizione;
};

// The natures an invoice dated from 2021 may carry, in the order of their codes.
const QList<TKRVNaturaIva> &KRVNatureIva();

// The option that says which nature the "Non imponibile" lines carry on an electronic invoice.
inline constexpr char KRVOpzioneNaturaNonImponibile[] = "FATTURAPA_NATURA_NON_IMPONIBILE";

// The nature the "Non imponibile" lines of an invoice carry on its electronic
// copy: the module option's, when it is one of KRVNatureIva; otherwise (no
// row, an empty or unknown value, the store unreadable) "N1".
QString KRVNaturaNonImponibile(const QSqlDatabase &db);

// The option that says which nature the lines of an invoice marked exempt
// carry on its electronic copy, when their rate has none of its own.
inline constexpr char KRVOpzioneNaturaEsente[] = "FATTURAPA_NATURA_ESENTE";

// That nature: the option's, when it is one of KRVNatureIva; otherwise "N4".
QString KRVNaturaEsente(const QSqlDatabase &db);
