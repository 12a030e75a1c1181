#pragma once

#include "uKRVModSelezionaBase.h"

#include <QString>

// Chooses a customer: filtered by company name or by the initial on the
// letter bar; every showing starts from the names beginning with A.
class TKRVModSelezionaCliente : public TKRVModSelezionaBase
{
    Q_OBJECT

public:
    TKRVModSelezionaCliente();

    // The key of the selected customer, or -1.
    int ApriSelezionato() const;
    // Lists the customers whose name begins with the letter ("*": all).
    void BarraRicercaButtonClick(const QString &letter);
    // The clause of a letter of the bar.
    static QString ClausolaLettera(const QString &letter);

protected:
    void FormShow() override;
};
