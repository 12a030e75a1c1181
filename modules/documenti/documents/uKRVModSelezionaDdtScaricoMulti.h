#pragma once

#include "uKRVModSelezionaBase.h"

#include <QLineEdit>
#include <QList>
#include <QSpinBox>

// Chooses any number of outgoing delivery notes of the warehouse module by
// their check boxes. It is reset and searched by whoever shows it, so showing
// it reloads nothing.
class TKRVModSelezionaDdtScaricoMulti : public TKRVModSelezionaBase
{
    Q_OBJECT

public:
    TKRVModSelezionaDdtScaricoMulti();

    // The keys of the checked notes, in grid order.
    QList<int> GetSelected() const;

    // The name filter, as a caller pre-filters the dialog on its customer.
    void SetRagioneSociale(const QString &text);

    // OK only with a checked note.
    void accept() override;

    void actCercaExecute() override;
    // Clears the name, sets the current year and unchecks every row; no search.
    void actRipristinaExecute() override;
    void actSelezionaTuttiExecute();
    void actDeselezionaTuttiExecute();

protected:
    void FormShow() override;
    void gridRisultatiDblClickCell() override;

private:
    void ImpostaSpunte(Qt::CheckState state);

    QLineEdit *txtRagioneSociale;
    QSpinBox *txtAnno;
};
