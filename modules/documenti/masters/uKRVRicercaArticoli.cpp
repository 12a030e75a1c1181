#include "uKRVRicercaArticoli.h"

#include "KRVElenco.h"
#include "KRVStampe.h"
#include "Q3Guards.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"

TKRVRicercaArticoli::TKRVRicercaArticoli(IKRVMain &main)
    : TKRVRicercaCatalogo(main, KRVCatalogoArticoli(), QStringLiteral("Gestione articoli"), QString(), QString()),
      m_actPageFirst(AzionePagina(QStringLiteral("actPageFirst"), QStringLiteral("Prima pagina"), KRVImgPaginaPrima,
                                  [] { return 1; })),
      m_actPagePrevious(AzionePagina(QStringLiteral("actPagePrevious"), QStringLiteral("Pagina precedente"),
                                     KRVImgPaginaPrecedente, [this] { return m_pageCurrent - 1; })),
      m_actPageNext(AzionePagina(QStringLiteral("actPageNext"), QStringLiteral("Pagina successiva"),
                                 KRVImgPaginaSuccessiva, [this] { return m_pageCurrent + 1; })),
      m_actPageLast(AzionePagina(QStringLiteral("actPageLast"), QStringLiteral("Ultima pagina"), KRVImgPaginaUltima,
                                 [this] { return m_pageTotal; })),
      m_btnPagina(new QToolButton(this))
{
    setObjectName(QStringLiteral("KRVRicercaArticoli"));

    QAction *listino = KRVCreaAzione(this, QStringLiteral("actStampaListinoIVATO"), QStringLiteral("Listino IVATO"),
                                     KRVImgStampa, [this] { actStampaListinoIVATOExecute(); });
    listino->setToolTip(QStringLiteral("Listino prezzi IVATO"));

    m_btnPagina->setObjectName(QStringLiteral("btnPagina"));
    m_btnPagina->setAutoRaise(true);
    m_btnPagina->setFocusPolicy(Qt::NoFocus);

    auto bar = findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    bar->addSeparator();
    bar->addAction(listino);
    bar->addSeparator();
    for (QAction *action : {m_actPageFirst, m_actPagePrevious}) {
        bar->addAction(action);
        qobject_cast<QToolButton *>(bar->widgetForAction(action))->setToolButtonStyle(Qt::ToolButtonIconOnly);
    }
    bar->addWidget(m_btnPagina);
    for (QAction *action : {m_actPageNext, m_actPageLast}) {
        bar->addAction(action);
        qobject_cast<QToolButton *>(bar->widgetForAction(action))->setToolButtonStyle(Qt::ToolButtonIconOnly);
    }
    FormCreate();
}

void TKRVRicercaArticoli::actStampaListinoIVATOExecute()
{
    // Always every article, whatever the list's filter.
    StampaListinoIVATO();
}

QAction *TKRVRicercaArticoli::AzionePagina(const QString &name, const QString &caption, int image,
                                           const std::function<int()> &page)
{
    return KRVCreaAzione(this, name, caption, image, [this, page] { AggiornaGriglia(m_lastSearchString, page()); });
}

void TKRVRicercaArticoli::SetPageCurrent(int value)
{
    m_pageCurrent = value;
    m_actPageFirst->setEnabled(value >= 2);
    m_actPagePrevious->setEnabled(value >= 2);
    m_actPageNext->setEnabled(m_pageCurrent < m_pageTotal);
    m_actPageLast->setEnabled(m_pageCurrent < m_pageTotal);
    AggiornaIndicatore();
}

void TKRVRicercaArticoli::SetPageTotal(int value)
{
    m_pageTotal = value;
    AggiornaIndicatore();
}

void TKRVRicercaArticoli::SetLastSearchString(const QString &value)
{
    m_lastSearchString = value;
}

void TKRVRicercaArticoli::AggiornaIndicatore()
{
    m_btnPagina->setText(QStringLiteral("Pagina ") + QString::number(m_pageCurrent) + QStringLiteral(" di ")
                         + QString::number(m_pageTotal));
}

void TKRVRicercaArticoli::AggiornaGriglia(const QString &where, int page)
{
    TKRVGrigliaRisultati *grid = GridRisultati();
    grid->Svuota();
    if (!KRVTestoCercabile(where))
        return;
    TQ3BusyCursor busy;
    const QSqlDatabase db = Sessione();
    const int count = KRVContaArticoli(db, where);
    SetPageTotal(count / PageSize);
    if (count % PageSize > 0)
        SetPageTotal(m_pageTotal + 1);
    if (page > m_pageTotal)
        page = m_pageTotal;
    if (page < 1)
        page = 1;
    grid->Carica([&](TKRVRisultati &risultati) { KRVCaricaPaginaArticoli(db, where, page, PageSize, risultati); });
    SetPageCurrent(page);
}

void TKRVRicercaArticoli::Cerca(const QString &where)
{
    SetLastSearchString(where);
    AggiornaGriglia(where, 1);
}

void TKRVRicercaArticoli::RicercaIniziale()
{
    TKRVRicercaCatalogo::RicercaIniziale();
    SetPageTotal(1);
    SetPageCurrent(1);
}

void TKRVRicercaArticoli::actRipristinaExecute()
{
    TKRVRicercaCatalogo::actRipristinaExecute();
    SetLastSearchString(QString());
    SetPageCurrent(1);
}
