#pragma once

#include "uKRVCampoScelta.h"
#include "uKRVCatalogo.h"
#include "uKRVCategoriaBox.h"
#include "uKRVInserimentoBase.h"

#include <QDoubleSpinBox>
#include <QLineEdit>

// What the article and service editors share: a proposed code, a category of
// the tree, price and cost, a VAT rate and a unit chosen in their dialogs, the
// six save checks and a delete that follows the code field.
class TKRVInserimentoCatalogo : public TKRVInserimentoBase
{
    Q_OBJECT

public:
    TKRVCampoScelta *AliquotaIVA() const { return m_aliquotaIVA; }
    TKRVCampoScelta *UM() const { return m_um; }

    void cmdSelezionaAliquotaIVAClick();
    void cmdSelezionaUMClick();

protected:
    TKRVInserimentoCatalogo(IKRVMain &main, const TKRVCatalogo &catalogo, const QString &caption, QSize minimumSize,
                            int descriptionLength);

    void ClearFields() override;
    void FillFields(const TQ3Dataset &dataset) override;
    void WriteFields(TQ3Dataset &dataset) override;
    QString ValidationError() override;
    bool CanDeleteRecord() override;
    bool DeleteRecord() override;

private:
    const TKRVCatalogo &m_catalogo;
    QLineEdit *txtCodice;
    QLineEdit *txtDescrizione;
    TKRVCategoriaBox *txtCategoria;
    QDoubleSpinBox *txtPrezzo;
    QDoubleSpinBox *txtCosto;
    TKRVCampoScelta *m_aliquotaIVA;
    TKRVCampoScelta *m_um;
};
