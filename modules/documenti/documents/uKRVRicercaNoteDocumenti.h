#pragma once

#include "uKRVRicercaBase.h"

// Search list of the document notes, filtered by title.
class TKRVRicercaNoteDocumenti : public TKRVRicercaBase
{
    Q_OBJECT

public:
    explicit TKRVRicercaNoteDocumenti(IKRVMain &main);

protected:
    // Clears the filter and lists every note.
    void actRipristinaExecute() override;
    // Deletes the selected note, once confirmed, and searches again.
    void actEliminaExecute() override;
};
