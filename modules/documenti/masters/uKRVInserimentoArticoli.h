#pragma once

#include "uKRVInserimentoCatalogo.h"

#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>

// Editor of the articles: the shared fields on the page " Generale " with the
// stock thresholds, the notes on their own page, and a three-way question on
// closing with unsaved changes.
class TKRVInserimentoArticoli : public TKRVInserimentoCatalogo
{
    Q_OBJECT

public:
    explicit TKRVInserimentoArticoli(TKRVMain &main);

    static QString MsgSalvareModifiche();

protected:
    void ClearFields() override;
    void FillFields(const TQ3Dataset &dataset) override;
    void WriteFields(TQ3Dataset &dataset) override;
    bool ConsentiChiusura() override;

private:
    QSpinBox *txtSottoscorta;
    QSpinBox *txtRiordino;
    QPlainTextEdit *txtNote;
    QTabWidget *m_pagine;
};
