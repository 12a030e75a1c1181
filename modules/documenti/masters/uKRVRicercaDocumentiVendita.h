#pragma once

#include "KRVEmissioneFatturaPA.h"
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
    TKRVRicercaDocumentiVendita(IKRVMain &main, TKRVRicercaInfo info, QString condizioneAnno,
                                EKRVDocumentoFatturaPA tipo);

    // Number, date, customer code and name, total, paid, electronic invoice file.
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
    // "Fatture elettroniche...": the selected documents, or all those found.
    void actEsportaFattureElettronicheExecute();

    QString m_condizioneAnno;
    EKRVDocumentoFatturaPA m_tipo;
    QSpinBox *txtAnno;
};
