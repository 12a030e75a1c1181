#pragma once

#include "uKRVRicercaBase.h"

#include <QLineEdit>
#include <QString>

// Search list of the customers: code, company name and telephone filters,
// and the letter bar of the names' initials.
class TKRVRicercaClienti : public TKRVRicercaBase
{
    Q_OBJECT

public:
    explicit TKRVRicercaClienti(IKRVMain &main);

    // Lists the customers whose name begins with the letter ("*": all).
    void BarraRicercaButtonClick(const QString &letter);
    // The clause of a letter of the bar.
    static QString ClausolaLettera(const QString &letter);
    // The clause of the filters as they read now.
    QString ClausolaFiltri() const;

protected:
    void RicercaIniziale() override;
    void actCercaExecute() override;
    void actEliminaExecute() override;

private:
    void AggiungiFiltroTelefono();

    QLineEdit *txtTelefono;
};
