#include "uKRVSolaLettura.h"

#include <utility>

TKRVSolaLettura::TKRVSolaLettura(QWidget *editor, QTabWidget *pagine, QStringList consentite)
    : m_editor(editor), m_pagine(pagine), m_consentite(std::move(consentite))
{}

void TKRVSolaLettura::Imposta(bool attiva)
{
    if (attiva == m_attiva)
        return;
    m_attiva = attiva;
    if (!attiva) {
        for (const QPointer<QWidget> &pagina : std::as_const(m_pagineSpente))
            if (pagina)
                pagina->setEnabled(true);
        for (const QPointer<QAction> &azione : std::as_const(m_azioniSpente))
            if (azione)
                azione->setEnabled(true);
        m_pagineSpente.clear();
        m_azioniSpente.clear();
        return;
    }
    for (int i = 0; i < m_pagine->count(); ++i) {
        QWidget *pagina = m_pagine->widget(i);
        if (pagina->isEnabled()) {
            pagina->setEnabled(false);
            m_pagineSpente.append(pagina);
        }
    }
    for (QAction *azione : m_editor->findChildren<QAction *>()) {
        if (azione->isEnabled() && !m_consentite.contains(azione->objectName())) {
            azione->setEnabled(false);
            m_azioniSpente.append(azione);
        }
    }
}
