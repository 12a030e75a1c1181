#pragma once

#include "uKRVModSelezionaBase.h"

// Chooses a document note by its title: hands back its key. Between uses it
// keeps its filter and rows, as the filtered selection dialogs do.
class TKRVModSelezionaNotaDocumenti : public TKRVModSelezionaBase
{
    Q_OBJECT

public:
    TKRVModSelezionaNotaDocumenti();

    // The key of the selected note, or -1.
    int ApriSelezionato() const;

protected:
    void FormShow() override;
    // Clears the filter and lists every note.
    void actRipristinaExecute() override;
};
