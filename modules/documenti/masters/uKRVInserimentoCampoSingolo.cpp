#include "uKRVInserimentoCampoSingolo.h"

#include "Q3Dataset.h"
#include "uKRVFormKit.h"

TKRVInserimentoCampoSingolo::TKRVInserimentoCampoSingolo(IKRVMain &main, TKRVInserimentoInfo info,
                                                         TKRVCampoSingoloInfo campo)
    : TKRVInserimentoBase(main, std::move(info)), m_campo(std::move(campo)),
      m_edit(KRVCampoTesto(m_campo.Name, m_campo.MaxLength, m_campo.UpperCase))
{
    AggiungiCampo(m_campo.Label, m_edit);
    FormCreate();
}

void TKRVInserimentoCampoSingolo::ClearFields()
{
    m_edit->clear();
}

void TKRVInserimentoCampoSingolo::FillFields(const TQ3Dataset &dataset)
{
    m_edit->setText(dataset.FieldValue(Entita().ColonnaCodice).toString());
}

void TKRVInserimentoCampoSingolo::WriteFields(TQ3Dataset &dataset)
{
    dataset.SetFieldValue(Entita().ColonnaCodice, m_edit->text());
}

QString TKRVInserimentoCampoSingolo::ValidationError()
{
    if (m_edit->text().isEmpty())
        return m_campo.MsgVuoto;
    if (Entita().CodiceEsiste(Sessione(), m_edit->text(), IdRecord()))
        return m_campo.MsgEsistente;
    return {};
}
