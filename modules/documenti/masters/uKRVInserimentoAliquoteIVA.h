#pragma once

#include "uKRVInserimentoBase.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>

// Editor of the VAT rates: code (fixed once saved), description, percentage and,
// for the electronic invoice, the nature of a zero rate and its legal reference.
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
    QComboBox *cboNatura;
    QLineEdit *txtRiferimentoNormativo;
    bool m_validating = false;
};
