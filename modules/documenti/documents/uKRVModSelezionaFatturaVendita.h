#pragma once

#include "uKRVModSelezionaBase.h"

#include <QString>

// Chooses one saved sales invoice of a customer: number, date and total,
// newest first. The caller names the customer before showing it.
class TKRVModSelezionaFatturaVendita : public TKRVModSelezionaBase
{
    Q_OBJECT

public:
    TKRVModSelezionaFatturaVendita();

    // The customer, by its code, whose invoices the dialog lists.
    void SetCliente(const QString &codice);
    // The key of the selected invoice, or -1.
    int ApriSelezionato() const;

protected:
    void FormShow() override;
    // Lists the customer's invoices again.
    void actCercaExecute() override;

private:
    QString m_cliente;
};
