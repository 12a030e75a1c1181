#include "uKRVInserimentoArticoli.h"

#include "Q3Dataset.h"

#include <QFormLayout>

namespace {

// A stock threshold: a whole number.
QSpinBox *CampoSoglia(const QString &name)
{
    auto field = new QSpinBox;
    field->setObjectName(name);
    field->setButtonSymbols(QAbstractSpinBox::NoButtons);
    field->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    field->setRange(-999999999, 999999999);
    field->setFixedWidth(140);
    return field;
}

// Moves a labelled field of the panel to that row.
void SpostaRiga(QWidget *field, int row)
{
    auto form = qobject_cast<QFormLayout *>(field->parentWidget()->layout());
    int from = -1;
    QFormLayout::ItemRole role;
    form->getWidgetPosition(field, &from, &role);
    const QFormLayout::TakeRowResult taken = form->takeRow(from);
    QWidget *label = taken.labelItem->widget();
    delete taken.labelItem;
    delete taken.fieldItem;
    form->insertRow(row, label, field);
}

} // namespace

TKRVInserimentoArticoli::TKRVInserimentoArticoli(IKRVMain &main)
    : TKRVInserimentoCatalogo(main, KRVCatalogoArticoli(), QStringLiteral("Inserimento / Modifica articoli"),
                              QSize(750, 550), 100),
      txtSottoscorta(CampoSoglia(QStringLiteral("txtSottoscorta"))),
      txtRiordino(CampoSoglia(QStringLiteral("txtRiordino"))), txtNote(new QPlainTextEdit),
      m_pagine(ImpaginaCampi(QStringLiteral(" Generale ")))
{
    setObjectName(QStringLiteral("KRVInserimentoArticoli"));
    AggiungiCampo(QStringLiteral("Sottoscorta"), txtSottoscorta);
    AggiungiCampo(QStringLiteral("Riordino"), txtRiordino);
    // The thresholds come right after the code and the description.
    SpostaRiga(txtSottoscorta, 2);
    SpostaRiga(txtRiordino, 3);
    txtNote->setObjectName(QStringLiteral("txtNote"));
    txtNote->setAccessibleName(QStringLiteral("Note"));
    CollegaCampo(txtNote);
    m_pagine->addTab(txtNote, QStringLiteral(" Note "));
    FormCreate();
}

void TKRVInserimentoArticoli::ClearFields()
{
    m_pagine->setCurrentIndex(0);
    TKRVInserimentoCatalogo::ClearFields();
    MostraSoglia(txtSottoscorta, m_sottoscorta, QVariant(0));
    MostraSoglia(txtRiordino, m_riordino, QVariant(0));
    txtNote->clear();
}

void TKRVInserimentoArticoli::FillFields(const TQ3Dataset &dataset)
{
    TKRVInserimentoCatalogo::FillFields(dataset);
    MostraSoglia(txtSottoscorta, m_sottoscorta, dataset.FieldValue(QStringLiteral("SOTTOSCORTA")));
    MostraSoglia(txtRiordino, m_riordino, dataset.FieldValue(QStringLiteral("RIORDINO")));
    txtNote->setPlainText(dataset.FieldValue(QStringLiteral("NOTE")).toString());
}

void TKRVInserimentoArticoli::WriteFields(TQ3Dataset &dataset)
{
    TKRVInserimentoCatalogo::WriteFields(dataset);
    dataset.SetFieldValue(QStringLiteral("SOTTOSCORTA"), ValoreSoglia(txtSottoscorta, m_sottoscorta));
    dataset.SetFieldValue(QStringLiteral("RIORDINO"), ValoreSoglia(txtRiordino, m_riordino));
    dataset.SetFieldValue(QStringLiteral("NOTE"), txtNote->toPlainText());
}

void TKRVInserimentoArticoli::MostraSoglia(QSpinBox *field, TSoglia &soglia, const QVariant &stored)
{
    soglia = {stored, qRound(stored.toDouble())};
    field->setValue(soglia.Mostrata);
}

QVariant TKRVInserimentoArticoli::ValoreSoglia(const QSpinBox *field, const TSoglia &soglia)
{
    // The whole number shown stands for the stored value until the user changes it.
    return field->value() == soglia.Mostrata ? soglia.Letta : QVariant(field->value());
}

bool TKRVInserimentoArticoli::ConsentiChiusura()
{
    return ChiediSalvataggioPrimaDiChiudere();
}
