#include "uKRVElencoRicerca.h"

#include "KRVClausole.h"
#include "KRVElenco.h"
#include "Q3Guards.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"

TKRVElencoRicerca::TKRVElencoRicerca(QWidget *owner, const QString &gridName, TKRVElencoInfo info,
                                     const std::function<void()> &cerca, const std::function<void()> &ripristina)
    : QObject(owner), m_info(std::move(info)), m_griglia(new TKRVGrigliaRisultati(gridName, owner)),
      m_barra(KRVCreaToolBar(owner, QStringLiteral("tBarRicerca"))),
      m_actCerca(KRVCreaAzione(owner, QStringLiteral("actCerca"), QStringLiteral("Cerca"), KRVImgCerca, cerca))
{
    for (const TKRVFiltro &filtro : std::as_const(m_info.Filters)) {
        QLineEdit *edit = KRVCampoTesto(filtro.Name);
        edit->setFixedWidth(200);
        // Enter in a filter searches, unless the member says otherwise.
        if (filtro.EnterSearches)
            connect(edit, &QLineEdit::returnPressed, m_actCerca, &QAction::trigger);
        QLabel *label = KRVEtichetta(filtro.Label, edit);
        label->setContentsMargins(6, 0, 6, 0);
        m_barra->addWidget(label);
        m_barra->addWidget(edit);
        m_barra->addSeparator();
        m_filtri.append(edit);
    }
    m_barra->addAction(m_actCerca);
    m_barra->addAction(KRVCreaAzione(owner, QStringLiteral("actRipristina"), QStringLiteral("Ripristina"),
                                     KRVImgRipristina, ripristina));
}

QLineEdit *TKRVElencoRicerca::Filtro(const QString &name) const
{
    for (QLineEdit *edit : m_filtri) {
        if (edit->objectName() == name)
            return edit;
    }
    return nullptr;
}

void TKRVElencoRicerca::CreaGrigliaVuota()
{
    m_griglia->CreaGrigliaVuota(m_info.KeyField, m_info.Columns);
}

void TKRVElencoRicerca::AggiornaGriglia(const QString &where)
{
    m_griglia->Svuota();
    if (!KRVTestoCercabile(where))
        return;
    TQ3BusyCursor busy;
    m_griglia->Carica([&](TKRVRisultati &risultati) {
        KRVCercaElenco(KRVSessioneModulo(), m_info.QueryHead, where, m_info.QueryTail, risultati);
    });
}

QString TKRVElencoRicerca::ClausolaFiltri() const
{
    QString where;
    for (int i = 0; i < m_filtri.size(); ++i) {
        const QString text = m_filtri.at(i)->text();
        if (text.isEmpty())
            continue;
        const TKRVFiltro &filtro = m_info.Filters.at(i);
        KRVAggiungiCondizione(where, KRVCondizioneFiltro(filtro.Condition, text, filtro.UpperCase, filtro.Closing));
    }
    return where;
}

void TKRVElencoRicerca::SvuotaFiltri()
{
    for (QLineEdit *edit : std::as_const(m_filtri))
        edit->clear();
}
