#pragma once

#include <QList>
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
