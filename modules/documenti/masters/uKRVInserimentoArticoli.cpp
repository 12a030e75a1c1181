#include "uKRVInserimentoArticoli.h"

#include "Q3Dataset.h"

namespace {

// A stock threshold: a whole number.
QSpinBox *CampoSoglia(const QString &name)
{
    auto field = new QSpinBox;
    field->setObjectName(name);
    field->setButtonSymbols(QAbstractSpinBox::NoButtons);
    field->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    field->setRange(0, 999999999);
    field->setFixedWidth(140);
    return field;
}

} // namespace

TKRVInserimentoArticoli::TKRVInserimentoArticoli(TKRVMain &main)
    : TKRVInserimentoCatalogo(main, KRVCatalogoArticoli(), QStringLiteral("Inserimento / Modifica articoli"),
                              QSize(750, 550), 100),
      txtSottoscorta(CampoSoglia(QStringLiteral("txtSottoscorta"))),
      txtRiordino(CampoSoglia(QStringLiteral("txtRiordino"))), txtNote(new QPlainTextEdit),
      m_pagine(ImpaginaCampi(QStringLiteral(" Generale ")))
{
    setObjectName(QStringLiteral("KRVInserimentoArticoli"));
    AggiungiCampo(QStringLiteral("Sottoscorta"), txtSottoscorta);
    AggiungiCampo(QStringLiteral("Riordino"), txtRiordino);
    txtNote->setObjectName(QStringLiteral("txtNote"));
    txtNote->setAccessibleName(QStringLiteral("Note"));
    CollegaCampo(txtNote);
    m_pagine->addTab(txtNote, QStringLiteral(" Note "));
    FormCreate();
}

QString TKRVInserimentoArticoli::MsgSalvareModifiche()
{
    return QStringLiteral("Salvare le modifiche al record corrente\n\rprima di continuare?");
}

void TKRVInserimentoArticoli::ClearFields()
{
    m_pagine->setCurrentIndex(0);
    TKRVInserimentoCatalogo::ClearFields();
    txtSottoscorta->setValue(0);
    txtRiordino->setValue(0);
    txtNote->clear();
}

void TKRVInserimentoArticoli::FillFields(const TQ3Dataset &dataset)
{
    TKRVInserimentoCatalogo::FillFields(dataset);
    txtSottoscorta->setValue(qRound(dataset.FieldValue(QStringLiteral("SOTTOSCORTA")).toDouble()));
    txtRiordino->setValue(qRound(dataset.FieldValue(QStringLiteral("RIORDINO")).toDouble()));
    txtNote->setPlainText(dataset.FieldValue(QStringLiteral("NOTE")).toString());
}

void TKRVInserimentoArticoli::WriteFields(TQ3Dataset &dataset)
{
    TKRVInserimentoCatalogo::WriteFields(dataset);
    dataset.SetFieldValue(QStringLiteral("SOTTOSCORTA"), txtSottoscorta->value());
    dataset.SetFieldValue(QStringLiteral("RIORDINO"), txtRiordino->value());
    dataset.SetFieldValue(QStringLiteral("NOTE"), txtNote->toPlainText());
}

bool TKRVInserimentoArticoli::ConsentiChiusura()
{
    if (!Modified())
        return true;
    switch (Q3MessageBox(QStringLiteral("Conferma"), MsgSalvareModifiche(), TQ3MsgIcon::Question,
                         TQ3MsgButtons::YesNoCancel)) {
    case TQ3MsgResult::Cancel:
        return false;
    case TQ3MsgResult::Yes:
        actSalva()->trigger();
        return true;
    case TQ3MsgResult::No:
    case TQ3MsgResult::Ok:
        break;
    }
    return true;
}
