#pragma once

#include "uKRVCatalogo.h"
#include "uKRVCategoriaBox.h"
#include "uKRVModSelezionaBase.h"

// What the article and service selection dialogs share: code and description
// filters, the category tree box, rows kept between showings, and the chosen
// row's key.
class TKRVModSelezionaCatalogo : public TKRVModSelezionaBase
{
    Q_OBJECT

public:
    TKRVCategoriaBox *Categorie() const { return txtCategoria; }

    // The key of the selected row, or -1.
    int ApriSelezionato() const;

protected:
    TKRVModSelezionaCatalogo(const TKRVCatalogo &catalogo, const QString &caption, const QString &queryHead);

    void FormShow() override;
    void actCercaExecute() override;
    void actRipristinaExecute() override;

private:
    const TKRVCatalogo &m_catalogo;
    TKRVCategoriaBox *txtCategoria;
};
