#pragma once

#include <QAction>
#include <QList>
#include <QPointer>
#include <QStringList>
#include <QTabWidget>
#include <QWidget>

// Turns an editor read-only and back: the pages' contents and every action of
// the editor but the named ones (those that only read or leave) are disabled,
// and given back the state they had when it is turned off again.
class TKRVSolaLettura
{
public:
    TKRVSolaLettura(QWidget *editor, QTabWidget *pagine, QStringList consentite);

    void Imposta(bool attiva);
    bool Attiva() const { return m_attiva; }

private:
    QWidget *m_editor;
    QTabWidget *m_pagine;
    QStringList m_consentite;
    bool m_attiva = false;
    QList<QPointer<QWidget>> m_pagineSpente;
    QList<QPointer<QAction>> m_azioniSpente;
};
