#pragma once

#include "uKRVRicercaCatalogo.h"

#include <QToolButton>

// Search list of the articles ("Gestione articoli"): results in pages of 200
// rows, the page actions repeating the last search, and the VAT-inclusive
// price list.
class TKRVRicercaArticoli : public TKRVRicercaCatalogo
{
    Q_OBJECT

public:
    static constexpr int PageSize = 200;

    explicit TKRVRicercaArticoli(IKRVMain &main);

    int PageCurrent() const { return m_pageCurrent; }
    int PageTotal() const { return m_pageTotal; }
    QString LastSearchString() const { return m_lastSearchString; }

    void SetPageCurrent(int value);
    void SetPageTotal(int value);
    void SetLastSearchString(const QString &value);

    // The page of the clause's rows; a page beyond the last shows the last, and
    // no page below the first.
    void AggiornaGriglia(const QString &where, int page);
    // The VAT-inclusive price list of all articles.
    void actStampaListinoIVATOExecute();

protected:
    void Cerca(const QString &where) override;
    void RicercaIniziale() override;
    void actRipristinaExecute() override;

private:
    QAction *AzionePagina(const QString &name, const QString &caption, int image, const std::function<int()> &page);
    void AggiornaIndicatore();

    int m_pageCurrent = 1;
    int m_pageTotal = 1;
    QString m_lastSearchString;
    QAction *m_actPageFirst;
    QAction *m_actPagePrevious;
    QAction *m_actPageNext;
    QAction *m_actPageLast;
    QToolButton *m_btnPagina;
};
