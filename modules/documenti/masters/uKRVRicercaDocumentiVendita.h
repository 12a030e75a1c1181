#pragma once

#include "uKRVRicercaBase.h"

#include <QSpinBox>

// A search list of the sales documents of one year, found by customer code,
// customer name and the member's further filters; the year is always part of
// the clause, which starts with the member's own year condition.
class TKRVRicercaDocumentiVendita : public TKRVRicercaBase
{
    Q_OBJECT

public:
    // The clause of the filters as they read now: the year always first.
    QString ClausolaFiltri() const;

protected:
    TKRVRicercaDocumentiVendita(IKRVMain &main, TKRVRicercaInfo info, QString condizioneAnno);

    // Number, date, customer code and name, total, paid.
    static QList<TKRVColonna> ColonneDocumento();
    // The filters on the customer's code and name.
    static QList<TKRVFiltro> FiltriCliente();

    void RicercaIniziale() override;
    void actCercaExecute() override;
    void actRipristinaExecute() override;
    void actNuovoExecute() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void AggiungiFiltroAnno();

    QString m_condizioneAnno;
    QSpinBox *txtAnno;
};
