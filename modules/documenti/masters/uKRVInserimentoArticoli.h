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
    explicit TKRVInserimentoArticoli(IKRVMain &main);

protected:
    void ClearFields() override;
    void FillFields(const TQ3Dataset &dataset) override;
    void WriteFields(TQ3Dataset &dataset) override;
    bool ConsentiChiusura() override;

private:
    // A stock threshold as read (the column keeps one decimal, and any sign)
    // and the whole number its field shows.
    struct TSoglia
    {
        QVariant Letta;
        int Mostrata = 0;
    };
    static void MostraSoglia(QSpinBox *field, TSoglia &soglia, const QVariant &stored);
    static QVariant ValoreSoglia(const QSpinBox *field, const TSoglia &soglia);

    TSoglia m_sottoscorta;
    TSoglia m_riordino;
    QSpinBox *txtSottoscorta;
    QSpinBox *txtRiordino;
    QPlainTextEdit *txtNote;
    QTabWidget *m_pagine;
};
