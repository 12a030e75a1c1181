#pragma once

#include "KRVEmissioneFatturaPA.h"

#include <QSqlDatabase>

class TKRVCartellaFatturaPA;

// The command "Fattura elettronica" of the document editors: asks for the
// folder, produces the saved document's file there and tells the user which
// file was written ("Informazioni") or what to correct first ("Attenzione").
// Cancelling the folder dialog ends it silently. Answers whether a file was written.
bool KRVCreaFatturaElettronica(TKRVCartellaFatturaPA &dialog, const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo,
                               int id);

// The warning shown when an issued document is opened.
QString KRVMsgDocumentoEmesso(const TKRVStatoFatturaPA &stato);
