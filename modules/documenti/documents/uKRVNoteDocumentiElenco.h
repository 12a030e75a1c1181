#pragma once

#include "uKRVElencoRicerca.h"

// The notes as the search list and the selection dialog show them: every
// note, or those whose title contains the filter's text, by title without
// regard to case.
TKRVElencoInfo KRVElencoNoteDocumenti(const QString &caption, const QList<TKRVColonna> &columns);
