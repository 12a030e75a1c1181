#pragma once

#include "uKRVInserimentoBase.h"

#include <QDoubleSpinBox>
#include <QLineEdit>

// Editor of the VAT rates: code (fixed once saved), description and percentage.
class TKRVInserimentoAliquoteIVA : public TKRVInserimentoBase
{
    Q_OBJECT

public:
    explicit TKRVInserimentoAliquoteIVA(IKRVMain &main);

    // The percentage field's check on leaving or confirming it: 0 to 100.
    bool txtAliquotaValueValidate();

protected:
    void ClearFields() override;
    void FillFields(const TQ3Dataset &dataset) override;
    void WriteFields(TQ3Dataset &dataset) override;
    QString ValidationError() override;

private:
    bool AliquotaValida() const;

    QLineEdit *txtCodice;
    QLineEdit *txtDescrizione;
    QDoubleSpinBox *txtAliquota;
    bool m_validating = false;
};
