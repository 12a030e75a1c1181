#pragma once

#include "uKRVModStatisticheBase.h"

class QCheckBox;

// "Fatturato clienti-servizi": the service lines' turnover by customer and
// code, with or without each customer's totals, and a "Ripristina" of its own.
class TKRVModStatisticheFatturatoClientiServizi : public TKRVModStatisticheBase
{
    Q_OBJECT

public:
    explicit TKRVModStatisticheFatturatoClientiServizi(IKRVMain &main);

    void SetIdServizio(int id) { SetIdVoce(id); }
    QAction *actRipristina() const { return m_actRipristina; }
    // "FatturatoClientiServizi02" with the customers' totals, "...01" without.
    QString Report() const override;

protected:
    QString Istruzione(const TKRVFiltroRighe &filtro) const override;

private:
    QCheckBox *chkVisualizzaTotali;
    QAction *m_actRipristina;
};
