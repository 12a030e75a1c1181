#pragma once

#include "uKRVCatalogo.h"
#include "uKRVCategoriaBox.h"
#include "uKRVRicercaBase.h"

// What the article and service search lists share: code and description
// filters in capitals, the category tree box whose choice includes the
// categories below it, no search on opening, and a delete tested on the code
// filter's text.
class TKRVRicercaCatalogo : public TKRVRicercaBase
{
    Q_OBJECT

public:
    TKRVCategoriaBox *Categorie() const { return txtCategoria; }

protected:
    // queryHead and queryTail go around the filter clause of a plain search.
    TKRVRicercaCatalogo(IKRVMain &main, const TKRVCatalogo &catalogo, const QString &caption, const QString &queryHead,
                        const QString &queryTail);

    // The clause of the filters and the category.
    QString ClausolaRicerca() const;
    // Shows the rows of the clause.
    virtual void Cerca(const QString &where);

    void RicercaIniziale() override;
    void actCercaExecute() override;
    void actRipristinaExecute() override;
    void actEliminaExecute() override;

private:
    const TKRVCatalogo &m_catalogo;
    TKRVCategoriaBox *txtCategoria;
};
