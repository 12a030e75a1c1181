#pragma once

#include "KRVFatturaPA.h"

#include <QByteArray>
#include <QStringList>

// The file checked against the FatturaPA schema embedded in the program (no
// network): one message in Italian for each error, with its line; none when
// the file is valid.
QStringList KRVValidaSchemaFatturaPA(const QByteArray &xml);

// The exchange system's checks that the schema cannot express, on the
// document as it will be written: one message for each refusal, naming the
// document, the field and its value; none when the system would accept it.
QStringList KRVControlliSdI(const TKRVDatiFatturaPA &dati);
