#pragma once

#include "KRVDdtFattura.h"

#include <QList>
#include <QSqlDatabase>
#include <QStringList>

#include <functional>

// Receives one invoice line: its cells by the invoice layout (KRVLayoutFattura), amounts as
// "%.2f", keys as decimal integers.
using TKRVAggiungiRiga = std::function<void(const QStringList &riga)>;
// Receives the key, number and date of each note whose lines were handed on.
using TKRVDdtCaricato = std::function<void(const TKRVDdtFattura &ddt)>;

// Reads the lines of the outgoing delivery notes with these keys, note by note
// in the order given, and hands them on as invoice lines: for a note with
// lines, the text line "-- Rif. D.d.T. n. <number> del <date> --", then its
// "Articolo", "Servizio" and "Testo" lines in their stored order (any other
// kind is left out), then the text line "-- --"; a note without lines gives
// nothing. Nothing is written to the notes, so a note can be read again.
// Each note with lines is reported, when asked, as soon as its reference line
// is handed on.
//
// Each line is handed on as soon as it is read: when a failure stops the
// reading (raised as an exception), the lines handed on before it stay with
// the caller.
void KRVCaricaDaDdt(const QSqlDatabase &db, const QList<int> &chiavi, const TKRVAggiungiRiga &aggiungi,
                    const TKRVDdtCaricato &caricato = {});
